#include "ole/control/quick_activation.h"

#include "ole/control/control.h"

namespace ole {

namespace {

DWORD Connect(ConnectionPoints& points, REFIID id, IUnknown* sink) {
    DWORD cookie = 0;
    if (sink == nullptr) return cookie;
    Ref<IConnectionPoint> point;
    Check(points.FindConnectionPoint(id, point.GetAddressOf()));
    Check(point->Advise(sink, &cookie));
    return cookie;
}

}  // namespace

HRESULT QuickActivation::QuickActivate(QACONTAINER* container, QACONTROL* answer) {
    if (container == nullptr || answer == nullptr) return E_POINTER;
    if (container->cbSize < sizeof(QACONTAINER) || answer->cbSize < sizeof(QACONTROL)) {
        return E_INVALIDARG;
    }
    const Ref<IUnknown> kept = &whole_;
    const ULONG size = answer->cbSize;
    *answer = {};
    answer->cbSize = size;
    return Guard({}, IID_IQuickActivate, [&] {
        control_.SetSite(container->pClientSite);
        if (container->pAdviseSink != nullptr) {
            Check(Query<IViewObjectEx>(&whole_)->SetAdvise(DVASPECT_CONTENT, 0,
                                                           container->pAdviseSink));
        }
        ConnectionPoints& points = control_.Events();
        answer->dwPropNotifyCookie =
            Connect(points, IID_IPropertyNotifySink, container->pPropertyNotifySink);
        answer->dwEventCookie = Connect(points, control_.Class().events, container->pUnkEventSink);
        answer->dwMiscStatus = control_.MiscStatus();
        answer->dwViewStatus = VIEWSTATUS_OPAQUE;
    });
}

HRESULT QuickActivation::SetContentExtent(LPSIZEL extent) {
    if (extent == nullptr) return E_POINTER;
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IQuickActivate, [&] { control_.SetExtent(*extent); });
}

HRESULT QuickActivation::GetContentExtent(LPSIZEL extent) {
    if (extent == nullptr) return E_POINTER;
    return Guard({}, IID_IQuickActivate, [&] { *extent = control_.Extent(); });
}

}  // namespace ole
