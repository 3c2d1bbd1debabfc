#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace support {

/// What a run of a program left.
struct ProgramResult {
    int exitCode = -1;
    std::string output;  ///< standard output, as it came
    std::string errors;  ///< standard error output

    /// The lines of the output, without their ends.
    [[nodiscard]] std::vector<std::string> Lines() const;
};

[[nodiscard]] std::vector<std::string> LinesOf(const std::string& text);

/// A program that was started and may be watched and ended.
class RunningProgram {
public:
    RunningProgram(const std::filesystem::path& program, const std::vector<std::wstring>& arguments,
                   const std::filesystem::path& folder, HANDLE output = nullptr,
                   HANDLE errors = nullptr);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    [[nodiscard]] bool EndsWithin(DWORD milliseconds) const;
    [[nodiscard]] DWORD ExitCode() const;
    void Kill() const;

private:
    HANDLE process_ = nullptr;
};

/// Runs a program, in `folder` where one is given, and waits for its end. Throws std::runtime_error
/// where it does not start, or does not end within `patience` milliseconds; it is ended then.
[[nodiscard]] ProgramResult RunProgram(const std::filesystem::path& program,
                                       const std::vector<std::wstring>& arguments,
                                       const std::filesystem::path& folder = {},
                                       DWORD patience = 120000);

/// Where the programs of Windows are, in the width of this one.
[[nodiscard]] std::filesystem::path SystemFolder();

}  // namespace support
