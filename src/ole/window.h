#pragma once

#include <windows.h>

namespace ole {

/// A window of the server's own class. Destroying the object destroys the window; messages that
/// arrive meanwhile are answered by the system. No exception leaves the window procedure.
class Window {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND Handle() const { return handle_; }

protected:
    Window() = default;
    virtual ~Window();

    /// Makes the window, hidden and without a parent.
    void Create();
    void Destroy();

    /// Answers a message; `DefaultAnswer` gives the system's answer.
    virtual LRESULT OnMessage(UINT message, WPARAM wide, LPARAM large) = 0;
    LRESULT DefaultAnswer(UINT message, WPARAM wide, LPARAM large) const;

private:
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wide, LPARAM large);
    static ATOM ClassAtom();

    HWND handle_ = nullptr;
};

}  // namespace ole
