#include "lists/list_view_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListViewFilling : public ListViewTest {
protected:
    [[nodiscard]] Value Mode() const { return list.Get("Mode").value; }
};

TEST_F(ListViewFilling, MetaNodesAreListedWithoutTheBuiltInOnes) {
    EXPECT_EQ(list.Call("SetList_MetaNodes", model.Root(), true).value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("Name", "Description"));
    EXPECT_THAT(Widths(), ElementsAre(67, 67));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"Book", "what is read"}, Texts{"Person", "who reads"}));
    EXPECT_EQ(Mode(), Value(0));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("rep.MetaNodes", "MetaNode.name", "MetaLink.name", "MetaProperty.name",
                            "Book.name", "Book.name", "Book.GetProperty(\"Name\")",
                            "Book.GetProperty(\"Description\")", "Person.name", "Person.name",
                            "Person.GetProperty(\"Name\")", "Person.GetProperty(\"Description\")"));
}

TEST_F(ListViewFilling, OnlyTheExactNamesAreBuiltIn) {
    for (const char* name : {"metanode", "MetaNodes", "MetaType", "MetaAttribute"}) {
        model.MetaNode(name);
    }
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), false));
    EXPECT_THAT(Column(), ElementsAre("Book", "Person", "metanode", "MetaNodes", "MetaType",
                                      "MetaAttribute"));
}

TEST_F(ListViewFilling, MetaLinksAreListed) {
    EXPECT_EQ(list.Call("SetList_MetaLinks", model.Root(), true).value, Empty());
    EXPECT_THAT(Headers(),
                ElementsAre("Name", "Description", "SourceName", "LinkName", "TargetName"));
    EXPECT_THAT(Widths(), ElementsAre(67, 67, 67, 67, 67));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"cites", "", "Book", "cites", "Book"},
                                    Texts{"wrote", "", "Person", "wrote", "Book"}));
    EXPECT_EQ(Mode(), Value(1));
    EXPECT_THAT(
        model.Log().Take(),
        ElementsAre("rep.MetaLinks", "cites.name", "cites.GetProperty(\"Name\")",
                    "cites.GetProperty(\"Description\")", "cites.GetProperty(\"SourceName\")",
                    "cites.GetProperty(\"LinkName\")", "cites.GetProperty(\"TargetName\")",
                    "wrote.name", "wrote.GetProperty(\"Name\")",
                    "wrote.GetProperty(\"Description\")", "wrote.GetProperty(\"SourceName\")",
                    "wrote.GetProperty(\"LinkName\")", "wrote.GetProperty(\"TargetName\")"));
}

TEST_F(ListViewFilling, IncomingMetaLinksHaveAHeaderOfTheirOwnSpelling) {
    cites->description = "what it builds on";
    EXPECT_EQ(list.Call("SetList_Incoming_MetaLinks", book, true).value, Empty());
    EXPECT_THAT(Headers(),
                ElementsAre("Name", "Desription", "SourceName", "LinkName", "TargetName"));
    EXPECT_THAT(Widths(), ElementsAre(67, 67, 67, 67, 67));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"cites", "what it builds on", "Book", "cites", "Book"},
                                    Texts{"wrote", "", "Person", "wrote", "Book"}));
    EXPECT_EQ(Mode(), Value(3));
    EXPECT_EQ(model.Log().Calls().front(), "Book.Incoming");
    EXPECT_EQ(model.Log().Count("GetProperty"), 10u);
}

TEST_F(ListViewFilling, OutgoingMetaLinksHaveAnotherOne) {
    cites->description = "what it builds on";
    EXPECT_EQ(list.Call("SetList_Outgoing_MetaLinks", book, true).value, Empty());
    EXPECT_THAT(Headers(),
                ElementsAre("Name", "Descriptio", "SourceName", "LinkName", "TargetName"));
    EXPECT_THAT(Widths(), ElementsAre(67, 67, 67, 67, 67));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"cites", "what it builds on", "Book", "cites", "Book"}));
    EXPECT_EQ(Mode(), Value(2));
    EXPECT_THAT(
        model.Log().Take(),
        ElementsAre("Book.Outgoing", "cites.name", "cites.GetProperty(\"Name\")",
                    "cites.GetProperty(\"Description\")", "cites.GetProperty(\"SourceName\")",
                    "cites.GetProperty(\"LinkName\")", "cites.GetProperty(\"TargetName\")"));
}

TEST_F(ListViewFilling, MetaAttributesAreListed) {
    EXPECT_EQ(list.Call("SetList_MetaAttributes", book, true).value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("Name", "Description", "DataType"));
    EXPECT_THAT(Widths(), ElementsAre(67, 67, 67));
    EXPECT_THAT(Rows(),
                ElementsAre(Texts{"Year", "of printing", "Long"}, Texts{"Shelf", "", "String"}));
    EXPECT_EQ(Mode(), Value(8));
    EXPECT_THAT(
        model.Log().Take(),
        ElementsAre("Book.Properties", "Year.name", "Year.GetProperty(\"Name\")",
                    "Year.GetProperty(\"Description\")", "Year.GetProperty(\"DataType\")",
                    "Shelf.name", "Shelf.GetProperty(\"Name\")",
                    "Shelf.GetProperty(\"Description\")", "Shelf.GetProperty(\"DataType\")"));
}

TEST_F(ListViewFilling, NodesHaveAColumnForEachMetaProperty) {
    EXPECT_EQ(list.Call("SetList_Nodes", book, true).value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("Year", "Shelf"));
    EXPECT_THAT(Widths(), ElementsAre(67, 67));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"1968", "A1"}, Texts{"1736", "B2"}, Texts{"2001", "C3"}));
    EXPECT_EQ(Mode(), Value(4));
    EXPECT_THAT(
        model.Log().Take(),
        ElementsAre("Book.Properties", "Year.name", "Shelf.name", "Book.Extension", "b1.identifier",
                    "b1.GetProperty(\"Year\")", "b1.GetProperty(\"Shelf\")", "b2.identifier",
                    "b2.GetProperty(\"Year\")", "b2.GetProperty(\"Shelf\")", "b3.identifier",
                    "b3.GetProperty(\"Year\")", "b3.GetProperty(\"Shelf\")"));
}

TEST_F(ListViewFilling, LinksHaveALinkColumnForEachMetaProperty) {
    EXPECT_EQ(list.Call("SetList_Links", cites, true).value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("Page"));
    EXPECT_THAT(Widths(), ElementsAre(67));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"7"}, Texts{"12"}));
    EXPECT_EQ(Mode(), Value(5));
    EXPECT_THAT(model.Log().Take(), ElementsAre("cites.Properties", "Page.name", "cites.Extension",
                                                "c1.identifier", "c1.GetProperty(\"Page\")",
                                                "c2.identifier", "c2.GetProperty(\"Page\")"));
}

TEST_F(ListViewFilling, OutgoingLinksOfANodeAreListed) {
    EXPECT_EQ(list.Call("SetList_Outgoing", trees, cites, true).value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("Page"));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"7"}, Texts{"12"}));
    EXPECT_EQ(Mode(), Value(6));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("cites.Properties", "Page.name", "cites.name",
                            "b1.Outgoing_(\"cites\")", "c1.identifier", "c1.GetProperty(\"Page\")",
                            "c2.identifier", "c2.GetProperty(\"Page\")"));
}

TEST_F(ListViewFilling, IncomingLinksOfANodeAreListed) {
    EXPECT_EQ(list.Call("SetList_Incoming", lists, cites, true).value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("Page"));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"12"}));
    EXPECT_EQ(Mode(), Value(7));
    EXPECT_THAT(model.Log().Take(), ElementsAre("cites.Properties", "Page.name", "cites.name",
                                                "b3.Incoming_(\"cites\")", "c2.identifier",
                                                "c2.GetProperty(\"Page\")"));
}

TEST_F(ListViewFilling, WithoutAllNoColumnsAreAdded) {
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), false));
    EXPECT_EQ(RowCount(), 2);
    ASSERT_TRUE(list.Call("SetList_MetaLinks", model.Root(), false));
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_Incoming_MetaLinks", book, false));
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_Outgoing_MetaLinks", book, false));
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_MetaAttributes", book, false));
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_Nodes", book, false));
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_Links", cites, false));
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_Outgoing", trees, cites, false));
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_Incoming", lists, cites, false));
    EXPECT_THAT(Headers(), IsEmpty());
    EXPECT_EQ(model.Log().Count("GetProperty"), 0u);
    EXPECT_EQ(model.Log().Count("Properties"), 1u) << "asked for its rows only";
    EXPECT_EQ(RowCount(), 1);
}

TEST_F(ListViewFilling, AListIsAddedToTheRowsAndColumnsThatAreThere) {
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), true));
    ASSERT_TRUE(list.Call("SetList_MetaAttributes", book, true));
    EXPECT_THAT(Headers(), ElementsAre("Name", "Description", "Name", "Description", "DataType"));
    EXPECT_THAT(Column(), ElementsAre("Book", "Person", "Year", "Shelf"));
    EXPECT_EQ(Cell(2, 4), "Long");
    EXPECT_EQ(Mode(), Value(8));
}

TEST_F(ListViewFilling, TheColumnsOfTheHostComeBeforeTheDefaultOnes) {
    ASSERT_TRUE(list.Call("AddColumn", "Id", "Identifier", "300"));
    ASSERT_TRUE(list.Call("SetList_Nodes", book, true));
    EXPECT_THAT(Headers(), ElementsAre("Id", "Year", "Shelf"));
    EXPECT_THAT(Row(0), ElementsAre("b1", "1968", "A1"));
}

TEST_F(ListViewFilling, PropertyColumnsOfNodesReadTheNodeOfLinksTheLinkItself) {
    ASSERT_TRUE(list.Call("SetList_Links", cites, true));
    ASSERT_TRUE(list.Call("AddNode", trees).Ok() == false) << "a node has no Page";
    EXPECT_THAT(Column(), ElementsAre("7", "12", ""));
}

TEST_F(ListViewFilling, ValuesOfAllSimpleTypesBecomeTexts) {
    AddColumns({"V"});
    const std::vector<std::pair<Value, std::string>> values = {
        {Empty(), ""},  {"text", "text"},          {NullText(), ""},
        {true, "True"}, {false, "False"},          {-3, "-3"},
        {2.5, "2.5"},   {Currency(12500), "1.25"}, {short{7}, "7"}};
    for (std::size_t i = 0; i < values.size(); ++i) {
        FakeNode* node = model.Node(person, std::to_string(i));
        node->values["V"] = values[i].first;
        ASSERT_TRUE(list.Call("AddNode", node)) << values[i].first;
        EXPECT_EQ(Cell(static_cast<int>(i)), values[i].second);
    }
}

TEST_F(ListViewFilling, AnObjectAsAValueGivesItsDefaultProperty) {
    AddColumns({"V"});
    const auto object = FakeObject::Make("object");
    object->Define({.name = std::string(defaultMember),
                    .get = [](FakeObject&, Arguments&) -> Value { return "what it says"; }});
    trees->values["V"] = object;
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(Column(), ElementsAre("what it says"));
}

TEST_F(ListViewFilling, OddTextsAreShownWhole) {
    AddColumns({"Name", "Year"});
    trees->name =
        "Gr\xC3\xBC\xC3\x9F"
        "e \xF0\x9F\x8C\xB3\ttwo\nlines";
    trees->values["Year"] = std::string(280, 'x');
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(Row(0), ElementsAre(trees->name, std::string(280, 'x')));
}

TEST_F(ListViewFilling, KeysAreComparedExactlyAndMayBeNumbers) {
    for (const char* key : {"x", "X", "12", "012", " "}) {
        EXPECT_TRUE(list.Call("AddNode", model.Node(person, key)));
    }
    EXPECT_EQ(RowCount(), 5);
    EXPECT_EQ(list.Call("AddNode", model.Node(person, "X")).AutomationNumber(), 35602);
}

TEST_F(ListViewFilling, AnEmptyKeyIsNoKey) {
    EXPECT_TRUE(list.Call("AddNode", model.Node(person, "")));
    EXPECT_TRUE(list.Call("AddNode", model.Node(person, "")));
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(ListViewFilling, AVariableForAllMayHoldAnyTruthValue) {
    Value all = 1;
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), Variable(all)));
    EXPECT_THAT(Headers(), ElementsAre("Name", "Description"));
    EXPECT_EQ(all, Value(1)) << "the caller's variable stays as it is";
    list.Call("Clear");
    ASSERT_TRUE(list.Call("SetList_MetaNodes", model.Root(), "False"));
    EXPECT_EQ(Headers().size(), 2u);
}

TEST_F(ListViewFilling, ManyRowsAreRealRows) {
    model.Log().enabled = false;
    const auto many = FakeCollection::Make("many");
    AddColumns({"Name"});
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i) {
        many->Add(std::to_string(i), model.Node(person, std::to_string(i)));
    }
    person->On("Extension").Answer(many);
    ASSERT_TRUE(list.Call("SetList_Nodes", person, false));
    EXPECT_EQ(RowCount(), count);
    EXPECT_EQ(Cell(count - 1), std::to_string(count - 1));
    many->Dismantle();
}

}  // namespace
}  // namespace support
