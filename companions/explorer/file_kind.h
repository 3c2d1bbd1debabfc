#pragma once

#include <string_view>

namespace explorer {

/// Whether a file is imported into a repository rather than opened as one, by its name's ending.
[[nodiscard]] bool IsImported(std::wstring_view path);

}  // namespace explorer
