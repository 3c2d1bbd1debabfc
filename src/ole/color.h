#pragma once

#include <windows.h>

namespace ole {

/// The colour that an OLE colour stands for: one of the system's, or red, green and blue. Errors:
/// 380 for any other number.
COLORREF ToColor(long color);

}  // namespace ole
