// The clamped scroll. One pixel is one map unit: the view is 800 wide and 600 high.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::IsEmpty;

class MoveViewTest : public testing::Test {
protected:
    MoveViewTest() {
        rig.StartOneToOne();
        rig.SetArea(-1000, 2000, -1000, 2000);
    }
    /// The view after a move without a repaint from (x, y) by (dx, dy).
    Point Moved(double x, double y, double dx, double dy) {
        rig.SetView(x, y);
        EXPECT_EQ(rig.ctrl->MoveView(dx, dy, false), 1);
        return {static_cast<std::int32_t>(rig.ctrl->viewX), static_cast<std::int32_t>(rig.ctrl->viewY)};
    }
    ControlRig rig;
};

TEST_F(MoveViewTest, InsideTheLimitsItMovesByWhatIsAsked) {
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{40, 60}));
    EXPECT_EQ(Moved(10, 20, -30, -40), (Point{-20, -20}));
    EXPECT_EQ(Moved(10, 20, 0, -40), (Point{10, -20}));
}

TEST_F(MoveViewTest, RightAndBottomStopIt) {
    EXPECT_EQ(Moved(1000, 1000, 199, 399), (Point{1199, 1399}));
    EXPECT_EQ(Moved(1000, 1000, 200, 400), (Point{1200, 1400})) << "exactly at 2000 - 800 and 2000 - 600";
    EXPECT_EQ(Moved(1000, 1000, 500, 500), (Point{1200, 1400}));
}

TEST_F(MoveViewTest, LeftAndTopStopItWhenTheNewPositionIsFartherFromZeroThanTheOldOne) {
    EXPECT_EQ(Moved(-900, -900, -500, -500), (Point{-1000, -1000}));
    EXPECT_EQ(Moved(10, 10, -1500, -1500), (Point{-1000, -1000}));
    EXPECT_EQ(Moved(-900, -900, -100, -100), (Point{-1000, -1000})) << "exactly on the limit is at or below it";
}

TEST_F(MoveViewTest, EachAxisHasItsOwnLimits) {
    rig.SetArea(-1000, 2000, -700, 1500);
    EXPECT_EQ(Moved(-600, -600, -200, -200), (Point{-800, -700}));
    EXPECT_EQ(Moved(-600, -600, -500, -50), (Point{-1000, -650}));
    EXPECT_EQ(Moved(1000, 800, 150, 150), (Point{1150, 900}));
    rig.SetArea(-700, 1500, -1000, 2000);
    EXPECT_EQ(Moved(-600, -600, -200, -200), (Point{-700, -800}));
    EXPECT_EQ(Moved(600, 1300, 150, 50), (Point{700, 1350}));
}

TEST_F(MoveViewTest, NearTheLowerLimitItCreepsByAddingTheOldPosition) {
    rig.SetArea(0, 2000, 0, 2000);
    EXPECT_EQ(Moved(100, 100, -150, -150), (Point{50, 50})) << "-50 is at or below 0 and nearer to 0 than 100: -50 + 100";
    EXPECT_EQ(Moved(100, 100, -199, -101), (Point{1, 99}));
    EXPECT_EQ(Moved(100, 100, -200, -250), (Point{0, 0})) << "100 is not below 100";
    EXPECT_EQ(Moved(100, 100, -100, -100), (Point{100, 100})) << "0 is at the limit, and 0 + 100 is where it was";
    rig.SetArea(-50, 2000, -50, 2000);
    EXPECT_EQ(Moved(100, 100, -200, -199), (Point{-50, 1})) << "as far from 0 as before is not nearer";
    rig.SetArea(20, 2000, 20, 2000);
    EXPECT_EQ(Moved(100, 100, -80, -90), (Point{120, 110})) << "20 + 100 leads away, 10 + 100 too";
}

TEST_F(MoveViewTest, AViewAsLargeAsALimitStandsAtTheLesserOneOfItsAxis) {
    rig.SetArea(-1000, 2000, -1000, 600);
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{40, -1000})) << "600 is not above the height of 600";
    rig.SetArea(-1000, 2000, -1000, 601);
    EXPECT_EQ(Moved(10, 0, 30, 0.5).y, 0);
    rig.SetArea(-1000, 800, -1000, 2000);
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{-1000, 60}));
    rig.SetArea(-1000, 800, -1000, 600);
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{-1000, -1000})) << "equal does not exceed: it moves";
    rig.SetArea(-1000, 700, -1000, 600);
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{-1000, -1000})) << "only the width exceeds";
    rig.SetArea(-1000, 800, -1000, 500);
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{-1000, -1000})) << "only the height exceeds";
}

TEST_F(MoveViewTest, AViewThatExceedsBothLimitsDoesNotMoveAtAll) {
    rig.SetArea(-1000, 799, -1000, 599);
    rig.SetView(10, 20);
    EXPECT_EQ(rig.ctrl->MoveView(30, 40, true), 0);
    EXPECT_EQ(rig.ctrl->viewX, 10);
    EXPECT_EQ(rig.ctrl->viewY, 20);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(MoveViewTest, TheSizeIsComparedWithTheLimitsThemselvesAndNotWithTheArea) {
    rig.SetArea(-100000, 700, -100000, 500);  // an area far larger than the view
    rig.SetView(10, 20);
    EXPECT_EQ(rig.ctrl->MoveView(30, 40, false), 0);
    rig.SetArea(1000, 1100, 1000, 1100);  // one far smaller: 1100 is above 800 and 600
    EXPECT_EQ(Moved(1000, 1000, 30, 30), (Point{300, 500})) << "1030 + 800 is not below 1100: 1100 - 800";
}

TEST_F(MoveViewTest, OneExceededLimitAloneDoesNotStopIt) {
    rig.SetArea(-1000, 700, -1000, 2000);
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{-1000, 60}));
    rig.SetArea(-1000, 2000, -1000, 500);
    EXPECT_EQ(Moved(10, 20, 30, 40), (Point{40, -1000}));
}

TEST_F(MoveViewTest, WithoutARedrawNothingIsDrawn) {
    const std::int32_t acquired = rig.window.acquireCnt;
    Moved(10, 20, 30, 40);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(rig.window.acquireCnt, acquired);
}

TEST_F(MoveViewTest, AMoveScrollsThePictureOnAContextOfItsOwn) {
    rig.SetView(10, 20);
    const std::int32_t acquired = rig.window.acquireCnt;
    EXPECT_EQ(rig.ctrl->MoveView(30, 0, true), 1);
    EXPECT_EQ(rig.VerbsWith("ScrollDC"), Lines{"top ScrollDC -30 0 (0,0,800,600) (0,0,800,600)"});
    EXPECT_EQ(rig.window.acquireCnt, acquired + 1);
}

TEST_F(MoveViewTest, AMoveByNothingComposesTheWholeMap) {
    rig.SetView(10, 20);
    EXPECT_EQ(rig.ctrl->MoveView(0, 0, true), 1);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(MoveViewTest, AMoveAgainstALimitComposesTheWholeMap) {
    rig.SetView(1200, 1400);
    EXPECT_EQ(rig.ctrl->MoveView(50, 50, true), 1);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(MoveViewTest, AMoveAlongOneAxisAloneScrolls) {
    rig.SetView(1200, 0);
    EXPECT_EQ(rig.ctrl->MoveView(50, 7, true), 1);
    EXPECT_EQ(rig.VerbsWith("ScrollDC"), Lines{"top ScrollDC 0 -7 (0,0,800,600) (0,0,800,600)"});
}

TEST_F(MoveViewTest, BeforeTheFirstFrameTheViewMovesUndrawn) {
    ControlRig fresh;
    fresh.ctrl->RDMInit();
    EXPECT_EQ(fresh.ctrl->MoveView(30, 40, true), 1);
    EXPECT_EQ(fresh.ctrl->viewX, 30);
    EXPECT_EQ(fresh.ctrl->viewY, 40);
    EXPECT_THAT(fresh.Verbs(), IsEmpty());
}

TEST_F(MoveViewTest, WithDrawingTurnedOffTheViewMovesUndrawn) {
    rig.ctrl->mapDraw = false;
    rig.SetView(10, 20);
    EXPECT_EQ(rig.ctrl->MoveView(30, 40, true), 1);
    EXPECT_EQ(rig.ctrl->viewX, 40);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(MoveViewTest, AMoveByNoNumberLeavesNoneInTheView) {
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    for (const double d : {nan, inf, -inf, 1e300, -1e300}) {
        rig.SetView(10, 20);
        EXPECT_EQ(rig.ctrl->MoveView(d, d, true), 1);
        EXPECT_TRUE(std::isfinite(rig.ctrl->viewX) && std::isfinite(rig.ctrl->viewY)) << d;
    }
}

TEST_F(MoveViewTest, LimitsWithoutBoundsAreDrawnWithoutOverflow) {
    const double inf = std::numeric_limits<double>::infinity();
    rig.AddLine("A", {{10, -20}, {110, -70}});
    rig.SetArea(-1e300, 1e300, -1e300, 1e300);
    rig.SetView(0, 0);
    for (const double d : {1e300, -1e299, 1e10, -1e18}) rig.ctrl->MoveView(d, -d, true);
    rig.SetArea(inf, inf, -inf, -inf);
    rig.SetView(0, 0);
    for (const double d : {1e300, -1e299, 1.0}) {
        rig.ctrl->MoveView(d, -d, true);
        rig.ctrl->JumpTo(d, d);
    }
    EXPECT_EQ(rig.State(), 2);
}

}  // namespace
}  // namespace orvane
