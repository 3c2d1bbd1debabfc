#include "explorer/look.h"

namespace explorer {

namespace {

constexpr int pointsPerInch = 72;

int SystemDpi() {
    return GetDeviceCaps(WindowContext(nullptr).Get(), LOGPIXELSY);
}

LOGFONTW MessageFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    return metrics.lfMessageFont;
}

}  // namespace

Look::Look(int dpi) : dpi_(dpi) {
    LOGFONTW font = MessageFont();
    // A negative height is that of the characters, in pixels of the whole system's scale.
    fontPoints_ =
        font.lfHeight < 0 ? -static_cast<double>(font.lfHeight) * pointsPerInch / SystemDpi() : 9;
    fontName_ = font.lfFaceName;
    font.lfHeight = -MulDiv(static_cast<int>(fontPoints_ * 100 + 0.5), dpi, pointsPerInch * 100);
    font_.reset(CreateFontIndirectW(&font));
    const WindowContext screen(nullptr);
    const Selected selected(screen.Get(), font_.get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(screen.Get(), &metrics);
    lineHeight_ = metrics.tmHeight;
}

int Look::TextWidth(std::wstring_view text) const {
    const WindowContext screen(nullptr);
    const Selected selected(screen.Get(), font_.get());
    RECT extent{};
    DrawTextW(screen.Get(), text.data(), static_cast<int>(text.size()), &extent,
              DT_CALCRECT | DT_SINGLELINE);
    return extent.right;
}

int DpiOf(HWND window) {
    // GetDpiForWindow came with Windows 10.
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpi>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    const UINT dpi = getDpi && window ? getDpi(window) : 0;
    return dpi ? static_cast<int>(dpi) : SystemDpi();
}

void SetFont(HWND window, const Look& look) {
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(look.Font()), TRUE);
}

}  // namespace explorer
