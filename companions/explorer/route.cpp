#include "explorer/route.h"

#include "explorer/automation.h"

namespace explorer {

namespace {

using hosting::LateBound;

constexpr int nodesInSight = 8;

long CountOf(const LateBound& collection) {
    return static_cast<long>(collection.Get(L"Count"));
}

Route::Step FirstOf(const LateBound& collection) {
    Route::Step first;
    ForEach(collection, [&first](const LateBound& element) {
        first = {element, 0};
        return false;
    });
    return first;
}

/// Where an object stands in a collection, without the elements that `skip` names.
template <class Skip>
Route::Step Find(const LateBound& collection, const LateBound& wanted, Skip&& skip) {
    Route::Step step{wanted, -1};
    int row = 0;
    ForEach(collection, [&](const LateBound& element) {
        if (skip(element)) return true;
        if (IsSame(element, wanted)) step.row = row;
        ++row;
        return step.row < 0;
    });
    return step;
}

/// The ends of the search: a node, and the meta link that its links are of.
struct Found {
    LateBound node;
    LateBound metaLink;
    long links = 0;
};

/// Compares the first nodes that may have links of a meta link with what was found so far.
void LookAtFirstNodes(const LateBound& metaLink, Found& found) {
    const _variant_t name = metaLink.Get(L"name");
    int looked = 0;
    ForEach(metaLink.Object(L"source").Object(L"Extension"), [&](const LateBound& node) {
        const long links = CountOf(node.Object(L"Outgoing_", name));
        if (links > found.links) found = {node, metaLink, links};
        return ++looked < nodesInSight;
    });
}

Found FindNode(const LateBound& repository) {
    Found found;
    LateBound anyLink;
    ForEach(repository.Object(L"MetaLinks"), [&](const LateBound& metaLink) {
        const LateBound links = metaLink.Object(L"Extension");
        if (CountOf(links) == 0) return true;
        if (!anyLink) anyLink = FirstOf(links).object;
        LookAtFirstNodes(metaLink, found);
        return true;
    });
    if (!found.node && anyLink) return {anyLink.Object(L"source"), anyLink.Object(L"parent"), 1};
    return found;
}

/// The first meta node and its first node, for a repository without links.
Route FirstNode(const LateBound& repository) {
    Route route;
    ForEach(repository.Object(L"MetaNodes"), [&route](const LateBound& metaNode) {
        if (IsBuiltIn(metaNode)) return true;
        route.metaNode = {metaNode, 0};
        return false;
    });
    if (route.metaNode.object) route.node = FirstOf(route.metaNode.object.Object(L"Extension"));
    return route;
}

}  // namespace

Route FindRoute(const LateBound& repository) {
    const Found found = FindNode(repository);
    if (!found.node) return FirstNode(repository);
    const auto none = [](const LateBound&) { return false; };
    const LateBound metaNode = found.node.Object(L"parent");
    Route route;
    route.metaNode = Find(repository.Object(L"MetaNodes"), metaNode, IsBuiltIn);
    route.node = Find(metaNode.Object(L"Extension"), found.node, none);
    route.metaLink = Find(metaNode.Object(L"Outgoing"), found.metaLink, none);
    route.link = FirstOf(found.node.Object(L"Outgoing_", found.metaLink.Get(L"name")));
    return route;
}

}  // namespace explorer
