#pragma once

#include <windows.h>

#include <functional>

namespace explorer {

/// Takes messages from the thread's queue and hands them to their windows.
class MessageLoop {
public:
    /// Gets each message first; true where it has used the message up.
    using Filter = std::function<bool(MSG&)>;

    explicit MessageLoop(Filter filter) : filter_(std::move(filter)) {}

    /// Until WM_QUIT; returns its code.
    int Run();
    /// Until `done` says so, at most `milliseconds`. True where it was done. WM_QUIT ends it too,
    /// and is put back.
    bool RunUntil(const std::function<bool()>& done, DWORD milliseconds);
    /// For so many milliseconds.
    void RunFor(DWORD milliseconds);

private:
    void Handle(MSG& message);

    Filter filter_;
};

}  // namespace explorer
