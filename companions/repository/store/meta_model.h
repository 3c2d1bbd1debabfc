#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "repository/store/element.h"
#include "repository/store/value.h"

namespace repository::store {

struct MetaObject;
struct MetaLink;

/// One value of an enumeration.
struct MetaAtom : Element {};

/// An enumeration: the names that a property's value can be.
struct MetaEnum : Element {
    std::vector<std::shared_ptr<MetaAtom>> atoms;
};

/// A type of property values: the basic type, and what an editor is to make of it.
struct MetaType : Element {
    std::string description;
    DataType dataType = DataType::string;
    std::shared_ptr<MetaEnum> enumeration;
    bool builtIn = false;
};

/// Where a property's values are: in the object's own fields, or with its other values. The numbers
/// stand in the file.
enum class Role { value = 0, name = 1, identifier = 2, description = 3 };

/// A property that the instances of a meta node or meta link have.
struct MetaProperty : Element, std::enable_shared_from_this<MetaProperty> {
    std::weak_ptr<MetaObject> owner;
    std::string description;
    std::shared_ptr<MetaType> type;
    Role role = Role::value;
    bool dynamic = false;
    bool persistent = true;
    /// What an object answers that has no value of its own.
    Value defaultValue;
};

/// What meta nodes and meta links have in common.
struct MetaObject : Element {
    virtual ~MetaObject() = default;
    std::string description;
    bool builtIn = false;
    NamedList<MetaProperty> properties;

    /// The property of every object for its name, identifier or description, however it is called.
    std::shared_ptr<MetaProperty> Standard(Role role) const;

    /// The number of instances, once it was asked for.
    mutable std::optional<std::int64_t> instances;
};

/// A type of nodes. Its nodes are at the ends of its own meta links and of those of its supertypes,
/// directly or not; both are in the lists. Properties are not inherited.
struct MetaNode : MetaObject {
    /// Has no nodes of its own.
    bool abstract = false;
    NamedList<MetaLink> outgoing;
    NamedList<MetaLink> incoming;
    std::vector<std::shared_ptr<MetaNode>> supertypes;
    std::vector<MetaNode*> subtypes;

    /// Whether it is that meta node or has it among its supertypes, directly or not.
    bool IsKindOf(const MetaNode& other) const;
    /// Itself and all that have it among their supertypes, directly or not.
    std::vector<MetaNode*> Heirs();
};

/// A type of links from the nodes of one meta node to those of another. `linkName` is what the
/// relation is called, where `name` has to be unique.
struct MetaLink : MetaObject {
    std::string linkName;
    std::shared_ptr<MetaNode> source;
    std::shared_ptr<MetaNode> target;
};

using MetaEnumRef = std::shared_ptr<MetaEnum>;
using MetaTypeRef = std::shared_ptr<MetaType>;
using MetaPropertyRef = std::shared_ptr<MetaProperty>;
using MetaObjectRef = std::shared_ptr<MetaObject>;
using MetaNodeRef = std::shared_ptr<MetaNode>;
using MetaLinkRef = std::shared_ptr<MetaLink>;

/// The names of the meta types that every repository has.
namespace meta_type {
constexpr const char* string = "String";
constexpr const char* note = "NOTE";
constexpr const char* variant = "Variant";
}  // namespace meta_type

/// The names of the meta nodes that every repository has.
namespace built_in {
constexpr const char* metaNode = "MetaNode";
constexpr const char* metaLink = "MetaLink";
constexpr const char* metaProperty = "MetaProperty";
}  // namespace built_in

/// The whole meta model of a repository, read when it is opened.
class MetaModel {
public:
    MetaModel() = default;
    ~MetaModel();
    MetaModel(const MetaModel&) = delete;
    MetaModel& operator=(const MetaModel&) = delete;

    NamedList<MetaNode> nodes;
    NamedList<MetaLink> links;
    NamedList<MetaType> types;
    NamedList<MetaEnum> enumerations;

    /// The meta object with that id, or none.
    MetaObjectRef Find(Id id) const;

    /// Reads the meta model from the file. What was read before and is still there stays the same
    /// element, with its new content; what is gone is marked as removed.
    void Read(Database& database);

    /// Adds a meta object, with the lists of the meta nodes at its ends.
    void Add(const MetaNodeRef& node);
    void Add(const MetaLinkRef& link);

    /// Makes one meta node a supertype of another, which inherits its meta links.
    void AddSupertype(const MetaNodeRef& node, const MetaNodeRef& supertype);

    /// The meta links that have the meta node itself at an end.
    std::vector<MetaLinkRef> LinksOf(const MetaNode& node) const;

private:
    /// Elements that were removed, as long as somebody holds them: they may come back.
    template <class T>
    using Removed = std::unordered_map<Id, std::weak_ptr<T>>;

    void ReadEnumerations(Database& database);
    void ReadTypes(Database& database);
    void ReadNodes(Database& database);
    void ReadSupertypes(Database& database);
    void ReadLinks(Database& database);
    void ReadProperties(Database& database, const std::vector<MetaPropertyRef>& before);

    std::unordered_map<Id, MetaObjectRef> objects_;
    Removed<MetaEnum> removedEnumerations_;
    Removed<MetaAtom> removedAtoms_;
    Removed<MetaType> removedTypes_;
    Removed<MetaNode> removedNodes_;
    Removed<MetaLink> removedLinks_;
    Removed<MetaProperty> removedProperties_;
};

}  // namespace repository::store
