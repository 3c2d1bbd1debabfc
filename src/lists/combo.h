#pragma once

#include <OrvaneControls.h>

#include <optional>

#include "lists/combo_list.h"
#include "ole/control/control.h"
#include "widgets/combo_box.h"

namespace lists {

/// `OrvaneControls.Combo`: a drop-down list of repository objects. Its members are documented in
/// the type library.
class Combo final : public ole::ControlObject<_Combo, CLSID_Combo, DIID___Combo>, private RowBox {
public:
    Combo();

    STDMETHODIMP Create() override;
    STDMETHODIMP Destroy() override;
    STDMETHODIMP Refresh() override;
    STDMETHODIMP Clear() override;
    STDMETHODIMP get_selection(IDispatch** object) override;
    STDMETHODIMP put_selection(IDispatch** object) override;
    STDMETHODIMP putref_selection(IDispatch** object) override;
    STDMETHODIMP SetList_MetaNodes(IDispatch** rep, BSTR* viewAttr, VARIANT* result) override;
    STDMETHODIMP SetList_MetaLinks(IDispatch** rep, BSTR* viewAttr, VARIANT* result) override;
    STDMETHODIMP SetList_MetaProperties(IDispatch** repOb, VARIANT* result) override;
    STDMETHODIMP SetList_Nodes(IDispatch** mn, BSTR* viewAttr, VARIANT* result) override;
    STDMETHODIMP SetList_Links(IDispatch** ml, BSTR* viewAttr, LinkObjectT* showObject,
                               VARIANT* result) override;
    STDMETHODIMP SetList_Outgoing(IDispatch** ob, IDispatch** ml, BSTR* viewAttr,
                                  LinkObjectT* showObject, VARIANT* result) override;
    STDMETHODIMP SetList_Incoming(IDispatch** ob, IDispatch** ml, BSTR* viewAttr,
                                  LinkObjectT* showObject, VARIANT* result) override;
    STDMETHODIMP SetBackGroundColor(long* Color, VARIANT* result) override;

    void Draw(HDC context, const RECT& bounds) override;
    bool UsesKey(const MSG& message) override;
    HWND FocusWindow() override;

private:
    void CreateInner(HWND outer) override;
    SIZE Fit(SIZE wanted) override;
    void Arrange(SIZE size) override;
    void AmbientChanged() override;
    bool OnInnerMessage(UINT message, WPARAM wide, LPARAM large, LRESULT& answer) override;

    void AddRow(const wchar_t* text) override;
    void SetNewestNumber(long number) override;
    long Number(int row) override;
    int RowCount() override;
    void RemoveRows() override;
    int CurrentRow() override;
    void SetCurrentRow(int row) override;

    widgets::ComboBox& Box();
    void OnClick();
    void OnChange();
    void FireWithKey(DISPID event, _bstr_t key);

    widgets::ComboBox box_;
    ComboList list_;
    std::optional<COLORREF> background_;
};

}  // namespace lists
