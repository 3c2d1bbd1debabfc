#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "bare_calls.h"
#include "bare_window.h"

namespace bench {

/// The least that opening a node with the nodes of a meta node takes: a bare tree of the system,
/// the calls that name and get each text, and the items, which say that there is something below
/// them, inserted in one go at one place.
class BareTree {
public:
    BareTree();

    /// A closed item below another one; at the top for null.
    HTREEITEM AddFolder(HTREEITEM parent = nullptr) const;
    void Open(HTREEITEM folder, IDispatch& repository, const wchar_t* metaNode,
              const wchar_t* property);
    void Expand(HTREEITEM item) const;
    void Clear();

private:
    HTREEITEM Insert(HTREEITEM parent, HTREEITEM after, const wchar_t* text) const;

    BareWindow tree_;
    Texts texts_;
    std::vector<hosting::Ref<IDispatch>> objects_;
};

}  // namespace bench
