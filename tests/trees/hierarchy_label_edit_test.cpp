#include "hosting/host_window.h"
#include "hosting/hosted_control.h"
#include "support/pump.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Texts are edited by the keyboard, as messages to the windows.
class HierarchyLabelEdit : public HierarchyTest {
protected:
    HierarchyLabelEdit() {
        hosted.Take(tree.Get());
        hosted.Activate({0, 0, 300, 200});
        tree.Put("LabelEdit", true);
        tree.Call("AddRootNode", trees);
        tree.Call("AddRootNode", graphs);
        Take();
    }
    ~HierarchyLabelEdit() override { window.GetForm().Clear(); }

    [[nodiscard]] HWND EditBox() const {
        return reinterpret_cast<HWND>(SendMessageW(Window().Handle(), TVM_GETEDITCONTROL, 0, 0));
    }
    void Begin(HTREEITEM item) const {
        Window().Press(item, VK_F2);
        ASSERT_NE(EditBox(), nullptr);
    }
    static void Press(HWND box, WPARAM key) {
        SendMessageW(box, WM_KEYDOWN, key, 0);
        SendMessageW(box, WM_KEYUP, key, 0);
    }
    /// Ends the edit; the event comes with a message that is still to be handled.
    void End() const { Press(EditBox(), VK_RETURN); }
    void EndWith(const wchar_t* text) const {
        SetWindowTextW(EditBox(), text);
        End();
    }

    hosting::HostWindow window{L"Tree", 320, 240};
    hosting::HostedControl& hosted = window.GetForm().Add(L"Tree1");
};

TEST_F(HierarchyLabelEdit, OfAPlaceholderCarriesNothingAndTakesTheText) {
    SelectPlaceholder(Window(), {"On Trees"});
    const HTREEITEM placeholder = Window().Selected();
    ASSERT_EQ(Window().Text(placeholder), "Loading");
    Begin(placeholder);
    EndWith(L"Soon");
    Pump();
    EXPECT_THAT(Take(),
                ElementsAre("BeforeLabelEdit(0, Nothing)", "AfterLabelEdit(0, Nothing, \"Soon\")"));
    EXPECT_EQ(Window().Text(placeholder), "Soon");
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Soon", "On Graphs"));
    Window().Close(Window().At({"On Trees"}));
    Window().Open({"On Trees"});
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"))
        << "it still is the placeholder";
}

TEST_F(HierarchyLabelEdit, WithoutAChangeIsReportedAllTheSame) {
    Begin(Window().At({"On Graphs"}));
    End();
    Pump();
    EXPECT_THAT(Take(), ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)",
                                    "AfterLabelEdit(0, HTNodeInfo ID:3, \"On Graphs\")"));
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
}

TEST_F(HierarchyLabelEdit, MayEndWithAnEmptyText) {
    const HTREEITEM node = Window().At({"On Graphs"});
    Begin(node);
    EndWith(L"");
    Pump();
    EXPECT_THAT(Take(), ElementsAre("BeforeLabelEdit(0, HTNodeInfo ID:3)",
                                    "AfterLabelEdit(0, HTNodeInfo ID:3, \"\")"));
    EXPECT_EQ(Window().Text(node), "");
}

TEST_F(HierarchyLabelEdit, OfAnEmptyTextMayBeRefused) {
    events.On("AfterLabelEdit").Run([](const Arguments& arguments) {
        if (arguments.Text(2).empty()) arguments.Write(0, 1);
    });
    const HTREEITEM node = Window().At({"On Graphs"});
    Begin(node);
    EndWith(L"");
    Pump();
    EXPECT_EQ(Window().Text(node), "On Graphs");
    Begin(node);
    EndWith(L"Networks");
    Pump();
    EXPECT_EQ(Window().Text(node), "Networks");
}

TEST_F(HierarchyLabelEdit, IsForgottenWithItsWindow) {
    Begin(Window().At({"On Trees"}));
    EndWith(L"Forgotten");
    ASSERT_THAT(Taken("AfterLabelEdit"), IsEmpty()) << "it is still to be reported";
    const HWND before = Window().Handle();
    DestroyWindow(GetParent(before));
    ASSERT_FALSE(IsWindow(before));
    Pump();
    EXPECT_THAT(Taken("AfterLabelEdit"), IsEmpty());
    Begin(Window().At({"On Graphs"}));
    EndWith(L"Networks");
    Pump();
    EXPECT_THAT(Taken("AfterLabelEdit"),
                ElementsAre("AfterLabelEdit(0, HTNodeInfo ID:3, \"Networks\")"));
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading", "Networks"));
}

}  // namespace
}  // namespace support
