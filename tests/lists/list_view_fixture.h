#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_repository.h"
#include "support/late_bound.h"
#include "support/registered.h"

namespace support {

/// A `ListView` made by its programmatic identifier, without a container, a small library of books
/// to fill it with, and a reader of the system's list inside, which sees what any program sees that
/// reads the screen for its user.
class ListViewTest : public testing::Test {
protected:
    using Texts = std::vector<std::string>;

    ListViewTest();
    ~ListViewTest() override;

    /// The system's list in a list view.
    [[nodiscard]] static HWND ListOf(const LateBound& control);
    [[nodiscard]] HWND List() const { return ListOf(list); }
    [[nodiscard]] HWND Header() const;

    [[nodiscard]] Texts Headers() const;
    /// In pixels.
    [[nodiscard]] std::vector<int> Widths() const;
    [[nodiscard]] int RowCount() const;
    [[nodiscard]] std::string Cell(int row, int column = 0) const;
    /// The texts of a row, one for each column; of a list without columns the first.
    [[nodiscard]] Texts Row(int row) const;
    [[nodiscard]] std::vector<Texts> Rows() const;
    /// The texts of a column of all rows.
    [[nodiscard]] Texts Column(int column = 0) const;
    /// The position of a row's image, from 0; -1 for none.
    [[nodiscard]] int Image(int row) const;
    [[nodiscard]] std::vector<int> Images() const;
    [[nodiscard]] UINT State(int row, UINT mask) const;
    [[nodiscard]] bool IsSelected(int row) const { return State(row, LVIS_SELECTED) != 0; }
    [[nodiscard]] std::vector<int> SelectedRows() const;
    /// 0 for a row without a check box, 1 for an empty one, 2 for a checked one.
    [[nodiscard]] UINT CheckBox(int row) const { return State(row, LVIS_STATEIMAGEMASK) >> 12; }

    /// Selects a row besides those that are, or takes its selection away; as keys do.
    void Select(int row, bool selected = true) const;
    /// Gives a row the focus without selecting it.
    void FocusOn(int row) const;
    /// Presses a column's header.
    void ClickHeader(int column) const;

    /// Adds columns that show properties.
    void AddColumns(const Texts& properties) const;
    /// The object of the selected row, null without one.
    [[nodiscard]] Ref<IDispatch> Selection() const;
    /// What a member answers that makes a collection.
    [[nodiscard]] std::vector<Value> Objects(const char* member) const;

    FakeRepository model;
    FakeMetaNode* book = model.MetaNode("Book", "what is read");
    FakeMetaNode* person = model.MetaNode("Person", "who reads");
    FakeMetaLink* cites = model.MetaLink("cites", book, book);
    FakeMetaLink* wrote = model.MetaLink("wrote", person, book);
    FakeMetaProperty* year = model.MetaProperty(book, "Year", "Long", "of printing");
    FakeMetaProperty* shelf = model.MetaProperty(book, "Shelf");
    FakeMetaProperty* page = model.MetaProperty(cites, "Page", "Long");
    FakeNode* trees = model.Node(book, "b1", "On Trees");
    FakeNode* graphs = model.Node(book, "b2", "On Graphs");
    FakeNode* lists = model.Node(book, "b3", "On Lists");
    FakeLink* first = model.Link(cites, trees, graphs, "c1", "builds on");
    FakeLink* second = model.Link(cites, trees, lists, "c2", "mentions");
    LateBound list;
};

}  // namespace support
