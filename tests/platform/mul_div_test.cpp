#include "platform/mul_div.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(MulDivTest, HalvesAreRoundedAwayFromZero) {
    EXPECT_EQ(MulDiv(5, 1, 2), 3);
    EXPECT_EQ(MulDiv(-5, 1, 2), -3);
    EXPECT_EQ(MulDiv(5, 1, -2), -3);
    EXPECT_EQ(MulDiv(-5, 1, -2), 3);
    EXPECT_EQ(MulDiv(7, 96, 72), 9) << "9.33";
    EXPECT_EQ(MulDiv(4, 1, 3), 1) << "1.33";
    EXPECT_EQ(MulDiv(5, 1, 3), 2) << "1.67";
}

TEST(MulDivTest, TheProductHasSixtyFourBits) {
    EXPECT_EQ(MulDiv(2147483647, 2147483647, 2147483647), 2147483647);
    EXPECT_EQ(MulDiv(-2147483647 - 1, 10, 10), -2147483647 - 1);
}

TEST(MulDivTest, NoDivisorAndTooGreatAResultAreMinusOne) {
    EXPECT_EQ(MulDiv(7, 96, 0), -1);
    EXPECT_EQ(MulDiv(2147483647, 2, 1), -1);
    EXPECT_EQ(MulDiv(-2147483647 - 1, -1, 1), -1);
}

}  // namespace
}  // namespace orvane
