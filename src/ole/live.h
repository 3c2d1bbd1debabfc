#pragma once

#include <windows.h>

namespace ole {

/// What the server keeps alive. `objects` also decides whether the DLL may be unloaded.
struct Live {
    long objects = 0;
    long locks = 0;
    long windows = 0;
    long handles = 0;
};

Live& LiveCounts();

/// Counts its own life as one of `what`.
template <long Live::*what>
class Counted {
public:
    Counted() { InterlockedIncrement(&(LiveCounts().*what)); }
    Counted(const Counted&) : Counted() {}
    Counted& operator=(const Counted&) = default;
    ~Counted() { InterlockedDecrement(&(LiveCounts().*what)); }
};

}  // namespace ole
