#include <gmock/gmock.h>

#include <random>

#include "store/dat_lookup.h"
#include "tests/store/store_fixture.h"
#include "tests/support/store_dump.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using Place = CDigMem::BlockPlace;

class ReaderRecordsTest : public StoreTest {
protected:
    std::int32_t Bare(std::string_view code, std::int32_t meshNo, Place place = Place::LowestFreeSlot) {
        const std::int32_t pos = store.MakeBareBlock(place);
        if (pos < 0) return pos;
        store.MutableBlock(pos).code.Set(code);
        store.MutableBlock(pos).meshNo = meshNo;
        return pos;
    }
    bool Append(std::string_view code, std::int32_t meshNo) {
        const std::int32_t pos = Bare(code, meshNo);
        return pos >= 0 && store.IndexBareBlock(pos);
    }
};

TEST_F(ReaderRecordsTest, BareBlockIsInUseClearedAndNotFound) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    const std::int32_t pos = Bare("A", 3);
    ASSERT_EQ(pos, 0);
    EXPECT_EQ(store.Block(0).blkState, 1);
    EXPECT_EQ(store.Block(0).datCnt, 0);
    EXPECT_EQ(store.Block(0).datMax, 0);
    EXPECT_EQ(store.FindDigIndex("A", 3), -1);
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
    ASSERT_TRUE(store.IndexBareBlock(pos));
    EXPECT_EQ(store.FindDigIndex("A", 3), 0);
}

TEST_F(ReaderRecordsTest, BareBlockTakesTheLowestFreeSlotOrOnRequestTheEnd) {
    for (std::int32_t meshNo = 0; meshNo < 3; ++meshNo) MakeBlock("A", meshNo);
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    ASSERT_TRUE(store.DigMemDelete("A", 0));
    EXPECT_EQ(Bare("A", 7, Place::End), 3);
    EXPECT_EQ(Bare("A", 8), 0);
    EXPECT_EQ(Bare("A", 9), 1);
    EXPECT_EQ(Bare("A", 10), 4);
}

TEST_F(ReaderRecordsTest, DroppedBlockLeavesTheEndOfTheArrayWithItsItems) {
    MakeBlock("A", 1);
    const std::string before = DumpStore(store);
    const std::int32_t pos = Bare("A", 2, Place::End);
    ASSERT_TRUE(store.AppendReadDat(pos, DigDat{}));
    store.DropBareBlock(pos);
    EXPECT_EQ(DumpStore(store), before);
    MakeBlock("A", 3);
    EXPECT_EQ(store.FindBlock("A", 3).block, 1);
}

TEST_F(ReaderRecordsTest, DroppedBlockWithOthersBehindItBecomesAFreeSlot) {
    const std::int32_t pos = Bare("A", 2, Place::End);
    MakeBlock("A", 1);
    store.DropBareBlock(pos);
    EXPECT_EQ(store.BlockCnt(), 2);
    EXPECT_EQ(store.Block(0).blkState, kFreeBlock);
    EXPECT_EQ(store.MakeBareBlock(Place::LowestFreeSlot), 0);
}

TEST_F(ReaderRecordsTest, AppendedEntryStaysAtTheEndUntilTheNextSort) {
    MakeBlock("A", 1);
    MakeBlock("B", 1);
    ASSERT_TRUE(store.SetLayIndex("A", 9));
    ASSERT_TRUE(store.SetLayIndex("B", 1));
    store.SortDigIndex();
    ASSERT_TRUE(Append("A", 2));
    ASSERT_TRUE(Append("B", 2));
    ASSERT_TRUE(Append("A", 3));
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "B1", "A2", "B2", "A3"));
    EXPECT_EQ(store.FindDigIndex("A", 3), 4);
    ASSERT_TRUE(store.DigMemDelete("B", 2));
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "B1", "A2", "A3"));
    store.SortDigIndex();
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "A2", "A3", "B1"));
    ASSERT_TRUE(Append("A", 4));
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "A2", "A3", "B1", "A4"));
    MakeBlock("B", 5);
    EXPECT_THAT(IndexNames(), ElementsAre("A1", "A2", "A3", "A4", "B1", "B5")) << "a make sorts";
}

TEST_F(ReaderRecordsTest, BlockWithoutALayerPointsAtTheFirstUnusedRecordAndIsNotFound) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(Append("X", 1));
    ASSERT_TRUE(Append("X", 1));
    ASSERT_TRUE(Append("A", 1));
    EXPECT_THAT(store.Index(), ElementsAre(DigIndex{0, 1}, DigIndex{1, 1}, DigIndex{2, 0}));
    EXPECT_EQ(store.FindDigIndex("X", 1), -1);
    EXPECT_EQ(store.FindDigIndex("A", 1), 2);
}

TEST_F(ReaderRecordsTest, SecondBlockWithAKeyHasItsEntryAndLookupsMeetTheFirst) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(Append("A", 1));
    ASSERT_TRUE(Append("A", 1));
    EXPECT_THAT(store.Index(), ElementsAre(DigIndex{0, 0}, DigIndex{1, 0}));
    EXPECT_EQ(store.FindBlock("A", 1).block, 0);
    for (std::int32_t meshNo = 2; meshNo < 100; ++meshNo) {
        ASSERT_TRUE(Append("A", meshNo));
        ASSERT_EQ(store.FindBlock("A", meshNo).block, meshNo);
        ASSERT_EQ(store.FindBlock("A", 1).block, 0);
        ASSERT_EQ(store.FindBlock("A", meshNo + 1).block, -1);
    }
}

TEST_F(ReaderRecordsTest, FullIndexTakesNoMore) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    for (std::int32_t i = 0; i < kMaxDigIndex; ++i) ASSERT_TRUE(Append("A", i));
    EXPECT_FALSE(store.IndexHasRoom());
    EXPECT_FALSE(Append("A", -1));
    EXPECT_EQ(store.GetDigIndexCnt(), kMaxDigIndex);
    EXPECT_EQ(store.FindDigIndex("A", kMaxDigIndex - 1), kMaxDigIndex - 1);
}

TEST_F(ReaderRecordsTest, IndexFullOfBlocksWithoutALayerTakesNoMore) {
    for (std::int32_t i = 0; i < kMaxDigIndex; ++i) {
        ASSERT_EQ(store.FindDigIndex("X", 1), -1);
        ASSERT_TRUE(Append("X", 1));
    }
    EXPECT_FALSE(Append("X", 1));
    EXPECT_EQ(store.GetDigIndexCnt(), kMaxDigIndex);
}

/// The index as bare slots, with the three steps run as they are described.
class SlotModel {
public:
    explicit SlotModel(CDigMem& store) : store_(store) {}
    void Append(std::int32_t block, std::int32_t layer) { slots.push_back({block, layer}); }
    void Remove(std::int32_t block) {
        std::erase_if(slots, [=](const DigIndex& entry) { return entry.block == block; });
    }
    void Sort() {
        std::vector<std::pair<std::int32_t, std::int32_t>> keys;
        for (std::int32_t i = 0; i < store_.LayerCnt(); ++i) keys.emplace_back(store_.Layer(i).layIndex, i);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            for (std::size_t j = i + 1; j < keys.size(); ++j) {
                if (keys[i].first < keys[j].first) std::swap(keys[i], keys[j]);
            }
        }
        std::vector<DigIndex> sorted;
        for (const auto& [key, layer] : keys) {
            for (const DigIndex& entry : slots) {
                if (entry.layer == layer) sorted.push_back(entry);
            }
        }
        slots = sorted;
    }
    std::vector<DigIndex> slots;

private:
    CDigMem& store_;
};

TEST_F(ReaderRecordsTest, AnyMixOfAppendsMakesDeletesAndSortsGivesWhatTheSlotsGive) {
    std::mt19937 random(7);
    SlotModel model(store);
    std::int32_t nextMesh = 0;
    for (const char* code : {"A", "B", "C", "D"}) ASSERT_TRUE(store.MakeLayer(code, kLayLine));
    for (std::int32_t step = 0; step < 4000; ++step) {
        const std::string code(1, static_cast<char>('A' + random() % 4));
        const std::int32_t layer = store.FindLayDef(code);
        switch (random() % 8) {
            case 0:
                store.SortDigIndex();
                model.Sort();
                break;
            case 1:
                store.SetLayIndex(code, static_cast<std::int32_t>(random() % 3));
                break;
            case 2:
                MakeBlock(code, nextMesh++);
                model.Append(store.FindBlock(code, nextMesh - 1).block, layer);
                model.Sort();
                break;
            case 3:
            case 4:
                if (!model.slots.empty()) {
                    const std::int32_t block = model.slots[random() % model.slots.size()].block;
                    const DigBlock& gone = store.Block(block);
                    const std::string goneCode(gone.code.View());
                    ASSERT_TRUE(store.DigMemDelete(goneCode, gone.meshNo));
                    model.Remove(block);
                }
                break;
            default: {
                const std::int32_t pos = Bare(code, nextMesh++);
                ASSERT_TRUE(store.IndexBareBlock(pos));
                model.Append(pos, layer);
            }
        }
        if (random() % 4 != 0) continue;
        const std::span<const DigIndex> index = store.Index();
        ASSERT_EQ(std::vector<DigIndex>(index.begin(), index.end()), model.slots) << "step " << step;
    }
}

TEST_F(ReaderRecordsTest, WholeLayerRecordsAreAppendedOnce) {
    LayerDef layer;
    layer.code.Set("A");
    layer.layIndex = 77;
    EXPECT_TRUE(store.AppendReadLayer(std::move(layer)));
    EXPECT_EQ(LayerOf("A").layIndex, 77);
    LayerDef again;
    again.code.Set("A");
    EXPECT_FALSE(store.AppendReadLayer(std::move(again)));
    EXPECT_TRUE(store.AppendReadLayer(LayerDef{}));
    EXPECT_EQ(store.LayerCnt(), 1);
}

TEST_F(ReaderRecordsTest, BeforeInitNothingIsMade) {
    CDigMem fresh;
    EXPECT_EQ(fresh.MakeBareBlock(Place::End), -1);
    EXPECT_FALSE(fresh.AppendReadLayer(LayerDef{}));
}

TEST_F(ReaderRecordsTest, WithoutMemoryNothingChanges) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    const std::string before = DumpStore(store);
    for (std::int64_t n = 1;; ++n) {
        ArrayFaults::FailNth(n);
        const std::int32_t pos = Bare("A", 1, Place::End);
        const bool indexed = pos >= 0 && store.IndexBareBlock(pos);
        ArrayFaults::Clear();
        if (indexed) break;
        if (pos >= 0) store.DropBareBlock(pos);
        ASSERT_EQ(DumpStore(store), before);
        ASSERT_LT(n, 50);
    }
}

}  // namespace
}  // namespace orvane
