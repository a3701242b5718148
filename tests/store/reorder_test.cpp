// Items of a block that are brought into another order.
#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>

#include "store/dat_lookup.h"
#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

class ReorderTest : public StoreTest {
protected:
    void SetUp() override {
        MakeBlock("A", 1, 2);
        for (std::int32_t id = 0; id < 5; ++id) {
            ASSERT_TRUE(store.AddDigDat("A", 1, id, 100 + id));
            ASSERT_TRUE(store.AddDigDatPnt("A", 1, id, {id * 1.0, 0, 0}));
        }
    }
    bool Reorder(std::vector<std::int32_t> order) { return store.ReorderDats(store.FindBlock("A", 1).block, order); }
    std::vector<std::int32_t> Numbers() {
        std::vector<std::int32_t> ids;
        for (const DigDat& dat : store.Block(store.FindBlock("A", 1).block).dats) {
            EXPECT_EQ(dat.lineTag, 100 + dat.datID);
            EXPECT_EQ(dat.pnts[0].x, dat.datID) << "all of it moves";
            ids.push_back(dat.datID);
        }
        return ids;
    }
};

TEST_F(ReorderTest, EachPlaceGetsTheItemOfThePlaceThatIsTold) {
    std::vector<std::int32_t> order(5);
    std::iota(order.begin(), order.end(), 0);
    do {
        ASSERT_TRUE(Reorder(order));
        ASSERT_EQ(Numbers(), order);
        // Back to where it was: the place of each.
        std::vector<std::int32_t> back(5);
        for (std::int32_t i = 0; i < 5; ++i) back[static_cast<std::size_t>(order[static_cast<std::size_t>(i)])] = i;
        ASSERT_TRUE(Reorder(back));
        ASSERT_THAT(Numbers(), testing::ElementsAre(0, 1, 2, 3, 4));
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(ReorderTest, WhatDoesNotTellEachPlaceOnceMovesNothing) {
    for (const std::vector<std::int32_t>& order : {std::vector<std::int32_t>{0, 1, 2, 3},
                                                   {0, 1, 2, 3, 4, 5},
                                                   {0, 1, 2, 3, 3},
                                                   {0, 1, 2, 3, 5},
                                                   {0, 1, 2, 3, -1},
                                                   {4, 3, 2, 1, 1},
                                                   {}}) {
        EXPECT_FALSE(Reorder(order)) << testing::PrintToString(order);
        EXPECT_THAT(Numbers(), testing::ElementsAre(0, 1, 2, 3, 4));
    }
    std::vector<std::int32_t> none;
    EXPECT_FALSE(store.ReorderDats(-1, none));
    EXPECT_FALSE(store.ReorderDats(store.BlockCnt(), none));
}

TEST_F(ReorderTest, SearchesFollow) {
    for (std::int32_t id = 5; id < 300; ++id) {
        ASSERT_TRUE(store.AddDigDat("A", 1, id, 100 + id));
        ASSERT_TRUE(store.AddDigDatPnt("A", 1, id, {id * 1.0, 0, 0}));
    }
    std::vector<std::int32_t> order(300);
    std::iota(order.rbegin(), order.rend(), 0);
    ASSERT_TRUE(Reorder(order));
    for (std::int32_t id = 0; id < 300; ++id) {
        const DigDat* dat = store.FindDat("A", 1, id);
        ASSERT_NE(dat, nullptr);
        EXPECT_EQ(dat - store.Block(store.FindBlock("A", 1).block).dats.data(), 299 - id);
    }
}

}  // namespace
}  // namespace orvane
