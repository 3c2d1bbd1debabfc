#pragma once

#include "hosting/com_class.h"

#include <comdef.h>

#include <map>
#include <vector>

/// The sinks of one source interface.
class ConnectionPoint : public hosting::ComClass<IConnectionPoint> {
public:
    ConnectionPoint(IConnectionPointContainer* owner, const IID& id) : owner_(owner), id_(id) {}

    /// The owner is gone: a sink may keep the point for longer.
    void Detach() {
        owner_ = nullptr;
        sinks_.clear();
    }

    /// Delivers an event; arguments in the order of the declaration.
    void Fire(DISPID id, std::vector<VARIANT> arguments);

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
    HRESULT STDMETHODCALLTYPE
    GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

private:
    IConnectionPointContainer* owner_;
    IID id_;
    std::map<DWORD, hosting::Ref<IDispatch>> sinks_;
    DWORD last_ = 0;
};
