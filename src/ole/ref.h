#pragma once

#include <unknwn.h>
#include <wrl/client.h>

#include <string>

namespace ole {

/// A counted reference to an interface.
template <class T>
using Ref = Microsoft::WRL::ComPtr<T>;

/// Takes over a reference that the caller owns. (ComPtr::Attach of mingw-w64 10 adds one of its
/// own.)
template <class T>
Ref<T> Adopt(T* owned) {
    Ref<T> reference;
    *reference.GetAddressOf() = owned;
    return reference;
}

/// The interface `T` of an object, or none where it has no such interface or is no object.
template <class T, class From>
Ref<T> Query(From* object) {
    Ref<T> reference;
    if (object != nullptr) {
        object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(reference.GetAddressOf()));
    }
    return reference;
}

/// Hands an object, or none, to a caller who owns it then.
template <class T, class Interface>
void Give(const Ref<T>& object, Interface** to) {
    *to = Ref<Interface>(object.Get()).Detach();
}

/// Whether two interface pointers belong to the same object, by the platform's rule: the same
/// IUnknown. No object is the same as no object only.
bool SameObject(IUnknown* a, IUnknown* b);

/// The registry form of a GUID, braces included.
std::wstring GuidText(const GUID& guid);

}  // namespace ole
