#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace ole {

/// What a drag tells whoever started it: the effect that a drop would have now, and whether the
/// system's cursors show it, which may be changed.
using DragFeedback = std::function<void(DWORD effect, bool& systemCursors)>;

/// Drags a text, as Unicode text, from a window of this thread until the user drops it or gives up.
/// Answers the effect that the drop had, DROPEFFECT_NONE for none. Errors: the platform's.
DWORD DragText(const std::wstring& text, DWORD allowedEffects, const DragFeedback& feedback);

}  // namespace ole
