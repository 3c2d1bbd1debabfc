#pragma once

#include "fuzz/zoo.h"
#include "support/value.h"

#include <string>
#include <vector>

namespace fuzz {

struct NamedValue {
    std::string name;
    support::Value value;
};

/// Values of every type, the ends of every range, and everything in the zoo.
[[nodiscard]] std::vector<NamedValue> MakeLattice(const Zoo& zoo);

/// The index in the lattice of a value that suits a parameter of this type.
[[nodiscard]] std::size_t SuitableIndex(const std::vector<NamedValue>& lattice, VARTYPE type);

}  // namespace fuzz
