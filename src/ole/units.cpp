#include "ole/units.h"

#include "ole/handles.h"

namespace ole {

int DotsPerInch(HWND window) {
    // GetDpiForWindow came with Windows 10.
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpi>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (getDpi != nullptr && window != nullptr) {
        if (const UINT dpi = getDpi(window)) return static_cast<int>(dpi);
    }
    const ScreenContext screen;
    return GetDeviceCaps(screen.Get(), LOGPIXELSY);
}

}  // namespace ole
