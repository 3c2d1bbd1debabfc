#include "repository/store/schema.h"

#include <iterator>
#include <string>

#include "repository/store/error.h"
#include "repository/store/meta_model.h"
#include "repository/store/search.h"
#include "repository/store/text.h"

namespace repository::store {

namespace {

// What each version of the file has more than the one before. It stays as it is once files have
// been made with it.
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
)sql";

constexpr const char* version2 = R"sql(
ALTER TABLE meta_object ADD COLUMN is_abstract INTEGER NOT NULL DEFAULT 0;

-- The nodes of a meta node are at the ends of the meta links of its supertypes too.
CREATE TABLE meta_supertype(
    meta_node INTEGER NOT NULL REFERENCES meta_object ON DELETE CASCADE,
    supertype INTEGER NOT NULL REFERENCES meta_object ON DELETE CASCADE,
    PRIMARY KEY(meta_node, supertype)) WITHOUT ROWID;
CREATE INDEX meta_supertype_supertype ON meta_supertype(supertype);

-- What an object's property is when it is not set; typed as in property_value.
ALTER TABLE meta_property ADD COLUMN default_type INTEGER NOT NULL DEFAULT 0;
ALTER TABLE meta_property ADD COLUMN default_value;

-- A metamodel that was imported: its root package as Ecore, and which elements stand for its parts.
CREATE TABLE metamodel(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    uri TEXT NOT NULL UNIQUE,
    file TEXT NOT NULL,
    ecore TEXT NOT NULL);
CREATE TABLE metamodel_part(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    metamodel INTEGER NOT NULL REFERENCES metamodel ON DELETE CASCADE,
    path TEXT NOT NULL,
    name TEXT NOT NULL,
    meta_object INTEGER REFERENCES meta_object ON DELETE CASCADE,
    meta_property INTEGER REFERENCES meta_property ON DELETE CASCADE,
    meta_type INTEGER REFERENCES meta_type ON DELETE CASCADE);
CREATE INDEX metamodel_part_metamodel ON metamodel_part(metamodel);
CREATE INDEX metamodel_part_object ON metamodel_part(meta_object);
CREATE INDEX metamodel_part_property ON metamodel_part(meta_property);
CREATE INDEX metamodel_part_type ON metamodel_part(meta_type);
)sql";

constexpr const char* version3 = R"sql(
-- The changes that can be undone, and after them those that were undone (undone is 1) and can be
-- made again, in the order of their making. total: the bytes of this and all earlier ones.
CREATE TABLE step(
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    undone INTEGER NOT NULL DEFAULT 0,
    size INTEGER NOT NULL,
    total INTEGER NOT NULL);

-- What a change has done to the other tables, as changesets of SQLite's session extension.
CREATE TABLE step_part(
    step INTEGER NOT NULL REFERENCES step ON DELETE CASCADE,
    number INTEGER NOT NULL,
    changeset BLOB NOT NULL,
    PRIMARY KEY(step, number));

-- The full-text index: the row of an object has the object's id. The objects in search_pending have
-- changed since they were indexed.
CREATE VIRTUAL TABLE search USING fts5(name, content, tokenize = 'unicode61 remove_diacritics 2');
CREATE TABLE search_pending(object INTEGER PRIMARY KEY);
CREATE TRIGGER object_made AFTER INSERT ON object BEGIN
    INSERT OR IGNORE INTO search_pending VALUES(new.id);
END;
CREATE TRIGGER object_renamed AFTER UPDATE OF name, description ON object BEGIN
    INSERT OR IGNORE INTO search_pending VALUES(new.id);
END;
CREATE TRIGGER object_removed AFTER DELETE ON object BEGIN
    INSERT OR IGNORE INTO search_pending VALUES(old.id);
END;
CREATE TRIGGER text_set AFTER INSERT ON property_value WHEN new.type = 10 BEGIN
    INSERT OR IGNORE INTO search_pending VALUES(new.object);
END;
CREATE TRIGGER text_changed AFTER UPDATE ON property_value WHEN old.type = 10 OR new.type = 10 BEGIN
    INSERT OR IGNORE INTO search_pending VALUES(new.object);
END;
CREATE TRIGGER text_unset AFTER DELETE ON property_value WHEN old.type = 10 BEGIN
    INSERT OR IGNORE INTO search_pending VALUES(old.object);
END;
INSERT INTO search_pending SELECT id FROM object;
)sql";

constexpr const char* versions[] = {version1, version2, version3};
static_assert(std::size(versions) == schemaVersion);

struct BuiltInType {
    const char* name;
    DataType dataType;
    const char* description;
};

constexpr BuiltInType builtInTypes[] = {
    {meta_type::string, DataType::string, "Text"},
    {"Long", DataType::longInteger, "Whole number of 32 bits"},
    {"Integer", DataType::integer, "Whole number of 16 bits"},
    {"Double", DataType::doubleFloat, "Floating-point number of 64 bits"},
    {"Single", DataType::singleFloat, "Floating-point number of 32 bits"},
    {"Currency", DataType::currency, "Amount with four decimals"},
    {"Date", DataType::date, "Date and time of day"},
    {"Boolean", DataType::boolean, "True or False"},
    {"FILE", DataType::string, "Path of a file"},
    {"DIRECTORY", DataType::string, "Path of a folder"},
    {"PICTURE", DataType::string, "Path of a picture file"},
    {"COLOR", DataType::string, "Colour as the decimal form of 0x00BBGGRR"},
    {"FONT", DataType::string, "Font: name;size;bold;italic;strikethrough;underline"},
    {"TIMESTAMP", DataType::string, "Time stamp: YYYY/MM/DD-hh:mm:ss-ffff"},
    {meta_type::note, DataType::string, "Text of several lines"},
    {"BLOB", DataType::blob, "Bytes"},
    {meta_type::variant, DataType::variant, "A value of any type"},
};

struct BuiltInNode {
    const char* name;
    const char* description;
};

constexpr BuiltInNode builtInNodes[] = {
    {built_in::metaNode, "The type of the meta nodes"},
    {built_in::metaLink, "The type of the meta links"},
    {built_in::metaProperty, "The type of the meta properties"},
};

struct ExpectedTable {
    const char* name;
    std::int64_t sinceVersion;
};

constexpr ExpectedTable expectedTables[] = {
    {"meta_enum", 1},     {"meta_atom", 1},      {"meta_type", 1},      {"meta_object", 1},
    {"meta_property", 1}, {"object", 1},         {"property_value", 1}, {"meta_supertype", 2},
    {"metamodel", 2},     {"metamodel_part", 2}, {"step", 3},           {"step_part", 3},
    {"search", 3},        {"search_pending", 3},
};

std::int64_t VersionOf(Database& database) {
    return database.ReadInteger("PRAGMA user_version");
}

/// Adds what the versions after that one have.
void AddVersions(Database& database, std::int64_t after) {
    for (std::int64_t version = after + 1; version <= schemaVersion; ++version) {
        database.Execute(versions[version - 1]);
    }
    database.Execute("PRAGMA user_version = " + std::to_string(schemaVersion));
}

}  // namespace

void CreateSchema(Database& database) {
    Transaction transaction(database, 0);
    AddVersions(database, 0);
    Statement type = database.Prepare(
        "INSERT INTO meta_type(name, name_key, description, data_type, built_in) "
        "VALUES(?1, ?2, ?3, ?4, 1)");
    for (const BuiltInType& each : builtInTypes) {
        type.Execute(std::string_view(each.name), FoldCase(each.name),
                     std::string_view(each.description), WordOf(each.dataType));
    }
    Statement node = database.Prepare(
        "INSERT INTO meta_object(name, name_key, description, built_in) VALUES(?1, ?2, ?3, 1)");
    for (const BuiltInNode& each : builtInNodes) {
        node.Execute(std::string_view(each.name), FoldCase(each.name),
                     std::string_view(each.description));
    }
    database.Execute("PRAGMA application_id = " + std::to_string(applicationId));
    transaction.Commit();
}

void Configure(Database& database, int busyMilliseconds) {
    database.SetBusyTimeout(busyMilliseconds);
    // A file without companions that lie beside it between changes, that may lie on a network
    // drive, and that keeps a committed change through a power failure.
    database.Execute("PRAGMA journal_mode = DELETE");
    database.Execute("PRAGMA synchronous = EXTRA");
    database.Execute("PRAGMA foreign_keys = ON");
    database.Execute("PRAGMA trusted_schema = OFF");
    database.Execute("PRAGMA cell_size_check = ON");
    database.Execute("PRAGMA temp_store = MEMORY");
    database.Execute("PRAGMA cache_size = -32000");
}

void CheckSchema(Database& database) {
    const Snapshot snapshot(database);
    const std::int64_t version = VersionOf(database);
    if (database.ReadInteger("PRAGMA application_id") != applicationId || version < 1 ||
        version > schemaVersion) {
        throw Error(Number::invalidFileFormat, "The file is no repository of this version");
    }
    for (const ExpectedTable& table : expectedTables) {
        if (table.sinceVersion > version) continue;
        const std::string name = table.name;
        if (database.ReadInteger(
                "SELECT count(*) FROM sqlite_schema WHERE type = 'table' AND name = '" + name +
                "'") != 1) {
            throw Error(Number::invalidFileFormat,
                        "The repository file is damaged (table " + name + " is missing)");
        }
    }
}

void UpdateSchema(Database& database) {
    if (VersionOf(database) == schemaVersion) return;
    Transaction transaction(database, 0);
    // Another program may have been faster.
    if (const std::int64_t version = VersionOf(database); version < schemaVersion) {
        AddVersions(database, version);
        UpdateIndex(database);
    }
    transaction.Commit();
}

}  // namespace repository::store
