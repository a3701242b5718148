// The scroll repaint: what moves, what is drawn anew, and what becomes of the fraction of a pixel. One pixel is one map unit; the
// client area is 800 x 600, and the last composed frame stands at (0, 0).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScrollFrameTest : public testing::Test {
protected:
    ScrollFrameTest() { rig.StartOneToOne(); }
    /// The view is set to its new place and the frame drawn, with the labels of the verbs put on.
    void Scroll(double oldX, double oldY, double newX, double newY) {
        rig.SetView(newX, newY);
        const auto dc = rig.window.AcquireDC();
        rig.ctrl->RedrawScroll(*dc, oldX, oldY);
    }
    ControlRig rig;
};

/// Everything that a scroll frame of an empty map writes.
Lines ScrollFrame(const std::string& shift, const std::string& patA, const std::string& patB, const std::string& stripA,
                  const std::string& stripB) {
    Lines lines{"top ScrollDC " + shift + " (0,0,800,600) (0,0,800,600)",
                "top PatBlt " + patA + " 0xFF0062",
                "top PatBlt " + patB + " 0xFF0062",
                "top ExcludeClipRect 0 0 800 600",
                "top SelectClipRgn " + stripA + " 2",
                "top SelectClipRgn " + stripB + " 2",
                "top SelectClipRgn (0,0,800,600) 5"};
    const Lines copied = ScreenCopy();
    lines.insert(lines.end(), copied.begin(), copied.end());
    return lines;
}

// --- Strips ------------------------------------------------------------

TEST_F(ScrollFrameTest, ToTheRightUncoversTheRightEdgeAndTakesTheWholeHeightAsItsOtherStrip) {
    Scroll(0, 0, 10, 0);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("-10 0", "790 0 10 600", "0 0 800 600", "(790,0,800,600)", "(0,0,800,600)"));
}

TEST_F(ScrollFrameTest, ToTheLeftUncoversTheLeftEdge) {
    Scroll(10, 0, 0, 0);
    // -10 pixels round to trunc(-9.5) = -9, while the strip's width is 10 pixels rounded: 10.
    EXPECT_EQ(rig.Verbs(), ScrollFrame("9 0", "0 0 10 600", "0 0 800 600", "(0,0,10,600)", "(0,0,800,600)"));
}

TEST_F(ScrollFrameTest, BackwardTheStripIsRoundedByItselfAndNotByTheShift) {
    Scroll(130.75, 230.625, 120, 220);
    // trunc(-10.75 + 0.5) = -10 and trunc(-10.625 + 0.5) = -10 are shifted; 10.75 and 10.625 round to strips of 11.
    EXPECT_EQ(rig.Verbs(), ScrollFrame("10 10", "0 0 11 600", "0 0 800 11", "(0,0,11,600)", "(0,0,800,11)"));
}

TEST_F(ScrollFrameTest, DownUncoversTheLowerEdge) {
    Scroll(0, 0, 0, 25);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("0 -25", "0 0 800 600", "0 575 800 25", "(0,0,800,600)", "(0,575,800,600)"));
}

TEST_F(ScrollFrameTest, UpUncoversTheUpperEdge) {
    Scroll(0, 25, 0, 0);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("0 24", "0 0 800 600", "0 0 800 25", "(0,0,800,600)", "(0,0,800,25)"));
}

TEST_F(ScrollFrameTest, DiagonallyUncoversTwoStrips) {
    Scroll(0, 0, 10, 25);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("-10 -25", "790 0 10 600", "0 575 800 25", "(790,0,800,600)", "(0,575,800,600)"));
    Scroll(10, 25, 0, 0);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("9 24", "0 0 10 600", "0 0 800 25", "(0,0,10,600)", "(0,0,800,25)"));
    Scroll(0, 25, 10, 0);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("-10 24", "790 0 10 600", "0 0 800 25", "(790,0,800,600)", "(0,0,800,25)"));
}

TEST_F(ScrollFrameTest, ByNothingTakesTheWholeAreaTwice) {
    Scroll(5, 6, 5, 6);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("0 0", "0 0 800 600", "0 0 800 600", "(0,0,800,600)", "(0,0,800,600)"));
}

TEST_F(ScrollFrameTest, ByMoreThanTheWindowBeginsTheStripLeftOfIt) {
    Scroll(0, 0, 900, 0);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("-900 0", "-100 0 900 600", "0 0 800 600", "(-100,0,800,600)", "(0,0,800,600)"));
}

TEST_F(ScrollFrameTest, ByLessThanHalfAPixelHasAnEmptyStrip) {
    Scroll(0, 0, 0.25, 0);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("0 0", "800 0 0 600", "0 0 800 600", "(800,0,800,600)", "(0,0,800,600)"));
}

TEST_F(ScrollFrameTest, CountsInPixelsOfTheScale) {
    rig.View().Zoom = 4000;  // 4 units a pixel
    Scroll(0, 0, 40, 100);
    EXPECT_EQ(rig.Verbs(), ScrollFrame("-10 -25", "790 0 10 600", "0 575 800 25", "(790,0,800,600)", "(0,575,800,600)"));
}

TEST_F(ScrollFrameTest, TheBaseBufferAndTheStateStayAsTheyWere) {
    rig.AddLine("A", {{10, -20}, {110, -70}});
    Scroll(0, 0, 10, 25);
    EXPECT_THAT(rig.VerbsWith("base "), IsEmpty());
    EXPECT_EQ(rig.State(), 2);
}

TEST_F(ScrollFrameTest, ScaleBarModeLeavesABandOfNineteenPixelsUncopied) {
    rig.ctrl->scaleBarMode = 1;
    Scroll(0, 0, 10, 0);
    EXPECT_EQ(rig.VerbsWith("window BitBlt"), Lines{"window BitBlt 1 1 780 580 top 1 1 0xCC0020"});
}

TEST_F(ScrollFrameTest, RastOnTopWithoutARasterDrawsTheSameFrame) {
    for (const std::int32_t onTop : {0, 1}) {
        rig.ctrl->rastOnTop = onTop;
        Scroll(0, 0, 10, 0);
        EXPECT_EQ(rig.Verbs(), ScrollFrame("-10 0", "790 0 10 600", "0 0 800 600", "(790,0,800,600)", "(0,0,800,600)"));
    }
}

// --- When nothing is drawn ------------------------------------------------------------

TEST_F(ScrollFrameTest, WithDrawingTurnedOffNothingIsTouched) {
    rig.ctrl->mapDraw = false;
    rig.SetView(10, 0);
    rig.ctrl->pendX = 0.25;
    const std::string before = DumpView(*rig.ctrl);
    Scroll(0, 0, 10, 0);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(DumpView(*rig.ctrl), before);
}

TEST_F(ScrollFrameTest, BeforeTheFirstComposedFrameNothingIsTouched) {
    rig.ctrl->RDMInit();
    rig.ctrl->mapDraw = false;
    rig.Paint();
    rig.ctrl->mapDraw = true;
    ASSERT_EQ(rig.State(), 1);
    rig.SetView(10, 0);
    rig.Forget();
    const std::string before = DumpView(*rig.ctrl);
    Scroll(0, 0, 10, 0);
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(DumpView(*rig.ctrl), before);
}

// --- What is drawn ------------------------------------------------------------

TEST_F(ScrollFrameTest, TheMapIsDrawnIntoTheTopBufferBetweenTheTwoClips) {
    rig.AddLine("A", {{810, -20}, {880, -70}});
    rig.ctrl->RDMReDraw();
    rig.Forget();
    Scroll(0, 0, 100, 0);
    Lines steps;
    for (const std::string& line : rig.Verbs()) {
        if (line.find("SelectObject") == std::string::npos && line.find("SetROP2") == std::string::npos) steps.push_back(line);
    }
    Lines expected = ScrollFrame("-100 0", "700 0 100 600", "0 0 800 600", "(700,0,800,600)", "(0,0,800,600)");
    expected.insert(expected.begin() + 6, "top Polyline [(710,20) (780,70)]");
    EXPECT_EQ(steps, expected);
}

TEST_F(ScrollFrameTest, APurelyHorizontalOrVerticalScrollDrawsTheWholeOfTheTopBuffer) {
    rig.AddLine("A", {{100, -100}, {150, -150}});  // nowhere near an edge
    rig.ctrl->RDMReDraw();
    rig.Forget();
    Scroll(0, 0, 10, 0);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(90,100) (140,150)]"));
    Scroll(10, 0, 10, 20);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(90,80) (140,130)]"));
}

TEST_F(ScrollFrameTest, ADiagonalScrollDrawsOnlyWhatMeetsTheTwoStrips) {
    rig.AddLine("A", {{100, -100}, {150, -150}});  // in neither strip
    rig.AddItem("A", 2, {{802, -100}, {808, -150}});
    rig.AddItem("A", 3, {{100, -605}, {150, -610}});
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.Item("A", 0).drawnFlg, 1);
    rig.Forget();
    Scroll(0, 0, 10, 20);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(792,80) (798,130)]", "top Polyline [(90,585) (140,590)]"));
    EXPECT_EQ(rig.Item("A", 0).drawnFlg, 0);
    EXPECT_EQ(rig.Item("A", 1).drawnFlg, 1);
}

// --- The fraction of a pixel ------------------------------------------------------------

TEST_F(ScrollFrameTest, WhatTheShiftCannotShowIsAddedToWhatIsDrawnAndThenFoldedOutOfTheView) {
    rig.AddLine("A", {{100, -100}, {150, -150}});
    rig.ctrl->RDMReDraw();
    rig.Forget();
    Scroll(0, 0, 10.375, 0);
    // 10 pixels are shifted and 0.375 remain. (100 - 10.375) + 0.375 = 90: the new drawing lies exactly on the shifted picture.
    EXPECT_THAT(rig.VerbsWith("top Polyline"), ElementsAre("top Polyline [(90,100) (140,150)]"));
    EXPECT_EQ(rig.ctrl->viewX, 10) << "a drawn scroll moves the view by whole pixels";
    EXPECT_EQ(rig.ctrl->pendX, 0);
}

TEST_F(ScrollFrameTest, BackwardTheRestIsMoreThanAPixel) {
    rig.AddLine("A", {{100, -100}, {150, -150}});
    rig.ctrl->RDMReDraw();
    rig.Forget();
    Scroll(10.375, 0, 0, 0);
    // trunc(-10.375 + 0.5) = -9, and -1.375 remain. The strip is 10 wide. 100 - 0 - 1.375 + 0.5 truncates to 99.
    const Lines lines = rig.Verbs();
    EXPECT_THAT(lines, testing::Contains("top ScrollDC 9 0 (0,0,800,600) (0,0,800,600)"));
    EXPECT_THAT(lines, testing::Contains("top PatBlt 0 0 10 600 0xFF0062"));
    EXPECT_THAT(lines, testing::Contains("top Polyline [(99,100) (149,150)]"));
    EXPECT_EQ(rig.ctrl->viewX, 1.375) << "9 pixels from 10.375";
}

TEST_F(ScrollFrameTest, AFractionThatWasPendingIsCarriedOn) {
    rig.AddLine("A", {{100, -100}, {150, -150}});
    rig.ctrl->RDMReDraw();
    rig.Forget();
    rig.ctrl->pendX = 0.5;
    rig.ctrl->pendY = -0.25;
    Scroll(0, 0, 10.25, 20);
    // 0.5 + 0.25 = 0.75 and -0.25 + 0. x: 100 - 10.25 + 0.75 = 90.5, half up to 91. y: 100 - 20 - 0.25 = 79.75 to 80.
    EXPECT_THAT(rig.VerbsWith("Polyline"), IsEmpty()) << "it lies in neither strip";
    EXPECT_EQ(rig.ctrl->viewX, 9.5);
    EXPECT_EQ(rig.ctrl->viewY, 20.25);
    EXPECT_EQ(rig.ctrl->pendX, 0);
    EXPECT_EQ(rig.ctrl->pendY, 0);

    rig.ctrl->pendX = 0.5;
    rig.ctrl->pendY = -0.25;
    Scroll(0, 20, 10.25, 20);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(91,80) (141,130)]"));
}

TEST_F(ScrollFrameTest, TheFractionIsFoldedInMapUnits) {
    rig.View().Zoom = 4000;  // 4 units a pixel
    Scroll(0, 0, 41, 0);     // 10.25 pixels
    EXPECT_EQ(rig.ctrl->viewX, 40);
}

TEST_F(ScrollFrameTest, ManySmallScrollsDriftByNoFraction) {
    double x = 0;
    for (int i = 0; i < 100; ++i) {
        Scroll(x, 0, x + 2.3, 0);
        x = rig.ctrl->viewX;
    }
    EXPECT_NEAR(x, 200, 1e-9) << "each of them is shown, and stands, as 2 pixels";
}

// --- The search ------------------------------------------------------------

TEST_F(ScrollFrameTest, InsideTheMarginTheLastSearchStands) {
    const Rect searched{-800, -600, 1600, 1200};
    ASSERT_EQ(rig.ctrl->drawArea, searched);
    rig.AddLine("A", {{100, -100}, {150, -150}});
    rig.ctrl->RDMReDraw();
    rig.Item("A", 0).clipFlg = 0;  // a flag of the last search
    rig.Forget();
    for (const auto& [x, y] : {std::pair{800.0, 0.0}, {-800.0, 0.0}, {0.0, 600.0}, {0.0, -600.0}, {800.9, 600.9}}) {
        Scroll(0, 0, x, y);
        EXPECT_EQ(rig.ctrl->drawArea, searched) << x << ' ' << y;
    }
    EXPECT_THAT(rig.VerbsWith("Polyline"), IsEmpty());
}

TEST_F(ScrollFrameTest, OutsideOfTheMarginOnAnySideItSearchesAnew) {
    const auto searchedAfter = [&](double x, double y) {
        rig.ctrl->drawArea = {-800, -600, 1600, 1200};
        Scroll(0, 0, x, y);
        return rig.ctrl->drawArea;
    };
    EXPECT_EQ(searchedAfter(801, 0), (Rect{1, -600, 2401, 1200}));
    EXPECT_EQ(searchedAfter(-801, 0), (Rect{-1601, -600, 799, 1200}));
    EXPECT_EQ(searchedAfter(0, 601), (Rect{-800, 1, 1600, 1801}));
    EXPECT_EQ(searchedAfter(0, -601), (Rect{-800, -1201, 1600, 599}));
}

TEST_F(ScrollFrameTest, ANewSearchSetsTheFlags) {
    rig.AddLine("A", {{2000, -100}, {2050, -150}});
    rig.ctrl->RDMReDraw();
    EXPECT_EQ(rig.Block("A").inView, 0);
    rig.Forget();
    Scroll(0, 0, 1900, 0);
    EXPECT_EQ(rig.Block("A").inView, 1);
    EXPECT_THAT(rig.VerbsWith("Polyline"), ElementsAre("top Polyline [(100,100) (150,150)]"));
}

TEST_F(ScrollFrameTest, ASearchOfAForeignFrameIsNotEnoughForTheScreen) {
    ForeignContext printer(ThousandDots());
    rig.ctrl->UserDcDrawEx(printer.handle, 0, 0, 100, 100, 50000, 0, 1000, 0);
    ASSERT_EQ(rig.ctrl->drawArea, (Rect{49950, -50, 50050, 50}));
    Scroll(0, 0, 10, 0);
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-790, -600, 1610, 1200}));
}

// --- After it ------------------------------------------------------------

TEST_F(ScrollFrameTest, APaintInBetweenShowsTheStaleBaseBufferUntilAComposedFrame) {
    Scroll(0, 0, 10, 0);
    rig.Forget();
    rig.Paint();
    EXPECT_EQ(rig.Verbs(), RelaidFrame()) << "copied from the base buffer, which was not scrolled";
}

// --- Numbers beyond the device ------------------------------------------------------------

TEST_F(ScrollFrameTest, PositionsBeyondThirtyTwoBitsAreDrawnWithoutOverflow) {
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    rig.AddLine("A", {{10, -20}, {110, -70}});
    const double positions[] = {0.0, 1.0, 2147483647.0, -2147483648.0, 1e300, -1e300, inf, -inf, nan};
    for (const double from : positions) {
        for (const double to : positions) {
            Scroll(from, -from, to, -to);
            EXPECT_EQ(rig.ctrl->pendX, 0);
        }
    }
    EXPECT_EQ(rig.State(), 2);
}

TEST_F(ScrollFrameTest, AViewThatBecameEndlessIsBroughtBackByTheNextJump) {
    const double inf = std::numeric_limits<double>::infinity();
    for (const double old : {std::nan(""), inf, -inf}) {
        Scroll(old, old, 10, 20);
        rig.ctrl->JumpTo(5, 6);
        EXPECT_EQ(rig.ctrl->viewX, -395) << old;
        EXPECT_EQ(rig.ctrl->viewY, -306) << old;
    }
    EXPECT_EQ(rig.ctrl->drawArea, (Rect{-395 - 800, -306 - 600, 405 + 800, 294 + 600}));
}

TEST_F(ScrollFrameTest, EveryZoomIsDrawnWithoutOverflow) {
    for (const std::int32_t zoom : {0, -1, 1, 2147483647, -2147483647 - 1}) {
        rig.View().Zoom = zoom;
        Scroll(0, 0, 1e9, -1e9);
        EXPECT_TRUE(std::isfinite(rig.ctrl->viewX)) << zoom;
    }
}

}  // namespace
}  // namespace orvane
