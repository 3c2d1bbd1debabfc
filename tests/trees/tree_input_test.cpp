#include "trees/tree_input_fixture.h"

namespace support {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

using TreeInput = TreeInputTest;

TEST_F(TreeInput, AClickOnANodeSelectsItAndRaisesNodeClick) {
    Click(Window(), On(Window(), {"On Graphs"}));
    EXPECT_THAT(Events(), ElementsAre("NodeClick(HTNodeInfo ID:3)"));
    EXPECT_EQ(tree.Get("selection").Object().Get(), graphs);
    EXPECT_EQ(form.Active(), &hosted);
    Click(Described(), On(Described(), {"Root"}));
    EXPECT_THAT(Events(), ElementsAre("described.NodeClick(NodeInfo Root)"));
}

TEST_F(TreeInput, AClickOnEmptySpaceRaisesNothing) {
    Click(Window(), BelowItems(Window()));
    Click(Described(), BelowItems(Described()));
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(TreeInput, AClickOnAButtonOpensAndClosesAndIsNoClick) {
    const HTREEITEM root = Described().At({"Root"});
    Click(Described(), OnButton(Described(), root));
    EXPECT_TRUE(Described().IsOpen(root));
    EXPECT_THAT(Described().Below(root), ElementsAre("On Trees", "On Graphs", "On Lists"));
    Sleep(GetDoubleClickTime() + 50);
    Click(Described(), OnButton(Described(), root));
    EXPECT_FALSE(Described().IsOpen(root));
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(TreeInput, ADoubleClickRaisesNodeDblClickAndOpensTheNode) {
    DoubleClick(Window(), On(Window(), {"On Trees"}));
    const auto all = Events();
    EXPECT_THAT(Of(all, "NodeDblClick"), ElementsAre("NodeDblClick(HTNodeInfo ID:1)"));
    EXPECT_EQ(all.front(), "NodeClick(HTNodeInfo ID:1)");
    EXPECT_THAT(Of(all, "NodeExpand"), ElementsAre("NodeExpand(HTNodeInfo ID:1)"));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    DoubleClick(Described(), On(Described(), {"Root"}));
    EXPECT_THAT(Events(), ElementsAre("described.NodeClick(NodeInfo Root)",
                                      "described.NodeDblClick(NodeInfo Root)"));
}

TEST_F(TreeInput, ADoubleClickIsAboutTheSelectedNodeWhereverTheMouseIs) {
    Window().Select(Window().At({"On Graphs"}));
    DoubleClick(Window(), BelowItems(Window()));
    EXPECT_THAT(Events(), ElementsAre("NodeDblClick(HTNodeInfo ID:3)"));
    DoubleClick(Described(), BelowItems(Described()));
    EXPECT_THAT(Events(), ElementsAre("described.NodeDblClick(NodeInfo Root)"))
        << "the tree selects its first node when it gets the focus";
}

TEST_F(TreeInput, ADoubleClickWithoutASelectedNode) {
    tree.Call("Clear");
    described.Call("Clear");
    DoubleClick(Described(), BelowItems(Described()));
    EXPECT_THAT(Events(), IsEmpty());
    DoubleClick(Window(), BelowItems(Window()));
    EXPECT_THAT(Events(), ElementsAre("NodeDblClick(Nothing)"));
}

TEST_F(TreeInput, ADoubleClickOnEmptySpaceWhileNoNodeIsSelected) {
    hosted.Focus();
    Window().Select(nullptr);
    DoubleClick(Window(), BelowItems(Window()));
    EXPECT_EQ(Window().Selected(), nullptr);
    EXPECT_THAT(Events(), ElementsAre("NodeDblClick(Nothing)"));
    hostedDescribed.Focus();
    Described().Select(nullptr);
    DoubleClick(Described(), BelowItems(Described()));
    EXPECT_EQ(Described().Selected(), nullptr);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(TreeInput, TheRightButtonRaisesNodeRClickWhenItGoesDown) {
    Input input;
    Texts down;
    input.MoveTo(Window().Handle(), On(Window(), {"On Graphs"}))
        .Wait(30)
        .Press(Input::Button::right)
        .Wait(100)
        .Release(Input::Button::right);
    events.On("NodeRClick").Run([&] {
        down.push_back(GetAsyncKeyState(VK_RBUTTON) < 0 ? "down" : "up");
    });
    ASSERT_TRUE(Play(input));
    EXPECT_THAT(Events(), ElementsAre("NodeRClick(HTNodeInfo ID:3)"));
    EXPECT_THAT(down, ElementsAre("down"));
    Keys({VK_ESCAPE});
    // The second press of a quick pair goes down, too.
    const POINT place = On(Window(), {"On Graphs"});
    SendMessageW(Window().Handle(), WM_RBUTTONDBLCLK, MK_RBUTTON, MAKELPARAM(place.x, place.y));
    EXPECT_THAT(Of(Events(), "NodeRClick"), ElementsAre("NodeRClick(HTNodeInfo ID:3)"));
    Click(Window(), BelowItems(Window()), Input::Button::right);
    EXPECT_THAT(Events(), IsEmpty()) << "over empty space";
    Click(Window(), On(Window(), {"On Graphs"}), Input::Button::middle);
    EXPECT_THAT(Of(Events(), "NodeRClick"), IsEmpty());
}

TEST_F(TreeInput, AClickOnACheckBoxChecksTheNodeAndIsNoClick) {
    tree.Put("Checkboxes", true);
    const HTREEITEM node = Window().At({"On Graphs"});
    Click(Window(), OnCheckBox(Window(), node));
    EXPECT_EQ(Window().CheckBox(node), 2u);
    EXPECT_THAT(Events(), ElementsAre("NodeCheck(HTNodeInfo ID:3)"));
    Sleep(GetDoubleClickTime() + 50);
    Click(Window(), OnCheckBox(Window(), node));
    EXPECT_EQ(Window().CheckBox(node), 1u);
    EXPECT_THAT(Events(), ElementsAre("NodeCheck(HTNodeInfo ID:3)"));
    Click(Window(), On(Window(), node));
    EXPECT_EQ(Window().CheckBox(node), 1u);
    EXPECT_THAT(Events(), ElementsAre("NodeClick(HTNodeInfo ID:3)"));
}

TEST_F(TreeInput, ADoubleClickOnACheckBoxIsADoubleClickToo) {
    tree.Put("Checkboxes", true);
    Click(Window(), On(Window(), {"On Trees"}));
    Sleep(GetDoubleClickTime() + 50);
    Events();
    DoubleClick(Window(), OnCheckBox(Window(), Window().At({"On Graphs"})));
    const Texts raised = Events();
    EXPECT_THAT(Of(raised, "NodeDblClick"), ElementsAre("NodeDblClick(HTNodeInfo ID:1)"))
        << "of the selected node";
    EXPECT_THAT(Of(raised, "NodeClick"), IsEmpty());
}

TEST_F(TreeInput, ArrowsPlusMinusAndStarMoveOpenAndClose) {
    Click(Window(), On(Window(), {"On Trees"}));
    Events();
    Keys({VK_RIGHT});
    EXPECT_THAT(Of(Events(), "NodeExpand"), ElementsAre("NodeExpand(HTNodeInfo ID:1)"));
    Keys({VK_DOWN});
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
    Keys({VK_LEFT});
    EXPECT_EQ(Window().SelectedText(), "On Trees");
    Keys({VK_LEFT});
    EXPECT_THAT(Events(), ElementsAre("NodeCollapse(HTNodeInfo ID:1)"));
    Keys({VK_ADD});
    EXPECT_TRUE(Window().IsOpen(Window().At({"On Trees"})));
    Keys({VK_SUBTRACT});
    EXPECT_FALSE(Window().IsOpen(Window().At({"On Trees"})));
    EXPECT_THAT(Events(), ElementsAre("NodeCollapse(HTNodeInfo ID:1)"));
    Keys({VK_MULTIPLY});
    EXPECT_THAT(Of(Events(), "NodeExpand").size(), testing::Eq(2u))
        << "the two nodes below are opened";
    Keys({VK_END});
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
    Keys({VK_HOME});
    EXPECT_EQ(Window().SelectedText(), "On Trees");
    EXPECT_THAT(Of(Events(), "NodeClick"), IsEmpty()) << "keys are no clicks";
}

TEST_F(TreeInput, TypingGoesToTheNodeThatBeginsSo) {
    lists->name = "Lists";
    tree.Call("AddRootNode", lists);
    Click(Window(), On(Window(), {"On Trees"}));
    Type("l");
    EXPECT_EQ(Window().SelectedText(), "Lists");
}

TEST_F(TreeInput, ADisabledTreeTakesNoInput) {
    tree.Put("Enabled", false);
    Click(Window(), On(Window(), {"On Graphs"}));
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(tree.Get("selection").value, Nothing());
}

TEST_F(TreeInput, TabLeavesTheControl) {
    hosted.Focus();
    ASSERT_EQ(form.Active(), &hosted);
    Keys({VK_TAB});
    EXPECT_EQ(form.Active(), &hostedDescribed);
}

TEST_F(TreeInput, AHostMayClearTheTreeInAnyEvent) {
    for (const char* event : {"NodeClick", "NodeDblClick", "NodeExpand"}) {
        events.On(event).Times(1).Run([this] { tree.Call("Clear"); });
        DoubleClick(Window(), On(Window(), {"On Trees"}));
        EXPECT_THAT(Window().All(), IsEmpty()) << event;
        events.Calm();
        events.On("AddingNode").Run([this](const Arguments& arguments) { Allow(arguments); });
        tree.Call("AddRootNode", trees);
        Sleep(GetDoubleClickTime() + 50);
    }
    events.On("NodeRClick").Run([this] { tree.Call("Clear"); });
    Click(Window(), On(Window(), {"On Trees"}), Input::Button::right);
    EXPECT_THAT(Window().All(), IsEmpty());
}

TEST_F(TreeInput, AHostMayRemoveTheControlInAClick) {
    events.On("NodeClick").Run([this] {
        tree.Call("Destroy");
        LetGo();
    });
    Click(Window(), On(Window(), {"On Trees"}));
    EXPECT_FALSE(tree);
}

TEST_F(TreeInput, AHostMayRemoveTheControlInADoubleClick) {
    events.On("NodeDblClick").Run([this] { LetGo(); });
    DoubleClick(Window(), On(Window(), {"On Trees"}));
    EXPECT_FALSE(tree);
}

TEST_F(TreeInput, AHostMayRemoveTheControlWhenTheRightButtonGoesDown) {
    events.On("NodeRClick").Run([this] { LetGo(); });
    Click(Window(), On(Window(), {"On Trees"}), Input::Button::right);
    EXPECT_FALSE(tree);
}

TEST_F(TreeInput, AStarThatIsTypedGoesToTheNodeThatBeginsSo) {
    lists->name = "*Lists";
    tree.Call("AddRootNode", lists);
    Click(Window(), On(Window(), {"On Trees"}));
    Type("*");
    EXPECT_EQ(Window().SelectedText(), "*Lists");
}

TEST_F(TreeInput, SpaceWithTheControlKeyLeavesTheCheckBox) {
    tree.Put("Checkboxes", true);
    const HTREEITEM node = Window().At({"On Graphs"});
    Click(Window(), On(Window(), node));
    Keys({VK_CONTROL, VK_SPACE});
    EXPECT_EQ(Window().CheckBox(node), 1u);
    Keys({VK_SPACE});
    EXPECT_EQ(Window().CheckBox(node), 2u);
}

TEST_F(TreeInput, TheRightButtonIsFreeForAMenuWhenItIsReported) {
    const POINT place = On(Window(), {"On Graphs"});
    bool captured = true;
    events.On("NodeRClick").Run([&] { captured = GetCapture() != nullptr; });
    // Comes back although the button never goes up.
    SendMessageW(Window().Handle(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(place.x, place.y));
    EXPECT_FALSE(captured);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(GetFocus(), Window().Handle());
    EXPECT_THAT(Events(), ElementsAre("NodeRClick(HTNodeInfo ID:3)"));
}

}  // namespace
}  // namespace support
