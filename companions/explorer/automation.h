#pragma once

#include "hosting/error.h"
#include "hosting/late_bound.h"

#include <string>

namespace explorer {

/// The text of a value, empty for Empty and Null. Throws where it has none.
[[nodiscard]] std::wstring TextOf(const _variant_t& value);

/// For people: an object's name, or its identifier where it has none.
[[nodiscard]] std::wstring CaptionOf(const hosting::LateBound& object);

/// Whether a meta node is one of the types of the meta model itself, which nobody browses.
[[nodiscard]] bool IsBuiltIn(const hosting::LateBound& metaNode);

/// Whether both are the same object.
[[nodiscard]] bool IsSame(const hosting::LateBound& left, const hosting::LateBound& right);

/// Calls `work` with each object of a collection, until it returns false.
template <class Work>
void ForEach(const hosting::LateBound& collection, Work&& work) {
    const hosting::Ref<IDispatch> object = collection.Get();
    if (!object) throw hosting::Error(E_POINTER, L"There is no collection to go through.");
    DISPPARAMS none{};
    _variant_t found;
    hosting::Check(
        object->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                       DISPATCH_PROPERTYGET | DISPATCH_METHOD, &none, &found, nullptr, nullptr),
        L"enumerating a collection");
    const auto enumerator = hosting::Query<IEnumVARIANT>(
        found.vt == VT_UNKNOWN || found.vt == VT_DISPATCH ? found.punkVal : nullptr);
    if (!enumerator) throw hosting::Error(E_NOINTERFACE, L"The object is no collection.");
    for (;;) {
        _variant_t element;
        ULONG count = 0;
        const HRESULT result = enumerator->Next(1, &element, &count);
        hosting::Check(result, L"enumerating a collection");
        if (result != S_OK || count == 0) return;
        if (!work(hosting::LateBound(element))) return;
    }
}

}  // namespace explorer
