#include "repository/com/property_elements.h"

#include <vector>

#include "repository/com/failure.h"
#include "repository/com/show.h"

namespace repository::com {

namespace {

using Properties = std::vector<store::MetaPropertyRef>;

class PropertyCursor final : public Cursor {
public:
    PropertyCursor(Repository& repository, store::ObjectRef object, Properties properties)
        : repository_(repository), object_(std::move(object)), properties_(std::move(properties)) {}

    ole::Ref<IDispatch> Next() override {
        while (next_ < properties_.size()) {
            const store::MetaPropertyRef& property = properties_[next_++];
            if (!property->removed) return Show(repository_, HeldValue{object_, property});
        }
        return nullptr;
    }

    std::unique_ptr<Cursor> Clone() const override {
        return std::make_unique<PropertyCursor>(*this);
    }

private:
    Repository& repository_;
    store::ObjectRef object_;
    Properties properties_;
    std::size_t next_ = 0;
};

class PropertyElements final : public Elements {
public:
    PropertyElements(Repository& repository, store::ObjectRef object, PropertySelection selection)
        : repository_(repository), object_(std::move(object)), selection_(selection) {}

    long Count() override { return static_cast<long>(Present().size()); }

    ole::Ref<IDispatch> Find(const std::string& key) override {
        store::Store& store = Store();
        const store::MetaPropertyRef property = object_->meta->properties.Find(key);
        if (!property || !Belongs(store, *property)) return nullptr;
        return Show(repository_, HeldValue{object_, property});
    }

    ole::Ref<IDispatch> At(long position) override {
        const Properties present = Present();
        const auto index = static_cast<std::size_t>(position);
        if (index >= present.size()) return nullptr;
        return Show(repository_, HeldValue{object_, present[index]});
    }

    std::unique_ptr<Cursor> Begin() override {
        return std::make_unique<PropertyCursor>(repository_, object_, Present());
    }

private:
    store::Store& Store() {
        store::Store& store = repository_.Store();
        store.Update(*object_);
        store::RequireLive(*object_);
        return store;
    }

    bool Belongs(store::Store& store, const store::MetaProperty& property) {
        return selection_ == PropertySelection::all ||
               (property.dynamic && !store::IsEmpty(store.GetValue(*object_, property)));
    }

    Properties Present() {
        store::Store& store = Store();
        Properties present;
        for (const store::MetaPropertyRef& property : object_->meta->properties) {
            if (Belongs(store, *property)) present.push_back(property);
        }
        return present;
    }

    Repository& repository_;
    store::ObjectRef object_;
    PropertySelection selection_;
};

}  // namespace

std::unique_ptr<Elements> MakePropertyElements(Repository& repository,
                                               const store::ObjectRef& object,
                                               PropertySelection selection) {
    return std::make_unique<PropertyElements>(repository, object, selection);
}

}  // namespace repository::com
