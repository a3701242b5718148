#include "tests/files/archive_rig.h"

namespace orvane {
namespace {

const std::string kTitle110 = "Orva Data Text Version 1.10\r\n";

class ArchiveTextTest : public ArchiveTest {
protected:
    bool ReadLines(const std::string& lines, const std::string& title = kTitle110) {
        files.Put("m.Ovt", title + lines);
        ArcWatch watch(store, none_);
        return ArcReadText110(store, files, "m.Ovt", watch);
    }
    bool WriteText(ArcVersion version) {
        IdxTables tables;
        ArcWatch watch(store, none_);
        return version == ArcVersion::V100 ? ArcWriteText100(store, files, "m.Ovt", tables, watch)
                                           : ArcWriteText110(store, files, "m.Ovt", tables, watch);
    }
    void MakeSample() {
        MakeBlock("A", -5);
        AddItem("A", -5, 77, {{-1.5, 2.75, 0}, {0.1234567, 5, -0.5}}, 200);
        const_cast<DigDat&>(Item("A", -5, 77)).rect = {1, 2, 3, 4};
        MakeBlock("M", 0, kLayMesh);
        AddItem("M", 0, 1);
        ASSERT_TRUE(store.SetMeshDat("M", 0, 1, 2, 1, std::vector<DigPnt>{{0, 0, 0}, {9, 0, 1}}));
        DigDat& grid = const_cast<DigDat&>(Item("M", 0, 1));
        grid.rect = {0, 0, 9, 0};
        grid.meshAttr->meshColor[1] = 0xFFFFFFFE;
        MakeBlock("T", 3, kLayText);
        AddItem("T", 3, 2);
        const_cast<DigDat&>(Item("T", 3, 2)).rect = {5, 6, 7, 8};
        ASSERT_TRUE(store.SetDigDatString("T", 3, 2, 1.5, 2, "a,b"));
        TextLook look;
        look.fntname = "Gothic";
        look.size = 300;
        look.style = 1;
        look.pos = 2;
        look.angle = 30;
        look.uline = true;
        look.fcolor = 0x80000000;
        look.bcolor = 255;
        ASSERT_TRUE(store.SetDigDatStrStyle("T", 3, 2, look));
    }

    ArcProgress none_;
};

TEST_F(ArchiveTextTest, WriterMakesTheLinesOfVersion110) {
    MakeSample();
    ASSERT_TRUE(WriteText(ArcVersion::V110));
    EXPECT_EQ(files.Content("m.Ovt"),
              "Orva Data Text Version 1.10\r\n"
              "DH,A,-5,77,2,1,4,3,2,-56,0,0,0\r\n"
              "P,-1.500000,2.750000,0.0\r\n"
              "P,0.123457,5.000000,-0.500000\r\n"
              "DH,M,0,1,0,0,0,9,2,0,1,0,0\r\n"
              "P,0.000000,0.000000,0.0\r\n"
              "P,9.000000,0.000000,1.000000\r\n"
              "MH,2,1,0\r\n"
              "M1,255\r\nM1,255\r\n"
              "M2,0\r\nM2,-2\r\n"
              "DH,T,3,2,6,5,8,7,0,0,0,1,0\r\n"
              "SH,1.500000,2.000000,0.000000,44,1,0,2,1,0,30.000000,-2147483648,255\r\n"
              "FN,Gothic\r\n"
              "S,a,b\r\n");
}

TEST_F(ArchiveTextTest, WriterMakesTheLinesOfVersion100WithoutGrids) {
    MakeSample();
    ASSERT_TRUE(WriteText(ArcVersion::V100));
    EXPECT_EQ(files.Content("m.Ovt"),
              "Orva Data Text Version 1.00\r\n"
              "DH,A,-5,77,2,1,4,3,2,-56,0\r\n"
              "P,-1.500000,2.750000,0.0\r\n"
              "P,0.123457,5.000000,-0.500000\r\n"
              "DH,M,0,1,0,0,0,9,2,0,0\r\n"
              "P,0.000000,0.000000,0.0\r\n"
              "P,9.000000,0.000000,1.000000\r\n"
              "DH,T,3,2,6,5,8,7,0,0,1\r\n"
              "SH,1.500000,2.000000,0.000000,44,1,0,2,1,0,30.000000,-2147483648,255\r\n"
              "FN,Gothic\r\n"
              "S,a,b\r\n");
}

TEST_F(ArchiveTextTest, ReaderTakesTheLinesWithTheRectanglesYFirst) {
    for (const char* code : {"A", "M", "T"}) ASSERT_TRUE(store.MakeLayer(code, kLayLine));
    ASSERT_TRUE(
        ReadLines("DH,A,-5,77,2,1,4,3,2,-56,0,0,0\r\n"
                  "P,-1.500000,2.750000,0.0\r\n"
                  "P,0.123457,5.000000,-0.500000\r\n"
                  "DH,M,0,1,0,0,0,9,2,0,1,0,0\n"
                  "P,0,0,0\nP,9,0,1\nMH,2,1,0\nM1,255\nM1,0\nM2,0\nM2,-2\n"
                  "DH,T,3,2,6,5,8,7,0,0,0,1,0\r\n"
                  "SH,1.5,2,0,44,1,0,2,1,0,30,-2147483648,255\r\nFN,Gothic\r\nS,a,b\r\n"));
    const DigDat& line = Item("A", -5, 77);
    EXPECT_EQ(line.rect, (Rect{1, 2, 3, 4}));
    EXPECT_EQ(line.orgRect, line.rect);
    EXPECT_EQ(line.lineTag, -56);
    ASSERT_EQ(line.pntCnt, 2);
    EXPECT_EQ(line.pnts[0].x, -1.5);
    EXPECT_EQ(line.pnts[0].z, 0);
    EXPECT_EQ(line.pnts[1].x, 0.123457);
    EXPECT_EQ(line.pnts[1].z, -0.5);
    const DigDat& grid = Item("M", 0, 1);
    ASSERT_NE(grid.meshAttr, nullptr);
    EXPECT_EQ(grid.meshAttr->hcnt, 2);
    EXPECT_EQ(grid.meshAttr->vcnt, 1);
    EXPECT_EQ(grid.meshAttr->useFlag[0], 1) << "text keeps one bit";
    EXPECT_EQ(grid.meshAttr->useFlag[1], 0);
    EXPECT_EQ(grid.meshAttr->meshColor[1], 0xFFFFFFFEu);
    const DigDat& text = Item("T", 3, 2);
    EXPECT_EQ(text.rect, (Rect{5, 6, 7, 8}));
    EXPECT_EQ(text.pntCnt, 0);
    EXPECT_FALSE(text.pnts);
    ASSERT_NE(text.str, nullptr);
    EXPECT_EQ(text.str->x, 1.5);
    EXPECT_EQ(text.str->size, 44);
    EXPECT_EQ(text.str->style, 1);
    EXPECT_EQ(text.str->fill, 0);
    EXPECT_EQ(text.str->pos, 2);
    EXPECT_EQ(text.str->uline, 1);
    EXPECT_EQ(text.str->strike, 0);
    EXPECT_EQ(text.str->angle, 30);
    EXPECT_EQ(text.str->fcolor, 0x80000000u);
    EXPECT_EQ(text.str->bcolor, 255u);
    EXPECT_EQ(text.str->fntname, "Gothic");
    EXPECT_EQ(text.str->text, "a,b");
}

TEST_F(ArchiveTextTest, FileThatTheWriterOf100MadeIsRefusedByItsReader) {
    MakeSample();
    ASSERT_TRUE(WriteText(ArcVersion::V100));
    store.Init();
    ArcWatch watch(store, none_);
    EXPECT_FALSE(ArcReadText100(store, files, "m.Ovt", watch));
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(ArchiveTextTest, ReaderOf100TakesItemsBehindTheBareTitle) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    files.Put("m.Ovt", "orva data text version \nDH,A,1,7,2,1,4,3,1,5,1\nP,1,2,3\nSH,0,0,0,9,0,0,0,0,0,0,0,0\nFN,f\nS,x\n");
    ArcWatch watch(store, none_);
    ASSERT_TRUE(ArcReadText100(store, files, "m.Ovt", watch));
    EXPECT_EQ(Item("A", 1, 7).lineTag, 5);
    EXPECT_EQ(Item("A", 1, 7).str->text, "x");
    EXPECT_EQ(Item("A", 1, 7).meshAttr, nullptr);
}

TEST_F(ArchiveTextTest, TitleIsComparedWithoutCaseButTheKeysAreNot) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_TRUE(ReadLines("DH,A,1,1,0,0,0,0,0,0,0,0,0\n", "ORVA DATA text version 9.99 and more\n"));
    EXPECT_FALSE(ReadLines("DH,A,1,1,0,0,0,0,0,0,0,0,0\n", "Orva Data Version 1.10\n"));
    EXPECT_FALSE(ReadLines("dh,A,1,1,0,0,0,0,0,0,0,0,0\n"));
    store.Init();
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_TRUE(ReadLines("DH,A,1,1,0,0,0,0,0,0,0,0,0\ndh,A,1,2,0,0,0,0,0,0,0,0,0\nDH,A,1,3,0,0,0,0,0,0,0,0,0\n"));
    EXPECT_EQ(AllIDs(), (IDs{1})) << "the line in lower case ends the reading quietly";
    EXPECT_FALSE(ReadLines("DH,A,1,2,0,0,0,0,1,0,0,0,0\np,1,2,3\n"));
}

TEST_F(ArchiveTextTest, LineThatIsNoHeadEndsTheReadingWithTheResultSoFar) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_TRUE(ReadLines("DH,A,1,1,0,0,0,0,0,0,0,0,0\n# a remark\nDH,A,1,2,0,0,0,0,0,0,0,0,0\n"));
    EXPECT_EQ(AllIDs(), (IDs{1}));
    EXPECT_FALSE(ReadLines("\nDH,A,1,2,0,0,0,0,0,0,0,0,0\n"));
    EXPECT_FALSE(ReadLines(""));
    EXPECT_FALSE(ReadLines("", ""));
}

TEST_F(ArchiveTextTest, MissingFieldOrLineEndsTheReadingWithoutTheItem) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    const std::string good = "DH,A,1,1,0,0,0,0,0,0,0,0,0\n";
    const std::string after = "DH,A,1,3,0,0,0,0,0,0,0,0,0\n";
    const char* const kBad[] = {
        "DH,A,1,2,0,0,0,0,0,0,0,0\n",
        "DH,,1,2,0,0,0,0,0,0,0,0,0\n",
        "DH,A,1,2,0,0,0,0,-1,0,0,0,0\n",
        "DH,A,1,2,0,0,0,0,1,0,0,0,0\nP,1,2\n",
        "DH,A,1,2,0,0,0,0,1,0,0,0,0\nQ,1,2,3\n",
        "DH,A,1,2,0,0,0,0,2,0,0,0,0\nP,1,2,3\n",
        "DH,A,1,2,0,0,0,0,1,0,1,0,0\nP,1,2,3\nMH,1,1\nM1,1\nM2,1\n",
        "DH,A,1,2,0,0,0,0,1,0,1,0,0\nP,1,2,3\nMH,1,1,0\nM2,1\nM1,1\n",
        "DH,A,1,2,0,0,0,0,1,0,1,0,0\nP,1,2,3\nMH,1,1,0\nM1,1\nM2\n",
        "DH,A,1,2,0,0,0,0,0,0,0,1,0\nSH,0,0,0,9,0,0,0,0,0,0,0\nFN,f\nS,x\n",
        "DH,A,1,2,0,0,0,0,0,0,0,1,0\nSH,0,0,0,9,0,0,0,0,0,0,0,0\nFN\nS,x\n",
        "DH,A,1,2,0,0,0,0,0,0,0,1,0\nSH,0,0,0,9,0,0,0,0,0,0,0,0\nFN,f\nx\n",
    };
    for (const char* bad : kBad) {
        store.Init();
        ASSERT_TRUE(store.MakeLayer("A", kLayLine));
        EXPECT_TRUE(ReadLines(good + bad + after)) << bad;
        EXPECT_EQ(AllIDs(), (IDs{1})) << bad;
    }
}

TEST_F(ArchiveTextTest, FurtherFieldsAreIgnoredAndEmptyOnesDoNotExist) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_TRUE(ReadLines("DHX,,A,,1,2,0,0,0,0,1,0,0,0,0,99,98\nP,,1,2,3,4\n"));
    EXPECT_EQ(Item("A", 1, 2).pnts[0].z, 3);
}

TEST_F(ArchiveTextTest, NumbersAreReadAsFarAsTheyGo) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(ReadLines("DH,A, 1x,2,9999999999,-9999999999,abc,7.9,1,300,0,0,0\nP,1e2x,word,-.5\n"));
    const DigDat& dat = Item("A", 1, 2);
    EXPECT_EQ(dat.rect, (Rect{-2147483647 - 1, 2147483647, 7, 0}));
    EXPECT_EQ(dat.lineTag, 44) << "the low byte";
    EXPECT_EQ(dat.pnts[0].x, 100);
    EXPECT_EQ(dat.pnts[0].y, 0);
    EXPECT_EQ(dat.pnts[0].z, -0.5);
}

TEST_F(ArchiveTextTest, EmptyTextWritesItsKeyAloneAndComesBackEmpty) {
    MakeBlock("A", 1, kLayText);
    AddItem("A", 1, 1);
    ASSERT_TRUE(store.SetDigDatString("A", 1, 1, 0, 0, ""));
    ASSERT_TRUE(WriteText(ArcVersion::V110));
    EXPECT_TRUE(files.Content("m.Ovt").ends_with("\r\nFN,\r\nS,\r\n"));
    ASSERT_TRUE(ReadLines(files.Content("m.Ovt"), ""));
    EXPECT_EQ(BlockOf("A", 1).dats[1].str->text, "");
    EXPECT_EQ(BlockOf("A", 1).dats[1].str->fntname, "");
}

TEST_F(ArchiveTextTest, TextWithALineBreakDoesNotSurvive) {
    MakeBlock("A", 1, kLayText);
    AddItem("A", 1, 1);
    AddItem("A", 1, 2);
    ASSERT_TRUE(store.SetDigDatString("A", 1, 1, 0, 0, "one\ntwo"));
    ASSERT_TRUE(WriteText(ArcVersion::V110));
    EXPECT_NE(files.Content("m.Ovt").find("S,one\r\ntwo\r\n"), std::string::npos);
    store.Init();
    ASSERT_TRUE(store.MakeLayer("A", kLayText));
    EXPECT_TRUE(ReadLines(files.Content("m.Ovt"), ""));
    EXPECT_EQ(AllIDs(), (IDs{1})) << "the second half is no head";
    EXPECT_EQ(Item("A", 1, 1).str->text, "one");
}

TEST_F(ArchiveTextTest, TextOfTwoByteCharactersWithBytesLikeSeparatorsSurvives) {
    const std::string text = "\x83\x5C\x83\x7C\x95\x5C,\x8F\x5C,";
    MakeBlock("A", 1, kLayText);
    AddItem("A", 1, 1);
    ASSERT_TRUE(store.SetDigDatString("A", 1, 1, 0, 0, text));
    ASSERT_TRUE(WriteText(ArcVersion::V110));
    ASSERT_TRUE(ReadLines(files.Content("m.Ovt"), ""));
    EXPECT_EQ(BlockOf("A", 1).dats[1].str->text, text);
}

TEST_F(ArchiveTextTest, LinesOfAnyLengthAreTaken) {
    ASSERT_TRUE(store.MakeLayer("A", kLayText));
    const std::string text(3000000, 't');
    const std::string font(5000, 'f');
    const std::string zeros(400000, '0');
    ASSERT_TRUE(ReadLines("DH,A,1,1," + zeros + "5,0,0,0,0,0,0,1,0\r\nSH,0,0,0,9,0,0,0,0,0,0,0,0\r\nFN," + font + "\r\nS," +
                          text + "\r\nDH,A,1,2,0,0,0,0,0,0,0,0,0"));
    EXPECT_EQ(Item("A", 1, 1).rect.top, 5);
    EXPECT_EQ(Item("A", 1, 1).str->text.size(), text.size());
    EXPECT_EQ(Item("A", 1, 1).str->fntname.size(), 64u);
    EXPECT_EQ(AllIDs(), (IDs{1, 2})) << "a last line needs no end";
    EXPECT_LT(ArrayFaults::Largest_bytes(), 9000000u);
}

TEST_F(ArchiveTextTest, CountsBeyondTheFileAreRefusedBeforeAnythingIsAllocated) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ArrayFaults::Clear();
    EXPECT_FALSE(ReadLines("DH,A,1,1,0,0,0,0,2147483647,0,1,1,0\nP,1,2,3\n"));
    EXPECT_LT(ArrayFaults::Largest_bytes(), 10000u);
}

TEST_F(ArchiveTextTest, ShortestLinesThatFillTheFileToItsLastByteAreEnough) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_TRUE(ReadLines("DH,A,1,1,0,0,0,0,2,0,0,0,0\nP,1,2,3\nP,4,5,6"));
    EXPECT_EQ(Item("A", 1, 1).pnts[1].z, 6);
    EXPECT_TRUE(ReadLines("DH,A,1,2,0,0,0,0,1,0,1,0,0\nP,1,2,3\nMH,1,1,0\nM1,1\nM2,5"));
    EXPECT_EQ(Item("A", 1, 2).meshAttr->meshColor[0], 5u);
}

TEST_F(ArchiveTextTest, HugeAndOddNumbersAreWrittenAsTheStandardConversionsWriteThem) {
    MakeBlock("A", 1);
    const double values[] = {1e308, -1e308, 0.0000005, 0.0000015, -0.0, 123456789.9999995, 1e-300};
    for (std::size_t i = 0; i < std::size(values); ++i)
        AddItem("A", 1, static_cast<std::int32_t>(i), {{values[i], 0, values[i]}});
    ASSERT_TRUE(WriteText(ArcVersion::V110));
    for (const double value : values) {
        char number[400];
        std::snprintf(number, sizeof number, "P,%.6f,0.000000,", value);
        std::string line = number;
        std::snprintf(number, sizeof number, "%.6f\r\n", value);
        line += value == 0 ? "0.0\r\n" : number;
        EXPECT_NE(files.Content("m.Ovt").find(line), std::string::npos) << line;
    }
}

}  // namespace
}  // namespace orvane
