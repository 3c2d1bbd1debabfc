#pragma once

#include <memory>

#include "ole/text.h"
#include "trees/node_keys.h"

namespace trees {

/// The key in a record: that of a node, made when it is asked for, or what a host wrote.
class RecordKey {
public:
    RecordKey() = default;
    void SetNumber(std::int32_t number) { number_ = number; }
    void Write(const _bstr_t& text) { written_ = std::make_unique<_bstr_t>(text); }

    std::wstring Text() const {
        if (written_) return ole::ToWide(*written_);
        return number_ == none ? std::wstring() : KeyOf(number_);
    }

private:
    static constexpr std::int32_t none = -1;

    std::int32_t number_ = none;
    std::unique_ptr<_bstr_t> written_;
};

}  // namespace trees
