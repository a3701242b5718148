#include "platform/mul_div.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(MulDivTest, HalvesGoAwayFromZero) {
    EXPECT_EQ(MulDiv(1, 1, 2), 1);
    EXPECT_EQ(MulDiv(3, 1, 2), 2);
    EXPECT_EQ(MulDiv(-1, 1, 2), -1);
    EXPECT_EQ(MulDiv(1, -3, 2), -2);
    EXPECT_EQ(MulDiv(3, 1, -2), -2);
    EXPECT_EQ(MulDiv(-3, 1, -2), 2);
}

TEST(MulDivTest, OtherFractionsGoToTheNearest) {
    EXPECT_EQ(MulDiv(10, 96, 72), 13);  // 13.33
    EXPECT_EQ(MulDiv(7, 96, 72), 9);    // 9.33
    EXPECT_EQ(MulDiv(11, 96, 72), 15);  // 14.67
    EXPECT_EQ(MulDiv(-11, 96, 72), -15);
    EXPECT_EQ(MulDiv(4, 1, 9), 0);
    EXPECT_EQ(MulDiv(5, 1, 9), 1);
}

TEST(MulDivTest, ProductMayBeWiderThanTheResult) {
    EXPECT_EQ(MulDiv(INT32_MAX, INT32_MAX, INT32_MAX), INT32_MAX);
    EXPECT_EQ(MulDiv(INT32_MIN, INT32_MIN, INT32_MIN), INT32_MIN);
    EXPECT_EQ(MulDiv(2000000000, 3, 6), 1000000000);
}

TEST(MulDivTest, NothingToDivideByGivesMinusOne) {
    EXPECT_EQ(MulDiv(5, 7, 0), -1);
    EXPECT_EQ(MulDiv(0, 0, 0), -1);
}

TEST(MulDivTest, ResultBeyond32BitsGivesMinusOne) {
    EXPECT_EQ(MulDiv(INT32_MAX, 2, 1), -1);
    EXPECT_EQ(MulDiv(INT32_MIN, 1, -1), -1);
    EXPECT_EQ(MulDiv(INT32_MIN, INT32_MIN, 1), -1);
    EXPECT_EQ(MulDiv(INT32_MIN, 1, 1), INT32_MIN);
}

}  // namespace
}  // namespace orvane
