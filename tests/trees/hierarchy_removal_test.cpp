#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What a host learns while `RemoveLink` takes a branch away. "On Trees" leads over c1 to "On
/// Graphs", from there over d1 to "On Lists" and over d2 to "On Sets", and over e1 from "On Lists"
/// to "On Sets".
class HierarchyRemoval : public HierarchyTest {
protected:
    void OpenAll(bool withFolders) {
        tree.Put("withFolders", withFolders);
        tree.Call("AddRootNode", trees);
        for (FakeObject* opened : {static_cast<FakeObject*>(trees), static_cast<FakeObject*>(first),
                                   static_cast<FakeObject*>(toLists)}) {
            ASSERT_TRUE(tree.Call("Expand", static_cast<IDispatch*>(opened)));
        }
        Take();
    }
    /// The link, or else the object, of a record.
    [[nodiscard]] static std::string Subject(const LateBound& info) {
        const Value link = info.Get("repLink").value;
        return Describe(link == Nothing() ? info.Get("repObject").value : link);
    }
    FakeNode* sets = model.Node(book, "b4", "On Sets");
    FakeLink* toLists = model.Link(cites, graphs, lists, "d1");
    FakeLink* toSets = model.Link(cites, graphs, sets, "d2");
    FakeLink* listsToSets = model.Link(cites, lists, sets, "e1");
};

TEST_F(HierarchyRemoval, GoesThroughTheSubtreeOfEachChildBeforeTheNext) {
    OpenAll(false);
    Texts removed;
    events.On("NodeRemoved").Run([&](const Arguments& arguments) {
        removed.push_back(Subject(LateBound(arguments.Object(0).Get())));
    });
    ASSERT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(removed, ElementsAre("e1", "d1", "d2", "c1"));
}

TEST_F(HierarchyRemoval, TellsOfFoldersToo) {
    OpenAll(true);
    Texts removed;
    events.On("NodeRemoved").Run([&](const Arguments& arguments) {
        const LateBound info(arguments.Object(0).Get());
        removed.push_back(Describe(info.Get("NodeType").value) + ' ' + Subject(info));
    });
    ASSERT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(removed, ElementsAre("3 e1", "2 cites", "2 printed", "3 d1", "3 d2", "2 cites",
                                     "2 printed", "3 c1"));
    EXPECT_THAT(Window().All(),
                ElementsAre("On Trees", ".cites", "..On Lists", "...Loading", ".printed"));
}

TEST_F(HierarchyRemoval, TellsOfANodeWhileItIsThereAndItsChildrenAreNot) {
    OpenAll(false);
    const std::string last = KeyOf(first);
    const Texts children = {KeyOf(toLists), KeyOf(toSets)};
    Texts parents;
    events.On("NodeRemoved").Run([&](const Arguments& arguments) {
        const std::string key = LateBound(arguments.Object(0).Get()).Get("key").value.Text();
        const Outcome parent = tree.Call("ParentNode", key);
        EXPECT_TRUE(parent) << key;
        parents.push_back(Subject(LateBound(parent.value)));
        if (key != last) return;
        for (const std::string& child : children) {
            EXPECT_EQ(tree.Call("ParentNode", child).AutomationNumber(), 35601) << child;
            EXPECT_EQ(Info(child).Get(), nullptr) << child;
        }
    });
    ASSERT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(parents, ElementsAre("d1", "c1", "c1", "b1"));
    EXPECT_EQ(tree.Call("ParentNode", last).AutomationNumber(), 35601);
}

TEST_F(HierarchyRemoval, GoesByTheKeyInTheRecord) {
    OpenAll(false);
    const LateBound info = Info(KeyOf(first));
    const std::string key = info.Get("key").value.Text();
    ASSERT_TRUE(info.Put("key", KeyOf(second)));
    ASSERT_TRUE(tree.Call("RemoveLink", first));
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs"))
        << "the node with that key went";
    EXPECT_EQ(events.Count("NodeRemoved"), 1u);
    EXPECT_EQ(InfoOf(second).Get(), nullptr);
    EXPECT_EQ(Info(key).Get(), info.Get());
    Take();
    for (const char* none : {"ID:99", "", "Root"}) {
        info.Put("key", none);
        EXPECT_TRUE(tree.Call("RemoveLink", first)) << none;
    }
    EXPECT_THAT(Window().Below(Window().At({"On Trees"})), ElementsAre("On Graphs"));
    EXPECT_THAT(Take(), IsEmpty());
}

}  // namespace
}  // namespace support
