#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What a run of the script host left.
struct ScriptResult {
    int exitCode = -1;
    std::string output;
    std::string errors;

    /// The lines of the output.
    [[nodiscard]] std::vector<std::string> Lines() const;
};

/// Runs the script host's program with a script of a test's own, with its window hidden.
class ScriptRun {
public:
    /// `name` is the script's file name, .vbs or .js; `text` is UTF-8.
    ScriptRun(const char* name, const std::string& text);
    ~ScriptRun();
    ScriptRun(const ScriptRun&) = delete;
    ScriptRun& operator=(const ScriptRun&) = delete;

    /// Options for the script host, in place of those that hide the window and limit the time.
    ScriptRun& Options(std::vector<std::wstring> options);
    /// Arguments of the script.
    ScriptRun& Arguments(std::vector<std::wstring> arguments);
    [[nodiscard]] ScriptResult Run() const;

    [[nodiscard]] const std::filesystem::path& File() const noexcept { return file_; }

private:
    std::filesystem::path file_;
    std::vector<std::wstring> options_{L"--hidden", L"--timeout", L"60"};
    std::vector<std::wstring> arguments_;
};

/// Runs the program with a command line of a test's own.
[[nodiscard]] ScriptResult RunProgram(const std::vector<std::wstring>& arguments);
