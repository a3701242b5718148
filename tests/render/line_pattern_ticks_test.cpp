// Ticks, and what all patterns share: the pitch, the clip, the table.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/line_polygon.h"
#include "render/tick_end.h"
#include "tests/render/pattern_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kMost = 2147483647;
constexpr std::int32_t kLeast = -2147483647 - 1;

/// Ticks of 5 pixels at right angles, every 10 pixels.
class LineTicksTest : public testing::Test {
protected:
    LineTicksTest() : rig(3, {10}) {
        rig.def.ltLen = 5;
        rig.def.ltAngle = 90.0;
    }
    /// Along y = 50 from x = 10 to x = 40: the counter comes to 10, 20 and 30 at x = 19, 29 and 39.
    std::vector<std::string> DrawLevel() { return rig.Draw({{10, 50}, {40, 50}}); }
    std::vector<std::string> LevelTicks() { return rig.Draw({{10, 50}, {40, 50}}, "Polyline"); }

    PatternRig rig;
};

TEST_F(LineTicksTest, StandLeftOfTheDirectionOfDigitisingAndMoveToTheEnd) {
    EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50", "Polyline [(19,50) (19,45)]", "Polyline [(29,50) (29,45)]",
                                         "Polyline [(39,50) (39,45)]", "MoveToEx 40 50"));
    EXPECT_THAT(rig.Draw({{40, 50}, {10, 50}}, "Polyline"),
                ElementsAre("Polyline [(31,50) (31,55)]", "Polyline [(21,50) (21,55)]", "Polyline [(11,50) (11,55)]"));
}

TEST_F(LineTicksTest, BaseOfExactlyOneDrawsTheLineUnderTheTicks) {
    rig.def.ltBase = 1;
    EXPECT_EQ(DrawLevel().back(), "LineTo 40 50");
    rig.def.ltBase = 2;
    EXPECT_EQ(DrawLevel().back(), "MoveToEx 40 50");
}

TEST_F(LineTicksTest, StandOnTheRight) {
    rig.def.ltDir = 2;
    EXPECT_THAT(LevelTicks(),
                ElementsAre("Polyline [(19,50) (19,55)]", "Polyline [(29,50) (29,55)]", "Polyline [(39,50) (39,55)]"));
}

TEST_F(LineTicksTest, AlternateBeginningOnTheRightBecauseTheSideFlipsFirst) {
    rig.def.ltDir = 3;
    EXPECT_THAT(LevelTicks(),
                ElementsAre("Polyline [(19,50) (19,55)]", "Polyline [(29,50) (29,45)]", "Polyline [(39,50) (39,55)]"));
}

TEST_F(LineTicksTest, AlternatingSideRunsOnThroughTheVerticesAndStartsAnewForEachLine) {
    rig.def.ltDir = 3;
    const std::vector<std::string> ticks = rig.Draw({{10, 50}, {40, 50}, {60, 50}}, "Polyline");
    EXPECT_THAT(ticks, ElementsAre("Polyline [(19,50) (19,55)]", "Polyline [(29,50) (29,45)]", "Polyline [(39,50) (39,55)]",
                                   "Polyline [(49,50) (49,45)]", "Polyline [(59,50) (59,55)]"));
    EXPECT_EQ(LevelTicks().front(), "Polyline [(19,50) (19,55)]");
}

TEST_F(LineTicksTest, SideFlipsOnlyForTicksThatAreDrawn) {
    rig.def.ltDir = 3;
    rig.clip.left = 30;  // keeps the third
    EXPECT_THAT(LevelTicks(), ElementsAre("Polyline [(39,50) (39,55)]"));
}

TEST_F(LineTicksTest, BothSidesAtRightAnglesAreOneStroke) {
    rig.def.ltDir = 1;
    EXPECT_EQ(LevelTicks().front(), "Polyline [(19,45) (19,55)]");
    rig.def.ltAngle = -90.0;
    EXPECT_EQ(LevelTicks().front(), "Polyline [(19,55) (19,45)]");
}

TEST_F(LineTicksTest, BothSidesAtAnotherAngleAreJoinedOnTheLine) {
    rig.def.ltDir = 1;
    rig.def.ltLen = 10;
    rig.def.ltAngle = 60.0;  // 10 cos 60 = 5, 10 sin 60 = 8.66, rounded 9
    EXPECT_EQ(LevelTicks().front(), "Polyline [(24,41) (19,50) (24,59)]");
    rig.def.ltAngle = 90.0000001;
    EXPECT_EQ(LevelTicks().front(), "Polyline [(19,40) (19,50) (19,60)]");
}

TEST_F(LineTicksTest, UnknownSideDrawsNoTicks) {
    for (const std::int32_t side : {-1, 4, kMost, kLeast}) {
        rig.def.ltDir = side;
        EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50", "MoveToEx 40 50")) << side;
    }
}

// --- The pitch ------------------------------------------------------------

TEST_F(LineTicksTest, SegmentShorterThanAPitchDrawsNoTick) {
    rig.def.ltBase = 1;
    EXPECT_THAT(rig.Draw({{10, 50}, {19, 50}}), ElementsAre("MoveToEx 10 50", "LineTo 19 50"));
    EXPECT_THAT(rig.Draw({{10, 50}, {20, 50}}), ElementsAre("MoveToEx 10 50", "Polyline [(19,50) (19,45)]", "LineTo 20 50"))
        << "the start is the first point counted, so the tenth is a pixel short of the pitch";
}

TEST_F(LineTicksTest, CounterRestartsAtEachVertexSoPatternsDoNotRunAroundCorners) {
    EXPECT_THAT(rig.Draw({{10, 50}, {25, 50}, {25, 65}}),
                ElementsAre("MoveToEx 10 50", "Polyline [(19,50) (19,45)]", "MoveToEx 25 50", "Polyline [(25,59) (30,59)]",
                            "MoveToEx 25 65"));
    EXPECT_THAT(rig.Draw({{10, 50}, {19, 50}, {28, 50}, {37, 50}}, "Polyline"), IsEmpty());
}

TEST_F(LineTicksTest, PitchIsMeasuredAlongASlantedSegment) {
    // 30 across and 40 down are 50 long: 40 * 10 / 50 = 8 calls a pitch. Call 8 k is row 8 k - 1, at 3/4 of it across, rounded.
    rig.def.ltLen = 0;
    EXPECT_THAT(rig.Draw({{10, 10}, {40, 50}}, "Polyline"),
                ElementsAre("Polyline [(15,17) (15,17)]", "Polyline [(21,25) (21,25)]", "Polyline [(27,33) (27,33)]",
                            "Polyline [(33,41) (33,41)]", "Polyline [(39,49) (39,49)]"));
}

TEST_F(LineTicksTest, StepIsCut) {
    // 10 across and 10 down are 14.14 long: 10 * 10 / 14.14 = 7.07 calls.
    rig.def.ltLen = 0;
    EXPECT_THAT(rig.Draw({{10, 10}, {20, 20}}, "Polyline"), ElementsAre("Polyline [(16,16) (16,16)]"));
}

TEST_F(LineTicksTest, PitchAndTicksGrowWithTheWholePartOfTheDpiRatio) {
    rig.store.view.DpiRatio = 2.9;
    EXPECT_THAT(LevelTicks(), ElementsAre("Polyline [(29,50) (29,40)]"));
    rig.store.view.DpiRatio = 0.9;
    EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50"));
}

TEST_F(LineTicksTest, SegmentOnOnePointIsPassedOver) {
    EXPECT_THAT(rig.Draw({{10, 50}, {10, 50}, {20, 50}}),
                ElementsAre("MoveToEx 10 50", "Polyline [(19,50) (19,45)]", "MoveToEx 20 50"));
}

TEST_F(LineTicksTest, PitchOfNothingOrLessDrawsNothing) {
    rig.def.ltBase = 1;
    for (const std::int32_t pitch : {0, -1, -10, kLeast}) {
        rig.def.ltList[0] = pitch;
        EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50")) << pitch;
    }
    rig.def.ltList.Truncate(0);
    EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50")) << "a missing value reads as 0";
}

TEST_F(LineTicksTest, PitchWhoseStepIsCutToNothingLeavesThePositionWhereItWas) {
    rig.def.ltList[0] = 1;
    rig.def.ltBase = 1;
    rig.def.ltLen = 0;
    // On the slant 1 / 1.414 cuts to 0, and the level segment behind it begins at its own start.
    EXPECT_THAT(rig.Draw({{10, 50}, {12, 52}, {14, 52}}),
                ElementsAre("MoveToEx 10 50", "Polyline [(12,52) (12,52)]", "Polyline [(13,52) (13,52)]", "LineTo 14 52"));
}

TEST_F(LineTicksTest, TicksOfPitchOneStandOnEveryPixel) {
    rig.def.ltList[0] = 1;
    EXPECT_EQ(LevelTicks().size(), 30u);
}

// --- The clip ------------------------------------------------------------

TEST_F(LineTicksTest, PitchOutsideDoesNothingAtAll) {
    rig.def.ltBase = 1;
    EXPECT_THAT(rig.Draw({{10, 150}, {40, 150}}), ElementsAre("MoveToEx 10 150", "LineTo 40 150"));
}

TEST_F(LineTicksTest, BoxOfAPitchReachesOnePixelBeyondItsEnd) {
    rig.clip.left = 29;  // the second pitch is 19 to 29, widened to 30, which lies outside
    EXPECT_THAT(LevelTicks(), ElementsAre("Polyline [(29,50) (29,45)]", "Polyline [(39,50) (39,45)]"));
    rig.clip.left = 30;
    EXPECT_THAT(LevelTicks(), ElementsAre("Polyline [(39,50) (39,45)]"));
}

TEST_F(LineTicksTest, RightAndBottomOfTheClipLieOutside) {
    rig.clip.right = 29;
    EXPECT_THAT(LevelTicks(), ElementsAre("Polyline [(19,50) (19,45)]", "Polyline [(29,50) (29,45)]"));
    rig.clip = {0, 0, 200, 50};
    EXPECT_THAT(LevelTicks(), IsEmpty());
    rig.clip.bottom = 51;
    EXPECT_EQ(LevelTicks().size(), 3u);
    rig.clip.top = 50;
    EXPECT_EQ(LevelTicks().size(), 3u);
    rig.clip.top = 51;
    EXPECT_THAT(LevelTicks(), IsEmpty());
}

TEST_F(LineTicksTest, LineAlongAnAxisOfTheDeviceHasEmptyBoxesAndNoTicks) {
    rig.clip = {-100, -100, 200, 100};
    EXPECT_THAT(rig.Draw({{10, 0}, {40, 0}}, "Polyline"), IsEmpty());
    EXPECT_THAT(rig.Draw({{0, 10}, {0, 40}}, "Polyline"), IsEmpty());
    for (const std::int32_t beside : {-1, 1}) {
        EXPECT_EQ(rig.Draw({{10, beside}, {40, beside}}, "Polyline").size(), 3u);
        EXPECT_EQ(rig.Draw({{beside, 10}, {beside, 40}}, "Polyline").size(), 3u);
    }
}

TEST_F(LineTicksTest, NegativeBoxIsWidenedAwayFromZero) {
    rig.clip = {-100, -100, -10, 100};  // a pitch from -9 to 0 has its left widened to -10, which the clip leaves out
    EXPECT_THAT(rig.Draw({{-9, 50}, {1, 50}}, "Polyline"), IsEmpty());
    rig.clip.right = -9;
    EXPECT_EQ(rig.Draw({{-9, 50}, {1, 50}}, "Polyline").size(), 1u);
}

TEST_F(LineTicksTest, EmptyClipShowsNoFigure) {
    for (const Rect& clip : {Rect{}, Rect{200, 0, 0, 100}, Rect{0, 100, 200, 0}, Rect{kMost, kMost, kLeast, kLeast}}) {
        rig.clip = clip;
        EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50", "MoveToEx 40 50"));
    }
}

// --- The table ------------------------------------------------------------

TEST_F(LineTicksTest, HiddenKindOnlyMovesToTheStart) {
    rig.def.ltKind = 6;
    EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50"));
}

TEST_F(LineTicksTest, HiddenKindLeavesTheItemCountedAsDrawn) {
    rig.def.ltKind = 6;
    rig.AddLayer("L", kLayLine);
    rig.Layer(0).lineType = 1;
    rig.AddItem("L", {{10, 50}, {40, 50}});
    EXPECT_THAT(rig.DrawLines(),
                ElementsAre("SelectObject pen(0x0 1 0xDCDCDC)", "SelectObject brush(0xDCDCDC)", "SetROP2 13", "MoveToEx 10 50",
                            "SelectObject brush(0xFFFFFF)", "SelectObject pen(0x0 1 0x000000)"));
    EXPECT_EQ(rig.Item(0, 0).drawnFlg, 1);
}

TEST_F(LineTicksTest, KindThatIsNoPatternOnlyMovesToTheStart) {
    for (const std::int32_t kind : {-1, 0, 1, 2, 9, kMost}) {
        rig.def.ltKind = kind;
        EXPECT_THAT(DrawLevel(), ElementsAre("MoveToEx 10 50")) << kind;
    }
}

TEST_F(LineTicksTest, RecordOutsideOfTheTableDrawsNothing) {
    const Point pts[] = {{10, 50}, {40, 50}};
    for (const std::int32_t index : {-1, 1, kMost, kLeast}) {
        DrawLinePattern(rig.store, rig.dc, rig.clip, pts, 2, index);
        DrawLineEndMarks(rig.store, rig.dc, pts, 2, index);
    }
    DrawLinePattern(rig.store, rig.dc, rig.clip, pts, 0, 0);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_THAT(rig.Draw({{10, 50}}), ElementsAre("MoveToEx 10 50"));
}

TEST_F(LineTicksTest, LineBlockClipsItsPatternsByTheClientAreaAndNotByTheStrips) {
    rig.AddLayer("L", kLayLine);
    rig.Layer(0).lineType = 1;
    rig.AddItem("L", {{180, 50}, {300, 50}});
    rig.frame.stripA = rig.frame.stripB = {150, 0, 185, 100};
    DrawLineBlock(rig.store, rig.frame, 0, 0, true, rig.scratch);
    EXPECT_THAT(rig.Verbs("Polyline"),
                ElementsAre("Polyline [(189,50) (189,45)]", "Polyline [(199,50) (199,45)]", "Polyline [(209,50) (209,45)]"))
        << "the last pitch starts at 199, inside of the client area";
}

// --- Ends of ticks ------------------------------------------------------------

TEST(TickEndTest, TurnsAgainstTheClockOnTheScreen) {
    EXPECT_EQ(TickEnd(10, 0.0, {0, 0}, {100, 0}), (Point{110, 0}));
    EXPECT_EQ(TickEnd(10, 90.0, {0, 0}, {100, 0}), (Point{100, -10}));
    EXPECT_EQ(TickEnd(10, 180.0, {0, 0}, {100, 0}), (Point{90, 0}));
    EXPECT_EQ(TickEnd(10, 90.0, {0, 0}, {0, 100}), (Point{10, 100}));
    EXPECT_EQ(TickEnd(-10, 90.0, {0, 0}, {100, 0}), (Point{100, 10}));
}

TEST(TickEndTest, RoundsHalvesAwayFromZero) {
    // 5 cos 60 = 2.5 and a little, 5 cos 120 = -2.5 and a little; 5 sin 60 = 4.33.
    EXPECT_EQ(TickEnd(5, 60.0, {0, 0}, {100, 0}), (Point{103, -4}));
    EXPECT_EQ(TickEnd(5, 180.0 - 60.0000001, {0, 0}, {100, 0}), (Point{98, -4})) << "-2.4999999 is not yet a half";
    EXPECT_EQ(TickEnd(5, -60.0, {100, 0}, {0, 0}), (Point{-3, -4}));
}

TEST(TickEndTest, LineOnOnePointPointsToTheRight) { EXPECT_EQ(TickEnd(10, 0.0, {7, 7}, {7, 7}), (Point{17, 7})); }

TEST(TickEndTest, EndsBeyondTheDeviceSpaceSaturate) {
    EXPECT_EQ(TickEnd(kMost, 0.0, {kLeast, 0}, {kMost, 0}), (Point{kMost, 0}));
    EXPECT_EQ(TickEnd(kMost, 0.0, {kMost, 0}, {kLeast, 0}), (Point{kLeast, 0}));
}

}  // namespace
}  // namespace orvane
