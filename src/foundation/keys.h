#pragma once

#include <oaidl.h>

#include <comutil.h>

#include "ole/object.h"

namespace foundation {

/// Whether a reference refers to an object. Never fails.
inline bool IsValidObject(const ole::Object& object) noexcept {
    return static_cast<bool>(object);
}

/// True where a collection's default member answers for the key, Empty, which reads as false, where
/// it fails in any way.
_variant_t ContainsKey(const ole::Object& collection, const VARIANT& key) noexcept;

}  // namespace foundation
