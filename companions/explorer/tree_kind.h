#pragma once

namespace explorer {

/// How the tree pane shows a repository.
enum class TreeKind {
    described,             ///< folders per meta node, their nodes, folders of links below
    hierarchy,             ///< the nodes of the chosen meta node, links followed
    hierarchyWithFolders,  ///< the same, grouped by meta node and by meta link
};

/// Whether a tree begins with the nodes of one meta node.
[[nodiscard]] constexpr bool NeedsMetaNode(TreeKind kind) {
    return kind != TreeKind::described;
}

}  // namespace explorer
