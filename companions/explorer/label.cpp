#include "explorer/label.h"

#include <cwctype>

namespace explorer {

hosting::OwnedWindow MakeLabel(HWND parent, const std::wstring& caption) {
    return hosting::OwnedWindow(
        CreateWindowExW(0, L"STATIC", caption.c_str(), WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP, 0,
                        0, 0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr));
}

std::wstring Literal(const std::wstring& text) {
    std::wstring literal;
    for (const wchar_t letter : text) literal.append(letter == L'&' ? 2 : 1, letter);
    return literal;
}

wchar_t MnemonicOf(const std::wstring& caption) {
    const auto mark = caption.find(L'&');
    if (mark == std::wstring::npos || mark + 1 == caption.size()) return 0;
    return static_cast<wchar_t>(std::towupper(caption[mark + 1]));
}

}  // namespace explorer
