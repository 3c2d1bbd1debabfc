#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "ole/handles.h"
#include "widgets/image_lists.h"
#include "widgets/row_sorting.h"
#include "widgets/row_store.h"

namespace widgets {

/// The system's list view over rows that are kept here; the window asks for what it shows, and
/// tells which rows are selected and which one has the focus.
class RowList {
public:
    enum class View { icons = 0, smallIcons = 1, list = 2, report = 3 };

    /// What the user does. A row that is clicked on its check box is checked and not reported.
    std::function<void(const RowPtr&)> onClick;
    std::function<void()> onRightClick;
    std::function<void()> onDoubleClick;
    std::function<void()> onBeginDrag;
    std::function<void(bool focused)> onFocus;

    RowList() = default;
    ~RowList();
    RowList(const RowList&) = delete;
    RowList& operator=(const RowList&) = delete;

    /// Makes the window, or makes it again where it went with its parent.
    void Create(HWND parent);
    HWND Handle() const { return handle_; }

    // Columns. Rows show their first text in the first column, and so on.

    void AddColumn(const std::wstring& text, int width);
    void RemoveColumns();
    int ColumnCount() const { return static_cast<int>(columns_.size()); }

    // Rows. The window learns of added rows with `Sync`; where the list is sorted they stand at the
    // end until `PlaceAdded`, because they may not have their texts yet.

    const RowStore& Rows() const { return rows_; }
    RowPtr Add(std::wstring_view key) { return rows_.Add(key); }
    bool Rename(Row& row, std::wstring_view key) { return rows_.Rename(row, key); }
    void Remove(Row& row);
    void Clear();
    /// Rows that were added since the last time are shown.
    void Sync();
    /// They are shown, each in its place where the list is sorted.
    void PlaceAdded();
    /// A row looks different now.
    void Redraw(const Row& row) const;
    void RedrawAll() const { InvalidateRect(handle_, nullptr, FALSE); }

    void Check(Row& row, bool checked);
    void CheckAll(bool checked);

    bool IsSelected(const Row& row) const { return selected_.contains(&row); }
    void SetSelected(const Row& row, bool selected);
    void SelectAll(bool selected);
    /// The row with the focus when it is selected, else the first selected one, else null.
    RowPtr Current();
    /// Selects one row alone, gives it the focus and scrolls to it.
    void MakeCurrent(const Row& row);
    /// Whether it had to scroll.
    bool EnsureVisible(const Row& row);
    /// The row under a point of the screen, or null.
    RowPtr HitTest(POINT screen);

    // Sorting by a column, as a click on its header does it.

    void ClickColumn(int column);
    void ForgetSorting();

    // Looks.

    View GetView() const { return view_; }
    void SetView(View view);
    bool HasCheckBoxes() const { return checkBoxes_; }
    void SetCheckBoxes(bool shown);
    void HideHeaders(bool hidden);
    COLORREF TextColor() const { return textColor_; }
    void SetColors(COLORREF text, COLORREF background);
    void SetFont(HFONT font);
    void SetImages(const ImageLists* images);
    void SetSize(SIZE size);
    /// Rows of a disabled list are grey.
    void Enable(bool enabled);

    std::optional<LRESULT> OnParentMessage(UINT message, WPARAM wide, LPARAM large);
    bool UsesKey(const MSG& message) const;
    /// Draws the list as it looks without a window.
    void Draw(HDC context, const RECT& bounds);

private:
    /// Gives the selection back to the same rows when their positions have changed.
    class SelectionKeeper;

    /// Forgets the window, which is about to go; answers it.
    HWND LeaveWindow();
    LRESULT Send(UINT message, WPARAM wide = 0, LPARAM large = 0) const {
        return SendMessageW(handle_, message, wide, large);
    }
    int PositionOf(const Row& row) const { return static_cast<int>(rows_.PositionOf(row)); }
    bool IsAt(int position) const {
        return position >= 0 && static_cast<std::size_t>(position) < rows_.Size();
    }
    RowPtr RowAt(int position) const;
    void SetState(int position, UINT state, UINT mask) const;
    /// Takes selection and focus off all rows but one.
    void DeselectAllBut(const Row* kept);
    struct Column {
        std::wstring text;
        int width;
    };
    void InsertColumn(int position, const Column& column) const;
    void ShowSortArrow() const;

    std::optional<LRESULT> OnNotify(NMHDR& header);
    void OnStateChanged(int position, UINT before, UINT now);
    void FillDisplayInfo(LVITEMW& item) const;
    std::wstring TitleOf(int column) const;
    LRESULT FindText(const LVFINDINFOW& wanted, int start) const;
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw);
    void OnClicked(const NMITEMACTIVATE& activation);
    void OnDoubleClicked(const NMITEMACTIVATE& activation);
    bool IsOnCheckBox(POINT client) const;
    void OnKey(WORD key);

    HWND handle_ = nullptr;
    RowStore rows_;
    /// How many rows the window knows.
    std::size_t shown_ = 0;
    std::unordered_set<const Row*> selected_;
    const Row* focused_ = nullptr;
    /// While positions change, what the window says of them is not heard.
    bool moving_ = false;
    /// How many rows, the first ones, stand in their places.
    std::size_t placed_ = 0;
    std::vector<Column> columns_;
    const ImageLists* images_ = nullptr;
    View view_ = View::report;
    bool checkBoxes_ = false;
    bool headersHidden_ = false;
    std::optional<RowOrder> order_;
    bool descending_ = false;
    HFONT font_ = nullptr;
    ole::FontHandle boldFont_;
    COLORREF textColor_ = 0;
    COLORREF background_ = 0xFFFFFF;
};

}  // namespace widgets
