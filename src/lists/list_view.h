#pragma once

#include <OrvaneControls.h>

#include <memory>
#include <optional>

#include "lists/list_item.h"
#include "lists/object_list.h"
#include "ole/control/control.h"
#include "ole/drag/drag_and_drop.h"
#include "widgets/image_lists.h"
#include "widgets/row_list.h"

namespace lists {

/// `OrvaneControls.ListView`: a list of repository objects with columns and icons. Its members are
/// documented in the type library.
class ListView final : public ole::ControlObject<_ListView, CLSID_ListView, DIID___ListView>,
                       private RowTable {
public:
    ListView();
    ~ListView() override;

    STDMETHODIMP AddColumn(BSTR* name, BSTR* Property, BSTR* width, VARIANT* result) override;
    STDMETHODIMP AddLinkColumn(BSTR* name, BSTR* Property, LinkObjectT* FromObject, long* width,
                               VARIANT* result) override;
    STDMETHODIMP AddIcon(BSTR* name, BSTR* smallIconPath, BSTR* iconPath, VARIANT* result) override;
    STDMETHODIMP AddIconPicture(BSTR* name, IDispatch** smallIcon, VARIANT* icon,
                                VARIANT* result) override;
    STDMETHODIMP AddIconCondition(BSTR* name, BSTR* Property, BSTR* Value, LinkObjectT* FromObject,
                                  VARIANT* result) override;
    STDMETHODIMP get_View(short* value) override;
    STDMETHODIMP put_View(short* value) override;
    STDMETHODIMP get_Checkboxes(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Checkboxes(VARIANT_BOOL* value) override;
    STDMETHODIMP put_HideColumnHeaders(VARIANT_BOOL* value) override;
    STDMETHODIMP SetList_MetaNodes(IDispatch** rep, VARIANT_BOOL* all, VARIANT* result) override;
    STDMETHODIMP SetList_MetaLinks(IDispatch** rep, VARIANT_BOOL* all, VARIANT* result) override;
    STDMETHODIMP SetList_Incoming_MetaLinks(IDispatch** metaNode, VARIANT_BOOL* all,
                                            VARIANT* result) override;
    STDMETHODIMP SetList_Outgoing_MetaLinks(IDispatch** metaNode, VARIANT_BOOL* all,
                                            VARIANT* result) override;
    STDMETHODIMP SetList_MetaAttributes(IDispatch** metaNode, VARIANT_BOOL* all,
                                        VARIANT* result) override;
    STDMETHODIMP SetList_Nodes(IDispatch** mn, VARIANT_BOOL* all, VARIANT* result) override;
    STDMETHODIMP SetList_Links(IDispatch** ml, VARIANT_BOOL* all, VARIANT* result) override;
    STDMETHODIMP SetList_Outgoing(IDispatch** ob, IDispatch** ml, VARIANT_BOOL* all,
                                  VARIANT* result) override;
    STDMETHODIMP SetList_Incoming(IDispatch** ob, IDispatch** ml, VARIANT_BOOL* all,
                                  VARIANT* result) override;
    STDMETHODIMP AddMetaNode(IDispatch** mn, VARIANT* result) override;
    STDMETHODIMP AddNode(IDispatch** n, VARIANT* result) override;
    STDMETHODIMP AddLink(IDispatch** l, VARIANT* result) override;
    STDMETHODIMP AddEntry(IDispatch** ob, VARIANT* result) override;
    STDMETHODIMP DeleteEntry(IDispatch** ob, VARIANT* result) override;
    STDMETHODIMP UpdateEntry(IDispatch** ob, VARIANT* result) override;
    STDMETHODIMP Clear() override;
    STDMETHODIMP Refresh() override;
    STDMETHODIMP SetBackGroundColor(long* Color, VARIANT* result) override;
    STDMETHODIMP Create() override;
    STDMETHODIMP Destroy() override;
    STDMETHODIMP get_selection(IDispatch** object) override;
    STDMETHODIMP put_selection(IDispatch** object) override;
    STDMETHODIMP putref_selection(IDispatch** object) override;
    STDMETHODIMP GetItems(_Collection** objects) override;
    STDMETHODIMP GetSelectedItems(_Collection** objects) override;
    STDMETHODIMP GetNonSelectedItems(_Collection** objects) override;
    STDMETHODIMP GetCheckedItems(_Collection** objects) override;
    STDMETHODIMP GetNonCheckedItems(_Collection** objects) override;
    STDMETHODIMP CheckAll(VARIANT* result) override;
    STDMETHODIMP UncheckAll(VARIANT* result) override;
    STDMETHODIMP SelectAll(VARIANT* result) override;
    STDMETHODIMP DeselectAll(VARIANT* result) override;
    STDMETHODIMP get_Mode(Mode* value) override;
    STDMETHODIMP get_dragAllowed(VARIANT_BOOL* value) override;
    STDMETHODIMP put_dragAllowed(VARIANT_BOOL* value) override;
    STDMETHODIMP get_dropAllowed(VARIANT_BOOL* value) override;
    STDMETHODIMP put_dropAllowed(VARIANT_BOOL* value) override;
    STDMETHODIMP get_CallbackObject(IDispatch** object) override;
    STDMETHODIMP put_CallbackObject(IDispatch** object) override;
    STDMETHODIMP putref_CallbackObject(IDispatch** object) override;
    STDMETHODIMP get_Enabled(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Enabled(VARIANT_BOOL* value) override;

    void Draw(HDC context, const RECT& bounds) override;
    bool UsesKey(const MSG& message) override;
    HWND FocusWindow() override;

private:
    void CreateInner(HWND outer) override;
    void Arrange(SIZE size) override;
    void AmbientChanged() override;
    bool OnInnerMessage(UINT message, WPARAM wide, LPARAM large, LRESULT& answer) override;

    widgets::RowPtr AddRow(std::wstring_view key) override;
    widgets::RowPtr FindRow(std::wstring_view key) override;
    void RemoveRow(widgets::Row& row) override;
    void RemoveRows() override;
    void SetTexts(widgets::Row& row, std::size_t firstColumn,
                  std::span<const _variant_t> texts) override;
    void SetImages(widgets::Row& row, int image) override;
    void AddHeader(const _bstr_t& text, double width) override;
    int FindImage(std::wstring_view key) override;
    int FirstImage() override;
    void AttachImages() override;
    ole::Object ItemOf(const widgets::RowPtr& row) override;

    /// The list's window is made when a member first needs it.
    widgets::RowList& List();
    /// Runs a member that adds rows; those that it added are shown however it ends, in their places
    /// once they all have their texts.
    template <class Work>
    HRESULT Fill(Work&& work) noexcept;
    void AddImages(BSTR key, const widgets::Picture& small, const widgets::Picture& large);
    /// The objects of the rows that `isMeant` tells, under the keys of the rows.
    template <class Predicate>
    HRESULT Collect(_Collection** objects, Predicate&& isMeant) noexcept;
    ole::Object ObjectOf(const widgets::RowPtr& row) const;

    void RaiseOfRow(DISPID event, const widgets::RowPtr& row);
    void OnBeginDrag();
    std::optional<ole::DragAndDrop::Subject> SubjectOf(const widgets::RowPtr& row) const;

    widgets::ImageLists images_;
    widgets::RowList rows_;
    ole::DragAndDrop drag_;
    ObjectList objects_;
    std::shared_ptr<RowHome> home_;
    /// How many members that add rows are running, one called by another.
    int filling_ = 0;
    bool imagesAttached_ = false;
    bool dragAllowed_ = false;
    bool dropAllowed_ = false;
    /// What the list itself does: `Create` does not touch it.
    bool drags_ = false;
    bool enabled_ = true;
    std::optional<COLORREF> background_;
};

}  // namespace lists
