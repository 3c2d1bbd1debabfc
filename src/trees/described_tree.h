#pragma once

#include <memory>
#include <string_view>

#include "ole/object.h"
#include "trees/node_info.h"
#include "trees/tree_pane.h"
#include "widgets/number_map.h"

namespace trees {

/// The tree behind a `TreeView`: its shape is a tree of descriptions, and a level is read from the
/// repository when its node is opened for the first time. Errors of the repository reach whoever
/// opens the node; the nodes made before stay, and the level is not filled again.
class DescribedTree {
public:
    static constexpr std::wstring_view dummyImage = L"Dummy";
    static constexpr std::wstring_view folderImage = L"Folder";

    explicit DescribedTree(TreePane& pane) : pane_(pane) {}

    ole::Object repository;

    void RestartKeys() { counter_ = NodeCounter(); }
    /// Begins with no records; those that there were are let go of.
    void ForgetInfos();
    /// Makes the root node and its description, with a placeholder below.
    void MakeRoot();
    /// Lets go of the records and the repository.
    void LetGo();

    /// Whether the first child has the placeholder's image, whoever gave it that.
    bool IsUnfilled(const widgets::TreeNode& node) const;
    /// Takes the first child away and makes the nodes that are described. For an unfilled node.
    void Fill(const widgets::NodePtr& node);

    /// What a node stands for. Errors: 5 for a node without, as placeholders are, 91 before
    /// `MakeRoot` and after `LetGo`.
    ole::Ref<NodeInfo> InfoOf(const widgets::TreeNode& node) const;
    /// Null for the root. Errors: 35601 for an unknown key.
    ole::Ref<NodeInfo> ParentInfo(std::wstring_view key) const;
    ole::Ref<NodeDescription> RootDescription() const;

private:
    using Infos = widgets::NumberMap<ole::Ref<NodeInfo>>;

    void FillFrom(const widgets::NodePtr& node, const ole::Ref<NodeDescription>& description);
    void AddExtension(const widgets::NodePtr& node, const ole::Ref<NodeDescription>& description);
    void AddLinks(const widgets::NodePtr& node, const ole::Ref<NodeDescription>& description);
    /// Adds a node with a record, and a placeholder below it where it can be opened.
    void Add(std::int32_t number, const widgets::NodePtr& parent, std::wstring_view text,
             const ole::Ref<NodeDescription>& description, const ole::Object& object);
    void AddInfo(std::int32_t number, const ole::Ref<NodeDescription>& description,
                 const ole::Object& object);

    TreePane& pane_;
    NodeCounter counter_;
    std::shared_ptr<Infos> infos_;
};

}  // namespace trees
