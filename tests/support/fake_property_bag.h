#pragma once

#include "support/call_log.h"
#include "support/double.h"
#include "support/value.h"

#include <map>
#include <string>

namespace support {

/// A property bag in memory, with a log of what is read and written: `Read("Caption")`,
/// `Write("Caption", "x")`.
class FakePropertyBag : public IPropertyBag, public Double {
public:
    FakePropertyBag() : Double("property bag") {}

    std::map<std::string, Value> values;
    CallLog log;
    /// Other than S_OK: what every read, or write, fails with.
    HRESULT readResult = S_OK;
    HRESULT writeResult = S_OK;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    /// Converts to the type that the caller's variant has, as bags of forms do.
    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog* errors) override;
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override;

private:
    void Expire() override { values.clear(); }
};

/// An empty compound file in memory.
[[nodiscard]] Ref<IStorage> NewStorage();

}  // namespace support
