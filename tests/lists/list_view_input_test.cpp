#include <algorithm>

#include "lists/list_view_input_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using ListViewInput = ListViewInputTest;

TEST_F(ListViewInput, AClickOnARowSelectsItAndRaisesClickWithItsKey) {
    Click(OnRow(1));
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b2\")"));
    EXPECT_EQ(Selection().Get(), graphs);
    EXPECT_EQ(form.Active(), &hosted);
}

TEST_F(ListViewInput, AClickOnASubItemIsOneOnItsRow) {
    const POINT text = OnRow(2);
    Click({text.x + 120, text.y});
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b3\")"));
    EXPECT_THAT(SelectedRows(), ElementsAre(2));
}

TEST_F(ListViewInput, AClickBelowTheRowsRaisesNothingAndDeselects) {
    Click(OnRow(1));
    events.Take();
    Click(BelowRows(List()));
    EXPECT_THAT(events.Take(), IsEmpty());
    EXPECT_THAT(SelectedRows(), IsEmpty());
}

TEST_F(ListViewInput, ADoubleClickRaisesClickAndDblClick) {
    Input input;
    input.MoveTo(List(), OnRow(0)).DoubleClick();
    ASSERT_TRUE(Play(input));
    const auto raised = events.Take();
    ASSERT_FALSE(raised.empty());
    EXPECT_EQ(raised.front(), "Click(\"b1\")");
    EXPECT_EQ(std::count(raised.begin(), raised.end(), "DblClick(\"b1\")"), 1);
}

TEST_F(ListViewInput, ADoubleClickWithoutASelectedRowRaisesNoDblClick) {
    Input input;
    input.MoveTo(List(), BelowRows(List())).DoubleClick();
    ASSERT_TRUE(Play(input));
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ListViewInput, ARightClickRaisesRClickWithTheSelectedRowsKey) {
    Click(OnRow(1), Input::Button::right);
    EXPECT_THAT(events.Take(), ElementsAre("RClick(\"b2\")"));
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
}

TEST_F(ListViewInput, ARightClickWithoutASelectedRowRaisesNothing) {
    Click(BelowRows(List()), Input::Button::right);
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ListViewInput, ARightClickBesidesTheRowsRaisesNothingThoughOneWasSelected) {
    Click(OnRow(1));
    events.Take();
    Click(BelowRows(List()), Input::Button::right);
    EXPECT_THAT(SelectedRows(), IsEmpty());
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ListViewInput, AClickOnACheckBoxChecksTheRowAndIsNoClick) {
    list.Put("Checkboxes", true);
    Click(OnCheckBox(1));
    EXPECT_EQ(CheckBox(1), 2u);
    EXPECT_THAT(events.Take(), IsEmpty());
    EXPECT_THAT(Objects("GetCheckedItems"), ElementsAre(Value(graphs)));
    Sleep(GetDoubleClickTime() + 50);
    Click(OnCheckBox(1));
    EXPECT_EQ(CheckBox(1), 1u);
}

TEST_F(ListViewInput, ADoubleClickOnACheckBoxTogglesTwice) {
    list.Put("Checkboxes", true);
    Input input;
    input.MoveTo(List(), OnCheckBox(0)).DoubleClick();
    ASSERT_TRUE(Play(input));
    EXPECT_EQ(CheckBox(0), 1u);
    EXPECT_THAT(SelectedRows(), IsEmpty());
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ListViewInput, ADoubleClickOnACheckBoxRaisesDblClickOfTheSelectedRow) {
    list.Put("Checkboxes", true);
    Click(OnRow(1));
    events.Take();
    Input input;
    input.MoveTo(List(), OnCheckBox(1)).Wait(600).DoubleClick();
    ASSERT_TRUE(Play(input));
    EXPECT_EQ(CheckBox(1), 1u);
    EXPECT_THAT(SelectedRows(), ElementsAre(1));
    EXPECT_THAT(events.Take(), ElementsAre("DblClick(\"b2\")"));
}

TEST_F(ListViewInput, AClickOnTheTextOfARowWithACheckBoxIsAClick) {
    list.Put("Checkboxes", true);
    Click(OnRow(1));
    EXPECT_EQ(CheckBox(1), 1u);
    EXPECT_THAT(events.Take(), ElementsAre("Click(\"b2\")"));
}

TEST_F(ListViewInput, AColumnClickTwiceSortsUpAndDown) {
    const auto click = [this] {
        Input input;
        input.MoveTo(Header(), {30, 8}).Click();
        ASSERT_TRUE(Play(input));
    };
    click();
    EXPECT_THAT(Column(), ElementsAre("On Graphs", "On Lists", "On Trees"));
    Sleep(GetDoubleClickTime() + 50);
    click();
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Lists", "On Graphs"));
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ListViewInput, AHeaderIsDraggedToAnotherPlace) {
    RECT place = {};
    SendMessageW(Header(), HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&place));
    Input input;
    input.MoveTo(Header(), {20, 8}).Wait(50).DragTo(Header(), {place.right - 5, 8}).Wait(100);
    ASSERT_TRUE(Play(input));
    int order[2] = {};
    SendMessageW(List(), LVM_GETCOLUMNORDERARRAY, 2, reinterpret_cast<LPARAM>(order));
    EXPECT_THAT(order, ElementsAre(1, 0));
    EXPECT_THAT(Row(0), ElementsAre("On Trees", "1968")) << "columns keep their numbers";
    EXPECT_THAT(events.Take(), IsEmpty());
}

TEST_F(ListViewInput, ADoubleClickOnADividerMakesTheColumnAsWideAsItsTexts) {
    trees->name = "On Trees, their leaves and all that there is to say of their branches";
    list.Call("Refresh");
    const int before = Widths().front();
    RECT place = {};
    SendMessageW(Header(), HDM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&place));
    Input input;
    input.MoveTo(Header(), {place.right, 8}).DoubleClick();
    ASSERT_TRUE(Play(input));
    EXPECT_GT(Widths().front(), before);
    const auto wide = static_cast<int>(SendMessageW(
        List(), LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(Wide(trees->name).c_str())));
    EXPECT_GE(Widths().front(), wide);
}

TEST_F(ListViewInput, F5IsTheHostsBusiness) {
    Click(OnRow(1));
    events.Take();
    model.Log().Clear();
    Keys({VK_F5});
    EXPECT_THAT(model.Log().Take(), IsEmpty());
    EXPECT_THAT(events.Take(), IsEmpty());
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(ListViewInput, ControlAndShiftSelectSeveralRows) {
    Click(OnRow(0));
    Input control;
    control.MoveTo(List(), OnRow(2)).Wait(50).KeyDown(VK_CONTROL).Click().KeyUp(VK_CONTROL);
    ASSERT_TRUE(Play(control));
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 2));
    EXPECT_EQ(Selection().Get(), lists) << "the one with the focus";
    Click(OnRow(0));
    Input shift;
    shift.MoveTo(List(), OnRow(2)).Wait(50).KeyDown(VK_SHIFT).Click().KeyUp(VK_SHIFT);
    ASSERT_TRUE(Play(shift));
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1, 2));
}

TEST_F(ListViewInput, ArrowsHomeAndEndMoveTheSelection) {
    Click(OnRow(0));
    events.Take();
    Keys({VK_DOWN});
    EXPECT_EQ(Selection().Get(), graphs);
    Keys({VK_END});
    EXPECT_EQ(Selection().Get(), lists);
    Keys({VK_HOME});
    EXPECT_EQ(Selection().Get(), trees);
    Keys({VK_SHIFT, VK_DOWN});
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1));
    EXPECT_THAT(events.Take(), IsEmpty()) << "keys are no clicks";
}

TEST_F(ListViewInput, ControlASelectsAllRows) {
    Click(OnRow(0));
    Keys({VK_CONTROL, 'A'});
    EXPECT_THAT(SelectedRows(), ElementsAre(0, 1, 2));
}

TEST_F(ListViewInput, SpaceTogglesTheCheckBoxesOfTheSelectedRows) {
    list.Put("Checkboxes", true);
    Click(OnRow(1));
    Keys({VK_SPACE});
    EXPECT_EQ(CheckBox(1), 2u);
    EXPECT_EQ(CheckBox(0), 1u);
    Keys({VK_SPACE});
    EXPECT_EQ(CheckBox(1), 1u);
    Keys({VK_CONTROL, 'A'});
    Keys({VK_SPACE});
    for (int row = 0; row < 3; ++row) EXPECT_EQ(CheckBox(row), 2u);
}

TEST_F(ListViewInput, SpaceWithoutCheckBoxesChecksNothing) {
    Click(OnRow(1));
    Keys({VK_SPACE});
    EXPECT_THAT(Objects("GetCheckedItems"), IsEmpty());
}

TEST_F(ListViewInput, TypingGoesToTheRowThatBeginsSo) {
    lists->name = "Lists";
    graphs->name = "Graphs";
    list.Call("Refresh");
    Click(OnRow(0));
    const auto type = [this](const char* text) {
        Input input;
        // What was typed before is forgotten after a while.
        input.Text(text).Wait(1200);
        ASSERT_TRUE(Play(input));
    };
    type("l");
    EXPECT_EQ(Cell(SelectedRows().at(0)), "Lists");
    type("G");
    EXPECT_EQ(Cell(SelectedRows().at(0)), "Graphs");
    type("x");
    EXPECT_EQ(Cell(SelectedRows().at(0)), "Graphs") << "none begins so";
}

TEST_F(ListViewInput, LettersTypedInARowMakeUpABeginning) {
    graphs->name = "Graphs";
    lists->name = "Grids";
    list.Call("Refresh");
    Click(OnRow(0));
    for (const wchar_t letter : std::wstring(L"gRi")) SendMessageW(List(), WM_CHAR, letter, 1);
    EXPECT_EQ(Cell(SelectedRows().at(0)), "Grids");
}

TEST_F(ListViewInput, TheWheelScrolls) {
    for (int i = 0; i < 100; ++i) model.Node(book, "more" + std::to_string(i))->values["Year"] = 1;
    list.Call("Refresh");
    Click(OnRow(0));
    Input input;
    input.MoveTo(List(), OnRow(1)).Wheel(-2).Wait(100);
    ASSERT_TRUE(Play(input));
    EXPECT_GT(SendMessageW(List(), LVM_GETTOPINDEX, 0, 0), 0);
}

TEST_F(ListViewInput, ADisabledListTakesNoInput) {
    list.Put("Enabled", false);
    Click(OnRow(1));
    EXPECT_THAT(events.Take(), IsEmpty());
    EXPECT_THAT(SelectedRows(), IsEmpty());
}

TEST_F(ListViewInput, AHostMayClearTheListInAClick) {
    events.On("Click").Run([this] { list.Call("Clear"); });
    Click(OnRow(1));
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(list.Call("Refresh"));
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(ListViewInput, AHostMayRemoveTheControlInADoubleClick) {
    events.On("DblClick").Run([this] {
        list.Call("Destroy");
        hosted.Close();
        list = LateBound();
    });
    Input input;
    input.MoveTo(List(), OnRow(1)).DoubleClick();
    ASSERT_TRUE(Play(input));
    EXPECT_FALSE(list);
    list = CreateRegistered(L"ListView");
}

TEST_F(ListViewInput, TabLeavesTheControl) {
    hosted.Focus();
    ASSERT_EQ(form.Active(), &hosted);
    Keys({VK_TAB});
    EXPECT_EQ(form.Active(), &hostedOthers);
}

}  // namespace
}  // namespace support
