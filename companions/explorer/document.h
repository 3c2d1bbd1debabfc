#pragma once

#include "hosting/late_bound.h"

#include <string>
#include <vector>

namespace explorer {

/// The repository that is browsed, a late-bound object of the class OrvaneRepository.Repository.
/// Every member throws hosting::Error with what the repository says.
class Document {
public:
    /// Makes the repository object, with nothing open. Throws where its component is not there.
    Document();

    /// The object that controls are given.
    [[nodiscard]] const hosting::LateBound& Repository() const noexcept { return repository_; }

    /// Opens a new, empty repository in memory.
    void New();
    /// Opens a repository's file; a failure leaves the present one open.
    void Open(const std::wstring& path);
    /// Adds what files that belong together describe to the repository, in one step. Returns what
    /// the import did not understand.
    std::vector<std::wstring> Import(const std::vector<std::wstring>& paths);
    /// Writes the repository to another file and goes on working there.
    void SaveAs(const std::wstring& path);

    /// Whether a file keeps the repository; otherwise it is gone with the program.
    [[nodiscard]] bool HasFile() const;
    /// For people: the file, or "In memory" with the names of the imported files.
    [[nodiscard]] std::wstring Description() const;

private:
    hosting::LateBound repository_;
    std::vector<std::wstring> imported_;
};

}  // namespace explorer
