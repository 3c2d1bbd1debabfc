#include "hosting/host_window.h"

#include "hosting/error.h"

#include <algorithm>

namespace hosting {

namespace {

constexpr wchar_t className[] = L"OrvaneHostWindow";
constexpr DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

void RegisterWindowClass(WNDPROC procedure) {
    WNDCLASSW description{};
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_ARROW));
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = className;
    RegisterClassW(&description);
}

/// Waits for messages and handles one batch. False where WM_QUIT came, which is put back.
bool HandleWaiting(Form* form, const std::function<bool()>& done) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        if (!form || !form->TranslateMessage(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (done && done()) return true;
    }
    return true;
}

enum class Outcome { timeOut, done, quit };

Outcome Pump(Form* form, const std::function<bool()>& done, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (;;) {
        if (!HandleWaiting(form, done)) return Outcome::quit;
        if (done && done()) return Outcome::done;
        const ULONGLONG now = GetTickCount64();
        if (now >= end) return Outcome::timeOut;
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
    }
}

}  // namespace

HostWindow::HostWindow(const std::wstring& title, int width, int height, bool visible) {
    RegisterWindowClass(WindowProcedure);
    RECT bounds{0, 0, width, height};
    AdjustWindowRect(&bounds, style, FALSE);
    window_.reset(CreateWindowExW(WS_EX_CONTROLPARENT, className, title.c_str(), style,
                                  CW_USEDEFAULT, CW_USEDEFAULT, bounds.right - bounds.left,
                                  bounds.bottom - bounds.top, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), this));
    if (!window_) throw Error::FromResult(HRESULT_FROM_WIN32(GetLastError()), L"making a window");
    form_ = std::make_unique<Form>(window_.get());
    if (visible) ShowWindow(window_.get(), SW_SHOW);
}

HostWindow::~HostWindow() {
    form_.reset();
}

void HostWindow::GrowTo(int width, int height) {
    RECT client{};
    GetClientRect(window_.get(), &client);
    RECT bounds{0, 0, std::max<LONG>(width, client.right), std::max<LONG>(height, client.bottom)};
    if (EqualRect(&bounds, &client)) return;
    AdjustWindowRect(&bounds, style, FALSE);
    SetWindowPos(window_.get(), nullptr, 0, 0, bounds.right - bounds.left,
                 bounds.bottom - bounds.top, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK HostWindow::WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* const host = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (host && message == WM_SETFOCUS && host->form_) {
        host->form_->RestoreFocus();
        return 0;
    }
    if (host && message == WM_CLOSE) {
        ShowWindow(window, SW_HIDE);
        if (const auto tell = host->onClose) tell();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool PumpMessages(Form* form, DWORD milliseconds) {
    return Pump(form, nullptr, milliseconds) != Outcome::quit;
}

bool PumpUntil(Form* form, const std::function<bool()>& done, DWORD milliseconds) {
    return Pump(form, done, milliseconds) == Outcome::done;
}

int RunMessageLoop(Form* form) {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (form && form->TranslateMessage(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

}  // namespace hosting
