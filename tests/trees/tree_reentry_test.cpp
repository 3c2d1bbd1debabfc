#include "trees/tree_drag_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What a host does in an event that the user has caused.
class TreeReentry : public TreeInputTest {
protected:
    TreeReentry() {
        tree.Call("AddRootNode", knuth);
        Take();
    }
    void ExpectOpen(const char* text) {
        const HTREEITEM node = Window().At({text});
        EXPECT_TRUE(Window().IsOpen(node)) << text;
    }
};

TEST_F(TreeReentry, AHostMayExpandAnotherNodeInAClick) {
    events.On("NodeClick").Run([this] { EXPECT_TRUE(tree.Call("Expand", trees)); });
    Click(Window(), On(Window(), {"On Graphs"}));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    ExpectOpen("On Trees");
    EXPECT_EQ(Window().SelectedText(), "On Trees");
    const auto all = Events();
    EXPECT_THAT(Of(all, "NodeClick"), ElementsAre("NodeClick(HTNodeInfo ID:3)"));
    EXPECT_THAT(Of(all, "NodeExpand"), ElementsAre("NodeExpand(HTNodeInfo ID:1)"));
}

TEST_F(TreeReentry, AHostMayExpandTheNodeThatIsDoubleClicked) {
    events.On("NodeClick").Run([this] { EXPECT_TRUE(tree.Call("Expand", trees)); });
    DoubleClick(Window(), On(Window(), {"On Trees"}));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    EXPECT_EQ(Of(Events(), "NodeExpand").size(), 1u);
}

TEST_F(TreeReentry, AHostMayExpandAnotherNodeWhileOneOpens) {
    events.On("NodeExpand").Times(1).Run([this] { EXPECT_TRUE(tree.Call("Expand", knuth)); });
    Click(Window(), On(Window(), {"On Trees"}));
    Take();
    Keys({VK_ADD});
    EXPECT_THAT(Of(Events(), "NodeExpand"),
                ElementsAre("NodeExpand(HTNodeInfo ID:1)", "NodeExpand(HTNodeInfo ID:4)"));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    EXPECT_THAT(Window().Below(Window().At({"Knuth"})), ElementsAre("On Trees"));
    ExpectOpen("On Trees");
    ExpectOpen("Knuth");
    EXPECT_EQ(Window().SelectedText(), "Knuth");
}

TEST_F(TreeReentry, AHostMayExpandTheNodeThatOpens) {
    events.On("NodeExpand").Times(1).Run([this] { EXPECT_TRUE(tree.Call("Expand", trees)); });
    Click(Window(), On(Window(), {"On Trees"}));
    Take();
    Keys({VK_ADD});
    EXPECT_THAT(Of(Events(), "NodeExpand"), ElementsAre("NodeExpand(HTNodeInfo ID:1)"));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    ExpectOpen("On Trees");
}

/// The events of a described tree that a click and a double click cause.
class DescribedClickReentry : public TreeInputTest,
                              public testing::WithParamInterface<const char*> {};

TEST_P(DescribedClickReentry, AHostMayClearTheTree) {
    describedEvents.On(GetParam()).Run([this] { EXPECT_TRUE(described.Call("Clear")); });
    DoubleClick(Described(), On(Described(), {"Root"}));
    EXPECT_THAT(Described().All(), IsEmpty());
    EXPECT_EQ(Of(Events(), GetParam()).size(), 1u);
}

TEST_P(DescribedClickReentry, AHostMayRemoveTheControl) {
    const HWND shown = Described().Handle();
    describedEvents.On(GetParam()).Run([this] { LetGoOfDescribed(); });
    DoubleClick(Described(), On(Described(), {"Root"}));
    EXPECT_FALSE(described);
    EXPECT_FALSE(IsWindow(shown));
}

INSTANTIATE_TEST_SUITE_P(, DescribedClickReentry, testing::Values("NodeClick", "NodeDblClick"),
                         [](const auto& event) { return event.param; });

/// The events of a drag, which here is one from a tree to itself.
class TreeDragReentry : public TreeDragTest, public testing::WithParamInterface<const char*> {
protected:
    void DragWithinTree() {
        DragTree({"On Graphs"}, Window().Handle(), On(Window(), {"On Trees"}));
    }
    void DragWithinDescribed() {
        Drag(Described().Handle(), On(Described(), {"Root", "On Lists"}), Described().Handle(),
             On(Described(), {"Root"}));
    }
};

TEST_P(TreeDragReentry, AHostMayClearTheTree) {
    events.On(GetParam()).Times(1).Run([this] { EXPECT_TRUE(tree.Call("Clear")); });
    DragWithinTree();
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_EQ(Of(Events(), "OLECompleteDrag").size(), 1u);
    describedEvents.On(GetParam()).Times(1).Run([this] { EXPECT_TRUE(described.Call("Clear")); });
    DragWithinDescribed();
    EXPECT_THAT(Described().All(), IsEmpty());
    EXPECT_EQ(Of(Events(), "described.OLECompleteDrag").size(), 1u);
}

TEST_P(TreeDragReentry, AHostMayRemoveTheControl) {
    const HWND shown = Window().Handle();
    events.On(GetParam()).Times(1).Run([this] { LetGo(); });
    DragWithinTree();
    EXPECT_FALSE(tree);
    EXPECT_FALSE(IsWindow(shown));
    const HWND describedShown = Described().Handle();
    describedEvents.On(GetParam()).Times(1).Run([this] { LetGoOfDescribed(); });
    DragWithinDescribed();
    EXPECT_FALSE(described);
    EXPECT_FALSE(IsWindow(describedShown));
}

INSTANTIATE_TEST_SUITE_P(, TreeDragReentry,
                         testing::Values("OLEStartDrag", "OLEDragOver", "OLEGiveFeedback",
                                         "OLEDragDrop", "OLECompleteDrag"),
                         [](const auto& event) { return event.param; });

}  // namespace
}  // namespace support
