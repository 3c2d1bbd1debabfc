#pragma once

#include <windows.h>

#include <comutil.h>

#include <span>
#include <vector>

namespace bench {

/// The least that reading rows from a late-bound meta node takes: the calls, each by its member's
/// name as a script makes them, and the texts in a vector.
class BareRows {
public:
    void Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties);
    void Clear() { texts_ = {}; }

private:
    std::vector<_variant_t> texts_;
};

/// The same calls, each text put into the system's list view at once.
class SystemList {
public:
    explicit SystemList(int columns);
    ~SystemList() { DestroyWindow(parent_); }
    SystemList(const SystemList&) = delete;
    SystemList& operator=(const SystemList&) = delete;

    void Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties);
    void Clear();

private:
    HWND parent_;
    HWND list_;
};

}  // namespace bench
