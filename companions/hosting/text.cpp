#include "hosting/text.h"

#include <cwctype>
#include <memory>

namespace hosting {

std::string ToUtf8(std::wstring_view text) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), size, nullptr, nullptr);
    return result;
}

std::wstring FromUtf8(std::string_view text) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), size);
    return result;
}

std::wstring SystemText(HRESULT result) {
    struct FreeLocal {
        void operator()(wchar_t* text) const { LocalFree(text); }
    };
    wchar_t* found = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&found), 0, nullptr);
    const std::unique_ptr<wchar_t, FreeLocal> owned(found);
    std::wstring text = found ? found : L"";
    while (!text.empty() && std::iswspace(static_cast<wint_t>(text.back()))) text.pop_back();
    return text.empty() ? L"Error " + std::to_wstring(result) : text;
}

}  // namespace hosting
