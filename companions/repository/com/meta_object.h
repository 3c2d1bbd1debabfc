#pragma once

#include <string>

#include "repository/com/element_object.h"
#include "repository/com/list_elements.h"
#include "repository/com/object_collection.h"
#include "repository/com/object_elements.h"
#include "repository/com/text.h"

namespace repository::com {

/// The value of a meta object's own property (Name, Identifier, Description, of a meta link also
/// SourceName, LinkName, TargetName), without case. Error 5 for another name.
std::string OwnProperty(const store::MetaNode& node, const std::string& name);
std::string OwnProperty(const store::MetaLink& link, const std::string& name);

/// Which of a meta object's own properties can be set.
enum class Settable { name, description };
Settable SettableProperty(const std::string& name);

/// What meta nodes and meta links have in common.
template <class I, const GUID& classId, class T>
class MetaObject : public ElementObject<I, classId, T> {
public:
    using ElementObject<I, classId, T>::ElementObject;

    STDMETHODIMP get_name(BSTR* result) override {
        return this->Do([&] { *result = ToResult(this->Known()->name); });
    }
    STDMETHODIMP put_name(VARIANT* newName) override {
        return this->Do([&] { Set(Settable::name, TextOf(*newName)); });
    }
    STDMETHODIMP get_identifier(BSTR* result) override { return get_name(result); }
    STDMETHODIMP get_Description(BSTR* result) override {
        return this->Do([&] { *result = ToResult(this->Live()->description); });
    }
    STDMETHODIMP put_Description(VARIANT* newText) override {
        return this->Do([&] { Set(Settable::description, TextOf(*newText)); });
    }
    STDMETHODIMP get_parent(_Repository** result) override {
        return this->Do([&] {
            this->Live();
            *result = ole::Ref<_Repository>(&this->Whole()).Detach();
        });
    }
    STDMETHODIMP GetProperty(VARIANT* name, VARIANT* result) override {
        return this->Do([&] {
            const std::string property = TextOf(*name);
            *result = Read(property).Detach();
        });
    }
    STDMETHODIMP SetProperty(VARIANT* name, VARIANT* newValue, VARIANT* result) override {
        return this->Do([&] {
            const std::string property = TextOf(*name);
            if (IsGiven(*newValue)) {
                Set(SettableProperty(property), TextOf(*newValue));
            } else {
                *result = Read(property).Detach();
            }
        });
    }
    STDMETHODIMP get_Extension(VARIANT* key, IDispatch** result) override {
        return this->Do([&] {
            const Key wanted(*key);
            *result = CollectionOrElement(this->Whole(), Instances(), wanted).Detach();
        });
    }
    STDMETHODIMP get_Properties(VARIANT* name, IDispatch** result) override {
        return this->Do([&] {
            const Key wanted(*name);
            this->Live();
            auto properties = MakeNamedElements<store::MetaProperty>(
                this->Whole(), [element = this->Known()]() -> const auto& {
                    RequireLive(*element);
                    return element->properties;
                });
            *result = CollectionOrElement(this->Whole(), std::move(properties), wanted).Detach();
        });
    }
    STDMETHODIMP FindByName(VARIANT* name, _ObjectCollection** result) override {
        return this->Do([&] {
            const std::string text = TextOf(*name);
            this->Live();
            auto found = MakeListElements<store::Object>(
                this->Whole(), [&repository = this->Whole(), element = this->Known(), text] {
                    RequireLive(*element);
                    return repository.Store().FindByName(*element, text);
                });
            *result = MakeCollection(this->Whole(), std::move(found)).Detach();
        });
    }

protected:
    virtual std::unique_ptr<Elements> Instances() {
        return MakeObjectElements(this->Whole(), this->Live());
    }

private:
    void Set(Settable property, const std::string& text) const {
        const store::MetaObjectRef object = this->Live();
        if (property == Settable::name) {
            this->Store().Rename(object, text);
        } else {
            this->Store().Describe(object, text);
        }
    }

    _variant_t Read(const std::string& property) const {
        return ToBstr(OwnProperty(*this->Live(), property));
    }
};

}  // namespace repository::com
