#pragma once

#include <comdef.h>
#include <ocidl.h>

#include <vector>

#include "ole/unknown.h"

namespace ole {

/// The sinks of one outgoing interface of an object. Sinks are held by counted references; one that
/// comes or goes while an event is delivered is not called, or not called any more.
class ConnectionPoint final : public Part<IConnectionPoint> {
public:
    ConnectionPoint(IUnknown& source, IConnectionPointContainer& container, REFIID sinkInterface);

    REFIID SinkInterface() const { return sinkInterface_; }
    bool IsConnected() const { return !sinks_.empty(); }

    /// Calls `deliver(sink)` for each sink that is connected now and still when its turn comes.
    template <class Sink, class Deliver>
    void Each(Deliver&& deliver) {
        const Ref<IUnknown> kept = &container_;
        for (DWORD cookie : Cookies()) {
            if (const Ref<IUnknown> sink = Find(cookie)) deliver(*static_cast<Sink*>(sink.Get()));
        }
    }

    void DisconnectAll();

    STDMETHODIMP GetConnectionInterface(IID* id) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

    // A connection point is an object of its own: only its life is the source's.
    STDMETHODIMP QueryInterface(REFIID id, void** object) override;

private:
    struct Connection {
        DWORD cookie;
        Ref<IUnknown> sink;
    };

    std::vector<DWORD> Cookies() const;
    Ref<IUnknown> Find(DWORD cookie) const;

    IConnectionPointContainer& container_;
    IID sinkInterface_;
    std::vector<Connection> sinks_;
    DWORD lastCookie_ = 0;
};

/// The connection points of an object: its event interface and property-change notification.
class ConnectionPoints final : public Part<IConnectionPointContainer> {
public:
    ConnectionPoints(IUnknown& source, REFIID events);

    /// Delivers an event: `arguments` in the order of the event's parameters. By-reference
    /// arguments come back as the sinks leave them. What a sink answers is ignored.
    void Fire(DISPID event, VARIANT* arguments, UINT count);

    /// Asks the property sinks whether a property may change, and tells them that it has.
    bool RequestEdit(DISPID property);
    void NotifyChanged(DISPID property);

    /// While frozen, events are dropped.
    void Freeze(bool freeze) { frozen_ += freeze ? 1 : (frozen_ > 0 ? -1 : 0); }

    void DisconnectAll();

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

private:
    ConnectionPoint events_;
    ConnectionPoint properties_;
    int frozen_ = 0;
};

}  // namespace ole
