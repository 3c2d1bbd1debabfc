#pragma once

#include <windows.h>

#include <optional>

namespace explorer {

/// A window of a class of our own.
class Window {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    [[nodiscard]] HWND Handle() const noexcept { return handle_; }

protected:
    /// What makes a window; position and size in pixels.
    struct Creation {
        const wchar_t* className = nullptr;
        const wchar_t* title = L"";
        DWORD style = 0;
        DWORD extendedStyle = 0;
        HWND parent = nullptr;
        int left = CW_USEDEFAULT;
        int top = CW_USEDEFAULT;
        int width = CW_USEDEFAULT;
        int height = CW_USEDEFAULT;
        const wchar_t* cursor = IDC_ARROW;
        HICON icon = nullptr;
    };

    Window() = default;
    virtual ~Window();

    /// Makes the window. Throws hosting::Error.
    void Create(const Creation& creation);
    /// No message reaches OnMessage any more: for destructors of derived classes that take parts
    /// down which still send some.
    void Disconnect() noexcept;

    /// Handles a message; without an answer the system does.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wide, LPARAM large) = 0;

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);

    HWND handle_ = nullptr;
};

/// The position of a window in the coordinates of its parent.
[[nodiscard]] RECT BoundsInParent(HWND window);

}  // namespace explorer
