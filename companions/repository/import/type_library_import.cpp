#include "repository/import/type_library_import.h"

#include <windows.h>

#include <oleauto.h>

#include <filesystem>
#include <fstream>

#include "ole/ref.h"
#include "repository/com/text.h"
#include "repository/import/file_check.h"
#include "repository/import/importer.h"
#include "repository/store/error.h"

namespace repository::type_library {

namespace {

using store::Error;
using store::Number;

/// Owns a file handle.
class File {
public:
    explicit File(const std::wstring& path)
        : handle_(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~File() {
        if (IsOpen()) CloseHandle(handle_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE handle_;
};

/// The path with its folder, where it leads to a file; as it stands otherwise: the system looks for
/// libraries in its own folders too.
std::wstring Complete(const std::wstring& path) {
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return path;
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length == 0) return path;
        const bool fits = length < full.size();
        full.resize(length);
        if (fits) return full;
    }
}

/// The reason why a file could not be loaded as a type library.
[[noreturn]] void ThrowReason(const std::wstring& path) {
    const std::string name = "\"" + com::Narrow(path) + "\"";
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        if (!path.empty() && GetLastError() == ERROR_PATH_NOT_FOUND) {
            throw Error(Number::pathNotFound, "The folder of " + name + " does not exist");
        }
        throw Error(Number::fileNotFound, name + " was not found");
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw Error(Number::pathFileAccess, name + " is a folder");
    }
    if (!File(path).IsOpen()) {
        throw Error(Number::permissionDenied, name + " cannot be opened");
    }
    throw Error(Number::invalidFileFormat, name + " is no type library and contains none");
}

/// The number at the end of a path such as `x.dll\\2` chooses one of a file's type libraries.
std::wstring FileOf(const std::wstring& path) {
    const auto end = path.find_last_not_of(L"0123456789");
    const bool hasNumber = end != std::wstring::npos && end + 1 < path.size() && path[end] == L'\\';
    return hasNumber ? path.substr(0, end) : path;
}

void RequireWhole(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(FileOf(path)), std::ios::binary);
    if (file && !IsWhole(file)) {
        throw Error(Number::invalidFileFormat,
                    "\"" + com::Narrow(path) + "\" is damaged: a part of the file is missing");
    }
}

}  // namespace

std::vector<std::string> Import(store::Store& store, const std::wstring& file) {
    const std::wstring path = Complete(file);
    RequireWhole(path);
    ole::Ref<ITypeLib> library;
    if (path.empty() || FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.GetAddressOf()))) {
        ThrowReason(path);
    }
    Importer importer(store);
    store.Change("Import", [&] { importer.Import(*library.Get(), com::Narrow(path)); });
    return importer.Messages();
}

}  // namespace repository::type_library
