#include "widgets/node_store.h"

#include <utility>

namespace widgets {

NodePtr NodeStore::Add(std::int32_t number, TreeNode& parent) {
    if (memory_ == nullptr) memory_ = std::make_shared<ItemMemory>();
    NodePtr node = std::allocate_shared<TreeNode>(ItemAllocator<TreeNode>(memory_), number);
    if (!nodes_.Add(number, node)) return nullptr;
    node->parent_ = &parent;
    node->previous_ = std::exchange(parent.last_, node.get());
    (node->previous_ != nullptr ? node->previous_->next_ : parent.first_) = node.get();
    return node;
}

bool NodeStore::Holds(const TreeNode& node) const {
    return &node == &top_ || node.parent_ != nullptr;
}

void NodeStore::Remove(TreeNode& node) {
    const std::vector<NodePtr> branch = BranchOf(node);
    Unlink(node);
    for (const NodePtr& each : branch) {
        each->parent_ = each->first_ = each->last_ = each->previous_ = each->next_ = nullptr;
        nodes_.Remove(each->number_);
    }
    if (nodes_.Size() == 0) memory_.reset();
}

void NodeStore::Clear() {
    const auto nodes = std::exchange(nodes_, {});
    // Goes with the last node: nothing of a large tree stays behind.
    memory_.reset();
    nodes.Each([](const NodePtr& node) {
        node->parent_ = node->first_ = node->last_ = node->previous_ = node->next_ = nullptr;
    });
    top_.first_ = top_.last_ = nullptr;
}

NodePtr NodeStore::ParentOf(const TreeNode& node) const {
    return node.parent_ != nullptr ? Find(node.parent_->number_) : nullptr;
}

TreeNode* NodeStore::NextInBranch(const TreeNode& root, TreeNode& node) {
    if (node.first_ != nullptr) return node.first_;
    for (TreeNode* at = &node; at != &root; at = at->parent_) {
        if (at->next_ != nullptr) return at->next_;
    }
    return nullptr;
}

std::vector<NodePtr> NodeStore::BranchOf(TreeNode& root) const {
    std::vector<NodePtr> branch;
    for (TreeNode* node = &root; node != nullptr; node = NextInBranch(root, *node)) {
        branch.push_back(Find(node->number_));
    }
    return branch;
}

void NodeStore::Unlink(TreeNode& node) {
    (node.previous_ != nullptr ? node.previous_->next_ : node.parent_->first_) = node.next_;
    (node.next_ != nullptr ? node.next_->previous_ : node.parent_->last_) = node.previous_;
}

}  // namespace widgets
