#pragma once

#include "hosting/ref.h"
#include "hosting/site_link.h"

namespace hosting {

/// What a control asks of the form around it, keys that it does not want among them.
class ControlSite : public IOleControlSite, protected LinkedToControl {
public:
    using Interface = IOleControlSite;
    explicit ControlSite(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override;
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL lock) override;
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** extended) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container,
                                              DWORD flags) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL gotFocus) override;
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override;

protected:
    ~ControlSite() = default;
};

/// Answers for the ambient properties.
class AmbientDispatch : public IDispatch, protected LinkedToControl {
public:
    using Interface = IDispatch;
    explicit AmbientDispatch(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD kind, DISPPARAMS*,
                                     VARIANT* result, EXCEPINFO*, UINT*) override;

protected:
    ~AmbientDispatch() = default;
};

}  // namespace hosting
