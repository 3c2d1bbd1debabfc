#include "lists/list_view_fixture.h"

namespace support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListViewColumns : public ListViewTest {
protected:
    [[nodiscard]] DWORD Style() const {
        return static_cast<DWORD>(GetWindowLongW(List(), GWL_STYLE));
    }
    [[nodiscard]] static int Pixels(int twips) {
        return MulDiv(twips, GetDeviceCaps(GetDC(nullptr), LOGPIXELSX), 1440);
    }
};

TEST_F(ListViewColumns, AddColumnAddsAHeaderWithItsTextAndItsWidthInTwips) {
    ASSERT_TRUE(list.Call("AddColumn", "Title", "Name", "1500"));
    EXPECT_EQ(list.Call("AddColumn", "Printed", "Year", "3000").value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("Title", "Printed"));
    EXPECT_THAT(Widths(), ElementsAre(Pixels(1500), Pixels(3000)));
}

TEST_F(ListViewColumns, AWidthIsConvertedAsANumber) {
    for (const char* width : {"1000", " 1000 ", "1e3", "0"}) {
        ASSERT_TRUE(list.Call("AddColumn", "A", "Name", width)) << width;
    }
    ASSERT_TRUE(list.Call("AddColumn", "A", "Name", 1000)) << "a number for the text";
    EXPECT_THAT(Widths(), ElementsAre(67, 67, 67, 0, 67));
}

TEST_F(ListViewColumns, AWidthThatIsNoneAddsNoColumn) {
    EXPECT_EQ(list.Call("AddColumn", "A", "Name", "wide").AutomationNumber(), 13);
    EXPECT_EQ(list.Call("AddColumn", "A", "Name", "").AutomationNumber(), 13);
    EXPECT_EQ(list.Call("AddColumn", "A", "Name", "-1").AutomationNumber(), 380);
    EXPECT_EQ(list.Call("AddColumn", "A", "Name", "1e300").AutomationNumber(), 380);
    EXPECT_EQ(list.Call("AddLinkColumn", "A", "Name", 1, -15).AutomationNumber(), 380);
    EXPECT_THAT(Headers(), IsEmpty());
    model.Log().Clear();
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier")) << "no column was kept";
}

TEST_F(ListViewColumns, AColumnReadsItsPropertyAndNotItsHeader) {
    ASSERT_TRUE(list.Call("AddColumn", "Printed", "Year", "1000"));
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(model.Log().Take(), ElementsAre("b1.identifier", "b1.GetProperty(\"Year\")"));
    EXPECT_THAT(Column(), ElementsAre("1968"));
}

TEST_F(ListViewColumns, ColumnsHaveNoKeysAndMayBeAlike) {
    AddColumns({"Name", "Name"});
    ASSERT_TRUE(list.Call("AddNode", trees));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"On Trees", "On Trees"}));
}

TEST_F(ListViewColumns, AddLinkColumnTakesAnEndAndANumberForTheWidth) {
    ASSERT_TRUE(list.Call("AddLinkColumn", "From", "Name", 0, 1500));
    ASSERT_TRUE(list.Call("AddLinkColumn", "Which", "Name", 1, 1500));
    EXPECT_EQ(list.Call("AddLinkColumn", "To", "Name", 2, 750).value, Empty());
    EXPECT_THAT(Headers(), ElementsAre("From", "Which", "To"));
    EXPECT_THAT(Widths(), ElementsAre(Pixels(1500), Pixels(1500), Pixels(750)));
    ASSERT_TRUE(list.Call("AddLink", first));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"On Trees", "builds on", "On Graphs"}));
    EXPECT_THAT(model.Log().Take(),
                ElementsAre("c1.identifier", "c1.source", "b1.GetProperty(\"Name\")",
                            "c1.GetProperty(\"Name\")", "c1.Target", "b2.GetProperty(\"Name\")"));
}

TEST_F(ListViewColumns, AColumnOfAnEndThatThereIsNotIsEmpty) {
    ASSERT_TRUE(list.Call("AddLinkColumn", "Odd", "Name", 3, 1500));
    ASSERT_TRUE(list.Call("AddLinkColumn", "Odder", "Name", -1, 1500));
    ASSERT_TRUE(list.Call("AddLink", first));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"", ""}));
    EXPECT_THAT(model.Log().Take(), ElementsAre("c1.identifier"));
}

TEST_F(ListViewColumns, TheEndOfAColumnMattersForLinksOnly) {
    ASSERT_TRUE(list.Call("AddLinkColumn", "To", "Name", 2, 750));
    ASSERT_TRUE(list.Call("AddLinkColumn", "Odd", "Name", 77, 750));
    ASSERT_TRUE(list.Call("AddNode", trees));
    ASSERT_TRUE(list.Call("AddMetaNode", book));
    EXPECT_THAT(Rows(), ElementsAre(Texts{"On Trees", "On Trees"}, Texts{"Book", "Book"}));
}

TEST_F(ListViewColumns, AColumnAddedLaterIsFilledInLaterRowsOnly) {
    AddColumns({"Name"});
    list.Call("AddNode", trees);
    AddColumns({"Year"});
    list.Call("AddNode", graphs);
    EXPECT_THAT(Rows(), ElementsAre(Texts{"On Trees", ""}, Texts{"On Graphs", "1736"}));
}

TEST_F(ListViewColumns, OddHeaderTextsAreShownAsTheyAre) {
    const std::string text =
        "Gr\xC3\xBC\xC3\x9F"
        "e & more \xF0\x9F\x8C\xB3";
    ASSERT_TRUE(list.Call("AddColumn", text, "Name", "1000"));
    ASSERT_TRUE(list.Call("AddColumn", "", "", "1000"));
    EXPECT_THAT(Headers(), ElementsAre(text, ""));
}

TEST_F(ListViewColumns, ViewIsOneOfTheFourStylesAndReportAtFirst) {
    EXPECT_EQ(list.Get("View").value, Value(short{3}));
    EXPECT_EQ(Style() & LVS_TYPEMASK, DWORD{LVS_REPORT});
    const std::vector<DWORD> styles = {LVS_ICON, LVS_SMALLICON, LVS_LIST, LVS_REPORT};
    for (short view = 0; view < 4; ++view) {
        ASSERT_TRUE(list.Put("View", view));
        EXPECT_EQ(list.Get("View").value, Value(view));
        EXPECT_EQ(Style() & LVS_TYPEMASK, styles[static_cast<std::size_t>(view)]);
    }
}

TEST_F(ListViewColumns, OtherViewsAreRefused) {
    ASSERT_TRUE(list.Put("View", 2));
    for (const int view : {-1, 4, 32767}) EXPECT_EQ(list.Put("View", view).AutomationNumber(), 380);
    EXPECT_EQ(list.Get("View").value, Value(short{2}));
}

TEST_F(ListViewColumns, RowsAndTextsAreTheSameInEveryView) {
    AddColumns({"Name", "Year"});
    list.Call("SetList_Nodes", book, false);
    for (int view = 0; view < 4; ++view) {
        list.Put("View", view);
        EXPECT_THAT(Column(), ElementsAre("On Trees", "On Graphs", "On Lists"));
        EXPECT_THAT(Column(1), ElementsAre("1968", "1736", "2001"));
    }
}

TEST_F(ListViewColumns, CheckboxesAreOffAtFirstAndPassedToTheList) {
    EXPECT_EQ(list.Get("Checkboxes").value, Value(false));
    list.Call("SetList_Nodes", book, false);
    EXPECT_EQ(CheckBox(0), 0u);
    ASSERT_TRUE(list.Put("Checkboxes", true));
    EXPECT_EQ(list.Get("Checkboxes").value, Value(true));
    EXPECT_EQ(CheckBox(0), 1u);
    const auto extended = SendMessageW(List(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    EXPECT_NE(extended & LVS_EX_CHECKBOXES, 0);
    EXPECT_NE(SendMessageW(List(), LVM_GETIMAGELIST, LVSIL_STATE, 0), 0);
    ASSERT_TRUE(list.Put("Checkboxes", false));
    EXPECT_EQ(CheckBox(0), 0u);
}

TEST_F(ListViewColumns, HideColumnHeadersCanBeWrittenOnly) {
    AddColumns({"Name"});
    EXPECT_EQ(Style() & LVS_NOCOLUMNHEADER, 0u);
    ASSERT_TRUE(list.Put("HideColumnHeaders", true));
    EXPECT_NE(Style() & LVS_NOCOLUMNHEADER, 0u);
    ASSERT_TRUE(list.Put("HideColumnHeaders", false));
    EXPECT_EQ(Style() & LVS_NOCOLUMNHEADER, 0u);
    EXPECT_FALSE(list.Get("HideColumnHeaders").Ok());
}

TEST_F(ListViewColumns, SetBackGroundColorColoursTheList) {
    EXPECT_EQ(SendMessageW(List(), LVM_GETBKCOLOR, 0, 0),
              static_cast<LRESULT>(GetSysColor(COLOR_WINDOW)));
    EXPECT_EQ(list.Call("SetBackGroundColor", 0x00CCFFEE).value, Empty());
    EXPECT_EQ(SendMessageW(List(), LVM_GETBKCOLOR, 0, 0), 0x00CCFFEE);
    EXPECT_EQ(SendMessageW(List(), LVM_GETTEXTBKCOLOR, 0, 0), 0x00CCFFEE);
    ASSERT_TRUE(list.Call("SetBackGroundColor", static_cast<long>(0x80000000 + COLOR_BTNFACE)));
    EXPECT_EQ(SendMessageW(List(), LVM_GETBKCOLOR, 0, 0),
              static_cast<LRESULT>(GetSysColor(COLOR_BTNFACE)));
    EXPECT_EQ(list.Call("SetBackGroundColor", static_cast<long>(0x80FFFFFF)).AutomationNumber(),
              380);
    EXPECT_EQ(SendMessageW(List(), LVM_GETBKCOLOR, 0, 0),
              static_cast<LRESULT>(GetSysColor(COLOR_BTNFACE)));
}

TEST_F(ListViewColumns, EnabledIsTrueAtFirstAndReachesTheWindow) {
    EXPECT_EQ(list.Get("Enabled").value, Value(true));
    EXPECT_TRUE(IsWindowEnabled(List()));
    ASSERT_TRUE(list.Put("Enabled", false));
    EXPECT_EQ(list.Get("Enabled").value, Value(false));
    EXPECT_FALSE(IsWindowEnabled(List()));
    ASSERT_TRUE(list.Put("Enabled", true));
    EXPECT_TRUE(IsWindowEnabled(List()));
}

TEST_F(ListViewColumns, RowsOfADisabledListAreGrey) {
    AddColumns({"Name"});
    ASSERT_TRUE(list.Call("AddNode", trees));
    const auto textColor = [this](UINT state = 0) {
        NMLVCUSTOMDRAW draw = {};
        draw.nmcd.uItemState = state;
        draw.nmcd.hdr = {List(), 0, static_cast<UINT>(NM_CUSTOMDRAW)};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.clrText = 0x123456;
        SendMessageW(GetParent(List()), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&draw));
        EXPECT_TRUE((draw.nmcd.uItemState & CDIS_SELECTED) == 0 || draw.clrText == 0x123456u)
            << "selected rows have the system's own colour";
        return draw.clrText;
    };
    EXPECT_EQ(textColor(), 0x123456u);
    list.Put("Enabled", false);
    EXPECT_EQ(textColor(), GetSysColor(COLOR_GRAYTEXT));
    EXPECT_EQ(textColor(CDIS_SELECTED), GetSysColor(COLOR_GRAYTEXT));
    list.Put("Enabled", true);
    EXPECT_EQ(textColor(), 0x123456u);
}

TEST_F(ListViewColumns, IconsAreAsFarApartAsTheSystemWantsWithoutImagesToo) {
    EXPECT_EQ(LOWORD(SendMessageW(List(), LVM_GETITEMSPACING, FALSE, 0)),
              GetSystemMetrics(SM_CXICONSPACING));
}

TEST_F(ListViewColumns, TheInnerWindowIsAnOrdinaryListWithManySelectableRows) {
    EXPECT_EQ(Style() & LVS_SINGLESEL, 0u);
    EXPECT_EQ(Style() & LVS_EDITLABELS, 0u);
    EXPECT_NE(Style() & LVS_SHOWSELALWAYS, 0u);
    const auto extended = SendMessageW(List(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    EXPECT_NE(extended & LVS_EX_FULLROWSELECT, 0);
}

}  // namespace
}  // namespace support
