#include "repository/com/arguments.h"

#include "ole/error.h"
#include "ole/object.h"
#include "repository/com/failure.h"
#include "repository/com/repository.h"
#include "repository/com/variant.h"

namespace repository::com {

namespace {

/// An argument without the reference that a variable is passed by.
const VARIANT& Followed(const VARIANT& argument) {
    return V_VT(&argument) == (VT_VARIANT | VT_BYREF) ? Followed(*V_VARIANTREF(&argument))
                                                      : argument;
}

bool IsObject(const VARIANT& argument) {
    const int type = V_VT(&argument) & ~VT_BYREF;
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

bool IsNumber(const VARIANT& argument) {
    switch (V_VT(&argument) & ~VT_BYREF) {
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_UI4:
        case VT_I8:
        case VT_UI8:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL:
            return true;
        default:
            return false;
    }
}

[[noreturn]] void ThrowUnknown(const char* kind, const std::string& name) {
    Throw(store::Number::invalidCall,
          std::string("There is no ") + kind + " \"" + name + "\" in the repository");
}

/// The element of type `Found` that a reference means; `find` looks for a name.
template <class Found, class Find>
Found Resolve(Repository& repository, const Reference& reference, const char* kind, Find&& find) {
    if (reference.IsName()) {
        if (Found found = find(repository.Store(), reference.Name())) return found;
        ThrowUnknown(kind, reference.Name());
    }
    const Element element = reference.In(repository);
    if (const auto* found = std::get_if<Found>(&element)) return *found;
    Throw(store::Number::typeMismatch, std::string("The argument is no ") + kind);
}

}  // namespace

Reference::Reference(const VARIANT& argument) {
    const VARIANT& value = Followed(argument);
    if (!IsObject(value)) {
        name_ = TextOf(value);
        return;
    }
    const ole::Object object = ole::Object::From(value);
    if (!object) ole::Throw(ole::Number::objectNotSet);
    object_ = ole::Query<IHeld>(object.Get());
    if (!object_) {
        Throw(store::Number::typeMismatch, "The object is none of this repository component");
    }
}

Element Reference::In(Repository& repository) const {
    if (!object_) ole::Throw(ole::Number::objectRequired);
    if (&object_->Owner() != &repository) {
        Throw(store::Number::invalidCall, "The object belongs to another repository");
    }
    repository.StoreOf(object_->HeldSession());
    return object_->Held();
}

store::MetaNodeRef MetaNodeOf(Repository& repository, const Reference& reference) {
    return Resolve<store::MetaNodeRef>(
        repository, reference, "meta node",
        [](store::Store& store, const std::string& name) { return store.Meta().nodes.Find(name); });
}

store::MetaLinkRef MetaLinkOf(Repository& repository, const Reference& reference) {
    return Resolve<store::MetaLinkRef>(
        repository, reference, "meta link",
        [](store::Store& store, const std::string& name) { return store.Meta().links.Find(name); });
}

store::MetaObjectRef MetaObjectOf(Repository& repository, const Reference& reference) {
    if (reference.IsName()) {
        const store::MetaModel& meta = repository.Store().Meta();
        if (const auto node = meta.nodes.Find(reference.Name())) return node;
        if (const auto link = meta.links.Find(reference.Name())) return link;
        ThrowUnknown("meta node or meta link", reference.Name());
    }
    const Element element = reference.In(repository);
    if (const auto* node = std::get_if<store::MetaNodeRef>(&element)) return *node;
    if (const auto* link = std::get_if<store::MetaLinkRef>(&element)) return *link;
    Throw(store::Number::typeMismatch, "The argument is no meta node or meta link");
}

store::MetaTypeRef MetaTypeOf(Repository& repository, const Reference& reference) {
    return Resolve<store::MetaTypeRef>(
        repository, reference, "meta type",
        [](store::Store& store, const std::string& name) { return store.Meta().types.Find(name); });
}

store::ObjectRef NodeOf(Repository& repository, const Reference& reference) {
    const auto node = Resolve<store::ObjectRef>(
        repository, reference, "node",
        [](store::Store& store, const std::string& identifier) { return store.Find(identifier); });
    if (node->IsLink()) Throw(store::Number::typeMismatch, "\"" + node->name + "\" is a link");
    return node;
}

Key::Key(const VARIANT& argument) {
    const VARIANT& value = Followed(argument);
    if (!com::IsGiven(value)) return;
    if (IsNumber(value)) {
        position_ = LongOf(value);
        kind_ = Kind::position;
    } else {
        text_ = TextOf(value);
        kind_ = Kind::text;
    }
}

}  // namespace repository::com
