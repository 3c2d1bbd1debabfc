#include "explorer/message_loop.h"

namespace explorer {

void MessageLoop::Handle(MSG& message) {
    if (filter_ && filter_(message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

int MessageLoop::Run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) Handle(message);
    return static_cast<int>(message.wParam);
}

bool MessageLoop::RunUntil(const std::function<bool()>& done, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(message.wParam));
                return done();
            }
            Handle(message);
        }
        if (done()) return true;
        const ULONGLONG now = GetTickCount64();
        if (now >= end) return false;
        // Short enough for what becomes true without a message.
        constexpr ULONGLONG step = 20;
        MsgWaitForMultipleObjectsEx(0, nullptr,
                                    static_cast<DWORD>(end - now < step ? end - now : step),
                                    QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

void MessageLoop::RunFor(DWORD milliseconds) {
    RunUntil([] { return false; }, milliseconds);
}

}  // namespace explorer
