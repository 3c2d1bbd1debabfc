#pragma once

#include "explorer/handles.h"

#include <string>
#include <string_view>

namespace explorer {

/// How things look on one monitor: the system's message font and the scale of the pixels.
class Look {
public:
    /// `dpi` pixels per inch.
    explicit Look(int dpi);

    [[nodiscard]] int Dpi() const noexcept { return dpi_; }
    /// Pixels from a measure that is meant for 96 dpi.
    [[nodiscard]] int Scale(int pixels) const { return MulDiv(pixels, dpi_, 96); }
    [[nodiscard]] SIZE Scale(SIZE pixels) const { return {Scale(pixels.cx), Scale(pixels.cy)}; }
    [[nodiscard]] HFONT Font() const noexcept { return font_.get(); }
    [[nodiscard]] const std::wstring& FontName() const noexcept { return fontName_; }
    [[nodiscard]] double FontPoints() const noexcept { return fontPoints_; }
    [[nodiscard]] int LineHeight() const noexcept { return lineHeight_; }
    /// The width of a text in this font; "&" marks mnemonics and has none.
    [[nodiscard]] int TextWidth(std::wstring_view text) const;

private:
    int dpi_;
    OwnedFont font_;
    std::wstring fontName_;
    double fontPoints_ = 0;
    int lineHeight_ = 0;
};

/// The pixels per inch of a window's monitor, or of the system where it does not tell.
[[nodiscard]] int DpiOf(HWND window);

/// Gives a window the look's font.
void SetFont(HWND window, const Look& look);

}  // namespace explorer
