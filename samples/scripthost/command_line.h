#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace scripthost {

/// What the user asked for.
struct CommandLine {
    std::filesystem::path script;
    std::vector<std::wstring> arguments;           ///< the script's own
    std::vector<std::filesystem::path> manifests;  ///< of assemblies to use without registration
    bool hidden = false;
    std::optional<unsigned> timeoutSeconds;
};

/// Reads the arguments after the program's name. Throws hosting::Error for what it cannot read.
[[nodiscard]] CommandLine ReadCommandLine(const std::vector<std::wstring>& arguments);

extern const wchar_t usage[];

}  // namespace scripthost
