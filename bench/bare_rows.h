#pragma once

#include <windows.h>

#include <span>

#include "bare_calls.h"
#include "bare_window.h"

namespace bench {

/// The least that reading rows from a late-bound meta node takes: the calls, each by its member's
/// name as a script makes them, and the texts in a vector.
class BareRows {
public:
    void Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties);
    void Clear() { texts_.Clear(); }

private:
    Texts texts_;
};

/// The same calls, each text put into the system's list view at once.
class SystemList {
public:
    explicit SystemList(int columns);

    void Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties);
    void Clear();

private:
    BareWindow list_;
};

}  // namespace bench
