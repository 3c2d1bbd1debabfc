#pragma once

#include <repository.h>

#include "ole/automation.h"
#include "repository/com/held.h"
#include "repository/com/repository.h"

namespace repository::com {

/// `OrvaneRepository.PropertyValue`.
class PropertyValue final : public ole::Automation<_PropertyValue, CLSID_PropertyValue, IHeld> {
public:
    PropertyValue(Repository& repository, HeldValue value);

    STDMETHODIMP get_name(BSTR* result) override;
    STDMETHODIMP get_identifier(BSTR* result) override;
    STDMETHODIMP get_Description(BSTR* result) override;
    STDMETHODIMP get_parent(_MetaProperty** result) override;
    STDMETHODIMP GetProperty(VARIANT* name, VARIANT* result) override;
    STDMETHODIMP get_Value(VARIANT* result) override;
    STDMETHODIMP put_Value(VARIANT* newValue) override;

    Element Held() override { return value_; }
    Repository& Owner() override { return *repository_.Get(); }
    unsigned HeldSession() override { return session_; }

private:
    template <class Work>
    HRESULT Do(Work&& work) noexcept;

    store::Store& Store() const;
    /// Error 35601 when the property was removed.
    const store::MetaPropertyRef& Property() const;

    ole::Ref<Repository> repository_;
    Repository::Session session_;
    HeldValue value_;
};

}  // namespace repository::com
