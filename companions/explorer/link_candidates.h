#pragma once

#include "hosting/late_bound.h"

#include <string>
#include <vector>

namespace explorer {

/// A link that the meta model allows.
struct LinkCandidate {
    hosting::LateBound metaLink;
    hosting::LateBound source;
    hosting::LateBound target;
};

/// The links that could be made between two nodes: first those from `owner`. Throws
/// hosting::Error.
[[nodiscard]] std::vector<LinkCandidate> LinkCandidates(const hosting::LateBound& owner,
                                                        const hosting::LateBound& other);

/// For people: "Ada wrote On Trees".
[[nodiscard]] std::wstring TextOf(const LinkCandidate& candidate);

/// Makes the link in the repository. Throws hosting::Error.
hosting::LateBound MakeLink(const hosting::LateBound& repository, const LinkCandidate& candidate);

}  // namespace explorer
