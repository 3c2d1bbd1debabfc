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
    return Do([&] { Store().Rename(Live(), TextOf(*newName)); });
}

STDMETHODIMP MetaProperty::get_identifier(BSTR* result) {
    return get_name(result);
}

STDMETHODIMP MetaProperty::get_Description(BSTR* result) {
    return Do([&] { *result = ToResult(Live()->description); });
}

STDMETHODIMP MetaProperty::put_Description(VARIANT* newText) {
    return Do([&] { Store().Describe(Live(), TextOf(*newText)); });
}

STDMETHODIMP MetaProperty::get_parent(IDispatch** result) {
    return Do([&] { *result = Show(Whole(), Live()->owner.lock()).Detach(); });
}

STDMETHODIMP MetaProperty::GetProperty(VARIANT* name, VARIANT* result) {
    return Do([&] { *result = _variant_t(ToBstr(OwnProperty(*Live(), TextOf(*name)))).Detach(); });
}

STDMETHODIMP MetaProperty::SetProperty(VARIANT* name, VARIANT* newValue, VARIANT* result) {
    if (!IsGiven(*newValue)) return GetProperty(name, result);
    return Do([&] {
        switch (SettableProperty(TextOf(*name))) {
            case Settable::name:
                return Store().Rename(Live(), TextOf(*newValue));
            case Settable::description:
                return Store().Describe(Live(), TextOf(*newValue));
        }
    });
}

STDMETHODIMP MetaProperty::get_MetaType(_MetaType** result) {
    return Do([&] { *result = Show(Whole(), Live()->type).Detach(); });
}

STDMETHODIMP MetaProperty::put_MetaType(VARIANT* newType) {
    return Do([&] { Store().Retype(Live(), MetaTypeOf(Whole(), *newType)); });
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
    return Do([&] { Store().SetDynamic(Live(), FlagOf(*flag)); });
}

STDMETHODIMP MetaProperty::get_IsPersistent(VARIANT_BOOL* result) {
    return Do([&] { *result = ToResult(Live()->persistent); });
}

STDMETHODIMP MetaProperty::put_IsPersistent(VARIANT* flag) {
    return Do([&] { Store().SetPersistent(Live(), FlagOf(*flag)); });
}

}  // namespace repository::com
