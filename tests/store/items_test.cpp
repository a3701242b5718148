#include <gmock/gmock.h>

#include "store/dat_lookup.h"
#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;

class ItemsTest : public StoreTest {
protected:
    ItemsTest() { MakeBlock("A", 1); }

    std::int32_t FreeID(std::string_view code = "A") {
        bool found = false;
        const std::int32_t id = store.FreeDigDatID(code, 1, found);
        EXPECT_TRUE(found);
        return id;
    }
};

TEST_F(ItemsTest, NewItemHasItsStartingValues) {
    ASSERT_TRUE(store.AddDigDat("A", 1, 42, -3));
    const DigDat& dat = ItemAt("A", 1, 0);
    EXPECT_EQ(dat.datID, 42);
    EXPECT_EQ(dat.lineTag, -3);
    EXPECT_EQ(dat.subLayNo, 0);
    EXPECT_EQ(dat.pntCnt, 0);
    EXPECT_EQ(dat.clipFlg, 1);
    EXPECT_EQ(dat.drawnFlg, 0);
    EXPECT_EQ(dat.active, 0);
    EXPECT_EQ(dat.rect, (Rect{99999999, 99999999, -99999999, -99999999}));
    EXPECT_FALSE(dat.pnts);
    EXPECT_FALSE(dat.orgPnts);
    EXPECT_EQ(dat.meshAttr, nullptr);
    EXPECT_EQ(dat.str, nullptr);
}

TEST_F(ItemsTest, MissingBlockTakesNoItem) {
    EXPECT_FALSE(store.AddDigDat("A", 2, 1, 0));
    EXPECT_FALSE(store.AddDigDat("B", 1, 1, 0));
}

TEST_F(ItemsTest, IDsMayRepeat) {
    ASSERT_TRUE(store.AddDigDat("A", 1, 5, 1));
    ASSERT_TRUE(store.AddDigDat("A", 1, 5, 2));
    EXPECT_EQ(store.GetLayDatCnt("A", 1), 2);
    EXPECT_EQ(Item("A", 1, 5).lineTag, 1) << "reads search from the first up";
}

TEST_F(ItemsTest, ThousandAndFirstItemRaisesTheCapacityTo2000) {
    for (std::int32_t i = 1; i <= 1001; ++i) {
        ASSERT_TRUE(store.AddDigDat("A", 1, i, 0));
        ASSERT_EQ(BlockOf("A", 1).datMax, i <= 1000 ? 1000 : 2000) << i;
    }
    EXPECT_EQ(BlockOf("A", 1).datCnt, 1001);
}

TEST_F(ItemsTest, DeletingTheOnlyItemFreesTheArray) {
    ASSERT_TRUE(store.AddDigDat("A", 1, 1, 0));
    EXPECT_TRUE(store.DelDigDat("A", 1, 1));
    EXPECT_EQ(BlockOf("A", 1).datCnt, 0);
    EXPECT_EQ(BlockOf("A", 1).datMax, 0);
    EXPECT_EQ(BlockOf("A", 1).dats.data(), nullptr);
    ASSERT_TRUE(store.AddDigDat("A", 1, 2, 0));
    EXPECT_EQ(BlockOf("A", 1).datMax, 1000);
}

TEST_F(ItemsTest, DeletionTakesTheFirstOfRepeatedIDsAndClosesTheGap) {
    for (const std::int32_t id : {1, 5, 2, 5, 3}) ASSERT_TRUE(store.AddDigDat("A", 1, id, 0));
    EXPECT_TRUE(store.DelDigDat("A", 1, 5));
    EXPECT_THAT(ItemIDs("A", 1), ElementsAre(1, 2, 5, 3));
    EXPECT_EQ(BlockOf("A", 1).datMax, 1000);
    EXPECT_FALSE(store.DelDigDat("A", 1, 9));
    EXPECT_FALSE(store.DelDigDat("A", 2, 1));
    EXPECT_EQ(store.GetDigDatInfo("A", 1, 4), 0) << "the old last record reads as cleared";
}

TEST_F(ItemsTest, EmptyBlockHasNothingToDelete) { EXPECT_FALSE(store.DelDigDat("A", 1, 0)); }

TEST_F(ItemsTest, DeletionLeavesTheBlocksBounds) {
    AddItem("A", 1, 1, {{0, 0, 0}, {100, 50, 0}});
    AddItem("A", 1, 2, {{10, 10, 0}});
    ASSERT_TRUE(store.DelDigDat("A", 1, 1));
    EXPECT_EQ(BlockOf("A", 1).maxX, 100);
    EXPECT_EQ(BlockOf("A", 1).maxY, 50);
}

TEST_F(ItemsTest, FreeIDIsOneMoreThanTheGreatest) {
    EXPECT_EQ(FreeID(), 1);
    AddItem("A", 1, 7);
    AddItem("A", 1, 3);
    EXPECT_EQ(FreeID(), 8);
    MakeBlock("B", 1);
    EXPECT_EQ(FreeID("B"), 1) << "other blocks of the mesh do not count";
}

TEST_F(ItemsTest, FreeIDIsOneWhereAllAreNegative) {
    AddItem("A", 1, -5);
    AddItem("A", 1, -1);
    EXPECT_EQ(FreeID(), 1);
    AddItem("A", 1, 0);
    EXPECT_EQ(FreeID(), 1);
}

TEST_F(ItemsTest, FreeIDOfAMissingBlockSaysSo) {
    bool found = true;
    EXPECT_EQ(store.FreeDigDatID("B", 1, found), 0);
    EXPECT_FALSE(found);
}

TEST_F(ItemsTest, NoIDIsFreeAboveTheGreatestPossible) {
    AddItem("A", 1, 2147483646);
    EXPECT_EQ(FreeID(), 2147483647);
    AddItem("A", 1, 2147483647);
    EXPECT_EQ(FreeID(), -1);
    EXPECT_EQ(store.CopyData("A", 1, 2147483646, "A", 1), 0);
    EXPECT_EQ(store.GetLayDatCnt("A", 1), 2);
}

TEST_F(ItemsTest, SubLayerOfAnItemMustExistUnlessItIsZeroOrLess) {
    AddItem("A", 1, 4);
    EXPECT_FALSE(store.SetDigDatSubLayer("A", 1, 4, 2));
    ASSERT_TRUE(store.SetSubLayer("A", 2, "", true, 0, 1, 0, false));
    EXPECT_TRUE(store.SetDigDatSubLayer("A", 1, 4, 2));
    EXPECT_EQ(Item("A", 1, 4).subLayNo, 2);
    EXPECT_FALSE(store.SetDigDatSubLayer("A", 1, 4, 3));
    EXPECT_EQ(Item("A", 1, 4).subLayNo, 2);
    EXPECT_TRUE(store.SetDigDatSubLayer("A", 1, 4, 0));
    EXPECT_EQ(Item("A", 1, 4).subLayNo, 0);
    EXPECT_TRUE(store.SetDigDatSubLayer("A", 1, 4, -6));
    EXPECT_EQ(Item("A", 1, 4).subLayNo, -6);
}

TEST_F(ItemsTest, SubLayerOfAMissingItemIsStillTrueAndOfAMissingBlockFalse) {
    EXPECT_TRUE(store.SetDigDatSubLayer("A", 1, 99, 0));
    EXPECT_FALSE(store.SetDigDatSubLayer("A", 2, 99, 0));
}

TEST_F(ItemsTest, SubLayersOfManyItemsAreWrittenUnchecked) {
    for (std::int32_t id = 1; id <= 200; ++id) AddItem("A", 1, id);
    const std::int32_t ids[] = {150, 999, 3, -1};
    const std::int32_t subs[] = {7, 8, 9, 10};
    EXPECT_TRUE(store.SetDatSubLayerEx("A", 1, ids, subs));
    EXPECT_EQ(Item("A", 1, 150).subLayNo, 7);
    EXPECT_EQ(Item("A", 1, 3).subLayNo, 9);
    EXPECT_EQ(Item("A", 1, 4).subLayNo, 0);
}

TEST_F(ItemsTest, SubLayersOfManyItemsAnswerFalseWhenNoItemIsMet) {
    AddItem("A", 1, 1);
    const std::int32_t ids[] = {2, 3};
    const std::int32_t subs[] = {7, 8};
    EXPECT_FALSE(store.SetDatSubLayerEx("A", 1, ids, subs));
    EXPECT_FALSE(store.SetDatSubLayerEx("A", 2, ids, subs));
    EXPECT_FALSE(store.SetDatSubLayerEx("A", 1, {}, {}));
    const std::int32_t one[] = {1};
    EXPECT_FALSE(store.SetDatSubLayerEx("A", 1, one, {})) << "a missing second value";
    EXPECT_EQ(Item("A", 1, 1).subLayNo, 0);
}

TEST_F(ItemsTest, SubLayersOfManyItemsWriteOneOfRepeatedIDs) {
    for (int i = 0; i < 3; ++i) AddItem("A", 1, 5);
    const std::int32_t ids[] = {5};
    const std::int32_t subs[] = {7};
    EXPECT_TRUE(store.SetDatSubLayerEx("A", 1, ids, subs));
    int written = 0;
    for (const DigDat& dat : BlockOf("A", 1).dats) written += dat.subLayNo == 7;
    EXPECT_EQ(written, 1);
}

TEST_F(ItemsTest, InfoIsWrittenToTheFirstItemWithTheID) {
    ASSERT_TRUE(store.AddDigDat("A", 1, 5, 0));
    ASSERT_TRUE(store.AddDigDat("A", 1, 5, 0));
    EXPECT_TRUE(store.SetDigDatInfoEx("A", 1, 5, 11, true));
    EXPECT_EQ(ItemAt("A", 1, 0).lineTag, 11);
    EXPECT_EQ(ItemAt("A", 1, 0).active, 1);
    EXPECT_EQ(ItemAt("A", 1, 1).lineTag, 0);
    EXPECT_TRUE(store.SetDigDatInfoEx("A", 1, 5, 12, false));
    EXPECT_EQ(ItemAt("A", 1, 0).active, 0);
    EXPECT_FALSE(store.SetDigDatInfoEx("A", 1, 6, 11, true));
    EXPECT_FALSE(store.SetDigDatInfoEx("A", 2, 5, 11, true));
}

// --- Large blocks: the lookup answers what the walks would ---------------------------------------------------------------

class LargeBlockTest : public StoreTest {
protected:
    /// IDs 0, 1, ... with each one repeated in reverse behind them.
    LargeBlockTest() {
        MakeBlock("A", 1);
        for (std::int32_t id = 0; id < kIDs; ++id) EXPECT_TRUE(store.AddDigDat("A", 1, id, 0));
        for (std::int32_t id = kIDs; id-- > 0;) EXPECT_TRUE(store.AddDigDat("A", 1, id, 1));
    }
    /// First position with that ID by a walk, or -1.
    std::int32_t WalkUp(std::int32_t id) {
        const std::vector<std::int32_t> ids = ItemIDs("A", 1);
        const auto met = std::find(ids.begin(), ids.end(), id);
        return met == ids.end() ? -1 : static_cast<std::int32_t>(met - ids.begin());
    }
    std::int32_t WalkDown(std::int32_t id) {
        const std::vector<std::int32_t> ids = ItemIDs("A", 1);
        const auto met = std::find(ids.rbegin(), ids.rend(), id);
        return met == ids.rend() ? -1 : static_cast<std::int32_t>(ids.rend() - met) - 1;
    }
    std::int32_t FoundUp(std::int32_t id) {
        const DigDat* dat = store.FindDat("A", 1, id);
        return dat == nullptr ? -1 : static_cast<std::int32_t>(dat - BlockOf("A", 1).dats.data());
    }
    /// AddDigDatPnt looks from the last down; the item that got the point tells where it stopped.
    std::int32_t FoundDown(std::int32_t id) {
        if (!store.AddDigDatPnt("A", 1, id, {1, 1, 0})) return -1;
        const DigBlock& block = BlockOf("A", 1);
        for (std::size_t i = 0; i < block.dats.size(); ++i) {
            if (block.dats[i].pntCnt == 0) continue;
            store.MutableBlock(0).dats[i].pnts.Free();
            store.MutableBlock(0).dats[i].pntCnt = 0;
            return static_cast<std::int32_t>(i);
        }
        return -1;
    }
    void ExpectSearchesAgree() {
        for (const std::int32_t id : {-1, 0, 1, 63, 64, 65, 150, 198, 199, 200, 500, 501}) {
            EXPECT_EQ(FoundUp(id), WalkUp(id)) << id;
            EXPECT_EQ(FoundDown(id), WalkDown(id)) << id;
        }
    }
    static constexpr std::int32_t kIDs = 200;
};

TEST_F(LargeBlockTest, SearchesMeetTheItemsThatWalksMeet) {
    ExpectSearchesAgree();
    EXPECT_NE(BlockOf("A", 1).datLookup, nullptr);
}

TEST_F(LargeBlockTest, SearchesFollowAddedItems) {
    ExpectSearchesAgree();
    for (const std::int32_t id : {500, 64, -1, 500}) ASSERT_TRUE(store.AddDigDat("A", 1, id, 0));
    ExpectSearchesAgree();
    bool found = false;
    EXPECT_EQ(store.FreeDigDatID("A", 1, found), 501);
}

TEST_F(LargeBlockTest, SearchesFollowDeletedItems) {
    ExpectSearchesAgree();
    for (const std::int32_t id : {64, 64, 199, 0}) ASSERT_TRUE(store.DelDigDat("A", 1, id));
    ExpectSearchesAgree();
    EXPECT_TRUE(store.DelDigDat("A", 1, 199));
    ExpectSearchesAgree();
    bool found = false;
    EXPECT_EQ(store.FreeDigDatID("A", 1, found), 199);
}

TEST_F(LargeBlockTest, SearchesFollowItemsDeletedFromTheEnd) {
    for (std::int32_t id = 300; id < 340; ++id) ASSERT_TRUE(store.AddDigDat("A", 1, id, 0));
    bool found = false;
    for (std::int32_t id = 339; id >= 310; --id) {
        ASSERT_TRUE(store.DelDigDat("A", 1, id));
        EXPECT_NE(BlockOf("A", 1).datLookup, nullptr) << "it stays for the next one";
        EXPECT_EQ(FoundUp(id), -1);
        EXPECT_EQ(store.FreeDigDatID("A", 1, found), id) << "above the greatest that is left";
    }
    ExpectSearchesAgree();
    ASSERT_TRUE(store.AddDigDat("A", 1, 500, 0));
    ASSERT_TRUE(store.AddDigDat("A", 1, 320, 0));
    EXPECT_EQ(store.FreeDigDatID("A", 1, found), 501);
    ASSERT_TRUE(store.DelDigDat("A", 1, 320));
    ASSERT_TRUE(store.DelDigDat("A", 1, 500));
    ASSERT_TRUE(store.AddDigDat("A", 1, 400, 0)) << "while nobody knows the greatest";
    EXPECT_EQ(store.FreeDigDatID("A", 1, found), 401);
    ExpectSearchesAgree();
}

TEST_F(LargeBlockTest, ADeletedItemIsTheFirstOfItsIDThoughTheLastItemHasItToo) {
    ASSERT_EQ(ItemIDs("A", 1).back(), 0);
    ASSERT_TRUE(store.DelDigDat("A", 1, 0));
    EXPECT_EQ(ItemIDs("A", 1).front(), 1);
    EXPECT_EQ(ItemIDs("A", 1).back(), 0);
    ExpectSearchesAgree();
}

TEST_F(LargeBlockTest, SearchesFollowCopies) {
    ExpectSearchesAgree();
    EXPECT_EQ(store.CopyData("A", 1, 150, "A", 1), 200);
    EXPECT_TRUE(store.CopyDatInBlock("A", 1, 150, 500));
    ExpectSearchesAgree();
}

TEST_F(LargeBlockTest, SearchesWalkWhenThereIsNoMemoryForALookup) {
    ArrayFaults::FailFrom(1);
    EXPECT_EQ(FoundUp(150), WalkUp(150));
    EXPECT_EQ(store.SetDigDatInfoEx("A", 1, 199, 5, false), true);
    bool found = false;
    EXPECT_EQ(store.FreeDigDatID("A", 1, found), 200);
    EXPECT_EQ(FoundUp(999), -1);
    EXPECT_FALSE(store.AddDigDatPnt("A", 1, 0, {}));
    ArrayFaults::Clear();
    EXPECT_EQ(BlockOf("A", 1).datLookup, nullptr);
    ExpectSearchesAgree();
}

TEST_F(LargeBlockTest, LookupIsDroppedWhenItCannotTakeAnItem) {
    ExpectSearchesAgree();
    for (std::int32_t id = 1000; BlockOf("A", 1).datLookup != nullptr; ++id) {
        ASSERT_LT(id, 3000) << "the lookup never had to grow";
        // The item array has room more often than not; then the one growth asked for is the lookup's.
        ArrayFaults::FailFrom(1);
        const bool added = store.AddDigDat("A", 1, id, 0);
        ArrayFaults::Clear();
        ASSERT_TRUE(added || store.AddDigDat("A", 1, id, 0));
    }
    ExpectSearchesAgree();
}

}  // namespace
}  // namespace orvane
