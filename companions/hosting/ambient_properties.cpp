#include "hosting/ambient_properties.h"

#include "hosting/error.h"

namespace hosting {

AmbientProperties AmbientProperties::OfRunningForm() {
    AmbientProperties result;
    if (const auto font = Query<IDispatch>(MakeFont(L"MS Shell Dlg 2", 8.25).Get()))
        result.Set(DISPID_AMBIENT_FONT, font.Get());
    result.Set(DISPID_AMBIENT_BACKCOLOR, {static_cast<long>(0x80000000 | COLOR_BTNFACE), VT_I4});
    result.Set(DISPID_AMBIENT_FORECOLOR, {static_cast<long>(0x80000000 | COLOR_BTNTEXT), VT_I4});
    result.Set(DISPID_AMBIENT_LOCALEID, {static_cast<long>(GetUserDefaultLCID()), VT_I4});
    result.Set(DISPID_AMBIENT_SCALEUNITS, L"Pixel");
    result.Set(DISPID_AMBIENT_TEXTALIGN, static_cast<short>(0));
    result.Set(DISPID_AMBIENT_USERMODE, true);
    result.Set(DISPID_AMBIENT_UIDEAD, false);
    result.Set(DISPID_AMBIENT_MESSAGEREFLECT, false);
    result.Set(DISPID_AMBIENT_SHOWGRABHANDLES, false);
    result.Set(DISPID_AMBIENT_SHOWHATCHING, false);
    result.Set(DISPID_AMBIENT_DISPLAYASDEFAULT, false);
    result.Set(DISPID_AMBIENT_SUPPORTSMNEMONICS, true);
    result.Set(DISPID_AMBIENT_AUTOCLIP, true);
    result.Set(DISPID_AMBIENT_RIGHTTOLEFT, false);
    return result;
}

const _variant_t* AmbientProperties::Find(DISPID id) const {
    const auto place = values_.find(id);
    return place == values_.end() ? nullptr : &place->second;
}

Ref<IFontDisp> MakeFont(const wchar_t* name, double points) {
    std::wstring ownName = name;
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = ownName.data();
    description.cySize.int64 = static_cast<LONGLONG>(points * 10000 + 0.5);
    description.sWeight = FW_NORMAL;
    description.sCharset = DEFAULT_CHARSET;
    Ref<IFontDisp> font;
    Check(OleCreateFontIndirect(&description, IID_IFontDisp,
                                reinterpret_cast<void**>(font.GetAddressOf())),
          L"making a font");
    return font;
}

}  // namespace hosting
