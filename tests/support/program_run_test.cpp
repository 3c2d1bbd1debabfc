#include "support/program_run.h"

#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace support {
namespace {

using testing::ElementsAre;

ProgramResult RunCommand(const std::vector<std::wstring>& words,
                         const std::filesystem::path& folder = {}, DWORD patience = 60000) {
    std::vector<std::wstring> arguments{L"/c"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    return RunProgram(SystemFolder() / "cmd.exe", arguments, folder, patience);
}

TEST(ProgramRuns, GiveExitCodeAndWhatWasWritten) {
    const TemporaryFolder folder;
    WriteFile(folder / "say.cmd", "@echo one\r\n@echo two\r\n@echo wrong 1>&2\r\n@exit 7\r\n");
    const ProgramResult result = RunCommand({L"say.cmd"}, folder.Path());
    EXPECT_THAT(result.Lines(), ElementsAre("one", "two"));
    EXPECT_THAT(LinesOf(result.errors), ElementsAre("wrong "));
    EXPECT_EQ(result.exitCode, 7);
}

TEST(ProgramRuns, EndWhatDoesNotEnd) {
    const TemporaryFolder folder;
    WriteFile(folder / "endless.cmd", ":again\r\n@goto again\r\n");
    EXPECT_THROW(static_cast<void>(RunCommand({L"endless.cmd"}, folder.Path(), 500)),
                 std::runtime_error);
}

TEST(ProgramRuns, SayWhatDoesNotStart) {
    EXPECT_THROW(static_cast<void>(RunProgram(L"Q:\\none.exe", {})), std::runtime_error);
}

}  // namespace
}  // namespace support
