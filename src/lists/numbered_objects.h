#pragma once

#include <optional>
#include <vector>

#include "ole/object.h"

namespace lists {

/// The objects behind rows, each under the number that its row carries. Constant time each.
class NumberedObjects {
public:
    /// Raises 457 for a number in use.
    void Add(long number, const ole::Object& object);

    /// Raises 5 for a number that has no object.
    const ole::Object& Find(long number) const;

    /// Lets go of all objects, which may call back: they find the numbers free.
    void Clear();

private:
    std::vector<std::optional<ole::Object>> objects_;
};

}  // namespace lists
