#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "repository/store/value.h"

namespace repository::ecore {

/// What the values of a data type are in a repository.
enum class ValueKind { text, boolean, int16, int32, int64, float32, float64, date, bytes };

/// A data type as far as a repository can tell it apart.
struct ValueType {
    ValueKind kind = ValueKind::text;
    /// What an attribute is that has neither value nor default; null for nothing.
    const char* initial = nullptr;
};

/// The type of a data type of Ecore or of XML Schema; none for an unknown one.
std::optional<ValueType> StandardType(std::string_view uri, std::string_view name);

/// The type of a data type whose values are objects of that Java class.
ValueType TypeOfInstanceClass(std::string_view instanceClass);

/// The name of the meta type that keeps such values.
const char* MetaTypeNameOf(ValueKind kind);

/// The value that a text stands for; none where it stands for none.
std::optional<store::Value> ParseValue(ValueKind kind, std::string_view text);

/// The kind that values of a type of the repository are written as: a text for those that Ecore
/// has no type for.
ValueKind KindOf(store::DataType type);

/// As above, for a property of that type.
std::optional<store::Value> ParseValue(store::DataType type, std::string_view text);

/// The text of a value: `ParseValue` reads the same value from it.
std::string FormatValue(const store::Value& value);

/// Several values in the one text that a repository keeps: a line for each, with line feeds and
/// backslashes in them as \n and \\. Before anything else a backslash is one.
std::string JoinLines(const std::vector<std::string>& values);
std::vector<std::string> SplitLines(std::string_view text);

}  // namespace repository::ecore
