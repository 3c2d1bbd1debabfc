#include "bare_window.h"

#include <comdef.h>
#include <oleidl.h>

#include "hosting/ref.h"

namespace bench {

BareWindow::BareWindow(const wchar_t* windowClass, DWORD style)
    : parent_(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr,
                              nullptr, nullptr)),
      window_(CreateWindowExW(0, windowClass, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 300, 200,
                              parent_, nullptr, nullptr, nullptr)) {}

HWND InnerWindow(IDispatch* control, const wchar_t* windowClass) {
    HWND outer = nullptr;
    _com_util::CheckError(hosting::Query<IOleWindow>(control)->GetWindow(&outer));
    return FindWindowExW(outer, nullptr, windowClass, nullptr);
}

}  // namespace bench
