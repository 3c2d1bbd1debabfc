#include "explorer/event_log_pane.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

namespace explorer {

namespace {

constexpr int margin = 11;
constexpr int labelGap = 3;
constexpr SIZE minimumSize{320, 110};

/// Widths at 96 dpi; the last column takes the rest.
struct Column {
    const wchar_t* title;
    int width;
};
constexpr Column columns[] = {{L"Time", 96}, {L"Control", 92}, {L"Event", 80}, {L"Key", 120}};
constexpr int lastColumn = static_cast<int>(std::size(columns)) - 1;

HWND MakeChild(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style,
               DWORD extendedStyle = 0) {
    return CreateWindowExW(extendedStyle, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                           0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

EventLogPane::EventLogPane(HWND parent, EventLog& log)
    : log_(log),
      label_(MakeChild(parent, L"STATIC", L"&Event log:", SS_LEFTNOWORDWRAP)),
      list_(
          MakeChild(parent, WC_LISTVIEWW, L"Event log",
                    WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                    WS_EX_CLIENTEDGE)) {
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
    SetFont(label_.get(), look);
    SetFont(list_.get(), look);
    margin_ = look.Scale(margin);
    labelHeight_ = look.LineHeight() + look.Scale(labelGap);
    minimum_ = {look.Scale(minimumSize.cx), look.Scale(minimumSize.cy)};
    columnUnit_ = look.Scale(96);
    FitColumns();
}

void EventLogPane::Place(const RECT& bounds) {
    const int left = bounds.left + margin_;
    const int width = std::max<int>(bounds.right - bounds.left - 2 * margin_, 0);
    const int listTop = bounds.top + labelHeight_;
    MoveWindow(label_.get(), left, bounds.top, width, labelHeight_, TRUE);
    MoveWindow(list_.get(), left, listTop, width,
               std::max<int>(bounds.bottom - margin_ - listTop, 0), TRUE);
    FitColumns();
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
