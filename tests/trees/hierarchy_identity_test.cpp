#include "support/face.h"
#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Which of its records a tree finds by an object or a link: the first of the very same object.
class HierarchyIdentity : public HierarchyTest {
protected:
    HierarchyIdentity() {
        tree.Call("AddRootNode", trees);
        Window().Open({"On Trees"});
        Take();
    }
    [[nodiscard]] static Ref<Face> FaceOf(IDispatch* object) { return Make<Face>(object); }
    static void GiveDefault(FakeObject* object, const char* text) {
        object->Define({.name = std::string(defaultMember),
                        .most = 0,
                        .get = [text](FakeObject&, Arguments&) -> Value { return text; }});
    }
};

TEST_F(HierarchyIdentity, AnotherPointerToTheSameObjectFindsIt) {
    const auto object = FaceOf(graphs);
    const auto link = FaceOf(second);
    ASSERT_NE(static_cast<IDispatch*>(object.Get()), static_cast<IDispatch*>(graphs));
    EXPECT_EQ(KeyOf(object.Get()), "ID:3");
    EXPECT_EQ(KeyOf(link.Get()), "ID:5");
    EXPECT_TRUE(tree.PutRef("selection", object));
    EXPECT_EQ(Window().SelectedText(), "On Graphs");
    EXPECT_TRUE(tree.PutRef("selection", link));
    EXPECT_EQ(Window().SelectedText(), "On Lists");
    EXPECT_TRUE(tree.Call("Expand", object));
    EXPECT_THAT(Taken("NodeExpand"), ElementsAre("NodeExpand(HTNodeInfo ID:3)"));
    EXPECT_TRUE(tree.Call("RemoveLink", link));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs"));
}

TEST_F(HierarchyIdentity, OfARecordIsThatOfTheObjectBehindItsPointer) {
    ASSERT_TRUE(tree.Call("AddSubNode", FaceOf(knuth), "ID:1", FaceOf(third)));
    EXPECT_EQ(KeyOf(knuth), "ID:7");
    EXPECT_EQ(KeyOf(third), "ID:7");
    EXPECT_TRUE(tree.PutRef("selection", knuth));
    EXPECT_EQ(Window().SelectedText(), "Knuth");
    EXPECT_TRUE(tree.Call("RemoveLink", third));
    EXPECT_EQ(InfoOf(knuth).Get(), nullptr);
}

TEST_F(HierarchyIdentity, EqualObjectsAreNotTheSame) {
    FakeNode* const twin = model.Node(book, "b2", "On Graphs");
    FakeLink* const twinLink = model.Link(cites, trees, twin, "c1");
    for (FakeObject* object : {static_cast<FakeObject*>(graphs), static_cast<FakeObject*>(twin)}) {
        GiveDefault(object, "graphs");
    }
    for (FakeObject* object :
         {static_cast<FakeObject*>(first), static_cast<FakeObject*>(twinLink)}) {
        GiveDefault(object, "link");
    }
    Window().Select(Window().At({"On Trees", "On Lists"}));
    const auto before = Window().All();
    Take();
    EXPECT_EQ(tree.Call("GetInfoFromObject", twin).value, Nothing());
    EXPECT_EQ(tree.Call("GetInfoFromObject", twinLink).value, Nothing());
    EXPECT_TRUE(tree.PutRef("selection", twin));
    EXPECT_TRUE(tree.PutRef("selection", twinLink));
    EXPECT_EQ(Window().SelectedText(), "On Lists");
    EXPECT_TRUE(tree.Call("RemoveLink", twinLink));
    EXPECT_EQ(Window().All(), before);
    EXPECT_THAT(Take(), IsEmpty()) << "nobody is asked for a value";
}

TEST_F(HierarchyIdentity, RecordsOfNodesThatAreGoneComeFirst) {
    tree.Call("Clear");
    ASSERT_TRUE(tree.Call("AddRootNode", trees));
    ASSERT_TRUE(tree.Call("AddSubNode", graphs, "ID:7", first));
    const auto before = Window().All();
    ASSERT_THAT(before, ElementsAre("On Trees", ".Loading", ".On Graphs", "..Loading"));
    Take();
    EXPECT_EQ(KeyOf(trees), "ID:1");
    EXPECT_EQ(KeyOf(first), "ID:3");
    EXPECT_EQ(tree.PutRef("selection", trees).AutomationNumber(), 35601);
    EXPECT_EQ(tree.PutRef("selection", first).AutomationNumber(), 35601);
    EXPECT_EQ(tree.Call("Expand", trees).AutomationNumber(), 35601);
    EXPECT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_EQ(Window().All(), before);
    EXPECT_EQ(Window().Selected(), nullptr);
    EXPECT_THAT(Take(), IsEmpty());
}

}  // namespace
}  // namespace support
