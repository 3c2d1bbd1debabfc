#include "repository/com/object_collection.h"

#include "repository/com/failure.h"
#include "repository/com/text.h"
#include "repository/com/variant.h"

namespace repository::com {

namespace {

/// The enumerator of a collection. It keeps the repository open for as long as it is held.
class ElementEnumerator final : public ole::Unknown<IEnumVARIANT> {
public:
    ElementEnumerator(Repository& repository, std::unique_ptr<Cursor> start)
        : repository_(&repository),
          session_(repository.Current()),
          start_(std::move(start)),
          cursor_(start_->Clone()) {}

    STDMETHODIMP Next(ULONG count, VARIANT* elements, ULONG* fetched) override {
        if (fetched != nullptr) *fetched = 0;
        if (elements == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
        ULONG given = 0;
        const HRESULT result = Guarded([&] {
            for (; given < count; ++given) {
                ole::Ref<IDispatch> element = cursor_->Next();
                if (!element) break;
                V_VT(&elements[given]) = VT_DISPATCH;
                V_DISPATCH(&elements[given]) = element.Detach();
            }
        });
        if (FAILED(result)) {
            while (given > 0) VariantClear(&elements[--given]);
            return result;
        }
        if (fetched != nullptr) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }

    STDMETHODIMP Skip(ULONG count) override {
        ULONG skipped = 0;
        const HRESULT result = Guarded([&] {
            while (skipped < count && cursor_->Next()) ++skipped;
        });
        return FAILED(result) ? result : skipped == count ? S_OK : S_FALSE;
    }

    STDMETHODIMP Reset() override {
        cursor_ = start_->Clone();
        return S_OK;
    }

    STDMETHODIMP Clone(IEnumVARIANT** clone) override {
        if (clone == nullptr) return E_POINTER;
        *clone = nullptr;
        return Guarded([&] {
            auto made = ole::Make<ElementEnumerator>(*repository_.Get(), start_->Clone());
            made->cursor_ = cursor_->Clone();
            *clone = made.Detach();
        });
    }

private:
    template <class Work>
    HRESULT Guarded(Work&& work) {
        return ole::Guard(L"OrvaneRepository.ObjectCollection", IID_IEnumVARIANT, [&] {
            Translated([&] {
                repository_->StoreOf(session_);
                work();
            });
        });
    }

    ole::Ref<Repository> repository_;
    Repository::Session session_;
    std::unique_ptr<Cursor> start_;
    std::unique_ptr<Cursor> cursor_;
};

/// The element that a key means, or none.
ole::Ref<IDispatch> Look(Elements& elements, const Key& key) {
    if (!key.IsPosition()) return elements.Find(key.Text());
    return key.Position() < 1 ? nullptr : elements.At(key.Position() - 1);
}

}  // namespace

ole::Ref<IDispatch> Demand(Elements& elements, const Key& key) {
    ole::Ref<IDispatch> found = Look(elements, key);
    if (found) return found;
    if (key.IsPosition()) {
        Throw(store::Number::subscriptOutOfRange, "There is no element at this position");
    }
    Throw(store::Number::invalidCall, "There is no \"" + key.Text() + "\" here");
}

ole::Ref<IDispatch> CollectionOrElement(Repository& repository, std::unique_ptr<Elements> elements,
                                        const Key& key) {
    if (key.IsGiven()) return Demand(*elements, key);
    return MakeCollection(repository, std::move(elements));
}

ole::Ref<_ObjectCollection> MakeCollection(Repository& repository,
                                           std::unique_ptr<Elements> elements) {
    return ole::Make<ObjectCollection>(repository, std::move(elements));
}

ObjectCollection::ObjectCollection(Repository& repository, std::unique_ptr<Elements> elements)
    : repository_(&repository), elements_(std::move(elements)), session_(repository.Current()) {}

STDMETHODIMP ObjectCollection::get_Count(long* result) {
    return Do([&] { *result = Present().Count(); });
}

STDMETHODIMP ObjectCollection::get_Item(VARIANT* key, IDispatch** result) {
    return Do([&] {
        const Key wanted(*key);
        *result = Demand(Present(), wanted).Detach();
    });
}

STDMETHODIMP ObjectCollection::Remove(VARIANT* key) {
    return Do([&] {
        const Key wanted(*key);
        const auto found = ole::Query<IHeld>(Demand(Present(), wanted).Get());
        repository_->Remove(found->Held());
    });
}

STDMETHODIMP ObjectCollection::Search(VARIANT* key, VARIANT_BOOL* result) {
    return Do([&] {
        const Key wanted(*key);
        *result = ToResult(Look(Present(), wanted) != nullptr);
    });
}

STDMETHODIMP ObjectCollection::get__NewEnum(IUnknown** result) {
    return Do([&] {
        *result = ole::Make<ElementEnumerator>(*repository_.Get(), Present().Begin()).Detach();
    });
}

template <class Work>
HRESULT ObjectCollection::Do(Work&& work) {
    return Run([&] { Translated(work); });
}

Elements& ObjectCollection::Present() {
    repository_->StoreOf(session_);
    return *elements_;
}

}  // namespace repository::com
