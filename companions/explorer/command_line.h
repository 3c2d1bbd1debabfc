#pragma once

#include <string>
#include <vector>

namespace explorer {

/// What the program is asked to do.
struct CommandLine {
    std::vector<std::wstring> files;  ///< one repository, or what is to be imported
    std::wstring pictures;            ///< a folder: drive the window, save pictures there, end
    std::wstring log;                 ///< a file that receives every line of the event log
    bool help = false;                ///< only say how the program is called
    std::wstring complaint;           ///< what is wrong with the arguments; empty where nothing is
};

/// Reads the arguments without the program's name. Options may stand between the files; "--" ends
/// them, so that a file's name may begin with a dash.
[[nodiscard]] CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments);

/// How the program is called, for people.
extern const wchar_t usage[];

}  // namespace explorer
