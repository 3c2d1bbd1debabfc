#pragma once

#include <windows.h>

#include <string>

namespace explorer {

/// Writes what the screen shows in a rectangle to a PNG file. Throws hosting::Error.
void SaveScreen(const RECT& bounds, const std::wstring& path);

}  // namespace explorer
