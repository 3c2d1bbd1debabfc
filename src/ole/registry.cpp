#include "ole/registry.h"

#include "ole/error.h"

namespace ole {

namespace {

void CheckSystem(LSTATUS status) {
    Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

bool IsMissing(LSTATUS status) {
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

}  // namespace

RegistryKey RegistryKey::Create(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    CheckSystem(RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                                &key, nullptr));
    return RegistryKey(key);
}

void RegistryKey::Set(const std::wstring& path, const std::wstring& name,
                      const std::wstring& text) const {
    const RegistryKey key = Create(key_, path);
    CheckSystem(RegSetValueExW(key.key_, name.c_str(), 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(text.c_str()),
                               static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

bool RegistryKey::Has(const std::wstring& path) const {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(key_, path.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
    const RegistryKey closes(opened);
    return true;
}

void RegistryKey::RemoveTree(const std::wstring& path) const {
    const LSTATUS status = RegDeleteTreeW(key_, path.c_str());
    if (!IsMissing(status)) CheckSystem(status);
}

void RegistryKey::RemoveIfEmpty(const std::wstring& path) const {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(key_, path.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return;
    const RegistryKey key(opened);
    DWORD keys = 0;
    DWORD values = 0;
    CheckSystem(RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                                 &values, nullptr, nullptr, nullptr, nullptr));
    if (keys == 0 && values == 0) RemoveTree(path);
}

}  // namespace ole
