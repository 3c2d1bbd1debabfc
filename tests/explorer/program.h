#pragma once

#include "support/program_run.h"

namespace explorer {

/// Runs OrvaneExplorer.exe, which is beside this program, and waits for its end. Throws
/// std::runtime_error where it does not start or does not end.
[[nodiscard]] support::ProgramResult RunExplorer(const std::vector<std::wstring>& arguments);

}  // namespace explorer
