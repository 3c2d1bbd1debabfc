#include "hosts/double/control.h"

#include "hosting/text.h"

using hosting::Query;
using hosting::Ref;

namespace {

LONG living = 0;
constexpr UINT raiseDoneMessage = WM_APP;

template <class T>
VARIANT ByReference(VARTYPE type, T* target) {
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(VT_BYREF | type);
    value.byref = target;
    return value;
}

Ref<ITypeInfo> TypeInfo(REFGUID id) {
    Ref<ITypeInfo> info;
    OwnTypeLibrary()->GetTypeInfoOfGuid(id, info.GetAddressOf());
    return info;
}

}  // namespace

DoubleControl::DoubleControl()
    : events_(hosting::Make<ConnectionPoint>(this, __uuidof(__DoubleControl))) {
    ++living;
}

DoubleControl::~DoubleControl() {
    events_->Detach();
    --living;
}

LONG DoubleControl::Living() {
    return living;
}

HRESULT DoubleControl::get_Log(BSTR* log) {
    *log = _bstr_t(hosting::FromUtf8(log_).c_str()).Detach();
    return S_OK;
}

HRESULT DoubleControl::RaiseAsk(BSTR text, VARIANT_BOOL allow, BSTR* answer) {
    _bstr_t asked(text);
    BSTR raw = asked.Detach();
    events_->Fire(1, {ByReference(VT_BSTR, &raw), ByReference(VT_BOOL, &allow)});
    asked.Attach(raw);
    *answer = (asked + (allow ? L"|yes" : L"|no")).Detach();
    return S_OK;
}

HRESULT DoubleControl::RaiseCount(LONG number, LONG* answer) {
    events_->Fire(2, {ByReference(VT_I4, &number)});
    *answer = number;
    return S_OK;
}

HRESULT DoubleControl::RaisePick(IDispatch* object, IDispatch** answer) {
    Ref<IDispatch> picked(object);
    IDispatch* raw = picked.Detach();
    events_->Fire(3, {ByReference(VT_DISPATCH, &raw)});
    *answer = raw;
    return S_OK;
}

HRESULT DoubleControl::RaiseAnything(VARIANT value, VARIANT* answer) {
    _variant_t anything(value);
    VARIANT* raw = &anything;
    events_->Fire(4, {ByReference(VT_VARIANT, raw)});
    *answer = anything.Detach();
    return S_OK;
}

HRESULT DoubleControl::RaisePlain(LONG number, BSTR text, VARIANT_BOOL flag) {
    const _variant_t arguments[] = {_variant_t(number), _variant_t(text),
                                    _variant_t(flag != VARIANT_FALSE)};
    events_->Fire(5, {arguments[0], arguments[1], arguments[2]});
    return S_OK;
}

HRESULT DoubleControl::RaiseDone() {
    events_->Fire(6, {});
    return S_OK;
}

HRESULT DoubleControl::RaiseDoneLater() {
    return PostMessageW(window_.get(), raiseDoneMessage, 0, 0) ? S_OK : E_UNEXPECTED;
}

HRESULT DoubleControl::Fail(LONG number, BSTR description) {
    Ref<ICreateErrorInfo> error;
    CreateErrorInfo(error.GetAddressOf());
    error->SetDescription(description);
    std::wstring source = L"HostDouble.Control";
    error->SetSource(source.data());
    SetErrorInfo(0, Query<IErrorInfo>(error.Get()).Get());
    return number;
}

HRESULT DoubleControl::get_Text(BSTR* text) {
    *text = _bstr_t(text_.c_str()).Detach();
    return S_OK;
}

HRESULT DoubleControl::put_Text(BSTR text) {
    text_ = text ? text : L"";
    if (advise_) advise_->OnViewChange(DVASPECT_CONTENT, -1);
    return S_OK;
}

HRESULT DoubleControl::get_Ambient(LONG id, VARIANT* value) {
    const auto ambients = Query<IDispatch>(site_.Get());
    if (!ambients) return E_UNEXPECTED;
    DISPPARAMS none{};
    return ambients->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value,
                            nullptr, nullptr);
}

HRESULT DoubleControl::RequestSize(LONG width, LONG height) {
    const auto place = Query<IOleInPlaceSite>(site_.Get());
    if (!place) return E_UNEXPECTED;
    RECT position{};
    GetWindowRect(window_.get(), &position);
    MapWindowPoints(nullptr, GetParent(window_.get()), reinterpret_cast<POINT*>(&position), 2);
    position.right = position.left + width;
    position.bottom = position.top + height;
    return place->OnPosRectChange(&position);
}

HRESULT DoubleControl::get_Living(LONG* number) {
    *number = living;
    return S_OK;
}

HRESULT DoubleControl::Square(LONG number, VARIANT* result) {
    _variant_t square(number * number);
    VariantClear(result);
    *result = square.Detach();
    return S_OK;
}

HRESULT DoubleControl::get_Shown(VARIANT_BOOL* shown) {
    *shown = IsWindowVisible(window_.get()) ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT DoubleControl::GetTypeInfoCount(UINT* count) {
    *count = 1;
    return S_OK;
}

HRESULT DoubleControl::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = TypeInfo(__uuidof(_DoubleControl)).Detach();
    return S_OK;
}

HRESULT DoubleControl::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return TypeInfo(__uuidof(_DoubleControl))->GetIDsOfNames(names, count, ids);
}

HRESULT DoubleControl::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception, UINT* wrong) {
    const Ref<_DoubleControl> self(this);
    return TypeInfo(__uuidof(_DoubleControl))
        ->Invoke(static_cast<_DoubleControl*>(this), id, kind, parameters, result, exception,
                 wrong);
}

HRESULT DoubleControl::EnumConnectionPoints(IEnumConnectionPoints** points) {
    *points = nullptr;
    return E_NOTIMPL;
}

HRESULT DoubleControl::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    *point = nullptr;
    if (id != __uuidof(__DoubleControl)) return CONNECT_E_NOCONNECTION;
    Ref<IConnectionPoint> copy(events_);
    *point = copy.Detach();
    return S_OK;
}

HRESULT DoubleControl::GetClassInfo(ITypeInfo** info) {
    *info = TypeInfo(CLSID_DoubleControl).Detach();
    return S_OK;
}

HRESULT DoubleControl::GetGUID(DWORD kind, GUID* id) {
    *id = __uuidof(__DoubleControl);
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

LRESULT CALLBACK DoubleControl::WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam) {
    auto* const control =
        reinterpret_cast<DoubleControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (control && message == raiseDoneMessage) {
        const Ref<_DoubleControl> held(control);
        control->RaiseDone();
        return 0;
    }
    if (control && message == WM_LBUTTONDOWN) control->ActivateUI();
    return DefWindowProcW(window, message, wParam, lParam);
}

HRESULT DoubleControl::ActivateInPlace(const RECT& position) {
    if (window_) return S_OK;
    const auto place = Query<IOleInPlaceSite>(site_.Get());
    if (!place) return E_UNEXPECTED;
    const HRESULT allowed = place->CanInPlaceActivate();
    if (allowed != S_OK) return E_FAIL;
    HWND parent = nullptr;
    place->GetWindow(&parent);
    place->OnInPlaceActivate();
    WNDCLASSW description{};
    description.lpfnWndProc = WindowProcedure;
    description.hInstance = OwnModule();
    description.lpszClassName = windowClass;
    RegisterClassW(&description);
    window_.reset(CreateWindowExW(0, description.lpszClassName, L"double",
                                  WS_CHILD | WS_VISIBLE | WS_TABSTOP, position.left, position.top,
                                  position.right - position.left, position.bottom - position.top,
                                  parent, nullptr, OwnModule(), nullptr));
    SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return window_ ? S_OK : E_FAIL;
}

HRESULT DoubleControl::ActivateUI() {
    if (uiActive_) return S_OK;
    const auto place = Query<IOleInPlaceSite>(site_.Get());
    if (!place || !window_) return E_UNEXPECTED;
    uiActive_ = true;
    place->OnUIActivate();
    Ref<IOleInPlaceFrame> frame;
    Ref<IOleInPlaceUIWindow> document;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    place->GetWindowContext(frame.GetAddressOf(), document.GetAddressOf(), &position, &clip, &info);
    if (frame) frame->SetActiveObject(this, L"double");
    SetFocus(window_.get());
    return S_OK;
}
