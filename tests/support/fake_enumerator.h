#pragma once

#include "support/fake_collection.h"

namespace support {

/// Walks a FakeCollection with the manners that the collection has at each step.
class FakeEnumerator : public IEnumVARIANT, public Double {
public:
    explicit FakeEnumerator(Ref<FakeCollection> collection);

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return Retain(); }
    STDMETHODIMP_(ULONG) Release() override { return Drop(); }
    STDMETHODIMP Next(ULONG asked, VARIANT* slots, ULONG* given) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumVARIANT** copy) override;

private:
    void Expire() override;
    HRESULT Fill(ULONG asked, VARIANT* slots, ULONG& given);
    [[nodiscard]] const std::vector<FakeCollection::Element>& Elements() const;
    void Note(const std::string& step) const;

    Ref<FakeCollection> collection_;
    std::vector<FakeCollection::Element> snapshot_;
    std::size_t position_ = 0;
    std::size_t total_ = 0;
};

}  // namespace support
