#include "hosts/scripthost/script_run.h"

#include <windows.h>

#include <array>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace {

namespace fs = std::filesystem;

struct ClosesHandle {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<HANDLE, ClosesHandle>;

fs::path ProgramFolder() {
    std::array<wchar_t, 4096> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return fs::path(path.data()).parent_path();
}

/// A pipe whose writing end the child inherits, and a thread that empties it.
class Capture {
public:
    Capture() {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        HANDLE readEnd = nullptr;
        HANDLE writeEnd = nullptr;
        if (!CreatePipe(&readEnd, &writeEnd, &inheritable, 0)) throw std::runtime_error("no pipe");
        read_.reset(readEnd);
        write_.reset(writeEnd);
        SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    }
    [[nodiscard]] HANDLE WriteEnd() const { return write_.get(); }
    void Start() {
        write_.reset();
        thread_ = std::thread([this] {
            std::array<char, 4096> part{};
            DWORD size = 0;
            while (ReadFile(read_.get(), part.data(), static_cast<DWORD>(part.size()), &size,
                            nullptr) &&
                   size)
                text_.append(part.data(), size);
        });
    }
    std::string Finish() {
        thread_.join();
        return text_;
    }

private:
    OwnedHandle read_;
    OwnedHandle write_;
    std::thread thread_;
    std::string text_;
};

}  // namespace

std::vector<std::string> ScriptResult::Lines() const {
    std::istringstream stream(output);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

ScriptResult RunProgram(const std::vector<std::wstring>& arguments) {
    const std::wstring program = (ProgramFolder() / L"orvane-scripthost.exe").wstring();
    std::wstring commandLine = L"\"" + program + L"\"";
    for (const auto& argument : arguments) commandLine += L" \"" + argument + L"\"";

    Capture output;
    Capture errors;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output.WriteEnd();
    start.hStdError = errors.WriteEnd();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &start, &process))
        throw std::runtime_error("the script host does not start");
    const OwnedHandle child(process.hProcess);
    const OwnedHandle thread(process.hThread);
    output.Start();
    errors.Start();
    WaitForSingleObject(child.get(), INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(child.get(), &code);
    return {static_cast<int>(code), output.Finish(), errors.Finish()};
}

ScriptRun::ScriptRun(const char* name, const std::string& text) {
    const fs::path folder =
        fs::temp_directory_path() / ("orvane-scripts-" + std::to_string(GetCurrentProcessId()));
    fs::create_directories(folder);
    file_ = folder / name;
    std::ofstream(file_, std::ios::binary) << text;
}

ScriptRun::~ScriptRun() {
    std::error_code ignored;
    fs::remove_all(file_.parent_path(), ignored);
}

ScriptRun& ScriptRun::Options(std::vector<std::wstring> options) {
    options_ = std::move(options);
    return *this;
}

ScriptRun& ScriptRun::Arguments(std::vector<std::wstring> arguments) {
    arguments_ = std::move(arguments);
    return *this;
}

ScriptResult ScriptRun::Run() const {
    std::vector<std::wstring> all = options_;
    all.push_back(file_.wstring());
    all.insert(all.end(), arguments_.begin(), arguments_.end());
    return RunProgram(all);
}
