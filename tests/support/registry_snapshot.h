#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// All keys and values below some registry keys at one moment.
class RegistrySnapshot {
public:
    /// What class registration writes to: `Software\Classes` of the machine and of the user.
    [[nodiscard]] static RegistrySnapshot OfClasses();
    /// Below one key.
    [[nodiscard]] static RegistrySnapshot Of(HKEY root, const std::wstring& path);

    /// What `later` has that this has not ("+ HKCU\...\Key name = value"), and the other way round
    /// ("- ..."), sorted by key.
    [[nodiscard]] std::vector<std::string> Changes(const RegistrySnapshot& later) const;
    [[nodiscard]] std::size_t Keys() const { return keys_.size(); }
    /// Whether a key whose path ends with this is there.
    [[nodiscard]] bool Has(const std::wstring& path) const;

    /// Makes the registry below the same keys as it was.
    void Restore() const;

private:
    struct Contents {
        DWORD type = 0;
        std::vector<BYTE> bytes;
        friend bool operator==(const Contents&, const Contents&) = default;
    };
    using Values = std::map<std::wstring, Contents>;
    struct Root {
        HKEY key;
        std::wstring path;
    };

    void Read(HKEY root, const std::wstring& path);
    /// `key` is the open one at `path` below `root`, null where there is none.
    void Read(HKEY key, HKEY root, const std::wstring& path);
    [[nodiscard]] static std::string Line(char sign, const std::wstring& key,
                                          const std::wstring& name, const Contents& contents);

    std::vector<Root> roots_;
    std::map<std::pair<HKEY, std::wstring>, Values> keys_;
};

/// Puts a part of the registry back when it goes, whatever was done to it: that of the classes
/// unless said otherwise.
class RegistryRestorer {
public:
    explicit RegistryRestorer(RegistrySnapshot before = RegistrySnapshot::OfClasses())
        : before_(std::move(before)) {}
    ~RegistryRestorer() { before_.Restore(); }
    RegistryRestorer(const RegistryRestorer&) = delete;
    RegistryRestorer& operator=(const RegistryRestorer&) = delete;

    [[nodiscard]] const RegistrySnapshot& Before() const { return before_; }

private:
    RegistrySnapshot before_;
};

}  // namespace support
