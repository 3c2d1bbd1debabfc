#include "hosting/file.h"

#include "hosting/error.h"

#include <fstream>
#include <sstream>

namespace hosting {

std::string ReadBytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream bytes;
    if (stream.peek() != std::ifstream::traits_type::eof()) bytes << stream.rdbuf();
    if (!stream.is_open() || stream.bad())
        throw Error(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND),
                    L"The file " + file.wstring() + L" cannot be read.");
    return bytes.str();
}

}  // namespace hosting
