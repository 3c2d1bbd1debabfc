#pragma once

#include <windows.h>

#include <vector>

#include "bare_window.h"
#include "hosting/ref.h"

namespace bench {

/// The least that filling a combo box from a late-bound meta node takes: a bare box of the system,
/// the calls that name and get each text, and the objects kept in the order of their rows.
class BareList {
public:
    BareList();

    void Fill(IDispatch& metaNode, const wchar_t* property);
    void Clear();
    std::size_t Count() const { return objects_.size(); }

private:
    BareWindow box_;
    std::vector<hosting::Ref<IDispatch>> objects_;
};

}  // namespace bench
