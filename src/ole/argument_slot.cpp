#include "ole/argument_slot.h"

#include <oleauto.h>

#include <array>
#include <cstring>
#include <utility>

#include "ole/error.h"
#include "ole/object.h"
#include "ole/text.h"
#include "ole/variant_memory.h"

namespace ole {

namespace {

bool IsOmitted(const VARIANT& value) {
    return V_VT(&value) == VT_ERROR && V_ERROR(&value) == DISP_E_PARAMNOTFOUND;
}

bool IsObject(VARTYPE type) {
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

/// The variable that an argument refers to: a variant, or a typed reference to one. None where the
/// argument is a value.
VARIANT* VariableOf(VARIANT& argument) {
    if (!V_ISBYREF(&argument)) return nullptr;
    VARIANT* variable = &argument;
    while (V_VT(variable) == (VT_VARIANT | VT_BYREF)) variable = V_VARIANTREF(variable);
    return variable;
}

/// Gives an array that the caller owns the elements of another of the same shape. A caller who
/// holds a lock on its array, or has it in fixed memory, would not find another one in its place.
bool CopyElements(SAFEARRAY* from, SAFEARRAY* to) {
    constexpr USHORT staysInPlace = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
    if (from == nullptr || to == nullptr) return false;
    if (from->cDims == to->cDims && from->cbElements == to->cbElements &&
        std::memcmp(from->rgsabound, to->rgsabound, from->cDims * sizeof(SAFEARRAYBOUND)) == 0) {
        return SUCCEEDED(SafeArrayCopyData(from, to));
    }
    if (to->cLocks != 0 || (to->fFeatures & staysInPlace) != 0) {
        throw BadArgument{DISP_E_ARRAYISLOCKED};
    }
    return false;
}

}  // namespace

ArgumentSlot::ArgumentSlot(const Parameter& parameter, VARIANT* argument) : parameter_(parameter) {
    if (argument == nullptr) {
        FillIn();
        return;
    }
    const std::optional<VARIANT> given = Borrowed(*argument);
    if (!given) throw BadArgument{DISP_E_BADVARTYPE};
    if (IsOmitted(*given)) {
        FillIn();
    } else {
        Convert(*given);
    }
    if (parameter_.byReference) variable_ = VariableOf(*argument);
    if (variable_ != nullptr) before_ = value_;
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
    if (variable_ == nullptr || SameBytes(value_, before_)) return;
    if (V_ISBYREF(variable_)) {
        CopyToTyped(*variable_);
    } else {
        CopyToVariant(*variable_);
    }
}

/// The value of an argument that is not given.
void ArgumentSlot::FillIn() {
    if (parameter_.hasDefault) {
        value_ = parameter_.defaultValue;
        return;
    }
    if (!parameter_.optional && !parameter_.result) throw BadArgument{DISP_E_PARAMNOTOPTIONAL};
    VARIANT blank = {};
    if (parameter_.type != VT_VARIANT) {
        V_VT(&blank) = parameter_.type;
    } else if (!parameter_.result) {
        V_VT(&blank) = VT_ERROR;
        V_ERROR(&blank) = DISP_E_PARAMNOTFOUND;
    }
    value_.Attach(blank);
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
    VARIANT object = {};
    V_VT(&object) = parameter_.type;
    if (V_VT(&given) != VT_EMPTY && V_VT(&given) != VT_NULL) {
        if (!IsObject(V_VT(&given))) throw BadArgument{DISP_E_TYPEMISMATCH};
        if (V_UNKNOWN(&given) != nullptr &&
            FAILED(V_UNKNOWN(&given)->QueryInterface(
                parameter_.interfaceId, reinterpret_cast<void**>(&V_UNKNOWN(&object))))) {
            throw BadArgument{DISP_E_TYPEMISMATCH};
        }
    }
    value_.Attach(object);
}

void ArgumentSlot::ConvertToPlain(const VARIANT& given) {
    if (V_VT(&given) == VT_NULL) Throw(Number::invalidUseOfNull);
    const HRESULT result = ChangeType(value_, given, parameter_.type);
    if (FAILED(result)) throw BadArgument{result};
}

void ArgumentSlot::CopyToVariant(VARIANT& variable) {
    const VARTYPE had = V_VT(&variable);
    if ((had & VT_ARRAY) != 0 && had == V_VT(&value_) &&
        CopyElements(V_ARRAY(&value_), V_ARRAY(&variable))) {
        return;
    }
    const bool keepsType = parameter_.type != VT_VARIANT && had != VT_EMPTY && had != VT_NULL &&
                           had != VT_ERROR && !IsObject(had) && (had & VT_ARRAY) == 0;
    _variant_t fitting;
    if (!keepsType || FAILED(ChangeType(fitting, value_, had))) fitting = value_;
    // The variable's old value goes with `fitting`, when the variable has its new one.
    std::swap(variable, static_cast<VARIANT&>(fitting));
}

void ArgumentSlot::CopyToTyped(VARIANT& reference) {
    const auto type = static_cast<VARTYPE>(V_VT(&reference) & ~VT_BYREF);
    _variant_t fitting;
    const HRESULT result = ChangeType(fitting, value_, type);
    if (FAILED(result)) throw BadArgument{result};
    if (type == VT_DECIMAL) {
        *V_DECIMALREF(&reference) = V_DECIMAL(&fitting);
        V_DECIMALREF(&reference)->wReserved = 0;
        return;
    }
    if ((type & VT_ARRAY) != 0 && CopyElements(V_ARRAY(&fitting), *V_ARRAYREF(&reference))) return;
    // The variable's old string, object or array goes with `fitting`.
    std::array<BYTE, sizeof(LONGLONG)> old;
    const std::size_t size = SizeOf(type);
    std::memcpy(old.data(), V_BYREF(&reference), size);
    std::memcpy(V_BYREF(&reference), &V_UI1(&fitting), size);
    std::memcpy(&V_UI1(&fitting), old.data(), size);
}

}  // namespace ole
