#pragma once

#include <functional>
#include <string>

namespace bench {

/// The shortest time, in seconds, that one of `rounds` runs of `work` took; `after` puts things
/// back and is not measured.
double Best(int rounds, const std::function<void()>& work, const std::function<void()>& after = {});

/// The shortest times of two ways to do the same, which take turns so that both meet the same
/// machine.
struct Times {
    double ours;
    double theirs;
    double Ratio() const { return ours / theirs; }
};
Times Compare(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs,
              const std::function<void()>& after = {});

/// Prints each figure as a ratio with its limit: `name 1.07 1.15 ok`.
class Figures {
public:
    void Add(const std::string& name, double ratio, double limit);
    /// The ratio of two times, with both times in milliseconds.
    void Add(const std::string& name, const Times& times, double limit);
    /// A figure that has no limit.
    static void Note(const std::string& name, const Times& times);

    /// 0 when no limit was passed.
    int ExitCode() const { return passed_ ? 1 : 0; }

private:
    void Print(const std::string& name, double ratio, double limit, const std::string& more);

    bool passed_ = false;
};

}  // namespace bench
