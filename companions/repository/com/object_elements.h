#pragma once

#include <memory>
#include <vector>

#include "repository/com/elements.h"
#include "repository/com/repository.h"
#include "repository/store/object.h"

namespace repository::com {

/// The nodes or links of a set, read in blocks. `owner` is the object or meta object that the set
/// belongs to: when it is removed, the set is gone with it.
std::unique_ptr<Elements> MakeObjectElements(Repository& repository,
                                             const store::MetaObjectRef& owner);
std::unique_ptr<Elements> MakeObjectElements(Repository& repository, const store::ObjectRef& owner,
                                             const store::ObjectSet& set);

}  // namespace repository::com
