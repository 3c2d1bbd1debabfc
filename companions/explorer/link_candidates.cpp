#include "explorer/link_candidates.h"

#include "explorer/automation.h"

#include <algorithm>

namespace explorer {

namespace {

using hosting::LateBound;

std::vector<LateBound> ElementsOf(const LateBound& collection) {
    std::vector<LateBound> elements;
    ForEach(collection, [&](const LateBound& element) {
        elements.push_back(element);
        return true;
    });
    return elements;
}

/// A meta link that leaves the one meta node, or one above it, and arrives at the other.
void Add(std::vector<LinkCandidate>& candidates, const LateBound& source, const LateBound& target) {
    const auto incoming = ElementsOf(target.Object(L"parent").Object(L"Incoming"));
    for (const LateBound& metaLink : ElementsOf(source.Object(L"parent").Object(L"Outgoing"))) {
        const bool arrives =
            std::any_of(incoming.begin(), incoming.end(),
                        [&](const LateBound& each) { return IsSame(each, metaLink); });
        if (arrives) candidates.push_back({metaLink, source, target});
    }
}

}  // namespace

std::vector<LinkCandidate> LinkCandidates(const LateBound& owner, const LateBound& other) {
    std::vector<LinkCandidate> candidates;
    Add(candidates, owner, other);
    if (!IsSame(owner, other)) Add(candidates, other, owner);
    return candidates;
}

std::wstring TextOf(const LinkCandidate& candidate) {
    return CaptionOf(candidate.source) + L" " + TextOf(candidate.metaLink.Get(L"name")) + L" " +
           CaptionOf(candidate.target);
}

LateBound MakeLink(const LateBound& repository, const LinkCandidate& candidate) {
    const LateBound generator = LateBound::Create(L"OrvaneRepository.UUIDGenerator");
    const _variant_t identifier = generator.Call(L"GetUUID");
    return repository.Object(L"MakeLink", candidate.metaLink.Get(), candidate.source.Get(),
                             candidate.target.Get(), identifier,
                             TextOf(candidate.target.Get(L"name")).c_str());
}

}  // namespace explorer
