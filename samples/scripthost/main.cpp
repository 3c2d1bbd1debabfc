#include "hosting/error.h"
#include "scripthost/output.h"
#include "scripthost/script_host.h"
#include "scripthost/watchdog.h"

#include <ole2.h>

#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int scriptFailed = 1;
constexpr int notStarted = 2;

class Apartment {
public:
    Apartment() : result_(OleInitialize(nullptr)) {}
    ~Apartment() {
        if (SUCCEEDED(result_)) OleUninitialize();
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    HRESULT result_;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    using namespace scripthost;
    CommandLine commandLine;
    try {
        commandLine = ReadCommandLine({arguments + 1, arguments + count});
    } catch (const hosting::Error& error) {
        WriteErrorLine(error.Description() + L"\n\n" + usage);
        return notStarted;
    }
    const Apartment apartment;
    std::optional<Watchdog> watchdog;
    if (commandLine.timeoutSeconds) watchdog.emplace(*commandLine.timeoutSeconds);
    std::optional<ScriptHost> host;
    try {
        host.emplace(std::move(commandLine));
    } catch (const hosting::Error& error) {
        WriteErrorLine(error.Description());
        return notStarted;
    }
    try {
        return host->Run();
    } catch (const hosting::Error& error) {
        WriteErrorLine(error.Description());
        return scriptFailed;
    }
}
