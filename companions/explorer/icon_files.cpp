#include "explorer/icon_files.h"

#include "explorer/badge_picture.h"
#include "hosting/error.h"

#include <windows.h>

#include <cstring>
#include <fstream>
#include <system_error>

namespace explorer {

namespace {

namespace fs = std::filesystem;

fs::path MakeFolder() {
    static long count = 0;
    const std::wstring name = L"OrvaneExplorer-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                              std::to_wstring(InterlockedIncrement(&count));
    const fs::path folder = fs::temp_directory_path() / name;
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw hosting::Error(E_FAIL, L"There is no temporary folder for icons.");
    return folder;
}

template <class Value>
void Append(std::string& bytes, const Value& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

/// The directory of an icon file with one icon, and the entry of that.
#pragma pack(push, 2)
struct IconDirectory {
    WORD reserved = 0;
    WORD type = 1;
    WORD count = 1;
    BYTE width = 0;
    BYTE height = 0;
    BYTE colors = 0;
    BYTE reservedByte = 0;
    WORD planes = 1;
    WORD bits = 32;
    DWORD bytes = 0;
    DWORD offset = 0;
};
#pragma pack(pop)
static_assert(sizeof(IconDirectory) == 22);

/// An icon file: the pixels from the bottom, then a mask that the alpha makes useless.
std::string IconFileOf(const std::vector<std::uint32_t>& pixels, int size) {
    const auto side = static_cast<std::size_t>(size);
    const std::string mask((side + 31) / 32 * 4 * side, '\0');
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = size;
    header.biHeight = 2 * size;
    header.biPlanes = 1;
    header.biBitCount = 32;
    IconDirectory directory;
    directory.width = directory.height = static_cast<BYTE>(size);
    directory.bytes =
        static_cast<DWORD>(sizeof header + pixels.size() * sizeof pixels[0] + mask.size());
    directory.offset = sizeof directory;
    std::string bytes;
    Append(bytes, directory);
    Append(bytes, header);
    for (std::size_t row = side; row-- > 0;) {
        bytes.append(reinterpret_cast<const char*>(&pixels[row * side]), side * sizeof pixels[0]);
    }
    return bytes + mask;
}

}  // namespace

IconFiles::IconFiles(int size) : size_(size), folder_(MakeFolder()) {}

IconFiles::~IconFiles() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

const std::wstring& IconFiles::PathOf(const Badge& badge) {
    const auto [found, isNew] = paths_.try_emplace(badge.Key());
    if (!isNew) return found->second;
    const fs::path path = folder_ / (std::to_wstring(paths_.size()) + L".ico");
    std::ofstream file(path, std::ios::binary);
    file << IconFileOf(MakePixels(badge, size_), size_);
    file.close();
    if (!file) {
        paths_.erase(found);
        throw hosting::Error(E_FAIL, L"The icon file " + path.wstring() + L" cannot be written.");
    }
    return found->second = path.wstring();
}

}  // namespace explorer
