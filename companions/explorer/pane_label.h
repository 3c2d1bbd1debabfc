#pragma once

#include "hosting/host_window.h"

#include <string>

namespace explorer {

/// A label that the caller owns, empty and without a place yet.
[[nodiscard]] HWND MakeLabel(HWND parent);

/// A text in which "&" stands for itself in a label.
[[nodiscard]] std::wstring Literal(const std::wstring& text);

}  // namespace explorer
