#include "ole/text.h"

#include <oleauto.h>

#include <string>

#include "ole/error.h"
#include "ole/object.h"

namespace ole {

HRESULT ChangeType(VARIANT& to, const VARIANT& from, VARTYPE type) noexcept {
    return VariantChangeTypeEx(&to, const_cast<VARIANT*>(&from), LOCALE_USER_DEFAULT,
                               VARIANT_ALPHABOOL, type);
}

namespace {

_variant_t Dereferenced(const VARIANT& value) {
    _variant_t plain;
    Check(VariantCopyInd(&plain, const_cast<VARIANT*>(&value)));
    return plain;
}

_bstr_t Converted(const VARIANT& value) {
    _variant_t text;
    Check(ChangeType(text, value, VT_BSTR));
    return _bstr_t(text.Detach().bstrVal, false);
}

}  // namespace

_bstr_t ToText(const VARIANT& value) {
    switch (V_VT(&value)) {
        case VT_BSTR:
            return _bstr_t(V_BSTR(&value));
        case VT_NULL:
            Throw(Number::invalidUseOfNull);
        case VT_DISPATCH:
            return ToText(Object(V_DISPATCH(&value)).Value());
        case VT_ERROR:
        case VT_UNKNOWN:
            Throw(Number::typeMismatch);
        default:
            if (V_ISBYREF(&value)) return ToText(Dereferenced(value));
            return Converted(value);
    }
}

_bstr_t ToTextOfAnything(const VARIANT& value) {
    if (V_ISBYREF(&value)) return ToTextOfAnything(Dereferenced(value));
    if (V_VT(&value) != VT_ERROR) return ToText(value);
    return _bstr_t((L"Error " + std::to_wstring(LOWORD(V_ERROR(&value)))).c_str());
}

bool Equal(const VARIANT& a, const VARIANT& b) {
    if (V_VT(&a) == VT_BSTR && V_VT(&b) == VT_BSTR) {
        return VarBstrCmp(V_BSTR(&a), V_BSTR(&b), LOCALE_USER_DEFAULT, 0) == VARCMP_EQ;
    }
    _variant_t left = Dereferenced(a);
    _variant_t right = Dereferenced(b);
    const HRESULT result = VarCmp(&left, &right, LOCALE_USER_DEFAULT, 0);
    Check(result);
    return result == VARCMP_EQ;
}

}  // namespace ole
