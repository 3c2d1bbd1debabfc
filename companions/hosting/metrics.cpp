#include "hosting/metrics.h"

namespace hosting {

namespace {

constexpr int himetricPerInch = 2540;

class ScreenContext {
public:
    ScreenContext() : context_(GetDC(nullptr)) {}
    ~ScreenContext() { ReleaseDC(nullptr, context_); }
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;

    [[nodiscard]] SIZE PixelsPerInch() const {
        return {GetDeviceCaps(context_, LOGPIXELSX), GetDeviceCaps(context_, LOGPIXELSY)};
    }

private:
    HDC context_;
};

}  // namespace

SIZE PixelsToHimetric(SIZE pixels) {
    const SIZE scale = ScreenContext().PixelsPerInch();
    return {MulDiv(pixels.cx, himetricPerInch, scale.cx),
            MulDiv(pixels.cy, himetricPerInch, scale.cy)};
}

SIZE HimetricToPixels(SIZE himetric) {
    const SIZE scale = ScreenContext().PixelsPerInch();
    return {MulDiv(himetric.cx, scale.cx, himetricPerInch),
            MulDiv(himetric.cy, scale.cy, himetricPerInch)};
}

}  // namespace hosting
