#pragma once

#include <comdef.h>
#include <ocidl.h>
#include <oleidl.h>

#include "ole/handles.h"
#include "ole/ref.h"

namespace ole {

/// The container's side of a control, and what it says of its surroundings. Without a container,
/// and where the container does not say, the system's own settings hold.
class Site {
public:
    void Set(IOleClientSite* client);
    IOleClientSite* Client() const { return client_.Get(); }

    /// The container's further site interface `I`, or none.
    template <class I>
    Ref<I> As() const {
        return Query<I>(client_.Get());
    }

    /// An ambient property as the container has it, Empty where it does not say.
    _variant_t Ambient(DISPID property) const;

    bool IsUserMode() const;
    bool EventsFrozenByContainer() const;
    LCID Locale() const;
    COLORREF BackColor() const;
    COLORREF ForeColor() const;

    /// The ambient font, at the given resolution; the system's message font without one. The handle
    /// is valid until the next call.
    HFONT Font(int dpi);

    /// Forgets the font so that the next `Font` asks the container again.
    void ForgetFont();

private:
    COLORREF Color(DISPID property, int systemColor) const;

    Ref<IOleClientSite> client_;
    Ref<IFont> ambientFont_;
    FontHandle systemFont_;
};

}  // namespace ole
