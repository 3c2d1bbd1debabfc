#include "lists/combo_fixture.h"
#include "support/event_recorder.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ComboSelection : public ComboTest {
protected:
    FakeMetaNode* book = model.MetaNode("Book");
    FakeMetaLink* cites = model.MetaLink("cites", book, book);
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    FakeNode* graphs = model.Node(book, "b2", "On Graphs");
    FakeLink* link = model.Link(cites, trees, graphs, "c1", "citation");
    EventRecorder events{combo.Get()};
};

TEST_F(ComboSelection, NothingIsSelectedInANewList) {
    combo.Call("SetList_Nodes", book, "Name");
    EXPECT_EQ(combo.Get("selection").value, Nothing());
}

TEST_F(ComboSelection, SelectionIsTheObjectOfTheCurrentRow) {
    combo.Call("SetList_Nodes", book, "Name");
    Pick(1);
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ComboSelection, SelectionFollowsTheRowsNumberAndNotItsPosition) {
    combo.Call("SetList_Nodes", book, "Name");
    SendMessageW(Box(), CB_SETITEMDATA, 0, 1);
    Pick(0);
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ComboSelection, ARowWhoseNumberHasNoObjectHasNoSelection) {
    combo.Call("SetList_Nodes", book, "Name");
    SendMessageW(Box(), CB_SETITEMDATA, 0, 99);
    Pick(0);
    const Outcome selection = combo.Get("selection");
    EXPECT_EQ(selection.AutomationNumber(), 5);
    EXPECT_EQ(selection.source, "OrvaneControls.Combo");
}

TEST_F(ComboSelection, SettingComparesIdentifiersOfNodes) {
    combo.Call("SetList_Nodes", book, "Name");
    model.Log().Clear();
    ASSERT_TRUE(combo.PutRef("selection", graphs));
    EXPECT_EQ(CurrentRow(), 1);
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier", "b2.identifier", "b2.identifier",
                                                "b2.identifier", "b2.identifier"));
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b2\")"));
}

TEST_F(ComboSelection, SettingComparesNamesOfMetaNodesAndMetaLinks) {
    model.MetaNode("Person");
    combo.Call("SetList_MetaNodes", model.Root(), "Name");
    model.Log().Clear();
    ASSERT_TRUE(combo.Put("selection", book));
    EXPECT_EQ(CurrentRow(), 0);
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("Book.name", "Book.name", "Book.name", "Person.name", "Book.name"));
    combo.Call("Clear");
    combo.Call("SetList_MetaLinks", model.Root(), "Name");
    ASSERT_TRUE(combo.Put("selection", cites));
    EXPECT_EQ(CurrentRow(), 0);
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"Book\")", "Click(\"cites\")"));
}

TEST_F(ComboSelection, SettingComparesIdentifiersOfMetaPropertiesToo) {
    FakeMetaProperty* year = model.MetaProperty(book, "Year");
    combo.Call("SetList_MetaProperties", book);
    const Outcome set = combo.PutRef("selection", year);
    EXPECT_EQ(set.AutomationNumber(), 438) << "meta properties have no identifier";
    year->Constant("identifier", "y1");
    EXPECT_TRUE(combo.PutRef("selection", year));
    EXPECT_EQ(CurrentRow(), 0);
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"Year\")"));
}

TEST_F(ComboSelection, SettingSelectsEachMatchingRowAndRaisesClickForEach) {
    combo.Call("SetList_Nodes", book, "Name");
    FakeNode* twin = model.Node(book, "b1", "Twin");
    combo.Call("Refresh");
    ASSERT_TRUE(combo.PutRef("selection", trees));
    EXPECT_EQ(CurrentRow(), 2);
    EXPECT_EQ(Selection().Get(), twin);
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b1\")", "Click(\"b1\")"));
}

TEST_F(ComboSelection, SettingTheCurrentRowAgainRaisesClickAgain) {
    combo.Call("SetList_Nodes", book, "Name");
    combo.PutRef("selection", graphs);
    combo.PutRef("selection", graphs);
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b2\")", "Click(\"b2\")"));
}

TEST_F(ComboSelection, SettingAnObjectThatIsNotListedChangesNothing) {
    combo.Call("SetList_Nodes", book, "Name");
    Pick(1);
    events.Take();
    FakeNode* stranger = model.Node(model.MetaNode("Other"), "x", "Other");
    ASSERT_TRUE(combo.PutRef("selection", stranger));
    EXPECT_EQ(CurrentRow(), 1);
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ComboSelection, IdentifiersAreComparedAsVariants) {
    combo.Call("SetList_Nodes", book, "Name");
    const Ref<FakeObject> numbered = FakeObject::Make("numbered");
    numbered->Constant("identifier", "b2");
    ASSERT_TRUE(combo.PutRef("selection", numbered));
    EXPECT_EQ(CurrentRow(), 1);
    numbered->Constant("identifier", "B1");
    ASSERT_TRUE(combo.PutRef("selection", numbered));
    EXPECT_EQ(CurrentRow(), 1) << "texts are compared with case";
}

TEST_F(ComboSelection, SettingNothingFailsInAListWithRowsOnly) {
    EXPECT_TRUE(combo.PutRef("selection", Nothing()));
    combo.Call("SetList_Nodes", book, "Name");
    EXPECT_EQ(combo.PutRef("selection", Nothing()).AutomationNumber(), 91);
}

TEST_F(ComboSelection, ClickCarriesNamesOfMetaObjectsAndIdentifiersOfOthers) {
    model.MetaProperty(book, "Year");
    combo.Call("SetList_MetaNodes", model.Root(), "Description");
    Pick(0);
    combo.Call("Clear");
    combo.Call("SetList_MetaLinks", model.Root(), "Description");
    Pick(0);
    combo.Call("Clear");
    combo.Call("SetList_MetaProperties", book);
    Pick(0);
    combo.Call("Clear");
    combo.Call("SetList_Nodes", book, "Name");
    Pick(0);
    combo.Call("Clear");
    combo.Call("SetList_Links", cites, "Name", 1);
    Pick(0);
    combo.Call("Clear");
    combo.Call("SetList_Outgoing", trees, cites, "Name", 1);
    Pick(0);
    combo.Call("Clear");
    combo.Call("SetList_Incoming", graphs, cites, "Name", 1);
    Pick(0);
    EXPECT_THAT(events.Take(),
                ElementsAre("Click(\"Book\")", "Click(\"cites\")", "Click(\"Year\")",
                            "Click(\"b1\")", "Click(\"c1\")", "Click(\"c1\")", "Click(\"c1\")"));
}

TEST_F(ComboSelection, ChangeIsSilentForMetaNodesAndMetaLinks) {
    combo.Call("SetList_MetaNodes", model.Root(), "Name");
    Type("Book");
    EXPECT_EQ(Selection().Get(), book);
    combo.Call("Clear");
    combo.Call("SetList_MetaLinks", model.Root(), "Name");
    Type("cites");
    EXPECT_EQ(Selection().Get(), cites);
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ComboSelection, ChangeCarriesTheNameWhereClickCarriesTheIdentifier) {
    combo.Call("SetList_Nodes", book, "Name");
    Type("On Graphs");
    EXPECT_EQ(Selection().Get(), graphs);
    EXPECT_THAT(events.Take(), ElementsAre("Change(\"On Graphs\")"));
    combo.Call("Clear");
    combo.Call("SetList_Links", cites, "Name", 1);
    Type("citation");
    combo.Call("Clear");
    model.MetaProperty(book, "Year");
    combo.Call("SetList_MetaProperties", book);
    Type("Year");
    EXPECT_THAT(events.Take(), ElementsAre("Change(\"citation\")", "Change(\"Year\")"));
}

TEST_F(ComboSelection, TypingATextOfNoRowLeavesNoCurrentRowAndRaisesNothing) {
    combo.Call("SetList_Nodes", book, "Name");
    Pick(0);
    events.Take();
    Type("On Tree");
    EXPECT_EQ(combo.Get("selection").value, Nothing());
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ComboSelection, TypedTextsMatchRowsExactly) {
    model.Node(book, "b3", "on trees");
    combo.Call("SetList_Nodes", book, "Name");
    Type("on trees");
    EXPECT_THAT(events.Take(), ElementsAre("Change(\"on trees\")"));
    Type("ON TREES");
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ComboSelection, ClearingPickingAndSelectingRaiseNoChange) {
    combo.Call("SetList_Nodes", book, "Name");
    Pick(0);
    Pick(1);
    combo.PutRef("selection", trees);
    combo.Call("Clear");
    EXPECT_EQ(events.Count("Change"), 0u);
}

TEST_F(ComboSelection, AClickWithoutACurrentRowRaisesNothing) {
    combo.Call("SetList_Nodes", book, "Name");
    const HWND box = Box();
    SendMessageW(GetParent(box), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
    EXPECT_THAT(events.Take(), IsEmpty());
    EXPECT_TRUE(combo.Call("Refresh"));
}

TEST_F(ComboSelection, AnObjectThatFailsInAClickOfTheUsersRaisesNothing) {
    combo.Call("SetList_Nodes", book, "Name");
    graphs->On("identifier").Fail(Failure::Exception(static_cast<HRESULT>(0x800A0046)));
    Pick(1);
    EXPECT_THAT(events.Take(), IsEmpty());
    EXPECT_EQ(Selection().Get(), graphs);
}

TEST_F(ComboSelection, TheHostMayRefillTheListInAClick) {
    combo.Call("SetList_Nodes", book, "Name");
    events.On("Click").Times(1).Run([&] {
        combo.Call("Clear");
        combo.Call("SetList_MetaNodes", model.Root(), "Name");
    });
    ASSERT_TRUE(combo.PutRef("selection", trees));
    EXPECT_THAT(Rows(), ElementsAre("Book"));
}

TEST_F(ComboSelection, TheHostMayLetGoOfTheControlInAClick) {
    combo.Call("SetList_Nodes", book, "Name");
    events.On("Click").Run([&] {
        events.Disconnect();
        combo = LateBound();
    });
    const HWND box = Box();
    Pick(1);
    EXPECT_FALSE(IsWindow(box));
    combo = LateBound();
}

TEST_F(ComboSelection, ASinkThatFailsIsIgnored) {
    combo.Call("SetList_Nodes", book, "Name");
    events.On("Click").Fail(Failure::Exception(static_cast<HRESULT>(0x800A0005)));
    EXPECT_TRUE(combo.PutRef("selection", trees));
    EXPECT_EQ(events.Count("Click"), 1u);
}

}  // namespace
}  // namespace support
