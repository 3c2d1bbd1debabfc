#include "ole/color.h"

#include <olectl.h>

#include "ole/error.h"

namespace ole {

COLORREF ToColor(long color) {
    COLORREF translated = 0;
    if (FAILED(OleTranslateColor(static_cast<OLE_COLOR>(color), nullptr, &translated))) {
        Throw(Number::invalidPropertyValue);
    }
    return translated;
}

}  // namespace ole
