#include "scripthost/output.h"

#include "hosting/text.h"

#include <string>

namespace scripthost {

namespace {

void WriteTo(DWORD stream, std::wstring_view text) {
    const HANDLE handle = GetStdHandle(stream);
    DWORD written = 0;
    if (DWORD mode = 0; GetConsoleMode(handle, &mode)) {
        WriteConsoleW(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        return;
    }
    const std::string bytes = hosting::ToUtf8(text);
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace

void Write(std::wstring_view text) {
    WriteTo(STD_OUTPUT_HANDLE, text);
}

void WriteError(std::wstring_view text) {
    WriteTo(STD_ERROR_HANDLE, text);
}

void WriteLine(std::wstring_view text) {
    Write(std::wstring(text) + L"\n");
}

void WriteErrorLine(std::wstring_view text) {
    WriteError(std::wstring(text) + L"\n");
}

}  // namespace scripthost
