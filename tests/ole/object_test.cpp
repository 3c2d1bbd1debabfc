#include "ole/object.h"

#include <gmock/gmock.h>

#include <type_traits>

#include "ole/error.h"
#include "spy.h"
#include "support/fake_object.h"

using namespace support;
using testing::ElementsAre;

namespace {

/// What a failed call threw.
struct Thrown {
    HRESULT number = S_OK;
    std::string description;
    std::string source;
    int AutomationNumber() const {
        return static_cast<int>(static_cast<unsigned long>(number) - 0x800A0000u);
    }
};

template <class Work>
Thrown ThrownBy(Work&& work) {
    try {
        work();
    } catch (const _com_error& error) {
        Thrown thrown = {error.Error(), {}, {}};
        if (const auto info = Adopt(error.ErrorInfo())) {
            thrown.description = Utf8(error.Description().GetBSTR());
            thrown.source = Utf8(error.Source().GetBSTR());
        }
        return thrown;
    }
    return {};
}

class ObjectTest : public testing::Test {
protected:
    SharedLog log = std::make_shared<CallLog>();
    Ref<FakeObject> fake = FakeObject::Make("fake", log);
    ole::Object object = ole::Object(fake.Get());
};

TEST_F(ObjectTest, ReadsPropertiesAndCallsMethodsAlike) {
    fake->Property("name", "n");
    fake->Function("Add", 2, 2, [](Arguments& arguments) {
        return Value(arguments[0].Number() + arguments[1].Number());
    });
    EXPECT_EQ(Value(object.Call(L"name")), Value("n"));
    EXPECT_EQ(Value(object.Call(L"Add", 1L, 2L)), Value(3));
    EXPECT_THAT(log->Take(), ElementsAre("fake.name", "fake.Add(1, 2)"));
}

TEST_F(ObjectTest, PassesEachKindOfArgument) {
    fake->Function("Take", [](Arguments&) { return Value(); });
    const auto other = FakeObject::Make("other");
    const _bstr_t text = L"text";
    const _variant_t variant(2.5);
    object.Call(L"Take", text, variant, ole::Object(other.Get()), ole::Object(), true, 7L);
    EXPECT_THAT(log->Take(), ElementsAre("fake.Take(\"text\", 2.5, other, Nothing, True, 7)"));
    EXPECT_EQ(other->References(), 1u);
}

TEST_F(ObjectTest, NeverTakesAPointerOrANumberForAFlag) {
    static_assert(!std::is_constructible_v<ole::Argument, const wchar_t*>);
    static_assert(!std::is_constructible_v<ole::Argument, int>);
    static_assert(!std::is_constructible_v<ole::Argument, void*>);
    static_assert(std::is_constructible_v<ole::Argument, bool>);
    static_assert(std::is_constructible_v<ole::Argument, long>);
}

TEST_F(ObjectTest, UnknownMemberIs438) {
    const Thrown thrown = ThrownBy([&] { object.Call(L"absent"); });
    EXPECT_EQ(thrown.AutomationNumber(), 438);
    fake->Property("name");
    fake->On("name").Fail(Failure::Result(DISP_E_MEMBERNOTFOUND));
    EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).AutomationNumber(), 438);
}

TEST_F(ObjectTest, CallsThatDoNotTakePlaceHaveAutomationNumbers) {
    fake->Property("name");
    const std::pair<HRESULT, int> failures[] = {
        {DISP_E_TYPEMISMATCH, 13},      {DISP_E_BADVARTYPE, 13},     {DISP_E_OVERFLOW, 6},
        {DISP_E_BADINDEX, 9},           {DISP_E_NONAMEDARGS, 446},   {DISP_E_PARAMNOTFOUND, 448},
        {DISP_E_PARAMNOTOPTIONAL, 449}, {DISP_E_BADPARAMCOUNT, 450},
    };
    for (const auto& [result, number] : failures) {
        fake->Calm();
        fake->On("name").Fail(Failure::Result(result));
        EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).AutomationNumber(), number);
    }
}

TEST_F(ObjectTest, OtherFailuresKeepTheirNumber) {
    fake->Property("name");
    fake->On("name").Fail(Failure::Result(E_ACCESSDENIED));
    EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).number, E_ACCESSDENIED);
    fake->Disconnect();
    EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).number, RPC_E_DISCONNECTED);
}

TEST_F(ObjectTest, NoObjectIs91) {
    const ole::Object none;
    EXPECT_EQ(ThrownBy([&] { none.Call(L"name"); }).AutomationNumber(), 91);
    EXPECT_EQ(ThrownBy([&] { none.Value(); }).AutomationNumber(), 91);
    EXPECT_EQ(ThrownBy([&] { none.Put(L"name", 5L); }).AutomationNumber(), 91);
    EXPECT_EQ(ThrownBy([&] { none.PutRef(L"name", none); }).AutomationNumber(), 91);
    EXPECT_EQ(ThrownBy([&] { none.Each([](const ole::Object&) {}); }).AutomationNumber(), 91);
    EXPECT_FALSE(none);
}

TEST_F(ObjectTest, CalleesOwnErrorIsKept) {
    fake->Property("name");
    fake->On("name").Fail(Failure::Exception(0x80041234, "no name", "Fakes"));
    Thrown thrown = ThrownBy([&] { object.Call(L"name"); });
    EXPECT_EQ(thrown.number, static_cast<HRESULT>(0x80041234));
    EXPECT_EQ(thrown.description, "no name");
    EXPECT_EQ(thrown.source, "Fakes");

    fake->Calm();
    TakeDeferredFillIns();
    fake->On("name").Fail(Failure::Deferred(0x80045678, "later", "Fakes"));
    thrown = ThrownBy([&] { object.Call(L"name"); });
    EXPECT_EQ(thrown.number, static_cast<HRESULT>(0x80045678));
    EXPECT_EQ(thrown.description, "later");
    EXPECT_EQ(TakeDeferredFillIns(), 1);

    fake->Calm();
    fake->On("name").Fail(Failure::Code(1004));
    EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).AutomationNumber(), 1004);
}

TEST_F(ObjectTest, ExceptionWithoutANumberIsAnErrorAllTheSame) {
    fake->Property("name");
    fake->On("name").Fail(Failure::Exception(S_OK, "", ""));
    EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).number, DISP_E_EXCEPTION);
}

TEST_F(ObjectTest, ExceptionRecordFilledOnSuccessIsIgnored) {
    fake->Property("name", "n");
    Failure hostile = Failure::Exception(E_FAIL);
    hostile.result = S_OK;
    hostile.fillsInOnSuccess = true;
    fake->On("name").Fail(hostile);
    EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).number, S_OK);
}

TEST_F(ObjectTest, CallForObjectWantsAnObject) {
    const auto other = FakeObject::Make("other");
    fake->Property("it", other);
    EXPECT_EQ(object.CallForObject(L"it"), ole::Object(other.Get()));
    fake->Store("it", Nothing());
    EXPECT_FALSE(object.CallForObject(L"it"));
    fake->Store("it", Empty());
    EXPECT_FALSE(object.CallForObject(L"it"));
    for (const Value& value : {Value(5), Value("text"), Null(), ErrorValue(E_FAIL), Bytes({1})}) {
        fake->Store("it", value);
        EXPECT_EQ(ThrownBy([&] { object.CallForObject(L"it"); }).AutomationNumber(), 424);
    }
}

TEST_F(ObjectTest, ObjectComesFromEveryFormThatHoldsOne) {
    const Value itself = fake;
    const Value unknown = static_cast<IUnknown*>(static_cast<IDispatch*>(fake.Get()));
    Value variable = fake;
    IDispatch* dispatch = fake.Get();
    IUnknown* bare = dispatch;
    for (const Value& form : {itself, unknown, Variable(variable).Get(), Reference(dispatch).Get(),
                              Reference(VT_UNKNOWN, &bare).Get()}) {
        EXPECT_EQ(ole::Object::From(form), object);
    }
    EXPECT_FALSE(ole::Object::From(Value(static_cast<IUnknown*>(nullptr))));
}

TEST_F(ObjectTest, PutAssignsByValueAndPutRefByReference) {
    const auto other = FakeObject::Make("other");
    fake->Property("name");
    fake->Property("it");
    object.Put(L"name", _bstr_t(L"n"));
    object.Put(L"it", ole::Object(other.Get()));
    object.PutRef(L"it", ole::Object(other.Get()));
    EXPECT_THAT(log->Take(),
                ElementsAre("fake.name = \"n\"", "fake.it = other", "Set fake.it = other"));
}

TEST_F(ObjectTest, PutRefFallsBackOnPut) {
    Member byValue;
    byValue.name = "it";
    byValue.most = 0;
    byValue.byReference = false;
    byValue.get = [](FakeObject&, Arguments&) { return Value(); };
    byValue.put = byValue.get;
    fake->Define(byValue);
    object.PutRef(L"it", object);
    EXPECT_EQ(log->Count("it"), 2u);
    EXPECT_EQ(ThrownBy([&] { object.PutRef(L"absent", object); }).AutomationNumber(), 438);
}

TEST_F(ObjectTest, PutOfAnObjectFallsBackOnPutRef) {
    Member byReference;
    byReference.name = "it";
    byReference.most = 0;
    byReference.byValue = false;
    byReference.get = [](FakeObject&, Arguments&) { return Value(); };
    byReference.put = byReference.get;
    fake->Define(byReference);
    object.Put(L"it", object);
    EXPECT_EQ(log->Count("it"), 2u);
    EXPECT_EQ(ThrownBy([&] { object.Put(L"it", 5L); }).AutomationNumber(), 438);
}

TEST_F(ObjectTest, ValueAsksTheDefaultMember) {
    fake->Function("[default]", [](Arguments& arguments) { return arguments[0]; });
    EXPECT_EQ(Value(object.Value(_bstr_t(L"key"))), Value("key"));
    EXPECT_EQ(Value(object.Value(5L)), Value(5));
}

TEST_F(ObjectTest, SameObjectIsEqualWhateverPointerLeadsToIt) {
    const auto spy = ole::Make<Spy>();
    const ole::Object one(static_cast<_Spy*>(spy.Get()));
    const ole::Object other(Query<IDispatch>(Query<ISupportErrorInfo>(one.Get()).Get()));
    EXPECT_EQ(one, other);
    EXPECT_NE(one, object);
    EXPECT_NE(one, ole::Object());
    EXPECT_EQ(ole::Object(), ole::Object());
}

TEST_F(ObjectTest, CalleeIsHeldWhileItIsCalled) {
    fake->Property("name", "n");
    fake->On("name").Run([&] {
        object = {};
        fake.Reset();
    });
    const ole::Object* const called = &object;
    EXPECT_EQ(Value(called->Call(L"name")), Value("n"));
    EXPECT_THAT(TakeViolations(), ElementsAre());
}

TEST_F(ObjectTest, IdsAreAskedForAgain) {
    log->withNames = true;
    fake->Property("name", "n");
    object.Call(L"name");
    fake->Lacks("name");
    EXPECT_EQ(ThrownBy([&] { object.Call(L"name"); }).AutomationNumber(), 438);
}

}  // namespace
