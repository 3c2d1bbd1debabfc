#pragma once

#include <windows.h>

namespace hosting {

/// Between pixels of the screen and hundredths of a millimetre, in which OLE measures objects.
[[nodiscard]] SIZE PixelsToHimetric(SIZE pixels);
[[nodiscard]] SIZE HimetricToPixels(SIZE himetric);

}  // namespace hosting
