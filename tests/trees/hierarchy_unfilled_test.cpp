#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What a node is filled with when it opens, and which nodes wait for that.
class HierarchyUnfilled : public HierarchyTest {
protected:
    HierarchyUnfilled() {
        tree.Call("AddRootNode", trees);
        Take();
    }
    [[nodiscard]] Texts Below() const { return Window().Below(Window().At({"On Trees"})); }
};

TEST_F(HierarchyUnfilled, InNodeExpandThePlaceholderIsGone) {
    ASSERT_TRUE(tree.Call("ParentNode", "ID:2").Object());
    int count = -1;
    events.On("NodeExpand").Run([&] {
        EXPECT_EQ(tree.Call("ParentNode", "ID:2").AutomationNumber(), 35601);
        count = Window().Count();
    });
    Window().Open({"On Trees"});
    EXPECT_EQ(count, 1);
}

TEST_F(HierarchyUnfilled, ItIsFilledWithTheLinksOfWhatNodeExpandPutsIntoItsRecord) {
    events.On("NodeExpand").Run([this](const Arguments& arguments) {
        LateBound(arguments.Object(0).Get()).PutRef("repObject", knuth);
    });
    Window().Open({"On Trees"});
    EXPECT_THAT(Below(), ElementsAre("On Trees"));
    EXPECT_EQ(KeyOf(third), "ID:3");
    EXPECT_EQ(InfoOf(first).Get(), nullptr);
}

TEST_F(HierarchyUnfilled, ARecordOfNothingMakesExpandFail) {
    events.On("NodeExpand").Run([this](const Arguments& arguments) {
        LateBound(arguments.Object(0).Get()).PutRef("repObject", Nothing());
    });
    const Outcome failed = tree.Call("Expand", trees);
    EXPECT_EQ(failed.AutomationNumber(), 91);
    EXPECT_EQ(failed.source, "OrvaneControls.HierarchyTreeView");
    EXPECT_THAT(Window().All(), ElementsAre("On Trees")) << "the placeholder went before";
}

TEST_F(HierarchyUnfilled, ItIsKnownByTheImageOfItsFirstChild) {
    events.On("AddingNode").Times(1).Run([this](const Arguments& arguments) {
        Allow(arguments);
        LateBound(arguments.Object(0).Get()).Put("Image", "__Dummy");
    });
    Window().Open({"On Trees"});
    ASSERT_THAT(Below(), ElementsAre("On Graphs", "On Lists"));
    ASSERT_EQ(KeyOf(first), "ID:3");
    events.On("AddingNode").Run([this](const Arguments& arguments) { Allow(arguments); });
    Window().Close(Window().At({"On Trees"}));
    Take();
    Window().Open({"On Trees"});
    EXPECT_THAT(Taken("NodeExpand"), ElementsAre("NodeExpand(HTNodeInfo ID:1)"));
    EXPECT_THAT(Below(), ElementsAre("On Lists", "On Graphs", "On Lists"))
        << "the first child was taken for a placeholder";
    EXPECT_EQ(tree.Call("ParentNode", "ID:3").AutomationNumber(), 35601);
    EXPECT_EQ(tree.Call("ParentNode", "ID:4").AutomationNumber(), 35601) << "nor its own child";
    EXPECT_EQ(KeyOf(first), "ID:3") << "its record stays";
}

TEST_F(HierarchyUnfilled, NodesThatWereAddedBesideThePlaceholderStayInFront) {
    ASSERT_TRUE(tree.Call("AddSubNode", knuth, "ID:1", third));
    ASSERT_TRUE(tree.Call("AddRootNode", graphs, "ID:1"));
    ASSERT_THAT(Below(), ElementsAre("Loading", "Knuth", "On Graphs"));
    Window().Open({"On Trees"});
    EXPECT_THAT(Below(), ElementsAre("Knuth", "On Graphs", "On Graphs", "On Lists"));
    EXPECT_EQ(events.Count("NodeExpand"), 1u);
}

TEST_F(HierarchyUnfilled, ANodeThatIsNotOpenedYetIsFilledByItsFirstChildAlone) {
    // A root node without links gets no placeholder: what is added first is not one either.
    tree.Call("AddRootNode", graphs);
    ASSERT_TRUE(tree.Call("AddSubNode", knuth, KeyOf(graphs), third));
    Take();
    Window().Open({"On Graphs"});
    EXPECT_THAT(Window().Below(Window().At({"On Graphs"})), ElementsAre("Knuth"));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyUnfilled, APlaceholderItselfGetsNoNodes) {
    SelectPlaceholder(Window(), {"On Trees"});
    ASSERT_EQ(Window().SelectedText(), "Loading");
    EXPECT_TRUE(tree.Call("AddSubNodeToCurrent", graphs, first));
    EXPECT_THAT(Take(), IsEmpty());
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading"));
}

TEST_F(HierarchyUnfilled, APlaceholderItselfIsNotExpanded) {
    SelectPlaceholder(Window(), {"On Trees"});
    ASSERT_EQ(Window().SelectedText(), "Loading");
    EXPECT_TRUE(tree.Call("Expand", knuth));
    EXPECT_THAT(Take(), IsEmpty());
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading"));
}

TEST_F(HierarchyUnfilled, APlaceholderThatIsSelectedStandsForNothing) {
    SelectPlaceholder(Window(), {"On Trees"});
    ASSERT_EQ(Window().SelectedText(), "Loading");
    for (const char* member : {"selection", "SelectionInfo"}) {
        const Outcome selected = tree.Get(member);
        EXPECT_TRUE(selected) << member;
        EXPECT_EQ(selected.value, Nothing()) << member;
    }
}

}  // namespace
}  // namespace support
