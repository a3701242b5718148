#include <utility>

#include "tests/store/store_fixture.h"

namespace orvane {
namespace {

class LayersTest : public StoreTest {};

TEST_F(LayersTest, NewLayerHasTheMakeValues) {
    ASSERT_TRUE(store.MakeLayer("first", kLayText));
    ASSERT_TRUE(store.MakeLayer("A", kLayPolygon));
    const LayerDef& layer = LayerOf("A");
    EXPECT_EQ(layer.code.View(), "A");
    EXPECT_TRUE(layer.layerName.Empty());
    EXPECT_EQ(layer.layIndex, 2) << "position in the table + 1";
    EXPECT_EQ(layer.layType, 3);
    EXPECT_EQ(layer.color, 0xDCDCDCU);
    EXPECT_EQ(layer.color2, 0U);
    EXPECT_EQ(layer.lineType, 0);
    EXPECT_EQ(layer.lineSize, 1);
    EXPECT_EQ(layer.pgnType, 0);
    EXPECT_EQ(layer.pntType, 0);
    EXPECT_EQ(layer.dspFlg, 1);
    EXPECT_EQ(layer.outLine, 1);
    EXPECT_EQ(layer.actFlg, 1);
    EXPECT_EQ(layer.spareFlg, 1);
    EXPECT_EQ(layer.editFlg, 0);
    EXPECT_EQ(layer.fillMode, 1);
    EXPECT_EQ(layer.subLayCnt, 0);
    EXPECT_EQ(layer.subLayMax, 0);
    EXPECT_EQ(layer.imgMode, 0);
    EXPECT_EQ(layer.imgPos, 0);
    EXPECT_TRUE(layer.imgfname.Empty());
    EXPECT_TRUE(layer.imgactfname.Empty());
    EXPECT_EQ(layer.bmWidth, 0);
    EXPECT_EQ(layer.bmHeight, 0);
    EXPECT_EQ(layer.imgMinScl, 0);
    EXPECT_EQ(layer.imgMaxScl, 0);
}

TEST_F(LayersTest, SecondMakeOfACodeIsRefusedWhateverTheType) {
    EXPECT_TRUE(store.MakeLayer("A", kLayPoint));
    EXPECT_FALSE(store.MakeLayer("A", kLayPoint));
    EXPECT_FALSE(store.MakeLayer("A", kLayLine));
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(LayerOf("A").layType, kLayPoint);
}

TEST_F(LayersTest, TypesFromOneToTenExceptNineAreMakeable) {
    for (std::int32_t type = -2; type <= 13; ++type) {
        const bool expected = type >= 1 && type <= 10 && type != 9;
        EXPECT_EQ(store.MakeLayer("L" + std::to_string(type), type), expected) << type;
    }
    EXPECT_EQ(store.LayerCnt(), 9);
}

TEST_F(LayersTest, CodesMayHaveFiftyBytesAndNotOneMore) {
    EXPECT_TRUE(store.MakeLayer(std::string(50, 'a'), kLayLine));
    EXPECT_FALSE(store.MakeLayer(std::string(51, 'b'), kLayLine));
    EXPECT_FALSE(store.DigMemAlloc(std::string(51, 'b'), 1, kLayLine, "", 0));
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
}

TEST_F(LayersTest, EmptyCodeIsAcceptedAndLeavesNoLayer) {
    EXPECT_TRUE(store.MakeLayer("", kLayLine));
    EXPECT_TRUE(store.MakeLayer("", kLayLine));
    EXPECT_FALSE(store.MakeLayer("", 9));
    EXPECT_EQ(store.LayerCnt(), 0);
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_EQ(store.FindLayDef("A"), 0);
}

TEST_F(LayersTest, CodeMayStandInARecordOfTheStore) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    for (std::int32_t meshNo = 0; meshNo < 40; ++meshNo) {
        ASSERT_TRUE(store.DigMemAlloc(store.Layer(0).code.View(), meshNo, kLayLine, "", 0));
        ASSERT_TRUE(store.DigMemAlloc(store.Block(0).code.View(), meshNo + 100, kLayLine, store.Block(0).path, 0));
    }
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.DigMemDeleteLay(store.Block(0).code.View()), 80);
}

TEST_F(LayersTest, EverySetterAnswersFalseForAMissingLayer) {
    EXPECT_EQ(store.SetLayIndex("A", 1), 0);
    EXPECT_FALSE(store.SetLayDspFlg("A", true));
    EXPECT_FALSE(store.SetLayColor("A", 1));
    EXPECT_FALSE(store.SetLayColor2("A", 1));
    EXPECT_FALSE(store.SetLayLineSize("A", 1));
    EXPECT_FALSE(store.SetLayLineType("A", 1));
    EXPECT_FALSE(store.SetLayOutLine("A", true));
    EXPECT_FALSE(store.SetLayPgnMode("A", true));
    EXPECT_FALSE(store.SetLayPgnLine("A", true, 1));
    EXPECT_FALSE(store.SetLayActive("A", true));
    EXPECT_FALSE(store.SetLayEditFlg("A", true));
    EXPECT_FALSE(store.SetLayerName("A", "n"));
}

TEST_F(LayersTest, DisplayIsSetAtOnceWhateverTheLayersType) {
    for (const std::int32_t type : {kLayPoint, kLayLine, kLayPolygon}) {
        const std::string code = "L" + std::to_string(type);
        ASSERT_TRUE(store.MakeLayer(code, type));
        ASSERT_TRUE(store.SetLayColor2(code, 77));
        ASSERT_TRUE(store.SetLayDisplay(code, {false, 11, 12, 13, 14, false, 0x112233, false, false}));
        const LayerDef& layer = LayerOf(code);
        EXPECT_EQ(layer.dspFlg, 0);
        EXPECT_EQ(layer.pntType, 11);
        EXPECT_EQ(layer.pgnType, 12);
        EXPECT_EQ(layer.lineType, 13);
        EXPECT_EQ(layer.lineSize, 14);
        EXPECT_EQ(layer.outLine, 0);
        EXPECT_EQ(layer.color, 0x112233U);
        EXPECT_EQ(layer.actFlg, 0);
        EXPECT_EQ(layer.fillMode, 0);
        EXPECT_EQ(layer.color2, 77U);
        EXPECT_EQ(layer.layType, type);
        EXPECT_EQ(layer.editFlg, 0);
        EXPECT_EQ(layer.spareFlg, 1);
        ASSERT_TRUE(store.SetLayDisplay(code, {true, 0, 0, 0, 0, true, 0, true, true}));
        EXPECT_EQ(layer.dspFlg + layer.outLine + layer.actFlg + layer.fillMode, 4);
    }
    EXPECT_FALSE(store.SetLayDisplay("none", {}));
}

TEST_F(LayersTest, EverySetterWritesItsField) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_EQ(store.SetLayIndex("A", -7), 1);
    EXPECT_EQ(LayerOf("A").layIndex, -7);
    EXPECT_TRUE(store.SetLayDspFlg("A", false));
    EXPECT_EQ(LayerOf("A").dspFlg, 0);
    EXPECT_TRUE(store.SetLayColor("A", 0x123456));
    EXPECT_EQ(LayerOf("A").color, 0x123456U);
    EXPECT_TRUE(store.SetLayColor2("A", 0x654321));
    EXPECT_EQ(LayerOf("A").color2, 0x654321U);
    EXPECT_TRUE(store.SetLayLineSize("A", 12));
    EXPECT_EQ(LayerOf("A").lineSize, 12);
    EXPECT_TRUE(store.SetLayOutLine("A", false));
    EXPECT_EQ(LayerOf("A").outLine, 0);
    EXPECT_TRUE(store.SetLayOutLine("A", true));
    EXPECT_EQ(LayerOf("A").outLine, 1);
    EXPECT_TRUE(store.SetLayPgnMode("A", false));
    EXPECT_EQ(LayerOf("A").fillMode, 0);
    EXPECT_TRUE(store.SetLayActive("A", false));
    EXPECT_EQ(LayerOf("A").actFlg, 0);
    EXPECT_TRUE(store.SetLayEditFlg("A", true));
    EXPECT_EQ(LayerOf("A").editFlg, 1);
    EXPECT_TRUE(store.SetLayerName("A", "name"));
    EXPECT_EQ(LayerOf("A").layerName.View(), "name");
}

TEST_F(LayersTest, LineTypeOfAPolygonLayerIsItsHatch) {
    ASSERT_TRUE(store.MakeLayer("A", kLayPolygon));
    EXPECT_TRUE(store.SetLayLineType("A", 4));
    EXPECT_EQ(LayerOf("A").pgnType, 4);
    EXPECT_EQ(LayerOf("A").lineType, 0);
    EXPECT_TRUE(store.SetLayPgnLine("A", false, 6));
    EXPECT_EQ(LayerOf("A").lineType, 6);
    EXPECT_EQ(LayerOf("A").outLine, 0);
    EXPECT_EQ(LayerOf("A").pgnType, 4);
}

TEST_F(LayersTest, LineTypeOfAPointLayerIsItsSymbolAndOfOthersTheLine) {
    ASSERT_TRUE(store.MakeLayer("P", kLayPoint));
    EXPECT_TRUE(store.SetLayLineType("P", 4));
    EXPECT_EQ(LayerOf("P").pntType, 4);
    EXPECT_EQ(LayerOf("P").lineType, 0);
    for (const std::int32_t type : {2, 4, 5, 6, 7, 8, 10}) {
        const std::string code = std::to_string(type);
        ASSERT_TRUE(store.MakeLayer(code, type));
        EXPECT_TRUE(store.SetLayLineType(code, 9));
        EXPECT_EQ(LayerOf(code).lineType, 9) << type;
        EXPECT_EQ(LayerOf(code).pntType, 0) << type;
        EXPECT_EQ(LayerOf(code).pgnType, 0) << type;
    }
}

class SubLayersTest : public StoreTest {
protected:
    const SubLayDef& Sub(std::string_view code, std::int32_t subLayNo) { return *CDigMem::FindSubLay(LayerOf(code), subLayNo); }
};

TEST_F(SubLayersTest, LineTypeIsSharedOutByTheLayersType) {
    ASSERT_TRUE(store.MakeLayer("P", kLayPoint));
    ASSERT_TRUE(store.MakeLayer("G", kLayPolygon));
    ASSERT_TRUE(store.MakeLayer("L", kLayLine));
    for (const char* code : {"P", "G", "L"}) ASSERT_TRUE(store.SetSubLayer(code, 5, "name", true, 7, 3, 0xABCDEF, true));
    EXPECT_EQ(std::vector({Sub("P", 5).pntType, Sub("P", 5).pgnType, Sub("P", 5).lineType}), (std::vector{7, 0, 0}));
    EXPECT_EQ(std::vector({Sub("G", 5).pntType, Sub("G", 5).pgnType, Sub("G", 5).lineType}), (std::vector{0, 7, 0}));
    EXPECT_EQ(std::vector({Sub("L", 5).pntType, Sub("L", 5).pgnType, Sub("L", 5).lineType}), (std::vector{0, 0, 7}));
    const SubLayDef& sub = Sub("G", 5);
    EXPECT_EQ(sub.subLayNo, 5);
    EXPECT_EQ(sub.layerName.View(), "name");
    EXPECT_EQ(sub.layType, 3);
    EXPECT_EQ(sub.dspFlg, 1);
    EXPECT_EQ(sub.lineSize, 3);
    EXPECT_EQ(sub.color, 0xABCDEFU);
    EXPECT_EQ(sub.color2, 0U);
    EXPECT_EQ(sub.outLine, 1);
    EXPECT_EQ(sub.fillMode, 1);
    EXPECT_EQ(sub.imgMode, 0);
    EXPECT_EQ(sub.imgPos, 0);
    EXPECT_TRUE(sub.imgfname.Empty());
}

TEST_F(SubLayersTest, ExtendedSetTakesEachTypeAsGiven) {
    ASSERT_TRUE(store.MakeLayer("P", kLayPoint));
    SubLayerSettings settings;
    settings.layerName = "n";
    settings.disp = true;
    settings.lineType = 1;
    settings.lineSize = 2;
    settings.pgnType = 3;
    settings.pntType = 4;
    settings.color = 5;
    settings.outLine = true;
    settings.fillMode = false;
    ASSERT_TRUE(store.SetSubLayerEx("P", 8, settings));
    const SubLayDef& sub = Sub("P", 8);
    EXPECT_EQ(std::vector({sub.lineType, sub.lineSize, sub.pgnType, sub.pntType}), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(sub.color, 5U);
    EXPECT_EQ(sub.color2, 0U);
    EXPECT_EQ(sub.outLine, 1);
    EXPECT_EQ(sub.fillMode, 0);
}

TEST_F(SubLayersTest, SetTwiceWithOneNumberKeepsOneRecordAndItsImage) {
    MakeBlock("P", 1, kLayPoint);
    ASSERT_TRUE(store.SetSubLayer("P", 5, "one", true, 7, 3, 1, true));
    ASSERT_TRUE(store.SetSubLayColor2("P", 5, 99));
    ASSERT_TRUE(store.SetSubLayImage("P", 5, {"a.bmp", "b.bmp", 16, 17, 0.5, 1.5}));
    ASSERT_TRUE(store.DspSubLayImage("P", 5, true));
    ASSERT_TRUE(store.SetSubLayImagePos("P", 5, 3));
    ASSERT_TRUE(store.SetSubLayer("P", 5, "two", false, 8, 4, 2, false));
    EXPECT_EQ(LayerOf("P").subLayCnt, 1);
    const SubLayDef& sub = Sub("P", 5);
    EXPECT_EQ(sub.layerName.View(), "two");
    EXPECT_EQ(sub.dspFlg, 0);
    EXPECT_EQ(sub.pntType, 8);
    EXPECT_EQ(sub.lineSize, 4);
    EXPECT_EQ(sub.color, 2U);
    EXPECT_EQ(sub.color2, 0U);
    EXPECT_EQ(sub.outLine, 0);
    EXPECT_EQ(sub.imgfname.View(), "a.bmp");
    EXPECT_EQ(sub.imgactfname.View(), "b.bmp");
    EXPECT_EQ(sub.bmWidth, 16);
    EXPECT_EQ(sub.bmHeight, 17);
    EXPECT_EQ(sub.imgMinScl, 0.5);
    EXPECT_EQ(sub.imgMaxScl, 1.5);
    EXPECT_EQ(sub.imgMode, 1);
    EXPECT_EQ(sub.imgPos, 3);
}

TEST_F(SubLayersTest, CapacityIsToldInStepsOfFifty) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    for (std::int32_t i = 1; i <= 101; ++i) {
        ASSERT_TRUE(store.SetSubLayer("A", i, "", true, 0, 1, 0, false));
        EXPECT_EQ(LayerOf("A").subLayCnt, i);
        EXPECT_EQ(LayerOf("A").subLayMax, i <= 50 ? 50 : i <= 100 ? 100 : 150);
    }
    EXPECT_EQ(Sub("A", 101).subLayNo, 101);
    EXPECT_EQ(LayerOf("A").subLays[0].subLayNo, 1) << "order of creation";
}

TEST_F(SubLayersTest, TypeIsThatOfTheLayerWhenTheRecordWasMade) {
    MakeBlock("A", 1, kLayLine);
    ASSERT_TRUE(store.SetSubLayer("A", 1, "", true, 0, 1, 0, false));
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    MakeBlock("A", 1, kLayPolygon);
    ASSERT_EQ(LayerOf("A").layType, kLayPolygon);
    ASSERT_TRUE(store.SetSubLayer("A", 1, "", true, 5, 1, 0, false));
    EXPECT_EQ(Sub("A", 1).layType, kLayLine);
    EXPECT_EQ(Sub("A", 1).pgnType, 5);
}

TEST_F(SubLayersTest, MissingLayersAndRecordsAreRefused) {
    EXPECT_FALSE(store.SetSubLayer("A", 1, "", true, 0, 1, 0, false));
    EXPECT_FALSE(store.SetSubLayerEx("A", 1, {}));
    EXPECT_FALSE(store.SetSubLayColor("A", 1, 0));
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_FALSE(store.SetSubLayColor("A", 1, 0));
    EXPECT_FALSE(store.SetSubLayColor2("A", 1, 0));
    ASSERT_TRUE(store.SetSubLayer("A", 1, "", true, 0, 1, 0, false));
    EXPECT_TRUE(store.SetSubLayColor("A", 1, 6));
    EXPECT_TRUE(store.SetSubLayColor2("A", 1, 7));
    EXPECT_EQ(Sub("A", 1).color, 6U);
    EXPECT_EQ(Sub("A", 1).color2, 7U);
}

TEST_F(SubLayersTest, OfManyRecordsEachIsStillFoundByItsNumber) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    for (std::int32_t i = 0; i < 300; ++i) {
        ASSERT_TRUE(store.SetSubLayer("A", i * 7, "", true, i, 1, 0, false));
        // Asked for in between, so that what is found quickly has to learn of what is added later.
        ASSERT_EQ(Sub("A", i * 7).lineType, i);
        ASSERT_EQ(CDigMem::FindSubLay(LayerOf("A"), i * 7 + 1), nullptr);
    }
    EXPECT_EQ(LayerOf("A").subLayCnt, 300);
    ASSERT_TRUE(store.SetSubLayer("A", 100 * 7, "", true, 12345, 1, 0, false));
    EXPECT_EQ(LayerOf("A").subLayCnt, 300);
    for (std::int32_t i = 0; i < 300; ++i) EXPECT_EQ(Sub("A", i * 7).lineType, i == 100 ? 12345 : i);
    store.Init();
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_EQ(CDigMem::FindSubLay(LayerOf("A"), 7), nullptr);
}

TEST_F(SubLayersTest, OfManyRecordsEachIsFoundWithoutMemoryForTheLookup) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    for (std::int32_t i = 0; i < 300; ++i) {
        ASSERT_TRUE(store.SetSubLayer("A", i, "", true, i, 1, 0, false)) << i;
        // The 65th record doubled the room for records, so that for a while only the lookup asks for memory.
        if (i == 64) ArrayFaults::FailFrom(1);
        ASSERT_EQ(Sub("A", i).lineType, i);
        ASSERT_EQ(Sub("A", i / 2).lineType, i / 2);
        ASSERT_EQ(CDigMem::FindSubLay(LayerOf("A"), i + 1), nullptr);
        if (i != 100) continue;
        EXPECT_GT(ArrayFaults::Count(), 0);
        ArrayFaults::Clear();
    }
}

TEST_F(SubLayersTest, EveryChangeOfASubLayerIsCounted) {
    MakeBlock("P", 1, kLayPoint);
    std::uint32_t before = store.SubLayChangeCount();
    const auto counted = [&] { return std::exchange(before, store.SubLayChangeCount()) != before; };
    store.SetSubLayer("P", 1, "", true, 0, 1, 0, false);
    EXPECT_TRUE(counted());
    store.SetSubLayerEx("P", 1, {});
    EXPECT_TRUE(counted());
    store.SetSubLayColor("P", 1, 0);
    EXPECT_TRUE(counted());
    store.SetSubLayColor2("P", 1, 0);
    EXPECT_TRUE(counted());
    store.SetSubLayImage("P", 1, {});
    EXPECT_TRUE(counted());
    store.SetSubLayImageMode("P", 1, {}, true);
    EXPECT_TRUE(counted());
    store.DspSubLayImage("P", 1, true);
    EXPECT_TRUE(counted());
    store.SetSubLayImagePos("P", 1, 2);
    EXPECT_TRUE(counted());
    store.SetLayColor("P", 1);
    EXPECT_FALSE(counted());
}

TEST_F(SubLayersTest, LongNamesAreCut) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(store.SetSubLayer("A", 1, std::string(300, 'n'), true, 0, 1, 0, false));
    EXPECT_EQ(Sub("A", 1).layerName.View(), std::string(255, 'n'));
}

class LayerImagesTest : public StoreTest {};

TEST_F(LayerImagesTest, LayerWithoutABlockIsNotFound) {
    ASSERT_TRUE(store.MakeLayer("A", kLayPoint));
    ASSERT_TRUE(store.SetSubLayer("A", 1, "", true, 0, 1, 0, false));
    EXPECT_FALSE(store.SetLayImage("A", {"a", "b", 1, 2, 3, 4}));
    EXPECT_FALSE(store.DspLayImage("A", true));
    EXPECT_FALSE(store.SetLayImagePos("A", 1));
    EXPECT_FALSE(store.SetSubLayImage("A", 1, {"a", "b", 1, 2, 3, 4}));
    EXPECT_FALSE(store.DspSubLayImage("A", 1, true));
    EXPECT_FALSE(store.SetSubLayImagePos("A", 1, 1));
    MakeBlock("A", 1, kLayPoint);
    EXPECT_TRUE(store.SetLayImage("A", {}));
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    EXPECT_FALSE(store.SetLayImage("A", {})) << "its last block is gone";
}

TEST_F(LayerImagesTest, OnlyPointLayersHaveImages) {
    MakeBlock("A", 1, kLayLine);
    ASSERT_TRUE(store.SetSubLayer("A", 1, "", true, 0, 1, 0, false));
    EXPECT_FALSE(store.SetLayImage("A", {}));
    EXPECT_FALSE(store.DspLayImage("A", true));
    EXPECT_FALSE(store.SetLayImagePos("A", 1));
    EXPECT_FALSE(store.SetSubLayImage("A", 1, {}));
    EXPECT_FALSE(store.DspSubLayImage("A", 1, true));
    EXPECT_FALSE(store.SetSubLayImagePos("A", 1, 1));
}

TEST_F(LayerImagesTest, SetImageCopiesTheValuesAndSwitchesTheImageOff) {
    MakeBlock("A", 1, kLayPoint);
    ASSERT_TRUE(store.DspLayImage("A", true));
    ASSERT_TRUE(store.SetLayImagePos("A", 4));
    EXPECT_EQ(LayerOf("A").imgMode, 1);
    ASSERT_TRUE(store.SetLayImage("A", {"n.bmp", "act.bmp", 16, 24, 0.25, 8}));
    EXPECT_EQ(LayerOf("A").imgfname.View(), "n.bmp");
    EXPECT_EQ(LayerOf("A").imgactfname.View(), "act.bmp");
    EXPECT_EQ(LayerOf("A").bmWidth, 16);
    EXPECT_EQ(LayerOf("A").bmHeight, 24);
    EXPECT_EQ(LayerOf("A").imgMinScl, 0.25);
    EXPECT_EQ(LayerOf("A").imgMaxScl, 8);
    EXPECT_EQ(LayerOf("A").imgMode, 0);
    EXPECT_EQ(LayerOf("A").imgPos, 4) << "the layer's own set leaves the position, the sub layer's does not";
}

TEST_F(LayerImagesTest, SubLayerSetAlsoResetsThePosition) {
    MakeBlock("A", 1, kLayPoint);
    EXPECT_FALSE(store.SetSubLayImage("A", 1, {}));
    ASSERT_TRUE(store.SetSubLayer("A", 1, "", true, 0, 1, 0, false));
    ASSERT_TRUE(store.SetSubLayImagePos("A", 1, 4));
    ASSERT_TRUE(store.DspSubLayImage("A", 1, true));
    ASSERT_TRUE(store.SetSubLayImage("A", 1, {std::string(600, 'p'), "b", 1, 2, 3, 4}));
    const SubLayDef& sub = *CDigMem::FindSubLay(LayerOf("A"), 1);
    EXPECT_EQ(sub.imgPos, 0);
    EXPECT_EQ(sub.imgMode, 0);
    EXPECT_EQ(sub.imgfname.View(), std::string(511, 'p'));
}

TEST_F(LayerImagesTest, SubLayerImageWithItsModeIsSetInALayerOfAnyType) {
    for (const std::int32_t type : {1, 2, 3, 4, 5, 6, 7, 8, 10}) {
        const std::string code = "L" + std::to_string(type);
        MakeBlock(code, 1, type);
        EXPECT_FALSE(store.SetSubLayImageMode(code, 4, {}, true)) << "no such record";
        ASSERT_TRUE(store.SetSubLayer(code, 4, "", true, 0, 1, 0, false));
        ASSERT_TRUE(store.SetSubLayImageMode(code, 4, {"n.bmp", "act.bmp", 16, 24, 0.25, 8}, true)) << type;
        const SubLayDef& sub = *CDigMem::FindSubLay(LayerOf(code), 4);
        EXPECT_EQ(sub.imgfname.View(), "n.bmp");
        EXPECT_EQ(sub.imgactfname.View(), "act.bmp");
        EXPECT_EQ(sub.bmWidth, 16);
        EXPECT_EQ(sub.bmHeight, 24);
        EXPECT_EQ(sub.imgMinScl, 0.25);
        EXPECT_EQ(sub.imgMaxScl, 8);
        EXPECT_EQ(sub.imgMode, 1);
        ASSERT_TRUE(store.SetSubLayImageMode(code, 4, {}, false));
        EXPECT_EQ(sub.imgMode, 0);
        EXPECT_TRUE(sub.imgfname.Empty());
    }
    EXPECT_FALSE(store.SetSubLayImageMode("none", 4, {}, true));
}

TEST_F(LayerImagesTest, SubLayerImageWithItsModeLeavesThePosition) {
    MakeBlock("A", 1, kLayPoint);
    ASSERT_TRUE(store.SetSubLayer("A", 1, "", true, 0, 1, 0, false));
    ASSERT_TRUE(store.SetSubLayImagePos("A", 1, 4));
    ASSERT_TRUE(store.SetSubLayImageMode("A", 1, {}, true));
    EXPECT_EQ(CDigMem::FindSubLay(LayerOf("A"), 1)->imgPos, 4);
}

TEST_F(LayerImagesTest, LayerIsFoundThroughAnEntryThatStandsTwice) {
    MakeBlock("A", 1, kLayPoint);
    ASSERT_TRUE(store.DigMemAlloc("Q", 5, 0, "", 3));
    MakeBlock("B", 2, kLayPoint);
    EXPECT_TRUE(store.SetLayImage("A", {}));
    EXPECT_TRUE(store.SetLayImage("B", {}));
    EXPECT_FALSE(store.SetLayImage("Q", {}));
}

}  // namespace
}  // namespace orvane
