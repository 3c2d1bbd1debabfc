#include "explorer/program.h"

#include "support/server.h"

namespace explorer {

support::ProgramResult RunExplorer(const std::vector<std::wstring>& arguments) {
    return support::RunProgram(support::ProgramFolder() / L"OrvaneExplorer.exe", arguments);
}

}  // namespace explorer
