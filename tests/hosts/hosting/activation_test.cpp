#include "hosts/hosting/double_form.h"

#include "hosting/class_id.h"
#include "hosting/error.h"
#include "hosting/metrics.h"

#include <gmock/gmock.h>
#include <shlwapi.h>

using hosting::Activation;
using hosting::Error;
using hosting::HostedControl;
using hosting::LateBound;
using hosting::Ref;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

class HostedControlTest : public DoubleForm {};

std::string ExtentCall() {
    const SIZE size = hosting::PixelsToHimetric({100, 50});
    return "SetExtent " + std::to_string(size.cx) + " " + std::to_string(size.cy);
}

Ref<IStream> StreamOf(const std::wstring& text) {
    return hosting::Adopt(SHCreateMemStream(reinterpret_cast<const BYTE*>(text.data()),
                                            static_cast<UINT>(text.size() * sizeof(wchar_t))));
}

LONG Living(const LateBound& control) {
    return control.Get(L"Living");
}

TEST_F(HostedControlTest, OrdinaryActivationFollowsTheClassicOrder) {
    const HostedControl& control = AddDouble(L"one");
    EXPECT_THAT(Log(control), ElementsAre("SetClientSite", "InitNew", "Advise", ExtentCall(),
                                          "DoVerb -5", "SetObjectRects 10 20 110 70"));
    EXPECT_TRUE(control.IsInPlaceActive());
    EXPECT_FALSE(control.IsUIActive());
}

TEST_F(HostedControlTest, TheControlsCallsReachTheObserverInOrder) {
    AddDouble(L"one");
    EXPECT_THAT(observer.calls,
                ElementsAre("IOleInPlaceSite.CanInPlaceActivate", "IOleInPlaceSite.GetWindow",
                            "IOleInPlaceSite.OnInPlaceActivate"));
}

TEST_F(HostedControlTest, TheSiteComesAfterTheStateWhereTheHostWantsIt) {
    Activation activation;
    activation.siteOrder = Activation::SiteOrder::afterState;
    const auto log = Log(AddDouble(L"one", activation));
    ASSERT_GE(log.size(), 2U);
    EXPECT_EQ(log[0], "InitNew");
    EXPECT_EQ(log[1], "SetClientSite");
}

TEST_F(HostedControlTest, QuickActivationReplacesSitingAndAdvising) {
    Activation activation;
    activation.quick = true;
    const auto log = Log(AddDouble(L"one", activation));
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log[0], "QuickActivate");
    EXPECT_THAT(log, Not(Contains("SetClientSite")));
}

TEST_F(HostedControlTest, AStateIsLoadedInsteadOfANewOne) {
    const auto stream = StreamOf(L"kept");
    Activation activation;
    activation.state = stream.Get();
    const HostedControl& control = AddDouble(L"one", activation);
    EXPECT_THAT(Log(control), AllOf(Contains("Load"), Not(Contains("InitNew"))));
    EXPECT_EQ(_bstr_t(Late(control).Get(L"Text")), _bstr_t(L"kept"));
}

TEST_F(HostedControlTest, TheVerbsAreThoseOfTheActivation) {
    Activation activation;
    activation.verbs = {OLEIVERB_SHOW, OLEIVERB_UIACTIVATE, OLEIVERB_HIDE};
    HostedControl& control = AddDouble(L"one", activation);
    EXPECT_THAT(Log(control), AllOf(Contains("DoVerb -1"), Contains("DoVerb -4"),
                                    Contains("DoVerb -3"), Not(Contains("DoVerb -5"))));
    EXPECT_TRUE(control.IsUIActive());
    EXPECT_EQ(form.Active(), &control);
    EXPECT_FALSE(IsWindowVisible(control.Window()));
}

TEST_F(HostedControlTest, TheWindowLiesInItsRectangle) {
    const HostedControl& control = AddDouble(L"one");
    RECT place{};
    GetWindowRect(control.Window(), &place);
    MapWindowPoints(nullptr, window.Handle(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_TRUE(EqualRect(&place, &bounds));
    EXPECT_EQ(GetParent(control.Window()), window.Handle());
}

TEST_F(HostedControlTest, MovingNegotiatesTheExtentOnlyWhereTheSizeChanges) {
    HostedControl& control = AddDouble(L"one");
    const auto before = Log(control).size();
    control.Move({0, 0, 100, 50});
    EXPECT_EQ(Log(control).size(), before + 1);
    EXPECT_EQ(Log(control).back(), "SetObjectRects 0 0 100 50");
    control.Move({0, 0, 200, 60});
    EXPECT_EQ(Log(control).size(), before + 3);
    EXPECT_EQ(control.Extent().cx, 200);
    EXPECT_EQ(control.Extent().cy, 60);
}

TEST_F(HostedControlTest, AControlMayResizeItself) {
    const HostedControl& control = AddDouble(L"one");
    Late(control).Call(L"RequestSize", 55, 33);
    EXPECT_EQ(control.Bounds().right, 65);
    EXPECT_EQ(control.Bounds().bottom, 53);
    EXPECT_EQ(Log(control).back(), "SetObjectRects 10 20 65 53");
}

TEST_F(HostedControlTest, TheHostMayKeepAControlsSize) {
    HostedControl& control = AddDouble(L"one");
    RECT wanted{};
    control.onMoveRequest = [&wanted](const RECT& request) {
        wanted = request;
        return false;
    };
    Late(control).Call(L"RequestSize", 55, 33);
    EXPECT_EQ(wanted.right, 65);
    EXPECT_TRUE(EqualRect(&control.Bounds(), &bounds));
}

TEST_F(HostedControlTest, ARefusedCallFailsTheActivation) {
    observer.refused = "IOleInPlaceSite.CanInPlaceActivate";
    observer.refusal = S_FALSE;
    EXPECT_THROW(AddDouble(L"one"), Error);
    EXPECT_THAT(observer.calls, ElementsAre("IOleInPlaceSite.CanInPlaceActivate"));
}

TEST_F(HostedControlTest, AHiddenInterfaceIsNotThere) {
    observer.hidden = IID_IOleInPlaceSite;
    EXPECT_THROW(AddDouble(L"one"), Error);
    EXPECT_TRUE(observer.calls.empty());
}

TEST_F(HostedControlTest, AmbientPropertiesAreThoseOfTheForm) {
    form.Ambients().Set(DISPID_AMBIENT_USERMODE, false);
    form.Ambients().Remove(DISPID_AMBIENT_LOCALEID);
    HostedControl& control = AddDouble(L"Picker");
    const LateBound late = Late(control);
    EXPECT_EQ(late.Get(L"Ambient", long{DISPID_AMBIENT_USERMODE}), _variant_t(false));
    EXPECT_EQ(late.Get(L"Ambient", long{DISPID_AMBIENT_DISPLAYNAME}), _variant_t(L"Picker"));
    EXPECT_EQ(late.Get(L"Ambient", long{DISPID_AMBIENT_FONT}).vt, VT_DISPATCH);
    EXPECT_THROW(late.Get(L"Ambient", long{DISPID_AMBIENT_LOCALEID}), Error);
    control.Ambients().Set(DISPID_AMBIENT_UIDEAD, true);
    control.AmbientChanged(DISPID_AMBIENT_UIDEAD);
    EXPECT_EQ(late.Get(L"Ambient", long{DISPID_AMBIENT_UIDEAD}), _variant_t(true));
    EXPECT_EQ(Log(control).back(), "OnAmbientPropertyChange -710");
}

TEST_F(HostedControlTest, ViewChangesReachTheAdviseSink) {
    const HostedControl& control = AddDouble(L"one");
    observer.calls.clear();
    Late(control).Put(L"Text", L"other");
    EXPECT_THAT(observer.calls, ElementsAre("IAdviseSink.OnViewChange 1"));
}

TEST_F(HostedControlTest, ClosingGoesBackwardsAndLeavesNothing) {
    Activation activation;
    activation.verbs = {OLEIVERB_UIACTIVATE};
    HostedControl& control = AddDouble(L"one", activation);
    const LateBound held = Late(control);
    const auto before = Log(held).size();
    control.Close();
    const auto log = Log(held);
    EXPECT_THAT(
        std::vector<std::string>(log.begin() + static_cast<std::ptrdiff_t>(before), log.end()),
        ElementsAre("UIDeactivate", "InPlaceDeactivate", "Unadvise", "Close",
                    "SetClientSite none"));
    EXPECT_EQ(control.Control(), nullptr);
    EXPECT_EQ(form.Active(), nullptr);
    control.Close();
    EXPECT_EQ(Log(held).size(), log.size());
}

TEST_F(HostedControlTest, TheFormReleasesItsControls) {
    const LateBound witness = LateBound::Create(L"HostDouble.Control");
    AddDouble(L"one");
    AddDouble(L"two");
    EXPECT_EQ(Living(witness), 3);
    form.Remove(*form.Find(L"ONE"));
    EXPECT_EQ(Living(witness), 2);
    EXPECT_EQ(form.Find(L"one"), nullptr);
    form.Clear();
    EXPECT_EQ(Living(witness), 1);
}

TEST_F(HostedControlTest, AControlMayBeRemovedWhileItComesToLife) {
    const LateBound witness = LateBound::Create(L"HostDouble.Control");
    observer.onCall = [this](const std::string& call) {
        if (call == "IOleInPlaceSite.OnInPlaceActivate") form.Remove(*form.Find(L"one"));
    };
    EXPECT_THROW(AddDouble(L"one"), Error);
    EXPECT_EQ(Living(witness), 1);
    EXPECT_TRUE(form.Controls().empty());
}

TEST_F(HostedControlTest, ASiteThatOutlivesItsControlAnswersWithErrors) {
    HostedControl& control = AddDouble(L"one");
    const Ref<IOleClientSite> site(control.ClientSite());
    form.Remove(control);
    const auto place = hosting::Query<IOleInPlaceSite>(site.Get());
    ASSERT_TRUE(place);
    HWND parent = window.Handle();
    EXPECT_EQ(place->GetWindow(&parent), E_UNEXPECTED);
    EXPECT_EQ(parent, nullptr);
    EXPECT_EQ(place->OnUIActivate(), E_UNEXPECTED);
}

TEST_F(HostedControlTest, TheSiteIsOneObject) {
    HostedControl& control = AddDouble(L"one");
    IOleClientSite* site = control.ClientSite();
    const auto identity = hosting::Query<IUnknown>(site);
    for (const IID& iid : {IID_IOleInPlaceSite, IID_IOleInPlaceSiteEx, IID_IOleWindow,
                           IID_IOleControlSite, IID_IDispatch, IID_IAdviseSink, IID_IAdviseSinkEx,
                           IID_IPropertyNotifySink, IID_IServiceProvider}) {
        Ref<IUnknown> found;
        ASSERT_EQ(site->QueryInterface(iid, reinterpret_cast<void**>(found.GetAddressOf())), S_OK);
        EXPECT_EQ(hosting::Query<IUnknown>(found.Get()).Get(), identity.Get());
    }
    Ref<IUnknown> none;
    EXPECT_EQ(site->QueryInterface(IID_IStorage, reinterpret_cast<void**>(none.GetAddressOf())),
              E_NOINTERFACE);
    const auto services = hosting::Query<IServiceProvider>(site);
    EXPECT_EQ(services->QueryService(IID_IStorage, IID_IUnknown,
                                     reinterpret_cast<void**>(none.GetAddressOf())),
              E_NOINTERFACE);
}

TEST_F(HostedControlTest, AnObjectThatIsNoControlIsRefused) {
    HostedControl& place = form.Add(L"one");
    const auto bag = hosting::MakeFont(L"Arial", 8);
    EXPECT_THROW(place.Take(bag.Get()), Error);
    EXPECT_THROW(place.Create(L"No.Such.Class"), Error);
}

}  // namespace
