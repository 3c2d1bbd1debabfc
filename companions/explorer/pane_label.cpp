#include "explorer/pane_label.h"

#include "explorer/label.h"

#include <algorithm>
#include <utility>

namespace explorer {

namespace {

constexpr int margin = 11;
constexpr int gapBelow = 3;

}  // namespace

PaneLabel::PaneLabel(HWND parent, std::wstring name, Margins margins)
    : name_(std::move(name)),
      text_(name_ + L":"),
      margins_(margins),
      window_(MakeLabel(parent, text_)) {}

void PaneLabel::SetText(const std::wstring& text) {
    text_ = name_ + L": " + Literal(text);
    SetWindowTextW(window_.get(), text_.c_str());
}

wchar_t PaneLabel::Mnemonic() const {
    return MnemonicOf(name_);
}

void PaneLabel::SetLook(const Look& look) {
    SetFont(window_.get(), look);
    margin_ = look.Scale(margin);
    height_ = look.LineHeight() + look.Scale(gapBelow);
}

RECT PaneLabel::Place(const RECT& bounds) {
    RECT rest = bounds;
    rest.left += margin_;
    if (margins_ == Margins::leftAndRight) rest.right -= margin_;
    rest.right = std::max(rest.right, rest.left);
    rest.top += height_;
    rest.bottom = std::max(rest.bottom, rest.top);
    MoveWindow(window_.get(), rest.left, bounds.top, rest.right - rest.left, height_, TRUE);
    return rest;
}

}  // namespace explorer
