#pragma once

#include <windows.h>

namespace ole {

/// The pixels per inch of the monitor that a window is on; of the system without a window.
int DotsPerInch(HWND window);

/// Lengths: pixels, twips (1/1440 inch, the unit of the interfaces) and OLE's 1/100 millimetre.
inline int TwipsToPixels(long twips, int dpi) {
    return MulDiv(static_cast<int>(twips), dpi, 1440);
}
inline long PixelsToTwips(int pixels, int dpi) {
    return MulDiv(pixels, 1440, dpi);
}
inline int HimetricToPixels(long himetric, int dpi) {
    return MulDiv(static_cast<int>(himetric), dpi, 2540);
}
inline long PixelsToHimetric(int pixels, int dpi) {
    return MulDiv(pixels, 2540, dpi);
}
inline long TwipsToHimetric(long twips) {
    return MulDiv(static_cast<int>(twips), 2540, 1440);
}

}  // namespace ole
