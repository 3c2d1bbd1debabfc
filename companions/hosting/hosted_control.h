#pragma once

#include "hosting/activation.h"
#include "hosting/ambient_properties.h"
#include "hosting/ref.h"
#include "hosting/site_observer.h"

#include <functional>
#include <memory>
#include <string>

namespace hosting {

class Form;
class Site;
struct SiteLink;

/// One control in a rectangle of a form's window.
///
/// Activate runs a whole activation sequence; the steps below it are there for containers that
/// want another one. Every member may call the control, and the control its host: a member that
/// may destroy this object on the way (a host that removes the control in an event) says so.
class HostedControl {
public:
    /// `observer` may be null; otherwise it outlives the site, which a control may hold for long.
    HostedControl(Form& form, std::wstring name, SiteObserver* observer = nullptr);
    ~HostedControl();
    HostedControl(const HostedControl&) = delete;
    HostedControl& operator=(const HostedControl&) = delete;

    /// Makes a control from a ProgID or a "{...}" class id. Throws Error.
    void Create(const std::wstring& progIdOrClassId);
    /// Takes a control that exists already. Throws Error where it is no OLE object.
    void Take(IUnknown* control);
    /// Brings the control to life in `bounds` (pixels of the form's window). Throws Error.
    void Activate(const RECT& bounds, const Activation& activation = {});
    /// Deactivates the control, takes its site away and lets go of it. Safe to repeat.
    void Close() noexcept;

    [[nodiscard]] const std::wstring& Name() const noexcept { return name_; }
    [[nodiscard]] Form& GetForm() const noexcept { return form_; }
    [[nodiscard]] IUnknown* Control() const noexcept { return control_.Get(); }
    /// The control's default dispatch interface, null where it has none.
    [[nodiscard]] Ref<IDispatch> Object() const { return Query<IDispatch>(control_.Get()); }
    /// The control's window, null while it has none.
    [[nodiscard]] HWND Window() const;
    [[nodiscard]] DWORD MiscStatus() const noexcept { return miscStatus_; }
    [[nodiscard]] const RECT& Bounds() const noexcept { return bounds_; }
    [[nodiscard]] bool IsInPlaceActive() const noexcept { return inPlaceActive_; }
    [[nodiscard]] bool IsUIActive() const noexcept { return uiActive_; }

    /// Places and sizes the control, in pixels of the form's window.
    void Move(const RECT& bounds);
    void Show() { DoVerb(OLEIVERB_SHOW); }
    void Hide() { DoVerb(OLEIVERB_HIDE); }
    /// Gives the control the focus by activating its user interface. `message` is the key that
    /// led here, so that a control with inner tab stops knows the direction.
    void Focus(MSG* message = nullptr) { DoVerb(OLEIVERB_UIACTIVATE, message); }
    /// Whether the control wants the focus when the user steps through the form with Tab.
    [[nodiscard]] bool IsTabStop() const;
    /// Offers a message to the control's accelerators. True where it was used up.
    bool TranslateAccelerator(MSG& message);

    /// This control's ambient properties; a copy of the form's at first.
    AmbientProperties& Ambients() noexcept { return ambients_; }
    /// Tells the control that an ambient property changed (DISPID_UNKNOWN: any number of them).
    void AmbientChanged(DISPID id = DISPID_UNKNOWN);

    /// Called where the control asks for another place or size; false keeps the present one. The
    /// default accepts.
    std::function<bool(const RECT& wanted)> onMoveRequest;
    /// Called where a bound property has changed (IPropertyNotifySink).
    std::function<void(DISPID)> onPropertyChanged;

    // The steps of an activation, each with the result that the control gave.
    HRESULT SetClientSite();
    HRESULT InitNew();
    HRESULT Load(IStream* state);
    HRESULT Save(IStream* state, bool clearDirty = true);
    HRESULT QuickActivate();
    HRESULT Advise();
    HRESULT SetExtent(SIZE pixels);
    [[nodiscard]] SIZE Extent() const;  ///< in pixels; {0, 0} where the control does not say
    HRESULT DoVerb(LONG verb, MSG* message = nullptr);  ///< may destroy this object
    HRESULT SetObjectRects();
    HRESULT FreezeEvents(bool freeze);
    HRESULT UIDeactivate();
    HRESULT InPlaceDeactivate();
    HRESULT CloseObject();
    HRESULT Unadvise();
    HRESULT TakeSiteAway();

    /// The site object as the control sees it.
    [[nodiscard]] IOleClientSite* ClientSite() const noexcept;

private:
    friend class ClientSite;
    friend class InPlaceSite;
    friend class ControlSite;
    friend class AmbientDispatch;
    friend class PropertyNotifySink;
    friend class Frame;

    void SetControl(Ref<IUnknown> control);
    void BecameInPlaceActive();
    void BecameInPlaceInactive();

    /// Makes a call in which the control's window goes: the focus that falls to the form on the way
    /// must not come back here.
    template <class Call>
    HRESULT Leave(Call&& call);

    Form& form_;
    std::wstring name_;
    AmbientProperties ambients_;
    std::shared_ptr<SiteLink> link_;
    Ref<Site> site_;
    Ref<IOleInPlaceFrame> frame_;
    Ref<IUnknown> control_;
    Ref<IOleObject> object_;
    Ref<IOleInPlaceObject> inPlaceObject_;
    Ref<IOleInPlaceActiveObject> activeObject_;
    RECT bounds_{};
    DWORD miscStatus_ = 0;
    DWORD oleAdvise_ = 0;
    DWORD propertyAdvise_ = 0;
    bool viewAdvised_ = false;
    bool inPlaceActive_ = false;
    bool uiActive_ = false;
    bool leaving_ = false;
};

}  // namespace hosting
