#include "explorer/temporary_folder.h"

#include <windows.h>

#include <fstream>

namespace explorer {

TemporaryFolder::TemporaryFolder() {
    static int number = 0;
    path_ = std::filesystem::temp_directory_path() /
            (L"orvane-explorer-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
             std::to_wstring(++number));
    std::filesystem::create_directories(path_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void WriteAll(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

}  // namespace explorer
