#include "repository/com/property_value.h"

#include "repository/com/failure.h"
#include "repository/com/instance.h"
#include "repository/com/meta_property.h"
#include "repository/com/show.h"
#include "repository/com/text.h"
#include "repository/com/variant.h"

namespace repository::com {

PropertyValue::PropertyValue(Repository& repository, HeldValue value)
    : repository_(&repository), session_(repository.Current()), value_(std::move(value)) {}

template <class Work>
HRESULT PropertyValue::Do(Work&& work) noexcept {
    return Run([&] { Translated(work); });
}

store::Store& PropertyValue::Store() const {
    return repository_->StoreOf(session_);
}

const store::MetaPropertyRef& PropertyValue::Property() const {
    Store();
    store::RequireLive(*value_.property);
    return value_.property;
}

STDMETHODIMP PropertyValue::get_name(BSTR* result) {
    return Do([&] { *result = ToResult(value_.property->name); });
}

STDMETHODIMP PropertyValue::get_identifier(BSTR* result) {
    return get_name(result);
}

STDMETHODIMP PropertyValue::get_Description(BSTR* result) {
    return Do([&] { *result = ToResult(Property()->description); });
}

STDMETHODIMP PropertyValue::get_parent(_MetaProperty** result) {
    return Do([&] { *result = Show(*repository_.Get(), Property()).Detach(); });
}

STDMETHODIMP PropertyValue::GetProperty(VARIANT* name, VARIANT* result) {
    return Do([&] {
        const std::string property = TextOf(*name);
        if (store::FoldCase(property) == "value") {
            *result =
                ToVariant(Store().GetValue(*value_.object, *Property()), *Property()).Detach();
        } else {
            *result = _variant_t(ToBstr(OwnProperty(*Property(), property))).Detach();
        }
    });
}

STDMETHODIMP PropertyValue::get_Value(VARIANT* result) {
    return Do([&] {
        *result = ToVariant(Store().GetValue(*value_.object, *Property()), *Property()).Detach();
    });
}

STDMETHODIMP PropertyValue::put_Value(VARIANT* newValue) {
    return Do([&] {
        const _variant_t value = PlainValue(*newValue);
        WriteProperty(Store(), value_.object, *Property(), value);
    });
}

}  // namespace repository::com
