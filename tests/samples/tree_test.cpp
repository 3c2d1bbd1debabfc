#include "support/program_run.h"
#include "support/pump.h"
#include "support/server.h"
#include "support/temporary_folder.h"

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using support::ProgramResult;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const std::filesystem::path vbscript = std::filesystem::absolute(L"samples/vbscript/tree.vbs");
const std::filesystem::path jscript = std::filesystem::absolute(L"samples/jscript/tree.js");

void ExpectLines(const ProgramResult& result, const std::vector<std::string>& lines) {
    EXPECT_THAT(result.errors, IsEmpty());
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.Lines(), lines);
}

ProgramResult RunHosted(const std::filesystem::path& script) {
    return support::RunProgram(support::ProgramFolder() / "orvane-scripthost.exe",
                               {L"--hidden", L"--timeout", L"60", script.wstring()});
}

ProgramResult RunPlain(const std::filesystem::path& script) {
    return support::RunProgram(support::SystemFolder() / "cscript.exe",
                               {L"/nologo", script.wstring()});
}

TEST(TreeSamples, TheOneInVBScriptBuildsBothTrees) {
    ExpectLines(RunHosted(vbscript),
                {"described: 1", "the placeholder stands below: Root", "the folder: Book",
                 "opened: On Trees", "a link leads to: On Graphs", "new below: cites",
                 "removed: is", "gone: True"});
    ExpectLines(RunPlain(vbscript), {"described: 1", "the placeholder stands below: Root",
                                     "the folder: Book", "nothing else: True"});
}

TEST(TreeSamples, TheOneInJScriptBuildsBothTrees) {
    ExpectLines(RunHosted(jscript),
                {"described: Person", "asked about: An Author", "asked about: On Trees by first",
                 "asked about: On Graphs by second", "opened: ID:1 An Author",
                 "its parent: An Author", "selected: On Trees"});
    ExpectLines(RunPlain(jscript), {"described: Person", "not allowed: true"});
}

BOOL CALLBACK KeepTree(HWND child, LPARAM found) {
    wchar_t name[32] = {};
    GetClassNameW(child, name, 32);
    if (wcscmp(name, WC_TREEVIEWW) == 0)
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(child);
    return TRUE;
}

/// The system's trees in a window, from the left.
std::vector<HWND> TreesIn(const std::wstring& title) {
    std::vector<HWND> trees;
    const HWND window = FindWindowW(nullptr, title.c_str());
    if (window != nullptr) EnumChildWindows(window, KeepTree, reinterpret_cast<LPARAM>(&trees));
    std::sort(trees.begin(), trees.end(), [](HWND a, HWND b) {
        RECT left = {};
        RECT right = {};
        GetWindowRect(a, &left);
        GetWindowRect(b, &right);
        return left.left < right.left;
    });
    return trees;
}

void Click(HWND tree, POINT point, bool twice) {
    const LPARAM place = MAKELPARAM(point.x, point.y);
    PostMessageW(tree, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(tree, WM_LBUTTONUP, 0, place);
    if (!twice) return;
    PostMessageW(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
    PostMessageW(tree, WM_LBUTTONUP, 0, place);
}

/// What a sample prints that waits for its user, who clicks the first node of the described tree
/// and double-clicks the first of the other.
std::vector<std::string> PrintedByClicks(const std::filesystem::path& sample) {
    const support::TemporaryFolder folder;
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE output =
        CreateFileW(folder.File(L"output").c_str(), GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, CREATE_ALWAYS, 0, nullptr);
    const support::RunningProgram program(
        support::ProgramFolder() / "orvane-scripthost.exe",
        {L"--hidden", L"--timeout", L"60", sample.wstring(), L"wait"}, {}, output);
    const std::wstring title = sample.filename().wstring();
    const auto filled = [&] {
        const auto trees = TreesIn(title);
        return trees.size() == 2 && SendMessageW(trees[0], TVM_GETCOUNT, 0, 0) == 2 &&
               SendMessageW(trees[1], TVM_GETCOUNT, 0, 0) >= 3;
    };
    EXPECT_TRUE(support::PumpUntil(filled, 30000));
    const auto trees = TreesIn(title);
    if (trees.size() == 2) {
        Click(trees[0], {50, 8}, false);
        SendMessageW(trees[0], WM_NULL, 0, 0);
        Click(trees[1], {45, 8}, true);
    }
    EXPECT_TRUE(program.EndsWithin(30000));
    CloseHandle(output);
    return support::LinesOf(support::ReadFile(folder / "output"));
}

TEST(TreeSamples, ReactToClicksAndDoubleClicks) {
    EXPECT_THAT(PrintedByClicks(vbscript), Contains("clicked: Root"));
    const auto inJscript = PrintedByClicks(jscript);
    EXPECT_THAT(inJscript, Contains("clicked: Root"));
    EXPECT_THAT(inJscript, Contains("double-clicked: An Author"));
}

}  // namespace
