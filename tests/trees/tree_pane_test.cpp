#include "trees/tree_pane.h"

#include <gtest/gtest.h>

#include <limits>

namespace trees {
namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

TEST(TreePanes, NumberNodesUpToTheLargestNumber) {
    NodeCounter counter(largest - 1);
    EXPECT_EQ(NextNumber(counter), largest);
}

TEST(TreePanes, FailWithAnOverflowAfterTheLargestNumber) {
    NodeCounter counter(largest);
    for (int time = 0; time < 2; ++time) {
        try {
            NextNumber(counter);
            FAIL() << "a number after the largest one";
        } catch (const _com_error& error) {
            EXPECT_EQ(error.Error(), ole::ToHresult(ole::Number::overflow));
            EXPECT_EQ(error.Error(), static_cast<HRESULT>(0x800A0006));
        }
    }
}

}  // namespace
}  // namespace trees
