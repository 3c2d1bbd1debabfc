#pragma once

#include <memory>
#include <type_traits>

namespace ole {

/// Ends a handle of the system by the function that its kind has for that.
template <class Handle, auto end>
struct Ends {
    using pointer = Handle;
    void operator()(Handle handle) const { end(handle); }
};

/// Owns a handle of the system.
template <class Handle, auto end>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Ends<Handle, end>>;

}  // namespace ole
