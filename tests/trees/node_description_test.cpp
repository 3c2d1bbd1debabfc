#include "trees/tree_fixture.h"

namespace support {
namespace {

class NodeDescriptions : public testing::Test {
protected:
    [[nodiscard]] LateBound Children(const LateBound& of) const {
        return LateBound(of.Get("Children").value);
    }
    LateBound description = CreateRegistered(L"NodeDescription");
};

TEST_F(NodeDescriptions, AreEmptyAtFirst) {
    for (const char* member : {"Caption", "objectType", "typ", "picture", "key"}) {
        EXPECT_EQ(description.Get(member).value, Value("")) << member;
    }
    ASSERT_TRUE(Children(description));
    EXPECT_EQ(Children(description).Get("Count").value, Value(0));
}

TEST_F(NodeDescriptions, GiveBackWhatTheyWereGiven) {
    for (const char* member : {"Caption", "objectType", "typ", "picture", "key"}) {
        EXPECT_TRUE(description.Put(member, std::string("a ") + member));
    }
    for (const char* member : {"Caption", "objectType", "typ", "picture", "key"}) {
        EXPECT_EQ(description.Get(member).value, Value(std::string("a ") + member));
    }
}

TEST_F(NodeDescriptions, HaveTheirMembersInTheInterfacesOrder) {
    int id = 0;
    for (const char* member :
         {"Caption", "objectType", "typ", "picture", "key", "Children", "AddChild"}) {
        EXPECT_EQ(description.Id(member), ++id) << member;
    }
}

TEST_F(NodeDescriptions, CannotBeGivenOtherChildren) {
    EXPECT_FALSE(
        description.PutRef("Children", Children(CreateRegistered(L"NodeDescription")).Get()).Ok());
}

TEST_F(NodeDescriptions, AddAChildFromTheFiveTextsAndReturnIt) {
    const LateBound child(
        description.Call("AddChild", "Folder", "Book", "Books", "icon", "k1").value);
    ASSERT_TRUE(child);
    EXPECT_EQ(child.Get("typ").value, Value("Folder"));
    EXPECT_EQ(child.Get("objectType").value, Value("Book"));
    EXPECT_EQ(child.Get("Caption").value, Value("Books"));
    EXPECT_EQ(child.Get("picture").value, Value("icon"));
    EXPECT_EQ(child.Get("key").value, Value("k1"));
    EXPECT_EQ(Children(child).Get("Count").value, Value(0));
    EXPECT_EQ(Children(description).Call("Item", "k1").value, Value(child.Get()));
}

TEST_F(NodeDescriptions, AddChildrenInTheOrderOfTheCallsAndByTheirKeys) {
    const LateBound a(description.Call("AddChild", "Folder", "", "A", "", "z").value);
    const LateBound b(description.Call("AddChild", "Folder", "", "B", "", "a").value);
    EXPECT_EQ(Children(description).Call("Item", 1).value, Value(a.Get()));
    EXPECT_EQ(Children(description).Call("Item", 2).value, Value(b.Get()));
    EXPECT_EQ(Children(description).Default("a").value, Value(b.Get()));
    EXPECT_EQ(Children(description).Elements().size(), 2u);
}

TEST_F(NodeDescriptions, ChainTheirChildren) {
    const LateBound deep(LateBound(description.Call("AddChild", "Folder", "", "A", "", "k").value)
                             .Call("AddChild", "Extension", "Book", "Name", "", "k")
                             .value);
    EXPECT_EQ(
        LateBound(Children(description).Call("Item", "k").value).Get("Children").Object().Get(),
        Children(LateBound(Children(description).Call("Item", "k").value)).Get());
    EXPECT_EQ(
        Children(LateBound(Children(description).Call("Item", "k").value)).Call("Item", "k").value,
        Value(deep.Get()));
}

TEST_F(NodeDescriptions, RefuseTheKeyOfASibling) {
    description.Call("AddChild", "Folder", "", "A", "", "key");
    const Outcome refused = description.Call("AddChild", "Folder", "", "B", "", "KEY");
    EXPECT_EQ(refused.AutomationNumber(), 457);
    EXPECT_EQ(refused.source, "OrvaneControls.NodeDescription");
    EXPECT_EQ(Children(description).Get("Count").value, Value(1));
}

TEST_F(NodeDescriptions, KeepTheirPlaceAmongSiblingsWhenTheirKeyIsWritten) {
    const LateBound child(description.Call("AddChild", "Folder", "", "A", "", "old").value);
    EXPECT_TRUE(child.Put("key", "new"));
    EXPECT_EQ(Children(description).Call("Item", "old").value, Value(child.Get()));
    EXPECT_EQ(Children(description).Call("Item", "new").AutomationNumber(), 5);
    EXPECT_EQ(description.Call("AddChild", "Folder", "", "B", "", "old").AutomationNumber(), 457);
    EXPECT_TRUE(description.Call("AddChild", "Folder", "", "C", "", "new"));
    EXPECT_EQ(Children(description).Get("Count").value, Value(2));
}

TEST_F(NodeDescriptions, StoreAnEmptyKeyWithoutAKey) {
    EXPECT_TRUE(description.Call("AddChild", "Folder", "", "A", "", ""));
    EXPECT_TRUE(description.Call("AddChild", "Folder", "", "B", "", ""));
    EXPECT_EQ(Children(description).Get("Count").value, Value(2));
    EXPECT_EQ(Children(description).Call("Item", "").AutomationNumber(), 5);
}

TEST_F(NodeDescriptions, CheckNothingElse) {
    EXPECT_TRUE(description.Call("AddChild", "no such kind", "no such type", "", "no icon", "1"));
    EXPECT_TRUE(description.Put("typ", "nonsense"));
}

}  // namespace
}  // namespace support
