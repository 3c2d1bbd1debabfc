#include "hosting/control_site.h"

#include "hosting/form.h"
#include "hosting/hosted_control.h"
#include "hosting/metrics.h"

namespace hosting {

HRESULT ControlSite::OnControlInfoChanged() {
    return Answer("IOleControlSite", "OnControlInfoChanged", {}, S_OK);
}

HRESULT ControlSite::LockInPlaceActive(BOOL lock) {
    return Answer("IOleControlSite", "LockInPlaceActive", lock ? "lock" : "unlock", S_OK);
}

HRESULT ControlSite::GetExtendedControl(IDispatch** extended) {
    if (!extended) return E_POINTER;
    *extended = nullptr;
    return Answer("IOleControlSite", "GetExtendedControl", {}, E_NOTIMPL);
}

HRESULT ControlSite::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) {
    if (!himetric || !container) return E_POINTER;
    return Answer("IOleControlSite", "TransformCoords", std::to_string(flags), [=](HostedControl&) {
        // The container's unit is the pixel.
        if (flags & XFORMCOORDS_HIMETRICTOCONTAINER) {
            const SIZE pixels = HimetricToPixels({himetric->x, himetric->y});
            container->x = static_cast<float>(pixels.cx);
            container->y = static_cast<float>(pixels.cy);
            return S_OK;
        }
        if (flags & XFORMCOORDS_CONTAINERTOHIMETRIC) {
            const SIZE size = PixelsToHimetric(
                {static_cast<LONG>(container->x), static_cast<LONG>(container->y)});
            himetric->x = size.cx;
            himetric->y = size.cy;
            return S_OK;
        }
        return E_INVALIDARG;
    });
}

HRESULT ControlSite::TranslateAccelerator(MSG* message, DWORD modifiers) {
    if (!message) return E_POINTER;
    return Answer("IOleControlSite", "TranslateAccelerator",
                  std::to_string(message->message) + " " + std::to_string(message->wParam) + " " +
                      std::to_string(modifiers),
                  [message](HostedControl& control) {
                      return control.form_.TranslateKey(*message) ? S_OK : S_FALSE;
                  });
}

HRESULT ControlSite::OnFocus(BOOL gotFocus) {
    return Answer("IOleControlSite", "OnFocus", gotFocus ? "got" : "lost", S_OK);
}

HRESULT ControlSite::ShowPropertyFrame() {
    return Answer("IOleControlSite", "ShowPropertyFrame", {}, E_NOTIMPL);
}

HRESULT AmbientDispatch::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT AmbientDispatch::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT AmbientDispatch::GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) {
    if (!ids) return E_POINTER;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
}

HRESULT AmbientDispatch::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS*, VARIANT* result,
                                EXCEPINFO*, UINT*) {
    return Answer("IDispatch", "Invoke", std::to_string(id), [=](HostedControl& control) {
        const _variant_t* value = control.ambients_.Find(id);
        if (!value || !(kind & DISPATCH_PROPERTYGET)) return DISP_E_MEMBERNOTFOUND;
        return result ? VariantCopy(result, const_cast<_variant_t*>(value)) : S_OK;
    });
}

}  // namespace hosting
