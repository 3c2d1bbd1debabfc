#include <gtest/gtest.h>

#include <stdexcept>

#include "repository/store/scratch.h"

namespace repository::store {
namespace {

class HistoryTest : public testing::Test {
protected:
    Value AgeOf(Store& of, const ObjectRef& person) {
        return of.GetValue(*person, *person->meta->properties.Find("Age"));
    }

    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    std::unique_ptr<Store> store = Store::Create(file);
    Small small = Small(*store);
};

TEST_F(HistoryTest, AnUndoneValueShowsAtOnceAndCanBeRedone) {
    store->SetValue(small.anna, *small.age, std::int32_t{1});
    store->SetValue(small.anna, *small.age, std::int32_t{2});
    EXPECT_EQ(store->UndoName(), "Set \"Age\"");
    EXPECT_EQ(store->RedoName(), "");
    store->Undo();
    EXPECT_EQ(AgeOf(*store, small.anna), Value(std::int32_t{1}));
    store->Undo();
    EXPECT_EQ(AgeOf(*store, small.anna), Value());
    EXPECT_EQ(store->RedoName(), "Set \"Age\"");
    store->Redo();
    store->Redo();
    EXPECT_EQ(AgeOf(*store, small.anna), Value(std::int32_t{2}));
    EXPECT_EQ(store->RedoName(), "");
}

TEST_F(HistoryTest, EverythingCanBeUndoneToTheEmptyRepository) {
    store->SetValue(small.anna, *small.age, std::int32_t{1});
    store->Rename(small.anna, "Hanna");
    store->Describe(small.anna, "A friend");
    store->Remove(small.cottage);
    store->Retype(small.age, store->Meta().types.Find("String"));
    store->Rename(small.age, "Years");
    store->Remove(small.age);
    store->Rename(small.person, "Human");
    store->Remove(small.livesIn);
    store->Remove(small.person);
    int undone = 0;
    while (!store->UndoName().empty()) {
        store->Undo();
        ++undone;
    }
    // Eight to make the model, ten above.
    EXPECT_EQ(undone, 18);
    EXPECT_FALSE(store->Meta().nodes.Find("Person"));
    EXPECT_FALSE(store->Find("p1"));
    for (int i = 0; i < 9; ++i) store->Redo();
    EXPECT_EQ(store->Find("p1"), small.anna);
    EXPECT_EQ(AgeOf(*store, small.anna), Value(std::int32_t{1}));
    EXPECT_EQ(store->Source(*store->Find("l1")), small.anna);
    for (int i = 9; i < 18; ++i) store->Redo();
    EXPECT_FALSE(store->Meta().nodes.Find("Person"));
    EXPECT_TRUE(store->Meta().nodes.Find("House"));
    EXPECT_EQ(NumberOf([&] { store->Redo(); }), Number::invalidCall);
}

TEST_F(HistoryTest, RemovedObjectsComeBackAsTheSame) {
    store->SetValue(small.anna, *small.age, std::int32_t{5});
    store->Remove(small.anna);
    EXPECT_TRUE(small.anna->removed);
    EXPECT_TRUE(small.annaInCottage->removed);
    store->Undo();
    store->Update(*small.anna);
    store->Update(*small.annaInCottage);
    EXPECT_FALSE(small.anna->removed);
    EXPECT_FALSE(small.annaInCottage->removed);
    EXPECT_EQ(store->Find("p1"), small.anna);
    EXPECT_EQ(store->Find("l1"), small.annaInCottage);
    EXPECT_EQ(AgeOf(*store, small.anna), Value(std::int32_t{5}));
    EXPECT_EQ(store->Count(ObjectSet::Instances(*small.person)), 2);
    store->Redo();
    store->Update(*small.anna);
    EXPECT_TRUE(small.anna->removed);
}

TEST_F(HistoryTest, RemovedPartsOfTheMetaModelComeBackAsTheSame) {
    const auto type = store->MakeMetaType("Colour", DataType::string, "",
                                          store->MakeEnum("Colour", {"Red", "Green"}));
    const auto atom = type->enumeration->atoms[0];
    store->Remove(type);
    store->Remove(small.person);
    EXPECT_TRUE(small.person->removed);
    EXPECT_TRUE(small.age->removed);
    EXPECT_TRUE(type->removed);
    store->Undo();
    store->Undo();
    EXPECT_FALSE(small.person->removed);
    EXPECT_FALSE(small.livesIn->removed);
    EXPECT_FALSE(small.age->removed);
    EXPECT_EQ(store->Meta().nodes.Find("Person"), small.person);
    EXPECT_EQ(small.house->incoming.Find("Person lives in House"), small.livesIn);
    EXPECT_EQ(small.person->properties.Find("Age"), small.age);
    EXPECT_EQ(store->Meta().types.Find("Colour"), type);
    EXPECT_EQ(type->enumeration->atoms[0], atom);
    EXPECT_EQ(store->Find("p1"), small.anna);
}

TEST_F(HistoryTest, AGroupIsOneChangeOfItsName) {
    store->BeginChange("Move in");
    store->MakeLink(small.livesIn, small.ben, small.cottage, "l2", "");
    store->BeginChange("Grow");
    store->SetValue(small.ben, *small.age, std::int32_t{30});
    store->EndChange();
    store->EndChange();
    EXPECT_EQ(store->UndoName(), "Move in");
    store->Undo();
    EXPECT_FALSE(store->Find("l2"));
    EXPECT_EQ(AgeOf(*store, small.ben), Value());
}

TEST_F(HistoryTest, AGroupWithoutANameHasThatOfItsFirstPart) {
    store->BeginChange("");
    EXPECT_EQ(NumberOf([&] { store->MakeNode(small.person, "p1", "Again"); }), Number::keyInUse);
    store->MakeNode(small.house, "h2", "Villa");
    store->Rename(small.ben, "Benno");
    store->EndChange();
    EXPECT_EQ(store->UndoName(), "Make \"Villa\"");
}

TEST_F(HistoryTest, ACancelledPartLeavesTheRest) {
    const std::string before = store->UndoName();
    store->BeginChange("Outer");
    store->Rename(small.anna, "Hanna");
    store->BeginChange("Inner");
    store->Rename(small.ben, "Benno");
    store->Remove(small.cottage);
    store->CancelChange();
    store->Update(*small.ben);
    EXPECT_EQ(small.ben->name, "Ben");
    EXPECT_EQ(store->Find("h1"), small.cottage);
    store->EndChange();
    EXPECT_EQ(small.anna->name, "Hanna");
    EXPECT_EQ(store->UndoName(), "Outer");
    store->BeginChange("Another");
    store->Rename(small.anna, "Johanna");
    store->CancelChange();
    EXPECT_EQ(store->UndoName(), "Outer");
    store->Undo();
    EXPECT_EQ(store->UndoName(), before);
    store->Update(*small.anna);
    EXPECT_EQ(small.anna->name, "Anna");
}

TEST_F(HistoryTest, ACancelledPartWithARenamedTypeLeavesTheRest) {
    store->BeginChange("Outer");
    store->Rename(small.anna, "Hanna");
    store->BeginChange("Inner");
    store->MakeNode(small.house, "h2", "Villa");
    store->SetValue(small.ben, *small.age, std::int32_t{7});
    store->Rename(small.house, "Building");
    store->BeginChange("Innermost");
    store->Rename(small.age, "Years");
    store->MakeNode(small.house, "h3", "Palace");
    store->CancelChange();
    store->Rename(small.house, "Home");
    store->CancelChange();
    store->MakeNode(small.house, "h4", "Hut");
    store->Rename(small.person, "Human");
    store->EndChange();
    store->Undo();
    EXPECT_FALSE(store->Find("h4"));
    store->Update(*small.anna);
    EXPECT_EQ(small.anna->name, "Anna");
    EXPECT_EQ(small.person->name, "Person");
    store->Redo();
    EXPECT_TRUE(store->Find("h4"));
    EXPECT_FALSE(store->Find("h2"));
    EXPECT_FALSE(store->Find("h3"));
    EXPECT_EQ(small.house->name, "House");
    EXPECT_EQ(small.age->name, "Age");
    EXPECT_EQ(AgeOf(*store, small.ben), Value());
    EXPECT_EQ(small.person->name, "Human");
    store->Undo();
    EXPECT_EQ(store->RedoName(), "Outer");
}

TEST_F(HistoryTest, ARenamedTypeInAPartThatStaysIsUndoneWithTheWhole) {
    store->BeginChange("Outer");
    store->MakeNode(small.house, "h2", "Villa");
    store->BeginChange("Inner");
    store->Rename(small.house, "Building");
    store->EndChange();
    store->BeginChange("Another");
    store->Rename(small.house, "Home");
    store->CancelChange();
    store->EndChange();
    store->Undo();
    EXPECT_EQ(small.house->name, "House");
    EXPECT_FALSE(store->Find("h2"));
    store->Redo();
    EXPECT_EQ(small.house->name, "Building");
    EXPECT_TRUE(store->Find("h2"));
}

TEST_F(HistoryTest, ACancelledPartThatIsTooLargeLeavesTheHistory) {
    store->SaveAs(":memory:");
    const auto note =
        store->MakeProperty(small.house, "Note", store->Meta().types.Find("NOTE"), "");
    const ObjectRef cottage = store->Find("h1");
    store->BeginChange("Outer");
    store->Rename(cottage, "Hut");
    store->BeginChange("Inner");
    for (int i = 0; i < 40; ++i) {
        store->SetValue(store->MakeNode(small.house, "x" + std::to_string(i), ""), *note,
                        std::string(1 << 20, 'x'));
    }
    store->CancelChange();
    store->MakeNode(small.house, "h2", "Villa");
    store->EndChange();
    EXPECT_EQ(store->UndoName(), "Outer");
    store->Undo();
    store->Update(*cottage);
    EXPECT_EQ(cottage->name, "Cottage");
    EXPECT_FALSE(store->Find("h2"));
    EXPECT_EQ(store->UndoName(), "Make \"Note\"");
    store->Redo();
    EXPECT_TRUE(store->Find("h2"));
    EXPECT_FALSE(store->Find("x0"));
}

TEST_F(HistoryTest, ChangesThatWereNotBegunAreNotEnded) {
    EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::invalidCall);
    EXPECT_EQ(NumberOf([&] { store->CancelChange(); }), Number::invalidCall);
    store->Change("Work", [&] {
        EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::invalidCall);
        EXPECT_EQ(NumberOf([&] { store->Undo(); }), Number::invalidCall);
        store->MakeNode(small.house, "h2", "Villa");
        store->BeginChange("Forgotten");
        store->MakeNode(small.house, "h3", "Palace");
    });
    EXPECT_FALSE(store->IsChanging());
    EXPECT_TRUE(store->Find("h3"));
    EXPECT_EQ(store->UndoName(), "Work");
    EXPECT_THROW(store->Change("Work",
                               [&] {
                                   store->BeginChange("Forgotten");
                                   store->MakeNode(small.house, "h4", "Hut");
                                   throw std::runtime_error("no more");
                               }),
                 std::runtime_error);
    EXPECT_FALSE(store->IsChanging());
    EXPECT_FALSE(store->Find("h4"));
    EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::invalidCall);
}

TEST_F(HistoryTest, AnOpenChangeIsNotInTheFileAndGoesWithTheStore) {
    store->BeginChange("Work");
    store->MakeNode(small.house, "h2", "Villa");
    EXPECT_FALSE(Store::Open(file)->Find("h2"));
    store.reset();
    store = Store::Open(file);
    EXPECT_FALSE(store->Find("h2"));
    EXPECT_TRUE(store->Find("h1"));
}

TEST_F(HistoryTest, AChangeThatCannotBeCommittedIsStillOpen) {
    store->SetBusyTimeout(20);
    store->BeginChange("Work");
    store->MakeNode(small.house, "h2", "Villa");
    {
        Database reader(file, Database::Mode::readWrite);
        reader.Execute("BEGIN");
        reader.ReadInteger("SELECT count(*) FROM object");
        EXPECT_EQ(NumberOf([&] { store->EndChange(); }), Number::permissionDenied);
        EXPECT_TRUE(store->IsChanging());
        reader.Execute("COMMIT");
    }
    store->MakeNode(small.house, "h3", "Palace");
    store->EndChange();
    EXPECT_TRUE(Store::Open(file)->Find("h2"));
    store->Undo();
    EXPECT_FALSE(store->Find("h2"));
    EXPECT_FALSE(store->Find("h3"));
}

TEST_F(HistoryTest, AChangeAfterUndoDropsWhatCouldBeRedone) {
    store->Rename(small.anna, "Hanna");
    store->Undo();
    store->Rename(small.ben, "Ben");
    EXPECT_EQ(store->RedoName(), "Rename \"Anna\"");
    store->Rename(small.ben, "Benno");
    EXPECT_EQ(store->RedoName(), "");
    store->Undo();
    store->Update(*small.ben);
    store->Update(*small.anna);
    EXPECT_EQ(small.ben->name, "Ben");
    EXPECT_EQ(small.anna->name, "Anna");
}

TEST_F(HistoryTest, ItSurvivesClosingAndSavingElsewhere) {
    store->Rename(small.anna, "Hanna");
    store->Rename(small.anna, "Johanna");
    store->Undo();
    store.reset();
    store = Store::Open(file);
    store->SaveAs(scratch.File("b.orv"));
    EXPECT_EQ(store->UndoName(), "Rename \"Anna\"");
    EXPECT_EQ(store->RedoName(), "Rename \"Hanna\"");
    store->Redo();
    EXPECT_EQ(store->Find("p1")->name, "Johanna");
    store->Undo();
    store->Undo();
    EXPECT_EQ(store->Find("p1")->name, "Anna");
    EXPECT_EQ(Store::Open(file)->Find("p1")->name, "Hanna");
}

TEST_F(HistoryTest, NamesThatWereExchangedAreExchangedBack) {
    store->Change("Exchange", [&] {
        store->Rename(small.person, "x");
        store->Rename(small.house, "Person");
        store->Rename(small.person, "House");
    });
    store->Undo();
    EXPECT_EQ(store->Meta().nodes.Find("Person"), small.person);
    EXPECT_EQ(store->Meta().nodes.Find("House"), small.house);
    store->Redo();
    EXPECT_EQ(store->Meta().nodes.Find("Person"), small.house);
}

TEST_F(HistoryTest, AnIdentifierIsFreeAgainForTheSameObject) {
    store->Change("Replace", [&] {
        store->Remove(small.ben);
        store->MakeNode(small.person, "p2", "Benno");
    });
    store->Undo();
    EXPECT_EQ(store->Find("p2"), small.ben);
    store->Redo();
    EXPECT_EQ(store->Find("p2")->name, "Benno");
}

TEST_F(HistoryTest, TheLastChangeOfTheFileIsUndoneWhoeverMadeIt) {
    const auto other = Store::Open(file);
    other->Rename(other->Find("p1"), "Hanna");
    EXPECT_EQ(store->UndoName(), "Rename \"Anna\"");
    store->Rename(small.ben, "Benno");
    other->Undo();
    other->Undo();
    EXPECT_EQ(other->Find("p1")->name, "Anna");
    store->Refresh();
    store->Update(*small.ben);
    EXPECT_EQ(small.ben->name, "Ben");
    EXPECT_EQ(store->RedoName(), "Rename \"Anna\"");
}

TEST_F(HistoryTest, WhatAnotherProgramChangedWithoutAHistoryIsNotOverwritten) {
    store->Rename(small.anna, "Hanna");
    {
        Database other(file, Database::Mode::readWrite);
        other.Execute("UPDATE object SET name = 'Susanna' WHERE identifier = 'p1'");
    }
    const std::string text = TextOf([&] { store->Undo(); });
    EXPECT_NE(text.find("another program"), std::string::npos) << text;
    store->Refresh();
    EXPECT_EQ(store->Find("p1")->name, "Susanna");
    EXPECT_TRUE(store->MakeNode(small.person, "p3", ""));
    store->Undo();
    EXPECT_FALSE(store->Find("p3"));
}

TEST_F(HistoryTest, ALinkThatAnotherProgramMadeGoesWithItsNode) {
    const ObjectRef villa = store->MakeNode(small.house, "h2", "Villa");
    {
        Database other(file, Database::Mode::readWrite);
        other.Execute(
            "INSERT INTO object(meta, identifier, name, name_key, source, target) "
            "SELECT meta, 'l2', '', '', source, (SELECT id FROM object WHERE identifier = 'h2') "
            "FROM object WHERE identifier = 'l1'");
    }
    store->Undo();
    EXPECT_FALSE(store->Find("h2"));
    EXPECT_FALSE(store->Find("l2"));
    Database other(file, Database::Mode::readWrite);
    EXPECT_EQ(other.ReadInteger("SELECT count(*) FROM pragma_foreign_key_check"), 0);
}

TEST_F(HistoryTest, TheOldestChangesAreForgotten) {
    store->SaveAs(":memory:");
    for (int i = 0; i < History::maxSteps + 10; ++i) {
        store->Rename(small.anna, "Anna " + std::to_string(i));
    }
    int undone = 0;
    for (; !store->UndoName().empty(); ++undone) store->Undo();
    EXPECT_EQ(undone, History::maxSteps);
    EXPECT_EQ(store->Find("p1")->name, "Anna 9");
}

TEST_F(HistoryTest, SoAreThoseThatTakeTooManyBytes) {
    store->SaveAs(":memory:");
    const auto picture =
        store->MakeProperty(small.house, "Picture", store->Meta().types.Find("BLOB"), "");
    for (const int size : {10, 11, 12}) {
        store->SetValue(store->Find("h1"), *picture,
                        Bytes(static_cast<std::size_t>(size) << 20, std::uint8_t{1}));
    }
    // The second and the third change keep the bytes of before as well.
    store->Undo();
    EXPECT_EQ(store->UndoName(), "");
    store->Redo();
    EXPECT_EQ(store->UndoName(), "Set \"Picture\"");
}

TEST_F(HistoryTest, AChangeThatIsTooLargeEmptiesTheHistory) {
    store->SaveAs(":memory:");
    const auto note =
        store->MakeProperty(small.house, "Note", store->Meta().types.Find("NOTE"), "");
    store->Change("Import", [&] {
        for (int i = 0; i < 40; ++i) {
            const auto node = store->MakeNode(small.house, "x" + std::to_string(i), "");
            store->SetValue(node, *note, std::string(1 << 20, 'x'));
        }
    });
    EXPECT_TRUE(store->Find("x39"));
    EXPECT_EQ(store->UndoName(), "");
    EXPECT_EQ(store->RedoName(), "");
    store->Rename(small.house, "Home");
    EXPECT_EQ(store->UndoName(), "Rename \"House\"");
}

TEST_F(HistoryTest, AFailedChangeIsNoneAndItsObjectsStayGone) {
    const std::string before = store->UndoName();
    ObjectRef failed;
    MetaNodeRef failedMeta;
    EXPECT_THROW(store->Change("Work",
                               [&] {
                                   failed = store->MakeNode(small.person, "p3", "Carla");
                                   failedMeta = store->MakeMetaNode("City", "");
                                   throw std::runtime_error("no more");
                               }),
                 std::runtime_error);
    EXPECT_EQ(store->UndoName(), before);
    // Their ids are given to these.
    const ObjectRef made = store->MakeNode(small.person, "p4", "Dora");
    const MetaNodeRef madeMeta = store->MakeMetaNode("Village", "");
    store->Refresh();
    store->Update(*failed);
    store->Update(*made);
    EXPECT_TRUE(failed->removed);
    EXPECT_EQ(failed->name, "Carla");
    EXPECT_FALSE(made->removed);
    EXPECT_TRUE(failedMeta->removed);
    EXPECT_EQ(failedMeta->name, "City");
    EXPECT_EQ(store->Meta().nodes.Find("Village"), madeMeta);
}

TEST_F(HistoryTest, AValueThatTheOtherProgramChangedIsWrittenAgain) {
    store->SetValue(small.anna, *small.age, std::int32_t{1});
    const auto other = Store::Open(file);
    const auto person = other->Meta().nodes.Find("Person");
    other->SetValue(other->Find("p1"), *person->properties.Find("Age"), std::int32_t{2});
    store->SetValue(small.anna, *small.age, std::int32_t{1});
    const auto third = Store::Open(file);
    EXPECT_EQ(AgeOf(*third, third->Find("p1")), Value(std::int32_t{1}));
}

}  // namespace
}  // namespace repository::store
