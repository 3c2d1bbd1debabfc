#include "support/input.h"

#include "support/text.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>

namespace support {

namespace {

constexpr DWORD stepPause = 8;
constexpr DWORD dragPause = 30;

void Send(const INPUT& input) {
    INPUT copy = input;
    SendInput(1, &copy, sizeof copy);
    Sleep(stepPause);
}

void PutPointer(POINT screen) {
    // Absolute positions are parts of 65536 of the primary screen; the half makes them round well.
    const auto scaled = [](LONG position, int size) {
        return static_cast<LONG>((static_cast<long long>(position) * 65536 + 32768) / size);
    };
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = scaled(screen.x, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = scaled(screen.y, GetSystemMetrics(SM_CYSCREEN));
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    SendInput(1, &input, sizeof input);
}

void Glide(POINT to, DWORD pause, int steps) {
    POINT from{};
    GetCursorPos(&from);
    for (int step = 1; step <= steps; ++step) {
        PutPointer(
            {from.x + (to.x - from.x) * step / steps, from.y + (to.y - from.y) * step / steps});
        Sleep(pause);
    }
}

POINT OnScreen(HWND window, POINT point) {
    ClientToScreen(window, &point);
    return point;
}

DWORD DownFlag(Input::Button button) {
    if (button == Input::Button::right) return MOUSEEVENTF_RIGHTDOWN;
    return button == Input::Button::middle ? MOUSEEVENTF_MIDDLEDOWN : MOUSEEVENTF_LEFTDOWN;
}

DWORD UpFlag(Input::Button button) {
    return DownFlag(button) << 1;
}

/// Keys of the block between the letters and the numeric keypad.
bool IsExtended(WORD key) {
    constexpr WORD extended[] = {VK_LEFT, VK_RIGHT, VK_UP,   VK_DOWN,   VK_HOME,
                                 VK_END,  VK_PRIOR, VK_NEXT, VK_INSERT, VK_DELETE};
    return std::find(std::begin(extended), std::end(extended), key) != std::end(extended);
}

}  // namespace

Input& Input::MoveTo(HWND window, POINT point) {
    return Do([=] { Glide(OnScreen(window, point), stepPause, 5); });
}

Input& Input::MoveToMiddle(HWND window) {
    return Do([=] {
        RECT client{};
        GetClientRect(window, &client);
        Glide(OnScreen(window, {client.right / 2, client.bottom / 2}), stepPause, 5);
    });
}

Input& Input::MoveTo(POINT screen) {
    return Do([=] { Glide(screen, stepPause, 5); });
}

Input& Input::Mouse(DWORD flags, DWORD data) {
    return Do([=] {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        input.mi.mouseData = data;
        Send(input);
    });
}

Input& Input::Press(Button button) {
    return Mouse(DownFlag(button));
}

Input& Input::Release(Button button) {
    return Mouse(UpFlag(button));
}

Input& Input::Click(Button button) {
    return Press(button).Release(button);
}

Input& Input::DoubleClick() {
    return Click().Click();
}

Input& Input::DragTo(HWND window, POINT point, Button button) {
    Press(button);
    Wait(dragPause);
    Do([=] { Glide(OnScreen(window, point), dragPause, 12); });
    Wait(5 * dragPause);
    return Release(button);
}

Input& Input::Wheel(int notches) {
    return Mouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(notches * WHEEL_DELTA));
}

Input& Input::Keyboard(WORD key, WORD scan, DWORD flags) {
    return Do([=] {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.wScan = scan;
        input.ki.dwFlags = flags;
        Send(input);
    });
}

Input& Input::KeyDown(WORD key) {
    const auto scan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    return Keyboard(key, scan, IsExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0);
}

Input& Input::KeyUp(WORD key) {
    const auto scan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    return Keyboard(key, scan, KEYEVENTF_KEYUP | (IsExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0));
}

Input& Input::Key(WORD key) {
    return KeyDown(key).KeyUp(key);
}

Input& Input::Chord(std::initializer_list<WORD> keys) {
    for (const WORD key : keys) KeyDown(key);
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) KeyUp(*key);
    return *this;
}

Input& Input::Text(const std::string& text) {
    for (const wchar_t unit : Wide(text)) {
        Keyboard(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE);
        Keyboard(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    }
    return *this;
}

Input& Input::Wait(DWORD milliseconds) {
    return Do([=] { Sleep(milliseconds); });
}

Input& Input::Do(std::function<void()> work) {
    steps_.push_back(std::move(work));
    return *this;
}

bool Input::Play(DWORD milliseconds, const MessageFilter& filter) {
    std::atomic<bool> done = false;
    std::thread player([&] {
        for (const auto& step : steps_) step();
        done = true;
    });
    const bool inTime = PumpUntil([&] { return done.load(); }, milliseconds, filter);
    player.join();
    // What was sent last may still be on its way through the window system.
    constexpr DWORD settling = 60;
    const ULONGLONG end = GetTickCount64() + settling;
    static_cast<void>(PumpUntil([&] { return GetTickCount64() >= end; }, settling * 10, filter));
    return inTime;
}

void Input::Activate(HWND window) {
    ShowWindow(window, SW_SHOW);
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    SetForegroundWindow(window);
    Pump();
}

}  // namespace support
