#include "support/program_run.h"
#include "support/pump.h"
#include "support/server.h"
#include "support/temporary_folder.h"

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using support::ProgramResult;
using testing::ElementsAre;
using testing::IsEmpty;

const std::filesystem::path vbscript = std::filesystem::absolute(L"samples/vbscript/list.vbs");
const std::filesystem::path jscript = std::filesystem::absolute(L"samples/jscript/list.js");

ProgramResult RunHosted(const std::filesystem::path& script) {
    return support::RunProgram(support::ProgramFolder() / "orvane-scripthost.exe",
                               {L"--hidden", L"--timeout", L"60", script.wstring()});
}

ProgramResult RunPlain(const std::filesystem::path& script) {
    return support::RunProgram(support::SystemFolder() / "cscript.exe",
                               {L"/nologo", script.wstring()});
}

TEST(ListSamples, TheOneInVBScriptFillsAndFollowsAList) {
    for (const auto& run : {RunHosted, RunPlain}) {
        const ProgramResult result = run(vbscript);
        EXPECT_THAT(result.errors, IsEmpty());
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(
            result.Lines(),
            ElementsAre("rows: 2", "no row is selected: True", "selected: On Graphs",
                        "not selected: On Trees", "checked: 2", "rows: 1", "the last: On Trees",
                        "twice: OrvaneControls.ListView", "no meta node: OrvaneControls.ListView"));
    }
}

TEST(ListSamples, TheOneInJScriptFillsCellsByACallback) {
    for (const auto& run : {RunHosted, RunPlain}) {
        const ProgramResult result = run(jscript);
        EXPECT_THAT(result.errors, IsEmpty());
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(
            result.Lines(),
            ElementsAre("b1: On Trees!, in 1968, bold false", "b2: On Graphs!, in 1736, bold true",
                        "node: On Trees", "node: On Graphs", "no ViewLink: true"));
    }
}

BOOL CALLBACK KeepList(HWND child, LPARAM found) {
    wchar_t name[32] = {};
    GetClassNameW(child, name, 32);
    if (wcscmp(name, WC_LISTVIEWW) != 0) return TRUE;
    *reinterpret_cast<HWND*>(found) = child;
    return FALSE;
}

/// The system's list in a window; null where there is none yet.
HWND ListIn(const std::wstring& title) {
    const HWND window = FindWindowW(nullptr, title.c_str());
    if (window == nullptr) return nullptr;
    HWND list = nullptr;
    EnumChildWindows(window, KeepList, reinterpret_cast<LPARAM>(&list));
    return list;
}

/// What a sample prints that waits for its user, who double-clicks the first row.
std::vector<std::string> PrintedByADoubleClick(const std::filesystem::path& sample) {
    const support::TemporaryFolder folder;
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE output =
        CreateFileW(folder.File(L"output").c_str(), GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, CREATE_ALWAYS, 0, nullptr);
    const support::RunningProgram program(
        support::ProgramFolder() / "orvane-scripthost.exe",
        {L"--hidden", L"--timeout", L"60", sample.wstring(), L"wait"}, {}, output);
    const std::wstring title = sample.filename().wstring();
    EXPECT_TRUE(support::PumpUntil([&] { return ListIn(title) != nullptr; }, 30000));
    // Answered once the script has done its work and waits.
    EXPECT_EQ(SendMessageW(ListIn(title), LVM_GETITEMCOUNT, 0, 0), 2);
    RECT header = {};
    GetWindowRect(FindWindowExW(ListIn(title), nullptr, WC_HEADERW, nullptr), &header);
    const LPARAM firstRow = MAKELPARAM(60, header.bottom - header.top + 6);
    for (const UINT down : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
        PostMessageW(ListIn(title), down, MK_LBUTTON, firstRow);
        PostMessageW(ListIn(title), WM_LBUTTONUP, 0, firstRow);
    }
    EXPECT_TRUE(program.EndsWithin(30000));
    CloseHandle(output);
    return support::LinesOf(support::ReadFile(folder / "output"));
}

TEST(ListSamples, ReactToClicksAndDoubleClicks) {
    const auto inVbscript = PrintedByADoubleClick(vbscript);
    EXPECT_THAT(inVbscript, testing::Contains("Click: b2"));
    EXPECT_EQ(inVbscript.back(), "DblClick: b2");
    const auto inJscript = PrintedByADoubleClick(jscript);
    EXPECT_THAT(inJscript, testing::Contains("Click: b1"));
    EXPECT_EQ(inJscript.back(), "DblClick: b1");
}

}  // namespace
