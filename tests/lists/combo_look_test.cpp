#include <olectl.h>

#include "hosting/host_window.h"
#include "lists/combo_fixture.h"

namespace support {
namespace {

/// A combo on a form, looked at from outside.
class ComboLook : public ComboTest {
protected:
    ComboLook() {
        hosted.Take(combo.Get());
        hosted.Activate({10, 10, 210, 110});
    }
    ~ComboLook() override { window.GetForm().Clear(); }

    [[nodiscard]] RECT BoundsIn(HWND parent, HWND child) const {
        RECT bounds = {};
        GetWindowRect(child, &bounds);
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&bounds), 2);
        return bounds;
    }

    /// The colour that the box, or its list, is filled with.
    [[nodiscard]] COLORREF Background(UINT message) const {
        const HDC context = GetDC(Box());
        SendMessageW(GetParent(Box()), message, reinterpret_cast<WPARAM>(context),
                     reinterpret_cast<LPARAM>(Box()));
        const COLORREF color = GetBkColor(context);
        ReleaseDC(Box(), context);
        return color;
    }

    hosting::HostWindow window{L"Combo", 320, 240, false};
    hosting::HostedControl& hosted = window.GetForm().Add(L"Combo1");
};

TEST_F(ComboLook, TheControlIsAsHighAsItsBoxWhateverTheHostWants) {
    const RECT box = BoundsIn(window.Handle(), Box());
    const RECT control = BoundsIn(window.Handle(), hosted.Window());
    EXPECT_EQ(control.left, 10);
    EXPECT_EQ(control.top, 10);
    EXPECT_EQ(control.right, 210);
    EXPECT_EQ(control.bottom - control.top, box.bottom - box.top);
    EXPECT_LT(control.bottom, 60);
    EXPECT_EQ(hosted.Bounds().bottom, control.bottom) << "the container knows it";
}

TEST_F(ComboLook, TheBoxStaysAtTheTopLeftAndFollowsTheWidth) {
    const int height = hosted.Bounds().bottom - hosted.Bounds().top;
    for (const LONG width : {300, 90, 200}) {
        hosted.Move({30, 40, 30 + width, 200});
        const RECT control = BoundsIn(window.Handle(), hosted.Window());
        const RECT box = BoundsIn(hosted.Window(), Box());
        EXPECT_EQ(control.right - control.left, width);
        EXPECT_EQ(control.bottom - control.top, height);
        EXPECT_EQ(box.left, 0);
        EXPECT_EQ(box.top, 0);
        EXPECT_EQ(box.right, width);
    }
}

TEST_F(ComboLook, ALargerFontMakesAHigherBoxAndControl) {
    const int before = hosted.Bounds().bottom - hosted.Bounds().top;
    hosted.Ambients().Set(DISPID_AMBIENT_FONT, hosting::MakeFont(L"Tahoma", 24).Get());
    hosted.AmbientChanged(DISPID_AMBIENT_FONT);
    const int after = hosted.Bounds().bottom - hosted.Bounds().top;
    EXPECT_GT(after, before);
    const RECT box = BoundsIn(hosted.Window(), Box());
    EXPECT_EQ(box.bottom - box.top, after);
}

TEST_F(ComboLook, TheBackgroundColourIsThatOfTheBoxAndItsList) {
    EXPECT_EQ(Background(WM_CTLCOLOREDIT), GetSysColor(COLOR_WINDOW));
    ASSERT_TRUE(combo.Call("SetBackGroundColor", 0x00CCFFEE));
    EXPECT_EQ(Background(WM_CTLCOLOREDIT), 0x00CCFFEEu);
    EXPECT_EQ(Background(WM_CTLCOLORLISTBOX), 0x00CCFFEEu);
    hosted.AmbientChanged(DISPID_AMBIENT_FONT);
    EXPECT_EQ(Background(WM_CTLCOLOREDIT), 0x00CCFFEEu);
}

TEST_F(ComboLook, SystemColoursAreTakenAndOthersRefused) {
    const long face = static_cast<long>(0x80000000 + COLOR_BTNFACE);
    ASSERT_TRUE(combo.Call("SetBackGroundColor", face));
    EXPECT_EQ(Background(WM_CTLCOLOREDIT), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(combo.Call("SetBackGroundColor", static_cast<long>(0x80FFFFFF)).AutomationNumber(),
              380);
    EXPECT_EQ(Background(WM_CTLCOLOREDIT), GetSysColor(COLOR_BTNFACE));
}

TEST_F(ComboLook, TheRowsOutliveTheLifeInTheContainer) {
    FakeMetaNode* book = model.MetaNode("Book");
    model.Node(book, "b1", "On Trees");
    combo.Call("SetList_Nodes", book, "Name");
    window.GetForm().Clear();
    EXPECT_EQ(Rows(), Texts{"On Trees"});
    EXPECT_TRUE(combo.Call("Refresh"));
}

TEST_F(ComboLook, NothingLooksSelectedInABoxWithoutTheFocus) {
    FakeMetaNode* book = model.MetaNode("Book");
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    combo.Call("SetList_Nodes", book, "Name");
    combo.PutRef("selection", trees);
    EXPECT_EQ(SendMessageW(Box(), CB_GETEDITSEL, 0, 0), 0);
    hosted.Move({10, 10, 160, 110});
    EXPECT_EQ(SendMessageW(Box(), CB_GETEDITSEL, 0, 0), 0);
}

TEST_F(ComboLook, TheOpenListShowsWholeRowsAndNoMoreThanThereAre) {
    FakeMetaNode* book = model.MetaNode("Book");
    ShowWindow(window.Handle(), SW_SHOWNOACTIVATE);
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof parts;
    ASSERT_TRUE(GetComboBoxInfo(Box(), &parts));
    const auto rowsInView = [&] {
        combo.Call("Clear");
        combo.Call("SetList_Nodes", book, "Name");
        SendMessageW(Box(), CB_SHOWDROPDOWN, TRUE, 0);
        RECT list = {};
        GetClientRect(parts.hwndList, &list);
        SendMessageW(Box(), CB_SHOWDROPDOWN, FALSE, 0);
        const LRESULT rowHeight = SendMessageW(Box(), CB_GETITEMHEIGHT, 0, 0);
        EXPECT_EQ(list.bottom % rowHeight, 0);
        return list.bottom / rowHeight;
    };
    for (int count = 1; count <= 3; ++count) model.Node(book, std::to_string(count));
    EXPECT_EQ(rowsInView(), 3);
    for (int count = 4; count <= 20; ++count) model.Node(book, std::to_string(count));
    EXPECT_EQ(rowsInView(), 8);
}

TEST_F(ComboLook, TheInnerWindowIsAnOrdinaryEditableComboBox) {
    const LONG_PTR style = GetWindowLongPtrW(Box(), GWL_STYLE);
    EXPECT_EQ(style & (CBS_SIMPLE | CBS_DROPDOWN | CBS_DROPDOWNLIST), CBS_DROPDOWN);
    EXPECT_EQ(style & CBS_SORT, 0);
}

}  // namespace
}  // namespace support
