// Every operation that needs memory, with each of its growths made to fail in turn: the told failure, and the store as it was.
#include <functional>

#include "tests/store/store_fixture.h"
#include "tests/support/store_dump.h"

namespace orvane {
namespace {

class GrowthFailureTest : public StoreTest {
protected:
    GrowthFailureTest() {
        MakeBlock("A", 1);
        AddItem("A", 1, 1, {{1, 2, 3}, {4, 5, 6}});
        MakeBlock("M", 1, kLayMesh);
        AddItem("M", 1, 1);
    }

    /// Runs `operation` with its first growth failing, then its second and so on, until it gets by without the failing one. Every
    /// failing run must answer false and leave the store as it was, and the last must answer true.
    void ExpectEachGrowthCanFail(const std::function<bool()>& operation) {
        const std::string before = DumpStore(store);
        for (std::int64_t n = 1;; ++n) {
            ASSERT_LT(n, 100);
            ArrayFaults::FailNth(n);
            const bool done = operation();
            const bool wasReached = ArrayFaults::Count() >= n;
            ArrayFaults::Clear();
            if (!wasReached) {
                EXPECT_TRUE(done);
                EXPECT_GT(n, 1) << "the operation asked for no memory at all";
                return;
            }
            ASSERT_FALSE(done) << "growth " << n;
            ASSERT_EQ(DumpStore(store), before) << "growth " << n;
        }
    }
};

TEST_F(GrowthFailureTest, MakeLayer) {
    // The tables grow by doubling; somewhere on the way each of them has to.
    for (int i = 0; i < 20; ++i) {
        const std::string code = "layer " + std::to_string(i);
        const std::string before = DumpStore(store);
        for (std::int64_t n = 1; n < 10; ++n) {
            ArrayFaults::FailNth(n);
            const bool done = store.MakeLayer(code, kLayLine);
            ArrayFaults::Clear();
            if (done) break;
            ASSERT_EQ(DumpStore(store), before);
        }
        ASSERT_EQ(store.LayerCnt(), i + 3);
    }
}

TEST_F(GrowthFailureTest, FirstLayerOfAnEmptyStore) {
    store.Init();
    ExpectEachGrowthCanFail([this] { return store.MakeLayer("A", kLayLine); });
}

TEST_F(GrowthFailureTest, FirstBlockOfAnEmptyStore) {
    store.Init();
    ExpectEachGrowthCanFail([this] { return store.DigMemAlloc("A", 1, kLayLine, "a path", 0); });
    EXPECT_EQ(store.FindDigIndex("A", 1), 0);
}

TEST_F(GrowthFailureTest, BlockOfANewCodeAndABadType) {
    ExpectEachGrowthCanFail([this] { return store.DigMemAlloc("Q", 1, 9, "a path", 0); });
    EXPECT_EQ(store.GetDigIndexCnt(), 3);
}

TEST_F(GrowthFailureTest, BlockBesideAnEntryWithoutALayer) {
    store.Init();
    ASSERT_TRUE(store.DigMemAlloc("Q", 1, 9, "", 0));
    ExpectEachGrowthCanFail([this] { return store.DigMemAlloc("A", 1, kLayLine, "a path", 0); });
}

TEST_F(GrowthFailureTest, BlockOnAReusedSlot) {
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    ExpectEachGrowthCanFail([this] { return store.DigMemAlloc("A", 1, kLayPolygon, "a path", 0); });
    EXPECT_EQ(store.FindBlock("A", 1).block, 0);
}

TEST_F(GrowthFailureTest, ManyBlocksWithEveryGrowthFailingOnce) {
    for (std::int32_t meshNo = 10; meshNo < 300; ++meshNo) {
        const std::string code = "layer " + std::to_string(meshNo % 40);
        const std::int32_t blocks = store.BlockCnt();
        const std::int32_t layers = store.LayerCnt();
        for (std::int64_t n = 1;; ++n) {
            ArrayFaults::FailNth(n);
            const bool done = store.DigMemAlloc(code, meshNo, kLayLine, "path", 0);
            ArrayFaults::Clear();
            if (done) break;
            ASSERT_EQ(store.BlockCnt(), blocks);
            ASSERT_EQ(store.LayerCnt(), layers);
            ASSERT_EQ(store.FindDigIndex(code, meshNo), -1);
            ASSERT_LT(n, 100);
        }
        ASSERT_EQ(store.FindBlock(code, meshNo).block, blocks);
    }
}

TEST_F(GrowthFailureTest, SubLayer) {
    ExpectEachGrowthCanFail([this] { return store.SetSubLayer("A", 1, "name", true, 0, 1, 0, false); });
    EXPECT_EQ(LayerOf("A").subLayMax, 50);
}

TEST_F(GrowthFailureTest, FirstItem) {
    MakeBlock("B", 1);
    ExpectEachGrowthCanFail([this] { return store.AddDigDat("B", 1, 5, 0); });
    EXPECT_EQ(BlockOf("B", 1).datMax, 1000);
}

TEST_F(GrowthFailureTest, Point) {
    ExpectEachGrowthCanFail([this] { return store.AddDigDatPnt("A", 1, 1, {7, 8, 9}); });
    EXPECT_EQ(store.PntCnt("A", 1, 1), 3);
}

TEST_F(GrowthFailureTest, AllPointsAtOnce) {
    const std::vector<DigPnt> pnts(5, DigPnt{100, 200, 300});
    ExpectEachGrowthCanFail([&] { return store.SetDigDatPnts("A", 1, 1, pnts); });
    EXPECT_EQ(store.PntCnt("A", 1, 1), 5);
}

TEST_F(GrowthFailureTest, Insert) {
    ExpectEachGrowthCanFail([this] { return store.InsertDigDatPnt("A", 1, 1, 0, {7, 8, 9}); });
    EXPECT_EQ(store.PntCnt("A", 1, 1), 3);
}

TEST_F(GrowthFailureTest, InsertTooFarBehindKeepsItsCountWhenThePointsCannotGrow) {
    ArrayFaults::FailFrom(1);
    EXPECT_FALSE(store.InsertDigDatPnt("A", 1, 1, 9, {}));
    ArrayFaults::Clear();
    EXPECT_EQ(store.PntCnt("A", 1, 1), 2);
}

TEST_F(GrowthFailureTest, Grid) {
    const std::vector<DigPnt> pnts(6, DigPnt{100, 200, 300});
    ExpectEachGrowthCanFail([&] { return store.SetMeshDat("M", 1, 1, 3, 2, pnts); });
    ASSERT_TRUE(store.SetMeshColor("M", 1, 1, std::vector<std::uint32_t>(6, 7)));
    ExpectEachGrowthCanFail([&] { return store.SetMeshDat("M", 1, 1, 2, 2, pnts); });
}

TEST_F(GrowthFailureTest, WhatOnlyReadsSortsOrDeletesNeedsNoMemory) {
    for (std::int32_t i = 0; i < 30; ++i) MakeBlock("layer " + std::to_string(i % 7), 100 + i, kLayLine, i % 3);
    ASSERT_EQ(store.SetLayIndex("layer 3", 50), 1);
    ArrayFaults::FailFrom(1);
    store.SortDigIndex();
    EXPECT_EQ(store.GetDigIndexCnt(), 32);
    EXPECT_EQ(store.Index().size(), 32U);
    EXPECT_EQ(store.Layer(store.Index()[0].layer).code.View(), "layer 3");
    EXPECT_EQ(store.FindDigIndex("layer 3", 103), 0);
    EXPECT_TRUE(store.DigMemDelete("layer 3", 103));
    EXPECT_EQ(store.DigMemDeleteLay("layer 4"), 4);
    EXPECT_EQ(store.DigMemDeleteMeshNo(100), 1);
    EXPECT_EQ(store.Index().size(), 26U);
    EXPECT_EQ(store.ClearActive(), 0);
    EXPECT_FALSE(store.DelDigDatPnt("A", 1, 1, 5));
    EXPECT_TRUE(store.DelDigDatPnt("A", 1, 1, 0));
    EXPECT_TRUE(store.DelDigDat("A", 1, 1));
    EXPECT_EQ(ArrayFaults::Count(), 0);
}

TEST_F(GrowthFailureTest, WhatOnlyReadsSortsOrDeletesNeedsNoMemoryAmongEntriesWithoutALayer) {
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 9, "", 0));
    for (std::int32_t i = 0; i < 30; ++i) MakeBlock("layer " + std::to_string(i % 7), 100 + i, kLayLine, i % 3);
    ASSERT_EQ(store.SetLayIndex("layer 3", 50), 1);
    ArrayFaults::FailFrom(1);
    store.SortDigIndex();
    EXPECT_EQ(store.FindDigIndex("layer 3", 103), 0);
    EXPECT_EQ(store.DigMemDeleteLay("layer 4"), 4);
    EXPECT_EQ(store.DigMemDeleteMeshNo(5), 1);
    EXPECT_EQ(store.FindDigIndex("layer 3", 103), 0);
    EXPECT_EQ(ArrayFaults::Count(), 0);
}

// --- Copies have failures of their own: the item is made with less -------------------------------------------------------

class CopyFailureTest : public StoreTest {
protected:
    CopyFailureTest() {
        MakeBlock("M", 1, kLayMesh);
        MakeBlock("N", 1, kLayMesh);
        AddItem("M", 1, 1);
        EXPECT_TRUE(store.SetMeshDat("M", 1, 1, 1, 2, std::vector<DigPnt>(2)));
        DigDat& dat = store.MutableBlock(0).dats[0];
        EXPECT_TRUE(dat.orgPnts.Resize(0, 2));
        dat.orgPntCnt = 2;
        dat.str = std::make_unique<DigStr>();
        dat.str->text = "a text";
    }
    /// Copies with the growth at place `n` failing. Order: points, grid, its flags, its colours, former points, text object,
    /// text, then the item array.
    std::int32_t CopyWithFailure(std::int64_t n) {
        ArrayFaults::FailNth(n);
        const std::int32_t id = store.CopyData("M", 1, 1, "N", 1);
        EXPECT_GE(ArrayFaults::Count(), n);
        ArrayFaults::Clear();
        return id;
    }
};

TEST_F(CopyFailureTest, WithoutMemoryForItsPointsTheCopyHasNone) {
    ASSERT_EQ(CopyWithFailure(1), 1);
    EXPECT_EQ(Item("N", 1, 1).pntCnt, 0);
    EXPECT_FALSE(Item("N", 1, 1).pnts);
    EXPECT_NE(Item("N", 1, 1).str, nullptr);
}

TEST_F(CopyFailureTest, WithoutMemoryForItsGridTheCopyHasNone) {
    for (std::int64_t n = 2; n <= 4; ++n) {
        const std::int32_t id = CopyWithFailure(n);
        ASSERT_GT(id, 0) << n;
        EXPECT_EQ(Item("N", 1, id).meshAttr, nullptr) << n;
        EXPECT_EQ(Item("N", 1, id).pntCnt, 2) << n;
        EXPECT_EQ(Item("N", 1, id).orgPntCnt, 2) << n;
    }
}

TEST_F(CopyFailureTest, WithoutMemoryForItsFormerPointsTheCopyHasNoPointsEither) {
    ASSERT_EQ(CopyWithFailure(5), 1);
    const DigDat& copy = Item("N", 1, 1);
    EXPECT_EQ(copy.pntCnt, 0);
    EXPECT_FALSE(copy.pnts);
    EXPECT_FALSE(copy.orgPnts);
    EXPECT_EQ(copy.orgPntCnt, 0);
}

TEST_F(CopyFailureTest, WithoutMemoryForItsTextTheCopyHasNone) {
    for (std::int64_t n = 6; n <= 7; ++n) {
        const std::int32_t id = CopyWithFailure(n);
        ASSERT_GT(id, 0) << n;
        EXPECT_EQ(Item("N", 1, id).str, nullptr) << n;
        EXPECT_EQ(Item("N", 1, id).pntCnt, 2) << n;
        EXPECT_NE(Item("N", 1, id).meshAttr, nullptr) << n;
    }
}

TEST_F(CopyFailureTest, WithoutMemoryForTheItemThereIsNoCopy) {
    const std::string before = DumpStore(store);
    EXPECT_EQ(CopyWithFailure(8), 0);
    EXPECT_EQ(DumpStore(store), before);
    ArrayFaults::FailFrom(1);
    EXPECT_FALSE(store.CopyDatInBlock("N", 1, 1, 9));
    ArrayFaults::Clear();
    EXPECT_EQ(DumpStore(store), before);
}

}  // namespace
}  // namespace orvane
