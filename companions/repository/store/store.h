#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "repository/store/database.h"
#include "repository/store/history.h"
#include "repository/store/meta_model.h"
#include "repository/store/object.h"
#include "repository/store/object_reader.h"

namespace repository::store {

/// A repository in a database file or in memory. The meta model is in memory; nodes and links are
/// read when they are asked for and shared while somebody holds them. Every changing member is a
/// transaction of its own, on the disk when it returns, unless it is called inside `Change`. A
/// member that throws has changed nothing. Each change can be undone, within the bounds of
/// `History`.
///
/// Another program may change the file: what is held here shows that after `Refresh`, or when
/// something is changed here next.
class Store {
public:
    /// Milliseconds to wait for another program that is using the file.
    static constexpr int defaultBusyTimeout = 2000;

    /// Makes a new repository. A repository file that is there is left alone (58), and so is a file
    /// with other content (321).
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

    /// Runs `work`, which only reads, on one state of the file, whatever other programs do.
    template <class Work>
    void Look(Work&& work) {
        const Snapshot snapshot(*database_);
        if (depth_ == 0 && IsOutdated()) Resync();
        work();
    }

    void SetBusyTimeout(int milliseconds);

    /// Runs `work` as one change of that name: it happens completely or, when `work` throws, not at
    /// all. It is undone as a whole. Without a name it has that of its first part. `work` may be as
    /// large as an import.
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

    /// Begins a change that `EndChange` completes or `CancelChange` takes back, and that may
    /// contain others. Only when the outermost one has ended is it on the disk, and until then
    /// other programs cannot change the file. When `EndChange` fails the change is still open.
    /// A change that is open when the file cannot be written (57, 61) may be lost as a whole; then
    /// everything fails (57) until it is cancelled. Errors: 5 where none was begun, or not here but
    /// around the change that is now at work.
    void BeginChange(std::string_view name);
    void EndChange();
    void CancelChange();
    bool IsChanging() const { return depth_ > 0; }

    /// Takes the last change of the file back, or makes the last one again that was taken back.
    /// Held objects show it at once, and those that come back are the same ones. Errors: 5 where
    /// there is none, and in the middle of a change; 70 where another program has changed the same
    /// without a history.
    void Undo();
    void Redo();
    /// The names of the changes that these two would act on; empty for none.
    std::string UndoName() { return history_.UndoName(); }
    std::string RedoName() { return history_.RedoName(); }

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

    /// Removes an enumerated or own meta type that no property uses (70), with the enumeration that
    /// no other one has.
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

    /// The ids of the nodes and links in whose names, descriptions and other texts all words of
    /// `text` occur, best first; the last word may be the beginning of one. Case and accents do not
    /// count.
    std::vector<Id> Search(std::string_view text);

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

    // The property has to be one of the object's meta object. These hold it while they are at work:
    // they may find out that another program has removed it.

    /// The value that is set, else the property's default.
    Value GetValue(Object& object, const MetaProperty& property);
    /// Whether an object has a value of its own.
    bool HasValue(Object& object, const MetaProperty& property);
    /// Sets a value, which has to fit the property's type (13, 380); Empty unsets it.
    void SetValue(const ObjectRef& object, const MetaProperty& property, const Value& value);

    /// Changes each time that nodes or links come or go: positions kept from before are void then.
    std::uint64_t Version() const { return version_; }

    /// The SQL that was run here so far, for whoever wants to look at its query plans.
    std::vector<std::string> Statements() const { return database_->CachedStatements(); }

    /// Changes with everything that is changed here, and when something is read anew.
    std::uint64_t Edition() const;

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
        /// The change's name is `verb`, or with `what` such as: Make "House".
        explicit ChangeScope(Store& store, std::string_view verb = {}, std::string_view what = {});
        ~ChangeScope();
        ChangeScope(const ChangeScope&) = delete;
        ChangeScope& operator=(const ChangeScope&) = delete;

        /// When this throws, the change is still open.
        void Commit();

        /// Goes without effect, with the larger change around it.
        void Abandon();

        int Depth() const { return depth_; }

    private:
        void Name(std::string_view verb, std::string_view what);

        Store& store_;
        const int depth_;
        std::optional<Transaction> transaction_;
        std::int64_t changesBefore_ = 0;
        bool givesName_ = false;
    };

    Store();

    /// Whether a failure to write the file has taken back the open changes, all at once.
    bool IsLost() const { return depth_ > 0 && !database_->InTransaction(); }
    void RequireNotLost() const;
    /// Throws in the middle of a change; `action` is what cannot be done then.
    void RequireNoChange(const char* action) const;
    /// The innermost change that was begun and has not ended.
    ChangeScope& Begun();
    /// Abandons the begun changes inside the one of that depth.
    void AbandonInside(int depth);
    /// Writes the history and the full-text index, and commits.
    void Finish(Transaction& transaction);
    void Travel(void (History::*direction)());

    /// Whether another program has changed the file since it was read.
    bool IsOutdated() { return database_->DataVersion() != dataVersion_; }

    /// Goes on with another database.
    void Use(std::unique_ptr<Database> database, std::string path);
    /// Reads the meta model, and makes all held records out of date.
    void Resync();
    /// The same, later if it is not possible now.
    void ShowFile() noexcept;

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
    History history_;
    int depth_ = 0;
    /// What the outermost change that is open is called.
    std::string changeName_;
    std::vector<std::unique_ptr<ChangeScope>> begun_;
    std::int64_t dataVersion_ = 0;
    std::uint64_t version_ = 0;
    int busyTimeout_ = defaultBusyTimeout;
};

}  // namespace repository::store
