#include "scripthost/event_arguments.h"

#include "hosting/error.h"

#include <gtest/gtest.h>

#include <cstdint>

using scripthost::AssignThrough;

namespace {

template <class T>
VARIANT ReferenceTo(VARTYPE type, T& target) {
    VARIANT reference{};
    reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
    reference.byref = &target;
    return reference;
}

template <class T>
T Assigned(VARTYPE type, const _variant_t& value) {
    T target{};
    AssignThrough(ReferenceTo(type, target), value);
    return target;
}

TEST(EventArgumentsTest, EveryPlainTypeIsWrittenInItsOwnWidth) {
    EXPECT_EQ(Assigned<std::uint8_t>(VT_UI1, _variant_t(L"200")), 200);
    EXPECT_EQ(Assigned<std::int8_t>(VT_I1, _variant_t(-3L)), -3);
    EXPECT_EQ(Assigned<short>(VT_I2, _variant_t(-300L)), -300);
    EXPECT_EQ(Assigned<unsigned short>(VT_UI2, _variant_t(60000L)), 60000);
    EXPECT_EQ(Assigned<VARIANT_BOOL>(VT_BOOL, _variant_t(1L)), VARIANT_TRUE);
    EXPECT_EQ(Assigned<long>(VT_I4, _variant_t(7.2)), 7);
    EXPECT_EQ(Assigned<unsigned long>(VT_UI4, _variant_t(5L)), 5U);
    EXPECT_EQ(Assigned<int>(VT_INT, _variant_t(true)), -1);
    EXPECT_EQ(Assigned<float>(VT_R4, _variant_t(0.5)), 0.5F);
    EXPECT_EQ(Assigned<double>(VT_R8, _variant_t(2L)), 2.0);
    EXPECT_EQ(Assigned<DATE>(VT_DATE, _variant_t(36526.0)), 36526.0);
    EXPECT_EQ(Assigned<CY>(VT_CY, _variant_t(2L)).int64, 20000);
    EXPECT_EQ(Assigned<std::int64_t>(VT_I8, _variant_t(9L)), 9);
}

TEST(EventArgumentsTest, NeighboursAreNotTouched) {
    short values[] = {1, 2, 3};
    AssignThrough(ReferenceTo(VT_I2, values[1]), _variant_t(-1L));
    EXPECT_EQ(values[0], 1);
    EXPECT_EQ(values[1], -1);
    EXPECT_EQ(values[2], 3);
}

TEST(EventArgumentsTest, AValueThatDoesNotConvertLeavesTheTargetAlone) {
    long number = 5;
    EXPECT_THROW(AssignThrough(ReferenceTo(VT_I4, number), _variant_t(L"x")), hosting::Error);
    EXPECT_EQ(number, 5);
    DECIMAL decimal{};
    EXPECT_THROW(AssignThrough(ReferenceTo(VT_DECIMAL, decimal), _variant_t(1L)), hosting::Error);
}

TEST(EventArgumentsTest, AReferenceToAVariantTakesAnyValue) {
    _variant_t target(L"before");
    VARIANT& plain = target;
    AssignThrough(ReferenceTo(VT_VARIANT, plain), _variant_t(5L));
    EXPECT_EQ(target, _variant_t(5L));
}

TEST(EventArgumentsTest, TheOrderOfTheEventIsKept) {
    long first = 1;
    VARIANT second{};
    second.vt = VT_I4;
    second.lVal = 2;
    VARIANT event[] = {second, ReferenceTo(VT_I4, first)};
    DISPPARAMS parameters{event, nullptr, 2, 0};
    scripthost::EventArguments arguments(parameters, true);
    ASSERT_EQ(arguments.Parameters().cArgs, 2U);
    EXPECT_EQ(*arguments.Parameters().rgvarg[0].pvarVal, _variant_t(2L));
    *arguments.Parameters().rgvarg[1].pvarVal = _variant_t(10L);
    arguments.CopyBack();
    EXPECT_EQ(first, 10);
    arguments.Answer(_variant_t(11L));
    EXPECT_EQ(first, 11);
}

}  // namespace
