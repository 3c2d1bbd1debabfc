#include "explorer/split_pane.h"

#include <algorithm>
#include <utility>

namespace explorer {

namespace {

constexpr int barThickness = 6;

void MoveWindowTo(HWND window, const RECT& bounds) {
    MoveWindow(window, bounds.left, bounds.top, bounds.right - bounds.left,
               bounds.bottom - bounds.top, TRUE);
}

}  // namespace

SplitPane::SplitPane(HWND parent, Direction direction, Division::Keeps keeps, int wanted,
                     std::unique_ptr<Pane> first, std::unique_ptr<Pane> second)
    : across_(direction == Direction::aboveEachOther),
      division_(keeps, wanted),
      first_(std::move(first)),
      second_(std::move(second)),
      splitter_(parent, across_) {
    splitter_.onDrag = [this](int place) { Drag(place); };
}

void SplitPane::Place(const RECT& bounds) {
    bounds_ = bounds;
    const SIZE size{bounds.right - bounds.left, bounds.bottom - bounds.top};
    const int first = division_.First(Along(size), bar_, Along(first_->MinimumSize()),
                                      Along(second_->MinimumSize()));
    RECT before = bounds, bar = bounds, after = bounds;
    if (across_) {
        before.bottom = bar.top = bounds.top + first;
        after.top = bar.bottom = std::min(bar.top + bar_, bounds.bottom);
    } else {
        before.right = bar.left = bounds.left + first;
        after.left = bar.right = std::min(bar.left + bar_, bounds.right);
    }
    first_->Place(before);
    MoveWindowTo(splitter_.Handle(), bar);
    second_->Place(after);
}

SIZE SplitPane::MinimumSize() const {
    const SIZE first = first_->MinimumSize();
    const SIZE second = second_->MinimumSize();
    if (across_) return {std::max(first.cx, second.cx), first.cy + bar_ + second.cy};
    return {first.cx + bar_ + second.cx, std::max(first.cy, second.cy)};
}

void SplitPane::SetLook(const Look& look) {
    first_->SetLook(look);
    second_->SetLook(look);
    division_.SetWanted(MulDiv(division_.Wanted(), look.Dpi(), std::exchange(dpi_, look.Dpi())));
    bar_ = look.Scale(barThickness);
}

bool SplitPane::FocusMnemonic(wchar_t letter) {
    return first_->FocusMnemonic(letter) || second_->FocusMnemonic(letter);
}

void SplitPane::Drag(int place) {
    const SIZE size{bounds_.right - bounds_.left, bounds_.bottom - bounds_.top};
    const int start = across_ ? bounds_.top : bounds_.left;
    division_.Move(place - start, Along(size), bar_, Along(first_->MinimumSize()),
                   Along(second_->MinimumSize()));
    Place(bounds_);
}

}  // namespace explorer
