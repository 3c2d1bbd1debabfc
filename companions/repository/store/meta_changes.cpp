#include <utility>

#include "repository/store/checked_value.h"
#include "repository/store/error.h"
#include "repository/store/store.h"

namespace repository::store {

namespace {

void RequireName(const std::string& name) {
    if (name.empty()) throw Error(Number::invalidCall, "A name must not be empty");
}

template <class T>
void RequireFree(const NamedList<T>& list, const std::string& name, const T* itself = nullptr) {
    RequireName(name);
    const auto found = list.Find(name);
    if (found && found.get() != itself) {
        throw Error(Number::keyInUse, "The name \"" + name + "\" is already in use");
    }
}

void RequireOwn(const MetaObject& object) {
    RequireLive(object);
    if (object.builtIn) {
        throw Error(Number::permissionDenied,
                    "\"" + object.name + "\" belongs to every repository");
    }
}

MetaObjectRef OwnerOf(const MetaProperty& property) {
    RequireLive(property);
    return property.owner.lock();
}

}  // namespace

MetaNodeRef Store::MakeMetaNode(const std::string& name, const std::string& description) {
    ChangeScope change(*this, "Make", name);
    RequireFree(meta_.nodes, name);
    database_->Cached("INSERT INTO meta_object(name, name_key, description) VALUES(?1, ?2, ?3)")
        .Execute(name, FoldCase(name), description);
    auto node = std::make_shared<MetaNode>();
    node->id = database_->LastInsertId();
    node->name = name;
    node->description = description;
    node->instances = 0;
    meta_.Add(node);
    InsertStandardProperties(node);
    change.Commit();
    return node;
}

MetaLinkRef Store::MakeMetaLink(const std::string& name, const std::string& linkName,
                                const MetaNodeRef& source, const MetaNodeRef& target,
                                const std::string& description) {
    ChangeScope change(*this, "Make", name);
    RequireFree(meta_.links, name);
    RequireOwn(*source);
    RequireOwn(*target);
    database_
        ->Cached(
            "INSERT INTO meta_object(name, name_key, description, link_name, source, target) "
            "VALUES(?1, ?2, ?3, ?4, ?5, ?6)")
        .Execute(name, FoldCase(name), description, linkName, source->id, target->id);
    auto link = std::make_shared<MetaLink>();
    link->id = database_->LastInsertId();
    link->name = name;
    link->linkName = linkName;
    link->description = description;
    link->source = source;
    link->target = target;
    link->instances = 0;
    meta_.Add(link);
    InsertStandardProperties(link);
    change.Commit();
    return link;
}

MetaEnumRef Store::MakeEnum(const std::string& name, const std::vector<std::string>& atoms) {
    ChangeScope change(*this, "Make", name);
    RequireFree(meta_.enumerations, name);
    database_->Cached("INSERT INTO meta_enum(name, name_key) VALUES(?1, ?2)")
        .Execute(name, FoldCase(name));
    auto enumeration = std::make_shared<MetaEnum>();
    enumeration->id = database_->LastInsertId();
    enumeration->name = name;
    for (const std::string& atomName : atoms) {
        RequireName(atomName);
        database_->Cached("INSERT INTO meta_atom(enumeration, name) VALUES(?1, ?2)")
            .Execute(enumeration->id, atomName);
        auto atom = std::make_shared<MetaAtom>();
        atom->id = database_->LastInsertId();
        atom->name = atomName;
        enumeration->atoms.push_back(std::move(atom));
    }
    meta_.enumerations.Add(enumeration);
    change.Commit();
    return enumeration;
}

MetaTypeRef Store::MakeMetaType(const std::string& name, DataType dataType,
                                const std::string& description, const MetaEnumRef& enumeration) {
    ChangeScope change(*this, "Make", name);
    RequireFree(meta_.types, name);
    if (enumeration) {
        RequireLive(*enumeration);
        if (dataType != DataType::string) {
            throw Error(Number::invalidPropertyValue, "The values of an enumeration are texts");
        }
    }
    Statement& insert = database_->Cached(
        "INSERT INTO meta_type(name, name_key, description, data_type, enumeration, built_in) "
        "VALUES(?1, ?2, ?3, ?4, NULLIF(?5, 0), 0)");
    insert.Execute(name, FoldCase(name), description, WordOf(dataType),
                   enumeration ? enumeration->id : 0);
    auto type = std::make_shared<MetaType>();
    type->id = database_->LastInsertId();
    type->name = name;
    type->description = description;
    type->dataType = dataType;
    type->enumeration = enumeration;
    meta_.types.Add(type);
    change.Commit();
    return type;
}

MetaPropertyRef Store::MakeProperty(const MetaObjectRef& owner, const std::string& name,
                                    const MetaTypeRef& type, const std::string& description) {
    ChangeScope change(*this, "Make", name);
    RequireOwn(*owner);
    RequireLive(*type);
    RequireFree(owner->properties, name);
    MetaPropertyRef property = InsertProperty(owner, name, type, description, Role::value);
    change.Commit();
    return property;
}

MetaPropertyRef Store::InsertProperty(const MetaObjectRef& owner, const std::string& name,
                                      const MetaTypeRef& type, const std::string& description,
                                      Role role) {
    database_
        ->Cached(
            "INSERT INTO meta_property(owner, name, name_key, description, type, role) "
            "VALUES(?1, ?2, ?3, ?4, ?5, ?6)")
        .Execute(owner->id, name, FoldCase(name), description, type->id, static_cast<int>(role));
    auto property = std::make_shared<MetaProperty>();
    property->id = database_->LastInsertId();
    property->owner = owner;
    property->name = name;
    property->description = description;
    property->type = type;
    property->role = role;
    owner->properties.Add(property);
    return property;
}

void Store::InsertStandardProperties(const MetaObjectRef& owner) {
    const MetaTypeRef string = meta_.types.Find(meta_type::string);
    const MetaTypeRef note = meta_.types.Find(meta_type::note);
    InsertProperty(owner, "Name", string, "", Role::name);
    InsertProperty(owner, "Identifier", string, "", Role::identifier);
    InsertProperty(owner, "Description", note, "", Role::description);
}

void Store::SetAbstract(const MetaNodeRef& node, bool abstract) {
    ChangeScope change(*this, "Change", node->name);
    RequireOwn(*node);
    database_->Cached("UPDATE meta_object SET is_abstract = ?2 WHERE id = ?1")
        .Execute(node->id, abstract);
    node->abstract = abstract;
    change.Commit();
}

void Store::AddSupertype(const MetaNodeRef& node, const MetaNodeRef& supertype) {
    ChangeScope change(*this, "Change", node->name);
    RequireOwn(*node);
    RequireOwn(*supertype);
    if (supertype->IsKindOf(*node)) {
        throw Error(Number::invalidCall, "\"" + supertype->name + "\" is a kind of \"" +
                                             node->name + "\", it cannot be its supertype");
    }
    for (const MetaNodeRef& known : node->supertypes) {
        if (known == supertype) return;
    }
    database_->Cached("INSERT INTO meta_supertype(meta_node, supertype) VALUES(?1, ?2)")
        .Execute(node->id, supertype->id);
    meta_.AddSupertype(node, supertype);
    change.Commit();
}

void Store::Rename(const MetaObjectRef& object, const std::string& name) {
    ChangeScope change(*this, "Rename", object->name);
    RequireOwn(*object);
    const auto node = std::dynamic_pointer_cast<MetaNode>(object);
    const auto link = std::dynamic_pointer_cast<MetaLink>(object);
    if (node) {
        RequireFree(meta_.nodes, name, node.get());
    } else {
        RequireFree(meta_.links, name, link.get());
    }
    history_.Divide();
    database_->Cached("UPDATE meta_object SET name = ?2, name_key = ?3 WHERE id = ?1")
        .Execute(object->id, name, FoldCase(name));
    const std::string before = std::exchange(object->name, name);
    if (node) {
        meta_.nodes.Renamed(node, before);
    } else {
        meta_.links.Renamed(link, before);
        for (MetaNode* heir : link->source->Heirs()) heir->outgoing.Renamed(link, before);
        for (MetaNode* heir : link->target->Heirs()) heir->incoming.Renamed(link, before);
    }
    change.Commit();
}

void Store::Describe(const MetaObjectRef& object, const std::string& description) {
    ChangeScope change(*this, "Describe", object->name);
    RequireOwn(*object);
    database_->Cached("UPDATE meta_object SET description = ?2 WHERE id = ?1")
        .Execute(object->id, description);
    object->description = description;
    change.Commit();
}

void Store::Remove(const MetaObjectRef& object) {
    ChangeScope change(*this, "Remove", object->name);
    RequireOwn(*object);
    std::vector<ObjectSet> sets = {ObjectSet::Instances(*object)};
    if (const auto node = std::dynamic_pointer_cast<MetaNode>(object)) {
        for (const MetaLinkRef& link : meta_.LinksOf(*node)) {
            sets.push_back(ObjectSet::Instances(*link));
        }
    }
    Forget(sets);
    database_->Cached("DELETE FROM meta_object WHERE id = ?1").Execute(object->id);
    Resync();
    change.Commit();
}

void Store::Remove(const MetaTypeRef& type) {
    ChangeScope change(*this, "Remove", type->name);
    RequireLive(*type);
    Statement& users = database_->Cached("SELECT 1 FROM meta_property WHERE type = ?1 LIMIT 1");
    if (type->builtIn || users.Run(type->id).Next()) {
        throw Error(Number::permissionDenied, "The meta type \"" + type->name + "\" is in use");
    }
    database_->Cached("DELETE FROM meta_type WHERE id = ?1").Execute(type->id);
    if (type->enumeration) {
        database_
            ->Cached(
                "DELETE FROM meta_enum WHERE id = ?1 "
                "AND NOT EXISTS(SELECT 1 FROM meta_type WHERE enumeration = ?1)")
            .Execute(type->enumeration->id);
    }
    Resync();
    change.Commit();
}

void Store::Rename(const MetaPropertyRef& property, const std::string& name) {
    ChangeScope change(*this, "Rename", property->name);
    const MetaObjectRef owner = OwnerOf(*property);
    RequireFree(owner->properties, name, property.get());
    history_.Divide();
    database_->Cached("UPDATE meta_property SET name = ?2, name_key = ?3 WHERE id = ?1")
        .Execute(property->id, name, FoldCase(name));
    const std::string before = std::exchange(property->name, name);
    owner->properties.Renamed(property, before);
    change.Commit();
}

void Store::Describe(const MetaPropertyRef& property, const std::string& description) {
    ChangeScope change(*this, "Describe", property->name);
    RequireLive(*property);
    database_->Cached("UPDATE meta_property SET description = ?2 WHERE id = ?1")
        .Execute(property->id, description);
    property->description = description;
    change.Commit();
}

void Store::Retype(const MetaPropertyRef& property, const MetaTypeRef& type) {
    ChangeScope change(*this, "Change", property->name);
    RequireLive(*property);
    RequireLive(*type);
    if (property->role != Role::value && type->dataType != DataType::string) {
        throw Error(Number::invalidPropertyValue,
                    "The values of \"" + property->name + "\" are texts in every repository");
    }
    database_->Cached("UPDATE meta_property SET type = ?2 WHERE id = ?1")
        .Execute(property->id, type->id);
    property->type = type;
    change.Commit();
}

void Store::SetDynamic(const MetaPropertyRef& property, bool dynamic) {
    ChangeScope change(*this, "Change", property->name);
    RequireLive(*property);
    if (property->role != Role::value && dynamic) {
        throw Error(Number::permissionDenied,
                    "Every object has the property \"" + property->name + "\"");
    }
    database_->Cached("UPDATE meta_property SET is_dynamic = ?2 WHERE id = ?1")
        .Execute(property->id, dynamic);
    property->dynamic = dynamic;
    change.Commit();
}

void Store::SetPersistent(const MetaPropertyRef& property, bool persistent) {
    ChangeScope change(*this, "Change", property->name);
    RequireLive(*property);
    database_->Cached("UPDATE meta_property SET is_persistent = ?2 WHERE id = ?1")
        .Execute(property->id, persistent);
    property->persistent = persistent;
    change.Commit();
}

void Store::SetDefault(const MetaPropertyRef& property, const Value& value) {
    ChangeScope change(*this, "Change", property->name);
    RequireLive(*property);
    const Value kept = Checked(*property, value);
    if (property->role != Role::value) {
        throw Error(Number::permissionDenied,
                    "Every object has the property \"" + property->name + "\"");
    }
    database_
        ->Cached("UPDATE meta_property SET default_type = ?2, default_value = ?3 WHERE id = ?1")
        .Execute(property->id, static_cast<std::int64_t>(kept.index()), kept);
    property->defaultValue = kept;
    change.Commit();
}

void Store::Remove(const MetaPropertyRef& property) {
    ChangeScope change(*this, "Remove", property->name);
    RequireLive(*property);
    if (property->role != Role::value) {
        throw Error(Number::permissionDenied,
                    "Every object has the property \"" + property->name + "\"");
    }
    database_->Cached("DELETE FROM meta_property WHERE id = ?1").Execute(property->id);
    Resync();
    change.Commit();
}

}  // namespace repository::store
