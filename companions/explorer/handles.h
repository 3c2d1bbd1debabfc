#pragma once

#include <windows.h>

#include <memory>

namespace explorer {

struct DeletesObject {
    void operator()(void* object) const noexcept { DeleteObject(object); }
};
struct DeletesContext {
    void operator()(HDC context) const noexcept { DeleteDC(context); }
};

/// A font of ours.
using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, DeletesObject>;
/// A bitmap of ours.
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeletesObject>;
/// A device context in memory.
using OwnedContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeletesContext>;

/// The device context of a window, or of the whole screen, for a moment.
class WindowContext {
public:
    explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
    ~WindowContext() { ReleaseDC(window_, context_); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;

    [[nodiscard]] HDC Get() const noexcept { return context_; }

private:
    HWND window_;
    HDC context_;
};

/// An object selected into a device context for a moment.
class Selected {
public:
    Selected(HDC context, HGDIOBJ object)
        : context_(context), before_(SelectObject(context, object)) {}
    ~Selected() { SelectObject(context_, before_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC context_;
    HGDIOBJ before_;
};

}  // namespace explorer
