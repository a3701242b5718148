#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

class StoreLifecycleTest : public StoreTest {
protected:
    void Fill() {
        MakeBlock("A", 1);
        AddItem("A", 1, 7, {{1, 2, 3}});
        ASSERT_TRUE(store.SetSubLayer("A", 3, "s", true, 0, 1, 5, false));
    }
};

/// Each operation answers its failure value, and nothing is there afterwards.
void ExpectUnusable(CDigMem& store) {
    DatInfo info;
    double x = 0;
    double y = 0;
    bool flag = false;
    EXPECT_FALSE(store.MakeLayer("A", kLayLine));
    EXPECT_FALSE(store.DigMemAlloc("A", 1, kLayLine, "", 0));
    EXPECT_FALSE(store.DigMemAlloc2("A", 1, kLayLine, "", 0, 0, 0));
    EXPECT_FALSE(store.DigMemAlloc("Q", 1, 0, "", 0));
    EXPECT_FALSE(store.DigMemDelete("A", 1));
    EXPECT_EQ(store.DigMemDeleteLay("A"), 0);
    EXPECT_EQ(store.DigMemDeleteMeshNo(1), 0);
    EXPECT_EQ(store.SetLayIndex("A", 1), 0);
    EXPECT_FALSE(store.SetLayColor("A", 1));
    EXPECT_FALSE(store.SetSubLayer("A", 3, "", true, 0, 0, 0, false));
    EXPECT_FALSE(store.SetLayImage("A", {}));
    EXPECT_FALSE(store.AddDigDat("A", 1, 1, 0));
    EXPECT_FALSE(store.AddDigDatPnt("A", 1, 7, {}));
    EXPECT_FALSE(store.DelDigDat("A", 1, 7));
    EXPECT_EQ(store.FreeDigDatID("A", 1, flag), 0);
    EXPECT_FALSE(flag);
    EXPECT_FALSE(store.SetDigDatString("A", 1, 7, 0, 0, "t"));
    EXPECT_FALSE(store.SetDigDatStrStyle("A", 1, 7, {}));
    EXPECT_FALSE(store.SetFontSize("A", 1, 5));
    EXPECT_EQ(store.MakeOrgDat(2, 1, 0, 0), -1);
    EXPECT_EQ(store.OrgDatCnt(), 0);
    EXPECT_EQ(store.CopyData("A", 1, 7, "A", 1), 0);
    EXPECT_EQ(store.GetLayDatCnt("A", 1), 0);
    EXPECT_EQ(store.GetDigDatInfo("A", 1, 0), -1);
    EXPECT_FALSE(store.GetDigDatInfoEx("A", 1, 7, info));
    EXPECT_EQ(store.GetLayPath("A", 1), "");
    EXPECT_EQ(store.PntCnt("A", 1, 7), -1);
    EXPECT_EQ(store.ClearActive(), 0);
    EXPECT_FALSE(store.ActivateForJump("A", 1, 7, true, flag, x, y));
    EXPECT_EQ(store.FindDigIndex("A", 1), -1);
    EXPECT_EQ(store.FindLayDef("A"), -1);
    store.SortDigIndex();
    store.DelDigIndex(0);
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
    EXPECT_TRUE(store.Index().empty());
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(StoreLifecycleTest, BeforeTheFirstInitEverythingFails) {
    CDigMem fresh;
    EXPECT_FALSE(fresh.InitDone());
    EXPECT_EQ(fresh.bgColor, 0xFFFFFFU);
    ExpectUnusable(fresh);
    EXPECT_EQ(fresh.LayerCnt(), 0);
}

TEST_F(StoreLifecycleTest, AfterFreeAllEverythingFailsUntilTheNextInit) {
    Fill();
    store.FreeAll();
    EXPECT_FALSE(store.InitDone());
    ExpectUnusable(store);
    EXPECT_EQ(store.Init(), 1);
    EXPECT_TRUE(store.MakeLayer("A", kLayLine));
}

TEST_F(StoreLifecycleTest, FreeAllKeepsTheLayerRecordsWithoutTheirSubLayers) {
    Fill();
    store.FreeAll();
    ASSERT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.Layer(0).code.View(), "A");
    EXPECT_EQ(store.Layer(0).subLayCnt, 0);
    EXPECT_EQ(store.Layer(0).subLayMax, 0);
    EXPECT_EQ(CDigMem::FindSubLay(store.Layer(0), 3), nullptr);
}

TEST_F(StoreLifecycleTest, InitEmptiesTheStoreAndSetsTheViewsStart) {
    Fill();
    store.view.Zoom = 5;
    store.view.zoomStep = 9;
    ASSERT_TRUE(store.lineTypes.PushBack(LineTypeDef{}));
    store.ActiveColor = 77;
    EXPECT_EQ(store.Init(), 1);
    EXPECT_TRUE(store.InitDone());
    EXPECT_EQ(store.LayerCnt(), 0);
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
    EXPECT_EQ(store.FindLayDef("A"), -1);
    EXPECT_EQ(store.view.Zoom, 10000);
    EXPECT_EQ(store.view.zoomStep, 1);
    EXPECT_TRUE(store.lineTypes.empty());
    EXPECT_EQ(store.ActiveColor, 77U) << "the properties are not the store's to reset";
    EXPECT_EQ(store.MeshKind(), 0);
}

TEST_F(StoreLifecycleTest, ResetCountTellsEachEmptying) {
    const std::uint32_t before = store.ResetCount();
    store.Init();
    const std::uint32_t afterInit = store.ResetCount();
    EXPECT_NE(afterInit, before);
    store.FreeAll();
    const std::uint32_t afterFree = store.ResetCount();
    EXPECT_NE(afterFree, afterInit);
    store.FreeAll();
    EXPECT_EQ(store.ResetCount(), afterFree) << "there was nothing left to free";
}

TEST_F(StoreLifecycleTest, UnusedRecordsReadAsReset) {
    MakeBlock("A", 1);
    for (const std::int32_t pos : {1, 9999, 10000, -1}) {
        EXPECT_TRUE(store.Layer(pos).code.Empty()) << pos;
        EXPECT_EQ(store.Layer(pos).color, 0xFFFFFFU) << pos;
        EXPECT_EQ(store.Layer(pos).layType, 0) << pos;
    }
}

}  // namespace
}  // namespace orvane
