#include "explorer/event_log.h"

#include "hosting/error.h"
#include "hosting/text.h"

#include <array>
#include <cwchar>
#include <filesystem>

namespace explorer {

namespace {

/// What would end a column or a line becomes a space.
std::wstring OneColumn(std::wstring text) {
    for (wchar_t& letter : text)
        if (letter == L'\t' || letter == L'\r' || letter == L'\n') letter = L' ';
    return text;
}

}  // namespace

std::wstring TimeText(const SYSTEMTIME& time) {
    std::array<wchar_t, 16> text{};
    std::swprintf(text.data(), text.size(), L"%02u:%02u:%02u.%03u", unsigned{time.wHour},
                  unsigned{time.wMinute}, unsigned{time.wSecond}, unsigned{time.wMilliseconds});
    return text.data();
}

void EventLog::WriteTo(const std::wstring& path) {
    file_.open(std::filesystem::path(path), std::ios::binary | std::ios::trunc);
    if (!file_)
        throw hosting::Error(HRESULT_FROM_WIN32(ERROR_CANNOT_MAKE),
                             L"The log file " + path + L" cannot be written.");
}

void EventLog::Add(const std::wstring& control, const std::wstring& event,
                   const std::wstring& key) {
    LogEntry entry{{}, control, event, key};
    GetLocalTime(&entry.time);
    if (file_.is_open())
        file_ << hosting::ToUtf8(TimeText(entry.time) + L"\t" + OneColumn(control) + L"\t" +
                                 OneColumn(event) + L"\t" + OneColumn(key) + L"\n")
              << std::flush;
    entries_.push_back(std::move(entry));
    if (onChange) onChange();
}

void EventLog::Clear() {
    entries_.clear();
    if (onChange) onChange();
}

}  // namespace explorer
