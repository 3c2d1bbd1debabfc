#include <ole2.h>

#include <algorithm>

#include "lists/list_view_input_fixture.h"

namespace support {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// A drop target of another program's: it reads the text that is dropped on it.
class TextTarget final : public IDropTarget {
public:
    std::wstring text;
    DWORD effect = DROPEFFECT_COPY;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDropTarget ? this : nullptr;
        return *object != nullptr ? S_OK : E_NOINTERFACE;
    }
    // It lives on the stack.
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP DragEnter(IDataObject*, DWORD, POINTL, DWORD* result) override {
        *result &= effect;
        return S_OK;
    }
    STDMETHODIMP DragOver(DWORD, POINTL, DWORD* result) override {
        *result &= effect;
        return S_OK;
    }
    STDMETHODIMP DragLeave() override { return S_OK; }
    STDMETHODIMP Drop(IDataObject* data, DWORD, POINTL, DWORD* result) override {
        *result &= effect;
        FORMATETC format = {CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
        STGMEDIUM medium = {};
        if (SUCCEEDED(data->GetData(&format, &medium))) {
            text = static_cast<const wchar_t*>(GlobalLock(medium.hGlobal));
            GlobalUnlock(medium.hGlobal);
            ReleaseStgMedium(&medium);
        }
        return S_OK;
    }
};

class ListViewDrag : public ListViewInputTest {
protected:
    ListViewDrag() {
        list.Put("dragAllowed", true);
        others.Put("dropAllowed", true);
    }

    void Drag(POINT from, HWND to, POINT point) {
        Input input;
        input.MoveTo(List(), from).Wait(50).DragTo(to, point).Wait(100);
        ASSERT_TRUE(Play(input));
    }

    /// What happened, one of each kind of event in a row.
    [[nodiscard]] std::vector<std::string> TakeEvents() {
        std::vector<std::string> kept;
        for (std::string& event : log->Take()) {
            if (kept.empty() || kept.back() != event) kept.push_back(std::move(event));
        }
        return kept;
    }
    [[nodiscard]] static auto EventsOf(const std::vector<std::string>& all, const char* name) {
        std::vector<std::string> found;
        for (const std::string& event : all) {
            if (event.find(name) != std::string::npos) found.push_back(event);
        }
        return found;
    }
};

TEST_F(ListViewDrag, FromOneListOntoARowOfAnotherRaisesTheEventsInOrder) {
    Drag(OnRow(1), Others(), OnRow(Others(), 0));
    const auto all = TakeEvents();
    ASSERT_GE(all.size(), 5u);
    EXPECT_EQ(all.front(), "OLEStartDrag(b2, 4, 3)");
    EXPECT_THAT(all, Contains("others.OLEDragOver()"));
    EXPECT_THAT(all, Contains("OLEGiveFeedback(1, True)"));
    const auto drop = std::find(all.begin(), all.end(), "others.OLEDragDrop(p1, 4, 1)");
    ASSERT_NE(drop, all.end()) << testing::PrintToString(all);
    ASSERT_NE(drop + 1, all.end());
    EXPECT_EQ(*(drop + 1), "OLECompleteDrag(1)");
    EXPECT_LT(std::find(all.begin(), all.end(), "others.OLEDragOver()"), drop);
}

TEST_F(ListViewDrag, AllowedEffectsOfNoneKeepTheDragFromBeginning) {
    events.On("OLEStartDrag").Run([](const Arguments& arguments) { arguments.Write(2, 0L); });
    Drag(OnRow(1), Others(), OnRow(Others(), 0));
    const auto all = TakeEvents();
    EXPECT_THAT(EventsOf(all, "OLEDragDrop"), IsEmpty());
    EXPECT_THAT(EventsOf(all, "OLEGiveFeedback"), IsEmpty());
    EXPECT_THAT(EventsOf(all, "OLEDragOver"), IsEmpty());
    EXPECT_THAT(EventsOf(all, "OLEStartDrag"), ElementsAre("OLEStartDrag(b2, 4, 3)"));
}

TEST_F(ListViewDrag, AllowedEffectsLimitTheDrop) {
    events.On("OLEStartDrag").Run([](const Arguments& arguments) {
        arguments.Write(2, static_cast<long>(DROPEFFECT_MOVE));
    });
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    const auto all = TakeEvents();
    EXPECT_THAT(all, Contains("others.OLEDragDrop(p2, 4, 2)"));
    EXPECT_EQ(all.back(), "OLECompleteDrag(2)");
}

TEST_F(ListViewDrag, TheHostsEffectOfADropReachesTheSource) {
    otherEvents.On("OLEDragDrop").Run([](const Arguments& arguments) {
        arguments.Write(2, static_cast<long>(DROPEFFECT_MOVE));
    });
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_EQ(TakeEvents().back(), "OLECompleteDrag(2)");
}

TEST_F(ListViewDrag, TheHostMayShowCursorsOfItsOwn) {
    const HCURSOR own = LoadCursorW(nullptr, MAKEINTRESOURCEW(32515));
    bool ours = true;
    int kept = 0;
    int replaced = 0;
    events.On("OLEGiveFeedback").Run([&](const Arguments& arguments) {
        ++(GetCursor() == own ? kept : replaced);
        SetCursor(own);
        arguments.Write(1, !ours);
    });
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_GT(kept, 0);
    EXPECT_LE(replaced, 1) << "before the first time";
    ours = false;
    kept = replaced = 0;
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_GT(replaced, 1);
}

TEST_F(ListViewDrag, ADropOnEmptySpaceRaisesNothing) {
    Drag(OnRow(0), Others(), BelowRows(Others()));
    const auto all = TakeEvents();
    EXPECT_THAT(EventsOf(all, "OLEDragDrop"), IsEmpty());
    EXPECT_THAT(EventsOf(all, "OLEStartDrag").size(), 1u);
    EXPECT_THAT(EventsOf(all, "OLECompleteDrag").size(), 1u);
}

TEST_F(ListViewDrag, WithinOneList) {
    list.Put("dropAllowed", true);
    Drag(OnRow(0), List(), OnRow(2));
    const auto all = TakeEvents();
    EXPECT_EQ(all.front(), "OLEStartDrag(b1, 4, 3)");
    EXPECT_THAT(all, Contains("OLEDragDrop(b3, 4, 1)"));
    EXPECT_EQ(all.back(), "OLECompleteDrag(1)");
}

TEST_F(ListViewDrag, WithoutTheFlagsNothingIsDraggedOrDropped) {
    list.Put("dragAllowed", false);
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_THAT(EventsOf(TakeEvents(), "OLE"), IsEmpty());
    list.Put("dragAllowed", true);
    others.Put("dropAllowed", false);
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    const auto all = TakeEvents();
    EXPECT_THAT(EventsOf(all, "others."), IsEmpty());
    EXPECT_EQ(all.back(), "OLECompleteDrag(0)");
}

/// Whether the thread has what drag and drop needs, which is more than COM.
bool HasOleServices() {
    return OleSetClipboard(nullptr) != CO_E_NOTINITIALIZED;
}

TEST_F(ListViewDrag, AHostThatInitializedComAloneDragsAndDropsToo) {
    others.Put("dropAllowed", false);
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    OleUninitialize();
    ASSERT_FALSE(HasOleServices());
    bool hadServices = false;
    events.On("OLEGiveFeedback").Run([&](const Arguments&) { hadServices = HasOleServices(); });
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_TRUE(hadServices);
    EXPECT_EQ(TakeEvents().back(), "OLECompleteDrag(0)");
    others.Put("dropAllowed", true);
    EXPECT_TRUE(HasOleServices());
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_THAT(TakeEvents(), Contains("others.OLEDragDrop(p2, 4, 1)"));
    others.Put("dropAllowed", false);
    EXPECT_FALSE(HasOleServices());
    OleInitialize(nullptr);
    CoUninitialize();
}

TEST_F(ListViewDrag, CreateLeavesTheListsOwnDraggingOn) {
    list.Call("Create");
    list.Call("AddColumn", "Name", "Name", "1800");
    list.Call("SetList_Nodes", book, false);
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_EQ(TakeEvents().front(), "OLEStartDrag(b1, 4, 3)");
}

TEST_F(ListViewDrag, TheTextOfTheRowReachesAnotherProgramsTarget) {
    const HWND field = CreateWindowExW(0, L"Static", L"", WS_CHILD | WS_VISIBLE | SS_NOTIFY, 10,
                                       180, 400, 40, window.Handle(), nullptr, nullptr, nullptr);
    TextTarget target;
    ASSERT_EQ(RegisterDragDrop(field, &target), S_OK);
    Drag(OnRow(1), field, {50, 20});
    EXPECT_EQ(target.text, L"On Graphs");
    EXPECT_EQ(TakeEvents().back(), "OLECompleteDrag(1)");
    target.effect = DROPEFFECT_NONE;
    target.text.clear();
    Drag(OnRow(2), field, {50, 20});
    EXPECT_EQ(target.text, L"");
    EXPECT_EQ(TakeEvents().back(), "OLECompleteDrag(0)");
    RevokeDragDrop(field);
    DestroyWindow(field);
}

TEST_F(ListViewDrag, EscapeEndsADragWithoutAnEffect) {
    Input input;
    input.MoveTo(List(), OnRow(1)).Press().Wait(150);
    input.MoveTo(Others(), OnRow(Others(), 0)).Wait(300).Key(VK_ESCAPE).Wait(300).Release();
    ASSERT_TRUE(Play(input));
    const auto all = TakeEvents();
    EXPECT_THAT(EventsOf(all, "OLEDragDrop"), IsEmpty());
    EXPECT_EQ(all.back(), "OLECompleteDrag(0)");
}

/// Drops a text on a window's registered target, as another program's drag ends there.
DWORD DropOn(HWND window, POINT client, DWORD allowed) {
    auto* target = static_cast<IDropTarget*>(GetPropW(window, L"OleDropTargetInterface"));
    ClientToScreen(window, &client);
    DWORD effect = allowed;
    target->DragEnter(nullptr, MK_LBUTTON, {client.x, client.y}, &effect);
    effect = allowed;
    target->DragOver(MK_LBUTTON, {client.x, client.y}, &effect);
    effect = allowed;
    target->Drop(nullptr, 0, {client.x, client.y}, &effect);
    return effect;
}

TEST_F(ListViewDrag, ADropOfAnotherProgramRaisesTheEventsOnARow) {
    EXPECT_EQ(DropOn(Others(), OnRow(Others(), 1), DROPEFFECT_COPY | DROPEFFECT_LINK),
              DWORD{DROPEFFECT_COPY});
    EXPECT_THAT(TakeEvents(), ElementsAre("others.OLEDragOver()", "others.OLEDragDrop(p2, 4, 1)"));
    EXPECT_EQ(DropOn(Others(), OnRow(Others(), 1), DROPEFFECT_LINK), DWORD{DROPEFFECT_LINK});
    EXPECT_THAT(TakeEvents(), Contains("others.OLEDragDrop(p2, 4, 4)"));
    DropOn(Others(), BelowRows(Others()), DROPEFFECT_COPY);
    EXPECT_THAT(TakeEvents(), Each(Not(StartsWith("others.OLEDragDrop"))));
}

TEST_F(ListViewDrag, ADropOnARowWhoseObjectIsGoneHasNone) {
    model.Remove(euler);
    DropOn(Others(), OnRow(Others(), 1), DROPEFFECT_COPY);
    EXPECT_THAT(TakeEvents(), Contains("others.OLEDragDrop(Nothing, 4, 1)"));
}

TEST_F(ListViewDrag, AHostMayClearTheTargetInADrop) {
    otherEvents.On("OLEDragDrop").Run([this] { others.Call("Clear"); });
    DropOn(Others(), OnRow(Others(), 1), DROPEFFECT_COPY);
    EXPECT_EQ(SendMessageW(Others(), LVM_GETITEMCOUNT, 0, 0), 0);
}

TEST_F(ListViewDrag, AHostMayLetGoOfTheSourceInADrop) {
    otherEvents.On("OLEDragDrop").Run([this] {
        list.Call("Destroy");
        hosted.Close();
    });
    Drag(OnRow(0), Others(), OnRow(Others(), 1));
    EXPECT_THAT(TakeEvents(), Contains("others.OLEDragDrop(p2, 4, 1)"));
}

}  // namespace
}  // namespace support
