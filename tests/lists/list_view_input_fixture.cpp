#include "lists/list_view_input_fixture.h"

namespace support {

ListViewInputTest::ListViewInputTest() {
    list.Call("AddColumn", "Name", "Name", "1800");
    list.Call("AddColumn", "Year", "Year", "900");
    list.Call("SetList_Nodes", book, false);
    others.Call("Create");
    others.Call("AddColumn", "Name", "Name", "1800");
    others.Call("SetList_Nodes", person, false);
    hosted.Take(list.Get());
    hosted.Activate({10, 10, 220, 160});
    hostedOthers.Take(others.Get());
    hostedOthers.Activate({240, 10, 450, 160});
    events.Connect(list.Get());
    otherEvents.Connect(others.Get());
    Input::Activate(window.Handle());
    EXPECT_TRUE(PumpUntil([this] { return GetForegroundWindow() == window.Handle(); }));
}

ListViewInputTest::~ListViewInputTest() {
    others.Call("Destroy");
    form.Clear();
}

bool ListViewInputTest::Play(Input& input) {
    return input.Play(30000, [this](MSG& message) { return form.TranslateMessage(message); });
}

RECT ListViewInputTest::BoundsOfRow(HWND window, int row) {
    RECT bounds = {};
    bounds.left = LVIR_BOUNDS;
    SendMessageW(window, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&bounds));
    return bounds;
}

POINT ListViewInputTest::OnRow(HWND window, int row) {
    RECT label = {};
    label.left = LVIR_LABEL;
    SendMessageW(window, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&label));
    return {label.left + 20, (label.top + label.bottom) / 2};
}

POINT ListViewInputTest::OnCheckBox(int row) const {
    const RECT bounds = BoundsOfRow(List(), row);
    return {bounds.left + 9, (bounds.top + bounds.bottom) / 2};
}

POINT ListViewInputTest::BelowRows(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return {20, client.bottom - 12};
}

void ListViewInputTest::Click(POINT point, Input::Button button) {
    Input input;
    input.MoveTo(List(), point).Wait(30).Click(button);
    ASSERT_TRUE(Play(input));
}

void ListViewInputTest::Keys(std::initializer_list<WORD> keys) {
    Input input;
    input.Chord(keys);
    ASSERT_TRUE(Play(input));
}

}  // namespace support
