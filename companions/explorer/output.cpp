#include "explorer/output.h"

#include "hosting/text.h"

#include <windows.h>

namespace explorer {

namespace {

bool IsUsable(HANDLE handle) {
    return handle && handle != INVALID_HANDLE_VALUE;
}

void Print(DWORD which, const std::wstring& text) {
    HANDLE handle = GetStdHandle(which);
    if (!IsUsable(handle) && AttachConsole(ATTACH_PARENT_PROCESS)) handle = GetStdHandle(which);
    if (!IsUsable(handle)) return;
    DWORD mode = 0, written = 0;
    if (GetConsoleMode(handle, &mode)) {
        WriteConsoleW(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        return;
    }
    const std::string bytes = hosting::ToUtf8(text);
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace

void PrintOut(const std::wstring& text) {
    Print(STD_OUTPUT_HANDLE, text);
}

void PrintError(const std::wstring& text) {
    Print(STD_ERROR_HANDLE, text);
}

}  // namespace explorer
