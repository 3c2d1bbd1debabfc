#pragma once

#include <unknwn.h>

namespace ole {

/// DllGetClassObject and DllCanUnloadNow for the server's class table.
HRESULT GetClassObject(REFCLSID classId, REFIID interfaceId, void** object) noexcept;
HRESULT CanUnload() noexcept;

}  // namespace ole
