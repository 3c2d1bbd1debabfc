#pragma once

#include <string>
#include <string_view>

#include "repository/ecore/metamodel.h"

namespace repository::ecore {

/// "Class.feature".
std::string LabelOf(const Feature& feature);

/// The front of the identifiers of the objects of a file that have none of their own: its name
/// without extension and without what an address cannot contain. The objects are numbered.
std::string IdentifierStem(std::string_view fileName);

/// The name of an object that has none of its own: "Class 17" for the identifier "file~17", else
/// the identifier.
std::string NameFor(const Class& type, std::string_view identifier);

/// A name that XML has for elements, as near to a text as possible.
std::string XmlName(std::string_view text);

/// Whether an identifier can stand in a list of references.
bool IsPlainIdentifier(std::string_view identifier);

}  // namespace repository::ecore
