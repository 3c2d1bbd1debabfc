#pragma once

#include "hosting/late_bound.h"

namespace explorer {

/// A way through a repository that shows something at each step, with the row of each step in its
/// list. Steps that the repository has nothing for are empty, and their rows -1.
struct Route {
    struct Step {
        hosting::LateBound object;
        int row = -1;
    };
    Step metaNode;
    Step node;
    Step metaLink;
    Step link;
};

/// Finds the node with the most links along one meta link, among those that are in sight when a
/// list of nodes opens; where none of them has links, the source of any link. Throws
/// hosting::Error.
[[nodiscard]] Route FindRoute(const hosting::LateBound& repository);

}  // namespace explorer
