#pragma once

#include "hosting/ref.h"
#include "hosting/site_link.h"

namespace hosting {

/// Where a control's window goes, and when it becomes active.
class InPlaceSite : public IOleInPlaceSiteEx, protected LinkedToControl {
public:
    using Interface = IOleInPlaceSiteEx;
    explicit InPlaceSite(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override;
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, RECT* position,
                                               RECT* clip, OLEINPLACEFRAMEINFO* info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE extent) override;
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL undoable) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override;
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override;
    HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT* position) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivateEx(BOOL noRedraw) override;
    HRESULT STDMETHODCALLTYPE RequestUIActivate() override;

protected:
    ~InPlaceSite() = default;
};

}  // namespace hosting
