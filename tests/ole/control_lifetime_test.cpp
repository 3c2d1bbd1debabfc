#include "control_fixture.h"
#include "support/event_recorder.h"
#include "support/fake_repository.h"
#include "support/leaks.h"

using namespace support;

namespace {

/// What a host may do in the middle of any call that a control makes.
enum class Mischief { deactivate, close, takeSiteAway, letGo };

std::string NameOf(Mischief mischief) {
    switch (mischief) {
        case Mischief::deactivate:
            return "deactivates";
        case Mischief::close:
            return "closes";
        case Mischief::takeSiteAway:
            return "takes the site away";
        default:
            return "lets go of everything";
    }
}

constexpr const char* siteCalls[] = {
    "IOleInPlaceSite.CanInPlaceActivate",
    "IOleInPlaceSite.OnInPlaceActivate",
    "IOleInPlaceSite.GetWindow",
    "IOleInPlaceSite.GetWindowContext",
    "IOleInPlaceSite.OnPosRectChange",
    "IOleClientSite.ShowObject",
    "IOleInPlaceSite.OnUIActivate",
    "IOleInPlaceFrame.SetActiveObject",
    "IOleInPlaceFrame.SetBorderSpace",
    "IOleControlSite.OnFocus",
    "IOleInPlaceSite.OnUIDeactivate",
    "IOleInPlaceSite.OnInPlaceDeactivate",
    "IDispatch.Invoke",
    "IAdviseSink.OnViewChange",
};

class ControlLifetime : public testing::Test {
protected:
    void Disturb(const char* call, Mischief mischief) {
        Ref<IDispatch> control = server.Create("Combo");
        LoggingContainer container(control.Get());
        container.On(call).Times(1).Run([&] {
            auto& hosted = container.Hosted();
            switch (mischief) {
                case Mischief::deactivate:
                    hosted.InPlaceDeactivate();
                    break;
                case Mischief::close:
                    hosted.CloseObject();
                    break;
                case Mischief::takeSiteAway:
                    hosted.TakeSiteAway();
                    break;
                case Mischief::letGo:
                    control.Reset();
                    container.Form().Clear();
                    break;
            }
        });
        const bool gone = mischief == Mischief::letGo;
        auto& hosted = container.Hosted();
        const auto isHere = [&] { return !container.Form().Controls().empty(); };
        if (isHere()) hosted.SetClientSite();
        if (isHere()) hosted.Advise();
        if (isHere()) hosted.Move(LoggingContainer::place);
        if (isHere()) hosted.DoVerb(OLEIVERB_UIACTIVATE);
        if (isHere()) hosted.SetExtent({120, 40});
        if (isHere()) hosted.InPlaceDeactivate();
        if (!gone) {
            // The next use works.
            container.Calm();
            hosted.SetClientSite();
            EXPECT_EQ(hosted.DoVerb(OLEIVERB_SHOW), S_OK);
            EXPECT_TRUE(hosted.IsInPlaceActive());
            hosted.CloseObject();
        }
    }

    Server server;
};

TEST_F(ControlLifetime, HostMayDoAnythingInAnyCallToItsSite) {
    for (const char* call : siteCalls) {
        for (const Mischief mischief :
             {Mischief::deactivate, Mischief::close, Mischief::takeSiteAway, Mischief::letGo}) {
            SCOPED_TRACE(std::string(call) + ": the host " + NameOf(mischief));
            Disturb(call, mischief);
        }
    }
}

TEST_F(ControlLifetime, NothingStaysBehindWhateverTheHostDoes) {
    for (const char* call : siteCalls) {
        SCOPED_TRACE(call);
        ExpectNoLeaks([&] { Disturb(call, Mischief::close); }, &server, 3);
    }
}

TEST_F(ControlLifetime, NothingStaysBehindOfAControlWithoutAContainer) {
    FakeRepository model;
    model.MetaNode("Book");
    model.Log().enabled = false;
    ExpectNoLeaks(
        [&] {
            const LateBound combo(server.Create("Combo"));
            EXPECT_TRUE(combo.Do("Create"));
            EXPECT_TRUE(combo.Do("SetList_MetaNodes", model.Root(), "Name"));
            EXPECT_FALSE(combo.Do("SetList_MetaNodes", Nothing(), "Name"));
        },
        &server);
}

TEST_F(ControlLifetime, ControlThatIsLetGoOfWithoutCloseLeavesNothing) {
    ExpectNoLeaks(
        [&] {
            Ref<IDispatch> control = server.Create("Combo");
            LoggingContainer container(control.Get());
            container.Hosted().SetClientSite();
            container.Hosted().Move(LoggingContainer::place);
            container.Hosted().DoVerb(OLEIVERB_UIACTIVATE);
        },
        &server);
}

TEST_F(ControlLifetime, CloseLetsGoOfSiteAndSinks) {
    Ref<IDispatch> control = server.Create("Combo");
    EventRecorder events(control.Get());
    LoggingContainer container(control.Get());
    PlayRunningForm(container);
    container.Hosted().CloseObject();
    Ref<IOleClientSite> site;
    Query<IOleObject>(control.Get())->GetClientSite(site.GetAddressOf());
    EXPECT_EQ(site, nullptr);
    container.Take();
    EXPECT_TRUE(LateBound(control).Do("Clear")) << "it works without a container again";
}

TEST_F(ControlLifetime, CloseAsksTheContainerToSaveWhatIsDirty) {
    Ref<IDispatch> control = server.Create("Combo");
    LoggingContainer container(control.Get());
    container.Hosted().SetClientSite();
    container.Hosted().SetExtent({150, 30});
    ASSERT_EQ(Query<IPersistStreamInit>(control.Get())->IsDirty(), S_OK);
    container.Take();
    Query<IOleObject>(control.Get())->Close(OLECLOSE_SAVEIFDIRTY);
    EXPECT_EQ(container.Count("IOleClientSite.SaveObject"), 1u);
}

TEST_F(ControlLifetime, DestroyedParentWindowTakesTheControlsWindowAlong) {
    Ref<IDispatch> control = server.Create("Combo");
    {
        LoggingContainer container(control.Get());
        PlayRunningForm(container);
        DestroyWindow(container.ControlWindow());
    }
    HWND window = nullptr;
    Query<IOleWindow>(control.Get())->GetWindow(&window);
    EXPECT_TRUE(IsWindow(window)) << "another one is made when it is needed";
    EXPECT_TRUE(LateBound(control).Do("Clear"));
}

}  // namespace
