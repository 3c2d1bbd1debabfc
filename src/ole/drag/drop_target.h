#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "ole/drag/ole_services.h"
#include "ole/ref.h"

struct IDropTarget;

namespace ole {

/// A window that things can be dropped on.
class DropTarget {
public:
    /// Something is dragged over the window.
    std::function<void()> onOver;
    /// Something is dropped at a point of the screen; the effect may be changed.
    std::function<void(POINT screen, DWORD& effect)> onDrop;

    DropTarget();
    ~DropTarget();
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;

    /// Errors: those of the platform's registration.
    void Open(HWND window);
    void Close();
    bool IsOpen() const { return window_ != nullptr; }

private:
    class Part;

    HWND window_ = nullptr;
    std::optional<OleServices> services_;
    Ref<Part> part_;
};

}  // namespace ole
