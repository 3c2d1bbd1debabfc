#include "explorer/program.h"

#include "explorer/temporary_folder.h"
#include "hosting/file.h"
#include "support/server.h"

#include <sstream>
#include <stdexcept>

namespace explorer {

namespace {

constexpr DWORD patience = 90000;

class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() { CloseHandle(handle_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    [[nodiscard]] HANDLE Get() const noexcept { return handle_; }

private:
    HANDLE handle_;
};

HANDLE MakeInheritedFile(const std::wstring& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0,
                       nullptr);
}

}  // namespace

ProgramRun RunExplorer(const std::vector<std::wstring>& arguments) {
    const TemporaryFolder folder;
    const auto program = support::ProgramFolder() / L"OrvaneExplorer.exe";
    std::wstring line = L"\"" + program.wstring() + L"\"";
    for (const auto& argument : arguments) line += L" \"" + argument + L"\"";
    PROCESS_INFORMATION process{};
    {
        const Handle output(MakeInheritedFile(folder.File(L"out")));
        const Handle errors(MakeInheritedFile(folder.File(L"err")));
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = output.Get();
        start.hStdError = errors.Get();
        if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                            nullptr, &start, &process))
            throw std::runtime_error("the explorer does not start");
    }
    const Handle thread(process.hThread);
    const Handle running(process.hProcess);
    if (WaitForSingleObject(running.Get(), patience) != WAIT_OBJECT_0) {
        TerminateProcess(running.Get(), 99);
        throw std::runtime_error("the explorer does not end");
    }
    ProgramRun run;
    GetExitCodeProcess(running.Get(), &run.exitCode);
    run.output = hosting::ReadBytes(folder.File(L"out"));
    run.errors = hosting::ReadBytes(folder.File(L"err"));
    return run;
}

std::vector<std::string> Lines(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

}  // namespace explorer
