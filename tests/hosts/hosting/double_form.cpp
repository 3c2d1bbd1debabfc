#include "hosts/hosting/double_form.h"

#include "hosting/text.h"

#include <array>
#include <sstream>

std::filesystem::path DoubleManifest() {
    std::array<wchar_t, 4096> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    return std::filesystem::path(program.data()).parent_path() / L"HostDouble.X.manifest";
}

std::vector<std::string> DoubleForm::Log(const hosting::LateBound& control) {
    const _bstr_t text(control.Get(L"Log"));
    std::istringstream lines(hosting::ToUtf8(std::wstring(text, text.length())));
    std::vector<std::string> result;
    for (std::string line; std::getline(lines, line);) result.push_back(line);
    return result;
}
