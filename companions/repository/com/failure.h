#pragma once

#include <utility>

#include "repository/store/error.h"

namespace repository::com {

/// Throws an error of the store as the automation error that a host sees.
[[noreturn]] void ThrowAsAutomationError(const store::Error& error);

[[noreturn]] void Throw(store::Number number, const std::string& text);

/// Runs `work`, whose store errors become automation errors.
template <class Work>
decltype(auto) Translated(Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const store::Error& error) {
        ThrowAsAutomationError(error);
    }
}

}  // namespace repository::com
