#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using TreeViewFilling = TreeViewTest;

TEST_F(TreeViewFilling, BeginsWithARootThatCanBeOpened) {
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Loading"));
    EXPECT_EQ(Window().Count(), 2);
    EXPECT_EQ(Root().Get("key").value, Value("ID:1"));
    EXPECT_EQ(Root().Get("typ").value, Value("ROOT"));
    for (const char* member : {"Caption", "objectType", "picture"}) {
        EXPECT_EQ(Root().Get(member).value, Value("")) << member;
    }
    EXPECT_EQ(Parent("ID:2").Get("key").value, Value("Root")) << "of the placeholder";
    EXPECT_EQ(tree.Call("ParentNode", "ID:1").AutomationNumber(), 35601);
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(TreeViewFilling, GivesTheRootAFolderAndThePlaceholderADummy) {
    const TreeWindow window = Window();
    EXPECT_EQ(window.Image(window.At({"Root"})), 1);
    EXPECT_EQ(window.SelectedImage(window.At({"Root"})), 1);
    EXPECT_EQ(window.Image(window.At({"Root", "Loading"})), 0);
    EXPECT_EQ(window.SelectedImage(window.At({"Root", "Loading"})), 0);
}

TEST_F(TreeViewFilling, OfAnEmptyDescriptionLeavesTheRootWithoutChildren) {
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root"));
    EXPECT_FALSE(Window().HasButton(Window().At({"Root"})));
    EXPECT_EQ(tree.Call("ParentNode", "ID:2").AutomationNumber(), 35601);
}

TEST_F(TreeViewFilling, MakesANodeForAFolder) {
    Describe(Root(), "Folder", "", "Leaf", "Folder");
    const LateBound books = Describe(Root(), "Folder", "", "Books", "Folder");
    Describe(books, "Folder", "", "Inside");
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Leaf", ".Books", "..Loading"));
    EXPECT_EQ(Window().Image(Window().At({"Root", "Leaf"})), 1);
    EXPECT_EQ(Window().Image(Window().At({"Root", "Books"})), 1);
    EXPECT_EQ(Window().SelectedImage(Window().At({"Root", "Books"})), 1);
    // ID:2 was the first placeholder.
    EXPECT_EQ(Parent("ID:5").Get("key").value, Value("ID:4"));
    EXPECT_EQ(Parent("ID:5").Get("NodeDescription").value, Value(books.Get()));
    EXPECT_EQ(Parent("ID:5").Get("repObject").value, Nothing());
    EXPECT_EQ(LateBound(tree.Call("ParentNode", "ID:3").value).Get("key").value, Value("Root"));
}

TEST_F(TreeViewFilling, KnowsAnUnfilledNodeByTheImageOfItsFirstChild) {
    Describe(Root(), "Folder", "", "A", "Dummy");
    Describe(Root(), "Folder", "", "B");
    Window().Open({"Root"});
    EXPECT_THAT(Window().Below(Window().At({"Root"})), ElementsAre("A", "B"));
    Window().Close(Window().At({"Root"}));
    Window().Open({"Root"});
    EXPECT_THAT(Window().Below(Window().At({"Root"})), ElementsAre("B", "A", "B"))
        << "the first child was taken for a placeholder";
}

TEST_F(TreeViewFilling, ReadsTheInstancesOfAMetaNode) {
    const LateBound described = Describe(Root(), "Extension", "Book", "Name", "Folder");
    Describe(described, "Folder", "", "Cites");
    model.Log().Clear();
    Window().Open({"Root"});
    EXPECT_THAT(Take(),
                ElementsAre("rep.MetaNodes(\"Book\")", "Book.Extension", "b1.GetProperty(\"Name\")",
                            "b2.GetProperty(\"Name\")", "b3.GetProperty(\"Name\")"));
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".On Trees", "..Loading", ".On Graphs",
                                            "..Loading", ".On Lists", "..Loading"));
    EXPECT_EQ(Parent("ID:4").Get("key").value, Value("ID:3")) << "keys are made node by node";
    EXPECT_EQ(Parent("ID:4").Get("repObject").Object().Get(), trees);
    EXPECT_EQ(Parent("ID:8").Get("repObject").Object().Get(), lists);
    EXPECT_EQ(Parent("ID:8").Get("NodeDescription").value, Value(described.Get()));
    EXPECT_EQ(Window().Image(Window().At({"Root", "On Lists"})), 1);
}

TEST_F(TreeViewFilling, ShowsThePropertyThatTheCaptionNames) {
    model.MetaProperty(book, "Year", "Long");
    trees->values["Year"] = 1968;
    graphs->values["Year"] = 1736;
    lists->values["Year"] = true;
    Describe(Root(), "Extension", "Book", "Year");
    Window().Open({"Root"});
    EXPECT_THAT(Window().Below(Window().At({"Root"})), ElementsAre("1968", "1736", "True"));
}

TEST_F(TreeViewFilling, FollowsTheLinksOfTheObjectAboveTheFolder) {
    const LateBound books = Describe(Root(), "Extension", "Book", "Name");
    const LateBound folder = Describe(books, "Folder", "", "Cites");
    const LateBound links = Describe(folder, "Links", "cites", "", "Folder");
    Window().Open({"Root"});
    Window().Open({"Root", "On Trees"});
    model.Log().Clear();
    Window().Open({"Root", "On Trees", "Cites"});
    EXPECT_THAT(Take(), ElementsAre("b1.Outgoing_(\"cites\")", "c1.Target", "b2.name", "c2.Target",
                                    "b3.name"));
    EXPECT_THAT(Window().Below(Window().At({"Root", "On Trees", "Cites"})),
                ElementsAre("On Graphs", "On Lists"));
    Window().Select(Window().At({"Root", "On Trees", "Cites", "On Lists"}));
    const LateBound selected(tree.Get("selection").value);
    EXPECT_EQ(selected.Get("repObject").Object().Get(), lists);
    EXPECT_EQ(selected.Get("NodeDescription").value, Value(links.Get()));
    EXPECT_EQ(Window().Image(Window().Selected()), 1);
}

TEST_F(TreeViewFilling, GivesLinkTargetsAPlaceholderWhereMoreIsDescribed) {
    const LateBound books = Describe(Root(), "Extension", "Book", "Name");
    const LateBound folder = Describe(books, "Folder", "", "Cites");
    const LateBound links = Describe(folder, "Links", "cites", "");
    const LateBound deeper = Describe(links, "Folder", "", "Cites");
    Describe(deeper, "Links", "cites", "");
    Window().Open({"Root"});
    Window().Open({"Root", "On Trees"});
    Window().Open({"Root", "On Trees", "Cites"});
    Window().Open({"Root", "On Trees", "Cites", "On Graphs"});
    EXPECT_THAT(Window().Below(Window().At({"Root", "On Trees", "Cites", "On Graphs"})),
                ElementsAre("Cites"));
    Window().Open({"Root", "On Trees", "Cites", "On Graphs", "Cites"});
    EXPECT_THAT(Window().Below(Window().At({"Root", "On Trees", "Cites", "On Graphs", "Cites"})),
                IsEmpty());
}

TEST_F(TreeViewFilling, GoesThroughTheDescriptionsInTheirOrder) {
    Describe(Root(), "Extension", "Person", "Name");
    Describe(Root(), "Folder", "", "Middle");
    Describe(Root(), "Extension", "Book", "Name");
    Window().Open({"Root"});
    EXPECT_THAT(Window().Below(Window().At({"Root"})),
                ElementsAre("Knuth", "Middle", "On Trees", "On Graphs", "On Lists"));
}

TEST_F(TreeViewFilling, MakesNothingOfOtherKinds) {
    for (const char* typ : {"folder", "EXTENSION", "links", "ROOT", "", "Something"}) {
        Describe(Root(), typ, "Book", "Name");
    }
    Window().Open({"Root"});
    EXPECT_THAT(Window().All(), ElementsAre("Root"));
    EXPECT_THAT(Taken("MetaNodes"), IsEmpty());
}

TEST_F(TreeViewFilling, HappensOnceForANode) {
    Describe(Root(), "Extension", "Book", "Name");
    Window().Open({"Root"});
    EXPECT_TRUE(Window().IsOpen(Window().At({"Root"})));
    Window().Close(Window().At({"Root"}));
    EXPECT_FALSE(Window().IsOpen(Window().At({"Root"})));
    model.Log().Clear();
    model.Node(book, "b4", "On Sets");
    Window().Open({"Root"});
    EXPECT_THAT(Window().Below(Window().At({"Root"})),
                ElementsAre("On Trees", "On Graphs", "On Lists"));
    EXPECT_THAT(Take(), IsEmpty()) << "the repository is not read again";
}

TEST_F(TreeViewFilling, DoesNotSeeDescriptionsThatCameAfterIt) {
    Describe(Root(), "Folder", "", "Before");
    Window().Open({"Root"});
    Describe(Root(), "Folder", "", "After");
    Window().Close(Window().At({"Root"}));
    Window().Open({"Root"});
    EXPECT_THAT(Window().Below(Window().At({"Root"})), ElementsAre("Before"));
}

TEST_F(TreeViewFilling, TakesADescriptionAsItIsWhenANodeIsOpened) {
    const LateBound folder = Describe(Root(), "Folder", "", "Before");
    Describe(folder, "Folder", "", "Inside");
    Window().Open({"Root"});
    folder.Put("Caption", "After");
    Describe(folder, "Folder", "", "New");
    EXPECT_THAT(Window().Below(Window().At({"Root"})), ElementsAre("Before"));
    Window().Open({"Root", "Before"});
    EXPECT_THAT(Window().Below(Window().At({"Root", "Before"})), ElementsAre("Inside", "New"));
}

TEST_F(TreeViewFilling, RaisesNoEvents) {
    Describe(Root(), "Extension", "Book", "Name");
    Window().Open({"Root"});
    EXPECT_EQ(events.Count("NodeClick") + events.Count("NodeDblClick"), 0u);
}

TEST_F(TreeViewFilling, HappensForWhateverOpensTheNode) {
    Describe(Root(), "Folder", "", "Inside");
    EXPECT_TRUE(SendMessageW(Window().Handle(), TVM_EXPAND, TVE_EXPAND,
                             reinterpret_cast<LPARAM>(Window().At({"Root"}))));
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".Inside"));
    EXPECT_TRUE(Window().IsOpen(Window().At({"Root"})));
}

TEST_F(TreeViewFilling, ByTheRightArrowAndByTheStarOpensALevel) {
    const LateBound folder = Describe(Root(), "Folder", "", "A");
    Describe(folder, "Folder", "", "B");
    Window().Press(Window().At({"Root"}), VK_RIGHT);
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".A", "..Loading"));
    Window().Press(Window().At({"Root"}), VK_MULTIPLY);
    EXPECT_THAT(Window().All(), ElementsAre("Root", ".A", "..B"));
    EXPECT_TRUE(Window().IsOpen(Window().At({"Root", "A"})));
}

TEST_F(TreeViewFilling, ByTheStarGoesFromTheTopDown) {
    for (const char* type : {"Book", "Person"}) {
        Describe(Describe(Root(), "Folder", "", type), "Extension", type, "Name");
    }
    Window().Press(Window().At({"Root"}), VK_ADD);
    Window().Press(Window().At({"Root"}), VK_MULTIPLY);
    EXPECT_THAT(Taken("MetaNodes"),
                ElementsAre(testing::HasSubstr("Book"), testing::HasSubstr("Person")));
}

}  // namespace
}  // namespace support
