#pragma once

#include <windows.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/program_run.h"

namespace support {

/// Runs a sample under our script host, with more arguments after its own.
ProgramResult RunHosted(const std::filesystem::path& script,
                        const std::vector<std::wstring>& arguments = {});
/// Runs a sample under the system's script host, which has no windows for controls.
ProgramResult RunPlain(const std::filesystem::path& script);

/// Expects that a run was without errors and printed these lines.
void ExpectLines(const ProgramResult& result, const std::vector<std::string>& lines);

/// The windows of a class in the window with a title, from the left.
std::vector<HWND> WindowsIn(const std::wstring& title, const wchar_t* windowClass);

/// What a sample prints that waits for its user. `isReady` says whether it does yet; `use` uses it
/// until it ends. Both get the title of its window.
std::vector<std::string> PrintedInUse(const std::filesystem::path& script,
                                      const std::function<bool(const std::wstring&)>& isReady,
                                      const std::function<void(const std::wstring&)>& use);

/// Posts a click, or a double click, to a window.
void PostClick(HWND window, POINT point, bool twice);

}  // namespace support
