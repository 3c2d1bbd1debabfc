#include "widgets/key_index.h"

#include <functional>
#include <utility>

namespace widgets {

namespace {

std::size_t HashOf(std::wstring_view key) {
    return std::hash<std::wstring_view>()(key);
}

}  // namespace

Row* KeyIndex::Find(std::wstring_view key) const {
    if (slots_.empty()) return nullptr;
    const std::size_t hash = HashOf(key);
    for (std::size_t at = hash & (slots_.size() - 1);; at = Next(at)) {
        const Slot& slot = slots_[at];
        if (slot.row == nullptr) return nullptr;
        if (slot.hash == hash && slot.row->Key() == key) return slot.row;
    }
}

void KeyIndex::Add(Row& row) {
    if (used_ * 4 >= slots_.size() * 3) Grow();
    Put({HashOf(row.Key()), &row});
    ++used_;
}

void KeyIndex::Remove(const Row& row) {
    std::size_t hole = HashOf(row.Key()) & (slots_.size() - 1);
    while (slots_[hole].row != &row) hole = Next(hole);
    // Whoever stands behind and would be looked for at the hole moves up.
    for (std::size_t at = Next(hole); slots_[at].row != nullptr; at = Next(at)) {
        const std::size_t mask = slots_.size() - 1;
        const std::size_t way = (at - HomeOf(slots_[at])) & mask;
        if (way < ((at - hole) & mask)) continue;
        slots_[hole] = slots_[at];
        hole = at;
    }
    slots_[hole] = {};
    --used_;
}

void KeyIndex::Clear() {
    slots_ = {};
    used_ = 0;
}

void KeyIndex::Put(Slot slot) {
    std::size_t at = HomeOf(slot);
    while (slots_[at].row != nullptr) at = Next(at);
    slots_[at] = slot;
}

void KeyIndex::Grow() {
    constexpr std::size_t least = 64;
    const std::vector<Slot> before =
        std::exchange(slots_, std::vector<Slot>(slots_.empty() ? least : slots_.size() * 2));
    for (const Slot& slot : before) {
        if (slot.row != nullptr) Put(slot);
    }
}

}  // namespace widgets
