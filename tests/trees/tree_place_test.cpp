#include <gtest/gtest.h>

#include "hosting/host_window.h"
#include "hosting/hosted_control.h"
#include "support/registered.h"
#include "support/tree_window.h"

namespace support {

namespace {

/// Both trees, by name.
class TreePlace : public testing::TestWithParam<const wchar_t*> {
protected:
    /// Where the tree's window is in the control's.
    [[nodiscard]] RECT Place() const {
        const HWND window = TreeWindow(tree).Handle();
        RECT place = {};
        GetWindowRect(window, &place);
        MapWindowPoints(HWND_DESKTOP, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    [[nodiscard]] SIZE Inside() const {
        RECT inside = {};
        GetClientRect(GetParent(TreeWindow(tree).Handle()), &inside);
        return {inside.right, inside.bottom};
    }
    void ExpectFilled(LONG width, LONG height) const {
        const RECT place = Place();
        EXPECT_EQ(place.left, 0);
        EXPECT_EQ(place.top, 0);
        EXPECT_EQ(place.right, width);
        EXPECT_EQ(place.bottom, height);
        EXPECT_EQ(Inside().cx, width);
        EXPECT_EQ(Inside().cy, height);
    }

    LateBound tree = CreateRegistered(GetParam());
};

TEST_P(TreePlace, IsTheWholeControlWhateverItsSize) {
    hosting::HostWindow window(L"Tree", 400, 300);
    hosting::HostedControl& hosted = window.GetForm().Add(L"Tree1");
    hosted.Take(tree.Get());
    hosted.Activate({10, 20, 210, 170});
    ExpectFilled(200, 150);
    tree.Call("Create");
    for (const SIZE size : {SIZE{320, 60}, SIZE{30, 280}, SIZE{0, 0}, SIZE{200, 150}}) {
        hosted.Move({40, 10, 40 + size.cx, 10 + size.cy});
        ExpectFilled(size.cx, size.cy);
    }
    window.GetForm().Clear();
}

TEST_P(TreePlace, IsTheWholeControlWithoutAContainerToo) {
    tree.Call("Create");
    ASSERT_GT(Inside().cx, 0);
    ExpectFilled(Inside().cx, Inside().cy);
}

TEST_P(TreePlace, CreateSwitchesTheEditingOfTextsOff) {
    const HWND window = TreeWindow(tree).Handle();
    SetWindowLongW(window, GWL_STYLE, GetWindowLongW(window, GWL_STYLE) | TVS_EDITLABELS);
    tree.Call("Create");
    EXPECT_EQ(TreeWindow(tree).Style() & TVS_EDITLABELS, 0u);
}

INSTANTIATE_TEST_SUITE_P(, TreePlace, testing::Values(L"TreeView", L"HierarchyTreeView"),
                         [](const auto& name) { return Utf8(std::wstring(name.param)); });

}  // namespace
}  // namespace support
