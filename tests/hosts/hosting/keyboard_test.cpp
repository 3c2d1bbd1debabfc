#include "hosts/hosting/double_form.h"

#include <gmock/gmock.h>

using hosting::HostedControl;
using testing::Contains;
using testing::Not;

namespace {

/// Holds the state of a key as the calling thread sees it.
class HeldKey {
public:
    explicit HeldKey(int key) : key_(key) { Set(0x80); }
    ~HeldKey() { Set(0); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

private:
    void Set(BYTE state) const {
        BYTE keys[256];
        GetKeyboardState(keys);
        keys[key_] = state;
        SetKeyboardState(keys);
    }

    int key_;
};

class FormKeyboardTest : public DoubleForm {
protected:
    bool Press(WPARAM key, UINT kind = WM_KEYDOWN) {
        const HWND focus = GetFocus();
        MSG message{focus ? focus : window.Handle(), kind, key, 1, 0, {}};
        return form.TranslateMessage(message);
    }

    HostedControl& one = AddDouble(L"one");
    HostedControl& two = AddDouble(L"two");
    HostedControl& three = AddDouble(L"three");
};

TEST_F(FormKeyboardTest, TabGoesThroughTheControlsInOrderAndAround) {
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(form.Active(), &one);
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(form.Active(), &two);
    EXPECT_FALSE(one.IsUIActive());
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(form.Active(), &one);
}

TEST_F(FormKeyboardTest, TabPastAnEndAsksTheHostFirst) {
    std::vector<bool> asked;
    bool taken = true;
    form.onTabOut = [&](bool backwards) {
        asked.push_back(backwards);
        return taken;
    };
    three.Focus();
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(asked, (std::vector{false}));
    EXPECT_EQ(form.Active(), &three);
    taken = false;
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(asked, (std::vector{false, false}));
    EXPECT_EQ(form.Active(), &one);
    taken = true;
    const HeldKey shift(VK_SHIFT);
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(asked, (std::vector{false, false, true}));
    EXPECT_EQ(form.Active(), &one);
}

TEST_F(FormKeyboardTest, ShiftTabGoesBackwards) {
    const HeldKey shift(VK_SHIFT);
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(form.Active(), &three);
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(form.Active(), &two);
}

TEST_F(FormKeyboardTest, HiddenAndDisabledControlsAreNoTabStops) {
    one.Hide();
    EnableWindow(two.Window(), FALSE);
    EXPECT_TRUE(Press(VK_TAB));
    EXPECT_EQ(form.Active(), &three);
    three.Hide();
    EXPECT_FALSE(form.FocusNext(false));
}

TEST_F(FormKeyboardTest, TheActiveControlGetsAKeyBeforeTheForm) {
    one.Focus();
    EXPECT_TRUE(Press(VK_RETURN));
    EXPECT_THAT(Log(one), Contains("TranslateAccelerator 13"));
    EXPECT_FALSE(Press(VK_F5));
    EXPECT_THAT(Log(one), Contains("TranslateAccelerator 116"));
    EXPECT_THAT(observer.calls, Contains("IOleControlSite.TranslateAccelerator 256 116 0"));
}

TEST_F(FormKeyboardTest, AMnemonicActivatesItsControl) {
    const HeldKey alt(VK_MENU);
    EXPECT_TRUE(Press('D', WM_SYSKEYDOWN));
    EXPECT_THAT(Log(one), Contains("OnMnemonic"));
    EXPECT_EQ(form.Active(), &one);
    EXPECT_FALSE(Press('E', WM_SYSKEYDOWN));
}

TEST_F(FormKeyboardTest, MessagesOfOtherWindowsAreLeftAlone) {
    const hosting::HostWindow other(L"Other", 50, 50, false);
    MSG message{other.Handle(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_FALSE(form.TranslateMessage(message));
    EXPECT_EQ(form.Active(), nullptr);
}

TEST_F(FormKeyboardTest, AClickedControlBecomesTheActiveOne) {
    one.Focus();
    SendMessageW(two.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(form.Active(), &two);
    EXPECT_THAT(Log(one), Contains("UIDeactivate"));
    EXPECT_THAT(Log(two), Not(Contains("UIDeactivate")));
}

TEST_F(FormKeyboardTest, TheFocusReturnsToTheActiveControl) {
    two.Focus();
    SetFocus(nullptr);
    SendMessageW(window.Handle(), WM_SETFOCUS, 0, 0);
    EXPECT_EQ(form.Active(), &two);
}

}  // namespace
