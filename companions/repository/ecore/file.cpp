#include "repository/ecore/file.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "repository/store/error.h"
#include "repository/store/file.h"

namespace repository::ecore {

namespace fs = std::filesystem;
using store::Error;
using store::Number;
using store::PathOf;

namespace {

constexpr std::size_t pieceSize = 1 << 16;

[[noreturn]] void CannotRead(const std::string& path) {
    throw Error(Number::deviceError, "\"" + path + "\" cannot be read");
}

[[noreturn]] void CannotWrite(const std::string& path) {
    throw Error(Number::pathFileAccess, "\"" + path + "\" cannot be written");
}

/// A name beside a file that no file has.
std::string TemporaryFor(const std::string& path) {
    std::error_code failure;
    for (int i = 1;; ++i) {
        const std::string name = path + "." + std::to_string(i) + ".tmp";
        if (!fs::exists(PathOf(name), failure)) return name;
    }
}

/// What is at a path before another file takes its place; a copy, so that the path is never without
/// a file.
class FormerFile {
public:
    explicit FormerFile(const std::string& path) : path_(path) {
        if (!IsFile(path)) return;
        copy_ = TemporaryFor(path);
        std::error_code failure;
        fs::copy_file(PathOf(path), PathOf(copy_), failure);
        if (!failure) return;
        store::RemoveFile(copy_);
        CannotWrite(path);
    }
    ~FormerFile() {
        if (!copy_.empty()) store::RemoveFile(copy_);
    }
    FormerFile(const FormerFile&) = delete;
    FormerFile& operator=(const FormerFile&) = delete;

    void PutBack() noexcept {
        if (copy_.empty()) return store::RemoveFile(path_);
        std::error_code failure;
        fs::rename(PathOf(copy_), PathOf(path_), failure);
        // What cannot be put back stays beside the new one.
        copy_.clear();
    }

private:
    const std::string& path_;
    std::string copy_;
};

}  // namespace

std::string Normal(const std::string& path) {
    std::error_code failure;
    const fs::path absolute = fs::absolute(PathOf(path), failure);
    const std::u8string text = absolute.lexically_normal().generic_u8string();
    return failure ? path : std::string(text.begin(), text.end());
}

std::uint64_t SizeOf(const std::string& path) {
    const fs::path file = PathOf(path);
    std::error_code failure;
    const fs::file_status status = fs::status(file, failure);
    if (status.type() == fs::file_type::not_found) {
        store::RequireFolderOf(path);
        throw Error(Number::fileNotFound, "\"" + path + "\" was not found");
    }
    if (fs::is_directory(status)) {
        throw Error(Number::pathFileAccess, "\"" + path + "\" is a folder");
    }
    if (!std::ifstream(file, std::ios::binary)) {
        throw Error(Number::permissionDenied, "\"" + path + "\" cannot be opened");
    }
    const auto size = fs::file_size(file, failure);
    if (failure) CannotRead(path);
    return size;
}

void ReadFile(const std::string& path,
              const std::function<bool(std::string_view piece, bool last)>& use) {
    std::ifstream stream(PathOf(path), std::ios::binary);
    if (!stream) throw Error(Number::permissionDenied, "\"" + path + "\" cannot be opened");
    std::array<char, pieceSize> piece;
    while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
        if (!use({piece.data(), static_cast<std::size_t>(stream.gcount())}, false)) return;
    }
    if (stream.bad()) CannotRead(path);
    use({}, true);
}

bool IsFile(const std::string& path) {
    std::error_code failure;
    return fs::is_regular_file(PathOf(path), failure);
}

struct NewFile::Stream {
    std::ofstream file;
};

NewFile::NewFile(const std::string& path) : path_(path), stream_(std::make_unique<Stream>()) {
    std::error_code failure;
    const fs::path file = PathOf(path);
    if (path.empty() || fs::is_directory(file, failure)) {
        throw Error(Number::pathFileAccess, "\"" + path + "\" is no path of a file");
    }
    store::RequireFolderOf(path);
    temporary_ = TemporaryFor(path);
    stream_->file.open(PathOf(temporary_), std::ios::binary | std::ios::trunc);
    if (!stream_->file) CannotWrite(path);
}

NewFile::~NewFile() {
    if (!stream_) return;
    stream_->file.close();
    store::RemoveFile(temporary_);
}

void NewFile::Write(std::string_view piece) {
    stream_->file.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    if (!stream_->file) CannotWrite(path_);
}

void NewFile::CommitWith(NewFile& other) {
    Close();
    other.Close();
    FormerFile former(path_);
    Place();
    try {
        other.Place();
    } catch (...) {
        former.PutBack();
        throw;
    }
}

void NewFile::Close() {
    stream_->file.close();
    if (!stream_->file) CannotWrite(path_);
}

void NewFile::Place() {
    std::error_code failure;
    fs::rename(PathOf(temporary_), PathOf(path_), failure);
    if (failure) CannotWrite(path_);
    stream_.reset();
}

}  // namespace repository::ecore
