#include "samples/sample_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "support/pump.h"
#include "support/server.h"
#include "support/temporary_folder.h"

namespace support {

namespace {

const std::filesystem::path& ScriptHost() {
    static const std::filesystem::path host = ProgramFolder() / "orvane-scripthost.exe";
    return host;
}

std::vector<std::wstring> HostArguments(const std::filesystem::path& script,
                                        const std::vector<std::wstring>& arguments) {
    std::vector<std::wstring> all{L"--hidden", L"--timeout", L"60", script.wstring()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

struct Search {
    std::wstring windowClass;
    std::vector<HWND> found;
};

BOOL CALLBACK Keep(HWND child, LPARAM search) {
    auto& wanted = *reinterpret_cast<Search*>(search);
    wchar_t name[64] = {};
    GetClassNameW(child, name, 64);
    if (name == wanted.windowClass) wanted.found.push_back(child);
    return TRUE;
}

LONG LeftOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return place.left;
}

/// A file that a program may write to.
class OutputFile {
public:
    explicit OutputFile(const std::wstring& path) {
        SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        file_ = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            &inherited, CREATE_ALWAYS, 0, nullptr);
    }
    ~OutputFile() { CloseHandle(file_); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] HANDLE Get() const { return file_; }

private:
    HANDLE file_;
};

}  // namespace

ProgramResult RunHosted(const std::filesystem::path& script,
                        const std::vector<std::wstring>& arguments) {
    return RunProgram(ScriptHost(), HostArguments(script, arguments));
}

ProgramResult RunPlain(const std::filesystem::path& script) {
    return RunProgram(SystemFolder() / "cscript.exe", {L"/nologo", script.wstring()});
}

void ExpectLines(const ProgramResult& result, const std::vector<std::string>& lines) {
    EXPECT_THAT(result.errors, testing::IsEmpty());
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.Lines(), lines);
}

std::vector<HWND> WindowsIn(const std::wstring& title, const wchar_t* windowClass) {
    Search search{windowClass, {}};
    const HWND window = FindWindowW(nullptr, title.c_str());
    if (window != nullptr) EnumChildWindows(window, Keep, reinterpret_cast<LPARAM>(&search));
    std::sort(search.found.begin(), search.found.end(),
              [](HWND a, HWND b) { return LeftOf(a) < LeftOf(b); });
    return search.found;
}

std::vector<std::string> PrintedInUse(const std::filesystem::path& script,
                                      const std::function<bool(const std::wstring&)>& isReady,
                                      const std::function<void(const std::wstring&)>& use) {
    const TemporaryFolder folder;
    {
        const OutputFile output(folder.File(L"output"));
        const RunningProgram program(ScriptHost(), HostArguments(script, {L"wait"}), {},
                                     output.Get());
        const std::wstring title = script.filename().wstring();
        EXPECT_TRUE(PumpUntil([&] { return isReady(title); }, 30000));
        use(title);
        EXPECT_TRUE(program.EndsWithin(30000));
    }
    return LinesOf(ReadFile(folder / "output"));
}

void PostClick(HWND window, POINT point, bool twice) {
    const LPARAM place = MAKELPARAM(point.x, point.y);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(window, WM_LBUTTONUP, 0, place);
    if (!twice) return;
    PostMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
    PostMessageW(window, WM_LBUTTONUP, 0, place);
}

}  // namespace support
