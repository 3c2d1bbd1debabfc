#pragma once

#include "explorer/hosted_tree.h"
#include "explorer/pane.h"
#include "explorer/pane_label.h"
#include "explorer/tree_kind.h"

#include <memory>

namespace explorer {

/// A tree of repository objects, described or followed along links, each in its own control. Nodes
/// have icons by type; they can be dragged and dropped.
class TreePane : public Pane {
public:
    /// Each event of the controls goes to `log`, failures in an event go to `onError`.
    TreePane(hosting::Form& form, EventLog& log, ErrorHandler onError);
    ~TreePane() override;

    /// Called when a node was clicked.
    std::function<void(const TreeChoice&)> onChoice;
    /// Called when a node was renamed in the repository.
    std::function<void(const hosting::LateBound& node)> onRename;
    /// Called when something was dropped on a node; Dragged says what, if it came from here.
    std::function<void(const hosting::LateBound& target)> onDrop;

    [[nodiscard]] TreeKind Kind() const noexcept { return kind_; }
    /// Shows a repository anew, from the nodes of `metaNode` where the tree follows links; nothing
    /// where there is none. Throws hosting::Error.
    void Show(TreeKind kind, const hosting::LateBound& repository,
              const hosting::LateBound& metaNode);
    /// Begins with another meta node, where that matters and the tree is not in an event. Throws.
    void Follow(const hosting::LateBound& metaNode);

    /// The node that is being dragged, or none.
    [[nodiscard]] const hosting::LateBound& Dragged() const noexcept { return dragged_; }
    /// The link that the selected node was reached by, or none.
    [[nodiscard]] hosting::LateBound SelectedLink() const;
    /// Shows a link that has come to the repository, where its source is shown and open. Throws.
    void AddLink(const hosting::LateBound& link);
    /// Removes the node of a link, with what is below. Throws.
    void RemoveLink(const hosting::LateBound& link);
    /// Lets the user rename the selected node, as F2 does in the tree.
    void BeginRename();

    /// The control's window; none where there is no tree.
    [[nodiscard]] HWND ControlWindow() const { return place_.Window(); }
    /// The system's tree in the control; none where there is no tree.
    [[nodiscard]] HWND TreeWindow() const;
    /// What the label above the tree says, with its mnemonic's mark.
    [[nodiscard]] const std::wstring& Title() const noexcept { return label_.Text(); }

    void Place(const RECT& bounds) override;
    [[nodiscard]] SIZE MinimumSize() const override;
    void SetLook(const Look& look) override;
    bool FocusMnemonic(wchar_t letter) override;
    void Focus() { place_.Focus(); }

private:
    [[nodiscard]] std::unique_ptr<HostedTree> MakeTree(TreeKind kind);
    void SetIconSize(int size);

    EventLog& log_;
    TreeKind kind_ = TreeKind::described;
    hosting::LateBound repository_;
    hosting::LateBound metaNode_;
    hosting::LateBound dragged_;
    bool tells_ = false;
    TreeCalls calls_;
    PaneLabel label_;
    hosting::HostedControl& place_;
    int iconSize_ = 16;
    std::unique_ptr<IconFiles> icons_;
    /// None where the last attempt to make one failed.
    std::unique_ptr<HostedTree> tree_;
    SIZE minimum_{};
};

}  // namespace explorer
