#pragma once

#include <comdef.h>

#include <string>
#include <vector>

#include "repository/store/meta_model.h"
#include "repository/store/value.h"

namespace repository::com {

/// Whether the caller gave an optional argument.
bool IsGiven(const VARIANT& argument);

/// An argument as text, number or truth value, by the automation rules. Errors: 94 for Null, 13 and
/// 6 for what does not fit, 449 for an argument that was left out.
std::string TextOf(const VARIANT& argument);
long LongOf(const VARIANT& argument);
bool FlagOf(const VARIANT& argument);

/// Whether an argument is an array, and its elements as texts.
bool IsArray(const VARIANT& argument);
std::vector<std::string> TextsOf(const VARIANT& argument);

/// An array of texts.
_variant_t ToArray(const std::vector<std::string>& texts);

/// The text of an optional argument.
std::string TextOr(const VARIANT& argument, const std::string& otherwise);

/// A stored value as automation value, in the type that the property has now where it converts to
/// that, else in the one it was written in.
_variant_t ToVariant(const store::Value& value, const store::MetaProperty& property);

/// A plain automation value or array of bytes in the type that it has.
store::Value ValueAsGiven(const VARIANT& value);

/// An automation value as a value of the property. An empty text unsets what is no text. Errors:
/// 94, 91 for Nothing, 13 and 6 for what does not fit, 9 for an array of more than one dimension.
store::Value ToValue(const VARIANT& value, const store::MetaProperty& property);

/// A truth value as result.
VARIANT_BOOL ToResult(bool flag);

}  // namespace repository::com
