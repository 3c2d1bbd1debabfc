#pragma once

#include <comdef.h>

#include <string>
#include <vector>

#include "repository/store/meta_model.h"
#include "repository/store/value.h"

namespace repository::com {

// The functions that convert arguments may call the host back: an object's default property stands
// for the object. Members convert all their arguments before they look at the repository, which the
// host may have closed or changed meanwhile.

/// Whether the caller gave an optional argument.
bool IsGiven(const VARIANT& argument);

/// An argument as text, number or truth value, by the automation rules. Errors: 94 for Null, 13 and
/// 6 for what does not fit, 449 for an argument that was left out.
std::string TextOf(const VARIANT& argument);
long LongOf(const VARIANT& argument);
bool FlagOf(const VARIANT& argument);

/// An argument with references followed and an object's default property taken. Errors: 94 for
/// Null, 91 for Nothing, 13 for an error value.
_variant_t PlainValue(const VARIANT& argument);

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

/// A plain automation value as a value of the property. An empty text unsets what is no text.
/// Errors: 13 and 6 for what does not fit, 9 for an array of more than one dimension. Does not call
/// back.
store::Value ToValue(const _variant_t& plain, const store::MetaProperty& property);

/// A truth value as result.
VARIANT_BOOL ToResult(bool flag);

}  // namespace repository::com
