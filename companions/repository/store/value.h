#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace repository::store {

/// An amount in ten-thousandths.
struct Currency {
    std::int64_t tenThousandths = 0;
    auto operator<=>(const Currency&) const = default;
};

/// Days since 30 December 1899, the time of day in the fraction.
struct Date {
    double days = 0;
    auto operator<=>(const Date&) const = default;
};

using Bytes = std::vector<std::uint8_t>;
using Empty = std::monostate;

/// A property's value. Texts are UTF-8. The alternatives' order is the `type` column of the file:
/// new ones go to the end.
using Value = std::variant<Empty, bool, std::uint8_t, std::int16_t, std::int32_t, std::int64_t,
                           float, double, Currency, Date, std::string, Bytes>;

inline bool IsEmpty(const Value& value) {
    return std::holds_alternative<Empty>(value);
}

/// What a property's values are, as its meta type says it.
enum class DataType {
    boolean,
    byte,
    integer,
    longInteger,
    longLong,
    singleFloat,
    doubleFloat,
    currency,
    date,
    string,
    blob,
    variant,
};

/// The word of a data type, such as "Long".
std::string_view WordOf(DataType type);

/// The data type of a word, without case; none for an unknown word.
std::optional<DataType> DataTypeOf(std::string_view word);

/// Whether a value is of a data type as it stands. Empty is of every one.
bool Fits(const Value& value, DataType type);

}  // namespace repository::store
