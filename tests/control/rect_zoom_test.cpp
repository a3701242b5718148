// What the operator's zoom rectangle does to the view. One pixel is one map unit, the client area 800 x 600.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/control_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RectZoomTest : public testing::Test {
protected:
    RectZoomTest() { rig.StartOneToOne(); }
    void Drag(RectZoomMode mode, Point start, Point end) { DragRaw(static_cast<std::int32_t>(mode), start, end); }
    void DragRaw(std::int32_t mode, Point start, Point end) {
        rig.ctrl->rectZoomMode = mode;
        rig.ctrl->RectZoomTo(start, end);
    }
    ControlRig rig;
};

TEST_F(RectZoomTest, UpFillsTheWindowWithTheRectangle) {
    rig.SetView(1000, -2000);
    Drag(RectZoomMode::ZoomUp, {100, 150}, {500, 350});
    // 400 / 800 * 1000 = 500 and 200 / 600 * 1000 = 333.3: the larger.
    EXPECT_EQ(rig.View().Zoom, 500);
    EXPECT_EQ(rig.ctrl->viewX, 1100);
    EXPECT_EQ(rig.ctrl->viewY, -1850);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(500));
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_EQ(rig.ctrl->rectZoomMode, 0);
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(RectZoomTest, UpRoundsToTheNearestWholeZoom) {
    Drag(RectZoomMode::ZoomUp, {0, 0}, {10, 200});
    EXPECT_EQ(rig.View().Zoom, 333);  // 200 / 600 * 1000 = 333.3
    rig.View().Zoom = 1000;
    Drag(RectZoomMode::ZoomUp, {0, 0}, {10, 100});
    EXPECT_EQ(rig.View().Zoom, 167);  // 166.7
}

TEST(RectZoomBits, TakesMapDistancesAndNotPixels) {
    // At 3779 dots a metre the distances of these pixels differ in their last bits, and the zooms lie at a half: half of 1035 by
    // pixels would be 517.5 and become 518.
    for (const auto& [zoom, reached] : {std::pair{1035, 517}, {1049, 524}, {1259, 629}}) {
        ControlRig rig{DeviceNumbers{}};
        rig.Start();
        rig.View().Zoom = zoom;
        rig.ctrl->rectZoomMode = 10;
        rig.ctrl->RectZoomTo({100, 100}, {500, 110});
        EXPECT_EQ(rig.View().Zoom, reached);
        EXPECT_EQ(rig.ctrl->viewX, zoom * 100.0 / 3779);
        EXPECT_EQ(rig.ctrl->viewY, zoom * 100.0 / 3779);
    }
}

TEST_F(RectZoomTest, DownTurnsDrawingOnWhateverItWas) {
    rig.ctrl->mapDraw = false;
    Drag(RectZoomMode::ZoomDown, {100, 150}, {500, 350});
    EXPECT_TRUE(rig.ctrl->mapDraw);
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
}

TEST_F(RectZoomTest, CornersAreTakenInAnyOrder) {
    for (const auto& [start, end] :
         {std::pair<Point, Point>{{500, 350}, {100, 150}}, {{100, 350}, {500, 150}}, {{500, 150}, {100, 350}}}) {
        rig.View().Zoom = 1000;
        rig.SetView(0, 0);
        Drag(RectZoomMode::ZoomUp, start, end);
        EXPECT_EQ(rig.View().Zoom, 500);
        EXPECT_EQ(rig.ctrl->viewX, 100);
        EXPECT_EQ(rig.ctrl->viewY, 150);
    }
}

TEST_F(RectZoomTest, TheViewStandsAtItsNewPlaceWhenTheEventFires) {
    double x = 0, y = 0;
    std::size_t drawn = 99;
    rig.events.onEvent = [&](std::int32_t) {
        x = rig.ctrl->viewX;
        y = rig.ctrl->viewY;
        drawn = rig.verbs->Size();
    };
    Drag(RectZoomMode::ZoomUp, {100, 150}, {500, 350});
    EXPECT_EQ(x, 100);
    EXPECT_EQ(y, 150);
    EXPECT_EQ(drawn, 0u);
}

TEST_F(RectZoomTest, ASideWithoutWidthCountsAsNothing) {
    Drag(RectZoomMode::ZoomUp, {100, 150}, {100, 450});
    EXPECT_EQ(rig.View().Zoom, 500);  // 300 / 600 * 1000
    rig.View().Zoom = 1000;
    Drag(RectZoomMode::ZoomUp, {100, 150}, {300, 150});
    EXPECT_EQ(rig.View().Zoom, 250);  // 200 / 800 * 1000
    rig.View().Zoom = 1000;
    Drag(RectZoomMode::ZoomDown, {100, 150}, {100, 450});
    EXPECT_EQ(rig.View().Zoom, 2000);  // 600 / 300 * 1000
    rig.View().Zoom = 1000;
    Drag(RectZoomMode::ZoomDown, {100, 150}, {300, 150});
    EXPECT_EQ(rig.View().Zoom, 4000);  // 800 / 200 * 1000
}

TEST_F(RectZoomTest, UpTurnsNothingAndLooksAtNoLimit) {
    rig.View().Rotate = 90;
    rig.SetArea(-1, 1, -1, 1);
    Drag(RectZoomMode::ZoomUp, {100, 150}, {500, 350});
    EXPECT_EQ(rig.ctrl->viewX, 100);
    EXPECT_EQ(rig.ctrl->viewY, 150);
}

TEST_F(RectZoomTest, UpToLessThanOneEndsTheModeAndRepaintsWithTheViewAsItWas) {
    rig.View().Zoom = 1;
    rig.SetView(10, 20);
    Drag(RectZoomMode::ZoomUp, {100, 150}, {500, 350});  // half of 1
    EXPECT_EQ(rig.View().Zoom, 1);
    EXPECT_EQ(rig.ctrl->viewX, 10);
    EXPECT_EQ(rig.ctrl->viewY, 20);
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_EQ(rig.ctrl->rectZoomMode, 0);
}

TEST_F(RectZoomTest, UpOfTheWholeWindowAtZoomOneIsInRange) {
    rig.View().Zoom = 1;
    Drag(RectZoomMode::ZoomUp, {0, 0}, {800, 600});
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(1));
}

TEST_F(RectZoomTest, DownShrinksTheWindowIntoTheRectangleAndTellsItTwice) {
    rig.SetView(1000, -2000);
    Drag(RectZoomMode::ZoomDown, {100, 150}, {500, 350});
    // 800 / 400 * 1000 = 2000 and 600 / 200 * 1000 = 3000: the larger. The rectangle's middle is pixel (300, 250), map (1300,
    // 1750). The jump puts it in the middle: view (1300 - 400, -1750 - 300); the zoom keeps it there: minus (1200 - 400, 900 -
    // 300).
    EXPECT_EQ(rig.View().Zoom, 3000);
    EXPECT_EQ(rig.ctrl->viewX, 100);
    EXPECT_EQ(rig.ctrl->viewY, -2650);
    EXPECT_THAT(rig.events.Zooms(), ElementsAre(3000, 3000));
    EXPECT_EQ(rig.Verbs(), ComposedFrame()) << "the jump paints nothing";
    EXPECT_TRUE(rig.ctrl->mapDraw);
    EXPECT_TRUE(rig.ctrl->Modified());
    EXPECT_EQ(rig.ctrl->rectZoomMode, 0);
}

TEST_F(RectZoomTest, DownTakesWholeHalvesOfThePixels) {
    Drag(RectZoomMode::ZoomDown, {101, 151}, {500, 350});
    // (101 + 500) / 2 = 300 and (151 + 350) / 2 = 250. 800 / 399 * 1000 = 2005, 600 / 199 * 1000 = 3015.08: 3015.
    EXPECT_EQ(rig.View().Zoom, 3015);
    EXPECT_EQ(rig.ctrl->viewX, -100 - (3015 * 800.0 / 2.0 / 1000 - 400.0));
    EXPECT_EQ(rig.ctrl->viewY, -50 - (3015 * 600.0 / 2.0 / 1000 - 300.0));
}

TEST_F(RectZoomTest, DownRoundsToTheNearestWholeZoom) {
    Drag(RectZoomMode::ZoomDown, {0, 0}, {800, 207});
    EXPECT_EQ(rig.View().Zoom, 2899);  // 600 / 207 * 1000 = 2898.55
}

TEST_F(RectZoomTest, DownHasMarkedTheControlAlreadyWhenTheFirstEventFires) {
    std::vector<bool> marked;
    rig.events.onEvent = [&](std::int32_t) { marked.push_back(rig.ctrl->Modified()); };
    Drag(RectZoomMode::ZoomDown, {100, 150}, {500, 350});
    EXPECT_THAT(marked, ElementsAre(true, true)) << "by the two writes of MapDraw";
}

TEST_F(RectZoomTest, DownJumpsWithinTheLimits) {
    rig.SetArea(-1e6, 600, -1e6, 1e6);
    Drag(RectZoomMode::ZoomDown, {100, 150}, {500, 350});
    // The jump to x = 300 would be at -100, and 800 - 100 exceeds 600: view x is 600 - 800 = -200 before the zoom takes 800 more.
    EXPECT_EQ(rig.ctrl->viewX, -1000);
}

TEST_F(RectZoomTest, DownOutOfRangeLeavesTheViewEndsTheModeAndRepaints) {
    rig.View().Zoom = 40000000;
    rig.SetView(5, 6);
    Drag(RectZoomMode::ZoomDown, {100, 150}, {500, 350});  // 120 million
    EXPECT_EQ(rig.View().Zoom, 40000000);
    EXPECT_EQ(rig.ctrl->viewX, 5);
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
    EXPECT_FALSE(rig.ctrl->Modified());
    EXPECT_EQ(rig.Verbs(), ComposedFrame());
    EXPECT_EQ(rig.ctrl->rectZoomMode, 0);
}

TEST_F(RectZoomTest, TheGreatestZoomItselfIsOutOfRange) {
    rig.View().Zoom = 25000000;
    Drag(RectZoomMode::ZoomDown, {0, 0}, {400, 300});  // exactly 50000000
    EXPECT_EQ(rig.View().Zoom, 25000000);
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

TEST_F(RectZoomTest, AnUnknownModeOnlyRepaintsAndIsReset) {
    for (const std::int32_t mode : {5, -1, 30}) {
        const std::string before = DumpView(*rig.ctrl);
        DragRaw(mode, {100, 150}, {500, 350});
        EXPECT_EQ(DumpView(*rig.ctrl), before);
        EXPECT_EQ(rig.Verbs(), ComposedFrame());
        EXPECT_EQ(rig.ctrl->rectZoomMode, 0);
    }
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

TEST_F(RectZoomTest, ASmallDragOnlyPutsThePictureBackAndKeepsTheMode) {
    for (const std::int32_t mode : {10, 20}) {
        const std::string before = DumpView(*rig.ctrl);
        DragRaw(mode, {100, 150}, {104, 146});
        EXPECT_THAT(rig.Verbs(), ElementsAre("window BitBlt 0 0 800 600 top 0 0 0xCC0020"));
        EXPECT_EQ(rig.ctrl->rectZoomMode, mode);
        rig.ctrl->rectZoomMode = 0;
        EXPECT_EQ(DumpView(*rig.ctrl), before);
    }
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
}

TEST_F(RectZoomTest, ADragThatEndsWhereItBeganDrawsNothingAtAll) {
    Drag(RectZoomMode::ZoomUp, {100, 150}, {100, 150});
    EXPECT_THAT(rig.Verbs(), IsEmpty());
    EXPECT_EQ(rig.ctrl->rectZoomMode, 10);
}

TEST_F(RectZoomTest, ASmallDragBeforeTheFirstPaintHasNoPictureToPutBack) {
    ControlRig fresh;
    fresh.ctrl->RDMInit();
    fresh.ctrl->rectZoomMode = 10;
    fresh.ctrl->RectZoomTo({100, 150}, {104, 150});
    EXPECT_THAT(fresh.Verbs(), IsEmpty());
    EXPECT_EQ(fresh.ctrl->rectZoomMode, 10);
}

TEST_F(RectZoomTest, FivePixelsEitherWayAreADrag) {
    Drag(RectZoomMode::ZoomUp, {100, 150}, {105, 150});
    EXPECT_EQ(rig.View().Zoom, 6);  // 5 / 800 * 1000 = 6.25
    rig.View().Zoom = 1000;
    Drag(RectZoomMode::ZoomUp, {100, 150}, {104, 155});
    EXPECT_EQ(rig.View().Zoom, 8);  // 5 / 600 * 1000 = 8.3
}

TEST_F(RectZoomTest, ARectangleOfEndlessSizeDoesNotOverflow) {
    for (const std::int32_t mode : {10, 20}) {
        DragRaw(mode, {-2147483647 - 1, -2147483647 - 1}, {2147483647, 2147483647});
        EXPECT_TRUE(std::isfinite(rig.ctrl->viewX) && std::isfinite(rig.ctrl->viewY));
        DragRaw(mode, {2147483647, 2147483647}, {2147483640, 2147483600});
        EXPECT_TRUE(std::isfinite(rig.ctrl->viewX) && std::isfinite(rig.ctrl->viewY));
    }
}

TEST_F(RectZoomTest, AWindowWithoutPixelsIsOutOfRange) {
    rig.window.Resize(0, 0);
    for (const std::int32_t mode : {10, 20}) {
        DragRaw(mode, {0, 0}, {100, 100});
        EXPECT_EQ(rig.View().Zoom, 1000);
        EXPECT_EQ(rig.ctrl->rectZoomMode, 0);
    }
    EXPECT_THAT(rig.events.Zooms(), IsEmpty());
    EXPECT_EQ(rig.ctrl->viewX, 0.0);
}

}  // namespace
}  // namespace orvane
