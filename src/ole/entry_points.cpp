#include <windows.h>

#include <olectl.h>

#include <string_view>

#include "ole/class_factory.h"
#include "ole/error.h"
#include "ole/live.h"
#include "ole/manifest.h"
#include "ole/registration.h"

// The entry points of a server DLL, exported by its .def file.

extern "C" HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID interfaceId,
                                                    void** object) {
    return ole::GetClassObject(classId, interfaceId, object);
}

extern "C" HRESULT STDAPICALLTYPE DllCanUnloadNow() {
    return ole::CanUnload();
}

extern "C" HRESULT STDAPICALLTYPE DllRegisterServer() {
    return ole::Register(ole::Scope::allUsers);
}

extern "C" HRESULT STDAPICALLTYPE DllUnregisterServer() {
    return ole::Unregister(ole::Scope::allUsers);
}

/// `regsvr32 /n /i:user` registers for the present user only; `/i:manifest=PATH` writes the
/// side-by-side manifest to a file.
extern "C" HRESULT STDAPICALLTYPE DllInstall(BOOL install, LPCWSTR commandLine) {
    constexpr std::wstring_view manifest = L"manifest=";
    const std::wstring_view command = commandLine == nullptr ? L"" : commandLine;
    if (command == L"user") {
        return install ? ole::Register(ole::Scope::presentUser)
                       : ole::Unregister(ole::Scope::presentUser);
    }
    if (install && command.starts_with(manifest)) {
        return ole::Guard({}, IID_NULL, [&] {
            ole::WriteManifest(std::wstring(command.substr(manifest.size())));
        });
    }
    return E_INVALIDARG;
}

#ifdef ORVANE_DEBUG
/// What the server keeps alive, for leak tests: objects, locks, windows, handles.
extern "C" void STDAPICALLTYPE OrvaneLiveCounts(ole::Live* counts) {
    *counts = ole::LiveCounts();
}
#endif
