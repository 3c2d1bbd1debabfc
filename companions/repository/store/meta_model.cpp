#include "repository/store/meta_model.h"

#include <algorithm>
#include <utility>

#include "repository/store/error.h"

namespace repository::store {

namespace {

/// The elements of one table that were known before a reading, by id. Those that the reading does
/// not take up again are gone, and wait among the removed ones in case that they come back.
template <class T>
class Known {
public:
    using Removed = std::unordered_map<Id, std::weak_ptr<T>>;

    Known(Database& database, const std::string& table, Removed& removed)
        : removed_(removed), last_(database.LastGivenId(table)) {}
    ~Known() {
        std::erase_if(removed_, [&](const auto& entry) {
            return entry.second.expired() || entry.first > last_;
        });
        for (auto& [id, element] : elements_) {
            element->removed = true;
            // The making of an element with a later id has not happened: the id may become
            // another element's.
            if (id <= last_) removed_.emplace(id, element);
        }
    }
    Known(const Known&) = delete;
    Known& operator=(const Known&) = delete;

    template <class Range>
    void Remember(const Range& elements) {
        for (const auto& element : elements) elements_.emplace(element->id, element);
    }

    std::shared_ptr<T> Take(Id id) {
        if (auto node = elements_.extract(id)) return std::move(node.mapped());
        if (const auto entry = removed_.find(id); entry != removed_.end()) {
            const std::shared_ptr<T> back = entry->second.lock();
            removed_.erase(entry);
            if (back) {
                back->removed = false;
                return back;
            }
        }
        auto made = std::make_shared<T>();
        made->id = id;
        return made;
    }

private:
    std::unordered_map<Id, std::shared_ptr<T>> elements_;
    Removed& removed_;
    Id last_;
};

/// The element with that id. The file's foreign keys promise that there is one.
template <class T>
std::shared_ptr<T> Demand(const std::unordered_map<Id, std::shared_ptr<T>>& elements, Id id) {
    const auto found = elements.find(id);
    if (found == elements.end()) {
        throw Error(Number::invalidFileFormat,
                    "The repository file is damaged (dangling reference)");
    }
    return found->second;
}

}  // namespace

MetaPropertyRef MetaObject::Standard(Role role) const {
    for (const MetaPropertyRef& property : properties) {
        if (property->role == role) return property;
    }
    return nullptr;
}

bool MetaNode::IsKindOf(const MetaNode& other) const {
    if (this == &other) return true;
    std::vector<const MetaNode*> known = {this};
    for (std::size_t next = 0; next < known.size(); ++next) {
        for (const MetaNodeRef& supertype : known[next]->supertypes) {
            if (supertype.get() == &other) return true;
            if (std::find(known.begin(), known.end(), supertype.get()) == known.end()) {
                known.push_back(supertype.get());
            }
        }
    }
    return false;
}

std::vector<MetaNode*> MetaNode::Heirs() {
    std::vector<MetaNode*> heirs = {this};
    for (std::size_t next = 0; next < heirs.size(); ++next) {
        for (MetaNode* subtype : heirs[next]->subtypes) {
            if (std::find(heirs.begin(), heirs.end(), subtype) == heirs.end()) {
                heirs.push_back(subtype);
            }
        }
    }
    return heirs;
}

MetaObjectRef MetaModel::Find(Id id) const {
    const auto found = objects_.find(id);
    return found == objects_.end() ? nullptr : found->second;
}

void MetaModel::Read(Database& database) {
    std::vector<MetaPropertyRef> properties;
    for (const auto& [id, object] : objects_) {
        properties.insert(properties.end(), object->properties.begin(), object->properties.end());
        object->properties.Clear();
        if (const auto node = std::dynamic_pointer_cast<MetaNode>(object)) {
            node->outgoing.Clear();
            node->incoming.Clear();
            node->supertypes.clear();
            node->subtypes.clear();
        }
    }
    objects_.clear();
    ReadEnumerations(database);
    ReadTypes(database);
    ReadNodes(database);
    ReadSupertypes(database);
    ReadLinks(database);
    ReadProperties(database, properties);
}

void MetaModel::ReadEnumerations(Database& database) {
    Known<MetaEnum> known(database, "meta_enum", removedEnumerations_);
    Known<MetaAtom> knownAtoms(database, "meta_atom", removedAtoms_);
    known.Remember(enumerations);
    for (const MetaEnumRef& enumeration : enumerations) knownAtoms.Remember(enumeration->atoms);
    enumerations.Clear();

    Statement atoms =
        database.Prepare("SELECT id, name FROM meta_atom WHERE enumeration = ?1 ORDER BY id");
    Statement all = database.Prepare("SELECT id, name FROM meta_enum ORDER BY id");
    for (auto row = all.Run(); row.Next();) {
        const MetaEnumRef enumeration = known.Take(row.Integer(0));
        enumeration->name = row.Text(1);
        enumeration->atoms.clear();
        for (auto atomRow = atoms.Run(enumeration->id); atomRow.Next();) {
            const auto atom = knownAtoms.Take(atomRow.Integer(0));
            atom->name = atomRow.Text(1);
            enumeration->atoms.push_back(atom);
        }
        enumerations.Add(enumeration);
    }
}

void MetaModel::ReadTypes(Database& database) {
    Known<MetaType> known(database, "meta_type", removedTypes_);
    known.Remember(types);
    types.Clear();
    std::unordered_map<Id, MetaEnumRef> enumerationById;
    for (const MetaEnumRef& enumeration : enumerations) {
        enumerationById.emplace(enumeration->id, enumeration);
    }

    Statement all = database.Prepare(
        "SELECT id, name, description, data_type, enumeration, built_in FROM meta_type ORDER BY "
        "id");
    for (auto row = all.Run(); row.Next();) {
        const MetaTypeRef type = known.Take(row.Integer(0));
        type->name = row.Text(1);
        type->description = row.Text(2);
        const auto dataType = DataTypeOf(row.Text(3));
        if (!dataType) {
            throw Error(Number::invalidFileFormat,
                        "The repository file is damaged (unknown data type " + row.Text(3) + ")");
        }
        type->dataType = *dataType;
        type->enumeration = row.IsNull(4) ? nullptr : Demand(enumerationById, row.Integer(4));
        type->builtIn = row.Integer(5) != 0;
        types.Add(type);
    }
}

void MetaModel::ReadNodes(Database& database) {
    Known<MetaNode> known(database, "meta_object", removedNodes_);
    known.Remember(nodes);
    nodes.Clear();
    Statement all = database.Prepare(
        "SELECT id, name, description, built_in, is_abstract FROM meta_object "
        "WHERE source IS NULL ORDER BY id");
    for (auto row = all.Run(); row.Next();) {
        const MetaNodeRef node = known.Take(row.Integer(0));
        node->name = row.Text(1);
        node->description = row.Text(2);
        node->builtIn = row.Integer(3) != 0;
        node->abstract = row.Integer(4) != 0;
        node->instances.reset();
        Add(node);
    }
}

void MetaModel::ReadSupertypes(Database& database) {
    Statement all = database.Prepare(
        "SELECT meta_node, supertype FROM meta_supertype ORDER BY meta_node, supertype");
    for (auto row = all.Run(); row.Next();) {
        const auto node = std::dynamic_pointer_cast<MetaNode>(Find(row.Integer(0)));
        const auto supertype = std::dynamic_pointer_cast<MetaNode>(Find(row.Integer(1)));
        if (!node || !supertype || supertype->IsKindOf(*node)) {
            throw Error(Number::invalidFileFormat, "The repository file is damaged (supertypes)");
        }
        AddSupertype(node, supertype);
    }
}

void MetaModel::ReadLinks(Database& database) {
    Known<MetaLink> known(database, "meta_object", removedLinks_);
    known.Remember(links);
    links.Clear();
    std::unordered_map<Id, MetaNodeRef> nodeById;
    for (const MetaNodeRef& node : nodes) nodeById.emplace(node->id, node);

    Statement all = database.Prepare(
        "SELECT id, name, description, link_name, source, target FROM meta_object "
        "WHERE source IS NOT NULL ORDER BY id");
    for (auto row = all.Run(); row.Next();) {
        const MetaLinkRef link = known.Take(row.Integer(0));
        link->name = row.Text(1);
        link->description = row.Text(2);
        link->linkName = row.Text(3);
        link->source = Demand(nodeById, row.Integer(4));
        link->target = Demand(nodeById, row.Integer(5));
        link->instances.reset();
        Add(link);
    }
}

void MetaModel::ReadProperties(Database& database, const std::vector<MetaPropertyRef>& before) {
    Known<MetaProperty> known(database, "meta_property", removedProperties_);
    known.Remember(before);
    std::unordered_map<Id, MetaTypeRef> typeById;
    for (const MetaTypeRef& type : types) typeById.emplace(type->id, type);

    Statement all = database.Prepare(
        "SELECT id, owner, name, description, type, role, is_dynamic, is_persistent, default_type, "
        "default_value "
        "FROM meta_property ORDER BY id");
    for (auto row = all.Run(); row.Next();) {
        const MetaPropertyRef property = known.Take(row.Integer(0));
        const MetaObjectRef owner = Demand(objects_, row.Integer(1));
        property->owner = owner;
        property->name = row.Text(2);
        property->description = row.Text(3);
        property->type = Demand(typeById, row.Integer(4));
        property->role = static_cast<Role>(row.Integer(5));
        property->dynamic = row.Integer(6) != 0;
        property->persistent = row.Integer(7) != 0;
        property->defaultValue = row.ReadValue(8, 9);
        owner->properties.Add(property);
    }
}

void MetaModel::Add(const MetaNodeRef& node) {
    nodes.Add(node);
    objects_.emplace(node->id, node);
}

void MetaModel::Add(const MetaLinkRef& link) {
    links.Add(link);
    objects_.emplace(link->id, link);
    for (MetaNode* heir : link->source->Heirs()) heir->outgoing.Add(link);
    for (MetaNode* heir : link->target->Heirs()) heir->incoming.Add(link);
}

void MetaModel::AddSupertype(const MetaNodeRef& node, const MetaNodeRef& supertype) {
    node->supertypes.push_back(supertype);
    supertype->subtypes.push_back(node.get());
    const auto inherit = [](NamedList<MetaLink>& list, const NamedList<MetaLink>& inherited) {
        for (const MetaLinkRef& link : inherited) {
            if (!list.Find(link->name)) list.Add(link);
        }
    };
    for (MetaNode* heir : node->Heirs()) {
        inherit(heir->outgoing, supertype->outgoing);
        inherit(heir->incoming, supertype->incoming);
    }
}

std::vector<MetaLinkRef> MetaModel::LinksOf(const MetaNode& node) const {
    std::vector<MetaLinkRef> found;
    for (const MetaLinkRef& link : links) {
        if (link->source.get() == &node || link->target.get() == &node) found.push_back(link);
    }
    return found;
}

MetaModel::~MetaModel() {
    for (const MetaNodeRef& node : nodes) {
        node->outgoing.Clear();
        node->incoming.Clear();
    }
}

}  // namespace repository::store
