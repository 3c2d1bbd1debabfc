#pragma once

#include <repository.h>

#include "ole/ref.h"
#include "repository/com/held.h"

namespace repository::com {

/// The automation object of an element; none for none. The same element is the same object as long
/// as somebody holds it.
ole::Ref<_MetaNode> Show(Repository& repository, const store::MetaNodeRef& node);
ole::Ref<_MetaLink> Show(Repository& repository, const store::MetaLinkRef& link);
ole::Ref<_MetaProperty> Show(Repository& repository, const store::MetaPropertyRef& property);
ole::Ref<_MetaType> Show(Repository& repository, const store::MetaTypeRef& type);
ole::Ref<_MetaEnum> Show(Repository& repository, const store::MetaEnumRef& enumeration);
ole::Ref<_MetaAtom> Show(Repository& repository, const std::shared_ptr<store::MetaAtom>& atom);

/// A node or a link.
ole::Ref<IDispatch> Show(Repository& repository, const store::ObjectRef& object);
ole::Ref<_Node> ShowNode(Repository& repository, const store::ObjectRef& node);
ole::Ref<_Link> ShowLink(Repository& repository, const store::ObjectRef& link);

/// A meta node or a meta link.
ole::Ref<IDispatch> Show(Repository& repository, const store::MetaObjectRef& object);

/// A property of one object.
ole::Ref<_PropertyValue> Show(Repository& repository, const HeldValue& value);

}  // namespace repository::com
