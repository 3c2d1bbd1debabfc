#pragma once

#include <objidl.h>

#include "ole/unknown.h"

namespace ole {

class Control;

/// A control's picture as data: an enhanced metafile or an old one.
class Data final : public Part<IDataObject> {
public:
    Data(IUnknown& whole, Control& control) : Part(whole), whole_(whole), control_(control) {}

    void SendChanged();
    void LetGo() { sinks_.Reset(); }

    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
    STDMETHODIMP GetDataHere(FORMATETC* format, STGMEDIUM* medium) override;
    STDMETHODIMP QueryGetData(FORMATETC* format) override;
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) override;
    STDMETHODIMP SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) override;
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
    STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                         DWORD* connection) override;
    STDMETHODIMP DUnadvise(DWORD connection) override;
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA** sinks) override;

private:
    IUnknown& whole_;
    Control& control_;
    Ref<IDataAdviseHolder> sinks_;
};

}  // namespace ole
