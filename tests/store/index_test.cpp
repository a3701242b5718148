#include <gmock/gmock.h>

#include "tests/store/store_fixture.h"
#include "tests/support/store_test_access.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class IndexTest : public StoreTest {};

TEST_F(IndexTest, EmptyStoreHasNoSlotsAndFindsNothing) {
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
    EXPECT_THAT(store.Index(), IsEmpty());
    EXPECT_EQ(store.FindDigIndex("A", 0), -1);
    EXPECT_EQ(store.FindDigIndex("", 0), -1);
    EXPECT_EQ(store.FindBlock("A", 0), DigIndex{});
    EXPECT_EQ(store.FindLayDef("A"), -1);
}

TEST_F(IndexTest, LayerWithoutBlockIsNotInTheIndex) {
    ASSERT_TRUE(store.MakeLayer("A", kLayPoint));
    EXPECT_EQ(store.GetLayDatCnt("A", 0), 0);
    for (const std::int32_t meshNo : {-1, 0, 1, 533945}) EXPECT_EQ(store.FindDigIndex("A", meshNo), -1);
    EXPECT_EQ(store.FindLayDef("A"), 0);
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
}

TEST_F(IndexTest, SameMeshInTwoLayersAndSameCodeInTwoMeshesAreFoundApart) {
    MakeBlock("A", 1);
    MakeBlock("B", 1);
    MakeBlock("A", 2);
    EXPECT_EQ(store.FindBlock("A", 1), (DigIndex{0, 0}));
    EXPECT_EQ(store.FindBlock("B", 1), (DigIndex{1, 1}));
    EXPECT_EQ(store.FindBlock("A", 2), (DigIndex{2, 0}));
    EXPECT_EQ(store.FindBlock("B", 2), DigIndex{});
    for (const auto& [code, meshNo] : {std::pair{"A", 1}, std::pair{"B", 1}, std::pair{"A", 2}}) {
        const std::int32_t pos = store.FindDigIndex(code, meshNo);
        ASSERT_GE(pos, 0);
        EXPECT_EQ(store.Index()[static_cast<std::size_t>(pos)], store.FindBlock(code, meshNo));
    }
}

TEST_F(IndexTest, CodesThatDifferInCaseAreTwoLayers) {
    MakeBlock("ABC", 1);
    EXPECT_EQ(store.FindLayDef("abc"), -1);
    EXPECT_EQ(store.FindDigIndex("abc", 1), -1);
    MakeBlock("abc", 1);
    EXPECT_EQ(store.FindLayDef("ABC"), 0);
    EXPECT_EQ(store.FindLayDef("abc"), 1);
}

TEST_F(IndexTest, NegativeMeshNumbersAreKeysLikeOthers) {
    MakeBlock("A", -1);
    MakeBlock("A", (std::numeric_limits<std::int32_t>::min)());
    EXPECT_EQ(store.FindBlock("A", -1).block, 0);
    EXPECT_EQ(store.FindBlock("A", (std::numeric_limits<std::int32_t>::min)()).block, 1);
    EXPECT_EQ(store.FindBlock("A", 1).block, -1);
}

TEST_F(IndexTest, OrderHoldsWhileLaterBlocksTakeEarlierSlots) {
    MakeBlock("A", 1);
    MakeBlock("A", 2);
    MakeBlock("A", 3);
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    EXPECT_THAT(IndexNames(), ElementsAre("A2", "A3"));
    MakeBlock("A", 4);
    EXPECT_EQ(store.FindBlock("A", 4).block, 0);
    EXPECT_THAT(IndexNames(), ElementsAre("A2", "A3", "A4"));
}

TEST_F(IndexTest, SortPutsTheGreatestKeyFirst) {
    for (const char* code : {"A", "B", "C"}) ASSERT_TRUE(store.MakeLayer(code, kLayLine));
    MakeBlock("A", 1);
    MakeBlock("B", 1);
    MakeBlock("C", 1);
    MakeBlock("A", 2);
    MakeBlock("B", 2);
    MakeBlock("C", 2);
    for (std::int32_t i = 0; i < 3; ++i) ASSERT_EQ(store.SetLayIndex(std::string(1, static_cast<char>('A' + i)), i + 1), 1);
    store.SortDigIndex();
    EXPECT_THAT(IndexNames(), ElementsAre("C1", "C2", "B1", "B2", "A1", "A2"));
}

TEST_F(IndexTest, EqualKeysComeOutInTheOrderOfTheExchangeLoop) {
    MakeBlock("A", 1, kLayLine, 1);
    MakeBlock("B", 1, kLayLine, 1);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "B1"));
    // 2 changes places with the first 1, which thereby comes to stand behind the second one.
    MakeBlock("C", 1, kLayLine, 2);
    EXPECT_THAT(IndexNames(), ElementsAre("C1", "B1", "A1"));
}

TEST_F(IndexTest, KeyChangeWaitsForTheNextSort) {
    MakeBlock("A", 1, kLayLine, 1);
    MakeBlock("B", 1, kLayLine, 2);
    ASSERT_EQ(store.SetLayIndex("A", 9), 1);
    EXPECT_THAT(IndexNames(), ElementsAre("B1", "A1"));
    EXPECT_EQ(store.FindDigIndex("A", 1), 1);
    store.SortDigIndex();
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "B1"));
    EXPECT_EQ(store.FindDigIndex("A", 1), 0);
}

TEST_F(IndexTest, MakeOfAnyBlockSortsByTheKeysOfThatMoment) {
    MakeBlock("A", 1, kLayLine, 1);
    MakeBlock("B", 1, kLayLine, 2);
    ASSERT_EQ(store.SetLayIndex("A", 9), 1);
    MakeBlock("B", 2, kLayLine, 0);
    ASSERT_EQ(store.SetLayIndex("A", 0), 1);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "B1", "B2"));
}

TEST_F(IndexTest, LayerMadeAfterASortDoesNotChangeItsTies) {
    MakeBlock("A", 1, kLayLine, 1);
    MakeBlock("B", 1, kLayLine, 1);
    ASSERT_TRUE(store.MakeLayer("C", kLayLine));  // its key is 3
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "B1"));
    store.SortDigIndex();
    EXPECT_THAT(IndexNames(), ElementsAre("B1", "A1"));
}

TEST_F(IndexTest, SlotTakenOutByPositionMovesTheLaterOnesDown) {
    for (std::int32_t meshNo = 1; meshNo <= 4; ++meshNo) MakeBlock("A", meshNo);
    store.DelDigIndex(1);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "A3", "A4"));
    EXPECT_EQ(store.GetDigIndexCnt(), 3);
    EXPECT_EQ(store.FindDigIndex("A", 2), -1);
    EXPECT_EQ(store.FindDigIndex("A", 4), 2);
    EXPECT_EQ(store.Block(1).meshNo, 2) << "the block stays, it only cannot be found";
}

TEST_F(IndexTest, PositionsOutsideTheUsedRunTakeNothingOut) {
    MakeBlock("A", 1);
    for (const std::int32_t pos : {-1, 1, 99999, 100000, (std::numeric_limits<std::int32_t>::min)()}) store.DelDigIndex(pos);
    EXPECT_THAT(IndexNames(), ElementsAre("A1"));
}

TEST_F(IndexTest, SlotWithANegativeBlockEndsTheRun) {
    for (std::int32_t meshNo = 1; meshNo <= 4; ++meshNo) MakeBlock("A", meshNo);
    ASSERT_TRUE(StoreTestAccess::BreakSlot(store, 2));
    EXPECT_EQ(store.GetDigIndexCnt(), 2);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "A2"));
    EXPECT_EQ(store.FindDigIndex("A", 2), 1);
    EXPECT_EQ(store.FindDigIndex("A", 4), -1);
}

TEST_F(IndexTest, NextBlockTakesTheSlotWithANegativeBlockAndTheRunIsWholeAgain) {
    for (std::int32_t meshNo = 1; meshNo <= 4; ++meshNo) MakeBlock("A", meshNo);
    ASSERT_TRUE(StoreTestAccess::BreakSlot(store, 2));
    MakeBlock("A", 9);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "A2", "A9", "A4"));
    EXPECT_EQ(store.FindDigIndex("A", 4), 3);
}

TEST_F(IndexTest, TextsEndAtTheirFirstZeroByte) {
    using namespace std::string_view_literals;
    ASSERT_TRUE(store.MakeLayer("A\0B"sv, kLayLine));
    EXPECT_EQ(store.FindLayDef("A"), 0);
    EXPECT_EQ(store.FindLayDef("A\0C"sv), 0);
    EXPECT_FALSE(store.MakeLayer("A", kLayLine));
    MakeBlock("A\0D"sv, 1);
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.FindBlock("A", 1).block, 0);
}

TEST_F(IndexTest, CodesOverFiftyBytesMatchNothing) {
    const std::string code(51, 'a');
    MakeBlock(code.substr(0, 50), 1);
    EXPECT_EQ(store.FindLayDef(code), -1);
    EXPECT_EQ(store.FindDigIndex(code, 1), -1);
    EXPECT_EQ(store.SetLayIndex(code, 1), 0);
    EXPECT_EQ(store.DigMemDeleteLay(code), 0);
}

// --- Entries without a layer --------------------------------------------------------------------------------------------

TEST_F(IndexTest, BlockOfANewCodeAndABadTypeHasAnEntryThatNoKeyFinds) {
    MakeBlock("A", 1);
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 9, "p", 3));
    EXPECT_EQ(store.BlockCnt(), 2);
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.GetDigIndexCnt(), 2);
    EXPECT_EQ(store.Index()[1], (DigIndex{1, 1}));
    EXPECT_EQ(store.FindDigIndex("Q", 5), -1);
    EXPECT_EQ(store.FindDigIndex("", 5), -1);
    EXPECT_EQ(store.Layer(1).color, 0xFFFFFFU);
}

TEST_F(IndexTest, EntryWithoutALayerStaysBehindTheSortedList) {
    MakeBlock("A", 1, kLayLine, 1);
    MakeBlock("B", 1, kLayLine, 2);
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 0, "", 3));
    EXPECT_EQ(store.Index()[2], (DigIndex{2, 2}));
    ASSERT_EQ(store.SetLayIndex("A", 9), 1);
    store.SortDigIndex();
    EXPECT_EQ(store.Index()[0], (DigIndex{0, 0}));
    EXPECT_EQ(store.Index()[2], (DigIndex{2, 2}));
}

TEST_F(IndexTest, NextBlockPushesTheEntryWithoutALayerOutAndThenStandsTwice) {
    MakeBlock("A", 1);
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 0, "", 3));
    MakeBlock("A", 2);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "A2", "A2"));
    EXPECT_EQ(store.FindDigIndex("A", 2), 1);
    ASSERT_TRUE(store.DigMemDelete("A", 2));
    // One of the two entries went. The other stands for the freed block, whose mesh number now reads 0.
    EXPECT_EQ(store.GetDigIndexCnt(), 2);
    EXPECT_EQ(store.FindDigIndex("A", 2), -1);
    EXPECT_EQ(store.FindDigIndex("A", 0), 1);
    EXPECT_FALSE(store.DigMemAlloc("A", 0, kLayLine, "", 0));
}

TEST_F(IndexTest, EntryWithoutALayerComesToLifeUnderTheLayerThatTakesThatRecord) {
    MakeBlock("A", 1);
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 0, "", 3));
    ASSERT_TRUE(store.MakeLayer("X", kLayPoint));
    EXPECT_EQ(store.FindDigIndex("X", 5), 1);
    EXPECT_EQ(store.FindBlock("X", 5), (DigIndex{1, 1}));
    EXPECT_TRUE(store.AddDigDat("X", 5, 1, 0));
    EXPECT_EQ(store.FindDigIndex("Q", 5), -1);
}

TEST_F(IndexTest, BlockWithAnEmptyCodeCannotBeFoundAndMakesNoLayer) {
    ASSERT_TRUE(store.DigMemAlloc("", 5, kLayLine, "", 3));
    ASSERT_TRUE(store.DigMemAlloc("", 5, kLayLine, "", 3)) << "its key is never taken";
    EXPECT_EQ(store.BlockCnt(), 2);
    EXPECT_EQ(store.LayerCnt(), 0);
    EXPECT_EQ(store.GetDigIndexCnt(), 2);
    EXPECT_EQ(store.FindDigIndex("", 5), -1);
    EXPECT_FALSE(store.AddDigDat("", 5, 1, 0));
    EXPECT_FALSE(store.SetLayImage("", {}));
}

TEST_F(IndexTest, ItemsUnderAStaleEntryGoWhenTheSlotIsTakenAgain) {
    MakeBlock("A", 1);
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 0, "", 3));
    MakeBlock("A", 2);
    ASSERT_TRUE(store.DigMemDelete("A", 2));
    ASSERT_TRUE(store.AddDigDat("A", 0, 7, 0)) << "into the freed block";
    MakeBlock("B", 3);
    EXPECT_EQ(store.FindBlock("B", 3).block, 2);
    EXPECT_EQ(store.GetLayDatCnt("B", 3), 0);
    EXPECT_EQ(store.FindBlock("A", 3).block, 2) << "the stale entry now stands for the new block";
}

TEST_F(IndexTest, InitEndsTheDisorder) {
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 0, "", 3));
    store.Init();
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
    MakeBlock("B", 1, kLayLine, 1);
    MakeBlock("A", 1, kLayLine, 2);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "B1"));
}

}  // namespace
}  // namespace orvane
