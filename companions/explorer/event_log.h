#pragma once

#include <windows.h>

#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace explorer {

/// One thing that has happened.
struct LogEntry {
    SYSTEMTIME time{};     ///< local
    std::wstring control;  ///< whose event it is
    std::wstring event;
    std::wstring key;
};

/// "13:05:09.123"
[[nodiscard]] std::wstring TimeText(const SYSTEMTIME& time);

/// What has happened since the program was started, or since the user has emptied the log.
class EventLog {
public:
    /// Called after each change.
    std::function<void()> onChange;

    /// Writes each later entry to a file as well, as UTF-8: a line of four columns with tabs
    /// between them. Throws hosting::Error where the file cannot be written.
    void WriteTo(const std::wstring& path);

    void Add(const std::wstring& control, const std::wstring& event, const std::wstring& key);
    void Clear();
    [[nodiscard]] const std::vector<LogEntry>& Entries() const noexcept { return entries_; }

private:
    std::vector<LogEntry> entries_;
    std::ofstream file_;
};

}  // namespace explorer
