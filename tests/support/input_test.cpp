#include "support/input.h"
#include "support/text.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace support {
namespace {

/// A window that notes the mouse messages it gets, with an edit box in its right half.
class InputTest : public testing::Test {
protected:
    void SetUp() override {
        WNDCLASSW type{};
        type.style = CS_DBLCLKS;
        type.lpfnWndProc = Procedure;
        type.lpszClassName = L"SupportInputTest";
        type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        RegisterClassW(&type);
        window = CreateWindowW(type.lpszClassName, L"Input", WS_POPUP | WS_VISIBLE, 100, 100, 400,
                               200, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        edit = CreateWindowW(L"EDIT", L"", WS_CHILD | WS_VISIBLE, 200, 0, 200, 30, window, nullptr,
                             nullptr, nullptr);
        Input::Activate(window);
        ASSERT_TRUE(PumpUntil([this] { return GetForegroundWindow() == window; }));
    }

    void TearDown() override { DestroyWindow(window); }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM large) {
        static const std::map<UINT, std::string> names = {
            {WM_LBUTTONDOWN, "down"},  {WM_LBUTTONUP, "up"},  {WM_LBUTTONDBLCLK, "double"},
            {WM_RBUTTONDOWN, "rdown"}, {WM_RBUTTONUP, "rup"}, {WM_MOUSEWHEEL, "wheel"},
        };
        auto* test = reinterpret_cast<InputTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (test != nullptr) {
            if (const auto name = names.find(message); name != names.end()) {
                test->messages.push_back(name->second);
                test->points.push_back(
                    {static_cast<short>(LOWORD(large)), static_cast<short>(HIWORD(large))});
            }
            if (message == WM_MOUSEMOVE && (wide & MK_LBUTTON) != 0) ++test->dragMoves;
        }
        return DefWindowProcW(window, message, wide, large);
    }

    [[nodiscard]] std::string EditText() const {
        wchar_t text[100] = {};
        GetWindowTextW(edit, text, 100);
        return Utf8(std::wstring_view(text));
    }

    HWND window = nullptr;
    HWND edit = nullptr;
    std::vector<std::string> messages;
    std::vector<POINT> points;
    int dragMoves = 0;
};

using Messages = std::vector<std::string>;

TEST_F(InputTest, ClicksArriveWhereThePointerIs) {
    EXPECT_TRUE(Input().MoveTo(window, {30, 40}).Click().Play());
    EXPECT_EQ(messages, (Messages{"down", "up"}));
    ASSERT_FALSE(points.empty());
    EXPECT_EQ(points.front().x, 30);
    EXPECT_EQ(points.front().y, 40);
}

TEST_F(InputTest, TwoClicksAreADoubleClick) {
    EXPECT_TRUE(Input().MoveTo(window, {30, 40}).DoubleClick().Play());
    EXPECT_EQ(messages, (Messages{"down", "up", "double", "up"}));
}

TEST_F(InputTest, RightClicksAreRightClicks) {
    EXPECT_TRUE(Input().MoveTo(window, {30, 40}).Click(Input::Button::right).Play());
    EXPECT_EQ(messages, (Messages{"rdown", "rup"}));
}

TEST_F(InputTest, DragsMoveWithTheButtonDown) {
    EXPECT_TRUE(Input().MoveTo(window, {10, 10}).DragTo(window, {150, 150}).Play());
    EXPECT_EQ(messages, (Messages{"down", "up"}));
    EXPECT_GE(dragMoves, 5);
    ASSERT_EQ(points.size(), 2u);
    EXPECT_EQ(points.back().x, 150);
    EXPECT_EQ(points.back().y, 150);
}

TEST_F(InputTest, TypedTextArrivesAsItIs) {
    EXPECT_TRUE(Input().MoveToMiddle(edit).Click().Text("Grün Ω").Play());
    EXPECT_EQ(EditText(), "Grün Ω");
}

TEST_F(InputTest, KeysAndChordsWork) {
    SetWindowTextW(edit, L"abc");
    EXPECT_TRUE(Input().MoveToMiddle(edit).Click().Key(VK_HOME).Key(VK_DELETE).Play());
    EXPECT_EQ(EditText(), "bc");
    EXPECT_TRUE(Input().Key(VK_END).Chord({VK_SHIFT, VK_LEFT}).Text("x").Play());
    EXPECT_EQ(EditText(), "bx");
}

TEST_F(InputTest, WithoutFocusNothingIsTyped) {
    SetFocus(window);
    EXPECT_TRUE(Input().Text("x").Play());
    EXPECT_EQ(EditText(), "");
}

TEST(Pumping, EndsWhenTheConditionHoldsOrTheTimeIsOver) {
    EXPECT_TRUE(PumpUntil([] { return true; }, 0));
    EXPECT_FALSE(PumpUntil([] { return false; }, 30));
    int asked = 0;
    EXPECT_TRUE(PumpUntil([&] { return ++asked == 3; }, 1000));
}

}  // namespace
}  // namespace support
