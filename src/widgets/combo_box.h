#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "ole/handles.h"

namespace widgets {

/// The system's drop-down combo box with an editable text. Rows carry a text and a 32-bit number.
/// The current row is the one picked, set, or matched exactly by the typed text; -1 when there is
/// none.
class ComboBox {
public:
    /// Called when the user picks a row, types, or moves the focus.
    std::function<void()> onPick;
    std::function<void()> onEdit;
    std::function<void(bool focused)> onFocus;

    ~ComboBox();
    ComboBox() = default;
    ComboBox(const ComboBox&) = delete;
    ComboBox& operator=(const ComboBox&) = delete;

    void Create(HWND parent);
    HWND Handle() const { return handle_; }

    /// Adds a row at the end; its number is 0 until it is set.
    void Add(const wchar_t* text);
    /// Sets the number of the row added last, if there is one since the last `Clear`.
    void SetNewestNumber(long number);
    long Number(int row) const;
    int Count() const;
    void Clear();

    int Current() const { return current_; }
    void SetCurrent(int row);

    /// The text in the box, as shown.
    std::wstring Text() const;

    void SetFont(HFONT font, int dpi);
    void SetColors(COLORREF text, COLORREF background);
    /// The height of the closed box, in pixels; it follows from the font.
    int Height() const;
    void SetWidth(int width);

    /// Answers what the parent window gets from the box; nothing where the box has no answer.
    std::optional<LRESULT> OnParentMessage(UINT message, WPARAM wide, LPARAM large);

    /// Whether the box, or its open list, wants a key.
    bool UsesKey(const MSG& message) const;

    /// Draws the closed box, as it looks without a window.
    void Draw(HDC context, const RECT& bounds) const;

private:
    LRESULT Send(UINT message, WPARAM wide = 0, LPARAM large = 0) const {
        return SendMessageW(handle_, message, wide, large);
    }
    void OnEdited();
    /// The system selects the whole text with a new row or width; without the focus that would look
    /// as if the box had it.
    void ShowNoSelection();

    HWND handle_ = nullptr;
    HFONT font_ = nullptr;
    int dpi_ = 96;
    int current_ = -1;
    int newest_ = -1;
    /// While the box is changed from the program, what it reports is no edit of the user's.
    bool changing_ = false;
    COLORREF textColor_ = 0;
    COLORREF background_ = 0;
    ole::Brush backgroundBrush_;
};

}  // namespace widgets
