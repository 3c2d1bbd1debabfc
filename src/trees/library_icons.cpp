#include "trees/library_icons.h"

#include "ole/server.h"

namespace trees {

namespace {

std::wstring BesideLibrary(const wchar_t* file) {
    const std::wstring library = ole::ModulePath();
    return library.substr(0, library.find_last_of(L'\\')) + file;
}

}  // namespace

std::wstring DummyIconPath() {
    return BesideLibrary(L"\\Dummy.ico");
}

std::wstring FolderIconPath() {
    return BesideLibrary(L"\\Folder.ico");
}

}  // namespace trees
