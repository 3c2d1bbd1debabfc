#include "repository/com/repository_fixture.h"

#include <limits>

namespace repository {
namespace {

class ValueTest : public RepositoryTest {
protected:
    /// A property of that type, named like it.
    void Make(const char* type) {
        ASSERT_TRUE(rep.Call("MakeProperty", person.Get(), type, "", "", type));
    }

    /// What a value that is set reads as, from the file.
    Value RoundTrip(const char* property, const Value& value) {
        const Outcome set = anna.Do("SetProperty", property, value);
        EXPECT_TRUE(set) << set.Text();
        EXPECT_TRUE(rep.Do("Refresh"));
        return Result(anna.Call("GetProperty", property));
    }

    int ErrorOfSetting(const char* property, const Value& value) {
        const Value before = Result(anna.Call("GetProperty", property));
        const int number = ErrorOf(anna.Do("SetProperty", property, value));
        EXPECT_EQ(Result(anna.Call("GetProperty", property)), before);
        return number;
    }
};

TEST_F(ValueTest, ValuesComeBackInTheDeclaredType) {
    for (const char* type : {"Integer", "Double", "Single", "Currency", "Date", "Boolean"})
        Make(type);
    EXPECT_EQ(RoundTrip("Age", 7), Value(7));
    EXPECT_EQ(RoundTrip("Age", "8"), Value(8));
    EXPECT_EQ(RoundTrip("Age", 8.6), Value(9));
    EXPECT_EQ(RoundTrip("Age", true), Value(-1));
    EXPECT_EQ(RoundTrip("Integer", -32768), Value(short{-32768}));
    EXPECT_EQ(RoundTrip("Double", 0.1), Value(0.1));
    EXPECT_EQ(RoundTrip("Single", 1.5), Value(_variant_t(1.5f)));
    EXPECT_EQ(RoundTrip("Currency", 1.23455), support::Currency(12346));
    EXPECT_EQ(RoundTrip("Currency", support::Currency(9'000'000'000'000'000'001)),
              support::Currency(9'000'000'000'000'000'001));
    EXPECT_EQ(RoundTrip("Date", support::Date(-3.5)), support::Date(-3.5));
    EXPECT_EQ(RoundTrip("Boolean", "True"), Value(true));
    EXPECT_EQ(RoundTrip("Boolean", 0), Value(false));
}

TEST_F(ValueTest, TextsKeepEveryCharacter) {
    Make("String");
    Make("NOTE");
    for (const std::wstring& text :
         {std::wstring(L"Gr\u00FC\u00DFe \u65E5\u672C \xD83D\xDE00"), std::wstring(L"a\r\nb\tc"),
          std::wstring(L"x\0y", 3), std::wstring(L"\xD800 alone \xDC00"),
          std::wstring(5000, L'x')}) {
        EXPECT_EQ(RoundTrip("String", Value(text)), Value(text));
        EXPECT_EQ(RoundTrip("NOTE", Value(text)), Value(text));
        ASSERT_TRUE(anna.Put("name", Value(text)));
        EXPECT_EQ(Result(anna.Call("name")), Value(text));
    }
}

TEST_F(ValueTest, BytesComeAndGoAsArrays) {
    Make("BLOB");
    using Content = std::vector<unsigned char>;
    EXPECT_EQ(BytesIn(RoundTrip("BLOB", support::Bytes({0, 1, 255}))), (Content{0, 1, 255}));
    EXPECT_EQ(BytesIn(RoundTrip("BLOB", support::Array({1, "2", 255.0}))), (Content{1, 2, 255}));
    EXPECT_EQ(BytesIn(RoundTrip("BLOB", support::Bytes({}))), Content{});
    EXPECT_EQ(RoundTrip("BLOB", ""), support::Empty());
    EXPECT_EQ(ErrorOfSetting("BLOB", support::Array({256})), 6);
    EXPECT_EQ(ErrorOfSetting("BLOB", support::Array({"x"})), 13);
    EXPECT_EQ(ErrorOfSetting("BLOB", 5), 13);
    EXPECT_EQ(ErrorOfSetting("BLOB", "text"), 13);
}

TEST_F(ValueTest, ArraysOfMoreThanOneDimensionAreRefused) {
    Make("BLOB");
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    Value square;
    V_ARRAY(&square) = SafeArrayCreate(VT_UI1, 2, bounds);
    V_VT(&square) = VT_ARRAY | VT_UI1;
    EXPECT_EQ(ErrorOfSetting("BLOB", square), 9);
}

TEST_F(ValueTest, VariantKeepsTheTypeThatItWasGiven) {
    Make("Variant");
    for (const Value& value :
         {Value(5), Value(short{5}), Value(2.5), Value(true), Value("text"), Value(""),
          support::Date(36526), support::Currency(25000), Value(_variant_t(BYTE{200}))}) {
        EXPECT_EQ(RoundTrip("Variant", value), value);
    }
    EXPECT_EQ(BytesIn(RoundTrip("Variant", support::Bytes({1, 2}))),
              (std::vector<unsigned char>{1, 2}));
    EXPECT_EQ(RoundTrip("Variant", support::Empty()), support::Empty());
}

TEST_F(ValueTest, WhatDoesNotFitIsRefusedAndTheValueStays) {
    Make("Integer");
    Make("Boolean");
    Make("Date");
    Make("Currency");
    Make("String");
    ASSERT_TRUE(anna.Do("SetProperty", "Age", 5));
    EXPECT_EQ(ErrorOfSetting("Age", "six"), 13);
    EXPECT_EQ(ErrorOfSetting("Age", 3e10), 6);
    EXPECT_EQ(ErrorOfSetting("Integer", 40000), 6);
    EXPECT_EQ(ErrorOfSetting("Boolean", "maybe"), 13);
    EXPECT_EQ(ErrorOfSetting("Date", "yesterday"), 13);
    EXPECT_EQ(ErrorOfSetting("Currency", 1e20), 6);
    EXPECT_EQ(ErrorOfSetting("String", support::Null()), 94);
    EXPECT_EQ(ErrorOfSetting("Age", support::Null()), 94);
    EXPECT_EQ(ErrorOfSetting("Age", support::Nothing()), 91);
    EXPECT_EQ(ErrorOfSetting("Age", support::Bytes({1})), 13);
    EXPECT_EQ(ErrorOfSetting("String", support::ErrorValue(DISP_E_EXCEPTION)), 13);
}

TEST_F(ValueTest, UnsetValuesReadEmpty) {
    Make("String");
    Make("Boolean");
    for (const char* property : {"Age", "String", "Boolean"}) {
        EXPECT_EQ(Result(anna.Call("GetProperty", property)), support::Empty());
    }
    EXPECT_EQ(RoundTrip("Age", 5), Value(5));
    EXPECT_EQ(RoundTrip("Age", support::Empty()), support::Empty());
    EXPECT_EQ(RoundTrip("Age", 5), Value(5));
    EXPECT_EQ(RoundTrip("Age", ""), support::Empty());
}

TEST_F(ValueTest, AnEmptyTextSetsNothingWhereNothingIsSet) {
    Make("String");
    EXPECT_EQ(RoundTrip("String", ""), support::Empty());
    EXPECT_EQ(RoundTrip("String", "x"), Value("x"));
    EXPECT_EQ(RoundTrip("String", ""), Value(""));
}

TEST_F(ValueTest, EnumeratedValuesAreThoseOfTheEnumeration) {
    ASSERT_TRUE(rep.Call("MakeMetaEnum", "Kind", "Alpha | Beta"));
    Make("Kind");
    EXPECT_EQ(RoundTrip("Kind", "Alpha"), Value("Alpha"));
    EXPECT_EQ(RoundTrip("Kind", "BETA"), Value("Beta"));
    EXPECT_EQ(ErrorOfSetting("Kind", "Gamma"), 380);
    EXPECT_EQ(RoundTrip("Kind", ""), support::Empty());
}

TEST_F(ValueTest, AnObjectStandsForItsDefaultProperty) {
    Make("String");
    const LateBound type = ObjectIn(rep.Call("MetaTypes", "NOTE"));
    EXPECT_EQ(RoundTrip("String", Value(type.Get())), Value("NOTE"));
    EXPECT_EQ(ErrorOfSetting("String", Value(person.Get())), 438);
}

TEST_F(ValueTest, VariablesAndLiteralsAreTheSame) {
    Value name("Age");
    Value value(_variant_t(short{12}));
    ASSERT_TRUE(anna.Do("SetProperty", support::Variable(name), support::Variable(value)));
    EXPECT_EQ(value, Value(short{12}));
    EXPECT_EQ(Result(anna.Call("GetProperty", support::Variable(name))), Value(12));
    long number = 13;
    ASSERT_TRUE(anna.Do("SetProperty", "Age", support::Reference(number)));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), Value(13));
}

TEST_F(ValueTest, ValuesStayAndReadInTheTypeThatThePropertyGets) {
    Make("String");
    ASSERT_TRUE(anna.Do("SetProperty", "String", "12"));
    ASSERT_TRUE(ben.Do("SetProperty", "String", "many"));
    ASSERT_TRUE(ObjectIn(person.Call("Properties", "String")).Put("MetaType", "Long"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "String")), Value(12));
    EXPECT_EQ(Result(ben.Call("GetProperty", "String")), Value("many"));
    ASSERT_TRUE(ben.Do("SetProperty", "String", "many"));
    EXPECT_EQ(ErrorOf(ben.Do("SetProperty", "String", "few")), 13);
    ASSERT_TRUE(ObjectIn(person.Call("Properties", "String")).Put("MetaType", "String"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "String")), Value("12"));
}

TEST_F(ValueTest, PropertiesOfAnObjectAreObjectsWithAValue) {
    const LateBound property = ObjectIn(anna.Call("Properties", "age"));
    EXPECT_EQ(TextOf(property, "name"), "Age");
    EXPECT_EQ(TextOf(property, "identifier"), "Age");
    EXPECT_EQ(TextOf(property, "Description"), "In years");
    EXPECT_TRUE(Same(ObjectIn(property.Call("parent")), age));
    EXPECT_EQ(Result(property.Call("Value")), support::Empty());
    ASSERT_TRUE(property.Put("Value", "33"));
    EXPECT_EQ(Result(anna.Call("GetProperty", "Age")), Value(33));
    EXPECT_EQ(Result(property.Default()), Value(33));
    EXPECT_EQ(Result(property.Call("GetProperty", "Value")), Value(33));
    EXPECT_EQ(Result(property.Call("GetProperty", "DataType")), Value("Long"));
}

}  // namespace
}  // namespace repository
