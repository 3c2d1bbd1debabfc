#include "support/fake_object.h"
#include "support/late_bound.h"

#include <gtest/gtest.h>

#include <thread>

namespace support {
namespace {

using Calls = std::vector<std::string>;

class Doubles : public testing::Test {
protected:
    SharedLog log = std::make_shared<CallLog>();
    Ref<FakeObject> object = FakeObject::Make("node1", log);
    LateBound late{object.Get()};
};

TEST_F(Doubles, RecordsCallsInOrderAsText) {
    object->Property("Description", "old").Function("GetProperty", [](Arguments&) { return 7; });
    late.Get("description");
    late.Call("GetProperty", "Name", 5, true, Nothing(), Empty(), Null(), Omitted());
    late.Put("Description", "new");
    late.PutRef("Description", object);
    EXPECT_EQ(log->Take(),
              (Calls{"node1.Description",
                     "node1.GetProperty(\"Name\", 5, True, Nothing, Empty, Null, Omitted)",
                     "node1.Description = \"new\"", "Set node1.Description = node1"}));
    EXPECT_TRUE(log->Calls().empty());
    object->Store("Description", Empty());
}

TEST_F(Doubles, CountsCallsOfAMember) {
    object->Constant("name", "x").Constant("surname", "y");
    late.Get("name");
    late.Get("name");
    late.Get("surname");
    EXPECT_EQ(log->Count("name"), 2u);
    EXPECT_EQ(log->Count("node1.name"), 2u);
    EXPECT_EQ(log->Count("node2.name"), 0u);
}

TEST_F(Doubles, ComparesNamesWithoutCase) {
    object->Property("Description", "text");
    EXPECT_EQ(late.Get("DESCRIPTION").value, Value("text"));
    EXPECT_EQ(late.Id("description"), late.Id("Description"));
    EXPECT_EQ(late.Get("Descriptio").result, DISP_E_UNKNOWNNAME);
}

TEST_F(Doubles, NoTwoObjectsShareADispatchId) {
    const auto other = FakeObject::Make("node2", log);
    object->Constant("name", 1);
    other->Constant("name", 2);
    const DISPID mine = late.Id("name");
    EXPECT_NE(mine, LateBound(other).Id("name"));
    EXPECT_EQ(LateBound(other).InvokeId(mine, {}, {}, {}).result, DISP_E_MEMBERNOTFOUND);
}

TEST_F(Doubles, TellMethodsFromProperties) {
    object->Constant("name", "x").Function("GetUUID", [](Arguments&) { return "u"; });
    EXPECT_EQ(late.Do("name").result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(late.Get("GetUUID").result, DISP_E_MEMBERNOTFOUND);
    EXPECT_TRUE(late.Call("name"));
    EXPECT_TRUE(late.Call("GetUUID"));
    EXPECT_EQ(late.Put("name", "y").result, DISP_E_MEMBERNOTFOUND);
}

TEST_F(Doubles, RefuseAWrongNumberOfArguments) {
    object->Function("GetProperty", 1, 1, [](Arguments&) { return 0; });
    EXPECT_EQ(late.Call("GetProperty").result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(late.Call("GetProperty", 1, 2).result, DISP_E_BADPARAMCOUNT);
    EXPECT_TRUE(late.Call("GetProperty", 1));
}

TEST_F(Doubles, FailInTheLookUpOfNames) {
    object->Constant("name", "x");
    object->On("name").Fail(Failure::UnknownName());
    const Outcome outcome = late.Get("name");
    EXPECT_TRUE(outcome.nameUnknown);
    EXPECT_EQ(outcome.result, DISP_E_UNKNOWNNAME);
    EXPECT_EQ(log->Take(), Calls{});
}

TEST_F(Doubles, FailWithAnyResult) {
    object->Function("GetProperty", [](Arguments&) { return 1; });
    object->On("GetProperty").Fail(Failure::Result(DISP_E_TYPEMISMATCH, 2));
    const Outcome outcome = late.Call("GetProperty", "a", "b", "c");
    EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 2u);
    EXPECT_EQ(log->Count("GetProperty"), 1u);
}

TEST_F(Doubles, FailWithARichError) {
    object->Constant("name", "x");
    object->On("name").Fail(Failure::Exception(static_cast<HRESULT>(0x800A0035), "gone", "Store"));
    const Outcome outcome = late.Get("name");
    EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.AutomationNumber(), 53);
    EXPECT_EQ(outcome.Text(), "0x800A0035 gone [Store]");
    EXPECT_FALSE(outcome.wasDeferred);
}

TEST_F(Doubles, FailWithACodeInsteadOfANumber) {
    object->Constant("name", "x");
    object->On("name").Fail(Failure::Code(1004, "bad"));
    EXPECT_EQ(late.Get("name").AutomationNumber(), 1004);
}

TEST_F(Doubles, FailWithADeferredError) {
    object->Constant("name", "x");
    object->On("name").Fail(Failure::Deferred(E_ACCESSDENIED, "not you"));
    TakeDeferredFillIns();
    const Outcome outcome = late.Get("name");
    EXPECT_TRUE(outcome.wasDeferred);
    EXPECT_EQ(outcome.description, "not you");
    EXPECT_EQ(outcome.number, E_ACCESSDENIED);
    EXPECT_EQ(TakeDeferredFillIns(), 1);
    EXPECT_EQ(TakeDeferredFillIns(), 0);
}

TEST_F(Doubles, FailOnlyInTheCallsThatAreMeant) {
    object->Function("GetProperty", [](Arguments& arguments) { return arguments[0]; });
    object->On("GetProperty").With("Name").After(1).Times(1).Fail(Failure::Result(E_FAIL));
    EXPECT_TRUE(late.Call("GetProperty", "Name"));
    EXPECT_TRUE(late.Call("GetProperty", "Other"));
    EXPECT_EQ(late.Call("GetProperty", "Name").result, E_FAIL);
    EXPECT_TRUE(late.Call("GetProperty", "Name"));
}

TEST_F(Doubles, GiveAWrongKindOfResult) {
    object->Constant("name", "x");
    for (const Value& wrong : {Null(), Empty(), Nothing(), ErrorValue(E_FAIL), Value(2.5),
                               Value(std::string(100000, 'x')), Bytes({1, 2}), NullText()}) {
        object->Calm();
        object->On("name").Answer(wrong);
        EXPECT_EQ(late.Get("name").value.Type(), wrong.Type());
    }
}

TEST_F(Doubles, RunSomethingInTheMiddleOfACall) {
    object->Constant("name", "x").Constant("identifier", "i");
    object->On("name").Times(1).Run([&] { late.Get("identifier"); });
    EXPECT_EQ(late.Get("name").value, Value("x"));
    EXPECT_EQ(log->Take(), (Calls{"node1.name", "node1.identifier"}));
}

TEST_F(Doubles, SurviveTheirOwnReleaseInTheMiddleOfACall) {
    object->Constant("name", "x");
    object->On("name").Run([&] {
        object.Reset();
        late = LateBound();
    });
    // Nobody but the call holds it; it answers, and then it is gone.
    IDispatch* const last = late.Get();
    EXPECT_TRUE(LateBound(last).Get("name"));
    EXPECT_EQ(LiveDoubles(), 0);
}

TEST_F(Doubles, DieInTheMiddleOfACall) {
    object->Constant("name", "x");
    object->On("name").Run([&] { object->Disconnect(); });
    EXPECT_EQ(late.Get("name").result, RPC_E_DISCONNECTED);
    EXPECT_TRUE(late.Get("name").nameUnknown);
}

TEST_F(Doubles, WriteToTheCallersVariable) {
    object->Function("Swap", [](Arguments& arguments) {
        EXPECT_TRUE(arguments.Write(0, "new"));
        EXPECT_TRUE(arguments.Write(1, 42));
        EXPECT_TRUE(arguments.Write(2, false));
        EXPECT_FALSE(arguments.Write(3, 1));
        return Empty();
    });
    Value text = "old";
    long number = 1;
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_TRUE(late.Call("Swap", Variable(text), Reference(number), FlagReference(flag), 0));
    EXPECT_EQ(text, Value("new"));
    EXPECT_EQ(number, 42);
    EXPECT_EQ(flag, VARIANT_FALSE);
}

TEST_F(Doubles, ExceptionsOfTheTestNeverCrossTheCall) {
    object->Function("Throw", [](Arguments&) -> Value { throw std::runtime_error("oops"); });
    object->Function("Fail", [](Arguments&) -> Value { throw Failure::Result(DISP_E_OVERFLOW); });
    EXPECT_EQ(late.Call("Throw").description, "oops");
    EXPECT_EQ(late.Call("Fail").result, DISP_E_OVERFLOW);
}

TEST(DoublesThatAreHeld, AreCounted) {
    const long before = LiveDoubles();
    auto held = FakeObject::Make("held");
    EXPECT_EQ(LiveDoubles(), before + 1);
    EXPECT_EQ(LiveDoubleLabels(), std::vector<std::string>{"held"});
    // A planted leak.
    held->AddRef();
    IDispatch* const leaked = held.Get();
    held.Reset();
    EXPECT_EQ(LiveDoubles(), before + 1);
    leaked->Release();
    EXPECT_EQ(LiveDoubles(), before);
}

TEST(DoublesThatAreHeld, AreComplainedAboutAfterTheTest) {
    const long before = LiveDoubles();
    auto leaked = FakeObject::Make("leaked");
    EXPECT_EQ(TakeComplaints(before), (Calls{"still held: leaked"}));
    leaked.Reset();
    EXPECT_TRUE(TakeComplaints(before).empty());
}

TEST(DoublesThatAreReleased, AreNotCalledUnnoticed) {
    auto object = FakeObject::Make("gone");
    IDispatch* const dangling = object.Get();
    object.Reset();
    EXPECT_TRUE(TakeViolations().empty());
    UINT count = 0;
    LPOLESTR name = const_cast<LPOLESTR>(L"name");
    DISPID id = 0;
    EXPECT_EQ(dangling->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(dangling->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), RPC_E_DISCONNECTED);
    dangling->Release();
    EXPECT_EQ(TakeViolations(), (Calls{"gone.GetIDsOfNames after the last Release",
                                       "gone.Release after the last Release"}));
}

TEST(DoublesOnAnotherThread, AreNotCalledUnnoticed) {
    const auto object = FakeObject::Make("mine");
    std::thread([&] { LateBound(object.Get()).Has("name"); }).join();
    EXPECT_EQ(TakeViolations(),
              (Calls{"mine.AddRef on another thread", "mine.GetIDsOfNames on another thread",
                     "mine.Release on another thread"}));
}

}  // namespace
}  // namespace support
