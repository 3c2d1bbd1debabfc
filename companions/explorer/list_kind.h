#pragma once

#include <array>
#include <string>
#include <string_view>

namespace explorer {

/// What a list shows; the numbers are those of the list view's Mode.
enum class ListKind {
    metaNodes = 0,
    metaLinks = 1,
    outgoingMetaLinks = 2,
    incomingMetaLinks = 3,
    nodes = 4,
    links = 5,
    outgoingLinks = 6,
    incomingLinks = 7,
    metaProperties = 8,
};

inline constexpr std::array allListKinds = {
    ListKind::metaNodes,
    ListKind::metaLinks,
    ListKind::metaProperties,
    ListKind::outgoingMetaLinks,
    ListKind::incomingMetaLinks,
    ListKind::nodes,
    ListKind::links,
    ListKind::outgoingLinks,
    ListKind::incomingLinks,
};

/// The names of what is chosen, empty where nothing is.
struct ChosenNames {
    std::wstring metaNode;
    std::wstring node;
    std::wstring metaLink;
    bool hasNode = false;  ///< a node may have no name
};

/// What of the navigator's choice a list depends on.
struct ListNeeds {
    bool metaNode = false;
    bool node = false;
    bool metaLink = false;
};
[[nodiscard]] ListNeeds NeedsOf(ListKind kind);

/// What has to be chosen before a list of this kind shows anything, for people: "Choose a meta
/// node". Empty where enough is chosen.
[[nodiscard]] std::wstring MissingFor(ListKind kind, const ChosenNames& chosen);

/// What a list of this kind shows, for people: "Nodes of Book".
[[nodiscard]] std::wstring TitleOf(ListKind kind, const ChosenNames& chosen);

/// Whether rows of this kind are links between nodes.
[[nodiscard]] constexpr bool ListsLinks(ListKind kind) {
    return kind == ListKind::links || kind == ListKind::outgoingLinks ||
           kind == ListKind::incomingLinks;
}

/// A column that lists of meta objects have; the width in twips.
struct ListColumn {
    const wchar_t* title;
    const wchar_t* property;
    int width;
};

/// The columns of a list of meta objects, as many as it has.
struct ListColumns {
    const ListColumn* first;
    int count;

    [[nodiscard]] const ListColumn* begin() const { return first; }
    [[nodiscard]] const ListColumn* end() const { return first + count; }
};

/// None for lists of nodes and links, whose meta object says what they have.
[[nodiscard]] ListColumns ColumnsOf(ListKind kind);

/// A width in twips for a column of values of a data type, with room for its title and for texts of
/// so many letters, unless they are very long.
[[nodiscard]] int ColumnWidth(std::wstring_view title, std::wstring_view dataType,
                              std::size_t letters = 0);

}  // namespace explorer
