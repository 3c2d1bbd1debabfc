#pragma once

#include "support/fake_object.h"

#include <map>

namespace support {

/// A double with one connection point, for whatever listens to events.
class FakeSource : public FakeObject, public IConnectionPointContainer, public IConnectionPoint {
public:
    FakeSource(std::string label, const IID& events, SharedLog log = nullptr)
        : FakeObject(std::move(label), std::move(log)), events_(events) {}

    /// Raises an event at every sink; the arguments are passed as they are, references too. Returns
    /// the last sink's result.
    HRESULT Raise(DISPID id, std::vector<VARIANT> arguments);
    [[nodiscard]] std::size_t Sinks() const { return sinks_.size(); }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return FakeObject::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return FakeObject::Release(); }

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

protected:
    void Forget() override;

private:
    IID events_;
    std::map<DWORD, Ref<IDispatch>> sinks_;
    DWORD lastCookie_ = 0;
};

}  // namespace support
