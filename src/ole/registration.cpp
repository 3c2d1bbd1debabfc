#include "ole/registration.h"

#include <oleauto.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "ole/description.h"
#include "ole/error.h"
#include "ole/registry.h"
#include "ole/server.h"

namespace ole {

namespace {

constexpr wchar_t controlCategory[] = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
constexpr const wchar_t* platformKey = sizeof(void*) == 8 ? L"win64" : L"win32";

RegistryKey Classes(Scope scope) {
    return RegistryKey::Create(scope == Scope::allUsers ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER,
                               L"Software\\Classes");
}

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.rfind(L'\\'));
}

void WriteClass(const RegistryKey& classes, const Class& entry, const LibraryDescription& library) {
    const Ref<ITypeInfo> info = TypeInfoOf(entry.id);
    const std::wstring id = GuidText(entry.id);
    const std::wstring progId = ProgId(entry.id);
    const std::wstring help = HelpTextOf(*info.Get());
    const std::wstring key = L"CLSID\\" + id;
    classes.Set(progId, L"", help);
    classes.Set(progId + L"\\CLSID", L"", id);
    classes.Set(key, L"", help);
    classes.Set(key + L"\\ProgID", L"", progId);
    classes.Set(key + L"\\VersionIndependentProgID", L"", progId);
    classes.Set(key + L"\\InprocServer32", L"", library.path);
    classes.Set(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    classes.Set(key + L"\\TypeLib", L"", library.id);
    classes.Set(key + L"\\Version", L"", library.version);
    classes.Set(key + L"\\Programmable", L"", L"");
    if (IsControl(*info.Get())) {
        classes.Set(key + L"\\Control", L"", L"");
        classes.Set(key + L"\\Implemented Categories\\" + controlCategory, L"", L"");
        classes.Set(key + L"\\MiscStatus", L"", L"0");
        classes.Set(key + L"\\MiscStatus\\1", L"", std::to_wstring(entry.miscStatus));
        classes.Set(key + L"\\ToolboxBitmap32", L"",
                    library.path + L", " + std::to_wstring(entry.toolboxBitmap));
    }
}

void WriteInterface(const RegistryKey& classes, const InterfaceDescription& type,
                    const LibraryDescription& library) {
    const std::wstring key = L"Interface\\" + type.id;
    classes.Set(key, L"", type.name);
    classes.Set(key + L"\\ProxyStubClsid32", L"", type.marshaler);
    classes.Set(key + L"\\TypeLib", L"", library.id);
    classes.Set(key + L"\\TypeLib", L"Version", library.version);
}

void WriteLibrary(const RegistryKey& classes, const LibraryDescription& library) {
    const std::wstring key = L"TypeLib\\" + library.id + L"\\" + library.version;
    classes.Set(key, L"", library.help);
    classes.Set(key + L"\\0\\" + platformKey, L"", library.path);
    classes.Set(key + L"\\FLAGS", L"", L"0");
    classes.Set(key + L"\\HELPDIR", L"", FolderOf(library.path));
}

void Write(Scope scope) {
    const LibraryDescription library = DescribeLibrary();
    const RegistryKey classes = Classes(scope);
    for (const Class& entry : server.classes) WriteClass(classes, entry, library);
    for (const InterfaceDescription& type : DescribeInterfaces())
        WriteInterface(classes, type, library);
    WriteLibrary(classes, library);
}

void Remove(Scope scope) {
    const LibraryDescription library = DescribeLibrary();
    const RegistryKey classes = Classes(scope);
    // The system keeps these apart for the two widths, and the others together.
    for (const Class& entry : server.classes) classes.RemoveTree(L"CLSID\\" + GuidText(entry.id));
    for (const InterfaceDescription& type : DescribeInterfaces()) {
        classes.RemoveTree(L"Interface\\" + type.id);
    }
    const std::wstring root = L"TypeLib\\" + library.id;
    const std::wstring version = root + L"\\" + library.version;
    classes.RemoveTree(version + L"\\0\\" + platformKey);
    classes.RemoveIfEmpty(version + L"\\0");
    if (!classes.Has(version + L"\\0")) {
        for (const Class& entry : server.classes) classes.RemoveTree(ProgId(entry.id));
        classes.RemoveTree(version);
        classes.RemoveIfEmpty(root);
    }
    // A user who never had a class of his own has not even these.
    for (const wchar_t* folder : {L"CLSID", L"Interface", L"TypeLib"}) {
        classes.RemoveIfEmpty(folder);
    }
}

}  // namespace

HRESULT Register(Scope scope) noexcept {
    const HRESULT result = Guard({}, IID_NULL, [&] { Write(scope); });
    if (FAILED(result)) Unregister(scope);
    return FAILED(result) ? SELFREG_E_CLASS : S_OK;
}

HRESULT Unregister(Scope scope) noexcept {
    return FAILED(Guard({}, IID_NULL, [&] { Remove(scope); })) ? SELFREG_E_CLASS : S_OK;
}

}  // namespace ole
