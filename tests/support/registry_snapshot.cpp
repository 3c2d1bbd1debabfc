#include "support/registry_snapshot.h"

#include "support/text.h"

#include <array>
#include <utility>

namespace support {

namespace {

/// An open registry key, null where it is not there.
class Key {
public:
    static Key Open(HKEY root, const std::wstring& path) {
        Key key;
        RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key.key_);
        return key;
    }
    static Key Create(HKEY root, const std::wstring& path) {
        Key key;
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key.key_,
                        nullptr);
        return key;
    }
    ~Key() {
        if (key_ != nullptr) RegCloseKey(key_);
    }
    Key(Key&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    Key& operator=(Key&&) = delete;

    [[nodiscard]] HKEY Get() const { return key_; }

private:
    Key() = default;
    HKEY key_ = nullptr;
};

std::wstring RootName(HKEY root) {
    return root == HKEY_LOCAL_MACHINE ? L"HKLM" : root == HKEY_CURRENT_USER ? L"HKCU" : L"HK";
}

}  // namespace

RegistrySnapshot RegistrySnapshot::OfClasses() {
    RegistrySnapshot snapshot = Of(HKEY_LOCAL_MACHINE, L"Software\\Classes");
    snapshot.roots_.push_back({HKEY_CURRENT_USER, L"Software\\Classes"});
    snapshot.Read(HKEY_CURRENT_USER, L"Software\\Classes");
    return snapshot;
}

RegistrySnapshot RegistrySnapshot::Of(HKEY root, const std::wstring& path) {
    RegistrySnapshot snapshot;
    snapshot.roots_.push_back({root, path});
    snapshot.Read(root, path);
    return snapshot;
}

void RegistrySnapshot::Read(HKEY root, const std::wstring& path) {
    Read(Key::Open(root, path).Get(), root, path);
}

// Thousands of keys, and each question goes to another process: there are as few as may be.
void RegistrySnapshot::Read(HKEY key, HKEY root, const std::wstring& path) {
    DWORD keyCount = 0;
    DWORD valueCount = 0;
    DWORD longestValue = 0;
    if (key == nullptr ||
        RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keyCount, nullptr, nullptr, &valueCount,
                         nullptr, &longestValue, nullptr, nullptr) != ERROR_SUCCESS)
        return;
    Values& values = keys_[{root, path}];
    std::array<wchar_t, 16384> name{};
    for (DWORD index = 0; index < valueCount; ++index) {
        auto nameSize = static_cast<DWORD>(name.size());
        DWORD size = longestValue;
        Contents contents{0, std::vector<BYTE>(longestValue)};
        if (RegEnumValueW(key, index, name.data(), &nameSize, nullptr, &contents.type,
                          contents.bytes.data(), &size) != ERROR_SUCCESS)
            break;
        contents.bytes.resize(size);
        values[std::wstring(name.data(), nameSize)] = std::move(contents);
    }
    for (DWORD index = 0; index < keyCount; ++index) {
        auto nameSize = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, index, name.data(), &nameSize, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            break;
        const std::wstring below(name.data(), nameSize);
        Read(Key::Open(key, below).Get(), root, path + L'\\' + below);
    }
}

std::string RegistrySnapshot::Line(char sign, const std::wstring& key, const std::wstring& name,
                                   const Contents& contents) {
    std::string text = sign + (' ' + Utf8(key)) + ' ' + (name.empty() ? "(default)" : Utf8(name));
    text += " = ";
    if (contents.type == REG_SZ || contents.type == REG_EXPAND_SZ) {
        std::wstring value(contents.bytes.size() / sizeof(wchar_t), L'\0');
        std::copy(
            contents.bytes.begin(),
            contents.bytes.begin() + static_cast<std::ptrdiff_t>(value.size() * sizeof(wchar_t)),
            reinterpret_cast<BYTE*>(value.data()));
        while (!value.empty() && value.back() == L'\0') value.pop_back();
        return text + '"' + Utf8(value) + '"';
    }
    return text + std::to_string(contents.bytes.size()) + " bytes of type " +
           std::to_string(contents.type);
}

std::vector<std::string> RegistrySnapshot::Changes(const RegistrySnapshot& later) const {
    std::vector<std::string> lines;
    const auto compare = [&lines](const auto& one, const auto& other, char sign) {
        for (const auto& [key, values] : one) {
            const std::wstring shown = RootName(key.first) + L'\\' + key.second;
            const auto match = other.find(key);
            if (match == other.end()) lines.push_back(sign + (' ' + Utf8(shown)));
            for (const auto& [name, contents] : values) {
                const bool same = match != other.end() && match->second.contains(name) &&
                                  match->second.at(name) == contents;
                if (!same) lines.push_back(Line(sign, shown, name, contents));
            }
        }
    };
    compare(keys_, later.keys_, '-');
    compare(later.keys_, keys_, '+');
    return lines;
}

bool RegistrySnapshot::Has(const std::wstring& path) const {
    for (const auto& [key, values] : keys_) {
        if (key.second.size() < path.size()) continue;
        const std::wstring_view end =
            std::wstring_view(key.second).substr(key.second.size() - path.size());
        if (SameName(end, path)) return true;
    }
    return false;
}

void RegistrySnapshot::Restore() const {
    RegistrySnapshot now;
    for (const Root& root : roots_) now.Read(root.key, root.path);
    // Backwards, so that a key comes after those below it.
    for (auto entry = now.keys_.rbegin(); entry != now.keys_.rend(); ++entry)
        if (!keys_.contains(entry->first))
            RegDeleteKeyW(entry->first.first, entry->first.second.c_str());
    for (const auto& [where, values] : keys_) {
        const auto& [root, path] = where;
        const auto present = now.keys_.find(where);
        if (present != now.keys_.end() && present->second == values) continue;
        const Key key = Key::Create(root, path);
        if (present != now.keys_.end())
            for (const auto& [name, contents] : present->second)
                if (!values.contains(name)) RegDeleteValueW(key.Get(), name.c_str());
        for (const auto& [name, contents] : values)
            RegSetValueExW(key.Get(), name.c_str(), 0, contents.type, contents.bytes.data(),
                           static_cast<DWORD>(contents.bytes.size()));
    }
}

}  // namespace support
