#include <utility>

#include "repository/store/checked_value.h"
#include "repository/store/error.h"
#include "repository/store/store.h"

namespace repository::store {

namespace {

bool IsNodeOf(const Object& object, const MetaNode& meta) {
    const auto* node = dynamic_cast<const MetaNode*>(object.meta.get());
    return node != nullptr && node->IsKindOf(meta);
}

std::string TextOrNone(const Value& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : std::string();
}

}  // namespace

ObjectRef Store::Find(std::string_view identifier) {
    return reader_.Find(identifier);
}

ObjectRef Store::Get(Id id) {
    return reader_.Get(id);
}

std::int64_t Store::Count(const ObjectSet& set) {
    if (set.kind != ObjectSet::Kind::instances) return reader_.Count(set);
    const MetaObjectRef meta = meta_.Find(set.meta);
    if (!meta) return 0;
    if (!meta->instances) meta->instances = reader_.Count(set);
    return *meta->instances;
}

std::vector<ObjectRef> Store::Read(const ObjectSet& set, Id after, int limit) {
    return reader_.Read(set, after, limit);
}

ObjectRef Store::At(const ObjectSet& set, std::int64_t position) {
    return position < 0 ? nullptr : reader_.At(set, position);
}

ObjectRef Store::Find(const ObjectSet& set, std::string_view identifier) {
    return reader_.Find(set, identifier);
}

std::vector<ObjectRef> Store::FindByName(const MetaObject& meta, std::string_view name) {
    return reader_.FindByName(meta, name);
}

ObjectRef Store::MakeNode(const MetaNodeRef& meta, const std::string& identifier,
                          const std::string& name) {
    ChangeScope change(*this, "Make", name.empty() ? identifier : name);
    RequireLive(*meta);
    if (meta->builtIn) {
        throw Error(Number::invalidCall, "\"" + meta->name + "\" has no nodes of its own");
    }
    if (meta->abstract) {
        throw Error(Number::invalidCall, "\"" + meta->name + "\" is abstract");
    }
    ObjectRef node = InsertObject(meta, identifier, name, 0, 0);
    change.Commit();
    return node;
}

ObjectRef Store::MakeLink(const MetaLinkRef& meta, const ObjectRef& source, const ObjectRef& target,
                          const std::string& identifier, const std::string& name) {
    ChangeScope change(*this, "Make", name.empty() ? identifier : name);
    RequireLive(*meta);
    Update(*source);
    Update(*target);
    RequireLive(*source);
    RequireLive(*target);
    if (!IsNodeOf(*source, *meta->source) || !IsNodeOf(*target, *meta->target)) {
        throw Error(Number::typeMismatch, "The links of \"" + meta->name + "\" go from \"" +
                                              meta->source->name + "\" to \"" + meta->target->name +
                                              "\"");
    }
    ObjectRef link = InsertObject(meta, identifier, name, source->id, target->id);
    change.Commit();
    return link;
}

ObjectRef Store::InsertObject(const MetaObjectRef& meta, const std::string& identifier,
                              const std::string& name, Id source, Id target) {
    if (identifier.empty()) throw Error(Number::invalidCall, "An identifier must not be empty");
    try {
        database_
            ->Cached(
                "INSERT INTO object(meta, identifier, name, name_key, source, target) "
                "VALUES(?1, ?2, ?3, ?4, NULLIF(?5, 0), NULLIF(?6, 0))")
            .Execute(meta->id, identifier, name, FoldCase(name), source, target);
    } catch (const Error& error) {
        if (error.ErrorNumber() != Number::keyInUse) throw;
        throw Error(Number::keyInUse, "The identifier \"" + identifier + "\" is already in use");
    }
    ++version_;
    if (meta->instances) ++*meta->instances;
    return reader_.Register(meta, database_->LastInsertId(), identifier, name, source, target);
}

void Store::Update(Object& object) {
    reader_.Update(object);
}

ObjectRef Store::Source(Object& link) {
    Update(link);
    RequireLive(link);
    return link.IsLink() ? Get(link.source) : nullptr;
}

ObjectRef Store::Target(Object& link) {
    Update(link);
    RequireLive(link);
    return link.IsLink() ? Get(link.target) : nullptr;
}

void Store::Rename(const ObjectRef& object, const std::string& name) {
    ChangeScope change(*this, "Rename", object->name);
    Update(*object);
    RequireLive(*object);
    if (object->name == name) return;
    database_->Cached("UPDATE object SET name = ?2, name_key = ?3 WHERE id = ?1")
        .Execute(object->id, name, FoldCase(name));
    object->name = name;
    change.Commit();
}

void Store::Describe(const ObjectRef& object, const std::string& description) {
    ChangeScope change(*this, "Describe", object->name);
    Update(*object);
    RequireLive(*object);
    if (object->description == description) return;
    database_->Cached("UPDATE object SET description = ?2 WHERE id = ?1")
        .Execute(object->id, description);
    object->description = description;
    change.Commit();
}

void Store::Remove(const ObjectRef& object) {
    ChangeScope change(*this, "Remove", object->name);
    Update(*object);
    RequireLive(*object);
    Forget({ObjectSet::Outgoing(*object), ObjectSet::Incoming(*object)});
    database_->Cached("DELETE FROM object WHERE id = ?1").Execute(object->id);
    ++version_;
    if (object->meta->instances) --*object->meta->instances;
    reader_.Forget(object->id);
    change.Commit();
}

Value Store::GetValue(Object& object, const MetaProperty& property) {
    const auto held = property.shared_from_this();
    Update(object);
    RequireLive(object);
    switch (property.role) {
        case Role::name:
            return object.name;
        case Role::identifier:
            return object.identifier;
        case Role::description:
            return object.description;
        case Role::value:
            break;
    }
    const Values& values = reader_.ValuesOf(object);
    const auto found = values.find(property.id);
    if (found != values.end()) return found->second;
    return property.dynamic ? Value() : property.defaultValue;
}

bool Store::HasValue(Object& object, const MetaProperty& property) {
    const auto held = property.shared_from_this();
    if (property.role != Role::value) return !TextOrNone(GetValue(object, property)).empty();
    Update(object);
    RequireLive(object);
    return reader_.ValuesOf(object).contains(property.id);
}

void Store::SetValue(const ObjectRef& object, const MetaProperty& property, const Value& value) {
    const auto held = property.shared_from_this();
    if (GetValue(*object, property) == value && !IsOutdated()) return;
    ChangeScope change(*this, "Set", property.name);
    const Value before = GetValue(*object, property);
    RequireLive(property);
    if (property.owner.lock() != object->meta) {
        throw Error(Number::invalidCall, "\"" + object->name + "\" has no property \"" +
                                             property.name + "\" of another meta object");
    }
    if (value == before) return;
    const Value kept = Checked(property, value);
    switch (property.role) {
        case Role::name:
            Rename(object, TextOrNone(kept));
            return change.Commit();
        case Role::description:
            Describe(object, TextOrNone(kept));
            return change.Commit();
        case Role::identifier:
            throw Error(Number::permissionDenied, "The identifier of an object does not change");
        case Role::value:
            break;
    }
    if (IsEmpty(kept)) {
        database_->Cached("DELETE FROM property_value WHERE object = ?1 AND property = ?2")
            .Execute(object->id, property.id);
    } else {
        database_
            ->Cached(
                "INSERT INTO property_value(object, property, type, value) VALUES(?1, ?2, ?3, ?4) "
                "ON CONFLICT(object, property) DO UPDATE SET type = ?3, value = ?4")
            .Execute(object->id, property.id, static_cast<std::int64_t>(kept.index()), kept);
    }
    if (object->values_) {
        if (IsEmpty(kept)) {
            object->values_->erase(property.id);
        } else {
            (*object->values_)[property.id] = kept;
        }
    }
    change.Commit();
}

void Store::Forget(const std::vector<ObjectSet>& sets) {
    for (const ObjectSet& set : sets) {
        for (const auto& [id, metaId] : reader_.Ids(set)) {
            reader_.Forget(id);
            const MetaObjectRef meta = meta_.Find(metaId);
            // A link from a node to itself is in both of the node's sets.
            if (meta) meta->instances.reset();
        }
    }
    ++version_;
}

}  // namespace repository::store
