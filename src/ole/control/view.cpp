#include "ole/control/view.h"

#include "ole/control/control.h"

namespace ole {

void View::SendChanged() {
    const Ref<IAdviseSink> sink = sink_;
    if (!sink) return;
    if ((flags_ & ADVF_ONLYONCE) != 0) sink_.Reset();
    sink->OnViewChange(DVASPECT_CONTENT, -1);
}

HRESULT View::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context, LPCRECTL bounds,
                   LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (context == nullptr || bounds == nullptr) return E_INVALIDARG;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IViewObject, [&] {
        const RECT rectangle = {bounds->left, bounds->top, bounds->right, bounds->bottom};
        const int saved = SaveDC(context);
        control_.Draw(context, rectangle);
        RestoreDC(context, saved);
    });
}

HRESULT View::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) {
    if (colors == nullptr) return E_POINTER;
    *colors = nullptr;
    return S_FALSE;
}

// What a control shows does not change between two calls of its container.
HRESULT View::Freeze(DWORD, LONG, void*, DWORD* token) {
    if (token == nullptr) return E_POINTER;
    *token = 1;
    return S_OK;
}

HRESULT View::Unfreeze(DWORD) {
    return S_OK;
}

HRESULT View::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    aspects_ = aspects;
    flags_ = flags;
    sink_ = sink;
    if ((flags & ADVF_PRIMEFIRST) != 0) SendChanged();
    return S_OK;
}

HRESULT View::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects != nullptr) *aspects = aspects_;
    if (flags != nullptr) *flags = flags_;
    if (sink != nullptr) Ref<IAdviseSink>(sink_).CopyTo(sink);
    return S_OK;
}

HRESULT View::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL extent) {
    if (extent == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return Guard({}, IID_IViewObject2, [&] { *extent = control_.Extent(); });
}

HRESULT View::GetRect(DWORD aspect, LPRECTL rectangle) {
    if (rectangle == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return Guard({}, IID_IViewObjectEx, [&] {
        const SIZE extent = control_.Extent();
        *rectangle = {0, 0, extent.cx, extent.cy};
    });
}

HRESULT View::GetViewStatus(DWORD* status) {
    if (status == nullptr) return E_POINTER;
    *status = VIEWSTATUS_OPAQUE;
    return S_OK;
}

HRESULT View::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* result) {
    if (bounds == nullptr || result == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *result = PtInRect(bounds, point) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

HRESULT View::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rectangle, LONG, DWORD* result) {
    if (bounds == nullptr || rectangle == nullptr || result == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    RECT common;
    *result = IntersectRect(&common, bounds, rectangle) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

HRESULT View::GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC,
                               DVEXTENTINFO* info, LPSIZEL extent) {
    if (info == nullptr || extent == nullptr) return E_POINTER;
    return GetExtent(aspect, index, device, extent);
}

}  // namespace ole
