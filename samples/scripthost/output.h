#pragma once

#include <string_view>

namespace scripthost {

/// Writes a line to the standard output or the standard error: as it is to a console, in UTF-8 to
/// a file or a pipe.
void WriteLine(std::wstring_view text);
void WriteErrorLine(std::wstring_view text);

/// The same without the line break.
void Write(std::wstring_view text);
void WriteError(std::wstring_view text);

}  // namespace scripthost
