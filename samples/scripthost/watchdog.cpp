#include "scripthost/watchdog.h"

#include "scripthost/output.h"

#include <windows.h>

#include <chrono>
#include <string>

namespace scripthost {

Watchdog::Watchdog(unsigned seconds)
    : thread_([this, seconds] {
          std::unique_lock lock(mutex_);
          if (changed_.wait_for(lock, std::chrono::seconds(seconds), [this] { return finished_; }))
              return;
          WriteErrorLine(L"The script did not end within " + std::to_wstring(seconds) +
                         L" seconds.");
          TerminateProcess(GetCurrentProcess(), 124);
      }) {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard lock(mutex_);
        finished_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

}  // namespace scripthost
