#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "repository/store/database.h"
#include "repository/store/meta_model.h"
#include "repository/store/object.h"

namespace repository::store {

/// Reads nodes and links, and hands out one record for each as long as somebody holds it.
class ObjectReader {
public:
    /// `resync` is called when a row names a meta object that the meta model does not know: another
    /// program has made it.
    ObjectReader(MetaModel& meta, std::function<void()> resync);

    void Use(Database& database) { database_ = &database; }

    ObjectRef Get(Id id);
    ObjectRef Find(std::string_view identifier);
    ObjectRef Find(const ObjectSet& set, std::string_view identifier);
    std::vector<ObjectRef> FindByName(const MetaObject& meta, std::string_view name);
    std::vector<ObjectRef> Read(const ObjectSet& set, Id after, int limit);
    ObjectRef At(const ObjectSet& set, std::int64_t position);
    std::int64_t Count(const ObjectSet& set);
    /// The ids of a set's members, whether held or not, each with its meta object's.
    std::vector<std::pair<Id, Id>> Ids(const ObjectSet& set);

    /// Reads a held record again where it is older than the last `Invalidate`; it may be removed
    /// then, or there again.
    void Update(Object& object);

    /// The values of an object, read together with those of the objects that came with it.
    Values& ValuesOf(Object& object);

    /// The held record of an object that was just inserted.
    ObjectRef Register(const MetaObjectRef& meta, Id id, const std::string& identifier,
                       const std::string& name, Id source, Id target);

    /// Marks the held record of an object that was removed. It is used again should the object
    /// come back.
    void Forget(Id id);

    /// Gives up the held records of the objects after an id for good: their making has not
    /// happened.
    void GiveUpAfter(Id last);

    /// Makes all held records out of date.
    void Invalidate() { ++generation_; }

private:
    ObjectRef First(Statement::Rows rows);
    std::vector<ObjectRef> All(Statement::Rows rows);
    ObjectRef Take(const Statement::Rows& row);
    void Assign(Object& object, const Statement::Rows& row);
    void ReadValues(Object& object);

    MetaModel& meta_;
    std::function<void()> resync_;
    Database* database_ = nullptr;
    std::shared_ptr<ObjectRegistry> registry_ = std::make_shared<ObjectRegistry>();
    std::uint64_t generation_ = 1;
};

}  // namespace repository::store
