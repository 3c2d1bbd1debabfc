#pragma once

#include <comdef.h>

#include <string>

namespace ole {

/// A text with all its characters, zeros included; no text is an empty one.
std::wstring ToWide(const _bstr_t& text);

/// A copy of a text, zeros included. (_bstr_t's own conversion from a BSTR ends at the first zero.)
_bstr_t ToBstr(BSTR text);

_bstr_t ToBstr(std::wstring_view text);

/// The characters of a text, zeros included, while it lives.
std::wstring_view ViewOf(BSTR text);
std::wstring_view ViewOf(const _bstr_t& text);

/// A truth value of the interfaces.
constexpr VARIANT_BOOL ToFlag(bool flag) {
    return flag ? VARIANT_TRUE : VARIANT_FALSE;
}

/// The platform's conversion, in the user's locale, booleans as words. The result is a DISP_E_...
/// code.
HRESULT ChangeType(VARIANT& to, const VARIANT& from, VARTYPE type) noexcept;

/// The automation form of a value as text, in the user's locale; booleans are "True" and "False",
/// an object gives its default property. Errors: 94 for Null, 91 for Nothing, 13 for what has no
/// text.
_bstr_t ToText(const VARIANT& value);

/// Makes a value its text, as `ToText` does; a text stays what it is.
void MakeText(_variant_t& value);

/// As `ToText`, but an error value gives "Error " and the low word of its number.
_bstr_t ToTextOfAnything(const VARIANT& value);

/// Automation equality of two values, as in a script's `a = b`. Null equals nothing.
/// Errors: 13 where the two cannot be compared.
bool Equal(const VARIANT& a, const VARIANT& b);

}  // namespace ole
