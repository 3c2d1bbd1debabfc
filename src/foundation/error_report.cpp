#include "foundation/error_report.h"

#include "ole/error.h"
#include "ole/text.h"

namespace foundation {

namespace {

/// The number as hosts see it: automation errors without their facility.
long NumberOf(const _com_error& error) {
    const HRESULT result = error.Error();
    constexpr int automationErrors = 0xA;
    return HRESULT_FACILITY(result) == automationErrors ? HRESULT_CODE(result) : result;
}

}  // namespace

std::wstring ErrorReportText(const _com_error& error, const std::wstring& module,
                             const std::wstring& function) {
    std::wstring text = L"Error No:" + std::to_wstring(NumberOf(error));
    text += L"  '" + ole::ToWide(error.Description()) + L"'\r\n";
    text += L"  '" + ole::ToWide(error.Source()) + L"'\r\n";
    if (!module.empty()) text += L"(Module '" + module + L"' Function '" + function + L"')";
    return text;
}

void ReportError(const _com_error& error, const std::wstring& module,
                 const std::wstring& function) {
    MessageBoxW(GetActiveWindow(), ErrorReportText(error, module, function).c_str(),
                L"OrvaneUtility", MB_ICONHAND | MB_OK);
}

}  // namespace foundation
