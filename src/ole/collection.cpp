#include "ole/collection.h"

#include <algorithm>
#include <optional>

#include "ole/error.h"
#include "ole/text.h"
#include "ole/variant_memory.h"

namespace ole {

namespace {

bool IsGiven(const VARIANT& argument) {
    return !(V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND) &&
           V_VT(&argument) != VT_EMPTY;
}

/// The form in which keys that differ in case only are the same.
std::wstring Folded(const std::wstring& key) {
    std::wstring folded = key;
    if (!folded.empty()) CharUpperBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return folded;
}

/// A key is a string; everything else is a position.
std::optional<std::wstring> KeyOf(const VARIANT& positionOrKey) {
    const std::optional<VARIANT> value = Borrowed(positionOrKey);
    if (!value || V_VT(&*value) != VT_BSTR) return std::nullopt;
    return ToWide(ToText(*value));
}

std::size_t PositionOf(const VARIANT& positionOrKey, std::size_t count) {
    if (V_VT(&positionOrKey) == VT_NULL) Throw(Number::invalidUseOfNull);
    _variant_t number;
    Check(ChangeType(number, positionOrKey, VT_I4));
    if (V_I4(&number) < 1 || static_cast<std::size_t>(V_I4(&number)) > count) {
        Throw(Number::subscriptOutOfRange);
    }
    return static_cast<std::size_t>(V_I4(&number)) - 1;
}

}  // namespace

void KeyedValues::Add(const VARIANT& value, const VARIANT& key, const VARIANT& before,
                      const VARIANT& after) {
    if (IsGiven(before) && IsGiven(after)) Throw(Number::invalidCall);
    std::size_t position = Count();
    if (IsGiven(before)) position = Find(before);
    if (IsGiven(after)) position = Find(after) + 1;
    Insert(position, value, IsGiven(key) ? ToWide(ToText(key)) : std::wstring());
}

void KeyedValues::Add(const VARIANT& value, std::wstring key) {
    Insert(Count(), value, std::move(key));
}

const _variant_t& KeyedValues::Item(const VARIANT& positionOrKey) const {
    return Look(positionOrKey).value;
}

void KeyedValues::Remove(const VARIANT& positionOrKey) {
    const std::size_t position = Find(positionOrKey);
    const std::shared_ptr<const Entry> removed = (*entries_)[position];
    Entries& entries = Change();
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(position));
    if (!removed->folded.empty()) byKey_.erase(removed->folded);
}

bool KeyedValues::Contains(const std::wstring& key) const {
    return byKey_.contains(Folded(key));
}

const KeyedValues::Entry& KeyedValues::Look(const VARIANT& positionOrKey) const {
    if (const auto key = KeyOf(positionOrKey)) {
        const auto found = byKey_.find(Folded(*key));
        if (found == byKey_.end()) Throw(Number::invalidCall);
        return *found->second;
    }
    return *(*entries_)[PositionOf(positionOrKey, Count())];
}

std::size_t KeyedValues::Find(const VARIANT& positionOrKey) const {
    const Entry& entry = Look(positionOrKey);
    const auto at = std::find_if(entries_->begin(), entries_->end(),
                                 [&](const auto& other) { return other.get() == &entry; });
    return static_cast<std::size_t>(at - entries_->begin());
}

void KeyedValues::Insert(std::size_t position, const VARIANT& value, std::wstring key) {
    auto entry = std::make_shared<Entry>();
    entry->value = value;
    entry->folded = Folded(key);
    entry->key = std::move(key);
    if (!entry->folded.empty() && !byKey_.emplace(entry->folded, entry).second) {
        Throw(Number::keyInUse);
    }
    Entries& entries = Change();
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(position), std::move(entry));
}

KeyedValues::Entries& KeyedValues::Change() {
    if (entries_.use_count() > 1) entries_ = std::make_shared<Entries>(*entries_);
    return *entries_;
}

}  // namespace ole
