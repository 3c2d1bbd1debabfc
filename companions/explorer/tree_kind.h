#pragma once

#include <array>

namespace explorer {

/// How the tree pane shows a repository.
enum class TreeKind {
    described,             ///< folders per meta node, their nodes, folders of links below
    hierarchy,             ///< the nodes of the chosen meta node, links followed
    hierarchyWithFolders,  ///< the same, grouped by meta node and by meta link
};

inline constexpr std::array allTreeKinds = {TreeKind::described, TreeKind::hierarchy,
                                            TreeKind::hierarchyWithFolders};

}  // namespace explorer
