#include "explorer/errors.h"

#include "hosting/text.h"

#include <comdef.h>

#include <array>
#include <cwchar>

namespace explorer {

namespace {

/// Automation numbers are result codes of this facility.
constexpr DWORD automationCode = 0x800A0000;

std::wstring NumberText(HRESULT number) {
    const auto code = static_cast<DWORD>(number);
    if ((code & 0xFFFF0000) == automationCode) return std::to_wstring(code & 0xFFFF);
    std::array<wchar_t, 16> text{};
    std::swprintf(text.data(), text.size(), L"0x%08lX", code);
    return text.data();
}

}  // namespace

std::wstring ErrorText(const hosting::Error& error) {
    std::wstring text = L"Error " + NumberText(error.Number());
    if (!error.Description().empty()) text += L": " + error.Description();
    return text;
}

hosting::Error CurrentError() {
    try {
        throw;
    } catch (const hosting::Error& error) {
        return error;
    } catch (const _com_error& error) {
        return {error.Error(), hosting::SystemText(error.Error())};
    } catch (const std::exception& error) {
        return {E_FAIL, hosting::FromUtf8(error.what())};
    } catch (...) {
        return {E_UNEXPECTED, hosting::SystemText(E_UNEXPECTED)};
    }
}

}  // namespace explorer
