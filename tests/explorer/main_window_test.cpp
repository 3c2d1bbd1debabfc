#include "explorer/main_window.h"

#include "explorer/resources.h"
#include "explorer/window_fixture.h"
#include "support/dialog_watcher.h"
#include "support/input.h"
#include "support/pump.h"
#include "support/server.h"
#include "support/temporary_folder.h"

#include <commctrl.h>
#include <gmock/gmock.h>

namespace explorer {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class MainWindowTest : public WindowTest {
protected:
    std::wstring Title() const {
        wchar_t text[512] = L"";
        GetWindowTextW(window->Handle(), text, 512);
        return text;
    }
    RECT Bounds(HWND child) const {
        RECT bounds{};
        GetWindowRect(child, &bounds);
        MapWindowPoints(nullptr, window->Handle(), reinterpret_cast<POINT*>(&bounds), 2);
        return bounds;
    }
    std::vector<RECT> FieldBounds() const {
        std::vector<RECT> bounds;
        for (const ComboField* field : {&navigator->MetaNodes(), &navigator->Nodes(),
                                        &navigator->MetaLinks(), &navigator->Links()})
            bounds.push_back(Bounds(field->Window()));
        return bounds;
    }
    void Resize(int width, int height) {
        SetWindowPos(window->Handle(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    }
    /// Fields in one column below each other, then the log, all within the client area.
    void ExpectTidy() const {
        RECT client{};
        GetClientRect(window->Handle(), &client);
        const auto fields = FieldBounds();
        for (std::size_t index = 0; index < fields.size(); ++index) {
            EXPECT_EQ(fields[index].left, fields[0].left);
            EXPECT_EQ(fields[index].right, fields[0].right);
            if (index) {
                EXPECT_GT(fields[index].top, fields[index - 1].bottom);
            }
        }
        const RECT log_ = Bounds(window->LogList());
        EXPECT_GT(log_.top, fields.back().bottom);
        EXPECT_EQ(log_.right, fields[0].right);
        EXPECT_LT(log_.right, client.right);
        EXPECT_LT(log_.bottom, client.bottom);
        EXPECT_GT(log_.bottom - log_.top, 40);
    }
    /// Above the label of the log; another bar is between the fields and the list.
    HWND BarAboveLog() const {
        const RECT fields = FieldBounds().back();
        for (int y = Bounds(window->LogList()).top; y > fields.bottom; --y) {
            const HWND child = ChildWindowFromPoint(window->Handle(), {20, y});
            wchar_t name[64] = L"";
            GetClassNameW(child, name, 64);
            if (std::wstring(name).find(L"Splitter") != std::wstring::npos) return child;
        }
        return nullptr;
    }
    std::wstring LibraryFile() const {
        return (support::ProgramFolder() / L"OrvaneControls.dll").wstring();
    }
};

TEST_F(MainWindowTest, WithoutFilesItShowsANewRepository) {
    EXPECT_TRUE(window->OpenFiles({}));
    EXPECT_EQ(Title(), L"In memory - Orvane Explorer");
    EXPECT_THAT(TakeLog(), ElementsAre(L"Explorer New "));
    EXPECT_EQ(Rows(navigator->MetaNodes()), Texts{});
    EXPECT_EQ(Status()[1], L"0 meta nodes");
}

TEST_F(MainWindowTest, TypeLibrariesAreImportedIntoANewRepository) {
    ASSERT_TRUE(window->OpenFiles({LibraryFile()}));
    EXPECT_EQ(Title(), L"In memory: OrvaneControls.dll - Orvane Explorer");
    EXPECT_THAT(Rows(navigator->MetaNodes()), Contains(L"Interface"));
    navigator->MetaNodes().Select(MetaNode(L"Interface"));
    EXPECT_THAT(Rows(navigator->Nodes()), Contains(L"_Combo"));
    EXPECT_THAT(TakeLog(), Contains(L"Explorer Import " + LibraryFile()));
}

TEST_F(MainWindowTest, TheStatusLineCountsWhatIsShown) {
    BrowseBooks();
    EXPECT_EQ(Status(), (Texts{L"In memory", L"2 meta nodes", L"", L""}));
    navigator->MetaNodes().Select(MetaNode(L"Author"));
    navigator->Nodes().Select(Object(L"a1"));
    navigator->MetaLinks().Select(MetaLink(L"knows"));
    EXPECT_EQ(Status(), (Texts{L"In memory", L"2 meta nodes", L"2 nodes", L"1 link"}));
}

TEST_F(MainWindowTest, ASavedRepositoryOpensAgain) {
    const support::TemporaryFolder folder;
    const std::wstring file = folder.File(L"books.orvane");
    BrowseBooks();
    document.SaveAs(file);
    document.New();
    ASSERT_TRUE(window->OpenFiles({file}));
    EXPECT_EQ(Rows(navigator->MetaNodes()), (Texts{L"Author", L"Book"}));
    EXPECT_THAT(Title(), HasSubstr(L"books.orvane"));
    EXPECT_THAT(Status()[0], HasSubstr(L"books.orvane"));
    document.New();
}

TEST_F(MainWindowTest, AFileThatIsMissingIsAnErrorInABoxAndTheWindowGoesOn) {
    const support::TemporaryFolder folder;
    support::DialogWatcher watcher;
    watcher.Expect();
    EXPECT_FALSE(window->OpenFiles({folder.File(L"missing.tlb")}));
    support::Pump();
    ASSERT_EQ(watcher.Seen().size(), 1u);
    EXPECT_THAT(watcher.Seen()[0].text, HasSubstr("missing.tlb"));
    EXPECT_THAT(watcher.Seen()[0].text, HasSubstr("Error "));
    EXPECT_EQ(errors.Count(), 1);
    EXPECT_TRUE(window->OpenFiles({LibraryFile()}));
}

TEST_F(MainWindowTest, AFileThatIsNoRepositoryLeavesANewOne) {
    const support::TemporaryFolder folder;
    errors.SetUnattended();
    support::WriteFile(folder.File(L"damaged.orvane"), std::string(5000, 'x'));
    EXPECT_FALSE(window->OpenFiles({folder.File(L"damaged.orvane")}));
    EXPECT_EQ(Title(), L"In memory - Orvane Explorer");
    EXPECT_EQ(errors.Count(), 1);
}

TEST_F(MainWindowTest, OneBadFileDoesNotKeepTheOthersOut) {
    const support::TemporaryFolder folder;
    errors.SetUnattended();
    support::WriteFile(folder.File(L"junk.dll"), "MZ but nothing else");
    EXPECT_FALSE(window->OpenFiles({folder.File(L"junk.dll"), LibraryFile()}));
    EXPECT_EQ(errors.Count(), 1);
    EXPECT_EQ(Title(), L"In memory: OrvaneControls.dll - Orvane Explorer");
    EXPECT_THAT(Rows(navigator->MetaNodes()), Contains(L"Interface"));
}

TEST_F(MainWindowTest, FollowLinkIsThereOnlyWhenALinkIsChosen) {
    BrowseBooks();
    const auto state = [&] {
        return GetMenuState(GetMenu(window->Handle()), ID_VIEW_FOLLOW_LINK, MF_BYCOMMAND) &
               (MF_GRAYED | MF_DISABLED);
    };
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    navigator->Nodes().Select(Object(L"b1"));
    EXPECT_NE(state(), 0u);
    navigator->Links().Select(Object(L"c1"));
    EXPECT_EQ(state(), 0u);
    SendMessageW(window->Handle(), WM_COMMAND, ID_VIEW_FOLLOW_LINK, 0);
    EXPECT_EQ(Shown(navigator->Nodes()), L"On Graphs");
    EXPECT_NE(state(), 0u);
}

TEST_F(MainWindowTest, TheEventLogShowsItsEntriesAndCanBeEmptied) {
    BrowseBooks();
    navigator->MetaNodes().Select(MetaNode(L"Book"));
    EXPECT_EQ(SendMessageW(window->LogList(), LVM_GETITEMCOUNT, 0, 0),
              static_cast<LRESULT>(log.Entries().size()));
    wchar_t text[64] = L"";
    LVITEMW item{};
    item.iSubItem = 3;
    item.pszText = text;
    item.cchTextMax = 64;
    SendMessageW(window->LogList(), LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(text, L"Book");
    SendMessageW(window->Handle(), WM_COMMAND, ID_VIEW_CLEAR_LOG, 0);
    EXPECT_EQ(SendMessageW(window->LogList(), LVM_GETITEMCOUNT, 0, 0), 0);
}

TEST_F(MainWindowTest, EverythingHasItsPlaceInEachSize) {
    window->Show(SW_SHOWNOACTIVATE);
    ExpectTidy();
    Resize(1000, 800);
    ExpectTidy();
    Resize(10, 10);
    ExpectTidy();
}

TEST_F(MainWindowTest, AnotherScaleMakesEverythingLarger) {
    window->Show(SW_SHOWNOACTIVATE);
    const auto before = FieldBounds();
    const RECT suggested{0, 0, 1200, 900};
    SendMessageW(window->Handle(), 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(192, 192),
                 reinterpret_cast<LPARAM>(&suggested));
    ExpectTidy();
    const auto after = FieldBounds();
    EXPECT_GE(after[0].top, 2 * before[0].top);
    EXPECT_GT(after[0].left, before[0].left * 3 / 2);
    RECT bounds{};
    GetWindowRect(window->Handle(), &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 1200);
}

TEST_F(MainWindowTest, TheBarBetweenTheListAndTheLogCanBeDragged) {
    window->Show(SW_SHOW);
    support::Input::Activate(window->Handle());
    const RECT before = Bounds(window->LogList());
    const HWND bar = BarAboveLog();
    ASSERT_NE(bar, nullptr);
    support::Input input;
    input.MoveToMiddle(bar).Press().MoveTo(bar, {200, -37}).Release();
    ASSERT_TRUE(input.Play());
    const RECT after = Bounds(window->LogList());
    EXPECT_NEAR(after.top - before.top, -40, 3);
    EXPECT_EQ(after.bottom, before.bottom);
}

TEST_F(MainWindowTest, ABarGoesByItsMessagesWhereverThePointerIsByThen) {
    window->Show(SW_SHOW);
    const RECT before = Bounds(window->LogList());
    const HWND bar = BarAboveLog();
    ASSERT_NE(bar, nullptr);
    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 3));
    SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, -17));
    EXPECT_EQ(Bounds(window->LogList()).top - before.top, -20);
    // The bar is under the pointer again.
    SendMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(200, -7));
    EXPECT_EQ(Bounds(window->LogList()).top - before.top, -30);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(MainWindowTest, ClosingEndsTheMessageLoop) {
    SendMessageW(window->Handle(), WM_CLOSE, 0, 0);
    MSG message;
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_TRUE(IsWindow(window->Handle()));
}

}  // namespace
}  // namespace explorer
