#include "widgets/number_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>
#include <vector>

namespace widgets {
namespace {

using Numbers = NumberMap<std::shared_ptr<int>>;

std::vector<int> All(const Numbers& map) {
    std::vector<int> all;
    map.Each([&](const std::shared_ptr<int>& value) { all.push_back(*value); });
    return all;
}

TEST(NumberMaps, GiveTheValueOfANumber) {
    Numbers map;
    EXPECT_TRUE(map.Add(3, std::make_shared<int>(30)));
    EXPECT_TRUE(map.Add(4, std::make_shared<int>(40)));
    EXPECT_EQ(*map.Find(3), 30);
    EXPECT_EQ(*map.Find(4), 40);
    EXPECT_EQ(map.Find(5), nullptr);
    EXPECT_EQ(map.Find(3 + 512), nullptr);
    EXPECT_EQ(map.Size(), 2u);
}

TEST(NumberMaps, KeepWhatIsThereUnderANumberInUse) {
    Numbers map;
    map.Add(1, std::make_shared<int>(10));
    EXPECT_FALSE(map.Add(1, std::make_shared<int>(11)));
    EXPECT_EQ(*map.Find(1), 10);
    EXPECT_EQ(map.Size(), 1u);
}

TEST(NumberMaps, TakeEveryNumberThatThereIs) {
    Numbers map;
    const std::vector<std::int32_t> numbers = {0,
                                               1,
                                               -1,
                                               511,
                                               512,
                                               std::numeric_limits<std::int32_t>::max(),
                                               std::numeric_limits<std::int32_t>::min()};
    for (const std::int32_t number : numbers) {
        EXPECT_TRUE(map.Add(number, std::make_shared<int>(number)));
    }
    for (const std::int32_t number : numbers) EXPECT_EQ(*map.Find(number), number);
    EXPECT_THAT(All(map), testing::UnorderedElementsAreArray(numbers));
}

TEST(NumberMaps, HandOutWhatTheyLetGo) {
    Numbers map;
    map.Add(7, std::make_shared<int>(70));
    EXPECT_EQ(*map.Remove(7), 70);
    EXPECT_EQ(map.Remove(7), nullptr);
    EXPECT_EQ(map.Remove(100000), nullptr);
    EXPECT_EQ(map.Find(7), nullptr);
    EXPECT_EQ(map.Size(), 0u);
    EXPECT_TRUE(map.Add(7, std::make_shared<int>(71)));
}

TEST(NumberMaps, DoAsTheSlowKindDoes) {
    std::mt19937 random(7);
    Numbers map;
    std::map<int, int> slow;
    for (int i = 0; i < 20000; ++i) {
        const int number = static_cast<int>(random() % 3000);
        if (random() % 3 != 0) {
            EXPECT_EQ(map.Add(number, std::make_shared<int>(i)), slow.emplace(number, i).second);
        } else {
            const auto found = slow.find(number);
            const auto removed = map.Remove(number);
            ASSERT_EQ(removed != nullptr, found != slow.end());
            if (removed == nullptr) continue;
            EXPECT_EQ(*removed, found->second);
            slow.erase(found);
        }
    }
    EXPECT_EQ(map.Size(), slow.size());
    for (const auto& [number, value] : slow) EXPECT_EQ(*map.Find(number), value);
}

}  // namespace
}  // namespace widgets
