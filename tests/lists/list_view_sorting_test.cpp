#include <algorithm>

#include "lists/list_view_fixture.h"
#include "support/event_recorder.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListViewSorting : public ListViewTest {
protected:
    ListViewSorting() {
        AddColumns({"Name", "Year"});
        list.Call("SetList_Nodes", book, false);
    }

    /// 1 where a column's header shows an arrow that points up, -1 down, 0 without one.
    [[nodiscard]] int Arrow(int column) const {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        SendMessageW(Header(), HDM_GETITEMW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&item));
        return (item.fmt & HDF_SORTUP) != 0 ? 1 : (item.fmt & HDF_SORTDOWN) != 0 ? -1 : 0;
    }
};

TEST_F(ListViewSorting, RowsAreNotSortedBeforeTheFirstClick) {
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Graphs", "On Lists"));
    EXPECT_EQ(Arrow(0), 0);
}

TEST_F(ListViewSorting, AClickOnAHeaderSortsByItAndAnotherReverses) {
    ClickHeader(0);
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Trees"));
    EXPECT_EQ(Arrow(0), 1);
    ClickHeader(0);
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Lists", "On Graphs"));
    EXPECT_EQ(Arrow(0), -1);
    ClickHeader(0);
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Trees"));
}

TEST_F(ListViewSorting, AnotherColumnKeepsThePresentOrder) {
    ClickHeader(0);
    ClickHeader(0);
    ClickHeader(1);
    EXPECT_THAT(Column(1), ElementsAre("2001", "1968", "1736"));
    EXPECT_EQ(Arrow(0), 0);
    EXPECT_EQ(Arrow(1), -1);
    ClickHeader(1);
    EXPECT_THAT(Column(1), ElementsAre("1736", "1968", "2001"));
}

TEST_F(ListViewSorting, TextsAreSortedAsTextsWithoutCase) {
    list.Call("Clear");
    for (const char* name : {"b", "A", "10", "9", "a", "B"}) {
        list.Call("AddNode", model.Node(person, std::string("p") + name, name));
    }
    ClickHeader(0);
    EXPECT_THAT(Column(), ElementsAre("10", "9", "A", "a", "b", "B"));
    ClickHeader(0);
    EXPECT_THAT(Column(), ElementsAre("b", "B", "A", "a", "9", "10"))
        << "rows that are equal keep their order";
}

TEST_F(ListViewSorting, RowsAddedLaterComeInTheirPlaces) {
    ClickHeader(0);
    FakeNode* early = model.Node(person, "p1", "Of Arrays");
    early->values["Year"] = 1;
    FakeNode* middle = model.Node(person, "p2", "On Hashing");
    middle->values["Year"] = 2;
    ASSERT_TRUE(list.Call("AddNode", early));
    ASSERT_TRUE(list.Call("AddNode", middle));
    EXPECT_THAT(Column(),
                ElementsAre("Of Arrays", "On Graphs", "On Hashing", "On Lists", "On Trees"));
    ASSERT_TRUE(list.Call("Refresh"));
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Trees"));
}

TEST_F(ListViewSorting, EqualRowsAddedLaterComeAfterTheOthers) {
    ClickHeader(0);
    FakeNode* twin = model.Node(person, "p1", "On Lists");
    twin->values["Year"] = 1;
    ASSERT_TRUE(list.Call("AddNode", twin));
    EXPECT_THAT(Column(1), ElementsAre("1736", "2001", "1", "1968"));
}

TEST_F(ListViewSorting, AnUpdatedRowStaysWhereItIs) {
    ClickHeader(0);
    trees->name = "A Tree";
    ASSERT_TRUE(list.Call("UpdateEntry", trees));
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "A Tree"));
}

TEST_F(ListViewSorting, SelectionFocusAndChecksStayWithTheirRows) {
    list.Put("Checkboxes", true);
    ASSERT_TRUE(list.PutRef("selection", graphs));
    Select(2);
    ClickHeader(0);
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1));
    EXPECT_NE(State(0, LVIS_FOCUSED), 0u);
    EXPECT_EQ(Selection().Get(), graphs);
    ClickHeader(0);
    EXPECT_THAT(SelectedRows(), ElementsAre(1, 2));
    EXPECT_EQ(Selection().Get(), graphs);
    list.Call("SelectAll");
    ClickHeader(0);
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1, 2));
}

TEST_F(ListViewSorting, TheSelectionStaysWithItsRowsWhenOneIsAdded) {
    ClickHeader(0);
    ASSERT_TRUE(list.PutRef("selection", graphs));
    FakeNode* early = model.Node(person, "p1", "Of Arrays");
    early->values["Year"] = 1;
    ASSERT_TRUE(list.Call("AddNode", early));
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ListViewSorting, DeletesAndFindsRowsWhereTheyAreNow) {
    ClickHeader(0);
    ASSERT_TRUE(list.Call("DeleteEntry", graphs));
    EXPECT_THAT(Column(), ElementsAre("On Lists", "On Trees"));
    ASSERT_TRUE(list.PutRef("selection", trees));
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
}

TEST_F(ListViewSorting, CreateForgetsTheSortColumn) {
    ClickHeader(0);
    list.Call("Create");
    AddColumns({"Name"});
    list.Call("SetList_Nodes", book, false);
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Graphs", "On Lists"));
    EXPECT_EQ(Arrow(0), 0);
}

TEST_F(ListViewSorting, AsksTheRepositoryNothingAndRaisesNoEvent) {
    EventRecorder events(list.Get());
    model.Log().Clear();
    ClickHeader(0);
    EXPECT_THAT(model.Log().Take(), IsEmpty());
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ListViewSorting, AnEmptyListCanBeSorted) {
    list.Call("Clear");
    ClickHeader(0);
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Trees"));
}

TEST_F(ListViewSorting, ARowIsSortedInByTheTextsThatItsCallbackGaveIt) {
    ClickHeader(0);
    const auto callback = FakeObject::Make("callback");
    callback->Function("ViewNode", [](Arguments& arguments) -> Value {
        const LateBound item(arguments.Object(2));
        if (arguments[0].Number() == 0) {
            item.Put("Selected", true);
            item.Put("Text", "Zoo");
        }
        return {};
    });
    list.PutRef("CallbackObject", callback);
    ASSERT_TRUE(list.Call("AddNode", model.Node(person, "p1")));
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Trees", "Zoo"));
    EXPECT_THAT(SelectedRows(), ElementsAre(3));
    list.PutRef("CallbackObject", Nothing());
}

TEST_F(ListViewSorting, AHeaderMayBeClickedWhileTheListIsFilled) {
    list.Call("Clear");
    FakeNode* const sets = model.Node(book, "b4", "Of Sets");
    sets->values["Year"] = 1874;
    for (FakeNode* const clicked : {trees, graphs, lists, sets}) {
        SCOPED_TRACE(clicked->Label());
        // While the row has its name and no year, among others that have all or nothing yet.
        clicked->On("GetProperty").With("Year").Times(1).Run([this] { ClickHeader(0); });
        ASSERT_TRUE(list.Call("Refresh"));
        EXPECT_THAT(Column(), ElementsAre("Of Sets", "On Graphs", "On Lists", "On Trees"));
        EXPECT_THAT(Column(1), ElementsAre("1874", "1736", "2001", "1968"));
        list.Call("Clear");
        list.Call("Create");
        AddColumns({"Name", "Year"});
        list.Call("SetList_Nodes", book, false);
    }
}

TEST_F(ListViewSorting, AHeaderClickedAmongRowsThatAreAddedSortsTheOthersAtOnce) {
    FakeNode* const early = model.Node(person, "p1", "Of Arrays");
    early->values["Year"] = 1;
    early->On("GetProperty").With("Year").Times(1).Run([this] {
        ClickHeader(0);
        EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Trees", ""));
    });
    ASSERT_TRUE(list.Call("AddNode", early));
    EXPECT_THAT(Column(), ElementsAre("Of Arrays", "On Graphs", "On Lists", "On Trees"));
}

TEST_F(ListViewSorting, ManyRowsAreSortedStably) {
    model.Log().enabled = false;
    list.Call("Clear");
    std::vector<Texts> expected;
    for (int i = 0; i < 3000; ++i) {
        FakeNode* node = model.Node(person, std::to_string(i), std::to_string(i * 7919 % 10));
        node->values["Year"] = i;
        expected.push_back({node->name, std::to_string(i)});
    }
    ASSERT_TRUE(list.Call("SetList_Nodes", person, false));
    ClickHeader(0);
    std::stable_sort(expected.begin(), expected.end(),
                     [](const Texts& a, const Texts& b) { return a[0] < b[0]; });
    EXPECT_EQ(Rows(), expected);
}

}  // namespace
}  // namespace support
