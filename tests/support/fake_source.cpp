#include "support/fake_source.h"

#include <algorithm>

namespace support {

HRESULT FakeSource::Raise(DISPID id, std::vector<VARIANT> arguments) {
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS parameters = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    HRESULT result = S_FALSE;
    const auto sinks = sinks_;
    for (const auto& [cookie, sink] : sinks)
        result = sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                              nullptr, nullptr, nullptr);
    return result;
}

STDMETHODIMP FakeSource::QueryInterface(REFIID iid, void** object) {
    if (object != nullptr && iid == __uuidof(IConnectionPointContainer)) {
        *object = static_cast<IConnectionPointContainer*>(this);
        AddRef();
        return S_OK;
    }
    return FakeObject::QueryInterface(iid, object);
}

STDMETHODIMP FakeSource::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points != nullptr) *points = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP FakeSource::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    if (iid != events_) return CONNECT_E_NOCONNECTION;
    *point = this;
    AddRef();
    return S_OK;
}

STDMETHODIMP FakeSource::GetConnectionInterface(IID* iid) {
    if (iid == nullptr) return E_POINTER;
    *iid = events_;
    return S_OK;
}

STDMETHODIMP FakeSource::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    *container = this;
    AddRef();
    return S_OK;
}

STDMETHODIMP FakeSource::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    Ref<IDispatch> dispatch;
    if (FAILED(sink->QueryInterface(events_, reinterpret_cast<void**>(dispatch.GetAddressOf()))))
        return CONNECT_E_CANNOTCONNECT;
    *cookie = ++lastCookie_;
    sinks_.emplace(*cookie, dispatch);
    return S_OK;
}

STDMETHODIMP FakeSource::Unadvise(DWORD cookie) {
    return sinks_.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP FakeSource::EnumConnections(IEnumConnections** connections) {
    if (connections != nullptr) *connections = nullptr;
    return E_NOTIMPL;
}

void FakeSource::Forget() {
    const auto sinks = std::exchange(sinks_, {});
}

}  // namespace support
