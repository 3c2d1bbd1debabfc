#include "foundation/keys.h"

#include <gtest/gtest.h>

#include "support/fake_collection.h"

namespace foundation {
namespace {

using support::Empty;
using support::Failure;
using support::FakeCollection;
using support::FakeObject;
using support::Value;

TEST(IsValidObject, IsFalseOfAnEmptyReferenceAndTrueOfAnyObject) {
    EXPECT_FALSE(IsValidObject({}));
    EXPECT_FALSE(IsValidObject(ole::Object(nullptr)));
    const auto object = FakeObject::Make("object");
    EXPECT_TRUE(IsValidObject(ole::Object(object.Get())));
}

TEST(IsValidObject, AsksTheObjectNothing) {
    const auto log = std::make_shared<support::CallLog>();
    log->withNames = true;
    const auto dead = FakeObject::Make("dead", log);
    dead->Disconnect();
    EXPECT_TRUE(IsValidObject(ole::Object(dead.Get())));
    EXPECT_TRUE(log->Calls().empty());
}

class ContainsKeyTest : public testing::Test {
protected:
    Value Answer(const Value& key) const {
        return Value(ContainsKey(ole::Object(collection.Get()), key));
    }

    std::shared_ptr<support::CallLog> log = std::make_shared<support::CallLog>();
    support::Ref<FakeObject> element = FakeObject::Make("element", log);
    support::Ref<FakeCollection> collection = FakeCollection::Make("things", log);
};

TEST_F(ContainsKeyTest, IsTrueOfAKeyThatTheCollectionHas) {
    collection->Add("here", element);
    EXPECT_EQ(Answer("here"), Value(true));
    EXPECT_EQ(Answer(1), Value(true));
}

TEST_F(ContainsKeyTest, IsEmptyOfAKeyThatItLacks) {
    EXPECT_EQ(Answer("gone"), Empty());
    EXPECT_EQ(Answer(Empty()), Empty());
}

TEST_F(ContainsKeyTest, CallsTheDefaultMemberOnceWithTheKey) {
    collection->Add("here", element);
    Answer("here");
    EXPECT_EQ(log->Take(), std::vector<std::string>{"things.[default](\"here\")"});
}

TEST_F(ContainsKeyTest, TurnsAnyFailureIntoAnEmptyResult) {
    collection->Add("here", element);
    for (const Failure& failure :
         {Failure::Result(E_OUTOFMEMORY), Failure::Result(DISP_E_TYPEMISMATCH),
          Failure::Exception(E_FAIL), Failure::Deferred(E_FAIL)}) {
        collection->Calm();
        collection->On(support::defaultMember).Fail(failure);
        EXPECT_EQ(Answer("here"), Empty());
    }
    collection->Disconnect();
    EXPECT_EQ(Answer("here"), Empty());
}

TEST_F(ContainsKeyTest, IsEmptyWhereTheElementIsNoObject) {
    collection->Add("number", 5);
    EXPECT_EQ(Answer("number"), Empty());
}

TEST(ContainsKey, IsEmptyWithoutACollection) {
    EXPECT_EQ(Value(ContainsKey({}, Value("key"))), Empty());
}

TEST(ContainsKey, IsEmptyOfAnObjectWithoutADefaultMember) {
    const auto object = FakeObject::Make("object");
    EXPECT_EQ(Value(ContainsKey(ole::Object(object.Get()), Value("key"))), Empty());
}

}  // namespace
}  // namespace foundation
