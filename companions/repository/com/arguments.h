#pragma once

#include <oaidl.h>

#include "repository/com/held.h"

namespace repository::com {

/// The element that an object shows. Errors: 13 for an object that is not ours, 5 for one of
/// another repository.
Element ElementOf(Repository& repository, IUnknown& object);

// What an argument means: an object of ours, or a name or identifier. Errors: 5 where there is none
// of that name, 13 for an object of another kind, 91 for Nothing.

store::MetaNodeRef MetaNodeOf(Repository& repository, const VARIANT& argument);
store::MetaLinkRef MetaLinkOf(Repository& repository, const VARIANT& argument);
store::MetaObjectRef MetaObjectOf(Repository& repository, const VARIANT& argument);
store::MetaTypeRef MetaTypeOf(Repository& repository, const VARIANT& argument);
store::ObjectRef NodeOf(Repository& repository, const VARIANT& argument);

/// The element of an argument that has to be an object.
Element ElementOf(Repository& repository, const VARIANT& argument);

}  // namespace repository::com
