#include "support/fake_repository.h"
#include "support/late_bound.h"

#include <gtest/gtest.h>

namespace support {
namespace {

using Calls = std::vector<std::string>;

class Repositories : public testing::Test {
protected:
    FakeRepository model;
    FakeMetaNode* book = model.MetaNode("Book", "Something to read");
    FakeMetaLink* cites = model.MetaLink("cites", book, book);
    FakeMetaProperty* year = model.MetaProperty(book, "Year", "Long", "When it came out");
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    FakeNode* graphs = model.Node(book, "b2", "On Graphs");
    FakeLink* citation = model.Link(cites, trees, graphs, "c1");
    LateBound rep{model.Root()};

    static std::vector<std::string> Names(const Outcome& collection) {
        std::vector<std::string> names;
        for (const Value& each : LateBound(collection.value).Elements(10))
            names.push_back(LateBound(each).Call("name").value.Text());
        return names;
    }
};

TEST_F(Repositories, HaveTheBuiltInMetaNodes) {
    EXPECT_EQ(Names(rep.Get("MetaNodes")), (Calls{"MetaNode", "MetaLink", "MetaProperty", "Book"}));
    EXPECT_EQ(rep.Get("MetaNodes", "book").Object().Get(), book);
    EXPECT_EQ(rep.Get("MetaNodes", "Car").number, FakeCollection::noSuchElement);
}

TEST_F(Repositories, RecordHowTheyAreRead) {
    model.Log().Take();
    const LateBound extension(LateBound(rep.Get("MetaNodes", "Book").value).Get("Extension").value);
    LateBound(extension.Default("b1").value).Call("GetProperty", "Name");
    EXPECT_EQ(model.Log().Take(),
              (Calls{"rep.MetaNodes(\"Book\")", "Book.Extension",
                     "Book.Extension.[default](\"b1\")", "b1.GetProperty(\"Name\")"}));
}

TEST_F(Repositories, MetaNodesOfferTheirMembers) {
    const LateBound meta(book);
    EXPECT_EQ(meta.Get("name").value, Value("Book"));
    EXPECT_EQ(meta.Call("GetProperty", "Description").value, Value("Something to read"));
    EXPECT_EQ(Names(meta.Get("Extension")), (Calls{"On Trees", "On Graphs"}));
    EXPECT_EQ(meta.Get("Extension", "b2").Object().Get(), graphs);
    EXPECT_EQ(meta.Get("Outgoing", "cites").Object().Get(), cites);
    EXPECT_EQ(meta.Get("Incoming", "cites").Object().Get(), cites);
    EXPECT_EQ(Names(meta.Get("Properties")), Calls{"Year"});
    EXPECT_EQ(meta.Get("parent").Object().Get(), model.Root());
}

TEST_F(Repositories, MetaLinksOfferTheirMembers) {
    const LateBound meta(cites);
    EXPECT_EQ(meta.Call("GetProperty", "SourceName").value, Value("Book"));
    EXPECT_EQ(meta.Call("GetProperty", "LinkName").value, Value("cites"));
    EXPECT_EQ(meta.Get("Target").Object().Get(), book);
    EXPECT_EQ(meta.Get("Extension", "c1").Object().Get(), citation);
}

TEST_F(Repositories, MetaPropertiesOfferTheirMembers) {
    const LateBound property(year);
    EXPECT_EQ(LateBound(property.Get("MetaType").value).Get("DataType").value, Value("Long"));
    EXPECT_EQ(property.Get("MetaEnum").value, Nothing());
    EXPECT_TRUE(property.Put("IsPersistent", false));
    EXPECT_EQ(property.Get("IsPersistent").value, Value(false));
    EXPECT_TRUE(property.Put("Description", "x"));
    EXPECT_EQ(property.Call("GetProperty", "Description").value, Value("x"));
    EXPECT_TRUE(property.PutRef("MetaType", rep.Get("MetaTypes", "Date").value));
    EXPECT_EQ(LateBound(property.Get("MetaType").value).Get("name").value, Value("Date"));
    EXPECT_EQ(property.Get("parent").Object().Get(), book);
}

TEST_F(Repositories, EnumeratedTypesHaveAtoms) {
    model.Enumeration("Kind", {"A", "B"});
    const LateBound kind(model.MetaProperty(book, "Kind", "Kind"));
    const LateBound metaEnum(kind.Get("MetaEnum").value);
    EXPECT_EQ(metaEnum.Get("name").value, Value("Kind"));
    EXPECT_EQ(Names(metaEnum.Get("MetaAtoms")), (Calls{"A", "B"}));
}

TEST_F(Repositories, NodesOfferTheirMembers) {
    const LateBound node(trees);
    EXPECT_EQ(node.Get("identifier").value, Value("b1"));
    EXPECT_EQ(node.Call("GetProperty", "Identifier").value, Value("b1"));
    EXPECT_EQ(node.Call("GetProperty", "year").value, Empty());
    EXPECT_TRUE(node.Call("SetProperty", "Year", 1968));
    EXPECT_EQ(node.Call("GetProperty", "Year").value, Value(1968));
    EXPECT_EQ(node.Call("GetProperty", "Colour").number, FakeElement::noSuchProperty);
    EXPECT_EQ(node.Call("SetProperty", "Colour", 1).number, FakeElement::noSuchProperty);
    EXPECT_EQ(node.Get("parent").Object().Get(), book);
    EXPECT_EQ(node.Get("Properties", "Year").Object().Get(), year);
    const LateBound links(node.Call("Outgoing_", "cites").value);
    EXPECT_EQ(links.Get("Item", 1).Object().Get(), citation);
    EXPECT_EQ(LateBound(node.Call("Incoming_", "cites").value).Get("Count").value, Value(0));
    EXPECT_EQ(LateBound(node.Call("GetDynamicProperties").value).Call("Search", "x").value,
              Value(false));
}

TEST_F(Repositories, LinksOfferTheirMembers) {
    const LateBound link(citation);
    EXPECT_EQ(link.Get("source").Object().Get(), trees);
    EXPECT_EQ(link.Get("Target").Object().Get(), graphs);
    EXPECT_EQ(link.Get("parent").Object().Get(), cites);
    EXPECT_EQ(link.Get("identifier").value, Value("c1"));
}

TEST_F(Repositories, AreChangedByTheirOwnMembers) {
    const Value node = rep.Call("MakeNode", "b3", "Book", "On Sets").value;
    EXPECT_EQ(Names(LateBound(book).Get("Extension")).back(), "On Sets");
    EXPECT_TRUE(rep.Call("MakeLink", cites, trees, node, "c2", "second"));
    EXPECT_EQ(trees->Outgoing("cites").Elements().size(), 2u);
    EXPECT_TRUE(rep.Call("MakeProperty", book, "Pages", "Long", "How many", "Long"));
    EXPECT_EQ(book->properties->Elements().size(), 2u);
    EXPECT_TRUE(rep.Call("RemoveClass", trees));
    EXPECT_EQ(book->extension->Elements().size(), 2u);
    EXPECT_TRUE(cites->extension->Elements().empty());
    EXPECT_EQ(LateBound(trees).Get("name").value, Value("On Trees"));
}

TEST_F(Repositories, GenerateIdentifiers) {
    const LateBound generator(model.UuidGenerator());
    EXPECT_EQ(generator.Call("GetUUID").value, Value("uuid-1"));
    EXPECT_EQ(generator.Call("GetUUID").value, Value("uuid-2"));
}

TEST(RepositoriesThatEnd, LeaveOnlyWhatOthersHold) {
    const long before = LiveDoubles();
    Ref<IDispatch> held;
    {
        FakeRepository model;
        auto* meta = model.MetaNode("Book");
        auto* cites = model.MetaLink("cites", meta, meta);
        auto* node = model.Node(meta, "b1");
        model.Link(cites, node, node, "c1");
        held = node;
    }
    EXPECT_EQ(LiveDoubles(), before + 1);
    EXPECT_EQ(LateBound(held.Get()).Get("name").result, RPC_E_DISCONNECTED);
    held.Reset();
    EXPECT_EQ(LiveDoubles(), before);
}

}  // namespace
}  // namespace support
