#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>
#include <string_view>

namespace support {

/// Tests write and compare texts in UTF-8; the platform wants UTF-16.
[[nodiscard]] std::wstring Wide(std::string_view utf8);
[[nodiscard]] std::string Utf8(std::wstring_view text);
/// Of an automation string, null too. A plain wide pointer would be taken for one: wrap it.
[[nodiscard]] std::string Utf8(BSTR text);

/// Whether two names are the same for automation, which does not tell case.
[[nodiscard]] bool SameName(std::wstring_view a, std::wstring_view b);

/// A value as a script's author would write it: "text", 5, True, Nothing, Error 2042, a double's
/// label. A reference is shown as what it refers to.
[[nodiscard]] std::string Describe(const VARIANT& value);

/// As `Describe`, with the type in front: `BSTR "text"`, `ByRef Variant I2 5`.
[[nodiscard]] std::string DescribeExactly(const VARIANT& value);

/// A value as a source for the platform's conversions, which take it without const and leave it
/// alone.
[[nodiscard]] inline VARIANT* Source(const VARIANT& value) {
    return const_cast<VARIANT*>(&value);
}

/// "S_OK", "DISP_E_TYPEMISMATCH", "0x800A01B6".
[[nodiscard]] std::string DescribeResult(HRESULT result);

/// "BSTR", "ByRef I4", "Array of UI1".
[[nodiscard]] std::string DescribeType(VARTYPE type);

}  // namespace support
