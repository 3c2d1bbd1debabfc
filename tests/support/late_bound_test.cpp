#include "support/late_bound.h"
#include "support/fake_object.h"

#include <gtest/gtest.h>

namespace support {
namespace {

class LateBoundCalls : public testing::Test {
protected:
    /// How the callee sees the arguments of a call.
    std::string Seen() const {
        std::string text;
        for (const std::string& each : seen) text += text.empty() ? each : ", " + each;
        return text;
    }

    void SetUp() override {
        object->Function("Take", [this](Arguments& arguments) {
            seen.clear();
            for (std::size_t index = 0; index < arguments.Count(); ++index)
                seen.push_back(DescribeExactly(arguments.Raw(index)));
            return Empty();
        });
    }

    Ref<FakeObject> object = FakeObject::Make("object");
    LateBound late{object.Get()};
    std::vector<std::string> seen;
};

TEST_F(LateBoundCalls, PassValues) {
    EXPECT_TRUE(late.Call("Take", "text", 5, static_cast<short>(6), 2.5, true, object));
    EXPECT_EQ(Seen(), "BSTR \"text\", I4 5, I2 6, R8 2.5, BOOL True, DISPATCH object");
}

TEST_F(LateBoundCalls, PassTheSpecialValues) {
    EXPECT_TRUE(late.Call("Take", Nothing(), Empty(), Null(), ErrorValue(E_FAIL), Omitted()));
    EXPECT_EQ(Seen(), "DISPATCH Nothing, Empty, Null, ERROR Error E_FAIL, ERROR Omitted");
}

TEST_F(LateBoundCalls, PassVariablesAndTypedReferences) {
    Value variable = 5;
    long number = 6;
    _bstr_t text(L"x");
    BSTR raw = text.GetBSTR();
    IDispatch* none = nullptr;
    EXPECT_TRUE(
        late.Call("Take", Variable(variable), Reference(number), Reference(raw), Reference(none)));
    EXPECT_EQ(Seen(), "ByRef Variant I4 5, ByRef I4 6, ByRef BSTR \"x\", ByRef DISPATCH Nothing");
}

TEST_F(LateBoundCalls, AskForNamedArguments) {
    // The doubles know no named arguments, and say so.
    const Outcome outcome = late.Call("Take", 1, Named("viewAttr", "Name"));
    EXPECT_EQ(outcome.result, DISP_E_UNKNOWNNAME);
    EXPECT_TRUE(outcome.nameUnknown);
}

TEST_F(LateBoundCalls, WithoutAnObjectFail) {
    EXPECT_EQ(LateBound().Call("Take").result, E_POINTER);
}

TEST_F(LateBoundCalls, ExplainTheirFailure) {
    object->On("Take").Fail(Failure::Exception(static_cast<HRESULT>(0x800A01B6), "no", "Src"));
    const testing::AssertionResult result = late.Call("Take");
    EXPECT_FALSE(result);
    EXPECT_STREQ(result.message(), "0x800A01B6 no [Src]");
}

TEST_F(LateBoundCalls, NoticeAnErrorThatIsFilledInOnSuccess) {
    Failure odd = Failure::Exception(E_FAIL, "odd");
    odd.result = S_OK;
    odd.fillsInOnSuccess = true;
    object->On("Take").Fail(odd);
    const Outcome outcome = late.Call("Take");
    EXPECT_TRUE(outcome.Ok());
    EXPECT_TRUE(outcome.filledOnSuccess);
}

}  // namespace
}  // namespace support
