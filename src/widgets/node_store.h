#pragma once

#include <memory>
#include <vector>

#include "widgets/item_memory.h"
#include "widgets/number_map.h"
#include "widgets/tree_node.h"

namespace widgets {

/// The nodes of a tree. Finding a node by its number, adding one and taking one out take constant
/// time, however many there are.
class NodeStore {
public:
    NodeStore() = default;
    NodeStore(const NodeStore&) = delete;
    NodeStore& operator=(const NodeStore&) = delete;

    std::size_t Size() const { return nodes_.Size(); }

    /// Adds a node as the last child of `parent`, which is a node of the store or `Top()`. Answers
    /// null for a number in use.
    NodePtr Add(std::int32_t number, TreeNode& parent);
    /// Null for an unknown number.
    NodePtr Find(std::int32_t number) const { return nodes_.Find(number); }
    /// Whether the node, or `Top()`, is still in the store.
    bool Holds(const TreeNode& node) const;
    /// Takes a node out, with all below it.
    void Remove(TreeNode& node);
    void Clear();

    /// What the nodes at the top are the children of; no node itself.
    TreeNode& Top() { return top_; }
    const TreeNode& Top() const { return top_; }
    /// Null for a node at the top.
    NodePtr ParentOf(const TreeNode& node) const;
    /// As `ParentOf`, but `Top()` for a node at the top.
    TreeNode& PlaceOf(const TreeNode& node) const { return *node.parent_; }

    /// The next node of the branch of `root` after `node`, parents before children; null after the
    /// last.
    static TreeNode* NextInBranch(const TreeNode& root, TreeNode& node);
    /// Runs `visit(TreeNode&)` for all nodes, parents before children; `visit` may not change the
    /// store.
    template <class Visit>
    void Each(Visit&& visit) {
        for (TreeNode* node = NextInBranch(top_, top_); node != nullptr;) {
            visit(*node);
            node = NextInBranch(top_, *node);
        }
    }
    /// A node and all below it, parents before children.
    std::vector<NodePtr> BranchOf(TreeNode& root) const;

private:
    static void Unlink(TreeNode& node);

    static constexpr std::int32_t noNumber = -1;
    TreeNode top_{noNumber};
    NumberMap<NodePtr> nodes_;
    std::shared_ptr<ItemMemory> memory_;
};

}  // namespace widgets
