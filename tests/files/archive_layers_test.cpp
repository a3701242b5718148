#include "tests/files/archive_rig.h"

namespace orvane {
namespace {

class ArchiveLayersTest : public ArchiveTest {
protected:
    /// A layer with a value of its own in every field.
    static LayerFields Full() {
        LayerFields f;
        f.code = "ROAD";
        f.layerName = "\x93\xB9\x98H";
        f.layIndex = 305419896;
        f.layType = kLayPolygon;
        f.color = 0x112233;
        f.color2 = 0x445566;
        f.lineType = 21;
        f.lineSize = 22;
        f.pgnType = -23;
        f.pntType = 24;
        f.dspFlg = 0;
        f.outLine = 1;
        f.spareFlg = 0;
        f.fillMode = 1;
        f.imgMode = 1;
        f.imgPos = 3;
        f.imgfname = "a\\image.bmp";
        f.imgactfname = "b.bmp";
        f.bmWidth = 31;
        f.bmHeight = 32;
        f.imgMinScl = 0.25;
        f.imgMaxScl = 1e6;
        return f;
    }
    void MakeFull() {
        ASSERT_TRUE(store.MakeLayer("ROAD", kLayPolygon));
        LayerDef& layer = store.MutableLayer(store.FindLayDef("ROAD"));
        ASSERT_EQ(store.SetLayIndex("ROAD", 305419896), 1);
        layer.layerName.Set("\x93\xB9\x98H");
        layer.color = 0x112233;
        layer.color2 = 0x445566;
        layer.lineType = 21;
        layer.lineSize = 22;
        layer.pgnType = -23;
        layer.pntType = 24;
        layer.dspFlg = 0;
        layer.spareFlg = 0;
        layer.imgMode = 1;
        layer.imgPos = 3;
        layer.imgfname.Set("a\\image.bmp");
        layer.imgactfname.Set("b.bmp");
        layer.bmWidth = 31;
        layer.bmHeight = 32;
        layer.imgMinScl = 0.25;
        layer.imgMaxScl = 1e6;
    }
    void ExpectFull(const LayerDef& layer, bool is110) {
        EXPECT_EQ(layer.code.View(), "ROAD");
        EXPECT_EQ(layer.layerName.View(), "\x93\xB9\x98H");
        EXPECT_EQ(layer.layIndex, 305419896);
        EXPECT_EQ(layer.layType, kLayPolygon);
        EXPECT_EQ(layer.color, 0x112233u);
        EXPECT_EQ(layer.color2, is110 ? 0x445566u : 0u);
        EXPECT_EQ(layer.lineType, 21);
        EXPECT_EQ(layer.lineSize, 22);
        EXPECT_EQ(layer.pgnType, -23);
        EXPECT_EQ(layer.pntType, 24);
        EXPECT_EQ(layer.dspFlg, 0);
        EXPECT_EQ(layer.outLine, 1);
        EXPECT_EQ(layer.spareFlg, 0);
        EXPECT_EQ(layer.fillMode, 1);
        EXPECT_EQ(layer.imgMode, 1);
        EXPECT_EQ(layer.imgPos, is110 ? 3 : 0);
        EXPECT_EQ(layer.imgfname.View(), "a\\image.bmp");
        EXPECT_EQ(layer.imgactfname.View(), "b.bmp");
        EXPECT_EQ(layer.bmWidth, 31);
        EXPECT_EQ(layer.bmHeight, 32);
        EXPECT_EQ(layer.imgMinScl, 0.25);
        EXPECT_EQ(layer.imgMaxScl, 1e6);
    }
};

TEST_F(ArchiveLayersTest, RecordsAreAsLongAsTold) {
    EXPECT_EQ(LayerRec("1.00", {}).size(), 1388u);
    EXPECT_EQ(LayerRec("1.10", {}).size(), 1412u);
}

TEST_F(ArchiveLayersTest, WriterMakesTheBytesOfBothVersions) {
    MakeFull();
    ASSERT_TRUE(store.MakeLayer("B", kLayPoint));
    LayerFields second;
    second.code = "B";
    second.layIndex = 2;
    second.layType = kLayPoint;
    for (const ArcVersion version : {ArcVersion::V100, ArcVersion::V110}) {
        const std::string_view text = VersionText(version);
        ASSERT_TRUE(ArcWriteLayers(store, files, "m.Ovl", version));
        EXPECT_EQ(files.Content("m.Ovl"), LayerHeader(text) + LayerRec(text, Full()) + LayerRec(text, second)) << text;
    }
}

TEST_F(ArchiveLayersTest, ReaderTakesTheBytesOfVersion110) {
    files.Put("m.Ovl", LayerHeader("1.10") + LayerRec("1.10", Full()));
    ASSERT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    ASSERT_EQ(store.LayerCnt(), 1);
    ExpectFull(store.Layer(0), true);
}

TEST_F(ArchiveLayersTest, Version100HasNoSecondColourAndNoImagePosition) {
    files.Put("m.Ovl", LayerHeader("1.00") + LayerRec("1.00", Full()));
    ASSERT_TRUE(ArcReadLayers100(store, files, "m.Ovl"));
    ASSERT_EQ(store.LayerCnt(), 1);
    ExpectFull(store.Layer(0), false);
}

TEST_F(ArchiveLayersTest, Save100AndReloadLosesSecondColourAndImagePosition) {
    MakeFull();
    MakeBlock("ROAD", 1, kLayPolygon);
    AddItem("ROAD", 1, 1);
    ASSERT_TRUE(Write("m.Ovb", "1.00"));
    store.Init();
    ASSERT_TRUE(Read());
    EXPECT_EQ(store.Layer(0).color2, 0u);
    EXPECT_EQ(store.Layer(0).imgPos, 0);
}

TEST_F(ArchiveLayersTest, LayersComeBackNeitherActiveNorEditableAndWithoutSubLayers) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(store.SetLayEditFlg("A", true));
    ASSERT_TRUE(store.SetSubLayerEx("A", 1, {}));
    ASSERT_TRUE(ArcWriteLayers(store, files, "m.Ovl", ArcVersion::V110));
    store.Init();
    ASSERT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    const LayerDef& layer = store.Layer(0);
    EXPECT_EQ(layer.actFlg, 0);
    EXPECT_EQ(layer.editFlg, 0);
    EXPECT_EQ(layer.subLayCnt, 0);
    EXPECT_EQ(layer.subLayMax, 0);
    EXPECT_TRUE(layer.subLays.empty());
}

TEST_F(ArchiveLayersTest, FlagBytesBecomeOneWhenNotZero) {
    LayerFields f;
    f.dspFlg = 255;
    f.outLine = 2;
    f.spareFlg = 128;
    f.fillMode = 0;
    f.imgMode = 7;
    files.Put("m.Ovl", LayerHeader("1.10") + LayerRec("1.10", f));
    ASSERT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    const LayerDef& layer = store.Layer(0);
    EXPECT_EQ(layer.dspFlg, 1);
    EXPECT_EQ(layer.outLine, 1);
    EXPECT_EQ(layer.spareFlg, 1);
    EXPECT_EQ(layer.fillMode, 0);
    EXPECT_EQ(layer.imgMode, 1);
}

TEST_F(ArchiveLayersTest, LayerThatExistsStaysAsItIs) {
    ASSERT_TRUE(store.MakeLayer("ROAD", kLayPoint));
    ASSERT_TRUE(store.SetLayColor("ROAD", 7));
    LayerFields other;
    other.code = "NEW";
    files.Put("m.Ovl", LayerHeader("1.10") + LayerRec("1.10", Full()) + LayerRec("1.10", other) + LayerRec("1.10", other));
    ASSERT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    ASSERT_EQ(store.LayerCnt(), 2);
    EXPECT_EQ(store.Layer(0).color, 7u);
    EXPECT_EQ(store.Layer(0).layType, kLayPoint);
    EXPECT_EQ(store.Layer(1).code.View(), "NEW");
}

TEST_F(ArchiveLayersTest, LayersArriveWithTheirKeysWhichCountFromTheNextSort) {
    LayerFields low, high;
    low.code = "L";
    low.layIndex = 1;
    high.code = "H";
    high.layIndex = 9;
    files.Put("m.Ovl", LayerHeader("1.10") + LayerRec("1.10", low) + LayerRec("1.10", high));
    ASSERT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    MakeBlock("L", 1);
    MakeBlock("H", 1);
    EXPECT_EQ(store.Layer(store.Index()[0].layer).code.View(), "H");
}

TEST_F(ArchiveLayersTest, RecordWithAnEmptyCodeMakesNothing) {
    LayerFields empty;
    empty.code = "";
    files.Put("m.Ovl", LayerHeader("1.10") + LayerRec("1.10", empty) + LayerRec("1.10", {}));
    ASSERT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    ASSERT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.Layer(0).code.View(), "A");
}

TEST_F(ArchiveLayersTest, TextsWithoutATerminatorEndWithTheirField) {
    LayerFields f;
    f.code = std::string(51, 'c');
    f.layerName = std::string(256, 'n');
    f.imgfname = std::string(512, 'i');
    files.Put("m.Ovl", LayerHeader("1.10") + LayerRec("1.10", f));
    ASSERT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    EXPECT_EQ(store.Layer(0).code.View(), std::string(50, 'c'));
    EXPECT_EQ(store.Layer(0).layerName.View(), std::string(255, 'n'));
    EXPECT_EQ(store.Layer(0).imgfname.View(), std::string(511, 'i'));
}

TEST_F(ArchiveLayersTest, TitleIsComparedWithoutCaseAndWhatFollowsItIsIgnored) {
    std::string header = "ORVA layer DATA binary VERSION " + std::string("1.10");
    header.resize(40, 'x');
    files.Put("m.Ovl", header + LayerRec("1.10", {}));
    EXPECT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    header[3] = 'x';
    files.Put("m.Ovl", header + LayerRec("1.10", {}));
    EXPECT_FALSE(ArcReadLayers110(store, files, "m.Ovl"));
}

TEST_F(ArchiveLayersTest, BytesBehindTheLastWholeRecordAreIgnored) {
    const std::string whole = LayerHeader("1.10") + LayerRec("1.10", {});
    files.Put("m.Ovl", whole + std::string(1411, 'x'));
    EXPECT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    EXPECT_EQ(store.LayerCnt(), 1);
}

TEST_F(ArchiveLayersTest, NoRecordIsTrueAndAFileShorterThanAHeaderFalse) {
    files.Put("m.Ovl", LayerHeader("1.10"));
    EXPECT_TRUE(ArcReadLayers110(store, files, "m.Ovl"));
    files.Put("m.Ovl", LayerHeader("1.10").substr(0, 39));
    EXPECT_FALSE(ArcReadLayers110(store, files, "m.Ovl"));
    EXPECT_FALSE(ArcReadLayers110(store, files, "none.Ovl"));
    files.Put("m.Ovl", "");
    EXPECT_FALSE(ArcReadLayers110(store, files, "m.Ovl"));
}

TEST_F(ArchiveLayersTest, FullTableKeepsItsTenThousandAndAnswersFalse) {
    std::string content = LayerHeader("1.00");
    for (int i = 0; i < 10001; ++i) {
        LayerFields f;
        f.code = "L" + std::to_string(i);
        content += LayerRec("1.00", f);
    }
    files.Put("m.Ovl", content);
    EXPECT_FALSE(ArcReadLayers100(store, files, "m.Ovl"));
    EXPECT_EQ(store.LayerCnt(), 10000);
    EXPECT_GE(store.FindLayDef("L9999"), 0);
    EXPECT_EQ(store.FindLayDef("L10000"), -1);
}

TEST_F(ArchiveLayersTest, NoLayerMakesNoFile) {
    EXPECT_FALSE(ArcWriteLayers(store, files, "m.Ovl", ArcVersion::V110));
    EXPECT_EQ(files.createCnt, 0);
}

TEST_F(ArchiveLayersTest, LongLayerNameLosesItsLastByteToTheTerminator) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(store.SetLayerName("A", std::string(256, 'n')));
    ASSERT_TRUE(ArcWriteLayers(store, files, "m.Ovl", ArcVersion::V110));
    EXPECT_EQ(files.Content("m.Ovl").substr(40 + 51, 256), std::string(255, 'n') + '\0');
}

}  // namespace
}  // namespace orvane
