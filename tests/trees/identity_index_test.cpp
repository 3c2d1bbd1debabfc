#include "trees/identity_index.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>

namespace trees {
namespace {

class Identities : public testing::Test {
protected:
    IdentityIndex index;
    const int first = 0;
    const int second = 0;
};

TEST_F(Identities, GiveTheNumberOfWhoRefersToThem) {
    IdentityIndex::Entry entry(5);
    EXPECT_EQ(index.First(&first), std::nullopt);
    index.Set(entry, &first);
    EXPECT_EQ(index.First(&first), 5);
    EXPECT_EQ(index.First(&second), std::nullopt);
}

TEST_F(Identities, GiveTheSmallestNumberWhateverTheOrder) {
    std::map<int, IdentityIndex::Entry> entries;
    for (const int number : {5, 9, 2, 7, 1}) {
        index.Set(entries.try_emplace(number, number).first->second, &first);
    }
    for (auto& [number, entry] : entries) {
        EXPECT_EQ(index.First(&first), number);
        index.Set(entry, nullptr);
    }
    EXPECT_EQ(index.First(&first), std::nullopt);
}

TEST_F(Identities, FollowWhoRefersToAnother) {
    IdentityIndex::Entry a(1);
    IdentityIndex::Entry b(2);
    index.Set(a, &first);
    index.Set(b, &first);
    index.Set(a, &second);
    EXPECT_EQ(index.First(&first), 2);
    EXPECT_EQ(index.First(&second), 1);
    index.Set(a, &second);
    EXPECT_EQ(index.First(&second), 1);
    index.Set(a, nullptr);
    EXPECT_EQ(index.First(&second), std::nullopt);
    index.Set(a, &first);
    EXPECT_EQ(index.First(&first), 1);
}

TEST_F(Identities, AreNotThereForNothing) {
    IdentityIndex::Entry entry(1);
    index.Set(entry, nullptr);
    EXPECT_EQ(index.First(nullptr), std::nullopt);
}

TEST_F(Identities, InTheMiddleAreTakenOut) {
    std::deque<IdentityIndex::Entry> entries;
    for (int number = 1; number <= 3; ++number) index.Set(entries.emplace_back(number), &first);
    index.Set(entries[1], nullptr);
    index.Set(entries[0], nullptr);
    EXPECT_EQ(index.First(&first), 3);
    index.Set(entries[1], &first);
    EXPECT_EQ(index.First(&first), 2);
}

}  // namespace
}  // namespace trees
