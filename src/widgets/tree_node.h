#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace widgets {

class TreeNode;
using NodePtr = std::shared_ptr<TreeNode>;

/// A node of a tree: its number, its place among the others, and how it looks. A node that was
/// removed is still there for whoever holds it, without a place.
class TreeNode {
public:
    static constexpr int noImage = -1;

    explicit TreeNode(std::int32_t number) : number_(number) {}

    /// What the node is found by.
    std::int32_t Number() const { return number_; }

    TreeNode* FirstChild() const { return first_; }
    TreeNode* LastChild() const { return last_; }
    TreeNode* Previous() const { return previous_; }
    TreeNode* Next() const { return next_; }

    std::wstring text;
    /// A position in the list of images, from 0.
    int image = noImage;
    bool checked = false;
    bool expanded = false;

    /// For whoever shows the nodes: what it shows this one as, null while it does not yet, and
    /// whether there are children that wait to be shown.
    void* item = nullptr;
    bool childrenWait = false;

private:
    friend class NodeStore;

    std::int32_t number_;
    TreeNode* parent_ = nullptr;
    TreeNode* first_ = nullptr;
    TreeNode* last_ = nullptr;
    TreeNode* previous_ = nullptr;
    TreeNode* next_ = nullptr;
};

}  // namespace widgets
