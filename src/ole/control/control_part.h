#pragma once

#include <ocidl.h>

#include "ole/unknown.h"

namespace ole {

class Control;

/// Mnemonics, changes of the surroundings, and events held back while the container asks for it.
class ControlPart final : public Part<IOleControl> {
public:
    ControlPart(IUnknown& whole, Control& control)
        : Part(whole), whole_(whole), control_(control) {}

    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
    STDMETHODIMP OnMnemonic(MSG* message) override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID property) override;
    STDMETHODIMP FreezeEvents(BOOL freeze) override;

private:
    IUnknown& whole_;
    Control& control_;
};

}  // namespace ole
