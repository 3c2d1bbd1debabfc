#include "explorer/tour.h"

#include "explorer/automation.h"
#include "explorer/input.h"
#include "explorer/png_file.h"

#include <commctrl.h>

#include <filesystem>
#include <utility>

namespace explorer {

namespace {

/// Long enough for the screen to show what has been drawn.
constexpr DWORD settleTime = 250;
constexpr DWORD patience = 10000;

/// The system's combo box within a control's window.
HWND FindCombo(HWND control) {
    return FindWindowExW(control, nullptr, WC_COMBOBOXW, nullptr);
}

RECT RowBounds(HWND list, int row) {
    RECT bounds{};
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&bounds));
    return bounds;
}

bool IsInView(HWND list, int row) {
    const RECT bounds = RowBounds(list, row);
    RECT client{};
    GetClientRect(list, &client);
    return bounds.top >= 0 && bounds.bottom > bounds.top && bounds.bottom <= client.bottom;
}

std::wstring SelectedText(HWND tree) {
    wchar_t text[512] = L"";
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = TreeView_GetSelection(tree);
    item.pszText = text;
    item.cchTextMax = 512;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return text;
}

/// A window on the screen without title bar and borders, which belong to the user's desktop.
RECT BoundsWithoutFrame(HWND window) {
    RECT bounds{};
    GetClientRect(window, &bounds);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&bounds), 2);
    MENUBARINFO menu{};
    menu.cbSize = sizeof menu;
    if (GetMenuBarInfo(window, OBJID_MENU, 0, &menu)) bounds.top = menu.rcBar.top;
    return bounds;
}

}  // namespace

Tour::Tour(MainWindow& window, MessageLoop& loop, std::wstring folder)
    : window_(window), loop_(loop), folder_(std::move(folder)) {
    std::filesystem::create_directories(std::filesystem::path(folder_));
}

void Tour::Run() {
    ComeToFront();
    TakePicture(L"01-start");
    const Route route = FindRoute(window_.OpenDocument().Repository());
    NavigatorPane& navigator = window_.Navigator();
    Pick(navigator.MetaNodes(), route.metaNode, L"02-meta-nodes");
    Pick(navigator.Nodes(), route.node, L"03-nodes");
    Pick(navigator.MetaLinks(), route.metaLink, L"04-meta-links");
    Pick(navigator.Links(), route.link, L"05-links");
    TakePicture(L"06-chosen");
    ShowList('2', ListKind::metaLinks, L"07-list-of-meta-links");
    ShowList('3', ListKind::metaProperties, L"08-list-of-properties");
    ShowList('6', ListKind::nodes, L"09-list-of-nodes");
    ShowList('7', ListKind::links, L"10-list-of-links");
    ShowTrees(route);
}

/// Each tree, opened along the route.
void Tour::ShowTrees(const Route& route) {
    if (!route.node.object) return;
    const std::wstring type = TextOf(route.metaNode.object.Get(L"name"));
    const std::wstring node = CaptionOf(route.node.object);
    std::vector<std::wstring> described = {L"Root", type, node};
    std::vector<std::wstring> followed = {node};
    std::vector<std::wstring> grouped = {type, node};
    if (route.link.object) {
        const std::wstring link = TextOf(route.metaLink.object.Get(L"name"));
        const std::wstring target = CaptionOf(route.link.object.Object(L"Target"));
        described.push_back(link);
        followed.push_back(target);
        grouped.insert(grouped.end(), {link, target});
    }
    ShowTree({VK_CONTROL, 'D'}, TreeKind::described, described, L"11-tree");
    ShowTree({VK_CONTROL, 'H'}, TreeKind::hierarchy, followed, L"12-hierarchy");
    ShowTree({VK_CONTROL, VK_SHIFT, 'H'}, TreeKind::hierarchyWithFolders, grouped,
             L"13-hierarchy-with-folders");
}

void Tour::ShowTree(std::initializer_list<WORD> keys, TreeKind kind,
                    const std::vector<std::wstring>& path, const wchar_t* picture) {
    PressChord(keys);
    Await([&] { return window_.Tree().Kind() == kind; }, L"Another tree");
    Open(path);
    TakePicture(picture);
}

void Tour::Open(const std::vector<std::wstring>& path) {
    constexpr int mostSteps = 2000;
    const HWND tree = window_.Tree().TreeWindow();
    if (!tree) throw hosting::Error(E_FAIL, L"The tree has no window.");
    window_.Tree().Focus();
    PressKey(VK_HOME);
    Settle();
    for (const std::wstring& text : path) {
        for (int step = 0; SelectedText(tree) != text; ++step) {
            const HTREEITEM before = TreeView_GetSelection(tree);
            PressKey(VK_DOWN);
            Await([&] { return TreeView_GetSelection(tree) != before; }, text);
            if (step == mostSteps) throw hosting::Error(E_FAIL, text + L" is not in the tree.");
        }
        const HTREEITEM item = TreeView_GetSelection(tree);
        PressKey(VK_RIGHT);
        Settle();
        // A node without anything below stays as it is.
        if (TreeView_GetChild(tree, item) == nullptr) return;
    }
}

void Tour::ComeToFront() {
    SetForegroundWindow(window_.Handle());
    Await([this] { return GetForegroundWindow() == window_.Handle(); }, L"The window in front");
    Settle();
}

void Tour::Pick(ComboField& field, const Route::Step& step, const wchar_t* picture) {
    if (!step.object) return;
    const HWND combo = FindCombo(field.Window());
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof parts;
    if (!combo || !GetComboBoxInfo(combo, &parts))
        throw hosting::Error(E_FAIL, field.Name() + L" has no combo box.");

    const auto isOpen = [&] { return IsWindowVisible(parts.hwndList) != FALSE; };
    Click(MiddleOnScreen(combo, parts.rcButton));
    Await(isOpen, L"The open list of " + field.Name());
    BringIntoView(parts.hwndList, step.row);
    const POINT place = MiddleOnScreen(parts.hwndList, RowBounds(parts.hwndList, step.row));
    MovePointer(place);
    TakePicture(picture);
    Click(place);
    Await([&] { return !isOpen() && IsSame(field.Selection(), step.object); },
          L"The picked object in " + field.Name());
}

void Tour::ShowList(char digit, ListKind kind, const wchar_t* picture) {
    PressChord({VK_CONTROL, static_cast<WORD>(digit)});
    Await([&] { return window_.List().Kind() == kind; }, L"Another list");
    TakePicture(picture);
}

void Tour::BringIntoView(HWND list, int row) {
    const auto rows = static_cast<int>(SendMessageW(list, LB_GETCOUNT, 0, 0));
    if (row < 0 || row >= rows) throw hosting::Error(E_INVALIDARG, L"A row is not in its list.");
    for (int page = 0; page < rows && !IsInView(list, row); ++page) {
        PressKey(VK_NEXT);
        Settle();
    }
}

void Tour::TakePicture(const wchar_t* name) {
    Settle();
    const RECT bounds = BoundsWithoutFrame(window_.Handle());
    const std::wstring path =
        (std::filesystem::path(folder_) / (std::wstring(name) + L".png")).wstring();
    SaveScreen(bounds, path);
    pictures_.push_back(path);
}

void Tour::Settle() {
    loop_.RunFor(settleTime);
}

void Tour::Await(const std::function<bool()>& done, const std::wstring& what) {
    if (!loop_.RunUntil(done, patience))
        throw hosting::Error(HRESULT_FROM_WIN32(ERROR_TIMEOUT), what + L" did not come.");
}

}  // namespace explorer
