#include "explorer/status_line.h"

#include <commctrl.h>

#include <array>

namespace explorer {

namespace {

constexpr int partCount = 4;
constexpr int partWidth = 104;

}  // namespace

StatusLine::StatusLine(HWND parent)
    : bar_(CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0,
                           0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr)) {}

void StatusLine::Show(const Texts& texts) {
    const std::wstring* parts[partCount] = {&texts.document, &texts.metaNodes, &texts.nodes,
                                            &texts.links};
    for (WPARAM part = 0; part < partCount; ++part)
        SendMessageW(bar_.get(), SB_SETTEXTW, part, reinterpret_cast<LPARAM>(parts[part]->c_str()));
}

void StatusLine::Say(const std::wstring& text) {
    SendMessageW(bar_.get(), SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void StatusLine::SetLook(const Look& look) {
    SetFont(bar_.get(), look);
    partWidth_ = look.Scale(partWidth);
}

int StatusLine::Place() {
    SendMessageW(bar_.get(), WM_SIZE, 0, 0);
    RECT bounds{};
    GetWindowRect(bar_.get(), &bounds);
    std::array<int, partCount> ends{};
    int end = bounds.right - bounds.left - GetSystemMetrics(SM_CXVSCROLL);
    for (auto part = ends.rbegin(); part != ends.rend(); ++part) {
        *part = end;
        end -= partWidth_;
    }
    SendMessageW(bar_.get(), SB_SETPARTS, ends.size(), reinterpret_cast<LPARAM>(ends.data()));
    return bounds.bottom - bounds.top;
}

std::wstring CountText(long count, const std::wstring& noun) {
    return std::to_wstring(count) + L" " + noun + (count == 1 ? L"" : L"s");
}

}  // namespace explorer
