#include "repository/store/file.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "repository/store/error.h"
#include "repository/store/schema.h"

namespace repository::store {

namespace fs = std::filesystem;

namespace {

std::string TextOf(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// A database file begins with this text, terminator included; big-endian numbers follow: the size
// of a page (two bytes, 1 for 65536), the number of pages, the user version, the application id.
constexpr char magic[] = "SQLite format 3";
constexpr std::size_t headerLength = 100;
constexpr std::size_t pageSizeOffset = 16;
constexpr std::size_t pageCountOffset = 28;
constexpr std::size_t versionOffset = 60;
constexpr std::size_t applicationOffset = 68;
using Header = std::array<unsigned char, headerLength>;

std::int64_t NumberAt(const Header& header, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) number = number << 8 | header[offset + i];
    return number;
}

std::uintmax_t SizeOf(const Header& header) {
    const auto pageSize = NumberAt(header, pageSizeOffset) >> 16;
    const auto pages = NumberAt(header, pageCountOffset);
    return static_cast<std::uintmax_t>(pageSize == 1 ? 65536 : pageSize) *
           static_cast<std::uintmax_t>(pages);
}

/// Whether a change of this file was broken off: the file next to it completes it when it is
/// opened.
bool HasJournal(const fs::path& file) {
    fs::path journal = file;
    journal += "-journal";
    std::error_code failure;
    return fs::exists(journal, failure);
}

}  // namespace

fs::path PathOf(const std::string& path) {
    return fs::path(std::u8string(path.begin(), path.end()));
}

void RequireFolderOf(const std::string& path) {
    const fs::path folder = PathOf(path).parent_path();
    std::error_code failure;
    if (folder.empty() || fs::is_directory(folder, failure)) return;
    throw Error(Number::pathNotFound, "The folder of \"" + path + "\" does not exist");
}

std::string Absolute(const std::string& path) {
    if (path == inMemory) return path;
    std::error_code failure;
    const fs::path absolute = fs::absolute(PathOf(path), failure);
    return failure ? path : TextOf(absolute);
}

FileState Probe(const std::string& path) {
    const fs::path file = PathOf(path);
    std::error_code failure;
    const fs::file_status status = fs::status(file, failure);
    if (status.type() == fs::file_type::not_found) {
        RequireFolderOf(path);
        return FileState::missing;
    }
    if (fs::is_directory(status)) {
        throw Error(Number::pathFileAccess, "\"" + path + "\" is a folder");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Error(Number::permissionDenied, "\"" + path + "\" cannot be opened");
    Header header = {};
    stream.read(reinterpret_cast<char*>(header.data()), headerLength);
    if (stream.bad()) throw Error(Number::deviceError, "\"" + path + "\" cannot be read");
    const auto length = static_cast<std::size_t>(stream.gcount());
    if (length == 0) return FileState::empty;
    if (length < headerLength || std::memcmp(header.data(), magic, sizeof magic) != 0) {
        throw Error(Number::invalidFileFormat, "\"" + path + "\" is no repository file");
    }
    if (NumberAt(header, applicationOffset) != applicationId) {
        throw Error(Number::invalidFileFormat,
                    "\"" + path + "\" is a database of another program, no repository file");
    }
    if (NumberAt(header, versionOffset) > schemaVersion) {
        throw Error(Number::invalidFileFormat,
                    "\"" + path + "\" was made by a later version of the repository component");
    }
    if (fs::file_size(file, failure) < SizeOf(header) && !HasJournal(file)) {
        throw Error(Number::invalidFileFormat,
                    "\"" + path + "\" is damaged: a part of the file is missing");
    }
    return FileState::repository;
}

bool IsSameFile(const std::string& first, const std::string& second) {
    if (first == inMemory || second == inMemory) return false;
    std::error_code failure;
    return first == second || fs::equivalent(PathOf(first), PathOf(second), failure);
}

void RemoveFile(const std::string& path) noexcept {
    std::error_code ignored;
    fs::remove(PathOf(path), ignored);
}

}  // namespace repository::store
