#include "repository/com/meta_type.h"

#include "repository/com/list_elements.h"
#include "repository/com/object_collection.h"
#include "repository/com/show.h"
#include "repository/com/text.h"

namespace repository::com {

namespace {

std::string OwnProperty(const store::MetaType& type, const std::string& name) {
    const std::string folded = store::FoldCase(name);
    if (folded == "name" || folded == "identifier") return type.name;
    if (folded == "description") return type.description;
    if (folded == "datatype") return std::string(store::WordOf(type.dataType));
    Throw(store::Number::invalidCall,
          "\"" + type.name + "\" has no property \"" + name + "\" of its own");
}

}  // namespace

STDMETHODIMP MetaType::get_name(BSTR* result) {
    return Do([&] { *result = ToResult(Known()->name); });
}

STDMETHODIMP MetaType::get_identifier(BSTR* result) {
    return get_name(result);
}

STDMETHODIMP MetaType::get_Description(BSTR* result) {
    return Do([&] { *result = ToResult(Live()->description); });
}

STDMETHODIMP MetaType::get_parent(_Repository** result) {
    return Do([&] {
        Live();
        *result = ole::Ref<_Repository>(&Whole()).Detach();
    });
}

STDMETHODIMP MetaType::GetProperty(VARIANT* name, VARIANT* result) {
    return Do([&] {
        const std::string property = TextOf(*name);
        *result = _variant_t(ToBstr(OwnProperty(*Live(), property))).Detach();
    });
}

STDMETHODIMP MetaType::get_DataType(BSTR* result) {
    return Do([&] { *result = ToResult(store::WordOf(Live()->dataType)); });
}

STDMETHODIMP MetaType::get_MetaEnum(_MetaEnum** result) {
    return Do([&] { *result = Show(Whole(), Live()->enumeration).Detach(); });
}

STDMETHODIMP MetaEnum::get_name(BSTR* result) {
    return Do([&] { *result = ToResult(Known()->name); });
}

STDMETHODIMP MetaEnum::get_identifier(BSTR* result) {
    return get_name(result);
}

STDMETHODIMP MetaEnum::get_parent(_Repository** result) {
    return Do([&] {
        Live();
        *result = ole::Ref<_Repository>(&Whole()).Detach();
    });
}

STDMETHODIMP MetaEnum::get_MetaAtoms(VARIANT* name, IDispatch** result) {
    return Do([&] {
        const Key key(*name);
        auto atoms = MakeListElements<store::MetaAtom>(Whole(), [element = Live()] {
            RequireLive(*element);
            return element->atoms;
        });
        *result = CollectionOrElement(Whole(), std::move(atoms), key).Detach();
    });
}

STDMETHODIMP MetaAtom::get_name(BSTR* result) {
    return Do([&] { *result = ToResult(Known()->name); });
}

STDMETHODIMP MetaAtom::get_identifier(BSTR* result) {
    return get_name(result);
}

}  // namespace repository::com
