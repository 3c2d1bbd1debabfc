#pragma once

#include <string>

#include "support/late_bound.h"

namespace support {

/// A new object of a class of the library, by its programmatic identifier. Fails the test where
/// the class is not registered.
[[nodiscard]] LateBound CreateRegistered(const std::wstring& className);

}  // namespace support
