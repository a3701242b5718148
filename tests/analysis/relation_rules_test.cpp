// Every row of the relation tests, once by the plain walks and once by the quick ones.
#include "analysis/relation_rules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

#include "tests/analysis/literal_relation.h"

namespace orvane {
namespace {

using literal::Shape;
using Coordinates = std::initializer_list<std::pair<double, double>>;

Shape Make(ShapeType type, Coordinates coordinates) {
    Shape shape{type, {}};
    for (const auto& [x, y] : coordinates) shape.pts.push_back({x, y, 0});
    return shape;
}
Shape At(double x, double y) { return Make(ShapeType::Point, {{x, y}}); }
Shape Line(Coordinates coordinates) { return Make(ShapeType::Line, coordinates); }
Shape Area(Coordinates coordinates) { return Make(ShapeType::Polygon, coordinates); }

/// The answer of an operator, the first shape as the query.
bool Holds(RelationOp op, const Shape& a, const Shape& b) {
    RelationShape query(RelationShape::Role::Query);
    RelationShape item(RelationShape::Role::Item);
    query.Load(a.type, a.pts);
    item.Load(b.type, b.pts);
    const bool quick = Relates(static_cast<std::int32_t>(op), query, item);
    EXPECT_EQ(literal::Relates(static_cast<std::int32_t>(op), a, b), quick);
    return quick;
}
bool Equal(const Shape& a, const Shape& b) { return Holds(RelationOp::Equals, a, b); }
bool Apart(const Shape& a, const Shape& b) {
    const bool disjoint = Holds(RelationOp::Disjoint, a, b);
    EXPECT_NE(Holds(RelationOp::Intersects, a, b), disjoint);
    return disjoint;
}
bool Touching(const Shape& a, const Shape& b) { return Holds(RelationOp::Touches, a, b); }
bool Crossing(const Shape& a, const Shape& b) { return Holds(RelationOp::Crosses, a, b); }
bool Containing(const Shape& a, const Shape& b) {
    const bool contains = Holds(RelationOp::Contains, a, b);
    EXPECT_EQ(Holds(RelationOp::Within, b, a), contains);
    return contains;
}
bool Overlapping(const Shape& a, const Shape& b) { return Holds(RelationOp::Overlaps, a, b); }

const Shape kSquare = Area({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}});
const Shape kRing = Line({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}});
/// Open at the top between (2, 6) and (4, 6).
const Shape kYoke = Area({{0, 0}, {6, 0}, {6, 6}, {4, 6}, {4, 2}, {2, 2}, {2, 6}, {0, 6}, {0, 0}});
const Shape kInner = Area({{1, 1}, {3, 1}, {3, 3}, {1, 3}, {1, 1}});
const Shape kFar = Area({{10, 10}, {14, 10}, {14, 14}, {10, 10}});

// --- Equals -----------------------------------------------------------------------------------------------------------------

TEST(RelationEqualsTest, DifferentTypesAreNeverEqual) {
    EXPECT_FALSE(Equal(At(0, 0), Line({{0, 0}, {0, 0}})));
    EXPECT_FALSE(Equal(kRing, kSquare));
    EXPECT_FALSE(Equal(kSquare, kRing));
}

TEST(RelationEqualsTest, PointsAreEqualOnlyToTheLastBit) {
    EXPECT_TRUE(Equal(At(1, 2), At(1, 2)));
    EXPECT_FALSE(Equal(At(1, 2), At(1, std::nextafter(2, 3))));
}

TEST(RelationEqualsTest, ALineEqualsItsReverse) {
    EXPECT_TRUE(Equal(Line({{0, 0}, {4, 0}, {4, 3}}), Line({{4, 3}, {4, 0}, {0, 0}})));
    EXPECT_TRUE(Equal(Line({{0, 0}, {4, 0}, {4, 3}}), Line({{0, 0}, {1, 0}, {4, 0}, {4, 1}, {4, 3}})));
}

TEST(RelationEqualsTest, AnOpenLineNeedsTheSameTwoEnds) {
    EXPECT_FALSE(Equal(Line({{0, 0}, {4, 0}}), Line({{0, 0}, {4, 0}, {2, 0}}))) << "the same place, but it ends at (2, 0)";
    EXPECT_FALSE(Equal(Line({{0, 0}, {4, 0}}), Line({{0, 0}, {2, 1}, {4, 0}})));
    EXPECT_FALSE(Equal(Line({{0, 0}, {4, 0}, {4, 4}, {0, 4}}), kRing));
}

TEST(RelationEqualsTest, AClosedLineEqualsAnyLineOfTheSamePoints) {
    EXPECT_TRUE(Equal(kRing, Line({{4, 4}, {0, 4}, {0, 0}, {4, 0}, {4, 4}})));
    EXPECT_TRUE(Equal(kRing, Line({{0, 0}, {4, 0}, {4, 4}, {0, 4}}))) << "the last side is missing, but no point of it";
    EXPECT_FALSE(Equal(kRing, Line({{0, 0}, {4, 0}, {4, 4}})));
}

TEST(RelationEqualsTest, PolygonsAreEqualWhenAllPointsOfEachAreOnTheOther) {
    EXPECT_TRUE(Equal(kSquare, Area({{4, 4}, {4, 0}, {2, 0}, {0, 0}, {0, 4}, {4, 4}})));
    EXPECT_FALSE(Equal(kSquare, kInner));
    EXPECT_FALSE(Equal(kSquare, Area({{0, 0}, {4, 0}, {4, 4}, {0, 0}})));
}

// --- Disjoint, Intersects ---------------------------------------------------------------------------------------------------

TEST(RelationDisjointTest, PointsAreDisjointWhenTheyDiffer) {
    EXPECT_TRUE(Apart(At(1, 1), At(1, 2)));
    EXPECT_FALSE(Apart(At(1, 1), At(1, 1)));
}

TEST(RelationDisjointTest, APointAndALineInEitherOrder) {
    const Shape line = Line({{0, 0}, {4, 0}, {4, 4}});
    EXPECT_FALSE(Apart(At(2, 0), line));
    EXPECT_FALSE(Apart(line, At(4, 4)));
    EXPECT_TRUE(Apart(At(2, 1e-9), line));
    EXPECT_TRUE(Apart(line, At(0, 4)));
}

TEST(RelationDisjointTest, APointOnTheBoundaryIsLookedForOnlyWhenThePointStandsFirst) {
    // The left side counts as outside by the crossings, the right side as inside.
    EXPECT_FALSE(Apart(At(0, 2), kSquare));
    EXPECT_TRUE(Apart(kSquare, At(0, 2)));
    EXPECT_FALSE(Apart(At(4, 2), kSquare));
    EXPECT_FALSE(Apart(kSquare, At(4, 2)));
    EXPECT_TRUE(Apart(At(5, 2), kSquare));
    EXPECT_TRUE(Apart(kSquare, At(5, 2)));
}

TEST(RelationDisjointTest, APolygonContainingAPointIntersectsItAndIsNotDisjoint) {
    EXPECT_FALSE(Apart(kSquare, At(1, 3)));
    EXPECT_TRUE(Holds(RelationOp::Intersects, kSquare, At(1, 3)));
    EXPECT_FALSE(Apart(At(1, 3), kSquare));
}

TEST(RelationDisjointTest, LinesAreDisjointWithoutCrossingAndTouch) {
    EXPECT_FALSE(Apart(Line({{0, 0}, {4, 4}}), Line({{0, 4}, {4, 0}})));
    EXPECT_FALSE(Apart(Line({{0, 0}, {4, 0}}), Line({{2, 0}, {8, 0}}))) << "along each other: no crossing, but a touch";
    EXPECT_FALSE(Apart(Line({{0, 0}, {4, 0}}), Line({{4, 0}, {5, 5}})));
    EXPECT_TRUE(Apart(Line({{0, 0}, {4, 0}}), Line({{0, 1}, {4, 1}})));
    EXPECT_TRUE(Apart(Line({{0, 0}, {4, 0}}), Line({{5, -1}, {5, 1}})));
}

TEST(RelationDisjointTest, AParallelTouchIsFoundOnlyFromTheSegmentThatStandsFirst) {
    // Of parallel segments only the second one's ends are looked for on the first.
    const Shape whole = Line({{0, 0}, {8, 0}});
    const Shape part = Line({{2, 0}, {4, 0}});
    EXPECT_FALSE(Apart(whole, part));
    EXPECT_TRUE(Apart(part, whole));
}

TEST(RelationDisjointTest, ALineWithinAPolygonIsDisjointFromItOnlyInThePolygonFirstOrder) {
    const Shape within = Line({{1, 1}, {3, 2}});
    EXPECT_FALSE(Apart(within, kSquare));
    EXPECT_TRUE(Apart(kSquare, within));
}

TEST(RelationDisjointTest, ALineAndAPolygonThatCross) {
    const Shape through = Line({{-1, 1}, {5, 2}});
    EXPECT_FALSE(Apart(through, kSquare));
    EXPECT_FALSE(Apart(kSquare, through));
    EXPECT_TRUE(Apart(Line({{-1, 5}, {5, 5}}), kSquare));
    EXPECT_TRUE(Apart(kSquare, Line({{-1, 5}, {5, 5}})));
}

TEST(RelationDisjointTest, ALineAlongTheBoundaryTouchesOnlyInThePolygonFirstOrder) {
    const Shape along = Line({{1, 4}, {3, 4}});  // the upper side counts as outside by the crossings
    EXPECT_TRUE(Apart(along, kSquare));
    EXPECT_FALSE(Apart(kSquare, along));
}

TEST(RelationDisjointTest, AClosedLineAroundAPolygonHasAnInsideInThePolygonFirstOrder) {
    EXPECT_FALSE(Apart(kInner, kRing));
    EXPECT_TRUE(Apart(kInner, Line({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0.5}})));
    EXPECT_TRUE(Apart(kRing, kInner));
}

TEST(RelationDisjointTest, PolygonsThatCrossShareASideOrContainEachOtherAreNotDisjoint) {
    EXPECT_FALSE(Apart(kSquare, Area({{2, 2}, {6, 2}, {6, 6}, {2, 6}, {2, 2}})));
    EXPECT_FALSE(Apart(kSquare, Area({{4, 0}, {8, 0}, {8, 4}, {4, 4}, {4, 0}})));
    EXPECT_FALSE(Apart(kSquare, kInner));
    EXPECT_FALSE(Apart(kInner, kSquare));
    EXPECT_TRUE(Apart(kSquare, kFar));
}

TEST(RelationDisjointTest, APolygonInTheHoleOfAnotherIsDisjoint) {
    const Shape holed = Area({{-9, -9}, {9, -9}, {9, 9}, {-9, 9}, {-9, -9}, {-5, -5}, {5, -5}, {5, 5}, {-5, 5}, {-5, -5}});
    EXPECT_TRUE(Apart(holed, kSquare));
    EXPECT_TRUE(Apart(kSquare, holed));
}

// --- Touches ----------------------------------------------------------------------------------------------------------------

TEST(RelationTouchesTest, PointsNeverTouch) { EXPECT_FALSE(Touching(At(1, 1), At(1, 1))); }

TEST(RelationTouchesTest, APointTouchesTheEndsOfAnOpenLine) {
    const Shape line = Line({{0, 0}, {4, 0}, {4, 4}});
    for (const bool pointFirst : {true, false}) {
        const auto test = [&](double x, double y) { return pointFirst ? Touching(At(x, y), line) : Touching(line, At(x, y)); };
        EXPECT_TRUE(test(0, 0));
        EXPECT_TRUE(test(4, 4));
        EXPECT_FALSE(test(4, 0));
        EXPECT_FALSE(test(2, 0));
    }
}

TEST(RelationTouchesTest, APointDoesNotTouchAClosedLineEvenAtItsFirstPoint) {
    EXPECT_FALSE(Touching(At(0, 0), kRing));
    EXPECT_FALSE(Touching(kRing, At(0, 0)));
    EXPECT_FALSE(Touching(At(2, 0), kRing));
}

TEST(RelationTouchesTest, APointTouchesAPolygonOnItsBoundary) {
    EXPECT_TRUE(Touching(At(2, 0), kSquare));
    EXPECT_TRUE(Touching(kSquare, At(4, 4)));
    EXPECT_FALSE(Touching(At(2, 1), kSquare));
    EXPECT_FALSE(Touching(kSquare, At(5, 5)));
}

TEST(RelationTouchesTest, ALineTouchesWhereOneOfItsEndsStands) {
    const Shape level = Line({{0, 0}, {4, 0}});
    const Shape upright = Line({{2, 0}, {2, 5}});
    EXPECT_TRUE(Touching(upright, level));
    EXPECT_TRUE(Touching(level, upright)) << "the other way round its end is found by the swap";
    EXPECT_FALSE(Touching(level, Line({{2, -1}, {2, 5}})));
    EXPECT_FALSE(Touching(level, Line({{2, 1}, {2, 5}})));
}

TEST(RelationTouchesTest, LinesEndToEndTouchButNotWhenTheyRunAlongEachOther) {
    const Shape level = Line({{0, 0}, {4, 0}});
    EXPECT_TRUE(Touching(level, Line({{4, 0}, {8, 0}})));
    EXPECT_FALSE(Touching(level, Line({{2, 0}, {8, 0}})));
}

TEST(RelationTouchesTest, AnEndThatRunsBesideAnySegmentOfTheOtherLineDoesNotCount) {
    // The end (2, 0) stands on the upright part; far away the other line has a segment parallel to its own and beside it.
    const Shape line = Line({{2, 0}, {6, 0}});
    EXPECT_TRUE(Touching(line, Line({{2, -5}, {2, 5}})));
    EXPECT_FALSE(Touching(line, Line({{2, -5}, {2, 50}, {1, 50}, {9, 50}})));
}

TEST(RelationTouchesTest, AnEndThatRunsAlongTheOtherLineEndsTheTestWhateverTheOtherEndDoes) {
    const Shape line = Line({{0, 0}, {10, 0}, {10, 7}, {8, 5}});
    EXPECT_TRUE(Touching(line, Line({{4, -3}, {8, 2}, {8, 9}}))) << "the last end stands on the other line's last segment";
    EXPECT_FALSE(Touching(line, Line({{-2, 0}, {4, 0}, {8, 2}, {8, 9}}))) << "and the first runs along its first one";
    // Of the other line an end stands on this one, but this one is asked first and its own end has decided.
    const Shape along = Line({{0, 0}, {4, 0}, {4, 9}});
    const Shape other = Line({{-2, 0}, {1, 0}, {1, -5}, {3, -5}, {3, 0}});
    EXPECT_FALSE(Touching(along, other));
}

TEST(RelationTouchesTest, OnlyTheSegmentsBetweenTheFirstAndTheLastMayNotCross) {
    const Shape level = Line({{-10, 0}, {10, 0}});
    EXPECT_FALSE(Touching(Line({{0, 0}, {0, 2}, {2, 2}, {2, -2}, {4, -2}}), level)) << "crosses in its third segment of four";
    EXPECT_TRUE(Touching(Line({{0, 0}, {0, 2}, {2, 2}, {2, -2}}), level)) << "crosses in its last segment";
}

TEST(RelationTouchesTest, OfAClosedLineTheOtherOnesEndsDecide) {
    EXPECT_TRUE(Touching(kRing, Line({{4, 2}, {9, 3}})));
    EXPECT_TRUE(Touching(Line({{4, 2}, {9, 3}}), kRing));
    EXPECT_FALSE(Touching(kRing, Line({{4, 0}, {8, 0}, {8, 4}, {4, 0}}))) << "two closed lines never touch";
}

TEST(RelationTouchesTest, ALineAndAPolygonTouchFromOutside) {
    const Shape outside = Line({{2, 4}, {2, 9}});
    EXPECT_TRUE(Touching(outside, kSquare));
    EXPECT_TRUE(Touching(kSquare, outside));
    EXPECT_FALSE(Touching(Line({{2, 5}, {2, 9}}), kSquare));
    EXPECT_FALSE(Touching(kSquare, Line({{2, 5}, {2, 9}})));
}

TEST(RelationTouchesTest, ALineThatCrossesTheBoundaryOrLiesWithinDoesNotTouch) {
    for (const Shape& line : {Line({{2, 1}, {2, 9}}), Line({{2, 4}, {2, 1}})}) {
        EXPECT_FALSE(Touching(line, kSquare));
        EXPECT_FALSE(Touching(kSquare, line));
    }
}

TEST(RelationTouchesTest, PolygonsTouchAlongASideButNotWhenOneContainsTheOther) {
    EXPECT_TRUE(Touching(kSquare, Area({{4, 0}, {8, 0}, {8, 4}, {4, 4}, {4, 0}})));
    EXPECT_TRUE(Touching(kSquare, Area({{4, 4}, {8, 4}, {8, 8}, {4, 4}})));
    const Shape corner = Area({{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}});
    EXPECT_FALSE(Touching(kSquare, corner));
    EXPECT_FALSE(Touching(corner, kSquare));
    EXPECT_FALSE(Touching(kSquare, Area({{2, 2}, {6, 2}, {6, 6}, {2, 6}, {2, 2}})));
    EXPECT_FALSE(Touching(kSquare, kFar));
}

// --- Crosses ----------------------------------------------------------------------------------------------------------------

TEST(RelationCrossesTest, APointCrossesNothing) {
    EXPECT_FALSE(Crossing(At(1, 1), At(1, 1)));
    EXPECT_FALSE(Crossing(At(2, 0), Line({{0, 0}, {4, 0}})));
    EXPECT_FALSE(Crossing(At(2, 0), kSquare));
}

TEST(RelationCrossesTest, ALineCrossesAPointBetweenItsEnds) {
    const Shape line = Line({{0, 0}, {4, 0}, {4, 4}});
    EXPECT_TRUE(Crossing(line, At(2, 0)));
    EXPECT_TRUE(Crossing(line, At(4, 0)));
    EXPECT_FALSE(Crossing(line, At(0, 0)));
    EXPECT_FALSE(Crossing(line, At(4, 4)));
    EXPECT_FALSE(Crossing(line, At(3, 3)));
    EXPECT_FALSE(Crossing(kRing, At(0, 0))) << "the first point of a closed line too";
}

TEST(RelationCrossesTest, APolygonCrossesAPointOnItsBoundary) {
    EXPECT_TRUE(Crossing(kSquare, At(0, 2)));
    EXPECT_FALSE(Crossing(kSquare, At(2, 2)));
}

TEST(RelationCrossesTest, LinesCrossExceptAtTheEndsOfOpenOnes) {
    EXPECT_TRUE(Crossing(Line({{0, 0}, {4, 4}}), Line({{0, 4}, {4, 0}})));
    EXPECT_FALSE(Crossing(Line({{0, 0}, {4, 0}}), Line({{2, 0}, {2, 4}})));
    EXPECT_FALSE(Crossing(Line({{0, 0}, {4, 0}}), Line({{0, 1}, {4, 1}})));
    EXPECT_TRUE(Crossing(kRing, Line({{-2, 2}, {2, -2}}))) << "through the point where the closed line begins and ends";
    EXPECT_TRUE(Crossing(Line({{-2, 2}, {2, -2}}), kRing));
}

TEST(RelationCrossesTest, LinesThatTouchDoNotCross) {
    EXPECT_FALSE(Crossing(Line({{0, 0}, {0, 2}, {2, 2}, {2, -2}}), Line({{-10, 0}, {10, 0}})));
}

TEST(RelationCrossesTest, ALineCrossesAPolygonWhereItPassesTheBoundaryBetweenItsPoints) {
    EXPECT_TRUE(Crossing(Line({{2, 2}, {9, 3}}), kSquare));
    EXPECT_FALSE(Crossing(Line({{1, 1}, {3, 3}}), kSquare));
    EXPECT_FALSE(Crossing(Line({{4, 2}, {9, 3}}), kSquare)) << "it meets the boundary with its end";
}

TEST(RelationCrossesTest, ALineCrossesAPolygonThatItFirstFollowsAndThenEnters) {
    EXPECT_TRUE(Crossing(Line({{0, 4}, {4, 4}, {1, 1}}), kSquare));
    EXPECT_FALSE(Crossing(Line({{0, 4}, {4, 4}}), kSquare));
    EXPECT_FALSE(Crossing(Line({{4, 4}, {1, 1}}), kSquare));
}

TEST(RelationCrossesTest, APolygonCrossesALineThatPassesThroughOrLiesWithin) {
    EXPECT_TRUE(Crossing(kSquare, Line({{2, 2}, {9, 3}})));
    EXPECT_TRUE(Crossing(kSquare, Line({{1, 1}, {3, 3}})));
    EXPECT_FALSE(Crossing(kSquare, Line({{4, 2}, {9, 3}})));
}

TEST(RelationCrossesTest, PolygonsCrossWhenTheyPassThroughEachOtherOrTheFirstContainsTheSecond) {
    EXPECT_TRUE(Crossing(kSquare, Area({{2, 2}, {6, 2}, {6, 6}, {2, 6}, {2, 2}})));
    EXPECT_TRUE(Crossing(kSquare, kInner));
    EXPECT_FALSE(Crossing(kInner, kSquare));
    EXPECT_FALSE(Crossing(kSquare, kFar));
}

TEST(RelationCrossesTest, EqualPolygonsDoNotCross) {
    EXPECT_FALSE(Crossing(kSquare, kSquare));
    EXPECT_FALSE(Crossing(kSquare, Area({{4, 4}, {4, 0}, {2, 0}, {0, 0}, {0, 4}, {4, 4}})));
}

// --- Contains, Within -------------------------------------------------------------------------------------------------------

TEST(RelationContainsTest, APointContainsOnlyItself) {
    EXPECT_TRUE(Containing(At(1, 2), At(1, 2)));
    EXPECT_FALSE(Containing(At(1, 2), At(2, 1)));
    EXPECT_FALSE(Containing(At(1, 2), Line({{1, 2}, {1, 2}})));
    EXPECT_FALSE(Containing(At(1, 2), kSquare));
}

TEST(RelationContainsTest, ALineContainsPointsOnItAndLinesAlongItButNoPolygon) {
    const Shape line = Line({{0, 0}, {4, 0}, {4, 4}});
    EXPECT_TRUE(Containing(line, At(0, 0)));
    EXPECT_TRUE(Containing(line, At(4, 3)));
    EXPECT_FALSE(Containing(line, At(3, 3)));
    EXPECT_TRUE(Containing(line, Line({{1, 0}, {4, 0}, {4, 2}})));
    EXPECT_FALSE(Containing(kRing, kSquare));
}

TEST(RelationContainsTest, ALineMustHoldTheMiddlesOfTheOtherLineToo) {
    EXPECT_FALSE(Containing(Line({{0, 0}, {4, 0}, {4, 4}}), Line({{0, 0}, {4, 4}})));
}

TEST(RelationContainsTest, APointOnTheBoundaryIsWithinByTheCrossingCount) {
    EXPECT_TRUE(Holds(RelationOp::Within, At(4, 2), kSquare));
    EXPECT_FALSE(Holds(RelationOp::Within, At(0, 2), kSquare));
    EXPECT_TRUE(Holds(RelationOp::Within, At(2, 0), kSquare));
    EXPECT_FALSE(Holds(RelationOp::Within, At(2, 4), kSquare));
    EXPECT_TRUE(Containing(kSquare, At(1, 1)));
}

TEST(RelationContainsTest, APolygonContainsALineWithAllPointsInOrOnIt) {
    EXPECT_TRUE(Containing(kSquare, Line({{1, 1}, {3, 2}})));
    EXPECT_TRUE(Containing(kSquare, Line({{0, 2}, {2, 2}, {4, 2}})));
    EXPECT_FALSE(Containing(kSquare, Line({{1, 1}, {5, 2}})));
}

TEST(RelationContainsTest, ALineWithAllPointsOnTheBoundaryIsNotContained) {
    EXPECT_FALSE(Containing(kSquare, Line({{0, 0}, {4, 0}, {4, 4}})));
    EXPECT_FALSE(Containing(kSquare, Line({{0, 2}, {4, 2}}))) << "even when it runs through the inside";
}

TEST(RelationContainsTest, ALineThatLeavesBetweenItsPointsIsNotContained) {
    EXPECT_FALSE(Containing(kYoke, Line({{1, 5}, {5, 5}, {5, 4}})));
}

TEST(RelationContainsTest, ASegmentThatLeavesFromCornerToCornerIsTakenForContained) {
    // Its middle is outside, but then it is looked for on the line itself, where it is.
    EXPECT_TRUE(Containing(kYoke, Line({{1, 5}, {2, 6}, {4, 6}, {5, 5}})));
}

TEST(RelationContainsTest, ASegmentThatLeavesFromCornerToCornerIsNotContainedWhenRoundingTakesItsMiddleOffIt) {
    // The middle of (0.1, 0.7)-(0.4, 0.8) comes out beside the segment.
    const DigPnt p{0.1, 0.7, 0}, q{0.4, 0.8, 0};
    ASSERT_NE(SegDist({(p.x + q.x) / 2, (p.y + q.y) / 2, 0}, p, q), 0);
    const Shape yoke = Area({{0, 0}, {1, 0}, {1, 1}, {0.4, 0.8}, {0.3, 0.2}, {0.1, 0.7}, {0, 1}, {0, 0}});
    EXPECT_FALSE(Containing(yoke, Line({{0.05, 0.5}, {0.1, 0.7}, {0.4, 0.8}, {0.5, 0.5}})));
}

TEST(RelationContainsTest, APolygonContainsAnotherAndItself) {
    EXPECT_TRUE(Containing(kSquare, kInner));
    EXPECT_FALSE(Containing(kInner, kSquare));
    EXPECT_TRUE(Containing(kSquare, kSquare));
    EXPECT_FALSE(Containing(kSquare, kFar));
    EXPECT_FALSE(Containing(kYoke, Area({{1, 3}, {5, 3}, {5, 5}, {1, 5}, {1, 3}})));
}

// --- Overlaps ---------------------------------------------------------------------------------------------------------------

TEST(RelationOverlapsTest, NoPointOverlaps) {
    EXPECT_FALSE(Overlapping(At(1, 1), At(1, 1)));
    EXPECT_FALSE(Overlapping(At(2, 0), Line({{0, 0}, {4, 0}})));
    EXPECT_FALSE(Overlapping(At(2, 0), kSquare));
    EXPECT_FALSE(Overlapping(Line({{0, 0}, {4, 0}}), At(2, 0)));
    EXPECT_FALSE(Overlapping(kSquare, At(2, 0)));
}

TEST(RelationOverlapsTest, LinesOverlapWherePartsOfThemRunAlongEachOther) {
    EXPECT_TRUE(Overlapping(Line({{0, 0}, {4, 0}}), Line({{2, 0}, {8, 0}})));
    EXPECT_FALSE(Overlapping(Line({{2, 0}, {4, 0}}), Line({{0, 0}, {8, 0}}))) << "one contains the other";
    EXPECT_FALSE(Overlapping(Line({{0, 0}, {4, 0}}), Line({{2, -2}, {2, 2}})));
    EXPECT_FALSE(Overlapping(Line({{0, 0}, {4, 0}}), Line({{4, 0}, {8, 0}})));
}

TEST(RelationOverlapsTest, ParallelLinesFarFromEachOtherOverlapWhereTheirRangesDo) {
    EXPECT_TRUE(Overlapping(Line({{0, 0}, {4, 0}}), Line({{1, 100}, {5, 100}})));
    EXPECT_TRUE(Overlapping(Line({{0, 0}, {4, 2}}), Line({{1, 100}, {5, 102}})));
    EXPECT_FALSE(Overlapping(Line({{0, 0}, {4, 2}}), Line({{1, 100}, {5, 103}})));
    EXPECT_TRUE(Overlapping(Line({{0, 0}, {0, 4}}), Line({{50, 1}, {50, 9}})));
}

TEST(RelationOverlapsTest, OnlyTheFirstLinesEndsAreLookedForWithinTheSecond) {
    const Shape longOne = Line({{0, 0}, {10, 0}});
    const Shape shortOne = Line({{2, 5}, {4, 5}});
    EXPECT_FALSE(Overlapping(longOne, shortOne));
    EXPECT_TRUE(Overlapping(shortOne, longOne));
}

TEST(RelationOverlapsTest, ALineAndAPolygonOverlapWhereTheLinePassesThrough) {
    const Shape through = Line({{2, 2}, {9, 3}});
    EXPECT_TRUE(Overlapping(through, kSquare));
    EXPECT_TRUE(Overlapping(kSquare, through));
    EXPECT_FALSE(Overlapping(Line({{1, 1}, {3, 3}}), kSquare));
    EXPECT_FALSE(Overlapping(kSquare, Line({{1, 1}, {3, 3}})));
}

TEST(RelationOverlapsTest, PolygonsOverlapWhereTheFirstOnesBoundaryPassesThroughTheSecond) {
    EXPECT_TRUE(Overlapping(kSquare, Area({{2, 2}, {6, 2}, {6, 6}, {2, 6}, {2, 2}})));
    EXPECT_FALSE(Overlapping(kSquare, kInner));
    EXPECT_FALSE(Overlapping(kSquare, Area({{4, 0}, {8, 0}, {8, 4}, {4, 4}, {4, 0}})));
}

// --- Operators, and shapes that are none ------------------------------------------------------------------------------------

TEST(RelationOperatorTest, NumbersThatNoOperatorHasMatchNothing) {
    RelationShape query(RelationShape::Role::Query);
    RelationShape item(RelationShape::Role::Item);
    query.Load(kSquare.type, kSquare.pts);
    item.Load(kSquare.type, kSquare.pts);
    for (const std::int32_t op : {8, 9, -1, 2147483647, -2147483647 - 1}) EXPECT_FALSE(Relates(op, query, item)) << op;
}

TEST(RelationDegenerateTest, ShapesOfOnePointHaveNoSegments) {
    const Shape stump = Line({{1, 1}});
    const Shape speck = Area({{1, 1}});
    const Shape pair = Area({{1, 1}, {3, 1}});
    for (const Shape* shape : {&stump, &speck, &pair}) {
        for (const Shape* other : {&kSquare, &kRing, &stump, &speck, &pair}) {
            for (std::int32_t op = 0; op < 8; ++op) Holds(static_cast<RelationOp>(op), *other, *shape);
        }
    }
    EXPECT_FALSE(Apart(stump, kSquare)) << "its point is inside";
    EXPECT_TRUE(Apart(kSquare, stump));
    EXPECT_FALSE(Equal(speck, speck)) << "its point is on no segment";
}

TEST(RelationDegenerateTest, AnAreaThatDoesNotCloseHasABoundaryButNoInside) {
    const Shape open = Area({{0, 0}, {4, 0}, {4, 4}, {0, 4}});
    EXPECT_TRUE(Apart(open, At(2, 2)));
    EXPECT_FALSE(Containing(open, At(2, 2)));
    EXPECT_TRUE(Touching(open, At(2, 0)));
    EXPECT_FALSE(Touching(open, At(0, 2))) << "the side that would close it is none";
}

TEST(RelationDegenerateTest, NotANumberEqualsAndMeetsNothing) {
    const double nan = std::nan("");
    EXPECT_TRUE(Apart(At(nan, 0), At(nan, 0)));
    EXPECT_FALSE(Equal(At(nan, 0), At(nan, 0)));
    EXPECT_TRUE(Apart(At(nan, 0), kSquare));
    EXPECT_TRUE(Apart(Line({{nan, 0}, {1, nan}}), Line({{nan, 0}, {1, nan}})));
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(Apart(Line({{-inf, 2}, {inf, 2}}), kFar));
}

TEST(RelationDegenerateTest, MillionVerticesAnswerInTimeThatGrowsWithThem) {
    constexpr int kCount = 1000000;
    Shape big{ShapeType::Polygon, {}};
    for (int i = 0; i < kCount; ++i) {
        const double angle = 6.283185307179586 * i / kCount;
        const double radius = i % 2 == 0 ? 1000 : 999.99;
        big.pts.push_back({radius * std::cos(angle), radius * std::sin(angle), 0});
    }
    big.pts.push_back(big.pts.front());
    Shape shifted = big;
    for (DigPnt& p : shifted.pts) p.x += 1500;
    Shape spoilt = big;
    spoilt.pts[5].x = std::nan("");

    RelationShape query(RelationShape::Role::Query);
    RelationShape item(RelationShape::Role::Item);
    query.Load(big.type, big.pts);
    const auto holds = [&](RelationOp op) { return Relates(static_cast<std::int32_t>(op), query, item); };
    item.Load(shifted.type, shifted.pts);
    EXPECT_TRUE(holds(RelationOp::Overlaps));
    EXPECT_FALSE(holds(RelationOp::Disjoint));
    EXPECT_FALSE(holds(RelationOp::Touches));
    item.Load(big.type, big.pts);
    EXPECT_TRUE(holds(RelationOp::Equals));
    item.Load(ShapeType::Line, big.pts);
    EXPECT_FALSE(holds(RelationOp::Contains));
    item.Load(spoilt.type, spoilt.pts);
    EXPECT_FALSE(holds(RelationOp::Equals));
    EXPECT_FALSE(holds(RelationOp::Disjoint));
}

}  // namespace
}  // namespace orvane
