#include "support/inner_window.h"

#include <oleidl.h>

namespace support {

HWND InnerWindow(HWND window, const wchar_t* className) {
    // Without a parent the system would look among all windows.
    return window != nullptr ? FindWindowExW(window, nullptr, className, nullptr) : nullptr;
}

HWND InnerWindow(const LateBound& control, const wchar_t* className) {
    HWND window = nullptr;
    if (const auto place = Query<IOleWindow>(control.Get())) place->GetWindow(&window);
    return InnerWindow(window, className);
}

}  // namespace support
