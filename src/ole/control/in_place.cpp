#include "ole/control/in_place.h"

#include <ocidl.h>

#include "ole/control/control.h"

namespace ole {

namespace {

SIZE SizeOf(const RECT& rectangle) {
    return {rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
}

DWORD KeyModifiers() {
    return (GetKeyState(VK_SHIFT) < 0 ? 1u : 0u) | (GetKeyState(VK_CONTROL) < 0 ? 2u : 0u) |
           (GetKeyState(VK_MENU) < 0 ? 4u : 0u);
}

/// Where a window goes when no container shows it.
void Park(HWND window) {
    ShowWindow(window, SW_HIDE);
    SetParent(window, nullptr);
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    SetWindowLongPtrW(window, GWL_STYLE,
                      (style & ~static_cast<LONG_PTR>(WS_CHILD)) | static_cast<LONG_PTR>(WS_POPUP));
}

void Embed(HWND window, HWND parent) {
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    SetWindowLongPtrW(window, GWL_STYLE, (style & ~static_cast<LONG_PTR>(WS_POPUP)) | WS_CHILD);
    SetParent(window, parent);
}

}  // namespace

HRESULT InPlace::Activate(bool ui) {
    const Ref<IUnknown> kept = &whole_;
    const HRESULT shown = Show();
    if (FAILED(shown)) return shown;
    const Ref<IOleClientSite> client = control_.Container().Client();
    if (client) client->ShowObject();
    if (!ui || !active_) return S_OK;
    BecomeUiActive();
    if (active_ && uiActive_) {
        const HWND target = control_.FocusWindow();
        if (GetFocus() != target) SetFocus(target);
    }
    return S_OK;
}

HRESULT InPlace::Show() {
    if (active_) return S_OK;
    const Ref<IOleInPlaceSite> site = control_.Container().As<IOleInPlaceSite>();
    if (!site) return OLE_E_NOT_INPLACEACTIVE;
    if (site->CanInPlaceActivate() != S_OK) return OLE_E_NOT_INPLACEACTIVE;
    site_ = site;
    active_ = true;
    site->OnInPlaceActivate();
    HWND parent = nullptr;
    RECT position = {};
    RECT clip = {};
    OLEINPLACEFRAMEINFO info = {};
    info.cb = sizeof(info);
    Ref<IOleInPlaceFrame> frame;
    Ref<IOleInPlaceUIWindow> document;
    HRESULT result = site->GetWindow(&parent);
    if (SUCCEEDED(result)) {
        result = site->GetWindowContext(frame.GetAddressOf(), document.GetAddressOf(), &position,
                                        &clip, &info);
    }
    if (!active_ || site_.Get() != site.Get()) return E_UNEXPECTED;
    if (FAILED(result)) {
        InPlaceDeactivate();
        return result;
    }
    frame_ = frame;
    document_ = document;
    const HWND window = control_.OuterWindow();
    Embed(window, parent);
    control_.RefreshAmbient(DISPID_UNKNOWN);
    Place(position);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    return S_OK;
}

void InPlace::BecomeUiActive() {
    if (!active_ || uiActive_) return;
    const Ref<IUnknown> kept = &whole_;
    const Ref<IOleInPlaceSite> site = site_;
    uiActive_ = true;
    if (FAILED(site->OnUIActivate())) {
        uiActive_ = false;
        return;
    }
    const Ref<IOleInPlaceFrame> frame = frame_;
    const Ref<IOleInPlaceUIWindow> document = document_;
    if (uiActive_ && frame) frame->SetActiveObject(this, nullptr);
    if (uiActive_ && document) document->SetActiveObject(this, nullptr);
    if (uiActive_ && frame) frame->SetBorderSpace(nullptr);
}

void InPlace::RequestSize(SIZE size) {
    if (!active_ || asking_) return;
    const Ref<IUnknown> kept = &whole_;
    const Ref<IOleInPlaceSite> site = site_;
    RECT wanted = position_;
    wanted.right = wanted.left + size.cx;
    wanted.bottom = wanted.top + size.cy;
    asking_ = true;
    site->OnPosRectChange(&wanted);
    asking_ = false;
}

void InPlace::Place(const RECT& position) {
    position_ = position;
    control_.Resize(SizeOf(position));
    if (!active_) return;
    SetWindowPos(control_.OuterWindow(), nullptr, position_.left, position_.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HRESULT InPlace::GetWindow(HWND* window) {
    if (window == nullptr) return E_POINTER;
    *window = nullptr;
    return Guard({}, IID_IOleInPlaceObject, [&] { *window = control_.OuterWindow(); });
}

HRESULT InPlace::ContextSensitiveHelp(BOOL) {
    return S_OK;
}

HRESULT InPlace::InPlaceDeactivate() {
    if (!active_) return S_OK;
    const Ref<IUnknown> kept = &whole_;
    UIDeactivate();
    if (!active_) return S_OK;
    active_ = false;
    Park(control_.OuterWindow());
    frame_.Reset();
    document_.Reset();
    if (const Ref<IOleInPlaceSite> site = std::move(site_)) site->OnInPlaceDeactivate();
    return S_OK;
}

HRESULT InPlace::UIDeactivate() {
    if (!uiActive_) return S_OK;
    const Ref<IUnknown> kept = &whole_;
    uiActive_ = false;
    const Ref<IOleInPlaceSite> site = site_;
    const Ref<IOleInPlaceFrame> frame = frame_;
    const Ref<IOleInPlaceUIWindow> document = document_;
    if (frame) frame->SetActiveObject(nullptr, nullptr);
    if (document) document->SetActiveObject(nullptr, nullptr);
    if (site) site->OnUIDeactivate(FALSE);
    return S_OK;
}

HRESULT InPlace::SetObjectRects(LPCRECT position, LPCRECT) {
    if (position == nullptr) return E_POINTER;
    if (!active_) return OLE_E_NOT_INPLACEACTIVE;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IOleInPlaceObject, [&] { Place(*position); });
}

HRESULT InPlace::ReactivateAndUndo() {
    return INPLACE_E_NOTUNDOABLE;
}

HRESULT InPlace::TranslateAccelerator(LPMSG message) {
    if (message == nullptr) return E_POINTER;
    const Ref<IUnknown> kept = &whole_;
    if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST) return S_FALSE;
    if (control_.UsesKey(*message)) {
        TranslateMessage(message);
        DispatchMessageW(message);
        return S_OK;
    }
    const auto site = control_.Container().As<IOleControlSite>();
    return site ? site->TranslateAccelerator(message, KeyModifiers()) : S_FALSE;
}

HRESULT InPlace::OnFrameWindowActivate(BOOL) {
    return S_OK;
}

HRESULT InPlace::OnDocWindowActivate(BOOL) {
    return S_OK;
}

HRESULT InPlace::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) {
    return S_OK;
}

HRESULT InPlace::EnableModeless(BOOL) {
    return S_OK;
}

}  // namespace ole
