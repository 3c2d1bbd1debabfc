#pragma once

#include "hosting/host_window.h"
#include "hosting/hosted_control.h"
#include "support/input.h"
#include "trees/tree_fixture.h"

namespace support {

/// A hierarchy tree, a described tree and a list on a form on the screen, used by mouse and
/// keyboard. Their events stand in one log, those of the last two behind "described" and "list".
class TreeInputTest : public HierarchyTest {
protected:
    TreeInputTest();
    ~TreeInputTest() override;

    bool Play(Input& input);

    /// The place of an item's text, in the client coordinates of the tree's window.
    [[nodiscard]] static POINT On(const TreeWindow& shown, HTREEITEM item);
    [[nodiscard]] static POINT On(const TreeWindow& shown, const Texts& path) {
        return On(shown, shown.At(path));
    }
    [[nodiscard]] static POINT OnButton(const TreeWindow& shown, HTREEITEM item);
    [[nodiscard]] static POINT OnCheckBox(const TreeWindow& shown, HTREEITEM item);
    [[nodiscard]] static POINT BelowItems(const TreeWindow& shown);

    void Click(const TreeWindow& shown, POINT point, Input::Button button = Input::Button::left);
    void DoubleClick(const TreeWindow& shown, POINT point);
    void Keys(std::initializer_list<WORD> keys);
    void Type(const std::string& text);
    void Drag(HWND from, POINT start, HWND to, POINT end);

    /// The events so far without calls of the repository; of those that come again and again while
    /// something is dragged, one in a row.
    Texts Events() const;
    /// What was said of one event.
    [[nodiscard]] static Texts Of(const Texts& events, const std::string& name);

    /// A host removes the control, and nobody holds it any more.
    void LetGo();
    void LetGoOfDescribed();

    [[nodiscard]] TreeWindow Described() const { return TreeWindow(described); }
    [[nodiscard]] HWND List() const;
    [[nodiscard]] HWND EditBox() const {
        return reinterpret_cast<HWND>(SendMessageW(Window().Handle(), TVM_GETEDITCONTROL, 0, 0));
    }

    LateBound described = CreateRegistered(L"TreeView");
    LateBound list = CreateRegistered(L"ListView");
    hosting::HostWindow window{L"Trees", 660, 260};
    hosting::Form& form = window.GetForm();
    hosting::HostedControl& hosted = form.Add(L"Tree1");
    hosting::HostedControl& hostedDescribed = form.Add(L"Tree2");
    hosting::HostedControl& hostedList = form.Add(L"List1");
    EventRecorder describedEvents{model.TheLog(), "described"};
    EventRecorder listEvents{model.TheLog(), "list"};

private:
    /// The place of a part of an item as TVM_HITTEST names it.
    [[nodiscard]] static POINT LeftOfText(const TreeWindow& shown, HTREEITEM item, UINT part);
};

}  // namespace support
