#include "repository/com/meta_property.h"

#include "repository/com/arguments.h"
#include "repository/com/meta_object.h"
#include "repository/com/show.h"
#include "repository/com/text.h"

namespace repository::com {

std::string OwnProperty(const store::MetaProperty& property, const std::string& name) {
    const std::string folded = store::FoldCase(name);
    if (folded == "name" || folded == "identifier") return property.name;
    if (folded == "description") return property.description;
    if (folded == "datatype") return std::string(store::WordOf(property.type->dataType));
    if (folded == "metatype") return property.type->name;
    Throw(store::Number::invalidCall,
          "\"" + property.name + "\" has no property \"" + name + "\" of its own");
}

STDMETHODIMP MetaProperty::get_name(BSTR* result) {
    return Do([&] { *result = ToResult(Known()->name); });
}

STDMETHODIMP MetaProperty::put_name(VARIANT* newName) {
    return Do([&] {
        const std::string text = TextOf(*newName);
        Store().Rename(Live(), text);
    });
}

STDMETHODIMP MetaProperty::get_identifier(BSTR* result) {
    return get_name(result);
}

STDMETHODIMP MetaProperty::get_Description(BSTR* result) {
    return Do([&] { *result = ToResult(Live()->description); });
}

STDMETHODIMP MetaProperty::put_Description(VARIANT* newText) {
    return Do([&] {
        const std::string text = TextOf(*newText);
        Store().Describe(Live(), text);
    });
}

STDMETHODIMP MetaProperty::get_parent(IDispatch** result) {
    return Do([&] { *result = Show(Whole(), Live()->owner.lock()).Detach(); });
}

STDMETHODIMP MetaProperty::GetProperty(VARIANT* name, VARIANT* result) {
    return Do([&] {
        const std::string property = TextOf(*name);
        *result = _variant_t(ToBstr(OwnProperty(*Live(), property))).Detach();
    });
}

STDMETHODIMP MetaProperty::SetProperty(VARIANT* name, VARIANT* newValue, VARIANT* result) {
    if (!IsGiven(*newValue)) return GetProperty(name, result);
    return Do([&] {
        const Settable property = SettableProperty(TextOf(*name));
        const std::string text = TextOf(*newValue);
        if (property == Settable::name) {
            Store().Rename(Live(), text);
        } else {
            Store().Describe(Live(), text);
        }
    });
}

STDMETHODIMP MetaProperty::get_MetaType(_MetaType** result) {
    return Do([&] { *result = Show(Whole(), Live()->type).Detach(); });
}

STDMETHODIMP MetaProperty::put_MetaType(VARIANT* newType) {
    return Do([&] {
        const Reference type(*newType);
        Store().Retype(Live(), MetaTypeOf(Whole(), type));
    });
}

STDMETHODIMP MetaProperty::putref_MetaType(VARIANT* newType) {
    return put_MetaType(newType);
}

STDMETHODIMP MetaProperty::get_MetaEnum(_MetaEnum** result) {
    return Do([&] { *result = Show(Whole(), Live()->type->enumeration).Detach(); });
}

STDMETHODIMP MetaProperty::get_DataType(BSTR* result) {
    return Do([&] { *result = ToResult(store::WordOf(Live()->type->dataType)); });
}

STDMETHODIMP MetaProperty::get_IsDynamic(VARIANT_BOOL* result) {
    return Do([&] { *result = ToResult(Live()->dynamic); });
}

STDMETHODIMP MetaProperty::put_IsDynamic(VARIANT* flag) {
    return Do([&] {
        const bool wanted = FlagOf(*flag);
        Store().SetDynamic(Live(), wanted);
    });
}

STDMETHODIMP MetaProperty::get_IsPersistent(VARIANT_BOOL* result) {
    return Do([&] { *result = ToResult(Live()->persistent); });
}

STDMETHODIMP MetaProperty::put_IsPersistent(VARIANT* flag) {
    return Do([&] {
        const bool wanted = FlagOf(*flag);
        Store().SetPersistent(Live(), wanted);
    });
}

}  // namespace repository::com
