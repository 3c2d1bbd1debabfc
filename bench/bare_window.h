#pragma once

#include <windows.h>

#include <ocidl.h>

namespace bench {

/// A window of the system's in a hidden one, as large as the controls are.
class BareWindow {
public:
    BareWindow(const wchar_t* windowClass, DWORD style);
    ~BareWindow() { DestroyWindow(parent_); }
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;

    LRESULT Send(UINT message, WPARAM wide = 0, LPARAM large = 0) const {
        return SendMessageW(window_, message, wide, large);
    }

private:
    HWND parent_;
    HWND window_;
};

/// The window of the system's class in a control.
HWND InnerWindow(IDispatch* control, const wchar_t* windowClass);

}  // namespace bench
