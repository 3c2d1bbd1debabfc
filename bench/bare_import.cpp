#include "bare_import.h"

#include "repository/ecore/file.h"
#include "repository/store/schema.h"
#include "repository/xml/reader.h"

namespace bench {

namespace {

using repository::store::Database;
using repository::store::Statement;
using repository::store::Transaction;

class Nothing final : public repository::xml::Handler {
    void Start(const repository::xml::Name&, std::span<const repository::xml::Attribute>) override {
    }
    void Text(std::string_view) override {}
    void End() override {}
};

}  // namespace

void ReadXml(const std::string& file) {
    Nothing nothing;
    repository::xml::Reader reader(nothing);
    repository::ecore::ReadFile(file, [&](std::string_view piece, bool last) {
        reader.Read(piece, last);
        return true;
    });
}

RepositoryRows::RepositoryRows(const std::string& file) : file_(file) {
    Database database(file, Database::Mode::readWrite);
    Statement object = database.Prepare(
        "SELECT id, meta, identifier, name, name_key, source, target FROM object ORDER BY id");
    for (auto row = object.Run(); row.Next();) {
        objects_.push_back({row.Integer(0), row.Integer(1), row.Text(2), row.Text(3), row.Text(4),
                            row.Integer(5), row.Integer(6)});
    }
    Statement value = database.Prepare("SELECT object, property, type, value FROM property_value");
    for (auto row = value.Run(); row.Next();) {
        values_.push_back({row.Integer(0), row.Integer(1), row.Integer(2), row.ReadValue(2, 3)});
    }
}

void RepositoryRows::Insert(const std::string& file) const {
    Database database(file, Database::Mode::create);
    repository::store::Configure(database, 0);
    repository::store::CreateSchema(database);
    database.Execute("ATTACH '" + file_ + "' AS other");
    Transaction transaction(database, 0);
    for (const char* table : {"meta_type", "meta_object", "meta_property"}) {
        database.Execute(std::string("INSERT OR IGNORE INTO ") + table + " SELECT * FROM other." +
                         table);
    }
    Statement object = database.Prepare(
        "INSERT INTO object(id, meta, identifier, name, name_key, source, target) "
        "VALUES(?1, ?2, ?3, ?4, ?5, NULLIF(?6, 0), NULLIF(?7, 0))");
    for (const ObjectRow& row : objects_) {
        object.Execute(row.id, row.meta, row.identifier, row.name, row.key, row.source, row.target);
    }
    Statement value = database.Prepare(
        "INSERT INTO property_value(object, property, type, value) VALUES(?1, ?2, ?3, ?4)");
    for (const ValueRow& row : values_) {
        value.Execute(row.object, row.property, row.type, row.value);
    }
    transaction.Commit();
}

}  // namespace bench
