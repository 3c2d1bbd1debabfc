#pragma once

#include <string>

#include "repository/com/element_object.h"
#include "repository/com/object_collection.h"
#include "repository/com/property_elements.h"
#include "repository/com/text.h"

namespace repository::com {

/// A node's or link's value, in the property's present type. Error 5 for an unknown property.
_variant_t ReadProperty(store::Store& store, const store::ObjectRef& object,
                        const std::string& name);

/// Sets a node's or link's value to a plain value.
void WriteProperty(store::Store& store, const store::ObjectRef& object, const std::string& name,
                   const _variant_t& value);
void WriteProperty(store::Store& store, const store::ObjectRef& object,
                   const store::MetaProperty& property, const _variant_t& value);

/// What nodes and links have in common.
template <class I, const GUID& classId>
class Instance : public ElementObject<I, classId, store::Object> {
public:
    using ElementObject<I, classId, store::Object>::ElementObject;

    STDMETHODIMP get_name(BSTR* result) override {
        return this->Do([&] { *result = ToResult(this->Known()->name); });
    }
    STDMETHODIMP put_name(VARIANT* newName) override {
        return this->Do([&] {
            const std::string text = TextOf(*newName);
            this->Store().Rename(this->Live(), text);
        });
    }
    STDMETHODIMP get_identifier(BSTR* result) override {
        return this->Do([&] { *result = ToResult(this->Known()->identifier); });
    }
    STDMETHODIMP GetProperty(VARIANT* name, VARIANT* result) override {
        return this->Do([&] {
            const std::string property = TextOf(*name);
            *result = ReadProperty(this->Store(), this->Live(), property).Detach();
        });
    }
    STDMETHODIMP SetProperty(VARIANT* name, VARIANT* newValue, VARIANT* result) override {
        if (!IsGiven(*newValue)) return GetProperty(name, result);
        return this->Do([&] {
            const std::string property = TextOf(*name);
            const _variant_t value = PlainValue(*newValue);
            WriteProperty(this->Store(), this->Live(), property, value);
        });
    }
    STDMETHODIMP get_Properties(VARIANT* name, IDispatch** result) override {
        return this->Do([&] {
            const Key key(*name);
            auto properties =
                MakePropertyElements(this->Whole(), this->Live(), PropertySelection::all);
            *result = CollectionOrElement(this->Whole(), std::move(properties), key).Detach();
        });
    }
    STDMETHODIMP get_GetDynamicProperties(_ObjectCollection** result) override {
        return this->Do([&] {
            auto properties = MakePropertyElements(this->Whole(), this->Live(),
                                                   PropertySelection::dynamicWithValue);
            *result = MakeCollection(this->Whole(), std::move(properties)).Detach();
        });
    }
};

}  // namespace repository::com
