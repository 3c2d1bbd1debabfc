#include "trees/tree_input_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LabelEditInput : public TreeInputTest {
protected:
    LabelEditInput() {
        tree.Put("LabelEdit", true);
        Click(Window(), On(Window(), {"On Graphs"}));
        Events();
    }
    /// Edits the selected node's text.
    void Edit(const std::string& text, WORD end = VK_RETURN) {
        Input input;
        input.Key(VK_F2).Wait(150).Chord({VK_CONTROL, 'A'}).Text(text).Wait(50).Key(end).Wait(100);
        ASSERT_TRUE(Play(input));
    }
    /// Edits it and does not come to an end.
    void Begin(const std::string& text) {
        Input input;
        input.Key(VK_F2).Wait(150).Chord({VK_CONTROL, 'A'}).Text(text).Wait(50);
        ASSERT_TRUE(Play(input));
        ASSERT_NE(EditBox(), nullptr);
        EXPECT_THAT(Events(), ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)"));
    }
    void ExpectShown(const std::string& text) {
        EXPECT_EQ(EditBox(), nullptr);
        EXPECT_THAT(Window().Below(nullptr), ElementsAre("On Trees", text));
    }
    /// A tree with links, closed.
    void AddKnuth() {
        tree.Call("AddRootNode", knuth);
        Take();
    }
};

TEST_F(LabelEditInput, RaisesBothEventsAndTakesTheText) {
    Edit("Networks");
    EXPECT_THAT(Events(), ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)",
                                      "AfterLabelEdit(0, HTNodeInfo ID:3, \"Networks\")"));
    EXPECT_EQ(Window().SelectedText(), "Networks");
    EXPECT_EQ(graphs->name, "On Graphs") << "the repository is the host's business";
}

TEST_F(LabelEditInput, BeginsByAClickOnTheSelectedNode) {
    Sleep(GetDoubleClickTime() + 100);
    Click(Window(), On(Window(), {"On Graphs"}));
    EXPECT_TRUE(PumpUntil([this] { return EditBox() != nullptr; }, 2000));
    EXPECT_THAT(Of(Events(), "BeforeLabelEdit"),
                ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)"));
}

TEST_F(LabelEditInput, EscapeKeepsTheTextAndRaisesNothing) {
    Edit("Networks", VK_ESCAPE);
    EXPECT_THAT(Events(), ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)"));
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
    EXPECT_EQ(EditBox(), nullptr);
}

TEST_F(LabelEditInput, AClickOnAnotherNodeEndsItAndTakesTheText) {
    Begin("Networks");
    Click(Window(), On(Window(), {"On Trees"}));
    const auto all = Events();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.front(), "AfterLabelEdit(0, HTNodeInfo ID:3, \"Networks\")");
    EXPECT_EQ(Of(all, "AfterLabelEdit").size(), 1u);
    ExpectShown("Networks");
}

TEST_F(LabelEditInput, AnotherControlThatGetsTheFocusEndsItAndTakesTheText) {
    Begin("Networks");
    Click(Described(), BelowItems(Described()));
    EXPECT_THAT(Of(Events(), "AfterLabelEdit"),
                ElementsAre("AfterLabelEdit(0, HTNodeInfo ID:3, \"Networks\")"));
    ExpectShown("Networks");
}

TEST_F(LabelEditInput, AnotherProgramsWindowThatGetsTheFocusEndsItAndTakesTheText) {
    Begin("Networks");
    hosting::HostWindow other(L"Other", 100, 100);
    Input::Activate(other.Handle());
    Pump();
    EXPECT_THAT(Events(), ElementsAre("AfterLabelEdit(0, HTNodeInfo ID:3, \"Networks\")"));
    ExpectShown("Networks");
}

TEST_F(LabelEditInput, OfAControlThatGoesRaisesNothing) {
    Begin("Networks");
    const HWND shown = Window().Handle();
    hosted.Close();
    Pump();
    EXPECT_THAT(Events(), IsEmpty());
    LetGo();
    Pump();
    EXPECT_FALSE(IsWindow(shown));
}

TEST_F(LabelEditInput, OfAWindowThatGoesRaisesNothingAndTheNextIsAsAnyOther) {
    Begin("Networks");
    DestroyWindow(GetParent(Window().Handle()));
    Pump();
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_THAT(Window().Below(nullptr), ElementsAre("On Trees", "On Graphs"));
    hosted.Focus();
    Window().Select(Window().At({"On Graphs"}));
    Edit("Graphs");
    EXPECT_THAT(Events(), ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)",
                                      "AfterLabelEdit(0, HTNodeInfo ID:3, \"Graphs\")"));
    EXPECT_EQ(Window().SelectedText(), "Graphs");
}

TEST_F(LabelEditInput, AnotherProgramEndsItOnce) {
    Begin("Networks");
    SendMessageW(Window().Handle(), TVM_ENDEDITLABELNOW, FALSE, 0);
    Pump();
    EXPECT_THAT(Events(), ElementsAre("AfterLabelEdit(0, HTNodeInfo ID:3, \"Networks\")"));
    ExpectShown("Networks");
    Begin("Maps");
    SendMessageW(Window().Handle(), TVM_ENDEDITLABELNOW, TRUE, 0);
    Pump();
    EXPECT_THAT(Events(), IsEmpty()) << "given up";
    ExpectShown("Networks");
}

TEST_F(LabelEditInput, IsGivenUpWhereNodesGo) {
    Window().Open({"On Trees"});
    Click(Window(), On(Window(), {"On Graphs"}));
    Take();
    Begin("Networks");
    EXPECT_TRUE(tree.Call("RemoveLink", first));
    Pump();
    EXPECT_THAT(Of(Events(), "AfterLabelEdit"), IsEmpty());
    ExpectShown("On Graphs");
    Begin("Networks");
    EXPECT_TRUE(tree.Call("Clear"));
    Pump();
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(EditBox(), nullptr);
}

TEST_F(LabelEditInput, CancelBeforePreventsIt) {
    events.On("BeforeLabelEdit").Run([](const Arguments& arguments) {
        EXPECT_EQ(V_VT(&arguments.Raw(0)), VT_I2 | VT_BYREF);
        arguments.Write(0, 1);
    });
    Keys({VK_F2});
    EXPECT_EQ(EditBox(), nullptr);
    EXPECT_THAT(Events(), ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)"));
}

TEST_F(LabelEditInput, CancelAfterKeepsTheOldText) {
    events.On("AfterLabelEdit").Run([](const Arguments& arguments) { arguments.Write(0, -1); });
    Edit("Networks");
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
}

TEST_F(LabelEditInput, WhatTheHostWritesBecomesTheText) {
    events.On("AfterLabelEdit").Run([](const Arguments& arguments) {
        arguments.Write(2, "From the host");
    });
    Edit("Networks");
    EXPECT_EQ(Window().SelectedText(), "From the host");
}

TEST_F(LabelEditInput, AHostMayKeepTheTextWithUpdate) {
    events.On("AfterLabelEdit").Run([this](const Arguments& arguments) {
        arguments.Write(0, 1);
        graphs->name = arguments.Text(2);
        tree.Call("Update", arguments[1], arguments.Text(2) + "!", "");
    });
    Edit("Networks");
    EXPECT_EQ(graphs->name, "Networks");
    EXPECT_EQ(Window().SelectedText(), "Networks!");
}

TEST_F(LabelEditInput, DoesNotHappenWhileItIsSwitchedOff) {
    tree.Put("LabelEdit", false);
    Keys({VK_F2});
    EXPECT_EQ(EditBox(), nullptr);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(LabelEditInput, AHostMayClearTheTreeInBothEvents) {
    events.On("BeforeLabelEdit").Times(1).Run([this] { tree.Call("Clear"); });
    Keys({VK_F2});
    EXPECT_EQ(EditBox(), nullptr);
    EXPECT_THAT(Window().All(), IsEmpty());
    events.On("BeforeLabelEdit").Run([] {});
    tree.Call("AddRootNode", graphs);
    Click(Window(), On(Window(), {"On Graphs"}));
    events.On("AfterLabelEdit").Run([this] { tree.Call("Clear"); });
    Edit("Networks");
    EXPECT_THAT(Window().All(), IsEmpty());
}

TEST_F(LabelEditInput, AHostMayExpandANodeBefore) {
    AddKnuth();
    events.On("BeforeLabelEdit").Run([this] { EXPECT_TRUE(tree.Call("Expand", knuth)); });
    Edit("Networks");
    EXPECT_THAT(Window().All(),
                ElementsAre("On Trees", ".Loading", "Networks", "Knuth", ".On Trees", "..Loading"));
    EXPECT_TRUE(Window().IsOpen(Window().At({"Knuth"})));
    EXPECT_EQ(Of(Events(), "AfterLabelEdit").size(), 1u);
}

TEST_F(LabelEditInput, AHostMayExpandANodeAfterwards) {
    AddKnuth();
    events.On("AfterLabelEdit").Run([this] { EXPECT_TRUE(tree.Call("Expand", knuth)); });
    Edit("Networks");
    EXPECT_THAT(Window().All(),
                ElementsAre("On Trees", ".Loading", "Networks", "Knuth", ".On Trees", "..Loading"));
    EXPECT_TRUE(Window().IsOpen(Window().At({"Knuth"})));
    EXPECT_EQ(Window().SelectedText(), "Knuth");
}

TEST_F(LabelEditInput, AHostMayRemoveTheControlBefore) {
    events.On("BeforeLabelEdit").Run([this] { LetGo(); });
    const HWND shown = Window().Handle();
    Keys({VK_F2});
    EXPECT_FALSE(tree);
    EXPECT_FALSE(IsWindow(shown));
}

TEST_F(LabelEditInput, AHostMayRemoveTheControlAfterwards) {
    events.On("AfterLabelEdit").Run([this] { LetGo(); });
    Edit("Networks");
    EXPECT_FALSE(tree);
}

TEST_F(LabelEditInput, TabEndsItAndLeavesTheControl) {
    Edit("Networks", VK_TAB);
    EXPECT_EQ(EditBox(), nullptr);
    EXPECT_THAT(Of(Events(), "AfterLabelEdit"),
                ElementsAre("AfterLabelEdit(0, HTNodeInfo ID:3, \"Networks\")"));
    EXPECT_NE(GetFocus(), Window().Handle());
}

}  // namespace
}  // namespace support
