#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "ole/object.h"
#include "trees/hierarchy_infos.h"
#include "trees/tree_pane.h"

namespace trees {

/// The nodes that a hierarchy tree writes to, and the host that it asks and tells.
class HierarchyPane : public TreePane {
public:
    virtual widgets::NodePtr SelectedNode() = 0;
    /// Selects a node and opens those above it, which fills them. Errors of the filling reach the
    /// caller.
    virtual void SelectNode(const widgets::NodePtr& node) = 0;
    /// Opens a node, which fills it. Errors of the filling reach the caller.
    virtual void OpenNode(const widgets::NodePtr& node) = 0;
    /// Errors: 35601 for an unknown image.
    virtual void SetLook(widgets::TreeNode& node, std::wstring_view text,
                         std::wstring_view image) = 0;
    /// Runs `work`, during which removed nodes are still seen.
    virtual void WhileRemoving(const std::function<void()>& work) = 0;

    virtual void RaiseAdding(HTNewNodeInfo& proposal) = 0;
    virtual void RaiseExpand(HTNodeInfo& info) = 0;
    virtual void RaiseRemoved(HTNodeInfo& info) = 0;

protected:
    ~HierarchyPane() = default;
};

/// The tree behind a `HierarchyTreeView`: shows objects that the host adds, and below each, when it
/// is opened for the first time, the targets of its links. The host is asked about every node.
/// Errors of the repository reach whoever asked for the nodes; those made before stay.
class HierarchyTree {
public:
    static constexpr std::wstring_view dummyImage = L"__Dummy";
    static constexpr std::wstring_view folderImage = L"__Folder";

    explicit HierarchyTree(HierarchyPane& pane) : pane_(pane) {}

    bool withFolders = false;

    /// Begins with no records; those that there were are let go of.
    void ForgetInfos();
    /// Lets go of the records; the nodes stay.
    void LetGo();

    /// What a proposed node stands for, null where the host refuses it.
    ole::Ref<HTNodeInfo> Propose(const ole::Object& object, const ole::Ref<HTNewNodeInfo>& proposal,
                                 const ole::Object& link);
    /// `root`: a node's key, its record, or nothing for the top.
    void AddRoot(const ole::Object& object, const VARIANT& root);
    void AddExtension(const ole::Object& metaNode);
    /// `parent`: a node's key or its record. Raises 91, after the proposal, for neither.
    void AddSubNode(const ole::Object& object, const VARIANT& parent, const ole::Object& link);
    void AddSubNodeToCurrent(const ole::Object& object, const ole::Object& link);
    void AddNode(const ole::Ref<HTNodeInfo>& parent, const ole::Object& link);
    void RemoveLink(const ole::Object& link);

    void Select(const ole::Object& object);
    void Expand(const ole::Object& object);

    /// Whether the first child, or a node without children itself, has the placeholder's image,
    /// whoever gave it that.
    bool IsUnfilled(const widgets::TreeNode& node) const;
    /// Takes the first child away, tells the host, and follows the object's links. For an unfilled
    /// node.
    void Fill(const widgets::NodePtr& node);

    // Null for a node that stands for nothing, as placeholders do.

    ole::Ref<HTNodeInfo> InfoOf(const widgets::TreeNode& node) const;
    ole::Ref<HTNodeInfo> InfoOf(std::wstring_view key) const;
    /// Raises 91 before `ForgetInfos` and after `LetGo`.
    ole::Ref<HTNodeInfo> InfoOfObject(const ole::Object& object) const;
    /// Null at the top. Errors: 35601 for an unknown key, 5 for a parent that stands for nothing.
    ole::Ref<HTNodeInfo> ParentInfo(std::wstring_view key) const;

    /// Errors: 35601 for a node that is gone, and for an unknown image.
    void Update(const ole::Ref<HTNodeInfo>& info, std::wstring_view caption,
                std::wstring_view image);

private:
    struct Place;

    Place PlaceIn(const VARIANT& keyOrInfo) const;
    widgets::NodePtr NodeAt(const Place& place) const;
    HierarchyInfos& Infos() const;
    /// Proposes a folder; the node, null where the host refuses it.
    widgets::NodePtr AddFolder(HTNodeType kind, const ole::Object& object, const Place& place);
    void AddRoot(const ole::Object& object, const Place& place);
    void AddSubNode(const ole::Object& object, const Place& place, const ole::Object& link);
    widgets::NodePtr MakeNode(const HTNodeInfo& info, const HTNewNodeInfo& proposal,
                              const Place& place);
    /// Removes a node from the leaves up.
    void RemoveBranch(const widgets::NodePtr& root);
    /// Reads the meta links of the object's meta node until one has links of the object.
    static bool HasLinks(const ole::Object& object);

    HierarchyPane& pane_;
    NodeCounter counter_;
    std::shared_ptr<HierarchyInfos> infos_;
};

}  // namespace trees
