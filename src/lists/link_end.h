#pragma once

#include <OrvaneControls.h>

#include <cstring>

#include "ole/object.h"

namespace lists {

/// The end of a link that a value comes from. The numbers are the interface's; hosts may pass any.
enum LinkEnd : long { sourceEnd = 0, linkItself = 1, targetEnd = 2 };

/// The number that a host passes for an enumeration. It may be any; the enumeration's own type
/// could not hold it.
inline long NumberIn(const LinkObjectT* value) {
    static_assert(sizeof(LinkObjectT) == sizeof(long));
    long number = 0;
    std::memcpy(&number, value, sizeof number);
    return number;
}

inline void SetNumber(LinkObjectT* value, long number) {
    std::memcpy(value, &number, sizeof number);
}

}  // namespace lists
