#include "support/arguments.h"

namespace support {

Value Arguments::operator[](std::size_t index) const {
    if (index >= Count()) return Omitted();
    Value copy;
    _com_util::CheckError(VariantCopyInd(&copy, Source(Raw(index))));
    return copy;
}

bool Arguments::Has(std::size_t index) const {
    return index < Count() && !((*this)[index] == Omitted());
}

const VARIANT& Arguments::Raw(std::size_t index) const {
    return parameters_.rgvarg[Count() - 1 - index];
}

namespace {

/// Converts `value` to the type that `reference` refers to and puts it there.
bool Assign(const VARIANT& reference, const Value& value) {
    const VARTYPE type = static_cast<VARTYPE>(V_VT(&reference) & ~VT_BYREF);
    Value converted;
    if (FAILED(VariantChangeType(&converted, Source(value), 0, type))) return false;
    switch (type) {
        case VT_BSTR:
            SysFreeString(*V_BSTRREF(&reference));
            *V_BSTRREF(&reference) = V_BSTR(&converted);
            V_VT(&converted) = VT_EMPTY;
            return true;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            std::swap(*V_UNKNOWNREF(&reference), V_UNKNOWN(&converted));
            return true;
        case VT_I1:
        case VT_UI1:
            *V_UI1REF(&reference) = V_UI1(&converted);
            return true;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            *V_I2REF(&reference) = V_I2(&converted);
            return true;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR:
            *V_I4REF(&reference) = V_I4(&converted);
            return true;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            *V_I8REF(&reference) = V_I8(&converted);
            return true;
        default:
            return false;
    }
}

}  // namespace

bool Arguments::Write(std::size_t index, const Value& value) const {
    if (index >= Count()) return false;
    const VARIANT& argument = Raw(index);
    if ((V_VT(&argument) & VT_BYREF) == 0) return false;
    if (V_VT(&argument) == (VT_BYREF | VT_VARIANT)) {
        VARIANT& variable = *V_VARIANTREF(&argument);
        if ((V_VT(&variable) & VT_BYREF) != 0) return Assign(variable, value);
        return SUCCEEDED(VariantCopy(&variable, Source(value)));
    }
    return Assign(argument, value);
}

std::string Arguments::Describe(std::size_t first, std::size_t count) const {
    std::string text;
    for (std::size_t index = first; index < first + count; ++index) {
        if (index > first) text += ", ";
        text += support::Describe(Raw(index));
    }
    return text;
}

}  // namespace support
