#pragma once

#include <OrvaneControls.h>

#include <memory>

#include "ole/automation.h"
#include "widgets/image_lists.h"
#include "widgets/row_list.h"

namespace lists {

/// Where rows live, as long as their control does.
struct RowHome {
    widgets::RowList* list = nullptr;
    widgets::ImageLists* images = nullptr;
};

/// A row as callbacks get it. Its members raise 35601 once the row is gone.
class ListItem final : public ole::Automation<_ListItem, CLSID_ListItem> {
public:
    ListItem(std::shared_ptr<const RowHome> home, widgets::RowPtr row)
        : home_(std::move(home)), row_(std::move(row)) {}

    STDMETHODIMP get_Text(BSTR* value) override;
    STDMETHODIMP put_Text(BSTR value) override;
    STDMETHODIMP get_Key(BSTR* value) override;
    STDMETHODIMP put_Key(BSTR value) override;
    STDMETHODIMP get_SubItems(short Index, BSTR* value) override;
    STDMETHODIMP put_SubItems(short Index, BSTR value) override;
    STDMETHODIMP get_Icon(VARIANT* value) override;
    STDMETHODIMP put_Icon(VARIANT value) override;
    STDMETHODIMP get_SmallIcon(VARIANT* value) override;
    STDMETHODIMP put_SmallIcon(VARIANT value) override;
    STDMETHODIMP get_Checked(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Checked(VARIANT_BOOL value) override;
    STDMETHODIMP get_Selected(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Selected(VARIANT_BOOL value) override;
    STDMETHODIMP get_Ghosted(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Ghosted(VARIANT_BOOL value) override;
    STDMETHODIMP get_Bold(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Bold(VARIANT_BOOL value) override;
    STDMETHODIMP get_ForeColor(long* value) override;
    STDMETHODIMP put_ForeColor(long value) override;
    STDMETHODIMP get_ToolTipText(BSTR* value) override;
    STDMETHODIMP put_ToolTipText(BSTR value) override;
    STDMETHODIMP get_Tag(VARIANT* value) override;
    STDMETHODIMP put_Tag(VARIANT value) override;
    STDMETHODIMP putref_Tag(VARIANT value) override;
    STDMETHODIMP get_Index(long* value) override;
    STDMETHODIMP EnsureVisible(VARIANT_BOOL* scrolled) override;

private:
    /// Runs `work(row, list)`, and shows the row again where it `changes`.
    template <class Work>
    HRESULT Read(Work&& work) noexcept;
    template <class Work>
    HRESULT Change(Work&& work) noexcept;

    widgets::RowList& List() const;
    /// The column of a sub-item. Errors: 35600.
    std::size_t ColumnOf(short index) const;
    int ImageIn(const VARIANT& keyOrPosition) const;
    _variant_t KeyOrPosition(int image) const;

    std::shared_ptr<const RowHome> home_;
    widgets::RowPtr row_;
};

}  // namespace lists
