#pragma once

#include "explorer/look.h"
#include "hosting/host_window.h"

#include <string>

namespace explorer {

/// The label above what a pane shows, and the margins beside both.
class PaneLabel {
public:
    enum class Margins { left, leftAndRight };

    /// `name` is what the pane is called, its mnemonic marked: "T&ree".
    PaneLabel(HWND parent, std::wstring name, Margins margins = Margins::leftAndRight);

    /// Says what is shown, behind the name.
    void SetText(const std::wstring& text);
    /// What the label says, with its mnemonic's mark.
    [[nodiscard]] const std::wstring& Text() const noexcept { return text_; }
    /// The letter that goes to the pane with Alt.
    [[nodiscard]] wchar_t Mnemonic() const;

    void SetLook(const Look& look);
    /// Puts the label at the top of a pane's bounds. What is left below is for the pane's window.
    RECT Place(const RECT& bounds);
    /// The width of a margin, in pixels.
    [[nodiscard]] int Margin() const noexcept { return margin_; }

private:
    std::wstring name_;
    std::wstring text_;
    Margins margins_;
    hosting::OwnedWindow window_;
    int margin_ = 0;
    int height_ = 0;
};

}  // namespace explorer
