#include "hosts/scripthost/script_run.h"

#include "support/server.h"

ScriptResult RunScriptHost(const std::vector<std::wstring>& arguments) {
    return support::RunProgram(support::ProgramFolder() / "orvane-scripthost.exe", arguments);
}

ScriptRun::ScriptRun(const char* name, const std::string& text) : file_(folder_ / name) {
    support::WriteFile(file_, text);
}

ScriptRun& ScriptRun::Options(std::vector<std::wstring> options) {
    options_ = std::move(options);
    return *this;
}

ScriptRun& ScriptRun::Arguments(std::vector<std::wstring> arguments) {
    arguments_ = std::move(arguments);
    return *this;
}

ScriptResult ScriptRun::Run() const {
    std::vector<std::wstring> all = options_;
    all.push_back(file_.wstring());
    all.insert(all.end(), arguments_.begin(), arguments_.end());
    return RunScriptHost(all);
}
