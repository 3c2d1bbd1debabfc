#pragma once

#include "explorer/window.h"

#include <functional>

namespace explorer {

/// A bar between two panes that the user drags.
class Splitter : public Window {
public:
    /// `horizontal`: the bar lies across, between a pane above and one below.
    Splitter(HWND parent, bool horizontal);
    ~Splitter() override { Disconnect(); }

    /// Called while the user drags, with the place where the bar's start is to go: pixels of the
    /// parent from its top or left.
    std::function<void(int)> onDrag;

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wide, LPARAM large) override;

private:
    /// Along the bar's way, in its own pixels.
    [[nodiscard]] int PlaceIn(LPARAM pointer) const;
    void Drag(LPARAM pointer) const;

    bool horizontal_;
    int grip_ = 0;  ///< how far from the bar's start the user holds it
};

}  // namespace explorer
