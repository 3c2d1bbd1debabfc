#include "repository/com/repository_fixture.h"
#include "support/fake_object.h"

namespace repository {
namespace {

using support::FakeObject;
using support::Ref;

/// An argument whose conversion to text runs the host's code in the middle of a call.
Ref<FakeObject> Meddler(const Value& text, std::function<void()> work) {
    auto object = FakeObject::Make("meddler");
    object->Function(support::defaultMember, [text, run = std::move(work)](support::Arguments&) {
        run();
        return text;
    });
    return object;
}

class ReentryTest : public RepositoryTest {
protected:
    std::function<void()> Closing() {
        return [this] { EXPECT_TRUE(rep.Do("Close")); };
    }
    std::function<void()> Reopening() {
        return [this] {
            EXPECT_TRUE(rep.Do("New"));
            EXPECT_TRUE(rep.Call("MakeMetaNode", "Other"));
        };
    }
};

TEST_F(ReentryTest, TheRepositoryMayBeClosedWhileAnArgumentIsConverted) {
    EXPECT_EQ(ErrorOf(anna.Do("SetProperty", "Age", Meddler(5, Closing()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(anna.Do("SetProperty", Meddler("Age", Closing()), 5)), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(anna.Call("GetProperty", Meddler("Age", Closing()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(person.Put("name", Meddler("x", Closing()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(age.Put("IsDynamic", Meddler(true, Closing()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(rep.Call("MakeNode", "x", "Person", Meddler("x", Closing()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(rep.Call("MakeMetaNode", Meddler("x", Closing()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(ObjectIn(anna.Call("Properties", "Age")).Put("Value", Meddler(5, Closing()))),
              91);
    SetUp();
    EXPECT_EQ(ErrorOf(rep.Do("Generate", 1, Meddler(1, Closing()), 1, 1)), 91);
}

TEST_F(ReentryTest, CollectionsMayBeClosedWhileAKeyIsConverted) {
    const LateBound people = ObjectIn(person.Call("Extension"));
    EXPECT_EQ(ErrorOf(people.Call("Item", Meddler("p1", Closing()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(person.Call("Extension", Meddler("p1", Reopening()))), 91);
    SetUp();
    EXPECT_EQ(ErrorOf(ObjectIn(rep.Call("MetaNodes")).Call("Search", Meddler("x", Reopening()))),
              91);
    SetUp();
    EXPECT_EQ(ErrorOf(anna.Call("Outgoing_", Meddler("Person lives in House", Reopening()))), 13);
}

TEST_F(ReentryTest, ElementsOfAnEarlierOpeningDoNotGetIntoTheNext) {
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", livesIn.Get(), anna.Get(), cottage.Get(),
                               Meddler("l9", Reopening()), "x")),
              91);
    EXPECT_EQ(Result(rep.Call("Objects", "l9")), support::Nothing());
}

TEST_F(ReentryTest, WhatIsUsedMayBeRemovedMeanwhile) {
    EXPECT_EQ(
        ErrorOf(anna.Do(
            "SetProperty", "Age",
            Meddler(
                5, [&] { EXPECT_TRUE(ObjectIn(person.Call("Properties")).Do("Remove", "Age")); }))),
        5);
    EXPECT_EQ(
        ErrorOf(anna.Do("SetProperty", "Name",
                        Meddler("x", [&] { EXPECT_TRUE(rep.Do("RemoveClass", anna.Get())); }))),
        35601);
}

TEST_F(ReentryTest, AHostsObjectIsNoElement) {
    const auto host = FakeObject::Make("host");
    EXPECT_EQ(ErrorOf(rep.Do("RemoveClass", host)), 13);
    EXPECT_EQ(ErrorOf(rep.Call("MakeLink", host, anna.Get(), cottage.Get(), "x", "x")), 13);
    EXPECT_EQ(ErrorOf(anna.Call("Outgoing_", host)), 13);
}

TEST_F(ReentryTest, TheErrorOfAnArgumentsDefaultPropertyReachesTheCaller) {
    const auto host = FakeObject::Make("host");
    host->Function(support::defaultMember, [](support::Arguments&) { return Value("Age"); });
    host->On(support::defaultMember)
        .Fail(support::Failure::Exception(static_cast<HRESULT>(0x800A04D2), "No answer", "Host"));
    const Outcome outcome = anna.Call("GetProperty", host);
    EXPECT_EQ(outcome.AutomationNumber(), 1234);
    EXPECT_EQ(outcome.description, "No answer");
    EXPECT_EQ(outcome.source, "Host");
}

}  // namespace
}  // namespace repository
