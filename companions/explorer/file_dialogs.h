#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace explorer {

// The system's file dialogs; without a value where the user cancels.

[[nodiscard]] std::optional<std::wstring> AskForRepository(HWND owner);
[[nodiscard]] std::vector<std::wstring> AskForImports(HWND owner);
[[nodiscard]] std::optional<std::wstring> AskForNewRepository(HWND owner);

}  // namespace explorer
