#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace hosting {

/// Between the two forms of Unicode text. Halves of surrogate pairs and damaged bytes become the
/// replacement character.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);
[[nodiscard]] std::wstring FromUtf8(std::string_view text);

/// The system's sentence for a result code, without line break; the number where it has none.
[[nodiscard]] std::wstring SystemText(HRESULT result);

}  // namespace hosting
