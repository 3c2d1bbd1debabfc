#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

#include "ole/object.h"
#include "spy.h"
#include "support/fake_object.h"

using namespace support;

namespace {

class DispatchError : public SpyTest {
protected:
    template <class Work>
    Outcome Failing(Work work) {
        spy->onCall = std::move(work);
        return object.Do("Fail");
    }

    /// What the thread's error information says after a direct call.
    struct Rich {
        HRESULT result;
        std::string description;
        std::string source;
        GUID interfaceId;
    };
    template <class Call>
    Rich Direct(Call&& call) {
        SetErrorInfo(0, nullptr);
        Rich rich = {call(), {}, {}, {}};
        Ref<IErrorInfo> info;
        if (GetErrorInfo(0, info.GetAddressOf()) != S_OK) return rich;
        _bstr_t description;
        _bstr_t source;
        info->GetDescription(description.GetAddress());
        info->GetSource(source.GetAddress());
        info->GetGUID(&rich.interfaceId);
        rich.description = Utf8(description.GetBSTR());
        rich.source = Utf8(source.GetBSTR());
        return rich;
    }
};

TEST_F(DispatchError, OwnErrorHasNumberDescriptionAndSource) {
    const Outcome outcome = Failing([] { ole::Throw(ole::Number::subscriptOutOfRange); });
    EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.number, static_cast<HRESULT>(0x800A0009));
    EXPECT_EQ(outcome.description, "Subscript out of range");
    EXPECT_EQ(outcome.source, "OleTest.Spy");
}

TEST_F(DispatchError, OwnTextIsKept) {
    const Outcome outcome = Failing([] { ole::Throw(E_ACCESSDENIED, L"Not here"); });
    EXPECT_EQ(outcome.number, E_ACCESSDENIED);
    EXPECT_EQ(outcome.description, "Not here");
    EXPECT_EQ(outcome.source, "OleTest.Spy");
}

TEST_F(DispatchError, SystemErrorHasTheSystemsText) {
    const Outcome outcome = Failing([] { ole::Check(E_ACCESSDENIED); });
    EXPECT_EQ(outcome.number, E_ACCESSDENIED);
    EXPECT_FALSE(outcome.description.empty());
    EXPECT_EQ(outcome.source, "OleTest.Spy");
}

TEST_F(DispatchError, MemoryShortageAndForeignExceptionsBecomeErrors) {
    EXPECT_EQ(Failing([] { throw std::bad_alloc(); }).number, E_OUTOFMEMORY);
    EXPECT_EQ(Failing([] { throw std::runtime_error("x"); }).number, E_UNEXPECTED);
    const Outcome outcome = Failing([] { throw 5; });
    EXPECT_EQ(outcome.number, E_UNEXPECTED);
    EXPECT_EQ(outcome.source, "OleTest.Spy");
}

TEST_F(DispatchError, ErrorOfALateBoundCallKeepsNumberTextAndSource) {
    const auto fake = FakeObject::Make("fake");
    fake->Property("name");
    const auto call = [fake] { ole::Object(fake.Get()).Call(L"name"); };

    fake->On("name").Fail(Failure::Exception(0x80041234, "no name", "Fakes"));
    Outcome outcome = Failing(call);
    EXPECT_EQ(outcome.number, static_cast<HRESULT>(0x80041234));
    EXPECT_EQ(outcome.description, "no name");
    EXPECT_EQ(outcome.source, "Fakes");

    fake->Calm();
    fake->On("name").Fail(Failure::Deferred(0x80045678, "later", "Fakes"));
    TakeDeferredFillIns();
    outcome = Failing(call);
    EXPECT_EQ(outcome.number, static_cast<HRESULT>(0x80045678));
    EXPECT_EQ(outcome.description, "later");
    EXPECT_EQ(outcome.source, "Fakes");
    EXPECT_EQ(TakeDeferredFillIns(), 1);

    fake->Calm();
    fake->On("name").Fail(Failure::Code(1004, "coded", "Fakes"));
    outcome = Failing(call);
    EXPECT_EQ(outcome.AutomationNumber(), 1004);
    EXPECT_EQ(outcome.description, "coded");
}

TEST_F(DispatchError, NumberOfACalleesOwnErrorIsKeptWhateverItIs) {
    const auto fake = FakeObject::Make("fake");
    fake->Property("name");
    for (const HRESULT number : {DISP_E_MEMBERNOTFOUND, DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW}) {
        fake->Calm();
        fake->On("name").Fail(Failure::Exception(number, "own", "Fakes"));
        const Outcome outcome = Failing([fake] { ole::Object(fake.Get()).Call(L"name"); });
        EXPECT_EQ(outcome.number, number);
        EXPECT_EQ(outcome.description, "own");
        EXPECT_EQ(outcome.source, "Fakes");
    }
}

TEST_F(DispatchError, CallThatDidNotTakePlaceIsOurOwnError) {
    const auto fake = FakeObject::Make("fake");
    const Outcome outcome = Failing([fake] { ole::Object(fake.Get()).Call(L"absent"); });
    EXPECT_EQ(outcome.AutomationNumber(), 438);
    EXPECT_EQ(outcome.description, "Object doesn't support this property or method");
    EXPECT_EQ(outcome.source, "OleTest.Spy");
}

TEST_F(DispatchError, ErrorsOfConversionsHaveAutomationNumbers) {
    EXPECT_EQ(
        Failing([] { static_cast<void>(static_cast<long>(Value("abc"))); }).AutomationNumber(), 13);
    EXPECT_EQ(
        Failing([] { static_cast<void>(static_cast<short>(Value(70000))); }).AutomationNumber(), 6);
}

TEST_F(DispatchError, CallerWithoutExceptionRecordGetsTheResultOnly) {
    spy->onCall = [] { ole::Throw(ole::Number::invalidCall); };
    CallStyle style;
    style.wantsException = false;
    style.wantsBadArgument = false;
    EXPECT_EQ(object.Invoke("Fail", style, {}).result, DISP_E_EXCEPTION);
    EXPECT_EQ(object.Invoke("Long", style, {Argument("x")}).result, DISP_E_TYPEMISMATCH);
}

TEST_F(DispatchError, ErrorOfAnEarlierCallIsNotReportedAgain) {
    const auto stale = [] {
        Ref<ICreateErrorInfo> made;
        CreateErrorInfo(made.GetAddressOf());
        std::wstring text = L"stale";
        made->SetDescription(text.data());
        SetErrorInfo(0, Query<IErrorInfo>(made.Get()).Get());
    };
    const Outcome outcome = Failing([&] {
        stale();
        ole::Check(E_ACCESSDENIED);
    });
    EXPECT_NE(outcome.description, "stale");
    EXPECT_EQ(outcome.source, "OleTest.Spy");
    stale();
    EXPECT_NE(object.Do("Long", Null()).description, "stale");
}

TEST_F(DispatchError, NothingIsFilledInOnSuccess) {
    spy->onCall = [] {
        try {
            ole::Throw(ole::Number::invalidCall);
        } catch (const _com_error&) {
            ole::ReportCurrentException(L"inner", IID_NULL);
        }
    };
    EXPECT_FALSE(object.Do("Nothing").filledOnSuccess);
}

TEST_F(DispatchError, DirectCallLeavesRichErrorInformation) {
    spy->onCall = [] { ole::Throw(ole::Number::invalidCall); };
    const Rich rich = Direct([&] { return spy->Fail(); });
    EXPECT_EQ(rich.result, static_cast<HRESULT>(0x800A0005));
    EXPECT_EQ(rich.description, "Invalid procedure call or argument");
    EXPECT_EQ(rich.source, "OleTest.Spy");
    EXPECT_EQ(rich.interfaceId, __uuidof(_Spy));
}

TEST_F(DispatchError, ClassSaysThatItsInterfaceHasRichErrors) {
    const auto support = Query<ISupportErrorInfo>(static_cast<_Spy*>(spy.Get()));
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_Spy)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IPersist), S_FALSE);
}

TEST_F(DispatchError, NextCallWorksAfterAnError) {
    Failing([] { throw 5; });
    spy->onCall = nullptr;
    EXPECT_TRUE(object.Do("Text", "abc"));
}

}  // namespace
