#include "explorer/pane_label.h"

namespace explorer {

HWND MakeLabel(HWND parent) {
    return CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP, 0, 0, 0, 0,
                           parent, nullptr, GetModuleHandleW(nullptr), nullptr);
}

std::wstring Literal(const std::wstring& text) {
    std::wstring literal;
    for (const wchar_t letter : text) literal.append(letter == L'&' ? 2 : 1, letter);
    return literal;
}

}  // namespace explorer
