#pragma once

#include <comdef.h>

#include <string>

namespace foundation {

/// What an error report says of an error: its number, description and source, each on a line, and
/// where it happened unless `module` is empty.
std::wstring ErrorReportText(const _com_error& error, const std::wstring& module,
                             const std::wstring& function);

/// Shows the report of an error in a message box. The error goes no further.
void ReportError(const _com_error& error, const std::wstring& module, const std::wstring& function);

}  // namespace foundation
