#pragma once

#include "explorer/division.h"
#include "explorer/pane.h"
#include "explorer/splitter.h"

#include <memory>

namespace explorer {

/// Two panes and a bar between them that the user drags: above each other or side by side.
class SplitPane : public Pane {
public:
    enum class Direction { aboveEachOther, sideBySide };

    /// `keeps` says who keeps its length when the window's size changes, and `wanted` how long that
    /// is at first, in pixels at 96 dpi (0: no longer than needed).
    SplitPane(HWND parent, Direction direction, Division::Keeps keeps, int wanted,
              std::unique_ptr<Pane> first, std::unique_ptr<Pane> second);

    void Place(const RECT& bounds) override;
    [[nodiscard]] SIZE MinimumSize() const override;
    void SetLook(const Look& look) override;
    bool FocusMnemonic(wchar_t letter) override;

private:
    [[nodiscard]] int Along(SIZE size) const { return across_ ? size.cy : size.cx; }
    void Drag(int place);

    bool across_;
    Division division_;
    std::unique_ptr<Pane> first_;
    std::unique_ptr<Pane> second_;
    Splitter splitter_;
    RECT bounds_{};
    int dpi_ = 96;
    int bar_ = 0;
};

}  // namespace explorer
