#pragma once

#include "repository/com/meta_object.h"

namespace repository::com {

/// `OrvaneRepository.MetaNode`.
class MetaNode final : public MetaObject<_MetaNode, CLSID_MetaNode, store::MetaNode> {
public:
    using MetaObject::MetaObject;

    STDMETHODIMP get_Outgoing(VARIANT* name, IDispatch** result) override;
    STDMETHODIMP get_Incoming(VARIANT* name, IDispatch** result) override;

private:
    /// The built-in meta nodes have the parts of the meta model as their instances.
    std::unique_ptr<Elements> Instances() override;
};

}  // namespace repository::com
