// The members that make, change and read the map: that each argument reaches its place, under both names.
#include <gtest/gtest.h>

#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

const std::string kCode50(50, 'k');
const std::string kCode51 = kCode50 + "x";

class StoreMembersTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.Start();
        ASSERT_TRUE(rig.Run("OrvAddLayer", "P", 1, 1, 3).True());
        ASSERT_TRUE(rig.Run("OrvAddLayer", "L", 1, 2, 2).True());
        ASSERT_TRUE(rig.Run("OrvAddLayer", "G", 1, 3, 1).True());
        rig.ctrl->SetModified(false);
    }
    const SubLayDef& Sub(const char* code, std::int32_t no) {
        const SubLayDef* found = CDigMem::FindSubLay(rig.Layer(code), no);
        static const SubLayDef kNone;
        EXPECT_NE(found, nullptr);
        return found == nullptr ? kNone : *found;
    }
    const DigDat* Item(std::string_view code, std::int32_t id) { return rig.ctrl->store.FindDat(code, 1, id); }

    AutomationRig rig;
};

// --- Making and deleting ----------------------------------------------------------------------------------------------------

TEST(StoreMembersBeforeThePaint, MakeLayerIsRefusedWhileDigMemAllocMakesTheLayer) {
    AutomationRig rig;
    rig.Run("OrvInit");
    EXPECT_TRUE(rig.Run("MakeLayer", "A", 2).False());
    EXPECT_TRUE(rig.Run("OrvMakeLayer", "A", 2).False());
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0);
    EXPECT_TRUE(rig.Run("DigMemAlloc", "A", 533945, 2, "file.arc", 7).True());
    EXPECT_EQ(rig.Layer("A").layType, 2);
    rig.Paint();
    EXPECT_TRUE(rig.Run("MakeLayer", "B", 3).True());
    EXPECT_TRUE(rig.Run("OrvMakeLayer", "B", 3).False());
}

TEST_F(StoreMembersTest, ABlockTakesPathIndexAndItsOrigin) {
    ASSERT_TRUE(rig.Run("DigMemAlloc", "S", 533945, 2, "sheet.arc", 7).True());
    EXPECT_EQ(rig.Layer("S").layIndex, 7);
    EXPECT_EQ(rig.Run("GetLayPath", "S", 533945).Text(), "sheet.arc");
    const DigIndex sheet = rig.ctrl->store.FindBlock("S", 533945);
    ASSERT_GE(sheet.block, 0);
    EXPECT_EQ(rig.ctrl->store.Block(sheet.block).GX, 3170000);
    EXPECT_EQ(rig.ctrl->store.Block(sheet.block).GY, 4280000);

    ASSERT_TRUE(rig.Run("DigMemAlloc2", "T", 5, 3, "t.pgn", 8, 10.9, -20.9).True());
    const DigIndex given = rig.ctrl->store.FindBlock("T", 5);
    ASSERT_GE(given.block, 0);
    EXPECT_EQ(rig.ctrl->store.Block(given.block).GX, 10);
    EXPECT_EQ(rig.ctrl->store.Block(given.block).GY, -20);
    EXPECT_EQ(rig.Run("GetLayPath", "T", 5).Text(), "t.pgn");

    ASSERT_TRUE(rig.Run("OrvAddLayer", "U", 6, 1, 9).True());
    EXPECT_EQ(rig.Layer("U").layIndex, 9);
    EXPECT_EQ(rig.Run("GetLayPath", "U", 6).Text(), "");
    EXPECT_EQ(rig.ctrl->store.Block(rig.ctrl->store.FindBlock("U", 6).block).GX, 0);
}

TEST_F(StoreMembersTest, APathIsCutAt511Bytes) {
    ASSERT_TRUE(rig.Run("DigMemAlloc", "S", 1, 2, std::string(600, 'p'), 7).True());
    EXPECT_EQ(rig.Run("GetLayPath", "S", 1).Text(), std::string(511, 'p'));
    ASSERT_TRUE(rig.Run("DigMemAlloc2", "S", 2, 2, std::string(600, 'p'), 7, 0.0, 0.0).True());
    EXPECT_EQ(rig.Run("GetLayPath", "S", 2).Text(), std::string(511, 'p'));
}

TEST_F(StoreMembersTest, BlocksAreDeletedByKeyByLayerAndByMeshNumber) {
    rig.Run("OrvAddLayer", "L", 2, 2, 1);
    rig.Run("OrvAddLayer", "L", 3, 2, 1);
    EXPECT_TRUE(rig.Run("DigMemDelete", "L", 2).True());
    EXPECT_TRUE(rig.Run("OrvDelLayGrpDat", "L", 2).False());
    EXPECT_EQ(rig.Run("DigMemDeleteLay", "L").Long(), 2);
    EXPECT_EQ(rig.Run("OrvDelLayDat", "L").Long(), 0);
    EXPECT_EQ(rig.Run("DigMemDeleteMeshNo", 1).Long(), 2);
    EXPECT_EQ(rig.Run("OrvDelGrpDat", 1).Long(), 0);
    EXPECT_EQ(rig.ctrl->store.GetDigIndexCnt(), 0);
    EXPECT_TRUE(rig.Run("OrvSetLayColor", "L", 5).True());
}

TEST_F(StoreMembersTest, AnIndexKeyCountsFromTheNextSort) {
    const auto first = [&] { return std::string(rig.ctrl->store.Layer(rig.ctrl->store.Index()[0].layer).code.View()); };
    EXPECT_EQ(first(), "P");
    EXPECT_EQ(rig.Run("SetLayIndex", "G", 100).Long(), 1);
    EXPECT_EQ(rig.Run("OrvSetLayIndex", "none", 100).Long(), 0);
    EXPECT_EQ(first(), "P");
    EXPECT_TRUE(rig.Run("OrvSortLayer").Ok());
    EXPECT_EQ(first(), "G");
    rig.Run("OrvSetLayIndex", "G", -1);
    EXPECT_TRUE(rig.Run("RDMSortIndex").Ok());
    EXPECT_EQ(first(), "P");
}

// --- Layers -----------------------------------------------------------------------------------------------------------------

TEST_F(StoreMembersTest, SetLayerWithAnUnknownCodeReturnsTrueAndRedraws) {
    for (const char* name : {"SetLayer", "OrvSetLayDspMode"}) {
        rig.verbs->Clear();
        const Ran ran = rig.Run(name, "none", false);
        EXPECT_GT(rig.verbs->Size(), 0u) << name;
        EXPECT_EQ(ran.result.value.IsEmpty(), name == std::string_view("OrvSetLayDspMode")) << name;
    }
    EXPECT_TRUE(rig.Run("SetLayer", "none", false).True());
}

TEST_F(StoreMembersTest, SetLayerShowsAndHides) {
    EXPECT_TRUE(rig.Run("SetLayer", "L", false).True());
    EXPECT_EQ(rig.Layer("L").dspFlg, 0);
    rig.Run("OrvSetLayDspMode", "L", true);
    EXPECT_EQ(rig.Layer("L").dspFlg, 1);
}

TEST_F(StoreMembersTest, EveryLayerAttributeReachesItsField) {
    for (const char* name : {"SetLayColor", "OrvSetLayColor"}) {
        EXPECT_TRUE(rig.Run(name, "L", name[0] == 'S' ? 0x112233 : 0x445566).True()) << name;
        EXPECT_EQ(rig.Layer("L").color, name[0] == 'S' ? 0x112233u : 0x445566u) << name;
    }
    EXPECT_TRUE(rig.Run("OrvSetLayColor2", "L", 0x778899).True());
    EXPECT_EQ(rig.Layer("L").color2, 0x778899u);
    EXPECT_TRUE(rig.Run("SetLayLineSize", "L", 4).True());
    EXPECT_EQ(rig.Layer("L").lineSize, 4);
    EXPECT_TRUE(rig.Run("OrvSetLayLineSize", "L", 5).True());
    EXPECT_EQ(rig.Layer("L").lineSize, 5);
    EXPECT_TRUE(rig.Run("SetLayActive", "L", false).True());
    EXPECT_EQ(rig.Layer("L").actFlg, 0);
    EXPECT_TRUE(rig.Run("OrvSetLayActMode", "L", true).True());
    EXPECT_EQ(rig.Layer("L").actFlg, 1);
    EXPECT_TRUE(rig.Run("SetLayEditFlg", "L", true).True());
    EXPECT_EQ(rig.Layer("L").editFlg, 1);
    EXPECT_TRUE(rig.Run("OrvSetLayEditFlg", "L", false).True());
    EXPECT_EQ(rig.Layer("L").editFlg, 0);
    for (const char* name : {"SetLayPgnMode", "OrvSetLayPgnMode"}) {
        EXPECT_TRUE(rig.Run(name, "G", 0).True()) << name;
        EXPECT_EQ(rig.Layer("G").fillMode, 0) << name;
        EXPECT_TRUE(rig.Run(name, "G", 2).True()) << name;
        EXPECT_EQ(rig.Layer("G").fillMode, 1) << name;
    }
}

TEST_F(StoreMembersTest, TheFillModeMemberIsTheOutlineSwitch) {
    for (const char* name : {"SetLayFillMode", "OrvSetLayFillMode", "OrvSetLayOutLineMode"}) {
        EXPECT_TRUE(rig.Run(name, "G", 0).True()) << name;
        EXPECT_EQ(rig.Layer("G").outLine, 0) << name;
        EXPECT_TRUE(rig.Run(name, "G", 5).True()) << name;
        EXPECT_EQ(rig.Layer("G").outLine, 1) << name;
    }
    EXPECT_EQ(rig.Layer("G").fillMode, 1);
}

TEST_F(StoreMembersTest, TheLineTypeOfAPolygonLayerIsItsHatchAndSetLayPgnLineItsLineType) {
    EXPECT_TRUE(rig.Run("SetLayLineType", "P", 3).True());
    EXPECT_EQ(rig.Layer("P").pntType, 3);
    EXPECT_TRUE(rig.Run("OrvSetLayLineType", "L", 4).True());
    EXPECT_EQ(rig.Layer("L").lineType, 4);
    EXPECT_TRUE(rig.Run("SetLayLineType", "G", 5).True());
    EXPECT_EQ(rig.Layer("G").pgnType, 5);
    EXPECT_EQ(rig.Layer("G").lineType, 0);
    EXPECT_TRUE(rig.Run("SetLayPgnLine", "G", 0, 6).True());
    EXPECT_EQ(rig.Layer("G").outLine, 0);
    EXPECT_EQ(rig.Layer("G").lineType, 6);
    EXPECT_EQ(rig.Layer("G").pgnType, 5);
    EXPECT_TRUE(rig.Run("OrvSetLayPgnLine", "G", 1, 7).True());
    EXPECT_EQ(rig.Layer("G").outLine, 1);
    EXPECT_EQ(rig.Layer("G").lineType, 7);
}

TEST_F(StoreMembersTest, OrvSetLayerNameWithABCDEFGStoresABCD) {
    EXPECT_TRUE(rig.Run("OrvSetLayerName", "L", "ABCDEFG").True());
    EXPECT_EQ(rig.Layer("L").layerName.View(), "ABCD");
    EXPECT_TRUE(rig.Run("OrvSetLayerName", "none", "AB").False());
}

TEST_F(StoreMembersTest, NoLayerMemberButTheDisplaySwitchRepaintsOrMarksTheControl) {
    rig.verbs->Clear();
    rig.Run("OrvSetLayColor", "L", 5);
    rig.Run("OrvSetLayColor2", "L", 5);
    rig.Run("OrvSetLayLineSize", "L", 5);
    rig.Run("OrvSetLayPgnLine", "G", 0, 5);
    rig.Run("OrvSetSubLayer", "L", "name", 1, true, 1, 2, 3, 0);
    rig.Run("OrvAddDat", "L", 1, 1, 0);
    rig.Run("OrvSortLayer");
    EXPECT_EQ(rig.verbs->Size(), 0u);
    EXPECT_FALSE(rig.ctrl->Modified());
}

// --- Sub layers and images --------------------------------------------------------------------------------------------------

TEST_F(StoreMembersTest, ASubLayerTakesItsValuesUnderBothNames) {
    EXPECT_TRUE(rig.Run("SetSubLayer", "G", 5, true, 2, 3, 0x112233, 0).True());
    const SubLayDef& older = Sub("G", 5);
    EXPECT_EQ(older.layerName.View(), "");
    EXPECT_EQ(older.dspFlg, 1);
    EXPECT_EQ(older.pgnType, 2);
    EXPECT_EQ(older.lineType, 0);
    EXPECT_EQ(older.lineSize, 3);
    EXPECT_EQ(older.color, 0x112233u);
    EXPECT_EQ(older.outLine, 0);
    EXPECT_EQ(older.fillMode, 1);
    EXPECT_TRUE(rig.Run("OrvSetSubLayer", "G", "parks", 5, false, 4, 5, 0x445566, 1).True());
    const SubLayDef& newer = Sub("G", 5);
    EXPECT_EQ(newer.layerName.View(), "parks");
    EXPECT_EQ(newer.dspFlg, 0);
    EXPECT_EQ(newer.pgnType, 4);
    EXPECT_EQ(newer.lineSize, 5);
    EXPECT_EQ(newer.color, 0x445566u);
    EXPECT_EQ(newer.outLine, 1);
    EXPECT_EQ(rig.Layer("G").subLayCnt, 1);
}

TEST_F(StoreMembersTest, AnExtendedSubLayerTakesEachTypeUnderBothNames) {
    EXPECT_TRUE(rig.Run("SetSubLayerEx", "G", 5, true, 1, 2, 3, 4, 0x112233, 0, 0).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayerEx", "G", "lakes", 6, true, 1, 2, 3, 4, 0x112233, 1, 1).True());
    for (const std::int32_t no : {5, 6}) {
        const SubLayDef& sub = Sub("G", no);
        EXPECT_EQ(sub.lineType, 1);
        EXPECT_EQ(sub.lineSize, 2);
        EXPECT_EQ(sub.pgnType, 3);
        EXPECT_EQ(sub.pntType, 4);
        EXPECT_EQ(sub.color, 0x112233u);
        EXPECT_EQ(sub.outLine, no - 5);
        EXPECT_EQ(sub.fillMode, no - 5);
        EXPECT_EQ(sub.layerName.View(), no == 5 ? "" : "lakes");
    }
}

TEST_F(StoreMembersTest, ASubLayersNameIsCutAt255Bytes) {
    EXPECT_TRUE(rig.Run("OrvSetSubLayer", "G", std::string(300, 'n'), 5, true, 4, 5, 6, 1).True());
    EXPECT_EQ(Sub("G", 5).layerName.View(), std::string(255, 'n'));
    EXPECT_TRUE(rig.Run("OrvSetSubLayerEx", "G", std::string(300, 'm'), 6, true, 1, 2, 3, 4, 5, 1, 1).True());
    EXPECT_EQ(Sub("G", 6).layerName.View(), std::string(255, 'm'));
}

TEST_F(StoreMembersTest, SubLayerColoursAreFoundByNumber) {
    rig.Run("OrvSetSubLayer", "G", "", 5, true, 0, 0, 0, 0);
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor", "G", 5, 7).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor2", "G", 5, 8).True());
    EXPECT_EQ(Sub("G", 5).color, 7u);
    EXPECT_EQ(Sub("G", 5).color2, 8u);
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor", "G", 6, 7).False());
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor2", "none", 5, 7).False());
}

TEST_F(StoreMembersTest, ImagesOfALayerAndOfASubLayer) {
    for (const char* name : {"SetLayImage", "OrvSetLayImage"}) {
        EXPECT_TRUE(rig.Run(name, "P", name, "active.bmp", 16, 24, 0.5, 100.5).True());
        EXPECT_EQ(rig.Layer("P").imgfname.View(), name);
    }
    EXPECT_EQ(rig.Layer("P").imgactfname.View(), "active.bmp");
    EXPECT_EQ(rig.Layer("P").bmWidth, 16);
    EXPECT_EQ(rig.Layer("P").bmHeight, 24);
    EXPECT_EQ(rig.Layer("P").imgMinScl, 0.5);
    EXPECT_EQ(rig.Layer("P").imgMaxScl, 100.5);
    EXPECT_TRUE(rig.Run("DspLayImage", "P", true).True());
    EXPECT_EQ(rig.Layer("P").imgMode, 1);
    EXPECT_TRUE(rig.Run("OrvDspLayImage", "P", false).True());
    EXPECT_EQ(rig.Layer("P").imgMode, 0);
    EXPECT_TRUE(rig.Run("OrvSetLayImagePos", "P", 4).True());
    EXPECT_EQ(rig.Layer("P").imgPos, 4);

    rig.Run("OrvSetSubLayer", "P", "", 5, true, 0, 0, 0, 0);
    EXPECT_TRUE(rig.Run("OrvSetSubLayImage", "P", 5, "a.bmp", "b.bmp", 1, 2, 3.0, 4.0).True());
    EXPECT_TRUE(rig.Run("OrvDspSubLayImage", "P", 5, true).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayImagePos", "P", 5, 3).True());
    const SubLayDef& sub = Sub("P", 5);
    EXPECT_EQ(sub.imgfname.View(), "a.bmp");
    EXPECT_EQ(sub.imgactfname.View(), "b.bmp");
    EXPECT_EQ(sub.bmWidth, 1);
    EXPECT_EQ(sub.bmHeight, 2);
    EXPECT_EQ(sub.imgMinScl, 3.0);
    EXPECT_EQ(sub.imgMaxScl, 4.0);
    EXPECT_EQ(sub.imgMode, 1);
    EXPECT_EQ(sub.imgPos, 3);
}

TEST_F(StoreMembersTest, SetLayImageOnAPointLayerWithoutABlockReturnsFalse) {
    ASSERT_TRUE(rig.Run("OrvMakeLayer", "Q", 1).True());
    EXPECT_TRUE(rig.Run("SetLayImage", "Q", "a", "b", 1, 1, 0.0, 0.0).False());
}

// --- Features ---------------------------------------------------------------------------------------------------------------

TEST_F(StoreMembersTest, FeaturesAndPointsUnderBothNames) {
    const struct {
        const char *add, *point, *edit, *insert, *delPoint, *sub, *del, *count, *idAt, *info;
    } kFamilies[] = {{"AddDigDat", "AddDigDatPnt", "EditDigDatPnt", "InsertDigDatPnt", "DelDigDatPnt", "SetDigDatSubLayer",
                      "DelDigDat", "GetLayDatCnt", "GetDigDatInfo", "GetDigDatInfoEx"},
                     {"OrvAddDat", "OrvAddDatPnt", "OrvEditDatPnt", "OrvInsertDatPnt", "OrvDelDatPnt", "OrvSetDatSubLayer",
                      "OrvDelDat", "OrvGetLayDatCnt", "OrvGetDatInfo", "OrvGetDatInfoEx"}};
    for (const auto& f : kFamilies) {
        ASSERT_TRUE(rig.Run(f.add, "L", 1, 7, 3).True());
        EXPECT_EQ(Item("L", 7)->lineTag, 3);
        EXPECT_TRUE(rig.Run(f.point, "L", 1, 7, 1.0, 2.0, 3.0).True());
        EXPECT_TRUE(rig.Run(f.point, "L", 1, 7, 4.0, 5.0, 6.0).True());
        EXPECT_TRUE(rig.Run(f.edit, "L", 1, 7, 1, 7.0, 8.0, 9.0).True());
        EXPECT_EQ(Item("L", 7)->pnts[0].z, 3);
        EXPECT_EQ(Item("L", 7)->pnts[1].x, 7);
        EXPECT_EQ(Item("L", 7)->pnts[1].y, 8);
        EXPECT_EQ(Item("L", 7)->pnts[1].z, 9);
        EXPECT_TRUE(rig.Run(f.insert, "L", 1, 7, 1, 10.0, 11.0, 12.0).True());
        EXPECT_EQ(Item("L", 7)->pntCnt, 3);
        EXPECT_EQ(Item("L", 7)->pnts[1].y, 11);
        EXPECT_TRUE(rig.Run(f.delPoint, "L", 1, 7, 0).True());
        EXPECT_EQ(Item("L", 7)->pnts[0].x, 10);
        EXPECT_TRUE(rig.Run(f.sub, "L", 1, 7, 99).False());
        EXPECT_TRUE(rig.Run(f.sub, "L", 1, 7, 0).True());
        EXPECT_EQ(rig.Run(f.count, "L", 1).Long(), 1);
        EXPECT_EQ(rig.Run(f.idAt, "L", 1, 0).Long(), 7);
        EXPECT_EQ(rig.Run(f.idAt, "none", 1, 0).Long(), -1);
        EXPECT_EQ(rig.Run(f.info, "L", 1, 7).OutLong(5), 2);
        EXPECT_TRUE(rig.Run(f.del, "L", 1, 7).True());
        EXPECT_EQ(Item("L", 7), nullptr);
    }
}

TEST_F(StoreMembersTest, DeletingTheLastPointAnswersFalseThoughItIsDone) {
    rig.Run("OrvAddDat", "L", 1, 7, 0);
    rig.Run("OrvAddDatPnt", "L", 1, 7, 1.0, 2.0, 3.0);
    EXPECT_TRUE(rig.Run("OrvDelDatPnt", "L", 1, 7, 0).False());
    EXPECT_EQ(rig.Run("OrvGetDatInfoEx", "L", 1, 7).OutLong(5), 0);
}

TEST_F(StoreMembersTest, PointsComeBackAsMapCoordinates) {
    ASSERT_TRUE(rig.Run("DigMemAlloc2", "O", 1, 2, "", 1, 1000.0, -2000.0).True());
    rig.Run("OrvAddDat", "O", 1, 7, 0);
    rig.Run("OrvAddDatPnt", "O", 1, 7, 0.5, 0.25, 9.0);
    for (const char* name : {"GetDigDatPnt", "OrvGetDatPnt", "OrvGetDatPntEx"}) {
        const Ran ran = rig.Run(name, "O", 1, 7);
        ASSERT_TRUE(ran.True()) << name;
        EXPECT_EQ(ran.Doubles(3), (std::vector<double>{1000.5})) << name;
        EXPECT_EQ(ran.Doubles(4), (std::vector<double>{-1999.75})) << name;
    }
    EXPECT_EQ(rig.Run("OrvGetDatPntEx", "O", 1, 7).Doubles(5), (std::vector<double>{9}));
}

TEST_F(StoreMembersTest, TheTagAndTheActiveStateAreSetTogether) {
    rig.Run("OrvAddDat", "L", 1, 7, 0);
    EXPECT_EQ(rig.Run("SetDigDatInfoEx", "L", 1, 7, 5, -1).Long(), 1);
    EXPECT_EQ(rig.Run("OrvGetDatInfoEx", "L", 1, 7).OutLong(4), 5);
    EXPECT_EQ(rig.Run("OrvGetDatInfoEx", "L", 1, 7).OutLong(6), 1);
    EXPECT_EQ(rig.Run("SetDigDatInfoEx", "L", 1, 7, 6, false).Long(), 1);
    EXPECT_EQ(rig.Run("OrvGetDatInfoEx", "L", 1, 7).OutLong(6), 0);
    EXPECT_EQ(rig.Run("SetDigDatInfoEx", "L", 1, 8, 6, false).Long(), 0);
}

TEST_F(StoreMembersTest, AFreeIdIsOneAboveTheGreatestWhateverTheKind) {
    rig.Run("OrvAddDat", "L", 1, 41, 0);
    rig.Run("OrvAddDat", "L", 1, 7, 0);
    for (const char* name : {"GetFreeDigDatID", "OrvGetFreeDatID"}) {
        EXPECT_EQ(rig.Run(name, "L", 1, 0).Long(), 42) << name;
        EXPECT_EQ(rig.Run(name, "L", 1, 1).Long(), 42) << name;
        EXPECT_EQ(rig.Run(name, "G", 1, 0).Long(), 1) << name;
    }
    EXPECT_TRUE(rig.window.messages.empty());
}

TEST_F(StoreMembersTest, AFreeIdOfAMissingBlockShowsItsMessageAndIsMinusOne) {
    EXPECT_EQ(rig.Run("GetFreeDigDatID", "none", 1, 0).Long(), -1);
    EXPECT_EQ(rig.window.messages,
              (std::vector<ShownMessage>{{"ERROR 1094 : DigDat Index Not Found !", "ORVANE4", MessageIcon::Exclamation}}));
}

TEST_F(StoreMembersTest, CopyDataGivesTheNewIdAndNoMessageWhenItFails) {
    rig.Run("OrvAddLayer", "L", 2, 2, 1);
    rig.Run("OrvAddDat", "L", 1, 7, 5);
    rig.Run("OrvAddDat", "L", 2, 8, 0);
    EXPECT_EQ(rig.Run("OrvCopyData", "L", 1, 7, "L", 2).Long(), 9);
    EXPECT_EQ(rig.ctrl->store.FindDat("L", 2, 9)->lineTag, 5);
    EXPECT_EQ(rig.Run("OrvCopyData", "L", 1, 7, "G", 1).Long(), 0);
    EXPECT_EQ(rig.Run("OrvCopyData", "L", 1, 7, "none", 1).Long(), 0);
    EXPECT_TRUE(rig.window.messages.empty());
}

TEST_F(StoreMembersTest, WhatHostsOfTheFirstDaysCallAnswersItsFixedValue) {
    const Ran layer = rig.Run("GetLayerInfo");
    EXPECT_TRUE(layer.False());
    const Ran data = rig.Run("GetDataInfo");
    EXPECT_TRUE(data.False());
    for (const Ran* ran : {&layer, &data}) {
        for (std::size_t i = 0; i < ran->args.size(); ++i) {
            EXPECT_TRUE(ran->args[i].written);
            EXPECT_EQ(ran->OutText(i), "");
        }
        EXPECT_FALSE(ran->args.empty());
    }
    EXPECT_TRUE(rig.Run("RDMDatReadEx").False());
    EXPECT_TRUE(rig.Run("RunToData").True());
    EXPECT_EQ(rig.Run("MapJumpToParm").Long(), -1);
}

// --- Codes ------------------------------------------------------------------------------------------------------------------

TEST_F(StoreMembersTest, ACodeOfExactly50CharactersIsAValidKeyInAllMethods) {
    const std::string& k = kCode50;
    const Variant one = MakeArray(std::vector<double>{1});
    const Variant id = MakeArray(std::vector<std::int32_t>{1});
    EXPECT_TRUE(rig.Run("OrvMakeLayer", k, 1).True());
    EXPECT_TRUE(rig.Run("DigMemAlloc", k, 1, 1, "", 1).True());
    EXPECT_TRUE(rig.Run("DigMemAlloc2", k, 2, 1, "", 1, 0.0, 0.0).True());
    EXPECT_TRUE(rig.Run("OrvAddLayer", k, 3, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayColor", k, 1).True());
    EXPECT_TRUE(rig.Run("SetLayColor", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayColor2", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayLineType", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayLineSize", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayFillMode", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayOutLineMode", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayPgnMode", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayPgnLine", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayActMode", k, true).True());
    EXPECT_TRUE(rig.Run("OrvSetLayEditFlg", k, true).True());
    EXPECT_TRUE(rig.Run("OrvSetLayerName", k, "n").True());
    EXPECT_EQ(rig.Run("OrvSetLayIndex", k, 1).Long(), 1);
    EXPECT_TRUE(rig.Run("SetSubLayer", k, 1, true, 1, 1, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayer", k, "", 1, true, 1, 1, 1, 1).True());
    EXPECT_TRUE(rig.Run("SetSubLayerEx", k, 1, true, 1, 1, 1, 1, 1, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayerEx", k, "", 1, true, 1, 1, 1, 1, 1, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor2", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetLayImage", k, "a", "b", 1, 1, 0.0, 0.0).True());
    EXPECT_TRUE(rig.Run("OrvDspLayImage", k, true).True());
    EXPECT_TRUE(rig.Run("OrvSetLayImagePos", k, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayImage", k, 1, "a", "b", 1, 1, 0.0, 0.0).True());
    EXPECT_TRUE(rig.Run("OrvDspSubLayImage", k, 1, true).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayImagePos", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvAddDat", k, 1, 1, 0).True());
    EXPECT_TRUE(rig.Run("AddDigDatEx", k, 1, 2, 0, one, one, one).True());
    EXPECT_TRUE(rig.Run("OrvAddDatEx", k, 1, 3, 0, one, one, one).True());
    EXPECT_TRUE(rig.Run("OrvAddDatPnt", k, 1, 1, 0.0, 0.0, 0.0).True());
    EXPECT_TRUE(rig.Run("OrvEditDatPnt", k, 1, 1, 0, 0.0, 0.0, 0.0).True());
    EXPECT_TRUE(rig.Run("OrvInsertDatPnt", k, 1, 1, 0, 0.0, 0.0, 0.0).True());
    EXPECT_TRUE(rig.Run("OrvDelDatPnt", k, 1, 1, 0).True());
    EXPECT_TRUE(rig.Run("OrvSetDatSubLayer", k, 1, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetDatSubLayerEx", k, 1, id, id).True());
    EXPECT_EQ(rig.Run("OrvGetFreeDatID", k, 1, 0).Long(), 4);
    EXPECT_EQ(rig.Run("OrvCopyData", k, 1, 1, k, 2).Long(), 1);
    EXPECT_EQ(rig.Run("OrvGetLayDatCnt", k, 1).Long(), 3);
    EXPECT_EQ(rig.Run("OrvGetDatInfo", k, 1, 0).Long(), 1);
    EXPECT_TRUE(rig.Run("OrvGetDatInfoEx", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("GetDigDatPnt", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvGetDatPnt", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvGetDatPntEx", k, 1, 1).True());
    EXPECT_EQ(rig.Run("SetDigDatInfoEx", k, 1, 1, 0, false).Long(), 1);
    EXPECT_TRUE(rig.Run("OrvDelDat", k, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvDelLayGrpDat", k, 1).True());
    EXPECT_EQ(rig.Run("OrvDelLayDat", k).Long(), 2);
    ASSERT_TRUE(rig.Run("OrvAddLayer", k.substr(1) + "m", 1, 10, 1).True());
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", k.substr(1) + "m", 1, 1, 1, 1, one, one, one).True());
    EXPECT_TRUE(rig.Run("OrvSetMeshUseFlag", k.substr(1) + "m", 1, 1, MakeArray(std::vector<bool>{true})).True());
    EXPECT_TRUE(rig.Run("OrvSetMeshColor", k.substr(1) + "m", 1, 1, MakeArray(std::vector<float>{1})).True());
}

TEST_F(StoreMembersTest, OneGroupOfMembersCutsALongerCodeAt50Bytes) {
    const Variant one = MakeArray(std::vector<double>{1});
    const Variant id = MakeArray(std::vector<std::int32_t>{1});
    const std::string mesh = std::string(50, 'm') + "cut off";
    EXPECT_TRUE(rig.Run("DigMemAlloc2", kCode51, 1, 2, "", 1, 0.0, 0.0).True());
    EXPECT_EQ(rig.Layer(kCode50).layType, 2);
    EXPECT_TRUE(rig.Run("DigMemAlloc2", mesh, 1, 10, "", 1, 0.0, 0.0).True());
    EXPECT_TRUE(rig.Run("SetLayColor", kCode51, 5).True());
    EXPECT_TRUE(rig.Run("OrvSetLayColor2", kCode51, 5).True());
    EXPECT_TRUE(rig.Run("OrvSetLayerName", kCode51, "n").True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayer", kCode51, "", 1, true, 1, 1, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayerEx", kCode51, "", 1, true, 1, 1, 1, 1, 1, 1, 1).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor", kCode51, 1, 5).True());
    EXPECT_TRUE(rig.Run("OrvSetSubLayColor2", kCode51, 1, 5).True());
    EXPECT_TRUE(rig.Run("AddDigDatEx", kCode51, 1, 1, 0, one, one, one).True());
    EXPECT_TRUE(rig.Run("OrvSetDatSubLayerEx", kCode51, 1, id, id).True());
    EXPECT_TRUE(rig.Run("OrvGetDatPnt", kCode51, 1, 1).True());
    EXPECT_EQ(rig.Run("OrvGetDatPnt", kCode51, 1, 1).Doubles(3).size(), 1u);
    EXPECT_TRUE(rig.Run("OrvGetDatPntEx", kCode51, 1, 1).True());
    EXPECT_EQ(rig.Run("OrvCopyData", kCode51, 1, 1, kCode51, 1).Long(), 2);
    EXPECT_TRUE(rig.Run("OrvAddMeshDat", mesh, 1, 1, 1, 1, one, one, one).True());
    EXPECT_TRUE(rig.Run("OrvSetMeshUseFlag", mesh, 1, 1, MakeArray(std::vector<bool>{true})).True());
    EXPECT_TRUE(rig.Run("OrvSetMeshColor", mesh, 1, 1, MakeArray(std::vector<float>{1})).True());
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 5);
}

TEST_F(StoreMembersTest, TheOtherMembersTakeALongerCodeWholeAndFindNothing) {
    ASSERT_TRUE(rig.Run("OrvAddLayer", kCode50, 1, 2, 1).True());
    ASSERT_TRUE(rig.Run("OrvAddDat", kCode50, 1, 1, 0).True());
    EXPECT_TRUE(rig.Run("OrvMakeLayer", kCode51, 2).False());
    EXPECT_TRUE(rig.Run("DigMemAlloc", kCode51, 9, 2, "", 1).False());
    EXPECT_TRUE(rig.Run("OrvAddLayer", kCode51, 9, 2, 1).False());
    EXPECT_TRUE(rig.Run("OrvAddDat", kCode51, 1, 2, 0).False());
    EXPECT_TRUE(rig.Run("OrvSetLayLineSize", kCode51, 9).False());
    EXPECT_EQ(rig.Run("OrvGetLayDatCnt", kCode51, 1).Long(), 0);
    EXPECT_TRUE(rig.Run("OrvGetDatInfoEx", kCode51, 1, 1).False());
    EXPECT_EQ(rig.Run("OrvGetLayDatCnt", kCode50, 1).Long(), 1);
    EXPECT_EQ(rig.Layer(kCode50).lineSize, 1);
}

}  // namespace
}  // namespace orvane
