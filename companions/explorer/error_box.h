#pragma once

#include "explorer/event_log.h"
#include "hosting/error.h"

#include <windows.h>

#include <deque>
#include <string>

namespace explorer {

/// Shows errors to the user, one after the other, and in the event log. Safe within an event of a
/// control: the box comes up later, from the message loop.
class ErrorBox {
public:
    /// Posted to the owner when there is something to show; it answers with ShowNext.
    static constexpr UINT message = WM_APP + 1;

    explicit ErrorBox(EventLog& log) : log_(log) {}

    void SetOwner(HWND owner) noexcept { owner_ = owner; }
    /// Nobody is there to close a box: errors go to the log and to the standard error output.
    void SetUnattended() noexcept { unattended_ = true; }

    void Report(const std::wstring& action, const hosting::Error& error);
    void ShowNext();
    [[nodiscard]] int Count() const noexcept { return count_; }

private:
    EventLog& log_;
    HWND owner_ = nullptr;
    bool unattended_ = false;
    int count_ = 0;
    std::deque<std::wstring> waiting_;
};

}  // namespace explorer
