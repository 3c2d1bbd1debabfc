#include "explorer/list_kind.h"

#include <algorithm>
#include <iterator>

namespace explorer {

namespace {

constexpr int twipsPerLetter = 100;
constexpr int headerPadding = 360;

constexpr ListColumn metaNodeColumns[] = {
    {L"Name", L"Name", 3600},
    {L"Description", L"Description", 6600},
};
constexpr ListColumn metaLinkColumns[] = {
    {L"Name", L"Name", 3300},
    {L"From", L"SourceName", 2400},
    {L"Relation", L"LinkName", 2100},
    {L"To", L"TargetName", 2400},
    {L"Description", L"Description", 3000},
};
constexpr ListColumn metaPropertyColumns[] = {
    {L"Name", L"Name", 3000},
    {L"Type", L"DataType", 1500},
    {L"Description", L"Description", 5700},
};

template <std::size_t count>
ListColumns All(const ListColumn (&columns)[count]) {
    return {columns, static_cast<int>(count)};
}

std::wstring NodeName(const ChosenNames& chosen) {
    return chosen.node.empty() ? L"a node without a name" : chosen.node;
}

}  // namespace

ListNeeds NeedsOf(ListKind kind) {
    switch (kind) {
        case ListKind::metaNodes:
        case ListKind::metaLinks:
            return {};
        case ListKind::links:
            return {.metaLink = true};
        case ListKind::outgoingLinks:
        case ListKind::incomingLinks:
            return {.node = true, .metaLink = true};
        default:
            return {.metaNode = true};
    }
}

std::wstring MissingFor(ListKind kind, const ChosenNames& chosen) {
    const ListNeeds needs = NeedsOf(kind);
    if (needs.metaNode && chosen.metaNode.empty()) return L"Choose a meta node";
    if (needs.node && !chosen.hasNode) return L"Choose a node";
    if (needs.metaLink && chosen.metaLink.empty()) return L"Choose a meta link";
    return {};
}

std::wstring TitleOf(ListKind kind, const ChosenNames& chosen) {
    switch (kind) {
        case ListKind::metaNodes:
            return L"Meta nodes";
        case ListKind::metaLinks:
            return L"Meta links";
        case ListKind::outgoingMetaLinks:
            return L"Meta links from " + chosen.metaNode;
        case ListKind::incomingMetaLinks:
            return L"Meta links to " + chosen.metaNode;
        case ListKind::nodes:
            return L"Nodes of " + chosen.metaNode;
        case ListKind::links:
            return L"Links of " + chosen.metaLink;
        case ListKind::outgoingLinks:
            return L"Links of " + chosen.metaLink + L" from " + NodeName(chosen);
        case ListKind::incomingLinks:
            return L"Links of " + chosen.metaLink + L" to " + NodeName(chosen);
        case ListKind::metaProperties:
            return L"Properties of " + chosen.metaNode;
    }
    return {};
}

ListColumns ColumnsOf(ListKind kind) {
    switch (kind) {
        case ListKind::metaNodes:
            return All(metaNodeColumns);
        case ListKind::metaLinks:
        case ListKind::outgoingMetaLinks:
        case ListKind::incomingMetaLinks:
            return All(metaLinkColumns);
        case ListKind::metaProperties:
            return All(metaPropertyColumns);
        default:
            return {nullptr, 0};
    }
}

int ColumnWidth(std::wstring_view title, std::wstring_view dataType, std::size_t letters) {
    constexpr std::size_t most = 45;
    const auto widthFor = [](std::size_t count) {
        return static_cast<int>(count) * twipsPerLetter + headerPadding;
    };
    const int forDataType = dataType == L"String" ? 2400 : 1200;
    return std::max({widthFor(title.size()), widthFor(std::min(letters, most)), forDataType});
}

}  // namespace explorer
