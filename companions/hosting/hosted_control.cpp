#include "hosting/hosted_control.h"

#include "hosting/class_id.h"
#include "hosting/error.h"
#include "hosting/form.h"
#include "hosting/frame.h"
#include "hosting/metrics.h"
#include "hosting/site.h"

namespace hosting {

HostedControl::HostedControl(Form& form, std::wstring name, SiteObserver* observer)
    : form_(form),
      name_(std::move(name)),
      ambients_(form.Ambients()),
      link_(std::make_shared<SiteLink>(SiteLink{this, observer})),
      site_(Make<Site>(link_)),
      frame_(Make<Frame>(link_)) {
    ambients_.Set(DISPID_AMBIENT_DISPLAYNAME, name_.c_str());
}

HostedControl::~HostedControl() {
    Close();
    form_.Deactivated(*this);
    link_->control = nullptr;
}

void HostedControl::Create(const std::wstring& progIdOrClassId) {
    SetControl(CreateObject(progIdOrClassId));
}

void HostedControl::Take(IUnknown* control) {
    SetControl(control);
}

void HostedControl::SetControl(Ref<IUnknown> control) {
    Close();
    object_ = Query<IOleObject>(control.Get());
    if (!object_) throw Error(E_NOINTERFACE, L"The object of " + name_ + L" is no control.");
    control_ = std::move(control);
    miscStatus_ = 0;
    const Ref<IOleObject> object = object_;
    object->GetMiscStatus(DVASPECT_CONTENT, &miscStatus_);
}

void HostedControl::Activate(const RECT& bounds, const Activation& activation) {
    bounds_ = bounds;
    const std::shared_ptr<SiteLink> link = link_;
    const auto stillHere = [&link] {
        if (!link->control) throw Error(E_ABORT, L"The control was removed while it came to life.");
    };
    const auto check = [&](HRESULT result, const wchar_t* action) {
        stillHere();
        Check(result, action);
    };

    using SiteOrder = Activation::SiteOrder;
    const bool siteFirst = activation.siteOrder == SiteOrder::beforeState ||
                           (activation.siteOrder == SiteOrder::asControlAsks &&
                            (miscStatus_ & static_cast<DWORD>(OLEMISC_SETCLIENTSITEFIRST)));

    const bool quick = activation.quick && SUCCEEDED(QuickActivate());
    stillHere();
    if (!quick && siteFirst) check(SetClientSite(), L"setting the client site");
    if (activation.initialise) {
        if (activation.state)
            check(Load(activation.state), L"loading the control's state");
        else
            check(InitNew(), L"initialising the control");
    }
    if (!quick && !siteFirst) check(SetClientSite(), L"setting the client site");
    if (activation.advise) {
        Advise();
        stillHere();
    }
    if (activation.extent) {
        SetExtent({bounds.right - bounds.left, bounds.bottom - bounds.top});
        stillHere();
    }
    for (const LONG verb : activation.verbs) check(DoVerb(verb), L"activating the control");
    if (activation.objectRects && inPlaceActive_) {
        SetObjectRects();
        stillHere();
    }
}

void HostedControl::Close() noexcept {
    const std::shared_ptr<SiteLink> link = link_;
    const auto steps = {&HostedControl::UIDeactivate, &HostedControl::InPlaceDeactivate,
                        &HostedControl::Unadvise, &HostedControl::CloseObject,
                        &HostedControl::TakeSiteAway};
    for (const auto step : steps) {
        (this->*step)();
        if (!link->control) return;
    }
    // Releasing the control may call back: what it finds here is already empty.
    const Ref<IOleObject> object = std::move(object_);
    const Ref<IOleInPlaceObject> inPlaceObject = std::move(inPlaceObject_);
    const Ref<IOleInPlaceActiveObject> activeObject = std::move(activeObject_);
    const Ref<IUnknown> control = std::move(control_);
    inPlaceActive_ = false;
    uiActive_ = false;
    form_.Deactivated(*this);
}

HWND HostedControl::Window() const {
    HWND window = nullptr;
    if (const auto place = Query<IOleWindow>(control_.Get())) place->GetWindow(&window);
    return window;
}

void HostedControl::Move(const RECT& bounds) {
    const std::shared_ptr<SiteLink> link = link_;
    const bool resized = bounds.right - bounds.left != bounds_.right - bounds_.left ||
                         bounds.bottom - bounds.top != bounds_.bottom - bounds_.top;
    bounds_ = bounds;
    if (resized) SetExtent({bounds.right - bounds.left, bounds.bottom - bounds.top});
    if (!link->control) return;
    // The control may have asked for another size on the way, at its former place.
    OffsetRect(&bounds_, bounds.left - bounds_.left, bounds.top - bounds_.top);
    SetObjectRects();
}

bool HostedControl::IsTabStop() const {
    constexpr DWORD neverActive =
        OLEMISC_INVISIBLEATRUNTIME | OLEMISC_NOUIACTIVATE | OLEMISC_ACTSLIKELABEL;
    if (!inPlaceActive_ || leaving_ || (miscStatus_ & neverActive)) return false;
    const HWND window = Window();
    return !window || (IsWindowVisible(window) && IsWindowEnabled(window));
}

bool HostedControl::TranslateAccelerator(MSG& message) {
    Ref<IOleInPlaceActiveObject> active = activeObject_;
    if (!active) active = Query<IOleInPlaceActiveObject>(control_.Get());
    return active && active->TranslateAccelerator(&message) == S_OK;
}

void HostedControl::AmbientChanged(DISPID id) {
    if (const auto control = Query<IOleControl>(control_.Get()))
        control->OnAmbientPropertyChange(id);
}

IOleClientSite* HostedControl::ClientSite() const noexcept {
    return site_.Get();
}

void HostedControl::BecameInPlaceActive() {
    inPlaceActive_ = true;
    inPlaceObject_ = Query<IOleInPlaceObject>(control_.Get());
}

void HostedControl::BecameInPlaceInactive() {
    inPlaceActive_ = false;
    const Ref<IOleInPlaceObject> before = std::move(inPlaceObject_);
}

}  // namespace hosting
