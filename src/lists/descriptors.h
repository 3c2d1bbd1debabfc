#pragma once

#include <OrvaneControls.h>

#include "ole/record.h"

namespace lists {

/// `OrvaneControls.IconCondition`: rows whose property has a certain text get a certain image.
class IconCondition final : public ole::Record<_IconCondition, CLSID_IconCondition> {
public:
    STDMETHODIMP get_Value(BSTR* text) override { return Read(value, text); }
    STDMETHODIMP put_Value(BSTR* text) override { return Write(value, text); }
    STDMETHODIMP get_name(BSTR* text) override { return Read(name, text); }
    STDMETHODIMP put_name(BSTR* text) override { return Write(name, text); }
    STDMETHODIMP get_Property(BSTR* text) override { return Read(property, text); }
    STDMETHODIMP put_Property(BSTR* text) override { return Write(property, text); }
    STDMETHODIMP get_FromObject(LinkObjectT* linkEnd) override { return Read(fromObject, linkEnd); }
    STDMETHODIMP put_FromObject(LinkObjectT* linkEnd) override {
        return Write(fromObject, linkEnd);
    }

    _bstr_t value = L"";
    _bstr_t name = L"";
    _bstr_t property = L"";
    long fromObject = 0;
};

/// A column: its header, and the property and end of a link that fill its cells.
class ColumnDesc final : public ole::Record<_ColumnDesc, CLSID_ColumnDesc> {
public:
    STDMETHODIMP get_name(BSTR* text) override { return Read(name, text); }
    STDMETHODIMP put_name(BSTR* text) override { return Write(name, text); }
    STDMETHODIMP get_Property(BSTR* text) override { return Read(property, text); }
    STDMETHODIMP put_Property(BSTR* text) override { return Write(property, text); }
    STDMETHODIMP get_FromObject(LinkObjectT* linkEnd) override { return Read(fromObject, linkEnd); }
    STDMETHODIMP put_FromObject(LinkObjectT* linkEnd) override {
        return Write(fromObject, linkEnd);
    }

    _bstr_t name = L"";
    _bstr_t property = L"";
    long fromObject = 0;
};

/// `OrvaneControls.ListCallback`: the members that a list view calls on a host's object of its own.
/// This one does nothing.
class ListCallback final : public ole::Automation<_ListCallback, CLSID_ListCallback> {
public:
    STDMETHODIMP ViewMetaLink(long*, IDispatch**, IDispatch**, IDispatch**, VARIANT*) override {
        return S_OK;
    }
    STDMETHODIMP ViewMetaNode(long*, IDispatch**, IDispatch**, IDispatch**, VARIANT*) override {
        return S_OK;
    }
    STDMETHODIMP ViewMetaAttribute(long*, IDispatch**, IDispatch**, IDispatch**,
                                   VARIANT*) override {
        return S_OK;
    }
    STDMETHODIMP ViewNode(long*, IDispatch**, IDispatch**, IDispatch**, VARIANT*) override {
        return S_OK;
    }
    STDMETHODIMP ViewLink(long*, IDispatch**, IDispatch**, IDispatch**, VARIANT*) override {
        return S_OK;
    }
};

}  // namespace lists
