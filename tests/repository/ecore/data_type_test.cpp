#include "repository/ecore/data_type.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace repository::ecore {
namespace {

using store::Date;
using store::Value;

double DaysOf(std::string_view text) {
    const auto value = ParseValue(ValueKind::date, text);
    return value ? std::get<Date>(*value).days : -999999;
}

TEST(EcoreLines, ABackslashThatStandsForNothingElseIsOne) {
    EXPECT_EQ(SplitLines("a\\b\nc\\\\n\\nd\\"), (std::vector<std::string>{"a\\b", "c\\n\nd\\"}));
}

TEST(EcoreValue, DatesAreKeptInUniversalTimeWhereTheyHaveAZone) {
    EXPECT_EQ(DaysOf("1899-12-30"), 0);
    EXPECT_EQ(DaysOf("2000-01-01T12:00:00"), 36526.5);
    EXPECT_EQ(DaysOf("2000-01-01 12:00"), 36526.5);
    EXPECT_EQ(DaysOf("2000-01-01T12:00:00.000Z"), 36526.5);
    EXPECT_EQ(DaysOf("2000-01-01T14:00:00.000+0200"), 36526.5);
    EXPECT_EQ(DaysOf("2000-01-01T06:30:00-05:30"), 36526.5);
    EXPECT_EQ(DaysOf("1899-12-29T06:00:00"), -1.25);
    for (const char* bad : {"", "2000", "2000-13-01", "2000-02-30", "2000-01-01T",
                            "2000-01-01T25:00", "2000-01-01T12:00:00X", "0001-01-01"}) {
        EXPECT_FALSE(ParseValue(ValueKind::date, bad)) << bad;
    }
}

TEST(EcoreValue, WhatIsWrittenReadsTheSame) {
    const std::vector<std::pair<ValueKind, Value>> values = {
        {ValueKind::boolean, true},
        {ValueKind::int16, std::numeric_limits<std::int16_t>::min()},
        {ValueKind::int32, std::numeric_limits<std::int32_t>::max()},
        {ValueKind::int64, std::numeric_limits<std::int64_t>::min()},
        {ValueKind::float32, 0.1f},
        {ValueKind::float64, 0.1},
        {ValueKind::float64, 1e300},
        {ValueKind::float64, std::numeric_limits<double>::infinity()},
        {ValueKind::float32, -std::numeric_limits<float>::infinity()},
        {ValueKind::date, *ParseValue(ValueKind::date, "1850-05-05T23:59:59.999")},
        {ValueKind::date, *ParseValue(ValueKind::date, "2026-11-21T07:31:02.003")},
        {ValueKind::bytes, store::Bytes{0, 127, 255}},
        {ValueKind::text, std::string(" text ")},
    };
    for (const auto& [kind, value] : values) {
        EXPECT_EQ(ParseValue(kind, FormatValue(value)), value) << FormatValue(value);
    }
}

TEST(EcoreValue, WhatIsNoNumberIsRefused) {
    EXPECT_EQ(ParseValue(ValueKind::int32, " +7\n"), Value(std::int32_t{7}));
    EXPECT_EQ(ParseValue(ValueKind::float64, "INF"),
              Value(std::numeric_limits<double>::infinity()));
    for (const char* bad : {"", "x", "1x", "1.5", "2147483648", "+-1"}) {
        EXPECT_FALSE(ParseValue(ValueKind::int32, bad)) << bad;
    }
    for (const char* bad : {"", "x", "NaN", "1,5"}) {
        EXPECT_FALSE(ParseValue(ValueKind::float64, bad)) << bad;
    }
    EXPECT_FALSE(ParseValue(ValueKind::boolean, "yes"));
    EXPECT_FALSE(ParseValue(ValueKind::bytes, "0"));
    EXPECT_FALSE(ParseValue(ValueKind::bytes, "0G"));
}

TEST(EcoreValue, SeveralTextsAreKeptInOne) {
    for (const std::vector<std::string>& texts :
         {std::vector<std::string>{""}, {"a"}, {"a", "b"}, {"", ""}, {"a\nb", "\\n", "\\"}}) {
        EXPECT_EQ(SplitLines(JoinLines(texts)), texts);
    }
}

TEST(EcoreValue, StandardTypesAreKnownByNamespaceAndName) {
    const auto integer = StandardType("http://www.eclipse.org/emf/2002/Ecore", "EInt");
    ASSERT_TRUE(integer);
    EXPECT_EQ(integer->kind, ValueKind::int32);
    EXPECT_STREQ(integer->initial, "0");
    EXPECT_FALSE(StandardType("http://www.eclipse.org/emf/2002/Ecore", "EObject"));
    EXPECT_EQ(StandardType("http://www.eclipse.org/emf/2003/XMLType", "Double")->kind,
              ValueKind::float64);
    EXPECT_EQ(TypeOfInstanceClass("java.util.Date").kind, ValueKind::date);
    EXPECT_EQ(TypeOfInstanceClass("com.example.Colour").kind, ValueKind::text);
}

}  // namespace
}  // namespace repository::ecore
