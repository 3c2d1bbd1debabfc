#include "repository/store/value.h"

#include <array>
#include <utility>

#include "repository/store/text.h"

namespace repository::store {

namespace {

constexpr std::array<std::pair<DataType, std::string_view>, 12> words = {{
    {DataType::boolean, "Boolean"},
    {DataType::byte, "Byte"},
    {DataType::integer, "Integer"},
    {DataType::longInteger, "Long"},
    {DataType::longLong, "LongLong"},
    {DataType::singleFloat, "Single"},
    {DataType::doubleFloat, "Double"},
    {DataType::currency, "Currency"},
    {DataType::date, "Date"},
    {DataType::string, "String"},
    {DataType::blob, "Blob"},
    {DataType::variant, "Variant"},
}};

}  // namespace

std::string_view WordOf(DataType type) {
    for (const auto& [known, word] : words) {
        if (known == type) return word;
    }
    return {};
}

std::optional<DataType> DataTypeOf(std::string_view word) {
    const std::string folded = FoldCase(word);
    for (const auto& [type, known] : words) {
        if (FoldCase(known) == folded) return type;
    }
    return std::nullopt;
}

bool Fits(const Value& value, DataType type) {
    if (IsEmpty(value)) return true;
    switch (type) {
        case DataType::boolean:
            return std::holds_alternative<bool>(value);
        case DataType::byte:
            return std::holds_alternative<std::uint8_t>(value);
        case DataType::integer:
            return std::holds_alternative<std::int16_t>(value);
        case DataType::longInteger:
            return std::holds_alternative<std::int32_t>(value);
        case DataType::longLong:
            return std::holds_alternative<std::int64_t>(value);
        case DataType::singleFloat:
            return std::holds_alternative<float>(value);
        case DataType::doubleFloat:
            return std::holds_alternative<double>(value);
        case DataType::currency:
            return std::holds_alternative<Currency>(value);
        case DataType::date:
            return std::holds_alternative<Date>(value);
        case DataType::string:
            return std::holds_alternative<std::string>(value);
        case DataType::blob:
            return std::holds_alternative<Bytes>(value);
        case DataType::variant:
            return true;
    }
    return false;
}

}  // namespace repository::store
