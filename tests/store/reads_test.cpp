#include <limits>

#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

class ReadsTest : public StoreTest {
protected:
    ReadsTest() {
        EXPECT_TRUE(store.DigMemAlloc2("A", 1, kLayPolygon, "the path", 0, 1000, -2000));
        AddItem("A", 1, 7, {{1, 2, 3}, {4, 5, 6}});
        AddItem("A", 1, 9);
    }
};

TEST_F(ReadsTest, ItemCountOfABlock) {
    EXPECT_EQ(store.GetLayDatCnt("A", 1), 2);
    EXPECT_EQ(store.GetLayDatCnt("A", 2), 0);
    EXPECT_EQ(store.GetLayDatCnt("B", 1), 0);
}

TEST_F(ReadsTest, IDsByPosition) {
    EXPECT_EQ(store.GetDigDatInfo("A", 1, 0), 7);
    EXPECT_EQ(store.GetDigDatInfo("A", 1, 1), 9);
    EXPECT_EQ(store.GetDigDatInfo("A", 1, 3), -1);
    EXPECT_EQ(store.GetDigDatInfo("A", 2, 0), -1);
}

TEST_F(ReadsTest, PositionEqualToTheCountReadsTheClearedRecordBehind) {
    EXPECT_EQ(store.GetDigDatInfo("A", 1, 2), 0);
    MakeBlock("E", 1);
    EXPECT_EQ(store.GetDigDatInfo("E", 1, 0), 0) << "also where no array exists";
    EXPECT_EQ(store.GetDigDatInfo("E", 1, 1), -1);
    for (std::int32_t id = 3; id <= 1000; ++id) AddItem("A", 1, 1000 + id);
    ASSERT_EQ(BlockOf("A", 1).datCnt, BlockOf("A", 1).datMax);
    EXPECT_EQ(store.GetDigDatInfo("A", 1, 1000), 0) << "also where the array is full";
}

TEST_F(ReadsTest, NegativePositionIsNotThere) {
    EXPECT_EQ(store.GetDigDatInfo("A", 1, -1), -1);
    EXPECT_EQ(store.GetDigDatInfo("A", 1, (std::numeric_limits<std::int32_t>::min)()), -1);
}

TEST_F(ReadsTest, InfoOfAnItem) {
    ASSERT_TRUE(store.SetDigDatInfoEx("A", 1, 7, -12, true));
    DatInfo info;
    ASSERT_TRUE(store.GetDigDatInfoEx("A", 1, 7, info));
    EXPECT_EQ(info.type, kLayPolygon);
    EXPECT_EQ(info.lineTag, -12);
    EXPECT_EQ(info.cnt, 2);
    EXPECT_TRUE(info.active);
}

TEST_F(ReadsTest, InfoOfSomethingMissingLeavesTheOutputsAlone) {
    DatInfo info{1, 2, 3, true};
    EXPECT_FALSE(store.GetDigDatInfoEx("A", 1, 8, info));
    EXPECT_FALSE(store.GetDigDatInfoEx("A", 2, 7, info));
    EXPECT_EQ(info.type, 1);
    EXPECT_EQ(info.lineTag, 2);
    EXPECT_EQ(info.cnt, 3);
    EXPECT_TRUE(info.active);
}

TEST_F(ReadsTest, PointsComeInMapCoordinatesAndZUnchanged) {
    double x[2] = {};
    double y[2] = {};
    double z[2] = {};
    ASSERT_EQ(store.PntCnt("A", 1, 7), 2);
    ASSERT_TRUE(store.GetDigDatPnt("A", 1, 7, x, y, z));
    EXPECT_EQ(x[0], 1001);
    EXPECT_EQ(y[0], -1998);
    EXPECT_EQ(z[0], 3);
    EXPECT_EQ(x[1], 1004);
    EXPECT_EQ(y[1], -1995);
    EXPECT_EQ(z[1], 6);
    x[0] = 0;
    ASSERT_TRUE(store.GetDigDatPnt("A", 1, 7, x, y, nullptr));
    EXPECT_EQ(x[0], 1001);
}

TEST_F(ReadsTest, PointsOfAnEmptyItemAreNoneAndOfAMissingOneFalse) {
    EXPECT_EQ(store.PntCnt("A", 1, 9), 0);
    EXPECT_TRUE(store.GetDigDatPnt("A", 1, 9, nullptr, nullptr, nullptr));
    EXPECT_EQ(store.PntCnt("A", 1, 8), -1);
    EXPECT_FALSE(store.GetDigDatPnt("A", 1, 8, nullptr, nullptr, nullptr));
    EXPECT_FALSE(store.GetDigDatPnt("B", 1, 7, nullptr, nullptr, nullptr));
}

TEST_F(ReadsTest, PathOfABlock) {
    EXPECT_EQ(store.GetLayPath("A", 1), "the path");
    EXPECT_EQ(store.GetLayPath("A", 2), "");
}

class ActiveSetTest : public StoreTest {
protected:
    ActiveSetTest() {
        MakeBlock("A", 1);
        MakeBlock("A", 2);
        MakeBlock("B", 1);
        for (const std::int32_t id : {1, 2, 3}) {
            AddItem("A", 1, id);
            AddItem("A", 2, id);
            AddItem("B", 1, id);
        }
    }
};

TEST_F(ActiveSetTest, ClearCountsTheItemsThatWereInTheSet) {
    EXPECT_EQ(store.ClearActive(), 0);
    ASSERT_TRUE(store.SetDigDatInfoEx("A", 1, 1, 0, true));
    ASSERT_TRUE(store.SetDigDatInfoEx("A", 2, 3, 0, true));
    ASSERT_TRUE(store.SetDigDatInfoEx("B", 1, 2, 0, true));
    EXPECT_EQ(store.ClearActive(), 3);
    EXPECT_EQ(Item("A", 2, 3).active, 0);
    EXPECT_EQ(store.ClearActive(), 0);
}

TEST_F(ActiveSetTest, ItemsOfLayersThatCannotBeActiveKeepTheirFlag) {
    ASSERT_TRUE(store.SetDigDatInfoEx("A", 1, 1, 0, true));
    ASSERT_TRUE(store.SetDigDatInfoEx("B", 1, 2, 0, true));
    ASSERT_TRUE(store.SetLayActive("B", false));
    EXPECT_EQ(store.ClearActive(), 1);
    EXPECT_EQ(Item("B", 1, 2).active, 1);
}

TEST_F(ActiveSetTest, HiddenLayersAreClearedLikeOthers) {
    ASSERT_TRUE(store.SetDigDatInfoEx("A", 1, 1, 0, true));
    ASSERT_TRUE(store.SetLayDspFlg("A", false));
    EXPECT_EQ(store.ClearActive(), 1);
}

TEST_F(ActiveSetTest, JumpTargetIsTheMeanOfThePointsOnTheMap) {
    ASSERT_TRUE(store.DigMemAlloc2("C", 1, kLayLine, "", 0, 1000, 2000));
    AddItem("C", 1, 5, {{0, 0, 0}, {10, 20, 0}, {20, 100, 0}});
    bool hasPoints = false;
    double x = 0;
    double y = 0;
    ASSERT_TRUE(store.ActivateForJump("C", 1, 5, true, hasPoints, x, y));
    EXPECT_TRUE(hasPoints);
    EXPECT_EQ(x, 1010);
    EXPECT_EQ(y, 2040);
    EXPECT_EQ(Item("C", 1, 5).active, 1);
    ASSERT_TRUE(store.ActivateForJump("C", 1, 5, false, hasPoints, x, y));
    EXPECT_EQ(Item("C", 1, 5).active, 0);
}

TEST_F(ActiveSetTest, JumpToAnItemWithoutPointsHasNoMean) {
    bool hasPoints = true;
    double x = 5;
    double y = 6;
    ASSERT_TRUE(store.ActivateForJump("A", 1, 2, true, hasPoints, x, y));
    EXPECT_FALSE(hasPoints);
    EXPECT_EQ(x, 5);
    EXPECT_EQ(y, 6);
    EXPECT_EQ(Item("A", 1, 2).active, 1);
}

TEST_F(ActiveSetTest, JumpToSomethingMissingChangesNothing) {
    bool hasPoints = true;
    double x = 5;
    double y = 6;
    EXPECT_FALSE(store.ActivateForJump("A", 1, 9, true, hasPoints, x, y));
    EXPECT_FALSE(store.ActivateForJump("A", 9, 1, true, hasPoints, x, y));
    EXPECT_TRUE(hasPoints);
    EXPECT_EQ(x, 5);
    EXPECT_EQ(store.ClearActive(), 0);
}

TEST_F(ActiveSetTest, JumpTakesTheFirstOfRepeatedIDs) {
    AddItem("A", 1, 1);
    bool hasPoints = false;
    double x = 0;
    double y = 0;
    ASSERT_TRUE(store.ActivateForJump("A", 1, 1, true, hasPoints, x, y));
    EXPECT_EQ(ItemAt("A", 1, 0).active, 1);
    EXPECT_EQ(ItemAt("A", 1, 3).active, 0);
}

}  // namespace
}  // namespace orvane
