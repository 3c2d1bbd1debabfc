#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace widgets {

/// What a drag tells whoever started it: the effect that a drop would have now, and whether the
/// system's cursors show it; it may be changed.
using DragFeedback = std::function<void(DWORD& effect, bool& systemCursors)>;

/// Drags a text, as Unicode text, from a window of this thread until the user drops it or gives up.
/// Answers the effect that the drop had, DROPEFFECT_NONE for none. The thread has to be one that
/// OLE was initialized on.
DWORD DragText(const std::wstring& text, DWORD allowedEffects, const DragFeedback& feedback);

}  // namespace widgets
