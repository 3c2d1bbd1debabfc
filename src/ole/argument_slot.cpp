#include "ole/argument_slot.h"

#include <oleauto.h>

#include <cstring>

#include "ole/error.h"
#include "ole/object.h"
#include "ole/text.h"

namespace ole {

namespace {

bool IsOmitted(const VARIANT& value) {
    return V_VT(&value) == VT_ERROR && V_ERROR(&value) == DISP_E_PARAMNOTFOUND;
}

/// The bytes that a value of an automation type takes behind a reference.
std::size_t SizeOf(VARTYPE type) {
    if ((type & VT_ARRAY) != 0) return sizeof(void*);
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
        case VT_R8:
        case VT_DATE:
        case VT_CY:
        case VT_I8:
        case VT_UI8:
            return 8;
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return sizeof(void*);
        default:
            throw BadArgument{DISP_E_BADVARTYPE};
    }
}

/// The value of an argument as it stands, references followed; the caller keeps it.
VARIANT Borrowed(const VARIANT& argument) {
    const VARIANT* value = &argument;
    while (V_VT(value) == (VT_VARIANT | VT_BYREF)) value = V_VARIANTREF(value);
    if (!V_ISBYREF(value)) return *value;
    const auto type = static_cast<VARTYPE>(V_VT(value) & ~VT_BYREF);
    VARIANT plain = {};
    if (type == VT_DECIMAL) {
        V_DECIMAL(&plain) = *V_DECIMALREF(value);
    } else {
        std::memcpy(&V_UI1(&plain), V_BYREF(value), SizeOf(type));
    }
    V_VT(&plain) = type;
    return plain;
}

bool SameText(BSTR a, BSTR b) {
    const UINT length = SysStringByteLen(a);
    return length == SysStringByteLen(b) && (length == 0 || std::memcmp(a, b, length) == 0);
}

bool IsObject(VARTYPE type) {
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

}  // namespace

ArgumentSlot::ArgumentSlot(const Parameter& parameter, VARIANT* argument)
    : parameter_(parameter), argument_(argument) {
    const VARIANT given = argument_ != nullptr ? Borrowed(*argument_) : VARIANT{};
    if (argument_ != nullptr && !IsOmitted(given)) {
        Convert(given);
    } else if (parameter_.hasDefault) {
        value_ = parameter_.defaultValue;
    } else if (parameter_.result) {
        V_VT(&value_) =
            parameter_.type == VT_VARIANT ? static_cast<VARTYPE>(VT_EMPTY) : parameter_.type;
    } else if (!parameter_.optional) {
        throw BadArgument{DISP_E_PARAMNOTOPTIONAL};
    } else if (parameter_.type == VT_VARIANT) {
        V_VT(&value_) = VT_ERROR;
        V_ERROR(&value_) = DISP_E_PARAMNOTFOUND;
    } else {
        V_VT(&value_) = parameter_.type;
    }
    if (Returns()) before_ = value_;
}

VARIANT ArgumentSlot::ForCallee() {
    if (!parameter_.byReference) return value_;
    VARIANT passed = {};
    V_VT(&passed) = static_cast<VARTYPE>(parameter_.type | VT_BYREF);
    V_BYREF(&passed) =
        parameter_.type == VT_VARIANT ? static_cast<void*>(&value_) : &V_UI1(&value_);
    return passed;
}

void ArgumentSlot::CopyBack() {
    if (!Returns() || IsUnchanged()) return;
    VARIANT* target = argument_;
    while (V_VT(target) == (VT_VARIANT | VT_BYREF)) target = V_VARIANTREF(target);
    if (V_ISBYREF(target)) {
        CopyToTyped(*target);
    } else {
        CopyToVariant(*target);
    }
}

void ArgumentSlot::MoveTo(VARIANT& result) {
    VariantClear(&result);
    result = value_.Detach();
}

bool ArgumentSlot::Returns() const {
    return parameter_.byReference && argument_ != nullptr && V_ISBYREF(argument_);
}

bool ArgumentSlot::IsUnchanged() const {
    const VARTYPE type = V_VT(&value_);
    if (type != V_VT(&before_)) return false;
    if (type == VT_EMPTY || type == VT_NULL) return true;
    if (type == VT_BSTR) return SameText(V_BSTR(&value_), V_BSTR(&before_));
    // An array's elements may have changed in place.
    if ((type & VT_ARRAY) != 0 || type == VT_DECIMAL) return false;
    return std::memcmp(&V_UI1(&value_), &V_UI1(&before_), SizeOf(type)) == 0;
}

void ArgumentSlot::Convert(const VARIANT& given) {
    if (parameter_.type == VT_VARIANT) {
        Check(VariantCopy(&value_, const_cast<VARIANT*>(&given)));
    } else if (IsObject(parameter_.type)) {
        ConvertToObject(given);
    } else if (V_VT(&given) == VT_DISPATCH) {
        const _variant_t defaultProperty = Object(V_DISPATCH(&given)).Value();
        if (IsObject(V_VT(&defaultProperty))) throw BadArgument{DISP_E_TYPEMISMATCH};
        ConvertToPlain(defaultProperty);
    } else {
        ConvertToPlain(given);
    }
}

void ArgumentSlot::ConvertToObject(const VARIANT& given) {
    V_VT(&value_) = parameter_.type;
    V_UNKNOWN(&value_) = nullptr;
    if (V_VT(&given) == VT_EMPTY || V_VT(&given) == VT_NULL) return;
    if (!IsObject(V_VT(&given))) throw BadArgument{DISP_E_TYPEMISMATCH};
    IUnknown* object = V_UNKNOWN(&given);
    if (object == nullptr) return;
    if (FAILED(object->QueryInterface(parameter_.interfaceId,
                                      reinterpret_cast<void**>(&V_UNKNOWN(&value_))))) {
        throw BadArgument{DISP_E_TYPEMISMATCH};
    }
}

void ArgumentSlot::ConvertToPlain(const VARIANT& given) {
    if (V_VT(&given) == VT_NULL) Throw(Number::invalidUseOfNull);
    const HRESULT result = ChangeType(value_, given, parameter_.type);
    if (FAILED(result)) throw BadArgument{result};
}

void ArgumentSlot::CopyToVariant(VARIANT& variable) {
    const VARTYPE had = V_VT(&variable);
    const bool keepsType = parameter_.type != VT_VARIANT && had != VT_EMPTY && had != VT_NULL &&
                           had != VT_ERROR && !IsObject(had) && (had & VT_ARRAY) == 0;
    _variant_t fitting;
    if (!keepsType || FAILED(ChangeType(fitting, value_, had))) {
        fitting = value_;
    }
    VariantClear(&variable);
    variable = fitting.Detach();
}

void ArgumentSlot::CopyToTyped(VARIANT& reference) {
    const auto type = static_cast<VARTYPE>(V_VT(&reference) & ~VT_BYREF);
    _variant_t fitting;
    const HRESULT result = ChangeType(fitting, value_, type);
    if (FAILED(result)) throw BadArgument{result};
    if (type == VT_DECIMAL) {
        *V_DECIMALREF(&reference) = V_DECIMAL(&fitting);
        return;
    }
    // The variable's old string, object or array goes with `fitting`.
    BYTE old[sizeof(LONGLONG)];
    const std::size_t size = SizeOf(type);
    std::memcpy(old, V_BYREF(&reference), size);
    std::memcpy(V_BYREF(&reference), &V_UI1(&fitting), size);
    std::memcpy(&V_UI1(&fitting), old, size);
}

}  // namespace ole
