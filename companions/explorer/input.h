#pragma once

#include <windows.h>

namespace explorer {

// The real mouse and keyboard, as the user's hands move them. Positions are pixels of the screen.

void MovePointer(POINT place);
void Click(POINT place);
/// Presses and releases a key.
void PressKey(WORD key);
/// The same while Ctrl is down.
void PressWithCtrl(WORD key);

/// The middle of a window's rectangle (client coordinates), on the screen.
[[nodiscard]] POINT MiddleOnScreen(HWND window, const RECT& bounds);

}  // namespace explorer
