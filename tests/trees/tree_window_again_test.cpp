#include "hosting/host_window.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;

/// Lets the control's window go with a window of its host's; the next member makes it again.
void TakeWindowAway(const TreeWindow& shown) {
    const hosting::HostWindow host(L"Host", 100, 100);
    const HWND control = GetParent(shown.Handle());
    SetParent(control, host.Handle());
    DestroyWindow(host.Handle());
    EXPECT_FALSE(IsWindow(control));
    EXPECT_FALSE(IsWindow(shown.Handle()));
}

bool IsDropTarget(const TreeWindow& shown) {
    return GetPropW(shown.Handle(), L"OleDropTargetInterface") != nullptr;
}

using HierarchyWindowAgain = HierarchyTest;

TEST_F(HierarchyWindowAgain, ShowsTheNodesAsTheyWere) {
    model.Link(cites, graphs, knuth, "d1");
    tree.Call("AddRootNode", trees);
    tree.Call("AddRootNode", knuth);
    Window().Open({"On Trees"});
    Window().Open({"On Trees", "On Graphs"});
    Window().Close(Window().At({"On Trees", "On Graphs"}));
    tree.Call("Update", Info("ID:1").Get(), "Woods", "__Folder");
    tree.PutRef("selection", second);
    const auto all = Window().All();
    Take();
    TakeWindowAway(Window());
    EXPECT_EQ(Window().All(), all);
    EXPECT_THAT(all, ElementsAre("Woods", ".On Graphs", "..Knuth", "...Loading", ".On Lists",
                                 "..Loading", "Knuth", ".Loading"));
    EXPECT_EQ(Window().Count(), 8);
    const HTREEITEM woods = Window().At({"Woods"});
    EXPECT_TRUE(Window().IsOpen(woods));
    EXPECT_FALSE(Window().IsOpen(Window().At({"Woods", "On Graphs"})));
    EXPECT_FALSE(Window().IsOpen(Window().At({"Knuth"})));
    EXPECT_EQ(Window().Image(woods), 1) << "__Folder";
    EXPECT_EQ(Window().Image(Window().At({"Woods", "On Graphs"})), -1);
    EXPECT_EQ(Window().Image(Window().At({"Knuth", "Loading"})), 0) << "__Dummy";
    EXPECT_NE(SendMessageW(Window().Handle(), TVM_GETIMAGELIST, TVSIL_NORMAL, 0), 0);
    EXPECT_EQ(Window().SelectedText(), "On Lists");
    EXPECT_EQ(tree.Get("selection").Object().Get(), lists);
    EXPECT_THAT(Take(), testing::IsEmpty()) << "without the repository and the host";
    Window().Open({"Knuth"});
    EXPECT_THAT(Window().Below(Window().At({"Knuth"})), ElementsAre("On Trees"));
}

TEST_F(HierarchyWindowAgain, MayGoWhileTheNodesAboveASelectedOneAreFilled) {
    tree.Call("AddRootNode", knuth);
    tree.Call("AddSubNode", person, KeyOf(knuth), cites);
    events.On("NodeExpand").Run([this] { TakeWindowAway(Window()); });
    EXPECT_TRUE(tree.PutRef("selection", cites));
    EXPECT_EQ(tree.Get("selection").Object().Get(), person);
}

TEST_F(HierarchyWindowAgain, HasTheLookAndTheMannersThatItHad) {
    tree.Call("AddRootNode", trees);
    tree.Put("Checkboxes", true);
    tree.Call("CheckAll");
    tree.Call("AddRootNode", graphs);
    for (const char* flag : {"LabelEdit", "dragAllowed", "dropAllowed"}) tree.Put(flag, true);
    tree.Put("Enabled", false);
    const DWORD style = Window().Style();
    const auto indent = SendMessageW(Window().Handle(), TVM_GETINDENT, 0, 0);
    EXPECT_TRUE(IsDropTarget(Window()));
    TakeWindowAway(Window());
    EXPECT_EQ(Window().Style(), style);
    EXPECT_EQ(SendMessageW(Window().Handle(), TVM_GETINDENT, 0, 0), indent);
    EXPECT_TRUE(IsDropTarget(Window()));
    EXPECT_FALSE(IsWindowEnabled(Window().Handle()));
    EXPECT_EQ(Window().CheckBox(Window().At({"On Trees"})), 2u);
    EXPECT_EQ(Window().CheckBox(Window().At({"On Trees", "Loading"})), 2u);
    EXPECT_EQ(Window().CheckBox(Window().At({"On Graphs"})), 1u);
    for (const char* flag : {"Checkboxes", "LabelEdit", "dragAllowed", "dropAllowed"}) {
        EXPECT_EQ(tree.Get(flag).value, Value(true)) << flag;
        tree.Put(flag, false);
    }
    tree.Put("Enabled", true);
    TakeWindowAway(Window());
    EXPECT_EQ(Window().Style() & TVS_EDITLABELS, 0u);
    EXPECT_NE(Window().Style() & TVS_DISABLEDRAGDROP, 0u);
    EXPECT_FALSE(IsDropTarget(Window()));
    EXPECT_TRUE(IsWindowEnabled(Window().Handle()));
    EXPECT_EQ(Window().CheckBox(Window().At({"On Trees"})), 0u);
}

TEST_F(HierarchyWindowAgain, TakesWhatMembersDoWithoutIt) {
    tree.Call("AddRootNode", trees);
    const TreeWindow before = Window();
    TakeWindowAway(before);
    tree.Call("AddRootNode", graphs);
    tree.Call("Expand", trees);
    EXPECT_EQ(tree.Get("selection").Object().Get(), trees);
    TakeWindowAway(Window());
    tree.Call("RemoveLink", first);
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".On Lists", "..Loading", "On Graphs"));
    TakeWindowAway(Window());
    tree.Call("Clear");
    EXPECT_THAT(Window().All(), testing::IsEmpty());
    EXPECT_EQ(tree.Get("selection").value, Nothing());
}

TEST_F(HierarchyWindowAgain, SelectsNothingWhereTheSelectedNodeWent) {
    tree.Call("AddRootNode", trees);
    tree.Call("Expand", trees);
    tree.PutRef("selection", first);
    TakeWindowAway(Window());
    tree.Call("RemoveLink", first);
    EXPECT_EQ(Window().Selected(), nullptr);
    EXPECT_EQ(Window().Count(), 3);
}

using TreeViewWindowAgain = TreeViewTest;

TEST_F(TreeViewWindowAgain, ShowsTheNodesAsTheyWere) {
    const LateBound books = Describe(Root(), "Extension", "Book", "Name", "Folder");
    Describe(books, "Folder", "", "Inside");
    Describe(Root(), "Folder", "", "More");
    Window().Open({"Root"});
    Window().Open({"Root", "On Trees"});
    Window().Close(Window().At({"Root", "On Trees"}));
    Window().Select(Window().At({"Root", "More"}));
    const auto all = Window().All();
    ASSERT_EQ(all.size(), 8u);
    Take();
    TakeWindowAway(Window());
    EXPECT_EQ(Window().All(), all);
    EXPECT_TRUE(Window().IsOpen(Window().At({"Root"})));
    EXPECT_FALSE(Window().IsOpen(Window().At({"Root", "On Trees"})));
    EXPECT_EQ(Window().Image(Window().At({"Root", "On Trees"})), 1) << "Folder";
    EXPECT_EQ(Window().Image(Window().At({"Root", "On Lists", "Loading"})), 0) << "Dummy";
    EXPECT_EQ(Window().Image(Window().At({"Root", "More"})), -1);
    EXPECT_EQ(Window().SelectedText(), "More");
    EXPECT_THAT(Take(), testing::IsEmpty()) << "without the repository";
    Window().Open({"Root", "On Lists"});
    EXPECT_THAT(Window().Below(Window().At({"Root", "On Lists"})), ElementsAre("Inside"));
}

TEST_F(TreeViewWindowAgain, HasTheLookAndTheMannersThatItHad) {
    tree.Put("dragAllowed", true);
    tree.Put("dropAllowed", true);
    tree.Put("Enabled", false);
    const DWORD style = Window().Style();
    TakeWindowAway(Window());
    EXPECT_EQ(Window().Style(), style);
    EXPECT_TRUE(IsDropTarget(Window()));
    EXPECT_FALSE(IsWindowEnabled(Window().Handle()));
    tree.Put("dragAllowed", false);
    tree.Put("dropAllowed", false);
    tree.Put("Enabled", true);
    TakeWindowAway(Window());
    EXPECT_NE(Window().Style() & TVS_DISABLEDRAGDROP, 0u);
    EXPECT_FALSE(IsDropTarget(Window()));
    EXPECT_TRUE(IsWindowEnabled(Window().Handle()));
}

}  // namespace
}  // namespace support
