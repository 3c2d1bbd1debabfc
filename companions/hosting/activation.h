#pragma once

#include "hosting/ref.h"

#include <vector>

namespace hosting {

/// How a container brings a control to life. The defaults are those of an ordinary form.
struct Activation {
    /// When the control learns of its site.
    enum class SiteOrder {
        asControlAsks,  ///< before its state where OLEMISC_SETCLIENTSITEFIRST is set, else after
        beforeState,
        afterState
    };

    SiteOrder siteOrder = SiteOrder::asControlAsks;
    bool quick = false;        ///< use IQuickActivate where the control has it
    IStream* state = nullptr;  ///< load this state; without it the control is told it is new
    bool initialise = true;    ///< call Load or InitNew at all
    bool advise = true;        ///< connect advise and property-notification sinks
    bool extent = true;        ///< negotiate the size in himetric before showing
    bool objectRects = true;   ///< SetObjectRects after the verbs
    std::vector<LONG> verbs = {
        OLEIVERB_INPLACEACTIVATE};  ///< in this order, the first failure ends
};

}  // namespace hosting
