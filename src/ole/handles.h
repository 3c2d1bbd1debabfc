#pragma once

#include <windows.h>

#include <utility>

#include "ole/live.h"

namespace ole {

/// Owns a GDI object.
template <class H>
class GdiObject {
public:
    GdiObject() = default;
    explicit GdiObject(H handle) : handle_(handle) { Count(1); }
    GdiObject(GdiObject&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    GdiObject& operator=(GdiObject&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~GdiObject() {
        if (handle_ == nullptr) return;
        DeleteObject(handle_);
        Count(-1);
    }

    H Get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    void Count(LONG by) {
        if (handle_ != nullptr) InterlockedExchangeAdd(&LiveCounts().handles, by);
    }
    H handle_ = nullptr;
};
using Brush = GdiObject<HBRUSH>;
using FontHandle = GdiObject<HFONT>;

/// The screen's device context for a moment.
class ScreenContext {
public:
    ScreenContext() = default;
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;
    ~ScreenContext() { ReleaseDC(nullptr, context_); }
    HDC Get() const { return context_; }

private:
    HDC context_ = GetDC(nullptr);
};

/// A device context in memory, like the screen's.
class MemoryContext {
public:
    MemoryContext() = default;
    MemoryContext(const MemoryContext&) = delete;
    MemoryContext& operator=(const MemoryContext&) = delete;
    ~MemoryContext() { DeleteDC(context_); }
    HDC Get() const { return context_; }

private:
    HDC context_ = CreateCompatibleDC(nullptr);
};

/// Selects an object into a device context for a moment.
class Selected {
public:
    Selected(HDC context, HGDIOBJ object)
        : context_(context), before_(SelectObject(context, object)) {}
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;
    ~Selected() { SelectObject(context_, before_); }

private:
    HDC context_;
    HGDIOBJ before_;
};

}  // namespace ole
