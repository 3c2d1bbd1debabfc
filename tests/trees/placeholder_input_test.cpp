#include "trees/tree_input_fixture.h"

namespace support {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// The user meets a placeholder. Of nodes that are opened none is left.
class PlaceholderInput : public TreeInputTest {
protected:
    PlaceholderInput() {
        // The tree asks whether a new node has links, and finds one shown before it has the answer.
        knuth->On("Outgoing_").Times(1).Run([this] {
            EXPECT_TRUE(tree.Call("AddSubNode", lists, KeyOf(knuth), third));
        });
        tree.Call("AddRootNode", knuth);
        tree.Call("Expand", knuth);
        // Another program changes the window's own state, which does not fill the node.
        TVITEMW open = {};
        open.mask = TVIF_STATE | TVIF_HANDLE;
        open.hItem = Described().At({"Root"});
        open.state = open.stateMask = TVIS_EXPANDED;
        SendMessageW(Described().Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&open));
        EXPECT_NE(Described().At(inDescribed), nullptr);
        for (const LateBound* control : {&tree, &described}) {
            control->Put("dragAllowed", true);
            control->Put("dropAllowed", true);
        }
        Take();
    }

    const Texts inTree = {"Knuth", "Loading"};
    const Texts inDescribed = {"Root", "Loading"};
};

TEST_F(PlaceholderInput, IsSeen) {
    EXPECT_THAT(Window().Below(Window().At({"Knuth"})), ElementsAre("On Lists", "Loading"));
    EXPECT_TRUE(Window().IsOpen(Window().At({"Knuth"})));
    EXPECT_TRUE(Described().IsOpen(Described().At({"Root"})));
}

TEST_F(PlaceholderInput, EventsAboutItCarryNothing) {
    Click(Window(), On(Window(), inTree));
    EXPECT_THAT(Events(), ElementsAre("NodeClick(Nothing)"));
    Click(Window(), On(Window(), inTree), Input::Button::right);
    EXPECT_THAT(Events(), ElementsAre("NodeRClick(Nothing)"));
    Keys({VK_ESCAPE});
    Sleep(GetDoubleClickTime() + 50);
    DoubleClick(Window(), On(Window(), inTree));
    EXPECT_THAT(Events(), ElementsAre("NodeClick(Nothing)", "NodeDblClick(Nothing)"));
    Keys({VK_ADD});
    EXPECT_THAT(Events(), IsEmpty()) << "it does not open";
    tree.Put("Checkboxes", true);
    Click(Window(), OnCheckBox(Window(), Window().At(inTree)));
    EXPECT_THAT(Events(), ElementsAre("NodeCheck(Nothing)"));
}

TEST_F(PlaceholderInput, ItsTextIsEditedAsAnyOther) {
    tree.Put("LabelEdit", true);
    Click(Window(), On(Window(), inTree));
    Take();
    Input input;
    input.Key(VK_F2).Wait(150).Text("Soon").Key(VK_RETURN).Wait(100);
    ASSERT_TRUE(Play(input));
    EXPECT_THAT(Events(),
                ElementsAre("BeforeLabelEdit(0, Nothing)", "AfterLabelEdit(0, Nothing, \"Soon\")"));
}

TEST_F(PlaceholderInput, ADropOnItCarriesNothing) {
    Drag(Window().Handle(), On(Window(), {"On Graphs"}), Window().Handle(), On(Window(), inTree));
    EXPECT_THAT(Of(Events(), "OLEDragDrop"), ElementsAre("OLEDragDrop(Nothing, 1)"));
}

TEST_F(PlaceholderInput, ADragOfItCarriesNothing) {
    Drag(Window().Handle(), On(Window(), inTree), Window().Handle(), On(Window(), {"On Graphs"}));
    const auto all = Events();
    EXPECT_THAT(all, Contains("OLEStartDrag(Nothing, 3)"));
    EXPECT_THAT(all, Contains("OLECompleteDrag(1)"));
}

TEST_F(PlaceholderInput, InADescribedTreeItHasNoRecordAndRaisesNoEvent) {
    const POINT place = On(Described(), inDescribed);
    Click(Described(), place);
    EXPECT_EQ(Described().SelectedText(), "Loading");
    EXPECT_EQ(described.Get("selection").AutomationNumber(), 5);
    Sleep(GetDoubleClickTime() + 50);
    DoubleClick(Described(), place);
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(Described().SelectedText(), "Loading");
    Drag(Described().Handle(), place, Window().Handle(), On(Window(), {"On Graphs"}));
    EXPECT_THAT(Events(), IsEmpty()) << "it is not dragged";
}

TEST_F(PlaceholderInput, InADescribedTreeADropOnItRaisesNothingAndHasNoEffect) {
    Drag(Window().Handle(), On(Window(), {"On Graphs"}), Described().Handle(),
         On(Described(), inDescribed));
    const auto all = Events();
    EXPECT_THAT(all, Contains("described.OLEDragOver()"));
    EXPECT_THAT(Of(all, "OLEDragDrop"), IsEmpty());
    EXPECT_THAT(all, Contains("OLECompleteDrag(0)"));
}

}  // namespace
}  // namespace support
