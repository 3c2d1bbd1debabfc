#pragma once

#include "hosting/com_class.h"
#include "hosting/site_link.h"

namespace hosting {

/// The frame window as one control sees it: no menus, tool space or status bar to share.
class Frame : public ComClass<IOleInPlaceFrame>, protected LinkedToControl {
public:
    explicit Frame(const std::shared_ptr<SiteLink>& link) : LinkedToControl(link) {}

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
    HRESULT STDMETHODCALLTYPE GetBorder(RECT* border) override;
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(const BORDERWIDTHS* widths) override;
    HRESULT STDMETHODCALLTYPE SetBorderSpace(const BORDERWIDTHS* widths) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object,
                                              LPCOLESTR name) override;
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU menu, OLEMENUGROUPWIDTHS* widths) override;
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU menu, HOLEMENU oleMenu, HWND object) override;
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU menu) override;
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR text) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, WORD command) override;

protected:
    bool Offers(REFIID iid) override;
};

}  // namespace hosting
