#pragma once

#include <string>

namespace explorer {

/// Writes text to the standard output where the program was started with one, or to the console
/// that it was started from; a program with windows has no console of its own.
void PrintOut(const std::wstring& text);

/// The same with the standard error output.
void PrintError(const std::wstring& text);

}  // namespace explorer
