#include "support/picture_files.h"
#include "support/temporary_folder.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HierarchyBuilding : public HierarchyTest {
protected:
    /// What was proposed, as text: type, allowed, caption, image, object, link.
    void NoteProposals(bool allow) {
        events.On("AddingNode").Run([this, allow](const Arguments& arguments) {
            const LateBound nni(arguments.Object(0).Get());
            std::string text;
            for (const char* member :
                 {"NodeType", "Allowed", "Caption", "Image", "repObject", "repLink"}) {
                text += (text.empty() ? "" : " ") + Describe(nni.Get(member).value);
            }
            proposals.push_back(text);
            if (allow) Allow(arguments);
        });
    }
    Texts proposals;
};

TEST_F(HierarchyBuilding, MembersStandInTheInterfacesOrder) {
    int id = 0;
    for (const char* member : {"Create",
                               "Init",
                               "Deinit",
                               "Destroy",
                               "Clear",
                               "AddIcon",
                               "GetIcon",
                               "withFolders",
                               "AddNodeInfo",
                               "AddRootNode",
                               "AddExtension",
                               "AddSubNode",
                               "AddSubNodeToCurrent",
                               "AddNode",
                               "Expand",
                               "GetNodeInfo",
                               "GetInfoFromObject",
                               "ParentNode",
                               "Update",
                               "Enabled",
                               "dragAllowed",
                               "dropAllowed",
                               "Checkboxes",
                               "LabelEdit",
                               "selection",
                               "SelectionInfo",
                               "GetCheckedItems",
                               "GetNonCheckedItems",
                               "CheckAll",
                               "UncheckAll",
                               "RemoveLink"}) {
        EXPECT_EQ(tree.Id(member), ++id) << member;
    }
}

TEST_F(HierarchyBuilding, OperationsWithoutAResultGiveEmpty) {
    for (const char* member :
         {"Init", "Deinit", "CheckAll", "UncheckAll", "Clear", "Destroy", "Init", "Deinit"}) {
        const Outcome outcome = tree.Call(member);
        EXPECT_TRUE(outcome) << member;
        EXPECT_EQ(outcome.value, Empty()) << member;
    }
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyBuilding, CreateRegistersTwoIcons) {
    EXPECT_TRUE(tree.Call("GetIcon", "__Dummy").Object());
    EXPECT_TRUE(tree.Call("GetIcon", "__Folder").Object());
    EXPECT_THAT(Window().All(), IsEmpty());
}

TEST_F(HierarchyBuilding, CreateTwiceFailsAtTheIconsEvenAfterDestroy) {
    EXPECT_EQ(tree.Call("Create").AutomationNumber(), 35602);
    tree.Call("Destroy");
    EXPECT_EQ(tree.Call("Create").AutomationNumber(), 35602);
}

TEST_F(HierarchyBuilding, AddIconReturnsARecordAndAddsThePicture) {
    const TemporaryFolder folder;
    WriteFile(folder / "red.bmp", BitmapFile(16, 16, 0xFF0000));
    const std::wstring file = folder.File(L"red.bmp");
    const LateBound icon(tree.Call("AddIcon", "red", file).value);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon.Get("name").value, Value("red"));
    EXPECT_EQ(icon.Get("Path").value, Value(file));
    const auto picture = Query<IPicture>(tree.Call("GetIcon", "red").Object().Get());
    EXPECT_TRUE(picture);
    EXPECT_EQ(tree.Call("AddIcon", "red", file).AutomationNumber(), 35602);
    EXPECT_EQ(tree.Call("AddIcon", "RED", file).AutomationNumber(), 457)
        << "the collection of icons knows no case";
    EXPECT_EQ(tree.Call("AddIcon", "x", folder.File(L"none.ico")).AutomationNumber(), 53);
}

TEST_F(HierarchyBuilding, AddIconNeedsCreate) {
    const TemporaryFolder folder;
    WriteFile(folder / "red.bmp", BitmapFile(16, 16, 0xFF0000));
    const LateBound fresh = CreateRegistered(L"HierarchyTreeView");
    EXPECT_EQ(fresh.Call("AddIcon", "red", folder.File(L"red.bmp")).AutomationNumber(), 91);
}

TEST_F(HierarchyBuilding, GetIconOfAnUnknownNameIsNothing) {
    for (const char* name : {"none", "", "__dummy"}) {
        const Outcome icon = tree.Call("GetIcon", name);
        EXPECT_TRUE(icon) << name;
        EXPECT_EQ(icon.value, Nothing()) << name;
    }
    EXPECT_EQ(CreateRegistered(L"HierarchyTreeView").Call("GetIcon", "__Dummy").value, Nothing());
}

TEST_F(HierarchyBuilding, ARootNodeIsProposedAndAddedWithAPlaceholderWhereItHasLinks) {
    NoteProposals(true);
    EXPECT_EQ(tree.Call("AddRootNode", trees).value, Empty());
    EXPECT_THAT(proposals, ElementsAre("1 False \"\" \"\" b1 Nothing"));
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading"));
    EXPECT_THAT(Take(),
                ElementsAre("AddingNode(HTNewNodeInfo)", "b1.parent", "Book.Outgoing", "cites.name",
                            "b1.Outgoing_(\"cites\")", "b1.Outgoing_(\"cites\").Count"));
    const LateBound info = Info("ID:1");
    EXPECT_EQ(info.Get("NodeType").value, Value(1));
    EXPECT_EQ(info.Get("key").value, Value("ID:1"));
    EXPECT_EQ(info.Get("repObject").Object().Get(), trees);
    EXPECT_EQ(info.Get("repLink").value, Nothing());
    EXPECT_EQ(LateBound(tree.Call("ParentNode", "ID:2").value).Get(), info.Get())
        << "the placeholder has a key";
}

TEST_F(HierarchyBuilding, ARootNodeWithoutLinksIsALeaf) {
    tree.Call("AddRootNode", graphs);
    EXPECT_THAT(Window().All(), ElementsAre("On Graphs"));
    EXPECT_FALSE(Window().HasButton(Window().At({"On Graphs"})));
    EXPECT_THAT(
        Take(),
        ElementsAre("AddingNode(HTNewNodeInfo)", "b2.parent", "Book.Outgoing", "cites.name",
                    "b2.Outgoing_(\"cites\")", "b2.Outgoing_(\"cites\").Count", "printed.name",
                    "b2.Outgoing_(\"printed\")", "b2.Outgoing_(\"printed\").Count"));
}

TEST_F(HierarchyBuilding, ARefusedRootNodeIsNotThere) {
    events.Calm();
    tree.Call("AddRootNode", trees);
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_EQ(Info("ID:1").Get(), nullptr);
    EXPECT_THAT(Take(), ElementsAre("AddingNode(HTNewNodeInfo)"));
    events.On("AddingNode").Run([this](const Arguments& arguments) { Allow(arguments); });
    tree.Call("AddRootNode", trees);
    EXPECT_TRUE(Info("ID:1")) << "no key was used up";
}

TEST_F(HierarchyBuilding, CaptionAndImageOfTheProposalAreTheNodes) {
    events.On("AddingNode").Run([](const Arguments& arguments) {
        const LateBound nni(arguments.Object(0).Get());
        nni.Put("Allowed", true);
        nni.Put("Caption", "Called otherwise");
        nni.Put("Image", "__Folder");
        nni.Put("NodeType", 7);
        nni.PutRef("repObject", Nothing());
    });
    tree.Call("AddRootNode", trees);
    const HTREEITEM root = Window().At({"Called otherwise"});
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(Window().Image(root), 1);
    EXPECT_EQ(Window().Image(Window().At({"Called otherwise", "Loading"})), 0);
    EXPECT_EQ(Window().SelectedImage(Window().At({"Called otherwise", "Loading"})), 0);
    EXPECT_EQ(Info("ID:1").Get("NodeType").value, Value(7));
    EXPECT_EQ(Info("ID:1").Get("repObject").Object().Get(), trees)
        << "the object is the one that was given";
}

TEST_F(HierarchyBuilding, ARootMayStandBelowAnotherNodeByKeyOrRecord) {
    tree.Call("AddRootNode", knuth);
    tree.Call("AddRootNode", graphs, "ID:1");
    tree.Call("AddRootNode", lists, Info("ID:1").Get());
    tree.Call("AddRootNode", trees, Nothing());
    EXPECT_THAT(Window().All(), ElementsAre("Knuth", ".Loading", ".On Graphs", ".On Lists",
                                            "On Trees", ".Loading"));
}

TEST_F(HierarchyBuilding, BelowAKeyThatIsNotThereFailsAfterTheProposal) {
    const Outcome failed = tree.Call("AddRootNode", graphs, "ID:99");
    EXPECT_EQ(failed.AutomationNumber(), 35601);
    EXPECT_EQ(failed.source, "OrvaneControls.HierarchyTreeView");
    EXPECT_EQ(events.Count("AddingNode"), 1u);
    EXPECT_EQ(tree.Call("AddRootNode", graphs, 5.5).AutomationNumber(), 35601);
    EXPECT_EQ(tree.Call("AddRootNode", graphs, Null()).AutomationNumber(), 94);
    EXPECT_EQ(tree.Call("AddRootNode", graphs, trees).AutomationNumber(), 13);
}

TEST_F(HierarchyBuilding, AnExtensionIsAddedAtTheTopWithoutFolders) {
    NoteProposals(true);
    EXPECT_EQ(tree.Call("AddExtension", book).value, Empty());
    EXPECT_THAT(proposals,
                ElementsAre("1 False \"\" \"\" b1 Nothing", "1 False \"\" \"\" b2 Nothing",
                            "1 False \"\" \"\" b3 Nothing"));
    EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading", "On Graphs", "On Lists"));
    EXPECT_EQ(Take().front(), "Book.Extension");
}

TEST_F(HierarchyBuilding, AnExtensionIsAddedBelowAFolderWithFolders) {
    NoteProposals(true);
    tree.Put("withFolders", true);
    tree.Call("AddExtension", book);
    EXPECT_THAT(
        proposals,
        ElementsAre("0 True \"Book\" \"__Folder\" Book Nothing", "1 False \"\" \"\" b1 Nothing",
                    "1 False \"\" \"\" b2 Nothing", "1 False \"\" \"\" b3 Nothing"));
    EXPECT_THAT(Window().All(),
                ElementsAre("Book", ".On Trees", "..Loading", ".On Graphs", ".On Lists"));
    EXPECT_EQ(Window().Image(Window().At({"Book"})), 1);
    EXPECT_EQ(Info("ID:1").Get("NodeType").value, Value(0));
    EXPECT_EQ(Info("ID:1").Get("repObject").Object().Get(), book);
    EXPECT_EQ(Info("ID:1").Get("repLink").value, Nothing());
    const auto calls = Take();
    EXPECT_EQ(calls[0], "Book.name");
    EXPECT_EQ(calls[1], "AddingNode(HTNewNodeInfo)");
    EXPECT_EQ(calls[2], "Book.Extension");
}

TEST_F(HierarchyBuilding, AHostThatDoesNotListenGetsFoldersOnly) {
    events.Calm();
    tree.Put("withFolders", true);
    tree.Call("AddExtension", book);
    EXPECT_THAT(Window().All(), ElementsAre("Book"));
    tree.Put("withFolders", false);
    tree.Call("AddExtension", book);
    EXPECT_THAT(Window().All(), ElementsAre("Book"));
}

TEST_F(HierarchyBuilding, ARefusedFolderOfAMetaNodeKeepsItsInstancesAway) {
    tree.Put("withFolders", true);
    events.On("AddingNode").Run([](const Arguments& arguments) {
        LateBound(arguments.Object(0).Get()).Put("Allowed", false);
    });
    EXPECT_TRUE(tree.Call("AddExtension", book));
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_EQ(events.Count("AddingNode"), 1u);
}

TEST_F(HierarchyBuilding, ASubNodeStandsBelowItsParentAndCanBeOpened) {
    NoteProposals(true);
    tree.Call("AddRootNode", graphs);
    Take();
    EXPECT_EQ(tree.Call("AddSubNode", lists, "ID:1", first).value, Empty());
    EXPECT_THAT(Take(), ElementsAre("AddingNode(HTNewNodeInfo)")) << "its links are not asked for";
    EXPECT_EQ(proposals.back(), "3 False \"\" \"\" b3 c1");
    EXPECT_THAT(Window().All(), ElementsAre("On Graphs", ".On Lists", "..Loading"));
    EXPECT_EQ(Info("ID:2").Get("NodeType").value, Value(3));
    EXPECT_EQ(Info("ID:2").Get("repLink").Object().Get(), first);
    tree.Call("AddSubNode", trees, Info("ID:2").Get(), second);
    EXPECT_THAT(Window().All(),
                ElementsAre("On Graphs", ".On Lists", "..Loading", "..On Trees", "...Loading"));
}

TEST_F(HierarchyBuilding, ASubNodeNeedsAParent) {
    for (const Value& none : {Nothing(), Empty()}) {
        EXPECT_EQ(tree.Call("AddSubNode", lists, none, first).AutomationNumber(), 91);
    }
    EXPECT_EQ(events.Count("AddingNode"), 2u) << "the host is asked before";
    events.Calm();
    EXPECT_TRUE(tree.Call("AddSubNode", lists, Nothing(), first)) << "a refused node needs none";
    EXPECT_TRUE(tree.Call("AddSubNode", lists, "ID:77", first)) << "not even one that is there";
    EXPECT_THAT(Window().All(), IsEmpty());
}

TEST_F(HierarchyBuilding, AddNodeInfoProposesAndMakesARecordOnly) {
    const LateBound nni = CreateRegistered(L"HTNewNodeInfo");
    nni.Put("NodeType", 2);
    const LateBound info(tree.Call("AddNodeInfo", trees, nni.Get(), first).value);
    ASSERT_TRUE(info);
    EXPECT_EQ(nni.Get("repObject").Object().Get(), trees);
    EXPECT_EQ(nni.Get("repLink").Object().Get(), first);
    EXPECT_EQ(info.Get("key").value, Value("ID:1"));
    EXPECT_EQ(info.Get("NodeType").value, Value(2));
    EXPECT_EQ(info.Get("repObject").Object().Get(), trees);
    EXPECT_EQ(info.Get("repLink").Object().Get(), first);
    EXPECT_EQ(Info("ID:1").Get(), info.Get());
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_EQ(tree.Call("ParentNode", "ID:1").AutomationNumber(), 35601) << "there is no node";
    EXPECT_THAT(Take(), ElementsAre("AddingNode(HTNewNodeInfo)"));
}

TEST_F(HierarchyBuilding, AddNodeInfoNeedsNoLink) {
    const LateBound nni = CreateRegistered(L"HTNewNodeInfo");
    EXPECT_TRUE(tree.Call("AddNodeInfo", trees, nni.Get()).Object());
    EXPECT_EQ(nni.Get("repLink").value, Nothing());
    events.Calm();
    nni.Put("Allowed", false);
    const Outcome refused = tree.Call("AddNodeInfo", trees, nni.Get());
    EXPECT_TRUE(refused);
    EXPECT_EQ(refused.value, Nothing());
    EXPECT_EQ(tree.Call("AddNodeInfo", trees, Nothing()).AutomationNumber(), 91);
}

TEST_F(HierarchyBuilding, NeedsCreate) {
    const LateBound fresh = CreateRegistered(L"HierarchyTreeView");
    EventRecorder listener(fresh.Get());
    listener.On("AddingNode").Run([this](const Arguments& arguments) { Allow(arguments); });
    EXPECT_EQ(fresh.Call("AddRootNode", graphs).AutomationNumber(), 91);
    EXPECT_EQ(fresh.Call("GetInfoFromObject", graphs).AutomationNumber(), 91);
    EXPECT_EQ(fresh.PutRef("selection", graphs).AutomationNumber(), 91);
    EXPECT_EQ(fresh.Call("RemoveLink", first).AutomationNumber(), 91);
    EXPECT_EQ(fresh.Call("GetNodeInfo", "ID:1").value, Nothing());
}

TEST_F(HierarchyBuilding, ClearKeepsRecordsAndGoesOnCounting) {
    tree.Call("AddRootNode", graphs);
    EXPECT_TRUE(tree.Call("Clear"));
    EXPECT_THAT(Window().All(), IsEmpty());
    EXPECT_TRUE(Info("ID:1"));
    EXPECT_EQ(tree.Call("ParentNode", "ID:1").AutomationNumber(), 35601);
    tree.Call("AddRootNode", lists);
    EXPECT_EQ(KeyOf(lists), "ID:2");
    EXPECT_THAT(Window().All(), ElementsAre("On Lists"));
}

TEST_F(HierarchyBuilding, DestroyLetsGoOfTheRecordsAndLeavesTheNodes) {
    tree.Call("AddRootNode", graphs);
    EXPECT_TRUE(tree.Call("Destroy"));
    EXPECT_THAT(Window().All(), ElementsAre("On Graphs"));
    EXPECT_EQ(tree.Call("GetNodeInfo", "ID:1").value, Nothing());
    EXPECT_TRUE(tree.Call("GetIcon", "__Dummy").Object()) << "the images stay";
    EXPECT_EQ(tree.Call("AddRootNode", lists).AutomationNumber(), 91);
}

TEST_F(HierarchyBuilding, AnUnknownImageIsAnError) {
    events.On("AddingNode").Run([](const Arguments& arguments) {
        const LateBound nni(arguments.Object(0).Get());
        nni.Put("Allowed", true);
        nni.Put("Image", "no such image");
    });
    EXPECT_EQ(tree.Call("AddRootNode", graphs).AutomationNumber(), 35601);
    EXPECT_THAT(Window().All(), IsEmpty());
}

}  // namespace
}  // namespace support
