// The Zoom property, the zoom at a pixel and the wheel. A pixel is 10 map units unless told otherwise: 10000 / 1000.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ZoomTest : public testing::Test {
protected:
    ZoomTest() { rig.Start(); }
    ControlRig rig;
};

// --- The property ----------------------------------------------------------------------------------------------------------

TEST_F(ZoomTest, AZoomOfNothingOrLessReadsBackAsOneAndTheEventTellsIt) {
    for (const std::int32_t written : {0, -1, -2147483647 - 1}) {
        rig.ctrl->SetZoom(written);
        EXPECT_EQ(rig.View().Zoom, 1);
        EXPECT_THAT(rig.events.Zooms(), ElementsAre(1));
    }
}

TEST_F(ZoomTest, AZoomOfSixtyMillionsReadsBackAsFiftyAndTheEventTellsIt) {
    for (const std::int32_t written : {60000000, 50000001, 2147483647}) {
        rig.ctrl->SetZoom(written);
        EXPECT_EQ(rig.View().Zoom, 50000000);
        EXPECT_THAT(rig.events.Zooms(), ElementsAre(50000000));
    }
}

TEST_F(ZoomTest, TheEndsOfTheRangeAreTakenAsTheyAre) {
    for (const std::int32_t written : {1, 2, 49999999, 50000000}) {
        rig.ctrl->SetZoom(written);
        EXPECT_EQ(rig.View().Zoom, written);
        EXPECT_THAT(rig.events.Zooms(), ElementsAre(written));
    }
}

TEST_F(ZoomTest, TheClampedZoomIsWhatTheViewIsMovedBy) {
    rig.SetView(100, -200);
    rig.ctrl->SetZoom(-7);
    // w = 8000, h = 6000; at a zoom of 1 the view is 0.8 by 0.6, and its middle stays where it was.
    EXPECT_EQ(rig.ctrl->viewX, 100 - (1 * 8000.0 / 2.0 / 10000 - 4000.0));
    EXPECT_EQ(rig.ctrl->viewY, -200 - (1 * 6000.0 / 2.0 / 10000 - 3000.0));
}

TEST_F(ZoomTest, TheMiddleOfTheWindowKeepsItsPlace) {
    rig.SetView(1000, -500);
    rig.ctrl->SetZoom(5000);
    EXPECT_EQ(rig.ctrl->viewX, 3000);  // half of 8000 becomes half of 4000: 2000 to the right
    EXPECT_EQ(rig.ctrl->viewY, 1000);  // half of 6000 becomes half of 3000: 1500 down
    EXPECT_EQ(rig.ctrl->ScreenToWorldX(400), 5000);
    EXPECT_EQ(rig.ctrl->ScreenToWorldY(300), -2500);
}

TEST(ZoomBits, HalvesBeforeItDividesByTheOldZoom) {
    ControlRig rig(DeviceNumbers{});  // DotPerM 3779, so that nothing is round
    rig.Start();
    int differ = 0;
    for (const std::int32_t old : {10000, 777, 31, 999983}) {
        for (const std::int32_t z : {3, 1234, 50000, 7654321, 11}) {
            rig.View().Zoom = old;
            rig.SetView(12.345, -67.89);
            rig.ctrl->SetZoom(z);
            const double w = old * 800.0 / 3779, h = old * 600.0 / 3779;
            EXPECT_EQ(rig.ctrl->viewX, 12.345 - (z * w / 2.0 / old - w / 2.0)) << old << " to " << z;
            EXPECT_EQ(rig.ctrl->viewY, -67.89 - (z * h / 2.0 / old - h / 2.0)) << old << " to " << z;
            // Other orders, to be sure that these figures tell them apart.
            differ += rig.ctrl->viewX != 12.345 - (z * w / old / 2.0 - w / 2.0) ||
                      rig.ctrl->viewX != 12.345 - (z / 2.0 * (w / old) - w / 2.0);
        }
    }
    EXPECT_GT(differ, 0);
}

TEST_F(ZoomTest, AZoomWriteDoesNotRepaint) {
    const std::int32_t acquired = rig.window.acquireCnt, asked = rig.window.invalidateCnt;
    rig.ctrl->SetZoom(5000);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(rig.window.acquireCnt, acquired);
    EXPECT_EQ(rig.window.invalidateCnt, asked);
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(ZoomTest, AZoomWriteDoesNotLookAtTheAreaLimits) {
    rig.SetArea(-10, 10, -10, 10);
    rig.ctrl->SetZoom(20000);
    EXPECT_EQ(rig.ctrl->viewX, -4000);
    EXPECT_EQ(rig.ctrl->viewY, -3000);
}

TEST_F(ZoomTest, TheEventFindsViewAndZoomAtTheirNewValuesAndTheControlNotYetModified) {
    bool modifiedInside = true;
    double viewInside = 0;
    std::int32_t zoomInside = 0;
    rig.events.onEvent = [&](std::int32_t) {
        modifiedInside = rig.ctrl->Modified();
        viewInside = rig.ctrl->viewX;
        zoomInside = rig.View().Zoom;
    };
    rig.ctrl->SetZoom(5000);
    EXPECT_EQ(zoomInside, 5000);
    EXPECT_EQ(viewInside, 2000);
    EXPECT_FALSE(modifiedInside);
    EXPECT_TRUE(rig.ctrl->Modified());
}

TEST_F(ZoomTest, WritingTheSameZoomFiresAndMarksButMovesNothing) {
    rig.SetView(1.5, 2.5);
    rig.ctrl->SetZoom(10000);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(10000));
    EXPECT_TRUE(rig.ctrl->Modified());
    EXPECT_EQ(rig.ctrl->viewX, 1.5);
    EXPECT_EQ(rig.ctrl->viewY, 2.5);
}

TEST(ZoomBeforeTheFirstPaint, SetsTheZoomAndLeavesNoNaNInTheView) {
    ControlRig rig;
    rig.ctrl->RDMInit();
    rig.ctrl->SetZoom(5000);
    EXPECT_EQ(rig.View().Zoom, 5000);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(5000));
    EXPECT_EQ(rig.ctrl->viewX, 0.0) << "no device tells how large a pixel is: the view stays";
    EXPECT_EQ(rig.ctrl->viewY, 0.0);
    rig.ctrl->ZoomAtPixel(2500, 100, 100);
    EXPECT_EQ(rig.View().Zoom, 2500);
    EXPECT_EQ(rig.ctrl->viewX, 0.0);
    EXPECT_EQ(rig.ctrl->viewY, 0.0);
}

// --- At a pixel ------------------------------------------------------------------------------------------------------------

TEST_F(ZoomTest, ZoomAtAPixelKeepsTheMapPointUnderIt) {
    rig.SetView(1000, -500);
    rig.ctrl->ZoomAtPixel(5000, 100, 50);
    EXPECT_EQ(rig.ctrl->viewX, 1500);  // 1000 - (100 * 5 - 100 * 10)
    EXPECT_EQ(rig.ctrl->viewY, -250);  // -500 - (50 * 5 - 50 * 10)
    EXPECT_EQ(rig.View().Zoom, 5000);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(5000));
    EXPECT_TRUE(rig.ctrl->Modified());
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(ZoomTest, ZoomAtAPixelClampsAsThePropertyDoes) {
    rig.ctrl->ZoomAtPixel(0, 100, 50);
    EXPECT_EQ(rig.View().Zoom, 1);
    EXPECT_EQ(rig.ctrl->viewX, -(1 * 100.0 / 1000 - 1000.0));
    rig.ctrl->ZoomAtPixel(50000001, 0, 0);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(1, 50000000));
}

TEST(ZoomBits, ZoomAtAPixelTakesTheDifferenceOfTwoDistances) {
    ControlRig rig(DeviceNumbers{});
    rig.Start();
    rig.SetView(12.345, -67.89);
    rig.ctrl->ZoomAtPixel(7654, 123, 457);
    EXPECT_EQ(rig.ctrl->viewX, 12.345 - (7654 * 123.0 / 3779 - 10000 * 123.0 / 3779));
    EXPECT_EQ(rig.ctrl->viewY, -67.89 - (7654 * 457.0 / 3779 - 10000 * 457.0 / 3779));
}

TEST_F(ZoomTest, ZoomAtFarPixelsStaysFinite) {
    rig.ctrl->ZoomAtPixel(50000000, -2147483647 - 1, 2147483647);
    EXPECT_TRUE(std::isfinite(rig.ctrl->viewX) && std::isfinite(rig.ctrl->viewY));
}

// --- The wheel's settings --------------------------------------------------------------------------------------------------

TEST_F(ZoomTest, AWheelRateInItsRangeSetsBothFactors) {
    rig.ctrl->SetWheelZoom(2, 0.25);
    EXPECT_EQ(rig.ctrl->wheelZoomMode, 2);
    EXPECT_EQ(rig.ctrl->wheelRateUp, 1.25);
    EXPECT_EQ(rig.ctrl->wheelRateDown, 0.75);
    rig.ctrl->SetWheelZoom(1, 0.5);
    EXPECT_EQ(rig.ctrl->wheelRateUp, 1.5);
    EXPECT_EQ(rig.ctrl->wheelRateDown, 0.5);
    rig.ctrl->SetWheelZoom(0, 0.01);
    EXPECT_EQ(rig.ctrl->wheelZoomMode, 0);
    EXPECT_EQ(rig.ctrl->wheelRateUp, 1.0 + 0.01);
    EXPECT_EQ(rig.ctrl->wheelRateDown, 1.0 - 0.01);
}

TEST_F(ZoomTest, AWheelRateOutOfRangeSwitchesTheModeAndKeepsTheRates) {
    for (const double rate : {0.6, 0.500001, 0.00999, 0.0, -0.1, 1e300, std::nan(""), std::numeric_limits<double>::infinity()}) {
        rig.ctrl->wheelZoomMode = 1;
        rig.ctrl->SetWheelZoom(2, rate);
        EXPECT_EQ(rig.ctrl->wheelZoomMode, 2) << rate;
        EXPECT_EQ(rig.ctrl->wheelRateUp, 1.2) << rate;
        EXPECT_EQ(rig.ctrl->wheelRateDown, 0.8) << rate;
    }
}

TEST_F(ZoomTest, AWheelModeOutOfRangeChangesNothing) {
    for (const std::int32_t mode : {3, -1, 2147483647, -2147483647 - 1}) {
        rig.ctrl->SetWheelZoom(mode, 0.1);
        EXPECT_EQ(rig.ctrl->wheelZoomMode, 1);
        EXPECT_EQ(rig.ctrl->wheelRateUp, 1.2);
    }
}

// --- Wheel steps -----------------------------------------------------------------------------------------------------------

TEST_F(ZoomTest, AWheelStepAwayZoomsInAboutTheCentreAndRepaintsOnce) {
    EXPECT_TRUE(rig.ctrl->WheelZoom(120, {3, 4}));
    EXPECT_EQ(rig.View().Zoom, 8000);
    EXPECT_EQ(rig.ctrl->viewX, 4000 - 3200);
    EXPECT_EQ(rig.ctrl->viewY, 3000 - 2400);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(8000));
    EXPECT_TRUE(rig.ctrl->Modified());
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(ZoomTest, AWheelStepTowardTheUserZoomsOutAndSoDoesAStepOfNothing) {
    EXPECT_TRUE(rig.ctrl->WheelZoom(-120, {0, 0}));
    EXPECT_EQ(rig.View().Zoom, 12000);
    rig.View().Zoom = 10000;
    EXPECT_TRUE(rig.ctrl->WheelZoom(0, {0, 0}));
    EXPECT_EQ(rig.View().Zoom, 12000);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(12000, 12000));
}

TEST_F(ZoomTest, WheelStepsTruncate) {
    rig.View().Zoom = 999;
    rig.ctrl->WheelZoom(1, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 799);  // 799.2
    rig.ctrl->WheelZoom(-1, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 958);  // 958.8
}

TEST_F(ZoomTest, AtZoomOneAStepTowardTheUserGivesTwoAndAStepAwayStaysAtOne) {
    rig.View().Zoom = 1;
    rig.ctrl->WheelZoom(120, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 1) << "0.8 truncates to 0, which is clamped";
    rig.ctrl->WheelZoom(-120, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 2) << "1.2 truncates to 1, plus 1";
    rig.View().Zoom = 1;
    rig.ctrl->WheelZoom(0, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 2) << "a step of nothing counts as one toward the user";
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(1, 2, 2));
}

TEST_F(ZoomTest, SmallZoomsStillMove) {
    rig.View().Zoom = 4;
    rig.ctrl->WheelZoom(-120, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 5) << "4.8 truncates to 4, plus 1";
    rig.ctrl->SetWheelZoom(1, 0.01);
    rig.View().Zoom = 99;
    rig.ctrl->WheelZoom(-120, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 100) << "99.99";
}

TEST_F(ZoomTest, TheWheelStopsAtTheGreatestZoomAndLooksAtNoAreaLimit) {
    rig.View().Zoom = 50000000;
    rig.ctrl->WheelZoom(-120, {0, 0});
    EXPECT_EQ(rig.View().Zoom, 50000000);
    rig.View().Zoom = 10000;
    rig.SetView(0, 0);
    rig.SetArea(-10, 10, -10, 10);
    rig.ctrl->WheelZoom(-120, {0, 0});
    EXPECT_EQ(rig.ctrl->viewX, -800) << "4000 - 4800, far outside";
}

TEST_F(ZoomTest, TheWheelAtTheCursorCountsFromTheWindowsOwnCorner) {
    rig.window.position = {30, 40};
    rig.ctrl->SetWheelZoom(2, 0.5);
    EXPECT_TRUE(rig.ctrl->WheelZoom(120, {130, 90}));
    EXPECT_EQ(rig.View().Zoom, 5000);
    EXPECT_EQ(rig.ctrl->viewX, 500);  // pixel 100: 1000 - 500
    EXPECT_EQ(rig.ctrl->viewY, 250);  // pixel 50
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(5000));
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(ZoomTest, TheWheelAtACursorFarAwayDoesNotOverflow) {
    rig.ctrl->SetWheelZoom(2, 0.5);
    rig.window.position = {30, -40};
    EXPECT_TRUE(rig.ctrl->WheelZoom(120, {-2147483647 - 1, 2147483647}));
    EXPECT_TRUE(std::isfinite(rig.ctrl->viewX) && std::isfinite(rig.ctrl->viewY));
}

TEST_F(ZoomTest, TheWheelStopsTheHintTimerAndNoOther) {
    for (const std::int32_t id : {1, 2, 11}) rig.window.StartTimer(id, 1000);
    rig.ctrl->WheelZoom(120, {0, 0});
    EXPECT_FALSE(rig.window.Timers().contains(2));
    EXPECT_EQ(rig.window.Timers().size(), 2u);
}

TEST_F(ZoomTest, TheEventComesBeforeTheRepaint) {
    std::size_t drawnBefore = 99;
    rig.events.onEvent = [&](std::int32_t) { drawnBefore = rig.verbs->Size(); };
    rig.ctrl->WheelZoom(120, {0, 0});
    EXPECT_EQ(drawnBefore, 0u);
    EXPECT_GT(rig.verbs->Size(), 0u);
}

TEST_F(ZoomTest, TheWheelTurnsFromStateOneOn) {
    rig.ctrl->RDMInit();
    rig.ctrl->mapDraw = false;
    rig.Paint();
    rig.ctrl->mapDraw = true;
    ASSERT_EQ(rig.State(), 1);
    rig.Forget();
    EXPECT_TRUE(rig.ctrl->WheelZoom(120, {0, 0}));
    EXPECT_EQ(rig.View().Zoom, 8000);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(ZoomTest, TheWheelLeavesTheMessageToOthersWhileItIsOffOrNothingIsDrawn) {
    const auto leavesAll = [&](const char* why) {
        rig.window.StartTimer(2, 1000);
        const std::string before = DumpView(*rig.ctrl);
        EXPECT_FALSE(rig.ctrl->WheelZoom(120, {0, 0})) << why;
        EXPECT_EQ(DumpView(*rig.ctrl), before) << why;
        EXPECT_TRUE(rig.window.Timers().contains(2)) << why;
        EXPECT_THAT(rig.Verbs(), IsEmpty()) << why;
    };
    rig.ctrl->wheelZoomMode = 0;
    leavesAll("the mode is off");
    rig.ctrl->wheelZoomMode = 1;
    rig.ctrl->mapDraw = false;
    leavesAll("drawing is off");
    rig.ctrl->RDMInit();
    leavesAll("nothing was painted since the init");
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

}  // namespace
}  // namespace orvane
