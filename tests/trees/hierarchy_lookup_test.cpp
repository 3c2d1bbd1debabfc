#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HierarchyLookup : public HierarchyTest {
protected:
    HierarchyLookup() {
        tree.Call("AddRootNode", trees);
        Window().Open({"On Trees"});
        Take();
    }
};

TEST_F(HierarchyLookup, GetNodeInfoFindsAKeyWhateverItsCase) {
    EXPECT_EQ(Info("ID:3").Get("repObject").Object().Get(), graphs);
    EXPECT_EQ(Info("id:3").Get(), Info("ID:3").Get());
    for (const char* key : {"ID:2", "ID:4", "ID:99", "", "Root", "ID:03"}) {
        const Outcome none = tree.Call("GetNodeInfo", key);
        EXPECT_TRUE(none) << key;
        EXPECT_EQ(none.value, Nothing()) << key;
    }
}

TEST_F(HierarchyLookup, GetInfoFromObjectFindsByObjectAndByLink) {
    EXPECT_EQ(KeyOf(trees), "ID:1");
    EXPECT_EQ(KeyOf(graphs), "ID:3");
    EXPECT_EQ(KeyOf(first), "ID:3");
    EXPECT_EQ(KeyOf(second), "ID:5");
    EXPECT_EQ(InfoOf(knuth).Get(), nullptr);
    EXPECT_EQ(tree.Call("GetInfoFromObject", Nothing()).value, Nothing());
    EXPECT_THAT(Take(), IsEmpty()) << "nobody is called";
}

TEST_F(HierarchyLookup, GetInfoFromObjectGivesTheFirstOfSeveral) {
    tree.Call("AddRootNode", graphs);
    EXPECT_EQ(KeyOf(graphs), "ID:3");
    // A record that shows a link as an object comes before or after the one it led to.
    tree.Call("AddSubNode", first, "ID:1", Nothing());
    EXPECT_EQ(KeyOf(first), "ID:3");
    tree.Call("RemoveLink", first);
    EXPECT_EQ(KeyOf(graphs), "ID:7");
    EXPECT_EQ(KeyOf(first), "ID:8");
}

TEST_F(HierarchyLookup, FollowsWhatIsWrittenIntoARecord) {
    const LateBound info = Info("ID:5");
    info.PutRef("repObject", knuth);
    EXPECT_EQ(KeyOf(knuth), "ID:5");
    EXPECT_EQ(InfoOf(lists).Get(), nullptr);
    info.PutRef("repObject", graphs);
    EXPECT_EQ(KeyOf(graphs), "ID:3") << "the record that was made first";
    Info("ID:1").PutRef("repLink", second);
    EXPECT_EQ(KeyOf(second), "ID:1");
    Info("ID:1").PutRef("repLink", Nothing());
    EXPECT_EQ(KeyOf(second), "ID:5");
}

TEST_F(HierarchyLookup, OfARecordThatIsGoneFollowsNothing) {
    const LateBound info = Info("ID:3");
    tree.Call("RemoveLink", first);
    info.PutRef("repObject", knuth);
    EXPECT_EQ(InfoOf(knuth).Get(), nullptr);
    const LateBound kept = Info("ID:5");
    tree.Call("Destroy");
    kept.PutRef("repObject", knuth);
    EXPECT_EQ(kept.Get("repObject").Object().Get(), knuth);
}

TEST_F(HierarchyLookup, ParentNodeGivesTheRecordOfTheParent) {
    EXPECT_EQ(LateBound(tree.Call("ParentNode", "ID:3").value).Get(), Info("ID:1").Get());
    EXPECT_EQ(LateBound(tree.Call("ParentNode", "ID:4").value).Get(), Info("ID:3").Get());
    const Outcome top = tree.Call("ParentNode", "ID:1");
    EXPECT_TRUE(top);
    EXPECT_EQ(top.value, Nothing());
    for (const char* key : {"ID:2", "ID:99", "", "id:3"}) {
        EXPECT_EQ(tree.Call("ParentNode", key).AutomationNumber(), 35601) << key;
    }
}

TEST_F(HierarchyLookup, UpdateGivesANodeAnotherTextAndIcon) {
    EXPECT_EQ(tree.Call("Update", Info("ID:3").Get(), "Networks", "__Folder").value, Empty());
    const HTREEITEM node = Window().At({"On Trees", "Networks"});
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(Window().Image(node), 1);
    EXPECT_EQ(Window().SelectedImage(node), 1);
    tree.Call("Update", Info("ID:3").Get(), "Graphs", "");
    EXPECT_EQ(Window().Text(node), "Graphs");
    EXPECT_EQ(Window().Image(node), 1) << "an empty image changes none";
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyLookup, UpdateFailsForANodeThatIsGone) {
    EXPECT_TRUE(tree.Call("Update", Nothing(), "text", ""));
    const LateBound info = Info("ID:3");
    tree.Call("RemoveLink", first);
    EXPECT_EQ(tree.Call("Update", info.Get(), "text", "").AutomationNumber(), 35601);
    EXPECT_EQ(tree.Call("Update", Info("ID:5").Get(), "text", "none").AutomationNumber(), 35601);
    EXPECT_THAT(Window().All(), testing::Contains(testing::HasSubstr("text")));
    Info("ID:5").Put("key", "ID:77");
    EXPECT_EQ(tree.Call("Update", Info("ID:5").Get(), "text", "").AutomationNumber(), 35601);
}

TEST_F(HierarchyLookup, SelectionIsTheObjectOfTheSelectedNode) {
    Window().Select(nullptr);
    EXPECT_EQ(tree.Get("selection").value, Nothing());
    EXPECT_EQ(tree.Get("SelectionInfo").value, Nothing());
    Window().Select(Window().At({"On Trees", "On Lists"}));
    EXPECT_EQ(tree.Get("selection").Object().Get(), lists);
    EXPECT_EQ(tree.Get("SelectionInfo").value, Value(Info("ID:5").Get()));
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyLookup, SettingTheSelectionSelectsTheNodeOfAnObjectOrALink) {
    EXPECT_TRUE(tree.PutRef("selection", lists));
    EXPECT_EQ(Window().SelectedText(), "On Lists");
    EXPECT_TRUE(tree.Put("selection", first));
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
    EXPECT_TRUE(tree.PutRef("selection", trees));
    EXPECT_EQ(Window().SelectedText(), "On Trees");
    for (const Value& other : {Value(knuth), Nothing()}) {
        EXPECT_TRUE(tree.PutRef("selection", other));
        EXPECT_EQ(Window().SelectedText(), "On Trees");
    }
    EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(HierarchyLookup, SettingTheSelectionPrefersObjectsToLinks) {
    tree.Call("AddSubNode", first, "ID:1", third);
    events.Calm();
    EXPECT_TRUE(tree.PutRef("selection", first));
    EXPECT_EQ(tree.Get("SelectionInfo").value, Value(Info("ID:7").Get()))
        << "the later record that shows it, not the earlier that it led to";
}

TEST_F(HierarchyLookup, SettingTheSelectionGoesByTheKeyInTheRecord) {
    Info("ID:5").Put("key", "ID:3");
    tree.PutRef("selection", lists);
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
    for (const Value& none : {Value(""), NullText()}) {
        Info("ID:5").Put("key", none);
        EXPECT_EQ(Info("ID:5").Get("key").value, Value(""));
        EXPECT_TRUE(tree.PutRef("selection", lists));
        EXPECT_EQ(Window().SelectedText(), "On Graphs") << "no key, nothing selected";
    }
    Info("ID:5").Put("key", "ID:99");
    EXPECT_EQ(tree.PutRef("selection", lists).AutomationNumber(), 35601);
}

TEST_F(HierarchyLookup, SettingTheSelectionOpensTheNodesAbove) {
    Window().Close(Window().At({"On Trees"}));
    tree.PutRef("selection", lists);
    EXPECT_TRUE(Window().IsOpen(Window().At({"On Trees"})));
}

TEST_F(HierarchyLookup, SettingTheSelectionFillsTheNodesAbove) {
    tree.Call("AddRootNode", knuth);
    tree.Call("AddSubNode", graphs, KeyOf(knuth), third);
    tree.Call("AddSubNode", person, KeyOf(knuth), cites);
    model.Log().Clear();
    EXPECT_TRUE(tree.PutRef("selection", cites));
    EXPECT_EQ(events.Count("NodeExpand"), 1u) << "before the call returns";
    EXPECT_TRUE(Window().IsOpen(Window().At({"Knuth"})));
    EXPECT_EQ(tree.Get("selection").Object().Get(), person);
    EXPECT_EQ(Window().At({"Knuth", "Loading"}), nullptr);
}

TEST_F(HierarchyLookup, SettingTheSelectionPassesErrorsOfFillingOn) {
    tree.Call("AddRootNode", knuth);
    tree.Call("AddSubNode", person, KeyOf(knuth), cites);
    third->On("Target").Fail(Failure::Exception(E_FAIL, "gone"));
    const auto failed = tree.PutRef("selection", cites);
    EXPECT_FALSE(failed);
    EXPECT_EQ(failed.description, "gone");
}

}  // namespace
}  // namespace support
