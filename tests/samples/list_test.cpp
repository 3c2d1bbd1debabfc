#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samples/sample_run.h"

namespace support {
namespace {

using testing::Contains;

const std::filesystem::path vbscript = std::filesystem::absolute(L"samples/vbscript/list.vbs");
const std::filesystem::path jscript = std::filesystem::absolute(L"samples/jscript/list.js");

/// Under both script hosts.
void ExpectAlwaysPrints(const std::filesystem::path& sample,
                        const std::vector<std::string>& lines) {
    ExpectLines(RunHosted(sample), lines);
    ExpectLines(RunPlain(sample), lines);
}

TEST(ListSamples, TheOneInVBScriptFillsAndFollowsAList) {
    ExpectAlwaysPrints(vbscript,
                       {"rows: 2", "no row is selected: True", "selected: On Graphs",
                        "not selected: On Trees", "checked: 2", "rows: 1", "the last: On Trees",
                        "twice: OrvaneControls.ListView", "no meta node: OrvaneControls.ListView"});
}

TEST(ListSamples, TheOneInJScriptFillsCellsByACallback) {
    ExpectAlwaysPrints(jscript,
                       {"b1: On Trees!, in 1968, bold false", "b2: On Graphs!, in 1736, bold true",
                        "node: On Trees", "node: On Graphs", "no ViewLink: true"});
}

/// What a sample prints whose user double-clicks the first row.
std::vector<std::string> PrintedByADoubleClick(const std::filesystem::path& sample) {
    const auto listIn = [](const std::wstring& title) {
        const auto lists = WindowsIn(title, WC_LISTVIEWW);
        return lists.empty() ? nullptr : lists.front();
    };
    return PrintedInUse(
        sample, [&](const std::wstring& title) { return listIn(title) != nullptr; },
        [&](const std::wstring& title) {
            // Answered once the script has done its work and waits.
            EXPECT_EQ(SendMessageW(listIn(title), LVM_GETITEMCOUNT, 0, 0), 2);
            RECT header = {};
            GetWindowRect(FindWindowExW(listIn(title), nullptr, WC_HEADERW, nullptr), &header);
            PostClick(listIn(title), {60, header.bottom - header.top + 6}, true);
        });
}

TEST(ListSamples, ReactToClicksAndDoubleClicks) {
    const auto inVbscript = PrintedByADoubleClick(vbscript);
    EXPECT_THAT(inVbscript, Contains("Click: b2"));
    EXPECT_EQ(inVbscript.back(), "DblClick: b2");
    const auto inJscript = PrintedByADoubleClick(jscript);
    EXPECT_THAT(inJscript, Contains("Click: b1"));
    EXPECT_EQ(inJscript.back(), "DblClick: b1");
}

}  // namespace
}  // namespace support
