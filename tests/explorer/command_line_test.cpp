#include "explorer/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace explorer {
namespace {

using Texts = std::vector<std::wstring>;

TEST(CommandLineTest, WithoutArgumentsNothingIsAskedFor) {
    const CommandLine result = ParseCommandLine({});
    EXPECT_TRUE(result.files.empty());
    EXPECT_TRUE(result.pictures.empty());
    EXPECT_TRUE(result.log.empty());
    EXPECT_FALSE(result.help);
    EXPECT_TRUE(result.complaint.empty());
}

TEST(CommandLineTest, FilesKeepTheirOrderAndMayStandBetweenOptions) {
    const CommandLine result =
        ParseCommandLine({L"b.dll", L"--log", L"events.txt", L"a.tlb", L"--pictures=out", L"c"});
    EXPECT_EQ(result.files, (Texts{L"b.dll", L"a.tlb", L"c"}));
    EXPECT_EQ(result.log, L"events.txt");
    EXPECT_EQ(result.pictures, L"out");
    EXPECT_TRUE(result.complaint.empty());
}

TEST(CommandLineTest, AValueMayLookLikeAnOptionOrHoldAnEqualsSign) {
    EXPECT_EQ(ParseCommandLine({L"--log", L"--x"}).log, L"--x");
    EXPECT_EQ(ParseCommandLine({L"--log=a=b"}).log, L"a=b");
}

TEST(CommandLineTest, TwoDashesEndTheOptions) {
    const CommandLine result = ParseCommandLine({L"--", L"--help", L"-x"});
    EXPECT_EQ(result.files, (Texts{L"--help", L"-x"}));
    EXPECT_FALSE(result.help);
}

TEST(CommandLineTest, ASingleDashIsAFile) {
    EXPECT_EQ(ParseCommandLine({L"-"}).files, Texts{L"-"});
}

TEST(CommandLineTest, HelpHasTwoNames) {
    EXPECT_TRUE(ParseCommandLine({L"--help"}).help);
    EXPECT_TRUE(ParseCommandLine({L"-h"}).help);
}

TEST(CommandLineTest, WhatIsWrongIsNamed) {
    EXPECT_EQ(ParseCommandLine({L"--colour"}).complaint, L"There is no option --colour.");
    EXPECT_EQ(ParseCommandLine({L"--logs"}).complaint, L"There is no option --logs.");
    EXPECT_EQ(ParseCommandLine({L"--log"}).complaint, L"The option --log needs a value.");
    EXPECT_EQ(ParseCommandLine({L"--log="}).complaint, L"The option --log needs a value.");
    EXPECT_EQ(ParseCommandLine({L"--log", std::wstring()}).complaint,
              L"The option --log needs a value.");
    EXPECT_EQ(ParseCommandLine({L"--log=a", L"--log=b"}).complaint,
              L"The option --log is there twice.");
    EXPECT_EQ(ParseCommandLine({L"a.dll", std::wstring()}).complaint, L"A file's name is empty.");
}

TEST(CommandLineTest, EachOptionIsInTheUsageText) {
    const std::wstring text = usage;
    for (const wchar_t* option : {L"--pictures", L"--log", L"--help"})
        EXPECT_NE(text.find(option), std::wstring::npos);
}

}  // namespace
}  // namespace explorer
