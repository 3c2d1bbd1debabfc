#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace explorer {

/// What the explorer does with a file: opens it, or imports it into a repository.
enum class FileKind {
    repository,
    typeLibrary,
    model,  ///< an Ecore metamodel or an XMI model
};

/// By the name's ending, and for endings that mean nothing by whether the file begins as XML does.
[[nodiscard]] FileKind KindOf(const std::wstring& path);

/// The files of each import, in the order of the files: models belong together, for they may
/// refer to each other; everything else comes by itself.
[[nodiscard]] std::vector<std::vector<std::wstring>> ImportGroups(
    const std::vector<std::wstring>& files);

}  // namespace explorer
