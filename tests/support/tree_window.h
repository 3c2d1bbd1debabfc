#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "support/late_bound.h"

namespace support {

/// Reads and uses the system's tree in a control, as any program does that reads the screen for its
/// user.
class TreeWindow {
public:
    using Texts = std::vector<std::string>;

    explicit TreeWindow(const LateBound& control);
    explicit TreeWindow(HWND tree) : tree_(tree) {}

    [[nodiscard]] HWND Handle() const { return tree_; }
    [[nodiscard]] DWORD Style() const;

    /// All items, each behind as many dots as it has parents: "Root", ".Loading".
    [[nodiscard]] Texts All() const;
    /// The texts of the children of an item; of null those at the top.
    [[nodiscard]] Texts Below(HTREEITEM item) const;
    [[nodiscard]] int Count() const;
    /// The item at the end of a path of texts, null where there is none.
    [[nodiscard]] HTREEITEM At(const Texts& path) const;
    /// The same, opening what is on the way. Nothing is selected.
    [[nodiscard]] HTREEITEM OpenTo(const Texts& path) const;
    [[nodiscard]] std::string Text(HTREEITEM item) const;
    /// Where an item's text is, in client coordinates.
    [[nodiscard]] RECT RectOf(HTREEITEM item) const;
    /// The positions of an item's image, from 0; -1 for none.
    [[nodiscard]] int Image(HTREEITEM item) const;
    [[nodiscard]] int SelectedImage(HTREEITEM item) const;
    [[nodiscard]] bool HasButton(HTREEITEM item) const;
    [[nodiscard]] bool IsOpen(HTREEITEM item) const;
    [[nodiscard]] HTREEITEM Selected() const;
    [[nodiscard]] std::string SelectedText() const;
    /// 0 without a check box, 1 for an empty one, 2 for a checked one.
    [[nodiscard]] UINT CheckBox(HTREEITEM item) const;

    void Select(HTREEITEM item) const;
    /// Opens without selecting.
    void Expand(HTREEITEM item) const;
    /// Selects an item and presses a key.
    void Press(HTREEITEM item, WPARAM key) const;
    /// Opens or closes by the keyboard.
    void Open(HTREEITEM item) const { Press(item, VK_ADD); }
    void Open(const Texts& path) const { Open(At(path)); }
    void Close(HTREEITEM item) const { Press(item, VK_SUBTRACT); }

private:
    LRESULT Send(UINT message, WPARAM wide = 0, LPARAM large = 0) const {
        return SendMessageW(tree_, message, wide, large);
    }
    [[nodiscard]] HTREEITEM Next(UINT which, HTREEITEM item) const;
    [[nodiscard]] HTREEITEM ChildNamed(HTREEITEM item, const std::string& text) const;
    void AddAll(HTREEITEM first, const std::string& dots, Texts& texts) const;
    [[nodiscard]] TVITEMW Read(HTREEITEM item, UINT mask) const;

    HWND tree_;
};

}  // namespace support
