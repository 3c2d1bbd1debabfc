#include "support/program_run.h"
#include "support/server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using support::ProgramResult;
using testing::ElementsAre;
using testing::IsEmpty;

const std::filesystem::path sample = std::filesystem::absolute(L"samples/vbscript/combo.vbs");

TEST(ComboSample, InAWindowShowsSelectionsAndEvents) {
    const ProgramResult result =
        support::RunProgram(support::ProgramFolder() / "orvane-scripthost.exe",
                            {L"--hidden", L"--timeout", L"60", sample.wstring()});
    EXPECT_THAT(result.errors, IsEmpty());
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(
        result.Lines(),
        ElementsAre("no row is current: True", "Click: b2", "selected node: On Graphs", "Click: c1",
                    "selected link: builds on", "unknown property: OrvaneRepository.Node",
                    "without a property: True", "no meta node: OrvaneControls.Combo"));
}

TEST(ComboSample, RunsUnderTheSystemsScriptHostWithoutEvents) {
    const ProgramResult result = support::RunProgram(support::SystemFolder() / "cscript.exe",
                                                     {L"/nologo", sample.wstring()});
    EXPECT_THAT(result.errors, IsEmpty());
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.Lines(),
                ElementsAre("no row is current: True", "selected node: On Graphs",
                            "selected link: builds on", "unknown property: OrvaneRepository.Node",
                            "without a property: True", "no meta node: OrvaneControls.Combo"));
}

}  // namespace
