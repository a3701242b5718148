// The ticks of the two held-button scrolls, and their end. One pixel is one map unit; the window stands at (100, 50) on its
// screen.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::IsEmpty;

class TimedScrollTest : public testing::Test {
protected:
    TimedScrollTest() {
        rig.StartOneToOne();
        rig.window.position = {100, 50};
        rig.window.cursorPos = {500, 350};
        rig.ctrl->scrollMode = 10;
        rig.ctrl->scrollActive = true;
        rig.window.StartTimer(1, 30);
        rig.window.StartTimer(11, 100);
        rig.window.cursorShape = CursorShape::Scroll;
    }
    void LastMouse(double x, double y) {
        rig.ctrl->lastMouseX = x;
        rig.ctrl->lastMouseY = y;
    }
    bool Ticks(std::int32_t id) const { return rig.window.Timers().contains(id); }
    ControlRig rig;
};

// --- Right button ------------------------------------------------------------------------------------------------------------

TEST_F(TimedScrollTest, ATickMovesATenthOfTheDistanceFromTheCentre) {
    LastMouse(500, 330);
    rig.ctrl->ScrollTick();
    EXPECT_EQ(rig.ctrl->viewX, 10);  // (2 * 500 - 800) / 20
    EXPECT_EQ(rig.ctrl->viewY, 3);   // (2 * 330 - 600) / 20
    EXPECT_EQ(rig.VerbsWith("ScrollDC"), Lines{"top ScrollDC -10 -3 (0,0,800,600) (0,0,800,600)"});
    EXPECT_TRUE(rig.ctrl->scrollActive);
    EXPECT_TRUE(Ticks(1));
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Scroll);
}

TEST_F(TimedScrollTest, ATickAtTheCentreStandsStillAndComposes) {
    LastMouse(400, 300);
    rig.ctrl->ScrollTick();
    EXPECT_EQ(rig.ctrl->viewX, 0);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(TimedScrollTest, ATickUpOrLeftDriftsOnePixelLessThanAsked) {
    LastMouse(360, 270);
    rig.ctrl->ScrollTick();
    // Asked for -4 and -3. Rounding -4 to whole pixels gives trunc(-3.5) = -3, and the rest is folded out of the view.
    EXPECT_EQ(rig.VerbsWith("ScrollDC"), Lines{"top ScrollDC 3 2 (0,0,800,600) (0,0,800,600)"});
    EXPECT_EQ(rig.ctrl->viewX, -3);
    EXPECT_EQ(rig.ctrl->viewY, -2);
}

TEST_F(TimedScrollTest, ATickOfLessThanHalfAPixelIsFoldedOutAgain) {
    LastMouse(401, 300);
    rig.ctrl->ScrollTick();  // 2 / 20 of a pixel
    EXPECT_EQ(rig.ctrl->viewX, 0);
    EXPECT_EQ(rig.VerbsWith("ScrollDC"), Lines{"top ScrollDC 0 0 (0,0,800,600) (0,0,800,600)"});
}

TEST_F(TimedScrollTest, ATickTakesTheMapDistanceOfTheDoubledPixelsAndThenATwentieth) {
    rig.ctrl->mapDraw = false;  // so that the view stays where the move put it
    rig.View().Zoom = 777;
    LastMouse(401, 333);
    rig.ctrl->ScrollTick();
    EXPECT_EQ(rig.ctrl->viewX, 777.0 * 2 / 1000 / 20.0);
    EXPECT_EQ(rig.ctrl->viewY, 777.0 * 66 / 1000 / 20.0);
}

TEST_F(TimedScrollTest, TheCursorIsOutsideByTheScreenPlaceOfTheClientArea) {
    const auto inside = [&](Point cursor) {
        rig.SetView(0, 0);
        rig.ctrl->scrollActive = true;
        rig.window.StartTimer(1, 30);
        rig.window.cursorPos = cursor;
        LastMouse(500, 300);
        rig.ctrl->ScrollTick();
        EXPECT_EQ(rig.ctrl->scrollActive, Ticks(1));
        EXPECT_EQ(rig.ctrl->viewX != 0, Ticks(1));
        return Ticks(1);
    };
    EXPECT_TRUE(inside({100, 50})) << "the left top pixel";
    EXPECT_TRUE(inside({899, 649}));
    EXPECT_FALSE(inside({900, 649})) << "the right edge is outside";
    EXPECT_FALSE(inside({899, 650})) << "and so is the bottom";
    EXPECT_FALSE(inside({99, 300}));
    EXPECT_FALSE(inside({300, 49}));
    EXPECT_FALSE(inside({50, 20})) << "a place that would lie inside in client coordinates";
}

TEST_F(TimedScrollTest, OutsideItStopsItsTimerAndSetsTheArrowWithoutDrawing) {
    rig.window.cursorPos = {99, 300};
    LastMouse(500, 270);
    rig.ctrl->ScrollTick();
    EXPECT_FALSE(rig.ctrl->scrollActive);
    EXPECT_FALSE(Ticks(1));
    EXPECT_TRUE(Ticks(11));
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Arrow);
    EXPECT_EQ(rig.ctrl->viewX, 0);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(TimedScrollTest, ATickIsHeldByTheLimits) {
    rig.SetArea(-1e6, 805, -1e6, 1e6);
    LastMouse(800, 300);
    rig.ctrl->ScrollTick();
    EXPECT_EQ(rig.ctrl->viewX, 5);  // 40 asked, 805 - 800 allowed
}

// --- Pan -----------------------------------------------------------------------------------------------------------------------

TEST_F(TimedScrollTest, APanTickLetsTheMapFollowTheCursor) {
    LastMouse(430, 320);
    rig.ctrl->PanTick();  // the cursor is at client (400, 300)
    EXPECT_EQ(rig.ctrl->viewX, 30);
    EXPECT_EQ(rig.ctrl->viewY, 20);
    EXPECT_EQ(rig.ctrl->lastMouseX, 400);
    EXPECT_EQ(rig.ctrl->lastMouseY, 300);
    EXPECT_EQ(rig.VerbsWith("ScrollDC"), Lines{"top ScrollDC -30 -20 (0,0,800,600) (0,0,800,600)"});
}

TEST_F(TimedScrollTest, APanTickWithoutAMoveOfTheCursorDoesNothing) {
    LastMouse(400, 300);
    rig.ctrl->PanTick();
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_TRUE(rig.ctrl->scrollActive);
    EXPECT_TRUE(Ticks(11));
}

TEST_F(TimedScrollTest, APanTickAlongOneAxisMoves) {
    LastMouse(400, 301);
    rig.ctrl->PanTick();
    EXPECT_EQ(rig.ctrl->viewX, 0);
    EXPECT_EQ(rig.ctrl->viewY, 1);
    EXPECT_EQ(rig.ctrl->lastMouseY, 300);
}

TEST_F(TimedScrollTest, APanDraggedOutKeepsItsTimerAndFollowsTheCursorAgainAfterItsReturn) {
    LastMouse(430, 300);
    rig.window.cursorPos = {900, 350};
    rig.ctrl->PanTick();
    EXPECT_FALSE(rig.ctrl->scrollActive);
    EXPECT_TRUE(Ticks(11)) << "the pan's own timer goes on";
    EXPECT_FALSE(Ticks(1)) << "it is the other timer that is stopped";
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Arrow);
    EXPECT_EQ(rig.ctrl->viewX, 0);
    EXPECT_EQ(rig.ctrl->lastMouseX, 430);
    EXPECT_THAT(rig.Verbs(), IsEmpty());

    rig.window.cursorPos = {500, 350};
    rig.ctrl->PanTick();
    EXPECT_EQ(rig.ctrl->viewX, 30);
    EXPECT_FALSE(rig.ctrl->scrollActive) << "from then on";
    EXPECT_TRUE(Ticks(11));
}

TEST_F(TimedScrollTest, APanIsHeldByTheLimitsAndForgetsTheRest) {
    rig.SetArea(-1e6, 805, -1e6, 1e6);
    LastMouse(500, 300);
    rig.ctrl->PanTick();
    EXPECT_EQ(rig.ctrl->viewX, 5);
    EXPECT_EQ(rig.ctrl->lastMouseX, 400);
}

TEST_F(TimedScrollTest, MousePlacesThatAreNoNumbersLeaveNoneInTheView) {
    for (const double v : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        LastMouse(v, v);
        rig.ctrl->ScrollTick();
        LastMouse(v, v);
        rig.ctrl->PanTick();
        EXPECT_TRUE(rig.ctrl->viewX == rig.ctrl->viewX && rig.ctrl->viewY == rig.ctrl->viewY);
    }
}

// --- The end -------------------------------------------------------------------------------------------------------------------

TEST_F(TimedScrollTest, TheEndStopsItsTimerComposesAndSetsTheArrow) {
    rig.ctrl->EndScroll(1);
    EXPECT_FALSE(Ticks(1));
    EXPECT_TRUE(Ticks(11));
    EXPECT_FALSE(rig.ctrl->scrollActive);
    EXPECT_EQ(rig.window.cursorShape, CursorShape::Arrow);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());

    rig.ctrl->EndScroll(11);
    EXPECT_FALSE(Ticks(11));
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(TimedScrollTest, TheEndBringsTheBaseBufferInLineWithWhatWasScrolled) {
    rig.AddLine("A", {{10, -20}, {110, -70}});
    rig.ctrl->RDMReDraw();
    rig.Forget();
    LastMouse(405, 307);
    rig.ctrl->PanTick();
    EXPECT_THAT(rig.VerbsWith("base "), IsEmpty()) << "the scroll draws in the top buffer only";
    rig.ctrl->EndScroll(11);
    EXPECT_EQ(rig.VerbsWith("base Polyline"), Lines{"base Polyline [(5,13) (105,63)]"});
}

}  // namespace
}  // namespace orvane
