#pragma once

#include <windows.h>

#include <vector>

#include "hosting/ref.h"

namespace bench {

/// The least that filling a combo box from a late-bound meta node takes: a bare box of the system,
/// the calls that name and get each text, and the objects kept in the order of their rows.
class BareList {
public:
    BareList();
    ~BareList();
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;

    void Fill(IDispatch& metaNode, const wchar_t* property);
    void Clear();
    std::size_t Count() const { return objects_.size(); }

private:
    HWND parent_;
    HWND box_;
    std::vector<hosting::Ref<IDispatch>> objects_;
};

}  // namespace bench
