#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "ole/unknown.h"

namespace ole {

class Control;

/// Draws a control that is not active, and tells the container when it looks different.
class View final : public Part<IViewObjectEx> {
public:
    View(IUnknown& whole, Control& control) : Part(whole), whole_(whole), control_(control) {}

    /// Tells the container's sink that the view changed.
    void SendChanged();
    void LetGo() { sink_.Reset(); }

    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectData, DVTARGETDEVICE* device,
                      HDC reference, HDC context, LPCRECTL bounds, LPCRECTL windowBounds,
                      BOOL(STDMETHODCALLTYPE* goOn)(ULONG_PTR), ULONG_PTR goOnWith) override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectData, DVTARGETDEVICE* device,
                             HDC reference, LOGPALETTE** colors) override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectData, DWORD* token) override;
    STDMETHODIMP Unfreeze(DWORD token) override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device,
                           LPSIZEL extent) override;
    STDMETHODIMP GetRect(DWORD aspect, LPRECTL rectangle) override;
    STDMETHODIMP GetViewStatus(DWORD* status) override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG close,
                               DWORD* result) override;
    STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rectangle, LONG close,
                              DWORD* result) override;
    STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device,
                                  HDC targetContext, DVEXTENTINFO* info, LPSIZEL extent) override;

private:
    IUnknown& whole_;
    Control& control_;
    Ref<IAdviseSink> sink_;
    DWORD aspects_ = 0;
    DWORD flags_ = 0;
};

}  // namespace ole
