#include "ole/control/data.h"

#include <array>

#include "ole/control/control.h"
#include "ole/enumerator.h"

namespace ole {

namespace {

constexpr std::array<FORMATETC, 2> formatsOffered = {{
    {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF},
    {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT},
}};

struct Formats {
    using Element = FORMATETC;
    std::size_t Size() const { return formatsOffered.size(); }
    FORMATETC Give(std::size_t at) const { return formatsOffered[at]; }
    static void Drop(FORMATETC&) {}
};

HENHMETAFILE DrawEnhanced(Control& control) {
    const SIZE extent = control.Extent();
    const RECT frame = {0, 0, extent.cx, extent.cy};
    const HDC context = CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
    if (context == nullptr) Check(E_OUTOFMEMORY);
    const SIZE size = control.Size();
    control.Draw(context, {0, 0, size.cx, size.cy});
    return CloseEnhMetaFile(context);
}

HGLOBAL DrawOld(Control& control) {
    const HDC context = CreateMetaFileW(nullptr);
    if (context == nullptr) Check(E_OUTOFMEMORY);
    const SIZE size = control.Size();
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowOrgEx(context, 0, 0, nullptr);
    SetWindowExtEx(context, size.cx, size.cy, nullptr);
    control.Draw(context, {0, 0, size.cx, size.cy});
    const HMETAFILE drawn = CloseMetaFile(context);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
    if (memory == nullptr) {
        DeleteMetaFile(drawn);
        Check(E_OUTOFMEMORY);
    }
    const SIZE extent = control.Extent();
    *static_cast<METAFILEPICT*>(GlobalLock(memory)) = {MM_ANISOTROPIC, extent.cx, extent.cy, drawn};
    GlobalUnlock(memory);
    return memory;
}

}  // namespace

void Data::SendChanged() {
    if (const Ref<IDataAdviseHolder> sinks = sinks_) sinks->SendOnDataChange(this, 0, 0);
}

HRESULT Data::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (medium == nullptr) return E_POINTER;
    *medium = {};
    const HRESULT known = QueryGetData(format);
    if (known != S_OK) return known;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IDataObject, [&] {
        if (format->cfFormat == CF_ENHMETAFILE) {
            medium->hEnhMetaFile = DrawEnhanced(control_);
            medium->tymed = TYMED_ENHMF;
        } else {
            medium->hMetaFilePict = DrawOld(control_);
            medium->tymed = TYMED_MFPICT;
        }
    });
}

HRESULT Data::GetDataHere(FORMATETC*, STGMEDIUM*) {
    return DV_E_FORMATETC;
}

HRESULT Data::QueryGetData(FORMATETC* format) {
    if (format == nullptr) return E_POINTER;
    if (format->dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    for (const FORMATETC& offered : formatsOffered) {
        if (offered.cfFormat != format->cfFormat) continue;
        return (offered.tymed & format->tymed) != 0 ? S_OK : DV_E_TYMED;
    }
    return DV_E_FORMATETC;
}

HRESULT Data::GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) {
    if (in == nullptr || out == nullptr) return E_POINTER;
    *out = *in;
    out->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

HRESULT Data::SetData(FORMATETC*, STGMEDIUM*, BOOL) {
    return DV_E_FORMATETC;
}

HRESULT Data::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
    if (formats == nullptr) return E_POINTER;
    *formats = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    return Guard({}, IID_IDataObject,
                 [&] { *formats = Make<Enumerator<IEnumFORMATETC, Formats>>(Formats{}).Detach(); });
}

HRESULT Data::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) {
    if (connection == nullptr || format == nullptr) return E_POINTER;
    *connection = 0;
    if (!sinks_) {
        const HRESULT made = CreateDataAdviseHolder(sinks_.GetAddressOf());
        if (FAILED(made)) return made;
    }
    return sinks_->Advise(this, format, flags, sink, connection);
}

HRESULT Data::DUnadvise(DWORD connection) {
    return sinks_ ? sinks_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT Data::EnumDAdvise(IEnumSTATDATA** sinks) {
    if (sinks == nullptr) return E_POINTER;
    *sinks = nullptr;
    return sinks_ ? sinks_->EnumAdvise(sinks) : S_OK;
}

}  // namespace ole
