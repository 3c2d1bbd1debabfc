#pragma once

#include <optional>

#include "ole/record.h"
#include "trees/node_keys.h"

namespace trees {

/// The key in a record: that of a node, made when it is asked for, or what a host wrote.
class RecordKey {
public:
    RecordKey() = default;
    void SetNumber(std::int32_t number) { number_ = number; }
    void Write(const _bstr_t& text) {
        // No text is an empty one.
        written_ = text.length() != 0 ? text : ole::ToBstr(std::wstring_view());
    }

    std::wstring Text() const {
        if (IsWritten()) return ole::ToWide(written_);
        return number_ ? KeyOf(*number_) : std::wstring();
    }
    /// The number of the node that has the key, none where no node could.
    std::optional<std::int32_t> Number() const {
        return IsWritten() ? NumberIn(ole::ViewOf(written_)) : number_;
    }

private:
    bool IsWritten() const { return !!written_; }

    std::optional<std::int32_t> number_;
    /// Null until a host writes.
    _bstr_t written_;
};

/// A record of a node.
template <class I, const GUID& classId>
class KeyedRecord : public ole::Record<I, classId> {
public:
    STDMETHODIMP get_key(BSTR* text) override {
        return this->Run([&] { *text = ole::ToBstr(key.Text()).Detach(); });
    }
    STDMETHODIMP put_key(BSTR* text) override {
        return this->Run([&] { key.Write(ole::ToBstr(*text)); });
    }

    RecordKey key;
};

}  // namespace trees
