#include "lists/combo_fixture.h"

#include <commctrl.h>

#include "support/inner_window.h"
#include "support/registered.h"

namespace support {

ComboTest::ComboTest() : combo(CreateRegistered(L"Combo")) {
    combo.Call("Create");
}

ComboTest::~ComboTest() {
    combo.Call("Destroy");
}

HWND ComboTest::Box() const {
    return InnerWindow(combo, WC_COMBOBOXW);
}

ComboTest::Texts ComboTest::Rows() const {
    Texts rows;
    const HWND box = Box();
    const LRESULT count = SendMessageW(box, CB_GETCOUNT, 0, 0);
    for (LRESULT row = 0; row < count; ++row) {
        const auto index = static_cast<WPARAM>(row);
        std::wstring text(static_cast<std::size_t>(SendMessageW(box, CB_GETLBTEXTLEN, index, 0)),
                          L'\0');
        SendMessageW(box, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
        rows.push_back(Utf8(text));
    }
    return rows;
}

std::vector<long> ComboTest::Numbers() const {
    std::vector<long> numbers;
    const HWND box = Box();
    const LRESULT count = SendMessageW(box, CB_GETCOUNT, 0, 0);
    for (LRESULT row = 0; row < count; ++row) {
        numbers.push_back(
            static_cast<long>(SendMessageW(box, CB_GETITEMDATA, static_cast<WPARAM>(row), 0)));
    }
    return numbers;
}

int ComboTest::CurrentRow() const {
    return static_cast<int>(SendMessageW(Box(), CB_GETCURSEL, 0, 0));
}

void ComboTest::Pick(int row) const {
    const HWND box = Box();
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(row - 1), 0);
    SendMessageW(box, WM_KEYDOWN, VK_DOWN, 0);
    SendMessageW(box, WM_KEYUP, VK_DOWN, 0);
}

void ComboTest::Type(const std::string& text) const {
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    GetComboBoxInfo(Box(), &info);
    SendMessageW(info.hwndItem, EM_SETSEL, 0, -1);
    SendMessageW(info.hwndItem, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(Wide(text).c_str()));
}

Ref<IDispatch> ComboTest::Selection() const {
    return combo.Get("selection").Object();
}

}  // namespace support
