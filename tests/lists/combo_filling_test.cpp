#include "lists/combo_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ComboFilling : public ComboTest {
protected:
    FakeMetaNode* book = model.MetaNode("Book", "printed");
    FakeMetaNode* person = model.MetaNode("Person", "alive");
    FakeMetaLink* wrote = model.MetaLink("wrote", person, book);
    FakeMetaLink* cites = model.MetaLink("cites", book, book);
    FakeNode* knuth = model.Node(person, "p1", "Knuth");
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    FakeNode* graphs = model.Node(book, "b2", "On Graphs");
    FakeLink* first = model.Link(wrote, knuth, trees, "w1", "first");
    FakeLink* second = model.Link(wrote, knuth, graphs, "w2", "second");
};

TEST_F(ComboFilling, MetaNodesAreListedWithoutTheThreeBuiltInMetaTypes) {
    ASSERT_TRUE(combo.Call("SetList_MetaNodes", model.Root(), "Name"));
    EXPECT_THAT(Rows(), ElementsAre("Book", "Person"));
    EXPECT_THAT(Numbers(), ElementsAre(0, 1));
}

TEST_F(ComboFilling, BuiltInMetaTypesAreToldByExactName) {
    model.MetaNode("metanode");
    model.MetaNode("METALINK");
    model.MetaNode("MetaPropertyOfMine");
    combo.Call("SetList_MetaNodes", model.Root(), "Name");
    EXPECT_THAT(Rows(),
                ElementsAre("Book", "Person", "metanode", "METALINK", "MetaPropertyOfMine"));
}

TEST_F(ComboFilling, MetaNodesAreReadByNameAndThenByTheShownProperty) {
    model.Log().Clear();
    combo.Call("SetList_MetaNodes", model.Root(), "Description");
    EXPECT_THAT(Rows(), ElementsAre("printed", "alive"));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("rep.MetaNodes", "MetaNode.name", "MetaLink.name", "MetaProperty.name",
                            "Book.name", "Book.GetProperty(\"Description\")", "Person.name",
                            "Person.GetProperty(\"Description\")"));
}

TEST_F(ComboFilling, MetaLinksAreListedWithoutAFilter) {
    model.MetaLink("MetaNode", book, book);
    model.Log().Clear();
    ASSERT_TRUE(combo.Call("SetList_MetaLinks", model.Root(), "Name"));
    EXPECT_THAT(Rows(), ElementsAre("wrote", "cites", "MetaNode"));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("rep.MetaLinks", "wrote.GetProperty(\"Name\")",
                            "cites.GetProperty(\"Name\")", "MetaNode.GetProperty(\"Name\")"));
}

TEST_F(ComboFilling, MetaPropertiesAreShownByNameWithoutTheShownProperty) {
    model.MetaProperty(book, "Year", "Long");
    model.MetaProperty(book, "Isbn");
    model.Log().Clear();
    ASSERT_TRUE(combo.Call("SetList_MetaProperties", book));
    EXPECT_THAT(Rows(), ElementsAre("Year", "Isbn"));
    EXPECT_THAT(model.Log().Take(), ElementsAre("Book.Properties", "Year.name", "Isbn.name"));
}

TEST_F(ComboFilling, NodesOfAMetaNodeAreListed) {
    model.Log().Clear();
    ASSERT_TRUE(combo.Call("SetList_Nodes", book, "Name"));
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs"));
    EXPECT_THAT(model.Log().Take(), ElementsAre("Book.Extension", "b1.GetProperty(\"Name\")",
                                                "b2.GetProperty(\"Name\")"));
}

TEST_F(ComboFilling, LinksShowTheTargetForTheSourceEndToo) {
    model.Log().Clear();
    ASSERT_TRUE(combo.Call("SetList_Links", wrote, "Name", 0));
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs"));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("wrote.Extension", "w1.Target", "b1.GetProperty(\"Name\")", "w2.Target",
                            "b2.GetProperty(\"Name\")"));
}

TEST_F(ComboFilling, LinksShowTheirTarget) {
    combo.Call("SetList_Links", wrote, "Name", 2);
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs"));
}

TEST_F(ComboFilling, LinksShowThemselves) {
    model.Log().Clear();
    combo.Call("SetList_Links", wrote, "Name", 1);
    EXPECT_THAT(Rows(), ElementsAre("first", "second"));
    EXPECT_THAT(model.Log().Take(), ElementsAre("wrote.Extension", "w1.GetProperty(\"Name\")",
                                                "w2.GetProperty(\"Name\")"));
}

TEST_F(ComboFilling, AnotherEndShowsNoRowsButNumbersTheNewestRowAgain) {
    combo.Call("SetList_Nodes", person, "Name");
    ASSERT_TRUE(combo.Call("SetList_Links", wrote, "Name", 3));
    EXPECT_THAT(Rows(), ElementsAre("Knuth"));
    EXPECT_THAT(Numbers(), ElementsAre(1));
    Pick(0);
    EXPECT_EQ(Selection().Get(), second);
}

TEST_F(ComboFilling, AnotherEndInAnEmptyBoxShowsNothing) {
    ASSERT_TRUE(combo.Call("SetList_Links", wrote, "Name", -7));
    EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(ComboFilling, OutgoingLinksAreAskedForByTheMetaLinksNameReadOnce) {
    model.Log().Clear();
    ASSERT_TRUE(combo.Call("SetList_Outgoing", knuth, wrote, "Name", 2));
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs"));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("wrote.name", "p1.Outgoing_(\"wrote\")", "w1.Target",
                            "b1.GetProperty(\"Name\")", "w2.Target", "b2.GetProperty(\"Name\")"));
}

TEST_F(ComboFilling, IncomingLinksAreAskedForByTheMetaLinksName) {
    model.Log().Clear();
    ASSERT_TRUE(combo.Call("SetList_Incoming", graphs, wrote, "Name", 1));
    EXPECT_THAT(Rows(), ElementsAre("second"));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("wrote.name", "b2.Incoming_(\"wrote\")", "w2.GetProperty(\"Name\")"));
}

TEST_F(ComboFilling, IncomingListIsRebuiltAsOutgoingListByRefresh) {
    model.Link(cites, trees, graphs, "c1", "cites graphs");
    model.Link(cites, graphs, trees, "c2", "cites trees");
    combo.Call("SetList_Incoming", trees, cites, "Name", 1);
    EXPECT_THAT(Rows(), ElementsAre("cites trees"));
    model.Log().Clear();
    ASSERT_TRUE(combo.Call("Refresh"));
    EXPECT_THAT(Rows(), ElementsAre("cites graphs"));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("cites.name", "b1.Outgoing_(\"cites\")", "c1.GetProperty(\"Name\")"));
}

TEST_F(ComboFilling, RefreshRereadsEachKindOfList) {
    combo.Call("SetList_MetaNodes", model.Root(), "Name");
    model.MetaNode("Late");
    combo.Call("Refresh");
    EXPECT_THAT(Rows(), ElementsAre("Book", "Person", "Late"));

    combo.Call("Clear");
    combo.Call("SetList_MetaLinks", model.Root(), "Name");
    model.MetaLink("lateLink", book, book);
    combo.Call("Refresh");
    EXPECT_THAT(Rows(), ElementsAre("wrote", "cites", "lateLink"));

    combo.Call("Clear");
    combo.Call("SetList_Nodes", book, "Name");
    model.Node(book, "b3", "Late Book");
    combo.Call("Refresh");
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs", "Late Book"));

    combo.Call("Clear");
    combo.Call("SetList_Links", wrote, "Name", 1);
    model.Link(wrote, knuth, trees, "w3", "third");
    combo.Call("Refresh");
    EXPECT_THAT(Rows(), ElementsAre("first", "second", "third"));

    combo.Call("Clear");
    combo.Call("SetList_Outgoing", knuth, wrote, "Name", 1);
    model.Link(wrote, knuth, trees, "w4", "fourth");
    combo.Call("Refresh");
    EXPECT_THAT(Rows(), ElementsAre("first", "second", "third", "fourth"));

    combo.Call("Clear");
    combo.Call("SetList_MetaProperties", book);
    model.MetaProperty(book, "Year");
    combo.Call("Refresh");
    EXPECT_THAT(Rows(), ElementsAre("Year"));
}

TEST_F(ComboFilling, RefreshKeepsTheEndThatLinksShow) {
    combo.Call("SetList_Links", wrote, "Name", 1);
    combo.Call("Refresh");
    EXPECT_THAT(Rows(), ElementsAre("first", "second"));
}

TEST_F(ComboFilling, RefreshDoesNotRestoreTheCurrentRow) {
    combo.Call("SetList_Nodes", book, "Name");
    Pick(1);
    ASSERT_EQ(CurrentRow(), 1);
    combo.Call("Refresh");
    EXPECT_EQ(CurrentRow(), -1);
    EXPECT_EQ(Selection().Get(), nullptr);
}

TEST_F(ComboFilling, RowsSurviveASecondListAndCarryNumbersOfTheNewOne) {
    combo.Call("SetList_Nodes", book, "Name");
    ASSERT_TRUE(combo.Call("SetList_Nodes", person, "Name"));
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs", "Knuth"));
    EXPECT_THAT(Numbers(), ElementsAre(0, 1, 0));
    Pick(0);
    EXPECT_EQ(Selection().Get(), knuth);
    Pick(1);
    EXPECT_EQ(combo.Get("selection").AutomationNumber(), 5);
}

TEST_F(ComboFilling, RowsKeepTheOrderOfTheCollection) {
    model.Node(book, "b0", "Aardvarks");
    combo.Call("SetList_Nodes", book, "Name");
    EXPECT_THAT(Rows(), ElementsAre("On Trees", "On Graphs", "Aardvarks"));
}

TEST_F(ComboFilling, ClearEmptiesTheBoxAndLetsGoOfTheObjects) {
    combo.Call("SetList_Nodes", book, "Name");
    ASSERT_TRUE(combo.Call("Clear"));
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(Selection().Get(), nullptr);
    const Outcome refreshed = combo.Call("Refresh");
    EXPECT_EQ(refreshed.AutomationNumber(), 91);
    EXPECT_EQ(refreshed.source, "OrvaneControls.Combo");
}

TEST_F(ComboFilling, ClearKeepsTheKindOfList) {
    combo.Call("SetList_MetaProperties", book);
    combo.Call("Clear");
    model.Log().Clear();
    EXPECT_EQ(combo.Call("Refresh").AutomationNumber(), 91);
    // The key of a click tells that it is still a list of meta properties.
    combo.Call("SetList_MetaProperties", book);
    EXPECT_THAT(model.Log().Take(), ElementsAre("Book.Properties"));
}

TEST_F(ComboFilling, CreateAndDestroyOnlyClear) {
    for (const char* member : {"Create", "Destroy"}) {
        combo.Call("SetList_Nodes", book, "Name");
        ASSERT_TRUE(combo.Call(member));
        EXPECT_THAT(Rows(), IsEmpty()) << member;
        EXPECT_EQ(combo.Call("Refresh").AutomationNumber(), 91) << member;
    }
}

TEST_F(ComboFilling, RefreshOfANewControlAsksNoObjectForItsMetaNodes) {
    EXPECT_EQ(combo.Call("Refresh").AutomationNumber(), 91);
}

TEST_F(ComboFilling, TextsAreUnicode) {
    model.Node(book, "b3", "Ünïcödé \u4e66 \U0001F4D6");
    combo.Call("SetList_Nodes", book, "Name");
    EXPECT_EQ(Rows().back(), "Ünïcödé \u4e66 \U0001F4D6");
}

TEST_F(ComboFilling, ValuesBecomeTextsByTheAutomationRules) {
    trees->values["V"] = 42;
    graphs->values["V"] = true;
    combo.Call("SetList_Nodes", book, "V");
    EXPECT_THAT(Rows(), ElementsAre("42", "True"));
}

TEST_F(ComboFilling, EmptyValuesAreEmptyTexts) {
    trees->values["V"] = Empty();
    graphs->values["V"] = NullText();
    combo.Call("SetList_Nodes", book, "V");
    EXPECT_THAT(Rows(), ElementsAre("", ""));
}

TEST_F(ComboFilling, LinkListsShowErrorValuesAsText) {
    trees->values["V"] = ErrorValue(static_cast<HRESULT>(0x800A07FA));
    graphs->values["V"] = "fine";
    for (const int end : {0, 2}) {
        combo.Call("Clear");
        ASSERT_TRUE(combo.Call("SetList_Links", wrote, "V", end));
        EXPECT_THAT(Rows(), ElementsAre("Error 2042", "fine"));
    }
    first->values["V"] = ErrorValue(static_cast<HRESULT>(0x800A07FA));
    second->values["V"] = 1;
    combo.Call("Clear");
    ASSERT_TRUE(combo.Call("SetList_Outgoing", knuth, wrote, "V", 1));
    EXPECT_THAT(Rows(), ElementsAre("Error 2042", "1"));
    combo.Call("Clear");
    ASSERT_TRUE(combo.Call("SetList_Incoming", trees, wrote, "V", 1));
    EXPECT_THAT(Rows(), ElementsAre("Error 2042"));
}

TEST_F(ComboFilling, OtherListsFailForErrorValues) {
    trees->values["V"] = ErrorValue(static_cast<HRESULT>(0x800A07FA));
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "V").AutomationNumber(), 13);
}

TEST_F(ComboFilling, ListsAnswerAnEmptyVariant) {
    EXPECT_EQ(combo.Call("SetList_MetaNodes", model.Root(), "Name").value, Empty());
    EXPECT_EQ(combo.Call("SetList_MetaLinks", model.Root(), "Name").value, Empty());
    EXPECT_EQ(combo.Call("SetList_MetaProperties", book).value, Empty());
    EXPECT_EQ(combo.Call("SetList_Nodes", book, "Name").value, Empty());
    EXPECT_EQ(combo.Call("SetList_Links", wrote, "Name", 1).value, Empty());
    EXPECT_EQ(combo.Call("SetList_Outgoing", knuth, wrote, "Name", 1).value, Empty());
    EXPECT_EQ(combo.Call("SetList_Incoming", trees, wrote, "Name", 1).value, Empty());
    EXPECT_EQ(combo.Call("SetBackGroundColor", 255).value, Empty());
}

TEST_F(ComboFilling, ManyRowsKeepTheirNumbers) {
    model.Log().enabled = false;
    FakeMetaNode* many = model.MetaNode("Many");
    for (int i = 0; i < 2000; ++i) model.Node(many, "n" + std::to_string(i));
    combo.Call("SetList_Nodes", many, "Name");
    EXPECT_EQ(Rows().size(), 2000u);
    EXPECT_EQ(Numbers().back(), 1999);
}

}  // namespace
}  // namespace support
