#include "explorer/event_log_pane.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

namespace explorer {

namespace {

constexpr SIZE minimumSize{320, 110};

/// Widths at 96 dpi; the last column takes the rest.
struct Column {
    const wchar_t* title;
    int width;
};
constexpr Column columns[] = {{L"Time", 96}, {L"Control", 92}, {L"Event", 80}, {L"Key", 120}};
constexpr int lastColumn = static_cast<int>(std::size(columns)) - 1;

HWND MakeList(HWND parent) {
    return CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"Event log",
                           WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA |
                               LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                           0, 0, 0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

EventLogPane::EventLogPane(HWND parent, EventLog& log)
    : log_(log), label_(parent, L"&Event log"), list_(MakeList(parent)) {
    SendMessageW(list_.get(), LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                 LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    for (int index = 0; index <= lastColumn; ++index) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<wchar_t*>(columns[index].title);
        column.cx = columns[index].width;
        SendMessageW(list_.get(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&column));
    }
    log_.onChange = [this] { ShowEntries(); };
    ShowEntries();
}

EventLogPane::~EventLogPane() {
    log_.onChange = nullptr;
}

void EventLogPane::ShowEntries() {
    const auto count = log_.Entries().size();
    SendMessageW(list_.get(), LVM_SETITEMCOUNT, count, LVSICF_NOSCROLL);
    if (count) SendMessageW(list_.get(), LVM_ENSUREVISIBLE, count - 1, FALSE);
    FitColumns();
}

void EventLogPane::SetLook(const Look& look) {
    label_.SetLook(look);
    SetFont(list_.get(), look);
    minimum_ = look.Scale(minimumSize);
    columnUnit_ = look.Scale(96);
    FitColumns();
}

void EventLogPane::Place(const RECT& bounds) {
    const RECT rest = label_.Place(bounds);
    MoveWindow(list_.get(), rest.left, rest.top, rest.right - rest.left,
               std::max<int>(rest.bottom - label_.Margin() - rest.top, 0), TRUE);
    FitColumns();
}

bool EventLogPane::FocusMnemonic(wchar_t letter) {
    if (letter != label_.Mnemonic()) return false;
    SetFocus(list_.get());
    return true;
}

SIZE EventLogPane::MinimumSize() const {
    return minimum_;
}

void EventLogPane::FitColumns() {
    RECT client{};
    GetClientRect(list_.get(), &client);
    int left = client.right;
    for (int index = 0; index <= lastColumn; ++index) {
        const int wanted = MulDiv(columns[index].width, columnUnit_, 96);
        const int width = index == lastColumn ? std::max(left, wanted) : wanted;
        SendMessageW(list_.get(), LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(index), width);
        left -= width;
    }
}

const std::wstring& EventLogPane::CellText(std::size_t row, int column) {
    const LogEntry& entry = log_.Entries()[row];
    switch (column) {
        case 0:
            return time_ = TimeText(entry.time);
        case 1:
            return entry.control;
        case 2:
            return entry.event;
        default:
            return entry.key;
    }
}

std::optional<LRESULT> EventLogPane::OnNotify(NMHDR& notification) {
    if (notification.hwndFrom != list_.get()) return std::nullopt;
    if (notification.code == static_cast<UINT>(NM_SETFOCUS)) {
        if (onFocus) onFocus();
        return 0;
    }
    if (notification.code != static_cast<UINT>(LVN_GETDISPINFOW)) return std::nullopt;
    LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(notification).item;
    const auto row = static_cast<std::size_t>(item.iItem);
    if ((item.mask & LVIF_TEXT) && item.cchTextMax > 0 && row < log_.Entries().size())
        lstrcpynW(item.pszText, CellText(row, item.iSubItem).c_str(), item.cchTextMax);
    return 0;
}

}  // namespace explorer
