#pragma once

#include "repository/com/element_object.h"

namespace repository::com {

/// `OrvaneRepository.MetaType`.
class MetaType final : public ElementObject<_MetaType, CLSID_MetaType, store::MetaType> {
public:
    using ElementObject::ElementObject;

    STDMETHODIMP get_name(BSTR* result) override;
    STDMETHODIMP get_identifier(BSTR* result) override;
    STDMETHODIMP get_Description(BSTR* result) override;
    STDMETHODIMP get_parent(_Repository** result) override;
    STDMETHODIMP GetProperty(VARIANT* name, VARIANT* result) override;
    STDMETHODIMP get_DataType(BSTR* result) override;
    STDMETHODIMP get_MetaEnum(_MetaEnum** result) override;
};

/// `OrvaneRepository.MetaEnum`.
class MetaEnum final : public ElementObject<_MetaEnum, CLSID_MetaEnum, store::MetaEnum> {
public:
    using ElementObject::ElementObject;

    STDMETHODIMP get_name(BSTR* result) override;
    STDMETHODIMP get_identifier(BSTR* result) override;
    STDMETHODIMP get_parent(_Repository** result) override;
    STDMETHODIMP get_MetaAtoms(VARIANT* name, IDispatch** result) override;
};

/// `OrvaneRepository.MetaAtom`.
class MetaAtom final : public ElementObject<_MetaAtom, CLSID_MetaAtom, store::MetaAtom> {
public:
    using ElementObject::ElementObject;

    STDMETHODIMP get_name(BSTR* result) override;
    STDMETHODIMP get_identifier(BSTR* result) override;
};

}  // namespace repository::com
