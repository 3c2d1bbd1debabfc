#include "ole/text.h"

#include <oleauto.h>

#include <optional>
#include <utility>

#include "ole/error.h"
#include "ole/object.h"
#include "ole/variant_memory.h"

namespace ole {

std::wstring ToWide(const _bstr_t& text) {
    return text.length() == 0 ? std::wstring() : std::wstring(text, text.length());
}

_bstr_t ToBstr(BSTR text) {
    return _bstr_t(text, true);
}

_bstr_t ToBstr(std::wstring_view text) {
    const BSTR copy = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (copy == nullptr) Check(E_OUTOFMEMORY);
    return _bstr_t(copy, false);
}

std::wstring_view ViewOf(BSTR text) {
    return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
}

std::wstring_view ViewOf(const _bstr_t& text) {
    return text.length() == 0 ? std::wstring_view() : std::wstring_view(text, text.length());
}

HRESULT ChangeType(VARIANT& to, const VARIANT& from, VARTYPE type) noexcept {
    return VariantChangeTypeEx(&to, const_cast<VARIANT*>(&from), LOCALE_USER_DEFAULT,
                               VARIANT_ALPHABOOL, type);
}

namespace {

/// The value of an object's default property, which must be no object again: one that answers
/// itself would never end.
_variant_t DefaultValue(const Object& object) {
    _variant_t value = object.Value();
    if (V_VT(&value) == VT_DISPATCH || V_VT(&value) == VT_UNKNOWN) Throw(Number::typeMismatch);
    return value;
}

/// The value that a comparison or conversion takes for `value`: references followed, an object by
/// its default property.
_variant_t Plain(const VARIANT& value) {
    const std::optional<VARIANT> borrowed = Borrowed(value);
    if (!borrowed) Throw(Number::typeMismatch);
    switch (V_VT(&*borrowed)) {
        case VT_DISPATCH:
        case VT_UNKNOWN: {
            const auto object = Query<IDispatch>(V_UNKNOWN(&*borrowed));
            if (!object && V_UNKNOWN(&*borrowed) != nullptr) Throw(Number::typeMismatch);
            return DefaultValue(object);
        }
        default:
            return *borrowed;
    }
}

}  // namespace

_bstr_t ToText(const VARIANT& value) {
    if (V_VT(&value) == VT_BSTR) return ToBstr(V_BSTR(&value));
    _variant_t text = value;
    MakeText(text);
    return _bstr_t(text.Detach().bstrVal, false);
}

void MakeText(_variant_t& value) {
    if (V_VT(&value) == VT_BSTR) return;
    _variant_t plain = Plain(value);
    if (V_VT(&plain) == VT_NULL) Throw(Number::invalidUseOfNull);
    if (V_VT(&plain) != VT_BSTR) {
        _variant_t text;
        Check(ChangeType(text, plain, VT_BSTR));
        std::swap<VARIANT>(plain, text);
    }
    std::swap<VARIANT>(value, plain);
}

_bstr_t ToTextOfAnything(const VARIANT& value) {
    const _variant_t plain = Plain(value);
    if (V_VT(&plain) != VT_ERROR) return ToText(plain);
    return _bstr_t((L"Error " + std::to_wstring(LOWORD(V_ERROR(&plain)))).c_str());
}

bool Equal(const VARIANT& a, const VARIANT& b) {
    _variant_t left = Plain(a);
    _variant_t right = Plain(b);
    // The platform's comparison of texts is one of the locale, which ignores characters.
    if (V_VT(&left) == VT_BSTR && V_VT(&right) == VT_BSTR) return SameBytes(left, right);
    const HRESULT result = VarCmp(&left, &right, LOCALE_USER_DEFAULT, 0);
    Check(result);
    return result == VARCMP_EQ;
}

}  // namespace ole
