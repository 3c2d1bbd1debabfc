#include "repository/com/instance.h"

#include "repository/com/failure.h"

namespace repository::com {

namespace {

/// A property that an object has under that name: one of its meta object's, or one that every
/// object has, however the meta object calls it.
store::MetaPropertyRef FindProperty(const store::MetaObject& meta, const std::string& name) {
    if (const auto declared = meta.properties.Find(name)) return declared;
    const std::string folded = store::FoldCase(name);
    store::Role role = store::Role::value;
    if (folded == "name") role = store::Role::name;
    if (folded == "identifier") role = store::Role::identifier;
    if (folded == "description") role = store::Role::description;
    return role == store::Role::value ? nullptr : meta.Standard(role);
}

/// Held by the caller: the meta model lets go of it when another program has removed it.
store::MetaPropertyRef Demand(const store::Object& object, const std::string& name) {
    const store::MetaPropertyRef property = FindProperty(*object.meta, name);
    if (!property) {
        Throw(store::Number::invalidCall,
              "\"" + object.meta->name + "\" has no property \"" + name + "\"");
    }
    return property;
}

bool IsEmptyText(const store::Value& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr && text->empty();
}

}  // namespace

_variant_t ReadProperty(store::Store& store, const store::ObjectRef& object,
                        const std::string& name) {
    const store::MetaPropertyRef property = Demand(*object, name);
    return ToVariant(store.GetValue(*object, *property), *property);
}

void WriteProperty(store::Store& store, const store::ObjectRef& object, const std::string& name,
                   const _variant_t& value) {
    const store::MetaPropertyRef property = Demand(*object, name);
    WriteProperty(store, object, *property, value);
}

void WriteProperty(store::Store& store, const store::ObjectRef& object,
                   const store::MetaProperty& property, const _variant_t& value) {
    const store::Value before = store.GetValue(*object, property);
    // What an editor shows of a value goes back unchanged, even where it does not fit the type that
    // the property got since; and an empty box is no value where there was none.
    if (V_VT(&value) == VT_BSTR && std::holds_alternative<std::string>(before) &&
        std::get<std::string>(before) == TextOf(value)) {
        return;
    }
    const store::Value given = ToValue(value, property);
    if (store::IsEmpty(before) && IsEmptyText(given)) return;
    store.SetValue(object, property, given);
}

}  // namespace repository::com
