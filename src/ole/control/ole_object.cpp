#include "ole/control/ole_object.h"

#include <string>

#include "ole/control/control.h"
#include "ole/control/in_place.h"
#include "ole/server.h"

namespace ole {

HRESULT OleObject::SetClientSite(IOleClientSite* site) {
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IOleObject, [&] {
        if (site == nullptr) inPlace_.InPlaceDeactivate();
        control_.SetSite(site);
    });
}

HRESULT OleObject::GetClientSite(IOleClientSite** site) {
    if (site == nullptr) return E_POINTER;
    Ref<IOleClientSite>(control_.Container().Client()).CopyTo(site);
    return S_OK;
}

HRESULT OleObject::SetHostNames(LPCOLESTR, LPCOLESTR) {
    return S_OK;
}

HRESULT OleObject::Close(DWORD saveOption) {
    const Ref<IUnknown> kept = &whole_;
    inPlace_.InPlaceDeactivate();
    const Ref<IOleClientSite> client = control_.Container().Client();
    if (client && saveOption != OLECLOSE_NOSAVE && control_.IsDirty()) client->SaveObject();
    if (const Ref<IOleAdviseHolder> sinks = std::move(sinks_)) sinks->SendOnClose();
    control_.LetGo();
    return S_OK;
}

// A control is never the source of a link.
HRESULT OleObject::SetMoniker(DWORD, IMoniker*) {
    return S_OK;
}

HRESULT OleObject::GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) {
    if (moniker == nullptr) return E_POINTER;
    *moniker = nullptr;
    const Ref<IOleClientSite> client = control_.Container().Client();
    return client ? client->GetMoniker(assign, which, moniker) : E_UNEXPECTED;
}

// Controls are neither made from nor copied to the clipboard.
HRESULT OleObject::InitFromData(IDataObject*, BOOL, DWORD) {
    return S_FALSE;
}

HRESULT OleObject::GetClipboardData(DWORD, IDataObject** data) {
    if (data != nullptr) *data = nullptr;
    return OLE_E_NOTRUNNING;
}

HRESULT OleObject::DoVerb(LONG verb, LPMSG message, IOleClientSite*, LONG, HWND, LPCRECT) {
    const Ref<IUnknown> kept = &whole_;
    HRESULT result = S_OK;
    const HRESULT failure = Guard({}, IID_IOleObject, [&] {
        switch (verb) {
            case OLEIVERB_SHOW:
            case OLEIVERB_INPLACEACTIVATE:
                result = inPlace_.Activate(false);
                break;
            case OLEIVERB_PRIMARY:
            case OLEIVERB_UIACTIVATE:
            case OLEIVERB_OPEN:
                result = inPlace_.Activate(true);
                break;
            case OLEIVERB_HIDE:
                result = inPlace_.InPlaceDeactivate();
                break;
            case OLEIVERB_DISCARDUNDOSTATE:
                break;
            default:
                // By the platform's rule a positive verb that is not known is done as the primary
                // one.
                result = verb > 0 ? inPlace_.Activate(true) : E_NOTIMPL;
                if (verb > 0 && SUCCEEDED(result)) result = OLEOBJ_S_INVALIDVERB;
        }
        if (SUCCEEDED(result) && message != nullptr && verb == OLEIVERB_UIACTIVATE &&
            message->message == WM_LBUTTONDOWN) {
            SetFocus(control_.FocusWindow());
        }
    });
    return FAILED(failure) ? failure : result;
}

HRESULT OleObject::EnumVerbs(IEnumOLEVERB** verbs) {
    if (verbs == nullptr) return E_POINTER;
    *verbs = nullptr;
    return OLEOBJ_E_NOVERBS;
}

HRESULT OleObject::Update() {
    return S_OK;
}

HRESULT OleObject::IsUpToDate() {
    return S_OK;
}

HRESULT OleObject::GetUserClassID(CLSID* id) {
    if (id == nullptr) return E_POINTER;
    *id = control_.Class().classId;
    return S_OK;
}

HRESULT OleObject::GetUserType(DWORD form, LPOLESTR* name) {
    if (name == nullptr) return E_POINTER;
    *name = nullptr;
    return Guard({}, IID_IOleObject, [&] {
        const Ref<ITypeInfo> info = TypeInfoOf(control_.Class().classId);
        const std::wstring text =
            form == USERCLASSTYPE_FULL ? HelpTextOf(*info.Get()) : NameOf(*info.Get());
        const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
        *name = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
        if (*name == nullptr) Check(E_OUTOFMEMORY);
        CopyMemory(*name, text.c_str(), bytes);
    });
}

HRESULT OleObject::SetExtent(DWORD aspect, SIZEL* extent) {
    if (extent == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IOleObject, [&] { control_.SetExtent(*extent); });
}

HRESULT OleObject::GetExtent(DWORD aspect, SIZEL* extent) {
    if (extent == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return Guard({}, IID_IOleObject, [&] { *extent = control_.Extent(); });
}

HRESULT OleObject::Advise(IAdviseSink* sink, DWORD* connection) {
    if (connection == nullptr) return E_POINTER;
    *connection = 0;
    if (!sinks_) {
        const HRESULT made = CreateOleAdviseHolder(sinks_.GetAddressOf());
        if (FAILED(made)) return made;
    }
    return sinks_->Advise(sink, connection);
}

HRESULT OleObject::Unadvise(DWORD connection) {
    return sinks_ ? sinks_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT OleObject::EnumAdvise(IEnumSTATDATA** sinks) {
    if (sinks == nullptr) return E_POINTER;
    *sinks = nullptr;
    return sinks_ ? sinks_->EnumAdvise(sinks) : S_OK;
}

HRESULT OleObject::GetMiscStatus(DWORD aspect, DWORD* status) {
    if (status == nullptr) return E_POINTER;
    *status = aspect == DVASPECT_CONTENT ? control_.MiscStatus() : 0;
    return S_OK;
}

// Controls take the colours that the system has.
HRESULT OleObject::SetColorScheme(LOGPALETTE*) {
    return S_OK;
}

void OleObject::SendSaved() {
    if (const Ref<IOleAdviseHolder> sinks = sinks_) sinks->SendOnSave();
}

}  // namespace ole
