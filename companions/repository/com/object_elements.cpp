#include "repository/com/object_elements.h"

#include <climits>
#include <variant>

#include "repository/com/failure.h"
#include "repository/com/show.h"

namespace repository::com {

namespace {

using Owner = std::variant<store::MetaObjectRef, store::ObjectRef>;
using store::ObjectRef;
using store::ObjectSet;

/// The number of objects that are read at once. The links of all meta links are read as a whole:
/// they come sorted from several places.
int BlockSize(const ObjectSet& set) {
    return set.meta == 0 ? INT_MAX : 256;
}

class ObjectCursor final : public Cursor {
public:
    ObjectCursor(Repository& repository, const ObjectSet& set)
        : repository_(repository), set_(set) {}

    ole::Ref<IDispatch> Next() override {
        for (;;) {
            if (next_ == block_.size() && !Fetch()) return nullptr;
            // Let go of it: only what the host holds stays in memory.
            const ObjectRef object = std::move(block_[next_++]);
            repository_.Store().Update(*object);
            if (!object->removed) return Show(repository_, object);
        }
    }

    std::unique_ptr<Cursor> Clone() const override {
        auto clone = std::make_unique<ObjectCursor>(repository_, set_);
        clone->last_ = last_;
        clone->ended_ = ended_;
        clone->block_.assign(block_.begin() + static_cast<std::ptrdiff_t>(next_), block_.end());
        return clone;
    }

private:
    bool Fetch() {
        next_ = 0;
        block_.clear();
        if (ended_) return false;
        const int limit = BlockSize(set_);
        block_ = repository_.Store().Read(set_, last_, limit);
        ended_ = block_.size() < static_cast<std::size_t>(limit);
        if (block_.empty()) return false;
        last_ = block_.back()->id;
        return true;
    }

    Repository& repository_;
    ObjectSet set_;
    std::vector<ObjectRef> block_;
    std::size_t next_ = 0;
    store::Id last_ = 0;
    bool ended_ = false;
};

class ObjectElements final : public Elements {
public:
    ObjectElements(Repository& repository, Owner owner, const ObjectSet& set)
        : repository_(repository), owner_(std::move(owner)), set_(set) {}

    long Count() override {
        const std::int64_t count = Store().Count(set_);
        if (count > LONG_MAX) Throw(store::Number::overflow, "There are too many elements");
        return static_cast<long>(count);
    }

    ole::Ref<IDispatch> Find(const std::string& key) override {
        return Show(repository_, Store().Find(set_, key));
    }

    ole::Ref<IDispatch> At(long position) override {
        store::Store& store = Store();
        if (version_ != store.Version()) block_.clear();
        version_ = store.Version();
        if (position >= end_ || position < Begin_()) Fill(store, position);
        const long at = position - Begin_();
        return at >= 0 && position < end_ ? Show(repository_, block_[static_cast<std::size_t>(at)])
                                          : nullptr;
    }

    std::unique_ptr<Cursor> Begin() override {
        Store();
        return std::make_unique<ObjectCursor>(repository_, set_);
    }

private:
    store::Store& Store() {
        store::Store& store = repository_.Store();
        std::visit(
            [&](const auto& owner) {
                if constexpr (std::is_same_v<std::decay_t<decltype(owner)>, ObjectRef>) {
                    store.Update(*owner);
                }
                store::RequireLive(*owner);
            },
            owner_);
        return store;
    }

    long Begin_() const { return end_ - static_cast<long>(block_.size()); }

    /// Reads the block after the present one when the position is the next one, as in a loop over
    /// all positions; otherwise the one object.
    void Fill(store::Store& store, long position) {
        if (!block_.empty() && position == end_) {
            block_ = store.Read(set_, block_.back()->id, 256);
            end_ += static_cast<long>(block_.size());
            return;
        }
        block_.clear();
        if (ObjectRef object = store.At(set_, position)) block_.push_back(std::move(object));
        end_ = position + static_cast<long>(block_.size());
    }

    Repository& repository_;
    Owner owner_;
    ObjectSet set_;
    /// The objects at the positions up to `end_`, as long as no object comes or goes.
    std::vector<ObjectRef> block_;
    long end_ = 0;
    std::uint64_t version_ = 0;
};

}  // namespace

std::unique_ptr<Elements> MakeObjectElements(Repository& repository,
                                             const store::MetaObjectRef& owner) {
    return std::make_unique<ObjectElements>(repository, owner, ObjectSet::Instances(*owner));
}

std::unique_ptr<Elements> MakeObjectElements(Repository& repository, const store::ObjectRef& owner,
                                             const ObjectSet& set) {
    return std::make_unique<ObjectElements>(repository, owner, set);
}

}  // namespace repository::com
