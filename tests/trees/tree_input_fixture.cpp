#include "trees/tree_input_fixture.h"

#include "support/inner_window.h"

namespace support {

namespace {

/// Whether it comes again and again while the mouse moves.
bool IsOfADragUnderWay(const std::string& event) {
    return event.find("OLEDragOver(") != std::string::npos ||
           event.find("OLEGiveFeedback(") != std::string::npos;
}

}  // namespace

TreeInputTest::TreeInputTest() {
    tree.Call("AddRootNode", trees);
    tree.Call("AddRootNode", graphs);
    described.Call("Create");
    described.PutRef("Repository", model.Root());
    LateBound(described.Call("GetRootNodeDescription").value)
        .Call("AddChild", "Extension", "Book", "Name", "Folder", "books");
    list.Call("Create");
    list.Call("AddColumn", "Name", "Name", "1800");
    list.Call("SetList_Nodes", person, false);
    hosted.Take(tree.Get());
    hosted.Activate({10, 10, 220, 200});
    hostedDescribed.Take(described.Get());
    hostedDescribed.Activate({230, 10, 430, 200});
    hostedList.Take(list.Get());
    hostedList.Activate({440, 10, 640, 200});
    describedEvents.Connect(described.Get());
    listEvents.Connect(list.Get());
    Input::Activate(window.Handle());
    EXPECT_TRUE(PumpUntil([this] { return GetForegroundWindow() == window.Handle(); }));
    model.Log().Clear();
}

TreeInputTest::~TreeInputTest() {
    if (described) described.Call("Destroy");
    list.Call("Destroy");
    form.Clear();
}

bool TreeInputTest::Play(Input& input) {
    return input.Play(30000, [this](MSG& message) { return form.TranslateMessage(message); });
}

POINT TreeInputTest::On(const TreeWindow& shown, HTREEITEM item) {
    const RECT text = shown.RectOf(item);
    return {text.left + 12, (text.top + text.bottom) / 2};
}

POINT TreeInputTest::OnButton(const TreeWindow& shown, HTREEITEM item) {
    return LeftOfText(shown, item, TVHT_ONITEMBUTTON);
}

POINT TreeInputTest::OnCheckBox(const TreeWindow& shown, HTREEITEM item) {
    return LeftOfText(shown, item, TVHT_ONITEMSTATEICON);
}

POINT TreeInputTest::LeftOfText(const TreeWindow& shown, HTREEITEM item, UINT part) {
    const POINT text = On(shown, item);
    for (LONG x = text.x; x > 0; --x) {
        TVHITTESTINFO hit = {};
        hit.pt = {x, text.y};
        SendMessageW(shown.Handle(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        if ((hit.flags & (TVHT_ONITEM | TVHT_ONITEMBUTTON)) == part) return {x - 3, text.y};
    }
    ADD_FAILURE() << "nothing there";
    return {};
}

POINT TreeInputTest::BelowItems(const TreeWindow& shown) {
    RECT client = {};
    GetClientRect(shown.Handle(), &client);
    return {40, client.bottom - 12};
}

void TreeInputTest::Click(const TreeWindow& shown, POINT point, Input::Button button) {
    Input input;
    input.MoveTo(shown.Handle(), point).Wait(30).Click(button).Wait(50);
    ASSERT_TRUE(Play(input));
}

void TreeInputTest::DoubleClick(const TreeWindow& shown, POINT point) {
    Input input;
    input.MoveTo(shown.Handle(), point).Wait(30).DoubleClick().Wait(50);
    ASSERT_TRUE(Play(input));
}

void TreeInputTest::Keys(std::initializer_list<WORD> keys) {
    Input input;
    input.Chord(keys).Wait(30);
    ASSERT_TRUE(Play(input));
}

void TreeInputTest::Type(const std::string& text) {
    Input input;
    input.Text(text).Wait(50);
    ASSERT_TRUE(Play(input));
}

void TreeInputTest::Drag(HWND from, POINT start, HWND to, POINT end) {
    Input input;
    input.MoveTo(from, start).Wait(50).DragTo(to, end).Wait(100);
    ASSERT_TRUE(Play(input));
}

TreeInputTest::Texts TreeInputTest::Events() const {
    Texts kept;
    for (std::string& entry : Take()) {
        const bool isEvent = entry.find("Node") != std::string::npos ||
                             entry.find("OLE") != std::string::npos ||
                             entry.find("LabelEdit(") != std::string::npos;
        if (!isEvent || entry.starts_with("rep.")) continue;
        if (kept.empty() || kept.back() != entry || !IsOfADragUnderWay(entry))
            kept.push_back(std::move(entry));
    }
    return kept;
}

TreeInputTest::Texts TreeInputTest::Of(const Texts& events, const std::string& name) {
    Texts found;
    for (const std::string& event : events) {
        if (event.find(name + '(') != std::string::npos) found.push_back(event);
    }
    return found;
}

void TreeInputTest::LetGo() {
    hosted.Close();
    events.Disconnect();
    tree = LateBound();
}

void TreeInputTest::LetGoOfDescribed() {
    hostedDescribed.Close();
    describedEvents.Disconnect();
    described = LateBound();
}

HWND TreeInputTest::List() const {
    return InnerWindow(list, WC_LISTVIEWW);
}

}  // namespace support
