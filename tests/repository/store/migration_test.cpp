#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "repository/store/schema.h"
#include "repository/store/scratch.h"

namespace repository::store {
namespace {

/// A file as version 1 has made it: two nodes with a link, and a value of each kind.
constexpr const char* version1 = R"sql(
CREATE TABLE meta_enum(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    name_key TEXT NOT NULL UNIQUE);

CREATE TABLE meta_atom(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    enumeration INTEGER NOT NULL REFERENCES meta_enum ON DELETE CASCADE,
    name TEXT NOT NULL,
    UNIQUE(enumeration, name));

CREATE TABLE meta_type(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    name_key TEXT NOT NULL UNIQUE,
    description TEXT NOT NULL,
    data_type TEXT NOT NULL,
    enumeration INTEGER REFERENCES meta_enum,
    built_in INTEGER NOT NULL);

-- A meta node, or with its two ends a meta link.
CREATE TABLE meta_object(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    name_key TEXT NOT NULL,
    description TEXT NOT NULL,
    built_in INTEGER NOT NULL DEFAULT 0,
    link_name TEXT,
    source INTEGER REFERENCES meta_object ON DELETE CASCADE,
    target INTEGER REFERENCES meta_object ON DELETE CASCADE,
    CHECK((source IS NULL) = (target IS NULL)),
    CHECK((source IS NULL) = (link_name IS NULL)));
CREATE UNIQUE INDEX meta_node_name ON meta_object(name_key) WHERE source IS NULL;
CREATE UNIQUE INDEX meta_link_name ON meta_object(name_key) WHERE source IS NOT NULL;
CREATE INDEX meta_object_source ON meta_object(source);
CREATE INDEX meta_object_target ON meta_object(target);

-- role: 0 its values are in property_value; 1 name, 2 identifier, 3 description of the object.
CREATE TABLE meta_property(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    owner INTEGER NOT NULL REFERENCES meta_object ON DELETE CASCADE,
    name TEXT NOT NULL,
    name_key TEXT NOT NULL,
    description TEXT NOT NULL,
    type INTEGER NOT NULL REFERENCES meta_type,
    role INTEGER NOT NULL DEFAULT 0,
    is_dynamic INTEGER NOT NULL DEFAULT 0,
    is_persistent INTEGER NOT NULL DEFAULT 1,
    UNIQUE(owner, name_key));
CREATE INDEX meta_property_type ON meta_property(type);

-- A node, or with its two ends a link.
CREATE TABLE object(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    meta INTEGER NOT NULL REFERENCES meta_object ON DELETE CASCADE,
    identifier TEXT NOT NULL UNIQUE,
    name TEXT NOT NULL,
    name_key TEXT NOT NULL,
    description TEXT NOT NULL DEFAULT '',
    source INTEGER REFERENCES object ON DELETE CASCADE,
    target INTEGER REFERENCES object ON DELETE CASCADE,
    CHECK((source IS NULL) = (target IS NULL)));
CREATE INDEX object_meta ON object(meta);
CREATE INDEX object_name ON object(name_key, meta);
CREATE INDEX object_source ON object(source, meta) WHERE source IS NOT NULL;
CREATE INDEX object_target ON object(target, meta) WHERE target IS NOT NULL;

-- type: 1 Boolean, 2 Byte, 3 Integer, 4 Long, 5 LongLong, 6 Single, 7 Double, 8 Currency in
-- ten-thousandths, 9 Date in days since 1899-12-30, 10 String, 11 Blob.
CREATE TABLE property_value(
    object INTEGER NOT NULL REFERENCES object ON DELETE CASCADE,
    property INTEGER NOT NULL REFERENCES meta_property ON DELETE CASCADE,
    type INTEGER NOT NULL,
    value NOT NULL,
    PRIMARY KEY(object, property)) WITHOUT ROWID;

CREATE VIEW node AS
    SELECT object.id, meta_object.name AS meta_node, identifier, object.name, object.description
    FROM object JOIN meta_object ON meta_object.id = meta WHERE object.source IS NULL;
CREATE VIEW link AS
    SELECT object.id, meta_object.name AS meta_link, object.identifier, object.name,
           source.identifier AS source, target.identifier AS target, object.description
    FROM object JOIN meta_object ON meta_object.id = object.meta
    JOIN object AS source ON source.id = object.source
    JOIN object AS target ON target.id = object.target;
CREATE VIEW value AS
    SELECT object.identifier, meta_property.name AS property, value,
           CASE property_value.type WHEN 9 THEN datetime(value + 2415018.5)
                                    WHEN 8 THEN value / 10000.0 ELSE value END AS readable
    FROM property_value JOIN object ON object.id = property_value.object
    JOIN meta_property ON meta_property.id = property;

INSERT INTO meta_type(name, name_key, description, data_type, built_in) VALUES
    ('String', 'string', 'Text', 'String', 1), ('Long', 'long', '', 'Long', 1),
    ('NOTE', 'note', '', 'String', 1), ('Variant', 'variant', '', 'Variant', 1);
INSERT INTO meta_object(name, name_key, description, built_in) VALUES
    ('MetaNode', 'metanode', '', 1), ('MetaLink', 'metalink', '', 1),
    ('MetaProperty', 'metaproperty', '', 1);
INSERT INTO meta_object(name, name_key, description) VALUES('City', 'city', 'A town');
INSERT INTO meta_object(name, name_key, description, link_name, source, target)
    VALUES('Road', 'road', '', 'leads to', 4, 4);
INSERT INTO meta_property(owner, name, name_key, description, type, role) VALUES
    (4, 'Name', 'name', '', 1, 1), (4, 'Identifier', 'identifier', '', 1, 2),
    (4, 'Motto', 'motto', '', 1, 0), (4, 'People', 'people', '', 2, 0);
INSERT INTO object(meta, identifier, name, name_key) VALUES(4, 'c1', 'Paris', 'paris'),
    (4, 'c2', 'Rome', 'rome');
INSERT INTO object(meta, identifier, name, name_key, source, target)
    VALUES(5, 'r1', 'All roads', 'all roads', 1, 2);
INSERT INTO property_value VALUES(1, 3, 10, 'Fluctuat nec mergitur'), (1, 4, 4, 2100000);
PRAGMA application_id = 0x4F727672;
PRAGMA user_version = 1;
)sql";

class EarlierVersion : public testing::Test {
protected:
    void SetUp() override { Database(file, Database::Mode::create).Execute(version1); }

    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
};

TEST_F(EarlierVersion, IsBroughtUpToDateWithAllThatItHas) {
    const auto store = Store::Open(file);
    const auto city = store->Meta().nodes.Find("City");
    const ObjectRef paris = store->Find("c1");
    ASSERT_TRUE(paris);
    EXPECT_EQ(store->GetValue(*paris, *city->properties.Find("People")),
              Value(std::int32_t{2100000}));
    EXPECT_EQ(store->Target(*store->Find("r1")), store->Find("c2"));
    EXPECT_THAT(store->Search("fluctuat"), testing::ElementsAre(paris->id));
    EXPECT_EQ(store->UndoName(), "");
    store->SetAbstract(city, true);
    EXPECT_TRUE(Store::Open(file)->Meta().nodes.Find("City")->abstract);
    store->Rename(paris, "Lutetia");
    store->Undo();
    EXPECT_EQ(store->Find("c1")->name, "Paris");
    Database database(file, Database::Mode::readWrite);
    EXPECT_EQ(database.ReadInteger("PRAGMA user_version"), schemaVersion);
    EXPECT_TRUE(Store::Open(file)->Find("c1"));
}

TEST_F(EarlierVersion, HasTheTablesOfANewFileAfterwards) {
    Store::Open(file);
    Store::Create(scratch.File("b.orv"));
    const auto schema = [](const std::string& path) {
        Database database(path, Database::Mode::readWrite);
        Statement statement = database.Prepare(
            "SELECT type || name || coalesce(sql, '') FROM sqlite_schema ORDER BY 1");
        std::string text;
        for (auto row = statement.Run(); row.Next();) text += row.Text(0) + "\n";
        return text;
    };
    EXPECT_EQ(schema(file), schema(scratch.File("b.orv")));
}

TEST_F(EarlierVersion, StaysAsItIsWhileAnotherProgramWrites) {
    Database other(file, Database::Mode::readWrite);
    other.Execute("BEGIN IMMEDIATE");
    const std::string before = ReadFile(file);
    EXPECT_EQ(NumberOf([&] { Store::Open(file); }), Number::permissionDenied);
    EXPECT_EQ(ReadFile(file), before);
    other.Execute("COMMIT");
    EXPECT_TRUE(Store::Open(file)->Find("c1"));
}

TEST_F(EarlierVersion, IsLeftAsItIsWhenItIsDamaged) {
    Database(file, Database::Mode::readWrite).Execute("DROP VIEW value; DROP TABLE property_value");
    const std::string before = ReadFile(file);
    EXPECT_EQ(NumberOf([&] { Store::Open(file); }), Number::invalidFileFormat);
    EXPECT_EQ(ReadFile(file), before);
}

TEST_F(EarlierVersion, ALaterVersionIsRefusedAndLeftAsItIs) {
    Database(file, Database::Mode::readWrite).Execute("PRAGMA user_version = 4");
    const std::string before = ReadFile(file);
    const std::string text = TextOf([&] { Store::Open(file); });
    EXPECT_NE(text.find("later version"), std::string::npos) << text;
    EXPECT_EQ(ReadFile(file), before);
}

}  // namespace
}  // namespace repository::store
