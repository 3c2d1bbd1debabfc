#include "support/event_recorder.h"
#include "support/fake_source.h"

#include "hosting/error.h"

#include <gtest/gtest.h>

namespace support {
namespace {

using Calls = std::vector<std::string>;

constexpr IID events = {0x3d0b0d1e, 0x7a55, 0x4f0a, {0x9a, 1, 2, 3, 4, 5, 6, 7}};

VARIANT Text(Value& value) {
    return value;
}

class Events : public testing::Test {
protected:
    void SetUp() override {
        recorder.Connect(source->Identity(), events, {{1, "Click"}, {2, "Adding"}});
    }

    Ref<FakeSource> source = Make<FakeSource>("source", events);
    EventRecorder recorder;
    Value key = "b1";
};

TEST_F(Events, AreRecordedInOrderWithTheirArguments) {
    source->Raise(1, {Text(key)});
    source->Raise(2, {Text(key), Value(5)});
    source->Raise(9, {});
    EXPECT_EQ(recorder.Take(), (Calls{"Click(\"b1\")", "Adding(\"b1\", 5)", "event 9()"}));
    EXPECT_TRUE(recorder.Events().empty());
}

TEST_F(Events, AreVetoedByReference) {
    recorder.On("Adding").Run([](const Arguments& arguments) { arguments.Write(0, false); });
    VARIANT_BOOL allowed = VARIANT_TRUE;
    VARIANT reference{};
    V_VT(&reference) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&reference) = &allowed;
    EXPECT_EQ(source->Raise(2, {reference}), S_OK);
    EXPECT_EQ(allowed, VARIANT_FALSE);
    EXPECT_EQ(recorder.Take(), Calls{"Adding(True)"});
}

TEST_F(Events, GiveErrorsBack) {
    recorder.On("Click").Times(1).Fail(Failure::Result(E_ACCESSDENIED));
    EXPECT_EQ(source->Raise(1, {}), E_ACCESSDENIED);
    EXPECT_EQ(source->Raise(1, {}), S_OK);
}

TEST_F(Events, DisconnectAndDestroyWithin) {
    recorder.On("Click").Run([&] {
        recorder.Disconnect();
        source.Reset();
    });
    FakeSource* const last = source.Get();
    last->Raise(1, {});
    EXPECT_FALSE(recorder.IsConnected());
    EXPECT_EQ(recorder.Count("Click"), 1u);
}

TEST_F(Events, ReenterTheSource) {
    recorder.On("Click").Run([&] { source->Raise(2, {}); });
    source->Raise(1, {});
    EXPECT_EQ(recorder.Take(), (Calls{"Click()", "Adding()"}));
}

TEST_F(Events, EndWhenDisconnected) {
    recorder.Disconnect();
    EXPECT_EQ(source->Sinks(), 0u);
    source->Raise(1, {});
    EXPECT_TRUE(recorder.Events().empty());
}

TEST_F(Events, OfAnAbandonedSinkGoNowhere) {
    recorder.On("Click").Fail(Failure::Result(E_FAIL));
    recorder.Abandon();
    EXPECT_EQ(source->Sinks(), 1u);
    EXPECT_EQ(source->Raise(1, {}), S_OK);
}

TEST_F(Events, OfAnUnknownNameAreATestsMistake) {
    EXPECT_THROW(recorder.On("Clock"), std::invalid_argument);
}

TEST_F(Events, StandAmongTheCallsOfASharedLog) {
    const auto log = std::make_shared<CallLog>();
    const auto object = FakeObject::Make("node1", log);
    object->Constant("name", "x");
    EventRecorder shared(log, "combo");
    shared.Connect(source->Identity(), events, {{1, "Click"}});
    shared.On("Click").Run([&] { EXPECT_EQ(object->Stored("name"), Value("x")); });
    source->Raise(1, {Text(key)});
    EXPECT_EQ(log->Take(), Calls{"combo.Click(\"b1\")"});
    recorder.Take();
}

TEST_F(Events, NeedASource) {
    const auto plain = FakeObject::Make("plain");
    EXPECT_THROW(EventRecorder(plain->Identity()), hosting::Error);
}

TEST_F(Events, ASinkThatIsHeldIsALiveDouble) {
    const long before = LiveDoubles();
    {
        EventRecorder other;
        EXPECT_EQ(LiveDoubles(), before + 1);
    }
    EXPECT_EQ(LiveDoubles(), before);
}

}  // namespace
}  // namespace support
