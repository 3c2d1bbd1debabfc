#include "repository/com/node.h"

#include "repository/com/arguments.h"
#include "repository/com/object_elements.h"
#include "repository/com/show.h"

namespace repository::com {

using store::ObjectSet;

STDMETHODIMP Node::get_parent(_MetaNode** result) {
    return Do([&] {
        const auto meta = std::dynamic_pointer_cast<store::MetaNode>(Live()->meta);
        *result = Show(Whole(), meta).Detach();
    });
}

STDMETHODIMP Node::get_Outgoing_(VARIANT* name, _ObjectCollection** result) {
    return Do([&] { *result = Links(ObjectSet::Kind::outgoing, *name).Detach(); });
}

STDMETHODIMP Node::get_Incoming_(VARIANT* name, _ObjectCollection** result) {
    return Do([&] { *result = Links(ObjectSet::Kind::incoming, *name).Detach(); });
}

STDMETHODIMP Node::get_Outgoing(VARIANT* name, _ObjectCollection** result) {
    return get_Outgoing_(name, result);
}

STDMETHODIMP Node::get_Incoming(VARIANT* name, _ObjectCollection** result) {
    return get_Incoming_(name, result);
}

ole::Ref<_ObjectCollection> Node::Links(ObjectSet::Kind kind, const VARIANT& name) {
    store::Id meta = 0;
    if (IsGiven(name)) {
        const Reference metaLink(name);
        Live();
        meta = MetaLinkOf(Whole(), metaLink)->id;
    }
    const store::ObjectRef& node = Live();
    return MakeCollection(Whole(),
                          MakeObjectElements(Whole(), node, ObjectSet{kind, meta, node->id}));
}

}  // namespace repository::com
