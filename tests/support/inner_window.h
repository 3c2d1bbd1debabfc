#pragma once

#include <windows.h>

#include "support/late_bound.h"

namespace support {

/// The first child of a class in a window: the system's own window in that of a control, say. None
/// where there is none.
[[nodiscard]] HWND InnerWindow(HWND window, const wchar_t* className);
[[nodiscard]] HWND InnerWindow(const LateBound& control, const wchar_t* className);

}  // namespace support
