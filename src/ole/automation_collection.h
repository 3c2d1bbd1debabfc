#pragma once

#include "ole/automation.h"
#include "ole/collection.h"
#include "ole/enumerator.h"

namespace ole {

/// The automation object around keyed values. `I` is its interface in the server's type library,
/// with the members Add, Count, Item (the default), Remove and _NewEnum.
template <class I, const GUID& classId>
class AutomationCollection final : public Automation<I, classId> {
public:
    AutomationCollection() = default;

    KeyedValues& Values() { return values_; }

    STDMETHODIMP Add(VARIANT* item, VARIANT* key, VARIANT* before, VARIANT* after) override {
        return this->Run([&] { values_.Add(*item, *key, *before, *after); });
    }
    STDMETHODIMP get_Count(long* number) override {
        return this->Run([&] { *number = static_cast<long>(values_.Count()); });
    }
    STDMETHODIMP get_Item(VARIANT* index, VARIANT* value) override {
        return this->Run([&] { *value = _variant_t(values_.Item(*index)).Detach(); });
    }
    STDMETHODIMP Remove(VARIANT* index) override {
        return this->Run([&] { values_.Remove(*index); });
    }
    STDMETHODIMP get__NewEnum(IUnknown** enumerator) override {
        return this->Run([&] {
            using Values = Enumerator<IEnumVARIANT, Snapshot>;
            *enumerator = Make<Values>(Snapshot{values_.Snapshot()}).Detach();
        });
    }

private:
    struct Snapshot {
        using Element = VARIANT;
        std::shared_ptr<const KeyedValues::Entries> entries;

        std::size_t Size() const { return entries->size(); }
        VARIANT Give(std::size_t at) const { return _variant_t((*entries)[at]->value).Detach(); }
        static void Drop(VARIANT& value) { VariantClear(&value); }
    };

    KeyedValues values_;
};

}  // namespace ole
