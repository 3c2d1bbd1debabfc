#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace hosting {

/// One call of a control to its site or to the site's frame.
struct SiteCall {
    std::string_view interfaceName;  ///< "IOleInPlaceSite"
    std::string_view method;         ///< "CanInPlaceActivate"
    std::string details;             ///< the arguments in words, empty where there are none
};

/// Sees each call that a control makes to its site, and may answer it in the site's place.
class SiteObserver {
public:
    virtual ~SiteObserver() = default;

    /// Whether the site has this interface today. Asked for every QueryInterface of the site.
    virtual bool Offers(REFIID) { return true; }

    /// Told before the site does anything. A result is given to the control instead of the site's
    /// own answer, which then does not happen; out-parameters are empty in that case.
    virtual std::optional<HRESULT> Called(const SiteCall&) { return std::nullopt; }
};

}  // namespace hosting
