// The walk over the store: memory that runs out, work that is cancelled, and hosts that change the map meanwhile.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/relation.h"
#include "platform/grow_array.h"
#include "store/dat_lookup.h"

namespace orvane {
namespace {

constexpr auto kDisjoint = static_cast<std::int32_t>(RelationOp::Disjoint);
constexpr auto kIntersects = static_cast<std::int32_t>(RelationOp::Intersects);

class RelationWalkTest : public testing::Test {
protected:
    RelationWalkTest() {
        store.Init();
        store.view.ScaleX = store.view.ScaleY = 1;
        store.view.Zoom = store.view.DotPerM = 1000;
    }
    ~RelationWalkTest() override { ArrayFaults::Clear(); }

    /// A block of lines of `pntCnt` points each along y = 0, drawn and in view.
    void AddLines(const std::string& code, int count, int pntCnt) {
        ASSERT_TRUE(store.DigMemAlloc2(code, 1, kLayLine, "", 1, 0, 0));
        std::vector<DigPnt> pnts;
        for (int i = 0; i < pntCnt; ++i) pnts.push_back({static_cast<double>(i + 1), 1.0, 0});
        for (int id = 1; id <= count; ++id) {
            ASSERT_TRUE(store.AddDigDat(code, 1, id, 0));
            ASSERT_TRUE(store.SetDigDatPnts(code, 1, id, pnts));
        }
        Show(code);
    }
    void Show(const std::string& code) {
        DigBlock& block = Block(code);
        block.inView = 1;
        for (DigDat& dat : block.dats) dat.drawnFlg = dat.clipFlg = 1;
        store.MutableLayer(store.FindLayDef(code)).dspFlg = 1;
        store.MutableLayer(store.FindLayDef(code)).actFlg = 1;
    }
    DigBlock& Block(const std::string& code) { return store.MutableBlock(store.FindBlock(code, 1).block); }
    int ActiveCnt(const std::string& code) {
        int count = 0;
        for (const DigDat& dat : Block(code).dats) count += dat.active;
        return count;
    }
    bool Test(std::int32_t op, const RelationProgress& progress = {}) {
        return TestRelation(store, {}, {ShapeType::Line, x, y}, op, progress);
    }

    CDigMem store;
    std::vector<double> x{1.5, 1.5};
    std::vector<double> y{0.0, 2.0};
};

TEST_F(RelationWalkTest, BeforeInitAndWithoutPointsNothingIsTouched) {
    AddLines("A", 2, 3);
    Block("A").dats[0].active = 1;
    x.clear();
    EXPECT_FALSE(Test(kDisjoint));
    EXPECT_EQ(ActiveCnt("A"), 1);
    x = {1, 2, 3};
    EXPECT_FALSE(Test(kDisjoint)) << "fewer of y than of x";
    x.resize(2);
    store.FreeAll();
    EXPECT_FALSE(Test(kDisjoint));
}

TEST_F(RelationWalkTest, EveryItemThatIsRelatedBecomesActive) {
    AddLines("A", 3, 3);
    EXPECT_TRUE(Test(kIntersects));
    EXPECT_EQ(ActiveCnt("A"), 3);
    EXPECT_TRUE(Test(kDisjoint));
    EXPECT_EQ(ActiveCnt("A"), 0);
}

TEST_F(RelationWalkTest, WithoutMemoryForTheQueryABlockStaysAsItIsAndTheNextOneIsTested) {
    AddLines("A", 2, 3);
    AddLines("B", 2, 3);
    ArrayFaults::FailNth(1);
    EXPECT_TRUE(Test(kIntersects));
    ArrayFaults::Clear();
    EXPECT_EQ(ActiveCnt("A") + ActiveCnt("B"), 2);
}

TEST_F(RelationWalkTest, AnItemWithoutMemoryForItsPointsIsPassedOver) {
    AddLines("A", 3, 3);
    ArrayFaults::FailNth(2);  // the query's points come first
    EXPECT_TRUE(Test(kIntersects));
    ArrayFaults::Clear();
    EXPECT_EQ(ActiveCnt("A"), 2);
    EXPECT_EQ(Block("A").dats[2].active, 0) << "the walk begins with the last item";
}

TEST_F(RelationWalkTest, ManyItemsCanBeCancelled) {
    AddLines("A", 80, 100000);
    int asked = 0;
    double last = -1;
    EXPECT_FALSE(Test(kIntersects, [&](double done) {
        EXPECT_GE(done, last);
        EXPECT_LE(done, 1.0);
        last = done;
        return ++asked < 2;
    }));
    EXPECT_EQ(asked, 2);
    EXPECT_LT(ActiveCnt("A"), 80);
}

TEST_F(RelationWalkTest, OneLongItemCanBeCancelledWithinItsTest) {
    AddLines("A", 1, 3000000);
    x.clear();
    y.clear();
    for (int i = 0; i < 4; ++i) {
        x.push_back(i % 2 == 0 ? 0 : 3000000);
        y.push_back(i % 2 == 0 ? 0.5 : 1.5 + 1e-3 * i);
    }
    int asked = 0;
    EXPECT_FALSE(Test(static_cast<std::int32_t>(RelationOp::Touches), [&](double) { return ++asked < 0; }));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(ActiveCnt("A"), 0);
}

TEST_F(RelationWalkTest, AHostThatEmptiesTheStoreEndsTheWalk) {
    AddLines("A", 40, 100000);
    EXPECT_FALSE(Test(kIntersects, [&](double) {
        store.Init();
        return true;
    }));
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(RelationWalkTest, AHostMayDeleteTheBlockThatIsTestedAndMakeOthers) {
    AddLines("A", 3, 3);
    AddLines("B", 40, 100000);
    int asked = 0;
    EXPECT_TRUE(Test(kIntersects, [&](double) {
        if (++asked == 1) {
            store.DigMemDelete("B", 1);
            AddLines("C", 1, 3);
        }
        return true;
    }));
    EXPECT_GE(asked, 1);
    EXPECT_EQ(store.FindBlock("B", 1).block, -1);
}

TEST_F(RelationWalkTest, AZoomOfNothingCrashesNothing) {
    AddLines("A", 3, 3);
    store.view.Zoom = 0;
    for (std::int32_t op = 0; op < 8; ++op) EXPECT_TRUE(Test(op));
}

}  // namespace
}  // namespace orvane
