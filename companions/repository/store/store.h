#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "repository/store/database.h"
#include "repository/store/meta_model.h"
#include "repository/store/object.h"
#include "repository/store/object_reader.h"

namespace repository::store {

/// A repository in a database file or in memory. The meta model is in memory; nodes and links are
/// read when they are asked for and shared while somebody holds them. Every changing member is a
/// transaction of its own, on the disk when it returns, unless it is called inside `Change`. A
/// member that throws has changed nothing.
///
/// Another program may change the file: what is held here shows that after `Refresh`, or when
/// something is changed here next.
class Store {
public:
    /// Milliseconds to wait for another program that is using the file.
    static constexpr int defaultBusyTimeout = 2000;

    /// Makes a new repository. A file that has content is left alone (58).
    static std::unique_ptr<Store> Create(const std::string& path);
    /// Opens a repository file. Errors: 53, 70, 75, 76, and 321 for what is no repository, damaged,
    /// or of a later version.
    static std::unique_ptr<Store> Open(const std::string& path);

    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /// The file's absolute path, or ":memory:".
    const std::string& Path() const { return path_; }

    /// Writes the whole repository to another file and goes on working there. A repository file
    /// that is there is replaced, another kind of file is not (75).
    void SaveAs(const std::string& path);

    /// Forgets what was read, so that everything shows the present content of the file.
    void Refresh();

    void SetBusyTimeout(int milliseconds);

    /// Runs `work` as one change of that name: it happens completely or, when `work` throws, not at
    /// all. `work` may be as large as an import.
    template <class Work>
    void Change(std::string_view name, Work&& work) {
        ChangeScope change(*this, name);
        work();
        change.Commit();
    }
    template <class Work>
    void Change(Work&& work) {
        Change(std::string_view(), std::forward<Work>(work));
    }

    // The meta model. Names are unique without case (457), and not empty (5).

    const MetaModel& Meta() const { return meta_; }

    MetaNodeRef MakeMetaNode(const std::string& name, const std::string& description);
    MetaLinkRef MakeMetaLink(const std::string& name, const std::string& linkName,
                             const MetaNodeRef& source, const MetaNodeRef& target,
                             const std::string& description);
    MetaEnumRef MakeEnum(const std::string& name, const std::vector<std::string>& atoms);
    MetaTypeRef MakeMetaType(const std::string& name, DataType dataType,
                             const std::string& description, const MetaEnumRef& enumeration);
    MetaPropertyRef MakeProperty(const MetaObjectRef& owner, const std::string& name,
                                 const MetaTypeRef& type, const std::string& description);

    void SetAbstract(const MetaNodeRef& node, bool abstract);
    /// Makes one meta node a supertype of another; no meta node becomes its own (5).
    void AddSupertype(const MetaNodeRef& node, const MetaNodeRef& supertype);

    void Rename(const MetaObjectRef& object, const std::string& name);
    void Describe(const MetaObjectRef& object, const std::string& description);
    /// Removes a meta object with its instances, and a meta node with its meta links. The built-in
    /// ones stay (70).
    void Remove(const MetaObjectRef& object);

    /// Removes an enumerated or own meta type that no property uses (70).
    void Remove(const MetaTypeRef& type);

    void Rename(const MetaPropertyRef& property, const std::string& name);
    void Describe(const MetaPropertyRef& property, const std::string& description);
    /// Gives a property another type. The values stay as they were written.
    void Retype(const MetaPropertyRef& property, const MetaTypeRef& type);
    void SetDynamic(const MetaPropertyRef& property, bool dynamic);
    void SetPersistent(const MetaPropertyRef& property, bool persistent);
    /// What objects answer that have no value; it has to fit the property's type (13, 380).
    void SetDefault(const MetaPropertyRef& property, const Value& value);
    /// Removes a property with its values. Name, identifier and description stay (70).
    void Remove(const MetaPropertyRef& property);

    // Nodes and links.

    /// The object with that identifier, or none.
    ObjectRef Find(std::string_view identifier);
    /// The object with that id, or none.
    ObjectRef Get(Id id);

    std::int64_t Count(const ObjectSet& set);
    /// Up to `limit` members whose ids come after `after`, in the order of their making.
    std::vector<ObjectRef> Read(const ObjectSet& set, Id after, int limit);
    /// The member at a position that counts from 0, or none.
    ObjectRef At(const ObjectSet& set, std::int64_t position);
    /// The member with that identifier, or none.
    ObjectRef Find(const ObjectSet& set, std::string_view identifier);
    /// The nodes or links of a meta object that have that name, without case.
    std::vector<ObjectRef> FindByName(const MetaObject& meta, std::string_view name);

    /// Identifiers are unique among nodes and links (457), and not empty (5).
    ObjectRef MakeNode(const MetaNodeRef& meta, const std::string& identifier,
                       const std::string& name);
    /// The ends have to be nodes of the meta link's ends or of their subtypes (13).
    ObjectRef MakeLink(const MetaLinkRef& meta, const ObjectRef& source, const ObjectRef& target,
                       const std::string& identifier, const std::string& name);

    /// Makes sure that a held record is up to date, or marked as removed.
    void Update(Object& object);
    ObjectRef Source(Object& link);
    ObjectRef Target(Object& link);

    void Rename(const ObjectRef& object, const std::string& name);
    void Describe(const ObjectRef& object, const std::string& description);
    /// Removes a node with its links, or a link.
    void Remove(const ObjectRef& object);

    /// The value that is set, else the property's default. The property has to be one of the
    /// object's meta object.
    Value GetValue(Object& object, const MetaProperty& property);
    /// Whether an object has a value of its own.
    bool HasValue(Object& object, const MetaProperty& property);
    /// Sets a value, which has to fit the property's type (13, 380); Empty unsets it.
    void SetValue(const ObjectRef& object, const MetaProperty& property, const Value& value);

    /// Changes each time that nodes or links come or go: positions kept from before are void then.
    std::uint64_t Version() const { return version_; }

    // Metamodels that were imported.

    /// The root package of a metamodel, as Ecore.
    struct Metamodel {
        Id id = 0;
        /// The namespace of the package, or what stands for one.
        std::string uri;
        /// The name of the file that it came from.
        std::string file;
        std::string ecore;
    };
    /// An element of the repository that stands for a part of a metamodel.
    struct MetamodelPart {
        /// "//Class", "//package/Class" or "//Class/feature".
        std::string path;
        /// What the element was called when it was made.
        std::string name;
        /// One of these is set.
        MetaObjectRef object;
        MetaPropertyRef property;
        MetaTypeRef type;
    };

    std::vector<Metamodel> Metamodels();
    std::vector<MetamodelPart> Parts(Id metamodel);
    /// Adds a metamodel; the namespace is one that none has yet (457).
    Id AddMetamodel(const Metamodel& metamodel);
    void AddPart(Id metamodel, const MetamodelPart& part);

private:
    friend class Loader;

    /// One change, or a part of a larger one; taken back unless it is committed.
    class ChangeScope {
    public:
        explicit ChangeScope(Store& store, std::string_view name = {});
        ~ChangeScope();
        ChangeScope(const ChangeScope&) = delete;
        ChangeScope& operator=(const ChangeScope&) = delete;

        void Commit();

    private:
        Store& store_;
        std::optional<Transaction> transaction_;
        std::int64_t changesBefore_;
    };

    Store();

    /// Goes on with another database.
    void Use(std::unique_ptr<Database> database, std::string path);
    /// Reads the meta model, and makes all held records out of date.
    void Resync();

    MetaPropertyRef InsertProperty(const MetaObjectRef& owner, const std::string& name,
                                   const MetaTypeRef& type, const std::string& description,
                                   Role role);
    void InsertStandardProperties(const MetaObjectRef& owner);
    ObjectRef InsertObject(const MetaObjectRef& meta, const std::string& identifier,
                           const std::string& name, Id source, Id target);
    /// Marks nodes or links that are about to go, with the links of the nodes.
    void Forget(const std::vector<ObjectSet>& sets);

    std::string path_;
    std::unique_ptr<Database> database_;
    MetaModel meta_;
    ObjectReader reader_;
    int depth_ = 0;
    std::int64_t dataVersion_ = 0;
    std::uint64_t version_ = 0;
    int busyTimeout_ = defaultBusyTimeout;
};

}  // namespace repository::store
