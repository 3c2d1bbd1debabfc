#include "fuzz/fuzz_run.h"

#include "fuzz/progress.h"
#include "support/program_run.h"
#include "support/server.h"
#include "support/temporary_folder.h"
#include "support/text.h"

namespace fuzz {

namespace {

using support::RunningProgram;

/// Waits for the child's end; false where it stopped getting on.
bool Watch(const RunningProgram& child, const Progress& progress, DWORD patience) {
    constexpr DWORD step = 50;
    long last = progress.Index();
    ULONGLONG since = GetTickCount64();
    while (!child.EndsWithin(step)) {
        const long now = progress.Index();
        if (now != last) {
            last = now;
            since = GetTickCount64();
        } else if (GetTickCount64() - since > patience) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::vector<std::string> FindFaults(const Trial& trial, long* calls) {
    // Whatever a member writes when it is given a name goes there.
    const support::TemporaryFolder folder;
    const Progress progress;
    std::vector<std::string> faults;
    long from = 0;
    for (int deaths = 0;; ++deaths) {
        const RunningProgram child(support::ProgramFolder() / "fuzz_child.exe",
                                   {support::Wide(trial.target), support::Wide(trial.mode),
                                    progress.Name(), std::to_wstring(from)},
                                   folder.Path());
        const bool ended = Watch(child, progress, trial.patience);
        if (!ended) child.Kill();
        if (ended && child.ExitCode() == 0) break;
        std::string fault = "hang";
        if (ended)
            fault = "crash " + support::DescribeResult(static_cast<HRESULT>(child.ExitCode()));
        fault += " in " + progress.Text();
        if (const std::string place = progress.PlaceOfDeath(); !place.empty())
            fault += " at " + place;
        faults.push_back(std::move(fault));
        if (deaths + 1 == trial.deaths) break;
        from = progress.Index() + 1;
    }
    if (calls != nullptr) *calls = progress.Index() + 1;
    for (const std::string& problem : progress.Problems()) faults.push_back(problem);
    return faults;
}

}  // namespace fuzz
