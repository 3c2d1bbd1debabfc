#include "widgets/row_list.h"

#include <algorithm>

#include "widgets/keys.h"

namespace widgets {

namespace {

/// A platform flag that mingw-w64 lacks: the same as LVFI_PARTIAL.
constexpr UINT likeString = 0x0004;

}  // namespace

std::optional<LRESULT> RowList::OnParentMessage(UINT message, WPARAM, LPARAM large) {
    // The parent takes its children along.
    if (message == WM_DESTROY && handle_ != nullptr) LeaveWindow();
    if (message != WM_NOTIFY) return std::nullopt;
    auto& header = *reinterpret_cast<NMHDR*>(large);
    if (handle_ == nullptr || header.hwndFrom != handle_) return std::nullopt;
    return OnNotify(header);
}

std::optional<LRESULT> RowList::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            FillDisplayInfo(reinterpret_cast<NMLVDISPINFOW&>(header).item);
            return 0;
        case LVN_ODFINDITEMW: {
            const auto& find = reinterpret_cast<const NMLVFINDITEMW&>(header);
            return FindText(find.lvfi, find.iStart);
        }
        case LVN_ITEMCHANGED: {
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
            if ((change.uChanged & LVIF_STATE) != 0) {
                OnStateChanged(change.iItem, change.uOldState, change.uNewState);
            }
            return 0;
        }
        case LVN_ODSTATECHANGED: {
            const auto& change = reinterpret_cast<const NMLVODSTATECHANGE&>(header);
            for (int at = change.iFrom; at <= change.iTo; ++at) {
                OnStateChanged(at, change.uOldState, change.uNewState);
            }
            return 0;
        }
        case LVN_GETINFOTIPW: {
            auto& tip = reinterpret_cast<NMLVGETINFOTIPW&>(header);
            if (!IsAt(tip.iItem)) return 0;
            const Row::Extras* more = rows_.At(static_cast<std::size_t>(tip.iItem))->MaybeMore();
            if (more != nullptr && !more->toolTip.empty()) {
                lstrcpynW(tip.pszText, more->toolTip.c_str(), tip.cchTextMax);
            }
            return 0;
        }
        case LVN_COLUMNCLICK:
            ClickColumn(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
            return 0;
        case LVN_BEGINDRAG:
            if (onBeginDrag) onBeginDrag();
            return 0;
        case LVN_KEYDOWN:
            OnKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
            return 0;
        case NM_CLICK:
            OnClicked(reinterpret_cast<const NMITEMACTIVATE&>(header));
            return 0;
        case NM_RCLICK:
            if (onRightClick) onRightClick();
            return 0;
        case NM_DBLCLK:
            OnDoubleClicked(reinterpret_cast<const NMITEMACTIVATE&>(header));
            return 0;
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        case NM_SETFOCUS:
        case NM_KILLFOCUS:
            if (onFocus) onFocus(header.code == NM_SETFOCUS);
            return 0;
        default:
            return std::nullopt;
    }
}

void RowList::OnStateChanged(int position, UINT before, UINT now) {
    if (moving_) return;
    const UINT changed = before ^ now;
    if (position < 0) {
        // All rows at once.
        if ((changed & LVIS_SELECTED) == 0) return;
        selected_.clear();
        if ((now & LVIS_SELECTED) == 0) return;
        rows_.Each([this](const RowPtr& row) { selected_.insert(row.get()); });
        return;
    }
    const RowPtr row = RowAt(position);
    if (!row) return;
    if ((changed & LVIS_SELECTED) != 0) {
        if ((now & LVIS_SELECTED) != 0)
            selected_.insert(row.get());
        else
            selected_.erase(row.get());
    }
    if ((now & LVIS_FOCUSED) != 0)
        focused_ = row.get();
    else if (focused_ == row.get() && (changed & LVIS_FOCUSED) != 0)
        focused_ = nullptr;
}

void RowList::OnClicked(const NMITEMACTIVATE& activation) {
    if (!IsAt(activation.iItem)) return;
    const RowPtr row = rows_.At(static_cast<std::size_t>(activation.iItem));
    if (IsOnCheckBox(activation.ptAction))
        Check(*row, !row->checked);
    else if (onClick)
        onClick(row);
}

void RowList::OnDoubleClicked(const NMITEMACTIVATE& activation) {
    // The system reports no second click.
    if (IsOnCheckBox(activation.ptAction)) OnClicked(activation);
    if (onDoubleClick) onDoubleClick();
}

bool RowList::IsOnCheckBox(POINT client) const {
    LVHITTESTINFO hit = {};
    hit.pt = client;
    Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return checkBoxes_ && (hit.flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON;
}

void RowList::OnKey(WORD key) {
    if (key == 'A' && GetKeyState(VK_CONTROL) < 0) {
        SelectAll(true);
        return;
    }
    if (key != VK_SPACE || !checkBoxes_ || GetKeyState(VK_CONTROL) < 0) return;
    if (focused_ == nullptr) return;
    const RowPtr row = RowAt(PositionOf(*focused_));
    if (!row) return;
    const bool on = !row->checked;
    // The other selected rows follow the one with the focus.
    if (IsSelected(*row)) {
        for (const Row* each : selected_) {
            if (const RowPtr other = RowAt(PositionOf(*each))) Check(*other, on);
        }
    }
    Check(*row, on);
}

bool RowList::UsesKey(const MSG& message) const {
    return message.message == WM_KEYDOWN && IsNavigationKey(message.wParam);
}

LRESULT RowList::FindText(const LVFINDINFOW& wanted, int start) const {
    if ((wanted.flags & (LVFI_STRING | LVFI_PARTIAL | likeString)) == 0 || wanted.psz == nullptr) {
        return -1;
    }
    const std::wstring_view text = wanted.psz;
    const bool prefix = (wanted.flags & (LVFI_PARTIAL | likeString)) != 0;
    const auto matches = [&](std::size_t at) {
        std::wstring_view found = rows_.At(at)->Text(0);
        if (prefix) found = found.substr(0, text.size());
        return CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE, found.data(),
                               static_cast<int>(found.size()), text.data(),
                               static_cast<int>(text.size()), nullptr, nullptr, 0) == CSTR_EQUAL;
    };
    const std::size_t size = rows_.Size();
    const auto first = std::min(static_cast<std::size_t>(std::max(start, 0)), size);
    for (std::size_t at = first; at < size; ++at) {
        if (matches(at)) return static_cast<LRESULT>(at);
    }
    if ((wanted.flags & LVFI_WRAP) == 0) return -1;
    for (std::size_t at = 0; at < first; ++at) {
        if (matches(at)) return static_cast<LRESULT>(at);
    }
    return -1;
}

}  // namespace widgets
