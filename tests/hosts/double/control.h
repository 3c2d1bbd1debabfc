#pragma once

#include "hosting/com_class.h"
#include "hosting/host_window.h"
#include "hosts/double/connection_point.h"

#include <HostDouble.h>

#include <string>

namespace hosting {
template <>
struct Extends<_DoubleControl> : ExtendsAll<IDispatch> {};
}  // namespace hosting

/// A small windowed control that raises events on demand and logs what its container calls.
class DoubleControl
    : public hosting::ComClass<_DoubleControl, IOleObject, IOleInPlaceObject,
                               IOleInPlaceActiveObject, IOleControl, IPersistStreamInit,
                               IQuickActivate, IConnectionPointContainer, IProvideClassInfo2> {
public:
    static constexpr wchar_t windowClass[] = L"HostDoubleControl";

    DoubleControl();
    static LONG Living();

    HRESULT STDMETHODCALLTYPE get_Log(BSTR* log) override;
    HRESULT STDMETHODCALLTYPE RaiseAsk(BSTR text, VARIANT_BOOL allow, BSTR* answer) override;
    HRESULT STDMETHODCALLTYPE RaiseCount(LONG number, LONG* answer) override;
    HRESULT STDMETHODCALLTYPE RaisePick(IDispatch* object, IDispatch** answer) override;
    HRESULT STDMETHODCALLTYPE RaiseAnything(VARIANT value, VARIANT* answer) override;
    HRESULT STDMETHODCALLTYPE RaisePlain(LONG number, BSTR text, VARIANT_BOOL flag) override;
    HRESULT STDMETHODCALLTYPE RaiseDone() override;
    HRESULT STDMETHODCALLTYPE RaiseDoneLater() override;
    HRESULT STDMETHODCALLTYPE Fail(LONG number, BSTR description) override;
    HRESULT STDMETHODCALLTYPE get_Text(BSTR* text) override;
    HRESULT STDMETHODCALLTYPE put_Text(BSTR text) override;
    HRESULT STDMETHODCALLTYPE get_Ambient(LONG id, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE RequestSize(LONG width, LONG height) override;
    HRESULT STDMETHODCALLTYPE get_Living(LONG* number) override;
    HRESULT STDMETHODCALLTYPE Square(LONG number, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE get_Shown(VARIANT_BOOL* shown) override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;

    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Close(DWORD save) override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG*, IOleClientSite*, LONG, HWND,
                                     const RECT* position) override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return OLE_S_USEREG; }
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* id) override { return GetClassID(id); }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) override { return OLE_S_USEREG; }
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* size) override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* size) override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(const RECT* position, const RECT* clip) override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(const RECT*, IOleInPlaceUIWindow*, BOOL) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID id) override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Load(IStream* stream) override;
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitNew() override;

    HRESULT STDMETHODCALLTYPE QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    HRESULT STDMETHODCALLTYPE SetContentExtent(SIZEL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContentExtent(SIZEL*) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

protected:
    ~DoubleControl() override;

private:
    static LRESULT CALLBACK WindowProcedure(HWND, UINT, WPARAM, LPARAM);

    void Note(const std::string& call) { log_ += call + "\n"; }
    HRESULT ActivateInPlace(const RECT& position);
    HRESULT ActivateUI();

    std::string log_;
    std::wstring text_;
    hosting::Ref<ConnectionPoint> events_;
    hosting::Ref<IOleClientSite> site_;
    hosting::Ref<IAdviseSink> advise_;
    hosting::OwnedWindow window_;
    SIZEL extent_{};
    bool uiActive_ = false;
};

/// The type library inside the DLL that this code is in.
hosting::Ref<ITypeLib> OwnTypeLibrary();
HINSTANCE OwnModule();
