#pragma once

#include "support/server.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace support {

/// The windows of this process: top-level ones, their children, and message-only windows.
class WindowCensus {
public:
    [[nodiscard]] static WindowCensus Take();
    [[nodiscard]] std::size_t Count() const { return windows_.size(); }
    /// Windows that are here and were not there in `before`, as `class "text"`.
    [[nodiscard]] std::vector<std::string> Since(const WindowCensus& before) const;

private:
    std::map<HWND, std::string> windows_;
};

/// Blocks that are allocated through COM's task allocator and not yet freed, automation strings
/// among them. Counts from the first use on.
[[nodiscard]] long TaskBlocks();

/// Blocks that are in use in all heaps of the process, C and C++ objects among them.
struct HeapUse {
    long blocks = 0;
    long long bytes = 0;
    [[nodiscard]] static HeapUse Now();
};

/// Runs `work` a few times to warm up, then `rounds` times, and says in lines what stayed behind:
/// test doubles, windows, what the server counts (in debug builds), task memory and heap blocks. Of
/// the last two only what grows at least by one in every round counts.
[[nodiscard]] std::vector<std::string> FindLeaks(const std::function<void()>& work,
                                                 const Server* server = nullptr, int rounds = 20);

/// Fails the test for each line of FindLeaks.
void ExpectNoLeaks(const std::function<void()>& work, const Server* server = nullptr,
                   int rounds = 20);

}  // namespace support
