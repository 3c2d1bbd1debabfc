#include "widgets/node_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace widgets {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Nodes : public testing::Test {
protected:
    NodePtr Add(std::int32_t number, const NodePtr& parent = nullptr) {
        return store.Add(number, parent ? *parent : store.Top());
    }
    /// The numbers of all nodes, parents before children.
    std::vector<std::int32_t> All() {
        std::vector<std::int32_t> numbers;
        store.Each([&](const TreeNode& node) { numbers.push_back(node.Number()); });
        return numbers;
    }
    /// The numbers of children, from the last to the first.
    static std::vector<std::int32_t> Backwards(const TreeNode& parent) {
        std::vector<std::int32_t> numbers;
        for (const TreeNode* at = parent.LastChild(); at != nullptr; at = at->Previous()) {
            numbers.push_back(at->Number());
        }
        return numbers;
    }
    std::vector<std::int32_t> Branch(TreeNode& root) const {
        std::vector<std::int32_t> numbers;
        for (const NodePtr& node : store.BranchOf(root)) numbers.push_back(node->Number());
        return numbers;
    }

    NodeStore store;
};

TEST_F(Nodes, AreFoundByTheirNumbers) {
    const NodePtr root = Add(0);
    const NodePtr child = Add(7, root);
    EXPECT_EQ(store.Find(0), root);
    EXPECT_EQ(store.Find(7), child);
    EXPECT_EQ(store.Find(1), nullptr);
    EXPECT_EQ(store.Size(), 2u);
    EXPECT_EQ(child->Number(), 7);
}

TEST_F(Nodes, OfANumberInUseAreNotAdded) {
    const NodePtr root = Add(0);
    EXPECT_EQ(Add(0), nullptr);
    EXPECT_EQ(Add(0, root), nullptr);
    EXPECT_EQ(store.Size(), 1u);
    EXPECT_EQ(root->FirstChild(), nullptr);
}

TEST_F(Nodes, StandInTheOrderInWhichTheyWereAdded) {
    const NodePtr root = Add(0);
    const NodePtr first = Add(5, root);
    Add(3, root);
    Add(4, first);
    Add(9);
    EXPECT_THAT(All(), ElementsAre(0, 5, 4, 3, 9));
    EXPECT_THAT(Backwards(*root), ElementsAre(3, 5));
    EXPECT_THAT(Backwards(store.Top()), ElementsAre(9, 0));
}

TEST_F(Nodes, KnowTheirParents) {
    const NodePtr root = Add(0);
    const NodePtr child = Add(1, root);
    EXPECT_EQ(store.ParentOf(*child), root);
    EXPECT_EQ(store.ParentOf(*root), nullptr);
    EXPECT_EQ(&store.PlaceOf(*root), &store.Top());
}

TEST_F(Nodes, LeaveWithAllBelowThem) {
    const NodePtr root = Add(0);
    const NodePtr first = Add(1, root);
    const NodePtr middle = Add(2, root);
    const NodePtr last = Add(3, root);
    const NodePtr below = Add(4, middle);
    store.Remove(*middle);
    EXPECT_THAT(All(), ElementsAre(0, 1, 3));
    EXPECT_THAT(Backwards(*root), ElementsAre(3, 1));
    EXPECT_FALSE(store.Holds(*middle));
    EXPECT_FALSE(store.Holds(*below));
    EXPECT_EQ(store.ParentOf(*below), nullptr);
    EXPECT_EQ(store.Find(4), nullptr);
    store.Remove(*first);
    store.Remove(*last);
    EXPECT_EQ(root->FirstChild(), nullptr);
    EXPECT_EQ(root->LastChild(), nullptr);
    EXPECT_TRUE(store.Holds(*root));
}

TEST_F(Nodes, MayComeBackUnderAFreedNumber) {
    const NodePtr root = Add(0);
    store.Remove(*root);
    const NodePtr again = Add(0);
    ASSERT_TRUE(again);
    EXPECT_NE(again, root);
    EXPECT_FALSE(store.Holds(*root));
    EXPECT_TRUE(store.Holds(*again));
}

TEST_F(Nodes, AreGoneAfterClear) {
    const NodePtr root = Add(0);
    const NodePtr child = Add(1, root);
    store.Clear();
    EXPECT_THAT(All(), IsEmpty());
    EXPECT_EQ(store.Size(), 0u);
    EXPECT_FALSE(store.Holds(*root));
    EXPECT_FALSE(store.Holds(*child));
    EXPECT_TRUE(store.Holds(store.Top()));
    Add(1);
    EXPECT_THAT(All(), ElementsAre(1));
}

TEST_F(Nodes, OfABranchComeParentsFirst) {
    const NodePtr root = Add(0);
    const NodePtr first = Add(1, root);
    Add(2, first);
    Add(3, first);
    const NodePtr second = Add(4, root);
    Add(5, second);
    Add(6);
    EXPECT_THAT(Branch(*root), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(Branch(*second), ElementsAre(4, 5));
}

TEST_F(Nodes, InADeepBranchNeedNoDeepStack) {
    NodePtr at = Add(0);
    const NodePtr root = at;
    for (std::int32_t i = 1; i < 200000; ++i) at = Add(i, at);
    EXPECT_EQ(Branch(*root).back(), 199999);
    store.Remove(*root);
    EXPECT_EQ(store.Size(), 0u);
}

}  // namespace
}  // namespace widgets
