#include <functional>

#include "lists/list_view_fixture.h"
#include "support/leaks.h"
#include "support/picture_files.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListViewFailure : public ListViewTest {
protected:
    ListViewFailure() { AddColumns({"Name", "V"}); }

    void ExpectNextCallWorks() {
        list.Call("Clear");
        for (FakeNode* node : {trees, graphs, lists}) {
            node->Calm();
            node->values["V"] = "v";
        }
        book->Calm();
        book->extension->Calm();
        book->extension->manners = {};
        EXPECT_TRUE(list.Call("SetList_Nodes", book, false));
        EXPECT_THAT(Column(), ElementsAre("On Trees", "On Graphs", "On Lists"));
        EXPECT_THAT(Column(1), ElementsAre("v", "v", "v"));
    }
};

TEST_F(ListViewFailure, ARepositorysErrorReachesTheCallerAndTheRowsBeforeStay) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    graphs->On("GetProperty")
        .With("V")
        .Fail(Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing",
                                 "Some.Repository"));
    const Outcome filled = list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(filled.AutomationNumber(), 1004);
    EXPECT_EQ(filled.description, "no such thing");
    EXPECT_EQ(filled.source, "Some.Repository");
    EXPECT_THAT(Rows(), ElementsAre(Texts{"On Trees", "v"}, Texts{"On Graphs", ""}))
        << "cells that were filled are shown";
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, AnUnknownPropertyIsTheRepositorysError) {
    EXPECT_EQ(list.Call("SetList_Nodes", book, false).number, FakeElement::noSuchProperty);
    EXPECT_EQ(RowCount(), 1);
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, AMissingMemberIs438) {
    const std::vector<std::pair<const char*, std::function<Outcome()>>> calls = {
        {"MetaNodes", [this] { return list.Call("SetList_MetaNodes", book, false); }},
        {"MetaLinks", [this] { return list.Call("SetList_MetaLinks", book, false); }},
        {"Incoming", [this] { return list.Call("SetList_Incoming_MetaLinks", year, false); }},
        {"Outgoing", [this] { return list.Call("SetList_Outgoing_MetaLinks", year, false); }},
        {"Extension", [this] { return list.Call("SetList_Nodes", trees, false); }},
        {"Extension", [this] { return list.Call("SetList_Links", year, false); }},
        {"Outgoing_", [this] { return list.Call("SetList_Outgoing", book, cites, false); }},
        {"Incoming_", [this] { return list.Call("SetList_Incoming", book, cites, false); }},
        {"Properties", [this] { return list.Call("SetList_MetaAttributes", year, false); }},
        {"identifier", [this] { return list.Call("AddNode", book); }},
        {"identifier", [this] { return list.Call("AddLink", book); }},
        {"name", [this] { return list.Call("AddMetaNode", book->extension); }}};
    for (const auto& [member, call] : calls) {
        const Outcome failed = call();
        EXPECT_EQ(failed.AutomationNumber(), 438) << member;
        EXPECT_EQ(failed.source, "OrvaneControls.ListView");
    }
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(ListViewFailure, NoObjectIs91) {
    for (const Value& none : {Nothing(), Empty()}) {
        for (const char* member : {"SetList_MetaNodes", "SetList_MetaLinks",
                                   "SetList_Incoming_MetaLinks", "SetList_Outgoing_MetaLinks",
                                   "SetList_MetaAttributes", "SetList_Nodes", "SetList_Links"}) {
            EXPECT_EQ(list.Call(member, none, false).AutomationNumber(), 91) << member;
        }
        for (const char* member : {"SetList_Outgoing", "SetList_Incoming"}) {
            EXPECT_EQ(list.Call(member, none, cites, false).AutomationNumber(), 91) << member;
            EXPECT_EQ(list.Call(member, trees, none, false).AutomationNumber(), 91) << member;
        }
        for (const char* member : {"AddMetaNode", "AddNode", "AddLink"}) {
            EXPECT_EQ(list.Call(member, none).AutomationNumber(), 91) << member;
        }
    }
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, WrongArgumentsAreRefused) {
    EXPECT_EQ(list.Call("SetList_Nodes", "text", false).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(list.Call("SetList_Nodes", book).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(list.Call("SetList_Nodes", book, "perhaps").result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(list.Call("AddNode", 5).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(list.Call("AddLinkColumn", "A", "Name", "one", 1).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(list.Call("AddLinkColumn", "A", "Name", 1, 1e12).result, DISP_E_OVERFLOW);
    EXPECT_EQ(list.Put("View", "wide").result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(list.PutRef("selection", 5).result, DISP_E_TYPEMISMATCH);
    EXPECT_FALSE(list.Put("Mode", 1).Ok());
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, CellsThatHaveNoTextAreRefused) {
    const std::vector<std::pair<Value, int>> values = {
        {Null(), 94},
        {ErrorValue(static_cast<HRESULT>(0x800A07FA)), 13},
        {Array({1, 2}), 13},
        {Nothing(), 91}};
    for (const auto& [value, number] : values) {
        list.Call("Clear");
        trees->values["V"] = value;
        EXPECT_EQ(list.Call("SetList_Nodes", book, false).AutomationNumber(), number) << value;
        EXPECT_THAT(Rows(), ElementsAre(Texts{"On Trees", ""})) << value;
    }
    trees->values["V"] = FakeObject::Make("without a default member");
    list.Call("Clear");
    EXPECT_EQ(list.Call("SetList_Nodes", book, false).AutomationNumber(), 438);
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, AKeyThatIsNoTextIsRefused) {
    trees->On("identifier").Answer(Null());
    EXPECT_EQ(list.Call("AddNode", trees).AutomationNumber(), 94);
    trees->On("identifier").Answer(Nothing());
    EXPECT_EQ(list.Call("AddNode", trees).AutomationNumber(), 91);
    trees->On("identifier").Answer(17);
    trees->values["V"] = "v";
    EXPECT_TRUE(list.Call("AddNode", trees)) << "a number has one";
    EXPECT_EQ(RowCount(), 1);
}

TEST_F(ListViewFailure, ADuplicateKeyEndsTheFillingAndKeepsTheRows) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    ASSERT_TRUE(list.Call("AddNode", graphs));
    const Outcome filled = list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(filled.AutomationNumber(), 35602);
    EXPECT_EQ(filled.source, "OrvaneControls.ListView");
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Trees"));
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, ACollectionThatIsNoneIsRefused) {
    book->On("Extension").Answer("a text");
    EXPECT_EQ(list.Call("SetList_Nodes", book, false).AutomationNumber(), 424);
    book->Calm();
    book->On("Extension").Answer(Nothing());
    EXPECT_EQ(list.Call("SetList_Nodes", book, false).AutomationNumber(), 91);
    book->On("Properties").Answer(5);
    EXPECT_EQ(list.Call("SetList_MetaAttributes", book, false).AutomationNumber(), 424);
    EXPECT_EQ(list.Call("SetList_Nodes", book, true).AutomationNumber(), 424);
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, AnElementThatIsNoObjectIsRefused) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    book->extension->Add("odd", 17);
    EXPECT_EQ(list.Call("SetList_Nodes", book, false).AutomationNumber(), 424);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(ListViewFailure, AnEndOfALinkThatIsNoneIs91) {
    list.Call("AddLinkColumn", "From", "Name", 0, 100);
    first->values["V"] = "v";
    first->On("source").Answer(Nothing());
    EXPECT_EQ(list.Call("AddLink", first).AutomationNumber(), 91);
}

TEST_F(ListViewFailure, ACollectionThatDiesInTheMiddleFails) {
    book->extension->manners.failsAt = 1;
    EXPECT_EQ(list.Call("SetList_Nodes", book, false).number, RPC_E_DISCONNECTED);
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, ARowsObjectThatDiesFailsAndLeavesItsRow) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    graphs->On("GetProperty").Run([this] { graphs->Disconnect(); });
    EXPECT_EQ(list.Call("UpdateEntry", graphs).number, RPC_E_DISCONNECTED);
    EXPECT_EQ(Row(1), (Texts{"On Graphs", "v"}));
    EXPECT_EQ(list.Call("DeleteEntry", graphs).number, RPC_E_DISCONNECTED);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(ListViewFailure, ARepositoryMayClearTheListWhileItIsFilled) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    graphs->On("GetProperty").Times(1).Run([this] { list.Call("Clear"); });
    EXPECT_EQ(list.Call("SetList_Nodes", book, false).AutomationNumber(), 35601)
        << "the row that was being filled is gone";
    EXPECT_EQ(RowCount(), 0);
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, ARepositoryMayMakeAnotherListMeanwhile) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    trees->On("GetProperty").Times(1).Run([this] {
        list.Call("SetList_MetaNodes", model.Root(), true);
    });
    list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(list.Get("Mode").value, Value(0)) << "the last one that began";
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, ARepositoryMayLetGoOfTheControlWhileItIsFilled) {
    IDispatch* control = list.Get();
    graphs->On("GetProperty").Run([this] { list = LateBound(); });
    trees->values["V"] = "v";
    {
        const LateBound calling(control);
        calling.Call("SetList_Nodes", book, false);
    }
    EXPECT_FALSE(list);
    list = CreateRegistered(L"ListView");
}

TEST_F(ListViewFailure, ARepositoryMayDestroyTheListWhileItIsFilled) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    graphs->On("GetProperty").Times(1).Run([this] {
        list.Call("Destroy");
        list.Call("Create");
    });
    list.Call("SetList_Nodes", book, false);
    list.Call("Create");
    AddColumns({"Name", "V"});
    ExpectNextCallWorks();
}

TEST_F(ListViewFailure, AHostMayDestroyTheWindowThatTheListLivesIn) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    list.Put("View", 1);
    list.Put("Checkboxes", true);
    list.Put("dropAllowed", true);
    list.Call("AddIconPicture", "red", PictureObject(BitmapFile(16, 16, 0xFF0000)));
    list.Call("SetList_Nodes", book, false);
    list.Call("CheckAll");
    Select(1);
    DestroyWindow(GetParent(List()));
    const HWND again = List();
    ASSERT_NE(again, nullptr);
    EXPECT_THAT(Headers(), ElementsAre("Name", "V"));
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Graphs", "On Lists"));
    EXPECT_EQ(CheckBox(2), 2u);
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
    EXPECT_EQ(Image(0), 0);
    EXPECT_NE(SendMessageW(again, LVM_GETIMAGELIST, LVSIL_SMALL, 0), 0);
    EXPECT_EQ(GetWindowLongW(again, GWL_STYLE) & LVS_TYPEMASK, LVS_SMALLICON);
    EXPECT_NE(GetPropW(again, L"OleDropTargetInterface"), nullptr);
    EXPECT_TRUE(list.Call("DeleteEntry", trees));
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(ListViewFailure, ATagThatCallsBackFindsTheListWithoutItsRow) {
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    const auto callback = FakeObject::Make("callback");
    callback->Function("ViewNode", [](Arguments& arguments) -> Value {
        LateBound(arguments.Object(2)).PutRef("Tag", arguments.Object(3));
        return {};
    });
    list.PutRef("CallbackObject", callback);
    ASSERT_TRUE(list.Call("AddNode", trees));
    list.PutRef("CallbackObject", Nothing());
    EXPECT_TRUE(list.Call("Clear"));
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(list.Call("AddNode", trees));
}

TEST_F(ListViewFailure, NothingStaysBehind) {
    const Server server;
    model.Log().enabled = false;
    for (FakeNode* node : {trees, graphs, lists}) node->values["V"] = "v";
    const auto picture = PictureObject(BitmapFile(16, 16, 0xFF0000));
    ExpectNoLeaks(
        [&] {
            const LateBound control = CreateRegistered(L"ListView");
            control.Call("Create");
            control.Put("Checkboxes", true);
            control.Put("dropAllowed", true);
            control.Call("AddColumn", "Name", "Name", "1000");
            control.Call("AddIconPicture", "red", picture);
            control.Call("SetList_Nodes", book, true);
            control.Call("SelectAll");
            control.Call("GetSelectedItems");
            control.Call("DeleteEntry", trees);
            control.Call("SetList_Nodes", Nothing(), true);
            control.Call("Destroy");
        },
        &server);
}

}  // namespace
}  // namespace support
