#include "support/program_run.h"

#include "support/temporary_folder.h"

#include <array>
#include <sstream>
#include <stdexcept>

namespace support {

namespace {

/// A file that a child writes to.
class InheritedFile {
public:
    explicit InheritedFile(const std::wstring& path) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        handle_ = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                              &inherited, CREATE_ALWAYS, 0, nullptr);
        if (handle_ == INVALID_HANDLE_VALUE) throw std::runtime_error("no file for the output");
    }
    ~InheritedFile() { CloseHandle(handle_); }
    InheritedFile(const InheritedFile&) = delete;
    InheritedFile& operator=(const InheritedFile&) = delete;
    [[nodiscard]] HANDLE Get() const noexcept { return handle_; }

private:
    HANDLE handle_;
};

}  // namespace

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<std::string> ProgramResult::Lines() const {
    return LinesOf(output);
}

RunningProgram::RunningProgram(const std::filesystem::path& program,
                               const std::vector<std::wstring>& arguments,
                               const std::filesystem::path& folder, HANDLE output, HANDLE errors) {
    std::wstring line = L"\"" + program.wstring() + L"\"";
    for (const auto& argument : arguments) line += L" \"" + argument + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (output != nullptr) {
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = output;
        start.hStdError = errors;
    }
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, output != nullptr, 0,
                        nullptr, folder.empty() ? nullptr : folder.c_str(), &start, &process))
        throw std::runtime_error(program.filename().string() + " does not start");
    CloseHandle(process.hThread);
    process_ = process.hProcess;
}

RunningProgram::~RunningProgram() {
    CloseHandle(process_);
}

bool RunningProgram::EndsWithin(DWORD milliseconds) const {
    return WaitForSingleObject(process_, milliseconds) == WAIT_OBJECT_0;
}

DWORD RunningProgram::ExitCode() const {
    DWORD code = 0;
    GetExitCodeProcess(process_, &code);
    return code;
}

void RunningProgram::Kill() const {
    TerminateProcess(process_, 1);
    WaitForSingleObject(process_, 5000);
}

ProgramResult RunProgram(const std::filesystem::path& program,
                         const std::vector<std::wstring>& arguments,
                         const std::filesystem::path& folder, DWORD patience) {
    // Files instead of pipes: nobody has to empty them, and a grandchild that lives on blocks
    // nothing.
    const TemporaryFolder scratch;
    ProgramResult result;
    {
        const InheritedFile output(scratch.File(L"out"));
        const InheritedFile errors(scratch.File(L"err"));
        const RunningProgram running(program, arguments, folder, output.Get(), errors.Get());
        if (!running.EndsWithin(patience)) {
            running.Kill();
            throw std::runtime_error(program.filename().string() + " does not end");
        }
        result.exitCode = static_cast<int>(running.ExitCode());
    }
    result.output = ReadFile(scratch / "out");
    result.errors = ReadFile(scratch / "err");
    return result;
}

std::filesystem::path SystemFolder() {
    std::array<wchar_t, MAX_PATH> path{};
    GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size()));
    return path.data();
}

}  // namespace support
