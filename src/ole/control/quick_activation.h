#pragma once

#include <ocidl.h>

#include "ole/unknown.h"

namespace ole {

class Control;

/// Does in one call what a container otherwise asks of a new control in ten.
class QuickActivation final : public Part<IQuickActivate> {
public:
    QuickActivation(IUnknown& whole, Control& control)
        : Part(whole), whole_(whole), control_(control) {}

    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* answer) override;
    STDMETHODIMP SetContentExtent(LPSIZEL extent) override;
    STDMETHODIMP GetContentExtent(LPSIZEL extent) override;

private:
    IUnknown& whole_;
    Control& control_;
};

}  // namespace ole
