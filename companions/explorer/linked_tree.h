#pragma once

#include "explorer/hosted_tree.h"

namespace explorer {

/// A HierarchyTreeView that begins with the nodes of a meta node and follows their links. Nodes are
/// renamed in place.
class LinkedTree final : public HostedTree {
public:
    /// `withFolders` groups the nodes by their meta node, and links by their meta link.
    LinkedTree(hosting::HostedControl& place, EventLog& log, IconFiles& icons,
               const TreeCalls& calls, bool withFolders);

    void Show(const hosting::LateBound& repository, const hosting::LateBound& metaNode) override;
    [[nodiscard]] hosting::LateBound SelectedLink() const override;
    void AddLink(const hosting::LateBound& link) override;
    void RemoveLink(const hosting::LateBound& link) override;

private:
    void Hear(const hosting::Event& event) override;
    [[nodiscard]] hosting::LateBound NodeOf(const hosting::LateBound& info) const override;
    [[nodiscard]] TreeChoice ChoiceOf(const hosting::LateBound& info) const;
    void Propose(const hosting::LateBound& proposal);
    void BeginRename(const hosting::Event& event) const;
    void EndRename(const hosting::Event& event);
};

}  // namespace explorer
