#include <functional>

#include "lists/list_view_fixture.h"
#include "support/picture_files.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A host's object that fills cells, and the list item that it gets.
class ListViewCallback : public ListViewTest {
protected:
    using Body = std::function<void(int column, const LateBound& item, Arguments& arguments)>;

    ListViewCallback() {
        list.PutRef("CallbackObject", callback);
        for (const char* member :
             {"ViewMetaLink", "ViewMetaNode", "ViewMetaAttribute", "ViewNode", "ViewLink"}) {
            callback->Function(member, 4, 4, [this, member](Arguments& arguments) -> Value {
                calls.push_back(member + std::string(" ") + arguments.Text(0) + " " +
                                LateBound(arguments.Object(1)).Get("Property").value.Text() + " " +
                                Query<Labelled>(arguments.Object(3).Get())->Label());
                if (body) body(arguments[0].Number(), LateBound(arguments.Object(2)), arguments);
                return {};
            });
        }
    }
    ~ListViewCallback() override {
        kept = LateBound();
        list.PutRef("CallbackObject", Nothing());
        callback->Dismantle();
    }

    /// The item of a row that was filled, kept beyond that.
    void KeepItem() {
        body = [this](int, const LateBound& item, Arguments&) { kept = item; };
        ASSERT_TRUE(list.Call("AddNode", trees));
        body = nullptr;
    }
    [[nodiscard]] std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    Ref<FakeObject> callback = FakeObject::Make("callback");
    std::vector<std::string> calls;
    Body body;
    LateBound kept;
};

TEST_F(ListViewCallback, IsCalledOncePerColumnInPlaceOfFilling) {
    AddColumns({"Name", "Year"});
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(TakeCalls(),
                ElementsAre("ViewNode 0 Name b1", "ViewNode 1 Year b1", "ViewNode 0 Name b2",
                            "ViewNode 1 Year b2", "ViewNode 0 Name b3", "ViewNode 1 Year b3"));
    EXPECT_EQ(model.Log().Count("GetProperty"), 0u);
    EXPECT_THAT(Row(0), ElementsAre("", ""));
}

TEST_F(ListViewCallback, RowsOfEveryKindCallTheirMember) {
    AddColumns({"Name"});
    list.Call("SetList_MetaNodes", model.Root(), false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewMetaLink 0 Name Book", "ViewMetaLink 0 Name Person"));
    list.Call("SetList_MetaLinks", model.Root(), false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewMetaLink 0 Name cites", "ViewMetaLink 0 Name wrote"));
    list.Call("Clear");
    list.Call("SetList_Outgoing_MetaLinks", book, false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewMetaLink 0 Name cites"));
    list.Call("Clear");
    list.Call("SetList_Incoming_MetaLinks", book, false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewMetaLink 0 Name cites", "ViewMetaLink 0 Name wrote"));
    list.Call("Clear");
    list.Call("SetList_MetaAttributes", book, false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewMetaLink 0 Name Year", "ViewMetaLink 0 Name Shelf"));
    list.Call("Clear");
    list.Call("SetList_Links", cites, false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewLink 0 Name c1", "ViewLink 0 Name c2"));
    list.Call("Clear");
    list.Call("SetList_Outgoing", trees, cites, false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewLink 0 Name c1", "ViewLink 0 Name c2"));
    list.Call("Clear");
    list.Call("SetList_Incoming", graphs, cites, false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewLink 0 Name c1"));
    ASSERT_TRUE(list.Call("UpdateEntry", first));
    EXPECT_THAT(TakeCalls(), ElementsAre("ViewLink 0 Name c1"));
}

TEST_F(ListViewCallback, WithoutColumnsIsNotCalled) {
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(ListViewCallback, WritesTextsAndSubItems) {
    AddColumns({"Name", "Year"});
    body = [](int column, const LateBound& item, Arguments& arguments) {
        const std::string id = LateBound(arguments.Object(3)).Get("identifier").value.Text();
        if (column == 0)
            EXPECT_TRUE(item.Put("Text", "text of " + id));
        else
            EXPECT_TRUE(item.Put("SubItems", column, "sub of " + id));
    };
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Row(1), ElementsAre("text of b2", "sub of b2"));
}

TEST_F(ListViewCallback, TheColumnIsALongAndDescribedInFull) {
    ASSERT_TRUE(list.Call("AddLinkColumn", "Header", "Name", 77, 1000));
    body = [](int, const LateBound&, Arguments& arguments) {
        EXPECT_EQ(arguments[0], Value(0L));
        const LateBound column(arguments.Object(1));
        EXPECT_EQ(column.Get("name").value, Value("Header"));
        EXPECT_EQ(column.Get("Property").value, Value("Name"));
        EXPECT_EQ(column.Get("FromObject").value, Value(77));
        EXPECT_EQ(column.Id("name"), 1);
        EXPECT_EQ(column.Id("property"), 2);
        EXPECT_EQ(column.Id("FromObject"), 3);
    };
    ASSERT_TRUE(list.Call("AddLink", first));
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(ListViewCallback, AColumnsDescriptionCanBeChanged) {
    AddColumns({"Name"});
    body = [](int, const LateBound&, Arguments& arguments) {
        const LateBound column(arguments.Object(1));
        EXPECT_TRUE(column.Put("Property", "Year"));
        EXPECT_TRUE(column.Put("name", "other"));
        EXPECT_TRUE(column.Put("FromObject", -5));
        EXPECT_EQ(column.Get("FromObject").value, Value(-5));
    };
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(Headers(), ElementsAre("Name"));
    list.PutRef("CallbackObject", Nothing());
    ASSERT_TRUE(list.Call("AddNode", graphs));
    EXPECT_THAT(Column(), ElementsAre("", "1736"));
}

TEST_F(ListViewCallback, ACallbackOfOneColumnLeavesTheOthersToTheList) {
    AddColumns({"Name", "Year", "Name"});
    body = [this](int, const LateBound& item, Arguments&) {
        item.Put("Text", "mine");
        list.PutRef("CallbackObject", Nothing());
    };
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(Row(0), ElementsAre("mine", "1968", "On Trees"));
}

TEST_F(ListViewCallback, IconsAreTheCallbacks) {
    ASSERT_TRUE(list.Call("AddIconPicture", "red", PictureObject(BitmapFile(16, 16, 0xFF0000))));
    ASSERT_TRUE(list.Call("AddIconPicture", "blue", PictureObject(BitmapFile(16, 16, 0xFF))));
    list.Call("AddIconCondition", "red", "Name", "On Trees");
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_EQ(Image(0), -1) << "the condition is not tested";
    body = [](int, const LateBound& item, Arguments&) {
        EXPECT_TRUE(item.Put("SmallIcon", "blue"));
        EXPECT_TRUE(item.Put("Icon", 1));
    };
    ASSERT_TRUE(list.Call("UpdateEntry", trees));
    EXPECT_EQ(Image(0), 1);
    list.Put("View", 0);
    EXPECT_EQ(Image(0), 0);
}

TEST_F(ListViewCallback, AMissingMemberIs438) {
    AddColumns({"Name"});
    callback->Lacks("ViewNode");
    const Outcome added = list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(added.AutomationNumber(), 438);
    EXPECT_EQ(RowCount(), 1);
    EXPECT_TRUE(list.Call("SetList_MetaNodes", model.Root(), false)) << "others are there";
}

TEST_F(ListViewCallback, AnErrorReachesTheCallerAndKeepsTheRows) {
    AddColumns({"Name"});
    callback->On("ViewNode")
        .After(1)
        .Fail(Failure::Exception(static_cast<HRESULT>(0x800A03EC), "not today", "Some.Host"));
    const Outcome filled = list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(filled.AutomationNumber(), 1004);
    EXPECT_EQ(filled.description, "not today");
    EXPECT_EQ(filled.source, "Some.Host");
    EXPECT_EQ(RowCount(), 2);
    callback->Calm();
    EXPECT_TRUE(list.Call("Refresh"));
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(ListViewCallback, MayAddRows) {
    AddColumns({"Name"});
    FakeNode* extra = model.Node(person, "p1", "Knuth");
    body = [this, extra](int, const LateBound& item, Arguments&) {
        body = nullptr;
        EXPECT_TRUE(list.Call("AddNode", extra));
        EXPECT_TRUE(item.Put("Text", "first"));
    };
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Column(), ElementsAre("first", "", "", ""));
    EXPECT_THAT(Objects("GetItems"),
                ElementsAre(Value(trees), Nothing(), Value(graphs), Value(lists)));
}

TEST_F(ListViewCallback, MayAddColumnsWhichTheNextRowHas) {
    AddColumns({"Name"});
    body = [this](int, const LateBound&, Arguments&) {
        if (Headers().size() == 1) AddColumns({"Year"});
    };
    ASSERT_TRUE(list.Call("AddNode", trees));
    ASSERT_TRUE(list.Call("AddNode", graphs));
    const auto seen = TakeCalls();
    EXPECT_EQ(seen.back(), "ViewNode 1 Year b2");
    EXPECT_EQ(Row(1).size(), 2u);
}

TEST_F(ListViewCallback, MayClearTheList) {
    AddColumns({"Name", "Year"});
    body = [this](int, const LateBound& item, Arguments&) {
        list.Call("Clear");
        EXPECT_EQ(item.Put("Text", "late").AutomationNumber(), 35601);
    };
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_EQ(RowCount(), 0);
    body = nullptr;
    EXPECT_TRUE(list.Call("AddNode", trees));
    EXPECT_EQ(RowCount(), 1);
}

TEST_F(ListViewCallback, MayDeleteTheRowThatItFills) {
    AddColumns({"Name", "Year"});
    list.Call("SetList_Nodes", book, false);
    body = [this](int column, const LateBound& item, Arguments&) {
        if (column == 0) {
            EXPECT_TRUE(list.Call("DeleteEntry", graphs));
        }
        EXPECT_EQ(item.Get("Text").AutomationNumber(), 35601);
    };
    EXPECT_TRUE(list.Call("UpdateEntry", graphs));
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(ListViewCallback, TheListsOwnTextsOfARowThatWentRaise35601) {
    AddColumns({"Name", "Year"});
    list.Call("SetList_Nodes", book, false);
    body = [this](int, const LateBound&, Arguments&) {
        list.PutRef("CallbackObject", Nothing());
        list.Call("Clear");
    };
    EXPECT_EQ(list.Call("UpdateEntry", graphs).AutomationNumber(), 35601);
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(ListViewCallback, MayMakeAnotherList) {
    AddColumns({"Name"});
    body = [this](int, const LateBound&, Arguments&) {
        body = nullptr;
        list.Call("Clear");
        EXPECT_TRUE(list.Call("SetList_MetaAttributes", book, false));
    };
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_EQ(RowCount(), 4) << "the attributes, and the nodes that were left";
    EXPECT_EQ(list.Get("Mode").value, Value(8));
}

TEST_F(ListViewCallback, MayLetGoOfTheControl) {
    AddColumns({"Name"});
    const LateBound calling = list;
    body = [this](int, const LateBound&, Arguments&) {
        list.Call("Destroy");
        list = LateBound();
    };
    calling.Call("SetList_Nodes", book, false);
    EXPECT_FALSE(list);
    list = calling;
    EXPECT_TRUE(list.Call("Create"));
}

TEST_F(ListViewCallback, TheShippedOneDoesNothing) {
    AddColumns({"Name"});
    const LateBound shipped = CreateRegistered(L"ListCallback");
    list.PutRef("CallbackObject", Ref<IDispatch>(shipped.Get()));
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    EXPECT_THAT(Column(), ElementsAre("", "", ""));
}

TEST_F(ListViewCallback, TheItemHasTheUsualMembers) {
    AddColumns({"Name", "Year"});
    list.Put("Checkboxes", true);
    KeepItem();
    EXPECT_EQ(kept.Get("Key").value, Value("b1"));
    EXPECT_EQ(kept.Get("Index").value, Value(1));
    for (const auto& [member, value] :
         std::vector<std::pair<const char*, Value>>{{"Text", "text"},
                                                    {"Checked", true},
                                                    {"Selected", true},
                                                    {"Ghosted", true},
                                                    {"Bold", true},
                                                    {"ForeColor", 0xFF},
                                                    {"ToolTipText", "tip"},
                                                    {"Tag", "anything"}}) {
        EXPECT_TRUE(kept.Put(member, value)) << member;
        EXPECT_EQ(kept.Get(member).value, value) << member;
    }
    EXPECT_TRUE(kept.Put("SubItems", 1, "sub"));
    EXPECT_EQ(kept.Get("SubItems", 1).value, Value("sub"));
    EXPECT_EQ(kept.Default().value, Value("text"));
    EXPECT_EQ(kept.Call("EnsureVisible").value, Value(false));
    EXPECT_THAT(Row(0), ElementsAre("text", "sub"));
    EXPECT_EQ(CheckBox(0), 2u);
    EXPECT_TRUE(IsSelected(0));
    EXPECT_NE(State(0, LVIS_CUT), 0u);
}

TEST_F(ListViewCallback, TheItemStartsWithoutAnything) {
    AddColumns({"Name", "Year"});
    KeepItem();
    EXPECT_EQ(kept.Get("Text").value, Value(""));
    EXPECT_EQ(kept.Get("SubItems", 1).value, Value(""));
    EXPECT_EQ(kept.Get("Icon").value, Empty());
    EXPECT_EQ(kept.Get("SmallIcon").value, Empty());
    EXPECT_EQ(kept.Get("Checked").value, Value(false));
    EXPECT_EQ(kept.Get("Selected").value, Value(false));
    EXPECT_EQ(kept.Get("Ghosted").value, Value(false));
    EXPECT_EQ(kept.Get("Bold").value, Value(false));
    EXPECT_EQ(kept.Get("ToolTipText").value, Value(""));
    EXPECT_EQ(kept.Get("Tag").value, Empty());
    EXPECT_EQ(kept.Get("ForeColor").value,
              Value(static_cast<long>(SendMessageW(List(), LVM_GETTEXTCOLOR, 0, 0))));
}

TEST_F(ListViewCallback, TheItemRefusesWhatDoesNotExist) {
    AddColumns({"Name", "Year"});
    KeepItem();
    for (const int column : {0, -1, 2, 32767}) {
        EXPECT_EQ(kept.Get("SubItems", column).AutomationNumber(), 35600) << column;
        EXPECT_EQ(kept.Put("SubItems", column, "x").AutomationNumber(), 35600) << column;
    }
    EXPECT_EQ(kept.Put("SmallIcon", "none").AutomationNumber(), 35601);
    EXPECT_EQ(kept.Put("SmallIcon", 1).AutomationNumber(), 35600);
    EXPECT_TRUE(kept.Put("SmallIcon", ""));
    EXPECT_TRUE(kept.Put("SmallIcon", 0));
    EXPECT_TRUE(kept.Put("SmallIcon", Empty()));
    EXPECT_EQ(kept.Put("ForeColor", static_cast<long>(0x80FFFFFF)).AutomationNumber(), 380);
    EXPECT_FALSE(kept.Put("Index", 2).Ok());
}

TEST_F(ListViewCallback, TheItemsKeyCanBeChanged) {
    AddColumns({"Name"});
    KeepItem();
    list.Call("AddNode", graphs);
    EXPECT_EQ(kept.Put("Key", "b2").AutomationNumber(), 35602);
    EXPECT_TRUE(kept.Put("Key", "new"));
    EXPECT_EQ(kept.Get("Key").value, Value("new"));
    EXPECT_TRUE(list.Call("AddNode", trees)) << "the old key is free";
}

TEST_F(ListViewCallback, TheItemsTagHoldsObjects) {
    AddColumns({"Name"});
    KeepItem();
    const auto object = FakeObject::Make("object");
    EXPECT_TRUE(kept.PutRef("Tag", object));
    EXPECT_EQ(kept.Get("Tag").Object().Get(), object.Get());
    EXPECT_TRUE(list.Call("Clear"));
    EXPECT_EQ(kept.Get("Tag").AutomationNumber(), 35601);
}

TEST_F(ListViewCallback, TheItemOfARemovedRowRaises35601) {
    AddColumns({"Name", "Year"});
    list.Call("SetList_Nodes", book, false);
    body = [this](int, const LateBound& item, Arguments&) { kept = item; };
    list.Call("UpdateEntry", trees);
    list.Call("DeleteEntry", trees);
    for (const char* member : {"Text", "Key", "Icon", "SmallIcon", "Checked", "Selected", "Ghosted",
                               "Bold", "ForeColor", "ToolTipText", "Tag", "Index"}) {
        EXPECT_EQ(kept.Get(member).AutomationNumber(), 35601) << member;
    }
    EXPECT_EQ(kept.Call("EnsureVisible").AutomationNumber(), 35601);
    EXPECT_EQ(kept.Get("SubItems", 1).AutomationNumber(), 35601);
}

TEST_F(ListViewCallback, TheItemOutlivesTheControl) {
    AddColumns({"Name"});
    KeepItem();
    list.PutRef("CallbackObject", Nothing());
    list = LateBound();
    EXPECT_EQ(kept.Get("Text").AutomationNumber(), 35601);
    list = CreateRegistered(L"ListView");
}

TEST_F(ListViewCallback, TheItemScrollsToItsRow) {
    AddColumns({"Name"});
    KeepItem();
    for (int i = 0; i < 300; ++i) model.Node(person, std::to_string(i));
    list.Call("SetList_Nodes", person, false);
    EXPECT_EQ(kept.Call("EnsureVisible").value, Value(false));
    SendMessageW(List(), LVM_ENSUREVISIBLE, 300, FALSE);
    EXPECT_EQ(kept.Call("EnsureVisible").value, Value(true));
    EXPECT_EQ(SendMessageW(List(), LVM_GETTOPINDEX, 0, 0), 0);
}

}  // namespace
}  // namespace support
