#include "trees/tree_fixture.h"

namespace support {
namespace {

/// How often a repository is called for a node with a number of children. Nothing is asked twice.
class TreeCalls : public HierarchyTest, public testing::WithParamInterface<std::size_t> {
protected:
    TreeCalls() {
        for (std::size_t number = 0; number < Children(); ++number) {
            FakeNode* const target = model.Node(type, "n" + std::to_string(number));
            model.Link(leads, hub, target, "l" + std::to_string(number));
        }
        described.Call("Create");
        described.PutRef("Repository", model.Root());
        model.Log().Clear();
    }
    ~TreeCalls() override { described.Call("Destroy"); }

    static std::size_t Children() { return GetParam(); }
    [[nodiscard]] std::size_t Count(const char* member) const { return model.Log().Count(member); }
    /// All calls so far, without the events.
    [[nodiscard]] std::size_t Calls() const {
        return model.Log().Calls().size() - Count("AddingNode") - Count("NodeExpand");
    }
    LateBound Describe(const LateBound& parent, const char* typ, const char* objectType,
                       const char* caption) const {
        return LateBound(parent.Call("AddChild", typ, objectType, caption, "", "key").value);
    }
    [[nodiscard]] TreeWindow Described() const { return TreeWindow(described); }

    /// Instances with two kinds of links, and one instance with as many links of the first as there
    /// are instances of the other type.
    FakeMetaNode* hubs = model.MetaNode("Hub");
    FakeMetaNode* type = model.MetaNode("Type");
    FakeMetaLink* leads = model.MetaLink("leads", hubs, type);
    FakeMetaLink* other = model.MetaLink("other", hubs, type);
    FakeMetaLink* further = model.MetaLink("further", type, type);
    FakeNode* hub = model.Node(hubs, "hub");
    LateBound described = CreateRegistered(L"TreeView");
};

TEST_P(TreeCalls, OfADescribedExtensionAreOneForEachInstance) {
    Describe(LateBound(described.Call("GetRootNodeDescription").value), "Extension", "Type",
             "Name");
    Described().Open({"Root"});
    ASSERT_EQ(Described().Below(Described().At({"Root"})).size(), Children());
    EXPECT_EQ(Calls(), 2 + Children());
    EXPECT_EQ(Count("MetaNodes"), 1u);
    EXPECT_EQ(Count("Extension"), 1u);
    EXPECT_EQ(Count("GetProperty"), Children());
}

TEST_P(TreeCalls, OfDescribedLinksAreTwoForEachLink) {
    const LateBound instance = Describe(LateBound(described.Call("GetRootNodeDescription").value),
                                        "Extension", "Hub", "Name");
    const LateBound links =
        Describe(Describe(instance, "Folder", "", "Leads"), "Links", "leads", "");
    Describe(links, "Folder", "", "Deeper");
    Described().Open({"Root"});
    Described().Open({"Root", "hub"});
    model.Log().Clear();
    Described().Open({"Root", "hub", "Leads"});
    ASSERT_EQ(Described().Below(Described().At({"Root", "hub", "Leads"})).size(), Children());
    EXPECT_EQ(Calls(), 1 + 2 * Children());
    EXPECT_EQ(Count("hub.Outgoing_"), 1u);
    EXPECT_EQ(Count("Target"), Children());
    EXPECT_EQ(Count("name"), Children());
}

TEST_P(TreeCalls, OfAHierarchyLevelAreOneForEachLink) {
    tree.Call("AddRootNode", hub);
    model.Log().Clear();
    ASSERT_TRUE(tree.Call("Expand", hub));
    ASSERT_EQ(Window().Below(Window().At({"hub"})).size(), Children());
    EXPECT_EQ(Calls(), 2 + 2 * 2 + Children());
    EXPECT_EQ(Count("parent"), 1u);
    EXPECT_EQ(Count("Outgoing"), 1u) << "the meta links are read once for all links";
    EXPECT_EQ(Count("name"), 2u);
    EXPECT_EQ(Count("Outgoing_"), 2u);
    EXPECT_EQ(Count("Target"), Children());
    EXPECT_EQ(Count("AddingNode"), Children());
}

TEST_P(TreeCalls, OfAHierarchyLevelWithFoldersAreOneMoreForEachFolder) {
    tree.Put("withFolders", true);
    tree.Call("AddRootNode", hub);
    model.Log().Clear();
    ASSERT_TRUE(tree.Call("Expand", hub));
    ASSERT_EQ(Window().Below(Window().At({"hub", "leads"})).size(), Children());
    EXPECT_EQ(Calls(), 2 + 3 * 2 + Children());
    EXPECT_EQ(Count("Outgoing"), 1u);
    EXPECT_EQ(Count("name"), 4u) << "for the folder's text, and for its links";
    EXPECT_EQ(Count("AddingNode"), 2 + Children());
}

TEST_P(TreeCalls, OfAnExtensionOfAHierarchyAreThoseOfItsRootNodes) {
    ASSERT_TRUE(tree.Call("AddExtension", type));
    ASSERT_EQ(Window().All().size(), Children());
    EXPECT_EQ(Calls(), 1 + (2 + 3) * Children());
    EXPECT_EQ(Count("Extension"), 1u);
    EXPECT_EQ(Count("Outgoing"), Children());
    EXPECT_EQ(Count("Outgoing_"), Children());
    EXPECT_EQ(Count("Count"), Children());
}

TEST_P(TreeCalls, OfARootNodeEndAtItsFirstLink) {
    ASSERT_TRUE(tree.Call("AddRootNode", hub));
    EXPECT_EQ(Calls(), 2u + 3u) << "the second meta link is not asked for";
}

INSTANTIATE_TEST_SUITE_P(WithChildren, TreeCalls, testing::Values(3u, 6u),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace support
