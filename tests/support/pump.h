#pragma once

#include <windows.h>

#include <functional>

namespace support {

/// Takes a message before it is dispatched; true where it used it up.
using MessageFilter = std::function<bool(MSG&)>;

/// Handles the messages that wait, without waiting for more.
void Pump(const MessageFilter& filter = nullptr);

/// Handles messages until `done` holds, which is asked again after each message and every few
/// milliseconds, or the time is over. Says whether it came to hold.
[[nodiscard]] bool PumpUntil(const std::function<bool()>& done, DWORD milliseconds = 5000,
                             const MessageFilter& filter = nullptr);

}  // namespace support
