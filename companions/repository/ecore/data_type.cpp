#include "repository/ecore/data_type.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "repository/ecore/uri.h"

namespace repository::ecore {

namespace {

struct Named {
    std::string_view name;
    ValueType type;
};

constexpr Named ecoreTypes[] = {
    {"EBigDecimal", {}},
    {"EBigInteger", {}},
    {"EBoolean", {ValueKind::boolean, "false"}},
    {"EBooleanObject", {ValueKind::boolean}},
    {"EByte", {ValueKind::int16, "0"}},
    {"EByteArray", {ValueKind::bytes}},
    {"EByteObject", {ValueKind::int16}},
    {"EChar", {}},
    {"ECharacterObject", {}},
    {"EDate", {ValueKind::date}},
    {"EDiagnosticChain", {}},
    {"EDouble", {ValueKind::float64, "0"}},
    {"EDoubleObject", {ValueKind::float64}},
    {"EEList", {}},
    {"EEnumerator", {}},
    {"EFeatureMap", {}},
    {"EFeatureMapEntry", {}},
    {"EFloat", {ValueKind::float32, "0"}},
    {"EFloatObject", {ValueKind::float32}},
    {"EInt", {ValueKind::int32, "0"}},
    {"EIntegerObject", {ValueKind::int32}},
    {"EInvocationTargetException", {}},
    {"EJavaClass", {}},
    {"EJavaObject", {}},
    {"ELong", {ValueKind::int64, "0"}},
    {"ELongObject", {ValueKind::int64}},
    {"EMap", {}},
    {"EResource", {}},
    {"EResourceSet", {}},
    {"EShort", {ValueKind::int16, "0"}},
    {"EShortObject", {ValueKind::int16}},
    {"EString", {}},
    {"ETreeIterator", {}},
};

/// All others are texts.
constexpr Named xmlTypes[] = {
    {"Boolean", {ValueKind::boolean, "false"}},  {"BooleanObject", {ValueKind::boolean}},
    {"Byte", {ValueKind::int16, "0"}},           {"ByteObject", {ValueKind::int16}},
    {"Double", {ValueKind::float64, "0"}},       {"DoubleObject", {ValueKind::float64}},
    {"Float", {ValueKind::float32, "0"}},        {"FloatObject", {ValueKind::float32}},
    {"HexBinary", {ValueKind::bytes}},           {"Int", {ValueKind::int32, "0"}},
    {"IntObject", {ValueKind::int32}},           {"Long", {ValueKind::int64, "0"}},
    {"LongObject", {ValueKind::int64}},          {"Short", {ValueKind::int16, "0"}},
    {"ShortObject", {ValueKind::int16}},         {"UnsignedByte", {ValueKind::int16, "0"}},
    {"UnsignedByteObject", {ValueKind::int16}},  {"UnsignedInt", {ValueKind::int64, "0"}},
    {"UnsignedIntObject", {ValueKind::int64}},   {"UnsignedShort", {ValueKind::int32, "0"}},
    {"UnsignedShortObject", {ValueKind::int32}},
};

constexpr Named instanceClasses[] = {
    {"boolean", {ValueKind::boolean, "false"}},
    {"byte", {ValueKind::int16, "0"}},
    {"byte[]", {ValueKind::bytes}},
    {"double", {ValueKind::float64, "0"}},
    {"float", {ValueKind::float32, "0"}},
    {"int", {ValueKind::int32, "0"}},
    {"java.lang.Boolean", {ValueKind::boolean}},
    {"java.lang.Byte", {ValueKind::int16}},
    {"java.lang.Double", {ValueKind::float64}},
    {"java.lang.Float", {ValueKind::float32}},
    {"java.lang.Integer", {ValueKind::int32}},
    {"java.lang.Long", {ValueKind::int64}},
    {"java.lang.Short", {ValueKind::int16}},
    {"java.util.Date", {ValueKind::date}},
    {"long", {ValueKind::int64, "0"}},
    {"short", {ValueKind::int16, "0"}},
};

template <std::size_t size>
const Named* FindIn(const Named (&list)[size], std::string_view name) {
    for (const Named& each : list) {
        if (each.name == name) return &each;
    }
    return nullptr;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <class Number>
std::optional<store::Value> ParseNumber(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) {
        return std::nullopt;
    }
    if constexpr (std::is_floating_point_v<Number>) {
        if (std::isnan(number)) return std::nullopt;
    }
    return number;
}

template <class Number>
std::optional<store::Value> ParseReal(std::string_view text) {
    if (text == "INF" || text == "+INF") text = "Infinity";
    if (text == "-INF") text = "-Infinity";
    return ParseNumber<Number>(text);
}

std::optional<store::Value> ParseCurrency(std::string_view text) {
    const auto number = ParseNumber<double>(text);
    if (!number) return std::nullopt;
    const double tenThousandths = std::round(std::get<double>(*number) * 10'000);
    constexpr double limit = 9.2e18;
    if (!(std::abs(tenThousandths) < limit)) return std::nullopt;
    return store::Currency{static_cast<std::int64_t>(tenThousandths)};
}

std::optional<store::Value> ParseBoolean(std::string_view text) {
    if (text == "true" || text == "1") return true;
    if (text == "false" || text == "0") return false;
    return std::nullopt;
}

std::optional<store::Value> ParseBytes(std::string_view text) {
    if (text.size() % 2 != 0) return std::nullopt;
    store::Bytes bytes;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        std::uint8_t byte = 0;
        const char* end = text.data() + at + 2;
        const auto result = std::from_chars(text.data() + at, end, byte, 16);
        if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
        bytes.push_back(byte);
    }
    return bytes;
}

// Dates: year-month-day, also with a time of day and a zone. What has a zone is kept in universal
// time.

constexpr std::int64_t dayInMilliseconds = 86'400'000;
constexpr std::chrono::sys_days dayZero =
    std::chrono::year(1899) / std::chrono::December / std::chrono::day(30);

/// Takes numbers and signs from the front of a text.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    bool Number(std::size_t digits, int& number) {
        if (text_.size() < digits) return false;
        const char* end = text_.data() + digits;
        const auto result = std::from_chars(text_.data(), end, number);
        if (result.ec != std::errc() || result.ptr != end || number < 0) return false;
        text_.remove_prefix(digits);
        return true;
    }
    bool Sign(char sign) {
        if (!text_.starts_with(sign)) return false;
        text_.remove_prefix(1);
        return true;
    }
    bool IsAtEnd() const { return text_.empty(); }

    /// The digits of a fraction, in thousandths; further ones do not count.
    int Fraction() {
        int thousandths = 0;
        int unit = 100;
        while (!text_.empty() && text_.front() >= '0' && text_.front() <= '9') {
            thousandths += (text_.front() - '0') * unit;
            unit /= 10;
            text_.remove_prefix(1);
        }
        return thousandths;
    }

private:
    std::string_view text_;
};

bool ScanTime(Scanner& scanner, std::int64_t& milliseconds) {
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!scanner.Number(2, hour) || !scanner.Sign(':') || !scanner.Number(2, minute)) return false;
    if (scanner.Sign(':') && !scanner.Number(2, second)) return false;
    if (hour > 24 || minute > 59 || second > 60) return false;
    milliseconds = ((hour * 60 + minute) * 60 + second) * std::int64_t{1000};
    if (scanner.Sign('.')) milliseconds += scanner.Fraction();
    return true;
}

bool ScanZone(Scanner& scanner, std::int64_t& milliseconds) {
    if (scanner.Sign('Z')) return true;
    const bool east = scanner.Sign('+');
    if (!east && !scanner.Sign('-')) return true;
    int hour = 0;
    int minute = 0;
    if (!scanner.Number(2, hour)) return false;
    scanner.Sign(':');
    if (!scanner.IsAtEnd() && !scanner.Number(2, minute)) return false;
    const std::int64_t distance = (hour * 60 + minute) * std::int64_t{60'000};
    milliseconds += east ? -distance : distance;
    return true;
}

std::optional<store::Value> ParseDate(std::string_view text) {
    Scanner scanner(text);
    int year = 0;
    int month = 0;
    int day = 0;
    if (!scanner.Number(4, year) || !scanner.Sign('-') || !scanner.Number(2, month) ||
        !scanner.Sign('-') || !scanner.Number(2, day)) {
        return std::nullopt;
    }
    const auto date = std::chrono::year(year) / month / day;
    if (!date.ok() || year < 100) return std::nullopt;
    std::int64_t time = 0;
    if (!scanner.IsAtEnd()) {
        if (!scanner.Sign('T') && !scanner.Sign(' ')) return std::nullopt;
        if (!ScanTime(scanner, time) || !ScanZone(scanner, time)) return std::nullopt;
        if (!scanner.IsAtEnd()) return std::nullopt;
    }
    const std::int64_t all =
        (std::chrono::sys_days(date) - dayZero).count() * dayInMilliseconds + time;
    const std::int64_t days = all / dayInMilliseconds - (all % dayInMilliseconds < 0 ? 1 : 0);
    const double fraction = static_cast<double>(all - days * dayInMilliseconds) /
                            static_cast<double>(dayInMilliseconds);
    // Before day zero the time of day counts away from it.
    const auto whole = static_cast<double>(days);
    return store::Date{days < 0 ? whole - fraction : whole + fraction};
}

std::string FormatDate(store::Date date) {
    double days = std::trunc(date.days);
    double fraction = std::abs(date.days - days);
    auto milliseconds =
        static_cast<std::int64_t>(std::llround(fraction * static_cast<double>(dayInMilliseconds)));
    if (milliseconds == dayInMilliseconds) {
        days += 1;
        milliseconds = 0;
    }
    const std::chrono::year_month_day day(dayZero +
                                          std::chrono::days(static_cast<std::int64_t>(days)));
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03d",
                                     int(day.year()), unsigned(day.month()), unsigned(day.day()),
                                     int(milliseconds / 3'600'000), int(milliseconds / 60'000 % 60),
                                     int(milliseconds / 1000 % 60), int(milliseconds % 1000));
    return {text.data(), static_cast<std::size_t>(length)};
}

template <class Number>
std::string FormatNumber(Number number) {
    if constexpr (std::is_floating_point_v<Number>) {
        if (std::isinf(number)) return number > 0 ? "Infinity" : "-Infinity";
    }
    std::array<char, 64> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

}  // namespace

std::optional<ValueType> StandardType(std::string_view uri, std::string_view name) {
    if (uri == uri::ecore) {
        const Named* found = FindIn(ecoreTypes, name);
        return found != nullptr ? std::optional(found->type) : std::nullopt;
    }
    if (uri == uri::xmlType) {
        const Named* found = FindIn(xmlTypes, name);
        return found != nullptr ? found->type : ValueType{};
    }
    return std::nullopt;
}

ValueType TypeOfInstanceClass(std::string_view instanceClass) {
    const Named* found = FindIn(instanceClasses, instanceClass);
    return found != nullptr ? found->type : ValueType{};
}

const char* MetaTypeNameOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::text:
            return "String";
        case ValueKind::boolean:
            return "Boolean";
        case ValueKind::int16:
            return "Integer";
        case ValueKind::int32:
            return "Long";
        case ValueKind::int64:
            return "LongLong";
        case ValueKind::float32:
            return "Single";
        case ValueKind::float64:
            return "Double";
        case ValueKind::date:
            return "Date";
        case ValueKind::bytes:
            return "BLOB";
    }
    return "String";
}

std::optional<store::Value> ParseValue(ValueKind kind, std::string_view text) {
    const std::string_view trimmed = Trimmed(text);
    switch (kind) {
        case ValueKind::text:
            return std::string(text);
        case ValueKind::boolean:
            return ParseBoolean(trimmed);
        case ValueKind::int16:
            return ParseNumber<std::int16_t>(trimmed);
        case ValueKind::int32:
            return ParseNumber<std::int32_t>(trimmed);
        case ValueKind::int64:
            return ParseNumber<std::int64_t>(trimmed);
        case ValueKind::float32:
            return ParseReal<float>(trimmed);
        case ValueKind::float64:
            return ParseReal<double>(trimmed);
        case ValueKind::date:
            return ParseDate(trimmed);
        case ValueKind::bytes:
            return ParseBytes(trimmed);
    }
    return std::nullopt;
}

ValueKind KindOf(store::DataType type) {
    switch (type) {
        case store::DataType::boolean:
            return ValueKind::boolean;
        case store::DataType::integer:
            return ValueKind::int16;
        case store::DataType::longInteger:
            return ValueKind::int32;
        case store::DataType::longLong:
            return ValueKind::int64;
        case store::DataType::singleFloat:
            return ValueKind::float32;
        case store::DataType::doubleFloat:
            return ValueKind::float64;
        case store::DataType::date:
            return ValueKind::date;
        case store::DataType::blob:
            return ValueKind::bytes;
        case store::DataType::byte:
        case store::DataType::currency:
        case store::DataType::string:
        case store::DataType::variant:
            return ValueKind::text;
    }
    return ValueKind::text;
}

std::optional<store::Value> ParseValue(store::DataType type, std::string_view text) {
    if (type == store::DataType::byte) return ParseNumber<std::uint8_t>(Trimmed(text));
    if (type == store::DataType::currency) return ParseCurrency(Trimmed(text));
    return ParseValue(KindOf(type), text);
}

std::string FormatValue(const store::Value& value) {
    struct Format {
        std::string operator()(store::Empty) const { return {}; }
        std::string operator()(bool flag) const { return flag ? "true" : "false"; }
        std::string operator()(store::Currency amount) const {
            return FormatNumber(static_cast<double>(amount.tenThousandths) / 10'000);
        }
        std::string operator()(store::Date date) const { return FormatDate(date); }
        std::string operator()(const std::string& text) const { return text; }
        std::string operator()(const store::Bytes& bytes) const {
            constexpr std::string_view digits = "0123456789ABCDEF";
            std::string text;
            for (const std::uint8_t byte : bytes) {
                text += digits[byte >> 4];
                text += digits[byte & 15];
            }
            return text;
        }
        std::string operator()(std::uint8_t number) const { return std::to_string(number); }
        std::string operator()(std::int16_t number) const { return FormatNumber(number); }
        std::string operator()(std::int32_t number) const { return FormatNumber(number); }
        std::string operator()(std::int64_t number) const { return FormatNumber(number); }
        std::string operator()(float number) const { return FormatNumber(number); }
        std::string operator()(double number) const { return FormatNumber(number); }
    };
    return std::visit(Format(), value);
}

std::string JoinLines(const std::vector<std::string>& values) {
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0) text += '\n';
        for (const char letter : values[i]) {
            if (letter == '\\') {
                text += "\\\\";
            } else if (letter == '\n') {
                text += "\\n";
            } else {
                text += letter;
            }
        }
    }
    return text;
}

std::vector<std::string> SplitLines(std::string_view text) {
    std::vector<std::string> values(1);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\n') {
            values.emplace_back();
        } else if (text.substr(at).starts_with("\\n")) {
            values.back() += '\n';
            ++at;
        } else if (text.substr(at).starts_with("\\\\")) {
            values.back() += text[at++];
        } else {
            values.back() += text[at];
        }
    }
    return values;
}

}  // namespace repository::ecore
