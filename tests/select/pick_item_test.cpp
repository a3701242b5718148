// The pick rule of each type of item.
#include <gtest/gtest.h>

#include <limits>

#include "tests/select/pick_rig.h"

namespace orvane {
namespace {

class PickItemTest : public ::testing::Test, protected PickRig {
protected:
    /// The square of half side `half` around (x, y) is hit, and nothing beyond.
    void ExpectSquare(std::int32_t x, std::int32_t y, std::int32_t half) {
        EXPECT_EQ(Click(x - half, y - half), 1) << half;
        EXPECT_EQ(Click(x + half - 1, y + half - 1), 1) << half;
        EXPECT_EQ(Click(x - half - 1, y), 0) << half;
        EXPECT_EQ(Click(x, y - half - 1), 0) << half;
        EXPECT_EQ(Click(x + half, y), 0) << half;
        EXPECT_EQ(Click(x, y + half), 0) << half;
    }
    void SetSubLayer(std::int32_t subLayNo, bool disp, std::int32_t lineType) {
        SubLayerSettings settings;
        settings.disp = disp;
        settings.lineType = lineType;
        ASSERT_TRUE(store.SetSubLayerEx("P", subLayNo, settings));
    }
};

TEST_F(PickItemTest, APointIsPickedInASquareThatGrowsAsTheMapIsZoomedIn) {
    struct Step {
        std::int32_t zoom, half;
    };
    constexpr Step kSteps[] = {{50001, 2}, {50000, 3}, {30001, 3}, {30000, 4}, {20001, 4}, {20000, 5}, {10001, 5}, {10000, 6},
                               {7001, 6},  {7000, 7},  {5001, 7},  {5000, 9},  {3001, 9},  {3000, 10}, {1, 10}};
    AddLayer("P", kLayPoint, 1);
    AddItem("P", {At(100, 200)});
    for (const Step& step : kSteps) {
        store.view.Zoom = store.view.DotPerM = step.zoom;
        ExpectSquare(100, 200, step.half);
    }
}

TEST_F(PickItemTest, TheSquareIsTheSameAtEveryScaleWhereTheLayerFixesItsSymbols) {
    AddLayer("P", kLayPoint, 1).lineSize = 9999;
    AddItem("P", {At(100, 200)});
    for (const std::int32_t zoom : {1, 60000}) {
        store.view.Zoom = store.view.DotPerM = zoom;
        ExpectSquare(100, 200, 6);
    }
}

TEST_F(PickItemTest, TheSquareGrowsWithTheWholeFactorOfAFinerDevice) {
    AddLayer("P", kLayPoint, 1);
    AddItem("P", {At(100, 200)});
    store.view.DpiRatio = 2.9;
    ExpectSquare(100, 200, 12);
}

TEST_F(PickItemTest, StyleTwelveMakesTheSquareFourTimesAsLarge) {
    AddLayer("P", kLayPoint, 1).lineType = 12;
    AddItem("P", {At(100, 200)});
    ExpectSquare(100, 200, 24);
    Layer("P").lineSize = 9999;
    ExpectSquare(100, 200, 24);
    Layer("P").lineType = 0;
    Layer("P").pntType = 12;
    ExpectSquare(100, 200, 6);
}

TEST_F(PickItemTest, TheStyleIsThatOfTheItemsSubLayerButTheSizeThatOfTheLayer) {
    AddLayer("P", kLayPoint, 1).lineSize = 9999;
    SetSubLayer(4, true, 12);
    store.view.Zoom = store.view.DotPerM = 60000;
    AddItem("P", {At(100, 200)}).subLayNo = 4;
    ExpectSquare(100, 200, 24);
    Item("P", 1).subLayNo = 5;
    ExpectSquare(100, 200, 6);
    Layer("P").lineType = 12;
    ExpectSquare(100, 200, 24);
    SetSubLayer(0, true, 3);
    Item("P", 1).subLayNo = 0;
    ExpectSquare(100, 200, 24);
}

TEST_F(PickItemTest, AnItemOfAHiddenSubLayerIsNotHitAndTheSearchGoesOnWithTheNextOne) {
    AddLayer("P", kLayPoint, 1);
    SetSubLayer(4, false, 0);
    AddItem("P", {At(100, 200)});
    AddItem("P", {At(100, 200)}).subLayNo = 4;
    EXPECT_EQ(Click(100, 200), 1);
    EXPECT_TRUE(Active("P", 1));
    EXPECT_FALSE(Active("P", 2));
    Item("P", 1).subLayNo = 4;
    EXPECT_EQ(Click(100, 200), 0);
    EXPECT_EQ(Hint(100, 200), -1);
}

TEST_F(PickItemTest, OfSubLayersWithOneNumberTheFirstIsMet) {
    AddLayer("P", kLayPoint, 1);
    SetSubLayer(4, false, 0);
    SubLayDef second;
    second.subLayNo = 4;
    second.dspFlg = 1;
    ASSERT_TRUE(Layer("P").subLays.PushBack(std::move(second)));
    AddItem("P", {At(100, 200)}).subLayNo = 4;
    EXPECT_EQ(Click(100, 200), 0);
}

TEST_F(PickItemTest, AnImageIsPickedInItsBoxWhichThePositionMoves) {
    LayerDef& layer = AddLayer("P", kLayPoint, 1);
    layer.imgMode = 1;
    layer.bmWidth = 41;
    layer.bmHeight = 20;
    layer.imgMinScl = 0.5;
    layer.imgMaxScl = 5;
    AddItem("P", {At(100, 200)});
    constexpr std::int32_t kHalfWidth = 20, kHalfHeight = 10;
    constexpr Point kMoves[] = {{0, 0}, {1, 1}, {1, -1}, {-1, 1}, {-1, -1}, {0, 0}};
    for (std::int32_t pos = 0; pos < 6; ++pos) {
        layer.imgPos = pos;
        const std::int32_t x = 100 + kMoves[pos].x * kHalfWidth;
        const std::int32_t y = 200 + kMoves[pos].y * kHalfHeight;
        EXPECT_EQ(Click(x - 20, y - 10), 1) << pos;
        EXPECT_EQ(Click(x + 19, y + 9), 1) << pos;
        EXPECT_EQ(Click(x - 21, y), 0) << pos;
        EXPECT_EQ(Click(x + 20, y), 0) << pos;
        EXPECT_EQ(Click(x, y - 11), 0) << pos;
        EXPECT_EQ(Click(x, y + 10), 0) << pos;
    }
}

TEST_F(PickItemTest, AnImageStretchesWithTheMapBetweenItsTwoBounds) {
    LayerDef& layer = AddLayer("P", kLayPoint, 1);
    layer.imgMode = 1;
    layer.bmWidth = layer.bmHeight = 10;
    layer.imgMinScl = 2;
    layer.imgMaxScl = 4;
    AddItem("P", {At(0, 0)});
    place.viewX = place.viewY = -50;
    ExpectSquare(50, 50, 10);
    store.view.DotPerM = 30000;
    place.viewX = place.viewY = -50 / 3.0;
    ExpectSquare(50, 50, 15);
    store.view.DotPerM = 100000;
    place.viewX = place.viewY = -5;
    ExpectSquare(50, 50, 20);
}

TEST_F(PickItemTest, TheHintTakesImagesForSymbols) {
    LayerDef& layer = AddLayer("P", kLayPoint, 1);
    layer.imgMode = 1;
    layer.bmWidth = layer.bmHeight = 100;
    layer.imgMinScl = layer.imgMaxScl = 1;
    layer.imgPos = 1;
    AddItem("P", {At(100, 200)});
    EXPECT_EQ(Click(145, 245), 1);
    EXPECT_EQ(Hint(145, 245), -1);
    EXPECT_EQ(Hint(95, 195), 1);
    SetSubLayer(4, false, 0);
    Item("P", 1).subLayNo = 4;
    EXPECT_EQ(Click(145, 245), 1) << "images do not ask for the sub layer";
    EXPECT_EQ(Hint(95, 195), -1);
}

TEST_F(PickItemTest, ALineIsPickedInABandOfTwoPixelsEitherSideAtEveryScaleAndWidth) {
    AddLayer("L", kLayLine, 1).lineSize = 30;
    AddItem("L", {At(100, 200), At(100, 300)});
    for (std::int32_t x = 90; x < 110; ++x) EXPECT_EQ(Click(x, 250), x >= 98 && x < 102 ? 1 : 0) << x;
    EXPECT_EQ(Click(100, 200), 1);
    EXPECT_EQ(Click(100, 199), 0);
    EXPECT_EQ(Click(100, 300), 0);
    AddItem("L", {At(300, 200), At(400, 200)});
    for (std::int32_t y = 190; y < 210; ++y) EXPECT_EQ(Click(350, y), y >= 198 && y < 202 ? 1 : 0) << y;
    store.view.Zoom = store.view.DotPerM = 100;
    EXPECT_EQ(Click(350, 201), 1);
    EXPECT_EQ(Click(350, 203), 0);
}

TEST_F(PickItemTest, TheBandOfASlantIsShearedAcrossItsDirection) {
    AddLayer("L", kLayLine, 1);
    // Falling to the right: half widths of -2 and 2, so the corners lie at right angles to the slant.
    AddItem("L", {At(100, 100), At(140, 140)});
    EXPECT_EQ(Click(121, 119), 1);
    EXPECT_EQ(Click(119, 121), 1);
    EXPECT_EQ(Click(124, 119), 0);
    EXPECT_EQ(Click(118, 123), 0);
    EXPECT_EQ(Click(101, 99), 1) << "the band reaches across the end";
    EXPECT_EQ(Click(98, 98), 0) << "but not beyond it";
    AddItem("L", {At(300, 140), At(340, 100)});  // rising to the right
    EXPECT_EQ(Click(319, 119), 1);
    EXPECT_EQ(Click(321, 121), 1);
    EXPECT_EQ(Click(317, 118), 0);
    EXPECT_EQ(Click(323, 121), 0);
}

TEST_F(PickItemTest, ASegmentWithoutLengthAndALineOfOnePointAreNotHit) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {At(100, 100), At(100, 100)});
    AddItem("L", {At(300, 100)});
    EXPECT_EQ(HitMap(100, 100, 3), std::vector<std::string>(7, "......."));
    EXPECT_EQ(Click(300, 100), 0);
}

TEST_F(PickItemTest, EverySegmentOfALineIsTested) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {At(100, 100), At(200, 100), At(200, 300), At(50, 300)});
    EXPECT_EQ(Click(150, 101), 1);
    EXPECT_EQ(Click(201, 200), 1);
    EXPECT_EQ(Click(60, 299), 1);
    EXPECT_EQ(Click(150, 200), 0);
}

TEST_F(PickItemTest, ASegmentWhollyOffOneSideOfTheClientAreaIsSkipped) {
    AddLayer("L", kLayLine, 1);
    AddItem("L", {At(-2, 100), At(-2, 200)});  // rounded to -1
    AddItem("L", {At(0, 300), At(0, 400)});
    AddItem("L", {At(1001, 100), At(1001, 200)});
    AddItem("L", {At(1000, 300), At(1000, 400)});
    AddItem("L", {At(100, -2), At(200, -2)});
    AddItem("L", {At(100, 801), At(200, 801)});
    EXPECT_EQ(Click(0, 150), 0) << "within the band, but the segment lies left of the client area";
    EXPECT_EQ(Click(0, 350), 1) << "on the edge is not beyond it";
    EXPECT_EQ(Click(999, 150), 0) << "one beyond the right edge";
    EXPECT_EQ(Click(1000, 350), 1);
    EXPECT_EQ(Click(150, 0), 0);
    EXPECT_EQ(Click(150, 799), 0);
    EXPECT_EQ(Click(150, 800), 0);
}

TEST_F(PickItemTest, APolygonIsHitInsideItsRingsAndNotInItsHoles) {
    AddLayer("A", kLayPolygon, 1);
    std::vector<DigPnt> pnts = BoxRing(100, 100, 200, 200);
    for (const DigPnt& pnt : BoxRing(140, 140, 160, 160)) pnts.push_back(pnt);
    pnts.push_back(At(400, 400));  // closes no ring: an open tail belongs to none
    AddItem("A", pnts);
    EXPECT_EQ(Click(100, 100), 1);
    EXPECT_EQ(Click(199, 199), 1);
    EXPECT_EQ(Click(99, 150), 0);
    EXPECT_EQ(Click(200, 150), 0);
    EXPECT_EQ(Click(150, 150), 0) << "the hole";
    EXPECT_EQ(Click(160, 150), 1);
}

TEST_F(PickItemTest, WhereFirstAndLastPointCoincideTheWholeListIsOneRing) {
    AddLayer("A", kLayPolygon, 1);
    std::vector<DigPnt> pnts = BoxRing(100, 100, 200, 200);
    for (const DigPnt& pnt : {At(150, 300), At(180, 300)}) pnts.push_back(pnt);
    pnts.push_back(At(100, 100));
    AddItem("A", pnts);
    EXPECT_EQ(Click(150, 250), 1) << "between the box and what hangs below it";
}

TEST_F(PickItemTest, APolygonThatClosesNoRingIsNotHit) {
    AddLayer("A", kLayPolygon, 1);
    AddItem("A", {At(100, 100), At(200, 100), At(200, 200), At(100, 200)});
    EXPECT_EQ(Click(150, 150), 0);
}

TEST_F(PickItemTest, RingsAreSplitByDataPointsNotByTheirPixels) {
    AddLayer("A", kLayPolygon, 1);
    std::vector<DigPnt> pnts = BoxRing(100, 100, 200, 200);
    pnts[2] = At(100.2, 100.2);  // the same pixel as the first point, but not the same place
    pnts.insert(pnts.begin() + 3, At(200, 200));
    AddItem("A", pnts);
    EXPECT_EQ(Click(150, 180), 1);
}

TEST_F(PickItemTest, APolygonOfAThousandAndOnePixelsIsTestedInTheWorld) {
    AddLayer("A", kLayPolygon, 1);
    // Its rings differ by the two tests: pixels round the corner at 500.4 away, the world does not.
    AddItem("A", {At(0, 0), At(500.4, 0), At(500.4, 1001), At(0, 1001), At(0, 0)});
    EXPECT_EQ(Item("A", 1).rect.bottom - Item("A", 1).rect.top, 1001);
    EXPECT_EQ(Click(500, 500), 1) << "in the world 500 lies left of 500.4";
    AddLayer("B", kLayPolygon, 2);
    AddItem("B", {At(0, 0), At(500.4, 0), At(500.4, 1000), At(0, 1000), At(0, 0)});
    Item("A", 1).drawnFlg = 0;
    EXPECT_EQ(Click(500, 500), 0) << "at 1000 pixels the right edge is the pixel 500, which lies outside";
    EXPECT_EQ(Click(499, 500), 1);
}

TEST_F(PickItemTest, ALargePolygonsLocalPointTakesTheBlocksOriginWithTheOtherSign) {
    AddLayer("A", kLayPolygon, 1, 0, 100);
    AddItem("A", {{0, 0, 0}, {1100, 0, 0}, {1100, 60, 0}, {0, 60, 0}, {0, 0, 0}});
    EXPECT_EQ(Click(500, -130), 0) << "where it is drawn: map y 130, so its local 30 is looked for at 230";
    EXPECT_EQ(Click(500, 70), 1) << "map y -70 and the origin added give 30";
    store.view.Zoom = 20000;  // 550 pixels, by its region again
    EXPECT_EQ(Click(250, -65), 1);
    EXPECT_EQ(Click(250, 35), 0);
}

TEST_F(PickItemTest, ALargePolygonWithAHoleIsHitByTheCrossingCount) {
    AddLayer("A", kLayPolygon, 1);
    std::vector<DigPnt> pnts = BoxRing(-400, -400, 800, 790);
    for (const DigPnt& pnt : BoxRing(140, 140, 160, 160)) pnts.push_back(pnt);
    AddItem("A", pnts);
    EXPECT_EQ(Click(130, 150), 1);
    EXPECT_EQ(Click(150, 150), 0);
    EXPECT_EQ(Click(801, 150), 0);
    EXPECT_EQ(Click(150, 795), 0);
}

TEST_F(PickItemTest, ACircleIsHitWithinItsRadiusAndHalfAPixel) {
    AddLayer("C", kLayCircle, 1);
    AddItem("C", {At(100, 200, 20)});
    EXPECT_EQ(Click(100, 200), 1);
    EXPECT_EQ(Click(81, 200), 1);
    EXPECT_EQ(Click(118, 200), 1);
    EXPECT_EQ(Click(78, 200), 0);
    EXPECT_EQ(Click(121, 200), 0);
    EXPECT_EQ(Click(116, 216), 0) << "the corner of its box";
    EXPECT_EQ(Hint(100, 200), -1) << "the hint does not look at circles";
    store.view.ScaleX = 2;
    store.view.ScaleY = 1;
    EXPECT_EQ(Click(200, 237), 1) << "the radius follows the stretch in x, the figure stays round";
    EXPECT_EQ(Click(200, 242), 0);
}

TEST_F(PickItemTest, ACircleOfLessThanAPixelIsHitOnItsCentreOnly) {
    AddLayer("C", kLayCircle, 1);
    AddItem("C", {At(100, 200, 0.4)});
    const std::vector<std::string> centre{".......", ".......", ".......", "...#...", ".......", ".......", "......."};
    EXPECT_EQ(HitMap(100, 200, 3), centre);
    place.viewX = 100;
    place.viewY = 200;
    EXPECT_EQ(HitMap(0, 0, 3), centre) << "where truncation leaves no pixel in its box";
}

TEST_F(PickItemTest, AnEllipseIsHitInTheBoxOfItsFirstTwoPointsInWhateverOrder) {
    AddLayer("E", kLayEllipse, 1);
    AddItem("E", {At(100, 200), At(140, 220), At(900, 700)});
    AddItem("E", {At(340, 220), At(300, 200)});
    AddItem("E", {At(500, 500)});
    for (const std::int32_t x : {120, 320}) {
        EXPECT_EQ(Click(x, 210), 1);
        EXPECT_EQ(Click(x, 201), 1);
        EXPECT_EQ(Click(x, 221), 0);
        EXPECT_EQ(Click(x - 19, 201), 0) << "the corner of the box";
        EXPECT_EQ(Hint(x, 210), -1) << "the hint does not look at ellipses";
    }
    EXPECT_EQ(Click(500, 450), 0) << "the third point plays no part";
    EXPECT_EQ(Click(500, 500), 0) << "one point makes no ellipse";
}

TEST_F(PickItemTest, AClickOnATextOrAMeshNeverSelectsIt) {
    AddLayer("T", kLayText, 1);
    AddItem("T", {At(100, 200)});
    ASSERT_TRUE(store.SetDigDatString("T", kMesh, 1, 100, -200, "text"));
    AddLayer("M", kLayMesh, 2);
    AddItem("M", BoxRing(50, 150, 150, 250));
    AddLayer("X", 7, 3);
    AddItem("X", BoxRing(50, 150, 150, 250));
    EXPECT_EQ(Click(100, 200), 0);
    EXPECT_EQ(Hint(100, 200), -1);
}

TEST_F(PickItemTest, AnItemOutsideTheLastPaintIsNotHit) {
    AddLayer("A", kLayPolygon, 1);
    DigDat& dat = AddItem("A", BoxRing(100, 100, 200, 200));
    dat.drawnFlg = 0;
    EXPECT_EQ(Click(150, 150), 0);
    EXPECT_EQ(Hint(150, 150), -1);
    dat.drawnFlg = 1;
    dat.clipFlg = 0;
    EXPECT_EQ(Click(150, 150), 0);
    EXPECT_EQ(Hint(150, 150), -1);
}

TEST_F(PickItemTest, ItemsWithoutPointsAreNotHit) {
    for (const std::int32_t layType : {1, 2, 3, 4, 8}) {
        const std::string code = std::to_string(layType);
        AddLayer(code, layType, layType);
        AddItem(code, {});
    }
    EXPECT_EQ(Click(0, 0), 0);
    EXPECT_EQ(Hint(0, 0), -1);
}

TEST_F(PickItemTest, CoordinatesThatAreNoNumbersOrBeyondAllPixelsAreAnswered) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    for (const std::int32_t layType : {1, 2, 3, 4, 8}) {
        const std::string code = std::to_string(layType);
        AddLayer(code, layType, layType);
        for (const double odd : {kNaN, kInf, -kInf, 1e300, -1e300, 3e9}) {
            AddItem(code, {{odd, odd, odd}, {-odd, odd, odd}, {odd, 5, odd}, {odd, odd, odd}});
        }
    }
    const auto click = [this] {
        for (const std::int32_t v : {0, 500, INT32_MAX, INT32_MIN}) {
            EXPECT_GE(ShiftClick(v, v, 1), 0);
            Hint(v, v);
            SelectInRect(store, {v, v, 500, INT32_MAX}, place, false);
        }
    };
    click();
    store.view.Rotate = 30;
    click();
    store.view.Rotate = kNaN;
    click();
    store.view.Rotate = 0;
    store.view.Zoom = 0;
    click();
    store.view.Zoom = store.view.DotPerM = 100;
    store.view.DotPerM = 0;
    click();
    store.view.DotPerM = 100;
    store.view.ScaleX = 1e300;
    store.view.ScaleY = 0;
    place.viewX = kNaN;
    place.viewY = 1e308;
    click();
    // A NaN comes to lie at pixel 0, and there it is met as it is drawn.
    place.viewX = place.viewY = 0;
    store.view.ScaleX = store.view.ScaleY = 1;
    for (const std::int32_t layType : {2, 3, 4, 8}) Layer(std::to_string(layType)).actFlg = 0;
    for (DigDat& dat : Block("1").dats) dat.drawnFlg = 0;
    Item("1", 1).drawnFlg = 1;
    EXPECT_EQ(Click(0, 0), 1);
    EXPECT_EQ(Click(500, 500), 0);
}

TEST_F(PickItemTest, AnItemIsFoundByItsPointsWhateverItsRectangleTells) {
    AddLayer("L", kLayLine, 1);
    DigDat& dat = AddItem("L", {At(100, 100), At(200, 100)});
    dat.pnts.Change();
    dat.rect = {500, 500, 510, 510};
    for (int round = 0; round < 2; ++round) EXPECT_EQ(Click(150, 100), 1);
    EXPECT_FALSE(dat.pnts.InRect());
    dat.rect = kEmptyItemRect;
    EXPECT_EQ(Click(150, 100), 1);
}

TEST_F(PickItemTest, AnItemIsFoundWhereItsPointsHaveBeenMovedTo) {
    AddLayer("L", kLayLine, 1);
    DigDat& dat = AddItem("L", {At(100, 100), At(200, 100)});
    EXPECT_EQ(Click(150, 100), 1);
    EXPECT_TRUE(dat.pnts.InRect());
    for (int i = 0; i < 2; ++i) dat.pnts.Change()[i].y = -400;
    EXPECT_EQ(Click(150, 400), 1);
    ASSERT_TRUE(store.EditDigDatPnt("L", kMesh, 1, 0, At(100, 600)));
    ASSERT_TRUE(store.EditDigDatPnt("L", kMesh, 1, 1, At(200, 600)));
    EXPECT_EQ(Click(150, 600), 1);
    ASSERT_TRUE(store.InsertDigDatPnt("L", kMesh, 1, 1, At(300, 600)));  // the cleared new end is outside of its rectangle
    EXPECT_EQ(Click(150, 300), 1);
}

}  // namespace
}  // namespace orvane
