// The normal repaint: what it draws in which order, the search rectangle with its margin, the fold of what a scroll left over.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/control_rig.h"
#include "tests/support/store_test_access.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrameTest : public testing::Test {
protected:
    FrameTest() { rig.StartOneToOne(); }
    /// A line that lands at (10, 20) to (110, 70) while the view stands at (0, 0).
    void AddLine() { rig.AddLine("A", {{10, -20}, {110, -70}}); }
    ControlRig rig;
};

TEST_F(FrameTest, ModeZeroComposesAndCopies) {
    rig.ctrl->RedrawWindow(0);
    EXPECT_THAT(rig.Verbs(), ElementsAre("base SelectClipRgn (0,0,800,600) 5", "top SelectClipRgn (0,0,800,600) 5",
                                         "base PatBlt 0 0 800 600 0xFF0062", "top BitBlt 0 0 800 600 base 0 0 0xCC0020",
                                         "window BitBlt 1 1 799 599 top 1 1 0xCC0020", "window PatBlt 0 0 1 600 0x000042",
                                         "window PatBlt 0 0 800 1 0x000042", "window PatBlt 799 0 800 600 0xFF0062",
                                         "window PatBlt 0 599 800 600 0xFF0062"))
        << "the rim of one pixel at the left and the top is never copied";
}

TEST_F(FrameTest, AnyOtherModeOnlyLaysTheOverlayAnew) {
    AddLine();
    rig.ctrl->RedrawWindow(0);
    rig.Forget();
    const std::string store = DumpStore(rig.ctrl->store);
    for (const std::int32_t mode : {1, 2, -1, 77}) {
        rig.ctrl->RedrawWindow(mode);
        EXPECT_THAT(rig.Verbs(),
                    ElementsAre("base SelectClipRgn (0,0,800,600) 5", "top SelectClipRgn (0,0,800,600) 5",
                                "top BitBlt 0 0 800 600 base 0 0 0xCC0020", "window BitBlt 1 1 799 599 top 1 1 0xCC0020",
                                "window PatBlt 0 0 1 600 0x000042", "window PatBlt 0 0 800 1 0x000042",
                                "window PatBlt 799 0 800 600 0xFF0062", "window PatBlt 0 599 800 600 0xFF0062"));
        EXPECT_EQ(DumpStore(rig.ctrl->store), store) << "the store is not touched";
    }
}

TEST_F(FrameTest, ModeTwoRightAfterInitStillComposes) {
    rig.ctrl->RDMInit();
    rig.ctrl->mapDraw = false;
    rig.Paint();
    ASSERT_EQ(rig.State(), 1);
    rig.ctrl->mapDraw = true;
    rig.Forget();
    rig.ctrl->RedrawWindow(2);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_EQ(rig.State(), 2);
}

TEST_F(FrameTest, TheMapIsDrawnIntoTheBaseBufferAfterItsWhiteAndBeforeTheCopies) {
    AddLine();
    rig.ctrl->RedrawWindow(0);
    Lines steps;
    for (const std::string& line : rig.Verbs()) {
        if (line.find("SelectObject") == std::string::npos && line.find("SetROP2") == std::string::npos) steps.push_back(line);
    }
    Lines expected = ComposedFrame();
    expected.insert(expected.begin() + 3, "base Polyline [(10,20) (110,70)]");
    EXPECT_EQ(steps, expected);
}

TEST_F(FrameTest, TheMapMovesWithTheViewAndPixelsLeftOfTheWindowRoundAway) {
    AddLine();
    rig.SetView(20, 30.25);
    rig.ctrl->RedrawWindow(0);
    // x: 10 - 20 = -10, and trunc(-10 + 0.5) is -9. y: 20 - 30.25 + 0.5 truncates to -9, 70 - 30.25 + 0.5 to 40.
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("base Polyline [(-9,-9) (90,40)]"));
}

TEST_F(FrameTest, TheScaleOfTheMapIsTheDotsOfAMetreOverTheZoom) {
    AddLine();
    rig.View().Zoom = 2000;
    rig.SetView(-100, -100);
    rig.ctrl->RedrawWindow(0);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("base Polyline [(55,60) (105,85)]"));
}

TEST_F(FrameTest, RedrawDrawsOnTheContextItIsGiven) {
    RecordContext other(rig.verbs, "other");
    const std::int32_t acquired = rig.window.acquireCnt;
    rig.ctrl->Redraw(other, 1);
    EXPECT_EQ(rig.VerbsWith("other "), ScreenCopy("other"));
    EXPECT_EQ(rig.window.acquireCnt, acquired);
}

TEST_F(FrameTest, ScaleBarModeLeavesABandOfNineteenPixelsUncopied) {
    for (const std::int16_t mode : {std::int16_t{1}, std::int16_t{2}, std::int16_t{-1}}) {
        rig.ctrl->scaleBarMode = mode;
        rig.ctrl->RedrawWindow(1);
        EXPECT_THAT(rig.VerbsWith("window BitBlt"), ElementsAre("window BitBlt 1 1 780 580 top 1 1 0xCC0020"))
            << "from 1, 780 wide: the pixels from 781 on stay";
    }
}

TEST_F(FrameTest, RastOnTopWithoutARasterDrawsTheSameFrame) {
    for (const std::int32_t onTop : {0, 1, 2}) {
        rig.ctrl->rastOnTop = onTop;
        rig.ctrl->RedrawWindow(0);
        EXPECT_EQ(rig.Verbs(), ComposedFrame());
    }
}

TEST_F(FrameTest, WithDrawingTurnedOffNothingIsTouched) {
    rig.ctrl->mapDraw = false;
    rig.ctrl->pendX = 1.6;
    rig.ctrl->pendY = -2.6;
    const std::string before = DumpView(*rig.ctrl);
    for (const std::int32_t mode : {0, 1, 2}) rig.ctrl->RedrawWindow(mode);
    rig.ctrl->RDMReDraw();
    rig.Paint();
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(DumpView(*rig.ctrl), before);
}

TEST_F(FrameTest, ReDrawBeforeTheFirstPaintDoesNothing) {
    ControlRig fresh;
    fresh.ctrl->RDMReDraw();
    fresh.ctrl->RDMInit();
    fresh.ctrl->RDMReDraw();
    fresh.ctrl->RedrawWindow(0);
    EXPECT_THAT(fresh.Verbs(), IsEmpty());
    EXPECT_EQ(fresh.State(), 0);
}

TEST_F(FrameTest, EachReDrawTakesOneContextOfTheWindowFromStateOneOn) {
    const std::int32_t acquired = rig.window.acquireCnt;
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.window.acquireCnt, acquired + 1);
    rig.ctrl->RDMInit();
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.window.acquireCnt, acquired + 1) << "none in state 0";
    rig.ctrl->mapDraw = false;
    rig.Paint();
    rig.ctrl->mapDraw = true;
    ASSERT_EQ(rig.State(), 1);
    rig.Forget();
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(FrameTest, AResizedWindowIsDrawnAtItsNewSizeOnTheSameBuffers) {
    rig.window.Resize(300, 200);
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.Verbs(), ComposedFrame(300, 200));
    rig.window.Resize(1000, 900);
    rig.ctrl->RedrawWindow(1);
    EXPECT_EQ(rig.Verbs(), RelaidFrame(1000, 900));
}

TEST_F(FrameTest, TheContextsOfTheBuffersCarryTheirStateFromFrameToFrame) {
    rig.ctrl->BaseDC()->SetBkMode(BkMode::Transparent);
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.ctrl->BaseDC()->SetBkMode(BkMode::Opaque), BkMode::Transparent);
}

// --- What a scroll left over -------------------------------------------------------------------------------------------------

TEST_F(FrameTest, PendingPixelsAreFoldedIntoTheViewByWholePixelsAndWholeUnits) {
    rig.View().Zoom = 7400;  // 7.4 units a pixel
    for (const std::int32_t mode : {0, 1}) {
        rig.SetView(1000, 2000);
        rig.ctrl->pendX = 1.6;   // 2 pixels: 14.8 units, 15 in whole ones
        rig.ctrl->pendY = -2.4;  // trunc(-1.9) = -1 pixel: -7.4 units, and trunc(-6.9) = -6 in whole ones
        rig.ctrl->RedrawWindow(mode);
        EXPECT_EQ(rig.ctrl->viewX, 985);
        EXPECT_EQ(rig.ctrl->viewY, 2006);
        EXPECT_EQ(rig.ctrl->pendX, 0);
        EXPECT_EQ(rig.ctrl->pendY, 0);
    }
}

TEST_F(FrameTest, PendingPixelsBelowAHalfAreForgotten) {
    rig.SetView(1000, 2000);
    rig.ctrl->pendX = 0.49;
    rig.ctrl->pendY = -1.4;  // trunc(-0.9) = 0
    rig.ctrl->RedrawWindow(1);
    EXPECT_EQ(rig.ctrl->viewX, 1000);
    EXPECT_EQ(rig.ctrl->viewY, 2000);
    EXPECT_EQ(rig.ctrl->pendX, 0);
    EXPECT_EQ(rig.ctrl->pendY, 0);
}

TEST_F(FrameTest, PendingPixelsAreFoldedBeforeTheMapIsComposed) {
    AddLine();
    rig.ctrl->pendX = 3;
    rig.ctrl->RedrawWindow(0);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("base Polyline [(13,20) (113,70)]"));
    EXPECT_EQ(rig.ctrl->drawArea.left, -3 - 800);
}

// --- The search rectangle ------------------------------------------------------------------------------------------------------

class MarginTest : public testing::TestWithParam<std::pair<std::int32_t, std::int32_t>> {};

TEST_P(MarginTest, OfAViewOfThisWidthOrHeight) {
    const auto [size, margin] = GetParam();
    ControlRig rig(ThousandDots(), size, 600);
    rig.StartOneToOne();
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-margin, -600, size + margin, 1200}));
    rig.window.Resize(800, size);
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-800, -margin, 1600, size + margin}));
}

INSTANTIATE_TEST_SUITE_P(, MarginTest,
                         testing::Values(std::pair{1, 1}, std::pair{2999, 2999}, std::pair{3000, 3000}, std::pair{3001, 1500},
                                         std::pair{3003, 1501}, std::pair{7999, 3999}, std::pair{8000, 8000},
                                         std::pair{8001, 5000}, std::pair{20000, 5000}),
                         [](const auto& tested) { return "Size" + std::to_string(tested.param.first); });

TEST_F(FrameTest, TheSearchRectangleBeginsAtTheTruncatedView) {
    for (const auto& [x, whole] : {std::pair{12.9, 12}, {-12.9, -12}, {-0.5, 0}, {0.99, 0}}) {
        rig.SetView(x, -x);
        rig.ctrl->RedrawWindow(0);
        EXPECT_EQ(rig.ctrl->drawArea, (Rect{whole - 800, -whole - 600, whole + 1600, -whole + 1200})) << x;
    }
}

TEST(SearchRectangle, RoundsTheViewToWholeUnits) {
    ControlRig rig(DeviceNumbers{});  // 3779 dots a metre
    rig.Start();
    // 800 * (10000 / 3779) = 2116.96 and 600 * (10000 / 3779) = 1587.7.
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-2117, -1588, 2 * 2117, 2 * 1588}));
}

TEST_F(FrameTest, OnlyAComposedFrameSearches) {
    const Rect before = rig.ctrl->drawArea;
    rig.SetView(5000, 5000);
    rig.ctrl->RedrawWindow(1);
    EXPECT_EQ(rig.ctrl->drawArea, before);
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{4200, 4400, 6600, 6200}));
}

TEST_F(FrameTest, TheSearchMarksTheBlocksAndItemsOfTheMarginToo) {
    AddLine();
    rig.AddItem("A", 2, {{1500, 0}, {1599, 0}});  // right of the window, inside its margin
    rig.AddItem("A", 3, {{1700, 0}, {1800, 0}});  // beyond the margin
    rig.AddLine("B", {{9000, 0}, {9100, 0}});
    rig.Block("B").inView = 1;
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.Block("A").inView, 1);
    EXPECT_EQ(rig.Item("A", 0).clipFlg, 1);
    EXPECT_EQ(rig.Item("A", 1).clipFlg, 1);
    EXPECT_EQ(rig.Item("A", 2).clipFlg, 0);
    EXPECT_EQ(rig.Block("B").inView, 0);
    EXPECT_EQ(rig.Item("A", 0).drawnFlg, 1);
    EXPECT_EQ(rig.Item("A", 1).drawnFlg, 0) << "found by the search, but off the strips of the frame";
    EXPECT_EQ(rig.Item("A", 2).drawnFlg, 1) << "only the search wrote here; drawing left it out before its box was looked at";
}

TEST_F(FrameTest, ANegativeBlockNumberStopsSearchAndLoopAndLaterLayersKeepTheirOldFlags) {
    for (const char* code : {"A", "B", "C"}) rig.AddLine(code, {{10, -20}, {110, -70}});
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.VerbsWith("Polyline").size(), 3u);
    const std::int32_t last = rig.ctrl->store.Index()[2].block;
    const std::int32_t first = rig.ctrl->store.Index()[0].block;
    ASSERT_TRUE(StoreTestAccess::BreakSlot(rig.ctrl->store, 1));
    rig.SetView(1e6, 1e6);  // where the search would find nothing
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.ctrl->store.Block(first).inView, 0);
    EXPECT_EQ(rig.ctrl->store.Block(last).inView, 1) << "not searched";
    rig.SetView(0, 0);
    rig.Forget();
    rig.ctrl->RedrawWindow(0);
    EXPECT_EQ(rig.VerbsWith("Polyline").size(), 1u) << "and not drawn";
}

// --- Numbers beyond the device ------------------------------------------------------------

TEST_F(FrameTest, ViewsAndDataBeyondThirtyTwoBitsAreDrawnWithoutOverflow) {
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    rig.AddLine("A", {{-1e12, -1e12}, {1e12, 1e12}, {inf, -inf}, {nan, 5}, {3, nan}});
    rig.AddLine("B", {{10, -20}, {110, -70}}, 2147483647, -2147483648.0);
    for (const double x : {0.0, 2147483647.0, -2147483648.0, 1e300, -1e300, inf, -inf, nan}) {
        for (const double rotate : {0.0, 30.0, nan, inf}) {
            rig.View().Rotate = rotate;
            rig.SetView(x, -x);
            rig.ctrl->pendX = rig.ctrl->pendY = x;
            rig.ctrl->RedrawWindow(0);
            EXPECT_EQ(rig.ctrl->pendX, 0);
        }
    }
    EXPECT_EQ(rig.State(), 2);
    rig.View().Rotate = 0;
    rig.SetView(0, 0);
    rig.Forget();
    rig.ctrl->RedrawWindow(0);
    EXPECT_FALSE(rig.Verbs().empty());
}

TEST_F(FrameTest, EveryZoomAndScaleIsDrawnWithoutOverflow) {
    AddLine();
    for (const std::int32_t zoom : {0, -1, 1, 2147483647, -2147483647 - 1}) {
        for (const double scale : {0.0, 1e300, -1e-300, std::nan("")}) {
            rig.View().Zoom = zoom;
            rig.View().ScaleX = rig.View().ScaleY = scale;
            rig.SetView(1, 2);
            rig.ctrl->RedrawWindow(0);
            EXPECT_EQ(rig.ctrl->viewX, 1);
        }
    }
    EXPECT_EQ(rig.State(), 2);
}

}  // namespace
}  // namespace orvane
