#include "widgets/row_list.h"

#include <algorithm>
#include <span>
#include <utility>

#include "ole/error.h"
#include "ole/server.h"
#include "ole/theme.h"
#include "widgets/raised.h"

namespace widgets {

namespace {

DWORD StyleOf(RowList::View view) {
    switch (view) {
        case RowList::View::icons:
            return LVS_ICON;
        case RowList::View::smallIcons:
            return LVS_SMALLICON;
        case RowList::View::list:
            return LVS_LIST;
        default:
            return LVS_REPORT;
    }
}

}  // namespace

class RowList::SelectionKeeper {
public:
    explicit SelectionKeeper(RowList& list)
        : list_(list), moving_(list.moving_), selected_(list.selected_), focused_(list.focused_) {
        list.DeselectAllBut(nullptr);
    }
    ~SelectionKeeper() {
        if (focused_ != nullptr) Restore(*focused_, LVIS_FOCUSED);
        if (!selected_.empty() && selected_.size() == list_.rows_.Size()) {
            list_.SetState(-1, LVIS_SELECTED, LVIS_SELECTED);
        } else {
            for (const Row* row : selected_) Restore(*row, LVIS_SELECTED);
        }
        list_.selected_ = std::move(selected_);
        list_.focused_ = focused_;
    }
    SelectionKeeper(const SelectionKeeper&) = delete;
    SelectionKeeper& operator=(const SelectionKeeper&) = delete;

private:
    void Restore(const Row& row, UINT state) {
        list_.SetState(list_.PositionOf(row), state, state);
    }

    RowList& list_;
    const Raised moving_;
    std::unordered_set<const Row*> selected_;
    const Row* focused_;
};

RowList::~RowList() {
    if (handle_ != nullptr) DestroyWindow(LeaveWindow());
}

HWND RowList::LeaveWindow() {
    // A list that does not own its images does not destroy those of its check boxes either.
    if (checkBoxes_) Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, 0);
    return std::exchange(handle_, nullptr);
}

void RowList::Create(HWND parent) {
    const ole::ThemedScope themed;
    handle_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | StyleOf(view_) | LVS_OWNERDATA |
                                  LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | LVS_AUTOARRANGE,
                              0, 0, 0, 0, parent, nullptr, ole::ModuleHandle(), nullptr);
    if (handle_ == nullptr) ole::Check(HRESULT_FROM_WIN32(GetLastError()));
    constexpr DWORD style = LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP | LVS_EX_INFOTIP |
                            LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, style, style);
    Send(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK | LVIS_CUT);
    for (int i = 0; i < ColumnCount(); ++i) InsertColumn(i, columns_[static_cast<std::size_t>(i)]);
    ShowSortArrow();
    if (checkBoxes_) SetCheckBoxes(true);
    if (headersHidden_) HideHeaders(true);
    SetImages(images_);
    const SelectionKeeper keeper(*this);
    shown_ = 0;
    Sync();
}

void RowList::AddColumn(const std::wstring& text, int width) {
    columns_.push_back({text, width});
    InsertColumn(ColumnCount() - 1, columns_.back());
}

void RowList::InsertColumn(int position, const Column& column) const {
    LVCOLUMNW description = {};
    description.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM | LVCF_FMT;
    description.fmt = LVCFMT_LEFT;
    description.pszText = const_cast<wchar_t*>(column.text.c_str());
    description.cx = column.width;
    description.iSubItem = position;
    Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(position), reinterpret_cast<LPARAM>(&description));
}

void RowList::RemoveColumns() {
    for (int i = ColumnCount(); i > 0; --i) Send(LVM_DELETECOLUMN, static_cast<WPARAM>(i - 1));
    columns_.clear();
    ForgetSorting();
}

void RowList::Remove(Row& row) {
    Sync();
    const int position = PositionOf(row);
    selected_.erase(&row);
    const bool hadFocus = focused_ == &row;
    const Raised moving(moving_);
    SetState(position, 0, LVIS_SELECTED | LVIS_FOCUSED);
    rows_.Remove(row);
    shown_ = rows_.Size();
    if (static_cast<std::size_t>(position) < placed_) --placed_;
    Send(LVM_DELETEITEM, static_cast<WPARAM>(position));
    if (!hadFocus) return;
    // The keyboard goes on from where the row was.
    const int next = std::min(position, static_cast<int>(shown_) - 1);
    focused_ = RowAt(next).get();
    if (focused_ != nullptr) SetState(next, LVIS_FOCUSED, LVIS_FOCUSED);
}

void RowList::Clear() {
    const Raised moving(moving_);
    selected_.clear();
    focused_ = nullptr;
    rows_.Clear();
    shown_ = placed_ = 0;
    Send(LVM_DELETEALLITEMS);
}

void RowList::Sync() {
    const std::size_t size = rows_.Size();
    if (shown_ == size) return;
    const std::size_t added = std::exchange(shown_, size);
    Send(LVM_SETITEMCOUNT, size, LVSICF_NOSCROLL | (added > 0 ? LVSICF_NOINVALIDATEALL : 0));
}

void RowList::PlaceAdded() {
    Sync();
    const std::size_t size = rows_.Size();
    const std::size_t added = std::exchange(placed_, size);
    if (!order_ || added == size) return;
    const SelectionKeeper keeper(*this);
    for (std::size_t next = added; next < size; ++next) {
        const RowPtr row = rows_.At(next);
        std::size_t low = 0;
        for (std::size_t high = next; low < high;) {
            const std::size_t middle = (low + high) / 2;
            if (order_->Before(*row, *rows_.At(middle)))
                high = middle;
            else
                low = middle + 1;
        }
        if (low != next) rows_.Move(*row, low);
    }
    RedrawAll();
}

void RowList::Redraw(const Row& row) const {
    const auto position = rows_.PositionOf(row);
    if (position < shown_) Send(LVM_REDRAWITEMS, position, static_cast<LPARAM>(position));
}

void RowList::Check(Row& row, bool on) {
    if (row.checked == on) return;
    row.checked = on;
    Redraw(row);
}

void RowList::CheckAll(bool on) {
    rows_.Each([on](const RowPtr& row) { row->checked = on; });
    RedrawAll();
}

void RowList::SetSelected(const Row& row, bool selected) {
    Sync();
    SetState(PositionOf(row), selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
}

void RowList::SelectAll(bool selected) {
    Sync();
    if (rows_.Size() != 0) SetState(-1, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
}

void RowList::DeselectAllBut(const Row* kept) {
    const std::vector<const Row*> selected(selected_.begin(), selected_.end());
    for (const Row* row : selected) {
        if (row != kept) SetState(PositionOf(*row), 0, LVIS_SELECTED);
    }
    if (focused_ != nullptr && focused_ != kept) SetState(PositionOf(*focused_), 0, LVIS_FOCUSED);
}

RowPtr RowList::Current() {
    Sync();
    if (selected_.empty()) return nullptr;
    if (focused_ != nullptr && IsSelected(*focused_)) return RowAt(PositionOf(*focused_));
    std::size_t first = rows_.Size();
    for (const Row* row : selected_) first = std::min(first, rows_.PositionOf(*row));
    return RowAt(static_cast<int>(first));
}

void RowList::MakeCurrent(const Row& row) {
    Sync();
    DeselectAllBut(&row);
    const int position = PositionOf(row);
    SetState(position, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    Send(LVM_SETSELECTIONMARK, 0, position);
    EnsureVisible(row);
}

bool RowList::EnsureVisible(const Row& row) {
    Sync();
    const auto position = static_cast<WPARAM>(PositionOf(row));
    const auto place = [&] {
        POINT point = {};
        Send(LVM_GETITEMPOSITION, position, reinterpret_cast<LPARAM>(&point));
        return point;
    };
    const POINT before = place();
    Send(LVM_ENSUREVISIBLE, position, FALSE);
    const POINT after = place();
    return before.x != after.x || before.y != after.y;
}

RowPtr RowList::HitTest(POINT screen) {
    Sync();
    LVHITTESTINFO hit = {};
    hit.pt = screen;
    ScreenToClient(handle_, &hit.pt);
    Send(view_ == View::report ? LVM_SUBITEMHITTEST : LVM_HITTEST, 0,
         reinterpret_cast<LPARAM>(&hit));
    return RowAt(hit.iItem);
}

RowPtr RowList::RowAt(int position) const {
    return IsAt(position) ? rows_.At(static_cast<std::size_t>(position)) : nullptr;
}

void RowList::ClickColumn(int column) {
    const auto clicked = static_cast<std::size_t>(column);
    Sync();
    if (order_ && order_->Column() == clicked) descending_ = !descending_;
    order_.emplace(clicked, descending_);
    ShowSortArrow();
    const SelectionKeeper keeper(*this);
    std::vector<RowPtr> rows = rows_.All();
    // Those that are being added have no texts yet.
    order_->Sort(std::span(rows).first(placed_));
    rows_.Reorder(std::move(rows));
    RedrawAll();
}

void RowList::ForgetSorting() {
    order_.reset();
    descending_ = false;
}

void RowList::ShowSortArrow() const {
    const auto header = reinterpret_cast<HWND>(Send(LVM_GETHEADER));
    for (int i = 0; i < ColumnCount(); ++i) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (order_ && order_->Column() == static_cast<std::size_t>(i)) {
            item.fmt |= descending_ ? HDF_SORTDOWN : HDF_SORTUP;
        }
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

void RowList::SetView(View view) {
    view_ = view;
    const auto style = static_cast<DWORD>(GetWindowLongW(handle_, GWL_STYLE));
    SetWindowLongW(handle_, GWL_STYLE,
                   static_cast<LONG>((style & ~static_cast<DWORD>(LVS_TYPEMASK)) | StyleOf(view)));
    RedrawAll();
}

void RowList::SetCheckBoxes(bool shown) {
    checkBoxes_ = shown;
    const ole::ThemedScope themed;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, shown ? LVS_EX_CHECKBOXES : 0);
    // The system drops its own way of keeping states with its check boxes.
    Send(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK | LVIS_CUT);
    RedrawAll();
}

void RowList::HideHeaders(bool hidden) {
    headersHidden_ = hidden;
    const LONG style = GetWindowLongW(handle_, GWL_STYLE);
    SetWindowLongW(handle_, GWL_STYLE,
                   hidden ? style | LVS_NOCOLUMNHEADER : style & ~LVS_NOCOLUMNHEADER);
}

void RowList::SetColors(COLORREF text, COLORREF background) {
    textColor_ = text;
    background_ = background;
    Send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(text));
    Send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(background));
    Send(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(background));
    RedrawAll();
}

void RowList::SetFont(HFONT font) {
    font_ = font;
    boldFont_ = {};
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void RowList::SetImages(const ImageLists* images) {
    images_ = images;
    const auto set = [this](WPARAM which, HIMAGELIST list) {
        Send(LVM_SETIMAGELIST, which, reinterpret_cast<LPARAM>(list));
    };
    set(LVSIL_SMALL, images != nullptr ? images->Small() : nullptr);
    set(LVSIL_NORMAL, images != nullptr ? images->Large() : nullptr);
    // Without images the system would leave their room out, and hardly any for the texts.
    const bool any = images != nullptr && images->Large() != nullptr;
    Send(LVM_SETICONSPACING, 0,
         any ? -1
             : MAKELPARAM(GetSystemMetrics(SM_CXICONSPACING), GetSystemMetrics(SM_CYICONSPACING)));
}

void RowList::SetSize(SIZE size) {
    SetWindowPos(handle_, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void RowList::Enable(bool enabled) {
    EnableWindow(handle_, enabled);
    RedrawAll();
}

void RowList::SetState(int position, UINT state, UINT mask) const {
    LVITEMW item = {};
    item.state = state;
    item.stateMask = mask;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(position), reinterpret_cast<LPARAM>(&item));
}

}  // namespace widgets
