#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "repository/store/element.h"
#include "repository/store/meta_model.h"
#include "repository/store/value.h"

namespace repository::store {

struct Object;
struct Batch;
using ObjectRef = std::shared_ptr<Object>;
using ObjectRegistry = std::unordered_map<Id, std::weak_ptr<Object>>;
using Values = std::unordered_map<Id, Value>;

/// A node or link that somebody holds. Its fields are those of the file; its values are read when
/// the first one is asked for. There is one such record for one object.
struct Object : Element {
    Object() = default;
    ~Object();

    MetaObjectRef meta;
    std::string identifier;
    std::string description;
    /// The ids of the nodes at the ends of a link, 0 for a node.
    Id source = 0;
    Id target = 0;

    bool IsLink() const { return source != 0; }

private:
    friend class ObjectReader;
    friend class Store;

    /// The values that are set, by the meta property's id.
    std::optional<Values> values_;
    /// Which state of the file the record was read from.
    std::uint64_t generation_ = 0;
    /// The objects that were read together with this one: so will their values be.
    std::shared_ptr<Batch> batch_;
    /// Where records are found by id; none for one whose id may become another object's.
    std::shared_ptr<ObjectRegistry> registry_;
};

struct Batch {
    std::vector<std::weak_ptr<Object>> members;
};

/// A set of nodes or links: the instances of a meta object, or the links of one node.
struct ObjectSet {
    enum class Kind { instances, outgoing, incoming };

    Kind kind = Kind::instances;
    /// The meta object that the members are instances of; 0 for links of every meta link.
    Id meta = 0;
    /// The node whose links they are.
    Id node = 0;

    static ObjectSet Instances(const MetaObject& meta) { return {Kind::instances, meta.id, 0}; }
    static ObjectSet Outgoing(const Object& node, Id metaLink = 0) {
        return {Kind::outgoing, metaLink, node.id};
    }
    static ObjectSet Incoming(const Object& node, Id metaLink = 0) {
        return {Kind::incoming, metaLink, node.id};
    }
};

}  // namespace repository::store
