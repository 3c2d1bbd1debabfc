#include "ole/server.h"

#include <oleauto.h>

#include "ole/error.h"
#include "ole/text.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace ole {

HINSTANCE ModuleHandle() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(ModuleHandle(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ITypeLib& TypeLibrary() {
    static const Ref<ITypeLib> library = [] {
        Ref<ITypeLib> loaded;
        Check(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, loaded.GetAddressOf()));
        return loaded;
    }();
    return *library.Get();
}

Ref<ITypeInfo> TypeInfoOf(REFGUID id) {
    Ref<ITypeInfo> info;
    Check(TypeLibrary().GetTypeInfoOfGuid(id, info.GetAddressOf()));
    return info;
}

std::wstring NameOf(ITypeInfo& info) {
    _bstr_t name;
    Check(info.GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr));
    return ToWide(name);
}

std::wstring HelpTextOf(ITypeInfo& info) {
    _bstr_t text;
    Check(info.GetDocumentation(MEMBERID_NIL, nullptr, text.GetAddress(), nullptr, nullptr));
    return ToWide(text);
}

std::wstring ProgId(REFCLSID id) {
    _bstr_t library;
    Check(TypeLibrary().GetDocumentation(MEMBERID_NIL, library.GetAddress(), nullptr, nullptr,
                                         nullptr));
    return ToWide(library) + L"." + NameOf(*TypeInfoOf(id).Get());
}

}  // namespace ole
