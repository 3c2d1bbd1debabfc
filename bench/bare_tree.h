#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "bare_calls.h"

namespace bench {

/// The least that opening a node with the nodes of a meta node takes: a bare tree of the system,
/// the calls that name and get each text, and the items, which say that there is something below
/// them, inserted in one go at one place.
class BareTree {
public:
    BareTree();
    ~BareTree() { DestroyWindow(parent_); }
    BareTree(const BareTree&) = delete;
    BareTree& operator=(const BareTree&) = delete;

    void Open(IDispatch& repository, const wchar_t* metaNode, const wchar_t* property);
    void Clear();

private:
    HTREEITEM Insert(HTREEITEM parent, const wchar_t* text) const;

    HWND parent_;
    HWND tree_;
    std::vector<_variant_t> texts_;
    std::vector<hosting::Ref<IDispatch>> objects_;
};

}  // namespace bench
