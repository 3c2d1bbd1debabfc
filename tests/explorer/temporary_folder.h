#pragma once

#include <filesystem>
#include <string>

namespace explorer {

/// A folder of a test's own, which goes with it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return path_; }
    [[nodiscard]] std::wstring File(const std::wstring& name) const {
        return (path_ / name).wstring();
    }

private:
    std::filesystem::path path_;
};

void WriteAll(const std::filesystem::path& file, const std::string& bytes);

}  // namespace explorer
