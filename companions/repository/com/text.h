#pragma once

#include <comdef.h>

#include <string>
#include <string_view>

namespace repository::com {

/// UTF-16 from and to the store's UTF-8. Every text comes back as it was: half a surrogate pair
/// becomes three bytes of its own, bytes that are no UTF-8 become replacement characters.
std::string Narrow(std::wstring_view text);
std::wstring Wide(std::string_view text);

/// The wide form of a text as an automation string.
_bstr_t ToBstr(std::string_view text);

/// The same for a result that the caller owns.
BSTR ToResult(std::string_view text);

}  // namespace repository::com
