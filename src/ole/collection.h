#pragma once

#include <comdef.h>

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace ole {

/// An ordered list of values, each with a key or without. Positions count from 1; keys compare
/// without case. Look-up by position and by key takes constant time. Whoever enumerates keeps the
/// list as it was when the enumeration began.
class KeyedValues {
public:
    struct Entry {
        _variant_t value;
        /// The key as it was given, and its form for comparison; both empty without a key.
        std::wstring key;
        std::wstring folded;
    };
    using Entries = std::vector<std::shared_ptr<const Entry>>;

    std::size_t Count() const { return entries_->size(); }

    /// Adds at the end, or before or after another element; `before` and `after` are a position or
    /// a key, or VT_ERROR where they are not given. Errors: 457 for a key in use, 5 for an unknown
    /// key, 9 for a position out of range.
    void Add(const VARIANT& value, const VARIANT& key, const VARIANT& before, const VARIANT& after);

    /// Adds at the end, with a key that may be empty: none.
    void Add(const VARIANT& value, std::wstring key);

    /// Errors: 9 for a position out of range, 5 for an unknown key, 13 for neither.
    const _variant_t& Item(const VARIANT& positionOrKey) const;
    void Remove(const VARIANT& positionOrKey);
    bool Contains(const std::wstring& key) const;

    /// The present elements, kept as they are while somebody holds them.
    std::shared_ptr<const Entries> Snapshot() const { return entries_; }

private:
    std::size_t Find(const VARIANT& positionOrKey) const;
    const Entry& Look(const VARIANT& positionOrKey) const;
    void Insert(std::size_t position, const VARIANT& value, std::wstring key);
    Entries& Change();

    std::shared_ptr<Entries> entries_ = std::make_shared<Entries>();
    std::unordered_map<std::wstring, std::shared_ptr<const Entry>> byKey_;
};

}  // namespace ole
