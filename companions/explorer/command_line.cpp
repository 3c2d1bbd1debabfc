#include "explorer/command_line.h"

#include <optional>
#include <string_view>
#include <utility>

namespace explorer {

const wchar_t usage[] =
    L"Usage: OrvaneExplorer [OPTION...] [FILE...]\n"
    L"\n"
    L"Browses a model repository: FILE is a repository, or one or several files that are imported\n"
    L"into a new repository in memory: Ecore metamodels and XMI models, in any order, and COM "
    L"type\n"
    L"libraries (.tlb, .olb, .dll, .ocx, .exe).\n"
    L"\n"
    L"  --pictures FOLDER  click through the window, save pictures of it and print their names\n"
    L"  --log FILE         write the event log to FILE as well\n"
    L"  --help             show this text\n";

namespace {

/// An option with a value, as "--name VALUE" or "--name=VALUE".
struct ValueOption {
    std::wstring_view name;
    std::wstring CommandLine::*value;
};

constexpr ValueOption valueOptions[] = {
    {L"--pictures", &CommandLine::pictures},
    {L"--log", &CommandLine::log},
};

class Parser {
public:
    explicit Parser(const std::vector<std::wstring>& arguments) : rest_(arguments) {}

    CommandLine Parse() {
        while (next_ < rest_.size() && result_.complaint.empty()) {
            const std::wstring& argument = rest_[next_++];
            if (optionsEnded_ || argument.size() < 2 || argument.front() != L'-')
                AddFile(argument);
            else if (argument == L"--")
                optionsEnded_ = true;
            else if (argument == L"--help" || argument == L"-h")
                result_.help = true;
            else if (!ReadValue(argument))
                result_.complaint = L"There is no option " + argument + L".";
        }
        return std::move(result_);
    }

private:
    void AddFile(const std::wstring& file) {
        if (file.empty())
            result_.complaint = L"A file's name is empty.";
        else
            result_.files.push_back(file);
    }

    bool ReadValue(const std::wstring& argument) {
        for (const auto& [name, value] : valueOptions) {
            if (!argument.starts_with(name)) continue;
            const std::wstring_view after = std::wstring_view(argument).substr(name.size());
            if (!after.empty() && after.front() != L'=') continue;
            SetValue(name, value, after);
            return true;
        }
        return false;
    }

    void SetValue(std::wstring_view name, std::wstring CommandLine::*value,
                  std::wstring_view after) {
        std::wstring given;
        if (!after.empty())
            given = after.substr(1);
        else if (next_ < rest_.size())
            given = rest_[next_++];
        if (given.empty())
            result_.complaint = L"The option " + std::wstring(name) + L" needs a value.";
        else if (!(result_.*value).empty())
            result_.complaint = L"The option " + std::wstring(name) + L" is there twice.";
        else
            result_.*value = given;
    }

    const std::vector<std::wstring>& rest_;
    std::size_t next_ = 0;
    bool optionsEnded_ = false;
    CommandLine result_;
};

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::wstring>& arguments) {
    return Parser(arguments).Parse();
}

}  // namespace explorer
