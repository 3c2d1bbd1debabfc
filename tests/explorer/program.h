#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace explorer {

/// What came of a run of the program.
struct ProgramRun {
    DWORD exitCode = 0;
    std::string output;  ///< standard output, as it came
    std::string errors;  ///< standard error output
};

/// Runs OrvaneExplorer.exe, which is beside this program, and waits for its end. Throws
/// std::runtime_error where it does not start or does not end.
[[nodiscard]] ProgramRun RunExplorer(const std::vector<std::wstring>& arguments);

/// The lines of a text, without their ends.
[[nodiscard]] std::vector<std::string> Lines(const std::string& text);

}  // namespace explorer
