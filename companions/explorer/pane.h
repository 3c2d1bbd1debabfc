#pragma once

#include "explorer/look.h"

namespace explorer {

/// A part of the main window: it fills the rectangle that it is given with its windows.
class Pane {
public:
    Pane() = default;
    virtual ~Pane() = default;
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    /// Places the pane, in pixels of the main window.
    virtual void Place(const RECT& bounds) = 0;
    /// Less than this cuts something off, in pixels.
    [[nodiscard]] virtual SIZE MinimumSize() const = 0;
    /// The font or the scale has changed; Place follows. `look` outlives the pane's use of it.
    virtual void SetLook(const Look& look) = 0;
    /// Puts the focus where the letter of a label leads. False where no label here has it.
    virtual bool FocusMnemonic(wchar_t letter) = 0;
};

}  // namespace explorer
