#pragma once

#include "hosting/ref.h"

#include <string>

namespace hosting {

/// The class with this ProgID or "{...}" class id, by the active manifest or the registry.
/// Throws Error where there is none.
[[nodiscard]] CLSID FindClass(const std::wstring& progIdOrClassId);

/// A new object of that class, in process or out of it. Throws Error.
[[nodiscard]] Ref<IUnknown> CreateObject(const std::wstring& progIdOrClassId);

}  // namespace hosting
