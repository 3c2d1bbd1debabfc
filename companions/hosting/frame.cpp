#include "hosting/frame.h"

#include "hosting/form.h"
#include "hosting/hosted_control.h"

namespace hosting {

bool Frame::Offers(REFIID iid) {
    return !link_->observer || link_->observer->Offers(iid);
}

HRESULT Frame::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = nullptr;
    return Answer("IOleInPlaceFrame", "GetWindow", {}, [window](HostedControl& control) {
        *window = GetAncestor(control.form_.Window(), GA_ROOT);
        return S_OK;
    });
}

HRESULT Frame::ContextSensitiveHelp(BOOL) {
    return Answer("IOleInPlaceFrame", "ContextSensitiveHelp", {}, S_OK);
}

HRESULT Frame::GetBorder(RECT* border) {
    if (!border) return E_POINTER;
    *border = {};
    return Answer("IOleInPlaceFrame", "GetBorder", {}, INPLACE_E_NOTOOLSPACE);
}

HRESULT Frame::RequestBorderSpace(const BORDERWIDTHS*) {
    return Answer("IOleInPlaceFrame", "RequestBorderSpace", {}, INPLACE_E_NOTOOLSPACE);
}

HRESULT Frame::SetBorderSpace(const BORDERWIDTHS* widths) {
    // Null says that the object has no tools, which leaves the frame as it is.
    return Answer("IOleInPlaceFrame", "SetBorderSpace", widths ? "widths" : "none",
                  widths ? INPLACE_E_NOTOOLSPACE : S_OK);
}

HRESULT Frame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) {
    return Answer("IOleInPlaceFrame", "SetActiveObject", object ? "object" : "none",
                  [object](HostedControl& control) {
                      const Ref<IOleInPlaceActiveObject> before = control.activeObject_;
                      control.activeObject_ = object;
                      return S_OK;
                  });
}

HRESULT Frame::InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) {
    return Answer("IOleInPlaceFrame", "InsertMenus", {}, S_OK);
}

HRESULT Frame::SetMenu(HMENU, HOLEMENU, HWND) {
    return Answer("IOleInPlaceFrame", "SetMenu", {}, S_OK);
}

HRESULT Frame::RemoveMenus(HMENU) {
    return Answer("IOleInPlaceFrame", "RemoveMenus", {}, S_OK);
}

HRESULT Frame::SetStatusText(LPCOLESTR) {
    return Answer("IOleInPlaceFrame", "SetStatusText", {}, S_OK);
}

HRESULT Frame::EnableModeless(BOOL enable) {
    return Answer("IOleInPlaceFrame", "EnableModeless", enable ? "enable" : "disable", S_OK);
}

HRESULT Frame::TranslateAccelerator(MSG*, WORD) {
    return Answer("IOleInPlaceFrame", "TranslateAccelerator", {}, S_FALSE);
}

}  // namespace hosting
