#include "repository/com/repository_fixture.h"
#include "support/fake_object.h"

namespace repository {
namespace {

class RepositoryHistory : public RepositoryTest {};

TEST_F(RepositoryHistory, UndoAndRedoShowInHeldObjectsAtOnce) {
    ASSERT_TRUE(anna.Do("SetProperty", "Age", 41));
    ASSERT_TRUE(anna.Do("SetProperty", "Age", 42));
    const LateBound value = ObjectIn(anna.Call("Properties", "Age"));
    EXPECT_EQ(TextOf(rep, "UndoName"), "Set \"Age\"");
    ASSERT_TRUE(rep.Do("Undo"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), Value(41));
    EXPECT_EQ(Result(value.Get("Value")), Value(41));
    EXPECT_EQ(TextOf(rep, "RedoName"), "Set \"Age\"");
    ASSERT_TRUE(rep.Do("Redo"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), Value(42));
    EXPECT_EQ(TextOf(rep, "RedoName"), "");
}

TEST_F(RepositoryHistory, RemovedObjectsComeBackAsTheSame) {
    const LateBound people = ObjectIn(person.Call("Extension"));
    ASSERT_TRUE(rep.Do("RemoveClass", anna.Get()));
    EXPECT_EQ(ErrorOf(anna.Call("parent")), 35601);
    EXPECT_EQ(Result(people.Call("Count")), Value(1));
    ASSERT_TRUE(rep.Do("Undo"));
    EXPECT_EQ(Result(people.Call("Count")), Value(2));
    EXPECT_TRUE(Same(ObjectIn(people.Call("Item", 1)), anna));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("Objects", "l1")), annaInCottage));
    EXPECT_TRUE(Same(ObjectIn(annaInCottage.Call("source")), anna));
    ASSERT_TRUE(rep.Do("RemoveClass", person.Get()));
    EXPECT_EQ(ErrorOf(person.Call("Description")), 35601);
    EXPECT_EQ(ErrorOf(age.Call("Description")), 35601);
    ASSERT_TRUE(rep.Do("Undo"));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaNodes", "Person")), person));
    EXPECT_TRUE(Same(ObjectIn(person.Call("Properties", "Age")), age));
    EXPECT_TRUE(Same(ObjectIn(rep.Call("MetaLinks", "Person lives in House")), livesIn));
    EXPECT_EQ(TextOf(anna, "name"), "Anna");
}

TEST_F(RepositoryHistory, AGroupOfChangesIsOne) {
    ASSERT_TRUE(rep.Do("BeginChange", "Apply"));
    ASSERT_TRUE(anna.Do("SetProperty", "Age", 41));
    ASSERT_TRUE(rep.Do("BeginChange"));
    ASSERT_TRUE(anna.Put("name", "Hanna"));
    ASSERT_TRUE(rep.Do("CancelChange"));
    EXPECT_EQ(TextOf(anna, "name"), "Anna");
    ASSERT_TRUE(ben.Put("name", "Benno"));
    ASSERT_TRUE(rep.Do("EndChange"));
    EXPECT_EQ(TextOf(rep, "UndoName"), "Apply");
    ASSERT_TRUE(rep.Do("Undo"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), support::Empty());
    EXPECT_EQ(TextOf(ben, "name"), "Ben");
}

TEST_F(RepositoryHistory, WhatDoesNotFitIsRefused) {
    EXPECT_EQ(ErrorOf(rep.Do("EndChange")), 5);
    EXPECT_EQ(ErrorOf(rep.Do("CancelChange")), 5);
    EXPECT_EQ(ErrorOf(rep.Do("Redo")), 5);
    while (TextOf(rep, "UndoName") != "") ASSERT_TRUE(rep.Do("Undo"));
    EXPECT_EQ(ErrorOf(rep.Do("Undo")), 5);
    EXPECT_EQ(ErrorOf(rep.Do("BeginChange", support::Null())), 94);
    ASSERT_TRUE(rep.Do("BeginChange", "Work"));
    for (const char* member : {"Undo", "Redo", "Refresh", "Close", "New"}) {
        EXPECT_EQ(ErrorOf(rep.Do(member)), 5) << member;
    }
    EXPECT_EQ(ErrorOf(rep.Do("Open", "x.orv")), 5);
    EXPECT_EQ(ErrorOf(rep.Do("SaveAs", ":memory:")), 5);
    ASSERT_TRUE(rep.Do("EndChange"));
    ASSERT_TRUE(rep.Do("Close"));
    EXPECT_EQ(ErrorOf(rep.Do("BeginChange")), 91);
    EXPECT_EQ(ErrorOf(rep.Do("Undo")), 91);
    EXPECT_EQ(ErrorOf(rep.Get("UndoName")), 91);
    EXPECT_EQ(ErrorOf(rep.Call("Search", "x")), 91);
}

TEST_F(RepositoryHistory, ItIsInTheFileAndAnOpenChangeIsNot) {
    const TemporaryFolder scratch;
    const std::wstring file = scratch.File(L"a.orv");
    ASSERT_TRUE(rep.Do("SaveAs", file));
    ASSERT_TRUE(anna.Put("name", "Hanna"));
    ASSERT_TRUE(rep.Do("Close"));
    {
        const LateBound forgetful(Component().Create("Repository"));
        ASSERT_TRUE(forgetful.Do("Open", file));
        ASSERT_TRUE(forgetful.Do("BeginChange", "Work"));
        ASSERT_TRUE(forgetful.Call("MakeMetaNode", "City"));
    }
    ASSERT_TRUE(rep.Do("Open", file));
    EXPECT_FALSE(rep.Call("MetaNodes", "City"));
    EXPECT_EQ(TextOf(rep, "UndoName"), "Rename \"Anna\"");
    ASSERT_TRUE(rep.Do("Undo"));
    EXPECT_EQ(TextOf(ObjectIn(rep.Call("Objects", "p1")), "name"), "Anna");
    ASSERT_TRUE(rep.Do("Close"));
}

TEST_F(RepositoryHistory, AHostMayBeginAndEndChangesWhileAnArgumentIsConverted) {
    using support::FakeObject;
    const auto meddler = FakeObject::Make("meddler");
    meddler->Function(support::defaultMember, [this](support::Arguments&) {
        EXPECT_TRUE(rep.Do("BeginChange", "Inner"));
        EXPECT_TRUE(ben.Put("name", "Benno"));
        EXPECT_TRUE(rep.Do("EndChange"));
        EXPECT_TRUE(rep.Do("Undo"));
        return Value(5);
    });
    ASSERT_TRUE(anna.Do("SetProperty", "Age", meddler));
    EXPECT_EQ(TextOf(ben, "name"), "Ben");
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), Value(5));
    EXPECT_EQ(TextOf(rep, "UndoName"), "Set \"Age\"");
    EXPECT_EQ(TextOf(rep, "RedoName"), "");
}

TEST_F(RepositoryHistory, AnImportIsOneChange) {
    ASSERT_TRUE(rep.Call("Import", "stdole2.tlb"));
    EXPECT_EQ(TextOf(rep, "UndoName"), "Import");
    ASSERT_TRUE(rep.Do("Undo"));
    EXPECT_EQ(ObjectIn(rep.Call("MetaNodes")).Elements(9).size(), 5u);
    EXPECT_EQ(TextOf(ObjectIn(rep.Call("Objects", "p1")), "name"), "Anna");
}

TEST_F(RepositoryHistory, SearchFindsNodesAndLinksBestFirst) {
    ASSERT_TRUE(ben.Put("name", "Anna and Ben and many others of that name"));
    const LateBound found = ObjectIn(rep.Call("Search", "ann"));
    EXPECT_EQ(Result(found.Call("Count")), Value(2));
    EXPECT_TRUE(Same(ObjectIn(found.Call("Item", 1)), anna));
    EXPECT_TRUE(Same(ObjectIn(found.Call("Item", "p2")), ben));
    EXPECT_EQ(ErrorOf(found.Call("Item", "h1")), 5);
    EXPECT_EQ(ErrorOf(found.Call("Item", 3)), 9);
    EXPECT_EQ(Texts(found, "identifier"), (std::vector<std::string>{"p1", "p2"}));
    ASSERT_TRUE(anna.Put("name", "Hanna"));
    EXPECT_EQ(Texts(found, "identifier"), (std::vector<std::string>{"p2"}));
    EXPECT_EQ(Texts(ObjectIn(rep.Call("Search", "since 19")), "identifier"),
              (std::vector<std::string>{"l1"}));
    EXPECT_EQ(Result(ObjectIn(rep.Call("Search", "\" OR (")).Call("Count")), Value(0));
    EXPECT_EQ(Result(ObjectIn(rep.Call("Search", "")).Call("Count")), Value(0));
    EXPECT_EQ(ErrorOf(rep.Call("Search", support::Null())), 94);
}

}  // namespace
}  // namespace repository
