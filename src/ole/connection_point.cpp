#include "ole/connection_point.h"

#include <oleauto.h>
#include <olectl.h>

#include <algorithm>

#include "ole/enumerator.h"
#include "ole/error.h"

namespace ole {

namespace {

struct Connections {
    using Element = CONNECTDATA;
    std::vector<std::pair<DWORD, Ref<IUnknown>>> sinks;

    std::size_t Size() const { return sinks.size(); }
    CONNECTDATA Give(std::size_t at) const {
        return {Ref<IUnknown>(sinks[at].second).Detach(), sinks[at].first};
    }
    static void Drop(CONNECTDATA& connection) { Adopt(connection.pUnk); }
};

struct Points {
    using Element = IConnectionPoint*;
    std::vector<Ref<IConnectionPoint>> points;

    std::size_t Size() const { return points.size(); }
    IConnectionPoint* Give(std::size_t at) const {
        return Ref<IConnectionPoint>(points[at]).Detach();
    }
    static void Drop(IConnectionPoint* point) { Adopt(point); }
};

}  // namespace

ConnectionPoint::ConnectionPoint(IUnknown& source, IConnectionPointContainer& container,
                                 REFIID sinkInterface)
    : Part(source), container_(container), sinkInterface_(sinkInterface) {}

HRESULT ConnectionPoint::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IConnectionPoint) return E_NOINTERFACE;
    *object = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* id) {
    if (id == nullptr) return E_POINTER;
    *id = sinkInterface_;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    Ref<IConnectionPointContainer>(&container_).CopyTo(container);
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (cookie == nullptr || sink == nullptr) return E_POINTER;
    *cookie = 0;
    Ref<IUnknown> connected;
    void** found = reinterpret_cast<void**>(connected.GetAddressOf());
    if (FAILED(sink->QueryInterface(sinkInterface_, found)) &&
        (sinkInterface_ == IID_IPropertyNotifySink ||
         FAILED(sink->QueryInterface(IID_IDispatch, found)))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    return Guard({}, IID_IConnectionPoint, [&] {
        sinks_.push_back({lastCookie_ + 1, std::move(connected)});
        *cookie = ++lastCookie_;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    const auto found = std::find_if(sinks_.begin(), sinks_.end(),
                                    [&](const auto& each) { return each.cookie == cookie; });
    if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
    const Connection removed = *found;
    sinks_.erase(found);
    return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    if (connections == nullptr) return E_POINTER;
    *connections = nullptr;
    return Guard({}, IID_IConnectionPoint, [&] {
        Connections present;
        for (const Connection& each : sinks_) present.sinks.emplace_back(each.cookie, each.sink);
        using All = Enumerator<IEnumConnections, Connections>;
        *connections = Make<All>(std::move(present)).Detach();
    });
}

void ConnectionPoint::DisconnectAll() {
    const std::vector<Connection> dropped = std::move(sinks_);
    sinks_.clear();
}

std::vector<DWORD> ConnectionPoint::Cookies() const {
    std::vector<DWORD> cookies;
    for (const Connection& each : sinks_) cookies.push_back(each.cookie);
    return cookies;
}

Ref<IUnknown> ConnectionPoint::Find(DWORD cookie) const {
    for (const Connection& each : sinks_) {
        if (each.cookie == cookie) return each.sink;
    }
    return {};
}

ConnectionPoints::ConnectionPoints(IUnknown& source, REFIID events)
    : Part(source),
      events_(source, *this, events),
      properties_(source, *this, IID_IPropertyNotifySink) {}

void ConnectionPoints::Fire(DISPID event, VARIANT* arguments, UINT count) {
    if (frozen_ > 0) return;
    std::reverse(arguments, arguments + count);
    events_.Each<IDispatch>([&](IDispatch& sink) {
        DISPPARAMS parameters = {arguments, nullptr, count, 0};
        _variant_t ignored;
        ExceptionInfo exception;
        UINT badArgument = 0;
        sink.Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &ignored,
                    &exception, &badArgument);
    });
    std::reverse(arguments, arguments + count);
}

bool ConnectionPoints::RequestEdit(DISPID property) {
    bool allowed = true;
    properties_.Each<IPropertyNotifySink>([&](IPropertyNotifySink& sink) {
        if (sink.OnRequestEdit(property) == S_FALSE) allowed = false;
    });
    return allowed;
}

void ConnectionPoints::NotifyChanged(DISPID property) {
    properties_.Each<IPropertyNotifySink>(
        [&](IPropertyNotifySink& sink) { sink.OnChanged(property); });
}

void ConnectionPoints::DisconnectAll() {
    events_.DisconnectAll();
    properties_.DisconnectAll();
}

HRESULT ConnectionPoints::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points == nullptr) return E_POINTER;
    *points = nullptr;
    return Guard({}, IID_IConnectionPointContainer, [&] {
        using All = Enumerator<IEnumConnectionPoints, Points>;
        *points = Make<All>(Points{{&events_, &properties_}}).Detach();
    });
}

HRESULT ConnectionPoints::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    for (ConnectionPoint* each : {&events_, &properties_}) {
        if (each->SinkInterface() == id || (id == IID_IDispatch && each == &events_)) {
            Ref<IConnectionPoint>(each).CopyTo(point);
            return S_OK;
        }
    }
    return CONNECT_E_NOCONNECTION;
}

}  // namespace ole
