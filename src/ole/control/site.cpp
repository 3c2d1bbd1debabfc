#include "ole/control/site.h"

#include <olectl.h>

#include "ole/error.h"
#include "ole/units.h"

namespace ole {

void Site::Set(IOleClientSite* client) {
    ForgetFont();
    client_ = client;
}

_variant_t Site::Ambient(DISPID property) const {
    _variant_t value;
    if (const auto ambient = As<IDispatch>()) {
        DISPPARAMS none = {};
        ExceptionInfo exception;
        UINT badArgument = 0;
        if (FAILED(ambient->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                   &none, &value, &exception, &badArgument))) {
            value.Clear();
        }
    }
    return value;
}

bool Site::IsUserMode() const {
    const _variant_t mode = Ambient(DISPID_AMBIENT_USERMODE);
    return V_VT(&mode) != VT_BOOL || V_BOOL(&mode) != VARIANT_FALSE;
}

bool Site::EventsFrozenByContainer() const {
    const _variant_t dead = Ambient(DISPID_AMBIENT_UIDEAD);
    return V_VT(&dead) == VT_BOOL && V_BOOL(&dead) != VARIANT_FALSE;
}

LCID Site::Locale() const {
    const _variant_t locale = Ambient(DISPID_AMBIENT_LOCALEID);
    return V_VT(&locale) == VT_I4 ? static_cast<LCID>(V_I4(&locale)) : LOCALE_USER_DEFAULT;
}

COLORREF Site::BackColor() const {
    return Color(DISPID_AMBIENT_BACKCOLOR, COLOR_WINDOW);
}

COLORREF Site::ForeColor() const {
    return Color(DISPID_AMBIENT_FORECOLOR, COLOR_WINDOWTEXT);
}

COLORREF Site::Color(DISPID property, int systemColor) const {
    const _variant_t color = Ambient(property);
    COLORREF translated = 0;
    if (V_VT(&color) == VT_I4 &&
        SUCCEEDED(OleTranslateColor(static_cast<OLE_COLOR>(V_I4(&color)), nullptr, &translated))) {
        return translated;
    }
    return GetSysColor(systemColor);
}

HFONT Site::Font(int dpi) {
    if (!ambientFont_ && !systemFont_) {
        const _variant_t font = Ambient(DISPID_AMBIENT_FONT);
        Ref<IFont> ambient;
        if (V_VT(&font) == VT_DISPATCH || V_VT(&font) == VT_UNKNOWN) {
            ambient = Query<IFont>(V_UNKNOWN(&font));
        }
        // A copy, so that the scale is ours alone.
        if (ambient && SUCCEEDED(ambient->Clone(ambientFont_.GetAddressOf()))) {
            ambientFont_->SetRatio(dpi, 2540);
        }
    }
    HFONT handle = nullptr;
    if (ambientFont_ && SUCCEEDED(ambientFont_->get_hFont(&handle))) return handle;
    if (!systemFont_) {
        NONCLIENTMETRICSW metrics = {};
        metrics.cbSize = sizeof(metrics);
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
        LOGFONTW& font = metrics.lfMessageFont;
        font.lfHeight = MulDiv(font.lfHeight, dpi, DotsPerInch(nullptr));
        systemFont_ = FontHandle(CreateFontIndirectW(&font));
    }
    return systemFont_.Get();
}

void Site::ForgetFont() {
    ambientFont_.Reset();
    systemFont_ = FontHandle();
}

}  // namespace ole
