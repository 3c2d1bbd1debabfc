#include <gmock/gmock.h>

#include "spy.h"
#include "support/fake_object.h"

using namespace support;
using testing::ElementsAre;

namespace {

class DispatchArgument : public SpyTest {};

TEST_F(DispatchArgument, ValueOfTheDeclaredTypeArrivesAsItIs) {
    EXPECT_TRUE(object.Do("Text", "abc"));
    EXPECT_TRUE(object.Do("Long", 70000));
    EXPECT_TRUE(object.Do("Short", short{-5}));
    EXPECT_TRUE(object.Do("Flag", true));
    EXPECT_TRUE(object.Do("Double", 2.5));
    EXPECT_TRUE(object.Do("Single", 0.25));
    EXPECT_TRUE(object.Do("Byte", 255));
    EXPECT_TRUE(object.Do("Money", Currency(12500)));
    EXPECT_TRUE(object.Do("Moment", Date(1.5)));
    EXPECT_TRUE(object.Do("Choice", 7));
    EXPECT_TRUE(object.Do("Tint", 0x00FFFFFF));
    EXPECT_TRUE(object.Do("Bytes", Bytes({1, 2, 255})));
    EXPECT_THAT(spy->calls, ElementsAre("Text(\"abc\")", "Long(70000)", "Short(-5)", "Flag(True)",
                                        "Double(2.5)", "Single(0.25)", "Byte(255)", "Money(1.25)",
                                        "Moment(12/31/1899 12:00:00)", "Choice(7)",
                                        "Tint(16777215)", "Bytes(bytes 1 2 255)"));
}

TEST_F(DispatchArgument, OtherTypesAreConvertedAsAutomationDoes) {
    EXPECT_TRUE(object.Do("Text", 5));
    EXPECT_TRUE(object.Do("Text", true));
    EXPECT_TRUE(object.Do("Text", Empty()));
    EXPECT_TRUE(object.Do("Long", "42"));
    EXPECT_TRUE(object.Do("Long", 2.5));
    EXPECT_TRUE(object.Do("Long", 3.5));
    EXPECT_TRUE(object.Do("Long", true));
    EXPECT_TRUE(object.Do("Long", Empty()));
    EXPECT_TRUE(object.Do("Flag", 1));
    EXPECT_TRUE(object.Do("Flag", "False"));
    EXPECT_TRUE(object.Do("Double", "7"));
    EXPECT_TRUE(object.Do("Choice", "1"));
    EXPECT_TRUE(object.Do("Money", 3));
    EXPECT_THAT(spy->calls, ElementsAre("Text(\"5\")", "Text(\"True\")", "Text(\"\")", "Long(42)",
                                        "Long(2)", "Long(4)", "Long(-1)", "Long(0)", "Flag(True)",
                                        "Flag(False)", "Double(7)", "Choice(1)", "Money(3)"));
}

TEST_F(DispatchArgument, VariablesOfAnyTypeArriveByTheirValue) {
    Value text = "abc";
    Value number = 5;
    Value empty;
    EXPECT_TRUE(object.Do("Text", Variable(text)));
    EXPECT_TRUE(object.Do("Text", Variable(number)));
    EXPECT_TRUE(object.Do("Text", Variable(empty)));
    EXPECT_TRUE(object.Do("Long", Variable(number)));
    EXPECT_TRUE(object.Do("Any", Variable(number)));
    EXPECT_THAT(spy->calls,
                ElementsAre("Text(\"abc\")", "Text(\"5\")", "Text(\"\")", "Long(5)", "Any(5)"));
}

TEST_F(DispatchArgument, TypedReferencesArriveByTheirValue) {
    const _bstr_t kept = L"abc";
    BSTR text = kept.copy();
    long number = 5;
    double real = 1.5;
    VARIANT_BOOL flag = VARIANT_TRUE;
    IDispatch* nothing = nullptr;
    BYTE octet = 200;
    DECIMAL decimal = {};
    decimal.Lo64 = 77;
    EXPECT_TRUE(object.Do("Text", Reference(text)));
    EXPECT_TRUE(object.Do("Text", Reference(number)));
    EXPECT_TRUE(object.Do("Long", Reference(number)));
    EXPECT_TRUE(object.Do("Long", Reference(real)));
    EXPECT_TRUE(object.Do("Long", Reference(VT_UI1, &octet)));
    EXPECT_TRUE(object.Do("Long", Reference(VT_DECIMAL, &decimal)));
    EXPECT_TRUE(object.Do("Text", Reference(VT_DECIMAL, &decimal)));
    EXPECT_TRUE(object.Do("Double", Reference(real)));
    EXPECT_TRUE(object.Do("Flag", FlagReference(flag)));
    EXPECT_TRUE(object.Do("Object", Reference(nothing)));
    EXPECT_TRUE(object.Do("Any", Reference(number)));
    EXPECT_THAT(spy->calls, ElementsAre("Text(\"abc\")", "Text(\"5\")", "Long(5)", "Long(2)",
                                        "Long(200)", "Long(77)", "Text(\"77\")", "Double(1.5)",
                                        "Flag(True)", "Object(Nothing)", "Any(5)"));
    SysFreeString(text);
}

TEST_F(DispatchArgument, VariableThatHoldsAReferenceIsFollowed) {
    long number = 5;
    Value inner;
    V_VT(&inner) = VT_BYREF | VT_I4;
    V_I4REF(&inner) = &number;
    EXPECT_TRUE(object.Do("Long", Variable(inner)));
    EXPECT_THAT(spy->calls, ElementsAre("Long(5)"));
    EXPECT_EQ(V_VT(&inner), VT_BYREF | VT_I4);
}

TEST_F(DispatchArgument, ReferenceToNowhereIsABadArgument) {
    EXPECT_EQ(object.Do("Text", Reference(VT_BSTR, nullptr)).result, DISP_E_BADVARTYPE);
    EXPECT_EQ(object.Do("Long", Reference(VT_VARIANT, nullptr)).result, DISP_E_BADVARTYPE);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, EmptyAndNullAreNoObject) {
    EXPECT_TRUE(object.Do("Object", Empty()));
    EXPECT_TRUE(object.Do("Object", Null()));
    EXPECT_TRUE(object.Do("Object", Nothing()));
    EXPECT_TRUE(object.Do("Unknown", Empty()));
    EXPECT_TRUE(object.Do("Typed", Nothing()));
    Value variable;
    EXPECT_TRUE(object.Do("Object", Variable(variable)));
    EXPECT_THAT(spy->calls, ElementsAre("Object(Nothing)", "Object(Nothing)", "Object(Nothing)",
                                        "Unknown(Nothing)", "Typed(Nothing)", "Object(Nothing)"));
}

TEST_F(DispatchArgument, ObjectArrivesAsTheInterfaceThatIsDeclared) {
    const auto fake = FakeObject::Make("fake");
    const Value itself = static_cast<IDispatch*>(static_cast<_Spy*>(spy.Get()));
    EXPECT_TRUE(object.Do("Object", fake));
    EXPECT_TRUE(
        object.Do("Object", Value(static_cast<IUnknown*>(static_cast<IDispatch*>(fake.Get())))));
    EXPECT_TRUE(object.Do("Unknown", fake));
    spy->change = Nothing();
    EXPECT_TRUE(object.Do("Typed", itself));
    EXPECT_THAT(spy->calls,
                ElementsAre("Object(fake)", "Object(fake)", "Unknown(fake)", "Typed(Spy)"));
}

TEST_F(DispatchArgument, ObjectWithoutTheDeclaredInterfaceIsATypeMismatch) {
    const auto fake = FakeObject::Make("fake");
    const Outcome outcome = object.Do("Typed", fake);
    EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 0u);
    EXPECT_EQ(fake->References(), 1u);
}

TEST_F(DispatchArgument, ClassAsAParameterTypeMeansItsDefaultInterface) {
    const auto values = ole::Make<ValuesObject>();
    EXPECT_TRUE(object.Do("Made", Value(static_cast<_Values*>(values.Get()))));
    EXPECT_EQ(object.Do("Made", FakeObject::Make("fake")).result, DISP_E_TYPEMISMATCH);
    EXPECT_THAT(spy->calls, ElementsAre("Made(Values)"));
}

TEST_F(DispatchArgument, PlainValueForAnObjectIsATypeMismatch) {
    EXPECT_EQ(object.Do("Object", 5).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(object.Do("Object", "abc").result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(object.Do("Typed", 0).result, DISP_E_TYPEMISMATCH);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, ObjectForAPlainValueGivesItsDefaultProperty) {
    const auto fake = FakeObject::Make("fake");
    fake->Property("[default]", "its value");
    EXPECT_TRUE(object.Do("Text", fake));
    fake->Store("[default]", 12);
    EXPECT_TRUE(object.Do("Long", fake));
    EXPECT_TRUE(object.Do("Any", fake));
    EXPECT_THAT(spy->calls, ElementsAre("Text(\"its value\")", "Long(12)", "Any(fake)"));
}

TEST_F(DispatchArgument, ErrorOfADefaultPropertyReachesTheCaller) {
    const auto fake = FakeObject::Make("fake");
    fake->Property("[default]");
    fake->On("[default]").Fail(Failure::Exception(0x80041234, "no value", "Fakes"));
    const Outcome outcome = object.Do("Text", fake);
    EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.number, static_cast<HRESULT>(0x80041234));
    EXPECT_EQ(outcome.description, "no value");
    EXPECT_EQ(outcome.source, "Fakes");
}

TEST_F(DispatchArgument, ObjectWhoseValueIsAnObjectAgainIsATypeMismatch) {
    const auto fake = FakeObject::Make("fake");
    fake->Property("[default]", fake);
    EXPECT_EQ(object.Do("Text", fake).result, DISP_E_TYPEMISMATCH);
    fake->Dismantle();
}

TEST_F(DispatchArgument, NothingForAPlainValueIsObjectNotSet) {
    const Outcome outcome = object.Do("Text", Nothing());
    EXPECT_EQ(outcome.AutomationNumber(), 91);
    EXPECT_EQ(outcome.source, "OleTest.Spy");
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, NullForAPlainValueIsInvalidUseOfNull) {
    const Outcome outcome = object.Do("Text", Null());
    EXPECT_EQ(outcome.AutomationNumber(), 94);
    EXPECT_EQ(outcome.description, "Invalid use of Null");
    EXPECT_EQ(outcome.source, "OleTest.Spy");
    EXPECT_EQ(object.Do("Long", Null()).AutomationNumber(), 94);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, WhatDoesNotFitSaysWhichArgumentItWas) {
    Outcome outcome = object.Do("Named", "a", "no number", 3);
    EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 1u);
    outcome = object.Do("Named", "a", 1e12, 3);
    EXPECT_EQ(outcome.result, DISP_E_OVERFLOW);
    EXPECT_EQ(outcome.badArgument, 1u);
    EXPECT_EQ(object.Do("Short", 40000).result, DISP_E_OVERFLOW);
    EXPECT_EQ(object.Do("Byte", -1).result, DISP_E_OVERFLOW);
    EXPECT_EQ(object.Do("Long", ErrorValue(E_FAIL)).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(object.Do("Long", Bytes({1})).result, DISP_E_TYPEMISMATCH);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, VariantParameterTakesEverything) {
    EXPECT_TRUE(object.Do("Any", Empty()));
    EXPECT_TRUE(object.Do("Any", Null()));
    EXPECT_TRUE(object.Do("Any", Nothing()));
    EXPECT_TRUE(object.Do("Any", ErrorValue(static_cast<HRESULT>(0x800A07FA))));
    EXPECT_TRUE(object.Do("Any", Bytes({1})));
    EXPECT_TRUE(object.Do("Any", short{3}));
    DECIMAL decimal = {};
    decimal.Lo64 = 77;
    EXPECT_TRUE(object.Do("Any", Reference(VT_DECIMAL, &decimal)));
    EXPECT_THAT(spy->calls,
                ElementsAre("Any(Empty)", "Any(Null)", "Any(Nothing)", "Any(Error 0x800A07FA)",
                            "Any(bytes 1)", "Any(3)", "Any(77)"));
}

TEST_F(DispatchArgument, TextKeepsZeroCharacters) {
    EXPECT_TRUE(object.Do("Text", std::wstring(L"a\0b", 3)));
    EXPECT_THAT(spy->calls, ElementsAre(std::string("Text(\"a\0b\")", 11)));
}

TEST_F(DispatchArgument, ArrayOfBytesArrivesFromAnArrayOfBytesOrAText) {
    Value variable = Bytes({9});
    SAFEARRAY* array = V_ARRAY(&variable);
    EXPECT_TRUE(object.Do("Bytes", Variable(variable)));
    EXPECT_TRUE(object.Do("Bytes", Reference(VT_ARRAY | VT_UI1, &array)));
    EXPECT_TRUE(object.Do("Bytes", "ab"));
    EXPECT_EQ(object.Do("Bytes", 5).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(object.Do("Bytes", Array({Value(1)})).result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(object.Do("Bytes", Null()).AutomationNumber(), 94);
    EXPECT_THAT(spy->calls,
                ElementsAre("Bytes(bytes 9)", "Bytes(bytes 9)", "Bytes(bytes 97 0 98 0)"));
}

TEST_F(DispatchArgument, ArgumentsByValueOfAllTypesKeepTheirPlaces) {
    const auto fake = FakeObject::Make("fake");
    const Value itself = static_cast<IDispatch*>(static_cast<_Spy*>(spy.Get()));
    EXPECT_TRUE(object.Do("AllByValue", "t", 70000, short{-2}, true, 2.5, 0.5, 255, Currency(12500),
                          Date(2), fake, fake, itself, 7, "any", Bytes({1, 2})));
    EXPECT_THAT(spy->calls,
                ElementsAre("AllByValue(\"t\", 70000, -2, True, 2.5, 0.5, 255, 1.25, 01/01/1900, "
                            "fake, fake, Spy, 7, \"any\", bytes 1 2)"));
    EXPECT_EQ(fake->References(), 1u);
}

TEST_F(DispatchArgument, OptionalArgumentsHaveTheirDefaultsWhenLeftOut) {
    EXPECT_TRUE(object.Do("Defaults"));
    EXPECT_TRUE(object.Do("Defaults", Omitted(), 1));
    EXPECT_TRUE(object.Do("Defaults", "x", Omitted(), false));
    Value missing = Omitted();
    EXPECT_TRUE(object.Do("Defaults", Variable(missing)));
    EXPECT_THAT(spy->calls,
                ElementsAre("Defaults(\"none\", 7, True)", "Defaults(\"none\", 1, True)",
                            "Defaults(\"x\", 7, False)", "Defaults(\"none\", 7, True)"));
}

TEST_F(DispatchArgument, OptionalArgumentsWithoutDefaultAreEmptyWhenLeftOut) {
    EXPECT_TRUE(object.Do("Options"));
    EXPECT_TRUE(object.Do("Options", Omitted(), Omitted(), Omitted(), Omitted(), 5));
    EXPECT_TRUE(object.Do("Options", 1, 2, "t"));
    EXPECT_THAT(spy->calls, ElementsAre("Options(Omitted, Omitted, \"\", Nothing, 0)",
                                        "Options(Omitted, Omitted, \"\", Nothing, 5)",
                                        "Options(1, 2, \"t\", Nothing, 0)"));
}

TEST_F(DispatchArgument, ArgumentThatIsNotOptionalMustBeGiven) {
    EXPECT_EQ(object.Do("Text").result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.Do("Text", Omitted()).result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(object.Do("Named", "a").result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, TooManyArgumentsAreRefused) {
    EXPECT_EQ(object.Do("Text", "a", "b").result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.Do("Nothing", 1).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.Call("GiveText", 1).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.Put("Name", 1, "x").result, DISP_E_BADPARAMCOUNT);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, NamedArgumentsFindTheirParameters) {
    EXPECT_TRUE(object.Do("Named", Named("second", 2), Named("first", "a")));
    EXPECT_TRUE(object.Do("Named", "a", Named("THIRD", 3), Named("second", 2)));
    EXPECT_TRUE(object.Do("Defaults", Named("flag", false)));
    EXPECT_THAT(spy->calls, ElementsAre("Named(\"a\", 2, Omitted)", "Named(\"a\", 2, 3)",
                                        "Defaults(\"none\", 7, False)"));
}

TEST_F(DispatchArgument, NamedVariablesAreWrittenTo) {
    Value second = 2;
    spy->change = 9;
    EXPECT_TRUE(object.Do("Named", Named("second", Variable(second)), Named("first", "a")));
    EXPECT_EQ(second, Value(9));
}

TEST_F(DispatchArgument, UnknownNameOfAnArgumentIsNotFound) {
    EXPECT_EQ(object.Do("Named", Named("fourth", 2)).result, DISP_E_UNKNOWNNAME);
    const Outcome outcome =
        object.InvokeId(object.Id("Named"), {}, {Named("x", 2), Named("y", 3)}, {1, 7});
    EXPECT_EQ(outcome.result, DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(outcome.badArgument, 0u);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, ArgumentGivenTwiceIsRefused) {
    EXPECT_EQ(object.Do("Named", "a", 1, Named("first", "b")).result, DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(object.Do("Named", "a", 1, 2, Named("first", "b")).result, DISP_E_BADPARAMCOUNT);
    EXPECT_TRUE(spy->calls.empty());
}

TEST_F(DispatchArgument, ArgumentsThatAreNotThereAreRefused) {
    DISPPARAMS parameters = {nullptr, nullptr, 1, 0};
    const auto invoke = [&] {
        return object.Get()->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                                    nullptr);
    };
    EXPECT_EQ(invoke(), E_INVALIDARG);
    VARIANT argument = {};
    parameters = {&argument, nullptr, 1, 1};
    EXPECT_EQ(invoke(), E_INVALIDARG);
    parameters = {&argument, nullptr, 0, 1};
    EXPECT_EQ(invoke(), E_INVALIDARG);
    EXPECT_EQ(
        object.Get()->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
        E_INVALIDARG);
    EXPECT_TRUE(spy->calls.empty());
}

}  // namespace
