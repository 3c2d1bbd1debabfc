#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samples/sample_run.h"

namespace support {
namespace {

using testing::Contains;

const std::filesystem::path vbscript = std::filesystem::absolute(L"samples/vbscript/tree.vbs");
const std::filesystem::path jscript = std::filesystem::absolute(L"samples/jscript/tree.js");

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

/// What a sample prints whose user clicks the first node of the described tree and double-clicks
/// the first of the other.
std::vector<std::string> PrintedByClicks(const std::filesystem::path& sample) {
    const auto treesIn = [](const std::wstring& title) { return WindowsIn(title, WC_TREEVIEWW); };
    return PrintedInUse(
        sample,
        [&](const std::wstring& title) {
            const auto trees = treesIn(title);
            return trees.size() == 2 && SendMessageW(trees[0], TVM_GETCOUNT, 0, 0) == 2 &&
                   SendMessageW(trees[1], TVM_GETCOUNT, 0, 0) >= 3;
        },
        [&](const std::wstring& title) {
            const auto trees = treesIn(title);
            if (trees.size() != 2) return;
            PostClick(trees[0], {50, 8}, false);
            SendMessageW(trees[0], WM_NULL, 0, 0);
            PostClick(trees[1], {45, 8}, true);
        });
}

TEST(TreeSamples, ReactToClicksAndDoubleClicks) {
    EXPECT_THAT(PrintedByClicks(vbscript), Contains("clicked: Root"));
    const auto inJscript = PrintedByClicks(jscript);
    EXPECT_THAT(inJscript, Contains("clicked: Root"));
    EXPECT_THAT(inJscript, Contains("double-clicked: An Author"));
}

}  // namespace
}  // namespace support
