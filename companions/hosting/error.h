#pragma once

#include "hosting/ref.h"

#include <exception>
#include <string>

namespace hosting {

/// A failed COM or automation call: what Err.Number, Err.Description and Err.Source would say.
class Error : public std::exception {
public:
    Error(HRESULT number, std::wstring description, std::wstring source = {});

    /// From what a dispatch call left in its EXCEPINFO; takes over and frees its strings.
    static Error FromException(HRESULT result, EXCEPINFO& exception);

    /// From a plain result code: what was tried, and the system's text.
    static Error FromResult(HRESULT result, const std::wstring& action);

    [[nodiscard]] HRESULT Number() const noexcept { return number_; }
    [[nodiscard]] const std::wstring& Description() const noexcept { return description_; }
    [[nodiscard]] const std::wstring& Source() const noexcept { return source_; }

    /// Number, description and source in UTF-8.
    [[nodiscard]] const char* what() const noexcept override { return text_.c_str(); }

private:
    HRESULT number_;
    std::wstring description_;
    std::wstring source_;
    std::string text_;
};

/// Throws Error where `result` is a failure. `action` says in a few words what was tried.
inline void Check(HRESULT result, const wchar_t* action) {
    if (FAILED(result)) throw Error::FromResult(result, action);
}

}  // namespace hosting
