#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace fuzz {

/// Where and how a class is tried.
struct Trial {
    std::string target;          ///< a class of the library, or "planted FAULT"
    std::string mode = "alone";  ///< "alone", or "hosted" for a control on a running form
    DWORD patience = 60000;      ///< a call that takes longer, in milliseconds, hangs
    int deaths = 4;              ///< so many crashes and hangs end the run
};

/// Tries everything in a child process, which begins behind the call at fault each time it dies.
/// Gives one line for each crash, hang and other fault, with the call; none where all is well.
/// `calls` gets the number of calls that were made.
[[nodiscard]] std::vector<std::string> FindFaults(const Trial& trial, long* calls = nullptr);

}  // namespace fuzz
