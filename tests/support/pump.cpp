#include "support/pump.h"

namespace support {

namespace {

/// Handles one message; false where none waits.
bool PumpOne(const MessageFilter& filter) {
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return false;
    if (!filter || !filter(message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

}  // namespace

void Pump(const MessageFilter& filter) {
    while (PumpOne(filter)) {
    }
}

bool PumpUntil(const std::function<bool()>& done, DWORD milliseconds, const MessageFilter& filter) {
    constexpr DWORD step = 10;
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (!done()) {
        if (PumpOne(filter)) continue;
        if (GetTickCount64() >= end) return false;
        MsgWaitForMultipleObjectsEx(0, nullptr, step, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
    return true;
}

}  // namespace support
