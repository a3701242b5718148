#include <gmock/gmock.h>

#include <cmath>

#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;

class BlocksTest : public StoreTest {};

TEST_F(BlocksTest, NewBlockHoldsWhatWasGiven) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 12, kLayLine, "dir/file.arc", 7, 100.9, -200.9));
    const DigBlock& block = store.Block(0);
    EXPECT_EQ(block.blkState, 1);
    EXPECT_EQ(block.path, "dir/file.arc");
    EXPECT_EQ(block.code.View(), "A");
    EXPECT_EQ(block.meshNo, 12);
    EXPECT_EQ(block.datCnt, 0);
    EXPECT_EQ(block.datMax, 0);
    EXPECT_EQ(block.GX, 100) << "truncated";
    EXPECT_EQ(block.GY, -200) << "toward zero";
    EXPECT_EQ(block.minX, 0);
    EXPECT_EQ(block.minY, 0);
    EXPECT_EQ(block.maxX, 0);
    EXPECT_EQ(block.maxY, 0);
    EXPECT_EQ(store.GetLayPath("A", 12), "dir/file.arc");
    EXPECT_EQ(LayerOf("A").layIndex, 7);
}

TEST_F(BlocksTest, OriginComesFromTheMeshNumber) {
    ASSERT_TRUE(store.DigMemAlloc("A", 533945, kLayLine, "", 0));
    EXPECT_EQ(store.Block(0).GX, 3170000);
    EXPECT_EQ(store.Block(0).GY, 4280000);
}

TEST_F(BlocksTest, OriginsThatAreNoWholeNumberOf32BitsAreKeptSafe) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayLine, "", 0, 1e300, std::nan("")));
    EXPECT_EQ(store.Block(0).GX, 2147483647);
    EXPECT_EQ(store.Block(0).GY, 0);
    ASSERT_TRUE(store.DigMemAlloc2("A", 2, kLayLine, "", 0, -INFINITY, -0.5));
    EXPECT_EQ(store.Block(1).GX, -2147483648.0);
    EXPECT_EQ(store.Block(1).GY, 0);
}

TEST_F(BlocksTest, PathsAreCutToTheirRecord) {
    ASSERT_TRUE(store.DigMemAlloc("A", 1, kLayLine, std::string(600, 'p'), 0));
    EXPECT_EQ(store.GetLayPath("A", 1), std::string(511, 'p'));
}

TEST_F(BlocksTest, PairThatExistsIsRefusedAndNothingChanges) {
    MakeBlock("A", 1, kLayLine, 5);
    EXPECT_FALSE(store.DigMemAlloc2("A", 1, kLayPolygon, "p", 9, 1, 1));
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_EQ(LayerOf("A").layType, kLayLine);
    EXPECT_EQ(LayerOf("A").layIndex, 5);
    EXPECT_EQ(store.GetLayPath("A", 1), "");
}

TEST_F(BlocksTest, SortKeyOfALayerIsFixedByTheBlockThatMadeIt) {
    ASSERT_TRUE(store.DigMemAlloc("A", 1, kLayLine, "", 7));
    ASSERT_TRUE(store.DigMemAlloc("A", 2, kLayLine, "", 9));
    EXPECT_EQ(LayerOf("A").layIndex, 7);
}

TEST_F(BlocksTest, SortKeyOfALayerMadeBeforehandIsNotTouchedByItsFirstBlock) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(store.DigMemAlloc("A", 1, kLayLine, "", 7));
    EXPECT_EQ(LayerOf("A").layIndex, 1);
}

TEST_F(BlocksTest, DeletingALayersBlocksLeavesTheLayer) {
    for (std::int32_t meshNo = 1; meshNo <= 3; ++meshNo) {
        MakeBlock("A", meshNo);
        MakeBlock("B", meshNo);
        AddItem("A", meshNo, 1);
    }
    EXPECT_EQ(store.DigMemDeleteLay("A"), 3);
    for (std::int32_t meshNo = 1; meshNo <= 3; ++meshNo) EXPECT_EQ(store.GetLayDatCnt("A", meshNo), 0);
    EXPECT_TRUE(store.SetLayColor("A", 5));
    EXPECT_THAT(IndexNames(), ElementsAre("B1", "B2", "B3"));
    EXPECT_EQ(store.BlockCnt(), 6);
    EXPECT_EQ(store.DigMemDeleteLay("A"), 0);
}

TEST_F(BlocksTest, DeletingAMeshTakesItFromAllLayers) {
    for (const char* code : {"A", "B", "C"}) {
        MakeBlock(code, 1);
        MakeBlock(code, 2);
    }
    EXPECT_EQ(store.DigMemDeleteMeshNo(1), 3);
    EXPECT_EQ(store.GetDigIndexCnt(), 3);
    for (const char* code : {"A", "B", "C"}) {
        EXPECT_EQ(store.FindBlock(code, 1).block, -1);
        EXPECT_NE(store.FindBlock(code, 2).block, -1);
    }
    EXPECT_EQ(store.DigMemDeleteMeshNo(0), 0) << "free slots read 0 and do not count";
}

TEST_F(BlocksTest, DeletedBlockLeavesAClearedFreeSlot) {
    ASSERT_TRUE(store.DigMemAlloc("A", 5, kLayLine, "path", 0));
    AddItem("A", 5, 1, {{1, 2, 3}});
    EXPECT_TRUE(store.DigMemDelete("A", 5));
    EXPECT_FALSE(store.DigMemDelete("A", 5));
    const DigBlock& block = store.Block(0);
    EXPECT_EQ(block.blkState, -2);
    EXPECT_EQ(block.path, "");
    EXPECT_TRUE(block.code.Empty());
    EXPECT_EQ(block.meshNo, 0);
    EXPECT_EQ(block.datCnt, 0);
    EXPECT_EQ(block.datMax, 0);
    EXPECT_TRUE(block.dats.empty());
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_EQ(store.FindDigIndex("A", 0), -1) << "a free slot's mesh number is no key";
}

TEST_F(BlocksTest, LowestFreeSlotIsTakenFirst) {
    for (std::int32_t meshNo = 0; meshNo < 6; ++meshNo) MakeBlock("A", meshNo);
    for (const std::int32_t meshNo : {4, 1, 3}) ASSERT_TRUE(store.DigMemDelete("A", meshNo));
    for (const std::int32_t slot : {1, 3, 4, 6}) {
        MakeBlock("B", slot);
        EXPECT_EQ(store.FindBlock("B", slot).block, slot);
    }
}

TEST_F(BlocksTest, ReusedSlotHandsItsTypeToAKnownLayer) {
    MakeBlock("A", 1, kLayLine);
    MakeBlock("A", 2, kLayPolygon);
    EXPECT_EQ(LayerOf("A").layType, kLayLine) << "the block array grew, so the type was ignored";
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    MakeBlock("A", 3, kLayPolygon);
    EXPECT_EQ(store.FindBlock("A", 3).block, 0);
    EXPECT_EQ(LayerOf("A").layType, kLayPolygon);
    AddItem("A", 2, 1);
    DatInfo info;
    ASSERT_TRUE(store.GetDigDatInfoEx("A", 2, 1, info));
    EXPECT_EQ(info.type, kLayPolygon) << "the other blocks of the layer are read by the new type";
}

TEST_F(BlocksTest, ReusedSlotHandsOnEvenATypeThatNoLayerIsMadeWith) {
    MakeBlock("A", 1, kLayLine);
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    MakeBlock("A", 1, 99);
    EXPECT_EQ(LayerOf("A").layType, 99);
    EXPECT_EQ(store.FindDigIndex("A", 1), 0);
}

TEST_F(BlocksTest, ReusedSlotKeepsTheFieldsThatAMakeDoesNotWrite) {
    MakeBlock("A", 1);
    store.MutableBlock(0).inView = 1;
    store.MutableBlock(0).blkFlg = 3;
    store.MutableBlock(0).orgMinX = 4;
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    MakeBlock("B", 2);
    EXPECT_EQ(store.Block(0).inView, 1);
    EXPECT_EQ(store.Block(0).blkFlg, 3);
    EXPECT_EQ(store.Block(0).orgMinX, 4);
}

TEST_F(BlocksTest, DeletingALayerWithAnEmptyCodeTakesTheBlocksWithoutOne) {
    MakeBlock("A", 1);
    ASSERT_TRUE(store.DigMemAlloc("", 5, kLayLine, "", 3));
    EXPECT_EQ(store.DigMemDeleteLay(""), 1);
    EXPECT_EQ(store.Block(1).blkState, -2);
    EXPECT_EQ(store.GetDigIndexCnt(), 2) << "its entry is not found, so it stays";
}

TEST_F(BlocksTest, BlockWithoutEntryIsStillDeletedByLayerAndTakesTheOtherOnesEntry) {
    MakeBlock("A", 1);
    store.DelDigIndex(0);
    MakeBlock("A", 1);
    EXPECT_EQ(store.FindBlock("A", 1).block, 1);
    EXPECT_TRUE(store.DigMemDelete("A", 1));
    EXPECT_EQ(store.Block(1).blkState, -2);
    EXPECT_EQ(store.Block(0).blkState, 1);
    EXPECT_EQ(store.DigMemDeleteLay("A"), 1);
}

}  // namespace
}  // namespace orvane
