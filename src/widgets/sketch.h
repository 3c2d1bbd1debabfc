#pragma once

#include <windows.h>

#include <string_view>

#include "ole/handles.h"

namespace widgets {

/// Draws a control as it looks without its window: a sunken box with lines of text.
class Sketch {
public:
    /// `font` may be null for the system's.
    Sketch(HDC context, const RECT& bounds, COLORREF background, HFONT font);

    HDC Context() const { return context_; }
    /// What the frame leaves.
    const RECT& Box() const { return box_; }
    LONG LineHeight() const { return metrics_.tmHeight + metrics_.tmHeight / 3; }
    LONG CharacterWidth() const { return metrics_.tmAveCharWidth; }
    /// A text in a cell; what does not fit ends in dots.
    void Text(std::wstring_view text, RECT cell, COLORREF color) const;

private:
    static RECT Framed(HDC context, RECT bounds, COLORREF background);

    HDC context_;
    RECT box_;
    ole::Selected font_;
    TEXTMETRICW metrics_ = {};
};

}  // namespace widgets
