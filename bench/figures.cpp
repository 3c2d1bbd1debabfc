#include "figures.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>

namespace bench {

namespace {

double Now() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double TimeOf(const std::function<void()>& work, const std::function<void()>& after) {
    const double start = Now();
    work();
    const double time = Now() - start;
    if (after) after();
    return time;
}

std::string Both(const Times& times) {
    std::array<char, 64> both{};
    std::snprintf(both.data(), both.size(), "  %.2f ms to %.2f ms", times.ours * 1000,
                  times.theirs * 1000);
    return both.data();
}

}  // namespace

double Best(int rounds, const std::function<void()>& work, const std::function<void()>& after) {
    double best = std::numeric_limits<double>::max();
    for (int i = 0; i < rounds; ++i) best = std::min(best, TimeOf(work, after));
    return best;
}

Times Compare(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs,
              const std::function<void()>& after) {
    Times best = {std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    for (int i = 0; i < rounds; ++i) {
        best.ours = std::min(best.ours, TimeOf(ours, after));
        best.theirs = std::min(best.theirs, TimeOf(theirs, after));
    }
    return best;
}

void Figures::Add(const std::string& name, double ratio, double limit) {
    Print(name, ratio, limit, {});
}

void Figures::Add(const std::string& name, const Times& times, double limit) {
    Print(name, times.Ratio(), limit, Both(times));
}

void Figures::Note(const std::string& name, const Times& times) {
    std::printf("%-40s %6.2f%s\n", name.c_str(), times.Ratio(), Both(times).c_str());
    std::fflush(stdout);
}

void Figures::Print(const std::string& name, double ratio, double limit, const std::string& more) {
    const bool passed = ratio > limit;
    passed_ = passed_ || passed;
    std::printf("%-40s %6.2f %6.2f %s%s\n", name.c_str(), ratio, limit,
                passed ? "PASSED LIMIT" : "ok", more.c_str());
    std::fflush(stdout);
}

}  // namespace bench
