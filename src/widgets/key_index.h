#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "widgets/row.h"

namespace widgets {

/// Finds rows by their keys, which are different. No memory is taken for a single row: that is what
/// it has before the standard library's sets.
class KeyIndex {
public:
    /// Null where no row has the key.
    Row* Find(std::wstring_view key) const;
    void Add(Row& row);
    void Remove(const Row& row);
    void Clear();

private:
    struct Slot {
        std::size_t hash = 0;
        Row* row = nullptr;
    };

    std::size_t Next(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }
    std::size_t HomeOf(const Slot& slot) const { return slot.hash & (slots_.size() - 1); }
    void Put(Slot slot);
    void Grow();

    std::vector<Slot> slots_;
    std::size_t used_ = 0;
};

}  // namespace widgets
