#pragma once

#include "hosting/form.h"

#include <functional>
#include <memory>
#include <string>

namespace hosting {

/// Destroys a window with its last owner.
struct DestroysWindow {
    using pointer = HWND;
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
};
using OwnedWindow = std::unique_ptr<HWND, DestroysWindow>;

/// A plain top-level window with a form in it.
class HostWindow {
public:
    /// `width` and `height` are those of the client area, in pixels. Throws Error.
    HostWindow(const std::wstring& title, int width, int height, bool visible = true);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    [[nodiscard]] HWND Handle() const noexcept { return window_.get(); }
    [[nodiscard]] Form& GetForm() noexcept { return *form_; }

    /// Makes the client area at least this large, in pixels.
    void GrowTo(int width, int height);

    /// Called when the user closes the window, which then is hidden, not destroyed.
    std::function<void()> onClose;

private:
    static LRESULT CALLBACK WindowProcedure(HWND, UINT, WPARAM, LPARAM);

    OwnedWindow window_;
    std::unique_ptr<Form> form_;
};

/// Handles messages for `milliseconds` (0: those that wait), `form` first. False where WM_QUIT
/// came, which is put back for the outer loop.
bool PumpMessages(Form* form, DWORD milliseconds = 0);

/// Handles messages until `done` says so (asked after each message) or `milliseconds` have passed.
/// True where it was done.
bool PumpUntil(Form* form, const std::function<bool()>& done, DWORD milliseconds);

/// Handles messages until WM_QUIT; returns its code.
int RunMessageLoop(Form* form);

}  // namespace hosting
