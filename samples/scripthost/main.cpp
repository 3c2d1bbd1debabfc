#include "hosting/apartment.h"
#include "scripthost/output.h"
#include "scripthost/script_host.h"
#include "scripthost/watchdog.h"

#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int scriptFailed = 1;
constexpr int notStarted = 2;

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
    std::optional<hosting::Apartment> apartment;
    std::optional<Watchdog> watchdog;
    if (commandLine.timeoutSeconds) watchdog.emplace(*commandLine.timeoutSeconds);
    std::optional<ScriptHost> host;
    try {
        apartment.emplace();
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
