#include "bare_rows.h"

#include <commctrl.h>

#include <vector>

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
            _variant_t text = ReadText(*node.Get(), names[i].Argument());
            cell(static_cast<int>(i), text);
        }
    });
}

}  // namespace

void BareRows::Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties) {
    EachText(
        metaNode, properties, [&](_variant_t& key) { texts_.Keep(key); },
        [&](int, _variant_t& text) { texts_.Keep(text); });
}

SystemList::SystemList(int columns) : list_(WC_LISTVIEWW, LVS_REPORT) {
    for (int i = 0; i < columns; ++i) {
        LVCOLUMNW column = {};
        column.mask = LVCF_WIDTH | LVCF_SUBITEM;
        column.cx = 80;
        column.iSubItem = i;
        list_.Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

void SystemList::Fill(IDispatch& metaNode, std::span<const wchar_t* const> properties) {
    list_.Send(WM_SETREDRAW, FALSE, 0);
    LVITEMW item = {};
    item.iItem = -1;
    EachText(
        metaNode, properties, [&](const _variant_t&) { ++item.iItem; },
        [&](int column, const _variant_t& text) {
            item.mask = LVIF_TEXT;
            item.iSubItem = column;
            item.pszText = V_BSTR(&text);
            list_.Send(column == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW,
                       column == 0 ? 0 : static_cast<WPARAM>(item.iItem),
                       reinterpret_cast<LPARAM>(&item));
        });
    list_.Send(WM_SETREDRAW, TRUE, 0);
}

void SystemList::Clear() {
    list_.Send(LVM_DELETEALLITEMS, 0, 0);
}

}  // namespace bench
