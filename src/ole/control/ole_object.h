#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "ole/unknown.h"

namespace ole {

class Control;
class InPlace;

/// A control as its container embeds and drives it.
class OleObject final : public Part<IOleObject> {
public:
    OleObject(IUnknown& whole, Control& control, InPlace& inPlace)
        : Part(whole), whole_(whole), control_(control), inPlace_(inPlace) {}

    STDMETHODIMP SetClientSite(IOleClientSite* site) override;
    STDMETHODIMP GetClientSite(IOleClientSite** site) override;
    STDMETHODIMP SetHostNames(LPCOLESTR application, LPCOLESTR object) override;
    STDMETHODIMP Close(DWORD saveOption) override;
    STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
    STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
    STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                        LPCRECT position) override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
    STDMETHODIMP Update() override;
    STDMETHODIMP IsUpToDate() override;
    STDMETHODIMP GetUserClassID(CLSID* id) override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* name) override;
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* extent) override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* extent) override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) override;
    STDMETHODIMP Unadvise(DWORD connection) override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** sinks) override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
    STDMETHODIMP SetColorScheme(LOGPALETTE* palette) override;

    /// Tells the containers' sinks that the control was saved.
    void SendSaved();

private:
    IUnknown& whole_;
    Control& control_;
    InPlace& inPlace_;
    Ref<IOleAdviseHolder> sinks_;
};

}  // namespace ole
