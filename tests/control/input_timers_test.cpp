// What comes without a button: the hint, the rubber rectangle's tick, keys and the wheel.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/control/input_rig.h"

namespace orvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class InputTimersTest : public testing::Test {
protected:
    InputTimersTest() { rig.AddRow("A", 50); }
    /// The cursor comes to rest at a client place at one moment, and a tick comes at another.
    void RestAndTick(double from_s, double to_s, Point at = {150, 50}) {
        rig.window.clock_s = from_s;
        rig.Hover(at);
        rig.Events();
        rig.window.clock_s = to_s;
        rig.Tick(2);
    }
    InputRig rig;
    COrvane4Ctrl& ctrl = *rig.ctrl;
};

// --- The hint ----------------------------------------------------------------------------------------------------------------

TEST_F(InputTimersTest, TheHintTellsScreenCoordinatesAndEnds) {
    RestAndTick(10, 12);
    EXPECT_THAT(rig.Events(), ElementsAre("OnHintStart 1 'A' 1 250 100"));
    EXPECT_FALSE(rig.Ticks(2));
    EXPECT_FALSE(rig.Active("A"));
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(InputTimersTest, TheHintNeedsMoreThanOneWholeSecondOfTheClock) {
    for (const auto& [from, to, told] : {std::tuple{10.0, 11.999, false},
                                         {10.0, 12.0, true},
                                         {10.999, 11.999, false},
                                         {10.999, 12.0, true},
                                         {10.5, 11.0, false},
                                         {-1.5, -0.5, false},
                                         {-1.5, 0.0, true}}) {
        RestAndTick(from, to);
        EXPECT_EQ(rig.Events().size(), told ? 1u : 0u) << from << ' ' << to;
        EXPECT_EQ(rig.Ticks(2), !told) << "until then it ticks on";
    }
}

TEST_F(InputTimersTest, AClockThatRunsBackwardsOrTellsNoNumberBringsNoHint) {
    for (const double to : {9.0, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
        RestAndTick(10, to);
        EXPECT_THAT(rig.Events(), IsEmpty());
        EXPECT_TRUE(rig.Ticks(2));
    }
    RestAndTick(10, std::numeric_limits<double>::infinity());
    EXPECT_THAT(rig.Events(), ElementsAre(StartsWith("OnHintStart")));
}

TEST_F(InputTimersTest, ARestOverNothingEndsWithoutAHint) {
    RestAndTick(10, 12, {400, 400});
    EXPECT_THAT(rig.Events(), IsEmpty());
    EXPECT_FALSE(rig.Ticks(2));
}

TEST_F(InputTimersTest, ACursorThatLeftThePlaceWithoutAMoveEndsTheRest) {
    rig.Hover({150, 50});
    rig.Events();
    rig.window.cursorPos = {251, 100};
    rig.Tick(2);
    EXPECT_FALSE(rig.Ticks(2)) << "at once, whatever the clock says";
    EXPECT_THAT(rig.Events(), IsEmpty());
}

TEST_F(InputTimersTest, OneRestGivesAtMostOneHintAndTheNextMoveArmsItAgain) {
    RestAndTick(10, 12);
    rig.window.clock_s = 20;
    rig.Tick(2);
    EXPECT_THAT(rig.Events(), testing::SizeIs(1));
    RestAndTick(20, 23);
    EXPECT_THAT(rig.Events(), testing::SizeIs(1));
}

TEST_F(InputTimersTest, AHostThatTicksOnInsideTheHintIsToldOnce) {
    rig.log.onEvent = [&](std::string_view event) {
        if (event == "OnHintStart") rig.Tick(2);
    };
    RestAndTick(10, 12);
    EXPECT_THAT(rig.Events(), ElementsAre(StartsWith("OnHintStart")));
}

TEST_F(InputTimersTest, AMoveThatTheHostSendsInsideTheHintDoesNotArmItAgain) {
    rig.log.onEvent = [&](std::string_view event) {
        if (event == "OnHintStart") ctrl.OnMouseMove(0, {150, 50});
    };
    RestAndTick(10, 12);
    EXPECT_FALSE(rig.Ticks(2));
}

TEST_F(InputTimersTest, ARestAfterAToolWasTakenUpShowsNoHint) {
    ctrl.runMode = kRunEditPntMove;
    RestAndTick(10, 20);
    EXPECT_FALSE(rig.Ticks(2));
    EXPECT_THAT(rig.Events(), IsEmpty());
}

// --- The rubber rectangle ----------------------------------------------------------------------------------------------------

TEST_F(InputTimersTest, ATickWipesTheLastRectangleAndDrawsTheNewOneDotted) {
    rig.Down({10, 20});
    rig.DragTo({50, 60});
    EXPECT_THAT(rig.Verbs(), IsEmpty()) << "the rectangle waits for the tick";
    rig.Tick(3);
    EXPECT_THAT(rig.Verbs(), ElementsAre("window SelectObject pen(0x2 1 0x000000)", "window BitBlt 1 1 799 599 top 1 1 0xCC0020",
                                         "window Polyline [(10,20) (10,60) (50,60) (50,20) (10,20)]",
                                         "window SelectObject pen(0x0 1 0x000000)"));
    rig.DragTo({5, 6});
    rig.Tick(3);
    EXPECT_EQ(rig.VerbsWith("Polyline"), Lines{"window Polyline [(10,20) (10,6) (5,6) (5,20) (10,20)]"});
}

TEST_F(InputTimersTest, ATickBeforeTheFirstPaintDrawsNothing) {
    ControlRig fresh;
    for (const std::int32_t id : {1, 2, 3, 11}) fresh.ctrl->OnTimer(id);
    EXPECT_THAT(fresh.Verbs(), IsEmpty());
}

TEST_F(InputTimersTest, OtherTimersAreNotTheControls) {
    rig.window.clock_s = 100;
    rig.window.cursorPos = rig.window.ClientToScreen({0, 0});
    ctrl.scrollActive = true;
    for (const std::int32_t id : {0, 4, 10, 12, -1, 2147483647}) ctrl.OnTimer(id);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_TRUE(ctrl.scrollActive);
}

// --- Keys --------------------------------------------------------------------------------------------------------------------

TEST_F(InputTimersTest, DeleteRepaintsTheOverlayInAnyMode) {
    for (const std::int16_t mode : {kRunNormal, kRunPan, kRunFigureNear, kRunMoveDat, std::int16_t{77}}) {
        ctrl.runMode = mode;
        ctrl.OnKeyDown(kVkDelete);
        EXPECT_EQ(rig.Verbs(), RelaidFrame()) << mode;
        EXPECT_EQ(ctrl.runMode, mode);
        EXPECT_THAT(rig.Events(), IsEmpty());
    }
}

TEST_F(InputTimersTest, EscapeOutsideTheToolsOnlyComposesTheMapAnew) {
    ctrl.runMode = kRunPan;
    ctrl.OnKeyDown(kVkEscape);
    EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
    EXPECT_EQ(ctrl.runMode, kRunPan);
    EXPECT_THAT(rig.Events(), IsEmpty());
}

TEST_F(InputTimersTest, OtherKeysDoNothing) {
    for (const std::uint32_t key : {0u, 13u, 32u, 26u, 28u, 45u, 47u, 0xFFFFFFFFu}) ctrl.OnKeyDown(key);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_THAT(rig.Events(), IsEmpty());
}

TEST(InputKeysBeforeThePaint, AreSafe) {
    ControlRig rig;
    rig.ctrl->OnKeyDown(kVkDelete);
    rig.ctrl->OnKeyDown(kVkEscape);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

// --- The wheel ---------------------------------------------------------------------------------------------------------------

TEST_F(InputTimersTest, AWheelStepZoomsRepaintsAndStopsTheHint) {
    rig.Hover({150, 50});
    rig.Events();
    ctrl.OnMouseWheel(0, 120, {500, 350});
    EXPECT_EQ(rig.View().Zoom, 800);
    EXPECT_FALSE(rig.Ticks(2));
    EXPECT_THAT(rig.Verbs(), Contains(StartsWith("base PatBlt")));
    ctrl.OnMouseWheel(kMkShift, -120, {500, 350});
    EXPECT_EQ(rig.View().Zoom, 960);
    EXPECT_THAT(rig.Events(), ElementsAre("OnZoomChange 800", "OnZoomChange 960"));
}

TEST_F(InputTimersTest, AWheelStepAtZoomOneGivesTwoAndAStepBackStaysAtOne) {
    rig.View().Zoom = 1;
    ctrl.OnMouseWheel(0, 120, {500, 350});
    EXPECT_EQ(rig.View().Zoom, 1);
    ctrl.OnMouseWheel(0, -120, {500, 350});
    EXPECT_EQ(rig.View().Zoom, 2);
}

TEST_F(InputTimersTest, AWheelStepAtTheCursorKeepsThePlaceUnderIt) {
    ctrl.wheelZoomMode = 2;
    ctrl.OnMouseWheel(0, 120, {300, 250});  // client (200, 200)
    EXPECT_EQ(ctrl.viewX, 40);              // 200 - 160
    EXPECT_EQ(ctrl.viewY, 40);
}

TEST_F(InputTimersTest, AWheelThatIsOffOrAMapThatIsNotDrawnLeavesTheHintRunning) {
    for (const bool off : {true, false}) {
        rig.Hover({150, 50});
        rig.Events();
        ctrl.wheelZoomMode = off ? 0 : 1;
        ctrl.mapDraw = off;
        ctrl.OnMouseWheel(0, 120, {500, 350});
        EXPECT_EQ(rig.View().Zoom, 1000);
        EXPECT_TRUE(rig.Ticks(2));
        EXPECT_THAT(rig.Events(), IsEmpty());
    }
}

TEST_F(InputTimersTest, AWheelStepAfterWhichPointsAreAddedDrawsTheRubberBandAtTheCursor) {
    rig.AddLine("B", {{100, -300}, {200, -300}, {400, -300}});
    ASSERT_EQ(ctrl.DigDatEditor("B", 1, 1, kRunEditPntAdd), 0);
    rig.Forget();
    ctrl.OnMouseWheel(0, 120, {275, 300});
    // At a zoom of 800 about the centre the view stands at (80, 60), and a map unit is 1.25 pixels: the cursor is at the map
    // point (220, -260), nearest to the second vertex and to the segment behind it.
    EXPECT_EQ(rig.VerbsWith("window Polyline"), Lines{"window Polyline [(150,300) (175,250) (400,300)]"});
    ctrl.scrollActive = true;
    ctrl.OnMouseWheel(0, 120, {275, 300});
    EXPECT_THAT(rig.VerbsWith("window Polyline"), IsEmpty()) << "not while something scrolls";
}

}  // namespace
}  // namespace orvane
