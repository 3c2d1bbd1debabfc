#pragma once

#include <windows.h>

#include <string>

namespace ole {

/// An open registry key. Paths are relative to the key. Failures raise the system's error.
class RegistryKey {
public:
    /// Opens or makes a key for writing.
    static RegistryKey Create(HKEY root, const std::wstring& path);

    RegistryKey(RegistryKey&& other) noexcept : key_(other.key_) { other.key_ = nullptr; }
    ~RegistryKey() {
        if (key_ != nullptr) RegCloseKey(key_);
    }

    /// Writes a string value; an empty name is the key's default value.
    void Set(const std::wstring& path, const std::wstring& name, const std::wstring& text) const;

    bool Has(const std::wstring& path) const;

    /// Removes a key and all below it; nothing happens when it is not there.
    void RemoveTree(const std::wstring& path) const;

    /// Removes a key that has neither keys nor values below it.
    void RemoveIfEmpty(const std::wstring& path) const;

private:
    explicit RegistryKey(HKEY key) : key_(key) {}
    HKEY key_;
};

}  // namespace ole
