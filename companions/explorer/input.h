#pragma once

#include <windows.h>

#include <initializer_list>

namespace explorer {

// The real mouse and keyboard, as the user's hands move them. Positions are pixels of the screen.

void MovePointer(POINT place);
void Click(POINT place);
/// Presses and releases a key.
void PressKey(WORD key);
/// Presses all in this order and releases them in the other.
void PressChord(std::initializer_list<WORD> keys);

/// The middle of a window's rectangle (client coordinates), on the screen.
[[nodiscard]] POINT MiddleOnScreen(HWND window, const RECT& bounds);

}  // namespace explorer
