#include "explorer/division.h"

#include <gtest/gtest.h>

namespace explorer {
namespace {

constexpr int bar = 6;

TEST(DivisionTest, TheOneThatKeepsItsLengthKeepsItWhenTheWholeGrows) {
    const Division first(Division::Keeps::first, 120);
    EXPECT_EQ(first.First(400, bar, 50, 50), 120);
    EXPECT_EQ(first.First(800, bar, 50, 50), 120);
    const Division second(Division::Keeps::second, 120);
    EXPECT_EQ(second.First(400, bar, 50, 50), 400 - bar - 120);
    EXPECT_EQ(second.First(800, bar, 50, 50), 800 - bar - 120);
}

TEST(DivisionTest, NeitherIsLessThanItsMinimumWhileBothFit) {
    const Division division(Division::Keeps::first, 300);
    EXPECT_EQ(division.First(206, bar, 50, 80), 120);
    EXPECT_EQ(Division(Division::Keeps::first, 0).First(206, bar, 50, 80), 50);
}

TEST(DivisionTest, TheFirstGetsWhatThereIsWhereTheMinimaDoNotFit) {
    const Division division(Division::Keeps::second, 90);
    EXPECT_EQ(division.First(106, bar, 60, 80), 60);
    EXPECT_EQ(division.First(46, bar, 60, 80), 40);
    EXPECT_EQ(division.First(3, bar, 60, 80), 0);
}

TEST(DivisionTest, WhatTheUserChoosesComesBackWhenThereIsRoomAgain) {
    Division division(Division::Keeps::first, 100);
    division.Move(220, 406, bar, 50, 50);
    EXPECT_EQ(division.First(406, bar, 50, 50), 220);
    EXPECT_EQ(division.First(206, bar, 50, 50), 150);
    EXPECT_EQ(division.First(406, bar, 50, 50), 220);
}

TEST(DivisionTest, MovingStopsAtTheMinima) {
    for (const auto keeps : {Division::Keeps::first, Division::Keeps::second}) {
        Division division(keeps, 100);
        division.Move(-30, 406, bar, 50, 70);
        EXPECT_EQ(division.First(406, bar, 50, 70), 50);
        division.Move(1000, 406, bar, 50, 70);
        EXPECT_EQ(division.First(406, bar, 50, 70), 330);
    }
}

}  // namespace
}  // namespace explorer
