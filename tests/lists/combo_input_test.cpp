#include "hosting/host_window.h"
#include "lists/combo_fixture.h"
#include "support/event_recorder.h"
#include "support/input.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A combo on a form on the screen, with another one below it, used by mouse and keyboard.
class ComboInput : public ComboTest {
protected:
    ComboInput() {
        combo.Call("SetList_Nodes", book, "Name");
        hosted.Take(combo.Get());
        hosted.Activate({20, 20, 220, 60});
        below.Create(L"OrvaneControls.Combo");
        below.Activate({20, 120, 220, 160});
        Input::Activate(window.Handle());
        EXPECT_TRUE(PumpUntil([&] { return GetForegroundWindow() == window.Handle(); }));
    }

    ~ComboInput() override { window.GetForm().Clear(); }

    bool Play(Input& input) {
        return input.Play(20000, [&](MSG& message) { return form.TranslateMessage(message); });
    }

    [[nodiscard]] POINT Arrow() const {
        RECT client = {};
        GetClientRect(Box(), &client);
        return {client.right - 8, client.bottom / 2};
    }

    FakeMetaNode* book = model.MetaNode("Book");
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    FakeNode* graphs = model.Node(book, "b2", "On Graphs");
    FakeNode* lists = model.Node(book, "b3", "On Lists");
    hosting::HostWindow window{L"Combo", 320, 240};
    hosting::Form& form = window.GetForm();
    hosting::HostedControl& hosted = form.Add(L"Combo1");
    hosting::HostedControl& below = form.Add(L"Combo2");
    EventRecorder events{combo.Get()};
};

TEST_F(ComboInput, PickingARowWithTheMouseRaisesClickOnly) {
    Input open;
    open.MoveTo(Box(), Arrow()).Click();
    ASSERT_TRUE(Play(open));
    ASSERT_TRUE(PumpUntil([&] { return SendMessageW(Box(), CB_GETDROPPEDSTATE, 0, 0) != 0; }));
    const int rowHeight = static_cast<int>(SendMessageW(Box(), CB_GETITEMHEIGHT, 0, 0));
    RECT client = {};
    GetClientRect(Box(), &client);
    Input pick;
    pick.MoveTo(Box(), {30, client.bottom + rowHeight + rowHeight / 2}).Wait(100).Click();
    ASSERT_TRUE(Play(pick));
    EXPECT_TRUE(PumpUntil([&] { return CurrentRow() == 1; }));
    EXPECT_EQ(CurrentRow(), 1);
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b2\")"));
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ComboInput, ArrowKeysPickRowsAndRaiseClick) {
    hosted.Focus();
    Input input;
    input.Key(VK_DOWN).Key(VK_DOWN).Key(VK_UP);
    ASSERT_TRUE(Play(input));
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b1\")", "Click(\"b2\")", "Click(\"b1\")"));
}

TEST_F(ComboInput, TypingATextRaisesChangeOnceItIsARowsText) {
    hosted.Focus();
    Input input;
    input.Text("On Lists");
    ASSERT_TRUE(Play(input));
    EXPECT_THAT(events.Take(), ElementsAre("Change(\"On Lists\")"));
    EXPECT_EQ(Selection().Get(), lists);
    Input more;
    more.Text("!");
    ASSERT_TRUE(Play(more));
    EXPECT_THAT(events.Take(), IsEmpty());
    EXPECT_EQ(Selection().Get(), nullptr);
}

TEST_F(ComboInput, TabLeavesTheControl) {
    hosted.Focus();
    ASSERT_EQ(form.Active(), &hosted);
    Input input;
    input.Key(VK_TAB);
    ASSERT_TRUE(Play(input));
    EXPECT_EQ(form.Active(), &below);
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ComboInput, AClickIntoTheBoxMakesTheControlActive) {
    below.Focus();
    ASSERT_EQ(form.Active(), &below);
    Input input;
    input.MoveTo(Box(), {30, 10}).Click();
    ASSERT_TRUE(Play(input));
    EXPECT_EQ(form.Active(), &hosted);
}

TEST_F(ComboInput, EscapeClosesTheOpenListOnly) {
    hosted.Focus();
    Input open;
    open.Chord({VK_MENU, VK_DOWN}).Wait(200);
    ASSERT_TRUE(Play(open));
    ASSERT_TRUE(SendMessageW(Box(), CB_GETDROPPEDSTATE, 0, 0));
    Input close;
    close.Key(VK_ESCAPE);
    ASSERT_TRUE(Play(close));
    EXPECT_FALSE(SendMessageW(Box(), CB_GETDROPPEDSTATE, 0, 0));
}

}  // namespace
}  // namespace support
