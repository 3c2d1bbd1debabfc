#pragma once

#include <string>

#include "support/double.h"

namespace support {

/// An automation object through another pointer, as a proxy or an aggregated interface has one: its
/// calls go to the object, and it says that it is the object.
class Face : public IDispatch, public Double {
public:
    explicit Face(IDispatch* object) : Double("face"), object_(object) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (!MayCall("QueryInterface")) return RPC_E_DISCONNECTED;
        if (iid != __uuidof(IDispatch)) return object_->QueryInterface(iid, object);
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return object_->GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return object_->GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override {
        return object_->GetIDsOfNames(riid, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID riid, LCID locale, WORD kind, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override {
        return object_->Invoke(id, riid, locale, kind, parameters, result, exception, badArgument);
    }

private:
    void Expire() override { object_.Reset(); }

    Ref<IDispatch> object_;
};

}  // namespace support
