#pragma once

#include <oaidl.h>

#include "ole/error.h"
#include "ole/unknown.h"

namespace ole {

/// A COM enumerator `I` over a sequence that does not change while it is enumerated. `Sequence` has
/// `Element`, `Size()`, `Give(position)`, which answers an element that the caller owns and may
/// throw, and `Drop(element)`.
template <class I, class Sequence>
class Enumerator final : public Unknown<I> {
public:
    using Element = typename Sequence::Element;

    explicit Enumerator(Sequence sequence, std::size_t next = 0)
        : sequence_(std::move(sequence)), next_(next) {}

    STDMETHODIMP Next(ULONG count, Element* elements, ULONG* fetched) override {
        if (fetched != nullptr) *fetched = 0;
        if (elements == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
        ULONG given = 0;
        const HRESULT result = Guard({}, __uuidof(I), [&] {
            for (; given < count && next_ < sequence_.Size(); ++given, ++next_) {
                elements[given] = sequence_.Give(next_);
            }
        });
        if (FAILED(result)) {
            for (ULONG i = 0; i < given; ++i) sequence_.Drop(elements[i]);
            return result;
        }
        if (fetched != nullptr) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }

    STDMETHODIMP Skip(ULONG count) override {
        const std::size_t left = sequence_.Size() - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }

    STDMETHODIMP Reset() override {
        next_ = 0;
        return S_OK;
    }

    STDMETHODIMP Clone(I** clone) override {
        if (clone == nullptr) return E_POINTER;
        *clone = nullptr;
        return Guard({}, __uuidof(I),
                     [&] { *clone = Make<Enumerator>(sequence_, next_).Detach(); });
    }

private:
    Sequence sequence_;
    std::size_t next_;
};

}  // namespace ole
