#include "lists/combo.h"

#include "lists/link_end.h"
#include "ole/color.h"
#include "ole/error.h"

namespace lists {

namespace {

constexpr SIZE newSize = {1935, 315};
constexpr DISPID clickEvent = 1;
constexpr DISPID changeEvent = 2;

}  // namespace

Combo::Combo() : ControlObject(newSize), list_(*this) {
    box_.onPick = [this] { OnClick(); };
    box_.onEdit = [this] { OnChange(); };
    box_.onFocus = [this](bool focused) { FocusChanged(focused); };
}

HRESULT Combo::Create() {
    return Run([&] { list_.Clear(); });
}

HRESULT Combo::Destroy() {
    return Run([&] { list_.Clear(); });
}

HRESULT Combo::Refresh() {
    return Run([&] { list_.Refresh(); });
}

HRESULT Combo::Clear() {
    return Run([&] { list_.Clear(); });
}

HRESULT Combo::get_selection(IDispatch** object) {
    return Run([&] { ole::Give(list_.Selection(), object); });
}

HRESULT Combo::put_selection(IDispatch** object) {
    return Run([&] { list_.Select(*object); });
}

HRESULT Combo::putref_selection(IDispatch** object) {
    return put_selection(object);
}

HRESULT Combo::SetList_MetaNodes(IDispatch** rep, BSTR* viewAttr, VARIANT*) {
    return Run([&] { list_.ListMetaNodes(*rep, *viewAttr); });
}

HRESULT Combo::SetList_MetaLinks(IDispatch** rep, BSTR* viewAttr, VARIANT*) {
    return Run([&] { list_.ListMetaLinks(*rep, *viewAttr); });
}

HRESULT Combo::SetList_MetaProperties(IDispatch** repOb, VARIANT*) {
    return Run([&] { list_.ListMetaProperties(*repOb); });
}

HRESULT Combo::SetList_Nodes(IDispatch** mn, BSTR* viewAttr, VARIANT*) {
    return Run([&] { list_.ListNodes(*mn, *viewAttr); });
}

HRESULT Combo::SetList_Links(IDispatch** ml, BSTR* viewAttr, LinkObjectT* showObject, VARIANT*) {
    return Run([&] { list_.ListLinks(*ml, *viewAttr, NumberIn(showObject)); });
}

HRESULT Combo::SetList_Outgoing(IDispatch** ob, IDispatch** ml, BSTR* viewAttr,
                                LinkObjectT* showObject, VARIANT*) {
    return Run([&] { list_.ListOutgoing(*ob, *ml, *viewAttr, NumberIn(showObject)); });
}

HRESULT Combo::SetList_Incoming(IDispatch** ob, IDispatch** ml, BSTR* viewAttr,
                                LinkObjectT* showObject, VARIANT*) {
    return Run([&] { list_.ListIncoming(*ob, *ml, *viewAttr, NumberIn(showObject)); });
}

HRESULT Combo::SetBackGroundColor(long* Color, VARIANT*) {
    return Run([&] {
        background_ = ole::ToColor(*Color);
        Box().SetColors(Container().ForeColor(), *background_);
    });
}

void Combo::Draw(HDC context, const RECT& bounds) {
    Box().Draw(context, bounds);
}

bool Combo::UsesKey(const MSG& message) {
    return box_.UsesKey(message);
}

HWND Combo::FocusWindow() {
    return Box().Handle();
}

void Combo::CreateInner(HWND outer) {
    box_.Create(outer);
}

SIZE Combo::Fit(SIZE wanted) {
    return {wanted.cx, Box().Height()};
}

void Combo::Arrange(SIZE size) {
    box_.SetWidth(size.cx);
}

void Combo::AmbientChanged() {
    const int dpi = Dpi();
    box_.SetFont(Container().Font(dpi), dpi);
    box_.SetColors(Container().ForeColor(), background_.value_or(GetSysColor(COLOR_WINDOW)));
}

bool Combo::OnInnerMessage(UINT message, WPARAM wide, LPARAM large, LRESULT& answer) {
    const std::optional<LRESULT> answered = box_.OnParentMessage(message, wide, large);
    if (answered) answer = *answered;
    return answered.has_value();
}

void Combo::AddRow(const wchar_t* text) {
    Box().Add(text);
}

void Combo::SetNewestNumber(long number) {
    Box().SetNewestNumber(number);
}

long Combo::Number(int row) {
    return Box().Number(row);
}

int Combo::RowCount() {
    return Box().Count();
}

void Combo::RemoveRows() {
    Box().Clear();
}

int Combo::CurrentRow() {
    return Box().Current();
}

void Combo::SetCurrentRow(int row) {
    Box().SetCurrent(row);
    OnClick();
}

widgets::ComboBox& Combo::Box() {
    OuterWindow();
    return box_;
}

void Combo::OnClick() {
    FireWithKey(clickEvent, list_.ClickKey());
}

void Combo::OnChange() {
    if (list_.ReportsChange()) FireWithKey(changeEvent, list_.ChangeKey());
}

void Combo::FireWithKey(DISPID event, _bstr_t key) {
    BSTR text = key.copy();
    VARIANT argument = {};
    V_VT(&argument) = VT_BSTR | VT_BYREF;
    V_BSTRREF(&argument) = &text;
    Fire(event, &argument, 1);
    _bstr_t(text, false);
}

}  // namespace lists
