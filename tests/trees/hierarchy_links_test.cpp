#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HierarchyLinks : public HierarchyTest {
protected:
    HierarchyLinks() {
        tree.Call("AddRootNode", trees);
        Take();
    }
    void OpenRoot() {
        Window().Open({"On Trees"});
        Take();
    }
    FakeNode* sets = model.Node(book, "b4", "On Sets");
    FakeLink* added = model.Link(cites, trees, sets, "c3");
};

TEST_F(HierarchyLinks, AddNodeAddsTheTargetOfANewLink) {
    model.Remove(added);
    OpenRoot();
    FakeLink* const fresh = model.Link(cites, trees, sets, "c4");
    EXPECT_EQ(tree.Call("AddNode", Info("ID:1").Get(), fresh).value, Empty());
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})),
                ElementsAre("On Graphs", "On Lists", "On Sets"));
    EXPECT_THAT(Take(), ElementsAre("c4.Target", "AddingNode(HTNewNodeInfo)"));
    EXPECT_EQ(InfoOf(fresh).Get("repObject").Object().Get(), sets);
}

TEST_F(HierarchyLinks, AddNodeLeavesAnUnfilledParentAlone) {
    EXPECT_TRUE(tree.Call("AddNode", Info("ID:1").Get(), added));
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading"));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyLinks, AddNodeWithoutAParentOrWithOneThatIsGoneDoesNothing) {
    OpenRoot();
    EXPECT_TRUE(tree.Call("AddNode", Nothing(), added));
    const LateBound gone = Info("ID:1");
    tree.Call("Clear");
    EXPECT_TRUE(tree.Call("AddNode", gone.Get(), added));
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_THAT(Take(), IsEmpty());
    EXPECT_FALSE(tree.Call("AddNode", trees, added).Ok()) << "no record of a node";
}

TEST_F(HierarchyLinks, AddNodeFindsTheFolderOfTheMetaLink) {
    tree.Put("withFolders", true);
    OpenRoot();
    FakeLink* const fresh = model.Link(printed, trees, knuth, "p9");
    EXPECT_TRUE(tree.Call("AddNode", Info("ID:1").Get(), fresh));
    EXPECT_THAT(Take(),
                ElementsAre("p9.parent", "printed.name", "p9.Target", "AddingNode(HTNewNodeInfo)"));
    EXPECT_THAT(Window().Below(Window().At({"On Trees", "printed"})), ElementsAre("Knuth"));
}

TEST_F(HierarchyLinks, AddNodeTakesTheFirstFolderOfThatName) {
    tree.Put("withFolders", true);
    events.On("AddingNode").Run([this](const Arguments& arguments) {
        Allow(arguments);
        const LateBound nni(arguments.Object(0).Get());
        if (nni.Get("NodeType").value.Number() == 2) nni.Put("Caption", "cites");
    });
    OpenRoot();
    model.Remove(added);
    FakeLink* const fresh = model.Link(cites, trees, knuth, "c9");
    EXPECT_TRUE(tree.Call("AddNode", Info("ID:1").Get(), fresh));
    EXPECT_THAT(Window().Below(Window().At({"On Trees", "cites"})),
                ElementsAre("On Graphs", "On Lists", "On Sets", "Knuth"));
}

TEST_F(HierarchyLinks, AddNodeKnowsTheCaseOfAFoldersText) {
    tree.Put("withFolders", true);
    events.On("AddingNode").Run([this](const Arguments& arguments) {
        Allow(arguments);
        const LateBound nni(arguments.Object(0).Get());
        if (nni.Get("repObject").Object().Get() == cites) nni.Put("Caption", "Cites");
    });
    OpenRoot();
    FakeLink* const fresh = model.Link(cites, trees, knuth, "c9");
    const auto before = Window().All();
    EXPECT_TRUE(tree.Call("AddNode", Info("ID:1").Get(), fresh));
    EXPECT_EQ(Window().All(), before);
    EXPECT_THAT(Take(), ElementsAre("c9.parent", "cites.name"));
}

TEST_F(HierarchyLinks, AddNodeGoesByTheKeyInTheRecord) {
    OpenRoot();
    const LateBound info = Info(KeyOf(second));
    ASSERT_TRUE(info.Put("key", "ID:1"));
    EXPECT_TRUE(tree.Call("AddNode", info.Get(), third));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})),
                ElementsAre("On Graphs", "On Lists", "On Sets", "On Trees"));
    Take();
    for (const char* none : {"ID:99", "", "Root"}) {
        info.Put("key", none);
        EXPECT_TRUE(tree.Call("AddNode", info.Get(), third)) << none;
    }
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyLinks, AddNodeWithoutAMatchingFolderAddsNothing) {
    OpenRoot();
    tree.Put("withFolders", true);
    EXPECT_TRUE(tree.Call("AddNode", Info("ID:1").Get(), added));
    EXPECT_THAT(Take(), ElementsAre("c3.parent", "cites.name"));
    tree.Put("withFolders", false);
    tree.Call("AddRootNode", graphs);
    tree.Put("withFolders", true);
    Take();
    EXPECT_TRUE(tree.Call("AddNode", InfoOf(graphs).Get(), added));
    EXPECT_THAT(Window().Below(Window().At({"On Graphs"})), IsEmpty()) << "a leaf has no folder";
}

TEST_F(HierarchyLinks, AddSubNodeToCurrentAddsBelowTheSelectedNode) {
    OpenRoot();
    Window().Select(nullptr);
    EXPECT_TRUE(tree.Call("AddSubNodeToCurrent", sets, added)) << "nothing is selected";
    EXPECT_EQ(events.Count("AddingNode"), 0u);
    Window().Select(Window().At({"On Trees"}));
    EXPECT_EQ(tree.Call("AddSubNodeToCurrent", knuth, added).value, Empty());
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})),
                ElementsAre("On Graphs", "On Lists", "On Sets", "Knuth"));
    EXPECT_THAT(Take(), ElementsAre("AddingNode(HTNewNodeInfo)"));
}

TEST_F(HierarchyLinks, AddSubNodeToCurrentLeavesAnUnfilledNodeAlone) {
    Window().Select(Window().At({"On Trees"}));
    EXPECT_TRUE(tree.Call("AddSubNodeToCurrent", sets, added));
    EXPECT_THAT(Take(), IsEmpty());
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading"));
}

TEST_F(HierarchyLinks, AddSubNodeToCurrentAddsBelowALeaf) {
    tree.Call("AddRootNode", graphs);
    Window().Select(Window().At({"On Graphs"}));
    EXPECT_TRUE(tree.Call("AddSubNodeToCurrent", sets, added));
    EXPECT_THAT(Window().Below(Window().At({"On Graphs"})), ElementsAre("On Sets"));
}

TEST_F(HierarchyLinks, RemoveLinkRemovesTheNodeFromTheLeavesUp) {
    model.Link(cites, graphs, lists, "d1");
    model.Link(cites, graphs, sets, "d2");
    OpenRoot();
    Window().Open({"On Trees", "On Graphs"});
    const std::string key = KeyOf(first);
    Texts removed;
    events.On("NodeRemoved").Run([&](const Arguments& arguments) {
        const LateBound info(arguments.Object(0).Get());
        removed.push_back(Describe(info.Get("repLink").value));
        EXPECT_EQ(Info(info.Get("key").value.Text()).Get(), info.Get()) << "it still is there";
    });
    EXPECT_EQ(tree.Call("RemoveLink", first).value, Empty());
    EXPECT_THAT(removed, ElementsAre("d1", "d2", "c1"));
    EXPECT_EQ(events.Count("NodeRemoved"), 3u) << "placeholders go silently";
    EXPECT_EQ(Info(key).Get(), nullptr);
    EXPECT_THAT(Window().All(),
                ElementsAre("On Trees", ".On Lists", "..Loading", ".On Sets", "..Loading"));
    EXPECT_EQ(InfoOf(first).Get(), nullptr);
}

TEST_F(HierarchyLinks, RemoveLinkOfAnUnknownLinkDoesNothing) {
    OpenRoot();
    const auto before = Window().All();
    for (const Value& link : {Value(third), Nothing(), Value(trees), Value(graphs)}) {
        EXPECT_TRUE(tree.Call("RemoveLink", link));
    }
    EXPECT_EQ(Window().All(), before);
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyLinks, RemoveLinkTakesTheFirstNodeThatTheLinkLedTo) {
    model.Link(cites, lists, graphs, "d1");
    OpenRoot();
    tree.Call("AddSubNode", graphs, "ID:1", first);
    tree.Call("RemoveLink", first);
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})),
                ElementsAre("On Lists", "On Sets", "On Graphs"));
    tree.Call("RemoveLink", first);
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Lists", "On Sets"));
}

TEST_F(HierarchyLinks, RemoveLinkAfterClearDoesNothing) {
    OpenRoot();
    tree.Call("Clear");
    EXPECT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyLinks, RemovingTheLastChildTakesTheButtonAway) {
    OpenRoot();
    for (FakeLink* link : {first, second, added}) tree.Call("RemoveLink", link);
    EXPECT_THAT(Window().All(), ElementsAre("On Trees"));
    EXPECT_FALSE(Window().HasButton(Window().At({"On Trees"})));
    tree.Call("AddNode", Info("ID:1").Get(), first);
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".On Graphs", "..Loading"));
    EXPECT_TRUE(Window().HasButton(Window().At({"On Trees"})));
}

TEST_F(HierarchyLinks, ANodeThatLostItsOnlyLinkCanBeOpenedWhenItGetsAnother) {
    tree.Call("AddRootNode", graphs);
    tree.Call("AddNode", InfoOf(graphs).Get(), first);
    tree.Call("RemoveLink", first);
    tree.Call("AddNode", InfoOf(graphs).Get(), second);
    EXPECT_TRUE(Window().HasButton(Window().At({"On Graphs"})));
    Window().Open({"On Graphs"});
    EXPECT_TRUE(Window().IsOpen(Window().At({"On Graphs"})));
}

}  // namespace
}  // namespace support
