// Marks at the ends of a line (kind 2).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/render/pattern_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum : std::int32_t { kStart = 1, kEnd = 2, kBoth = 3 };

/// Marks of 10 pixels.
class LineEndMarksTest : public testing::Test {
protected:
    LineEndMarksTest() : rig(2, {10}) {}
    std::vector<std::string> Marks(std::int32_t shape, std::int32_t place, std::initializer_list<Point> pts) {
        rig.SetList2({shape});
        rig.def.ltPos = place;
        return rig.DrawMarks(pts);
    }
    std::vector<std::string> Level(std::int32_t shape, std::int32_t place) { return Marks(shape, place, {{10, 50}, {40, 50}}); }

    PatternRig rig;
};

TEST_F(LineEndMarksTest, CircleIsAFilledPathAndIsNotTurned) {
    EXPECT_THAT(Level(1, kBoth), ElementsAre("BeginPath", "Ellipse 5 55 15 45", "EndPath", "FillPath",  //
                                             "BeginPath", "Ellipse 35 55 45 45", "EndPath", "FillPath"));
    EXPECT_THAT(Marks(1, kStart, {{20, 30}, {50, 70}}), ElementsAre("BeginPath", "Ellipse 15 35 25 25", "EndPath", "FillPath"));
}

TEST_F(LineEndMarksTest, SquareIsClosed) {
    EXPECT_THAT(Level(2, kBoth), ElementsAre("Polygon [(5,55) (15,55) (15,45) (5,45) (5,55)]",  //
                                             "Polygon [(35,55) (45,55) (45,45) (35,45) (35,55)]"));
}

TEST_F(LineEndMarksTest, TriangleStandsOnItsSide) {
    // 10 * 0.433 = 4.33: four pixels up and down.
    EXPECT_THAT(Level(3, kBoth),
                ElementsAre("Polygon [(10,46) (15,54) (5,54) (10,46)]", "Polygon [(40,46) (45,54) (35,54) (40,46)]"));
}

TEST_F(LineEndMarksTest, DiamondIsClosed) {
    EXPECT_THAT(Level(4, kBoth), ElementsAre("Polygon [(5,50) (10,55) (15,50) (10,45) (5,50)]",  //
                                             "Polygon [(35,50) (40,55) (45,50) (40,45) (35,50)]"));
}

TEST_F(LineEndMarksTest, FiguresAreTurnedIntoTheDirectionOfTheirSegmentAndCut) {
    // 3 right and 2 down: cos 0.832, sin 0.555 downward.
    const std::initializer_list<Point> line = {{20, 30}, {50, 50}};
    EXPECT_THAT(Marks(2, kBoth, line), ElementsAre("Polygon [(13,31) (21,36) (26,28) (18,23) (13,31)]",
                                                   "Polygon [(43,51) (51,56) (56,48) (48,43) (43,51)]"));
    EXPECT_THAT(Marks(3, kBoth, line), ElementsAre("Polygon [(22,26) (21,36) (13,30) (22,26)]",  //
                                                   "Polygon [(52,46) (51,56) (43,50) (52,46)]"));
    EXPECT_THAT(Marks(4, kBoth, line), ElementsAre("Polygon [(15,27) (17,34) (24,32) (22,25) (15,27)]",
                                                   "Polygon [(45,47) (47,54) (54,52) (52,45) (45,47)]"));
}

TEST_F(LineEndMarksTest, ArrowHeadsPointOutwardAtBothEnds) {
    // 10 cos 45 = 7.07.
    EXPECT_THAT(Level(5, kStart), ElementsAre("Polyline [(17,57) (10,50) (17,43)]"));
    EXPECT_THAT(Level(5, kEnd), ElementsAre("Polyline [(33,43) (40,50) (33,57)]"));
    EXPECT_THAT(Level(5, kBoth), ElementsAre("Polyline [(17,57) (10,50) (17,43)]", "Polyline [(33,43) (40,50) (33,57)]"));
}

TEST_F(LineEndMarksTest, FirstAndLastSegmentTellTheDirections) {
    const std::initializer_list<Point> bent = {{10, 50}, {10, 20}, {60, 20}, {90, 20}};
    EXPECT_THAT(Marks(5, kBoth, bent), ElementsAre("Polyline [(17,43) (10,50) (3,43)]", "Polyline [(83,13) (90,20) (83,27)]"));
    EXPECT_THAT(Marks(3, kBoth, bent), ElementsAre("Polygon [(6,50) (14,45) (14,55) (6,50)]",  // upward: its tip to the left
                                                   "Polygon [(90,16) (95,24) (85,24) (90,16)]"));
}

TEST_F(LineEndMarksTest, OtherPlacesAndOtherShapesDrawNothing) {
    for (const std::int32_t place : {0, 4, -1}) EXPECT_THAT(Level(2, place), IsEmpty()) << place;
    for (const std::int32_t shape : {0, 6, 7, -1}) EXPECT_THAT(Level(shape, kBoth), IsEmpty()) << shape;
    rig.def.ltList2.Truncate(0);
    EXPECT_THAT(rig.DrawMarks({{10, 50}, {40, 50}}), IsEmpty());
}

TEST_F(LineEndMarksTest, SizeGrowsWithTheWholePartOfTheDpiRatioAndItsHalfIsCut) {
    rig.def.ltList[0] = 5;
    EXPECT_THAT(Level(4, kStart), ElementsAre("Polygon [(8,50) (10,52) (12,50) (10,48) (8,50)]"));
    rig.store.view.DpiRatio = 2.9;
    EXPECT_THAT(Level(4, kStart), ElementsAre("Polygon [(5,50) (10,55) (15,50) (10,45) (5,50)]"));
}

TEST_F(LineEndMarksTest, MissingSizeDrawsTheFigureOnThePoint) {
    rig.def.ltList.Truncate(0);
    EXPECT_THAT(Level(2, kStart), ElementsAre("Polygon [(10,50) (10,50) (10,50) (10,50) (10,50)]"));
}

TEST_F(LineEndMarksTest, LineOfOnePointHasNone) { EXPECT_THAT(Marks(2, kBoth, {{10, 50}}), IsEmpty()); }

TEST_F(LineEndMarksTest, LineOnOnePointIsMarkedAsIfItWentRight) {
    EXPECT_THAT(Marks(5, kEnd, {{10, 50}, {10, 50}}), ElementsAre("Polyline [(3,43) (10,50) (3,57)]"));
}

TEST_F(LineEndMarksTest, MarksBeyondTheDeviceSpaceSaturate) {
    constexpr std::int32_t kMost = 2147483647, kLeast = -2147483647 - 1;
    rig.def.ltList[0] = kMost;
    rig.store.view.DpiRatio = 1e10;
    for (std::int32_t shape = 1; shape <= 5; ++shape) {
        EXPECT_FALSE(Marks(shape, kBoth, {{kLeast, kLeast}, {kMost, kMost}}).empty());
        rig.def.ltList[0] = kLeast;
        EXPECT_FALSE(Marks(shape, kBoth, {{kMost, kLeast}, {kLeast, kMost}}).empty());
    }
    rig.store.view.DpiRatio = 1;
    rig.def.ltList[0] = kMost;
    EXPECT_THAT(Marks(1, kEnd, {{0, 0}, {kMost, kMost}}),
                ElementsAre("BeginPath", "Ellipse 1073741824 2147483647 2147483647 1073741824", "EndPath", "FillPath"));
}

TEST_F(LineEndMarksTest, LineBlockDrawsTheLineAndThenItsMarks) {
    rig.SetList2({5});
    rig.def.ltPos = kEnd;
    rig.AddLayer("L", kLayLine);
    rig.Layer(0).lineType = 1;
    rig.AddItem("L", {{10, 50}, {40, 50}});
    EXPECT_THAT(rig.DrawLines(), ElementsAre("SelectObject pen(0x0 1 0xDCDCDC)", "SelectObject brush(0xDCDCDC)", "SetROP2 13",
                                             "Polyline [(10,50) (40,50)]", "Polyline [(33,43) (40,50) (33,57)]",
                                             "SelectObject brush(0xFFFFFF)", "SelectObject pen(0x0 1 0x000000)"));
}

}  // namespace
}  // namespace orvane
