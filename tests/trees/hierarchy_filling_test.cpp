#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HierarchyFilling : public HierarchyTest {
protected:
    HierarchyFilling() {
        tree.Call("AddRootNode", trees);
        Take();
    }
    void OpenRoot() const { Window().Open({"On Trees"}); }
};

TEST_F(HierarchyFilling, ShowsTheTargetsOfAllLinks) {
    OpenRoot();
    EXPECT_THAT(Window().All(),
                ElementsAre("On Trees", ".On Graphs", "..Loading", ".On Lists", "..Loading"));
    EXPECT_TRUE(Window().IsOpen(Window().At({"On Trees"})));
    EXPECT_THAT(Take(),
                ElementsAre("NodeExpand(HTNodeInfo ID:1)", "b1.parent", "Book.Outgoing",
                            "cites.name", "b1.Outgoing_(\"cites\")", "c1.Target",
                            "AddingNode(HTNewNodeInfo)", "c2.Target", "AddingNode(HTNewNodeInfo)",
                            "printed.name", "b1.Outgoing_(\"printed\")"));
    EXPECT_EQ(InfoOf(first).Get("repObject").Object().Get(), graphs);
    EXPECT_EQ(InfoOf(first).Get("key").value, Value("ID:3"));
    EXPECT_EQ(InfoOf(second).Get("key").value, Value("ID:5"));
    EXPECT_EQ(InfoOf(first).Get("NodeType").value, Value(3));
}

TEST_F(HierarchyFilling, GroupsTheLinksUnderFolders) {
    tree.Put("withFolders", true);
    Texts proposals;
    events.On("AddingNode").Run([&](const Arguments& arguments) {
        const LateBound nni(arguments.Object(0).Get());
        proposals.push_back(
            Describe(nni.Get("NodeType").value) + ' ' + Describe(nni.Get("Allowed").value) + ' ' +
            Describe(nni.Get("Caption").value) + ' ' + Describe(nni.Get("Image").value) + ' ' +
            Describe(nni.Get("repObject").value) + ' ' + Describe(nni.Get("repLink").value));
        Allow(arguments);
    });
    OpenRoot();
    EXPECT_THAT(proposals, ElementsAre("2 True \"cites\" \"__Folder\" cites Nothing",
                                       "3 False \"\" \"\" b2 c1", "3 False \"\" \"\" b3 c2",
                                       "2 True \"printed\" \"__Folder\" printed Nothing"));
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".cites", "..On Graphs", "...Loading",
                                            "..On Lists", "...Loading", ".printed"))
        << "a folder for a meta link without links, too";
    EXPECT_EQ(Window().Image(Window().At({"On Trees", "cites"})), 1);
    EXPECT_THAT(
        Take(),
        ElementsAre("NodeExpand(HTNodeInfo ID:1)", "b1.parent", "Book.Outgoing", "cites.name",
                    "AddingNode(HTNewNodeInfo)", "cites.name", "b1.Outgoing_(\"cites\")",
                    "c1.Target", "AddingNode(HTNewNodeInfo)", "c2.Target",
                    "AddingNode(HTNewNodeInfo)", "printed.name", "AddingNode(HTNewNodeInfo)",
                    "printed.name", "b1.Outgoing_(\"printed\")"));
    EXPECT_EQ(Info("ID:3").Get("NodeType").value, Value(2));
    EXPECT_EQ(Info("ID:3").Get("repObject").Object().Get(), cites);
    EXPECT_EQ(Info("ID:3").Get("repLink").value, Nothing());
}

TEST_F(HierarchyFilling, AFolderOpensWithoutBeingFilled) {
    tree.Put("withFolders", true);
    OpenRoot();
    Take();
    Window().Open({"On Trees", "cites"});
    EXPECT_TRUE(Window().IsOpen(Window().At({"On Trees", "cites"})));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyFilling, ARefusedFolderMakesItsLinksFail) {
    tree.Put("withFolders", true);
    events.On("AddingNode").Run([this](const Arguments& arguments) {
        Allow(arguments);
        const LateBound nni(arguments.Object(0).Get());
        if (nni.Get("NodeType").value.Number() == 2) nni.Put("Allowed", false);
    });
    const Outcome failed = tree.Call("Expand", trees);
    EXPECT_EQ(failed.AutomationNumber(), 91);
    EXPECT_EQ(events.Count("AddingNode"), 2u) << "the link's node was proposed";
    EXPECT_THAT(Window().All(), ElementsAre("On Trees"));
}

TEST_F(HierarchyFilling, ARefusedFolderWithoutLinksHarmsNothing) {
    tree.Put("withFolders", true);
    events.On("AddingNode").Run([this](const Arguments& arguments) {
        Allow(arguments);
        const LateBound nni(arguments.Object(0).Get());
        if (nni.Get("repObject").Object().Get() == printed) nni.Put("Allowed", false);
    });
    EXPECT_TRUE(tree.Call("Expand", trees));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("cites"));
}

TEST_F(HierarchyFilling, HappensOnce) {
    OpenRoot();
    Window().Close(Window().At({"On Trees"}));
    Take();
    model.Link(cites, trees, model.Node(book, "b4", "On Sets"), "c3");
    OpenRoot();
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyFilling, OfANodeWithoutLinksLeavesALeaf) {
    OpenRoot();
    Take();
    Window().Open({"On Trees", "On Graphs"});
    EXPECT_THAT(Taken("NodeExpand"), ElementsAre("NodeExpand(HTNodeInfo ID:3)"));
    EXPECT_THAT(Window().Below(Window().At({"On Trees", "On Graphs"})), IsEmpty());
    EXPECT_FALSE(Window().HasButton(Window().At({"On Trees", "On Graphs"})));
}

TEST_F(HierarchyFilling, GoesInCirclesAsDeepAsItIsOpened) {
    model.Link(cites, graphs, trees, "c3");
    Texts path = {"On Trees"};
    for (const char* next : {"On Graphs", "On Trees", "On Graphs", "On Trees"}) {
        Window().Open(path);
        path.emplace_back(next);
    }
    EXPECT_NE(Window().At(path), nullptr);
    Window().Press(Window().At({"On Trees"}), VK_MULTIPLY);
    EXPECT_NE(Window().At(path), nullptr) << "and the star ends";
}

TEST_F(HierarchyFilling, AHostThatRefusesEverythingGetsAnEmptyLevel) {
    events.Calm();
    OpenRoot();
    EXPECT_THAT(Window().All(), ElementsAre("On Trees"));
    EXPECT_EQ(events.Count("AddingNode"), 2u);
}

TEST_F(HierarchyFilling, ClosingRaisesNodeCollapse) {
    OpenRoot();
    Take();
    Window().Close(Window().At({"On Trees"}));
    EXPECT_THAT(Take(), ElementsAre("NodeCollapse(HTNodeInfo ID:1)"));
    Window().Close(Window().At({"On Trees"}));
    EXPECT_THAT(Take(), IsEmpty()) << "it was closed already";
}

TEST_F(HierarchyFilling, StopsWhereTheNodeStandsForNothing) {
    tree.Call("Destroy");
    OpenRoot();
    EXPECT_THAT(Window().All(), ElementsAre("On Trees"));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyFilling, ExpandSelectsTheNodeOfAnObjectAndOpensIt) {
    EXPECT_EQ(tree.Call("Expand", trees).value, Empty());
    EXPECT_EQ(Window().SelectedText(), "On Trees");
    EXPECT_TRUE(Window().IsOpen(Window().At({"On Trees"})));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
    EXPECT_EQ(events.Count("NodeExpand"), 1u);
    tree.Call("Expand", trees);
    EXPECT_EQ(events.Count("NodeExpand"), 1u);
}

TEST_F(HierarchyFilling, ExpandOfAnUnknownObjectOpensTheNodeThatWasSelected) {
    EXPECT_TRUE(tree.Call("Expand", knuth)) << "nothing is selected";
    EXPECT_FALSE(Window().IsOpen(Window().At({"On Trees"})));
    Window().Select(Window().At({"On Trees"}));
    EXPECT_TRUE(tree.Call("Expand", knuth));
    EXPECT_TRUE(Window().IsOpen(Window().At({"On Trees"})));
    EXPECT_EQ(Window().SelectedText(), "On Trees");
}

TEST_F(HierarchyFilling, ExpandOfALinkOpensTheNodeThatItLedTo) {
    OpenRoot();
    tree.Call("Expand", second);
    EXPECT_EQ(Window().SelectedText(), "On Lists");
    EXPECT_THAT(Taken("NodeExpand"),
                ElementsAre("NodeExpand(HTNodeInfo ID:1)", "NodeExpand(HTNodeInfo ID:5)"));
}

TEST_F(HierarchyFilling, ErrorsOfTheRepositoryReachWhoeverExpands) {
    second->On("Target").Fail(
        Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing", "Some.Repository"));
    const Outcome failed = tree.Call("Expand", trees);
    EXPECT_EQ(failed.AutomationNumber(), 1004);
    EXPECT_EQ(failed.description, "no such thing");
    EXPECT_EQ(failed.source, "Some.Repository");
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".On Graphs", "..Loading"))
        << "what was made before is shown";
    second->Calm();
    Take();
    EXPECT_TRUE(tree.Call("Expand", trees));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs"));
    EXPECT_THAT(Take(), IsEmpty()) << "the level is not filled again";
}

TEST_F(HierarchyFilling, FoldersAreForNodesThatAreFilledFromThenOn) {
    OpenRoot();
    tree.Put("withFolders", true);
    Window().Open({"On Trees", "On Graphs"});
    EXPECT_THAT(Window().Below(Window().At({"On Trees", "On Graphs"})),
                ElementsAre("cites", "printed"));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs", "On Lists"));
}

}  // namespace
}  // namespace support
