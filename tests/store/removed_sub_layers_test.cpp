// Sub layers that are taken out again.
#include "store/dat_lookup.h"
#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

class RemovedSubLayers : public StoreTest {
protected:
    RemovedSubLayers() { MakeBlock("A", 1); }
    void Add(std::int32_t no) { ASSERT_TRUE(store.SetSubLayer("A", no, "sub " + std::to_string(no), true, 0, 1, 0, false)); }
    std::string NameOf(std::int32_t no) {
        const SubLayDef* sub = CDigMem::FindSubLay(LayerOf("A"), no);
        return sub == nullptr ? "" : std::string(sub->layerName.View());
    }
};

TEST_F(RemovedSubLayers, OneThatIsTakenOutIsFoundNoMoreAndThoseBehindItMoveUp) {
    for (const std::int32_t no : {5, 7, 9}) Add(no);
    EXPECT_TRUE(store.RemoveSubLayer("A", 7));
    const LayerDef& layer = LayerOf("A");
    EXPECT_EQ(layer.subLayCnt, 2);
    ASSERT_EQ(layer.subLays.size(), 2u);
    EXPECT_EQ(layer.subLays[0].subLayNo, 5);
    EXPECT_EQ(layer.subLays[1].subLayNo, 9);
    EXPECT_EQ(NameOf(7), "");
    EXPECT_EQ(NameOf(9), "sub 9");
}

TEST_F(RemovedSubLayers, OneOfManyIsTakenOutOfTheLookupToo) {
    constexpr std::int32_t kMany = 3 * DatLookup::kWalkedItems;
    for (std::int32_t no = 1; no <= kMany; ++no) Add(no);
    EXPECT_EQ(NameOf(kMany), "sub " + std::to_string(kMany));
    EXPECT_TRUE(store.RemoveSubLayer("A", 2));
    EXPECT_EQ(NameOf(2), "");
    EXPECT_EQ(NameOf(kMany), "sub " + std::to_string(kMany));
    Add(2);
    EXPECT_EQ(NameOf(2), "sub 2");
    EXPECT_EQ(LayerOf("A").subLays[kMany - 1].subLayNo, 2) << "a new one stands at the end";
}

TEST_F(RemovedSubLayers, OfTwoWithOneNumberTheFirstIsTakenOut) {
    Add(5);
    Add(6);
    store.MutableLayer(0).subLays[1].subLayNo = 5;
    EXPECT_TRUE(store.RemoveSubLayer("A", 5));
    EXPECT_EQ(NameOf(5), "sub 6");
}

TEST_F(RemovedSubLayers, WhatIsNotThereCannotBeTakenOut) {
    Add(5);
    EXPECT_FALSE(store.RemoveSubLayer("A", 6));
    EXPECT_FALSE(store.RemoveSubLayer("B", 5));
    EXPECT_EQ(LayerOf("A").subLayCnt, 1);
}

TEST_F(RemovedSubLayers, ItemsKeepTheNumberOfOneThatIsTakenOut) {
    Add(5);
    AddItem("A", 1, 1);
    ASSERT_TRUE(store.SetDigDatSubLayer("A", 1, 1, 5));
    EXPECT_TRUE(store.RemoveSubLayer("A", 5));
    EXPECT_EQ(Item("A", 1, 1).subLayNo, 5);
}

TEST_F(RemovedSubLayers, WorkThatLetsHostsRunLearnsOfIt) {
    Add(5);
    const std::uint32_t before = store.SubLayChangeCount();
    store.RemoveSubLayer("A", 5);
    EXPECT_NE(store.SubLayChangeCount(), before);
}

}  // namespace
}  // namespace orvane
