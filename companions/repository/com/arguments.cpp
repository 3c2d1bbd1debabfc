#include "repository/com/arguments.h"

#include "ole/error.h"
#include "ole/object.h"
#include "ole/ref.h"
#include "repository/com/failure.h"
#include "repository/com/repository.h"
#include "repository/com/variant.h"

namespace repository::com {

namespace {

/// The object that an argument is, or none where it is a plain value.
ole::Ref<IDispatch> ObjectIn(const VARIANT& argument) {
    if (V_VT(&argument) == (VT_VARIANT | VT_BYREF)) return ObjectIn(*V_VARIANTREF(&argument));
    switch (V_VT(&argument) & ~VT_BYREF) {
        case VT_DISPATCH:
        case VT_UNKNOWN: {
            const ole::Object object = ole::Object::From(argument);
            if (!object) ole::Throw(ole::Number::objectNotSet);
            return object.Get();
        }
        default:
            return nullptr;
    }
}

/// The element of type `Ref` that an argument is, or that `find` has under that name.
template <class Ref, class Find>
Ref Demand(Repository& repository, const VARIANT& argument, const char* kind, Find&& find) {
    if (const auto object = ObjectIn(argument)) {
        const Element element = ElementOf(repository, *object.Get());
        if (const auto* found = std::get_if<Ref>(&element)) return *found;
        Throw(store::Number::typeMismatch, std::string("The argument is no ") + kind);
    }
    const std::string name = TextOf(argument);
    if (Ref found = find(name)) return found;
    Throw(store::Number::invalidCall,
          std::string("There is no ") + kind + " \"" + name + "\" in the repository");
}

}  // namespace

Element ElementOf(Repository& repository, IUnknown& object) {
    const auto held = ole::Query<IHeld>(&object);
    if (!held)
        Throw(store::Number::typeMismatch, "The object is none of this repository component");
    if (&held->Owner() != &repository) {
        Throw(store::Number::invalidCall, "The object belongs to another repository");
    }
    repository.StoreOf(held->HeldSession());
    return held->Held();
}

Element ElementOf(Repository& repository, const VARIANT& argument) {
    const auto object = ObjectIn(argument);
    if (!object) ole::Throw(ole::Number::objectRequired);
    return ElementOf(repository, *object.Get());
}

store::MetaNodeRef MetaNodeOf(Repository& repository, const VARIANT& argument) {
    return Demand<store::MetaNodeRef>(
        repository, argument, "meta node",
        [&](const std::string& name) { return repository.Store().Meta().nodes.Find(name); });
}

store::MetaLinkRef MetaLinkOf(Repository& repository, const VARIANT& argument) {
    return Demand<store::MetaLinkRef>(
        repository, argument, "meta link",
        [&](const std::string& name) { return repository.Store().Meta().links.Find(name); });
}

store::MetaObjectRef MetaObjectOf(Repository& repository, const VARIANT& argument) {
    if (const auto object = ObjectIn(argument)) {
        const Element element = ElementOf(repository, *object.Get());
        if (const auto* node = std::get_if<store::MetaNodeRef>(&element)) return *node;
        if (const auto* link = std::get_if<store::MetaLinkRef>(&element)) return *link;
        Throw(store::Number::typeMismatch, "The argument is no meta node or meta link");
    }
    const std::string name = TextOf(argument);
    if (const auto node = repository.Store().Meta().nodes.Find(name)) return node;
    return MetaLinkOf(repository, argument);
}

store::MetaTypeRef MetaTypeOf(Repository& repository, const VARIANT& argument) {
    return Demand<store::MetaTypeRef>(
        repository, argument, "meta type",
        [&](const std::string& name) { return repository.Store().Meta().types.Find(name); });
}

store::ObjectRef NodeOf(Repository& repository, const VARIANT& argument) {
    const auto node = Demand<store::ObjectRef>(
        repository, argument, "node",
        [&](const std::string& identifier) { return repository.Store().Find(identifier); });
    if (node->IsLink()) Throw(store::Number::typeMismatch, "\"" + node->name + "\" is a link");
    return node;
}

}  // namespace repository::com
