#include "explorer/badge.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

TEST(BadgeTest, TypesOfOneFamilyShareTheColourAndDifferInTheLetter) {
    const Badge actor = TypeBadge(L"BusinessActor", Badge::Frame::disc);
    const Badge role = TypeBadge(L"BusinessRole", Badge::Frame::disc);
    EXPECT_EQ(actor.color, role.color);
    EXPECT_EQ(actor.letter, L'A');
    EXPECT_EQ(role.letter, L'R');
    EXPECT_NE(actor.Key(), role.Key());
}

TEST(BadgeTest, TheLetterIsTheInitialOfTheLastWord) {
    EXPECT_EQ(TypeBadge(L"BPMNShape", Badge::Frame::disc).letter, L'S');
    EXPECT_EQ(TypeBadge(L"node_type", Badge::Frame::disc).letter, L'T');
    EXPECT_EQ(TypeBadge(L"book", Badge::Frame::disc).letter, L'B');
    EXPECT_EQ(TypeBadge(L"", Badge::Frame::disc).letter, L'?');
}

TEST(BadgeTest, AFilledDiscCoversItsMiddleAndNotTheCorners) {
    const BadgeShape shape = Rasterize({Badge::Frame::disc, true, 0, L'A'}, 16);
    ASSERT_EQ(shape.frame.size(), 256u);
    EXPECT_EQ(shape.frame[8 * 16 + 8], 255);
    EXPECT_EQ(shape.frame[0], 0);
    EXPECT_TRUE(shape.arrow.empty());
}

TEST(BadgeTest, ALineLeavesItsInsideEmptyAndAnArrowGoesAcross) {
    const BadgeShape shape = Rasterize({Badge::Frame::square, false, 0, 0}, 16);
    EXPECT_EQ(shape.frame[8 * 16 + 8], 0);
    EXPECT_GT(shape.frame[8 * 16 + 1], 0);
    EXPECT_GT(shape.arrow[8 * 16 + 8], 0);
}

}  // namespace
}  // namespace explorer
