#include "platform/rect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/to_int.h"

namespace orvane {
namespace {

TEST(RectTest, NormalizeSwapsEachAxisOnItsOwn) {
    EXPECT_EQ(NormalizeRect({5, 1, 2, 7}), (Rect{2, 1, 5, 7}));
    EXPECT_EQ(NormalizeRect({2, 7, 5, 1}), (Rect{2, 1, 5, 7}));
    EXPECT_EQ(NormalizeBox({5, 7, 2, 1}), (Box{2, 1, 5, 7}));
}

TEST(RectTest, TheCommonPartOfTwo) {
    Rect common;
    EXPECT_TRUE(IntersectRect({0, 0, 10, 10}, {5, -5, 20, 3}, common));
    EXPECT_EQ(common, (Rect{5, 0, 10, 3}));
}

TEST(RectTest, RectanglesThatOnlyTouchHaveNoCommonPart) {
    Rect common{1, 2, 3, 4};
    EXPECT_FALSE(IntersectRect({0, 0, 10, 10}, {10, 0, 20, 10}, common));
    EXPECT_EQ(common, Rect{});
}

TEST(RectTest, AnEmptyRectangleMeetsNothing) {
    Rect common;
    EXPECT_FALSE(IntersectRect({0, 0, 10, 10}, {5, 5, 5, 8}, common));
    EXPECT_FALSE(IntersectRect({0, 0, 10, 10}, {8, 2, 4, 8}, common));
    EXPECT_FALSE(IntersectRect({5, 5, 5, 8}, {0, 0, 10, 10}, common));
}

TEST(RectTest, BoxesGoBeyond32Bits) {
    const std::int64_t beyond = 3'000'000'000;
    Box common;
    EXPECT_TRUE(IntersectBox({-beyond, -beyond, beyond, beyond}, {beyond - 2, 0, beyond + 5, 1}, common));
    EXPECT_EQ(common, (Box{beyond - 2, 0, beyond, 1}));
    EXPECT_EQ(InflateBox({1, 2, 3, 4}, 1), (Box{0, 1, 4, 5}));
    EXPECT_EQ(ToBox({1, 2, 3, 4}), (Box{1, 2, 3, 4}));
}

TEST(RectTest, RightAndBottomEdgesLieOutside) {
    const Rect r{0, 0, 10, 10};
    EXPECT_TRUE(PtInRect(r, {0, 0}));
    EXPECT_TRUE(PtInRect(r, {9, 9}));
    EXPECT_FALSE(PtInRect(r, {10, 5}));
    EXPECT_FALSE(PtInRect(r, {5, 10}));
    EXPECT_FALSE(PtInRect(r, {-1, 5}));
}

TEST(ToIntTest, NegativeHalvesDoNotRoundAsPositiveOnesDo) {
    EXPECT_EQ(ToInt(0.5), 1);
    EXPECT_EQ(ToInt(1.4), 1);
    EXPECT_EQ(ToInt(-0.5), 0);
    EXPECT_EQ(ToInt(-0.6), 0);
    EXPECT_EQ(ToInt(-1.4), 0);
    EXPECT_EQ(ToInt(-1.6), -1);
}

TEST(ToIntTest, WhatDoesNotFitSaturatesAndWhatIsNoNumberIsZero) {
    EXPECT_EQ(ToInt(1e300), INT32_MAX);
    EXPECT_EQ(ToInt(-1e300), INT32_MIN);
    EXPECT_EQ(ToInt(std::numeric_limits<double>::infinity()), INT32_MAX);
    EXPECT_EQ(ToInt(std::nan("")), 0);
    EXPECT_EQ(TruncToInt32(-1.9), -1);
    EXPECT_EQ(TruncToInt32(2147483646.9), 2147483646);
    EXPECT_EQ(TruncToInt64(-1.9), -1);
    EXPECT_EQ(TruncToInt64(1e300), INT64_MAX);
    EXPECT_EQ(TruncToInt64(-1e300), INT64_MIN);
    EXPECT_EQ(TruncToInt64(9223372036854775808.0), INT64_MAX);
    EXPECT_EQ(TruncToInt64(std::nan("")), 0);
}

}  // namespace
}  // namespace orvane
