#include "ole/connection_point.h"

#include <gmock/gmock.h>
#include <olectl.h>

#include "spy.h"
#include "support/double.h"
#include "support/event_recorder.h"

using namespace support;
using testing::ElementsAre;

namespace {

constexpr DISPID asked = 1;
constexpr DISPID told = 2;

/// A sink for property changes; refuses or does something when told to.
class PropertySink final : public IPropertyNotifySink, public Double {
public:
    PropertySink() : Double("property sink") {}

    std::vector<std::string> calls;
    bool allows = true;
    std::function<void()> onChanged;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IPropertyNotifySink;
        *object = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    STDMETHODIMP OnChanged(DISPID id) override {
        calls.push_back("changed " + std::to_string(id));
        if (onChanged) onChanged();
        return S_OK;
    }
    STDMETHODIMP OnRequestEdit(DISPID id) override {
        calls.push_back("asked " + std::to_string(id));
        return allows ? S_OK : S_FALSE;
    }

private:
    void Expire() override {}
};

class ConnectionPointTest : public SpyTest {
protected:
    IUnknown* Source() const { return static_cast<_Spy*>(spy.Get()); }

    Ref<IConnectionPoint> Point(REFIID id) const {
        const auto container = Query<IConnectionPointContainer>(Source());
        Ref<IConnectionPoint> point;
        container->FindConnectionPoint(id, point.GetAddressOf());
        return point;
    }

    void Tell() { spy->Events().Fire(told, nullptr, 0); }

    /// Fires `Asked` with two by-reference arguments; answers what they are afterwards.
    std::pair<std::string, bool> Ask(const wchar_t* text, bool allow) {
        BSTR passed = SysAllocString(text);
        VARIANT_BOOL allowed = allow ? VARIANT_TRUE : VARIANT_FALSE;
        VARIANT arguments[2] = {};
        V_VT(&arguments[0]) = VT_BSTR | VT_BYREF;
        V_BSTRREF(&arguments[0]) = &passed;
        V_VT(&arguments[1]) = VT_BOOL | VT_BYREF;
        V_BOOLREF(&arguments[1]) = &allowed;
        spy->Events().Fire(asked, arguments, 2);
        const _bstr_t left(passed, false);
        return {Utf8(left.copy(false)), allowed != VARIANT_FALSE};
    }
};

TEST_F(ConnectionPointTest, EventsReachEachSinkInTheOrderOfConnection) {
    const auto log = std::make_shared<CallLog>();
    EventRecorder first(log, "first");
    EventRecorder second(log, "second");
    first.Connect(Source());
    second.Connect(Source());
    Ask(L"x", true);
    Tell();
    EXPECT_THAT(log->Take(), ElementsAre("first.Asked(\"x\", True)", "second.Asked(\"x\", True)",
                                         "first.Told()", "second.Told()"));
}

TEST_F(ConnectionPointTest, ByReferenceArgumentsGoBothWays) {
    EventRecorder events(Source());
    EXPECT_EQ(Ask(L"before", true), std::pair(std::string("before"), true));
    events.On("Asked").Run([](const Arguments& arguments) {
        arguments.Write(0, "after");
        arguments.Write(1, false);
    });
    EXPECT_EQ(Ask(L"before", true), std::pair(std::string("after"), false));
}

TEST_F(ConnectionPointTest, NextSinkSeesWhatTheOneBeforeWrote) {
    EventRecorder first(Source());
    EventRecorder second(Source());
    first.On("Asked").Run([](const Arguments& arguments) { arguments.Write(0, "changed"); });
    Ask(L"before", true);
    EXPECT_THAT(second.Take(), ElementsAre("Asked(\"changed\", True)"));
}

TEST_F(ConnectionPointTest, FailureOfASinkIsIgnored) {
    EventRecorder first(Source());
    EventRecorder second(Source());
    first.On("Told").Fail(Failure::Exception(E_FAIL));
    Tell();
    EXPECT_EQ(second.Count("Told"), 1u);
    first.Calm();
    first.On("Told").Fail(Failure::Deferred(E_FAIL));
    Tell();
    EXPECT_EQ(second.Count("Told"), 2u);
}

TEST_F(ConnectionPointTest, SinkMayDisconnectItselfInTheEvent) {
    EventRecorder events(Source());
    events.On("Told").Run([&] { events.Disconnect(); });
    Tell();
    Tell();
    EXPECT_EQ(events.Count("Told"), 1u);
}

TEST_F(ConnectionPointTest, SinkThatIsDisconnectedDuringTheEventIsNotCalledAnyMore) {
    EventRecorder first(Source());
    EventRecorder second(Source());
    first.On("Told").Run([&] { second.Disconnect(); });
    Tell();
    EXPECT_EQ(second.Count("Told"), 0u);
}

TEST_F(ConnectionPointTest, SinkThatConnectsDuringTheEventWaitsForTheNext) {
    EventRecorder first(Source());
    EventRecorder second;
    first.On("Told").Times(1).Run([&] { second.Connect(Source()); });
    Tell();
    EXPECT_EQ(second.Count("Told"), 0u);
    Tell();
    EXPECT_EQ(second.Count("Told"), 1u);
}

TEST_F(ConnectionPointTest, EventMayRaiseAnotherOne) {
    EventRecorder events(Source());
    events.On("Told").Times(1).Run([&] { Ask(L"inner", false); });
    Tell();
    EXPECT_THAT(events.Take(), ElementsAre("Told()", "Asked(\"inner\", False)"));
}

TEST_F(ConnectionPointTest, SourceMayGoDuringTheEvent) {
    EventRecorder first(Source());
    EventRecorder second(Source());
    first.On("Told").Run([&] {
        first.Abandon();
        second.Abandon();
        object = LateBound();
        spy.Reset();
    });
    ole::ConnectionPoints& points = spy->Events();
    points.Fire(told, nullptr, 0);
    EXPECT_EQ(first.Count("Told"), 1u);
}

TEST_F(ConnectionPointTest, FrozenEventsAreDropped) {
    EventRecorder events(Source());
    spy->Events().Freeze(true);
    spy->Events().Freeze(true);
    spy->Events().Freeze(false);
    Tell();
    EXPECT_EQ(events.Count("Told"), 0u);
    spy->Events().Freeze(false);
    spy->Events().Freeze(false);
    Tell();
    EXPECT_EQ(events.Count("Told"), 1u);
}

TEST_F(ConnectionPointTest, SinksAreHeldUntilTheyDisconnect) {
    const auto sink = support::Make<PropertySink>();
    const auto point = Point(IID_IPropertyNotifySink);
    DWORD cookie = 0;
    EXPECT_EQ(point->Advise(sink.Get(), &cookie), S_OK);
    EXPECT_NE(cookie, 0u);
    EXPECT_EQ(sink->References(), 2u);
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(sink->References(), 1u);
    EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
}

TEST_F(ConnectionPointTest, DisconnectAllLetsGoOfEverySink) {
    const auto sink = support::Make<PropertySink>();
    EventRecorder events(Source());
    DWORD cookie = 0;
    Point(IID_IPropertyNotifySink)->Advise(sink.Get(), &cookie);
    spy->Events().DisconnectAll();
    EXPECT_EQ(sink->References(), 1u);
    Tell();
    EXPECT_EQ(events.Count("Told"), 0u);
}

TEST_F(ConnectionPointTest, EachConnectionHasItsOwnCookie) {
    const auto sink = support::Make<PropertySink>();
    const auto point = Point(IID_IPropertyNotifySink);
    DWORD first = 0;
    DWORD second = 0;
    point->Advise(sink.Get(), &first);
    point->Advise(sink.Get(), &second);
    EXPECT_NE(first, second);
    spy->Events().NotifyChanged(5);
    EXPECT_THAT(sink->calls, ElementsAre("changed 5", "changed 5"));
    point->Unadvise(first);
    spy->Events().NotifyChanged(6);
    EXPECT_EQ(sink->calls.size(), 3u);
    point->Unadvise(second);
}

TEST_F(ConnectionPointTest, PropertySinkMayForbidAnEdit) {
    const auto sink = support::Make<PropertySink>();
    const auto point = Point(IID_IPropertyNotifySink);
    DWORD cookie = 0;
    point->Advise(sink.Get(), &cookie);
    EXPECT_TRUE(spy->Events().RequestEdit(5));
    sink->allows = false;
    EXPECT_FALSE(spy->Events().RequestEdit(5));
    point->Unadvise(cookie);
    EXPECT_TRUE(spy->Events().RequestEdit(5));
}

TEST_F(ConnectionPointTest, SinkWithoutTheInterfaceCannotConnect) {
    const auto sink = support::Make<PropertySink>();
    DWORD cookie = 99;
    EXPECT_EQ(Point(DIID___Spy)->Advise(sink.Get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0u);
    EXPECT_EQ(Point(DIID___Spy)->Advise(nullptr, &cookie), E_POINTER);
    EXPECT_EQ(Point(DIID___Spy)->Advise(sink.Get(), nullptr), E_POINTER);
    EXPECT_EQ(sink->References(), 1u);
}

TEST_F(ConnectionPointTest, PointsAreFoundByTheirInterface) {
    const auto events = Point(DIID___Spy);
    ASSERT_TRUE(events);
    EXPECT_EQ(Point(IID_IDispatch).Get(), events.Get());
    ASSERT_TRUE(Point(IID_IPropertyNotifySink));
    EXPECT_NE(Point(IID_IPropertyNotifySink).Get(), events.Get());
    EXPECT_FALSE(Point(IID_IOleObject));
    IID id = {};
    EXPECT_EQ(events->GetConnectionInterface(&id), S_OK);
    EXPECT_EQ(id, DIID___Spy);
    Ref<IConnectionPointContainer> container;
    EXPECT_EQ(events->GetConnectionPointContainer(container.GetAddressOf()), S_OK);
    EXPECT_TRUE(ole::SameObject(container.Get(), Source()));
}

TEST_F(ConnectionPointTest, PointIsAnObjectOfItsOwnThatKeepsTheSourceAlive) {
    const auto point = Point(DIID___Spy);
    EXPECT_FALSE(ole::SameObject(point.Get(), Source()));
    EXPECT_FALSE(Query<IDispatch>(point.Get()));
    object = LateBound();
    spy.Reset();
    Ref<IConnectionPointContainer> container;
    EXPECT_EQ(point->GetConnectionPointContainer(container.GetAddressOf()), S_OK);
}

TEST_F(ConnectionPointTest, EnumerationsListPointsAndConnections) {
    const auto container = Query<IConnectionPointContainer>(Source());
    Ref<IEnumConnectionPoints> points;
    ASSERT_EQ(container->EnumConnectionPoints(points.GetAddressOf()), S_OK);
    IConnectionPoint* found[3] = {};
    ULONG given = 0;
    EXPECT_EQ(points->Next(3, found, &given), S_FALSE);
    ASSERT_EQ(given, 2u);
    EXPECT_EQ(Adopt(found[0]).Get(), Point(DIID___Spy).Get());
    EXPECT_EQ(Adopt(found[1]).Get(), Point(IID_IPropertyNotifySink).Get());

    const auto sink = support::Make<PropertySink>();
    DWORD cookie = 0;
    Point(IID_IPropertyNotifySink)->Advise(sink.Get(), &cookie);
    Ref<IEnumConnections> connections;
    ASSERT_EQ(Point(IID_IPropertyNotifySink)->EnumConnections(connections.GetAddressOf()), S_OK);
    Point(IID_IPropertyNotifySink)->Unadvise(cookie);
    CONNECTDATA connection = {};
    EXPECT_EQ(connections->Next(1, &connection, nullptr), S_OK);
    EXPECT_EQ(connection.dwCookie, cookie);
    EXPECT_EQ(Adopt(connection.pUnk).Get(), static_cast<IUnknown*>(sink.Get()));
    EXPECT_EQ(connections->Next(1, &connection, nullptr), S_FALSE);
}

}  // namespace
