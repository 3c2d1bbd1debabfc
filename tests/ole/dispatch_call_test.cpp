#include <gmock/gmock.h>

#include "spy.h"
#include "support/fake_collection.h"
#include "support/fake_object.h"

using namespace support;
using testing::ElementsAre;

namespace {

class DispatchCall : public SpyTest {
protected:
    Outcome Answer(const char* member, Value answer) {
        spy->answer = std::move(answer);
        return object.Call(member);
    }
};

TEST_F(DispatchCall, ResultOfEachTypeReachesTheCaller) {
    const auto fake = FakeObject::Make("fake");
    const Value itself = static_cast<IDispatch*>(static_cast<_Spy*>(spy.Get()));
    EXPECT_EQ(Answer("GiveText", "abc").value, Value("abc"));
    EXPECT_EQ(Answer("GiveLong", 70000).value, Value(70000));
    EXPECT_EQ(Answer("GiveShort", short{-5}).value, Value(short{-5}));
    EXPECT_EQ(Answer("GiveFlag", true).value, Value(true));
    EXPECT_EQ(Answer("GiveDouble", 2.5).value, Value(2.5));
    EXPECT_EQ(Answer("GiveMoney", Currency(5)).value, Currency(5));
    EXPECT_EQ(Answer("GiveMoment", Date(2)).value, Date(2));
    EXPECT_EQ(Answer("GiveObject", fake).value, Value(fake));
    EXPECT_EQ(Answer("GiveObject", Nothing()).value, Nothing());
    EXPECT_EQ(Answer("GiveUnknown", fake).value,
              Value(static_cast<IUnknown*>(static_cast<IDispatch*>(fake.Get()))));
    EXPECT_EQ(Answer("GiveTyped", itself).value, itself);
    EXPECT_EQ(Answer("GiveChoice", 7).value, Value(7));
    EXPECT_EQ(Answer("GiveAny", "abc").value, Value("abc"));
    EXPECT_EQ(Answer("GiveAny", fake).value, Value(fake));
    EXPECT_EQ(Answer("GiveBytes", Bytes({1, 2})).value.Type(), VT_ARRAY | VT_UI1);
    spy->answer.reset();
}

TEST_F(DispatchCall, ResultThatTheMemberDoesNotWriteIsEmptyOfItsType) {
    EXPECT_EQ(object.Call("GiveText").value, NullText());
    EXPECT_EQ(object.Call("GiveLong").value, Value(0));
    EXPECT_EQ(object.Call("GiveObject").value, Nothing());
    EXPECT_EQ(object.Call("GiveAny").value, Empty());
}

TEST_F(DispatchCall, ResultMayBeThrownAway) {
    spy->answer = FakeObject::Make("fake");
    EXPECT_TRUE(object.Do("GiveObject"));
    EXPECT_TRUE(object.Do("GiveAny"));
    spy->answer.reset();
    EXPECT_EQ(LiveDoubles(), 0);
}

TEST_F(DispatchCall, MemberWithoutResultAnswersEmpty) {
    EXPECT_EQ(object.Call("Nothing").value, Empty());
}

TEST_F(DispatchCall, MethodMayBeReadAndPropertyMayBeCalled) {
    spy->answer = 5;
    EXPECT_EQ(object.Get("GiveLong").value, Value(5));
    CallStyle method;
    method.kind = DISPATCH_METHOD;
    EXPECT_EQ(object.Invoke("Fixed", method, {}).value, Value(5));
}

TEST_F(DispatchCall, UnknownMemberIsNotFound) {
    EXPECT_EQ(object.InvokeId(4711, {}, {}, {}).result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object.Put("Fixed", 1).result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object.Put("Nothing", 1).result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object.Get("Bond").result, DISP_E_MEMBERNOTFOUND);
}

TEST_F(DispatchCall, InterfaceIdOtherThanNullIsRefused) {
    DISPPARAMS none = {};
    EXPECT_EQ(object.Get()->Invoke(object.Id("Nothing"), IID_IDispatch, 0, DISPATCH_METHOD, &none,
                                   nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(DispatchCall, PropertyIsSetFromEveryFormOfArgument) {
    Value variable = "b";
    BSTR typed = SysAllocString(L"c");
    EXPECT_TRUE(object.Put("Name", "a"));
    EXPECT_TRUE(object.Put("Name", Variable(variable)));
    EXPECT_TRUE(object.Put("Name", Reference(typed)));
    EXPECT_TRUE(object.Put("Name", 5));
    SysFreeString(typed);
    EXPECT_THAT(spy->calls, ElementsAre("put Name(\"a\")", "put Name(\"b\")", "put Name(\"c\")",
                                        "put Name(\"5\")"));
}

TEST_F(DispatchCall, PropertyIsSetAlsoWhereTheValueIsNotNamed) {
    CallStyle style;
    style.kind = DISPATCH_PROPERTYPUT;
    style.namesTheValue = false;
    EXPECT_TRUE(object.Invoke("Name", style, {Argument("a")}));
    EXPECT_THAT(spy->calls, ElementsAre("put Name(\"a\")"));
}

TEST_F(DispatchCall, ObjectPropertyTakesPutAndPutRef) {
    const auto fake = FakeObject::Make("fake");
    Value variable = fake;
    EXPECT_TRUE(object.Put("Friend", fake));
    EXPECT_TRUE(object.PutRef("Friend", fake));
    EXPECT_TRUE(object.PutRef("Friend", Variable(variable)));
    EXPECT_TRUE(object.Put("Friend", Nothing()));
    EXPECT_TRUE(object.PutRef("Friend", Nothing()));
    EXPECT_TRUE(object.Put("Friend", Empty()));
    EXPECT_THAT(spy->calls, ElementsAre("put Friend(fake)", "putref Friend(fake)",
                                        "putref Friend(fake)", "put Friend(Nothing)",
                                        "putref Friend(Nothing)", "put Friend(Nothing)"));
}

TEST_F(DispatchCall, BothWaysOfSettingAskForAtOnceReachOneOfThem) {
    const auto fake = FakeObject::Make("fake");
    CallStyle both;
    both.kind = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    EXPECT_TRUE(object.Invoke("Friend", both, {Argument(fake)}));
    EXPECT_TRUE(object.Invoke("Bond", both, {Argument(fake)}));
    EXPECT_THAT(spy->calls, ElementsAre("put Friend(fake)", "putref Bond(fake)"));
}

TEST_F(DispatchCall, PutAnswersForPutRefAndTheReverse) {
    const auto fake = FakeObject::Make("fake");
    EXPECT_TRUE(object.PutRef("Name", "a"));
    EXPECT_TRUE(object.Put("Bond", fake));
    EXPECT_THAT(spy->calls, ElementsAre("put Name(\"a\")", "putref Bond(fake)"));
}

TEST_F(DispatchCall, PropertyWithIndexIsReadAndSet) {
    spy->answer = "content";
    EXPECT_EQ(object.Get("Cell", 1, "b").value, Value("content"));
    EXPECT_EQ(object.Get("Cell", 1).value, Value("content"));
    EXPECT_TRUE(object.Put("Cell", 1, "b", "new"));
    EXPECT_TRUE(object.Put("Cell", 1, "new"));
    EXPECT_EQ(object.Put("Cell", "new").result, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_THAT(spy->calls,
                ElementsAre("get Cell(1, \"b\")", "get Cell(1, Omitted)",
                            "put Cell(1, \"b\", \"new\")", "put Cell(1, Omitted, \"new\")"));
}

TEST_F(DispatchCall, IndexOfAPropertyMayBeNamed) {
    spy->answer = "content";
    EXPECT_EQ(object.Get("Cell", Named("column", "b"), Named("row", 1)).value, Value("content"));
    const Value content = "new";
    const Value column = "b";
    const Value row = 1;
    VARIANT arguments[] = {content, column, row};
    DISPID names[] = {DISPID_PROPERTYPUT, 1, 0};
    DISPPARAMS parameters = {arguments, names, 3, 3};
    EXPECT_EQ(object.Get()->Invoke(object.Id("Cell"), IID_NULL, 0, DISPATCH_PROPERTYPUT,
                                   &parameters, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_THAT(spy->calls, ElementsAre("get Cell(1, \"b\")", "put Cell(1, \"b\", \"new\")"));
}

TEST_F(DispatchCall, DefaultMemberIsReachedByItsId) {
    spy->answer = "content";
    EXPECT_EQ(object.Default().value, Value("content"));
    EXPECT_EQ(object.Default("key").value, Value("content"));
    EXPECT_THAT(spy->calls, ElementsAre("get Value(Omitted)", "get Value(\"key\")"));
}

TEST_F(DispatchCall, ArgumentsOfAPropertyWithoutParametersGoToTheDefaultMemberOfItsValue) {
    const auto fake = FakeObject::Make("fake", std::make_shared<CallLog>());
    fake->Function("[default]", [](Arguments& arguments) { return arguments[0]; });
    spy->answer = fake;
    EXPECT_EQ(object.Get("Items", "key").value, Value("key"));
    EXPECT_EQ(object.Call("Items", 5).value, Value(5));
    EXPECT_EQ(object.Call("Box", 6).value, Value(6));
    EXPECT_EQ(object.Get("Items").value, Value(fake));
    spy->answer.reset();
}

TEST_F(DispatchCall, CollectionFromAPropertyIsLookedUpInOneCall) {
    const auto values = ole::Make<ValuesObject>();
    values->Values().Add(Value("first"), L"a");
    spy->answer = Value(static_cast<_Values*>(values.Get()));
    EXPECT_EQ(object.Get("Items", "A").value, Value("first"));
    EXPECT_EQ(object.Get("Items", 1).value, Value("first"));
    EXPECT_EQ(object.Get("Items", "b").AutomationNumber(), 5);
    EXPECT_EQ(object.Get("Items", 2).AutomationNumber(), 9);
    spy->answer.reset();
}

TEST_F(DispatchCall, ArgumentsForAPropertyThatHoldsNoObjectAreTooMany) {
    spy->answer = Nothing();
    EXPECT_EQ(object.Get("Items", "key").result, DISP_E_BADPARAMCOUNT);
    spy->answer = 5;
    EXPECT_EQ(object.Get("Box", "key").result, DISP_E_BADPARAMCOUNT);
}

TEST_F(DispatchCall, EnumeratorIsReachedAsMethodAndAsProperty) {
    const auto values = ole::Make<ValuesObject>();
    values->Values().Add(Value("first"), {});
    const LateBound collection(static_cast<_Values*>(values.Get()));
    for (const WORD kind : {WORD{DISPATCH_METHOD}, WORD{DISPATCH_PROPERTYGET},
                            WORD{DISPATCH_METHOD | DISPATCH_PROPERTYGET}}) {
        CallStyle style;
        style.kind = kind;
        const Outcome outcome = collection.InvokeId(DISPID_NEWENUM, style, {}, {});
        EXPECT_TRUE(outcome);
        EXPECT_TRUE(Query<IEnumVARIANT>(outcome.value.Unknown()));
    }
}

TEST_F(DispatchCall, ObjectLivesUntilTheMemberReturns) {
    IDispatch* bare = static_cast<_Spy*>(spy.Get());
    Spy* member = spy.Get();
    member->onCall = [this] {
        object = LateBound();
        spy.Reset();
    };
    const DISPID id = object.Id("GiveLong");
    DISPPARAMS none = {};
    VARIANT result = {};
    EXPECT_EQ(bare->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, &result, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(V_VT(&result), VT_I4);
}

}  // namespace
