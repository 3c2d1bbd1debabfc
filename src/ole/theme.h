#pragma once

#include <windows.h>

namespace ole {

/// While it lives, windows are made with the common controls that the server's own manifest names
/// (resource 2), whatever the host has.
class ThemedScope {
public:
    ThemedScope();
    ~ThemedScope();
    ThemedScope(const ThemedScope&) = delete;
    ThemedScope& operator=(const ThemedScope&) = delete;

private:
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

}  // namespace ole
