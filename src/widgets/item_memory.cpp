#include "widgets/item_memory.h"

#include <algorithm>
#include <new>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#endif

namespace widgets {

namespace {

/// Tells the address sanitizer what of a block may be touched.
void Close([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) {
#ifdef __SANITIZE_ADDRESS__
    __asan_poison_memory_region(memory, size);
#endif
}

void Open([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) {
#ifdef __SANITIZE_ADDRESS__
    __asan_unpoison_memory_region(memory, size);
#endif
}

}  // namespace

void* ItemMemory::Take(std::size_t size) {
    if (size > largest) return ::operator new(size);
    Piece*& free = free_[Rounded(size) / step];
    if (free == nullptr) return TakeNew(Rounded(size));
    Piece* const taken = free;
    Open(taken, Rounded(size));
    free = taken->next;
    return taken;
}

void ItemMemory::GiveBack(void* piece, std::size_t size) noexcept {
    if (size > largest) return ::operator delete(piece);
    Piece*& free = free_[Rounded(size) / step];
    free = new (piece) Piece{free};
    Close(piece, Rounded(size));
}

std::byte* ItemMemory::TakeNew(std::size_t size) {
    if (size > restSize_) {
        blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(nextBlock_));
        rest_ = blocks_.back().get();
        restSize_ = std::exchange(nextBlock_, std::min(nextBlock_ * 2, lastBlock));
        Close(rest_, restSize_);
    }
    std::byte* const taken = rest_;
    rest_ += size;
    restSize_ -= size;
    Open(taken, size);
    return taken;
}

}  // namespace widgets
