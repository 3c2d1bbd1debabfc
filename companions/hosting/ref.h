#pragma once

#include <windows.h>

#include <ole2.h>

#include <ocidl.h>
#include <wrl/client.h>

#include <utility>

namespace hosting {

/// A counted reference to a COM object.
template <class T>
using Ref = Microsoft::WRL::ComPtr<T>;

/// Takes over a reference that the caller owns; ComPtr::Attach of mingw-w64 would count it twice.
template <class T>
[[nodiscard]] Ref<T> Adopt(T* owned) {
    Ref<T> ref;
    *ref.ReleaseAndGetAddressOf() = owned;
    return ref;
}

/// The object's interface T, or nothing where the object is null or does not have it.
template <class T>
[[nodiscard]] Ref<T> Query(IUnknown* object) {
    Ref<T> ref;
    if (object) object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(ref.GetAddressOf()));
    return ref;
}

/// A new object of a ComClass, with the one reference that the result owns.
template <class T, class... Arguments>
[[nodiscard]] Ref<T> Make(Arguments&&... arguments) {
    return Adopt(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace hosting
