// Frames that a host has drawn into a context of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kDegree = 0.01745328;

/// A printer of 600 dots an inch whose page is 200 mm wide: 6000 * 1000 / 200 are 30000 dots a metre, 6.25 times the screen's
/// inch.
DeviceNumbers Printer() {
    DeviceNumbers numbers;
    numbers.technology = 2;
    numbers.horzRes_px = 6000;
    numbers.horzSize_mm = 200;
    numbers.logPixelsX_dpi = 600;
    return numbers;
}

class UserDcTest : public testing::Test {
protected:
    UserDcTest() {
        rig.StartOneToOne();
        rig.AddLine("A", {{1000, 2000}, {1050, 1980}});
    }
    ControlRig rig;
    ForeignContext same{ThousandDots()};
    ForeignContext printer{Printer()};
};

// --- The two calls ------------------------------------------------------------

TEST_F(UserDcTest, UserDcDrawExReadsItsRectangleByTheNames) {
    rig.ctrl->UserDcDrawEx(same.handle, 1, 2, 300, 400, 0, 0, 1000, 0);  // top left bottom right
    EXPECT_THAT(same.VerbsWith("PatBlt"), ElementsAre("PatBlt 0 0 400 300 0xFF0062"));
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-200, -150, 200, 150}));
}

TEST_F(UserDcTest, UserDcDrawTakesTopAsLeftAndBottomAsRight) {
    rig.ctrl->UserDcDraw(same.handle, 1, 2, 300, 400, 0);  // left top right bottom
    EXPECT_THAT(same.VerbsWith("PatBlt"), ElementsAre("PatBlt 0 0 300 400 0xFF0062"));
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-150, -200, 150, 200}));
}

TEST_F(UserDcTest, UserDcDrawExCentresOnTheMapPointGiven) {
    rig.SetView(77, 88);
    rig.ctrl->UserDcDrawEx(same.handle, 0, 0, 300, 400, 1000, 2000, 1000, 1);
    // The map point (1000, 2000) comes to the middle of 400 x 300.
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (250,170)]"));
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{800, -2150, 1200, -1850}));
}

TEST_F(UserDcTest, UserDcDrawCentresOnTheCornerOfTheControlsOwnView) {
    rig.SetView(1000, -2000);
    rig.ctrl->UserDcDraw(same.handle, 0, 0, 400, 300, 1);
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (250,170)]"));
}

TEST_F(UserDcTest, UserDcDrawTakesTheCurrentZoom) {
    rig.SetView(1000, -2000);
    rig.View().Zoom = 500;
    rig.ctrl->UserDcDraw(same.handle, 0, 0, 400, 300, 1);
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (300,190)]"));
}

TEST_F(UserDcTest, UserDcDrawExTakesItsOwnZoom) {
    rig.ctrl->UserDcDrawEx(same.handle, 0, 0, 300, 400, 1000, 2000, 2000, 1);
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (225,160)]"));
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{600, -2300, 1400, -1700})) << "800 x 600 units";
    EXPECT_EQ(rig.View().Zoom, 1000);
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

TEST_F(UserDcTest, TypeZeroWhitensTheTargetFirstAndAnyOtherLeavesItsBackground) {
    rig.ctrl->UserDcDrawEx(same.handle, 0, 0, 300, 400, 1000, 2000, 1000, 0);
    const Lines lines = same.Verbs();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front(), "PatBlt 0 0 400 300 0xFF0062");
    for (const std::int32_t type : {1, 2, -1}) {
        rig.ctrl->UserDcDrawEx(same.handle, 0, 0, 300, 400, 1000, 2000, 1000, type);
        const Lines verbs = same.Verbs();
        EXPECT_EQ(verbs, Lines(lines.begin() + 1, lines.end())) << "the same but for the white";
    }
}

TEST_F(UserDcTest, NoSuchContextDrawsNothing) {
    const std::string before = DumpView(*rig.ctrl);
    const std::int32_t acquired = rig.window.acquireCnt;
    for (const std::int32_t handle : {0, -1, 987654}) {
        rig.ctrl->UserDcDraw(handle, 0, 0, 300, 400, 0);
        rig.ctrl->UserDcDrawEx(handle, 0, 0, 300, 400, 0, 0, 1000, 0);
    }
    EXPECT_EQ(DumpView(*rig.ctrl), before);
    EXPECT_EQ(rig.window.acquireCnt, acquired);
}

// --- The frame ------------------------------------------------------------

TEST_F(UserDcTest, TheBuffersAndTheScreenAreNotTouched) {
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 400, 300}, 1000, -2000, 1000, 0);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
}

TEST_F(UserDcTest, TheWindowsContextServesAsReferenceAndIsGivenBack) {
    const std::int32_t acquired = rig.window.acquireCnt;
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 400, 300}, 1000, -2000, 1000, 0);
    EXPECT_EQ(rig.window.acquireCnt, acquired + 1);
}

TEST_F(UserDcTest, TheOriginIsTheCentreLessAHalfInWholeUnits) {
    // w = 401 and h = 301: halves are 200 and 150. Origin (1000.5 - 200, -2000.25 - 150).
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 401, 301}, 1000.5, -2000.25, 1000, 1);
    // x: 1000 - 800.5 = 199.5 and 249.5, rounded up; y: -2000 + 2150.25 = 150.25 and 170.25.
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (250,170)]"));
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{800, -2150, 1200, -1850})) << "truncated centre, no margin";
}

TEST_F(UserDcTest, LeftAndTopOfTheRectangleMoveNothing) {
    rig.ctrl->DrawUserDc(same.dc, {100, 50, 400, 300}, 1000, -2000, 1000, 1);
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{800, -2150, 1200, -1850}));
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (250,170)]"));
}

TEST_F(UserDcTest, WhatLiesOffTheRectangleIsNotDrawn) {
    rig.ctrl->DrawUserDc(same.dc, {260, 0, 400, 300}, 1000, -2000, 1000, 1);  // as client and strips it begins at 260
    EXPECT_THAT(same.VerbsWith("Polyline"), IsEmpty());
    EXPECT_EQ(rig.Item("A", 0).drawnFlg, 0);
}

TEST_F(UserDcTest, TheNumbersOfTheForeignDeviceDecideScaleAndPens) {
    rig.ctrl->store.SetLayLineSize("A", 2);
    rig.ctrl->DrawUserDc(printer.dc, {0, 0, 6000, 3000}, 1000, -2000, 10000, 1);
    // 30000 dots a metre at 1:10000 are 3 dots a unit: w = 2000 and h = 1000, the centre at (3000, 1500).
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{0, -2500, 2000, -1500}));
    const Lines lines = printer.Verbs();
    EXPECT_THAT(lines, testing::Contains("Polyline [(3000,1500) (3150,1560)]"));
    // 600 / 96 = 6.25, and its whole part is 6: a pen of 2 becomes one of 12.
    EXPECT_THAT(lines, testing::Contains(HasSubstr("SelectObject pen(0x0 12 0xDCDCDC)")));
}

TEST_F(UserDcTest, TheNumbersOfTheScreenAreRestoredButForTheDpiOfTheDevice) {
    rig.ctrl->DrawUserDc(printer.dc, {0, 0, 6000, 3000}, 1000, -2000, 10000, 0);
    EXPECT_EQ(rig.View().Zoom, 1000);
    EXPECT_EQ(rig.ctrl->dotPerM, 1000);
    EXPECT_EQ(rig.View().DotPerM, 1000);
    EXPECT_EQ(rig.View().DpiRatio, 1.0);
    EXPECT_EQ(rig.View().ScreenDpi, 96);
    EXPECT_EQ(rig.View().DeviceDpi, 600) << "kept of the last host's device";

    rig.ctrl->store.SetLayLineSize("A", 2);
    rig.SetView(900, -2100);
    rig.ctrl->RDMReDraw();
    const Lines lines = rig.Verbs();
    EXPECT_THAT(lines, testing::Contains("base Polyline [(100,100) (150,120)]")) << "the screen is drawn as before";
    EXPECT_THAT(lines, testing::Contains(HasSubstr("SelectObject pen(0x0 2 0xDCDCDC)")));
}

TEST_F(UserDcTest, ViewAndModifiedStayAndPendingPixelsAreCleared) {
    rig.SetView(77.5, 88.5);
    rig.ctrl->pendX = 0.75;
    rig.ctrl->pendY = 3;
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 400, 300}, 1000, -2000, 1000, 1);
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (250,170)]")) << "drawn without them";
    EXPECT_EQ(rig.ctrl->pendX, 0);
    EXPECT_EQ(rig.ctrl->pendY, 0);
    EXPECT_EQ(rig.ctrl->viewX, 77.5);
    EXPECT_EQ(rig.ctrl->viewY, 88.5);
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(UserDcTest, TheFlagsOfTheForeignFrameStayUntilTheNextComposedOne) {
    rig.AddLine("B", {{100, -100}, {150, -150}});
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.Block("B").inView, 1);
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 400, 300}, 1000, -2000, 1000, 1);
    EXPECT_EQ(rig.Block("A").inView, 1);
    EXPECT_EQ(rig.Block("B").inView, 0);
    rig.ctrl->RedrawWindow(1);
    EXPECT_EQ(rig.Block("B").inView, 0) << "a frame that composes nothing searches nothing";
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.Block("B").inView, 1);
}

TEST_F(UserDcTest, TheCentreIsTurnedWithTheView) {
    rig.View().Rotate = 30;
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 400, 300}, 1000, -2000, 1000, 1);
    // The map point (1000, 2000) is turned like the centre and so lies in the middle; its neighbour (50, 20 down) is turned by a.
    const double a = -30 * kDegree;
    const int dx = static_cast<int>(50 * std::cos(a) - 20 * std::sin(a) + 0.5);  // 43.30 + 10
    const int dy = static_cast<int>(50 * std::sin(a) + 20 * std::cos(a) - 0.5);  // -25 + 17.32
    const std::string second = "(" + std::to_string(200 + dx) + "," + std::to_string(150 + dy) + ")";
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) " + second + "]"));
}

TEST_F(UserDcTest, RastOnTopWithoutARasterDrawsTheSameFrame) {
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 400, 300}, 1000, -2000, 1000, 0);
    const Lines lines = same.Verbs();
    rig.ctrl->rastOnTop = 0;
    rig.ctrl->DrawUserDc(same.dc, {0, 0, 400, 300}, 1000, -2000, 1000, 0);
    EXPECT_EQ(same.Verbs(), lines);
}

// --- When nothing is drawn ------------------------------------------------------------

TEST_F(UserDcTest, WithDrawingTurnedOffHostContextAndViewStayAsTheyAre) {
    rig.ctrl->mapDraw = false;
    rig.ctrl->pendX = 0.75;
    rig.ctrl->pendY = 3;
    const std::string before = DumpView(*rig.ctrl);
    rig.ctrl->UserDcDraw(printer.handle, 0, 0, 300, 400, 0);
    rig.ctrl->UserDcDrawEx(printer.handle, 0, 0, 300, 400, 0, 0, 5000, 0);
    EXPECT_THAT(printer.Verbs(), IsEmpty());
    EXPECT_EQ(DumpView(*rig.ctrl), before);
}

TEST_F(UserDcTest, BeforeTheFirstPaintTheHostContextIsLeftUndrawn) {
    ControlRig fresh;
    fresh.ctrl->RDMInit();
    fresh.ctrl->UserDcDrawEx(printer.handle, 0, 0, 300, 400, 0, 0, 5000, 0);
    EXPECT_THAT(printer.Verbs(), IsEmpty());
    EXPECT_EQ(fresh.View().Zoom, 10000);
}

TEST_F(UserDcTest, FromStateOneOnTheHostContextIsDrawn) {
    ControlRig fresh;
    fresh.ctrl->RDMInit();
    fresh.ctrl->mapDraw = false;
    fresh.Paint();
    fresh.ctrl->mapDraw = true;
    ASSERT_EQ(fresh.State(), 1);
    fresh.AddLine("A", {{1000, 2000}, {1050, 1980}});
    fresh.ctrl->UserDcDrawEx(same.handle, 0, 0, 300, 400, 1000, 2000, 1000, 1);
    EXPECT_THAT(same.VerbsWith("Polyline"), ElementsAre("Polyline [(200,150) (250,170)]"));
    EXPECT_EQ(fresh.State(), 1) << "the buffers still wait for their first map";
}

TEST_F(UserDcTest, AContextWithoutMillimetresIsLeftUndrawnAndChangesNothing) {
    DeviceNumbers numbers = Printer();
    numbers.horzSize_mm = 0;
    ForeignContext flat(numbers);
    rig.ctrl->UserDcDrawEx(flat.handle, 0, 0, 300, 400, 1000, 2000, 5000, 0);
    EXPECT_THAT(flat.Verbs(), IsEmpty());
    EXPECT_EQ(rig.View().Zoom, 1000);
    EXPECT_EQ(rig.ctrl->dotPerM, 1000);
    EXPECT_EQ(rig.View().DotPerM, 1000);
    EXPECT_EQ(rig.View().DeviceDpi, 96);
    EXPECT_EQ(rig.View().DpiRatio, 1.0);
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-800, -600, 1600, 1200}));
}

TEST_F(UserDcTest, AZoomOfNothingOrLessChangesNothingAfterwards) {
    for (const std::int32_t zoom : {0, -1, -1000, -2147483647 - 1}) {
        rig.ctrl->UserDcDrawEx(same.handle, 0, 0, 300, 400, 1000, 2000, zoom, 0);
        EXPECT_EQ(rig.View().Zoom, 1000);
        EXPECT_EQ(rig.View().DotPerM, 1000);
        EXPECT_EQ(rig.View().DpiRatio, 1.0);
        EXPECT_EQ(rig.ctrl->viewX, 0);
        EXPECT_THAT(rig.events.Zooms(), IsEmpty());
    }
    EXPECT_FALSE(rig.ctrl->Modified());
}

// --- Numbers beyond the device ------------------------------------------------------------

TEST_F(UserDcTest, CentresAndRectanglesBeyondThirtyTwoBitsAreDrawnWithoutOverflow) {
    constexpr std::int32_t kLeast = -2147483647 - 1, kMost = 2147483647;
    const double inf = std::numeric_limits<double>::infinity();
    for (const double x : {0.0, 1e300, -1e300, inf, -inf, std::nan("")}) {
        for (const double rotate : {0.0, 45.0}) {
            rig.View().Rotate = rotate;
            rig.ctrl->UserDcDrawEx(same.handle, kLeast, kLeast, kMost, kMost, x, -x, 1000, 0);
            rig.ctrl->UserDcDrawEx(same.handle, kMost, kMost, kLeast, kLeast, x, x, 50000000, 1);
            rig.ctrl->UserDcDrawEx(printer.handle, 0, 0, -5, 0, x, 2000, kMost, 1);
        }
    }
    EXPECT_EQ(rig.View().Zoom, 1000);
}

TEST_F(UserDcTest, AnAbsurdDeviceIsDrawnWithoutOverflow) {
    rig.ctrl->store.SetLayLineSize("A", 2147483647);
    DeviceNumbers numbers = Printer();
    for (const std::int32_t size : {-1, 1, 2147483647, -2147483647 - 1}) {
        for (const std::int32_t dpi : {0, -1, 2147483647, -2147483647 - 1}) {
            numbers.horzRes_px = 2147483647;
            numbers.horzSize_mm = size;
            numbers.logPixelsX_dpi = dpi;
            ForeignContext absurd(numbers);
            rig.ctrl->UserDcDrawEx(absurd.handle, 0, 0, 300, 400, 1000, 2000, 1000, 0);
            EXPECT_EQ(rig.View().DotPerM, 1000);
            EXPECT_EQ(rig.View().DpiRatio, 1.0);
        }
    }
}

}  // namespace
}  // namespace orvane
