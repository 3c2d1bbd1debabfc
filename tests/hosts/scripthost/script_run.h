#pragma once

#include "support/program_run.h"
#include "support/temporary_folder.h"

using ScriptResult = support::ProgramResult;

/// Runs the script host's program with a script of a test's own, with its window hidden.
class ScriptRun {
public:
    /// `name` is the script's file name, .vbs or .js; `text` is UTF-8.
    ScriptRun(const char* name, const std::string& text);

    /// Options for the script host, in place of those that hide the window and limit the time.
    ScriptRun& Options(std::vector<std::wstring> options);
    /// Arguments of the script.
    ScriptRun& Arguments(std::vector<std::wstring> arguments);
    [[nodiscard]] ScriptResult Run() const;

    [[nodiscard]] const std::filesystem::path& File() const noexcept { return file_; }

private:
    support::TemporaryFolder folder_;
    std::filesystem::path file_;
    std::vector<std::wstring> options_{L"--hidden", L"--timeout", L"60"};
    std::vector<std::wstring> arguments_;
};

/// Runs the program with a command line of a test's own.
[[nodiscard]] ScriptResult RunScriptHost(const std::vector<std::wstring>& arguments);
