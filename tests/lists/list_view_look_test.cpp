#include "hosting/host_window.h"
#include "hosting/hosted_control.h"
#include "lists/list_view_fixture.h"
#include "support/logging_container.h"

namespace support {
namespace {

using testing::ElementsAre;

/// A list on a form, looked at from outside.
class ListViewLook : public ListViewTest {
protected:
    ListViewLook() {
        AddColumns({"Name", "Year"});
        list.Call("SetList_Nodes", book, false);
    }
};

TEST_F(ListViewLook, TheListFillsTheControl) {
    hosting::HostWindow window{L"List", 400, 300, false};
    hosting::HostedControl& hosted = window.GetForm().Add(L"List1");
    hosted.Take(list.Get());
    hosted.Activate({10, 10, 210, 110});
    for (const LONG size : {200, 90, 300}) {
        hosted.Move({30, 40, 30 + size, 40 + size / 2});
        RECT bounds = {};
        GetWindowRect(List(), &bounds);
        EXPECT_EQ(bounds.right - bounds.left, size);
        EXPECT_EQ(bounds.bottom - bounds.top, size / 2);
    }
    window.GetForm().Clear();
}

TEST_F(ListViewLook, RowsSelectionAndChecksOutliveTheLifeInAContainer) {
    list.Put("Checkboxes", true);
    list.Call("CheckAll");
    {
        hosting::HostWindow window{L"List", 400, 300, false};
        hosting::HostedControl& hosted = window.GetForm().Add(L"List1");
        hosted.Take(list.Get());
        hosted.Activate({10, 10, 210, 110});
        ASSERT_TRUE(list.PutRef("selection", graphs));
        window.GetForm().Clear();
    }
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Graphs", "On Lists"));
    EXPECT_EQ(Selection().Get(), graphs);
    EXPECT_EQ(CheckBox(0), 2u);
    EXPECT_TRUE(list.Call("Refresh"));
}

TEST_F(ListViewLook, ALargerFontMakesHigherRows) {
    hosting::HostWindow window{L"List", 400, 300, false};
    hosting::HostedControl& hosted = window.GetForm().Add(L"List1");
    hosted.Take(list.Get());
    hosted.Activate({10, 10, 210, 110});
    const auto height = [this] {
        RECT row = {};
        row.left = LVIR_BOUNDS;
        SendMessageW(List(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
        return row.bottom - row.top;
    };
    const LONG before = height();
    hosted.Ambients().Set(DISPID_AMBIENT_FONT, hosting::MakeFont(L"Tahoma", 24).Get());
    hosted.AmbientChanged(DISPID_AMBIENT_FONT);
    EXPECT_GT(height(), before);
    window.GetForm().Clear();
}

TEST_F(ListViewLook, IsDrawnWithItsRowsInAFormDesigner) {
    LoggingContainer container(list.Get());
    const DesignedForm form = PlayFormDesigner(container);
    EXPECT_EQ(form.drawn, S_OK);
    EXPECT_GT(form.bitmap.Colours(), 2u);
    EXPECT_GT(form.metafileRecords, 5);
    EXPECT_FALSE(IsWindowVisible(List())) << "nothing was activated";
    PlayClose(container);
}

TEST_F(ListViewLook, LivesOnARunningForm) {
    LoggingContainer container(list.Get());
    PlayRunningForm(container);
    EXPECT_TRUE(IsWindowVisible(List()));
    EXPECT_EQ(container.Count("IOleInPlaceSite.OnInPlaceActivate") +
                  container.Count("IOleInPlaceSiteEx.OnInPlaceActivateEx"),
              1u);
    EXPECT_THAT(Column(), ElementsAre("On Trees", "On Graphs", "On Lists"));
    PlayClose(container);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(ListViewLook, LivesInADocument) {
    Ref<IStorage> storage;
    ASSERT_EQ(
        StgCreateDocfile(nullptr,
                         STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE,
                         0, storage.GetAddressOf()),
        S_OK);
    LoggingContainer container(list.Get());
    PlayDocument(container, storage.Get());
    EXPECT_TRUE(IsWindowVisible(List()));
    EXPECT_EQ(RowCount(), 3) << "rows are no part of the state";
    PlayClose(container);
}

TEST_F(ListViewLook, LivesInTheLeastOfHosts) {
    LoggingContainer container(list.Get());
    PlayMinimalHost(container);
    EXPECT_TRUE(IsWindowVisible(List()));
    PlayClose(container);
}

TEST_F(ListViewLook, NothingOfTheListIsKeptInTheState) {
    const auto save = [this] {
        Ref<IStream> stream;
        CreateStreamOnHGlobal(nullptr, TRUE, stream.GetAddressOf());
        const auto persistence = Query<IPersistStreamInit>(list.Get());
        EXPECT_EQ(persistence->Save(stream.Get(), TRUE), S_OK);
        STATSTG status = {};
        stream->Stat(&status, STATFLAG_NONAME);
        return status.cbSize.QuadPart;
    };
    const auto before = save();
    list.Put("View", 0);
    list.Put("Checkboxes", true);
    list.Call("Clear");
    EXPECT_EQ(save(), before);
}

}  // namespace
}  // namespace support
