#include <olectl.h>

#include "control_fixture.h"
#include "support/event_recorder.h"
#include "support/fake_repository.h"

#include "hosting/ambient_properties.h"

using namespace support;

namespace {

class ControlSurroundings : public ControlTest {
protected:
    LoggingContainer container{control.Get()};
    FakeRepository model;
    FakeMetaNode* book = model.MetaNode("Book");

    hosting::AmbientProperties& Ambients() { return container.Hosted().Ambients(); }
    LOGFONTW InnerFont() const {
        LOGFONTW font = {};
        const auto handle = reinterpret_cast<HFONT>(SendMessageW(Inner(), WM_GETFONT, 0, 0));
        GetObjectW(handle, sizeof(font), &font);
        return font;
    }
    /// Raises `Click` once by setting the selection, and says how often it arrived.
    std::size_t ClicksOf(EventRecorder& events) {
        events.Take();
        EXPECT_TRUE(LateBound(control).PutRef("selection", book));
        return events.Count("Click");
    }
};

TEST_F(ControlSurroundings, FontIsTheContainers) {
    Ambients().Set(DISPID_AMBIENT_FONT,
                   _variant_t(hosting::MakeFont(L"Liberation Sans", 20).Get()));
    container.Hosted().SetClientSite();
    Outer();
    const LONG large = InnerFont().lfHeight;
    EXPECT_STREQ(InnerFont().lfFaceName, L"Liberation Sans");
    Ambients().Set(DISPID_AMBIENT_FONT,
                   _variant_t(hosting::MakeFont(L"Liberation Sans", 10).Get()));
    container.Hosted().AmbientChanged(DISPID_AMBIENT_FONT);
    EXPECT_LT(std::abs(InnerFont().lfHeight), std::abs(large));
}

TEST_F(ControlSurroundings, WithoutAnAmbientFontTheSystemsIsTaken) {
    const LONG own = InnerFont().lfHeight;
    Ambients().Remove(DISPID_AMBIENT_FONT);
    container.Hosted().SetClientSite();
    EXPECT_EQ(InnerFont().lfHeight, own);
    EXPECT_NE(own, 0);
}

TEST_F(ControlSurroundings, WrongKindsOfAmbientValuesDoNoHarm) {
    for (const DISPID id :
         {DISPID_AMBIENT_FONT, DISPID_AMBIENT_FORECOLOR, DISPID_AMBIENT_BACKCOLOR,
          DISPID_AMBIENT_USERMODE, DISPID_AMBIENT_LOCALEID, DISPID_AMBIENT_UIDEAD}) {
        for (const Value& value : {Value("text"), Value(5), Null(), Nothing(), Bytes({1})}) {
            Ambients().Set(id, value);
            container.Hosted().SetClientSite();
            container.Hosted().AmbientChanged();
        }
    }
    EXPECT_TRUE(LateBound(control).Do("Clear"));
}

TEST_F(ControlSurroundings, NoEventsWhileTheFormIsDesigned) {
    EventRecorder events(control.Get());
    EXPECT_TRUE(LateBound(control).Do("SetList_MetaNodes", model.Root(), "Name"));
    container.SetUserMode(false);
    container.Hosted().SetClientSite();
    EXPECT_EQ(ClicksOf(events), 0u);
    container.SetUserMode(true);
    container.Hosted().AmbientChanged(DISPID_AMBIENT_USERMODE);
    EXPECT_EQ(ClicksOf(events), 1u);
}

TEST_F(ControlSurroundings, NoEventsWhileTheContainerFreezesThem) {
    EventRecorder events(control.Get());
    EXPECT_TRUE(LateBound(control).Do("SetList_MetaNodes", model.Root(), "Name"));
    const auto shell = As<IOleControl>();
    shell->FreezeEvents(TRUE);
    shell->FreezeEvents(TRUE);
    shell->FreezeEvents(FALSE);
    EXPECT_EQ(ClicksOf(events), 0u);
    shell->FreezeEvents(FALSE);
    EXPECT_EQ(ClicksOf(events), 1u);
}

TEST_F(ControlSurroundings, NoEventsWhileTheContainersInterfaceIsDead) {
    EventRecorder events(control.Get());
    EXPECT_TRUE(LateBound(control).Do("SetList_MetaNodes", model.Root(), "Name"));
    Ambients().Set(DISPID_AMBIENT_UIDEAD, true);
    container.Hosted().SetClientSite();
    EXPECT_EQ(ClicksOf(events), 0u);
    Ambients().Set(DISPID_AMBIENT_UIDEAD, false);
    EXPECT_EQ(ClicksOf(events), 1u);
}

TEST_F(ControlSurroundings, ControlHasNoMnemonics) {
    CONTROLINFO info = {};
    info.cb = sizeof(info);
    EXPECT_EQ(As<IOleControl>()->GetControlInfo(&info), S_OK);
    EXPECT_EQ(info.cAccel, 0);
    EXPECT_EQ(info.hAccel, nullptr);
    EXPECT_EQ(As<IOleControl>()->GetControlInfo(nullptr), E_POINTER);
}

TEST_F(ControlSurroundings, KeysOfTheInnerWindowAreUsedAndOthersGoToTheSite) {
    container.Hosted().SetClientSite();
    container.Hosted().Move(LoggingContainer::place);
    container.Hosted().DoVerb(OLEIVERB_UIACTIVATE);
    const auto active = As<IOleInPlaceActiveObject>();
    const auto key = [&](WPARAM code) {
        container.Take();
        MSG message = {GetFocus(), WM_KEYDOWN, code, 1, 0, {}};
        return active->TranslateAccelerator(&message);
    };
    for (const WPARAM code : {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_HOME, VK_END}) {
        EXPECT_EQ(key(code), S_OK) << code;
        EXPECT_EQ(container.Count("TranslateAccelerator"), 0u) << code;
    }
    for (const WPARAM code : {VK_TAB, VK_RETURN, VK_ESCAPE, VK_F1}) {
        key(code);
        EXPECT_EQ(container.Count("TranslateAccelerator"), 1u) << code;
    }
    MSG mouse = {GetFocus(), WM_MOUSEMOVE, 0, 0, 0, {}};
    EXPECT_EQ(active->TranslateAccelerator(&mouse), S_FALSE);
    EXPECT_EQ(active->TranslateAccelerator(nullptr), E_POINTER);
}

TEST_F(ControlSurroundings, FocusIsToldToTheSite) {
    container.Hosted().SetClientSite();
    container.Hosted().Move(LoggingContainer::place);
    container.Hosted().DoVerb(OLEIVERB_SHOW);
    SetFocus(Outer());
    EXPECT_EQ(container.Count("IOleControlSite.OnFocus"), 1u);
    EXPECT_TRUE(container.Hosted().IsUIActive()) << "the focus makes the control active";
    SetFocus(nullptr);
    EXPECT_EQ(container.Count("IOleControlSite.OnFocus"), 2u);
}

TEST_F(ControlSurroundings, ObjectKnowsItsClassAndSite) {
    const auto object = As<IOleObject>();
    CLSID id = {};
    EXPECT_EQ(object->GetUserClassID(&id), S_OK);
    EXPECT_EQ(id, server.ClassId("Combo"));
    LPOLESTR name = nullptr;
    EXPECT_EQ(object->GetUserType(USERCLASSTYPE_SHORT, &name), S_OK);
    EXPECT_STREQ(name, L"Combo");
    CoTaskMemFree(name);
    EXPECT_EQ(object->GetUserType(USERCLASSTYPE_FULL, &name), S_OK);
    EXPECT_STREQ(name, L"Drop-down list of repository objects");
    CoTaskMemFree(name);
    EXPECT_EQ(object->GetUserType(USERCLASSTYPE_FULL, nullptr), E_POINTER);
    DWORD status = 0;
    EXPECT_EQ(object->GetMiscStatus(DVASPECT_ICON, &status), S_OK);
    EXPECT_EQ(status, 0u);
    IMoniker* moniker = nullptr;
    EXPECT_EQ(object->GetMoniker(0, 0, &moniker), E_UNEXPECTED) << "without a site";
    Ref<IEnumOLEVERB> verbs;
    EXPECT_EQ(object->EnumVerbs(verbs.GetAddressOf()), OLEOBJ_E_NOVERBS);
}

}  // namespace
