#include "platform/line_dda.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kLeast = -2147483647 - 1;
constexpr std::int32_t kMost = 2147483647;

/// Step by step, with the error term: aside only when the term is above zero.
std::vector<Point> Walked(Point from, Point to) {
    const int dx = std::abs(to.x - from.x), dy = std::abs(to.y - from.y);
    const int sx = to.x < from.x ? -1 : 1, sy = to.y < from.y ? -1 : 1;
    const bool steep = dy > dx;
    const int longer = steep ? dy : dx, shorter = steep ? dx : dy;
    std::vector<Point> pts;
    int error = 2 * shorter - longer;
    Point at = from;
    for (int i = 0; i < longer; ++i) {
        pts.push_back(at);
        if (error > 0) {
            (steep ? at.x : at.y) += steep ? sx : sy;
            error -= 2 * longer;
        }
        error += 2 * shorter;
        (steep ? at.y : at.x) += steep ? sy : sx;
    }
    return pts;
}

std::vector<Point> All(Point from, Point to) {
    const LineDda line(from, to);
    std::vector<Point> pts;
    for (std::int64_t k = 0; k < line.Count(); ++k) pts.push_back(line.At(k));
    return pts;
}

TEST(LineDdaTest, EndPointIsNotVisited) {
    EXPECT_THAT(All({5, 7}, {8, 7}), ElementsAre(Point{5, 7}, Point{6, 7}, Point{7, 7}));
    EXPECT_THAT(All({5, 7}, {5, 5}), ElementsAre(Point{5, 7}, Point{5, 6}));
    EXPECT_THAT(All({5, 7}, {3, 9}), ElementsAre(Point{5, 7}, Point{4, 8}));
}

TEST(LineDdaTest, LineOnOnePointVisitsNothing) {
    EXPECT_EQ(LineDda({5, 7}, {5, 7}).Count(), 0);
    EXPECT_THAT(All({kLeast, kMost}, {kLeast, kMost}), IsEmpty());
}

TEST(LineDdaTest, PixelHalfWayTakesTheRowNearerToTheStart) {
    EXPECT_THAT(All({0, 0}, {4, 2}), ElementsAre(Point{0, 0}, Point{1, 0}, Point{2, 1}, Point{3, 1}));
    EXPECT_THAT(All({0, 0}, {-4, -2}), ElementsAre(Point{0, 0}, Point{-1, 0}, Point{-2, -1}, Point{-3, -1}));
    EXPECT_THAT(All({4, 2}, {0, 0}), ElementsAre(Point{4, 2}, Point{3, 2}, Point{2, 1}, Point{1, 1}));
}

TEST(LineDdaTest, PixelHalfWayOfASteepLineTakesTheColumnNearerToTheStart) {
    EXPECT_THAT(All({0, 0}, {2, 4}), ElementsAre(Point{0, 0}, Point{0, 1}, Point{1, 2}, Point{1, 3}));
}

TEST(LineDdaTest, VisitsWhatTheStepByStepWalkVisitsInEveryDirection) {
    for (int x = -13; x <= 13; ++x) {
        for (int y = -13; y <= 13; ++y)
            EXPECT_EQ(All({3, -4}, {3 + x, -4 + y}), Walked({3, -4}, {3 + x, -4 + y})) << x << ' ' << y;
    }
    std::mt19937 random(7);
    std::uniform_int_distribution<int> any(-3000, 3000);
    for (int i = 0; i < 100; ++i) {
        const Point from{any(random), any(random)}, to{any(random), any(random)};
        EXPECT_EQ(All(from, to), Walked(from, to));
    }
}

TEST(LineDdaTest, LinesAcrossAllOfTheDeviceSpaceAreExact) {
    const LineDda level({kLeast, 5}, {kMost, 5});
    EXPECT_EQ(level.Count(), 4294967295);
    EXPECT_EQ(level.At(4294967294), (Point{kMost - 1, 5}));

    const LineDda diagonal({kMost, kLeast}, {kLeast, kMost});
    EXPECT_EQ(diagonal.At(2147483648), (Point{-1, 0}));
    EXPECT_EQ(diagonal.At(4294967294), (Point{kLeast + 1, kMost - 1}));

    // One pixel less down than across: the row lags by k / (2^32 - 1), cut at the half, so by a pixel from k = 2^31 on.
    const LineDda almost({kLeast, kLeast}, {kMost, kMost - 1});
    EXPECT_EQ(almost.At(2147483647), (Point{-1, -1}));
    EXPECT_EQ(almost.At(2147483648), (Point{0, -1}));
    EXPECT_EQ(almost.At(4294967294), (Point{kMost - 1, kMost - 2}));

    // A steep line one pixel wide steps aside when the half is behind it.
    const LineDda steep({0, kMost}, {1, kLeast});
    EXPECT_EQ(steep.At(2147483647), (Point{0, 0}));
    EXPECT_EQ(steep.At(2147483648), (Point{1, -1}));
}

}  // namespace
}  // namespace orvane
