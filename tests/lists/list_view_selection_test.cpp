#include <functional>

#include "lists/list_view_fixture.h"
#include "support/dialog_watcher.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListViewSelection : public ListViewTest {
protected:
    ~ListViewSelection() override { EXPECT_EQ(dialogs.Unexpected(), 0u); }

    /// Setting the selection shows the one message and changes nothing.
    void ExpectNavigationBug(const Value& object) {
        const std::vector<int> before = SelectedRows();
        const std::size_t seen = dialogs.Seen().size();
        dialogs.Expect();
        EXPECT_TRUE(list.PutRef("selection", object));
        ASSERT_EQ(dialogs.Seen().size(), seen + 1);
        EXPECT_EQ(dialogs.Seen().back().text, "TODO: bug in navigation");
        EXPECT_THAT(dialogs.Seen().back().buttons, ElementsAre("OK"));
        EXPECT_EQ(SelectedRows(), before);
    }

    DialogWatcher dialogs;
};

TEST_F(ListViewSelection, IsNothingAtFirst) {
    EXPECT_EQ(list.Get("selection").value, Nothing());
    list.Call("SetList_Nodes", book, false);
    model.Log().Clear();
    EXPECT_EQ(list.Get("selection").value, Nothing());
    EXPECT_THAT(model.Log().Take(), IsEmpty()) << "nothing is looked up";
}

struct Kind {
    std::function<Outcome()> make;
    FakeObject* object;
    std::string call;
};

TEST_F(ListViewSelection, LooksTheObjectUpByTheRowsKey) {
    const Kind kinds[] = {{[this] { return list.Call("SetList_MetaNodes", model.Root(), false); },
                           book, "rep.MetaNodes(\"Book\")"},
                          {[this] { return list.Call("SetList_MetaLinks", model.Root(), false); },
                           cites, "rep.MetaLinks(\"cites\")"},
                          {[this] { return list.Call("SetList_Outgoing_MetaLinks", book, false); },
                           cites, "Book.Outgoing(\"cites\")"},
                          {[this] { return list.Call("SetList_Incoming_MetaLinks", book, false); },
                           cites, "Book.Incoming(\"cites\")"},
                          {[this] { return list.Call("SetList_Nodes", book, false); }, trees,
                           "Book.Extension.[default](\"b1\")"},
                          {[this] { return list.Call("SetList_Links", cites, false); }, first,
                           "cites.Extension.[default](\"c1\")"},
                          {[this] { return list.Call("SetList_Outgoing", trees, cites, false); },
                           first, "b1.Outgoing_(\"cites\").[default](\"c1\")"},
                          {[this] { return list.Call("SetList_Incoming", graphs, cites, false); },
                           first, "b2.Incoming_(\"cites\").[default](\"c1\")"},
                          {[this] { return list.Call("SetList_MetaAttributes", book, false); },
                           year, "Book.Properties(\"Year\")"}};
    for (const Kind& kind : kinds) {
        list.Call("Create");
        ASSERT_TRUE(kind.make());
        Select(0);
        model.Log().Clear();
        const Outcome selection = list.Get("selection");
        EXPECT_EQ(selection.Object().Get(), static_cast<IDispatch*>(kind.object)) << kind.call;
        EXPECT_THAT(model.Log().Take(), ElementsAre(kind.call));
    }
}

TEST_F(ListViewSelection, AFailedLookUpIsNothing) {
    list.Call("SetList_Nodes", book, false);
    Select(0);
    model.Remove(trees);
    const Outcome gone = list.Get("selection");
    EXPECT_TRUE(gone);
    EXPECT_EQ(gone.value, Nothing());
    book->extension->Disconnect();
    EXPECT_EQ(list.Get("selection").value, Nothing());
}

TEST_F(ListViewSelection, AFailedLookUpIsNothingInEveryKindOfList) {
    const std::function<Outcome()> makers[] = {
        [this] { return list.Call("SetList_MetaNodes", model.Root(), false); },
        [this] { return list.Call("SetList_MetaLinks", model.Root(), false); },
        [this] { return list.Call("SetList_Outgoing_MetaLinks", book, false); },
        [this] { return list.Call("SetList_Incoming_MetaLinks", book, false); },
        [this] { return list.Call("SetList_MetaAttributes", book, false); }};
    const auto foreign = FakeObject::Make("foreign");
    foreign->Constant("name", "no such key");
    for (const auto& make : makers) {
        list.Call("Create");
        ASSERT_TRUE(make());
        list.Call("DeselectAll");
        ASSERT_TRUE(list.Call("AddMetaNode", foreign));
        Select(RowCount() - 1);
        EXPECT_EQ(list.Get("selection").value, Nothing());
    }
}

TEST_F(ListViewSelection, AnObjectThatIsNoneIsNothing) {
    list.Call("SetList_MetaNodes", model.Root(), false);
    Select(0);
    model.Root()->On("MetaNodes").Answer("a text");
    EXPECT_EQ(list.Get("selection").value, Nothing());
}

TEST_F(ListViewSelection, TheFocusedRowComesFirstWhenItIsSelected) {
    list.Call("SetList_Nodes", book, false);
    list.Call("SelectAll");
    EXPECT_EQ(Selection().Get(), trees);
    FocusOn(2);
    EXPECT_EQ(Selection().Get(), lists);
    Select(2, false);
    EXPECT_EQ(Selection().Get(), trees);
    Select(0, false);
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ListViewSelection, AFocusedRowThatIsNotSelectedIsNoSelection) {
    list.Call("SetList_Nodes", book, false);
    FocusOn(1);
    EXPECT_EQ(list.Get("selection").value, Nothing());
}

TEST_F(ListViewSelection, SettingGoesByNameOrByIdentifier) {
    const Kind kinds[] = {
        {[this] { return list.Call("SetList_MetaNodes", model.Root(), false); }, book, "name"},
        {[this] { return list.Call("SetList_MetaLinks", model.Root(), false); }, cites, "name"},
        {[this] { return list.Call("SetList_Outgoing_MetaLinks", book, false); }, cites, "name"},
        {[this] { return list.Call("SetList_Incoming_MetaLinks", book, false); }, cites, "name"},
        {[this] { return list.Call("SetList_Nodes", book, false); }, graphs, "identifier"},
        {[this] { return list.Call("SetList_Links", cites, false); }, second, "identifier"},
        {[this] { return list.Call("SetList_Outgoing", trees, cites, false); }, second,
         "identifier"},
        {[this] { return list.Call("SetList_Incoming", graphs, cites, false); }, first,
         "identifier"},
        {[this] { return list.Call("SetList_MetaAttributes", book, false); }, shelf, "name"}};
    for (const Kind& kind : kinds) {
        list.Call("Create");
        ASSERT_TRUE(kind.make());
        model.Log().Clear();
        EXPECT_TRUE(list.PutRef("selection", kind.object));
        EXPECT_THAT(model.Log().Take(), ElementsAre(kind.object->Label() + "." + kind.call));
        EXPECT_EQ(Selection().Get(), static_cast<IDispatch*>(kind.object));
    }
}

TEST_F(ListViewSelection, SettingSelectsThatRowAlone) {
    list.Call("SetList_Nodes", book, false);
    list.Call("SelectAll");
    ASSERT_TRUE(list.Put("selection", graphs)) << "by value as well";
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
    EXPECT_NE(State(1, LVIS_FOCUSED), 0u);
}

TEST_F(ListViewSelection, SettingScrollsToTheRow) {
    FakeNode* distant = nullptr;
    for (int i = 0; i < 500; ++i) {
        FakeNode* node = model.Node(person, "p" + std::to_string(i));
        if (i == 400) distant = node;
    }
    AddColumns({"Name"});
    list.Call("SetList_Nodes", person, false);
    const auto isOnPage = [this](LRESULT row) {
        const LRESULT top = SendMessageW(List(), LVM_GETTOPINDEX, 0, 0);
        return row >= top && row < top + SendMessageW(List(), LVM_GETCOUNTPERPAGE, 0, 0);
    };
    ASSERT_TRUE(isOnPage(0));
    ASSERT_FALSE(isOnPage(400));
    ASSERT_TRUE(list.PutRef("selection", distant));
    EXPECT_TRUE(isOnPage(400));
    EXPECT_FALSE(isOnPage(0));
}

TEST_F(ListViewSelection, SettingWhatIsNotListedShowsTheMessage) {
    list.Call("SetList_Nodes", book, false);
    ASSERT_TRUE(list.PutRef("selection", graphs));
    ExpectNavigationBug(Value(model.Node(person, "p1")));
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ListViewSelection, SettingWhatHasNoKeyShowsTheMessage) {
    list.Call("SetList_Nodes", book, false);
    ExpectNavigationBug(Value(book));
    ExpectNavigationBug(Nothing());
    trees->Disconnect();
    ExpectNavigationBug(Value(trees));
    graphs->On("identifier").Answer(Null());
    ExpectNavigationBug(Value(graphs));
}

TEST_F(ListViewSelection, SettingInAnEmptyListShowsTheMessage) {
    ExpectNavigationBug(Value(book));
}

TEST_F(ListViewSelection, SettingTellsKeysExactly) {
    list.Call("SetList_Nodes", book, false);
    ExpectNavigationBug(Value(model.Node(person, "B1")));
}

TEST_F(ListViewSelection, TheMessageMayClearTheList) {
    list.Call("SetList_Nodes", book, false);
    dialogs.Expect([this](HWND dialog) {
        list.Call("Clear");
        EndDialog(dialog, IDOK);
    });
    EXPECT_TRUE(list.PutRef("selection", Value(book)));
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(ListViewSelection, SelectAllAndDeselectAllSetEveryRow) {
    list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(list.Call("SelectAll").value, Empty());
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1, 2));
    EXPECT_EQ(list.Call("DeselectAll").value, Empty());
    EXPECT_THAT(SelectedRows(), IsEmpty());
    list.Call("Clear");
    EXPECT_TRUE(list.Call("SelectAll"));
    EXPECT_TRUE(list.Call("DeselectAll"));
}

TEST_F(ListViewSelection, RowsAddedLaterAreNotSelected) {
    list.Call("SetList_Nodes", book, false);
    list.Call("SelectAll");
    list.Call("AddNode", model.Node(person, "p1"));
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1, 2));
    list.Call("Clear");
    list.Call("SetList_Nodes", book, false);
    EXPECT_THAT(SelectedRows(), IsEmpty());
}

TEST_F(ListViewSelection, DragAndDropFlagsAreFalseAtFirstAndStored) {
    for (const char* flag : {"dragAllowed", "dropAllowed"}) {
        EXPECT_EQ(list.Get(flag).value, Value(false));
        EXPECT_TRUE(list.Put(flag, true));
        EXPECT_EQ(list.Get(flag).value, Value(true));
        EXPECT_TRUE(list.Put(flag, true)) << "again";
        EXPECT_TRUE(list.Put(flag, false));
        EXPECT_EQ(list.Get(flag).value, Value(false));
    }
}

TEST_F(ListViewSelection, DropAllowedMakesTheListADropTarget) {
    const auto isTarget = [this] { return GetPropW(List(), L"OleDropTargetInterface") != nullptr; };
    EXPECT_FALSE(isTarget());
    list.Put("dropAllowed", true);
    EXPECT_TRUE(isTarget());
    list.Put("dropAllowed", false);
    EXPECT_FALSE(isTarget());
}

TEST_F(ListViewSelection, CreateResetsTheFlagsAndLeavesTheListsOwnModes) {
    list.Put("dragAllowed", true);
    list.Put("dropAllowed", true);
    list.Call("Create");
    EXPECT_EQ(list.Get("dragAllowed").value, Value(false));
    EXPECT_EQ(list.Get("dropAllowed").value, Value(false));
    EXPECT_NE(GetPropW(List(), L"OleDropTargetInterface"), nullptr);
    list.Put("dropAllowed", false);
    EXPECT_EQ(GetPropW(List(), L"OleDropTargetInterface"), nullptr);
}

TEST_F(ListViewSelection, CallbackObjectIsGivenBack) {
    EXPECT_EQ(list.Get("CallbackObject").value, Nothing());
    const auto callback = FakeObject::Make("callback");
    EXPECT_TRUE(list.PutRef("CallbackObject", callback));
    EXPECT_EQ(list.Get("CallbackObject").Object().Get(), callback.Get());
    EXPECT_TRUE(list.Put("CallbackObject", Nothing()));
    EXPECT_EQ(list.Get("CallbackObject").value, Nothing());
}

}  // namespace
}  // namespace support
