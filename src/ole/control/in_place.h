#pragma once

#include <oleidl.h>

#include "ole/unknown.h"

namespace ole {

class Control;

/// A control's life inside a container's window: from passive through in-place active (its window
/// is shown) to UI active (it has the focus and the keys), and back.
class InPlace final : public Part<IOleInPlaceObject, IOleInPlaceActiveObject> {
public:
    InPlace(IUnknown& whole, Control& control) : Part(whole), whole_(whole), control_(control) {}

    bool IsActive() const { return active_; }

    /// Shows the window in the container's; with `ui` it takes the focus too.
    HRESULT Activate(bool ui);
    /// An inner window got the focus by itself: tells the container that the control is UI active.
    void BecomeUiActive();
    /// Asks the container to give an active control another size, in pixels.
    void RequestSize(SIZE size);

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;

    STDMETHODIMP TranslateAccelerator(LPMSG message) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;

private:
    HRESULT Show();
    void Place(const RECT& position);

    IUnknown& whole_;
    Control& control_;
    Ref<IOleInPlaceSite> site_;
    Ref<IOleInPlaceFrame> frame_;
    Ref<IOleInPlaceUIWindow> document_;
    RECT position_ = {};
    bool active_ = false;
    bool uiActive_ = false;
    bool asking_ = false;
};

}  // namespace ole
