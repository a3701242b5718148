#include "render/overlay_figures.h"

#include <gmock/gmock.h>

#include <limits>

#include "platform/grow_array.h"
#include "tests/render/overlay_rig.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OverlayFiguresTest : public OverlayTest {};

TEST_F(OverlayFiguresTest, WithoutFiguresNothingIsTouched) {
    topDrawID = 1;
    strVisible = true;
    EXPECT_THAT(All(), IsEmpty());
    EXPECT_EQ(rig.store.OrgDatCnt(), 0);
}

TEST_F(OverlayFiguresTest, ToolsAreSelectedPenFirstAndPutBackBrushFirst) {
    Add(kLayLine, {});
    EXPECT_THAT(All(), ElementsAre(kBlackPen, kBlackBrush, kEntryBrush, kEntryPen));
}

// --- Shapes -------------------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, PointIsASquareFilledAndThenOutlined) {
    Add(kLayPoint, {{50, 40}}, 1);
    EXPECT_THAT(Drawn(), ElementsAre(kMask, "BeginPath", "Polygon [(40,50) (60,50) (60,70) (40,70)]", "EndPath", "FillPath",
                                     "Polygon [(40,50) (60,50) (60,70) (40,70)]"));
}

TEST_F(OverlayFiguresTest, PointOfSeveralPointsIsASquareAroundTheFirst) {
    Add(kLayPoint, {{50, 40}, {80, 40}}, 1);
    EXPECT_EQ(DrawnBy("Polygon").front(), "Polygon [(40,50) (60,50) (60,70) (40,70)]");
}

TEST_F(OverlayFiguresTest, HalfSideOfAPointFollowsTheScale) {
    struct Case {
        std::int32_t zoom, size;
    };
    for (const Case& each : {Case{50000000, 1}, {100001, 1}, {100000, 2}, {50001, 2}, {50000, 3}, {30001, 3}, {30000, 4},
                             {20001, 4},        {20000, 5},  {10001, 5},  {10000, 6}, {7001, 6},  {7000, 7},  {5001, 7},
                             {5000, 9},         {3001, 9},   {3000, 10},  {1, 10},    {0, 10},    {-5, 10}}) {
        EXPECT_EQ(OrgPointHalfSide(each.zoom, 1), each.size) << each.zoom;
        EXPECT_EQ(OrgPointHalfSide(each.zoom, 3), 3 * each.size) << each.zoom;
    }
}

TEST_F(OverlayFiguresTest, PointAtZoom3000HasAHalfSideOf10PixelsAndAt3001Of9) {
    Add(kLayPoint, {{0, 0}}, 1);
    rig.frame.x = -50;
    rig.frame.y = -50;
    rig.store.view.Zoom = rig.store.view.DotPerM = 3000;
    EXPECT_EQ(DrawnBy("Polygon").front(), "Polygon [(40,40) (60,40) (60,60) (40,60)]");
    rig.store.view.Zoom = rig.store.view.DotPerM = 3001;
    EXPECT_EQ(DrawnBy("Polygon").front(), "Polygon [(41,41) (59,41) (59,59) (41,59)]");
}

TEST_F(OverlayFiguresTest, LineIsAPolylineWithItsOwnPen) {
    Add(kLayLine, {{10, 90}, {30, 50}, {30, 20}}, 3, 0x00FF00, 1);
    EXPECT_THAT(Drawn(), ElementsAre(kCopy, "SelectObject pen(0x0 3 0x00FF00)", "Polyline [(10,10) (30,50) (30,80)]"));
}

TEST_F(OverlayFiguresTest, LineBelowZeroIsDottedAndLineZeroIsThin) {
    Add(kLayLine, {{10, 90}, {30, 50}}, -4, 0x00FF00);
    Add(kLayLine, {{10, 90}, {30, 50}}, 0, 0x00FF00);
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre("SelectObject pen(0x2 4 0x00FF00)", "SelectObject pen(0x0 1 0x00FF00)"));
}

TEST_F(OverlayFiguresTest, LineOfOnePointIsStillAskedFor) {
    Add(kLayLine, {{10, 90}});
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(10,10)]"));
}

TEST_F(OverlayFiguresTest, PolygonThatNeverClosesIsDrawnWithoutRings) {
    Add(kLayPolygon, {{10, 90}, {30, 90}, {30, 50}}, 2, 0x00FF00);
    EXPECT_THAT(Drawn(),
                ElementsAre(kMask, kBlackPen, "SelectObject brush(0x00FF00)", "BeginPath", "Polygon [(10,10) (30,10) (30,50)]",
                            "EndPath", "FillPath", "Polygon [(10,10) (30,10) (30,50)]"));
}

TEST_F(OverlayFiguresTest, ClosedPolygonIsDrawnByItsRingsAndPointsBehindThemByNone) {
    Add(kLayPolygon, {{10, 90}, {30, 90}, {30, 50}, {10, 90}, {15, 80}, {20, 80}, {20, 75}, {15, 80}, {5, 5}, {6, 6}}, 2);
    EXPECT_THAT(Drawn(), ElementsAre(kMask, kBlackPen, kBlackBrush, "BeginPath",
                                     "PolyPolygon [(10,10) (30,10) (30,50) (10,10) (15,20) (20,20) (20,25) (15,20)] [4 4]",
                                     "EndPath", "StrokeAndFillPath"));
}

TEST_F(OverlayFiguresTest, PolygonWhoseEndsMeetIsOneRing) {
    Add(kLayPolygon, {{10, 90}, {30, 90}, {10, 90}, {15, 80}, {10, 90}});
    EXPECT_THAT(DrawnBy("PolyPolygon"), ElementsAre("PolyPolygon [(10,10) (30,10) (10,10) (15,20) (10,10)] [5]"));
}

TEST_F(OverlayFiguresTest, CircleReachesItsSecondPointWithARadiusCutToPixels) {
    Add(kLayCircle, {{50, 50}, {53, 54}}, 2, 0x00FF00, 1);
    Add(kLayCircle, {{50, 50}, {51, 49}}, 2, 0x00FF00, 1);
    EXPECT_THAT(Drawn(), ElementsAre(kCopy, kBlackPen, "SelectObject brush(0x00FF00)", "BeginPath", "Ellipse 45 45 55 55",
                                     "EndPath", "FillPath", kCopy, kBlackPen, "SelectObject brush(0x00FF00)", "BeginPath",
                                     "Ellipse 49 49 51 51", "EndPath", "FillPath"));
}

TEST_F(OverlayFiguresTest, CircleOfOnePointDrawsNothing) {
    Add(kLayCircle, {{50, 50}}, 2);
    EXPECT_THAT(Drawn(), ElementsAre(kMask, kBlackPen, kBlackBrush));
}

TEST_F(OverlayFiguresTest, EllipseIsFilledInADottedBoxWithTheToolsThatAreSelected) {
    Add(kLayEllipse, {{20, 80}, {60, 50}}, 2, 0x00FF00);
    EXPECT_THAT(Drawn(),
                ElementsAre(kMask, "SelectObject pen(0x2 1 0x000000)", "Polyline [(20,20) (20,50) (60,50) (60,20) (20,20)]",
                            kBlackPen, "BeginPath", "Ellipse 20 20 60 50", "EndPath", "FillPath"));
}

TEST_F(OverlayFiguresTest, EllipseOfOnePointHasABoxToTheDevicesOriginAndNoFill) {
    Add(kLayEllipse, {{20, 80}}, 2);
    EXPECT_THAT(Drawn(), ElementsAre(kMask, "SelectObject pen(0x2 1 0x000000)", "Polyline [(20,20) (20,0) (0,0) (0,20) (20,20)]",
                                     kBlackPen));
}

TEST_F(OverlayFiguresTest, OtherTypesDrawNothingAndStillTakeTheirPen) {
    for (const std::int32_t type : {0, 5, 10, 9999, -1}) Add(type, {{20, 80}, {60, 50}}, 0, 0x00FF00);
    Lines expected;
    for (int i = 0; i < 5; ++i) {
        expected.push_back(kMask);
        expected.push_back("SelectObject pen(0x0 1 0x00FF00)");
    }
    EXPECT_EQ(Drawn(), expected);
}

// --- Pens and brushes ---------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, PolygonWithoutALineTakesThePenOfItsColour) {
    Add(kLayPolygon, {{10, 90}, {30, 90}, {10, 90}}, 0, 0x00FF00);
    EXPECT_THAT(DrawnBy("SelectObject"),
                ElementsAre(kBlackPen, "SelectObject brush(0x00FF00)", "SelectObject pen(0x0 1 0x00FF00)"));
}

TEST_F(OverlayFiguresTest, PointWithoutALineTakesAPenAndNoBrush) {
    Add(kLayPoint, {{50, 50}}, 0, 0x00FF00);
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre("SelectObject pen(0x0 1 0x00FF00)"));
}

TEST_F(OverlayFiguresTest, BlackLineWhoseNumberIsTheWidthOfTheDeviceKeepsTheFirstPen) {
    rig.store.view.DpiRatio = 2;
    Add(kLayLine, {{10, 90}, {30, 50}}, 2, 0);
    // Line 2 would be 4 pixels wide here; the remembered line begins as the device's factor, 2.
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre("SelectObject pen(0x0 2 0x000000)"));
}

TEST_F(OverlayFiguresTest, PolygonBehindALineOfItsColourKeepsTheOldBrush) {
    Add(kLayLine, {{10, 90}, {30, 50}}, 2, 0x00FF00);
    Add(kLayPolygon, {{10, 90}, {30, 90}, {10, 90}}, 2, 0x00FF00);
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre("SelectObject pen(0x0 2 0x00FF00)", kBlackPen, kBlackBrush));
}

TEST_F(OverlayFiguresTest, LineBehindAPolygonOfItsColourAndLineKeepsTheOldPen) {
    Add(kLayPolygon, {{10, 90}, {30, 90}, {10, 90}}, 5, 0x00FF00);
    Add(kLayLine, {{10, 90}, {30, 50}}, 5, 0x00FF00);
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre(kBlackPen, "SelectObject brush(0x00FF00)", kBlackPen));
}

TEST_F(OverlayFiguresTest, ColourAloneOrLineAloneMakesANewPen) {
    Add(kLayLine, {{10, 90}, {30, 50}}, 5, 0x00FF00);
    Add(kLayLine, {{10, 90}, {30, 50}}, 5, 0xFF0000);
    Add(kLayLine, {{10, 90}, {30, 50}}, 6, 0xFF0000);
    Add(kLayLine, {{10, 90}, {30, 50}}, 6, 0xFF0000);
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre("SelectObject pen(0x0 5 0x00FF00)", "SelectObject pen(0x0 5 0xFF0000)",
                                                     "SelectObject pen(0x0 6 0xFF0000)", "SelectObject pen(0x0 6 0xFF0000)"));
}

TEST_F(OverlayFiguresTest, FigureOffTheStripsIsNotRemembered) {
    Add(kLayLine, {{300, 90}, {330, 50}}, 5, 0x00FF00);
    Add(kLayLine, {{10, 90}, {30, 50}}, 5, 0x00FF00);
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre("SelectObject pen(0x0 5 0x00FF00)"));
}

TEST_F(OverlayFiguresTest, ActiveFigureTakesTheActiveToolsBehindItsOwn) {
    AddActive(kLayLine, {{10, 90}, {30, 50}}, 2, 0x00FF00);
    EXPECT_THAT(Drawn(),
                ElementsAre(kMask, "SelectObject pen(0x0 2 0x00FF00)", kActiveBrush, kActivePen, "Polyline [(10,10) (30,50)]"));
}

TEST_F(OverlayFiguresTest, ActiveToolsStaySelectedForAPointBehind) {
    AddActive(kLayLine, {{10, 90}, {30, 50}}, 2, 0x00FF00);
    Add(kLayPoint, {{50, 50}}, 1);
    Add(kLayPolygon, {{10, 90}, {30, 90}, {10, 90}}, 1);
    EXPECT_THAT(DrawnBy("SelectObject"),
                ElementsAre("SelectObject pen(0x0 2 0x00FF00)", kActiveBrush, kActivePen, kBlackPen, kBlackBrush));
}

TEST_F(OverlayFiguresTest, EverythingGrowsWithTheWholePartOfTheDpiRatio) {
    rig.store.view.DpiRatio = 2.9;
    Add(kLayPoint, {{50, 50}}, 1);
    AddActive(kLayLine, {{10, 90}, {30, 50}}, -3, 0x00FF00);
    Add(kLayLine, {{10, 90}, {30, 50}}, 0, 0x00FF00);
    EXPECT_THAT(All(), ElementsAre("SelectObject pen(0x0 2 0x000000)", kBlackBrush, kMask, "BeginPath",
                                   "Polygon [(30,30) (70,30) (70,70) (30,70)]", "EndPath", "FillPath",
                                   "Polygon [(30,30) (70,30) (70,70) (30,70)]", kMask, "SelectObject pen(0x2 6 0x00FF00)",
                                   kActiveBrush, "SelectObject pen(0x0 6 0x0000FF)", "Polyline [(10,10) (30,50)]", kMask,
                                   "SelectObject pen(0x0 2 0x00FF00)", "Polyline [(10,10) (30,50)]", kEntryBrush, kEntryPen));
}

TEST_F(OverlayFiguresTest, WidestLinesOnAVeryFineDeviceSaturate) {
    rig.store.view.DpiRatio = 1e9;
    Add(kLayLine, {{10, 90}, {30, 50}}, -32768, 0x00FF00);
    EXPECT_THAT(DrawnBy("SelectObject"), ElementsAre("SelectObject pen(0x2 2147483647 0x00FF00)"));
}

// --- Order and strips ---------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, FigureWithoutPointsStopsAllBehindIt) {
    Add(kLayLine, {{10, 90}, {30, 50}});
    Add(kLayLine, {});
    Add(kLayLine, {{10, 90}, {40, 50}});
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(10,10) (30,50)]"));
    EXPECT_EQ(rig.store.OrgDatCnt(), 3);
}

TEST_F(OverlayFiguresTest, DeletedRecordsArePassedOver) {
    rig.store.MutableOrgDat(Add(kLayLine, {})).ID = 0;
    Add(kLayLine, {{10, 90}, {30, 50}});
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(10,10) (30,50)]"));
}

TEST_F(OverlayFiguresTest, FigureOffBothStripsOnlySetsItsRasterOperation) {
    AddActive(kLayEllipse, {{300, 90}, {330, 50}}, 0, 0x00FF00);
    Add(kLayPolygon, {{300, 90}, {330, 50}, {310, 50}}, 0, 0x00FF00, 1);
    rig.store.ActivePointType = 1;
    EXPECT_THAT(Drawn(), ElementsAre(kMask, kCopy));
}

TEST_F(OverlayFiguresTest, EitherStripShowsALineAndOnlyTheFirstAPoint) {
    rig.frame.stripA = {0, 0, 10, 100};
    rig.frame.stripB = {0, 90, 200, 100};
    Add(kLayLine, {{2, 50}, {8, 50}});
    Add(kLayLine, {{50, 5}, {80, 5}});
    Add(kLayLine, {{50, 50}, {80, 60}});
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(2,50) (8,50)]", "Polyline [(50,95) (80,95)]"));
    Add(kLayPoint, {{5, 50}});
    Add(kLayPoint, {{50, 5}});
    EXPECT_EQ(DrawnBy("BeginPath").size(), 1u) << "one point is asked of strip A alone";
}

TEST_F(OverlayFiguresTest, FrameOriginPendingOffsetStretchAndPixelOriginPlaceTheFigure) {
    rig.frame.x = 10;
    rig.frame.y = -100;
    rig.frame.pendX = 0.75;
    rig.frame.pendY = -0.75;
    rig.store.view.ScaleX = 2;
    rig.store.view.ScaleY = 0.5;
    rig.store.view.OffX = 4;
    rig.store.view.OffY = 3;
    Add(kLayLine, {{30, 90}, {40, 21}});
    // x: 60 - 10 - 4 + 0.75 + 0.5 = 47.25, 80 - 14 + 1.25 = 67.25. y: -45 + 100 - 3 - 0.25 = 51.75, -10.5 + 97 - 0.25 = 86.25.
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(47,51) (67,86)]"));
}

TEST_F(OverlayFiguresTest, RotationTurnsTheFigureAboutTheWorldOrigin) {
    rig.store.view.Rotate = 90;
    rig.frame.x = -100;
    rig.frame.y = -60;
    Add(kLayLine, {{10, 20}, {30, -40}});
    // A quarter turn carries world (10, -20) to (-20, -10) and (30, 40) to (40, -30).
    EXPECT_THAT(DrawnBy("Polyline"), ElementsAre("Polyline [(80,50) (140,30)]"));
}

// --- Bad input ----------------------------------------------------------------------------------------------------------------

TEST_F(OverlayFiguresTest, CoordinatesBeyondTheDeviceSaturate) {
    Add(kLayCircle, {{50, 50}, {1e300, 50}}, 1);
    Add(kLayPoint, {{std::numeric_limits<double>::quiet_NaN(), 50}}, 1);
    EXPECT_THAT(DrawnBy("Ellipse"), ElementsAre("Ellipse -2147483547 -2147483547 2147483647 2147483647"));
}

TEST_F(OverlayFiguresTest, MarksAndSquareAtTheEndOfTheDeviceSaturate) {
    rig.frame.stripA = {2147483600, 0, 2147483647, 100};
    rig.store.ActivePointType = 1;
    AddActive(kLayPoint, {{2147483640, 50}}, 1);
    EXPECT_THAT(DrawnBy("Polygon").front(), "Polygon [(2147483630,40) (2147483647,40) (2147483647,60) (2147483630,60)]");
    EXPECT_THAT(DrawnBy("Ellipse").front(), "Ellipse 2147483635 45 2147483645 55");
}

TEST_F(OverlayFiguresTest, ScaleOfZeroCrashesNothing) {
    rig.store.view.Zoom = 0;
    for (const std::int32_t type : {1, 2, 3, 4, 8}) AddActive(type, {{0, 0}, {30, 50}, {0, 0}}, 1);
    EXPECT_FALSE(All().empty());
}

TEST_F(OverlayFiguresTest, FigureWithoutMemoryForItsPointsIsLeftOut) {
    Add(kLayLine, {{10, 90}, {30, 50}});
    Add(kLayLine, {{10, 90}, {40, 50}});
    ArrayFaults::FailNth(1);
    const Lines lines = Drawn();
    ArrayFaults::Clear();
    EXPECT_THAT(lines, ElementsAre(kMask, kBlackPen, "Polyline [(10,10) (40,50)]"));
}

TEST_F(OverlayFiguresTest, PolygonWithoutMemoryForItsRingsIsLeftOut) {
    Add(kLayPolygon, {{10, 90}, {30, 50}, {10, 90}});
    ArrayFaults::FailNth(2);
    const Lines lines = Drawn();
    ArrayFaults::Clear();
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(OverlayFiguresTest, ManyFiguresShareTheirMemory) {
    for (int i = 0; i < 500; ++i) Add(kLayPolygon, {{10, 90}, {30, 50}, {20, 20}, {10, 90}});
    ArrayFaults::Clear();
    DrawOrgDats(rig.store, rig.frame, true, 0);
    EXPECT_LE(ArrayFaults::Count(), 2) << "points and ring lengths";
}

}  // namespace
}  // namespace orvane
