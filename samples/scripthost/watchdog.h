#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace scripthost {

/// Ends the process with exit code 124 where it still runs after some time, whatever it does then.
class Watchdog {
public:
    explicit Watchdog(unsigned seconds);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool finished_ = false;
    std::thread thread_;
};

}  // namespace scripthost
