#pragma once

#include "ole/control/control.h"
#include "ole/control/control_part.h"
#include "ole/control/data.h"
#include "ole/control/in_place.h"
#include "ole/control/ole_object.h"
#include "ole/control/persistence.h"
#include "ole/control/quick_activation.h"
#include "ole/control/view.h"

namespace ole {

/// The interfaces that containers know a control by.
class ControlParts {
public:
    ControlParts(IUnknown& whole, Control& control)
        : inPlace(whole, control),
          object(whole, control, inPlace),
          control_(whole, control),
          view(whole, control),
          data(whole, control),
          persistence_(whole, control, object),
          quickActivation_(whole, control) {}

    void* Find(REFIID id) {
        for (void* found :
             {object.FindInterface(id), inPlace.FindInterface(id), control_.FindInterface(id),
              view.FindInterface(id), data.FindInterface(id), persistence_.FindInterface(id),
              quickActivation_.FindInterface(id)}) {
            if (found != nullptr) return found;
        }
        return nullptr;
    }

    InPlace inPlace;
    OleObject object;

private:
    ControlPart control_;

public:
    View view;
    Data data;

private:
    Persistence persistence_;
    QuickActivation quickActivation_;
};

}  // namespace ole
