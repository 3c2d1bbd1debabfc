#pragma once

#include "repository/com/instance.h"

namespace repository::com {

/// `OrvaneRepository.Node`.
class Node final : public Instance<_Node, CLSID_Node> {
public:
    using Instance::Instance;

    STDMETHODIMP get_parent(_MetaNode** result) override;
    STDMETHODIMP get_Outgoing_(VARIANT* name, _ObjectCollection** result) override;
    STDMETHODIMP get_Incoming_(VARIANT* name, _ObjectCollection** result) override;
    STDMETHODIMP get_Outgoing(VARIANT* name, _ObjectCollection** result) override;
    STDMETHODIMP get_Incoming(VARIANT* name, _ObjectCollection** result) override;

private:
    ole::Ref<_ObjectCollection> Links(store::ObjectSet::Kind kind, const VARIANT& name);
};

}  // namespace repository::com
