#include "widgets/sketch.h"

namespace widgets {

Sketch::Sketch(HDC context, const RECT& bounds, COLORREF background, HFONT font)
    : context_(context),
      box_(Framed(context, bounds, background)),
      font_(context, font != nullptr ? font : GetStockObject(DEFAULT_GUI_FONT)) {
    SetBkMode(context_, TRANSPARENT);
    GetTextMetricsW(context_, &metrics_);
}

RECT Sketch::Framed(HDC context, RECT bounds, COLORREF background) {
    const ole::Brush brush(CreateSolidBrush(background));
    FillRect(context, &bounds, brush.Get());
    DrawEdge(context, &bounds, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    return bounds;
}

void Sketch::Text(std::wstring_view text, RECT cell, COLORREF color) const {
    SetTextColor(context_, color);
    DrawTextW(context_, text.data(), static_cast<int>(text.size()), &cell,
              DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace widgets
