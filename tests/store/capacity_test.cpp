// The told limits of the tables: 10000 layers, 100000 index slots.
#include <gmock/gmock.h>

#include "tests/store/literal_store.h"
#include "tests/store/store_fixture.h"
#include "tests/support/store_dump.h"

namespace orvane {
namespace {

class FullLayerTableTest : public StoreTest {
protected:
    static std::string Code(std::int32_t i) { return "layer " + std::to_string(i); }
    FullLayerTableTest() {
        for (std::int32_t i = 0; i < kMaxLayers; ++i) EXPECT_TRUE(store.MakeLayer(Code(i), kLayLine));
        MakeBlock(Code(0), 1);
        MakeBlock(Code(0), 2);
        EXPECT_TRUE(store.DigMemDelete(Code(0), 1));
    }
};

TEST_F(FullLayerTableTest, LayerBehindTheLastRecordIsRefused) {
    EXPECT_EQ(store.LayerCnt(), 10000);
    EXPECT_FALSE(store.MakeLayer("one more", kLayLine));
    EXPECT_FALSE(store.MakeLayer("", kLayLine));
    EXPECT_EQ(store.LayerCnt(), 10000);
    EXPECT_EQ(store.FindLayDef("one more"), -1);
    EXPECT_EQ(store.FindLayDef(Code(9999)), 9999);
    EXPECT_TRUE(store.Layer(10000).code.Empty());
}

TEST_F(FullLayerTableTest, BlockOfANewCodeIsRefusedAndTakesNoSlot) {
    const std::string before = DumpStore(store);
    EXPECT_FALSE(store.DigMemAlloc("one more", 1, kLayLine, "", 0));
    EXPECT_FALSE(store.DigMemAlloc("one more", 1, 9, "", 0)) << "a bad type finds no record either";
    EXPECT_FALSE(store.DigMemAlloc("", 1, kLayLine, "", 0));
    EXPECT_EQ(DumpStore(store), before);
    EXPECT_EQ(store.BlockCnt(), 2);
}

TEST_F(FullLayerTableTest, BlockOfAKnownCodeIsStillMade) {
    EXPECT_TRUE(store.DigMemAlloc(Code(9999), 1, kLayLine, "", 0));
    EXPECT_EQ(store.FindBlock(Code(9999), 1), (DigIndex{0, 9999}));
    EXPECT_TRUE(store.SetLayColor(Code(9999), 3));
}

TEST_F(FullLayerTableTest, EqualKeysOfAllLayersAreSortedLikeTheExchangeLoop) {
    LiteralStore literal;
    for (std::int32_t i = 0; i < kMaxLayers; ++i) ASSERT_EQ(store.SetLayIndex(Code(i), i * 7919 % 100), 1);
    for (std::int32_t i = 0; i < kMaxLayers; i += 97) MakeBlock(Code(i), 5);
    literal.CopyFrom(store);
    literal.SortDigIndex();
    store.SortDigIndex();
    const std::span<const DigIndex> index = store.Index();
    EXPECT_EQ(std::vector<DigIndex>(index.begin(), index.end()), literal.Index());
}

class FullIndexTest : public StoreTest {
protected:
    static constexpr std::int32_t kLayers = 3;
    static std::string Code(std::int32_t i) { return std::string(1, static_cast<char>('A' + i % kLayers)); }
    FullIndexTest() {
        for (std::int32_t i = 0; i < kMaxDigIndex; ++i)
            EXPECT_TRUE(store.DigMemAlloc2(Code(i), i, kLayLine, "", i % kLayers, 0, 0));
    }
    std::vector<DigIndex> Index() {
        const std::span<const DigIndex> index = store.Index();
        return {index.begin(), index.end()};
    }
};

TEST_F(FullIndexTest, HundredThousandBlocksAreAllFound) {
    EXPECT_EQ(store.GetDigIndexCnt(), 100000);
    for (std::int32_t i = 0; i < kMaxDigIndex; ++i) ASSERT_EQ(store.FindBlock(Code(i), i).block, i);
    const std::vector<DigIndex> index = Index();
    for (std::int32_t pos = 0; pos < kMaxDigIndex; pos += 997) {
        const std::int32_t block = index[static_cast<std::size_t>(pos)].block;
        ASSERT_EQ(store.FindDigIndex(Code(block), block), pos);
    }
}

TEST_F(FullIndexTest, OneMoreBlockTakesSlotZeroAndItsFormerBlockIsLost) {
    const DigIndex first = store.Index()[0];
    ASSERT_EQ(first.layer, 2) << "the layer with the greatest key";
    const std::int32_t lostMesh = store.Block(first.block).meshNo;
    ASSERT_TRUE(store.DigMemAlloc2("A", -1, kLayLine, "", 0, 0, 0));
    EXPECT_EQ(store.BlockCnt(), 100001);
    EXPECT_EQ(store.GetDigIndexCnt(), 100000);
    EXPECT_EQ(store.FindBlock("A", -1), (DigIndex{100000, 0}));
    EXPECT_EQ(store.FindDigIndex("C", lostMesh), -1);
    EXPECT_EQ(store.Block(first.block).blkState, 1) << "it stays in the block array";
    EXPECT_EQ(store.Block(first.block).code.View(), "C");
    ASSERT_TRUE(store.DigMemAlloc2("C", lostMesh, kLayLine, "", 0, 0, 0)) << "its key is free";
    EXPECT_EQ(store.FindBlock("C", lostMesh).block, 100001);
}

TEST_F(FullIndexTest, BlocksBeyondTheLastSlotFollowTheSingleSteps) {
    LiteralStore literal;
    literal.CopyFrom(store);
    const auto make = [&](const std::string& code, std::int32_t meshNo, std::int32_t key) {
        EXPECT_TRUE(store.DigMemAlloc2(code, meshNo, kLayLine, "", key, 0, 0));
        EXPECT_TRUE(literal.MakeBlock(code, meshNo, kLayLine, key));
    };
    make("A", -1, 0);
    make("C", -2, 0);
    make("C", -3, 0);
    make("new", -4, 99);
    make("A", -5, 0);
    EXPECT_EQ(Index(), literal.Index());
    ASSERT_EQ(store.SetLayIndex("A", 500), 1);
    ASSERT_TRUE(literal.SetLayIndex("A", 500));
    make("B", -6, 0);
    make("B", -7, 0);
    EXPECT_EQ(Index(), literal.Index());
    EXPECT_EQ(store.DigMemDelete("A", -5), literal.DigMemDelete("A", -5));
    make("C", -8, 0);
    make("C", -9, 0);
    EXPECT_EQ(Index(), literal.Index());
    EXPECT_EQ(store.GetDigIndexCnt(), 100000);
}

TEST_F(FullIndexTest, EntryWithoutALayerTakesSlotZeroToo) {
    LiteralStore literal;
    literal.CopyFrom(store);
    const auto make = [&](const std::string& code, std::int32_t meshNo, std::int32_t type) {
        EXPECT_TRUE(store.DigMemAlloc2(code, meshNo, type, "", 0, 0, 0));
        EXPECT_TRUE(literal.MakeBlock(code, meshNo, type, 0));
    };
    make("Q", -1, 9);
    EXPECT_EQ(Index(), literal.Index());
    make("A", -2, kLayLine);
    make("", -3, kLayLine);
    make("B", -4, kLayLine);
    EXPECT_EQ(Index(), literal.Index());
    EXPECT_EQ(store.DigMemDelete("B", -4), literal.DigMemDelete("B", -4));
    EXPECT_EQ(Index(), literal.Index());
}

TEST_F(FullIndexTest, DeletingALayersBlocksFreesTheirSlots) {
    EXPECT_EQ(store.DigMemDeleteLay("B"), 33333);
    EXPECT_EQ(store.GetDigIndexCnt(), 66667);
    EXPECT_EQ(store.FindDigIndex("A", 0), 33333) << "behind all of C";
    ASSERT_TRUE(store.DigMemAlloc2("B", 7, kLayLine, "", 0, 0, 0));
    EXPECT_EQ(store.FindBlock("B", 7).block, 1);
}

}  // namespace
}  // namespace orvane
