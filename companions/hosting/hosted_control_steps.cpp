// The steps of an activation. Each holds what it calls, since the call may destroy the hosted
// control.
#include "hosting/form.h"
#include "hosting/hosted_control.h"
#include "hosting/metrics.h"
#include "hosting/site.h"

namespace hosting {

namespace {

bool IsTrue(const AmbientProperties& ambients, DISPID id) {
    const _variant_t* value = ambients.Find(id);
    return value && value->vt == VT_BOOL && value->boolVal != VARIANT_FALSE;
}

DWORD QuickFlags(const AmbientProperties& ambients) {
    const std::pair<DISPID, DWORD> flags[] = {
        {DISPID_AMBIENT_SHOWHATCHING, QACONTAINER_SHOWHATCHING},
        {DISPID_AMBIENT_SHOWGRABHANDLES, QACONTAINER_SHOWGRABHANDLES},
        {DISPID_AMBIENT_USERMODE, QACONTAINER_USERMODE},
        {DISPID_AMBIENT_DISPLAYASDEFAULT, QACONTAINER_DISPLAYASDEFAULT},
        {DISPID_AMBIENT_UIDEAD, QACONTAINER_UIDEAD},
        {DISPID_AMBIENT_AUTOCLIP, QACONTAINER_AUTOCLIP},
        {DISPID_AMBIENT_MESSAGEREFLECT, QACONTAINER_MESSAGEREFLECT},
        {DISPID_AMBIENT_SUPPORTSMNEMONICS, QACONTAINER_SUPPORTSMNEMONICS}};
    DWORD result = 0;
    for (const auto& [id, flag] : flags)
        if (IsTrue(ambients, id)) result |= flag;
    return result;
}

LONG NumberOf(const AmbientProperties& ambients, DISPID id, LONG otherwise) {
    const _variant_t* value = ambients.Find(id);
    return value && value->vt == VT_I4 ? value->lVal : otherwise;
}

Ref<IFont> FontOf(const AmbientProperties& ambients) {
    const _variant_t* value = ambients.Find(DISPID_AMBIENT_FONT);
    return value && value->vt == VT_DISPATCH ? Query<IFont>(value->pdispVal) : nullptr;
}

Ref<IConnectionPoint> PropertyPoint(IUnknown* control) {
    Ref<IConnectionPoint> point;
    if (const auto container = Query<IConnectionPointContainer>(control))
        container->FindConnectionPoint(IID_IPropertyNotifySink, point.GetAddressOf());
    return point;
}

}  // namespace

template <class Call>
HRESULT HostedControl::Leave(Call&& call) {
    const std::shared_ptr<SiteLink> link = link_;
    const bool before = std::exchange(leaving_, true);
    const HRESULT result = call();
    if (link->control) leaving_ = before;
    return result;
}

HRESULT HostedControl::SetClientSite() {
    const Ref<IOleObject> object = object_;
    return object ? object->SetClientSite(site_.Get()) : E_UNEXPECTED;
}

HRESULT HostedControl::InitNew() {
    if (const auto stream = Query<IPersistStreamInit>(control_.Get())) return stream->InitNew();
    if (const auto bag = Query<IPersistPropertyBag>(control_.Get())) return bag->InitNew();
    return S_FALSE;
}

HRESULT HostedControl::Load(IStream* state) {
    if (const auto stream = Query<IPersistStreamInit>(control_.Get())) return stream->Load(state);
    if (const auto stream = Query<IPersistStream>(control_.Get())) return stream->Load(state);
    return E_NOINTERFACE;
}

HRESULT HostedControl::Save(IStream* state, bool clearDirty) {
    if (const auto stream = Query<IPersistStreamInit>(control_.Get()))
        return stream->Save(state, clearDirty);
    if (const auto stream = Query<IPersistStream>(control_.Get()))
        return stream->Save(state, clearDirty);
    return E_NOINTERFACE;
}

HRESULT HostedControl::QuickActivate() {
    const auto quick = Query<IQuickActivate>(control_.Get());
    if (!quick) return E_NOINTERFACE;
    const std::shared_ptr<SiteLink> link = link_;
    const Ref<Site> site = site_;
    const Ref<IFont> font = FontOf(ambients_);
    QACONTAINER container{};
    container.cbSize = sizeof container;
    container.pClientSite = site.Get();
    container.pAdviseSink = site.Get();
    container.pPropertyNotifySink = site.Get();
    container.dwAmbientFlags = QuickFlags(ambients_);
    container.colorFore = static_cast<OLE_COLOR>(NumberOf(ambients_, DISPID_AMBIENT_FORECOLOR, 0));
    container.colorBack = static_cast<OLE_COLOR>(NumberOf(ambients_, DISPID_AMBIENT_BACKCOLOR, 0));
    container.pFont = font.Get();
    container.lcid =
        NumberOf(ambients_, DISPID_AMBIENT_LOCALEID, static_cast<LONG>(GetUserDefaultLCID()));
    container.pOleControlSite = site.Get();
    container.pServiceProvider = site.Get();
    QACONTROL control{};
    control.cbSize = sizeof control;
    const HRESULT result = quick->QuickActivate(&container, &control);
    if (SUCCEEDED(result) && link->control) {
        miscStatus_ = control.dwMiscStatus;
        propertyAdvise_ = control.dwPropNotifyCookie;
        viewAdvised_ = true;
    }
    return result;
}

HRESULT HostedControl::Advise() {
    const std::shared_ptr<SiteLink> link = link_;
    const Ref<Site> site = site_;
    const Ref<IOleObject> object = object_;
    if (!object) return E_UNEXPECTED;
    IAdviseSink* const sink = site.Get();
    HRESULT result = S_OK;
    if (!oleAdvise_) {
        DWORD cookie = 0;
        result = object->Advise(sink, &cookie);
        if (!link->control) return E_ABORT;
        oleAdvise_ = SUCCEEDED(result) ? cookie : 0;
    }
    if (const auto view = Query<IViewObject>(object.Get()); view && !viewAdvised_) {
        const bool advised = SUCCEEDED(view->SetAdvise(DVASPECT_CONTENT, 0, sink));
        if (!link->control) return E_ABORT;
        viewAdvised_ = advised;
    }
    if (const auto point = PropertyPoint(object.Get()); point && !propertyAdvise_) {
        DWORD cookie = 0;
        IPropertyNotifySink* const propertySink = site.Get();
        const bool advised = SUCCEEDED(point->Advise(propertySink, &cookie));
        if (!link->control) return E_ABORT;
        propertyAdvise_ = advised ? cookie : 0;
    }
    return result;
}

HRESULT HostedControl::Unadvise() {
    const Ref<IOleObject> object = object_;
    if (!object) return S_FALSE;
    const DWORD oleCookie = std::exchange(oleAdvise_, 0);
    const DWORD propertyCookie = std::exchange(propertyAdvise_, 0);
    const bool view = std::exchange(viewAdvised_, false);
    if (propertyCookie)
        if (const auto point = PropertyPoint(object.Get())) point->Unadvise(propertyCookie);
    if (view)
        if (const auto viewObject = Query<IViewObject>(object.Get()))
            viewObject->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
    if (oleCookie) object->Unadvise(oleCookie);
    return S_OK;
}

HRESULT HostedControl::SetExtent(SIZE pixels) {
    const Ref<IOleObject> object = object_;
    if (!object) return E_UNEXPECTED;
    SIZEL size = PixelsToHimetric(pixels);
    return object->SetExtent(DVASPECT_CONTENT, &size);
}

SIZE HostedControl::Extent() const {
    const Ref<IOleObject> object = object_;
    SIZEL size{};
    if (!object || FAILED(object->GetExtent(DVASPECT_CONTENT, &size))) return {};
    return HimetricToPixels(size);
}

HRESULT HostedControl::DoVerb(LONG verb, MSG* message) {
    const Ref<IOleObject> object = object_;
    const Ref<Site> site = site_;
    if (!object) return E_UNEXPECTED;
    const RECT bounds = bounds_;
    return object->DoVerb(verb, message, site.Get(), 0, form_.Window(), &bounds);
}

HRESULT HostedControl::SetObjectRects() {
    const Ref<IOleInPlaceObject> object = inPlaceObject_;
    if (!object) return S_FALSE;
    const RECT bounds = bounds_;
    return object->SetObjectRects(&bounds, &bounds);
}

HRESULT HostedControl::FreezeEvents(bool freeze) {
    const auto control = Query<IOleControl>(control_.Get());
    return control ? control->FreezeEvents(freeze) : E_NOINTERFACE;
}

HRESULT HostedControl::UIDeactivate() {
    const Ref<IOleInPlaceObject> object = inPlaceObject_;
    return object && uiActive_ ? object->UIDeactivate() : S_FALSE;
}

HRESULT HostedControl::InPlaceDeactivate() {
    const Ref<IOleInPlaceObject> object = inPlaceObject_;
    if (!object || !inPlaceActive_) return S_FALSE;
    return Leave([&object] { return object->InPlaceDeactivate(); });
}

HRESULT HostedControl::CloseObject() {
    const Ref<IOleObject> object = object_;
    if (!object) return S_FALSE;
    return Leave([&object] { return object->Close(OLECLOSE_NOSAVE); });
}

HRESULT HostedControl::TakeSiteAway() {
    const Ref<IOleObject> object = object_;
    return object ? object->SetClientSite(nullptr) : S_FALSE;
}

}  // namespace hosting
