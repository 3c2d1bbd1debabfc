#include "support/fake_enumerator.h"

#include <algorithm>
#include <utility>

namespace support {

FakeEnumerator::FakeEnumerator(Ref<FakeCollection> collection)
    : Double(collection->Label() + "._NewEnum"),
      collection_(std::move(collection)),
      snapshot_(collection_->Elements()) {}

void FakeEnumerator::Expire() {
    const auto collection = std::exchange(collection_, {});
    const auto snapshot = std::exchange(snapshot_, {});
}

STDMETHODIMP FakeEnumerator::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!MayCall("QueryInterface")) return RPC_E_DISCONNECTED;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IEnumVARIANT)) return E_NOINTERFACE;
    *object = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP FakeEnumerator::Next(ULONG asked, VARIANT* slots, ULONG* given) {
    if (slots == nullptr && asked > 0) return E_POINTER;
    if (given == nullptr && asked != 1) return E_POINTER;
    for (ULONG slot = 0; slot < asked; ++slot) VariantInit(&slots[slot]);
    if (given != nullptr) *given = 0;
    if (!MayCall("Next")) return RPC_E_DISCONNECTED;
    const Ref<FakeEnumerator> alive(this);
    if (const auto onNext = collection_->manners.onNext) onNext(total_);
    ULONG count = 0;
    HRESULT result = collection_->Death();
    if (result == S_OK) result = Fill(asked, slots, count);
    if (FAILED(result)) {
        for (ULONG slot = 0; slot < count; ++slot) VariantClear(&slots[slot]);
        count = 0;
    }
    Note("Next(" + std::to_string(asked) + ") -> " +
         (FAILED(result) ? DescribeResult(result) : std::to_string(count)));
    if (given != nullptr && !collection_->manners.silentCount)
        *given = collection_->manners.overstatesCount ? asked + 1000 : count;
    return result;
}

HRESULT FakeEnumerator::Fill(ULONG asked, VARIANT* slots, ULONG& given) {
    const EnumeratorManners& manners = collection_->manners;
    const ULONG limit = std::min(asked, manners.blockLimit.value_or(asked));
    const auto& elements = Elements();
    while (given < limit) {
        if (manners.endless) {
            if (total_ >= manners.bound) {
                collection_->overran_ = true;
                return E_ABORT;
            }
            if (position_ >= elements.size()) position_ = 0;
        }
        if (position_ >= elements.size()) return S_FALSE;
        if (manners.failsAt && total_ >= *manners.failsAt) return manners.failure;
        VariantCopy(&slots[given++], Source(elements[position_++].value));
        ++total_;
    }
    return S_OK;
}

STDMETHODIMP FakeEnumerator::Skip(ULONG count) {
    if (!MayCall("Skip")) return RPC_E_DISCONNECTED;
    Note("Skip(" + std::to_string(count) + ")");
    if (collection_->manners.noSkip) return E_NOTIMPL;
    const std::size_t left = Elements().size() - std::min(position_, Elements().size());
    position_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
}

STDMETHODIMP FakeEnumerator::Reset() {
    if (!MayCall("Reset")) return RPC_E_DISCONNECTED;
    Note("Reset");
    if (collection_->manners.noReset) return E_NOTIMPL;
    position_ = 0;
    return S_OK;
}

STDMETHODIMP FakeEnumerator::Clone(IEnumVARIANT** copy) {
    if (copy == nullptr) return E_POINTER;
    *copy = nullptr;
    if (!MayCall("Clone")) return RPC_E_DISCONNECTED;
    Note("Clone");
    if (collection_->manners.noClone) return E_NOTIMPL;
    auto clone = Make<FakeEnumerator>(collection_);
    clone->snapshot_ = snapshot_;
    clone->position_ = position_;
    *copy = clone.Detach();
    return S_OK;
}

const std::vector<FakeCollection::Element>& FakeEnumerator::Elements() const {
    return collection_->manners.live ? collection_->Elements() : snapshot_;
}

void FakeEnumerator::Note(const std::string& step) const {
    if (collection_->Log()) collection_->Log()->Enumeration(collection_->Label() + '.' + step);
}

}  // namespace support
