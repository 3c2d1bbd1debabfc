#include <gtest/gtest.h>

#include <stdexcept>

#include "repository/store/file.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

class ChangeTest : public testing::Test {
protected:
    const Scratch scratch;
    const std::unique_ptr<Store> store = Store::Create(scratch.File("a.orv"));
    const Small small = Small(*store);
};

TEST_F(ChangeTest, SeveralStepsHappenTogether) {
    store->Change([&] {
        store->MakeNode(small.person, "p3", "Carla");
        store->SetValue(small.anna, *small.age, std::int32_t{1});
    });
    const auto again = Store::Open(scratch.File("a.orv"));
    EXPECT_TRUE(again->Find("p3"));
}

TEST_F(ChangeTest, AFailedChangeLeavesNothingBehind) {
    MetaNodeRef made;
    ObjectRef node;
    store->SetValue(small.anna, *small.age, std::int32_t{1});
    EXPECT_THROW(store->Change([&] {
        made = store->MakeMetaNode("City", "");
        node = store->MakeNode(made, "c1", "Paris");
        store->SetValue(small.anna, *small.age, std::int32_t{2});
        store->Rename(small.anna, "Hanna");
        store->Remove(small.ben);
        store->Remove(small.age);
        throw std::runtime_error("no more");
    }),
                 std::runtime_error);
    EXPECT_FALSE(store->Meta().nodes.Find("City"));
    EXPECT_TRUE(made->removed);
    EXPECT_FALSE(store->Find("c1"));
    store->Update(*node);
    EXPECT_TRUE(node->removed);
    const auto age = small.person->properties.Find("Age");
    ASSERT_TRUE(age);
    EXPECT_EQ(store->GetValue(*small.anna, *age), Value(std::int32_t{1}));
    EXPECT_EQ(small.anna->name, "Anna");
    EXPECT_TRUE(store->Find("p2"));
    EXPECT_EQ(store->Count(ObjectSet::Instances(*small.person)), 2);
}

TEST_F(ChangeTest, AFailedStepInsideLeavesTheOthers) {
    store->Change([&] {
        store->MakeNode(small.person, "p3", "Carla");
        EXPECT_EQ(NumberOf([&] {
                      store->Change([&] {
                          store->MakeNode(small.person, "p4", "Dora");
                          store->MakeNode(small.person, "p1", "Again");
                      });
                  }),
                  Number::keyInUse);
        EXPECT_EQ(NumberOf([&] { store->MakeEnum("E", {"A", "A"}); }), Number::keyInUse);
    });
    EXPECT_TRUE(store->Find("p3"));
    EXPECT_FALSE(store->Find("p4"));
    EXPECT_FALSE(store->Meta().enumerations.Find("E"));
    EXPECT_EQ(store->Count(ObjectSet::Instances(*small.person)), 3);
}

TEST_F(ChangeTest, TheFileIsNotSavedElsewhereInTheMiddle) {
    store->Change([&] {
        EXPECT_EQ(NumberOf([&] { store->SaveAs(scratch.File("b.orv")); }), Number::invalidCall);
        EXPECT_EQ(NumberOf([&] { store->Refresh(); }), Number::invalidCall);
    });
}

TEST_F(ChangeTest, RefusedCallsWriteNothing) {
    const std::string before = ReadFile(scratch.File("a.orv"));
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.person, "p1", ""); }), Number::keyInUse);
    EXPECT_EQ(NumberOf([&] { store->MakeMetaNode("Person", ""); }), Number::keyInUse);
    store->Rename(small.anna, "Anna");
    EXPECT_EQ(ReadFile(scratch.File("a.orv")), before);
}

}  // namespace
}  // namespace repository::store
