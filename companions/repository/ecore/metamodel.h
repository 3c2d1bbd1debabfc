#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "repository/ecore/data_type.h"
#include "repository/store/meta_model.h"
#include "repository/xml/tree.h"

namespace repository::ecore {

struct Class;
struct Package;
struct Root;

/// Texts as keys that are looked up without being copied.
struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};
template <class T>
using TextMap = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

/// A class, enumeration or data type.
struct Classifier {
    std::string name;
    /// "//Class" or "//package/Class" in its root package.
    std::string path;
    std::string description;
    Package* package = nullptr;
    xml::Position where;
    /// Its element in the root's tree.
    std::size_t place = 0;
    /// What it is called in the repository, where that is said.
    std::string ownName;

protected:
    Classifier() = default;
    ~Classifier() = default;
};

struct Literal {
    std::string name;
    std::string text;
};

struct DataType : Classifier {
    ValueType type;
    bool isEnumeration = false;
    std::vector<Literal> literals;
    /// What an enumeration is in the repository.
    store::MetaTypeRef metaType;
};

/// An attribute or reference.
struct Feature {
    std::string name;
    /// What it is called in XML.
    std::string xmlName;
    std::string path;
    std::string description;
    xml::Position where;
    Class* owner = nullptr;
    std::size_t place = 0;
    /// What the meta property or meta link and its meta type are called, where that is said; the
    /// relation of a meta link, too.
    std::string ownName;
    std::string ownType;
    std::string ownLinkName;
    /// What is said of an attribute's meta properties.
    bool isDynamic = false;
    bool isTransient = false;
    bool hasNoDefault = false;

    bool isReference = false;
    bool many = false;
    /// Written as an element; an attribute otherwise.
    bool isElement = false;

    // An attribute's.
    ValueType type;
    const DataType* dataType = nullptr;
    std::optional<std::string> defaultText;
    bool isId = false;
    /// The text of the element of its object.
    bool isSimpleContent = false;

    // A reference's.
    /// The class at its end, null for any class.
    Class* target = nullptr;
    bool containment = false;
    store::MetaLinkRef metaLink;
};

/// A feature as one class has it: the meta property is the class's own, also of an inherited one.
struct Slot {
    Feature* feature = nullptr;
    store::MetaPropertyRef property;
};

struct Class : Classifier {
    std::string xmlName;
    bool abstract = false;
    std::vector<Class*> supertypes;
    std::deque<Feature> own;

    /// Its own features after those of its supertypes, each once.
    std::vector<Slot> slots;
    /// The places in `slots` by name and by name in XML.
    TextMap<std::size_t> byName;
    /// The attribute that identifies its objects, and the one that names them.
    const Slot* idSlot = nullptr;
    const Slot* nameSlot = nullptr;
    store::MetaNodeRef metaNode;

    const Slot* Find(std::string_view feature) const {
        const auto found = byName.find(feature);
        return found == byName.end() ? nullptr : &slots[found->second];
    }
    bool IsKindOf(const Class& other) const;
    /// To be called when `slots` is complete: fills in what follows from it.
    void IndexSlots();
};

struct Package {
    std::string name;
    /// The namespace; empty where the package does not say one.
    std::string uri;
    std::string prefix;
    /// "/" for a root package, "//package" for another one.
    std::string path;
    Root* root = nullptr;
    std::deque<Class> classes;
    std::deque<DataType> dataTypes;
    /// By name and by name in XML.
    TextMap<Class*> classByName;
};

/// Whether an attribute is the object's name or description itself.
bool IsName(const Feature& feature);
bool IsDescription(const Feature& feature);

/// A root package. Its tree's references are written as "uri#//path", wherever they lead.
struct Root {
    /// The namespace, or for want of one the file's name; different from that of every other root.
    std::string uri;
    std::string file;
    xml::Tree tree;
    std::deque<Package> packages;
    /// Its number in the repository, 0 while it is new.
    store::Id id = 0;

    /// Named parts by path.
    TextMap<Class*> classes;
    TextMap<DataType*> dataTypes;
    TextMap<Feature*> features;
};

/// The metamodels that are known: those of the repository and those that come to it.
class Metamodels {
public:
    Metamodels() = default;
    Metamodels(const Metamodels&) = delete;
    Metamodels& operator=(const Metamodels&) = delete;

    const std::deque<Root>& Roots() const { return roots_; }
    std::deque<Root>& Roots() { return roots_; }

    Root& Add() { return roots_.emplace_back(); }

    /// The root with that namespace, or null.
    Root* FindRoot(std::string_view uri);
    /// The package with that namespace, or of that name and without a namespace; or null.
    Package* FindPackage(std::string_view uri) const;
    /// The class of that name in a namespace; where the element has none, in the packages without.
    Class* FindClass(std::string_view uri, std::string_view name) const;

    /// Makes the package found by its namespace.
    void Register(Package& package);

private:
    std::deque<Root> roots_;
    TextMap<Package*> packages_;
    std::vector<Package*> withoutNamespace_;
};

}  // namespace repository::ecore
