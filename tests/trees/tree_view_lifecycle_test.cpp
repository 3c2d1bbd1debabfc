#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using TreeViewLifecycle = TreeViewTest;

TEST_F(TreeViewLifecycle, WhatIsSetBeforeCreateStaysSet) {
    const LateBound fresh = CreateRegistered(L"TreeView");
    EXPECT_TRUE(fresh.PutRef("Repository", model.Root()));
    EXPECT_TRUE(fresh.Put("dragAllowed", true));
    EXPECT_TRUE(fresh.Put("dropAllowed", true));
    EXPECT_TRUE(fresh.Put("Enabled", false));
    ASSERT_TRUE(fresh.Call("Create"));
    EXPECT_EQ(fresh.Get("Repository").Object().Get(), model.Root());
    EXPECT_EQ(fresh.Get("dragAllowed").value, Value(true));
    EXPECT_EQ(fresh.Get("dropAllowed").value, Value(true));
    EXPECT_EQ(fresh.Get("Enabled").value, Value(false));
    const TreeWindow window(fresh);
    EXPECT_EQ(window.Style() & TVS_DISABLEDRAGDROP, 0u);
    EXPECT_NE(GetPropW(window.Handle(), L"OleDropTargetInterface"), nullptr);
    EXPECT_FALSE(IsWindowEnabled(window.Handle())) << "Create does not enable this tree";
    LateBound(fresh.Call("GetRootNodeDescription").value)
        .Call("AddChild", "Extension", "Book", "Name", "", "books");
    window.Open({"Root"});
    EXPECT_THAT(window.All(), ElementsAre("Root", ".On Trees", ".On Graphs", ".On Lists"));
    fresh.Call("Destroy");
}

TEST_F(TreeViewLifecycle, ClearKeepsTheRecordsAndDestroyLetsThemGo) {
    const auto unknown = lists->References();
    Describe(Root(), "Extension", "Book", "Name");
    Window().Open({"Root"});
    const auto shown = lists->References();
    EXPECT_GT(shown, unknown);
    EXPECT_TRUE(tree.Call("Clear"));
    EXPECT_EQ(lists->References(), shown);
    EXPECT_TRUE(tree.Call("Destroy"));
    EXPECT_EQ(lists->References(), unknown);
}

TEST_F(TreeViewLifecycle, CreateAfterDestroyBindsTheImagesAgain) {
    const auto images = [this] {
        return SendMessageW(Window().Handle(), TVM_GETIMAGELIST, TVSIL_NORMAL, 0);
    };
    tree.Call("Destroy");
    ASSERT_EQ(images(), 0);
    ASSERT_TRUE(tree.Call("Create"));
    EXPECT_NE(images(), 0);
    EXPECT_EQ(Window().Image(Window().At({"Root"})), 1);
    EXPECT_EQ(Window().Image(Window().At({"Root", "Loading"})), 0);
}

TEST_F(TreeViewLifecycle, APlaceholderThatIsSelectedHasNoRecord) {
    SelectPlaceholder(Window(), {"Root"});
    ASSERT_EQ(Window().SelectedText(), "Loading");
    const Outcome selection = tree.Get("selection");
    EXPECT_EQ(selection.AutomationNumber(), 5);
    EXPECT_EQ(selection.source, "OrvaneControls.TreeView");
    EXPECT_TRUE(tree.PutRef("selection", trees)) << "and still does nothing";
    EXPECT_EQ(Window().SelectedText(), "Loading");
}

TEST_F(TreeViewLifecycle, ANodeWhoseDescribedChildrenAreGoneIsALeaf) {
    const LateBound folder = Describe(Root(), "Folder", "", "Folder");
    Describe(folder, "Folder", "", "Inside");
    const LateBound books = Describe(Root(), "Extension", "Book", "Name");
    Describe(books, "Folder", "", "Inside");
    for (const LateBound& described : {folder, books}) {
        EXPECT_TRUE(LateBound(described.Get("Children").value).Call("Remove", 1));
    }
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(),
                ElementsAre("Root", ".Folder", ".On Trees", ".On Graphs", ".On Lists"));
    EXPECT_FALSE(Window().HasButton(Window().At({"Root", "Folder"})));
}

/// The description of the root is the one in its record.
class TreeViewRootDescription : public TreeViewTest {
protected:
    [[nodiscard]] LateBound RootInfo() const { return Parent("ID:2"); }
};

TEST_F(TreeViewRootDescription, MayBeAnotherOneThatIsPutIntoItsRecord) {
    Describe(Root(), "Folder", "", "Never");
    const LateBound other = CreateRegistered(L"NodeDescription");
    Describe(other, "Folder", "", "A");
    Describe(other, "Extension", "Person", "Name");
    EXPECT_TRUE(RootInfo().PutRef("NodeDescription", other.Get()));
    EXPECT_EQ(Root().Get(), other.Get());
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".A", ".Knuth"));
}

TEST_F(TreeViewRootDescription, MayBeNothingAndMakesNoNodesThen) {
    Describe(Root(), "Folder", "", "Never");
    EXPECT_TRUE(RootInfo().PutRef("NodeDescription", Nothing()));
    const Outcome none = tree.Call("GetRootNodeDescription");
    EXPECT_TRUE(none);
    EXPECT_EQ(none.value, Nothing());
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root"));
    EXPECT_THAT(Taken("MetaNodes"), IsEmpty());
}

TEST_F(TreeViewRootDescription, OfANodeBelowIsTakenFromItsRecordToo) {
    Describe(Describe(Root(), "Folder", "", "A"), "Folder", "", "Never");
    Window().Open({"Root"});
    const LateBound other = CreateRegistered(L"NodeDescription");
    Describe(other, "Folder", "", "B");
    EXPECT_TRUE(Parent("ID:4").PutRef("NodeDescription", other.Get()));
    Window().Open({"Root", "A"});
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".A", "..B"));
}

}  // namespace
}  // namespace support
