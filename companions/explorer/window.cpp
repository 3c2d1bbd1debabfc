#include "explorer/window.h"

#include "hosting/error.h"

namespace explorer {

void Window::Create(const Creation& creation) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = Procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, creation.cursor);
    description.hIcon = creation.icon;
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = creation.className;
    RegisterClassExW(&description);
    handle_ =
        CreateWindowExW(creation.extendedStyle, creation.className, creation.title, creation.style,
                        creation.left, creation.top, creation.width, creation.height,
                        creation.parent, nullptr, description.hInstance, this);
    if (!handle_)
        throw hosting::Error::FromResult(HRESULT_FROM_WIN32(GetLastError()), L"making a window");
}

Window::~Window() {
    Disconnect();
    if (handle_) DestroyWindow(handle_);
}

void Window::Disconnect() noexcept {
    if (handle_) SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
}

LRESULT CALLBACK Window::Procedure(HWND handle, UINT message, WPARAM wide, LPARAM large) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(large);
        auto* const window = static_cast<Window*>(creation->lpCreateParams);
        window->handle_ = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
    }
    auto* const window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (window) {
        if (message == WM_NCDESTROY) {
            window->Disconnect();
            window->handle_ = nullptr;
        } else if (const auto answer = window->OnMessage(message, wide, large)) {
            return *answer;
        }
    }
    return DefWindowProcW(handle, message, wide, large);
}

RECT BoundsInParent(HWND window) {
    RECT bounds{};
    GetWindowRect(window, &bounds);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&bounds), 2);
    return bounds;
}

}  // namespace explorer
