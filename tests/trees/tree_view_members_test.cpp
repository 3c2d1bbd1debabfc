#include "trees/tree_fixture.h"

#include "support/picture_files.h"
#include "support/temporary_folder.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using TreeViewMembers = TreeViewTest;

TEST_F(TreeViewMembers, StandInTheInterfacesOrder) {
    int id = 0;
    for (const char* member :
         {"Enabled", "dragAllowed", "dropAllowed", "Repository", "Create", "Destroy", "ParentNode",
          "selection", "GetCheckedItems", "GetNonCheckedItems", "Clear", "CheckAll", "UncheckAll",
          "SetBackGroundColor", "AddIcon", "GetRootNodeDescription"}) {
        EXPECT_EQ(tree.Id(member), ++id) << member;
    }
}

TEST_F(TreeViewMembers, FlagsAreWhatWasWrittenLast) {
    const LateBound fresh = CreateRegistered(L"TreeView");
    for (const char* flag : {"Enabled", "dragAllowed", "dropAllowed"}) {
        EXPECT_EQ(fresh.Get(flag).value, Value(false)) << flag;
        EXPECT_TRUE(fresh.Put(flag, true));
        EXPECT_EQ(fresh.Get(flag).value, Value(true)) << flag;
        EXPECT_TRUE(fresh.Put(flag, false));
        EXPECT_EQ(fresh.Get(flag).value, Value(false)) << flag;
    }
}

TEST_F(TreeViewMembers, EnabledIsPassedOnToTheTree) {
    EXPECT_TRUE(IsWindowEnabled(Window().Handle())) << "though it was not written yet";
    tree.Put("Enabled", false);
    EXPECT_FALSE(IsWindowEnabled(Window().Handle()));
    tree.Put("Enabled", true);
    EXPECT_TRUE(IsWindowEnabled(Window().Handle()));
}

TEST_F(TreeViewMembers, DragAllowedIsTheTreesDragMode) {
    EXPECT_NE(Window().Style() & TVS_DISABLEDRAGDROP, 0u);
    tree.Put("dragAllowed", true);
    EXPECT_EQ(Window().Style() & TVS_DISABLEDRAGDROP, 0u);
    tree.Put("dragAllowed", false);
    EXPECT_NE(Window().Style() & TVS_DISABLEDRAGDROP, 0u);
}

TEST_F(TreeViewMembers, DropAllowedMakesTheTreeADropTarget) {
    const auto isTarget = [this] {
        return GetPropW(Window().Handle(), L"OleDropTargetInterface") != nullptr;
    };
    EXPECT_FALSE(isTarget());
    tree.Put("dropAllowed", true);
    EXPECT_TRUE(isTarget());
    tree.Put("dropAllowed", false);
    EXPECT_FALSE(isTarget());
}

TEST_F(TreeViewMembers, RepositoryIsAStoredReference) {
    EXPECT_EQ(tree.Get("Repository").Object().Get(), model.Root());
    EXPECT_TRUE(tree.Put("Repository", trees));
    EXPECT_EQ(tree.Get("Repository").Object().Get(), trees);
    EXPECT_TRUE(tree.PutRef("Repository", Nothing()));
    EXPECT_EQ(tree.Get("Repository").value, Nothing());
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(TreeViewMembers, OperationsWithoutAResultGiveEmpty) {
    const LateBound fresh = CreateRegistered(L"TreeView");
    for (const char* member : {"Create", "CheckAll", "UncheckAll", "Clear", "Destroy"}) {
        const Outcome outcome = fresh.Call(member);
        EXPECT_TRUE(outcome) << member;
        EXPECT_EQ(outcome.value, Empty()) << member;
    }
    EXPECT_EQ(fresh.Call("SetBackGroundColor", 5).value, Empty());
}

TEST_F(TreeViewMembers, TheUserCannotRenameNodes) {
    EXPECT_EQ(Window().Style() & TVS_EDITLABELS, 0u);
    const HTREEITEM root = Window().At({"Root"});
    EXPECT_EQ(SendMessageW(Window().Handle(), TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(root)),
              0);
    Window().Press(root, VK_F2);
    EXPECT_EQ(SendMessageW(Window().Handle(), TVM_GETEDITCONTROL, 0, 0), 0);
}

TEST_F(TreeViewMembers, LinesAndButtonsLeadToTheNodes) {
    constexpr DWORD wanted = TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT;
    EXPECT_EQ(Window().Style() & wanted, wanted);
}

TEST_F(TreeViewMembers, ParentNodeOfTheRootIsNothing) {
    const Outcome parent = tree.Call("ParentNode", "Root");
    EXPECT_TRUE(parent);
    EXPECT_EQ(parent.value, Nothing());
}

TEST_F(TreeViewMembers, ParentNodeOfAnUnknownKeyFails) {
    for (const char* key : {"ID:99", "root", "id:2", "", "ID:02"}) {
        EXPECT_EQ(tree.Call("ParentNode", key).AutomationNumber(), 35601) << key;
    }
}

TEST_F(TreeViewMembers, SelectionIsWhatTheSelectedNodeStandsFor) {
    EXPECT_EQ(tree.Get("selection").value, Nothing());
    Window().Select(Window().At({"Root"}));
    const LateBound root(tree.Get("selection").value);
    EXPECT_EQ(root.Get("key").value, Value("Root"));
    EXPECT_EQ(root.Get("NodeDescription").value, Value(Root().Get()));
    EXPECT_EQ(root.Get("repObject").value, Nothing());
    Window().Select(nullptr);
    EXPECT_EQ(tree.Get("selection").value, Nothing());
}

TEST_F(TreeViewMembers, SettingTheSelectionChangesNothing) {
    Describe(Root(), "Extension", "Book", "Name");
    Window().Open({"Root"});
    Window().Select(Window().At({"Root", "On Graphs"}));
    const LateBound info(tree.Get("selection").value);
    for (const Value& object : {Value(trees), Value(info.Get()), Nothing()}) {
        EXPECT_TRUE(tree.PutRef("selection", object));
        EXPECT_TRUE(tree.Put("selection", object));
        EXPECT_EQ(Window().SelectedText(), "On Graphs");
    }
}

TEST_F(TreeViewMembers, CheckedItemsAreAlwaysEmpty) {
    tree.Call("CheckAll");
    for (const char* member : {"GetCheckedItems", "GetNonCheckedItems"}) {
        const LateBound items(tree.Call(member).value);
        ASSERT_TRUE(items) << member;
        EXPECT_EQ(items.Get("Count").value, Value(0)) << member;
        EXPECT_NE(items.Get(), LateBound(tree.Call(member).value).Get()) << "a new one each time";
    }
    tree.Call("UncheckAll");
    EXPECT_EQ(LateBound(tree.Call("GetNonCheckedItems").value).Get("Count").value, Value(0));
}

TEST_F(TreeViewMembers, ClearRemovesTheNodesAndNothingElse) {
    const LateBound root = Root();
    Describe(root, "Folder", "", "A");
    Window().Open({"Root"});
    EXPECT_TRUE(tree.Call("Clear"));
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_EQ(Window().Count(), 0);
    EXPECT_EQ(tree.Call("GetRootNodeDescription").AutomationNumber(), 35601);
    EXPECT_EQ(tree.Call("ParentNode", "Root").AutomationNumber(), 35601);
    EXPECT_EQ(tree.Get("selection").value, Nothing());
    EXPECT_EQ(tree.Get("Repository").Object().Get(), model.Root());
    EXPECT_TRUE(tree.Call("Clear"));
}

TEST_F(TreeViewMembers, DestroyLetsGoOfEverything) {
    Describe(Root(), "Extension", "Book", "Name");
    Window().Open({"Root"});
    const auto held = [](FakeObject* object) {
        object->AddRef();
        return object->Release();
    };
    const auto before = held(lists);
    EXPECT_TRUE(tree.Call("Destroy"));
    EXPECT_LT(held(lists), before);
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_EQ(tree.Get("Repository").value, Nothing());
    EXPECT_EQ(SendMessageW(Window().Handle(), TVM_GETIMAGELIST, TVSIL_NORMAL, 0), 0);
    EXPECT_EQ(tree.Call("GetRootNodeDescription").AutomationNumber(), 35601);
}

TEST_F(TreeViewMembers, CreateAfterDestroyCountsKeysFromOneAgain) {
    Describe(Root(), "Folder", "", "A");
    Window().Open({"Root"});
    tree.Call("Destroy");
    EXPECT_TRUE(tree.Call("Create"));
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Loading"));
    EXPECT_EQ(Root().Get("key").value, Value("ID:1"));
    EXPECT_EQ(Parent("ID:2").Get("key").value, Value("Root"));
    EXPECT_EQ(LateBound(Root().Get("Children").value).Get("Count").value, Value(0));
}

TEST_F(TreeViewMembers, CreateTwiceFailsAtTheIcons) {
    const Outcome again = tree.Call("Create");
    EXPECT_EQ(again.AutomationNumber(), 35602);
    EXPECT_EQ(again.source, "OrvaneControls.TreeView");
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Loading"));
}

TEST_F(TreeViewMembers, AddIconAddsAPictureForNodes) {
    const TemporaryFolder folder;
    WriteFile(folder / "red.bmp", BitmapFile(16, 16, 0xFF0000));
    EXPECT_EQ(tree.Call("AddIcon", "red", folder.File(L"red.bmp")).value, Empty());
    Describe(Root(), "Folder", "", "A", "red");
    Describe(Root(), "Folder", "", "B", "");
    Window().Open({"Root"});
    EXPECT_EQ(Window().Image(Window().At({"Root", "A"})), 2);
    EXPECT_EQ(Window().Image(Window().At({"Root", "B"})), -1);
}

TEST_F(TreeViewMembers, AddIconWorksBeforeCreate) {
    const TemporaryFolder folder;
    WriteFile(folder / "red.bmp", BitmapFile(16, 16, 0xFF0000));
    const LateBound fresh = CreateRegistered(L"TreeView");
    EXPECT_TRUE(fresh.Call("AddIcon", "red", folder.File(L"red.bmp")));
    EXPECT_TRUE(fresh.Call("Create"));
    EXPECT_EQ(TreeWindow(fresh).Image(TreeWindow(fresh).At({"Root"})), 2);
}

TEST_F(TreeViewMembers, AddIconFailsAsThePictureLoaderDoes) {
    const TemporaryFolder folder;
    WriteFile(folder / "junk.ico", "no picture");
    EXPECT_EQ(tree.Call("AddIcon", "a", folder.File(L"none.ico")).AutomationNumber(), 53);
    EXPECT_EQ(tree.Call("AddIcon", "a", folder.File(L"no\\none.ico")).AutomationNumber(), 76);
    EXPECT_EQ(tree.Call("AddIcon", "a", folder.File(L"junk.ico")).AutomationNumber(), 481);
}

TEST_F(TreeViewMembers, AnIconsKeyIsItsOwn) {
    const TemporaryFolder folder;
    WriteFile(folder / "red.bmp", BitmapFile(16, 16, 0xFF0000));
    const std::wstring file = folder.File(L"red.bmp");
    EXPECT_EQ(tree.Call("AddIcon", "Folder", file).AutomationNumber(), 35602);
    EXPECT_TRUE(tree.Call("AddIcon", "folder", file)) << "keys know case";
}

TEST_F(TreeViewMembers, SetBackGroundColorDoesNothing) {
    const auto color = [this] { return SendMessageW(Window().Handle(), TVM_GETBKCOLOR, 0, 0); };
    const auto before = color();
    EXPECT_TRUE(tree.Call("SetBackGroundColor", 0x00FF00));
    EXPECT_EQ(color(), before);
}

TEST_F(TreeViewMembers, NeedCreateForAnythingElse) {
    const LateBound fresh = CreateRegistered(L"TreeView");
    EXPECT_EQ(fresh.Call("GetRootNodeDescription").AutomationNumber(), 35601);
    EXPECT_EQ(fresh.Call("ParentNode", "Root").AutomationNumber(), 35601);
    EXPECT_EQ(fresh.Get("selection").value, Nothing());
    EXPECT_TRUE(fresh.Call("Clear"));
    EXPECT_TRUE(fresh.Call("Destroy"));
}

}  // namespace
}  // namespace support
