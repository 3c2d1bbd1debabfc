#include "ole/window.h"

#include <string>
#include <utility>

#include "ole/error.h"
#include "ole/live.h"
#include "ole/server.h"
#include "ole/theme.h"

namespace ole {

namespace {

/// A window class must go before the module that holds its procedure.
class WindowClass {
public:
    explicit WindowClass(WNDPROC procedure) : name_(std::wstring(server.assembly) + L".Control") {
        WNDCLASSEXW description = {};
        description.cbSize = sizeof(description);
        description.style = CS_DBLCLKS;
        description.lpfnWndProc = procedure;
        description.hInstance = ModuleHandle();
        description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
        description.lpszClassName = name_.c_str();
        atom_ = RegisterClassExW(&description);
    }
    ~WindowClass() { UnregisterClassW(name_.c_str(), ModuleHandle()); }
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;

    ATOM Atom() const { return atom_; }

private:
    std::wstring name_;
    ATOM atom_;
};

}  // namespace

Window::~Window() {
    Destroy();
}

void Window::Create() {
    const ThemedScope themed;
    handle_ = CreateWindowExW(WS_EX_CONTROLPARENT, MAKEINTATOM(ClassAtom()), L"",
                              WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 0, 0, nullptr,
                              nullptr, ModuleHandle(), this);
    if (handle_ == nullptr) Check(HRESULT_FROM_WIN32(GetLastError()));
}

void Window::Destroy() {
    if (handle_ == nullptr) return;
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(std::exchange(handle_, nullptr));
}

LRESULT Window::DefaultAnswer(UINT message, WPARAM wide, LPARAM large) const {
    return DefWindowProcW(handle_, message, wide, large);
}

LRESULT CALLBACK Window::Procedure(HWND handle, UINT message, WPARAM wide, LPARAM large) {
    if (message == WM_NCDESTROY) InterlockedDecrement(&LiveCounts().windows);
    if (message == WM_NCCREATE) {
        InterlockedIncrement(&LiveCounts().windows);
        const auto& creation = *reinterpret_cast<const CREATESTRUCTW*>(large);
        static_cast<Window*>(creation.lpCreateParams)->handle_ = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation.lpCreateParams));
    }
    auto window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (window == nullptr) return DefWindowProcW(handle, message, wide, large);
    if (message == WM_NCDESTROY) {
        // Somebody else destroyed it, as a parent does with its children.
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        window->handle_ = nullptr;
        return DefWindowProcW(handle, message, wide, large);
    }
    try {
        return window->OnMessage(message, wide, large);
    } catch (...) {
        NoteErrorWithoutCaller();
        return 0;
    }
}

ATOM Window::ClassAtom() {
    static const WindowClass windowClass(Procedure);
    return windowClass.Atom();
}

}  // namespace ole
