#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "analysis/geometry/plane.h"

namespace orvane {
namespace {

DigPnt At(double x, double y) { return {x, y, 0}; }

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNan = std::nan("");

TEST(PythagTest, TakesTheOtherSideWhenOneIsZero) {
    EXPECT_EQ(Pythag(-7.5, 0), 7.5);
    EXPECT_EQ(Pythag(0, -0.25), 0.25);
    EXPECT_EQ(Pythag(0, 0), 0);
}

TEST(PythagTest, IsTheLengthOfTheVector) {
    EXPECT_DOUBLE_EQ(Pythag(3, -4), 5);
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> side(-1e6, 1e6);
    for (int i = 0; i < 10000; ++i) {
        const double a = side(random);
        const double b = side(random);
        EXPECT_NEAR(Pythag(a, b) / static_cast<double>(std::hypot(static_cast<long double>(a), static_cast<long double>(b))), 1,
                    1e-14);
    }
}

TEST(PythagTest, DoesNotOverflowWhereTheSquaresWould) {
    EXPECT_NEAR(Pythag(3e300, 4e300) / 5e300, 1, 1e-14);
    EXPECT_NEAR(Pythag(3e-300, 4e-300) / 5e-300, 1, 1e-14);
}

TEST(PythagTest, ThreeRoundsOfTheIterationReachAllDigits) {
    // By hand from (1, 1): 1.4 after the first round, 278.6 / 197 = 1.41421319... after the second.
    EXPECT_DOUBLE_EQ(Pythag(1, 1), 1.4142135623730951);
}

// The nearest of many points of the segment, refined: no formula in common with the routine.
long double DistanceBySearch(const DigPnt& p, const DigPnt& a, const DigPnt& b) {
    auto at = [&](long double t) {
        const long double x = a.x + (static_cast<long double>(b.x) - a.x) * t - p.x;
        const long double y = a.y + (static_cast<long double>(b.y) - a.y) * t - p.y;
        return std::sqrt(x * x + y * y);
    };
    long double low = 0, high = 1;
    for (int i = 0; i < 200; ++i) {
        const long double left = low + (high - low) / 3, right = high - (high - low) / 3;
        if (at(left) < at(right)) {
            high = right;
        } else {
            low = left;
        }
    }
    return at((low + high) / 2);
}

TEST(SegDistTest, MatchesTheNearestPointFoundBySearch) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> coordinate(-1000, 1000);
    for (int i = 0; i < 2000; ++i) {
        const DigPnt p = At(coordinate(random), coordinate(random));
        const DigPnt a = At(coordinate(random), coordinate(random));
        const DigPnt b = At(coordinate(random), coordinate(random));
        EXPECT_NEAR(SegDist(p, a, b), static_cast<double>(DistanceBySearch(p, a, b)), 1e-6);
    }
}

TEST(SegDistTest, BeforeTheFirstEndCountsTheFirstEnd) { EXPECT_DOUBLE_EQ(SegDist(At(-3, 4), At(0, 0), At(10, 0)), 5); }

TEST(SegDistTest, BehindTheSecondEndCountsTheSecondEnd) { EXPECT_DOUBLE_EQ(SegDist(At(13, -4), At(0, 0), At(10, 0)), 5); }

TEST(SegDistTest, BesideTheSegmentCountsTheHeight) { EXPECT_EQ(SegDist(At(3, 2), At(0, 0), At(10, 0)), 2); }

TEST(SegDistTest, SegmentOfLengthZeroGivesTheDistanceToItsEnd) {
    EXPECT_DOUBLE_EQ(SegDist(At(4, 6), At(1, 2), At(1, 2)), 5);
    EXPECT_EQ(SegDist(At(1, 2), At(1, 2), At(1, 2)), 0);
}

TEST(SegDistTest, PointOnTheSegmentIsExactlyZero) {
    EXPECT_EQ(SegDist(At(2, 2), At(0, 0), At(5, 5)), 0);
    EXPECT_EQ(SegDist(At(5, 5), At(0, 0), At(5, 5)), 0);
}

TEST(SegDistTest, HeightIgnoresZ) { EXPECT_EQ(SegDist({3, 2, 100}, {0, 0, -5}, {10, 0, 7}), 2); }

TEST(SegParallelTest, TwoVerticalsOrTwoHorizontalsAreParallel) {
    EXPECT_EQ(SegParallel(At(1, 0), At(1, 5), At(9, 3), At(9, -3)), 1);
    EXPECT_EQ(SegParallel(At(0, 1), At(5, 1), At(3, 9), At(-3, 9)), 1);
}

TEST(SegParallelTest, EqualSlopesAreParallelAndOthersAreNot) {
    EXPECT_EQ(SegParallel(At(0, 0), At(2, 1), At(10, 10), At(6, 8)), 1);
    EXPECT_EQ(SegParallel(At(0, 0), At(2, 1), At(10, 10), At(6, 9)), 0);
    EXPECT_EQ(SegParallel(At(0, 0), At(0, 1), At(0, 0), At(1, 0)), 0);
}

TEST(SegParallelTest, SegmentWithoutLengthCountsAsVertical) {
    EXPECT_EQ(SegParallel(At(3, 3), At(3, 3), At(9, 0), At(9, 1)), 1);
    EXPECT_EQ(SegParallel(At(3, 3), At(3, 3), At(0, 9), At(1, 9)), 0);
}

TEST(SegCrossTest, CrossingWithinBothIsOne) {
    DigPnt out;
    EXPECT_EQ(SegCross(At(0, 0), At(4, 4), At(0, 4), At(4, 0), out), 1);
    EXPECT_EQ(out.x, 2);
    EXPECT_EQ(out.y, 2);
}

TEST(SegCrossTest, CrossingOutsideOneSegmentIsMinusOneAndWritesThePoint) {
    DigPnt out;
    EXPECT_EQ(SegCross(At(0, 0), At(1, 1), At(0, 4), At(4, 0), out), -1);
    EXPECT_EQ(out.x, 2);
    EXPECT_EQ(out.y, 2);
}

TEST(SegCrossTest, ParallelSegmentsGiveZeroAndLeaveTheOutputAlone) {
    DigPnt out = At(77, 88);
    EXPECT_EQ(SegCross(At(0, 0), At(4, 4), At(1, 0), At(5, 4), out), 0);
    EXPECT_EQ(SegCross(At(0, 0), At(0, 4), At(1, 0), At(1, 4), out), 0);
    EXPECT_EQ(SegCross(At(0, 0), At(4, 0), At(0, 1), At(4, 1), out), 0);
    EXPECT_EQ(out.x, 77);
    EXPECT_EQ(out.y, 88);
}

TEST(SegCrossTest, EveryPairOfDirectionsFindsItsCrossing) {
    struct Case {
        DigPnt a1, a2, b1, b2;
    };
    // All of them cross at (2, 3).
    const Case cases[] = {
        {At(0, 1), At(4, 5), At(2, 0), At(2, 9)},  // sloped, vertical
        {At(0, 1), At(4, 5), At(0, 3), At(9, 3)},  // sloped, horizontal
        {At(2, 0), At(2, 9), At(0, 1), At(4, 5)},  // vertical, sloped
        {At(2, 0), At(2, 9), At(0, 3), At(9, 3)},  // vertical, horizontal
        {At(0, 3), At(9, 3), At(0, 1), At(4, 5)},  // horizontal, sloped
        {At(0, 3), At(9, 3), At(2, 0), At(2, 9)},  // horizontal, vertical
    };
    for (const Case& c : cases) {
        DigPnt out;
        EXPECT_EQ(SegCross(c.a1, c.a2, c.b1, c.b2, out), 1);
        EXPECT_EQ(out.x, 2);
        EXPECT_EQ(out.y, 3);
    }
}

TEST(SegCrossTest, RangesIncludeTheEnds) {
    DigPnt out;
    EXPECT_EQ(SegCross(At(0, 0), At(4, 4), At(4, 4), At(8, 0), out), 1);
    EXPECT_EQ(out.x, 4);
    EXPECT_EQ(out.y, 4);
}

TEST(SegCrossTest, AgreesWithALongDoubleSolution) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> coordinate(-1000, 1000);
    for (int i = 0; i < 5000; ++i) {
        const DigPnt a1 = At(coordinate(random), coordinate(random)), a2 = At(coordinate(random), coordinate(random));
        const DigPnt b1 = At(coordinate(random), coordinate(random)), b2 = At(coordinate(random), coordinate(random));
        using Wide = long double;
        const Wide ax = Wide{a2.x} - a1.x, ay = Wide{a2.y} - a1.y, bx = Wide{b2.x} - b1.x, by = Wide{b2.y} - b1.y;
        const Wide det = ax * by - ay * bx;
        if (std::fabs(det) < 1) continue;
        const Wide t = ((Wide{b1.x} - a1.x) * by - (Wide{b1.y} - a1.y) * bx) / det;
        const Wide u = ((Wide{b1.x} - a1.x) * ay - (Wide{b1.y} - a1.y) * ax) / det;
        if (std::fabs(t) < 1e-6L || std::fabs(t - 1) < 1e-6L || std::fabs(u) < 1e-6L || std::fabs(u - 1) < 1e-6L) continue;
        DigPnt out;
        const bool within = t > 0 && t < 1 && u > 0 && u < 1;
        EXPECT_EQ(SegCross(a1, a2, b1, b2, out), within ? 1 : -1);
        if (within) {
            EXPECT_NEAR(out.x, static_cast<double>(a1.x + ax * t), 1e-6);
            EXPECT_NEAR(out.y, static_cast<double>(a1.y + ay * t), 1e-6);
        }
    }
}

TEST(SegTouchTest, ParallelSegmentsThatShareAnEndGiveTwo) { EXPECT_EQ(SegTouch(At(0, 0), At(4, 0), At(4, 0), At(8, 0)), 2); }

TEST(SegTouchTest, ParallelSegmentAroundTheFirstOneTouchesNothing) {
    // Only the ends of b are looked at, and neither lies on a.
    EXPECT_EQ(SegTouch(At(2, 0), At(3, 0), At(0, 0), At(8, 0)), 0);
    EXPECT_EQ(SegTouch(At(0, 0), At(8, 0), At(2, 0), At(3, 0)), 2);
}

TEST(SegTouchTest, AnEndOfEitherOnTheOtherGivesOne) {
    EXPECT_EQ(SegTouch(At(0, 0), At(8, 0), At(3, 0), At(3, 5)), 1);
    EXPECT_EQ(SegTouch(At(3, 0), At(3, 5), At(0, 0), At(8, 0)), 1);
}

TEST(SegTouchTest, CrossingWithoutAnEndOnTheOtherGivesZero) { EXPECT_EQ(SegTouch(At(0, 0), At(8, 0), At(3, -5), At(3, 5)), 0); }

TEST(SegInsideTest, EndStrictlyBetweenInXOrInYCounts) {
    EXPECT_EQ(SegInside(At(2, 0), At(12, 0), At(0, 0), At(8, 0)), 1);
    EXPECT_EQ(SegInside(At(0, 2), At(0, 12), At(0, 0), At(0, 8)), 1);
    EXPECT_EQ(SegInside(At(-1, 9), At(3, 9), At(0, 0), At(8, 0)), 1) << "beside it, but within its x";
}

TEST(SegInsideTest, EndsOnTheSpanAndSegmentsAcrossDoNotCount) {
    EXPECT_EQ(SegInside(At(0, 0), At(8, 0), At(0, 0), At(8, 0)), 0);
    EXPECT_EQ(SegInside(At(-5, 0), At(0, 0), At(0, 0), At(8, 0)), 0);
    EXPECT_EQ(SegInside(At(3, -1), At(3, 1), At(0, 0), At(8, 0)), 0);
}

TEST(PntOnLineTest, OnlyDistanceZeroFromASegmentCounts) {
    const DigPnt line[] = {At(0, 0), At(4, 0), At(4, 4)};
    EXPECT_EQ(PntOnLine(At(4, 3), line), 1);
    EXPECT_EQ(PntOnLine(At(2, 0), line), 1);
    EXPECT_EQ(PntOnLine(At(2, 2), line), 0) << "the line is not closed";
    EXPECT_EQ(PntOnLine(At(4, 3.0000001), line), 1);
    EXPECT_EQ(PntOnLine(At(4.0000001, 3), line), 0);
}

TEST(PntOnLineTest, FewerThanTwoPointsAreNoLine) {
    const DigPnt one[] = {At(1, 1)};
    EXPECT_EQ(PntOnLine(At(1, 1), one), 0);
    EXPECT_EQ(PntOnLine(At(1, 1), {}), 0);
}

TEST(SegmentsTest, NotANumberAndInfinitiesAnswerWithoutTouching) {
    DigPnt out;
    EXPECT_EQ(SegCross(At(kNan, 0), At(1, 1), At(0, 1), At(1, 0), out), -1);
    EXPECT_EQ(SegCross(At(-kInf, 0), At(kInf, 1), At(0, 1), At(1, 0), out), -1);
    EXPECT_EQ(SegParallel(At(kNan, 0), At(1, 1), At(kNan, 0), At(1, 1)), 0);
    EXPECT_TRUE(std::isnan(SegDist(At(kNan, 0), At(0, 0), At(1, 1))));
    EXPECT_EQ(PntOnLine(At(kNan, kInf), std::vector<DigPnt>{At(0, 0), At(1, 1)}), 0);
}

}  // namespace
}  // namespace orvane
