#pragma once

#include <repository.h>

#include <memory>

#include "ole/automation.h"
#include "repository/com/arguments.h"
#include "repository/com/elements.h"
#include "repository/com/repository.h"

namespace repository::com {

/// `OrvaneRepository.ObjectCollection`: its members are documented in the type library.
class ObjectCollection final : public ole::Automation<_ObjectCollection, CLSID_ObjectCollection> {
public:
    ObjectCollection(Repository& repository, std::unique_ptr<Elements> elements);

    STDMETHODIMP get_Count(long* result) override;
    STDMETHODIMP get_Item(VARIANT* key, IDispatch** result) override;
    STDMETHODIMP Remove(VARIANT* key) override;
    STDMETHODIMP Search(VARIANT* key, VARIANT_BOOL* result) override;
    STDMETHODIMP get__NewEnum(IUnknown** result) override;

private:
    template <class Work>
    HRESULT Do(Work&& work);

    /// Error 91 when the repository was closed meanwhile.
    Elements& Present();

    ole::Ref<Repository> repository_;
    std::unique_ptr<Elements> elements_;
    Repository::Session session_;
};

/// The element that a key means, or an error: 5 for an unknown text, 9 for a position out of range.
ole::Ref<IDispatch> Demand(Elements& elements, const Key& key);

/// What a member with an optional key answers: the collection, or one of its elements.
ole::Ref<IDispatch> CollectionOrElement(Repository& repository, std::unique_ptr<Elements> elements,
                                        const Key& key);

ole::Ref<_ObjectCollection> MakeCollection(Repository& repository,
                                           std::unique_ptr<Elements> elements);

}  // namespace repository::com
