#include "hosting/error.h"

#include "hosting/text.h"

#include <comdef.h>

#include <cstdio>

namespace hosting {

namespace {

std::wstring Hexadecimal(HRESULT number) {
    wchar_t text[16];
    std::swprintf(text, std::size(text), L"0x%08lX", static_cast<unsigned long>(number));
    return text;
}

std::wstring TakeString(BSTR& owned) {
    const _bstr_t text(std::exchange(owned, nullptr), false);
    return text.length() ? std::wstring(text, text.length()) : std::wstring();
}

}  // namespace

Error::Error(HRESULT number, std::wstring description, std::wstring source)
    : number_(number), description_(std::move(description)), source_(std::move(source)) {
    text_ = ToUtf8(Hexadecimal(number_) + L" " + description_ +
                   (source_.empty() ? L"" : L" (" + source_ + L")"));
}

Error Error::FromException(HRESULT result, EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    std::wstring description = TakeString(exception.bstrDescription);
    std::wstring source = TakeString(exception.bstrSource);
    TakeString(exception.bstrHelpFile);
    HRESULT number = exception.scode;
    if (!number && exception.wCode) number = MAKE_HRESULT(1, FACILITY_CONTROL, exception.wCode);
    if (!number) number = result;
    if (description.empty()) description = SystemText(number);
    return {number, std::move(description), std::move(source)};
}

Error Error::FromResult(HRESULT result, const std::wstring& action) {
    return {result, L"Failed: " + action + L". " + SystemText(result)};
}

}  // namespace hosting
