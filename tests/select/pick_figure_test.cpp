// Picks of overlay figures and their vertices, and the nearest data vertex.
#include "select/pick_figure.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/select/pick_rig.h"

namespace orvane {
namespace {

class PickFigureTest : public ::testing::Test, protected PickRig {
protected:
    std::int32_t Add(std::int16_t type, const std::vector<DigPnt>& pnts, bool active = false) {
        const std::int32_t ID = store.MakeOrgDat(type, 1, 0, 0);
        for (const DigPnt& pnt : pnts) EXPECT_GT(store.AddOrgPnt(ID, pnt.x, pnt.y), 0);
        store.SetOrgDataActive(ID, active);
        return ID;
    }
    std::int32_t Pick(std::int32_t x, std::int32_t y) { return PickOrgFigure(store, {x, y}, place); }
    /// The vertex's index in figure `ID`, or -1.
    std::int32_t PickVertex(std::int32_t x, std::int32_t y, std::int32_t ID = 1) {
        const auto met = PickOrgPoint(store, {x, y}, place);
        return met && met->ID == ID ? met->index : -1;
    }
};

TEST_F(PickFigureTest, WithoutFiguresThereIsNothing) {
    EXPECT_EQ(Pick(0, 0), -1);
    EXPECT_FALSE(PickOrgPoint(store, {0, 0}, place));
    CDigMem fresh;
    EXPECT_EQ(PickOrgFigure(fresh, {0, 0}, place), -1);
    EXPECT_FALSE(PickOrgPoint(fresh, {0, 0}, place));
}

TEST_F(PickFigureTest, AFigureOfOnePointIsNeverHit) {
    Add(1, {At(100, 100)});
    Add(3, {At(100, 100)});
    EXPECT_EQ(Pick(100, 100), -1);
}

TEST_F(PickFigureTest, APointFigureOfTwoPointsIsPickedInASquareByTheScaleWhateverTheDevice) {
    struct Step {
        std::int32_t zoom, half;
    };
    constexpr Step kSteps[] = {{100001, 1}, {100000, 2}, {50001, 2}, {50000, 3}, {30001, 3}, {30000, 4}, {20001, 4}, {20000, 5},
                               {10001, 5},  {10000, 6},  {7001, 6},  {7000, 7},  {5001, 7},  {5000, 9},  {3001, 9},  {3000, 10}};
    const std::int32_t ID = Add(2, {At(100, 200), At(700, 700)});
    store.EditOrgDat(ID, 1, 1, 0, 0);
    store.view.DpiRatio = 3;
    for (const Step& step : kSteps) {
        store.view.Zoom = store.view.DotPerM = step.zoom;
        EXPECT_EQ(Pick(100 - step.half, 200 - step.half), ID) << step.zoom;
        EXPECT_EQ(Pick(100 + step.half - 1, 200 + step.half - 1), ID) << step.zoom;
        EXPECT_EQ(Pick(100 - step.half - 1, 200), -1) << step.zoom;
        EXPECT_EQ(Pick(100, 200 + step.half), -1) << step.zoom;
    }
}

TEST_F(PickFigureTest, ALineFigureIsPickedInItsBandsAlsoOffTheClientArea) {
    const std::int32_t ID = Add(2, {At(-2, 100), At(-2, 200), At(60, 200)});
    EXPECT_EQ(Pick(0, 150), ID);
    EXPECT_EQ(Pick(-4, 150), -1);
    EXPECT_EQ(Pick(30, 201), ID);
    EXPECT_EQ(Pick(30, 202), -1);
}

TEST_F(PickFigureTest, APolygonFigureIsAlwaysTestedInTheWorld) {
    const std::int32_t ID = Add(3, BoxRing(100.4, 100, 200.4, 200));
    EXPECT_EQ(Pick(200, 150), ID);
    EXPECT_EQ(Pick(100, 150), -1);
    EXPECT_EQ(Pick(201, 150), -1);
    store.view.Rotate = 90;  // (x, y) goes to (y, -x)
    EXPECT_EQ(Pick(150, -120), ID);
    EXPECT_EQ(Pick(150, 120), -1);
    store.view.Rotate = 0;
    Add(3, {At(0, 0), At(50, 0), At(50, 50)});
    EXPECT_EQ(Pick(40, 10), -1) << "a ring that is not closed";
}

TEST_F(PickFigureTest, ACircleFigureStandsAtTheHeightOfItsSecondPoint) {
    const std::int32_t ID = Add(4, {At(100, 100), At(130, 140)});  // a radius of 50
    EXPECT_EQ(Pick(100, 185), ID) << "around (100, 140)";
    EXPECT_EQ(Pick(100, 55), -1);
    EXPECT_EQ(Pick(52, 140), ID);
    EXPECT_EQ(Pick(152, 140), -1);
}

TEST_F(PickFigureTest, AnEllipseFigureIsTheBoxOfItsFirstTwoPoints) {
    const std::int32_t ID = Add(8, {At(140, 120), At(100, 100), At(900, 700)});
    EXPECT_EQ(Pick(120, 110), ID);
    EXPECT_EQ(Pick(101, 101), -1);
    EXPECT_EQ(Pick(500, 400), -1);
}

TEST_F(PickFigureTest, FiguresOfOtherTypesAreNotHitAndOfTwoTheFirstIs) {
    Add(5, BoxRing(100, 100, 200, 200));
    const std::int32_t first = Add(3, BoxRing(100, 100, 200, 200));
    Add(3, BoxRing(100, 100, 200, 200));
    EXPECT_EQ(Pick(150, 150), first);
}

TEST_F(PickFigureTest, WithoutMemoryThePickOfAFigureIsMinusTwo) {
    Add(2, {At(100, 100), At(200, 100)});
    ArrayFaults::FailFrom(1);
    EXPECT_EQ(Pick(150, 100), -2);
    ArrayFaults::Clear();
    EXPECT_EQ(Pick(150, 100), 1);
}

TEST_F(PickFigureTest, VerticesOfActiveFiguresArePickedTheFirstInALargerCircle) {
    Add(2, {At(100, 100), At(200, 100)});
    EXPECT_EQ(PickVertex(100, 100), -1) << "not active";
    store.SetOrgDataActive(1, true);
    EXPECT_EQ(PickVertex(100, 100), 0);
    EXPECT_EQ(PickVertex(96, 100), 0);
    EXPECT_EQ(PickVertex(103, 100), 0);
    EXPECT_EQ(PickVertex(94, 100), -1);
    EXPECT_EQ(PickVertex(106, 100), -1);
    EXPECT_EQ(PickVertex(198, 100), 1);
    EXPECT_EQ(PickVertex(201, 100), 1);
    EXPECT_EQ(PickVertex(196, 100), -1);
    EXPECT_EQ(PickVertex(204, 100), -1);
    EXPECT_EQ(PickVertex(104, 104), -1) << "the corner of its box";
}

TEST_F(PickFigureTest, OneVertexAloneIsPickedAndOfCoincidentOnesTheFirst) {
    Add(2, {At(300, 300)}, true);
    EXPECT_EQ(PickVertex(300, 300), 0);
    Add(2, {At(500, 500), At(400, 400), At(400, 400)}, true);
    EXPECT_EQ(PickVertex(400, 400, 2), 1);
}

TEST_F(PickFigureTest, VerticesOutsideTheClientAreaAreSkippedItsEdgesCountAsInside) {
    Add(2, {At(0, 0), At(1000, 800), At(-2, 400), At(1001, 400), At(500, 801)}, true);
    EXPECT_EQ(PickVertex(0, 0), 0);
    EXPECT_EQ(PickVertex(999, 799), 1);
    EXPECT_EQ(PickVertex(-1, 400), -1);
    EXPECT_EQ(PickVertex(1000, 400), -1);
    EXPECT_EQ(PickVertex(500, 800), -1);
}

TEST_F(PickFigureTest, FiguresThatAreNoNumbersOrBeyondAllPixelsAreAnswered) {
    for (const double odd : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e300, 3e9}) {
        for (const int type : {2, 3, 4, 8})
            Add(static_cast<std::int16_t>(type), {{odd, odd, 0}, {-odd, 5, 0}, {odd, odd, 0}}, true);
    }
    for (const std::int32_t v : {500, INT32_MAX, INT32_MIN}) {
        EXPECT_GE(Pick(v, v), -1);
        PickVertex(v, v);
    }
}

class NearDataPointTest : public PickFigureTest {};

TEST_F(NearDataPointTest, TheNearestVertexOfADrawnItemIsFoundInTheMap) {
    AddLayer("L", kLayLine, 1, 1000, 2000);
    AddItem("L", {{1, 1, 0}, {50, 60, 0}});
    AddItem("L", {{10, 10, 0}, {48, 58, 0}});
    const auto met = NearDataPoint(store, 1046, 2056);
    ASSERT_TRUE(met);
    EXPECT_EQ(met->datID, 2);
    EXPECT_EQ(met->index, 1);
    EXPECT_EQ(met->meshNo, kMesh);
    EXPECT_EQ(met->x, 1048);
    EXPECT_EQ(met->y, 2058);
    Item("L", 2).drawnFlg = 0;
    EXPECT_EQ(NearDataPoint(store, 1046, 2056)->datID, 1);
    Item("L", 1).clipFlg = 0;
    EXPECT_EQ(NearDataPoint(store, 1046, 2056)->datID, 1) << "what was drawn outside of the frame's area counts too";
}

TEST_F(NearDataPointTest, AllDataFartherThanTenThousandUnitsIsNotFound) {
    AddLayer("P", kLayPoint, 1);
    AddItem("P", {{10000, 0, 0}});
    EXPECT_FALSE(NearDataPoint(store, 0, 0));
    EXPECT_TRUE(NearDataPoint(store, 0.001, 0));
    EXPECT_FALSE(NearDataPoint(store, 0, std::numeric_limits<double>::quiet_NaN()));
    CDigMem fresh;
    EXPECT_FALSE(NearDataPoint(fresh, 0, 0));
}

TEST_F(NearDataPointTest, OfTwoCoincidentVerticesTheLowerIndexInTheWalkWins) {
    AddLayer("TOP", kLayLine, 1);
    AddLayer("LOW", kLayText, 2);
    AddItem("LOW", {{5, 5, 0}});
    Item("LOW", 1).datID = 77;
    AddItem("TOP", {{1, 1, 0}, {5, 5, 0}, {5, 5, 0}});
    AddItem("TOP", {{5, 5, 0}});
    const auto met = NearDataPoint(store, 5, 6);
    ASSERT_TRUE(met);
    EXPECT_EQ(met->datID, 1) << "blocks from the top down, items upward";
    EXPECT_EQ(met->index, 1);
    for (const std::int32_t ID : {1, 2}) Item("TOP", ID).drawnFlg = 0;
    EXPECT_EQ(NearDataPoint(store, 5, 6)->datID, 77) << "a text has vertices as well";
}

TEST_F(NearDataPointTest, AShownLayerOrABlockInViewIsEnough) {
    AddLayer("P", kLayPoint, 1).actFlg = 0;
    AddItem("P", {{5, 5, 0}});
    Layer("P").dspFlg = 0;
    EXPECT_TRUE(NearDataPoint(store, 5, 5));
    Layer("P").dspFlg = 1;
    Block("P").inView = 0;
    EXPECT_TRUE(NearDataPoint(store, 5, 5));
    Layer("P").dspFlg = 0;
    EXPECT_FALSE(NearDataPoint(store, 5, 5));
}

}  // namespace
}  // namespace orvane
