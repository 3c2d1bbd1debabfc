#pragma once

#include <string_view>

#include "ole/error.h"
#include "trees/node_keys.h"
#include "widgets/node_store.h"

namespace trees {

/// The nodes that a tree's behaviour writes to.
class TreePane {
public:
    virtual const widgets::NodeStore& Nodes() const = 0;
    /// Adds a node below another one, at the top for null. Errors: 35602 for a number in use, 35601
    /// for an unknown image and for a parent that is gone. An empty image key is no image.
    virtual widgets::NodePtr AddNode(std::int32_t number, const widgets::NodePtr& parent,
                                     std::wstring_view text, std::wstring_view image) = 0;
    virtual void RemoveNode(widgets::TreeNode& node) = 0;
    virtual void RemoveNodes() = 0;
    virtual bool HasImage(const widgets::TreeNode& node, std::wstring_view image) const = 0;

protected:
    ~TreePane() = default;
};

/// The number of the next node. Raises 6 after the largest one.
inline std::int32_t NextNumber(NodeCounter& counter) {
    const auto number = counter.Next();
    if (!number) ole::Throw(ole::Number::overflow);
    return *number;
}

/// The node with a key. Raises 35601.
inline widgets::NodePtr FindNode(const TreePane& pane, std::wstring_view key) {
    const auto number = NumberIn(key);
    widgets::NodePtr node = number ? pane.Nodes().Find(*number) : nullptr;
    if (!node) ole::Throw(ole::Number::elementNotFound);
    return node;
}

/// What stands below a node until it is opened. Its image, `image`, is what it is known by.
inline void AddPlaceholder(TreePane& pane, NodeCounter& counter, const widgets::NodePtr& parent,
                           std::wstring_view image) {
    pane.AddNode(NextNumber(counter), parent, L"Loading", image);
}

}  // namespace trees
