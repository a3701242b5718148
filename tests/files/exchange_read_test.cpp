#include "tests/files/exchange_rig.h"

namespace orvane {
namespace {

class ExchangeReadTest : public ExchangeTest {};

TEST_F(ExchangeReadTest, ANamedFileMakesWhatItsRecordsTell) {
    ASSERT_TRUE(Read(Lines({
        "ORVFH1.01",
        "LY,P,\"wells\",2,1,255,11,12,13,14,1,0,1,0,1,1,2,\"n.bmp\",\"a.bmp\",1,16,24,0.500000,2.000000",
        "SL,\"deep\",7,1,65280,1,2,3,4,1,1,0,9,\"s.bmp\",\"t.bmp\",1,8,9,0.250000,4.000000",
        "SL,\"\",9,1,1,5,6,7,8,0,0,1,0,\"\",\"\",0,0,0,0.000000,0.000000",
        "GH,P,1,12,0,0,1000.000000,-2000.000000,-9.000000,-9.000000,9.000000,9.000000,77,\"c:\\map\"",
        "IH,101,-1,7,55",
        "P,1.500000,-2.250000,3.000000",
        "P,2.500000,8.000000,0.000000",
        "IH,102,3,0,1",
        "P,4.000000,5.000000,0.000000",
        "T,3.500000,4.500000,9.000000,\"Lake\",\"Mincho\",12,5,1,8,-30.500000,1,1,66,-16777216",
    })));
    const LayerDef& layer = LayerOf("P");
    EXPECT_EQ(layer.layType, kLayPoint);
    EXPECT_EQ(layer.layIndex, 2);
    EXPECT_EQ(layer.color, 255U);
    EXPECT_EQ(layer.lineType, 11);
    EXPECT_EQ(layer.lineSize, 12);
    EXPECT_EQ(layer.pgnType, 13);
    EXPECT_EQ(layer.pntType, 14);
    EXPECT_EQ(layer.dspFlg, 1);
    EXPECT_EQ(layer.outLine, 0);
    EXPECT_EQ(layer.fillMode, 1);
    EXPECT_EQ(layer.actFlg, 0);
    ASSERT_EQ(layer.subLayCnt, 2);
    const SubLayDef& sub = Sub("P", 7);
    EXPECT_EQ(sub.layerName.View(), "deep");
    EXPECT_EQ(sub.layType, kLayPoint);
    EXPECT_EQ(sub.color, 65280U);
    EXPECT_EQ(sub.lineType, 1);
    EXPECT_EQ(sub.lineSize, 2);
    EXPECT_EQ(sub.pgnType, 3);
    EXPECT_EQ(sub.pntType, 4);
    EXPECT_EQ(sub.dspFlg, 1);
    EXPECT_EQ(sub.outLine, 1);
    EXPECT_EQ(sub.fillMode, 0);
    EXPECT_EQ(sub.imgfname.View(), "s.bmp");
    EXPECT_EQ(sub.imgactfname.View(), "t.bmp");
    EXPECT_EQ(sub.imgMode, 1);
    EXPECT_EQ(sub.bmWidth, 8);
    EXPECT_EQ(sub.bmHeight, 9);
    EXPECT_EQ(sub.imgMinScl, 0.25);
    EXPECT_EQ(sub.imgMaxScl, 4);
    EXPECT_EQ(Sub("P", 9).fillMode, 1);
    EXPECT_EQ(Sub("P", 9).imgMode, 0);

    const DigBlock& block = BlockOf("P", 12);
    EXPECT_EQ(block.path, "c:\\map");
    EXPECT_EQ(block.GX, 1000);
    EXPECT_EQ(block.GY, -2000);
    EXPECT_EQ(block.datCnt, 2);
    const DigDat& dat = Item("P", 12, 101);
    EXPECT_EQ(dat.lineTag, -1);
    EXPECT_EQ(dat.subLayNo, 7);
    ASSERT_EQ(dat.pntCnt, 2);
    EXPECT_EQ(dat.pnts[0].x, 1.5);
    EXPECT_EQ(dat.pnts[0].y, -2.25);
    EXPECT_EQ(dat.pnts[0].z, 3);
    EXPECT_EQ(dat.pnts[1].y, 8);
    EXPECT_EQ(dat.str, nullptr);
    const DigStr& text = TextOf("P", 12, 102);
    EXPECT_EQ(text.x, 3.5);
    EXPECT_EQ(text.y, 4.5);
    EXPECT_EQ(text.z, 0) << "dropped";
    EXPECT_EQ(text.text, "Lake");
    EXPECT_EQ(text.size, 12);
    EXPECT_EQ(text.style, 5);
    EXPECT_EQ(text.fill, 1);
    EXPECT_EQ(text.pos, 8);
    EXPECT_EQ(text.angle, -30.5);
    EXPECT_EQ(text.uline, 1);
    EXPECT_EQ(text.strike, 1);
    EXPECT_EQ(text.fcolor, 66U);
    EXPECT_EQ(text.bcolor, 0xFF000000U);
}

TEST_F(ExchangeReadTest, APlainFileHasNoNamesAndNoImagesOfSubLayers) {
    ASSERT_TRUE(Read(Lines({
        "ORVFH1.00",
        "LY,A,2,3,255,11,12,13,14,1,0,1,0,1,1,1,\"n.bmp\",\"a.bmp\",1,16,24,0.500000,2.000000",
        "SL,7,3,65280,1,2,3,4,1,1,1,0,\"s.bmp\",\"t.bmp\",1,8,9,0.250000,4.000000",
        "GH,A,1,12,0,0,0.000000,0.000000,0.000000,0.000000,0.000000,0.000000,0,\"\"",
    })));
    EXPECT_EQ(LayerOf("A").layIndex, 2);
    EXPECT_EQ(LayerOf("A").pgnType, 13);
    EXPECT_EQ(Sub("A", 7).color, 65280U);
    EXPECT_EQ(Sub("A", 7).pntType, 4);
    EXPECT_TRUE(Sub("A", 7).layerName.Empty());
    EXPECT_TRUE(Sub("A", 7).imgfname.Empty()) << "also where the line has one";
    EXPECT_EQ(Sub("A", 7).bmWidth, 0);
}

TEST_F(ExchangeReadTest, WhatTheFileTellsOfLayerAndBlockBeyondTheirKeysAndLookIsDropped) {
    ASSERT_TRUE(Read(Lines({
        kNamedHead,
        "LY,A,\"name\",2,1,255,0,1,0,0,1,1,1,1,0,1,9,\"n.bmp\",\"a.bmp\",1,16,24,0.500000,2.000000",
        "GH,A,7,12,1,1,0.000000,0.000000,-5.000000,-6.000000,7.000000,8.000000,99,\"\"",
    })));
    const LayerDef& layer = LayerOf("A");
    EXPECT_TRUE(layer.layerName.Empty());
    EXPECT_EQ(layer.spareFlg, 1) << "the make's own";
    EXPECT_EQ(layer.editFlg, 0) << "the make's own";
    EXPECT_EQ(layer.subLayCnt, 0);
    EXPECT_TRUE(layer.imgfname.Empty());
    EXPECT_EQ(layer.imgMode, 0);
    EXPECT_EQ(layer.bmWidth, 0);
    const DigBlock& block = BlockOf("A", 12);
    EXPECT_EQ(block.blkState, 1);
    EXPECT_EQ(block.blkFlg, 0);
    EXPECT_EQ(block.inView, 0);
    EXPECT_EQ(block.minX, 0);
    EXPECT_EQ(block.maxY, 0);
    EXPECT_EQ(block.datCnt, 0);
}

TEST_F(ExchangeReadTest, AFirstLineOfAnyOtherVersionIsRefused) {
    const std::string body = Lines({kNamedLayer, kBlock});
    for (const std::string head : {"ORVFH1.02", "ORVFH1.1", "ORVFH", "ORVFH 1.01", "ORVFH,1.01", "ORVFH1.01 ", "ORVFH1.010",
                                   "ORVFH1.0", "", "ORVFH1.01\r", " ORVFH1.01", "OR", "ORVF1.01", "ORVFH1.10"}) {
        EXPECT_FALSE(Read(head + "\r\n" + body)) << head;
    }
    EXPECT_FALSE(Read(std::string("ORVFH1.01\0x\n", 12) + body));
    EXPECT_FALSE(Read(""));
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_TRUE(Read("ORVFH1.01\n" + body));
}

TEST_F(ExchangeReadTest, AFirstLineWithTheMagicInLowerCaseIsRefused) {
    EXPECT_FALSE(Read("orvfh1.01\n" + Lines({kNamedLayer, kBlock})));
    EXPECT_FALSE(Read("ORVFh1.01\n" + Lines({kNamedLayer, kBlock})));
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(ExchangeReadTest, AMissingFileGivesFalse) {
    EXPECT_FALSE(ExchRead(store, files, "none.txt"));
    files.files["dir"].directory = true;
    EXPECT_FALSE(ExchRead(store, files, "dir"));
}

TEST_F(ExchangeReadTest, ABlockWithNoLayerBeforeItMakesNothingAndEndsWithFalse) {
    const std::string before = DumpStore(store);
    EXPECT_FALSE(Read(Lines({kNamedHead, kBlock, kNamedLayer, kBlock})));
    EXPECT_FALSE(Read(Lines({kNamedHead, "SL,\"\",1,2", kBlock})));
    EXPECT_FALSE(Read(Lines({kNamedHead, "LY", kBlock})));
    EXPECT_FALSE(Read(Lines({kNamedHead, "LY,,,", kBlock})));
    EXPECT_EQ(DumpStore(store), before);
}

TEST_F(ExchangeReadTest, OnlyLayerLinesMakeNothingAndGiveFalse) {
    EXPECT_FALSE(Read(Lines({kNamedHead, kNamedLayer, "SL,\"\",1,2", kNamedLayer})));
    EXPECT_EQ(store.LayerCnt(), 0);
    EXPECT_FALSE(Read(Lines({kNamedHead})));
    EXPECT_FALSE(Read(Lines({kNamedHead, "", "what is this", "ly,A", "XX,1"})));
}

TEST_F(ExchangeReadTest, ALayerOfABadTypeEndsTheReadBehindItsBlock) {
    EXPECT_FALSE(Read(Lines({kPlainHead, "LY,Q,3,9", kBlock, kPlainLayer, kBlock})));
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_EQ(store.LayerCnt(), 0);
}

TEST_F(ExchangeReadTest, ABlockThatTheStoreHasEndsTheReadAndWhatWasMadeStays) {
    const std::string text = Lines({kNamedHead, kNamedLayer, kBlock, "IH,1,0,0,0", kNamedLayer, kBlock, "IH,2,0,0,0"});
    EXPECT_FALSE(Read(text));
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_EQ(BlockOf("A", 5).datCnt, 1);
}

TEST_F(ExchangeReadTest, ABlocksFractionalOriginComesBackTruncated) {
    ASSERT_TRUE(Read(Lines({kPlainHead, kPlainLayer, "GH,A,1,5,0,0,10.900000,-10.900000", "GH,A,1,6,0,0,1e300,-1e300"})));
    EXPECT_EQ(BlockOf("A", 5).GX, 10);
    EXPECT_EQ(BlockOf("A", 5).GY, -10);
    EXPECT_EQ(BlockOf("A", 6).GX, 2147483647);
    EXPECT_EQ(BlockOf("A", 6).GY, -2147483648.0);
}

TEST_F(ExchangeReadTest, TheLayerKeepsItsValueForFurtherBlocks) {
    ASSERT_TRUE(Read(Lines({kPlainHead, kPlainLayer, "SL,4", "GH,A,1,5", "GH,A,1,6", "IH,1"})));
    EXPECT_EQ(BlockOf("A", 6).datCnt, 1);
    EXPECT_EQ(LayerOf("A").subLayCnt, 1);
    EXPECT_EQ(LayerOf("A").color, 255U);
}

TEST_F(ExchangeReadTest, ALayerThatTheStoreHasTakesTheLookButNotTypeAndKey) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayPolygon, "", 77, 0, 0));
    store.SetLayColor2("A", 5);
    ASSERT_TRUE(Read(Lines({kPlainHead, kPlainLayer, kBlock})));
    EXPECT_EQ(LayerOf("A").layType, kLayPolygon);
    EXPECT_EQ(LayerOf("A").layIndex, 77);
    EXPECT_EQ(LayerOf("A").color, 255U);
    EXPECT_EQ(LayerOf("A").color2, 5U);
}

TEST_F(ExchangeReadTest, ALayersSubLayersBeginAfreshWithEachLayerLine) {
    ASSERT_TRUE(Read(Lines({kPlainHead, "LY,B,1,2", "SL,1", "SL,2", "GH,B,1,5", "LY,C,1,2", "SL,3", "GH,C,1,5"})));
    EXPECT_EQ(LayerOf("B").subLayCnt, 2);
    EXPECT_EQ(LayerOf("C").subLayCnt, 1);
}

TEST_F(ExchangeReadTest, SubLayersThatComeBehindABlockAreSetWithTheNextOne) {
    ASSERT_TRUE(Read(Lines({kPlainHead, "LY,B,1,2", "SL,1", "GH,B,1,5", "SL,2", "GH,B,1,6"})));
    EXPECT_EQ(LayerOf("B").subLayCnt, 2);
}

TEST_F(ExchangeReadTest, TheLastOfSubLayersWithOneNumberCounts) {
    ASSERT_TRUE(Read(Lines({kPlainHead, "LY,B,1,2", "SL,1,2,10", "SL,2,2,20", "SL,1,2,30", "GH,B,1,5"})));
    EXPECT_EQ(LayerOf("B").subLayCnt, 2);
    EXPECT_EQ(Sub("B", 1).color, 30U);
    EXPECT_EQ(LayerOf("B").subLays[0].subLayNo, 1);
}

TEST_F(ExchangeReadTest, ImagesOfSubLayersComeBackInLayersOfEveryType) {
    for (const char* const type : {"1", "2", "3", "4", "5", "6", "7", "8", "10"}) {
        const std::string code = std::string("L") + type;
        ASSERT_TRUE(Read(Lines({kNamedHead, "LY," + code + ",\"\",1," + type,
                                "SL,\"\",3,1,0,0,0,0,0,1,0,1,0,\"s.bmp\",\"t.bmp\",1,8,9,0.25,4", "GH," + code + ",1,5"})))
            << type;
        EXPECT_EQ(Sub(code, 3).imgfname.View(), "s.bmp");
        EXPECT_EQ(Sub(code, 3).imgMode, 1);
    }
}

TEST_F(ExchangeReadTest, AnItemOfSubLayerZeroOrBelowAsksForNoSubLayer) {
    ASSERT_TRUE(Read(Lines({kPlainHead, kPlainLayer, kBlock, "IH,1,0,0,0", "IH,2,0,-4,0"})));
    EXPECT_EQ(Item("A", 5, 1).subLayNo, 0);
    EXPECT_EQ(Item("A", 5, 2).subLayNo, 0) << "the setter would have taken it";
}

TEST_F(ExchangeReadTest, AnItemOfASubLayerThatIsNotThereEndsTheRead) {
    EXPECT_FALSE(Read(Lines({kPlainHead, kPlainLayer, "SL,4", kBlock, "IH,1,0,4,0", "IH,2,0,5,0", "IH,3,0,0,0"})));
    EXPECT_EQ(BlockOf("A", 5).datCnt, 2);
    EXPECT_EQ(Item("A", 5, 1).subLayNo, 4);
    EXPECT_EQ(Item("A", 5, 2).subLayNo, 0);
}

TEST_F(ExchangeReadTest, TheToldCountsOfPointsAndItemsAreNotUsed) {
    ASSERT_TRUE(Read(Lines({kPlainHead, kPlainLayer, "GH,A,1,5,0,0,0,0,0,0,0,0,-1,\"\"", "IH,1,0,0,2147483647", "P,1,2,3",
                            "IH,2,0,0,-1", "P,4,5,6", "P,7,8,9"})));
    EXPECT_EQ(Item("A", 5, 1).pntCnt, 1);
    EXPECT_EQ(Item("A", 5, 2).pntCnt, 2);
}

TEST_F(ExchangeReadTest, PointsAndTextsGoToTheLastItemWhereIDsRepeat) {
    ASSERT_TRUE(Read(Lines({kPlainHead, kPlainLayer, kBlock, "IH,1", "P,1,2,3", "IH,1", "P,4,5,6", "T,1,2,3,\"t\",\"f\""})));
    const DigBlock& block = BlockOf("A", 5);
    EXPECT_EQ(block.dats[0].pntCnt, 1);
    EXPECT_EQ(block.dats[1].pntCnt, 1);
    EXPECT_EQ(block.dats[0].str, nullptr);
    EXPECT_EQ(block.dats[1].str->text, "t");
}

TEST_F(ExchangeReadTest, ItemsPointsAndTextsWithNothingBeforeThemEndTheRead) {
    for (const char* const line : {"IH,1", "P,1,2,3", "T,1,2,3,\"a\",\"b\""}) {
        EXPECT_FALSE(Read(Lines({kPlainHead, line, kPlainLayer, kBlock}))) << line;
        EXPECT_FALSE(Read(Lines({kPlainHead, kPlainLayer, line, kBlock}))) << line;
        EXPECT_EQ(store.BlockCnt(), 0);
    }
    EXPECT_FALSE(Read(Lines({kPlainHead, kPlainLayer, kBlock, "P,1,2,3", "IH,1"})));
    EXPECT_EQ(BlockOf("A", 5).datCnt, 0);
}

TEST_F(ExchangeReadTest, ItemsGoToTheBlockThatTheLastBlockLineNames) {
    EXPECT_FALSE(Read(Lines({kPlainHead, kPlainLayer, "GH,A,1,5", "LY,B,1,2", "GH,A,1,6", "IH,1"})))
        << "the block was made in layer B";
    EXPECT_GE(store.FindBlock("B", 6).block, 0);
    EXPECT_EQ(BlockOf("B", 6).datCnt, 0);
    store.Init();
    ASSERT_TRUE(Read(Lines({kPlainHead, kPlainLayer, "GH,A,1,5", "LY,B,1,2", "IH,1"}))) << "a layer line changes no block";
    EXPECT_EQ(BlockOf("A", 5).datCnt, 1);
}

TEST_F(ExchangeReadTest, AFieldThatIsMissingLeavesTheRestCleared) {
    ASSERT_TRUE(Read(Lines({kPlainHead, "LY,A,3,2", "SL,4,2,77", "GH,A", "IH,9", "P,5", "T,6,7,0,\"x"})));
    EXPECT_EQ(LayerOf("A").color, 0U);
    EXPECT_EQ(LayerOf("A").dspFlg, 0);
    EXPECT_EQ(LayerOf("A").outLine, 0);
    EXPECT_EQ(LayerOf("A").lineSize, 0);
    EXPECT_EQ(Sub("A", 4).color, 77U);
    EXPECT_EQ(Sub("A", 4).fillMode, 0);
    EXPECT_EQ(Item("A", 0, 9).lineTag, 0);
    EXPECT_EQ(Item("A", 0, 9).pnts[0].x, 5);
    EXPECT_EQ(Item("A", 0, 9).pnts[0].y, 0);
    const DigStr& text = TextOf("A", 0, 9);
    EXPECT_EQ(text.x, 6);
    EXPECT_EQ(text.text, "x");
    EXPECT_EQ(text.size, 0);
    EXPECT_EQ(text.fcolor, 0U);
    EXPECT_EQ(text.bcolor, 0xFFFFFFU);
}

TEST_F(ExchangeReadTest, ALineLeavesNothingBehindForTheNextOfItsKind) {
    ASSERT_TRUE(Read(Lines({kPlainHead, "LY,A,3,2,255,1,2,3,4,1,1,1,1", "GH,A,1,5,0,0,7,8,0,0,0,0,0,\"p\"", "LY,B,4,2",
                            "GH,B,1,6", "IH,3,4", "IH"})));
    EXPECT_EQ(LayerOf("B").color, 0U);
    EXPECT_EQ(LayerOf("B").actFlg, 0);
    EXPECT_EQ(BlockOf("B", 6).GX, 0);
    EXPECT_EQ(BlockOf("B", 6).path, "");
    EXPECT_EQ(BlockOf("B", 6).dats[1].datID, 0);
    EXPECT_EQ(BlockOf("B", 6).dats[1].lineTag, 0);
}

TEST_F(ExchangeReadTest, EmptyFieldsAreSkipped) {
    ASSERT_TRUE(Read(Lines({kPlainHead, "LY,,,A,,3,2,,255,", "GH,A,1,,5", "IH,,1,,2", "P,,1,,,2,3"})));
    EXPECT_EQ(LayerOf("A").color, 255U);
    EXPECT_EQ(Item("A", 5, 1).lineTag, 2);
    EXPECT_EQ(Item("A", 5, 1).pnts[0].y, 2);
}

TEST_F(ExchangeReadTest, BodiesBeginAtTheirPlaceWhateverStandsBehindTheKey) {
    ASSERT_TRUE(Read(Lines({kPlainHead, "LYxA,3,2", "GH;A,1,5", "IH1,2", "Px1,2,3", "Point,4,5", "Text,6"})));
    EXPECT_EQ(BlockOf("A", 5).dats[0].datID, 2) << "its first figure stands where the comma should";
    EXPECT_EQ(BlockOf("A", 5).dats[0].pnts[0].x, 1);
    EXPECT_EQ(BlockOf("A", 5).dats[0].pntCnt, 2);
    EXPECT_EQ(BlockOf("A", 5).dats[0].pnts[1].x, 0) << "\"int\" is no number";
    EXPECT_EQ(BlockOf("A", 5).dats[0].pnts[1].y, 4);
}

TEST_F(ExchangeReadTest, OtherLinesAreIgnored) {
    ASSERT_TRUE(Read(
        Lines({kPlainHead, "# remark", "", kPlainLayer, "gh,A,1,4", kBlock, " IH,1", "I", "L", "S", "G", ",", "IH,2", "\"P\""})));
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_EQ(BlockOf("A", 5).datCnt, 1);
}

TEST_F(ExchangeReadTest, LinesMayEndInEitherWayAndTheLastInNone) {
    const std::initializer_list<std::string_view> lines = {kPlainHead, kPlainLayer, kBlock, "IH,1",
                                                           "T,1,2,3,\"t\",\"f\",1,1,1,1,1,1,1,1,5"};
    ASSERT_TRUE(Read(Lines(lines)));
    const std::string expected = DumpStore(store);
    std::string unended = Lines(lines);
    unended.pop_back();
    for (const std::string& text :
         {Lines(lines, "\r\n"), unended, unended + "\r", Lines(lines, "\n\n"), Lines(lines, "\r\n\r\n")}) {
        store.Init();
        ASSERT_TRUE(Read(text));
        EXPECT_EQ(DumpStore(store), expected);
    }
}

TEST_F(ExchangeReadTest, NumbersOfOutsidersAreHeld) {
    ASSERT_TRUE(Read(
        Lines({kPlainHead, "LY,A,99999999999,2,-1", kBlock, "IH,-99999999999,12abc,x", "P,1e400,nan,inf", "P,-1e308,1.5x, 2"})));
    EXPECT_EQ(LayerOf("A").layIndex, 2147483647);
    EXPECT_EQ(LayerOf("A").color, 0xFFFFFFFFU);
    const DigDat& dat = BlockOf("A", 5).dats[0];
    EXPECT_EQ(dat.datID, -2147483647 - 1);
    EXPECT_EQ(dat.lineTag, 12);
    EXPECT_EQ(dat.pnts[0].x, 0);
    EXPECT_EQ(dat.pnts[0].y, 0);
    EXPECT_EQ(dat.pnts[0].z, 0);
    EXPECT_EQ(dat.pnts[1].x, -1e308);
    EXPECT_EQ(dat.pnts[1].y, 1.5);
    EXPECT_EQ(dat.pnts[1].z, 2);
}

TEST_F(ExchangeReadTest, FlagsBecomeOneWhenTheyAreNotZero) {
    ASSERT_TRUE(Read(Lines({kNamedHead, "LY,A,\"\",3,1,0,0,0,0,0,2,-1,300,7", "SL,\"\",4,1,0,0,0,0,0,-5,6,7,0,\"a\",\"b\",256",
                            kBlock, "IH,1", "T,0,0,0,\"t\",\"f\",0,0,8,0,0,-9,10"})));
    const LayerDef& layer = LayerOf("A");
    EXPECT_EQ(layer.dspFlg, 1);
    EXPECT_EQ(layer.outLine, 1);
    EXPECT_EQ(layer.fillMode, 1);
    EXPECT_EQ(layer.actFlg, 1);
    EXPECT_EQ(Sub("A", 4).dspFlg, 1);
    EXPECT_EQ(Sub("A", 4).outLine, 1);
    EXPECT_EQ(Sub("A", 4).fillMode, 1);
    EXPECT_EQ(Sub("A", 4).imgMode, 1);
    EXPECT_EQ(TextOf("A", 5, 1).fill, 1);
    EXPECT_EQ(TextOf("A", 5, 1).uline, 1);
    EXPECT_EQ(TextOf("A", 5, 1).strike, 1);
}

TEST_F(ExchangeReadTest, ACodeBeyondFiftyBytesIsRefusedAndNotCut) {
    const std::string longest(50, 'c');
    ASSERT_TRUE(Read(Lines({kPlainHead, "LY," + longest + ",3,2", "GH," + longest + ",1,5", "IH,1"})));
    EXPECT_EQ(BlockOf(longest, 5).datCnt, 1);
    EXPECT_FALSE(Read(Lines({kPlainHead, "LY," + longest + "c,3,2", "GH," + longest + ",1,6"})));
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.BlockCnt(), 1);
}

TEST_F(ExchangeReadTest, BeforeInitNothingIsMade) {
    CDigMem fresh;
    files.Put("map.txt", Lines({kPlainHead, kPlainLayer, kBlock}));
    EXPECT_FALSE(ExchRead(fresh, files, "map.txt"));
    EXPECT_EQ(fresh.BlockCnt(), 0);
}

}  // namespace
}  // namespace orvane
