#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace widgets {

/// Memory for the rows of a list or the nodes of a tree, in small pieces out of large blocks: a
/// system's heap slows down with millions of blocks. A piece that is given back is taken again by
/// the next of its size; the blocks go all at once, with the memory.
class ItemMemory {
public:
    ItemMemory() = default;
    ItemMemory(const ItemMemory&) = delete;
    ItemMemory& operator=(const ItemMemory&) = delete;

    /// What a piece for `size` bytes really holds.
    static constexpr std::size_t Rounded(std::size_t size) {
        return (size + step - 1) / step * step;
    }

    /// Aligned to 16 bytes where the heap's blocks are. Throws `std::bad_alloc`.
    void* Take(std::size_t size);
    /// `size` is what was asked for.
    void GiveBack(void* piece, std::size_t size) noexcept;

private:
    static constexpr std::size_t step = 16;
    /// Larger ones are the heap's business.
    static constexpr std::size_t largest = 1024;
    static constexpr std::size_t firstBlock = 4096;
    static constexpr std::size_t lastBlock = 1 << 20;

    struct Piece {
        Piece* next;
    };

    std::byte* TakeNew(std::size_t size);

    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    /// What is left of the last block.
    std::byte* rest_ = nullptr;
    std::size_t restSize_ = 0;
    std::size_t nextBlock_ = firstBlock;
    /// The pieces of each size that wait to be taken again.
    std::array<Piece*, largest / step + 1> free_{};
};

/// Lets the standard library put objects into a memory, which stays as long as any of them.
template <class T>
class ItemAllocator {
public:
    using value_type = T;

    explicit ItemAllocator(std::shared_ptr<ItemMemory> memory) : memory_(std::move(memory)) {}
    template <class Other>
    ItemAllocator(const ItemAllocator<Other>& other) : memory_(other.Memory()) {}

    T* allocate(std::size_t count) { return static_cast<T*>(memory_->Take(count * sizeof(T))); }
    void deallocate(T* objects, std::size_t count) noexcept {
        memory_->GiveBack(objects, count * sizeof(T));
    }
    const std::shared_ptr<ItemMemory>& Memory() const { return memory_; }
    bool operator==(const ItemAllocator&) const = default;

private:
    std::shared_ptr<ItemMemory> memory_;
};

}  // namespace widgets
