#include "support/drawing.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;

using HierarchyLook = HierarchyTest;

TEST_F(HierarchyLook, IsThatOfCreate) {
    const TreeWindow window = Window();
    constexpr DWORD on = TVS_HASLINES | TVS_HASBUTTONS | TVS_SHOWSELALWAYS;
    EXPECT_EQ(window.Style() & on, on);
    EXPECT_EQ(window.Style() & (TVS_LINESATROOT | TVS_EDITLABELS | TVS_NOSCROLL), 0u)
        << "lines from parents only, no editing";
    // 250 twips are 17 pixels; the system takes as many more as its pictures need.
    const auto indent = SendMessageW(window.Handle(), TVM_GETINDENT, 0, 0);
    EXPECT_GE(indent, 17);
    EXPECT_LE(indent, 19);
    EXPECT_NE(SendMessageW(window.Handle(), TVM_GETIMAGELIST, TVSIL_NORMAL, 0), 0);
    EXPECT_TRUE(IsWindowEnabled(window.Handle()));
}

TEST_F(HierarchyLook, EnablesTheTreeInCreateAndLeavesTheFlag) {
    const LateBound fresh = CreateRegistered(L"HierarchyTreeView");
    fresh.Put("Enabled", false);
    EXPECT_FALSE(IsWindowEnabled(TreeWindow(fresh).Handle()));
    fresh.Call("Create");
    EXPECT_TRUE(IsWindowEnabled(TreeWindow(fresh).Handle()));
    EXPECT_EQ(fresh.Get("Enabled").value, Value(false));
    fresh.Put("Enabled", false);
    EXPECT_FALSE(IsWindowEnabled(TreeWindow(fresh).Handle()));
}

TEST_F(HierarchyLook, FlagsAreWhatWasWrittenLast) {
    const LateBound fresh = CreateRegistered(L"HierarchyTreeView");
    for (const char* flag :
         {"Enabled", "dragAllowed", "dropAllowed", "Checkboxes", "LabelEdit", "withFolders"}) {
        EXPECT_EQ(fresh.Get(flag).value, Value(false)) << flag;
        EXPECT_TRUE(fresh.Put(flag, true));
        EXPECT_EQ(fresh.Get(flag).value, Value(true)) << flag;
        EXPECT_TRUE(fresh.Put(flag, false));
        EXPECT_EQ(fresh.Get(flag).value, Value(false)) << flag;
    }
}

TEST_F(HierarchyLook, LabelEditIsTheTreesEditMode) {
    tree.Put("LabelEdit", true);
    EXPECT_NE(Window().Style() & TVS_EDITLABELS, 0u);
    tree.Put("LabelEdit", false);
    EXPECT_EQ(Window().Style() & TVS_EDITLABELS, 0u);
}

TEST_F(HierarchyLook, CreateSwitchesLabelEditOff) {
    const LateBound fresh = CreateRegistered(L"HierarchyTreeView");
    fresh.Put("LabelEdit", true);
    fresh.Call("Create");
    EXPECT_EQ(fresh.Get("LabelEdit").value, Value(false));
}

TEST_F(HierarchyLook, DragAndDropModesFollowTheFlags) {
    tree.Put("dragAllowed", true);
    EXPECT_EQ(Window().Style() & TVS_DISABLEDRAGDROP, 0u);
    tree.Put("dropAllowed", true);
    EXPECT_NE(GetPropW(Window().Handle(), L"OleDropTargetInterface"), nullptr);
    tree.Put("dragAllowed", false);
    tree.Put("dropAllowed", false);
    EXPECT_NE(Window().Style() & TVS_DISABLEDRAGDROP, 0u);
    EXPECT_EQ(GetPropW(Window().Handle(), L"OleDropTargetInterface"), nullptr);
}

TEST_F(HierarchyLook, CheckBoxesShowTheStateOfAllNodes) {
    tree.Call("AddRootNode", trees);
    const HTREEITEM root = Window().At({"On Trees"});
    EXPECT_EQ(Window().CheckBox(root), 0u);
    tree.Call("CheckAll");
    EXPECT_EQ(Window().CheckBox(root), 0u) << "there are no boxes";
    tree.Put("Checkboxes", true);
    EXPECT_EQ(Window().CheckBox(root), 2u);
    EXPECT_EQ(Window().CheckBox(Window().At({"On Trees", "Loading"})), 2u);
    tree.Call("UncheckAll");
    EXPECT_EQ(Window().CheckBox(root), 1u);
    EXPECT_EQ(Window().CheckBox(Window().At({"On Trees", "Loading"})), 1u);
    tree.Call("AddRootNode", graphs);
    EXPECT_EQ(Window().CheckBox(Window().At({"On Graphs"})), 1u);
    tree.Put("Checkboxes", false);
    EXPECT_EQ(Window().CheckBox(root), 0u);
}

TEST_F(HierarchyLook, SpaceTogglesACheckBox) {
    tree.Call("AddRootNode", trees);
    tree.Put("Checkboxes", true);
    const HTREEITEM root = Window().At({"On Trees"});
    Take();
    Window().Press(root, VK_SPACE);
    EXPECT_EQ(Window().CheckBox(root), 2u);
    EXPECT_THAT(Take(), ElementsAre("NodeCheck(HTNodeInfo ID:1)"));
    Window().Press(root, VK_SPACE);
    EXPECT_EQ(Window().CheckBox(root), 1u);
    EXPECT_THAT(Take(), ElementsAre("NodeCheck(HTNodeInfo ID:1)"));
    tree.Put("Checkboxes", false);
    Window().Press(root, VK_SPACE);
    EXPECT_THAT(Take(), testing::IsEmpty());
}

TEST_F(HierarchyLook, CheckedItemsAreAlwaysEmpty) {
    tree.Call("AddRootNode", trees);
    tree.Put("Checkboxes", true);
    tree.Call("CheckAll");
    for (const char* member : {"GetCheckedItems", "GetNonCheckedItems"}) {
        const LateBound items(tree.Call(member).value);
        ASSERT_TRUE(items) << member;
        EXPECT_EQ(items.Get("Count").value, Value(0)) << member;
    }
}

TEST_F(HierarchyLook, IsDrawnWithoutAWindow) {
    tree.Call("AddRootNode", trees);
    const auto drawn = [](const LateBound& control) {
        return DrawInactive(control.Get(), {200, 100}).pixels;
    };
    EXPECT_NE(drawn(tree), drawn(CreateRegistered(L"HierarchyTreeView")));
    const auto before = drawn(tree);
    tree.Call("Update", Info("ID:1").Get(), "another text", "");
    EXPECT_NE(drawn(tree), before);
}

TEST_F(HierarchyLook, IsGreyWhileItIsDisabled) {
    const auto colour = [this] {
        return static_cast<COLORREF>(SendMessageW(Window().Handle(), TVM_GETTEXTCOLOR, 0, 0));
    };
    const COLORREF before = colour();
    ASSERT_NE(before, GetSysColor(COLOR_GRAYTEXT));
    tree.Put("Enabled", false);
    EXPECT_EQ(colour(), GetSysColor(COLOR_GRAYTEXT));
    tree.Put("Enabled", true);
    EXPECT_EQ(colour(), before);
}

TEST_F(HierarchyLook, KeepsTheIconsOfItsRowsApart) {
    const HWND window = Window().Handle();
    const auto images = reinterpret_cast<HIMAGELIST>(SendMessageW(window, TVM_GETIMAGELIST, 0, 0));
    int width = 0;
    int height = 0;
    ASSERT_TRUE(ImageList_GetIconSize(images, &width, &height));
    EXPECT_GE(SendMessageW(window, TVM_GETITEMHEIGHT, 0, 0), height + 2);
}

}  // namespace
}  // namespace support
