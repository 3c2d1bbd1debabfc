#include "trees/tree_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What is asked of the host before a node is added, and what is left where the rest fails.
class HierarchyProposal : public HierarchyTest {
protected:
    /// Runs in `AddingNode` once the node is allowed, with the proposal.
    void WhenAdding(const std::function<void(const LateBound& proposal)>& work) {
        events.On("AddingNode").Run([this, work](const Arguments& arguments) {
            Allow(arguments);
            work(LateBound(arguments.Object(0).Get()));
        });
    }
    [[nodiscard]] int ErrorOfParent(const std::string& key) const {
        return tree.Call("ParentNode", key).AutomationNumber();
    }
};

TEST_F(HierarchyProposal, ARecordHasTheLinkAndTheObjectThatWereGiven) {
    WhenAdding([this](const LateBound& proposal) {
        EXPECT_TRUE(proposal.PutRef("repLink", second));
        EXPECT_TRUE(proposal.PutRef("repObject", knuth));
    });
    tree.Call("AddRootNode", lists);
    EXPECT_EQ(Info("ID:1").Get("repLink").value, Nothing());
    ASSERT_TRUE(tree.Call("AddSubNode", graphs, "ID:1", first));
    EXPECT_EQ(Info("ID:2").Get("repLink").Object().Get(), first);
    EXPECT_EQ(Info("ID:2").Get("repObject").Object().Get(), graphs);
    EXPECT_EQ(KeyOf(first), "ID:2");
    EXPECT_EQ(InfoOf(second).Get(), nullptr);
    EXPECT_EQ(InfoOf(knuth).Get(), nullptr);
}

TEST_F(HierarchyProposal, ComesBeforeAnythingIsAdded) {
    tree.Call("AddRootNode", lists);
    const int count = Window().Count();
    int asked = 0;
    WhenAdding([&](const LateBound&) {
        ++asked;
        EXPECT_EQ(InfoOf(graphs).Get(), nullptr);
        EXPECT_EQ(InfoOf(first).Get(), nullptr);
        EXPECT_EQ(Info("ID:2").Get(), nullptr);
        EXPECT_EQ(Window().Count(), count);
    });
    ASSERT_TRUE(tree.Call("AddSubNode", graphs, "ID:1", first));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(KeyOf(graphs), "ID:2");
}

TEST_F(HierarchyProposal, LeavesItsRecordWhereTheNodeCannotBeAdded) {
    WhenAdding([](const LateBound& proposal) { proposal.Put("Image", "no such image"); });
    EXPECT_EQ(tree.Call("AddRootNode", graphs).AutomationNumber(), 35601);
    EXPECT_EQ(KeyOf(graphs), "ID:1");
    WhenAdding([](const LateBound&) {});
    EXPECT_EQ(tree.Call("AddRootNode", lists, "ID:99").AutomationNumber(), 35601);
    EXPECT_EQ(KeyOf(lists), "ID:2");
    EXPECT_EQ(tree.Call("AddSubNode", knuth, "ID:99", third).AutomationNumber(), 35601);
    EXPECT_EQ(KeyOf(third), "ID:3");
    EXPECT_EQ(tree.Call("AddSubNode", trees, Nothing(), first).AutomationNumber(), 91);
    EXPECT_EQ(KeyOf(first), "ID:4");
    EXPECT_THAT(Window().All(), IsEmpty());
    for (const char* key : {"ID:1", "ID:2", "ID:3", "ID:4"}) {
        EXPECT_TRUE(Info(key)) << key;
        EXPECT_EQ(ErrorOfParent(key), 35601) << key << " is no node's";
    }
}

TEST_F(HierarchyProposal, ANodeWhoseLinksCannotBeReadIsShownAsALeaf) {
    trees->On("Outgoing_")
        .Fail(Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing",
                                 "Some.Repository"));
    const Outcome failed = tree.Call("AddRootNode", trees);
    EXPECT_EQ(failed.AutomationNumber(), 1004);
    EXPECT_EQ(failed.source, "Some.Repository");
    EXPECT_THAT(Window().All(), ElementsAre("On Trees"));
    EXPECT_FALSE(Window().HasButton(Window().At({"On Trees"})));
    EXPECT_EQ(KeyOf(trees), "ID:1");
    EXPECT_EQ(ErrorOfParent("ID:2"), 35601) << "there is no placeholder";
}

TEST_F(HierarchyProposal, AnExtensionThatFailsInTheMiddleKeepsWhatWasAdded) {
    model.Link(cites, graphs, lists, "d1");
    graphs->On("Outgoing_")
        .Fail(Failure::Exception(static_cast<HRESULT>(0x800A03EC), "no such thing",
                                 "Some.Repository"));
    for (const bool withFolders : {false, true}) {
        tree.Call("Clear");
        tree.Put("withFolders", withFolders);
        const Outcome failed = tree.Call("AddExtension", book);
        EXPECT_EQ(failed.AutomationNumber(), 1004);
        EXPECT_EQ(failed.description, "no such thing");
        EXPECT_EQ(failed.source, "Some.Repository");
        if (withFolders) {
            EXPECT_THAT(Window().All(),
                        ElementsAre("Book", ".On Trees", "..Loading", ".On Graphs"));
        } else {
            EXPECT_THAT(Window().All(), ElementsAre("On Trees", ".Loading", "On Graphs"));
        }
    }
}

}  // namespace
}  // namespace support
