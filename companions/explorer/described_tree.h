#pragma once

#include "explorer/hosted_tree.h"

namespace explorer {

/// A TreeView with a folder for each meta node that has nodes, its nodes, and below each of these a
/// folder of the targets of its links for each meta link.
class DescribedTree final : public HostedTree {
public:
    DescribedTree(hosting::HostedControl& place, EventLog& log, IconFiles& icons,
                  const TreeCalls& calls);

    void Show(const hosting::LateBound& repository, const hosting::LateBound& metaNode) override;

private:
    void Hear(const hosting::Event& event) override;
    [[nodiscard]] hosting::LateBound NodeOf(const hosting::LateBound& info) const override;
    [[nodiscard]] TreeChoice ChoiceOf(const hosting::LateBound& info) const;
    void Describe(const hosting::LateBound& root, const hosting::LateBound& metaNode);
};

}  // namespace explorer
