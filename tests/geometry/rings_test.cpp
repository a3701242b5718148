#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "analysis/geometry/plane.h"

namespace orvane {
namespace {

using Points = std::vector<DigPnt>;

Points Make(std::initializer_list<std::pair<double, double>> coordinates) {
    Points pts;
    for (const auto& [x, y] : coordinates) pts.push_back({x, y, 0});
    return pts;
}

std::vector<std::int32_t> Split(const Points& pts, bool forceWalk) {
    std::vector<std::int32_t> counts(pts.size());
    counts.resize(static_cast<std::size_t>(SplitRings(pts, counts.data(), forceWalk)));
    return counts;
}

using Counts = std::vector<std::int32_t>;

const Points kSquare = Make({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}});

TEST(SplitRingsTest, ArrayThatComesBackToItsFirstPointIsOneRing) { EXPECT_EQ(Split(kSquare, false), Counts({5})); }

TEST(SplitRingsTest, OneRingEvenIfItPassesThroughItsFirstPointInBetween) {
    const Points pts = Make({{0, 0}, {1, 0}, {1, 1}, {0, 0}, {-1, 0}, {-1, -1}, {0, 0}});
    EXPECT_EQ(Split(pts, false), Counts({7}));
    EXPECT_EQ(Split(pts, true), Counts({4})) << "the walk closes in between, and the rest (-1,0) (-1,-1) (0,0) never closes";
}

TEST(SplitRingsTest, TwoRingsWhereTheLastPointIsNotTheFirst) {
    const Points pts = Make({{0, 0}, {9, 0}, {9, 9}, {0, 0}, {3, 1}, {4, 1}, {4, 2}, {3, 1}});
    EXPECT_EQ(Split(pts, false), Counts({4, 4}));
}

TEST(SplitRingsTest, RepeatOfTheOpenerAtASecondPlaceClosesNothing) {
    EXPECT_EQ(Split(Make({{0, 0}, {0, 0}, {0, 0}, {1, 1}}), true), Counts({3}));
    EXPECT_EQ(Split(Make({{0, 0}, {0, 0}, {1, 1}}), true), Counts({}));
}

TEST(SplitRingsTest, PointsBehindTheLastClosureBelongToNoRing) {
    EXPECT_EQ(Split(Make({{0, 0}, {4, 0}, {4, 4}, {0, 0}, {8, 8}, {9, 9}}), false), Counts({4}));
}

TEST(SplitRingsTest, ArrayThatNeverClosesYieldsNoRing) {
    EXPECT_EQ(Split(Make({{0, 0}, {4, 0}, {4, 4}, {0, 4}}), false), Counts({}));
    EXPECT_EQ(Split({}, false), Counts({}));
    EXPECT_EQ(Split({}, true), Counts({}));
}

TEST(SplitRingsTest, SinglePointIsARingOfOneUnlessWalked) {
    EXPECT_EQ(Split(Make({{3, 3}}), false), Counts({1}));
    EXPECT_EQ(Split(Make({{3, 3}}), true), Counts({}));
}

// --- Clean ----------------------------------------------------------------------------------------------------------------

std::uint64_t BitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double ThroughText(double value) {
    char text[400];
    std::snprintf(text, sizeof text, "%.6f", value);  // the test runs in the C locale
    return std::strtod(text, nullptr);
}

TEST(CleanTest, RoundsToWhatSixPrintedDecimalsReadBack) {
    const double values[] = {0.1, -0.1, 1.0000005, 1.0000015, 2.5e-7, -2.5e-7, 5e-7, -5e-7, 0.5, 123456.7890123, -98765.4321987,
                             1e15, -1e22, 1.7976931348623157e308, 5e-324, 0.0, -0.0, 0.0000004999999, 4503599627.3704955,
                             9007199254.7409925,
                             // exactly between two counts of millionths: the even one of six printed decimals
                             0.5 + 0x1p-7, 0.0078125, 3.0 + 0x1p-7, 0x1p-21, 35651.4921875};
    for (double value : values) {
        const Points out = Clean(Make({{value, -value}}));
        ASSERT_EQ(out.size(), 1u);
        EXPECT_EQ(BitsOf(out[0].x), BitsOf(ThroughText(value))) << value;
        EXPECT_EQ(BitsOf(out[0].y), BitsOf(ThroughText(-value))) << value;
    }
}

// ORVANE_ROUNDING_VALUES sets how many.
TEST(CleanTest, RoundsMillionsOfValuesAsTextDoes) {
    const char* told = std::getenv("ORVANE_ROUNDING_VALUES");
    const int values = told == nullptr ? 300000 : std::atoi(told);
    std::mt19937_64 random(4);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_int_distribution<int> exponent(-30, 60);
    for (int i = 0; i < values; ++i) {
        double value = std::ldexp(mantissa(random), exponent(random));
        // Every third one beside the middle of two counts, where a product alone could fall to the wrong side.
        if (i % 3 == 0 && std::fabs(value) < 1e9) {
            value = std::nextafter((std::floor(value * 1e6) + 0.5) / 1e6, i % 2 == 0 ? 1e30 : -1e30);
        }
        const Points out = Clean(Make({{value, 0}}));
        ASSERT_EQ(BitsOf(out[0].x), BitsOf(ThroughText(value))) << std::hexfloat << value;
    }
}

TEST(CleanTest, NegativeNothingKeepsItsSign) {
    const Points out = Clean(Make({{-0.0000001, 5}}));
    EXPECT_EQ(BitsOf(out[0].x), BitsOf(-0.0));
}

TEST(CleanTest, NotANumberAndInfinitiesPassThrough) {
    const double inf = std::numeric_limits<double>::infinity();
    const Points out = Clean(Make({{inf, -inf}, {std::nan(""), 1}, {std::nan(""), 1}}));
    ASSERT_EQ(out.size(), 3u) << "what is not a number equals nothing, so it is never a repeat";
    EXPECT_EQ(out[0].x, inf);
    EXPECT_EQ(out[0].y, -inf);
    EXPECT_TRUE(std::isnan(out[1].x));
}

TEST(CleanTest, DropsRepeatsAndCarriesZ) {
    const Points in = {{1, 1, 10}, {1.0000001, 1, 20}, {2, 2, 30}, {2, 2, 40}};
    const Points out = Clean(in);
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0].z, 10);
    EXPECT_EQ(out[1].x, 2);
    EXPECT_EQ(out[1].z, 30);
}

TEST(CleanTest, FirstPointOfTheNextRingStandsEvenWhenItRepeats) {
    const Points out = Clean(Make({{0, 0}, {1, 0}, {0, 0}, {0, 0}, {0, 0}, {5, 5}}));
    // The third closes the ring; the fourth opens another; the fifth repeats it.
    ASSERT_EQ(out.size(), 5u);
    EXPECT_EQ(out[3].x, 0);
    EXPECT_EQ(out[4].x, 5);
}

// --- Edges ----------------------------------------------------------------------------------------------------------------

TEST(EdgesTest, RingOfFivePointsGivesFourEdgesInOrderWithTheirMarksAtZero) {
    Points ring = kSquare;
    for (DigPnt& pt : ring) pt.z = 9;
    const std::vector<Edge> edges = Edges(ring);
    ASSERT_EQ(edges.size(), 4u);
    EXPECT_EQ(edges[1].x1, 4);
    EXPECT_EQ(edges[1].y1, 0);
    EXPECT_EQ(edges[1].x2, 4);
    EXPECT_EQ(edges[1].y2, 4);
    for (const Edge& edge : edges) {
        EXPECT_EQ(edge.z1, 0);
        EXPECT_EQ(edge.z2, 0);
        EXPECT_EQ(edge.used + edge.split + edge.shared, 0);
    }
}

TEST(EdgesTest, PointsOutsideOfRingsGiveNoEdges) {
    EXPECT_EQ(Edges(Make({{0, 0}, {4, 0}, {4, 4}, {0, 0}, {8, 8}, {9, 9}})).size(), 3u);
    EXPECT_TRUE(Edges(Make({{0, 0}, {4, 0}, {4, 4}})).empty());
    EXPECT_TRUE(Edges({}).empty());
}

TEST(EdgesTest, RingsAreWalkedEvenWhenTheArrayEndsWhereItBegan) {
    // Two triangles on one corner: the walk sees two rings where the plain split sees one.
    const Points pts = Make({{0, 0}, {4, 0}, {4, 4}, {0, 0}, {0, 0}, {-4, 0}, {-4, -4}, {0, 0}});
    EXPECT_EQ(Edges(pts).size(), 6u);
}

// --- PntInPgn -------------------------------------------------------------------------------------------------------------

std::int32_t Inside(double x, double y, const Points& pts) { return PntInPgn({x, y, 0}, pts); }

TEST(PntInPgnTest, InsideAndOutsideOfASquare) {
    EXPECT_EQ(Inside(1, 1, kSquare), 1);
    EXPECT_EQ(Inside(5, 1, kSquare), 0);
    EXPECT_EQ(Inside(-1, 1, kSquare), 0);
    EXPECT_EQ(Inside(1, 5, kSquare), 0);
}

TEST(PntInPgnTest, ArrayThatNeverClosesHasNoInside) {
    const Points open = Make({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
    EXPECT_EQ(Inside(1, 1, open), 0);
    EXPECT_TRUE(Edges(open).empty());
}

TEST(PntInPgnTest, HoleIsOutside) {
    const Points pts = Make({{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {3, 3}, {6, 3}, {6, 6}, {3, 6}, {3, 3}});
    EXPECT_EQ(Inside(4.5, 4.5, pts), 0);
    EXPECT_EQ(Inside(1.5, 4.5, pts), 1);
}

TEST(PntInPgnTest, VertexThroughWhichTheRingPassesCountsOnce) {
    // The ray at y 2 meets the right side exactly in the vertex (4, 2).
    const Points pts = Make({{0, 0}, {3, 0}, {4, 2}, {5, 4}, {0, 4}, {0, 0}});
    EXPECT_EQ(Inside(1, 2, pts), 1);
    EXPECT_EQ(Inside(-1, 2, pts), 0);
}

TEST(PntInPgnTest, VertexWhereTheRingTurnsBackCountsTwice) {
    // The tooth (4, 2) of the upper side touches the ray from below and from above.
    const Points tooth = Make({{0, 0}, {8, 0}, {8, 4}, {4, 2}, {0, 4}, {0, 0}});
    EXPECT_EQ(Inside(1, 2, tooth), 1);
    EXPECT_EQ(Inside(-1, 2, tooth), 0);
    EXPECT_EQ(Inside(9, 2, tooth), 0);
}

TEST(PntInPgnTest, VertexWithAHorizontalEdgeBehindItLooksAtTheNextSlantedEdge) {
    // A step at y 2: the ring goes on upward behind the horizontal edge.
    const Points step = Make({{0, 0}, {4, 0}, {4, 2}, {6, 2}, {6, 4}, {0, 4}, {0, 0}});
    EXPECT_EQ(Inside(1, 2, step), 1);
    // A sill at y 2: the ring comes up, runs level and goes down again.
    const Points sill = Make({{0, 0}, {4, 0}, {4, 2}, {6, 2}, {6, 0}, {8, 0}, {8, 4}, {0, 4}, {0, 0}});
    EXPECT_EQ(Inside(1, 2, sill), 1);
}

TEST(PntInPgnTest, FirstVertexOfARingIsCorrectedByTheWrapRound) {
    const Points passing = Make({{4, 2}, {5, 4}, {0, 4}, {0, 0}, {3, 0}, {4, 2}});
    EXPECT_EQ(Inside(1, 2, passing), 1);
    const Points turning = Make({{4, 2}, {0, 4}, {0, 0}, {8, 0}, {8, 4}, {4, 2}});
    EXPECT_EQ(Inside(1, 2, turning), 1);
    EXPECT_EQ(Inside(-1, 2, turning), 0);
    // The same two, walked the other way round.
    EXPECT_EQ(Inside(1, 2, Points(passing.rbegin(), passing.rend())), 1);
    EXPECT_EQ(Inside(1, 2, Points(turning.rbegin(), turning.rend())), 1);
    EXPECT_EQ(Inside(-1, 2, Points(turning.rbegin(), turning.rend())), 0);
}

TEST(PntInPgnTest, WrapRoundLooksAtTheFirstSlantedEdgeOfTheRing) {
    // The ring begins on a level edge at y 2: behind the closing vertex it runs level to (6, 2) before it goes on up or down.
    const Points on = Make({{4, 2}, {6, 2}, {6, 4}, {0, 4}, {0, 0}, {4, 0}, {4, 2}});
    const Points back = Make({{4, 2}, {6, 2}, {6, 0}, {8, 0}, {8, 4}, {0, 4}, {0, 0}, {4, 0}, {4, 2}});
    EXPECT_EQ(Inside(1, 2, on), 1);
    EXPECT_EQ(Inside(1, 2, back), 1);
}

TEST(PntInPgnTest, WalkGoesOnBehindTheEdgeThatCountedWithTheVertex) {
    // Two vertices on the ray one behind the other, each passed through: (4, 2) upward, (6, 2) downward, with the top at (5, 6).
    const Points pts = Make({{0, 0}, {3, 0}, {4, 2}, {5, 6}, {6, 2}, {7, 0}, {9, 0}, {9, 8}, {0, 8}, {0, 0}});
    // From (1, 2) to the right: 4 (in to out), 6 (out to in), 9 (in to out): three crossings.
    EXPECT_EQ(Inside(1, 2, pts), 1);
    EXPECT_EQ(Inside(5, 2, pts), 0);
    EXPECT_EQ(Inside(7, 2, pts), 1);
}

TEST(PntInPgnTest, OnlyTheArrayIsRoundedAndNotThePoint) {
    // The right side stands at x 4 after rounding; the point keeps its own digits and stays to the left of it.
    const Points pts = Make({{0, 0}, {3.9999997, 0}, {3.9999997, 4}, {0, 4}, {0, 0}});
    EXPECT_EQ(Inside(3.9999999, 2, pts), 1);
    EXPECT_EQ(Inside(4.0000001, 2, pts), 0);
}

TEST(PntInPgnTest, RayEndIsFoundInOrderAndMayStandOnTheGreatestX) {
    // The first edge begins at x 3, so the ray ends at 4, which the greatest end (4) is not above. A point to the right of all of
    // the ring then looks back to x 4 and meets the side there.
    const Points pts = Make({{3, 0}, {4, 0}, {4, 4}, {3, 4}, {3, 0}});
    EXPECT_EQ(Inside(6, 2, pts), 1);
    // With an end at 4.5 the ray ends at 5.5, and looking back from 6 meets nothing.
    const Points wider = Make({{3, 0}, {4.5, 0}, {4.5, 4}, {3, 4}, {3, 0}});
    EXPECT_EQ(Inside(6, 2, wider), 0);
}

TEST(PntInPgnTest, SecondRingIsCountedOnTopOfTheFirst) {
    const Points apart = Make({{0, 0}, {2, 0}, {2, 2}, {0, 0}, {5, 0}, {9, 0}, {9, 4}, {5, 4}, {5, 0}});
    EXPECT_EQ(Inside(6, 1, apart), 1);
    EXPECT_EQ(Inside(3.5, 1, apart), 0);
    EXPECT_EQ(Inside(1.5, 1, apart), 1);
}

// The even-odd rule over all sides, closed by itself: no ray end, no vertices, no rounding.
bool EvenOdd(double x, double y, const Points& pts, std::size_t first, std::size_t end) {
    bool inside = false;
    for (std::size_t i = first, j = end - 1; i < end; j = i++) {
        if ((pts[i].y > y) != (pts[j].y > y) && x < (pts[j].x - pts[i].x) * (y - pts[i].y) / (pts[j].y - pts[i].y) + pts[i].x) {
            inside = !inside;
        }
    }
    return inside;
}

TEST(PntInPgnTest, AgreesWithTheEvenOddRuleOnRandomPolygonsWithNoVertexOnTheRay) {
    std::mt19937_64 random(5);
    std::uniform_int_distribution<int> coordinate(-50, 50);
    std::uniform_int_distribution<int> length(3, 12);
    std::uniform_int_distribution<int> millionths(-60'000'000, 60'000'000);
    int insides = 0;
    for (int i = 0; i < 3000; ++i) {
        Points pts;
        std::vector<std::size_t> starts;
        for (int ring = 0; ring < 3; ++ring) {
            const std::size_t first = pts.size();
            starts.push_back(first);
            for (int n = length(random); n > 0;) {
                const DigPnt pt{static_cast<double>(coordinate(random)), static_cast<double>(coordinate(random)), 0};
                // No repeat of the opener within the ring: it would close it there.
                if (pts.size() > first && pt.x == pts[first].x && pt.y == pts[first].y) continue;
                if (pts.size() > first && pt.x == pts.back().x && pt.y == pts.back().y) continue;
                pts.push_back(pt);
                --n;
            }
            pts.push_back(DigPnt(pts[first]));
        }
        starts.push_back(pts.size());
        for (int n = 0; n < 10; ++n) {
            // Whole coordinates are never met: vertices lie off the ray.
            const double x = millionths(random) / 1e6 + 0.0000003;
            const double y = std::floor(millionths(random) / 1e6) + 0.3;
            if (x > 45) continue;  // nearer to the ray's end, where the end itself decides
            bool expected = false;
            for (std::size_t ring = 0; ring < 3; ++ring) expected ^= EvenOdd(x, y, pts, starts[ring], starts[ring + 1]);
            ASSERT_EQ(PntInPgn({x, y, 0}, pts), expected ? 1 : 0) << i << ": " << x << ' ' << y;
            insides += expected ? 1 : 0;
        }
    }
    EXPECT_GT(insides, 5000) << "the polygons must have enough of an inside to test anything";
}

TEST(PntInPgnTest, NotANumberAndInfinitiesGiveAnAnswer) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::nan("");
    EXPECT_EQ(Inside(nan, 1, kSquare), 0);
    EXPECT_EQ(Inside(1, nan, kSquare), 0);
    EXPECT_EQ(Inside(1, inf, kSquare), 0);
    EXPECT_EQ(Inside(1, 1, Make({{nan, nan}, {1, 0}, {1, 1}, {nan, nan}})), 0);
    EXPECT_EQ(Inside(1, 1, Make({{inf, inf}, {1, 0}, {-inf, 1}, {inf, inf}})), 0);
    EXPECT_EQ(Inside(1, 1, {}), 0);
}

TEST(PntInPgnTest, RingOfHorizontalEdgesOnlyEnds) { EXPECT_EQ(Inside(1, 0, Make({{0, 0}, {4, 0}, {2, 0}, {0, 0}})), 0); }

TEST(PntInPgnTest, LongPolygonIsWalkedOnce) {
    // A comb of 200,000 teeth that all touch the ray with their tips.
    Points pts = Make({{0, -5}});
    for (int i = 0; i < 200000; ++i) {
        pts.push_back({i + 0.5, 0, 0});
        pts.push_back({i + 1.0, -1, 0});
    }
    pts.push_back({200000, -5, 0});
    pts.push_back({0, -5, 0});
    EXPECT_EQ(Inside(-1, 0, pts), 0);
}

}  // namespace
}  // namespace orvane
