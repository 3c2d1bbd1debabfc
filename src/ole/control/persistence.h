#pragma once

#include <oaidl.h>
#include <ocidl.h>

#include "ole/unknown.h"

namespace ole {

class Control;
class OleObject;

/// Saves and loads what a form keeps of a control: its size, with a version number. Nothing that a
/// member sets is kept. Unknown property names are ignored; what a newer version wrote is refused
/// with STG_E_OLDDLL, what is no such record with STG_E_INVALIDHEADER.
class Persistence final : public Part<IPersistStreamInit, IPersistStorage, IPersistPropertyBag> {
public:
    Persistence(IUnknown& whole, Control& control, OleObject& object)
        : Part(whole), whole_(whole), control_(control), object_(object) {}

    STDMETHODIMP GetClassID(CLSID* id) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP InitNew() override;

    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;

    STDMETHODIMP InitNew(IStorage* storage) override;
    STDMETHODIMP Load(IStorage* storage) override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
    STDMETHODIMP SaveCompleted(IStorage* storage) override;
    STDMETHODIMP HandsOffStorage() override;

    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

private:
    IUnknown& whole_;
    Control& control_;
    OleObject& object_;
    bool savedWhole_ = false;
};

}  // namespace ole
