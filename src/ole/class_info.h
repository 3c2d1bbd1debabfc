#pragma once

#include <ocidl.h>

#include "ole/ref.h"

namespace ole {

/// IProvideClassInfo2 for a class of the server's type library.
HRESULT ClassInfoOf(REFCLSID classId, ITypeInfo** info) noexcept;
HRESULT DefaultSourceOf(REFCLSID classId, DWORD kind, GUID* guid) noexcept;

/// The default interface, or default event interface, of a class; GUID_NULL where it has none.
GUID DefaultInterface(ITypeInfo& classInfo, bool source);

/// Inside a catch clause: the present exception as the thread's rich error with the class's
/// programmatic identifier as source.
HRESULT ReportClassError(REFCLSID classId, REFIID interfaceId) noexcept;

}  // namespace ole
