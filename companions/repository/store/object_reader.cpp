#include "repository/store/object_reader.h"

#include <utility>

#include "repository/store/error.h"
#include "repository/store/text.h"

namespace repository::store {

namespace {

const std::string columns = "id, meta, identifier, name, description, source, target";
const std::string select = "SELECT " + columns + " FROM object WHERE ";

/// The members of a set; ?1 is the meta object and ?2 the node.
std::string Condition(const ObjectSet& set) {
    switch (set.kind) {
        case ObjectSet::Kind::instances:
            return "meta = ?1 AND ?2 = 0";
        case ObjectSet::Kind::outgoing:
            return set.meta != 0 ? "source = ?2 AND meta = ?1" : "source = ?2 AND ?1 = 0";
        case ObjectSet::Kind::incoming:
            return set.meta != 0 ? "target = ?2 AND meta = ?1" : "target = ?2 AND ?1 = 0";
    }
    return "0";
}

}  // namespace

Object::~Object() {
    if (!registry_) return;
    const auto entry = registry_->find(id);
    if (entry != registry_->end() && entry->second.expired()) registry_->erase(entry);
}

ObjectReader::ObjectReader(MetaModel& meta, std::function<void()> resync)
    : meta_(meta), resync_(std::move(resync)) {}

ObjectRef ObjectReader::Get(Id id) {
    if (const auto entry = registry_->find(id); entry != registry_->end()) {
        if (ObjectRef held = entry->second.lock()) {
            Update(*held);
            return held->removed ? nullptr : held;
        }
    }
    return First(database_->Cached(select + "id = ?1").Run(id));
}

ObjectRef ObjectReader::Find(std::string_view identifier) {
    return First(database_->Cached(select + "identifier = ?1").Run(identifier));
}

ObjectRef ObjectReader::Find(const ObjectSet& set, std::string_view identifier) {
    const ObjectRef found = Find(identifier);
    if (!found) return nullptr;
    const bool rightMeta = set.meta == 0 || found->meta->id == set.meta;
    switch (set.kind) {
        case ObjectSet::Kind::instances:
            return rightMeta ? found : nullptr;
        case ObjectSet::Kind::outgoing:
            return rightMeta && found->source == set.node ? found : nullptr;
        case ObjectSet::Kind::incoming:
            return rightMeta && found->target == set.node ? found : nullptr;
    }
    return nullptr;
}

std::vector<ObjectRef> ObjectReader::FindByName(const MetaObject& meta, std::string_view name) {
    return All(database_->Cached(select + "name_key = ?1 AND meta = ?2 ORDER BY id")
                   .Run(FoldCase(name), meta.id));
}

std::vector<ObjectRef> ObjectReader::Read(const ObjectSet& set, Id after, int limit) {
    return All(database_->Cached(select + Condition(set) + " AND id > ?3 ORDER BY id LIMIT ?4")
                   .Run(set.meta, set.node, after, limit));
}

ObjectRef ObjectReader::At(const ObjectSet& set, std::int64_t position) {
    return First(database_->Cached(select + Condition(set) + " ORDER BY id LIMIT 1 OFFSET ?3")
                     .Run(set.meta, set.node, position));
}

std::int64_t ObjectReader::Count(const ObjectSet& set) {
    Statement::Rows rows = database_->Cached("SELECT count(*) FROM object WHERE " + Condition(set))
                               .Run(set.meta, set.node);
    return rows.Next() ? rows.Integer(0) : 0;
}

std::vector<std::pair<Id, Id>> ObjectReader::Ids(const ObjectSet& set) {
    std::vector<std::pair<Id, Id>> ids;
    for (auto row = database_->Cached("SELECT id, meta FROM object WHERE " + Condition(set))
                        .Run(set.meta, set.node);
         row.Next();) {
        ids.emplace_back(row.Integer(0), row.Integer(1));
    }
    return ids;
}

void ObjectReader::Update(Object& object) {
    if (object.generation_ == generation_ || !object.registry_) return;
    Statement::Rows rows = database_->Cached(select + "id = ?1").Run(object.id);
    if (rows.Next()) {
        Assign(object, rows);
    } else {
        object.removed = true;
        object.generation_ = generation_;
    }
}

Values& ObjectReader::ValuesOf(Object& object) {
    if (object.values_) return *object.values_;
    ReadValues(object);
    if (const auto batch = std::exchange(object.batch_, nullptr)) {
        const Snapshot snapshot(*database_);
        for (const auto& member : batch->members) {
            const ObjectRef held = member.lock();
            if (!held || held->batch_ != batch) continue;
            if (!held->values_ && !held->removed && held->generation_ == generation_)
                ReadValues(*held);
            held->batch_.reset();
        }
    }
    return *object.values_;
}

ObjectRef ObjectReader::Register(const MetaObjectRef& meta, Id id, const std::string& identifier,
                                 const std::string& name, Id source, Id target) {
    auto object = std::make_shared<Object>();
    object->id = id;
    object->meta = meta;
    object->identifier = identifier;
    object->name = name;
    object->source = source;
    object->target = target;
    object->values_.emplace();
    object->generation_ = generation_;
    object->registry_ = registry_;
    (*registry_)[id] = object;
    return object;
}

void ObjectReader::Forget(Id id) {
    const auto entry = registry_->find(id);
    if (entry == registry_->end()) return;
    if (const ObjectRef held = entry->second.lock()) held->removed = true;
}

void ObjectReader::GiveUpAfter(Id last) {
    std::vector<ObjectRef> given;
    for (const auto& [id, record] : *registry_) {
        if (id <= last) continue;
        if (ObjectRef held = record.lock()) given.push_back(std::move(held));
    }
    for (const ObjectRef& object : given) {
        object->removed = true;
        object->registry_.reset();
        registry_->erase(object->id);
    }
}

ObjectRef ObjectReader::First(Statement::Rows rows) {
    return rows.Next() ? Take(rows) : nullptr;
}

std::vector<ObjectRef> ObjectReader::All(Statement::Rows rows) {
    std::vector<ObjectRef> objects;
    while (rows.Next()) objects.push_back(Take(rows));
    if (objects.size() > 1) {
        const auto batch = std::make_shared<Batch>();
        for (const ObjectRef& object : objects) {
            if (object->values_) continue;
            batch->members.push_back(object);
            object->batch_ = batch;
        }
    }
    return objects;
}

ObjectRef ObjectReader::Take(const Statement::Rows& row) {
    const Id id = row.Integer(0);
    if (const auto entry = registry_->find(id); entry != registry_->end()) {
        if (ObjectRef held = entry->second.lock()) {
            if (held->generation_ != generation_) Assign(*held, row);
            return held;
        }
    }
    auto object = std::make_shared<Object>();
    object->id = id;
    Assign(*object, row);
    object->registry_ = registry_;
    (*registry_)[id] = object;
    return object;
}

void ObjectReader::Assign(Object& object, const Statement::Rows& row) {
    object.meta = meta_.Find(row.Integer(1));
    if (!object.meta) {
        resync_();
        object.meta = meta_.Find(row.Integer(1));
        if (!object.meta) {
            throw Error(Number::invalidFileFormat,
                        "The repository file is damaged (object without meta object)");
        }
    }
    object.identifier = row.Text(2);
    object.name = row.Text(3);
    object.description = row.Text(4);
    object.source = row.Integer(5);
    object.target = row.Integer(6);
    object.values_.reset();
    object.removed = false;
    object.generation_ = generation_;
}

void ObjectReader::ReadValues(Object& object) {
    Values values;
    for (auto row =
             database_->Cached("SELECT property, type, value FROM property_value WHERE object = ?1")
                 .Run(object.id);
         row.Next();) {
        values.emplace(row.Integer(0), row.ReadValue(1, 2));
    }
    object.values_ = std::move(values);
}

}  // namespace repository::store
