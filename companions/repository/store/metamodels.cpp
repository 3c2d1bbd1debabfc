#include "repository/store/store.h"

namespace repository::store {

std::vector<Store::Metamodel> Store::Metamodels() {
    std::vector<Metamodel> all;
    for (auto row =
             database_->Cached("SELECT id, uri, file, ecore FROM metamodel ORDER BY id").Run();
         row.Next();) {
        all.push_back({row.Integer(0), row.Text(1), row.Text(2), row.Text(3)});
    }
    return all;
}

std::vector<Store::MetamodelPart> Store::Parts(Id metamodel) {
    std::unordered_map<Id, MetaPropertyRef> properties;
    const auto remember = [&](const auto& objects) {
        for (const auto& object : objects) {
            for (const MetaPropertyRef& each : object->properties) properties[each->id] = each;
        }
    };
    remember(meta_.nodes);
    remember(meta_.links);
    std::unordered_map<Id, MetaTypeRef> types;
    for (const MetaTypeRef& each : meta_.types) types[each->id] = each;

    std::vector<MetamodelPart> parts;
    for (auto row = database_
                        ->Cached("SELECT path, name, meta_object, meta_property, meta_type "
                                 "FROM metamodel_part WHERE metamodel = ?1 ORDER BY id")
                        .Run(metamodel);
         row.Next();) {
        MetamodelPart& part = parts.emplace_back();
        part.path = row.Text(0);
        part.name = row.Text(1);
        part.object = meta_.Find(row.Integer(2));
        if (const auto found = properties.find(row.Integer(3)); found != properties.end()) {
            part.property = found->second;
        }
        if (const auto found = types.find(row.Integer(4)); found != types.end()) {
            part.type = found->second;
        }
    }
    return parts;
}

Id Store::AddMetamodel(const Metamodel& metamodel) {
    ChangeScope change(*this, "Make", metamodel.uri);
    database_->Cached("INSERT INTO metamodel(uri, file, ecore) VALUES(?1, ?2, ?3)")
        .Execute(metamodel.uri, metamodel.file, metamodel.ecore);
    const Id id = database_->LastInsertId();
    change.Commit();
    return id;
}

void Store::AddPart(Id metamodel, const MetamodelPart& part) {
    ChangeScope change(*this, "Make", part.name);
    database_
        ->Cached(
            "INSERT INTO metamodel_part(metamodel, path, name, meta_object, meta_property, "
            "meta_type) VALUES(?1, ?2, ?3, NULLIF(?4, 0), NULLIF(?5, 0), NULLIF(?6, 0))")
        .Execute(metamodel, part.path, part.name, part.object ? part.object->id : 0,
                 part.property ? part.property->id : 0, part.type ? part.type->id : 0);
    change.Commit();
}

}  // namespace repository::store
