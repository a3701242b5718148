// The walk over the store: memory that runs out, work that is cancelled, and hosts that change the map meanwhile.
#include <gtest/gtest.h>

#include <algorithm>
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

TEST_F(RelationWalkTest, ACancelledTestLeavesNoItemActive) {
    AddLines("A", 80, 100000);
    Block("A").dats[0].active = 1;
    int asked = 0;
    int found = 0;
    EXPECT_FALSE(Test(kIntersects, [&](double) {
        found = ActiveCnt("A");
        return ++asked < 2;
    }));
    EXPECT_GT(found, 0) << "there was something to take back";
    EXPECT_EQ(ActiveCnt("A"), 0);
}

/// Operators whose work on one long item lies in walks over its points, or over the query's, rather than in pairs of segments.
struct LongWalk {
    const char* name;
    ShapeType query;
    ShapeType item;
    RelationOp op;
};

class LongWalkTest : public RelationWalkTest, public testing::WithParamInterface<LongWalk> {};

TEST_P(LongWalkTest, CanBeCancelledWithinOneItem) {
    constexpr int kPnts = 2200000;  // more than go by between two questions
    const LongWalk& walk = GetParam();
    const auto type = static_cast<std::int32_t>(walk.item);
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, type, "", 1, 0, 0));
    ASSERT_TRUE(store.AddDigDat("A", 1, 1, 0));
    // A level line there and, for a polygon, back; the query has the same ends and a corner more, or lies around it.
    std::vector<DigPnt> pnts;
    for (int i = 0; i < kPnts; ++i) pnts.push_back({1.0 + i, 1.0, 0});
    if (walk.item == ShapeType::Polygon) pnts.push_back({1, 1, 0});
    ASSERT_TRUE(store.SetDigDatPnts("A", 1, 1, pnts));
    Show("A");
    if (walk.query == ShapeType::Line) {
        x = {1, 1000, kPnts};
        y = {1, 1, 1};
    } else {
        x = {-5, kPnts + 5.0, kPnts + 5.0, -5, -5};
        y = {-5, -5, 5, 5, -5};
    }
    int asked = 0;
    EXPECT_FALSE(TestRelation(store, {}, {walk.query, x, y}, static_cast<std::int32_t>(walk.op), [&](double) {
        ++asked;
        return false;
    }));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(ActiveCnt("A"), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Walks, LongWalkTest,
    testing::Values(LongWalk{"AllPointsInAPolygon", ShapeType::Polygon, ShapeType::Line, RelationOp::Contains},
                    LongWalk{"AllPointsOnALine", ShapeType::Line, ShapeType::Line, RelationOp::Equals},
                    LongWalk{"LineInLine", ShapeType::Line, ShapeType::Line, RelationOp::Contains},
                    LongWalk{"EndOnALine", ShapeType::Line, ShapeType::Line, RelationOp::Touches},
                    LongWalk{"SegmentsBesideEachOther", ShapeType::Line, ShapeType::Line, RelationOp::Overlaps},
                    LongWalk{"RingsAskedManyTimes", ShapeType::Polygon, ShapeType::Polygon, RelationOp::Contains}),
    [](const auto& walk) { return std::string(walk.param.name); });

TEST_F(RelationWalkTest, AHostThatDeletesTheItemWhileItsPointsAreWalkedHarmsNothing) {
    for (const RelationOp op :
         {RelationOp::Contains, RelationOp::Crosses, RelationOp::Overlaps, RelationOp::Equals, RelationOp::Touches}) {
        AddLines("A", 1, 2200000);
        x = {-5, 2200005, 2200005, -5, -5};
        y = {-5, -5, 5, 5, -5};
        int asked = 0;
        EXPECT_TRUE(TestRelation(store, {}, {op == RelationOp::Contains ? ShapeType::Polygon : ShapeType::Line, x, y},
                                 static_cast<std::int32_t>(op), [&](double) {
                                     if (++asked == 1) store.DigMemDelete("A", 1);
                                     return true;
                                 }));
        store.DigMemDelete("A", 1);
    }
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

TEST_F(RelationWalkTest, TheWorkInsideOneLargeBlockIsToldAsItGoesOn) {
    // Each item is work enough to be asked about now and then.
    AddLines("A", 400, 20000);
    x = {1.5, 1.5};
    std::vector<double> told;
    EXPECT_TRUE(Test(static_cast<std::int32_t>(RelationOp::Touches), [&](double done) {
        told.push_back(done);
        return true;
    }));
    ASSERT_GE(told.size(), 3u);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_LT(told.front(), 0.5);
    EXPECT_GT(told.back(), 0.5);
    EXPECT_LE(told.back(), 1.0);
}

}  // namespace
}  // namespace orvane
