// Overlay and relation tests when memory ends anywhere on their way: each run lets one more allocation succeed before one fails.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "analysis/overlay.h"
#include "analysis/relation.h"
#include "store/dat_lookup.h"

namespace {

/// How many allocations still succeed before one fails; below 0 none does.
long allocationsLeft = -1;

bool Fails() { return allocationsLeft >= 0 && allocationsLeft-- == 0; }

}  // namespace

// The program's own, so that the containers of the code under test can be refused.
void* operator new(std::size_t size) {
    void* const place = Fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (place == nullptr) throw std::bad_alloc();
    return place;
}
void operator delete(void* place) noexcept { std::free(place); }
void operator delete(void* place, std::size_t) noexcept { std::free(place); }

namespace orvane {
namespace {

using Points = std::vector<DigPnt>;

Points Square(double x, double y, double side) {
    return {{x, y, 0}, {x + side, y, 0}, {x + side, y + side, 0}, {x, y + side, 0}, {x, y, 0}};
}

class MemoryTest : public ::testing::Test {
protected:
    void SetUp() override {
        store.Init();
        for (const char* code : {"A", "B", "C"}) {
            ASSERT_TRUE(store.DigMemAlloc2(code, 1, kLayPolygon, "", 1, 0, 0));
            store.SetLayDspFlg(code, true);
            store.SetLayActive(code, true);
            Block(code).inView = 1;
        }
        Add("A", 1, Square(0, 0, 4));
        Add("A", 2, Square(100, 0, 4));
        Add("B", 3, Square(2, 2, 4));
        Add("B", 4, Square(102, 2, 4));
    }
    void TearDown() override { allocationsLeft = -1; }

    DigBlock& Block(const char* code) { return store.MutableBlock(store.FindBlock(code, 1).block); }
    void Add(const char* code, std::int32_t id, const Points& pts) {
        ASSERT_TRUE(store.AddDigDat(code, 1, id, 0));
        ASSERT_TRUE(store.SetDigDatPnts(code, 1, id, pts));
        DigDat& dat = Block(code).dats[Block(code).dats.size() - 1];
        dat.drawnFlg = dat.clipFlg = 1;
        dat.active = 1;
    }
    void Empty(const char* code) {
        while (Block(code).datCnt > 0) store.DelDigDat(code, 1, Block(code).dats[0].datID);
    }

    /// Runs `work` with a failure after 0, 1, 2 ... allocations until none is left that could fail, `check` after each. Says how
    /// many runs had one.
    template <class Work, class Check>
    static long FailEach(Work work, Check check) {
        constexpr long kMostRuns = 5000;
        for (long n = 0; n < kMostRuns; ++n) {
            allocationsLeft = n;
            work();
            const bool failed = allocationsLeft < 0;
            allocationsLeft = -1;
            check();
            if (testing::Test::HasFatalFailure() || !failed) return n;
        }
        ADD_FAILURE() << "it never comes to an end";
        return 0;
    }

    CDigMem store;
};

TEST_F(MemoryTest, APairWithoutMemoryHasNoResultAndTheOverlayGoesOn) {
    OverlayIds ids;
    std::int32_t count = 0;
    int lost = 0;
    int one = 0;
    const long runs = FailEach(
        [&] {
            count = PolygonBuffering(store, {"A", 1}, {"B", 1}, {"C", 1}, ids);
        },
        [&] {
            ASSERT_EQ(static_cast<std::size_t>(count), ids.datIDC.size());
            ASSERT_EQ(ids.datIDA.size(), ids.datIDC.size());
            ASSERT_EQ(ids.datIDB.size(), ids.datIDC.size());
            ASSERT_LE(count, 2);
            lost += count == 0 ? 1 : 0;
            one += count == 1 ? 1 : 0;
            ASSERT_TRUE(count != 1 || ids.datIDA[0] + 2 == ids.datIDB[0]);
            for (const DigDat& dat : Block("C").dats) ASSERT_LE(dat.pntCnt, 5);
            Empty("C");
        });
    EXPECT_GT(runs, 20);
    EXPECT_GT(one, lost) << "most failures are within one of the two pairs, and the other one stays";
    EXPECT_EQ(count, 2) << "the last run had memory enough";
}

TEST_F(MemoryTest, AnOverlayOfActiveItemsWithoutMemoryStoresNothingOrAll) {
    std::int32_t id = 0;
    std::int32_t stored = 0;
    FailEach(
        [&] {
            stored = ActPolygonBuffering(store, OverlayMode::Union, {"C", 1}, id);
        },
        [&] {
            ASSERT_TRUE(stored == 0 || stored == 1);
            Empty("C");
        });
    EXPECT_EQ(stored, 1);
}

TEST_F(MemoryTest, ARelationTestPassesOverItemsWithoutMemory) {
    store.view.ScaleX = store.view.ScaleY = 1;
    store.view.DotPerM = store.view.Zoom = 1000;
    const std::vector<double> x{-10, 200, 200, -10, -10};
    const std::vector<double> y{-10, -10, 200, 200, -10};
    for (const RelationOp op : {RelationOp::Contains, RelationOp::Overlaps, RelationOp::Disjoint}) {
        int active = 0;
        bool done = false;
        FailEach(
            [&] {
                done = TestRelation(store, {0, 0, 0, 0}, {ShapeType::Polygon, x, y}, static_cast<std::int32_t>(op));
            },
            [&] {
                active = 0;
                for (const char* code : {"A", "B"}) {
                    for (const DigDat& dat : Block(code).dats) active += dat.active;
                }
                ASSERT_LE(active, 4);
            });
        EXPECT_TRUE(done);
        EXPECT_EQ(active, op == RelationOp::Contains ? 4 : 0);
    }
}

}  // namespace
}  // namespace orvane
