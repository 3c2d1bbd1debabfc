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

/// Finds the meta link with the most links, and among the first of its sources the one with the
/// most of them. Throws hosting::Error.
[[nodiscard]] Route FindRoute(const hosting::LateBound& repository);

}  // namespace explorer
