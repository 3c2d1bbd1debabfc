#pragma once

#include "hosting/ref.h"

#include <comdef.h>

#include <map>

namespace hosting {

/// What a container tells its controls about their surroundings: values by ambient dispatch id
/// (DISPID_AMBIENT_...). A control that asks for one that is not there gets "member not found".
class AmbientProperties {
public:
    /// The set of an ordinary form at run time: the system's dialog font and window colours, the
    /// user's locale, user mode, no message reflection.
    static AmbientProperties OfRunningForm();

    /// Sets one. The controls learn of it by HostedControl::AmbientChanged.
    void Set(DISPID id, const _variant_t& value) { values_[id] = value; }

    /// Takes one away, as a container that does not know it.
    void Remove(DISPID id) { values_.erase(id); }

    /// The value, or null where there is none.
    [[nodiscard]] const _variant_t* Find(DISPID id) const;

private:
    std::map<DISPID, _variant_t> values_;
};

/// A font object for DISPID_AMBIENT_FONT. `points` may have a fraction.
[[nodiscard]] Ref<IFontDisp> MakeFont(const wchar_t* name, double points);

}  // namespace hosting
