#include "hosting/in_place_site.h"

#include "hosting/form.h"
#include "hosting/frame.h"
#include "hosting/hosted_control.h"

namespace hosting {

HRESULT InPlaceSite::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = nullptr;
    return Answer("IOleInPlaceSite", "GetWindow", {}, [window](HostedControl& control) {
        *window = control.form_.Window();
        return S_OK;
    });
}

HRESULT InPlaceSite::ContextSensitiveHelp(BOOL) {
    return Answer("IOleInPlaceSite", "ContextSensitiveHelp", {}, S_OK);
}

HRESULT InPlaceSite::CanInPlaceActivate() {
    return Answer("IOleInPlaceSite", "CanInPlaceActivate", {}, S_OK);
}

HRESULT InPlaceSite::OnInPlaceActivate() {
    return Answer("IOleInPlaceSite", "OnInPlaceActivate", {}, [](HostedControl& control) {
        control.BecameInPlaceActive();
        return S_OK;
    });
}

HRESULT InPlaceSite::OnUIActivate() {
    return Answer("IOleInPlaceSite", "OnUIActivate", {}, [](HostedControl& control) {
        control.uiActive_ = true;
        control.form_.Activated(control);
        return S_OK;
    });
}

HRESULT InPlaceSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                      RECT* position, RECT* clip, OLEINPLACEFRAMEINFO* info) {
    if (!frame || !document || !position || !clip || !info) return E_POINTER;
    *frame = nullptr;
    *document = nullptr;
    *position = {};
    *clip = {};
    return Answer("IOleInPlaceSite", "GetWindowContext", {}, [=](HostedControl& control) {
        Ref<IOleInPlaceFrame> copy = control.frame_;
        *frame = copy.Detach();
        *position = control.bounds_;
        *clip = control.bounds_;
        info->fMDIApp = FALSE;
        info->hwndFrame = GetAncestor(control.form_.Window(), GA_ROOT);
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return S_OK;
    });
}

HRESULT InPlaceSite::Scroll(SIZE) {
    return Answer("IOleInPlaceSite", "Scroll", {}, E_NOTIMPL);
}

HRESULT InPlaceSite::OnUIDeactivate(BOOL undoable) {
    return Answer("IOleInPlaceSite", "OnUIDeactivate", undoable ? "undoable" : "",
                  [](HostedControl& control) {
                      control.uiActive_ = false;
                      control.form_.Deactivated(control);
                      return S_OK;
                  });
}

HRESULT InPlaceSite::OnInPlaceDeactivate() {
    return Answer("IOleInPlaceSite", "OnInPlaceDeactivate", {}, [](HostedControl& control) {
        control.BecameInPlaceInactive();
        return S_OK;
    });
}

HRESULT InPlaceSite::DiscardUndoState() {
    return Answer("IOleInPlaceSite", "DiscardUndoState", {}, E_NOTIMPL);
}

HRESULT InPlaceSite::DeactivateAndUndo() {
    return Answer("IOleInPlaceSite", "DeactivateAndUndo", {},
                  [](HostedControl& control) { return control.UIDeactivate(); });
}

HRESULT InPlaceSite::OnPosRectChange(const RECT* position) {
    if (!position) return E_POINTER;
    const RECT wanted = *position;
    const std::string details = std::to_string(wanted.left) + " " + std::to_string(wanted.top) +
                                " " + std::to_string(wanted.right) + " " +
                                std::to_string(wanted.bottom);
    return Answer("IOleInPlaceSite", "OnPosRectChange", details,
                  [&wanted, link = link_](HostedControl& control) {
                      const auto accepts = control.onMoveRequest;
                      if (accepts && !accepts(wanted)) return S_OK;
                      if (!link->control) return E_UNEXPECTED;
                      control.bounds_ = wanted;
                      control.SetObjectRects();
                      return S_OK;
                  });
}

HRESULT InPlaceSite::OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) {
    if (noRedraw) *noRedraw = FALSE;
    return Answer("IOleInPlaceSiteEx", "OnInPlaceActivateEx", std::to_string(flags),
                  [](HostedControl& control) {
                      control.BecameInPlaceActive();
                      return S_OK;
                  });
}

HRESULT InPlaceSite::OnInPlaceDeactivateEx(BOOL) {
    return Answer("IOleInPlaceSiteEx", "OnInPlaceDeactivateEx", {}, [](HostedControl& control) {
        control.BecameInPlaceInactive();
        return S_OK;
    });
}

HRESULT InPlaceSite::RequestUIActivate() {
    return Answer("IOleInPlaceSiteEx", "RequestUIActivate", {}, S_OK);
}

}  // namespace hosting
