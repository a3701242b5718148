// Arrays in: which are taken, how the first rules the others, and what a refusal leaves behind.
#include <gtest/gtest.h>

#include <cstring>

#include "control/automation/arrays.h"
#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

Variant R8s(std::vector<double> values, std::int32_t lower = 0) { return MakeArray(std::move(values), lower); }
Variant I4s(std::vector<std::int32_t> values, std::int32_t lower = 0) { return MakeArray(std::move(values), lower); }
Variant Variants(std::vector<Variant> values, std::int32_t lower = 0) { return MakeArray(std::move(values), lower); }
Variant Variants(std::initializer_list<double> values, std::int32_t lower = 0) {
    std::vector<Variant> each;
    for (const double v : values) each.emplace_back(v);
    return MakeArray(std::move(each), lower);
}
Variant TwoDimensions(std::vector<double> values, std::int64_t columns) {
    const auto rows = static_cast<std::int64_t>(values.size()) / columns;
    return MakeArray(std::move(values), std::vector<ArrayBound>{{0, columns}, {0, rows}});
}

class ArraysTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.Start();
        ASSERT_TRUE(rig.Run("OrvAddLayer", "A", 1, 2, 1).True());
        ASSERT_TRUE(rig.Run("OrvAddLayer", "M", 1, 10, 1).True());
    }

    const DigDat* Item(const char* code, std::int32_t id) { return rig.ctrl->store.FindDat(code, 1, id); }
    /// The item is there, without points.
    void ExpectEmptyItem(const char* code, std::int32_t id) {
        ASSERT_NE(Item(code, id), nullptr);
        EXPECT_EQ(Item(code, id)->pntCnt, 0);
    }
    Ran Add(const Variant& x, const Variant& y, const Variant& z) { return rig.Run("AddDigDatEx", "A", 1, 7, 3, x, y, z); }
    void ExpectRefused(const Variant& x, const Variant& y, const Variant& z) {
        EXPECT_TRUE(Add(x, y, z).False());
        ExpectEmptyItem("A", 7);
    }

    AutomationRig rig;
};

TEST_F(ArraysTest, AddDigDatExTakesDoublesAndVariants) {
    for (const bool variants : {false, true}) {
        const std::int32_t id = variants ? 8 : 7;
        const Ran ran = variants ? rig.Run("OrvAddDatEx", "A", 1, id, 3, Variants({1, 2}), Variants({3, 4}), Variants({5, 6}))
                                 : rig.Run("OrvAddDatEx", "A", 1, id, 3, R8s({1, 2}), R8s({3, 4}), R8s({5, 6}));
        ASSERT_TRUE(ran.True());
        const DigDat* item = Item("A", id);
        ASSERT_EQ(item->pntCnt, 2);
        EXPECT_EQ(item->lineTag, 3);
        EXPECT_EQ(item->pnts[1].x, 2);
        EXPECT_EQ(item->pnts[1].y, 4);
        EXPECT_EQ(item->pnts[1].z, 6);
    }
}

TEST_F(ArraysTest, AddDigDatExWithATwoDimensionalArrayReturnsFalseAndLeavesTheItemThereEmpty) {
    ExpectRefused(TwoDimensions({1, 2, 3, 4}, 2), R8s({1, 2, 3, 4}), R8s({1, 2, 3, 4}));
}

TEST_F(ArraysTest, ATwoDimensionalArrayIsRefusedInAnyPlace) {
    ExpectRefused(R8s({1, 2}), TwoDimensions({1, 2}, 1), R8s({1, 2}));
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, R8s({1, 2}), R8s({1, 2}), TwoDimensions({1, 2}, 2)).False());
    ExpectEmptyItem("A", 8);
}

TEST_F(ArraysTest, AddDigDatExWithArraysOfWholeNumbersReturnsFalse) { ExpectRefused(I4s({1, 2}), I4s({3, 4}), I4s({5, 6})); }

TEST_F(ArraysTest, ArraysOfOtherTypesAreRefused) {
    ExpectRefused(MakeArray(std::vector<float>{1, 2}), R8s({3, 4}), R8s({5, 6}));
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, MakeArray(std::vector<std::string>{"1"}), R8s({3}), R8s({5})).False());
    ExpectEmptyItem("A", 8);
}

TEST_F(ArraysTest, WhatIsNoArrayIsRefused) {
    ExpectRefused(Variant(1.0), R8s({3}), R8s({5}));
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, R8s({3}), R8s({5}), Variant()).False());
    ExpectEmptyItem("A", 8);
}

TEST_F(ArraysTest, AnEmptyArrayIsRefused) {
    ExpectRefused(R8s({}), R8s({}), R8s({}));
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, Variants(std::vector<Variant>{}), R8s({1}), R8s({1})).False());
}

TEST_F(ArraysTest, AnArrayShorterThanTheFirstReturnsFalseAndLeavesTheItem) {
    ExpectRefused(R8s({1, 2, 3}), R8s({1, 2}), R8s({1, 2, 3}));
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, Variants({1, 2}), Variants({1, 2}), Variants({1})).False());
    ExpectEmptyItem("A", 8);
}

TEST_F(ArraysTest, ArraysLongerThanTheFirstAreReadAsFarAsTheFirstGoes) {
    ASSERT_TRUE(Add(R8s({1, 2}), R8s({3, 4, 5}), R8s({6, 7, 8, 9})).True());
    EXPECT_EQ(Item("A", 7)->pntCnt, 2);
    EXPECT_EQ(Item("A", 7)->pnts[1].z, 7);
}

TEST_F(ArraysTest, PlainArraysAreWalkedFromTheirFirstElementWhateverTheirLowerBound) {
    ASSERT_TRUE(Add(R8s({1, 2}, 1), R8s({3, 4}, -5), R8s({5, 6})).True());
    EXPECT_EQ(Item("A", 7)->pnts[0].x, 1);
    EXPECT_EQ(Item("A", 7)->pnts[0].y, 3);
    EXPECT_EQ(Item("A", 7)->pnts[1].z, 6);
}

TEST_F(ArraysTest, VariantsAreFetchedByTheIndexesOfTheFirstArray) {
    ASSERT_TRUE(Add(Variants({1, 2}, 1), Variants({3, 4}, 1), Variants({5, 6, 7}, 0)).True());
    EXPECT_EQ(Item("A", 7)->pnts[0].y, 3);
    EXPECT_EQ(Item("A", 7)->pnts[0].z, 6);
    EXPECT_EQ(Item("A", 7)->pnts[1].z, 7);
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, Variants({1, 2}, 0), Variants({3, 4}, 1), Variants({5, 6}, 0)).False());
    ExpectEmptyItem("A", 8);
}

TEST_F(ArraysTest, TheFirstArrayDecidesHowAllAreReadSoAMixIsRefused) {
    ExpectRefused(R8s({1, 2}), Variants({3, 4}), R8s({5, 6}));
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, Variants({1, 2}), R8s({3, 4}), Variants({5, 6})).False());
    ExpectEmptyItem("A", 8);
}

TEST_F(ArraysTest, VariantElementsConvertOneByOneAndOneThatDoesNotRefusesAll) {
    const Variant mixed = Variants(std::vector<Variant>{Variant(std::int16_t{1}), Variant("2.5"), Variant(true)});
    ASSERT_TRUE(Add(mixed, Variants({1, 2, 3}), Variants({1, 2, 3})).True());
    EXPECT_EQ(Item("A", 7)->pnts[0].x, 1);
    EXPECT_EQ(Item("A", 7)->pnts[1].x, 2.5);
    EXPECT_EQ(Item("A", 7)->pnts[2].x, -1);
    const Variant bad = Variants(std::vector<Variant>{Variant(1.0), Variant("two")});
    EXPECT_TRUE(rig.Run("AddDigDatEx", "A", 1, 8, 0, Variants({1, 2}), bad, Variants({1, 2})).False());
    ExpectEmptyItem("A", 8);
}

TEST_F(ArraysTest, AFailedGrowthReturnsFalseAndLeavesTheItem) {
    const Variant many = R8s(std::vector<double>(5000, 1.0));
    ArrayFaults::FailOver(5000 * sizeof(DigPnt) - 1);
    const Ran ran = Add(many, many, many);
    ArrayFaults::Clear();
    EXPECT_TRUE(ran.False());
    ExpectEmptyItem("A", 7);
}

TEST_F(ArraysTest, ABoundThatTellsMoreElementsThanTheArrayHoldsNeverReadsBeyondIt) {
    auto lying = std::make_shared<SafeArray>();
    lying->data = std::vector<double>{1, 2};
    lying->bounds = {{0, 2000000000000}};
    const Variant wrong{std::shared_ptr<const SafeArray>(lying)};
    EXPECT_TRUE(Add(wrong, R8s({1}), R8s({1})).False());
    auto negative = std::make_shared<SafeArray>();
    negative->data = std::vector<double>{1, 2};
    negative->bounds = {{0, -1}};
    EXPECT_TRUE(Add(Variant(std::shared_ptr<const SafeArray>(negative)), R8s({1}), R8s({1})).False());
}

TEST_F(ArraysTest, VariantsAtTheEndsOfTheIndexRangeAreFoundWithoutOverflow) {
    const std::int32_t low = -2147483647 - 1;
    ASSERT_TRUE(Add(Variants({1, 2}, low), Variants({3, 4}, low), Variants({5, 6}, low)).True());
    EXPECT_TRUE(
        rig.Run("AddDigDatEx", "A", 1, 8, 0, Variants({1, 2}, low), Variants({3, 4}, 2147483646), Variants({5, 6}, low)).False());
}

TEST_F(ArraysTest, AMissingBlockIsRefusedBeforeTheArrays) {
    EXPECT_TRUE(rig.Run("AddDigDatEx", "none", 1, 7, 0, R8s({1}), R8s({1}), R8s({1})).False());
}

// --- Meshes -----------------------------------------------------------------------------------------------------------------

TEST_F(ArraysTest, OrvAddMeshDatStoresTheGridRowAfterRow) {
    const Variant six = R8s({1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(rig.Run("OrvAddMeshDat", "M", 1, 7, 3, 2, six, six, six).True());
    const DigDat* item = Item("M", 7);
    ASSERT_EQ(item->pntCnt, 6);
    EXPECT_EQ(item->lineTag, 0);
    EXPECT_EQ(item->meshAttr->hcnt, 3);
    EXPECT_EQ(item->meshAttr->vcnt, 2);
    EXPECT_EQ(item->pnts[3].x, 4);
}

TEST_F(ArraysTest, ARefusedMeshLeavesTheAddedItemWhateverTheReason) {
    const Variant six = R8s({1, 2, 3, 4, 5, 6});
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", "M", 1, 1, 3, 2, I4s({1, 2, 3, 4, 5, 6}), six, six).False());
    ExpectEmptyItem("M", 1);
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", "M", 1, 2, 3, 3, six, six, six).False());  // fewer elements than grid points
    ExpectEmptyItem("M", 2);
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", "M", 1, 3, 0, 2, six, six, six).False());
    ExpectEmptyItem("M", 3);
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", "M", 1, 4, 65536, 65536, six, six, six).False());  // 2^32 points
    ExpectEmptyItem("M", 4);
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", "M", 1, 6, -3, -2, I4s({1}), six, six).False());
    ExpectEmptyItem("M", 6);
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", "A", 1, 5, 3, 2, six, six, six).False());  // no mesh layer
    ExpectEmptyItem("A", 5);
}

class MeshArraysTest : public ArraysTest {
protected:
    void SetUp() override {
        ArraysTest::SetUp();
        const Variant four = R8s({1, 2, 3, 4});
        ASSERT_TRUE(rig.Run("OrvAddMeshDat", "M", 1, 7, 2, 2, four, four, four).True());
    }
    std::vector<int> Flags() {
        const auto& flags = Item("M", 7)->meshAttr->useFlag;
        return {flags[0], flags[1], flags[2], flags[3]};
    }
    std::vector<std::uint32_t> Colors() {
        const auto& colors = Item("M", 7)->meshAttr->meshColor;
        return {colors[0], colors[1], colors[2], colors[3]};
    }
};

TEST_F(MeshArraysTest, UseFlagsComeAsBooleansOrVariants) {
    EXPECT_EQ(Flags(), (std::vector<int>{255, 255, 255, 255}));
    ASSERT_TRUE(rig.Run("OrvSetMeshUseFlag", "M", 1, 7, MakeArray(std::vector<bool>{true, false, true, false})).True());
    EXPECT_EQ(Flags(), (std::vector<int>{1, 0, 1, 0}));
    const Variant mixed = Variants(std::vector<Variant>{Variant(false), Variant(std::int32_t{-1}), Variant(0.0), Variant(5.0)});
    ASSERT_TRUE(rig.Run("OrvSetMeshUseFlag", "M", 1, 7, mixed).True());
    EXPECT_EQ(Flags(), (std::vector<int>{0, 1, 0, 1}));
}

TEST_F(MeshArraysTest, UseFlagsAsNumbersAreRefused) {
    EXPECT_TRUE(rig.Run("OrvSetMeshUseFlag", "M", 1, 7, I4s({1, 0, 1, 0})).False());
    EXPECT_TRUE(rig.Run("OrvSetMeshUseFlag", "M", 1, 7, MakeArray(std::vector<bool>{true, false, true})).False());
    EXPECT_EQ(Flags(), (std::vector<int>{255, 255, 255, 255}));
}

TEST_F(MeshArraysTest, TheFourBytesOfASinglePrecisionElementAreTheColourAsTheyStand) {
    const std::uint32_t colors[] = {0x00DCDCDC, 0x000000FF, 0x7F800001, 0xFFC0FFEE};  // the last two are no numbers as floats
    std::vector<float> elements(4);
    std::memcpy(elements.data(), colors, sizeof colors);
    ASSERT_TRUE(rig.Run("OrvSetMeshColor", "M", 1, 7, MakeArray(elements)).True());
    EXPECT_EQ(Colors(), (std::vector<std::uint32_t>{0x00DCDCDC, 0x000000FF, 0x7F800001, 0xFFC0FFEE}));
}

TEST_F(MeshArraysTest, ColoursAsVariantsConvertToWholeNumbers) {
    const Variant colors =
        Variants(std::vector<Variant>{Variant(std::int32_t{255}), Variant("65280"), Variant(16711680.0), Variant()});
    ASSERT_TRUE(rig.Run("OrvSetMeshColor", "M", 1, 7, colors).True());
    EXPECT_EQ(Colors(), (std::vector<std::uint32_t>{255, 65280, 16711680, 0}));
}

TEST_F(MeshArraysTest, ColoursOfOtherTypesOrAnotherLengthAreRefusedAndTheMeshKeepsItsColours) {
    const Variant colors = Variants({1, 2, 3, 4});
    ASSERT_TRUE(rig.Run("OrvSetMeshColor", "M", 1, 7, colors).True());
    EXPECT_TRUE(rig.Run("OrvSetMeshColor", "M", 1, 7, I4s({5, 6, 7, 8})).False());
    EXPECT_TRUE(rig.Run("OrvSetMeshColor", "M", 1, 7, R8s({5, 6, 7, 8})).False());
    EXPECT_TRUE(rig.Run("OrvSetMeshColor", "M", 1, 7, Variants({5, 6, 7})).False());
    EXPECT_TRUE(rig.Run("OrvSetMeshColor", "M", 1, 7, Variants({5, 6, 7, 8, 9})).False());
    EXPECT_EQ(Colors(), (std::vector<std::uint32_t>{1, 2, 3, 4}));
}

// --- Sub layers of many items -----------------------------------------------------------------------------------------------

TEST_F(ArraysTest, OrvSetDatSubLayerExTakesLongsAndVariants) {
    for (const std::int32_t id : {1, 2, 3}) ASSERT_TRUE(rig.Run("OrvAddDat", "A", 1, id, 0).True());
    ASSERT_TRUE(rig.Run("OrvSetDatSubLayerEx", "A", 1, I4s({1, 3}), I4s({11, 13})).True());
    EXPECT_EQ(Item("A", 1)->subLayNo, 11);
    EXPECT_EQ(Item("A", 2)->subLayNo, 0);
    EXPECT_EQ(Item("A", 3)->subLayNo, 13);
    ASSERT_TRUE(rig.Run("OrvSetDatSubLayerEx", "A", 1, Variants({2, 9}), Variants({12, 19})).True());
    EXPECT_EQ(Item("A", 2)->subLayNo, 12);
    EXPECT_TRUE(rig.Run("OrvSetDatSubLayerEx", "A", 1, I4s({8, 9}), I4s({1, 2})).False());  // none found
}

TEST_F(ArraysTest, OrvSetDatSubLayerExRefusesDoublesAndAShorterSecondArray) {
    ASSERT_TRUE(rig.Run("OrvAddDat", "A", 1, 1, 0).True());
    EXPECT_TRUE(rig.Run("OrvSetDatSubLayerEx", "A", 1, R8s({1}), R8s({11})).False());
    EXPECT_TRUE(rig.Run("OrvSetDatSubLayerEx", "A", 1, I4s({1, 2}), I4s({11})).False());
    EXPECT_TRUE(rig.Run("OrvSetDatSubLayerEx", "A", 1, I4s({1}), Variants({11})).False());
    EXPECT_EQ(Item("A", 1)->subLayNo, 0);
}

TEST(ReadArrays, LeavesTheOutputsEmptyWhenItRefuses) {
    GrowArray<std::int32_t> a;
    GrowArray<std::int32_t> b;
    EXPECT_FALSE(ReadLongs(I4s({1, 2}), I4s({1}), a, b));
    EXPECT_TRUE(a.empty());
    EXPECT_TRUE(b.empty());
    GrowArray<DigPnt> points;
    EXPECT_FALSE(ReadPoints(R8s({1, 2}), R8s({1, 2}), R8s({1}), points));
    EXPECT_TRUE(points.empty());
}

}  // namespace
}  // namespace orvane
