#include "explorer/command_line.h"
#include "explorer/main_window.h"
#include "explorer/message_loop.h"
#include "explorer/output.h"
#include "explorer/tour.h"
#include "hosting/apartment.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <optional>

namespace explorer {

namespace {

enum ExitCode { succeeded = 0, failed = 1, wrongUsage = 2 };

struct FreesLocal {
    void operator()(void* memory) const noexcept { LocalFree(memory); }
};

std::vector<std::wstring> Arguments() {
    int count = 0;
    const std::unique_ptr<LPWSTR, FreesLocal> all(CommandLineToArgvW(GetCommandLineW(), &count));
    if (!all || count < 1) return {};
    return {all.get() + 1, all.get() + count};
}

void LoadCommonControls() {
    const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&wanted);
}

/// Says what is wrong: where somebody reads it.
void Complain(const std::wstring& text, bool unattended) {
    if (unattended)
        PrintError(text + L"\n");
    else
        MessageBoxW(nullptr, text.c_str(), L"Orvane Explorer", MB_OK | MB_ICONERROR);
}

bool TakeTour(MainWindow& window, MessageLoop& loop, const std::wstring& folder) {
    Tour tour(window, loop, folder);
    tour.Run();
    for (const auto& picture : tour.Pictures()) PrintOut(picture + L"\n");
    return true;
}

int Run(const CommandLine& commandLine, int show) {
    const bool unattended = !commandLine.pictures.empty();
    const hosting::Apartment apartment;
    LoadCommonControls();
    EventLog log;
    if (!commandLine.log.empty()) log.WriteTo(commandLine.log);
    ErrorBox errors(log);
    if (unattended) errors.SetUnattended();
    Document document;
    MainWindow window(document, log, errors);
    MessageLoop loop([&window](MSG& message) { return window.Translate(message); });
    window.Show(show);
    window.OpenFiles(commandLine.files);
    if (!unattended) return loop.Run();
    const auto report = [&errors](const std::wstring& action, const hosting::Error& error) {
        errors.Report(action, error);
    };
    Try(report, L"Taking pictures", [&] { TakeTour(window, loop, commandLine.pictures); });
    return errors.Count() == 0 ? succeeded : failed;
}

int Main(int show) {
    const CommandLine commandLine = ParseCommandLine(Arguments());
    if (!commandLine.complaint.empty()) {
        PrintError(commandLine.complaint + L"\n\n" + usage);
        return wrongUsage;
    }
    if (commandLine.help) {
        PrintOut(usage);
        return succeeded;
    }
    try {
        return Run(commandLine, show);
    } catch (...) {
        Complain(L"The explorer could not start.\n" + ErrorText(CurrentError()),
                 !commandLine.pictures.empty());
        return failed;
    }
}

}  // namespace

}  // namespace explorer

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int show) {
    return explorer::Main(show);
}
