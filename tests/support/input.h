#pragma once

#include "support/pump.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace support {

/// Real mouse and keyboard input, put together step by step and then played on a thread of its own,
/// while the caller's thread handles messages, so that menus, dialogs and drags with loops of their
/// own work too:
///
///     Input().MoveTo(box, {5, 5}).Click().Key(VK_DOWN).Text("grün").Play();
///
/// Points are in client coordinates of a window and resolved when their step comes.
class Input {
public:
    enum class Button { left, right, middle };

    /// Moves the pointer in small steps, as a hand does.
    Input& MoveTo(HWND window, POINT point);
    Input& MoveToMiddle(HWND window);
    /// In screen coordinates.
    Input& MoveTo(POINT screen);
    Input& Press(Button button = Button::left);
    Input& Release(Button button = Button::left);
    Input& Click(Button button = Button::left);
    Input& DoubleClick();
    /// Presses, moves slowly enough for drag and drop, and releases.
    Input& DragTo(HWND window, POINT point, Button button = Button::left);
    Input& Wheel(int notches);

    Input& KeyDown(WORD key);
    Input& KeyUp(WORD key);
    Input& Key(WORD key);
    /// Presses all in this order, releases them in the other: Chord({VK_CONTROL, 'A'}).
    Input& Chord(std::initializer_list<WORD> keys);
    /// Types a text (UTF-8), whatever the keyboard has.
    Input& Text(const std::string& text);

    Input& Wait(DWORD milliseconds);
    /// Runs `work` on the input thread.
    Input& Do(std::function<void()> work);

    /// Plays the steps, handles messages until they are done and no more input waits. False when
    /// that took longer than it may.
    bool Play(DWORD milliseconds = 20000, const MessageFilter& filter = nullptr);

    /// Puts a top-level window in front and gives it the focus, without which keys go elsewhere.
    static void Activate(HWND window);

private:
    Input& Mouse(DWORD flags, DWORD data = 0);
    Input& Keyboard(WORD key, WORD scan, DWORD flags);

    std::vector<std::function<void()>> steps_;
};

}  // namespace support
