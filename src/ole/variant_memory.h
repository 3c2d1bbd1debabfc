#pragma once

#include <oaidl.h>

#include <cstddef>
#include <optional>

namespace ole {

/// The bytes that a value of an automation type takes behind a reference: those that follow the
/// type in a variant. 0 for types that a variant holds otherwise or not at all.
std::size_t SizeOf(VARTYPE type);

/// The value of an argument as it stands, references followed; whoever holds the argument keeps the
/// value. None for a reference to nowhere or to a type that automation does not know.
std::optional<VARIANT> Borrowed(const VARIANT& argument);

/// Whether two values are of the same type and the same bytes: texts by their characters, arrays of
/// plain elements by their bounds and elements, objects by their pointers.
bool SameBytes(const VARIANT& a, const VARIANT& b);

}  // namespace ole
