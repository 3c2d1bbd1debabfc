#include "repository/store/text.h"

#include <gtest/gtest.h>

namespace repository::store {
namespace {

TEST(FoldCase, AsciiLettersBecomeSmall) {
    EXPECT_EQ(FoldCase("Meta_NODE-09 z"), "meta_node-09 z");
}

TEST(FoldCase, LettersOfOtherScriptsFoldToo) {
    EXPECT_EQ(FoldCase("ÄÖÜ Straße"), FoldCase("äöü STRAßE"));
    EXPECT_EQ(FoldCase("ΣΊΣΥΦΟΣ"), FoldCase("σίσυφος"));
    EXPECT_EQ(FoldCase("ЖИВАГО"), "живаго");
    EXPECT_EQ(FoldCase("Ǆ ǅ"), "ǆ ǆ");
    EXPECT_EQ(FoldCase("\xF0\x90\x90\x80"), "\xF0\x90\x90\xA8");
}

TEST(FoldCase, TheFoldingIsSimpleAndKnowsNoLanguage) {
    EXPECT_EQ(FoldCase("ẞ"), "ß");
    EXPECT_NE(FoldCase("ß"), FoldCase("ss"));
    EXPECT_EQ(FoldCase("İ"), "İ");
    EXPECT_EQ(FoldCase("I"), "i");
}

TEST(FoldCase, FoldingAgainChangesNothing) {
    for (const char* text : {"ΑΒΓ", "ſ", "K", "Ⴀ", "Ꭰ", "Ω"}) {
        EXPECT_EQ(FoldCase(FoldCase(text)), FoldCase(text)) << text;
    }
}

TEST(FoldCase, WhatIsNoUtf8StaysAsItIs) {
    for (const char* text : {"\x80", "\xC3", "\xE2\x82", "\xFF\xFE", "\xC0\xAF", "\xED\xA0\x80"}) {
        EXPECT_EQ(FoldCase(text), text);
    }
    EXPECT_EQ(FoldCase("A\xC3"
                       "B"),
              "a\xC3"
              "b");
}

}  // namespace
}  // namespace repository::store
