#include "scripthost/command_line.h"

#include "hosting/error.h"

#include <cwchar>

namespace scripthost {

const wchar_t usage[] =
    L"Usage: orvane-scripthost [OPTION...] SCRIPT [ARGUMENT...]\n"
    L"Runs a VBScript (.vbs) or JScript (.js) file that may host ActiveX controls.\n"
    L"\n"
    L"  --manifest FILE     use the classes of this side-by-side assembly without registration;\n"
    L"                      may be repeated. Without it: the *.X.manifest beside this program\n"
    L"  --hidden            keep the window of the controls hidden\n"
    L"  --timeout SECONDS   end the program with exit code 124 after this time\n";

namespace {

unsigned ReadSeconds(const std::wstring& text) {
    wchar_t* end = nullptr;
    const unsigned long seconds = std::wcstoul(text.c_str(), &end, 10);
    if (text.empty() || *end || seconds == 0 || seconds > 1'000'000)
        throw hosting::Error(E_INVALIDARG, L"--timeout needs a number of seconds.");
    return static_cast<unsigned>(seconds);
}

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::wstring>& arguments) {
    CommandLine result;
    auto argument = arguments.begin();
    const auto value = [&] {
        const std::wstring option = *argument;
        if (++argument == arguments.end())
            throw hosting::Error(E_INVALIDARG, option + L" needs a value.");
        return *argument;
    };
    for (; argument != arguments.end() && argument->starts_with(L"--"); ++argument) {
        if (*argument == L"--hidden")
            result.hidden = true;
        else if (*argument == L"--manifest")
            result.manifests.emplace_back(value());
        else if (*argument == L"--timeout")
            result.timeoutSeconds = ReadSeconds(value());
        else
            throw hosting::Error(E_INVALIDARG, L"There is no option " + *argument + L".");
    }
    if (argument == arguments.end()) throw hosting::Error(E_INVALIDARG, L"Which script?");
    result.script = *argument++;
    result.arguments.assign(argument, arguments.end());
    return result;
}

}  // namespace scripthost
