#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

namespace support {

/// A folder of a test's own, which goes with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static std::atomic<int> next = 0;
        do {
            const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
            path_ = std::filesystem::temp_directory_path() /
                    ("orvane-test-" + std::to_string(now) + "-" + std::to_string(++next));
        } while (!std::filesystem::create_directories(path_));
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const noexcept { return path_; }
    [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const {
        return path_ / name;
    }
    /// The path of a file in it.
    [[nodiscard]] std::wstring File(const std::wstring& name) const {
        return (path_ / name).wstring();
    }

private:
    std::filesystem::path path_;
};

/// A file's bytes; none where it cannot be read.
inline std::string ReadFile(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

inline void WriteFile(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

}  // namespace support
