#pragma once

#include <memory>

#include "repository/com/elements.h"
#include "repository/com/repository.h"

namespace repository::com {

/// The properties of one object: all of its meta object's, or only the dynamic ones that have a
/// value.
enum class PropertySelection { all, dynamicWithValue };
std::unique_ptr<Elements> MakePropertyElements(Repository& repository,
                                               const store::ObjectRef& object,
                                               PropertySelection selection);

}  // namespace repository::com
