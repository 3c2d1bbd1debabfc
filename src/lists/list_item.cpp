#include "lists/list_item.h"

#include "ole/color.h"
#include "ole/error.h"
#include "ole/text.h"

namespace lists {

template <class Work>
HRESULT ListItem::Read(Work&& work) noexcept {
    return Run([&] {
        List();
        work(*row_);
    });
}

template <class Work>
HRESULT ListItem::Change(Work&& work) noexcept {
    return Run([&] {
        List();
        work(*row_);
        List().Redraw(*row_);
    });
}

widgets::RowList& ListItem::List() const {
    if (home_->list == nullptr || !widgets::RowStore::Holds(*row_)) {
        ole::Throw(ole::Number::elementNotFound);
    }
    return *home_->list;
}

HRESULT ListItem::get_Text(BSTR* value) {
    return Read([&](widgets::Row& row) { *value = ole::ToBstr(row.Text(0)).copy(); });
}

HRESULT ListItem::put_Text(BSTR value) {
    return Change([&](widgets::Row& row) {
        const std::wstring_view text = ole::ViewOf(value);
        row.SetTexts(0, {&text, 1});
    });
}

HRESULT ListItem::get_Key(BSTR* value) {
    return Read([&](widgets::Row& row) { *value = ole::ToBstr(row.Key()).copy(); });
}

HRESULT ListItem::put_Key(BSTR value) {
    return Change([&](widgets::Row& row) {
        if (!List().Rename(row, ole::ViewOf(value))) ole::Throw(ole::Number::keyNotUnique);
    });
}

HRESULT ListItem::get_SubItems(short Index, BSTR* value) {
    return Read([&](widgets::Row& row) { *value = ole::ToBstr(row.Text(ColumnOf(Index))).copy(); });
}

HRESULT ListItem::put_SubItems(short Index, BSTR value) {
    return Change([&](widgets::Row& row) {
        const std::wstring_view text = ole::ViewOf(value);
        row.SetTexts(ColumnOf(Index), {&text, 1});
    });
}

HRESULT ListItem::get_Icon(VARIANT* value) {
    return Read([&](widgets::Row& row) { *value = KeyOrPosition(row.largeImage).Detach(); });
}

HRESULT ListItem::put_Icon(VARIANT value) {
    return Change([&](widgets::Row& row) { row.largeImage = ImageIn(value); });
}

HRESULT ListItem::get_SmallIcon(VARIANT* value) {
    return Read([&](widgets::Row& row) { *value = KeyOrPosition(row.smallImage).Detach(); });
}

HRESULT ListItem::put_SmallIcon(VARIANT value) {
    return Change([&](widgets::Row& row) { row.smallImage = ImageIn(value); });
}

HRESULT ListItem::get_Checked(VARIANT_BOOL* value) {
    return Read([&](widgets::Row& row) { *value = ole::ToFlag(row.checked); });
}

HRESULT ListItem::put_Checked(VARIANT_BOOL value) {
    return Change([&](widgets::Row& row) { row.checked = value != VARIANT_FALSE; });
}

HRESULT ListItem::get_Selected(VARIANT_BOOL* value) {
    return Read([&](widgets::Row& row) { *value = ole::ToFlag(List().IsSelected(row)); });
}

HRESULT ListItem::put_Selected(VARIANT_BOOL value) {
    return Read([&](widgets::Row& row) { List().SetSelected(row, value != VARIANT_FALSE); });
}

HRESULT ListItem::get_Ghosted(VARIANT_BOOL* value) {
    return Read([&](widgets::Row& row) {
        *value = ole::ToFlag(row.MaybeMore() != nullptr && row.MaybeMore()->ghosted);
    });
}

HRESULT ListItem::put_Ghosted(VARIANT_BOOL value) {
    return Change([&](widgets::Row& row) { row.More().ghosted = value != VARIANT_FALSE; });
}

HRESULT ListItem::get_Bold(VARIANT_BOOL* value) {
    return Read([&](widgets::Row& row) {
        *value = ole::ToFlag(row.MaybeMore() != nullptr && row.MaybeMore()->bold);
    });
}

HRESULT ListItem::put_Bold(VARIANT_BOOL value) {
    return Change([&](widgets::Row& row) { row.More().bold = value != VARIANT_FALSE; });
}

HRESULT ListItem::get_ForeColor(long* value) {
    return Read([&](widgets::Row& row) {
        const auto* more = row.MaybeMore();
        *value =
            static_cast<long>(more != nullptr && more->color ? *more->color : List().TextColor());
    });
}

HRESULT ListItem::put_ForeColor(long value) {
    return Change([&](widgets::Row& row) { row.More().color = ole::ToColor(value); });
}

HRESULT ListItem::get_ToolTipText(BSTR* value) {
    return Read([&](widgets::Row& row) {
        const auto* more = row.MaybeMore();
        const std::wstring_view text = more != nullptr ? more->toolTip : std::wstring_view();
        *value = ole::ToBstr(text).copy();
    });
}

HRESULT ListItem::put_ToolTipText(BSTR value) {
    return Read([&](widgets::Row& row) { row.More().toolTip = ole::ViewOf(value); });
}

HRESULT ListItem::get_Tag(VARIANT* value) {
    return Read([&](widgets::Row& row) {
        const auto* more = row.MaybeMore();
        const auto* tag = more != nullptr ? std::any_cast<_variant_t>(&more->tag) : nullptr;
        _variant_t copy;
        if (tag != nullptr) copy = *tag;
        *value = copy.Detach();
    });
}

HRESULT ListItem::put_Tag(VARIANT value) {
    return Read([&](widgets::Row& row) {
        // What goes may call back: it finds the new value.
        const std::any before = std::exchange(row.More().tag, _variant_t(value));
    });
}

HRESULT ListItem::putref_Tag(VARIANT value) {
    return put_Tag(value);
}

HRESULT ListItem::get_Index(long* value) {
    return Read(
        [&](widgets::Row& row) { *value = static_cast<long>(List().Rows().PositionOf(row)) + 1; });
}

HRESULT ListItem::EnsureVisible(VARIANT_BOOL* scrolled) {
    return Read([&](widgets::Row& row) { *scrolled = ole::ToFlag(List().EnsureVisible(row)); });
}

std::size_t ListItem::ColumnOf(short index) const {
    if (index < 1 || index >= List().ColumnCount()) ole::Throw(ole::Number::indexOutOfBounds);
    return static_cast<std::size_t>(index);
}

int ListItem::ImageIn(const VARIANT& keyOrPosition) const {
    if (V_VT(&keyOrPosition) == VT_EMPTY) return widgets::Row::noImage;
    if (V_VT(&keyOrPosition) == VT_BSTR) {
        return home_->images->FindOrNone(ole::ViewOf(V_BSTR(&keyOrPosition)));
    }
    _variant_t position;
    ole::Check(ole::ChangeType(position, keyOrPosition, VT_I4));
    if (V_I4(&position) == 0) return widgets::Row::noImage;
    if (V_I4(&position) < 1 || V_I4(&position) > home_->images->Count()) {
        ole::Throw(ole::Number::indexOutOfBounds);
    }
    return static_cast<int>(V_I4(&position)) - 1;
}

_variant_t ListItem::KeyOrPosition(int image) const {
    if (image < 0 || image >= home_->images->Count()) return {};
    const std::wstring& key = home_->images->Key(image);
    if (key.empty()) return _variant_t(static_cast<long>(image) + 1);
    _variant_t text;
    V_VT(&text) = VT_BSTR;
    V_BSTR(&text) = ole::ToBstr(std::wstring_view(key)).Detach();
    return text;
}

}  // namespace lists
