#pragma once

#include "repository/store/meta_model.h"
#include "repository/store/value.h"

namespace repository::store {

/// The value of a property as it is to be kept. Throws where it does not fit the type (13, 380).
Value Checked(const MetaProperty& property, const Value& value);

}  // namespace repository::store
