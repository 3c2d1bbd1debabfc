#include <functional>

#include "lists/list_view_fixture.h"

namespace support {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// The members that answer with the objects of rows, and the check boxes.
class ListViewCollections : public ListViewTest {
protected:
    static constexpr const char* members[] = {"GetItems", "GetSelectedItems", "GetNonSelectedItems",
                                              "GetCheckedItems", "GetNonCheckedItems"};
    void Check(int row) const {
        const auto callback = FakeObject::Make("callback");
        callback->Function("ViewNode", [row](Arguments& arguments) -> Value {
            const LateBound item(arguments.Object(2));
            item.Put("Checked", item.Get("Index").value == Value(row + 1));
            return {};
        });
        list.PutRef("CallbackObject", callback);
        for (FakeNode* node : {trees, graphs, lists}) ASSERT_TRUE(list.Call("UpdateEntry", node));
        list.PutRef("CallbackObject", Nothing());
    }
};

TEST_F(ListViewCollections, AreNewCollectionsOfTheRowsObjects) {
    list.Call("SetList_Nodes", book, false);
    const Outcome items = list.Call("GetItems");
    ASSERT_TRUE(items);
    const LateBound collection(items.value);
    EXPECT_EQ(collection.Get("Count").value, Value(3));
    EXPECT_EQ(collection.Default(1).Object().Get(), trees);
    EXPECT_EQ(collection.Default("b2").Object().Get(), graphs) << "under the row's key";
    EXPECT_THAT(collection.Elements(), ElementsAre(Value(trees), Value(graphs), Value(lists)));
    EXPECT_TRUE(collection.Call("Add", 5));
    EXPECT_EQ(LateBound(list.Call("GetItems").value).Get("Count").value, Value(3));
}

TEST_F(ListViewCollections, AreEmptyForAnEmptyList) {
    for (const char* member : members) EXPECT_THAT(Objects(member), IsEmpty()) << member;
}

TEST_F(ListViewCollections, TellSelectedRowsFromOthers) {
    list.Call("SetList_Nodes", book, false);
    Select(0);
    Select(2);
    EXPECT_THAT(Objects("GetSelectedItems"), ElementsAre(Value(trees), Value(lists)));
    EXPECT_THAT(Objects("GetNonSelectedItems"), ElementsAre(Value(graphs)));
    list.Call("DeselectAll");
    EXPECT_THAT(Objects("GetSelectedItems"), IsEmpty());
    EXPECT_EQ(Objects("GetNonSelectedItems").size(), 3u);
}

TEST_F(ListViewCollections, TellCheckedRowsFromOthers) {
    list.Put("Checkboxes", true);
    AddColumns({"Name"});
    list.Call("SetList_Nodes", book, false);
    Check(1);
    EXPECT_THAT(Objects("GetCheckedItems"), ElementsAre(Value(graphs)));
    EXPECT_THAT(Objects("GetNonCheckedItems"), ElementsAre(Value(trees), Value(lists)));
    EXPECT_EQ(CheckBox(0), 1u);
    EXPECT_EQ(CheckBox(1), 2u);
}

TEST_F(ListViewCollections, CheckAllAndUncheckAllSetEveryRow) {
    list.Put("Checkboxes", true);
    list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(list.Call("CheckAll").value, Empty());
    for (int row = 0; row < 3; ++row) EXPECT_EQ(CheckBox(row), 2u);
    EXPECT_EQ(Objects("GetCheckedItems").size(), 3u);
    EXPECT_EQ(list.Call("UncheckAll").value, Empty());
    for (int row = 0; row < 3; ++row) EXPECT_EQ(CheckBox(row), 1u);
    EXPECT_THAT(Objects("GetCheckedItems"), IsEmpty());
}

TEST_F(ListViewCollections, ChecksAreKeptWhileTheBoxesAreHidden) {
    list.Call("SetList_Nodes", book, false);
    list.Call("CheckAll");
    EXPECT_EQ(CheckBox(0), 0u);
    EXPECT_EQ(Objects("GetCheckedItems").size(), 3u);
    list.Put("Checkboxes", true);
    EXPECT_EQ(CheckBox(0), 2u);
    list.Put("Checkboxes", false);
    EXPECT_EQ(Objects("GetCheckedItems").size(), 3u);
}

TEST_F(ListViewCollections, RowsAddedLaterAreNotChecked) {
    list.Call("SetList_Nodes", book, false);
    list.Call("CheckAll");
    list.Call("Refresh");
    EXPECT_THAT(Objects("GetCheckedItems"), IsEmpty());
}

TEST_F(ListViewCollections, LookObjectsUpInWhatTheListWasMadeOf) {
    struct Kind {
        std::function<Outcome()> make;
        std::vector<std::string> calls;
    };
    const Kind kinds[] = {
        {[this] { return list.Call("SetList_MetaNodes", model.Root(), false); },
         {"rep.MetaNodes(\"Book\")", "rep.MetaNodes(\"Person\")"}},
        {[this] { return list.Call("SetList_MetaLinks", model.Root(), false); },
         {"rep.MetaLinks(\"cites\")", "rep.MetaLinks(\"wrote\")"}},
        {[this] { return list.Call("SetList_Nodes", book, false); },
         {"Book.Extension(\"b1\")", "Book.Extension(\"b2\")", "Book.Extension(\"b3\")"}},
        {[this] { return list.Call("SetList_Links", cites, false); },
         {"cites.Extension(\"c1\")", "cites.Extension(\"c2\")"}},
        {[this] { return list.Call("SetList_Outgoing", trees, cites, false); },
         {"cites.name", "b1.Outgoing_(\"cites\")", "b1.Outgoing_(\"cites\").Item(\"c1\")",
          "cites.name", "b1.Outgoing_(\"cites\")", "b1.Outgoing_(\"cites\").Item(\"c2\")"}},
        {[this] { return list.Call("SetList_Incoming", graphs, cites, false); },
         {"cites.name", "b2.Incoming_(\"cites\")", "b2.Incoming_(\"cites\").Item(\"c1\")"}}};
    for (const Kind& kind : kinds) {
        list.Call("Create");
        ASSERT_TRUE(kind.make());
        model.Log().Clear();
        const auto objects = Objects("GetItems");
        EXPECT_EQ(model.Log().Take(), kind.calls);
        EXPECT_EQ(objects.size(), static_cast<std::size_t>(RowCount()));
        for (const Value& object : objects) EXPECT_NE(object.Object(), nullptr);
    }
}

TEST_F(ListViewCollections, AMetaNodesMetaLinksAndAttributesGiveEmptyEntries) {
    const std::function<Outcome()> makers[] = {
        [this] { return list.Call("SetList_Outgoing_MetaLinks", book, false); },
        [this] { return list.Call("SetList_Incoming_MetaLinks", book, false); },
        [this] { return list.Call("SetList_MetaAttributes", book, false); }};
    for (const auto& make : makers) {
        list.Call("Create");
        ASSERT_TRUE(make());
        list.Call("SelectAll");
        list.Call("CheckAll");
        model.Log().Clear();
        const auto rows = static_cast<std::size_t>(RowCount());
        ASSERT_GE(rows, 1u);
        for (const char* member : {"GetItems", "GetSelectedItems", "GetCheckedItems"}) {
            const auto entries = Objects(member);
            EXPECT_EQ(entries.size(), rows);
            EXPECT_THAT(entries, Each(Nothing()));
        }
        EXPECT_THAT(Objects("GetNonSelectedItems"), IsEmpty());
        EXPECT_THAT(model.Log().Take(), IsEmpty());
    }
}

TEST_F(ListViewCollections, GetSelectedItemsOfMetaAttributesHasAnEmptyEntryPerSelectedRow) {
    list.Call("SetList_MetaAttributes", book, false);
    Select(1);
    EXPECT_THAT(Objects("GetSelectedItems"), ElementsAre(Nothing()));
    EXPECT_EQ(LateBound(list.Call("GetSelectedItems").value).Default("Shelf").value, Nothing());
}

TEST_F(ListViewCollections, AFailedLookUpGivesAnEmptyEntry) {
    list.Call("SetList_Nodes", book, false);
    model.Remove(graphs);
    EXPECT_THAT(Objects("GetItems"), ElementsAre(Value(trees), Nothing(), Value(lists)));
    book->Disconnect();
    EXPECT_THAT(Objects("GetItems"), ElementsAre(Nothing(), Nothing(), Nothing()));
}

TEST_F(ListViewCollections, KeepBothRowsWhoseKeysDifferByCaseOnly) {
    FakeNode* lower = model.Node(person, "x");
    FakeNode* upper = model.Node(person, "X");
    person->On("Extension").With("x").Answer(lower);
    person->On("Extension").With("X").Answer(upper);
    ASSERT_TRUE(list.Call("SetList_Nodes", person, false));
    EXPECT_THAT(Objects("GetItems"), ElementsAre(Value(lower), Value(upper)));
}

TEST_F(ListViewCollections, HaveEntriesOfRowsWithoutAKey) {
    model.Node(person, "");
    list.Call("SetList_Nodes", person, false);
    EXPECT_EQ(Objects("GetItems").size(), 1u);
}

TEST_F(ListViewCollections, AHostMayClearTheListInALookUp) {
    list.Call("SetList_Nodes", book, false);
    book->On("Extension").Times(1).Run([this] { list.Call("Clear"); });
    EXPECT_THAT(Objects("GetItems"), ElementsAre(Value(trees), Value(graphs), Value(lists)));
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(ListViewCollections, FollowTheSortedOrder) {
    AddColumns({"Name"});
    list.Call("SetList_Nodes", book, false);
    ClickHeader(0);
    EXPECT_THAT(Objects("GetItems"), ElementsAre(Value(graphs), Value(lists), Value(trees)));
}

}  // namespace
}  // namespace support
