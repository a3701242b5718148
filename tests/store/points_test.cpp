#include <cmath>
#include <limits>

#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr std::int32_t kMaxInt = (std::numeric_limits<std::int32_t>::max)();
constexpr std::int32_t kMinInt = (std::numeric_limits<std::int32_t>::min)();

class PointsTest : public StoreTest {
protected:
    PointsTest() {
        MakeBlock("A", 1);
        MakeBlock("C", 1, kLayCircle);
    }
    void ExpectBounds(std::string_view code, double minX, double minY, double maxX, double maxY) {
        EXPECT_EQ(BlockOf(code, 1).minX, minX);
        EXPECT_EQ(BlockOf(code, 1).minY, minY);
        EXPECT_EQ(BlockOf(code, 1).maxX, maxX);
        EXPECT_EQ(BlockOf(code, 1).maxY, maxY);
    }
    std::vector<double> Xs(std::int32_t datID) {
        std::vector<double> xs;
        const DigDat& dat = Item("A", 1, datID);
        for (std::int32_t i = 0; i < dat.pntCnt; ++i) xs.push_back(dat.pnts[static_cast<std::size_t>(i)].x);
        return xs;
    }
    void AddLineOfThree() { AddItem("A", 1, 1, {{10, 1, 0}, {20, 2, 0}, {30, 3, 0}}); }
};

TEST_F(PointsTest, PointsAreStoredAsGivenAtTheEnd) {
    AddItem("A", 1, 1);
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {1.25, -2.5, 3.75}));
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {4, 5, 6}));
    EXPECT_EQ(store.PntCnt("A", 1, 1), 2);
    const DigPnt& pnt = Item("A", 1, 1).pnts[0];
    EXPECT_EQ(pnt.x, 1.25);
    EXPECT_EQ(pnt.y, -2.5);
    EXPECT_EQ(pnt.z, 3.75);
    EXPECT_FALSE(store.AddDigDatPnt("A", 1, 2, {}));
    EXPECT_FALSE(store.AddDigDatPnt("A", 2, 1, {}));
}

TEST_F(PointsTest, PointGoesToTheLastOfRepeatedIDs) {
    AddItem("A", 1, 1);
    AddItem("A", 1, 1);
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {1, 1, 0}));
    EXPECT_EQ(ItemAt("A", 1, 0).pntCnt, 0);
    EXPECT_EQ(ItemAt("A", 1, 1).pntCnt, 1);
}

TEST_F(PointsTest, FirstPointSetsTheRectangleLowTruncatedHighRoundedUp) {
    AddItem("A", 1, 1, {{1.7, -1.7, 9}});
    // Truncation is toward zero on both sides: -1.7 + 0.5 = -1.2 gives -1.
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{1, -1, 2, -1}));
}

TEST_F(PointsTest, LaterPointsGrowTheRectangle) {
    AddItem("A", 1, 1, {{10.5, 10.5, 0}});
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, 10, 11, 11}));
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {10.9, 10.9, 0}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, 10, 11, 11})) << "11 is at least 10.9 and stays";
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {11.2, 9.9, 0}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, 9, 11, 11})) << "trunc(11.2 + 0.5) is 11 again";
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {11.6, -3.2, 0}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, -3, 12, 11}));
}

TEST_F(PointsTest, FirstPointOfACircleIncludesTheRadiusAndTheSecondDoesNot) {
    AddItem("C", 1, 1, {{100, 200, 10.25}});
    EXPECT_EQ(Item("C", 1, 1).rect, (Rect{89, 189, 110, 210}));
    ExpectBounds("C", 89.75, 189.75, 110.25, 210.25);
    ASSERT_TRUE(store.AddDigDatPnt("C", 1, 1, {105, 205, 1000}));
    EXPECT_EQ(Item("C", 1, 1).rect, (Rect{89, 189, 110, 210}));
    ExpectBounds("C", 89.75, 189.75, 110.25, 210.25);
}

TEST_F(PointsTest, LaterCircleGrowsTheBlocksBoundsWithoutItsRadius) {
    AddItem("C", 1, 1, {{0, 0, 1}});
    AddItem("C", 1, 2, {{50, 60, 10}});
    EXPECT_EQ(Item("C", 1, 2).rect, (Rect{40, 50, 60, 70}));
    ExpectBounds("C", -1, -1, 50, 60);
}

TEST_F(PointsTest, FirstItemsFirstPointSetsTheBoundsAfresh) {
    AddItem("A", 1, 1, {{100, 200, 0}});
    ExpectBounds("A", 100, 200, 100, 200);
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {90, 210, 0}));
    ExpectBounds("A", 90, 200, 100, 210);
}

TEST_F(PointsTest, BoundsForgetTheOthersWhenANewFirstItemGetsItsFirstPoint) {
    AddItem("A", 1, 1, {{0, 0, 0}});
    AddItem("A", 1, 2);
    AddItem("A", 1, 3, {{500, 500, 0}});
    ExpectBounds("A", 0, 0, 500, 500);
    ASSERT_TRUE(store.DelDigDat("A", 1, 1));
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 2, {7, 8, 0}));
    ExpectBounds("A", 7, 8, 7, 8);
}

TEST_F(PointsTest, SecondItemsPointGrowsTheStartingBounds) {
    AddItem("A", 1, 1);
    AddItem("A", 1, 2, {{5, -6, 0}});
    ExpectBounds("A", 0, -6, 5, 0);
}

TEST_F(PointsTest, NonNumbersAndHugeCoordinatesAreStoredAndTheRectangleStaysWithin32Bits) {
    AddItem("A", 1, 1, {{kNaN, kInf, 0}});
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{0, kMaxInt, 0, kMaxInt}));
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {-kInf, -1e300, 0}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{kMinInt, kMinInt, 0, kMaxInt}));
    AddItem("A", 1, 2, {{5, 5, 0}, {kNaN, kNaN, 0}});
    // A non-number is neither below the left side nor at least the right one.
    EXPECT_EQ(Item("A", 1, 2).rect, (Rect{5, 5, 0, 0}));
    EXPECT_TRUE(std::isnan(Item("A", 1, 2).pnts[1].x));
}

TEST_F(PointsTest, AllPointsAtOnceReplaceTheOldOnesAndGrowTheBounds) {
    AddItem("A", 1, 1, {{1000, 1000, 0}});
    const DigPnt pnts[] = {{1.5, 2.5, 3}, {-4, 5, 6}, {7, -8, 9}};
    ASSERT_TRUE(store.SetDigDatPnts("A", 1, 1, pnts));
    EXPECT_EQ(Xs(1), (std::vector<double>{1.5, -4, 7}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{-4, -8, 7, 5})) << "set afresh by the array's first point";
    ExpectBounds("A", -4, -8, 7, 5);
    EXPECT_EQ(Item("A", 1, 1).pnts[2].z, 9);
}

TEST_F(PointsTest, AllPointsAtOnceOfACircleTakeTheRadiusOfTheFirst) {
    AddItem("C", 1, 1);
    const DigPnt pnts[] = {{0, 0, 10}, {20, 0, 100}};
    ASSERT_TRUE(store.SetDigDatPnts("C", 1, 1, pnts));
    EXPECT_EQ(Item("C", 1, 1).rect, (Rect{-10, -10, 20, 10}));
    ExpectBounds("C", -10, -10, 20, 10);
}

TEST_F(PointsTest, AllPointsAtOnceGoToTheLastOfRepeatedIDsAndNeedAnItemAndAPoint) {
    AddItem("A", 1, 1);
    AddItem("A", 1, 1);
    const DigPnt pnts[] = {{1, 1, 0}};
    ASSERT_TRUE(store.SetDigDatPnts("A", 1, 1, pnts));
    EXPECT_EQ(ItemAt("A", 1, 0).pntCnt, 0);
    EXPECT_EQ(ItemAt("A", 1, 1).pntCnt, 1);
    EXPECT_FALSE(store.SetDigDatPnts("A", 1, 1, {}));
    EXPECT_EQ(ItemAt("A", 1, 1).pntCnt, 1);
    EXPECT_FALSE(store.SetDigDatPnts("A", 1, 2, pnts));
    EXPECT_FALSE(store.SetDigDatPnts("A", 2, 1, pnts));
}

TEST_F(PointsTest, EditStoresThePointAndOnlyGrowsWithoutRounding) {
    AddLineOfThree();
    ASSERT_TRUE(store.EditDigDatPnt("A", 1, 1, 1, {40.9, 2.9, 7}));
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 40.9, 30}));
    EXPECT_EQ(Item("A", 1, 1).pnts[1].z, 7);
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, 1, 40, 3})) << "no 0.5 here";
    ExpectBounds("A", 10, 1, 40.9, 3);
    ASSERT_TRUE(store.EditDigDatPnt("A", 1, 1, 1, {15, -2.5, 0}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, -2, 40, 3})) << "a point moved inward leaves the bounds wide";
    ExpectBounds("A", 10, -2.5, 40.9, 3);
}

TEST_F(PointsTest, EditOfTheFirstItemsFirstPointOnlyGrows) {
    AddItem("A", 1, 1, {{10, 10, 0}});
    ASSERT_TRUE(store.EditDigDatPnt("A", 1, 1, 0, {20, 20, 0}));
    ExpectBounds("A", 10, 10, 20, 20);
}

TEST_F(PointsTest, EditTakesTheFirstOfRepeatedIDs) {
    AddItem("A", 1, 1, {{1, 1, 0}});
    AddItem("A", 1, 1, {{2, 2, 0}});
    ASSERT_TRUE(store.EditDigDatPnt("A", 1, 1, 0, {5, 5, 0}));
    EXPECT_EQ(ItemAt("A", 1, 0).pnts[0].x, 5);
    EXPECT_EQ(ItemAt("A", 1, 1).pnts[0].x, 2);
}

TEST_F(PointsTest, EditNeedsAnExistingPoint) {
    AddLineOfThree();
    AddItem("A", 1, 2);
    EXPECT_FALSE(store.EditDigDatPnt("A", 1, 1, 3, {}));
    EXPECT_FALSE(store.EditDigDatPnt("A", 1, 2, 0, {}));
    EXPECT_FALSE(store.EditDigDatPnt("A", 1, 3, 0, {}));
    EXPECT_FALSE(store.EditDigDatPnt("A", 2, 1, 0, {}));
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 20, 30}));
}

TEST_F(PointsTest, NegativeIndexIsRefusedAndChangesNothing) {
    AddLineOfThree();
    for (const std::int32_t idx : {-1, kMinInt}) {
        EXPECT_FALSE(store.EditDigDatPnt("A", 1, 1, idx, {500, 500, 0}));
        EXPECT_FALSE(store.InsertDigDatPnt("A", 1, 1, idx, {500, 500, 0}));
        EXPECT_FALSE(store.DelDigDatPnt("A", 1, 1, idx));
    }
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 20, 30}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, 1, 30, 3}));
    ExpectBounds("A", 10, 1, 30, 3);
}

TEST_F(PointsTest, InsertOverwritesThePointAndLengthensTheItem) {
    AddLineOfThree();
    ASSERT_TRUE(store.InsertDigDatPnt("A", 1, 1, 1, {15, 1.5, 9}));
    EXPECT_EQ(store.PntCnt("A", 1, 1), 4);
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 15, 30, 0})) << "the old second is gone and the last is cleared";
    EXPECT_EQ(Item("A", 1, 1).pnts[1].z, 9);
}

TEST_F(PointsTest, InsertBehindTheLastAppendsThePoint) {
    AddLineOfThree();
    ASSERT_TRUE(store.InsertDigDatPnt("A", 1, 1, 3, {40.9, -4.9, 0}));
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 20, 30, 40.9}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, -4, 40, 3}));
    ExpectBounds("A", 10, -4.9, 40.9, 3);
}

TEST_F(PointsTest, InsertOfTheFirstItemsFirstPointOnlyGrows) {
    AddItem("A", 1, 1);
    ASSERT_TRUE(store.InsertDigDatPnt("A", 1, 1, 0, {5, 6, 0}));
    ExpectBounds("A", 0, 0, 5, 6);
    // The starting rectangle is inside out, so both sides take the point.
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{5, 6, 5, 6}));
}

TEST_F(PointsTest, InsertTooFarBehindIsFalseAndLengthensTheItemAllTheSame) {
    AddLineOfThree();
    EXPECT_FALSE(store.InsertDigDatPnt("A", 1, 1, 5, {500, 500, 0}));
    EXPECT_EQ(store.PntCnt("A", 1, 1), 4);
    EXPECT_EQ(Xs(1), (std::vector<double>{10, 20, 30, 0})) << "the point that came along is cleared and can be read";
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, 1, 30, 3}));
    EXPECT_FALSE(store.InsertDigDatPnt("A", 1, 1, kMaxInt, {}));
    EXPECT_EQ(store.PntCnt("A", 1, 1), 5);
    EXPECT_FALSE(store.InsertDigDatPnt("A", 1, 9, 0, {}));
    EXPECT_FALSE(store.InsertDigDatPnt("A", 2, 1, 0, {}));
}

TEST_F(PointsTest, DeletionMovesTheLaterPointsDownAndLeavesTheBounds) {
    AddLineOfThree();
    EXPECT_TRUE(store.DelDigDatPnt("A", 1, 1, 0));
    EXPECT_EQ(Xs(1), (std::vector<double>{20, 30}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{10, 1, 30, 3}));
    ExpectBounds("A", 10, 1, 30, 3);
    EXPECT_FALSE(store.DelDigDatPnt("A", 1, 1, 2));
    EXPECT_FALSE(store.DelDigDatPnt("A", 1, 2, 0));
    EXPECT_FALSE(store.DelDigDatPnt("A", 2, 1, 0));
    EXPECT_TRUE(store.DelDigDatPnt("A", 1, 1, 1));
    EXPECT_EQ(Xs(1), (std::vector<double>{20}));
}

TEST_F(PointsTest, DeletionOfTheLastRemainingPointIsFalseThoughDone) {
    AddItem("A", 1, 1, {{1, 1, 0}});
    EXPECT_FALSE(store.DelDigDatPnt("A", 1, 1, 0));
    EXPECT_EQ(store.PntCnt("A", 1, 1), 0);
    EXPECT_FALSE(Item("A", 1, 1).pnts);
    ASSERT_TRUE(store.AddDigDatPnt("A", 1, 1, {7, 7, 0}));
    EXPECT_EQ(Item("A", 1, 1).rect, (Rect{7, 7, 7, 7})) << "the next point is a first one again";
    ExpectBounds("A", 7, 7, 7, 7);
}

TEST_F(PointsTest, CountsThatNoArrayCanHaveAreNotRaised) {
    AddItem("A", 1, 1);
    DigDat& dat = store.MutableBlock(store.FindBlock("A", 1).block).dats[0];
    for (const std::int32_t count : {kMaxInt, -1, kMinInt}) {
        dat.pntCnt = count;
        EXPECT_FALSE(store.AddDigDatPnt("A", 1, 1, {})) << count;
        EXPECT_FALSE(store.InsertDigDatPnt("A", 1, 1, 0, {})) << count;
        EXPECT_FALSE(store.EditDigDatPnt("A", 1, 1, 0, {})) << count;
        EXPECT_FALSE(store.DelDigDatPnt("A", 1, 1, 0)) << count;
        EXPECT_EQ(dat.pntCnt, count);
    }
    dat.pntCnt = 0;
}

}  // namespace
}  // namespace orvane
