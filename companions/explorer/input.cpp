#include "explorer/input.h"

#include "hosting/error.h"

#include <iterator>
#include <utility>
#include <vector>

namespace explorer {

namespace {

void Send(std::vector<INPUT> events) {
    const auto count = static_cast<UINT>(events.size());
    if (SendInput(count, events.data(), sizeof(INPUT)) != count)
        throw hosting::Error::FromResult(HRESULT_FROM_WIN32(GetLastError()), L"sending input");
}

INPUT MouseEvent(DWORD flags) {
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = flags;
    return event;
}

INPUT KeyEvent(WORD key, DWORD flags) {
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = key;
    event.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    event.ki.dwFlags = flags;
    return event;
}

}  // namespace

void MovePointer(POINT place) {
    // Absolute positions run over the primary screen from 0 to 65535.
    const auto absolute = [](LONG position, int extent) {
        return static_cast<LONG>((static_cast<LONGLONG>(position) * 65536 + 32768) / extent);
    };
    INPUT event = MouseEvent(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    event.mi.dx = absolute(place.x, GetSystemMetrics(SM_CXSCREEN));
    event.mi.dy = absolute(place.y, GetSystemMetrics(SM_CYSCREEN));
    Send({event});
}

void Click(POINT place) {
    MovePointer(place);
    Send({MouseEvent(MOUSEEVENTF_LEFTDOWN), MouseEvent(MOUSEEVENTF_LEFTUP)});
}

void PressKey(WORD key) {
    Send({KeyEvent(key, 0), KeyEvent(key, KEYEVENTF_KEYUP)});
}

void PressChord(std::initializer_list<WORD> keys) {
    std::vector<INPUT> events;
    for (const WORD key : keys) events.push_back(KeyEvent(key, 0));
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
        events.push_back(KeyEvent(*key, KEYEVENTF_KEYUP));
    Send(std::move(events));
}

POINT MiddleOnScreen(HWND window, const RECT& bounds) {
    POINT middle{(bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2};
    ClientToScreen(window, &middle);
    return middle;
}

}  // namespace explorer
