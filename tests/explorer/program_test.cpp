// The program as its user starts it.
#include "explorer/program.h"
#include "explorer/picture.h"
#include "hosting/activation_context.h"
#include "hosting/file.h"
#include "hosting/late_bound.h"
#include "hosting/text.h"
#include "support/server.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace explorer {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ProgramTest : public testing::Test {
protected:
    /// The lines of the log without their times, "Nodes Click b1".
    std::vector<std::string> Log() const {
        std::vector<std::string> lines = support::LinesOf(hosting::ReadBytes(logFile));
        for (std::string& line : lines) {
            line.erase(0, line.find('\t') + 1);
            for (char& letter : line)
                if (letter == '\t') letter = ' ';
        }
        return lines;
    }
    support::ProgramResult Tour(std::vector<std::wstring> arguments) const {
        arguments.insert(arguments.begin(), {L"--pictures", pictures, L"--log", logFile});
        return RunExplorer(arguments);
    }

    support::TemporaryFolder folder;
    std::wstring pictures = folder.File(L"pictures");
    std::wstring logFile = folder.File(L"log.txt");
};

/// A repository's file with two meta nodes, one of which cites itself.
void MakeRepository(const std::wstring& file) {
    const hosting::ActivationContext context(
        {support::ProgramFolder() / L"OrvaneRepository.X.manifest"});
    const auto repository = hosting::LateBound::Create(L"OrvaneRepository.Repository");
    repository.Call(L"New", file.c_str());
    repository.Call(L"MakeMetaNode", L"Author");
    repository.Call(L"MakeMetaNode", L"Book");
    repository.Call(L"MakeMetaLink", L"cites", L"Book", L"Book");
    repository.Call(L"MakeNode", L"b1", L"Book", L"On Trees");
    repository.Call(L"MakeNode", L"b2", L"Book", L"On Graphs");
    repository.Call(L"MakeLink", L"cites", repository.Object(L"Objects", L"b2").Get(),
                    repository.Object(L"Objects", L"b1").Get(), L"c1", L"");
    repository.Call(L"Close");
}

TEST_F(ProgramTest, ATourThroughARepositoryClicksItsWayAndSavesPictures) {
    const std::wstring file = folder.File(L"books.orvane");
    MakeRepository(file);
    const support::ProgramResult run = Tour({file});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(Log(), ElementsAre(HasSubstr("books.orvane"), "MetaNodes Click Book",
                                   "MetaLinks Click cites", "Nodes Click b2",
                                   "MetaLinks Click cites", "Links Click c1",
                                   "Tree NodeExpand On Graphs", "Tree NodeExpand On Trees",
                                   "Tree NodeExpand On Graphs", "Tree NodeExpand On Trees"));
    const std::vector<std::string> files = run.Lines();
    ASSERT_EQ(files.size(), 13u);
    for (const std::string& line : files) {
        const Picture picture = ReadPicture(hosting::FromUtf8(line));
        EXPECT_GT(picture.width, 400u) << line;
        EXPECT_GT(picture.height, 300u) << line;
        EXPECT_GT(picture.colors.size(), 3u) << line << " shows nothing";
    }
}

TEST_F(ProgramTest, TheTourOpensListsThatTheStartDoesNotShow) {
    const std::wstring file = folder.File(L"books.orvane");
    MakeRepository(file);
    const support::ProgramResult run = Tour({file});
    const std::vector<std::string> files = run.Lines();
    ASSERT_EQ(files.size(), 13u);
    const auto bytes = [&files](std::size_t index) {
        return hosting::ReadBytes(hosting::FromUtf8(files[index]));
    };
    for (std::size_t index = 1; index < files.size(); ++index)
        EXPECT_NE(bytes(index), bytes(index - 1)) << files[index];
}

TEST_F(ProgramTest, ATypeLibraryIsImportedAndBrowsed) {
    const support::ProgramResult run =
        Tour({(support::ProgramFolder() / L"OrvaneControls.dll").wstring()});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(Log(), Contains(HasSubstr("Import")));
    EXPECT_THAT(Log(), Contains(HasSubstr("Links Click")));
    EXPECT_THAT(Log(), Not(Contains(HasSubstr("Error"))));
}

TEST_F(ProgramTest, AMissingFileFailsTheTourAndIsNamed) {
    const support::ProgramResult run = Tour({folder.File(L"missing.dll")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("missing.dll"));
    EXPECT_THAT(Log(), Contains(HasSubstr("Explorer Error Importing")));
}

TEST_F(ProgramTest, WrongArgumentsAreSaidAndNothingStarts) {
    const support::ProgramResult run = RunExplorer({L"--colour"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("There is no option --colour."));
    EXPECT_THAT(run.errors, HasSubstr("Usage:"));
    EXPECT_EQ(run.output, "");
}

TEST_F(ProgramTest, HelpGoesToTheStandardOutput) {
    const support::ProgramResult run = RunExplorer({L"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, HasSubstr("Usage: OrvaneExplorer"));
    EXPECT_EQ(run.errors, "");
}

TEST_F(ProgramTest, ALogThatCannotBeWrittenIsSaidBeforeAnythingElse) {
    const support::ProgramResult run =
        RunExplorer({L"--pictures", pictures, L"--log", folder.File(L"no such folder\\log.txt")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("cannot be written"));
}

}  // namespace
}  // namespace explorer
