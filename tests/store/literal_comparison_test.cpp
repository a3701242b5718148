// Random operations on the store and on its literal counterpart, with everything that a caller can see compared.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "store/cdigmem.h"
#include "tests/store/literal_store.h"

namespace orvane {
namespace {

/// How wild a run is.
struct Mix {
    int codes = 6;
    int meshes = 5;
    int keys = 4;          ///< few keys: many ties
    bool orphans = false;  ///< bad types and empty codes
    bool delByPosition = false;
    int looksPercent = 30;  ///< how often the index is compared; between looks work may be put off
};

class Comparison {
public:
    Comparison(const Mix& mix, unsigned seed) : mix_(mix), random_(seed) { store_.Init(); }

    void Run(int steps) {
        for (int i = 0; i < steps && !::testing::Test::HasFailure(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i) + ": " + Step());
            if (Below(100) < mix_.looksPercent) CompareAll();
        }
        CompareAll();
    }

private:
    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    static std::string CodeName(int i) { return "L" + std::to_string(i); }
    std::string Code() {
        const int i = Below(mix_.codes + (mix_.orphans ? 1 : 0));
        return i == mix_.codes ? "" : CodeName(i);
    }
    std::int32_t Type() {
        static const std::int32_t kTypes[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 0, 9, 11, -1};
        return kTypes[Below(mix_.orphans ? 13 : 9)];
    }
    std::int32_t Key() { return Below(mix_.keys) - 1; }

    std::string Step() {
        const std::string code = Code();
        const std::int32_t meshNo = Below(mix_.meshes);
        switch (Below(mix_.delByPosition ? 12 : 11)) {
            case 0: {
                const std::int32_t type = Type();
                EXPECT_EQ(store_.MakeLayer(code, type), literal_.MakeLayer(code, type));
                return "MakeLayer " + code + ' ' + std::to_string(type);
            }
            case 1: {
                EXPECT_EQ(store_.DigMemDelete(code, meshNo), literal_.DigMemDelete(code, meshNo));
                return "DigMemDelete " + code + ' ' + std::to_string(meshNo);
            }
            case 2: {
                if (Below(3) != 0) return "nothing";
                EXPECT_EQ(store_.DigMemDeleteLay(code), literal_.DeleteWhere([&](const auto& b) { return b.code == code; }));
                return "DigMemDeleteLay " + code;
            }
            case 3: {
                if (Below(3) != 0) return "nothing";
                EXPECT_EQ(store_.DigMemDeleteMeshNo(meshNo),
                          literal_.DeleteWhere([&](const auto& b) { return b.meshNo == meshNo; }));
                return "DigMemDeleteMeshNo " + std::to_string(meshNo);
            }
            case 4:
            case 5: {
                const std::int32_t key = Key();
                EXPECT_EQ(store_.SetLayIndex(code, key) == 1, literal_.SetLayIndex(code, key));
                return "SetLayIndex " + code + ' ' + std::to_string(key);
            }
            case 6:
                store_.SortDigIndex();
                literal_.SortDigIndex();
                return "SortDigIndex";
            case 11: {
                const auto used = static_cast<int>(literal_.Index().size());
                if (used == 0) return "nothing";
                const std::int32_t pos = Below(used);
                store_.DelDigIndex(pos);
                literal_.DelDigIndex(pos);
                return "DelDigIndex " + std::to_string(pos);
            }
            default: {
                const std::int32_t type = Type();
                const std::int32_t key = Key();
                EXPECT_EQ(store_.DigMemAlloc(code, meshNo, type, "p", key), literal_.MakeBlock(code, meshNo, type, key));
                return "DigMemAlloc " + code + ' ' + std::to_string(meshNo) + " type " + std::to_string(type);
            }
        }
    }

    void CompareAll() {
        const std::vector<DigIndex> expected = literal_.Index();
        // The lookups come first, so that they meet a store whose index nobody has looked at since the last change.
        for (int i = 0; i < mix_.codes; ++i) CompareKeys(CodeName(i), expected);
        CompareKeys("", expected);
        CompareKeys("unknown", expected);
        EXPECT_EQ(store_.GetDigIndexCnt(), static_cast<std::int32_t>(expected.size()));
        const std::span<const DigIndex> index = store_.Index();
        EXPECT_EQ(std::vector<DigIndex>(index.begin(), index.end()), expected);
        ASSERT_EQ(store_.BlockCnt(), static_cast<std::int32_t>(literal_.Blocks().size()));
        for (std::int32_t i = 0; i < store_.BlockCnt(); ++i) {
            const LiteralStore::Block& block = literal_.Blocks()[static_cast<std::size_t>(i)];
            EXPECT_EQ(store_.Block(i).blkState, block.blkState);
            EXPECT_EQ(store_.Block(i).code.View(), block.code);
            EXPECT_EQ(store_.Block(i).meshNo, block.meshNo);
        }
        for (std::int32_t i = 0; i < store_.LayerCnt(); ++i) {
            const LiteralStore::Layer& layer = literal_.Layers()[static_cast<std::size_t>(i)];
            EXPECT_EQ(store_.Layer(i).code.View(), layer.code);
            EXPECT_EQ(store_.Layer(i).layIndex, layer.layIndex);
            EXPECT_EQ(store_.Layer(i).layType, layer.layType);
        }
        EXPECT_TRUE(literal_.Layers()[static_cast<std::size_t>(store_.LayerCnt())].code.empty());
    }

    void CompareKeys(const std::string& code, const std::vector<DigIndex>& index) {
        EXPECT_EQ(store_.FindLayDef(code), literal_.FindLayDef(code)) << code;
        for (std::int32_t meshNo = 0; meshNo < mix_.meshes; ++meshNo) {
            const std::int32_t pos = literal_.FindDigIndex(code, meshNo);
            EXPECT_EQ(store_.FindBlock(code, meshNo), pos < 0 ? DigIndex{} : index[static_cast<std::size_t>(pos)])
                << code << ' ' << meshNo;
            EXPECT_EQ(store_.FindDigIndex(code, meshNo), pos) << code << ' ' << meshNo;
        }
    }

    Mix mix_;
    std::mt19937 random_;
    CDigMem store_;
    LiteralStore literal_;
};

class LiteralComparison : public ::testing::TestWithParam<unsigned> {};

TEST_P(LiteralComparison, OrderlyUseGivesTheIndexOfTheSingleSteps) { Comparison({}, GetParam()).Run(300); }

TEST_P(LiteralComparison, DistinctKeysAndRareLooksGiveTheIndexOfTheSingleSteps) {
    Comparison({.codes = 12, .meshes = 8, .keys = 1000000, .looksPercent = 3}, GetParam()).Run(400);
}

TEST_P(LiteralComparison, ManyLayersWithEqualKeysGiveTheOrderOfTheExchangeLoop) {
    Comparison({.codes = 60, .meshes = 3, .keys = 5, .looksPercent = 5}, GetParam()).Run(400);
}

TEST_P(LiteralComparison, SlotsTakenOutByPositionLeaveTheirKeysFree) { Comparison({.delByPosition = true}, GetParam()).Run(300); }

TEST_P(LiteralComparison, EntriesWithoutALayerFollowTheStepsToTheLetter) {
    Comparison({.codes = 8, .orphans = true, .delByPosition = true}, GetParam()).Run(300);
}

TEST_P(LiteralComparison, EntriesWithoutALayerFollowTheStepsAlsoWhenSeldomLookedAt) {
    Comparison({.codes = 30, .meshes = 3, .orphans = true, .looksPercent = 5}, GetParam()).Run(300);
}

INSTANTIATE_TEST_SUITE_P(Seeds, LiteralComparison, ::testing::Range(1U, 41U));

}  // namespace
}  // namespace orvane
