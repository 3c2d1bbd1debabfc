#pragma once

#include "repository/com/meta_object.h"

namespace repository::com {

/// `OrvaneRepository.MetaLink`.
class MetaLink final : public MetaObject<_MetaLink, CLSID_MetaLink, store::MetaLink> {
public:
    using MetaObject::MetaObject;

    STDMETHODIMP get_source(_MetaNode** result) override;
    STDMETHODIMP get_Target(_MetaNode** result) override;
    STDMETHODIMP get_LinkName(BSTR* result) override;
};

}  // namespace repository::com
