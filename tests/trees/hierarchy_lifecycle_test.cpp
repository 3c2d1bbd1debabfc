#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HierarchyLifecycle : public HierarchyTest {
protected:
    void AddSome() {
        tree.Call("AddRootNode", trees);
        Window().Open({"On Trees"});
        Take();
    }
};

TEST_F(HierarchyLifecycle, ACreateThatFailsHasMadeItsCollectionsAlready) {
    AddSome();
    const auto before = Window().All();
    ASSERT_EQ(tree.Call("Create").AutomationNumber(), 35602);
    EXPECT_EQ(Window().All(), before);
    EXPECT_EQ(tree.Call("GetNodeInfo", "ID:1").value, Nothing());
    EXPECT_EQ(tree.Call("GetInfoFromObject", trees).value, Nothing());
    EXPECT_EQ(tree.Call("ParentNode", "ID:3").AutomationNumber(), 5) << "the parent has no record";
    EXPECT_EQ(tree.Call("ParentNode", "ID:1").value, Nothing()) << "it has no parent";
    ASSERT_TRUE(tree.Call("AddRootNode", knuth));
    EXPECT_EQ(KeyOf(knuth), "ID:7") << "keys go on";
}

TEST_F(HierarchyLifecycle, AfterDestroyNoNodeHasARecord) {
    AddSome();
    tree.Call("Destroy");
    EXPECT_EQ(tree.Call("ParentNode", "ID:3").AutomationNumber(), 91);
    EXPECT_EQ(tree.Call("ParentNode", "ID:1").value, Nothing()) << "it has no parent";
    EXPECT_EQ(tree.Call("ParentNode", "ID:99").AutomationNumber(), 35601);
}

TEST_F(HierarchyLifecycle, InitAndDeinitDoNothing) {
    AddSome();
    tree.Put("withFolders", true);
    tree.Put("Checkboxes", true);
    tree.Put("LabelEdit", true);
    tree.Put("Enabled", true);
    Window().Select(Window().At({"On Trees", "On Lists"}));
    const auto before = Window().All();
    for (const char* member : {"Init", "Deinit", "Deinit", "Init"}) {
        EXPECT_EQ(tree.Call(member).value, Empty());
        EXPECT_EQ(Window().All(), before) << member;
        EXPECT_EQ(Window().SelectedText(), "On Lists") << member;
        EXPECT_TRUE(Window().IsOpen(Window().At({"On Trees"}))) << member;
        EXPECT_TRUE(IsWindowEnabled(Window().Handle())) << member;
        EXPECT_EQ(KeyOf(second), "ID:5") << member;
        for (const char* flag : {"withFolders", "Checkboxes", "LabelEdit", "Enabled"}) {
            EXPECT_EQ(tree.Get(flag).value, Value(true)) << member << ' ' << flag;
        }
        EXPECT_TRUE(tree.Call("GetIcon", "__Folder").Object()) << member;
    }
    EXPECT_THAT(Take(), IsEmpty());
    ASSERT_TRUE(tree.Call("AddRootNode", graphs));
    EXPECT_TRUE(Info("ID:7")) << "keys go on";
}

TEST_F(HierarchyLifecycle, FlagsLastFromBeforeCreateBeyondDestroy) {
    const LateBound fresh = CreateRegistered(L"HierarchyTreeView");
    EventRecorder listener(fresh.Get());
    listener.On("AddingNode").Run([this](const Arguments& arguments) { Allow(arguments); });
    constexpr const char* flags[] = {"withFolders", "Checkboxes", "dragAllowed", "dropAllowed"};
    for (const char* flag : flags) fresh.Put(flag, true);
    for (const char* member : {"Create", "Clear", "Destroy"}) {
        ASSERT_TRUE(fresh.Call(member));
        for (const char* flag : flags) {
            EXPECT_EQ(fresh.Get(flag).value, Value(true)) << flag << " after " << member;
        }
        const TreeWindow window(fresh);
        EXPECT_EQ(window.Style() & TVS_DISABLEDRAGDROP, 0u) << member;
        EXPECT_NE(GetPropW(window.Handle(), L"OleDropTargetInterface"), nullptr) << member;
        if (std::string_view(member) == "Destroy") break;
        ASSERT_TRUE(fresh.Call("AddExtension", person));
        EXPECT_THAT(window.All(), ElementsAre("Person", ".Knuth", "..Loading")) << "with folders";
        EXPECT_EQ(window.CheckBox(window.At({"Person", "Knuth"})), 1u) << member;
    }
}

}  // namespace
}  // namespace support
