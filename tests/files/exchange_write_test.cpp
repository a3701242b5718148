#include "tests/files/exchange_rig.h"
#include "tests/support/store_test_access.h"

namespace orvane {
namespace {

/// A map that has a bit of everything the file carries.
class ExchangeWriteTest : public ExchangeTest {
protected:
    void MakeMap() {
        ASSERT_TRUE(store.DigMemAlloc2("P", 12, kLayPoint, "c:\\map\\p", 2, 1000.9, -2000));
        store.SetLayerName("P", "wells");
        store.SetLayColor("P", 0x80000005U);
        store.SetLayLineType("P", 4);
        store.SetLayEditFlg("P", true);
        store.SetLayImage("P", {"n.bmp", "a.bmp", 16, 24, 0.5, 2});
        store.DspLayImage("P", true);
        store.SetSubLayerEx("P", 7, {"deep", true, 1, 2, 3, 4, 255, true, false});
        store.SetSubLayImageMode("P", 7, {"s.bmp", "t.bmp", 8, 9, 1, 1000000.25}, true);
        store.SetSubLayerEx("P", -8, {"", false, 0, 0, 0, 0, 0, false, true});
        store.AddDigDat("P", 12, 101, -1);
        store.AddDigDatPnt("P", 12, 101, {1.5, -2.25, 0});
        store.SetDigDatSubLayer("P", 12, 101, 7);
        store.AddDigDat("P", 12, 102, 3);

        ASSERT_TRUE(store.DigMemAlloc2("T", 5, kLayText, "", 1, 0, 0));
        store.AddDigDat("T", 5, 1, 0);
        store.AddDigDatPnt("T", 5, 1, {10, 20, 30});
        store.AddDigDatPnt("T", 5, 1, {11, 21, 0.0000005});
        store.SetDigDatString("T", 5, 1, 3.5, 4.5, "Lake");
        store.SetDigDatStrStyle("T", 5, 1, {"Mincho", 12, 5, 8, -30.5, true, false, true, 1, 0xFF000000U});
    }
};

TEST_F(ExchangeWriteTest, TheNamedVersionIsWrittenAsToldToTheByte) {
    MakeMap();
    EXPECT_EQ(Written(),
              "ORVFH1.01\n"
              "LY,P,\"wells\",2,1,-2147483643,0,1,0,4,1,1,1,1,1,1,2,\"n.bmp\",\"a.bmp\",1,16,24,0.500000,2.000000\n"
              "SL,\"deep\",7,1,255,1,2,3,4,1,1,0,0,\"s.bmp\",\"t.bmp\",1,8,9,1.000000,1000000.250000\n"
              "SL,\"\",-8,1,0,0,0,0,0,0,0,1,0,\"\",\"\",0,0,0,0.000000,0.000000\n"
              "GH,P,1,12,0,0,1000.000000,-2000.000000,1.500000,-2.250000,1.500000,-2.250000,2,\"c:\\map\\p\"\n"
              "IH,101,-1,7,1\n"
              "P,1.500000,-2.250000,0.000000\n"
              "IH,102,3,0,0\n"
              "LY,T,\"\",1,5,14474460,0,1,0,0,1,1,1,1,1,0,0,\"\",\"\",0,0,0,0.000000,0.000000\n"
              "GH,T,1,5,0,0,0.000000,0.000000,10.000000,20.000000,11.000000,21.000000,1,\"\"\n"
              "IH,1,0,0,2\n"
              "P,10.000000,20.000000,30.000000\n"
              // The double nearest to half a millionth lies a little below it.
              "P,11.000000,21.000000,0.000000\n"
              "T,3.500000,4.500000,0.000000,\"Lake\",\"Mincho\",12,5,1,8,-30.500000,0,1,1,-16777216\n");
}

TEST_F(ExchangeWriteTest, ThePlainVersionLeavesOutNamesAndTheImagesOfSubLayers) {
    MakeMap();
    EXPECT_EQ(Written("1.00"),
              "ORVFH1.00\n"
              "LY,P,2,1,-2147483643,0,1,0,4,1,1,1,1,1,1,2,\"n.bmp\",\"a.bmp\",1,16,24,0.500000,2.000000\n"
              "SL,7,1,255,1,2,3,4,1,1,0,0\n"
              "SL,-8,1,0,0,0,0,0,0,0,1,0\n"
              "GH,P,1,12,0,0,1000.000000,-2000.000000,1.500000,-2.250000,1.500000,-2.250000,2,\"c:\\map\\p\"\n"
              "IH,101,-1,7,1\n"
              "P,1.500000,-2.250000,0.000000\n"
              "IH,102,3,0,0\n"
              "LY,T,1,5,14474460,0,1,0,0,1,1,1,1,1,0,0,\"\",\"\",0,0,0,0.000000,0.000000\n"
              "GH,T,1,5,0,0,0.000000,0.000000,10.000000,20.000000,11.000000,21.000000,1,\"\"\n"
              "IH,1,0,0,2\n"
              "P,10.000000,20.000000,30.000000\n"
              "P,11.000000,21.000000,0.000000\n"
              "T,3.500000,4.500000,0.000000,\"Lake\",\"Mincho\",12,5,1,8,-30.500000,0,1,1,-16777216\n");
}

TEST_F(ExchangeWriteTest, EveryVersionButOneIsTheNamedOne) {
    MakeMap();
    for (const std::string_view version : {"1.01", "", "1.0", "1.000", "2.00", " 1.00"}) {
        EXPECT_EQ(Written(version).substr(0, 10), "ORVFH1.01\n") << version;
    }
}

TEST_F(ExchangeWriteTest, AnEmptyStoreCreatesNoFile) {
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01"));
    store.MakeLayer("A", kLayLine);
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01")) << "a layer without a block";
    CDigMem fresh;
    EXPECT_FALSE(ExchWrite(fresh, files, "out.txt", "1.01")) << "not initialised";
    EXPECT_EQ(files.createCnt, 0);
}

TEST_F(ExchangeWriteTest, ACodeThatNoLayerHasGivesTheFirstLineAloneAndFalse) {
    MakeMap();
    const std::vector<std::string_view> codes{"X", "p", "P "};
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01", codes));
    EXPECT_EQ(files.files["out.txt"].content, "ORVFH1.01\n");
}

TEST_F(ExchangeWriteTest, OnlyTheListedLayersAreWritten) {
    MakeMap();
    ASSERT_TRUE(store.DigMemAlloc2("T", 6, kLayText, "", 1, 0, 0));
    const std::string text = Written("1.00", {"X", "T"});
    EXPECT_EQ(text.find("LY,P"), std::string::npos);
    EXPECT_EQ(text.find("IH,101"), std::string::npos);
    EXPECT_NE(text.find("GH,T,1,5,"), std::string::npos);
    EXPECT_NE(text.find("GH,T,1,6,"), std::string::npos);
}

TEST_F(ExchangeWriteTest, ALayersLinesStandAgainBeforeEachOfItsBlocks) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0));
    ASSERT_TRUE(store.DigMemAlloc2("A", 2, kLayLine, "", 1, 0, 0));
    store.SetSubLayer("A", 3, "", true, 0, 1, 0, false);
    const std::string layer =
        "LY,A,1,2,14474460,0,1,0,0,1,1,1,1,1,0,1,\"\",\"\",0,0,0,0.000000,0.000000\nSL,3,2,0,0,1,0,0,1,0,1,0\n";
    const std::string rest = ",0,0,0.000000,0.000000,0.000000,0.000000,0.000000,0.000000,0,\"\"\n";
    EXPECT_EQ(Written("1.00"), "ORVFH1.00\n" + layer + "GH,A,1,1" + rest + layer + "GH,A,1,2" + rest);
}

TEST_F(ExchangeWriteTest, BlocksStandInDrawingOrder) {
    ASSERT_TRUE(store.DigMemAlloc2("low", 1, kLayLine, "", 1, 0, 0));
    ASSERT_TRUE(store.DigMemAlloc2("high", 1, kLayLine, "", 9, 0, 0));
    std::string text = Written("1.00");
    EXPECT_LT(text.find("GH,high"), text.find("GH,low"));
    store.SetLayIndex("low", 10);
    store.SortDigIndex();
    text = Written("1.00");
    EXPECT_GT(text.find("GH,high"), text.find("GH,low"));
}

TEST_F(ExchangeWriteTest, AnIndexThatBreaksOffEndsTheFileThere) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0));
    ASSERT_TRUE(store.DigMemAlloc2("A", 2, kLayLine, "", 1, 0, 0));
    ASSERT_TRUE(StoreTestAccess::BreakSlot(store, 1));
    const std::string text = Written("1.00");
    EXPECT_NE(text.find("GH,A,1,1"), std::string::npos);
    EXPECT_EQ(text.find("GH,A,1,2"), std::string::npos);
    ASSERT_TRUE(StoreTestAccess::BreakSlot(store, 0));
    EXPECT_EQ(Written("1.00"), "failed");
}

TEST_F(ExchangeWriteTest, ABlockWithoutALayerRecordIsWrittenUnderAnEmptyOne) {
    ASSERT_TRUE(store.DigMemAlloc2("Q", 5, 9, "", 3, 0, 0));
    EXPECT_EQ(Written("1.00"),
              "ORVFH1.00\n"
              "LY,,0,0,16777215,0,0,0,0,0,0,0,0,0,0,0,\"\",\"\",0,0,0,0.000000,0.000000\n"
              "GH,Q,1,5,0,0,0.000000,0.000000,0.000000,0.000000,0.000000,0.000000,0,\"\"\n");
}

TEST_F(ExchangeWriteTest, NumbersOfAnySizeAreWrittenInFull) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0));
    store.AddDigDat("A", 1, (std::numeric_limits<std::int32_t>::min)(), (std::numeric_limits<std::int32_t>::max)());
    const double greatest = (std::numeric_limits<double>::max)();
    store.AddDigDatPnt("A", 1, (std::numeric_limits<std::int32_t>::min)(), {greatest, -greatest, 1e300});
    store.AddDigDatPnt("A", 1, (std::numeric_limits<std::int32_t>::min)(), {1e-300, -0.0000014, 0.1});
    const std::string text = Written();
    EXPECT_NE(text.find("IH,-2147483648,2147483647,0,2\n"), std::string::npos);
    // The whole numbers that these doubles are.
    const std::string most =
        "1797693134862315708145274237317043567980705675258449965989174768031572607800285387605895586327668781"
        "7154045895351438246423432132688946418276846754670353751698604991057655128207624549009038932894407586"
        "8508455133942304583236903222948165808559332123348274797826204144723168738177180919299881250404026184"
        "124858368";
    const std::string much =
        "1000000000000000052504760255204420248704468581108159154915854115511802457988908195786371375080447864"
        "0437044438328838781769425232353604305756447921847867069828483872009265758037378302337947880900593689"
        "5323497079994508111903896764088007465274278014249457925878882005684283811566947219638686545940054016"
        "0";
    EXPECT_NE(text.find("\nP," + most + ".000000,-" + most + ".000000," + much + ".000000\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nP,0.000000,-0.000001,0.100000\n"), std::string::npos);
}

TEST_F(ExchangeWriteTest, InfinitiesAndNoNumbersAreWrittenAndReadAsZero) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0));
    store.AddDigDat("A", 1, 1, 0);
    const double infinity = std::numeric_limits<double>::infinity();
    store.AddDigDatPnt("A", 1, 1, {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()});
    const std::string text = Written();
    store.Init();
    ASSERT_TRUE(Read(text));
    EXPECT_EQ(Item("A", 1, 1).pnts[0].x, 0);
    EXPECT_EQ(Item("A", 1, 1).pnts[0].y, 0);
    EXPECT_EQ(Item("A", 1, 1).pnts[0].z, 0);
}

TEST_F(ExchangeWriteTest, ATextEndsAtAZeroByte) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayText, "", 1, 0, 0));
    store.AddDigDat("A", 1, 1, 0);
    store.SetDigDatString("A", 1, 1, 0, 0, std::string_view("ab\0cd", 5));
    EXPECT_NE(Written().find(",\"ab\",\"\","), std::string::npos);
}

TEST_F(ExchangeWriteTest, MeshesAreWrittenAsTheirPointsAlone) {
    ASSERT_TRUE(store.DigMemAlloc2("M", 1, kLayMesh, "", 1, 0, 0));
    store.AddDigDat("M", 1, 1, 0);
    const std::vector<DigPnt> pnts(4, DigPnt{1, 2, 3});
    ASSERT_TRUE(store.SetMeshDat("M", 1, 1, 2, 2, pnts));
    const std::string text = Written();
    store.Init();
    ASSERT_TRUE(Read(text));
    EXPECT_EQ(Item("M", 1, 1).pntCnt, 4);
    EXPECT_EQ(Item("M", 1, 1).meshAttr, nullptr);
}

TEST_F(ExchangeWriteTest, AFileThatCannotBeMadeGivesFalse) {
    MakeMap();
    files.refuses = true;
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01"));
}

TEST_F(ExchangeWriteTest, AStreamThatFailsAtAnyByteGivesFalse) {
    MakeMap();
    const std::string whole = Written();
    ASSERT_NE(whole, "failed");
    for (std::size_t room = 0; room < whole.size(); ++room) {
        files.room_bytes = room;
        ASSERT_FALSE(ExchWrite(store, files, "out.txt", "1.01")) << room;
        ASSERT_EQ(files.files["out.txt"].content, whole.substr(0, room));
    }
    files.room_bytes = whole.size();
    EXPECT_TRUE(ExchWrite(store, files, "out.txt", "1.01"));
}

TEST_F(ExchangeWriteTest, AFullDiskEndsALongSaveSoon) {
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0));
    store.AddDigDat("A", 1, 1, 0);
    ASSERT_TRUE(store.SetDigDatPnts("A", 1, 1, std::vector<DigPnt>(10000, DigPnt{1, 2, 3})));
    files.room_bytes = 20000;
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01"));
    EXPECT_EQ(files.writeCnt, 2) << "pieces of 16 KB";
    EXPECT_EQ(files.closeCnt, 1);
}

TEST_F(ExchangeWriteTest, AFileThatDoesNotCloseGivesFalse) {
    MakeMap();
    files.closes = false;
    EXPECT_FALSE(ExchWrite(store, files, "out.txt", "1.01"));
}

TEST_F(ExchangeWriteTest, ALongFileIsWrittenWholeAcrossThePieces) {
    std::string expected =
        "ORVFH1.00\nLY,A,1,2,14474460,0,1,0,0,1,1,1,1,1,0,0,\"\",\"\",0,0,0,0.000000,0.000000\n"
        "GH,A,1,1,0,0,0.000000,0.000000,1.000000,0.000000,3000.000000,0.000000,3000,\"\"\n";
    ASSERT_TRUE(store.DigMemAlloc2("A", 1, kLayLine, "", 1, 0, 0));
    for (std::int32_t i = 1; i <= 3000; ++i) {
        store.AddDigDat("A", 1, i, 0);
        store.AddDigDatPnt("A", 1, i, {static_cast<double>(i), 0, 0});
        expected += "IH," + std::to_string(i) + ",0,0,1\nP," + std::to_string(i) + ".000000,0.000000,0.000000\n";
    }
    EXPECT_EQ(Written("1.00"), expected);
}

}  // namespace
}  // namespace orvane
