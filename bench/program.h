#pragma once

#include "figures.h"

namespace bench {

/// What a benchmark's `wmain` does: measures, on a thread with OLE and with the classes beside the
/// program. Answers the exit code: 0, 1 where a limit was passed, 2 where something failed.
int RunProgram(void (*measure)(Figures& figures));

}  // namespace bench
