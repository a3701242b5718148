// The overlay of two polygons, case by case, and its stages on the plain loops that the random cases are compared with.
#include "analysis/overlay.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "analysis/overlay_parts.h"
#include "tests/analysis/plain_overlay.h"

namespace orvane {

bool operator==(const DigPnt& a, const DigPnt& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
void PrintTo(const DigPnt& p, std::ostream* os) { *os << "(" << p.x << " " << p.y << ")"; }

namespace {

using plain::Points;

Points Ring(std::initializer_list<std::pair<double, double>> places) {
    Points pts;
    for (const auto& [x, y] : places) pts.push_back({x, y, 0});
    return pts;
}
Points Square(double x, double y, double side) {
    return Ring({{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}, {x, y}});
}
Points operator+(Points a, const Points& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}
Points Reversed(Points pts) {
    std::reverse(pts.begin(), pts.end());
    return pts;
}

Points Overlay(const Points& a, const Points& b, OverlayMode mode = OverlayMode::Intersection) {
    Points result;
    OverlayPolygons(a, b, mode, result);
    const Points expected = plain::Overlay(a, b, mode == OverlayMode::Union);
    EXPECT_EQ(result, expected) << "the plain loops differ";
    return result;
}
Points Union(const Points& a, const Points& b) { return Overlay(a, b, OverlayMode::Union); }

// --- Cases ----------------------------------------------------------------------------------------------------------------

TEST(OverlayTest, TwoSquaresOverlappingAtOneCornerGiveTheOverlapFromTheFirstEdgeTaken) {
    // The first piece taken goes up from (10, 5). The ray from there meets that upright side at its start and nothing else, so
    // the point counts as inside and the ring is turned clockwise.
    EXPECT_EQ(Overlay(Square(0, 0, 10), Square(5, 5, 10)), Ring({{10, 5}, {5, 5}, {5, 10}, {10, 10}, {10, 5}}));
}

TEST(OverlayTest, TwoSquaresOverlappingAtOneCornerMergeIntoOneRing) {
    EXPECT_EQ(Union(Square(0, 0, 10), Square(5, 5, 10)),
              Ring({{0, 0}, {10, 0}, {10, 5}, {15, 5}, {15, 15}, {5, 15}, {5, 10}, {0, 10}, {0, 0}}));
}

TEST(OverlayTest, PolygonsWithASharedEdgeAndNoCommonAreaGiveNothing) {
    EXPECT_EQ(Overlay(Square(0, 0, 4), Square(4, 0, 4)), Points());
}

TEST(OverlayTest, PolygonsWithASharedEdgeMergeWithoutIt) {
    EXPECT_EQ(Union(Square(0, 0, 4), Square(4, 0, 4)), Ring({{0, 0}, {4, 0}, {8, 0}, {8, 4}, {4, 4}, {0, 4}, {0, 0}}));
}

TEST(OverlayTest, APolygonInsideOfAnotherIsTheIntersectionAndTheOuterOneTheUnion) {
    const Points outer = Square(0, 0, 10);
    const Points inner = Square(3, 4, 2);
    EXPECT_EQ(Overlay(outer, inner), inner);
    EXPECT_EQ(Overlay(inner, outer), inner);
    EXPECT_EQ(Union(outer, inner), outer);
    EXPECT_EQ(Union(inner, outer), outer);
}

TEST(OverlayTest, IdenticalPolygonsIntersectInThemselves) {
    const Points square = Square(2, 2, 6);
    EXPECT_EQ(Overlay(square, square), square);
    EXPECT_EQ(Overlay(square, Reversed(square)), square);
}

TEST(OverlayTest, IdenticalPolygonsMergeAsSharedEdgesAreDroppedPairByPair) {
    // Each edge stands twice. The corners of the first one have another neighbour each, so one way only: by the counters of two
    // it stays, and what is left is chained copy by copy into the ring twice, of which twins leave one.
    const Points square = Square(2, 2, 6);
    EXPECT_EQ(Union(square, square), square);
}

TEST(OverlayTest, PolygonsThatDoNotTouchGiveNoIntersection) { EXPECT_EQ(Overlay(Square(0, 0, 4), Square(9, 9, 4)), Points()); }

TEST(OverlayTest, PolygonsThatDoNotTouchMergeIntoTwoRings) {
    EXPECT_EQ(Union(Square(9, 9, 4), Square(0, 0, 4)), Square(0, 0, 4) + Square(9, 9, 4)) << "by ascending x";
}

TEST(OverlayTest, AnOverlapInTwoPartsGivesOneArrayOfTwoRings) {
    const Points comb = Ring({{0, 0}, {10, 0}, {10, 6}, {8, 6}, {8, 2}, {2, 2}, {2, 6}, {0, 6}, {0, 0}});
    const Points bar = Ring({{-1, 4}, {11, 4}, {11, 5}, {-1, 5}, {-1, 4}});
    EXPECT_EQ(Overlay(comb, bar), Ring({{0, 4}, {2, 4}, {2, 5}, {0, 5}, {0, 4}, {8, 4}, {10, 4}, {10, 5}, {8, 5}, {8, 4}}));
}

TEST(OverlayTest, APolygonThroughAVertexOfTheOtherAddsNoSecondVertex) {
    const Points diamond = Ring({{4, 0}, {8, 4}, {4, 8}, {0, 4}, {4, 0}});
    const Points half = Ring({{4, -2}, {10, -2}, {10, 10}, {4, 10}, {4, -2}});
    EXPECT_EQ(Overlay(diamond, half), Ring({{4, 0}, {8, 4}, {4, 8}, {4, 0}}));
    const OverlayProgress nobody;
    OverlayWatch watch(nobody);
    VertexTable vertices;
    EdgeList a = MakeEdgeList(diamond, kSideA, vertices);
    EdgeList b = MakeEdgeList(half, kSideB, vertices);
    ASSERT_TRUE(CutEdges(a, b, vertices, watch));
    EXPECT_EQ(a.edges.size(), 4u);
    EXPECT_EQ(b.edges.size(), 6u) << "the side along x = 4 is cut at the two corners of the other";
    EXPECT_EQ(vertices.size(), 8u) << "four corners each, and no place twice";
}

TEST(OverlayTest, AHoleThatHoldsTheOtherPolygonWhollyGivesNothing) {
    const Points ring = Square(0, 0, 10) + Reversed(Square(2, 2, 6));
    EXPECT_EQ(Overlay(ring, Square(4, 4, 2)), Points());
}

TEST(OverlayTest, AHoleInsideOfTheOverlapStaysAHoleAndRunsClockwise) {
    const Points ring = Square(0, 0, 10) + Square(2, 2, 6);
    const Points all = Square(-1, -1, 20);
    EXPECT_EQ(Overlay(ring, all), Square(0, 0, 10) + Reversed(Square(2, 2, 6)));
}

TEST(OverlayTest, ARingFromItsLowerLeftCornerTurnsAnticlockwiseWhateverTheSourcesDo) {
    EXPECT_EQ(Overlay(Reversed(Square(0, 0, 10)), Square(2, 2, 3)), Square(2, 2, 3));
    EXPECT_EQ(Overlay(Square(0, 0, 10), Reversed(Square(2, 2, 3))), Square(2, 2, 3));
}

TEST(OverlayTest, CoordinatesAreRoundedToSixDecimalsFirst) {
    const Points square = Square(0, 0, 4);
    Points rough = square;
    for (DigPnt& p : rough) p.x += 4e-7;
    EXPECT_EQ(Overlay(square, rough), square);
}

TEST(OverlayTest, HeightsOfTheSourcesAreNotCarriedOver) {
    Points a = Square(0, 0, 4);
    for (DigPnt& p : a) p.z = 5;
    EXPECT_EQ(Overlay(a, Square(1, 1, 8)).front().z, 0);
}

TEST(OverlayTest, APointRightOfASquareOfSideOneCountsAsInsideOfIt) {
    // The ray to the right ends at the first x plus 1, which is the square's own right side here. From beyond it runs to the left
    // and meets that side: so a square further right is taken for one inside.
    EXPECT_EQ(Overlay(Square(0, 0, 1), Square(5, 0.25, 0.5)), Square(5, 0.25, 0.5));
}

// --- What is no polygon, or too much of one -------------------------------------------------------------------------------

TEST(OverlayTest, FewerThanThreePointsAfterCleaningGiveNothing) {
    EXPECT_EQ(Overlay(Square(0, 0, 4), Ring({{1, 1}, {2, 2}})), Points());
    EXPECT_EQ(Overlay(Ring({{1, 1}, {1, 1}, {1, 1.0000001}, {2, 2}}), Square(0, 0, 4)), Points());
    EXPECT_EQ(Overlay({}, {}), Points());
}

TEST(OverlayTest, AnOpenLineHasNoEdges) {
    EXPECT_EQ(Overlay(Ring({{1, 1}, {2, 1}, {2, 2}, {1, 2}}), Square(0, 0, 4)), Points());
    EXPECT_EQ(Union(Ring({{1, 1}, {2, 1}, {2, 2}, {1, 2}}), Square(0, 0, 4)), Square(0, 0, 4));
}

TEST(OverlayTest, ARingWithoutAreaEqualsNothing) {
    const Points line = Ring({{0, 0}, {0.2, 0}, {0, 0}});
    EXPECT_EQ(Overlay(line, Ring({{5, 0}, {5.2, 0}, {5, 0}})), Points());
}

TEST(OverlayTest, WhatIsNoNumberIsSurvived) {
    const double nan = std::nan("");
    const double inf = std::numeric_limits<double>::infinity();
    for (const double bad : {nan, inf, -inf, 1e308, -1e308}) {
        for (std::size_t at = 0; at < 5; ++at) {
            Points a = Square(0, 0, 4);
            Points b = Square(2, 2, 4);
            a[at].x = bad;
            b[(at + 2) % 5].y = bad;
            Overlay(a, b);
            Union(a, b);
        }
    }
}

TEST(OverlayTest, AnUnknownModeGivesNothing) {
    Points result = Square(0, 0, 1);
    EXPECT_FALSE(OverlayPolygons(Square(0, 0, 4), Square(1, 1, 4), static_cast<OverlayMode>(2), result));
    EXPECT_TRUE(result.empty());
}

/// A star whose corners lie on a circle of radius `r` and inside of it, in turn.
Points Star(double x, double y, double r, int corners, double depth, double turn = 0) {
    Points pts;
    for (int i = 0; i < corners; ++i) {
        const double angle = 6.283185307179586 * i / corners + turn;
        const double reach = i % 2 == 0 ? r : r * depth;
        pts.push_back({x + reach * std::cos(angle), y + reach * std::sin(angle), 0});
    }
    pts.push_back(pts.front());
    return pts;
}

TEST(OverlayTest, AMillionVerticesAreDoneAndCanBeCancelled) {
    const Points a = Star(0, 0, 1000, 1000000, 0.9999);
    const Points b = Star(700, 0, 1000, 20, 0.6);
    Points result;
    EXPECT_TRUE(OverlayPolygons(a, b, OverlayMode::Intersection, result));
    int asked = 0;
    EXPECT_FALSE(OverlayPolygons(a, b, OverlayMode::Intersection, result, [&](double) { return ++asked < 5; }));
    EXPECT_EQ(asked, 5);
    EXPECT_TRUE(result.empty());
}

/// The shares that a long overlay tells.
std::vector<double> Told(const Points& a, const Points& b, OverlayMode mode) {
    std::vector<double> told;
    Points result;
    EXPECT_TRUE(OverlayPolygons(a, b, mode, result, [&](double done) {
        told.push_back(done);
        return true;
    }));
    return told;
}

TEST(OverlayTest, TheShareOfOneLargePairGrowsFromStageToStage) {
    for (const OverlayMode mode : {OverlayMode::Intersection, OverlayMode::Union}) {
        const std::vector<double> told = Told(Star(0, 0, 1000, 200000, 0.9999), Star(700, 0, 1000, 200000, 0.9999), mode);
        ASSERT_GT(told.size(), 5u);
        EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
        EXPECT_GE(told.front(), 0);
        EXPECT_LT(told.front(), 0.2);
        EXPECT_GT(told.back(), 0.6);
        EXPECT_LE(told.back(), 1);
    }
}

TEST(OverlayTest, WhereAllBoxesMeetACancelIsHeardAmongTheEdgesOfOnePiece) {
    // Teeth that are long and slanted: each one's box holds all of the others', and nothing crosses.
    const auto teeth = [](double shift) {
        Points pts;
        for (int i = 0; i < 3000; ++i) {
            pts.push_back({i + shift, 0, 0});
            pts.push_back({i + shift + 100000, 100000, 0});
            pts.push_back({i + shift + 0.1, 0, 0});
        }
        pts.push_back({-1, -1, 0});
        pts.push_back(pts.front());
        return pts;
    };
    const Points a = teeth(0);
    const Points b = teeth(0.5);
    int asked = 0;
    Points result;
    EXPECT_FALSE(OverlayPolygons(a, b, OverlayMode::Intersection, result, [&](double done) {
        EXPECT_LT(done, 0.01) << "asked only when a good part was done";
        return ++asked < 3;
    }));
    EXPECT_EQ(asked, 3);
}

TEST(OverlayTest, ALongEdgeCrossedByManyIsCutOnceForEach) {
    constexpr int kTeeth = 2000;
    Points comb = Ring({{0, -5}});
    for (int i = 0; i < kTeeth; ++i) {
        comb.push_back({i + 0.25, 5, 0});
        comb.push_back({i + 0.75, -4, 0});
    }
    comb.push_back({kTeeth + 1.0, -5, 0});
    comb.push_back(comb.front());
    const Points bar = Ring({{-10, 0}, {kTeeth + 10.0, 0}, {kTeeth + 10.0, 9}, {-10, 9}, {-10, 0}});
    for (const auto& [a, b] : {std::pair(comb, bar), std::pair(bar, comb)}) {
        Points result;
        ASSERT_TRUE(OverlayPolygons(a, b, OverlayMode::Intersection, result));
        EXPECT_EQ(result.size(), std::size_t{4} * kTeeth) << "a triangle a tooth";
    }
}

// --- Snapping -------------------------------------------------------------------------------------------------------------

Points Snapped(const Points& left, Points right) {
    const OverlayProgress nobody;
    OverlayWatch watch(nobody);
    OverlaySnap(left, right, watch);
    EXPECT_EQ(right, plain::Snap(left, right));
    return right;
}

TEST(OverlaySnapTest, APointTakesThePlaceOfTheFirstPointWithinReachNotOfTheNearest) {
    const Points left = Ring({{50, 50}, {0.00009, 0}, {0.00001, 0}});
    EXPECT_EQ(Snapped(left, Ring({{0, 0}})), Ring({{0.00009, 0}}));
}

TEST(OverlaySnapTest, ADistanceOfTheToleranceItselfSnapsAndOneAboveDoesNot) {
    const Points left = Ring({{0, 0}});
    EXPECT_EQ(Snapped(left, Ring({{0.0001, 0}})), Ring({{0, 0}}));
    EXPECT_EQ(Snapped(left, Ring({{0, -0.0001}})), Ring({{0, 0}}));
    EXPECT_EQ(Snapped(left, Ring({{0.00010001, 0}})), Ring({{0.00010001, 0}}));
    EXPECT_EQ(Snapped(left, Ring({{0.00008, 0.00008}})), Ring({{0.00008, 0.00008}})) << "the distance counts, not each axis";
}

TEST(OverlaySnapTest, HeightsStayAndWhatIsNoNumberIsLeftAlone) {
    Points right = Ring({{0.00005, 0}});
    right[0].z = 7;
    EXPECT_EQ(Snapped(Ring({{0, 0}}), right).front().z, 7);
    const double nan = std::nan("");
    const OverlayProgress nobody;
    OverlayWatch watch(nobody);
    Points odd = Ring({{nan, 0}, {0.00005, 0}});
    OverlaySnap(Ring({{0, nan}, {0, 0}}), odd, watch);
    EXPECT_TRUE(std::isnan(odd[0].x));
    EXPECT_EQ(odd[1], (DigPnt{0, 0, 0}));
}

TEST(OverlaySnapTest, ManyPointsJustOutOfReachOfEachOtherCanBeCancelled) {
    // Within the box of the tolerance, not within its circle: every point is compared with every other.
    const Points left(100000, DigPnt{0, 0, 0});
    Points right(100000, DigPnt{0.00009, 0.00009, 0});
    int asked = 0;
    const OverlayProgress no = [&](double) { return ++asked < 2; };
    OverlayWatch watch(no);
    OverlaySnap(left, right, watch);
    EXPECT_TRUE(watch.Stopped());
}

// --- The stages' own odd answers ------------------------------------------------------------------------------------------

TEST(OverlayStageTest, OfThreeEqualRingsOnePairGoes) {
    // A mark that was set ends the search for that ring, so the third keeps its place.
    const Points square = Square(0, 0, 10);
    Points pts = square + square + square;
    Points expected = pts;
    plain::Twins(expected);
    const OverlayProgress nobody;
    OverlayWatch watch(nobody);
    Twins(pts, watch);
    EXPECT_EQ(pts, expected);
    EXPECT_EQ(pts, square + square);
}

TEST(OverlayStageTest, RingsWithTheSameLowestXKeepTheirOrder) {
    const Points upper = Square(0, 8, 2);
    const Points lower = Square(0, 0, 2);
    const Points left = Square(-5, 4, 1);
    Points pts = upper + lower + left;
    const OverlayProgress nobody;
    OverlayWatch watch(nobody);
    Normal(pts, watch);
    // The exchange sort takes the left one to the front and leaves the first where the left one stood.
    EXPECT_EQ(pts, left + lower + upper);
    Points two = upper + lower;
    Normal(two, watch);
    EXPECT_EQ(two, upper + lower);
}

}  // namespace
}  // namespace orvane
