#include "store/pos_table.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace orvane {
namespace {

TEST(PosTable, AgreesWithAnOrderedMapUnderRandomUse) {
    std::mt19937 random(1);
    PosTable table;
    std::map<std::uint64_t, std::int32_t> expected;
    for (int step = 0; step < 20000; ++step) {
        // Few different low bits, so that many keys want the same places and wrap around the end.
        const std::uint64_t hash = (random() % 60) << 40 | (random() % 7 == 0 ? random() % 4 : ~std::uint64_t{0} >> 30);
        if (random() % 3 == 0) {
            table.Erase(hash);
            expected.erase(hash);
        } else if (expected.find(hash) == expected.end()) {
            ASSERT_TRUE(table.Reserve(expected.size() + 1));
            table.Insert(hash, step);
            expected[hash] = step;
        }
        if (step % 50 != 0) continue;
        for (const auto& [key, value] : expected) {
            ASSERT_NE(table.Find(key), nullptr);
            ASSERT_EQ(table.Find(key)->first, value);
        }
        ASSERT_EQ(table.Find(std::uint64_t{99} << 40), nullptr);
    }
    table.Empty();
    EXPECT_EQ(table.Find(expected.begin()->first), nullptr);
}

TEST(PosTable, EmptyTableFindsAndErasesNothing) {
    PosTable table;
    table.Erase(5);
    table.Empty();
    EXPECT_EQ(std::as_const(table).Find(5), nullptr);
}

TEST(PosTable, FailedGrowthLeavesTheKeys) {
    PosTable table;
    ASSERT_TRUE(table.Reserve(3));
    for (std::int32_t i = 0; i < 3; ++i) table.Insert(MixKey(static_cast<std::uint64_t>(i)), i);
    ArrayFaults::FailFrom(1);
    EXPECT_FALSE(table.Reserve(1000));
    ArrayFaults::Clear();
    for (std::int32_t i = 0; i < 3; ++i) EXPECT_EQ(table.Find(MixKey(static_cast<std::uint64_t>(i)))->first, i);
}

TEST(PosTable, PairsOfIntegersAreDifferentKeys) {
    EXPECT_NE(PairKey(0, -1), PairKey(-1, 0));
    EXPECT_NE(PairKey(0, -1), PairKey(-1, -1));
    EXPECT_NE(MixKey(PairKey(1, 2)), MixKey(PairKey(2, 1)));
}

}  // namespace
}  // namespace orvane
