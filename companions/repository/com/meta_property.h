#pragma once

#include "repository/com/element_object.h"

namespace repository::com {

/// `OrvaneRepository.MetaProperty`.
class MetaProperty final
    : public ElementObject<_MetaProperty, CLSID_MetaProperty, store::MetaProperty> {
public:
    using ElementObject::ElementObject;

    STDMETHODIMP get_name(BSTR* result) override;
    STDMETHODIMP put_name(VARIANT* newName) override;
    STDMETHODIMP get_identifier(BSTR* result) override;
    STDMETHODIMP get_Description(BSTR* result) override;
    STDMETHODIMP put_Description(VARIANT* newText) override;
    STDMETHODIMP get_parent(IDispatch** result) override;
    STDMETHODIMP GetProperty(VARIANT* name, VARIANT* result) override;
    STDMETHODIMP SetProperty(VARIANT* name, VARIANT* newValue, VARIANT* result) override;
    STDMETHODIMP get_MetaType(_MetaType** result) override;
    STDMETHODIMP put_MetaType(VARIANT* newType) override;
    STDMETHODIMP putref_MetaType(VARIANT* newType) override;
    STDMETHODIMP get_MetaEnum(_MetaEnum** result) override;
    STDMETHODIMP get_DataType(BSTR* result) override;
    STDMETHODIMP get_IsDynamic(VARIANT_BOOL* result) override;
    STDMETHODIMP put_IsDynamic(VARIANT* flag) override;
    STDMETHODIMP get_IsPersistent(VARIANT_BOOL* result) override;
    STDMETHODIMP put_IsPersistent(VARIANT* flag) override;
};

/// The value of a meta property's own property: Name, Identifier, Description, DataType, MetaType.
/// Error 5 for another name.
std::string OwnProperty(const store::MetaProperty& property, const std::string& name);

}  // namespace repository::com
