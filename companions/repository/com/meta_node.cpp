#include "repository/com/meta_node.h"

#include "repository/com/model_elements.h"

namespace repository::com {

STDMETHODIMP MetaNode::get_Outgoing(VARIANT* name, IDispatch** result) {
    return Do([&] {
        const Key key(*name);
        auto links = MakeNamedElements<store::MetaLink>(
            Whole(), [element = Live()]() -> const auto& {
                RequireLive(*element);
                return element->outgoing;
            });
        *result = CollectionOrElement(Whole(), std::move(links), key).Detach();
    });
}

STDMETHODIMP MetaNode::get_Incoming(VARIANT* name, IDispatch** result) {
    return Do([&] {
        const Key key(*name);
        auto links = MakeNamedElements<store::MetaLink>(
            Whole(), [element = Live()]() -> const auto& {
                RequireLive(*element);
                return element->incoming;
            });
        *result = CollectionOrElement(Whole(), std::move(links), key).Detach();
    });
}

std::unique_ptr<Elements> MetaNode::Instances() {
    const store::MetaNode& node = *Live();
    if (!node.builtIn) return MetaObject::Instances();
    if (node.name == store::built_in::metaNode) return MakeMetaNodeElements(Whole());
    if (node.name == store::built_in::metaLink) return MakeMetaLinkElements(Whole());
    return MakeMetaPropertyElements(Whole());
}

}  // namespace repository::com
