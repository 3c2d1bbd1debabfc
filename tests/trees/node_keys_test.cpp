#include "trees/node_keys.h"

#include <gtest/gtest.h>

#include <limits>

namespace trees {
namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

TEST(NodeKeys, AreIdAndTheNumberInDecimal) {
    EXPECT_EQ(KeyOf(1), L"ID:1");
    EXPECT_EQ(KeyOf(20), L"ID:20");
    EXPECT_EQ(KeyOf(largest), L"ID:2147483647");
}

TEST(NodeKeys, OfTheRootIsRoot) {
    EXPECT_EQ(KeyOf(rootNumber), L"Root");
    EXPECT_EQ(NumberIn(L"Root"), rootNumber);
}

TEST(NodeKeys, GiveTheirNumbers) {
    EXPECT_EQ(NumberIn(L"ID:1"), 1);
    EXPECT_EQ(NumberIn(L"ID:2147483647"), largest);
}

TEST(NodeKeys, AreNothingElse) {
    for (const wchar_t* key :
         {L"", L"ID:", L"ID:0", L"ID:01", L"ID:-1", L"ID:+1", L"ID: 1", L"ID:1 ", L"ID:2147483648",
          L"ID:99999999999999999999", L"1", L"x", L"ID:1x", L"Roots", L"Roo"}) {
        EXPECT_EQ(NumberIn(key), std::nullopt);
        EXPECT_EQ(NumberInAnyCase(key), std::nullopt);
    }
}

TEST(NodeKeys, KnowCaseUnlessTheyAreAskedNotTo) {
    EXPECT_EQ(NumberIn(L"id:7"), std::nullopt);
    EXPECT_EQ(NumberIn(L"root"), std::nullopt);
    EXPECT_EQ(NumberInAnyCase(L"id:7"), 7);
    EXPECT_EQ(NumberInAnyCase(L"iD:7"), 7);
    EXPECT_EQ(NumberInAnyCase(L"ROOT"), rootNumber);
}

TEST(NodeCounters, CountFromOne) {
    NodeCounter counter;
    EXPECT_EQ(counter.Next(), 1);
    EXPECT_EQ(counter.Next(), 2);
}

TEST(NodeCounters, EndAtTheLargestNumber) {
    NodeCounter counter(largest - 1);
    EXPECT_EQ(counter.Next(), largest);
    EXPECT_EQ(counter.Next(), std::nullopt);
    EXPECT_EQ(counter.Next(), std::nullopt);
}

}  // namespace
}  // namespace trees
