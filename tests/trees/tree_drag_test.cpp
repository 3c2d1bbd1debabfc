#include <algorithm>

#include "trees/tree_drag_fixture.h"

namespace support {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class TreeDrag : public TreeDragTest {
protected:
    [[nodiscard]] POINT OnRow() const {
        RECT label = {};
        label.left = LVIR_LABEL;
        SendMessageW(List(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&label));
        return {label.left + 15, (label.top + label.bottom) / 2};
    }
};

TEST_F(TreeDrag, FromOneTreeToANodeOfTheOtherRaisesTheEventsInOrder) {
    DragTree({"On Graphs"}, Described().Handle(), On(Described(), {"Root", "On Lists"}));
    const auto all = Events();
    const auto at = [&](const char* event) { return std::find(all.begin(), all.end(), event); };
    const auto start = at("OLEStartDrag(HTNodeInfo ID:3, 3)");
    const auto over = at("described.OLEDragOver()");
    const auto feedback = at("OLEGiveFeedback(1, True)");
    const auto drop = at("described.OLEDragDrop(NodeInfo ID:5, 1)");
    const auto complete = at("OLECompleteDrag(1)");
    EXPECT_LT(start, over) << testing::PrintToString(all);
    EXPECT_LT(over, drop);
    EXPECT_LT(feedback, drop);
    EXPECT_LT(drop, complete);
    EXPECT_NE(complete, all.end());
    EXPECT_EQ(tree.Get("selection").Object().Get(), graphs) << "what is dragged is selected";
}

TEST_F(TreeDrag, FromTheDescribedTreeToTheHierarchyTree) {
    DragDescribedToTree();
    const auto all = Events();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.front(), "described.OLEStartDrag(NodeInfo ID:5, 3)");
    EXPECT_THAT(all, Contains("OLEDragOver()"));
    EXPECT_THAT(all, Contains("described.OLEGiveFeedback(1, True)"));
    EXPECT_THAT(all, Contains("OLEDragDrop(HTNodeInfo ID:1, 1)"));
    EXPECT_EQ(all.back(), "described.OLECompleteDrag(1)");
}

TEST_F(TreeDrag, FromATreeToAList) {
    DragTree({"On Graphs"}, List(), OnRow());
    EXPECT_THAT(Of(Events(), "OLEDragDrop"), ElementsAre("list.OLEDragDrop(p1, 4, 1)"));
}

TEST_F(TreeDrag, FromAListToATree) {
    const POINT row = OnRow();
    Input input;
    // A list does not begin a drag with a move that leaves it.
    input.MoveTo(List(), row).Wait(50).Press().Wait(100).MoveTo(List(), {row.x + 20, row.y});
    input.Wait(150)
        .MoveTo(Window().Handle(), On(Window(), {"On Trees"}))
        .Wait(150)
        .Release()
        .Wait(100);
    ASSERT_TRUE(Play(input));
    const auto all = Events();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.front(), "list.OLEStartDrag(p1, 4, 3)");
    EXPECT_THAT(Of(all, "OLEDragDrop"), ElementsAre("OLEDragDrop(HTNodeInfo ID:1, 1)"));
    EXPECT_EQ(all.back(), "list.OLECompleteDrag(1)");
}

TEST_F(TreeDrag, ADropOntoEmptySpaceRaisesNothing) {
    DragTree({"On Graphs"}, Window().Handle(), BelowItems(Window()));
    DragTree({"On Graphs"}, Described().Handle(), BelowItems(Described()));
    const auto all = Events();
    EXPECT_THAT(Of(all, "OLEDragDrop"), IsEmpty());
    EXPECT_EQ(Of(all, "OLEStartDrag").size(), 2u);
    EXPECT_THAT(Of(all, "OLECompleteDrag"), testing::Contains("OLECompleteDrag(0)"));
    EXPECT_THAT(Of(all, "OLECompleteDrag"), testing::Each("OLECompleteDrag(0)"));
}

TEST_F(TreeDrag, WithoutTheFlagsNothingIsDraggedOrDropped) {
    tree.Put("dragAllowed", false);
    DragTreeToDescribed();
    EXPECT_THAT(Of(Events(), "OLEStartDrag"), IsEmpty());
    tree.Put("dragAllowed", true);
    described.Put("dropAllowed", false);
    DragTreeToDescribed();
    const auto all = Events();
    ASSERT_FALSE(all.empty());
    EXPECT_THAT(Of(all, "described.OLEDragOver"), IsEmpty());
    EXPECT_EQ(all.back(), "OLECompleteDrag(0)");
}

TEST_F(TreeDrag, AHostMakesALinkFromADropAndShowsIt) {
    Window().Open({"On Trees"});
    events.On("OLEDragDrop").Run([this](const Arguments& arguments) {
        const LateBound target(arguments.Object(0).Get());
        FakeLink* const made = model.Link(cites, trees, graphs, "dropped");
        EXPECT_TRUE(tree.Call("AddNode", target.Get(), made));
    });
    DragTree({"On Graphs"}, Window().Handle(), On(Window(), {"On Trees"}));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})),
                ElementsAre("On Graphs", "On Lists", "On Graphs"));
}

TEST_F(TreeDrag, AHostMayClearTheTreeOnADrop) {
    events.On("OLEDragDrop").Run([this] { tree.Call("Clear"); });
    DragTree({"On Graphs"}, Window().Handle(), On(Window(), {"On Trees"}));
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_THAT(Events(), Contains("OLECompleteDrag(1)"));
}

TEST_F(TreeDrag, ADropOnAFolderIsReportedWithItsRecord) {
    tree.Call("Clear");
    tree.Put("withFolders", true);
    tree.Call("AddExtension", person);
    Window().Open({"Person"});
    Window().Open({"Person", "Knuth"});
    Take();
    LateBound target;
    events.On("OLEDragDrop").Run([&](const Arguments& arguments) { target = arguments.Object(0); });
    const auto drop = [&](const Texts& path) {
        target = LateBound();
        Drag(Described().Handle(), On(Described(), {"Root", "On Lists"}), Window().Handle(),
             On(Window(), path));
        EXPECT_EQ(Of(Events(), "OLEDragDrop").size(), 1u);
    };
    drop({"Person"});
    ASSERT_TRUE(target);
    EXPECT_EQ(target.Get(), InfoOf(person).Get());
    EXPECT_EQ(target.Get("NodeType").value, Value(0)) << "HTMetaNodeFolder";
    EXPECT_EQ(target.Get("key").value, Value("ID:4"));
    drop({"Person", "Knuth", "wrote"});
    ASSERT_TRUE(target);
    EXPECT_EQ(target.Get(), InfoOf(wrote).Get());
    EXPECT_EQ(target.Get("NodeType").value, Value(2)) << "HTMetaLinkFolder";
    EXPECT_EQ(target.Get("repObject").Object().Get(), wrote);
}

}  // namespace
}  // namespace support
