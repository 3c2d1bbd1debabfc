#include "widgets/row_list.h"

#include <algorithm>

#include "widgets/check_box_images.h"
#include "widgets/sketch.h"

namespace widgets {

void RowList::FillDisplayInfo(LVITEMW& item) const {
    if (!IsAt(item.iItem)) return;
    const Row& row = *rows_.At(static_cast<std::size_t>(item.iItem));
    if ((item.mask & LVIF_TEXT) != 0 && item.cchTextMax > 0) {
        const std::wstring_view text = row.Text(static_cast<std::size_t>(item.iSubItem));
        const std::size_t length =
            std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
        text.copy(item.pszText, length);
        item.pszText[length] = L'\0';
    }
    if ((item.mask & LVIF_IMAGE) != 0) {
        item.iImage = item.iSubItem != 0     ? I_IMAGENONE
                      : view_ == View::icons ? row.largeImage
                                             : row.smallImage;
        if (item.iImage == Row::noImage) item.iImage = I_IMAGENONE;
    }
    if ((item.mask & LVIF_STATE) != 0 && item.iSubItem == 0) {
        const Row::Extras* more = row.MaybeMore();
        const UINT known = CheckBoxState(checkBoxes_, row.checked) |
                           (more != nullptr && more->ghosted ? UINT{LVIS_CUT} : 0);
        constexpr UINT kept = LVIS_STATEIMAGEMASK | LVIS_CUT;
        item.state = (item.state & ~kept) | known;
        item.stateMask |= kept;
    }
}

LRESULT RowList::OnCustomDraw(NMLVCUSTOMDRAW& draw) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
    const auto position = static_cast<int>(draw.nmcd.dwItemSpec);
    const Row::Extras* more =
        IsAt(position) ? rows_.At(static_cast<std::size_t>(position))->MaybeMore() : nullptr;
    if (more != nullptr && more->color) draw.clrText = *more->color;
    if (!IsWindowEnabled(handle_)) {
        draw.clrText = GetSysColor(COLOR_GRAYTEXT);
        // The system has a colour of its own for the texts of selected rows.
        if ((draw.nmcd.uItemState & CDIS_SELECTED) != 0) {
            draw.nmcd.uItemState &= ~UINT{CDIS_SELECTED};
            draw.clrTextBk = GetSysColor(COLOR_BTNFACE);
        }
    }
    if (more == nullptr || !more->bold) return CDRF_DODEFAULT;
    if (!boldFont_) {
        LOGFONTW description = {};
        GetObjectW(font_ != nullptr ? font_ : GetStockObject(DEFAULT_GUI_FONT), sizeof(description),
                   &description);
        description.lfWeight = FW_BOLD;
        boldFont_ = ole::FontHandle(CreateFontIndirectW(&description));
    }
    SelectObject(draw.nmcd.hdc, boldFont_.Get());
    return CDRF_NEWFONT;
}

void RowList::Draw(HDC context, const RECT& bounds) {
    const Sketch sketch(context, bounds, background_, font_);
    if (view_ != View::report) return;
    const RECT& box = sketch.Box();
    const LONG height = sketch.LineHeight();
    const auto drawText = [&](std::wstring_view text, RECT cell, COLORREF color) {
        cell.left += sketch.CharacterWidth();
        sketch.Text(text, cell, color);
    };
    LONG top = box.top;
    for (std::size_t line = headersHidden_ ? 1 : 0; top < box.bottom; ++line, top += height) {
        if (line > rows_.Size()) break;
        LONG left = box.left;
        for (int column = 0; column < ColumnCount() && left < box.right; ++column) {
            const auto width =
                static_cast<LONG>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
            RECT cell = {left, top, std::min(left + width, box.right),
                         std::min(top + height, box.bottom)};
            left += width;
            if (line == 0) {
                FillRect(context, &cell, GetSysColorBrush(COLOR_BTNFACE));
                DrawEdge(context, &cell, EDGE_RAISED, BF_RECT);
                drawText(TitleOf(column), cell, GetSysColor(COLOR_BTNTEXT));
            } else {
                drawText(rows_.At(line - 1)->Text(static_cast<std::size_t>(column)), cell,
                         textColor_);
            }
        }
    }
}

std::wstring RowList::TitleOf(int column) const {
    std::wstring title(260, L'\0');
    LVCOLUMNW description = {};
    description.mask = LVCF_TEXT;
    description.pszText = title.data();
    description.cchTextMax = static_cast<int>(title.size());
    Send(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
    return title.c_str();
}

}  // namespace widgets
