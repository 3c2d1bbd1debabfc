#include <gmock/gmock.h>

#include "spy.h"
#include "support/fake_object.h"

using namespace support;
using testing::ElementsAre;

namespace {

class DispatchWriteBack : public SpyTest {};

TEST_F(DispatchWriteBack, ChangedArgumentReachesTheVariable) {
    Value text = "before";
    spy->change = "after";
    EXPECT_TRUE(object.Do("Text", Variable(text)));
    EXPECT_EQ(text, Value("after"));

    Value number = 5;
    spy->change = 6;
    EXPECT_TRUE(object.Do("Long", Variable(number)));
    EXPECT_EQ(number, Value(6));

    Value flag = true;
    spy->change = false;
    EXPECT_TRUE(object.Do("Flag", Variable(flag)));
    EXPECT_EQ(flag, Value(false));

    Value moment = Date(1);
    spy->change = Date(2);
    EXPECT_TRUE(object.Do("Moment", Variable(moment)));
    EXPECT_EQ(moment, Date(2));

    Value money = Currency(1);
    spy->change = Currency(2);
    EXPECT_TRUE(object.Do("Money", Variable(money)));
    EXPECT_EQ(money, Currency(2));
}

TEST_F(DispatchWriteBack, ChangedObjectReachesTheVariable) {
    const auto before = FakeObject::Make("before");
    const auto after = FakeObject::Make("after");
    Value variable = before;
    spy->change = after;
    EXPECT_TRUE(object.Do("Object", Variable(variable)));
    EXPECT_EQ(variable, Value(after));
    EXPECT_EQ(before->References(), 1u);
    spy->change = Nothing();
    EXPECT_TRUE(object.Do("Object", Variable(variable)));
    EXPECT_EQ(variable, Nothing());
}

TEST_F(DispatchWriteBack, EmptyVariableBecomesTheObjectThatTheCalleeGives) {
    const auto fake = FakeObject::Make("fake");
    Value variable;
    spy->change = fake;
    EXPECT_TRUE(object.Do("Object", Variable(variable)));
    EXPECT_EQ(variable, Value(fake));
}

TEST_F(DispatchWriteBack, UnchangedArgumentLeavesTheVariableAsItIs) {
    Value number = 5;
    EXPECT_TRUE(object.Do("Text", Variable(number)));
    EXPECT_EQ(number, Value(5));
    Value empty;
    EXPECT_TRUE(object.Do("Text", Variable(empty)));
    EXPECT_TRUE(object.Do("Object", Variable(empty)));
    EXPECT_TRUE(object.Do("Long", Variable(empty)));
    EXPECT_EQ(empty, Empty());
    Value null = Null();
    EXPECT_TRUE(object.Do("Object", Variable(null)));
    EXPECT_EQ(null, Null());
}

TEST_F(DispatchWriteBack, ChangedArgumentKeepsTheTypeOfTheVariableWhereItFits) {
    Value number = 5;
    spy->change = "6";
    EXPECT_TRUE(object.Do("Text", Variable(number)));
    EXPECT_EQ(number, Value(6));

    Value brief = short{5};
    spy->change = 600;
    EXPECT_TRUE(object.Do("Long", Variable(brief)));
    EXPECT_EQ(brief, Value(short{600}));

    Value text = "5";
    spy->change = 6;
    EXPECT_TRUE(object.Do("Long", Variable(text)));
    EXPECT_EQ(text, Value("6"));
}

TEST_F(DispatchWriteBack, ChangedArgumentTakesItsOwnTypeWhereTheVariablesDoesNotFit) {
    Value number = 5;
    spy->change = "six";
    EXPECT_TRUE(object.Do("Text", Variable(number)));
    EXPECT_EQ(number, Value("six"));

    Value brief = short{5};
    spy->change = 70000;
    EXPECT_TRUE(object.Do("Long", Variable(brief)));
    EXPECT_EQ(brief, Value(70000));

    Value empty;
    spy->change = 7;
    EXPECT_TRUE(object.Do("Long", Variable(empty)));
    EXPECT_EQ(empty, Value(7));
}

TEST_F(DispatchWriteBack, TypedReferenceGetsTheChangedValue) {
    BSTR text = SysAllocString(L"before");
    spy->change = "after";
    EXPECT_TRUE(object.Do("Text", Reference(text)));
    EXPECT_STREQ(text, L"after");
    SysFreeString(text);

    long number = 5;
    spy->change = 6;
    EXPECT_TRUE(object.Do("Long", Reference(number)));
    EXPECT_EQ(number, 6);
    spy->change = "7";
    EXPECT_TRUE(object.Do("Text", Reference(number)));
    EXPECT_EQ(number, 7);

    const auto fake = FakeObject::Make("fake");
    IDispatch* held = nullptr;
    spy->change = fake;
    EXPECT_TRUE(object.Do("Object", Reference(held)));
    EXPECT_EQ(Adopt(held).Get(), static_cast<IDispatch*>(fake.Get()));

    DECIMAL decimal = {};
    spy->change = 12;
    EXPECT_TRUE(object.Do("Long", Reference(VT_DECIMAL, &decimal)));
    EXPECT_EQ(decimal.Lo64, 12u);
}

TEST_F(DispatchWriteBack, TypedReferenceThatCannotHoldTheChangeSaysSo) {
    long number = 5;
    spy->change = "six";
    const Outcome outcome = object.Do("Text", Reference(number));
    EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 0u);
    EXPECT_EQ(number, 5);
}

TEST_F(DispatchWriteBack, VariableThatHoldsAReferenceIsWrittenThrough) {
    long number = 5;
    Value inner;
    V_VT(&inner) = VT_BYREF | VT_I4;
    V_I4REF(&inner) = &number;
    spy->change = 6;
    EXPECT_TRUE(object.Do("Long", Variable(inner)));
    EXPECT_EQ(number, 6);
    EXPECT_EQ(V_VT(&inner), VT_BYREF | VT_I4);
}

TEST_F(DispatchWriteBack, ArgumentsByValueAreNotWrittenTo) {
    spy->change = "after";
    EXPECT_TRUE(object.Do("Text", "literal"));
    EXPECT_TRUE(object.Do("Any", "literal"));
    EXPECT_TRUE(object.Do("Options"));
    EXPECT_THAT(spy->calls, ElementsAre("Text(\"literal\")", "Any(\"literal\")",
                                        "Options(Omitted, Omitted, \"\", Nothing, 0)"));
}

TEST_F(DispatchWriteBack, VariantArgumentGivesItsNewTypeToTheVariable) {
    Value variable = 5;
    spy->change = "text";
    EXPECT_TRUE(object.Do("Any", Variable(variable)));
    EXPECT_EQ(variable, Value("text"));
    spy->change = Empty();
    EXPECT_TRUE(object.Do("Any", Variable(variable)));
    EXPECT_EQ(variable, Empty());
    spy->change = Null();
    EXPECT_TRUE(object.Do("Any", Variable(variable)));
    EXPECT_EQ(variable, Null());
}

TEST_F(DispatchWriteBack, ChangedArrayReachesTheVariable) {
    Value variable = Bytes({1, 2});
    spy->change = Bytes({3, 4, 5});
    EXPECT_TRUE(object.Do("Bytes", Variable(variable)));
    EXPECT_EQ(variable.Type(), VT_ARRAY | VT_UI1);
    EXPECT_EQ(V_ARRAY(&variable)->rgsabound[0].cElements, 3u);
}

TEST_F(DispatchWriteBack, ArrayChangedInPlaceReachesTheCallersArray) {
    Value variable = Bytes({1, 2});
    SAFEARRAY* const array = V_ARRAY(&variable);
    spy->change = Bytes({3, 4});
    SAFEARRAY* reference = array;
    EXPECT_TRUE(object.Do("Bytes", Reference(VT_ARRAY | VT_UI1, &reference)));
    EXPECT_EQ(reference, array) << "an array of the same shape keeps its place";
    EXPECT_EQ(static_cast<BYTE*>(array->pvData)[1], 4);
}

TEST_F(DispatchWriteBack, UnchangedArrayIsNotReplaced) {
    Value variable = Bytes({1, 2});
    SAFEARRAY* const array = V_ARRAY(&variable);
    EXPECT_TRUE(object.Do("Bytes", Variable(variable)));
    EXPECT_EQ(V_ARRAY(&variable), array);
    EXPECT_TRUE(object.Do("Any", Variable(variable)));
    EXPECT_EQ(V_ARRAY(&variable), array);
    SAFEARRAY* reference = array;
    EXPECT_TRUE(object.Do("Bytes", Reference(VT_ARRAY | VT_UI1, &reference)));
    EXPECT_EQ(reference, array);
}

TEST_F(DispatchWriteBack, ArrayThatTheCallerHasLockedIsNotReplaced) {
    Value variable = Bytes({1, 2});
    SAFEARRAY* array = V_ARRAY(&variable);
    SafeArrayLock(array);
    spy->change = Bytes({3, 4, 5});
    EXPECT_EQ(object.Do("Bytes", Reference(VT_ARRAY | VT_UI1, &array)).result,
              DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(array, V_ARRAY(&variable));
    SafeArrayUnlock(array);
}

TEST_F(DispatchWriteBack, NothingIsWrittenBackWhenTheMemberFails) {
    Value text = "before";
    spy->onChanged = [] { ole::Throw(ole::Number::invalidCall); };
    spy->change = "after";
    EXPECT_EQ(object.Do("Text", Variable(text)).AutomationNumber(), 5);
    EXPECT_EQ(text, Value("before"));
}

TEST_F(DispatchWriteBack, CalleeMayLetGoOfTheVariablesOldObject) {
    auto before = FakeObject::Make("before");
    Value variable = before;
    before.Reset();
    spy->change = Nothing();
    EXPECT_TRUE(object.Do("Object", Variable(variable)));
    EXPECT_EQ(LiveDoubles(), 0);
}

}  // namespace
