#include "ole/variant_memory.h"

#include <oleauto.h>

#include <cstring>

namespace ole {

namespace {

bool SameText(BSTR a, BSTR b) {
    const UINT length = SysStringByteLen(a);
    return length == SysStringByteLen(b) && (length == 0 || std::memcmp(a, b, length) == 0);
}

constexpr USHORT ownsElements =
    FADF_BSTR | FADF_UNKNOWN | FADF_DISPATCH | FADF_VARIANT | FADF_RECORD;

bool SameArray(const SAFEARRAY* a, const SAFEARRAY* b) {
    if (a == nullptr || b == nullptr) return a == b;
    const std::size_t boundsSize = a->cDims * sizeof(SAFEARRAYBOUND);
    if (a->cDims != b->cDims || a->cbElements != b->cbElements ||
        (a->fFeatures & ownsElements) != 0 || (b->fFeatures & ownsElements) != 0 ||
        std::memcmp(a->rgsabound, b->rgsabound, boundsSize) != 0) {
        return false;
    }
    std::size_t size = a->cbElements;
    for (USHORT i = 0; i < a->cDims; ++i) size *= a->rgsabound[i].cElements;
    return size == 0 || std::memcmp(a->pvData, b->pvData, size) == 0;
}

}  // namespace

std::size_t SizeOf(VARTYPE type) {
    if ((type & VT_BYREF) != 0) return 0;
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
            return 0;
    }
}

std::optional<VARIANT> Borrowed(const VARIANT& argument) {
    const VARIANT* value = &argument;
    while (value != nullptr && V_VT(value) == (VT_VARIANT | VT_BYREF)) value = V_VARIANTREF(value);
    if (value == nullptr) return std::nullopt;
    if (!V_ISBYREF(value)) return *value;
    if (V_BYREF(value) == nullptr) return std::nullopt;
    const auto type = static_cast<VARTYPE>(V_VT(value) & ~VT_BYREF);
    VARIANT plain = {};
    if (type == VT_DECIMAL) {
        V_DECIMAL(&plain) = *V_DECIMALREF(value);
    } else {
        const std::size_t size = SizeOf(type);
        if (size == 0) return std::nullopt;
        std::memcpy(&V_UI1(&plain), V_BYREF(value), size);
    }
    V_VT(&plain) = type;
    return plain;
}

bool SameBytes(const VARIANT& a, const VARIANT& b) {
    const VARTYPE type = V_VT(&a);
    if (type != V_VT(&b)) return false;
    if ((type & VT_ARRAY) != 0 && !V_ISBYREF(&a)) return SameArray(V_ARRAY(&a), V_ARRAY(&b));
    switch (type) {
        case VT_EMPTY:
        case VT_NULL:
            return true;
        case VT_BSTR:
            return SameText(V_BSTR(&a), V_BSTR(&b));
        case VT_DECIMAL:
            return std::memcmp(&a, &b, sizeof(DECIMAL)) == 0;
        default: {
            const std::size_t size = SizeOf(type);
            return size != 0 && std::memcmp(&V_UI1(&a), &V_UI1(&b), size) == 0;
        }
    }
}

}  // namespace ole
