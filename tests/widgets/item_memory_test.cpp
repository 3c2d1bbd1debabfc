#include "widgets/item_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <set>
#include <vector>

namespace widgets {
namespace {

TEST(ItemMemory, PiecesAreApartAndAligned) {
    ItemMemory memory;
    std::vector<std::pair<unsigned char*, std::size_t>> pieces;
    for (std::size_t size = 1; size < 3000; size += 7) {
        auto* const piece = static_cast<unsigned char*>(memory.Take(size));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(piece) % alignof(void*), 0u);
        std::memset(piece, static_cast<int>(size % 251), size);
        pieces.emplace_back(piece, size);
    }
    for (const auto& [piece, size] : pieces) {
        for (std::size_t i = 0; i < size; ++i) ASSERT_EQ(piece[i], size % 251);
        memory.GiveBack(piece, size);
    }
}

TEST(ItemMemory, WhatIsGivenBackIsTakenAgain) {
    ItemMemory memory;
    std::set<void*> taken;
    for (int i = 0; i < 1000; ++i) taken.insert(memory.Take(100));
    EXPECT_EQ(taken.size(), 1000u);
    for (void* piece : taken) memory.GiveBack(piece, 100);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(taken.count(memory.Take(97)), 1u);
    EXPECT_EQ(taken.count(memory.Take(100)), 0u);
}

TEST(ItemMemory, PiecesOfOtherSizesDoNotShareMemory) {
    ItemMemory memory;
    void* const small = memory.Take(16);
    memory.GiveBack(small, 16);
    EXPECT_NE(memory.Take(17), small);
    EXPECT_EQ(memory.Take(1), small);
}

TEST(ItemMemory, AnAllocatorsObjectsKeepIt) {
    std::weak_ptr<ItemMemory> watched;
    std::shared_ptr<int> kept;
    {
        const auto memory = std::make_shared<ItemMemory>();
        watched = memory;
        kept = std::allocate_shared<int>(ItemAllocator<int>(memory), 7);
    }
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(*kept, 7);
    kept.reset();
    EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace widgets
