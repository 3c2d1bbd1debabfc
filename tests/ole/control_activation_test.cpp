#include "control_fixture.h"
#include "support/fake_property_bag.h"

using namespace support;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

namespace {

class ControlActivation : public ControlTest {
protected:
    LoggingContainer container{control.Get()};

    HRESULT Verb(LONG verb) { return container.Hosted().DoVerb(verb); }
    void Begin() {
        container.Hosted().SetClientSite();
        container.Hosted().Move(LoggingContainer::place);
        container.Take();
    }
};

TEST_F(ControlActivation, ShowAsksTheSiteInTheOrderOfAnInPlaceActivation) {
    Begin();
    EXPECT_EQ(Verb(OLEIVERB_SHOW), S_OK);
    auto calls = SiteCalls(container);
    calls.erase(std::remove(calls.begin(), calls.end(), "OnPosRectChange"), calls.end());
    EXPECT_THAT(calls, ElementsAre("CanInPlaceActivate", "OnInPlaceActivate", "GetWindow",
                                   "GetWindowContext", "ShowObject"));
    EXPECT_TRUE(IsWindowVisible(Outer()));
    EXPECT_EQ(GetParent(Outer()), container.Window());
}

TEST_F(ControlActivation, UiActivationGivesTheFrameAnActiveObjectAndTheControlTheFocus) {
    Begin();
    EXPECT_EQ(Verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_THAT(SiteCalls(container),
                IsSupersetOf({"OnUIActivate", "SetActiveObject", "SetBorderSpace"}));
    EXPECT_TRUE(container.Hosted().IsUIActive());
    EXPECT_TRUE(GetFocus() == Inner() || IsChild(Inner(), GetFocus()));
}

TEST_F(ControlActivation, SecondActivationAsksNothingOfTheSite) {
    Begin();
    Verb(OLEIVERB_UIACTIVATE);
    container.Take();
    EXPECT_EQ(Verb(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_THAT(SiteCalls(container), Not(Contains("CanInPlaceActivate")));
    EXPECT_EQ(container.Count("OnUIActivate"), 0u);
}

TEST_F(ControlActivation, DeactivationGoesBackwards) {
    Begin();
    Verb(OLEIVERB_UIACTIVATE);
    container.Take();
    EXPECT_EQ(As<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    auto calls = SiteCalls(container);
    calls.erase(std::remove(calls.begin(), calls.end(), "OnFocus"), calls.end());
    // Frame and document both had it.
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    EXPECT_THAT(calls, ElementsAre("SetActiveObject", "OnUIDeactivate", "OnInPlaceDeactivate"));
    EXPECT_FALSE(IsWindowVisible(Outer()));
    EXPECT_NE(GetParent(Outer()), container.Window());
    EXPECT_EQ(As<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    EXPECT_THAT(SiteCalls(container), IsEmpty());
}

TEST_F(ControlActivation, UiDeactivationLeavesTheControlShown) {
    Begin();
    Verb(OLEIVERB_UIACTIVATE);
    EXPECT_EQ(As<IOleInPlaceObject>()->UIDeactivate(), S_OK);
    EXPECT_FALSE(container.Hosted().IsUIActive());
    EXPECT_TRUE(container.Hosted().IsInPlaceActive());
    EXPECT_TRUE(IsWindowVisible(Outer()));
}

TEST_F(ControlActivation, HideDeactivates) {
    Begin();
    Verb(OLEIVERB_SHOW);
    EXPECT_EQ(Verb(OLEIVERB_HIDE), S_OK);
    EXPECT_FALSE(container.Hosted().IsInPlaceActive());
    EXPECT_EQ(Verb(OLEIVERB_SHOW), S_OK);
    EXPECT_TRUE(container.Hosted().IsInPlaceActive());
}

TEST_F(ControlActivation, UnknownVerbs) {
    Begin();
    EXPECT_EQ(Verb(-77), E_NOTIMPL);
    EXPECT_FALSE(container.Hosted().IsInPlaceActive());
    EXPECT_EQ(Verb(77), OLEOBJ_S_INVALIDVERB);
    EXPECT_TRUE(container.Hosted().IsInPlaceActive());
}

TEST_F(ControlActivation, WithoutASiteThereIsNone) {
    EXPECT_EQ(Verb(OLEIVERB_SHOW), OLE_E_NOT_INPLACEACTIVE);
    EXPECT_EQ(As<IOleInPlaceObject>()->SetObjectRects(&LoggingContainer::place, nullptr),
              OLE_E_NOT_INPLACEACTIVE);
    EXPECT_EQ(As<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(As<IOleInPlaceObject>()->UIDeactivate(), S_OK);
}

TEST_F(ControlActivation, RefusedActivationLeavesNothingHalfDone) {
    Begin();
    container.On("IOleInPlaceSite.CanInPlaceActivate").Fail(Failure::Result(S_FALSE));
    EXPECT_EQ(Verb(OLEIVERB_SHOW), OLE_E_NOT_INPLACEACTIVE);
    EXPECT_FALSE(IsWindowVisible(Outer()));
    container.Calm();
    EXPECT_EQ(Verb(OLEIVERB_SHOW), S_OK);
}

TEST_F(ControlActivation, FailureOfTheSiteEndsTheActivationItBegan) {
    for (const char* call : {"IOleInPlaceSite.GetWindow", "IOleInPlaceSite.GetWindowContext"}) {
        Begin();
        container.On(call).Fail(Failure::Result(E_FAIL));
        EXPECT_EQ(Verb(OLEIVERB_SHOW), E_FAIL) << call;
        EXPECT_THAT(SiteCalls(container), Contains("OnInPlaceDeactivate")) << call;
        EXPECT_FALSE(IsWindowVisible(Outer()));
        container.Calm();
        EXPECT_EQ(Verb(OLEIVERB_SHOW), S_OK) << call;
        Verb(OLEIVERB_HIDE);
    }
}

TEST_F(ControlActivation, RefusedUiActivationLeavesTheControlShown) {
    Begin();
    container.On("IOleInPlaceSite.OnUIActivate").Fail(Failure::Result(E_FAIL));
    Verb(OLEIVERB_UIACTIVATE);
    EXPECT_TRUE(container.Hosted().IsInPlaceActive());
    EXPECT_THAT(SiteCalls(container), Not(Contains("SetActiveObject")));
}

TEST_F(ControlActivation, RectanglesPlaceTheWindow) {
    Begin();
    Verb(OLEIVERB_SHOW);
    const RECT place = {30, 40, 180, 140};
    EXPECT_EQ(As<IOleInPlaceObject>()->SetObjectRects(&place, &place), S_OK);
    RECT window = {};
    GetWindowRect(Outer(), &window);
    MapWindowPoints(nullptr, container.Window(), reinterpret_cast<POINT*>(&window), 2);
    EXPECT_EQ(window.left, 30);
    EXPECT_EQ(window.top, 40);
    EXPECT_EQ(window.right, 180);
    EXPECT_EQ(As<IOleInPlaceObject>()->SetObjectRects(nullptr, nullptr), E_POINTER);
}

TEST_F(ControlActivation, ControlOfFixedHeightAsksForItsOwnSize) {
    Begin();
    Verb(OLEIVERB_SHOW);
    EXPECT_GE(container.Count("OnPosRectChange"), 1u);
    RECT window = {};
    GetWindowRect(Outer(), &window);
    RECT box = {};
    GetWindowRect(Inner(), &box);
    EXPECT_EQ(window.bottom - window.top, box.bottom - box.top);
}

TEST_F(ControlActivation, RefusedSizeIsNotAskedForInALoop) {
    Begin();
    container.Hosted().onMoveRequest = [](const RECT&) { return false; };
    Verb(OLEIVERB_SHOW);
    const RECT place = {30, 40, 180, 140};
    As<IOleInPlaceObject>()->SetObjectRects(&place, &place);
    EXPECT_LE(container.Count("OnPosRectChange"), 4u);
}

TEST_F(ControlActivation, QuickActivationDoesTheSameInOneCall) {
    const auto quick = As<IQuickActivate>();
    QACONTAINER asks = {};
    QACONTROL answers = {};
    asks.cbSize = sizeof(asks);
    answers.cbSize = sizeof(answers);
    asks.pClientSite = container.Hosted().ClientSite();
    EXPECT_EQ(quick->QuickActivate(&asks, &answers), S_OK);
    DWORD status = 0;
    As<IOleObject>()->GetMiscStatus(DVASPECT_CONTENT, &status);
    EXPECT_EQ(answers.dwMiscStatus, status);
    EXPECT_NE(answers.dwViewStatus & static_cast<DWORD>(VIEWSTATUS_OPAQUE), 0u);
    EXPECT_EQ(answers.dwEventCookie, 0u);
    EXPECT_EQ(answers.dwPropNotifyCookie, 0u);
    Ref<IOleClientSite> site;
    As<IOleObject>()->GetClientSite(site.GetAddressOf());
    EXPECT_EQ(site.Get(), container.Hosted().ClientSite());
    asks.cbSize = 4;
    EXPECT_EQ(quick->QuickActivate(&asks, &answers), E_INVALIDARG);
    EXPECT_EQ(quick->QuickActivate(nullptr, &answers), E_POINTER);
}

TEST_F(ControlActivation, SequencesOfClassicHostsWork) {
    PlayRunningForm(container);
    EXPECT_TRUE(IsWindowVisible(Outer()));
    PlayClose(container);
    EXPECT_FALSE(IsWindowVisible(Outer()));
}

TEST_F(ControlActivation, DocumentSequenceWorks) {
    const Ref<IStorage> storage = NewStorage();
    PlayDocument(container, storage.Get());
    EXPECT_TRUE(IsWindowVisible(Outer()));
    PlayClose(container, OLECLOSE_SAVEIFDIRTY);
}

}  // namespace
