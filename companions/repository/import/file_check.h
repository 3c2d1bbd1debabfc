#pragma once

#include <istream>

namespace repository::type_library {

/// Whether a type library file, or a program or DLL, has all the parts that its directories name.
/// The system's loader trusts them. A file of another kind is as whole as it is.
bool IsWhole(std::istream& file);

}  // namespace repository::type_library
