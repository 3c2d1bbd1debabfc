#include <OrvaneControls.h>
#include <oleidl.h>

#include "library/resources.h"
#include "lists/combo.h"
#include "ole/server.h"

namespace {

/// What a container may do with a windowed control that is active whenever it is visible.
constexpr DWORD controlStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                OLEMISC_SETCLIENTSITEFIRST;

constexpr ole::Class classes[] = {
    {CLSID_Combo, ole::MakeClass<lists::Combo>, comboToolboxBitmap, controlStatus},
};

}  // namespace

const ole::ServerDescription ole::server = {LIBID_OrvaneControls, L"OrvaneControls.X", classes};
