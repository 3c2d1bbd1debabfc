#include "widgets/combo_box.h"

#include <comdef.h>
#include <commctrl.h>

#include <algorithm>

#include "ole/error.h"
#include "ole/server.h"
#include "ole/theme.h"
#include "widgets/keys.h"
#include "widgets/raised.h"

namespace widgets {

namespace {

constexpr int rowsShown = 8;

}  // namespace

ComboBox::~ComboBox() {
    if (handle_ != nullptr) DestroyWindow(handle_);
}

void ComboBox::Create(HWND parent) {
    const ole::ThemedScope themed;
    handle_ = CreateWindowExW(
        0, WC_COMBOBOXW, L"",
        WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWN | CBS_AUTOHSCROLL, 0, 0, 0,
        0, parent, nullptr, ole::ModuleHandle(), nullptr);
    if (handle_ == nullptr) ole::Check(HRESULT_FROM_WIN32(GetLastError()));
    Send(CB_SETMINVISIBLE, rowsShown);
}

void ComboBox::Add(const wchar_t* text) {
    const LRESULT row = Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    if (row < 0) ole::Check(E_OUTOFMEMORY);
    newest_ = static_cast<int>(row);
}

void ComboBox::SetNewestNumber(long number) {
    if (newest_ >= 0) Send(CB_SETITEMDATA, static_cast<WPARAM>(newest_), number);
}

long ComboBox::Number(int row) const {
    return static_cast<long>(Send(CB_GETITEMDATA, static_cast<WPARAM>(row)));
}

int ComboBox::Count() const {
    return static_cast<int>(Send(CB_GETCOUNT));
}

void ComboBox::Clear() {
    const Raised changing(changing_);
    Send(CB_RESETCONTENT);
    current_ = -1;
    newest_ = -1;
}

void ComboBox::SetCurrent(int row) {
    const Raised changing(changing_);
    Send(CB_SETCURSEL, static_cast<WPARAM>(row));
    current_ = row;
    ShowNoSelection();
}

std::wstring ComboBox::Text() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(handle_)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(handle_, text.data(), static_cast<int>(text.size()))));
    return text;
}

void ComboBox::SetFont(HFONT font, int dpi) {
    font_ = font;
    dpi_ = dpi;
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void ComboBox::SetColors(COLORREF text, COLORREF background) {
    textColor_ = text;
    background_ = background;
    backgroundBrush_ = ole::Brush(CreateSolidBrush(background));
    InvalidateRect(handle_, nullptr, TRUE);
}

int ComboBox::Height() const {
    RECT bounds = {};
    GetWindowRect(handle_, &bounds);
    return bounds.bottom - bounds.top;
}

void ComboBox::SetWidth(int width) {
    // The height that is set here is that of the box with its list open.
    const int rowHeight = static_cast<int>(Send(CB_GETITEMHEIGHT));
    SetWindowPos(handle_, nullptr, 0, 0, width, Height() + rowHeight * rowsShown + 2,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    ShowNoSelection();
}

void ComboBox::ShowNoSelection() {
    if (GetFocus() != handle_ && !IsChild(handle_, GetFocus())) Send(CB_SETEDITSEL, 0, 0);
}

std::optional<LRESULT> ComboBox::OnParentMessage(UINT message, WPARAM wide, LPARAM large) {
    switch (message) {
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORSTATIC: {
            const HDC context = reinterpret_cast<HDC>(wide);
            SetTextColor(context, textColor_);
            SetBkColor(context, background_);
            return reinterpret_cast<LRESULT>(backgroundBrush_.Get());
        }
        case WM_COMMAND:
            break;
        case WM_DESTROY:
            // The parent takes its children along.
            handle_ = nullptr;
            current_ = newest_ = -1;
            return std::nullopt;
        default:
            return std::nullopt;
    }
    if (reinterpret_cast<HWND>(large) != handle_) return std::nullopt;
    switch (HIWORD(wide)) {
        case CBN_SELCHANGE:
            current_ = static_cast<int>(Send(CB_GETCURSEL));
            if (onPick) onPick();
            return 0;
        case CBN_EDITCHANGE:
            if (!changing_) OnEdited();
            return 0;
        case CBN_SETFOCUS:
        case CBN_KILLFOCUS:
            ShowNoSelection();
            if (onFocus) onFocus(HIWORD(wide) == CBN_SETFOCUS);
            return 0;
        default:
            return std::nullopt;
    }
}

void ComboBox::OnEdited() {
    const std::wstring text = Text();
    current_ = -1;
    int row = -1;
    const auto find = [&](int after) {
        return static_cast<int>(Send(CB_FINDSTRINGEXACT, static_cast<WPARAM>(after),
                                     reinterpret_cast<LPARAM>(text.c_str())));
    };
    // The system's search takes no notice of case and starts over at the end.
    for (int next = find(-1); next > row; next = find(next)) {
        row = next;
        std::wstring found(
            static_cast<std::size_t>(Send(CB_GETLBTEXTLEN, static_cast<WPARAM>(row))), L'\0');
        Send(CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(found.data()));
        if (found == text) {
            current_ = row;
            break;
        }
    }
    if (onEdit) onEdit();
}

bool ComboBox::UsesKey(const MSG& message) const {
    if (message.message != WM_KEYDOWN && message.message != WM_CHAR) {
        // Alt with an arrow opens and closes the list.
        return message.message == WM_SYSKEYDOWN &&
               (message.wParam == VK_DOWN || message.wParam == VK_UP);
    }
    if (IsNavigationKey(message.wParam)) return message.message == WM_KEYDOWN;
    switch (message.wParam) {
        case VK_F4:
            return message.message == WM_KEYDOWN;
        case VK_RETURN:
        case VK_ESCAPE:
            return Send(CB_GETDROPPEDSTATE) != 0;
        default:
            return false;
    }
}

void ComboBox::Draw(HDC context, const RECT& bounds) const {
    RECT box = bounds;
    FillRect(context, &box, backgroundBrush_.Get());
    DrawEdge(context, &box, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    RECT button = box;
    button.left = std::max(box.left, box.right - MulDiv(16, dpi_, 96));
    DrawFrameControl(context, &button, DFC_SCROLL, DFCS_SCROLLCOMBOBOX);
    const ole::Selected font(context, font_);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, textColor_);
    RECT text = {box.left + 2, box.top, button.left, box.bottom};
    const std::wstring shown = Text();
    DrawTextW(context, shown.c_str(), static_cast<int>(shown.size()), &text,
              DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX);
}

}  // namespace widgets
