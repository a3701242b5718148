#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "render/line_polygon.h"
#include "tests/render/render_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNormalPen[] = "SelectObject pen(0x0 2 0x00FF00)";
constexpr char kNormalBrush[] = "SelectObject brush(0x00FF00)";
constexpr char kActivePen[] = "SelectObject pen(0x0 3 0x0000FF)";
constexpr char kActiveBrush[] = "SelectObject brush(0x0000FF)";
constexpr char kOldPen[] = "SelectObject pen(0x0 1 0x000000)";
constexpr char kOldBrush[] = "SelectObject brush(0xFFFFFF)";
constexpr char kCopy[] = "SetROP2 13";

/// One green line layer, two pixels wide.
class LineBlockTest : public testing::Test {
protected:
    LineBlockTest() {
        rig.AddLayer("L", kLayLine);
        rig.Layer(0).color = 0x00FF00;
        rig.Layer(0).lineSize = 2;
    }
    DigDat& Item(std::size_t i) { return rig.Item(0, i); }
    /// The polylines of one drawing.
    std::vector<std::string> Polylines() {
        DrawLineBlock(rig.store, rig.frame, 0, 0, true, rig.scratch);
        return rig.Verbs("Polyline");
    }

    RenderRig rig;
};

TEST_F(LineBlockTest, DrawsALineVerbByVerb) {
    rig.AddItem("L", {{10, 90}, {30, 50}, {30, 20}});
    EXPECT_THAT(rig.DrawLines(),
                ElementsAre(kNormalPen, kNormalBrush, kCopy, "Polyline [(10,10) (30,50) (30,80)]", kOldBrush, kOldPen));
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(LineBlockTest, BlockWithoutItemsSelectsItsToolsAndPutsTheOldOnesBack) {
    EXPECT_THAT(rig.DrawLines(), ElementsAre(kNormalPen, kNormalBrush, kOldBrush, kOldPen));
}

TEST_F(LineBlockTest, BlockOriginPendingOffsetAndFrameOriginPlaceTheLine) {
    const std::int32_t far_ = rig.AddLayer("F", kLayLine, 1, 1000, -500);
    rig.AddItem("F", {{10, 20}, {40, 60}});
    // World (1010, 480) and (1040, 440); the frame begins at (990, 400) and is 0.75 pixel right and 0.25 pixel up.
    rig.frame.x = 990;
    rig.frame.y = 400;
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    DrawLineBlock(rig.store, rig.frame, far_, far_, true, rig.scratch);
    // 20.75 + 0.5, 79.25 + 0.5; 50.75 + 0.5, 39.25 + 0.5, each cut.
    EXPECT_THAT(rig.Verbs("Polyline"), ElementsAre("Polyline [(21,79) (51,39)]"));
}

TEST_F(LineBlockTest, PenWidthsGrowWithTheWholePartOfTheDpiRatio) {
    rig.store.view.DpiRatio = 2.9;
    rig.AddItem("L", {{10, 90}, {30, 50}});
    Item(0).active = 1;
    EXPECT_THAT(rig.DrawLines(), ElementsAre("SelectObject pen(0x0 4 0x00FF00)", kNormalBrush, kCopy, kActiveBrush,
                                             "SelectObject pen(0x0 6 0x0000FF)", "Polyline [(10,10) (30,50)]", kNormalBrush,
                                             "SelectObject pen(0x0 4 0x00FF00)", kOldBrush, kOldPen));
}

// --- Who is let through -------------------------------------------------------------------------------------------------------

TEST_F(LineBlockTest, ItemOutsideOfTheSearchIsLeftAloneWhenTheClipIsHonoured) {
    rig.AddItem("L", {{10, 90}, {30, 50}});
    Item(0).clipFlg = 0;
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    rig.DrawLines(0, false);
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(LineBlockTest, LineTagMinusOneNeverShowsAndKeepsItsFlag) {
    rig.AddItem("L", {{10, 90}, {30, 50}}, -1);
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(LineBlockTest, LineTagAboveZeroIsHiddenOnlyInModeOne) {
    rig.AddItem("L", {{10, 90}, {30, 50}}, 5);
    rig.AddItem("L", {{10, 90}, {30, 40}}, -2);
    rig.store.LineTagMode = 1;
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(10,10) (30,60)]"));
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    rig.store.LineTagMode = 2;
    EXPECT_EQ(Polylines().size(), 2u);
}

TEST_F(LineBlockTest, ItemOffTheStripsLosesItsFlag) {
    rig.AddItem("L", {{300, 90}, {330, 50}});
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(LineBlockTest, BoxIsAUnitWiderThanTheItemAndCutWithoutTheHalf) {
    // Bounds from -1 on: the box ends at pixel 0 + 1 = 1 only by the unit that is added, and 0.9 cuts to 0.
    rig.AddItem("L", {{-30, 50}, {0.4, 60}});
    Item(0).rect = {-30, 50, 0, 60};
    rig.frame.x = 0.1;
    EXPECT_THAT(Polylines(), IsEmpty()) << "right = trunc((0 + 1 - 0.1) * 1) = 0, which is not inside";
    rig.frame.x = 0;
    EXPECT_EQ(Polylines().size(), 1u) << "right = 1";
}

TEST_F(LineBlockTest, EverySideOfTheBoxIsAUnitOut) {
    rig.AddItem("L", {{50, 50}, {60, 60}});
    // The box runs from 49 to 61 and from 39 to 51; right and bottom edges of box and strip lie outside.
    const Rect meeting[] = {{40, 45, 50, 46}, {60, 45, 70, 46}, {55, 30, 56, 40}, {55, 50, 56, 60}};
    const Rect beside[] = {{40, 45, 49, 46}, {61, 45, 70, 46}, {55, 30, 56, 39}, {55, 51, 56, 60}};
    for (int i = 0; i < 4; ++i) {
        rig.frame.stripA = rig.frame.stripB = meeting[i];
        EXPECT_EQ(Polylines().size(), 1u) << i;
        rig.frame.stripA = rig.frame.stripB = beside[i];
        EXPECT_EQ(Polylines().size(), 0u) << i;
    }
}

TEST_F(LineBlockTest, BoxLooksAtTheBoundsAndNotAtThePoints) {
    rig.AddItem("L", {{300, 90}, {330, 50}});
    Item(0).rect = {0, 0, 10, 10};
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(300,10) (330,50)]"));
}

TEST_F(LineBlockTest, SecondStripCountsAsTheFirst) {
    rig.AddItem("L", {{150, 90}, {160, 50}});
    rig.frame.stripA = {0, 0, 20, 100};
    rig.frame.stripB = {140, 0, 200, 20};
    EXPECT_EQ(Polylines().size(), 1u);
    rig.frame.stripB = {0, 0, 20, 100};
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

TEST_F(LineBlockTest, BoxOnOnePixelIsMadeAPixelWideAndHigh) {
    // At 1:100000 a pixel is 100 units. The box runs from 50.09 to 50.61 and from 49.39 to 49.51, so all of it cuts to (50, 49).
    rig.store.view.Zoom = 100000;
    rig.frame.y = -10000;
    rig.AddItem("L", {{5010, 5050}, {5060, 5060}});
    rig.frame.stripA = rig.frame.stripB = {50, 48, 51, 49};
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(50,50) (51,49)]")) << "it reaches a pixel up and a pixel to the right";
    rig.frame.stripA = rig.frame.stripB = {50, 49, 51, 50};
    EXPECT_THAT(Polylines(), IsEmpty());
}

TEST_F(LineBlockTest, TurnedViewDrawsWhatTheTurnBringsIntoTheStrips) {
    // A quarter turn carries world (x, y) to (y, -x): map (-50, -40), world (-50, 40), comes to (40, 50).
    rig.store.view.Rotate = 90;
    rig.frame.y = 0;
    rig.AddItem("L", {{-50, -40}, {-60, -70}});
    rig.AddItem("L", {{50, 40}, {60, 70}});
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(40,50) (70,60)]"));
    EXPECT_EQ(Item(0).drawnFlg, 1);
    EXPECT_EQ(Item(1).drawnFlg, 0) << "world (50, -40) goes to (-40, -50)";
}

TEST_F(LineBlockTest, MirroredViewShowsNothing) {
    // A negative scale turns the box of every item inside out, and such a box meets no strip.
    rig.store.view.ScaleX = -1;
    rig.AddItem("L", {{-50, 40}, {-60, 70}});
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 0);
}

// --- Points ------------------------------------------------------------

TEST_F(LineBlockTest, ItemWithoutPointsKeepsItsFlag) {
    rig.AddItem("L", {});
    Item(0).rect = {0, 0, 10, 10};
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
}

TEST_F(LineBlockTest, ItemThatNeverHadAPointMeetsNoStripAndLosesItsFlag) {
    rig.AddItem("L", {});
    ASSERT_EQ(Item(0).rect, kEmptyItemRect);
    for (const double degrees : {0.0, 30.0}) {
        rig.store.view.Rotate = degrees;
        Item(0).drawnFlg = 1;
        EXPECT_THAT(Polylines(), IsEmpty());
        EXPECT_EQ(Item(0).drawnFlg, 0) << degrees;
    }
}

TEST_F(LineBlockTest, LineOnOnePixelIsNotDrawnAndItsFlagStaysAsTheSearchLeftIt) {
    rig.AddItem("L", {{10.1, 50}, {10.2, 50}});
    Item(0).drawnFlg = 1;
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 1);
}

TEST_F(LineBlockTest, PointsOnThePixelOfTheLastKeptOneAreDropped) {
    rig.AddItem("L", {{10, 90}, {10.2, 90}, {12, 90}, {12.1, 90.1}, {10, 90}, {10, 90}});
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(10,10) (12,10) (10,10)]"));
}

TEST_F(LineBlockTest, FirstPointOnThePixelThatStandsForNoneIsDropped) {
    // Map (-99999999.6, 100000099.6) comes to -99999999.6 + 0.5, cut to -99999999, in both directions.
    rig.AddItem("L", {{-99999999.6, 100000099.6}, {10, 50}, {20, 50}});
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(10,50) (20,50)]"));
}

TEST_F(LineBlockTest, NotANumberAndInfinitePointsDrawWithoutHarm) {
    rig.AddItem("L", {{10, 50}, {20, 50}});
    Item(0).pnts.Change()[0] = {std::nan(""), INFINITY, 0};
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(0,-2147483648) (20,50)]"));
}

TEST_F(LineBlockTest, FailedBufferSkipsTheItemAndKeepsItsFlag) {
    rig.AddItem("L", {{10, 90}, {30, 50}});
    rig.AddItem("L", {{10, 80}, {30, 40}});
    ArrayFaults::FailNth(1);
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(10,20) (30,60)]"));
    ArrayFaults::Clear();
    EXPECT_EQ(Item(0).drawnFlg, kUntouched);
    EXPECT_EQ(Item(1).drawnFlg, 1);
}

TEST_F(LineBlockTest, BufferIsReusedFromItemToItem) {
    for (int i = 0; i < 100; ++i) rig.AddItem("L", {{10, 90}, {30, 50}, {40, 40}});
    ArrayFaults::Clear();
    EXPECT_EQ(Polylines().size(), 100u);
    EXPECT_LE(ArrayFaults::Count(), 1);
}

// --- Active items and sub layers ------------------------------------------------------------

TEST_F(LineBlockTest, ActiveItemTakesTheActiveBrushAndPenForItself) {
    rig.AddItem("L", {{10, 90}, {30, 50}});
    rig.AddItem("L", {{10, 80}, {30, 40}});
    Item(0).active = 1;
    EXPECT_THAT(rig.DrawLines(),
                ElementsAre(kNormalPen, kNormalBrush, kCopy, kActiveBrush, kActivePen, "Polyline [(10,10) (30,50)]", kNormalBrush,
                            kNormalPen, kCopy, "Polyline [(10,20) (30,60)]", kOldBrush, kOldPen));
}

TEST_F(LineBlockTest, SubLayerDrawsWithItsOwnPenAndTheLayersBrush) {
    SubLayDef& sub = rig.AddSubLayer(0, 4);
    sub.color = 0xABCDEF;
    sub.lineType = 2;
    sub.lineSize = 7;
    rig.AddItem("L", {{10, 90}, {30, 50}});
    Item(0).subLayNo = 4;
    EXPECT_THAT(rig.DrawLines(), ElementsAre(kNormalPen, kNormalBrush, "SelectObject pen(0x2 7 0xABCDEF)", kCopy,
                                             "Polyline [(10,10) (30,50)]", kNormalPen, kOldBrush, kOldPen));
}

TEST_F(LineBlockTest, FirstSubLayerRecordWithTheNumberCounts) {
    rig.AddSubLayer(0, 4).lineSize = 5;
    rig.AddSubLayer(0, 4).lineSize = 6;
    rig.AddItem("L", {{10, 90}, {30, 50}});
    Item(0).subLayNo = 4;
    EXPECT_EQ(rig.DrawLines()[2], "SelectObject pen(0x0 5 0x000000)");
}

TEST_F(LineBlockTest, ActiveItemWithASubLayerDrawsWithTheActivePenAndBrush) {
    rig.AddSubLayer(0, 4).lineSize = 7;
    rig.AddItem("L", {{10, 90}, {30, 50}});
    Item(0).subLayNo = 4;
    Item(0).active = 1;
    EXPECT_THAT(rig.DrawLines(),
                ElementsAre(kNormalPen, kNormalBrush, "SelectObject pen(0x0 7 0x000000)", kCopy, kActiveBrush, kActivePen,
                            "Polyline [(10,10) (30,50)]", kNormalBrush, kNormalPen, kNormalPen, kOldBrush, kOldPen));
}

TEST_F(LineBlockTest, SubLayerThatIsNotShownHidesTheItemAndClearsItsFlag) {
    rig.AddSubLayer(0, 4).dspFlg = 0;
    rig.AddSubLayer(0, 5).dspFlg = 2;
    for (std::int32_t i = 0; i < 2; ++i) {
        rig.AddItem("L", {{10, 90}, {30, 50}});
        Item(static_cast<std::size_t>(i)).subLayNo = 4 + i;
    }
    EXPECT_THAT(Polylines(), IsEmpty());
    EXPECT_EQ(Item(0).drawnFlg, 0);
    EXPECT_EQ(Item(1).drawnFlg, 0) << "only exactly 1 shows";
}

TEST_F(LineBlockTest, UnknownSubLayerDrawsWithTheLayersAttributes) {
    rig.AddSubLayer(0, 4).lineSize = 7;
    rig.AddSubLayer(0, -4).lineSize = 8;
    rig.AddItem("L", {{10, 90}, {30, 50}});
    rig.AddItem("L", {{10, 80}, {30, 40}});
    Item(0).subLayNo = 5;
    Item(1).subLayNo = -4;
    EXPECT_THAT(rig.DrawLines(), ElementsAre(kNormalPen, kNormalBrush, kCopy, "Polyline [(10,10) (30,50)]", kCopy,
                                             "Polyline [(10,20) (30,60)]", kOldBrush, kOldPen));
}

TEST_F(LineBlockTest, ItemBehindASubLayerTakesOverItsKindWithTheLayersPen) {
    rig.AddLineType(1, 0);
    rig.AddLineType(2, 3);  // ticks: the pattern draws the line itself
    rig.AddSubLayer(0, 4).lineType = 2;
    rig.Layer(0).lineType = 1;
    for (int i = 0; i < 3; ++i) rig.AddItem("L", {{10, 90.0 - i}, {30, 50}});
    Item(1).subLayNo = 4;
    // The first is a plain line; the second and the third are left to the pattern, which has no pitch here.
    EXPECT_THAT(rig.DrawLines(),
                ElementsAre("SelectObject pen(0x1 2 0x00FF00)", kNormalBrush, kCopy, "Polyline [(10,10) (30,50)]",
                            "SelectObject pen(0x0 0 0x000000)", kCopy, "MoveToEx 10 11", "SelectObject pen(0x1 2 0x00FF00)",
                            kCopy, "MoveToEx 10 12", kOldBrush, kOldPen));
    EXPECT_EQ(Item(2).drawnFlg, 1);
}

TEST_F(LineBlockTest, SubLayerOfAPlainKindTurnsAPatternLayerPlainForTheItemsBehind) {
    rig.AddLineType(2, 3);
    rig.AddSubLayer(0, 4).lineType = 77;  // in no record: kind 0
    rig.Layer(0).lineType = 2;
    for (int i = 0; i < 3; ++i) rig.AddItem("L", {{10, 90.0 - i}, {30, 50}});
    Item(1).subLayNo = 4;
    EXPECT_THAT(Polylines(), ElementsAre("Polyline [(10,11) (30,50)]", "Polyline [(10,12) (30,50)]"));
}

TEST_F(LineBlockTest, EndMarkKindDrawsTheLineItself) {
    rig.AddLineType(2, 2);
    rig.Layer(0).lineType = 2;
    rig.AddItem("L", {{10, 90}, {30, 50}});
    EXPECT_EQ(Polylines().size(), 1u);
}

TEST_F(LineBlockTest, RefusedPenLeavesTheOneBefore) {
    rig.AddLineType(5, 1, {0, 0});
    rig.Layer(0).lineType = 5;
    rig.AddItem("L", {{10, 90}, {30, 50}});
    EXPECT_THAT(rig.DrawLines(),
                ElementsAre("SelectObject pen(refused)", kNormalBrush, kCopy, "Polyline [(10,10) (30,50)]", kOldBrush, kOldPen));
}

}  // namespace
}  // namespace orvane
