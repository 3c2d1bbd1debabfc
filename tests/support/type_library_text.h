#pragma once

#include "support/ref.h"

#include <string>

namespace support {

/// Everything that a type library says, as text with one line for each type and each member: names
/// in their spelling, dispatch ids, kinds, parameter types with their flags and defaults,
/// constants, GUIDs, help texts. The text is the same for the 32-bit and the 64-bit library.
[[nodiscard]] std::string DescribeTypeLibrary(ITypeLib& library);

}  // namespace support
