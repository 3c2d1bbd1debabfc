#include "explorer/main_window.h"

#include "explorer/file_kind.h"
#include "explorer/resources.h"

#include <algorithm>
#include <cwctype>
#include <utility>

namespace explorer {

namespace {

constexpr wchar_t title[] = L"Orvane Explorer";
constexpr SIZE startSize{980, 640};
constexpr int treeWidth = 290;
constexpr UINT dpiChanged = 0x02E0;  // WM_DPICHANGED came with Windows 8.1.

HICON OwnIcon() {
    return LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_EXPLORER));
}

}  // namespace

MainWindow::MainWindow(Document& document, EventLog& log, ErrorBox& errors)
    : document_(document),
      log_(log),
      errors_(errors),
      look_(DpiOf(nullptr)),
      accelerators_(LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDA_MAIN))) {
    Creation creation;
    creation.className = L"OrvaneExplorer";
    creation.title = title;
    creation.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    creation.extendedStyle = WS_EX_CONTROLPARENT;
    creation.icon = OwnIcon();
    Create(creation);
    SetMenu(Handle(), LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDM_MAIN)));
    errors_.SetOwner(Handle());
    form_ = std::make_unique<hosting::Form>(Handle());
    form_->onTabOut = [this](bool) {
        FocusLog();
        return true;
    };
    MakePanes();
    status_ = std::make_unique<StatusLine>(Handle());
    SetDpi(DpiOf(Handle()));
    RECT bounds{0, 0, look_.Scale(startSize.cx), look_.Scale(startSize.cy)};
    AdjustWindowRectEx(&bounds, creation.style, TRUE, creation.extendedStyle);
    SetWindowPos(Handle(), nullptr, 0, 0, bounds.right - bounds.left, bounds.bottom - bounds.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

MainWindow::~MainWindow() {
    Disconnect();
    errors_.SetOwner(nullptr);
    panes_.reset();
    form_.reset();
}

void MainWindow::MakePanes() {
    auto navigator = std::make_unique<NavigatorPane>(*form_, log_, Reporter());
    navigator_ = navigator.get();
    navigator_->onChoice = [this] { ShowChoice(); };
    auto tree = std::make_unique<TreePane>(*form_, log_, Reporter());
    tree_ = tree.get();
    tree_->onChoice = [this](const TreeChoice& choice) { ChooseInTree(choice); };
    tree_->onRename = [this](const hosting::LateBound&) { NodeWasRenamed(); };
    tree_->onDrop = [this](const hosting::LateBound& target) { DropOnTree(target); };
    auto list = std::make_unique<ListPane>(*form_, log_, Reporter());
    list_ = list.get();
    list_->onOpen = [this](ListKind kind, const hosting::LateBound& object) {
        OpenRow(kind, object);
    };
    list_->onDrop = [this](const std::wstring& text) { status_->Say(text); };
    auto logPane = std::make_unique<EventLogPane>(Handle(), log_);
    logPane_ = logPane.get();
    logPane_->onFocus = [this] {
        logHasFocus_ = true;
        if (hosting::HostedControl* const active = form_->Active()) active->UIDeactivate();
    };
    auto middle = std::make_unique<SplitPane>(Handle(), SplitPane::Direction::sideBySide,
                                              Division::Keeps::first, treeWidth, std::move(tree),
                                              std::move(list));
    auto lower = std::make_unique<SplitPane>(Handle(), SplitPane::Direction::aboveEachOther,
                                             Division::Keeps::second, 0, std::move(middle),
                                             std::move(logPane));
    panes_ = std::make_unique<SplitPane>(Handle(), SplitPane::Direction::aboveEachOther,
                                         Division::Keeps::first, 0, std::move(navigator),
                                         std::move(lower));
}

ErrorHandler MainWindow::Reporter() {
    return [this](const std::wstring& action, const hosting::Error& error) {
        errors_.Report(action, error);
    };
}

void MainWindow::Show(int how) {
    ShowWindow(Handle(), how);
    UpdateWindow(Handle());
}

void MainWindow::SetDpi(int dpi) {
    Look look(dpi);
    panes_->SetLook(look);
    status_->SetLook(look);
    // The windows have let go of the former font only now.
    look_ = std::move(look);
    Place();
}

void MainWindow::Place() {
    if (!status_) return;
    RECT client{};
    GetClientRect(Handle(), &client);
    client.bottom = std::max<LONG>(client.bottom - status_->Place(), 0);
    panes_->Place(client);
}

void MainWindow::TellMinimumSize(MINMAXINFO& info) const {
    if (!status_) return;
    const SIZE panes = panes_->MinimumSize();
    RECT bounds{0, 0, panes.cx, panes.cy + 2 * look_.LineHeight()};
    AdjustWindowRectEx(&bounds, static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_STYLE)), TRUE,
                       static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_EXSTYLE)));
    info.ptMinTrackSize = {bounds.right - bounds.left, bounds.bottom - bounds.top};
}

void MainWindow::Focus() {
    if (logHasFocus_)
        FocusLog();
    else
        form_->RestoreFocus();
}

void MainWindow::FocusLog() {
    SetFocus(logPane_->List());
}

bool MainWindow::Translate(MSG& message) {
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd)) return false;
    if (TranslateAcceleratorW(Handle(), accelerators_, &message)) return true;
    if (message.message == WM_SYSCHAR) {
        const auto letter =
            static_cast<wchar_t>(std::towupper(static_cast<wint_t>(message.wParam)));
        if (panes_->FocusMnemonic(letter)) return true;
    }
    // Not while a name is edited in the tree, which has a window of its own.
    const bool isDelete = message.message == WM_KEYDOWN && message.wParam == VK_DELETE;
    if (isDelete && message.hwnd == tree_->TreeWindow()) {
        OnCommand(ID_TREE_REMOVE_LINK);
        return true;
    }
    return form_->TranslateMessage(message);
}

std::optional<LRESULT> MainWindow::OnMessage(UINT message, WPARAM wide, LPARAM large) {
    switch (message) {
        case WM_SIZE:
            Place();
            return 0;
        case WM_GETMINMAXINFO:
            TellMinimumSize(*reinterpret_cast<MINMAXINFO*>(large));
            return 0;
        case dpiChanged: {
            const RECT& bounds = *reinterpret_cast<const RECT*>(large);
            SetDpi(HIWORD(wide));
            SetWindowPos(Handle(), nullptr, bounds.left, bounds.top, bounds.right - bounds.left,
                         bounds.bottom - bounds.top, SWP_NOZORDER | SWP_NOACTIVATE);
            return 0;
        }
        case WM_SETTINGCHANGE:
            if (status_) SetDpi(look_.Dpi());
            return std::nullopt;
        case WM_SETFOCUS:
            if (status_) Focus();
            return 0;
        case WM_COMMAND:
            if (large != 0) return std::nullopt;
            OnCommand(LOWORD(wide));
            return 0;
        case WM_NOTIFY:
            return logPane_ ? logPane_->OnNotify(*reinterpret_cast<NMHDR*>(large)) : std::nullopt;
        case askForLink:
            AskForLink();
            return 0;
        case ErrorBox::message:
            errors_.ShowNext();
            return 0;
        case WM_CLOSE:
            PostQuitMessage(0);
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace explorer
