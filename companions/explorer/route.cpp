#include "explorer/route.h"

#include "explorer/automation.h"

namespace explorer {

namespace {

using hosting::LateBound;

/// So many nodes are looked at, for these are in sight when a list opens.
constexpr int nodesLookedAt = 8;

bool IsBuiltIn(const LateBound& metaNode) {
    const std::wstring name = TextOf(metaNode.Get(L"name"));
    return name == L"MetaNode" || name == L"MetaLink" || name == L"MetaProperty";
}

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

LateBound MetaLinkWithMostLinks(const LateBound& repository) {
    LateBound best;
    long most = 0;
    ForEach(repository.Object(L"MetaLinks"), [&](const LateBound& metaLink) {
        const long count = CountOf(metaLink.Object(L"Extension"));
        if (count > most) {
            most = count;
            best = metaLink;
        }
        return true;
    });
    return best;
}

Route::Step NodeWithMostLinks(const LateBound& metaNode, const _variant_t& metaLinkName) {
    Route::Step best;
    long most = -1;
    int row = 0;
    ForEach(metaNode.Object(L"Extension"), [&](const LateBound& node) {
        const long count = CountOf(node.Object(L"Outgoing_", metaLinkName));
        if (count > most) {
            most = count;
            best = {node, row};
        }
        // Further down only until there is one with a link at all.
        return ++row < nodesLookedAt || most == 0;
    });
    return best;
}

}  // namespace

Route FindRoute(const LateBound& repository) {
    const auto none = [](const LateBound&) { return false; };
    Route route;
    const LateBound metaLink = MetaLinkWithMostLinks(repository);
    if (!metaLink) {
        ForEach(repository.Object(L"MetaNodes"), [&route](const LateBound& metaNode) {
            if (IsBuiltIn(metaNode)) return true;
            route.metaNode = {metaNode, 0};
            return false;
        });
        if (route.metaNode.object) route.node = FirstOf(route.metaNode.object.Object(L"Extension"));
        return route;
    }
    const LateBound metaNode = metaLink.Object(L"source");
    const _variant_t metaLinkName = metaLink.Get(L"name");
    route.metaNode = Find(repository.Object(L"MetaNodes"), metaNode, IsBuiltIn);
    route.metaLink = Find(metaNode.Object(L"Outgoing"), metaLink, none);
    route.node = NodeWithMostLinks(metaNode, metaLinkName);
    if (route.node.object)
        route.link = FirstOf(route.node.object.Object(L"Outgoing_", metaLinkName));
    return route;
}

}  // namespace explorer
