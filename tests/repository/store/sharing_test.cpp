#include <gtest/gtest.h>

#include "repository/store/scratch.h"

namespace repository::store {
namespace {

class TwoPrograms : public testing::Test {
protected:
    void SetUp() override {
        mine->SetBusyTimeout(50);
        theirs->SetBusyTimeout(50);
    }

    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    const std::unique_ptr<Store> mine = Store::Create(file);
    const Small small = Small(*mine);
    const std::unique_ptr<Store> theirs = Store::Open(file);
};

TEST_F(TwoPrograms, RefreshShowsTheOthersChanges) {
    mine->GetValue(*small.anna, *small.age);
    const auto person = theirs->Meta().nodes.Find("Person");
    theirs->SetValue(theirs->Find("p1"), *person->properties.Find("Age"), std::int32_t{8});
    theirs->Rename(theirs->Find("p1"), "Hanna");
    theirs->Remove(theirs->Find("p2"));
    theirs->MakeMetaNode("City", "");
    mine->Refresh();
    mine->Update(*small.ben);
    EXPECT_EQ(mine->GetValue(*small.anna, *small.age), Value(std::int32_t{8}));
    EXPECT_EQ(small.anna->name, "Hanna");
    EXPECT_TRUE(small.ben->removed);
    EXPECT_TRUE(mine->Meta().nodes.Find("City"));
    EXPECT_EQ(mine->Meta().nodes.Find("Person"), small.person);
}

TEST_F(TwoPrograms, AChangeHereKnowsWhatTheOtherHasDone) {
    theirs->MakeMetaNode("City", "");
    theirs->Remove(theirs->Find("p2"));
    EXPECT_EQ(NumberOf([&] { mine->MakeMetaNode("city", ""); }), Number::keyInUse);
    EXPECT_EQ(NumberOf([&] { mine->Rename(small.ben, "x"); }), Number::elementNotFound);
}

TEST_F(TwoPrograms, ANodeOfAMetaNodeThatTheOtherMadeCanBeRead) {
    const auto city = theirs->MakeMetaNode("City", "");
    theirs->MakeNode(city, "c1", "Paris");
    const ObjectRef paris = mine->Find("c1");
    ASSERT_TRUE(paris);
    EXPECT_EQ(paris->meta->name, "City");
}

TEST_F(TwoPrograms, APropertyThatTheOtherRemovedIsNotSet) {
    const ObjectRef anna = theirs->Find("p1");
    // Only the meta model holds it.
    const MetaProperty& age = *theirs->Meta().nodes.Find("Person")->properties.Find("Age");
    mine->Remove(small.age);
    EXPECT_EQ(NumberOf([&] { theirs->SetValue(anna, age, std::int32_t{8}); }),
              Number::elementNotFound);
    EXPECT_FALSE(theirs->Meta().nodes.Find("Person")->properties.Find("Age"));
}

TEST_F(TwoPrograms, WhatTheOtherRenamedCanBeRenamedHere) {
    theirs->Rename(theirs->Meta().nodes.Find("Person"), std::string(100, 'x'));
    theirs->Rename(theirs->Meta().nodes.Find("House")->properties.Find("Name"),
                   std::string(100, 'y'));
    mine->Rename(small.person, "Human");
    EXPECT_EQ(small.person->name, "Human");
    EXPECT_EQ(mine->UndoName(), "Rename \"Person\"");
}

TEST_F(TwoPrograms, RemovedByTheOtherAndMadeAnewIsAnotherObject) {
    theirs->Remove(theirs->Find("p2"));
    theirs->MakeNode(theirs->Meta().nodes.Find("Person"), "p2", "Benno");
    mine->Refresh();
    mine->Update(*small.ben);
    EXPECT_TRUE(small.ben->removed);
    EXPECT_EQ(small.ben->name, "Ben");
    EXPECT_EQ(mine->Find("p2")->name, "Benno");
}

TEST_F(TwoPrograms, ABusyFileIsReportedAndTheNextCallWorks) {
    theirs->Change([&] {
        theirs->Rename(theirs->Find("p1"), "Hanna");
        EXPECT_EQ(NumberOf([&] { mine->MakeNode(small.person, "p3", ""); }),
                  Number::permissionDenied);
        EXPECT_EQ(small.anna->name, "Anna");
    });
    EXPECT_TRUE(mine->MakeNode(small.person, "p3", ""));
}

TEST_F(TwoPrograms, ALookSeesOneStateOfTheFile) {
    theirs->Rename(theirs->Meta().nodes.Find("Person"), "Human");
    mine->Look([&] {
        EXPECT_EQ(small.person->name, "Human");
        EXPECT_EQ(NumberOf([&] { theirs->Remove(theirs->Find("p2")); }), Number::permissionDenied);
        EXPECT_TRUE(mine->Find("p2"));
    });
    theirs->Remove(theirs->Find("p2"));
    EXPECT_FALSE(mine->Find("p2"));
}

TEST_F(TwoPrograms, AnExclusivelyLockedFileIsNotOpened) {
    Database other(file, Database::Mode::readWrite);
    other.Execute("BEGIN EXCLUSIVE");
    const std::string text = TextOf([&] { Store::Open(file); });
    EXPECT_NE(text.find("in use"), std::string::npos) << text;
    const auto third = Store::Create(":memory:");
    third->SetBusyTimeout(50);
    third->MakeMetaNode("X", "");
    EXPECT_EQ(NumberOf([&] { third->SaveAs(file); }), Number::permissionDenied);
    EXPECT_EQ(third->Path(), ":memory:");
    EXPECT_TRUE(third->Meta().nodes.Find("X"));
    EXPECT_EQ(NumberOf([&] { mine->Refresh(); }), Number::permissionDenied);
    EXPECT_FALSE(small.person->removed);
    other.Execute("COMMIT");
    EXPECT_EQ(mine->Meta().nodes.Find("Person"), small.person);
    EXPECT_TRUE(Store::Open(file));
}

}  // namespace
}  // namespace repository::store
