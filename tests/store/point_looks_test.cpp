#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "store/image_scale.h"
#include "store/symbol_size.h"

namespace orvane {
namespace {

TEST(SymbolSizeTest, GrowsInStepsAsTheMapIsZoomedIn) {
    const std::pair<std::int32_t, std::int32_t> sizes[] = {{INT32_MAX, 2}, {50001, 2}, {50000, 3}, {30001, 3},     {30000, 4},
                                                           {20001, 4},     {20000, 5}, {10001, 5}, {10000, 6},     {7001, 6},
                                                           {7000, 7},      {5001, 7},  {5000, 9},  {3001, 9},      {3000, 10},
                                                           {1, 10},        {0, 10},    {-5, 10},   {INT32_MIN, 10}};
    for (const auto& [zoom, size] : sizes) {
        EXPECT_EQ(SymbolHalfSide(1, zoom, 1), size) << zoom;
        EXPECT_EQ(SymbolHalfSide(1, zoom, 3), size * 3) << zoom;
    }
}

TEST(SymbolSizeTest, LineSize9999FixesTheSizeAtEveryScale) {
    for (const std::int32_t zoom : {1, 3000, 3001, 9000, 50001, INT32_MAX}) EXPECT_EQ(SymbolHalfSide(9999, zoom, 2), 12) << zoom;
    EXPECT_EQ(SymbolHalfSide(9998, 100, 2), 20);
}

TEST(SymbolSizeTest, HugeFactorSaturates) {
    EXPECT_EQ(SymbolHalfSide(0, 1, INT32_MAX), INT32_MAX);
    EXPECT_EQ(SymbolHalfSide(0, 1, INT32_MIN), INT32_MIN);
    EXPECT_EQ(SymbolHalfSide(0, 1, 0), 0);
}

ImageLook Bounds(double least, double most) {
    ImageLook look;
    look.imgMinScl = least;
    look.imgMaxScl = most;
    return look;
}

TEST(ImageScaleTest, IsHeldBetweenTheBounds) {
    EXPECT_EQ(ImageScale(Bounds(0.5, 2), 1.25), 1.25);
    EXPECT_EQ(ImageScale(Bounds(0.5, 2), 0.25), 0.5);
    EXPECT_EQ(ImageScale(Bounds(0.5, 2), 8), 2);
}

TEST(ImageScaleTest, EqualBoundsMakeOneSizeAtAllScales) {
    for (const double scale : {0.0001, 0.5, 70.0}) EXPECT_EQ(ImageScale(Bounds(0.5, 0.5), scale), 0.5);
}

TEST(ImageScaleTest, UpperBoundIsAskedFirstWhereTheyAreCrossed) {
    EXPECT_EQ(ImageScale(Bounds(3, 1), 2), 1);
    EXPECT_EQ(ImageScale(Bounds(3, 1), 0.5), 3);
}

TEST(ImageScaleTest, NotANumberAndInfinityGoThroughTheSameComparisons) {
    const double nan = std::nan("");
    EXPECT_TRUE(std::isnan(ImageScale(Bounds(0.5, 2), nan)));
    EXPECT_EQ(ImageScale(Bounds(nan, nan), 1.5), 1.5);
    EXPECT_EQ(ImageScale(Bounds(0.5, 2), std::numeric_limits<double>::infinity()), 2);
}

}  // namespace
}  // namespace orvane
