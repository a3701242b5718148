#include "store/strips.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace orvane {
namespace {

constexpr std::int32_t kMin = -2147483647 - 1;
constexpr std::int32_t kMax = 2147483647;
/// Meets nothing of what the tests use.
constexpr Rect kElsewhere{-9000, -9000, -8990, -8990};

bool Near(std::int64_t a, std::int64_t b) { return RectNearEqual({a, 1, 1, 1}, {b, 1, 1, 1}); }

TEST(RectNearEqualTest, SidesWithinOnePercentMatch) {
    EXPECT_TRUE(Near(1000, 1000));
    EXPECT_TRUE(Near(1000, 990));
    EXPECT_TRUE(Near(990, 1000));
    EXPECT_FALSE(Near(1000, 989));
    EXPECT_FALSE(Near(989, 1000));
}

TEST(RectNearEqualTest, AllFourSidesMustMatch) {
    const Box box{1000, 1000, 1000, 1000};
    EXPECT_TRUE(RectNearEqual(box, {995, 996, 997, 998}));
    EXPECT_FALSE(RectNearEqual(box, {900, 996, 997, 998}));
    EXPECT_FALSE(RectNearEqual(box, {995, 900, 997, 998}));
    EXPECT_FALSE(RectNearEqual(box, {995, 996, 900, 998}));
    EXPECT_FALSE(RectNearEqual(box, {995, 996, 997, 900}));
}

TEST(RectNearEqualTest, ZeroMatchesZeroAndWhateverIsBelowIt) {
    EXPECT_TRUE(Near(0, 0));
    EXPECT_TRUE(Near(0, -50)) << "the greater side is zero, so no quotient is taken";
    EXPECT_TRUE(Near(-50, 0));
    EXPECT_FALSE(Near(0, 50)) << "0 / 50";
    EXPECT_FALSE(Near(50, 0));
}

TEST(RectNearEqualTest, NegativeSidesMatchUpToNearlyTwice) {
    EXPECT_TRUE(Near(-100, -198)) << "1.98 + 0.01 cuts to 1";
    EXPECT_FALSE(Near(-100, -199)) << "1.99 + 0.01 is 2";
    EXPECT_TRUE(Near(-198, -100));
    EXPECT_FALSE(Near(-5, 5));
}

TEST(RectInStripsTest, BoxThatMeetsEitherStripShows) {
    const Rect a{0, 0, 10, 100}, b{0, 90, 100, 100};
    EXPECT_TRUE(RectInStrips({5, 5, 6, 6}, a, b));
    EXPECT_TRUE(RectInStrips({50, 95, 60, 99}, a, b));
    EXPECT_FALSE(RectInStrips({50, 50, 60, 60}, a, b));
    EXPECT_FALSE(RectInStrips({10, 50, 20, 60}, a, b)) << "right edges lie outside";
}

TEST(RectInStripsTest, StripsAreNormalisedFirst) { EXPECT_TRUE(RectInStrips({5, 5, 6, 6}, {10, 100, 0, 0}, kElsewhere)); }

TEST(RectInStripsTest, BoxBesideAStripShowsWhenItNearlyEqualsIt) {
    const Rect strip{1000, 1000, 1001, 1001};
    EXPECT_TRUE(RectInStrips({1001, 1001, 1002, 1002}, strip, kElsewhere));
    EXPECT_TRUE(RectInStrips({1001, 1001, 1002, 1002}, kElsewhere, strip));
    EXPECT_FALSE(RectInStrips({1001, 1001, 1202, 1002}, strip, kElsewhere));
}

TEST(RectInStripsTest, EmptyBoxMeetsNothing) { EXPECT_FALSE(RectInStrips({50, 50, 50, 60}, {0, 0, 100, 100}, kElsewhere)); }

TEST(RectInStripsTest, ExtremesDoNotOverflow) {
    EXPECT_TRUE(RectInStrips({kMin, kMin, kMax, kMax}, {0, 0, 1, 1}, kElsewhere));
    EXPECT_FALSE(RectInStrips({kMin, kMin, kMin + 1, kMin + 1}, {kMax - 1, kMax - 1, kMax, kMax}, kElsewhere));
}

// --- Polylines --------------------------------------------------------------------------------------------------------------

constexpr Rect kStrip{100, 100, 200, 200};

bool Shows(const std::vector<Point>& pts, const Rect& a = kStrip, const Rect& b = kElsewhere) {
    return PntsInStrips(pts.data(), static_cast<std::int32_t>(pts.size()), a, b);
}

TEST(PntsInStripsTest, SinglePointCountsByTheFirstStripWithRightAndBottomOutside) {
    EXPECT_TRUE(Shows({{100, 100}}));
    EXPECT_TRUE(Shows({{199, 199}}));
    EXPECT_FALSE(Shows({{200, 150}}));
    EXPECT_FALSE(Shows({{150, 200}}));
    EXPECT_FALSE(Shows({{150, 150}}, kElsewhere, kStrip)) << "the second strip is not looked at";
}

TEST(PntsInStripsTest, NoPointsShowNothing) {
    EXPECT_FALSE(PntsInStrips(nullptr, 0, kStrip, kStrip));
    EXPECT_FALSE(PntsInStrips(nullptr, -1, kStrip, kStrip));
}

TEST(PntsInStripsTest, SegmentWithAnEndInEitherStripShows) {
    EXPECT_TRUE(Shows({{0, 0}, {150, 150}}));
    EXPECT_TRUE(Shows({{150, 150}, {0, 0}}, kElsewhere, kStrip));
}

TEST(PntsInStripsTest, SegmentThatCutsACornerShowsAndOneThatPassesItDoesNot) {
    EXPECT_TRUE(Shows({{90, 120}, {120, 90}}));
    EXPECT_FALSE(Shows({{80, 110}, {110, 80}}));
    EXPECT_TRUE(Shows({{210, 180}, {180, 210}}));
    EXPECT_FALSE(Shows({{230, 180}, {180, 230}}));
}

TEST(PntsInStripsTest, CornerItselfIsPartOfTheSide) {
    EXPECT_TRUE(Shows({{90, 110}, {110, 90}})) << "the crossing is (100, 100)";
    EXPECT_TRUE(Shows({{190, 210}, {210, 190}})) << "the crossing is (200, 200)";
}

TEST(PntsInStripsTest, LevelAndUprightSegmentsThroughTheStripShow) {
    EXPECT_TRUE(Shows({{0, 150}, {300, 150}}));
    EXPECT_TRUE(Shows({{150, 0}, {150, 300}}));
    EXPECT_FALSE(Shows({{0, 99}, {300, 99}}));
    EXPECT_FALSE(Shows({{201, 0}, {201, 300}}));
}

TEST(PntsInStripsTest, PointsOnTheRightEdgeAreNotInsideAndNotBeyond) {
    EXPECT_FALSE(Shows({{201, 150}, {201, 160}}));
    EXPECT_TRUE(Shows({{200, 150}, {200, 160}}));
}

TEST(PntsInStripsTest, SegmentBeyondOneSideDoesNotShow) {
    EXPECT_FALSE(Shows({{0, 150}, {99, 160}}));
    EXPECT_FALSE(Shows({{150, 201}, {160, 300}}));
}

TEST(PntsInStripsTest, CrossingMultipliesBeforeItDivides) {
    // At y 100 the line from (95, 0) to (201, 150) stands at 95 + 106 * 100 / 150 = 165; dividing first would give 95.
    EXPECT_TRUE(Shows({{95, 0}, {201, 150}}));
    // At y 100: 199 + 4 * 3 / 5 = 201 by cut quotients (2.4), beside the strip; at x 200: 97 + 5 * 1 / 4 = 98, above it.
    EXPECT_FALSE(Shows({{199, 97}, {203, 102}}));
}

TEST(PntsInStripsTest, FigureAroundTheStripShows) {
    EXPECT_TRUE(Shows({{0, 0}, {300, 0}, {300, 300}, {0, 300}, {0, 0}}));
    EXPECT_TRUE(Shows({{0, 0}, {300, 0}, {300, 300}, {0, 300}, {0, 0}}, kElsewhere, kStrip));
}

TEST(PntsInStripsTest, LastPointOfTheFigureIsNotPartOfTheCount) {
    // The first points of the two segments lie left, and right above; only the last one lies below.
    EXPECT_FALSE(Shows({{0, 50}, {300, 50}, {300, 300}}));
    EXPECT_TRUE(Shows({{0, 50}, {300, 50}, {300, 300}, {301, 301}})) << "left, right, above, and now below";
}

TEST(PntsInStripsTest, StripsAreTakenAsGiven) { EXPECT_FALSE(Shows({{150, 150}}, {200, 200, 100, 100})); }

TEST(PntsInStripsTest, ExtremePointsDoNotOverflow) {
    EXPECT_TRUE(Shows({{kMin, kMin}, {kMax, kMax}}));
    EXPECT_FALSE(Shows({{kMin, kMax}, {kMax - 5000, kMin}}));
    EXPECT_TRUE(Shows({{kMin, 0}, {kMax, 1}}, {0, -5, 10, 5}));
}

// A line that runs through a strip by a clear way or misses it by one, told by the clipping of Liang and Barsky in doubles.
bool ClipsInside(Point a, Point b, const Rect& strip) {
    double t0 = 0, t1 = 1;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double p[] = {-dx, dx, -dy, dy};
    const double q[] = {double(a.x - strip.left), double(strip.right - a.x), double(a.y - strip.top), double(strip.bottom - a.y)};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return false;
        } else if (p[i] < 0) {
            t0 = std::max(t0, q[i] / p[i]);
        } else {
            t1 = std::min(t1, q[i] / p[i]);
        }
    }
    return t0 < t1;
}

TEST(PntsInStripsTest, AgreesWithClippingOnRandomSegments) {
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> coordinate(-1000, 1300);
    int shown = 0;
    for (int i = 0; i < 20000; ++i) {
        const Point a{coordinate(random), coordinate(random)}, b{coordinate(random), coordinate(random)};
        const Rect smaller{102, 102, 198, 198}, greater{98, 98, 202, 202};
        if (ClipsInside(a, b, smaller) != ClipsInside(a, b, greater)) continue;  // too near to an edge for whole numbers
        const bool expected = ClipsInside(a, b, kStrip);
        ASSERT_EQ(Shows({a, b}), expected) << a.x << ' ' << a.y << ' ' << b.x << ' ' << b.y;
        shown += expected ? 1 : 0;
    }
    EXPECT_GT(shown, 500);
}

}  // namespace
}  // namespace orvane
