// What the container calls. Each call is noted.
#include "hosts/double/control.h"

#include "hosting/text.h"

using hosting::Query;
using hosting::Ref;

namespace {

std::string Words(const RECT& area) {
    return std::to_string(area.left) + " " + std::to_string(area.top) + " " +
           std::to_string(area.right) + " " + std::to_string(area.bottom);
}

ACCEL mnemonic{FALT | FVIRTKEY, 'D', 1};

}  // namespace

HRESULT DoubleControl::SetClientSite(IOleClientSite* site) {
    Note(site ? "SetClientSite" : "SetClientSite none");
    site_ = site;
    return S_OK;
}

HRESULT DoubleControl::GetClientSite(IOleClientSite** site) {
    Ref<IOleClientSite> copy(site_);
    *site = copy.Detach();
    return S_OK;
}

HRESULT DoubleControl::Close(DWORD) {
    Note("Close");
    return InPlaceDeactivate();
}

HRESULT DoubleControl::DoVerb(LONG verb, MSG*, IOleClientSite*, LONG, HWND, const RECT* position) {
    Note("DoVerb " + std::to_string(verb));
    switch (verb) {
        case OLEIVERB_INPLACEACTIVATE:
        case OLEIVERB_PRIMARY:
            return ActivateInPlace(*position);
        case OLEIVERB_SHOW: {
            const HRESULT result = ActivateInPlace(*position);
            ShowWindow(window_.get(), SW_SHOW);
            return result;
        }
        case OLEIVERB_UIACTIVATE: {
            const HRESULT result = ActivateInPlace(*position);
            return FAILED(result) ? result : ActivateUI();
        }
        case OLEIVERB_HIDE:
            ShowWindow(window_.get(), SW_HIDE);
            return S_OK;
        default:
            return E_NOTIMPL;
    }
}

HRESULT DoubleControl::SetExtent(DWORD, SIZEL* size) {
    Note("SetExtent " + std::to_string(size->cx) + " " + std::to_string(size->cy));
    extent_ = *size;
    return S_OK;
}

HRESULT DoubleControl::GetExtent(DWORD, SIZEL* size) {
    *size = extent_;
    return S_OK;
}

HRESULT DoubleControl::Advise(IAdviseSink* sink, DWORD* cookie) {
    Note("Advise");
    advise_ = sink;
    *cookie = 1;
    return S_OK;
}

HRESULT DoubleControl::Unadvise(DWORD) {
    Note("Unadvise");
    advise_ = nullptr;
    return S_OK;
}

HRESULT DoubleControl::GetMiscStatus(DWORD, DWORD* status) {
    *status = OLEMISC_SETCLIENTSITEFIRST | OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_INSIDEOUT |
              OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE;
    return S_OK;
}

HRESULT DoubleControl::GetWindow(HWND* window) {
    *window = window_.get();
    return window_ ? S_OK : E_FAIL;
}

HRESULT DoubleControl::InPlaceDeactivate() {
    if (!window_) return S_OK;
    Note("InPlaceDeactivate");
    UIDeactivate();
    window_.reset();
    if (const auto place = Query<IOleInPlaceSite>(site_.Get())) place->OnInPlaceDeactivate();
    return S_OK;
}

HRESULT DoubleControl::UIDeactivate() {
    if (!uiActive_) return S_OK;
    Note("UIDeactivate");
    uiActive_ = false;
    if (const auto place = Query<IOleInPlaceSite>(site_.Get())) place->OnUIDeactivate(FALSE);
    return S_OK;
}

HRESULT DoubleControl::SetObjectRects(const RECT* position, const RECT*) {
    Note("SetObjectRects " + Words(*position));
    SetWindowPos(window_.get(), nullptr, position->left, position->top,
                 position->right - position->left, position->bottom - position->top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return S_OK;
}

HRESULT DoubleControl::TranslateAccelerator(MSG* message) {
    if (message->message != WM_KEYDOWN) return S_FALSE;
    Note("TranslateAccelerator " + std::to_string(message->wParam));
    if (message->wParam == VK_RETURN) return S_OK;
    const auto control = Query<IOleControlSite>(site_.Get());
    return control ? control->TranslateAccelerator(message, 0) : S_FALSE;
}

HRESULT DoubleControl::GetControlInfo(CONTROLINFO* info) {
    // The table lives as long as the process: the container does not own it.
    static const HACCEL table = CreateAcceleratorTableW(&mnemonic, 1);
    info->hAccel = table;
    info->cAccel = 1;
    info->dwFlags = 0;
    return S_OK;
}

HRESULT DoubleControl::OnMnemonic(MSG*) {
    Note("OnMnemonic");
    return ActivateUI();
}

HRESULT DoubleControl::OnAmbientPropertyChange(DISPID id) {
    Note("OnAmbientPropertyChange " + std::to_string(id));
    return S_OK;
}

HRESULT DoubleControl::FreezeEvents(BOOL freeze) {
    Note(freeze ? "FreezeEvents" : "ThawEvents");
    return S_OK;
}

HRESULT DoubleControl::GetClassID(CLSID* id) {
    *id = CLSID_DoubleControl;
    return S_OK;
}

HRESULT DoubleControl::Load(IStream* stream) {
    Note("Load");
    wchar_t text[64] = L"";
    ULONG read = 0;
    const HRESULT result = stream->Read(text, sizeof text - sizeof *text, &read);
    if (SUCCEEDED(result)) text_.assign(text, read / sizeof *text);
    return result;
}

HRESULT DoubleControl::Save(IStream* stream, BOOL) {
    Note("Save");
    return stream->Write(text_.data(), static_cast<ULONG>(text_.size() * sizeof(wchar_t)), nullptr);
}

HRESULT DoubleControl::InitNew() {
    Note("InitNew");
    text_ = L"new";
    return S_OK;
}

HRESULT DoubleControl::QuickActivate(QACONTAINER* container, QACONTROL* control) {
    Note("QuickActivate");
    site_ = container->pClientSite;
    advise_ = container->pAdviseSink;
    return GetMiscStatus(DVASPECT_CONTENT, &control->dwMiscStatus);
}
