#pragma once

#include <windows.h>

namespace ole {

/// For whom the server is registered: all users (HKEY_LOCAL_MACHINE) or the present one.
enum class Scope { allUsers, presentUser };

/// Writes what COM needs to find each class of the table, its programmatic identifier and the type
/// library with its interfaces. What was written is taken back when a step fails.
HRESULT Register(Scope scope) noexcept;

/// Removes all that `Register` writes, and nothing else; keys shared with the server of the other
/// width go with the last of the two.
HRESULT Unregister(Scope scope) noexcept;

}  // namespace ole
