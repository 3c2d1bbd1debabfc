#include "ole/control/control_part.h"

#include "ole/control/control.h"

namespace ole {

HRESULT ControlPart::GetControlInfo(CONTROLINFO* info) {
    if (info == nullptr) return E_POINTER;
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return S_OK;
}

HRESULT ControlPart::OnMnemonic(MSG*) {
    return S_OK;
}

HRESULT ControlPart::OnAmbientPropertyChange(DISPID property) {
    const Ref<IUnknown> kept = &whole_;
    return Guard({}, IID_IOleControl, [&] { control_.RefreshAmbient(property); });
}

HRESULT ControlPart::FreezeEvents(BOOL freeze) {
    control_.Events().Freeze(freeze != FALSE);
    return S_OK;
}

}  // namespace ole
