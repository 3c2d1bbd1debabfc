#pragma once

#include <unordered_map>
#include <vector>

#include "widgets/tree_node.h"

namespace widgets {

/// The nodes of a tree. Finding a node by its number, adding one and taking one out take constant
/// time, however many there are.
class NodeStore {
public:
    NodeStore() = default;
    NodeStore(const NodeStore&) = delete;
    NodeStore& operator=(const NodeStore&) = delete;

    std::size_t Size() const { return nodes_.size(); }

    /// Adds a node as the last child of `parent`, which is a node of the store or `Top()`. Answers
    /// null for a number in use.
    NodePtr Add(std::int32_t number, TreeNode& parent);
    NodePtr Find(std::int32_t number) const;
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
    std::unordered_map<std::int32_t, NodePtr> nodes_;
};

}  // namespace widgets
