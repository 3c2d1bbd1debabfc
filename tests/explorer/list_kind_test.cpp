#include "explorer/list_kind.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

TEST(ListKindTest, AListSaysWhatHasToBeChosenFirst) {
    EXPECT_EQ(MissingFor(ListKind::metaNodes, {}), L"");
    EXPECT_EQ(MissingFor(ListKind::metaLinks, {}), L"");
    EXPECT_EQ(MissingFor(ListKind::nodes, {}), L"Choose a meta node");
    EXPECT_EQ(MissingFor(ListKind::outgoingLinks, {L"Book", L"", L"cites"}), L"Choose a node");
    EXPECT_EQ(MissingFor(ListKind::outgoingLinks, {L"Book", L"", L"", true}),
              L"Choose a meta link");
    EXPECT_EQ(MissingFor(ListKind::links, {L"", L"", L"cites"}), L"");
}

TEST(ListKindTest, ATitleNamesWhatIsListed) {
    const ChosenNames chosen{L"Book", L"On Trees", L"cites", true};
    EXPECT_EQ(TitleOf(ListKind::nodes, chosen), L"Nodes of Book");
    EXPECT_EQ(TitleOf(ListKind::incomingLinks, chosen), L"Links of cites to On Trees");
    EXPECT_EQ(TitleOf(ListKind::outgoingLinks, {L"Book", L"", L"cites", true}),
              L"Links of cites from a node without a name");
}

TEST(ListKindTest, AColumnHasRoomForItsTitle) {
    EXPECT_EQ(ColumnWidth(L"Age", L"Long"), 1200);
    EXPECT_EQ(ColumnWidth(L"Title", L"String"), 2400);
    EXPECT_GT(ColumnWidth(std::wstring(40, L'x'), L"String"), 4000);
}

TEST(ListKindTest, AColumnHasRoomForItsTextsUnlessTheyAreVeryLong) {
    EXPECT_EQ(ColumnWidth(L"Guid", L"String", 5), ColumnWidth(L"Guid", L"String"));
    EXPECT_GT(ColumnWidth(L"Guid", L"String", 38), 4000);
    EXPECT_LT(ColumnWidth(L"Notes", L"String", 2000), 5000);
}

}  // namespace
}  // namespace explorer
