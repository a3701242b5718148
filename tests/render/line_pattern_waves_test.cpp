// Waves (kind 7) and shapes (kind 8).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/render/pattern_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kClockwise[] = "SetArcDirection 2";
constexpr char kCounterClockwise[] = "SetArcDirection 1";

/// A pitch of 16 pixels. Along y = 50 from x = 10 its pitches are 10 to 25, 25 to 41, 41 to 57, 57 to 73.
class LineWavesTest : public testing::Test {
protected:
    LineWavesTest() : rig(7, {16}) {}
    std::vector<std::string> Wave(std::int32_t shape, std::int32_t dir, std::int32_t endX = 42) {
        rig.SetList2({shape});
        rig.def.ltDir = dir;
        return rig.Draw({{10, 50}, {endX, 50}});
    }
    PatternRig rig;
};

TEST_F(LineWavesTest, ArcBulgesToTheLeftClockwise) {
    // Radius 10, the centre 6 below the middle: (17.5, 56) and (33, 56). The coarse degree leaves it a hair above 56.
    EXPECT_THAT(Wave(7, 0), ElementsAre("MoveToEx 10 50", kClockwise, "ArcTo 7 45 28 66 10 50 25 50", kClockwise,
                                        "ArcTo 23 45 43 66 25 50 41 50", "LineTo 42 50"));
}

TEST_F(LineWavesTest, ArcBulgesToTheRightCounterClockwise) {
    // The centre 6 above the middle: (17.5, 44), a hair below it.
    EXPECT_THAT(Wave(7, 2), ElementsAre("MoveToEx 10 50", kCounterClockwise, "ArcTo 7 34 28 54 10 50 25 50", kCounterClockwise,
                                        "ArcTo 23 34 43 54 25 50 41 50", "LineTo 42 50"));
}

TEST_F(LineWavesTest, ArcsTurnWithTheSegment) {
    rig.def.ltList[0] = 20;
    rig.SetList2({7});
    // 3 right and 4 down in 5: a pitch is 16 rows. Radius 12.5; the centre is 7.5 * (-0.8, 0.6) from the middles (15.5, 17.5) and
    // (27, 33), at (9.5, 22) and (21, 37.5), again a hair off.
    EXPECT_THAT(rig.Draw({{10, 10}, {40, 50}}, "ArcTo"),
                ElementsAre("ArcTo -2 9 22 35 10 10 21 25", "ArcTo 8 25 34 50 21 25 33 41"));
}

TEST_F(LineWavesTest, AlternatingArcsFlipAfterEachFigure) {
    EXPECT_THAT(Wave(7, 3, 58),
                ElementsAre("MoveToEx 10 50", kClockwise, "ArcTo 7 45 28 66 10 50 25 50", kCounterClockwise,
                            "ArcTo 23 34 43 54 25 50 41 50", kClockwise, "ArcTo 39 45 59 66 41 50 57 50", "LineTo 58 50"));
}

TEST_F(LineWavesTest, BothSidesKeepTheOneTheyStartWith) {
    const std::vector<std::string> left = Wave(7, 0);
    EXPECT_EQ(Wave(7, 1), left);
    EXPECT_EQ(Wave(7, 77), left);
}

TEST_F(LineWavesTest, TrianglesAlternateLeftAndRight) {
    // 16 * 0.433 = 6.9: six pixels over the cut middles 17 and 33.
    EXPECT_THAT(Wave(8, 3), ElementsAre("MoveToEx 10 50", kClockwise, "LineTo 10 50", "LineTo 17 44", "LineTo 25 50",  //
                                        kCounterClockwise, "LineTo 25 50", "LineTo 33 56", "LineTo 41 50", "LineTo 42 50"));
}

TEST_F(LineWavesTest, TrianglesStandOnOneSide) {
    EXPECT_THAT(Wave(8, 0), Contains("LineTo 33 44"));
    EXPECT_THAT(Wave(8, 2), Contains("LineTo 33 56"));
}

TEST_F(LineWavesTest, SquaresAreHalfAPitchHigh) {
    EXPECT_THAT(Wave(9, 3),
                ElementsAre("MoveToEx 10 50", kClockwise, "LineTo 10 50", "LineTo 10 42", "LineTo 25 42", "LineTo 25 50",
                            kCounterClockwise, "LineTo 25 50", "LineTo 25 58", "LineTo 41 58", "LineTo 41 50", "LineTo 42 50"));
    rig.def.ltList[0] = 17;
    EXPECT_THAT(Wave(9, 0), Contains("LineTo 10 42")) << "half of 17 is cut to 8";
}

TEST_F(LineWavesTest, SideRunsOnThroughTheVertices) {
    rig.SetList2({8});
    rig.def.ltDir = 3;
    EXPECT_THAT(rig.Draw({{10, 50}, {27, 50}, {44, 50}}, "SetArc"), ElementsAre(kClockwise, kCounterClockwise));
}

TEST_F(LineWavesTest, SideFlipsOnlyForFiguresThatAreDrawn) {
    rig.clip = {45, 0, 200, 100};  // from the third on
    EXPECT_THAT(Wave(8, 3, 58), ElementsAre("MoveToEx 10 50", "MoveToEx 41 50", kClockwise, "LineTo 41 50", "LineTo 49 44",
                                            "LineTo 57 50", "LineTo 58 50"));
}

TEST_F(LineWavesTest, UnknownOrMissingShapeDrawsNoFigure) {
    EXPECT_THAT(Wave(1, 0, 27), ElementsAre("MoveToEx 10 50", kClockwise, "LineTo 27 50"));
    rig.def.ltList2.Truncate(0);
    EXPECT_THAT(rig.Draw({{10, 50}, {27, 50}}), ElementsAre("MoveToEx 10 50", kClockwise, "LineTo 27 50"));
}

TEST_F(LineWavesTest, PitchGrowsWithTheWholePartOfTheDpiRatio) {
    rig.def.ltList[0] = 8;
    rig.store.view.DpiRatio = 2.9;
    EXPECT_THAT(Wave(9, 0), Contains("LineTo 41 42"));
}

// --- Shapes ------------------------------------------------------------

class LineShapesTest : public testing::Test {
protected:
    LineShapesTest() : rig(8, {16, 0}) {}
    std::vector<std::string> Shapes(std::int32_t shape, std::int32_t dir) {
        rig.SetList2({99, shape});
        rig.def.ltDir = dir;
        return rig.Draw({{10, 50}, {74, 50}});
    }
    PatternRig rig;
};

TEST_F(LineShapesTest, EverySecondPitchHasABoxAndTheBaseLineIsDrawnFromTheStart) {
    EXPECT_THAT(Shapes(2, 0), ElementsAre("MoveToEx 10 50", kClockwise, "Polygon [(10,50) (10,42) (25,42) (25,50)]", kClockwise,
                                          "Polygon [(41,50) (41,42) (57,42) (57,50)]", "LineTo 74 50"));
}

TEST_F(LineShapesTest, TrianglesAreThoseOfTheWave) {
    EXPECT_THAT(Shapes(3, 2), ElementsAre("MoveToEx 10 50", kCounterClockwise, "Polygon [(10,50) (17,56) (25,50)]",
                                          kCounterClockwise, "Polygon [(41,50) (49,56) (57,50)]", "LineTo 74 50"));
}

TEST_F(LineShapesTest, HalfDiscsAlternateByFiguresDrawn) {
    EXPECT_THAT(Shapes(6, 3), ElementsAre("MoveToEx 10 50", kClockwise, "Chord 7 45 28 66 10 50 25 50", kCounterClockwise,
                                          "Chord 39 34 59 54 41 50 57 50", "LineTo 74 50"));
}

TEST_F(LineShapesTest, TurnsRunOnThroughTheVertices) {
    rig.SetList2({0, 3});
    EXPECT_THAT(rig.Draw({{10, 50}, {27, 50}, {44, 50}, {61, 50}}, "Polygon"),
                ElementsAre("Polygon [(10,50) (17,44) (25,50)]", "Polygon [(44,50) (51,44) (59,50)]"));
}

TEST_F(LineShapesTest, PitchOutsideTakesNoTurnAndMovesThePosition) {
    rig.clip = {30, 0, 200, 100};  // from the second on
    EXPECT_THAT(Shapes(3, 0), ElementsAre("MoveToEx 10 50", "MoveToEx 25 50", kClockwise, "Polygon [(25,50) (33,44) (41,50)]",
                                          kClockwise, "Polygon [(57,50) (65,44) (73,50)]", "LineTo 74 50"));
    rig.clip = {0, 0, 30, 100};  // up to the second
    EXPECT_THAT(Shapes(3, 0),
                ElementsAre("MoveToEx 10 50", kClockwise, "Polygon [(10,50) (17,44) (25,50)]", "MoveToEx 73 50", "LineTo 74 50"))
        << "nothing of the line shows inside the clip, because figures leave the position at the start";
}

TEST_F(LineShapesTest, RecordWithOneValueOrAnUnknownShapeDrawsNoFigure) {
    rig.SetList2({3});
    EXPECT_THAT(rig.Draw({{10, 50}, {74, 50}}), ElementsAre("MoveToEx 10 50", kClockwise, kClockwise, "LineTo 74 50"));
    EXPECT_THAT(Shapes(1, 0), ElementsAre("MoveToEx 10 50", kClockwise, kClockwise, "LineTo 74 50"));
}

TEST_F(LineShapesTest, ActiveItemIsFilledInTheActiveColourThroughItsBrush) {
    rig.SetList2({0, 3});
    rig.AddLayer("L", kLayLine);
    rig.Layer(0).lineType = 1;
    rig.Layer(0).color = 0x00FF00;
    rig.AddItem("L", {{10, 50}, {27, 50}});
    rig.Item(0, 0).active = 1;
    EXPECT_THAT(rig.DrawLines(), ElementsAre("SelectObject pen(0x0 1 0x00FF00)", "SelectObject brush(0x00FF00)", "SetROP2 13",
                                             "SelectObject brush(0x0000FF)", "SelectObject pen(0x0 3 0x0000FF)", "MoveToEx 10 50",
                                             kClockwise, "Polygon [(10,50) (17,44) (25,50)]", "LineTo 27 50",
                                             "SelectObject brush(0x00FF00)", "SelectObject pen(0x0 1 0x00FF00)",
                                             "SelectObject brush(0xFFFFFF)", "SelectObject pen(0x0 1 0x000000)"));
}

}  // namespace
}  // namespace orvane
