#include "ole/text.h"

#include <gtest/gtest.h>

#include "ole/error.h"
#include "support/fake_object.h"
#include "support/late_bound.h"

using namespace support;

namespace {

/// The automation number that `work` throws, 0 for none.
template <class Work>
int NumberThrownBy(Work&& work) {
    try {
        work();
    } catch (const _com_error& error) {
        return static_cast<int>(static_cast<unsigned long>(error.Error()) - 0x800A0000u);
    }
    return 0;
}

std::string Text(const Value& value) {
    return Utf8(ole::ToText(value).GetBSTR());
}

TEST(ToText, FollowsTheRulesOfAutomation) {
    EXPECT_EQ(Text("abc"), "abc");
    EXPECT_EQ(Text(5), "5");
    EXPECT_EQ(Text(-2.5), "-2.5");
    EXPECT_EQ(Text(true), "True");
    EXPECT_EQ(Text(false), "False");
    EXPECT_EQ(Text(Empty()), "");
    EXPECT_EQ(Text(NullText()), "");
    EXPECT_EQ(Text(Currency(12500)), "1.25");
    EXPECT_EQ(Text(Date(2)), "1/1/1900");
    EXPECT_EQ(Text(Bytes({'a', 0, 'b', 0})), "ab") << "bytes are a text's own";
}

TEST(ToText, KeepsZeroCharacters) {
    const Value text = std::wstring(L"a\0b", 3);
    Value variable = text;
    EXPECT_EQ(ole::ToWide(ole::ToText(text)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(ole::ToWide(ole::ToText(Variable(variable).Get())), std::wstring(L"a\0b", 3));
    EXPECT_EQ(ole::ToBstr(V_BSTR(&text)).length(), 3u);
    EXPECT_EQ(ole::ToBstr(nullptr).length(), 0u);
}

TEST(ToText, FollowsReferences) {
    Value variable = 5;
    long number = 6;
    EXPECT_EQ(Text(Variable(variable).Get()), "5");
    EXPECT_EQ(Text(Reference(number).Get()), "6");
}

TEST(ToText, RefusesWhatHasNoText) {
    EXPECT_EQ(NumberThrownBy([] { Text(Null()); }), 94);
    EXPECT_EQ(NumberThrownBy([] { Text(Nothing()); }), 91);
    EXPECT_EQ(NumberThrownBy([] { Text(Value(static_cast<IUnknown*>(nullptr))); }), 91);
    EXPECT_EQ(NumberThrownBy([] { Text(ErrorValue(static_cast<HRESULT>(0x800A07FA))); }), 13);
    EXPECT_EQ(NumberThrownBy([] { Text(Array({Value(1)})); }), 13);
    EXPECT_EQ(NumberThrownBy([] { Text(Reference(VT_BSTR, nullptr).Get()); }), 13);
}

TEST(ToText, OfAnObjectIsItsDefaultProperty) {
    const auto fake = FakeObject::Make("fake");
    fake->Property("[default]", 12);
    EXPECT_EQ(Text(fake), "12");
    fake->Store("[default]", Null());
    EXPECT_EQ(NumberThrownBy([&] { Text(fake); }), 94);
    fake->Store("[default]", fake);
    EXPECT_EQ(NumberThrownBy([&] { Text(fake); }), 13) << "a value that is the object itself";
    fake->Lacks("[default]");
    EXPECT_EQ(NumberThrownBy([&] { Text(fake); }), 438);
    fake->Dismantle();
}

TEST(ToTextOfAnything, WritesErrorValuesOut) {
    const auto text = [](const Value& value) {
        return Utf8(ole::ToTextOfAnything(value).GetBSTR());
    };
    EXPECT_EQ(text(ErrorValue(static_cast<HRESULT>(0x800A07FA))), "Error 2042");
    Value variable = ErrorValue(E_FAIL);
    EXPECT_EQ(text(Variable(variable).Get()), "Error 16389");
    const auto fake = FakeObject::Make("fake");
    fake->Property("[default]", ErrorValue(static_cast<HRESULT>(0x800A0005)));
    EXPECT_EQ(text(fake), "Error 5");
    EXPECT_EQ(text("abc"), "abc");
    EXPECT_EQ(NumberThrownBy([&] { text(Null()); }), 94);
}

TEST(Equal, ComparesTextsExactly) {
    EXPECT_TRUE(ole::Equal(Value("abc"), Value("abc")));
    EXPECT_FALSE(ole::Equal(Value("abc"), Value("ABC")));
    EXPECT_FALSE(ole::Equal(Value("a"), Value(L"a\u00AD"))) << "a character that sorting ignores";
    EXPECT_FALSE(ole::Equal(Value("a"), Value(std::wstring(L"a\0b", 3))));
    EXPECT_TRUE(ole::Equal(Value(""), NullText()));
    Value variable = "abc";
    EXPECT_TRUE(ole::Equal(Variable(variable).Get(), Value("abc")));
}

TEST(Equal, ComparesNumbersAcrossTypes) {
    EXPECT_TRUE(ole::Equal(Value(5), Value(short{5})));
    EXPECT_TRUE(ole::Equal(Value(5), Value(5.0)));
    EXPECT_FALSE(ole::Equal(Value(5), Value(6)));
    EXPECT_FALSE(ole::Equal(Value(5), Value("5"))) << "a text is no number";
    EXPECT_TRUE(ole::Equal(Empty(), Value("")));
    EXPECT_TRUE(ole::Equal(Empty(), Value(0)));
    EXPECT_TRUE(ole::Equal(Empty(), Empty()));
}

TEST(Equal, NullEqualsNothing) {
    EXPECT_FALSE(ole::Equal(Null(), Null()));
    EXPECT_FALSE(ole::Equal(Null(), Value(5)));
    EXPECT_FALSE(ole::Equal(Value("a"), Null()));
}

TEST(Equal, RefusesWhatCannotBeCompared) {
    EXPECT_EQ(NumberThrownBy([] { ole::Equal(ErrorValue(E_FAIL), Value(5)); }), 13);
    EXPECT_EQ(NumberThrownBy([] { ole::Equal(Bytes({1}), Bytes({1})); }), 13);
    EXPECT_EQ(NumberThrownBy([] { ole::Equal(Nothing(), Value(5)); }), 91);
}

TEST(Equal, TakesTheDefaultPropertyOfAnObject) {
    const auto fake = FakeObject::Make("fake");
    fake->Property("[default]", 5);
    EXPECT_TRUE(ole::Equal(Value(fake), Value(5)));
    EXPECT_FALSE(ole::Equal(Value(6), Value(fake)));
}

}  // namespace
