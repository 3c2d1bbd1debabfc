#pragma once

#include "hosting/error.h"

#include <functional>
#include <string>

namespace explorer {

/// Number and description of an error, for people: automation numbers as a host knows them
/// ("Error 53: File not found"), others as result codes.
[[nodiscard]] std::wstring ErrorText(const hosting::Error& error);

/// The exception that is being handled, as an error. Call it in a catch-all clause.
[[nodiscard]] hosting::Error CurrentError();

/// Who hears of errors that no caller waits for: what was tried, and what came of it.
using ErrorHandler = std::function<void(const std::wstring& action, const hosting::Error&)>;

/// Runs `work`; a failure goes to `handler`. True where there was none.
template <class Work>
bool Try(const ErrorHandler& handler, const std::wstring& action, Work&& work) {
    try {
        work();
        return true;
    } catch (...) {
        handler(action, CurrentError());
        return false;
    }
}

}  // namespace explorer
