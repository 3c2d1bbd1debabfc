#pragma once

#include "repository/com/instance.h"

namespace repository::com {

/// `OrvaneRepository.Link`.
class Link final : public Instance<_Link, CLSID_Link> {
public:
    using Instance::Instance;

    STDMETHODIMP get_parent(_MetaLink** result) override;
    STDMETHODIMP get_source(_Node** result) override;
    STDMETHODIMP get_Target(_Node** result) override;
};

}  // namespace repository::com
