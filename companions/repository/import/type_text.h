#pragma once

#include <oaidl.h>

#include <string>

#include "ole/ref.h"

namespace repository::type_library {

/// A type as IDL writes it, such as "BSTR*" or "SAFEARRAY(VARIANT)". A type of another library that
/// cannot be found is "?".
std::string TextOfType(ITypeInfo& info, const TYPEDESC& type);

/// The type of a library that a type is made of, pointers and arrays left out: none for a type that
/// is not in a library, or whose library cannot be found. `isMissing` tells the two apart.
ole::Ref<ITypeInfo> ReferredType(ITypeInfo& info, const TYPEDESC& type, bool& isMissing);

}  // namespace repository::type_library
