#include "repository/com/show.h"

#include "repository/com/link.h"
#include "repository/com/meta_link.h"
#include "repository/com/meta_node.h"
#include "repository/com/meta_property.h"
#include "repository/com/meta_type.h"
#include "repository/com/node.h"
#include "repository/com/property_value.h"

namespace repository::com {

ole::Ref<_MetaNode> Show(Repository& repository, const store::MetaNodeRef& node) {
    return ShowAs<MetaNode, _MetaNode>(repository, node);
}

ole::Ref<_MetaLink> Show(Repository& repository, const store::MetaLinkRef& link) {
    return ShowAs<MetaLink, _MetaLink>(repository, link);
}

ole::Ref<_MetaProperty> Show(Repository& repository, const store::MetaPropertyRef& property) {
    return ShowAs<MetaProperty, _MetaProperty>(repository, property);
}

ole::Ref<_MetaType> Show(Repository& repository, const store::MetaTypeRef& type) {
    return ShowAs<MetaType, _MetaType>(repository, type);
}

ole::Ref<_MetaEnum> Show(Repository& repository, const store::MetaEnumRef& enumeration) {
    return ShowAs<MetaEnum, _MetaEnum>(repository, enumeration);
}

ole::Ref<_MetaAtom> Show(Repository& repository, const std::shared_ptr<store::MetaAtom>& atom) {
    return ShowAs<MetaAtom, _MetaAtom>(repository, atom);
}

ole::Ref<IDispatch> Show(Repository& repository, const store::ObjectRef& object) {
    if (!object) return nullptr;
    if (object->IsLink()) return ShowLink(repository, object);
    return ShowNode(repository, object);
}

ole::Ref<_Node> ShowNode(Repository& repository, const store::ObjectRef& node) {
    return ShowAs<Node, _Node>(repository, node);
}

ole::Ref<_Link> ShowLink(Repository& repository, const store::ObjectRef& link) {
    return ShowAs<Link, _Link>(repository, link);
}

ole::Ref<IDispatch> Show(Repository& repository, const store::MetaObjectRef& object) {
    if (const auto node = std::dynamic_pointer_cast<store::MetaNode>(object)) {
        return Show(repository, node);
    }
    return Show(repository, std::dynamic_pointer_cast<store::MetaLink>(object));
}

ole::Ref<_PropertyValue> Show(Repository& repository, const HeldValue& value) {
    return ole::Make<PropertyValue>(repository, value);
}

}  // namespace repository::com
