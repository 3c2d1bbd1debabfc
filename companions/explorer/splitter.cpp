#include "explorer/splitter.h"

#include <windowsx.h>

namespace explorer {

Splitter::Splitter(HWND parent, bool horizontal) : horizontal_(horizontal) {
    Creation creation;
    creation.className =
        horizontal ? L"OrvaneExplorerRowSplitter" : L"OrvaneExplorerColumnSplitter";
    creation.style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
    creation.parent = parent;
    creation.left = creation.top = creation.width = creation.height = 0;
    creation.cursor = horizontal ? IDC_SIZENS : IDC_SIZEWE;
    Create(creation);
}

int Splitter::PlaceIn(LPARAM pointer) const {
    return horizontal_ ? GET_Y_LPARAM(pointer) : GET_X_LPARAM(pointer);
}

void Splitter::Drag(LPARAM pointer) const {
    if (GetCapture() != Handle() || !onDrag) return;
    const RECT bounds = BoundsInParent(Handle());
    onDrag((horizontal_ ? bounds.top : bounds.left) + PlaceIn(pointer) - grip_);
}

std::optional<LRESULT> Splitter::OnMessage(UINT message, WPARAM, LPARAM large) {
    switch (message) {
        case WM_LBUTTONDOWN:
            grip_ = PlaceIn(large);
            SetCapture(Handle());
            return 0;
        case WM_MOUSEMOVE:
            Drag(large);
            return 0;
        case WM_LBUTTONUP:
            // Not every move of the mouse comes as a message of its own.
            Drag(large);
            if (GetCapture() == Handle()) ReleaseCapture();
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace explorer
