#include "repository/store/value.h"

#include <gtest/gtest.h>

namespace repository::store {
namespace {

TEST(DataType, WordsAreKnownWithoutCase) {
    EXPECT_EQ(DataTypeOf("LONG"), DataType::longInteger);
    EXPECT_EQ(DataTypeOf("currency"), DataType::currency);
    EXPECT_EQ(DataTypeOf("Font"), std::nullopt);
    EXPECT_EQ(DataTypeOf(""), std::nullopt);
    EXPECT_EQ(WordOf(DataType::singleFloat), "Single");
}

TEST(Value, FitsItsOwnTypeOnly) {
    EXPECT_TRUE(Fits(std::int32_t{1}, DataType::longInteger));
    EXPECT_FALSE(Fits(std::int16_t{1}, DataType::longInteger));
    EXPECT_FALSE(Fits(std::string("1"), DataType::longInteger));
    EXPECT_TRUE(Fits(Bytes{1}, DataType::blob));
    EXPECT_FALSE(Fits(std::string(), DataType::blob));
}

TEST(Value, EmptyAndVariantFitEverything) {
    EXPECT_TRUE(Fits(Empty(), DataType::boolean));
    EXPECT_TRUE(Fits(Date{1}, DataType::variant));
    EXPECT_TRUE(Fits(Bytes{}, DataType::variant));
}

}  // namespace
}  // namespace repository::store
