#include "explorer/splitter.h"

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

int Splitter::PointerPlace() const {
    const DWORD position = GetMessagePos();
    POINT pointer{static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
    ScreenToClient(GetParent(Handle()), &pointer);
    return horizontal_ ? pointer.y : pointer.x;
}

std::optional<LRESULT> Splitter::OnMessage(UINT message, WPARAM, LPARAM) {
    switch (message) {
        case WM_LBUTTONDOWN: {
            const RECT bounds = BoundsInParent(Handle());
            grip_ = PointerPlace() - (horizontal_ ? bounds.top : bounds.left);
            SetCapture(Handle());
            return 0;
        }
        case WM_MOUSEMOVE:
            if (GetCapture() == Handle() && onDrag) onDrag(PointerPlace() - grip_);
            return 0;
        case WM_LBUTTONUP:
            if (GetCapture() == Handle()) ReleaseCapture();
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace explorer
