#include "bare_rows.h"

#include <commctrl.h>

#include "bare_calls.h"

namespace bench {

namespace {

/// Runs `row(key)` and `cell(column, text)` for all texts of a meta node's nodes.
template <class Row, class Cell>
void EachText(IDispatch& metaNode, std::span<const wchar_t* const> properties, Row&& row,
              Cell&& cell) {
    const std::vector<Name> names(properties.begin(), properties.end());
    EachElement(metaNode, [&](const hosting::Ref<IDispatch>& node) {
        _variant_t key = Read(*node.Get(), L"identifier");
        row(key);
        for (std::size_t i = 0; i < names.size(); ++i) {
            VARIANT argument = names[i].Argument();
            _variant_t text = Read(*node.Get(), L"GetProperty", &argument);
            if (V_VT(&text) != VT_BSTR) text.ChangeType(VT_BSTR);
            cell(static_cast<int>(i), text);
        }
    });
}

}  // namespace

void BareRows::Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties) {
    // The platform's variants copy where others move.
    const auto keep = [&](_variant_t& text) {
        texts_.emplace_back();
        std::swap<VARIANT>(texts_.back(), text);
    };
    EachText(metaNode, properties, keep, [&](int, _variant_t& text) { keep(text); });
}

SystemList::SystemList(int columns)
    : parent_(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr,
                              nullptr, nullptr)),
      list_(CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 300,
                            200, parent_, nullptr, nullptr, nullptr)) {
    for (int i = 0; i < columns; ++i) {
        LVCOLUMNW column = {};
        column.mask = LVCF_WIDTH | LVCF_SUBITEM;
        column.cx = 80;
        column.iSubItem = i;
        SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&column));
    }
}

void SystemList::Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties) {
    SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
    LVITEMW item = {};
    item.iItem = -1;
    EachText(
        metaNode, properties, [&](const _variant_t&) { ++item.iItem; },
        [&](int column, const _variant_t& text) {
            item.mask = LVIF_TEXT;
            item.iSubItem = column;
            item.pszText = V_BSTR(&text);
            SendMessageW(list_, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW,
                         column == 0 ? 0 : static_cast<WPARAM>(item.iItem),
                         reinterpret_cast<LPARAM>(&item));
        });
    SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
}

void SystemList::Clear() {
    SendMessageW(list_, LVM_DELETEALLITEMS, 0, 0);
}

}  // namespace bench
