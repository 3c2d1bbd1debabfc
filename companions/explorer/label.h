#pragma once

#include "hosting/host_window.h"

#include <string>

namespace explorer {

/// A label without a place yet; "&" in its caption marks a mnemonic.
[[nodiscard]] hosting::OwnedWindow MakeLabel(HWND parent, const std::wstring& caption);

/// A text in which "&" stands for itself in a label.
[[nodiscard]] std::wstring Literal(const std::wstring& text);

/// The letter that a caption marks, in upper case; 0 where it marks none.
[[nodiscard]] wchar_t MnemonicOf(const std::wstring& caption);

}  // namespace explorer
