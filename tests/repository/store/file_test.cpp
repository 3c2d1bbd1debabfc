#include <gtest/gtest.h>
#include <sqlite3.h>

#include "repository/store/file.h"
#include "repository/store/schema.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

void RunSql(const std::string& file, const char* sql) {
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection);
    sqlite3_close(connection);
}

TEST(RepositoryFile, CreatedOpensAgainWithItsContent) {
    const Scratch scratch;
    {
        const auto store = Store::Create(scratch.File("a.orv"));
        const Small small(*store);
        store->SetValue(small.anna, *small.age, std::int32_t{42});
    }
    const auto store = Store::Open(scratch.File("a.orv"));
    const MetaNodeRef person = store->Meta().nodes.Find("person");
    ASSERT_TRUE(person);
    EXPECT_EQ(person->description, "Somebody");
    const ObjectRef anna = store->Find("p1");
    ASSERT_TRUE(anna);
    EXPECT_EQ(anna->name, "Anna");
    EXPECT_EQ(store->GetValue(*anna, *person->properties.Find("age")), Value(std::int32_t{42}));
    EXPECT_EQ(store->Count(ObjectSet::Outgoing(*anna)), 1);
}

TEST(RepositoryFile, PathIsAbsoluteAndMayHaveAnyCharacters) {
    const Scratch scratch;
    const std::string file = scratch.File("Größe \xE6\x97\xA5\xE6\x9C\xAC.orv");
    EXPECT_EQ(Store::Create(file)->Path(), file);
    EXPECT_TRUE(Store::Open(file));
    EXPECT_EQ(Absolute(inMemory), inMemory);
    EXPECT_NE(Absolute("x.orv"), "x.orv");
}

TEST(RepositoryFile, NothingLiesBesideItBetweenChanges) {
    const Scratch scratch;
    const auto store = Store::Create(scratch.File("a.orv"));
    const Small small(*store);
    int files = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator(PathOf(scratch.Folder()))) {
        ++files;
    }
    EXPECT_EQ(files, 1);
}

TEST(RepositoryFile, NewLeavesAnExistingFileAlone) {
    const Scratch scratch;
    Store::Create(scratch.File("a.orv"));
    EXPECT_EQ(NumberOf([&] { Store::Create(scratch.File("a.orv")); }), Number::fileExists);
    WriteFile(scratch.File("b.txt"), std::string(200, 'x'));
    EXPECT_EQ(NumberOf([&] { Store::Create(scratch.File("b.txt")); }), Number::invalidFileFormat);
    EXPECT_EQ(ReadFile(scratch.File("b.txt")), std::string(200, 'x'));
}

TEST(RepositoryFile, NewTakesAnEmptyFile) {
    const Scratch scratch;
    WriteFile(scratch.File("a.orv"), "");
    EXPECT_TRUE(Store::Create(scratch.File("a.orv")));
    EXPECT_TRUE(Store::Open(scratch.File("a.orv")));
}

TEST(RepositoryFile, MissingFilesAndFoldersHaveTheirOwnErrors) {
    const Scratch scratch;
    EXPECT_EQ(NumberOf([&] { Store::Open(scratch.File("none.orv")); }), Number::fileNotFound);
    EXPECT_EQ(NumberOf([&] { Store::Open(scratch.File("none/a.orv")); }), Number::pathNotFound);
    EXPECT_EQ(NumberOf([&] { Store::Create(scratch.File("none/a.orv")); }), Number::pathNotFound);
    EXPECT_EQ(NumberOf([&] { Store::Open(scratch.Folder()); }), Number::pathFileAccess);
    EXPECT_EQ(NumberOf([&] { Store::Open(""); }), Number::pathFileAccess);
    EXPECT_EQ(NumberOf([&] { Store::Create(""); }), Number::pathFileAccess);
    EXPECT_FALSE(std::filesystem::exists(PathOf(scratch.File("none.orv"))));
}

TEST(RepositoryFile, OtherFilesAreRefusedAndLeftAsTheyAre) {
    const Scratch scratch;
    const std::string text(5000, 'x');
    WriteFile(scratch.File("text"), text);
    EXPECT_EQ(NumberOf([&] { Store::Open(scratch.File("text")); }), Number::invalidFileFormat);
    EXPECT_EQ(ReadFile(scratch.File("text")), text);
    WriteFile(scratch.File("short"), "SQLite");
    EXPECT_EQ(NumberOf([&] { Store::Open(scratch.File("short")); }), Number::invalidFileFormat);
    WriteFile(scratch.File("empty"), "");
    EXPECT_EQ(NumberOf([&] { Store::Open(scratch.File("empty")); }), Number::invalidFileFormat);
    EXPECT_EQ(ReadFile(scratch.File("empty")), "");
}

TEST(RepositoryFile, DatabasesOfOtherProgramsAreRefusedAndLeftAsTheyAre) {
    const Scratch scratch;
    const std::string file = scratch.File("other.db");
    RunSql(file, "PRAGMA journal_mode=WAL; CREATE TABLE t(x); INSERT INTO t VALUES(1);");
    const std::string before = ReadFile(file);
    const std::string text = TextOf([&] { Store::Open(file); });
    EXPECT_NE(text.find("another program"), std::string::npos) << text;
    EXPECT_EQ(ReadFile(file), before);
}

TEST(RepositoryFile, LaterVersionsAreRefusedAndLeftAsTheyAre) {
    const Scratch scratch;
    const std::string file = scratch.File("later.orv");
    Store::Create(file);
    RunSql(file, ("PRAGMA user_version = " + std::to_string(schemaVersion + 1)).c_str());
    const std::string before = ReadFile(file);
    const std::string text = TextOf([&] { Store::Open(file); });
    EXPECT_NE(text.find("later version"), std::string::npos) << text;
    EXPECT_EQ(ReadFile(file), before);
}

TEST(RepositoryFile, SaveAsGoesOnInTheNewFile) {
    const Scratch scratch;
    const auto store = Store::Create(inMemory);
    const Small small(*store);
    store->SaveAs(scratch.File("a.orv"));
    EXPECT_EQ(store->Path(), scratch.File("a.orv"));
    EXPECT_EQ(store->Find("p1"), small.anna);
    EXPECT_EQ(store->Meta().nodes.Find("Person"), small.person);
    store->MakeNode(small.person, "p3", "Carla");

    store->SaveAs(scratch.File("b.orv"));
    store->MakeNode(small.person, "p4", "Dora");
    const auto first = Store::Open(scratch.File("a.orv"));
    EXPECT_TRUE(first->Find("p3"));
    EXPECT_FALSE(first->Find("p4"));
    EXPECT_TRUE(Store::Open(scratch.File("b.orv"))->Find("p4"));
}

TEST(RepositoryFile, SaveAsReplacesARepositoryButNothingElse) {
    const Scratch scratch;
    {
        const auto old = Store::Create(scratch.File("old.orv"));
        old->MakeMetaNode("Old", "");
    }
    WriteFile(scratch.File("text"), std::string(300, 'x'));
    const auto store = Store::Create(inMemory);
    store->MakeMetaNode("New", "");
    store->SaveAs(scratch.File("old.orv"));
    EXPECT_EQ(NumberOf([&] { store->SaveAs(scratch.File("text")); }), Number::invalidFileFormat);
    EXPECT_EQ(NumberOf([&] { store->SaveAs(scratch.Folder()); }), Number::pathFileAccess);
    EXPECT_EQ(NumberOf([&] { store->SaveAs(scratch.File("none/a")); }), Number::pathNotFound);
    EXPECT_EQ(store->Path(), scratch.File("old.orv"));
    EXPECT_EQ(ReadFile(scratch.File("text")), std::string(300, 'x'));

    const auto again = Store::Open(scratch.File("old.orv"));
    EXPECT_TRUE(again->Meta().nodes.Find("New"));
    EXPECT_FALSE(again->Meta().nodes.Find("Old"));
}

TEST(RepositoryFile, SaveAsToItsOwnFileKeepsIt) {
    const Scratch scratch;
    const auto store = Store::Create(scratch.File("a.orv"));
    const Small small(*store);
    store->SaveAs(scratch.File("a.orv"));
    EXPECT_TRUE(store->Find("p1"));
    EXPECT_TRUE(Store::Open(scratch.File("a.orv"))->Find("p1"));
}

TEST(RepositoryFile, OtherToolsCanReadNodesLinksAndValues) {
    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    {
        const auto store = Store::Create(file);
        const Small small(*store);
        const auto born =
            store->MakeProperty(small.person, "Born", store->Meta().types.Find("Date"), "");
        store->SetValue(small.anna, *born, Date{36892.75});
    }
    Database database(file, Database::Mode::readWrite);
    EXPECT_EQ(database.ReadInteger("SELECT count(*) FROM node WHERE meta_node = 'Person'"), 2);
    EXPECT_EQ(
        database.ReadInteger("SELECT count(*) FROM link WHERE meta_link = 'Person lives in House' "
                             "AND source = 'p1' AND target = 'h1'"),
        1);
    EXPECT_EQ(database.ReadInteger("SELECT readable = '2001-01-01 18:00:00' FROM value "
                                   "WHERE identifier = 'p1' AND property = 'Born'"),
              1);
}

TEST(RepositoryFile, AConnectionKeepsWhatIsCommittedThroughAPowerFailure) {
    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    Store::Create(file);
    Database database(file, Database::Mode::readWrite);
    Configure(database, 10);
    constexpr int extra = 3;
    EXPECT_EQ(database.ReadInteger("PRAGMA synchronous"), extra);
    EXPECT_EQ(database.ReadInteger("PRAGMA foreign_keys"), 1);
    EXPECT_EQ(database.ReadInteger("SELECT journal_mode = 'delete' FROM pragma_journal_mode"), 1);
}

}  // namespace
}  // namespace repository::store
