#include "scripthost/event_arguments.h"

#include "hosting/error.h"
#include "hosting/ref.h"

#include <cstring>

namespace scripthost {

namespace {

bool IsReference(const VARIANT& value) {
    return value.vt & VT_BYREF;
}

_variant_t ValueOf(const VARIANT& value) {
    _variant_t result;
    hosting::Check(VariantCopyInd(&result, const_cast<VARIANT*>(&value)),
                   L"reading an event's argument");
    return result;
}

_variant_t Converted(const VARIANT& value, VARTYPE type) {
    // An object parameter that a handler empties holds Empty or Nothing.
    const bool none = value.vt == VT_EMPTY || value.vt == VT_NULL;
    _variant_t result;
    if (type == VT_DISPATCH && none) return static_cast<IDispatch*>(nullptr);
    if (type == VT_UNKNOWN && none) return static_cast<IUnknown*>(nullptr);
    hosting::Check(VariantChangeType(&result, const_cast<VARIANT*>(&value), 0, type),
                   L"taking an event's argument back");
    return result;
}

/// Puts a new owned reference or string in the place of one that is owned there.
template <class Interface>
void Exchange(Interface** place, Interface* owned) {
    const auto before = hosting::Adopt(*place);
    *place = owned;
}

std::size_t SizeOf(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            return 8;
        default:
            return 0;
    }
}

}  // namespace

void AssignThrough(const VARIANT& reference, const VARIANT& value) {
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    const _variant_t plain = ValueOf(value);
    if (type == VT_VARIANT) {
        hosting::Check(VariantCopy(reference.pvarVal, const_cast<_variant_t*>(&plain)),
                       L"taking an event's argument back");
        return;
    }
    const std::size_t size = SizeOf(type);
    if (size == 0 && type != VT_BSTR && type != VT_DISPATCH && type != VT_UNKNOWN)
        throw hosting::Error(DISP_E_BADVARTYPE, L"An event's argument has a type of no script.");
    VARIANT converted = Converted(plain, type).Detach();
    if (type == VT_BSTR) {
        const _bstr_t before(*reference.pbstrVal, false);
        *reference.pbstrVal = converted.bstrVal;
    } else if (type == VT_DISPATCH) {
        Exchange(reference.ppdispVal, converted.pdispVal);
    } else if (type == VT_UNKNOWN) {
        Exchange(reference.ppunkVal, converted.punkVal);
    } else {
        std::memcpy(reference.byref, &converted.llVal, size);
    }
}

EventArguments::EventArguments(const DISPPARAMS& event, bool byReference) : event_(event) {
    values_.reserve(event.cArgs);
    for (UINT i = 0; i < event.cArgs; ++i) values_.push_back(ValueOf(event.rgvarg[i]));
    for (_variant_t& value : values_) {
        VARIANT passed = value;
        if (byReference) {
            passed.vt = VT_BYREF | VT_VARIANT;
            passed.pvarVal = &value;
        }
        references_.push_back(passed);
    }
    parameters_ = {references_.data(), nullptr, event.cArgs, 0};
}

void EventArguments::CopyBack() {
    for (UINT i = 0; i < event_.cArgs; ++i)
        if (IsReference(event_.rgvarg[i])) AssignThrough(event_.rgvarg[i], values_[i]);
}

void EventArguments::Answer(const VARIANT& value) {
    for (UINT i = 0; i < event_.cArgs; ++i)
        if (IsReference(event_.rgvarg[i])) return AssignThrough(event_.rgvarg[i], value);
}

}  // namespace scripthost
