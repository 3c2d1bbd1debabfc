#include "lists/list_view_fixture.h"

#include "support/inner_window.h"

namespace support {

ListViewTest::ListViewTest() : list(CreateRegistered(L"ListView")) {
    trees->values["Year"] = 1968;
    graphs->values["Year"] = 1736;
    lists->values["Year"] = 2001;
    trees->values["Shelf"] = "A1";
    graphs->values["Shelf"] = "B2";
    lists->values["Shelf"] = "C3";
    first->values["Page"] = 7;
    second->values["Page"] = 12;
    list.Call("Create");
    model.Log().Clear();
}

ListViewTest::~ListViewTest() {
    list.Call("Destroy");
}

HWND ListViewTest::ListOf(const LateBound& control) {
    return InnerWindow(control, WC_LISTVIEWW);
}

HWND ListViewTest::Header() const {
    return reinterpret_cast<HWND>(SendMessageW(List(), LVM_GETHEADER, 0, 0));
}

ListViewTest::Texts ListViewTest::Headers() const {
    Texts texts;
    const auto count = SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        std::wstring text(300, L'\0');
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT;
        column.pszText = text.data();
        column.cchTextMax = static_cast<int>(text.size());
        SendMessageW(List(), LVM_GETCOLUMNW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&column));
        texts.push_back(Utf8(std::wstring_view(text.c_str())));
    }
    return texts;
}

std::vector<int> ListViewTest::Widths() const {
    std::vector<int> widths;
    for (std::size_t i = 0; i < Headers().size(); ++i) {
        widths.push_back(static_cast<int>(SendMessageW(List(), LVM_GETCOLUMNWIDTH, i, 0)));
    }
    return widths;
}

int ListViewTest::RowCount() const {
    return static_cast<int>(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0));
}

std::string ListViewTest::Cell(int row, int column) const {
    std::wstring text(300, L'\0');
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const LRESULT length = SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                                        reinterpret_cast<LPARAM>(&item));
    return Utf8(std::wstring_view(text).substr(0, static_cast<std::size_t>(length)));
}

ListViewTest::Texts ListViewTest::Row(int row) const {
    const auto columns = static_cast<int>(SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0));
    Texts texts = {Cell(row)};
    for (int column = 1; column < columns; ++column) texts.push_back(Cell(row, column));
    return texts;
}

std::vector<ListViewTest::Texts> ListViewTest::Rows() const {
    std::vector<Texts> rows;
    for (int row = 0; row < RowCount(); ++row) rows.push_back(Row(row));
    return rows;
}

ListViewTest::Texts ListViewTest::Column(int column) const {
    Texts texts;
    for (int row = 0; row < RowCount(); ++row) texts.push_back(Cell(row, column));
    return texts;
}

int ListViewTest::Image(int row) const {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    SendMessageW(List(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage == I_IMAGENONE ? -1 : item.iImage;
}

std::vector<int> ListViewTest::Images() const {
    std::vector<int> images;
    for (int row = 0; row < RowCount(); ++row) images.push_back(Image(row));
    return images;
}

UINT ListViewTest::State(int row, UINT mask) const {
    return static_cast<UINT>(
        SendMessageW(List(), LVM_GETITEMSTATE, static_cast<WPARAM>(row), mask));
}

std::vector<int> ListViewTest::SelectedRows() const {
    std::vector<int> rows;
    for (int row = 0; row < RowCount(); ++row) {
        if (IsSelected(row)) rows.push_back(row);
    }
    return rows;
}

void ListViewTest::Select(int row, bool selected) const {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    item.state = selected ? LVIS_SELECTED : 0;
    SendMessageW(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
}

void ListViewTest::FocusOn(int row) const {
    LVITEMW item = {};
    item.stateMask = item.state = LVIS_FOCUSED;
    SendMessageW(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
}

void ListViewTest::ClickHeader(int column) const {
    RECT place = {};
    SendMessageW(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&place));
    const LPARAM middle = MAKELPARAM((place.left + place.right) / 2, 5);
    SendMessageW(Header(), WM_LBUTTONDOWN, MK_LBUTTON, middle);
    SendMessageW(Header(), WM_LBUTTONUP, 0, middle);
}

void ListViewTest::AddColumns(const Texts& properties) const {
    for (const std::string& property : properties) {
        ASSERT_TRUE(list.Call("AddColumn", property, property, "1000"));
    }
}

Ref<IDispatch> ListViewTest::Selection() const {
    return list.Get("selection").Object();
}

std::vector<Value> ListViewTest::Objects(const char* member) const {
    const Outcome collected = list.Call(member);
    EXPECT_TRUE(collected);
    return collected.Ok() ? LateBound(collected.value).Elements() : std::vector<Value>();
}

}  // namespace support
