#pragma once

#include "support/arguments.h"
#include "support/failure.h"

#include <functional>
#include <optional>
#include <string>

namespace support {

/// What goes wrong, or happens on the side, in the calls of one member. Without `After`, `Times` or
/// `With` it is every call.
class Disturbance {
public:
    /// The call fails.
    Disturbance& Fail(Failure failure) {
        failure_ = std::move(failure);
        return *this;
    }
    /// The call gives this instead of its result, whatever kind of value it is.
    Disturbance& Answer(Value value) {
        answer_ = std::move(value);
        return *this;
    }
    /// Runs in the middle of the call, before it is answered: to call the caller again, to handle
    /// messages, to change the repository, to destroy the caller.
    Disturbance& Run(std::function<void()> work) {
        work_ = [run = std::move(work)](const Arguments&) { run(); };
        return *this;
    }
    /// The same with the arguments, which it may write to where they are references. It may throw a
    /// Failure.
    Disturbance& Run(std::function<void(const Arguments&)> work) {
        work_ = std::move(work);
        return *this;
    }
    /// Lets this many calls pass first.
    Disturbance& After(int calls) {
        passing_ = calls;
        return *this;
    }
    /// Ends after this many calls.
    Disturbance& Times(int calls) {
        remaining_ = calls;
        return *this;
    }
    /// Only for calls whose first argument has this text.
    Disturbance& With(std::string firstArgument) {
        firstArgument_ = std::move(firstArgument);
        return *this;
    }

    /// Whether this call is one of those; counts it.
    bool Strikes(const Arguments* arguments);
    [[nodiscard]] const std::optional<Failure>& TheFailure() const { return failure_; }
    [[nodiscard]] const std::optional<Value>& TheAnswer() const { return answer_; }
    void Work(const Arguments& arguments) const {
        if (work_) work_(arguments);
    }

private:
    std::optional<Failure> failure_;
    std::optional<Value> answer_;
    std::function<void(const Arguments&)> work_;
    std::optional<std::string> firstArgument_;
    std::optional<int> remaining_;
    int passing_ = 0;
};

}  // namespace support
