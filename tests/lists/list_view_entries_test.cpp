#include <functional>

#include "lists/list_view_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Single rows, and what happens to all of them.
class ListViewEntries : public ListViewTest {
protected:
    /// Makes each of the nine lists, without columns of its own.
    std::vector<std::function<Outcome()>> makers = {
        [this] { return list.Call("SetList_MetaNodes", model.Root(), false); },
        [this] { return list.Call("SetList_MetaLinks", model.Root(), false); },
        [this] { return list.Call("SetList_Outgoing_MetaLinks", book, false); },
        [this] { return list.Call("SetList_Incoming_MetaLinks", book, false); },
        [this] { return list.Call("SetList_Nodes", book, false); },
        [this] { return list.Call("SetList_Links", cites, false); },
        [this] { return list.Call("SetList_Outgoing", trees, cites, false); },
        [this] { return list.Call("SetList_Incoming", graphs, cites, false); },
        [this] { return list.Call("SetList_MetaAttributes", book, false); }};
};

TEST_F(ListViewEntries, AddMetaNodeAddsARowKeyedByName) {
    AddColumns({"Description"});
    EXPECT_EQ(list.Call("AddMetaNode", book).value, Empty());
    EXPECT_THAT(model.Log().Take(), ElementsAre("Book.name", "Book.GetProperty(\"Description\")"));
    EXPECT_THAT(Column(), ElementsAre("what is read"));
    EXPECT_EQ(list.Call("AddMetaNode", book).AutomationNumber(), 35602);
}

TEST_F(ListViewEntries, AddNodeAddsARowKeyedByIdentifier) {
    AddColumns({"Name"});
    EXPECT_EQ(list.Call("AddNode", trees).value, Empty());
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier", "b1.GetProperty(\"Name\")"));
    EXPECT_EQ(list.Call("AddNode", trees).AutomationNumber(), 35602);
}

TEST_F(ListViewEntries, AddLinkAddsARowKeyedByIdentifier) {
    ASSERT_TRUE(list.Call("AddLinkColumn", "Name", "Name", 1, 1000));
    EXPECT_EQ(list.Call("AddLink", first).value, Empty());
    EXPECT_THAT(model.Log().Take(), ElementsAre("c1.identifier", "c1.GetProperty(\"Name\")"));
    EXPECT_EQ(list.Call("AddLink", first).AutomationNumber(), 35602);
}

TEST_F(ListViewEntries, AddEntryAddsWhatTheListsKindIsMadeOf) {
    AddColumns({"Name"});
    FakeMetaNode* place = model.MetaNode("Place");
    FakeMetaLink* reads = model.MetaLink("reads", person, place);
    FakeNode* stranger = model.Node(person, "p1", "Knuth");
    FakeLink* link = model.Link(wrote, stranger, trees, "w1", "wrote it");
    FakeObject* const objects[] = {person, reads, nullptr, nullptr, stranger, link, link, link};
    for (const std::size_t mode : {0u, 1u, 4u, 5u, 6u, 7u}) {
        list.Call("Create");
        AddColumns({"Name"});
        ASSERT_TRUE(makers[mode]());
        const int before = RowCount();
        if (mode < 2) list.Call("DeleteEntry", objects[mode]);
        model.Log().Clear();
        EXPECT_EQ(list.Call("AddEntry", objects[mode]).value, Empty()) << mode;
        EXPECT_EQ(RowCount(), mode < 2 ? before : before + 1) << mode;
        const bool meta = mode < 2;
        const std::string label = objects[mode]->Label();
        EXPECT_EQ(model.Log().Calls().front(), label + (meta ? ".name" : ".identifier"));
    }
}

TEST_F(ListViewEntries, AddEntryOfALinkListReadsTheColumnsEnd) {
    ASSERT_TRUE(list.Call("AddLinkColumn", "To", "Name", 2, 1000));
    ASSERT_TRUE(list.Call("SetList_Links", cites, false));
    FakeLink* third = model.Link(cites, graphs, lists, "c3");
    ASSERT_TRUE(list.Call("AddEntry", third));
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Lists"));
}

TEST_F(ListViewEntries, DeleteEntryRemovesTheObjectsRow) {
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    model.Log().Clear();
    EXPECT_EQ(list.Call("DeleteEntry", graphs).value, Empty());
    EXPECT_THAT(model.Log().Take(), ElementsAre("b2.identifier"));
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Lists"));
    ASSERT_TRUE(list.Call("AddEntry", graphs)) << "the key is free again";
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Lists", "On Graphs"));
}

TEST_F(ListViewEntries, DeleteEntryOfMetaObjectsGoesByName) {
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), false));
    model.Log().Clear();
    ASSERT_TRUE(list.Call("DeleteEntry", book));
    EXPECT_THAT(model.Log().Take(), ElementsAre("Book.name"));
    EXPECT_THAT(Column(), ElementsAre("Person"));
}

TEST_F(ListViewEntries, DeleteEntryKeepsTheSelectionOfTheOtherRows) {
    list.Call("SetList_Nodes", book, false);
    Select(0);
    Select(2);
    ASSERT_TRUE(list.Call("DeleteEntry", graphs));
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1));
    ASSERT_TRUE(list.Call("DeleteEntry", trees));
    EXPECT_THAT(SelectedRows(), ElementsAre(0));
}

TEST_F(ListViewEntries, UpdateEntryFillsTheRowAgain) {
    AddColumns({"Name", "Year"});
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    graphs->name = "On Networks";
    graphs->values["Year"] = 1847;
    model.Log().Clear();
    EXPECT_EQ(list.Call("UpdateEntry", graphs).value, Empty());
    EXPECT_THAT(model.Log().Take(), ElementsAre("b2.identifier", "b2.GetProperty(\"Name\")",
                                                "b2.GetProperty(\"Year\")"));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"On Trees", "1968"}, Texts{"On Networks", "1847"},
                                    Texts{"On Lists", "2001"}));
}

TEST_F(ListViewEntries, UpdateEntryFillsFromTheObjectThatItIsGiven) {
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    FakeNode* twin = model.Node(person, "b2", "The twin");
    ASSERT_TRUE(list.Call("UpdateEntry", twin));
    EXPECT_THAT(Column(), ElementsAre("On Trees", "The twin", "On Lists"));
}

TEST_F(ListViewEntries, UpdateEntryOfMetaObjectsAndLinks) {
    AddColumns({"Description"});
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), false));
    book->description = "changed";
    ASSERT_TRUE(list.Call("UpdateEntry", book));
    EXPECT_THAT(Column(), ElementsAre("changed", "who reads"));
    list.Call("Create");
    ASSERT_TRUE(list.Call("AddLinkColumn", "From", "Name", 0, 1000));
    ASSERT_TRUE(list.Call("SetList_Incoming", graphs, cites, false));
    trees->name = "On Forests";
    model.Log().Clear();
    ASSERT_TRUE(list.Call("UpdateEntry", first));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("c1.identifier", "c1.source", "b1.GetProperty(\"Name\")"));
    EXPECT_THAT(Column(), ElementsAre("On Forests"));
}

TEST_F(ListViewEntries, UpdateEntryKeepsCheckAndSelection) {
    list.Put("Checkboxes", true);
    list.Call("SetList_Nodes", book, false);
    list.Call("CheckAll");
    Select(1);
    ASSERT_TRUE(list.Call("UpdateEntry", graphs));
    EXPECT_EQ(CheckBox(1), 2u);
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
}

TEST_F(ListViewEntries, AnEntryThatIsNotThereIs35601) {
    list.Call("SetList_Nodes", book, false);
    FakeNode* stranger = model.Node(person, "p1");
    for (const char* member : {"DeleteEntry", "UpdateEntry"}) {
        const Outcome failed = list.Call(member, stranger);
        EXPECT_EQ(failed.AutomationNumber(), 35601) << member;
        EXPECT_EQ(failed.source, "OrvaneControls.ListView");
        EXPECT_EQ(list.Call(member, Nothing()).AutomationNumber(), 91);
        EXPECT_EQ(list.Call(member, book).AutomationNumber(), 438) << "it has no identifier";
    }
    list.Call("DeleteEntry", trees);
    EXPECT_EQ(list.Call("DeleteEntry", trees).AutomationNumber(), 35601);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(ListViewEntries, AMetaNodesMetaLinksAndAttributesAreNotKeptInStep) {
    for (const std::size_t mode : {2u, 3u, 8u}) {
        list.Call("Create");
        AddColumns({"Name"});
        ASSERT_TRUE(makers[mode]());
        const auto before = Rows();
        model.Log().Clear();
        for (const char* member : {"AddEntry", "DeleteEntry", "UpdateEntry"}) {
            for (const Value& any : {Value(cites), Value(year), Value(person), Nothing()}) {
                const Outcome done = list.Call(member, any);
                EXPECT_TRUE(done) << member << mode;
                EXPECT_EQ(done.value, Empty());
            }
        }
        EXPECT_EQ(Rows(), before);
        EXPECT_THAT(model.Log().Take(), IsEmpty());
    }
}

TEST_F(ListViewEntries, ClearRemovesRowsOnly) {
    ASSERT_TRUE(list.Call("SetList_Nodes", book, true));
    EXPECT_EQ(list.Call("Clear").value, Empty());
    EXPECT_EQ(RowCount(), 0);
    EXPECT_THAT(Headers(), ElementsAre("Year", "Shelf"));
    EXPECT_EQ(list.Get("Mode").value, Value(4));
    ASSERT_TRUE(list.Call("AddEntry", trees));
    EXPECT_THAT(Row(0), ElementsAre("1968", "A1"));
}

TEST_F(ListViewEntries, RefreshMakesTheListAgainFromWhatItWasMadeOf) {
    AddColumns({"Name"});
    for (std::size_t mode = 0; mode < makers.size(); ++mode) {
        list.Call("Clear");
        model.Log().Clear();
        ASSERT_TRUE(makers[mode]()) << mode;
        const auto calls = model.Log().Take();
        const auto rows = Rows();
        ASSERT_FALSE(rows.empty());
        EXPECT_EQ(list.Call("Refresh").value, Empty());
        EXPECT_EQ(model.Log().Take(), calls) << mode;
        EXPECT_EQ(Rows(), rows) << mode;
        EXPECT_EQ(list.Get("Mode").value, Value(static_cast<int>(mode)));
    }
    EXPECT_THAT(Headers(), ElementsAre("Name"));
}

TEST_F(ListViewEntries, RefreshShowsWhatChanged) {
    AddColumns({"Name"});
    list.Call("SetList_Nodes", book, false);
    model.Remove(graphs);
    model.Node(book, "b4", "On Sets");
    ASSERT_TRUE(list.Call("Refresh"));
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Lists", "On Sets"));
}

TEST_F(ListViewEntries, RefreshAddsTheDefaultColumnsASecondTime) {
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), true));
    ASSERT_TRUE(list.Call("Refresh"));
    EXPECT_THAT(Headers(), ElementsAre("Name", "Description", "Name", "Description"));
    EXPECT_THAT(Row(0), ElementsAre("Book", "what is read", "Book", "what is read"));
    list.Call("Create");
    ASSERT_TRUE(list.Call("SetList_Outgoing", trees, cites, true));
    ASSERT_TRUE(list.Call("Refresh"));
    EXPECT_THAT(Headers(), ElementsAre("Page", "Page"));
    EXPECT_THAT(Row(1), ElementsAre("12", "12"));
}

TEST_F(ListViewEntries, RefreshForgetsRowsThatTheHostAdded) {
    AddColumns({"Name"});
    list.Call("SetList_Nodes", book, false);
    list.Call("AddNode", model.Node(person, "p1", "Knuth"));
    list.Call("Refresh");
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(ListViewEntries, RefreshOfANewListHasNothingToList) {
    EXPECT_EQ(list.Call("Refresh").AutomationNumber(), 91);
    list.Call("AddNode", trees);
    EXPECT_EQ(list.Call("Refresh").AutomationNumber(), 91);
    EXPECT_EQ(RowCount(), 0) << "the rows go first";
}

TEST_F(ListViewEntries, CreateEmptiesTheListAndForgetsWhatItListed) {
    list.Call("SetList_Nodes", book, true);
    EXPECT_EQ(list.Call("Create").value, Empty());
    EXPECT_EQ(RowCount(), 0);
    EXPECT_THAT(Headers(), IsEmpty());
    EXPECT_EQ(list.Call("Refresh").AutomationNumber(), 91);
    model.Log().Clear();
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier")) << "no columns are left";
}

TEST_F(ListViewEntries, CreateKeepsTheKindAndWhereRowsAreLookedUp) {
    list.Call("SetList_Nodes", book, false);
    list.Call("Create");
    EXPECT_EQ(list.Get("Mode").value, Value(4));
    ASSERT_TRUE(list.Call("AddEntry", graphs));
    Select(0);
    EXPECT_EQ(Selection().Get(), graphs) << "in the collection of before";
    EXPECT_THAT(Objects("GetItems"), ElementsAre(Nothing())) << "the list's object is forgotten";
}

TEST_F(ListViewEntries, ANewListIsOneOfMetaNodes) {
    EXPECT_EQ(list.Get("Mode").value, Value(0));
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("AddEntry", book));
    EXPECT_THAT(Column(), ElementsAre("Book"));
}

TEST_F(ListViewEntries, CreateKeepsTheCallbackAndTheLooks) {
    const auto callback = FakeObject::Make("callback");
    list.PutRef("CallbackObject", callback);
    list.Put("View", 1);
    list.Put("Checkboxes", true);
    list.Call("Create");
    EXPECT_EQ(list.Get("CallbackObject").Object().Get(), callback.Get());
    EXPECT_EQ(list.Get("View").value, Value(short{1}));
    EXPECT_EQ(list.Get("Checkboxes").value, Value(true));
    list.PutRef("CallbackObject", Nothing());
}

TEST_F(ListViewEntries, DestroyClearsTheRowsAndLetsGoOfEveryObject) {
    const auto callback = FakeObject::Make("callback");
    const ULONG callbackBefore = callback->References();
    const ULONG bookBefore = book->References();
    const ULONG extensionBefore = book->extension->References();
    const ULONG treesBefore = trees->References();
    list.Call("SetList_Outgoing", trees, cites, true);
    list.Call("SetList_Nodes", book, true);
    list.PutRef("CallbackObject", callback);
    EXPECT_GT(book->References(), bookBefore);
    EXPECT_GT(trees->References(), treesBefore);
    EXPECT_EQ(list.Call("Destroy").value, Empty());
    EXPECT_EQ(RowCount(), 0);
    EXPECT_EQ(callback->References(), callbackBefore);
    EXPECT_EQ(book->References(), bookBefore);
    EXPECT_EQ(book->extension->References(), extensionBefore);
    EXPECT_EQ(trees->References(), treesBefore);
    model.Log().Clear();
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier")) << "no columns are left";
}

TEST_F(ListViewEntries, RowsHoldNoObjects) {
    AddColumns({"Name"});
    const ULONG before = trees->References();
    list.Call("AddNode", trees);
    EXPECT_EQ(trees->References(), before);
}

TEST_F(ListViewEntries, AfterDestroyAndCreateTheControlWorksAgain) {
    list.Call("SetList_Nodes", book, true);
    list.Call("Destroy");
    list.Call("Create");
    ASSERT_TRUE(list.Call("SetList_Nodes", book, true));
    EXPECT_THAT(Headers(), ElementsAre("Year", "Shelf"));
    EXPECT_EQ(RowCount(), 3);
}

}  // namespace
}  // namespace support
