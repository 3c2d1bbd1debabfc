#include "hosts/double/connection_point.h"

#include <algorithm>

void ConnectionPoint::Fire(DISPID id, std::vector<VARIANT> arguments) {
    std::reverse(arguments.begin(), arguments.end());
    const auto sinks = sinks_;
    for (const auto& [cookie, sink] : sinks) {
        DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                     nullptr, nullptr);
    }
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* id) {
    *id = id_;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    *container = owner_;
    if (!owner_) return E_UNEXPECTED;
    owner_->AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    hosting::Ref<IDispatch> found;
    sink->QueryInterface(id_, reinterpret_cast<void**>(found.GetAddressOf()));
    if (!found) return CONNECT_E_CANNOTCONNECT;
    sinks_[++last_] = found;
    *cookie = last_;
    return S_OK;
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    return sinks_.erase(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    *connections = nullptr;
    return E_NOTIMPL;
}
