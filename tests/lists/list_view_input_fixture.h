#pragma once

#include "hosting/host_window.h"
#include "hosting/hosted_control.h"
#include "lists/list_view_fixture.h"
#include "support/event_recorder.h"
#include "support/input.h"

namespace support {

/// Two list views on a form on the screen, the fixture's with books and another one with persons,
/// used by mouse and keyboard.
class ListViewInputTest : public ListViewTest {
protected:
    ListViewInputTest();
    ~ListViewInputTest() override;

    bool Play(Input& input);

    /// Places in the list's window.
    [[nodiscard]] static RECT BoundsOfRow(HWND window, int row);
    /// On the text of a row.
    [[nodiscard]] static POINT OnRow(HWND window, int row);
    [[nodiscard]] POINT OnRow(int row) const { return OnRow(List(), row); }
    [[nodiscard]] POINT OnCheckBox(int row) const;
    /// Below the last row.
    [[nodiscard]] static POINT BelowRows(HWND window);

    void Click(POINT point, Input::Button button = Input::Button::left);
    void Keys(std::initializer_list<WORD> keys);
    [[nodiscard]] HWND Others() const { return ListOf(others); }

    FakeNode* knuth = model.Node(person, "p1", "Knuth");
    FakeNode* euler = model.Node(person, "p2", "Euler");
    LateBound others = CreateRegistered(L"ListView");
    hosting::HostWindow window{L"Lists", 460, 240};
    hosting::Form& form = window.GetForm();
    hosting::HostedControl& hosted = form.Add(L"List1");
    hosting::HostedControl& hostedOthers = form.Add(L"List2");
    SharedLog log = std::make_shared<CallLog>();
    EventRecorder events{log};
    EventRecorder otherEvents{log, "others"};
};

}  // namespace support
