#pragma once

#include "support/fake_object.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace support {

/// How a collection's enumerators misbehave. As it is made: they do everything right.
struct EnumeratorManners {
    /// Each step looks at the collection as it is then, not as it was when the enumeration began.
    bool live = false;
    /// Steps give at most this many elements with S_OK although more were asked for and are there.
    /// With 0 they succeed and give nothing, for ever.
    std::optional<ULONG> blockLimit;
    /// The step that comes to this element (from 0) fails as a whole.
    std::optional<std::size_t> failsAt;
    HRESULT failure = RPC_E_DISCONNECTED;
    /// Begins again at the end. A caller that has taken `bound` elements gets E_ABORT, and the test
    /// that looks at `Overran` knows.
    bool endless = false;
    std::size_t bound = 100000;
    /// Does not say how many elements it gave, or says more than were asked for.
    bool silentCount = false;
    bool overstatesCount = false;
    bool noClone = false;
    bool noSkip = false;
    bool noReset = false;
    /// Runs before each step, with the number of elements given so far.
    std::function<void(std::size_t given)> onNext;
};

/// An enumerable, keyed collection: a default member and `Item` by key or by index from 1, `Count`,
/// `Remove`, `Search`, `_NewEnum`. Keys are compared without case.
class FakeCollection : public FakeObject {
public:
    explicit FakeCollection(std::string label, SharedLog log = nullptr);
    [[nodiscard]] static Ref<FakeCollection> Make(std::string label, SharedLog log = nullptr) {
        return support::Make<FakeCollection>(std::move(label), std::move(log));
    }

    struct Element {
        std::string key;
        Value value;
    };

    FakeCollection& Add(std::string key, Value value);
    /// Without a key.
    FakeCollection& Add(Value value) { return Add({}, std::move(value)); }
    /// False where there is none with this key.
    bool Remove(std::string_view key);
    void RemoveAll() { Forget(); }
    [[nodiscard]] const Element* Find(std::string_view key) const;
    [[nodiscard]] const std::vector<Element>& Elements() const { return elements_; }

    EnumeratorManners manners;
    /// Whether an endless enumeration was taken further than its bound.
    [[nodiscard]] bool Overran() const { return overran_; }
    /// What the error for a missing key looks like.
    static constexpr HRESULT noSuchElement = static_cast<HRESULT>(0x80042002);

protected:
    void Forget() override;

private:
    friend class FakeEnumerator;
    friend struct CollectionMembers;

    std::vector<Element> elements_;
    bool overran_ = false;
};

}  // namespace support
