#pragma once

#include <oaidl.h>

#include <span>
#include <string>

#include "ole/ref.h"
#include "ole/unknown.h"

namespace ole {

/// One creatable class of a server. Everything else about it (its name, help text, version, whether
/// it is a control) stands in the type library.
struct Class {
    const CLSID& id;
    Ref<IUnknown> (*make)();
    int toolboxBitmap = 0;
    DWORD miscStatus = 0;
};

/// What a DLL of automation classes is made of. Each server defines `server`.
struct ServerDescription {
    const GUID& typeLibrary;
    /// The name of the side-by-side assembly that lets a host use the classes unregistered.
    const wchar_t* assembly;
    std::span<const Class> classes;
};
extern const ServerDescription server;

/// Makes a class table's `make`.
template <class T>
Ref<IUnknown> MakeClass() {
    return Query<IUnknown>(Make<T>().Get());
}

/// The module that holds this code, its file, and the type library inside it.
HINSTANCE ModuleHandle();
std::wstring ModulePath();
ITypeLib& TypeLibrary();

/// The type description of an interface or class of the server. Raises TYPE_E_ELEMENTNOTFOUND.
Ref<ITypeInfo> TypeInfoOf(REFGUID id);

/// "Library.Class", the programmatic identifier and error source of a class.
std::wstring ProgId(REFCLSID id);

/// A type's name or help text as the type library has it.
std::wstring NameOf(ITypeInfo& info);
std::wstring HelpTextOf(ITypeInfo& info);

}  // namespace ole
