// Header, points and lines of the legacy files, and what becomes of a file that is at fault.
#include "tests/files/legacy_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LegacyFileTest : public LegacyTest {
protected:
    /// Reads one point line and gives its coordinates; "no" when the read failed.
    std::string Point(const std::string& line) {
        return Read("a.pnt", Header(2, 1) + "P,7," + line + "\r\n\x1A") ? Points(0) : "no";
    }
};

TEST_F(LegacyFileTest, PointFileGivesOneBlockWithOnePointAnItem) {
    ASSERT_TRUE(Read("a.pnt", Header(3, 2) + "1101,7,100,200\r\n1101,8,300.5,400.25,12.5\r\n\x1A"));
    ASSERT_EQ(store.BlockCnt(), 1);
    const DigBlock& block = store.Block(0);
    EXPECT_EQ(block.blkState, 1);
    EXPECT_EQ(block.path, "a.pnt");
    EXPECT_EQ(block.code, "1101");
    EXPECT_EQ(block.meshNo, kSheet);
    EXPECT_EQ(block.GX, 3170000);
    EXPECT_EQ(block.GY, 4280000);
    EXPECT_EQ(block.minX, 10);
    EXPECT_EQ(block.minY, 20);
    EXPECT_EQ(block.maxX, 9990);
    EXPECT_EQ(block.maxY, 9980);
    EXPECT_EQ(block.datCnt, 2);
    EXPECT_EQ(block.datMax, 2);
    EXPECT_EQ(block.recCnt, 2) << "nothing is left for point lines, which stands for one an item";
    EXPECT_EQ(block.dats[0].datID, 7);
    EXPECT_EQ(block.dats[1].datID, 8);
    EXPECT_EQ(Points(0), "100 200 0;");
    EXPECT_EQ(Points(1), "300.5 400.25 12.5;");
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, ItemsStartAsTold) {
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "1101,7,100,200\r\n\x1A"));
    const DigDat& dat = store.Block(0).dats[0];
    EXPECT_EQ(dat.lineTag, 0);
    EXPECT_EQ(dat.subLayNo, 0);
    EXPECT_EQ(dat.clipFlg, 1);
    EXPECT_EQ(dat.drawnFlg, 0);
    EXPECT_EQ(dat.active, 0);
    EXPECT_EQ(dat.orgPnts.Get(), nullptr);
    EXPECT_EQ(dat.meshAttr, nullptr);
    EXPECT_EQ(dat.str, nullptr);
}

TEST_F(LegacyFileTest, NewLayerIsMadeWithTheFilesTypeAndTheBlockIsFound) {
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    ASSERT_TRUE(Read("a.arc", Header(4, 1) + "L,0,1,2\r\n1,2\r\n3,4\r\n\x1A"));
    ASSERT_TRUE(Read("a.pgn", Header(3, 1) + "A,1,1,\r\n1\r\n\x1A"));
    EXPECT_EQ(store.Layer(0).layType, kLayPoint);
    EXPECT_EQ(store.Layer(1).layType, kLayLine);
    EXPECT_EQ(store.Layer(2).layType, kLayPolygon);
    EXPECT_EQ(store.Layer(2).layIndex, 3) << "the key of any new layer";
    EXPECT_EQ(store.Layer(2).color, 0xDCDCDCU);
    EXPECT_EQ(store.GetLayPath("L", kSheet), "a.arc");
    EXPECT_EQ(store.FindDigIndex("A", kSheet), 2);
}

TEST_F(LegacyFileTest, LayerOfAnotherTypeIsUsedAsItIs) {
    ASSERT_TRUE(store.MakeLayer("P", kLayCircle));
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.Layer(0).layType, kLayCircle);
    EXPECT_EQ(store.GetLayDatCnt("P", kSheet), 1);
}

TEST_F(LegacyFileTest, BlockGoesToTheEndAndNotIntoAFreeSlot) {
    ASSERT_TRUE(store.DigMemAlloc("X", 1, kLayLine, "", 0));
    ASSERT_TRUE(store.DigMemAlloc("X", 2, kLayLine, "", 0));
    ASSERT_TRUE(store.DigMemDelete("X", 1));
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.FindBlock("P", kSheet).block, 2);
    EXPECT_EQ(store.Block(0).blkState, kFreeBlock);
}

TEST_F(LegacyFileTest, IndexIsNotSorted) {
    ASSERT_TRUE(store.DigMemAlloc("A", 1, kLayLine, "", 1));
    ASSERT_TRUE(store.DigMemAlloc("P", 1, kLayPoint, "", 9));
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.FindDigIndex("P", kSheet), 2);
    store.SortDigIndex();
    EXPECT_EQ(store.FindDigIndex("P", kSheet), 1);
}

TEST_F(LegacyFileTest, FileReadTwiceGivesTwoBlocksAndLookupsMeetTheFirst) {
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    ASSERT_TRUE(Read("a.pnt", Header(3, 2) + "P,7,1,2\r\nP,8,1,2\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), 2);
    EXPECT_EQ(store.GetDigIndexCnt(), 2);
    EXPECT_EQ(store.GetLayDatCnt("P", kSheet), 1);
}

TEST_F(LegacyFileTest, CodeOfTheLastItemStands) {
    ASSERT_TRUE(Read("a.pnt", Header(3, 2) + "P,7,1,2\r\nQ,8,1,2\r\n\x1A"));
    EXPECT_EQ(store.Block(0).code, "Q");
    EXPECT_EQ(store.FindLayDef("P"), -1);
    EXPECT_EQ(store.GetLayDatCnt("Q", kSheet), 2);
}

TEST_F(LegacyFileTest, CodeIsCutTo50Bytes) {
    const std::string code(60, 'c');
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + code + ",7,1,2\r\n\x1A"));
    EXPECT_EQ(store.Block(0).code, std::string(50, 'c'));
    EXPECT_EQ(store.GetLayDatCnt(std::string(50, 'c'), kSheet), 1);
}

TEST_F(LegacyFileTest, TypeIsReadFromTheLastThreeLettersInAnyCase) {
    EXPECT_TRUE(Read("a.PNT", Header(2, 1) + "P,7,1,2\r\n\x1A")) << "upper case";
    EXPECT_EQ(Points(0), "1 2 0;");
    EXPECT_TRUE(Read("a.Arc", Header(3, 1) + "L,0,7,1\r\n1,2\r\n\x1A"));
    EXPECT_TRUE(Read("xpnt", Header(2, 1) + "P,7,1,2\r\n\x1A")) << "no point is asked for";
    EXPECT_FALSE(Read("pnt", Header(2, 1) + "P,7,1,2\r\n\x1A")) << "three letters alone are no name";
    EXPECT_FALSE(Read("a.txt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_FALSE(Read("a.pnt.gz", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), 3);
}

TEST_F(LegacyFileTest, PathKeeps511Bytes) {
    const std::string name = std::string(600, 'n') + ".pnt";
    ASSERT_TRUE(Read(name, Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.Block(0).path, std::string(511, 'n'));
}

TEST_F(LegacyFileTest, PathKeepsCharactersWhoseSecondByteIsABackslash) {
    const std::string name = "\x95\x5C\x83\x5C.pnt";
    ASSERT_TRUE(Read(name, Header(2, 1) + "\x95\x5C,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.GetLayPath("\x95\x5C", kSheet), name);
}

// --- The header ---------------------------------------------------------------------------------------------------------

TEST_F(LegacyFileTest, HeaderBeginsWithFHInEitherCase) {
    const std::string rest = "1,533945,n,2,1,1,1,0,0,9,9\r\nP,7,1,2\r\n\x1A";
    for (const char* begin : {"FH", "fh", "Fh", "fH"}) EXPECT_TRUE(Read("a.pnt", begin + rest)) << begin;
    for (const char* begin : {"F", "HF", " FH", "FG", ""}) EXPECT_FALSE(Read("a.pnt", begin + rest)) << begin;
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, HeaderAloneFails) {
    for (const std::string& end : {std::string(), std::string("\x1A"), std::string(1, '\0'), std::string("\x1AP,7,1,2\r\n")}) {
        EXPECT_FALSE(Read("a.pnt", Header(2, 1) + end));
        EXPECT_FALSE(Read("a.pnt", Header(1, 0) + end));
    }
    EXPECT_FALSE(Read("a.pnt", "FH,1,n,2,1,1,1,0,0,9,9"));
    EXPECT_FALSE(Read("a.pnt", "FH,1,n,2,1,1,1,0,0,9,9\x1A\r\nP,7,1,2\r\n"));
    EXPECT_FALSE(Read("a.pnt", ""));
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, EmptyHeaderFieldsAreSkippedSoThatLaterOnesShift) {
    ASSERT_TRUE(Read("a.pnt", "FH,,,533945,,n,2,1,,1,1,5.5,-6,7,8,9,rest\r\nP,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.Block(0).meshNo, 533945);
    EXPECT_EQ(store.Block(0).minX, 5.5);
    EXPECT_EQ(store.Block(0).minY, -6);
    EXPECT_EQ(store.Block(0).maxX, 7);
    EXPECT_EQ(store.Block(0).maxY, 8);
    // The third field empty: the count of records is taken for the unread one, that of items for the count of records.
    ASSERT_TRUE(Read("b.pnt", "FH,533945,,9,2,1,1,0,0,9,9\r\nP,7,1,2\r\n\x1A"));
    EXPECT_EQ(LastBlock().datCnt, 1);
    EXPECT_EQ(LastBlock().recCnt, 1);
    EXPECT_EQ(LastBlock().minX, 0);
    EXPECT_EQ(LastBlock().minY, 9);
}

TEST_F(LegacyFileTest, HeaderWithoutCountsFailsAndBoundsThatAreMissingAreZero) {
    EXPECT_FALSE(Read("a.pnt", "FH\r\nP,7,1,2\r\n\x1A"));
    EXPECT_FALSE(Read("a.pnt", "FH,533945,n,2\r\nP,7,1,2\r\n\x1A"));
    ASSERT_TRUE(Read("a.pnt", "FH,533945,n,2,1\r\nP,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.Block(0).minX, 0);
    EXPECT_EQ(store.Block(0).maxY, 0);
}

TEST_F(LegacyFileTest, RecCntIsWhatHeaderAndItemsLeave) {
    // A, B and recCnt = A - (B + 1), or B where that is 0.
    const std::int32_t cases[][3] = {{4, 1, 2}, {2, 1, 1}, {3, 2, 2}, {1, 1, -1}, {10, 2, 7}};
    for (const auto& [records, items, expected] : cases) {
        std::string lines;
        for (std::int32_t i = 0; i < items; ++i) lines += "L,0,1,0\r\n";
        ASSERT_TRUE(Read("a.arc", Header(records, items) + lines + "\x1A"));
        EXPECT_EQ(LastBlock().recCnt, expected) << records << ' ' << items;
    }
}

TEST_F(LegacyFileTest, RecCntOfWideCountsIsHeldTo32Bits) {
    ASSERT_TRUE(Read("a.arc", Header(INT32_MIN, 1) + "L,0,1,0\r\n\x1A"));
    EXPECT_EQ(LastBlock().recCnt, INT32_MIN);
}

TEST_F(LegacyFileTest, NoItemsGiveABlockThatNoKeyFinds) {
    EXPECT_TRUE(Read("a.pnt", Header(1, 0) + "x\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_EQ(store.Block(0).recCnt, 0);
    EXPECT_EQ(store.Block(0).datMax, 0);
    EXPECT_EQ(store.LayerCnt(), 0);
    EXPECT_EQ(store.FindDigIndex("", kSheet), -1);
}

TEST_F(LegacyFileTest, NegativeCountOfItemsFails) {
    EXPECT_FALSE(Read("a.pnt", Header(2, -1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), 0);
}

// --- Numbers and point lines --------------------------------------------------------------------------------------------

TEST_F(LegacyFileTest, FractionIsAddedWhateverTheSign) {
    EXPECT_EQ(Point("1.5,-1.5"), "1.5 -0.5 0;");
    EXPECT_EQ(Point("-0.5,-2.25"), "0.5 -1.75 0;");
    EXPECT_EQ(Point("-3,+4"), "-3 4 0;");
}

TEST_F(LegacyFileTest, FractionCountsItsDigits) {
    EXPECT_EQ(Point("0.05,0.50"), "0.05 0.5 0;");
    EXPECT_EQ(Point("2.0000001,.25"), "2 0.25 0;");
    EXPECT_EQ(LastBlock().dats[0].pnts[0].x, 2 + 1 / 10000000.0);
    EXPECT_EQ(Point("7.,.5"), "7 0.5 0;");
}

TEST_F(LegacyFileTest, FractionEndsAfterSevenDigits) {
    ASSERT_EQ(Point("1.23456789,0.99999999999999999999"), "1.23457 1 0;");
    EXPECT_EQ(LastBlock().dats[0].pnts[0].x, 1 + 2345678 / 10000000.0);
    EXPECT_EQ(LastBlock().dats[0].pnts[0].y, 9999999 / 10000000.0);
}

TEST_F(LegacyFileTest, NumbersEndWhereTheyEnd) {
    EXPECT_EQ(Point(" 12x,3.5y6"), "12 3.5 0;");
    EXPECT_EQ(Point("1e3,x"), "1 0 0;");
    EXPECT_EQ(Point("1.2.3,4.-5"), "1.2 4 0;");
    EXPECT_EQ(Point(","), "0 0 0;");
    EXPECT_EQ(Point("99999999999,-99999999999"), "2.14748e+09 -2.14748e+09 0;");
}

TEST_F(LegacyFileTest, HeightIsOptional) {
    EXPECT_EQ(Point("1,2,3.5"), "1 2 3.5;");
    EXPECT_EQ(Point("1,2,"), "1 2 0;");
    EXPECT_EQ(Point("1,2"), "1 2 0;");
}

TEST_F(LegacyFileTest, PointLineWithAFourthValueFailsWithTheMessageOfInconsistentData) {
    EXPECT_EQ(Point("1,2,3,4"), "no");
    EXPECT_THAT(messages, ElementsAre(Contradiction("a.pnt")));
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_EQ(store.LayerCnt(), 0);
}

TEST_F(LegacyFileTest, ThirdCommaStartsOver) {
    EXPECT_EQ(Point("1,2,3,4,5"), "4 5 0;");
    EXPECT_EQ(Point("1,2,3,4,5,6"), "4 5 6;");
    EXPECT_EQ(Point("1,2,3,"), "no");
    EXPECT_EQ(Point("1,2,3,4,5,6,7"), "no");
    EXPECT_EQ(messages.size(), 2u);
}

TEST_F(LegacyFileTest, PointLineWithoutACommaFailsWithTheMessage) {
    EXPECT_EQ(Point("1"), "no");
    EXPECT_EQ(Point(""), "no");
    EXPECT_FALSE(Read("a.arc", Header(3, 1) + "L,0,1,1\r\n5\r\n\x1A"));
    EXPECT_THAT(messages, ElementsAre(Contradiction("a.pnt"), Contradiction("a.pnt"), Contradiction("a.arc")));
}

TEST_F(LegacyFileTest, MorePointsThanRecCntFailWithTheMessage) {
    EXPECT_FALSE(Read("a.arc", Header(4, 1) + "L,0,1,3\r\n1,2\r\n3,4\r\n5,6\r\n\x1A")) << "the third of two";
    EXPECT_THAT(messages, ElementsAre(Contradiction("a.arc")));
    EXPECT_FALSE(Read("b.arc", Header(5, 2) + "L,0,1,2\r\n1,2\r\n3,4\r\nL,0,2,1\r\n5,6\r\n\x1A")) << "over two items";
    EXPECT_FALSE(Read("c.pnt", Header(1, 1) + "P,7,1,2\r\n\x1A")) << "a header that leaves less than nothing";
    EXPECT_THAT(messages, ElementsAre(Contradiction("a.arc"), Contradiction("b.arc"), Contradiction("c.pnt")));
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_TRUE(Read("d.arc", Header(9, 1) + "L,0,1,2\r\n1,2\r\n3,4\r\n\x1A")) << "fewer are no fault";
}

TEST_F(LegacyFileTest, PointBehindTheLastOneIsToldBeforeTheEndOfTheDataIsMet) {
    EXPECT_FALSE(Read("a.arc", Header(3, 1) + "L,0,1,2\r\n1,2\r\n3,4"));
    EXPECT_THAT(messages, ElementsAre(Contradiction("a.arc")));
    EXPECT_FALSE(Read("a.arc", Header(3, 1) + "L,0,1,2\r\n1,2\r\n3"));
    EXPECT_EQ(messages.size(), 1u) << "without a comma the data ends first";
}

TEST_F(LegacyFileTest, RectangleTruncatesOnBothSides) {
    ASSERT_TRUE(Read("a.arc", Header(5, 1) + "L,0,1,3\r\n10.9,20.9\r\n30.9,5.7\r\n-2.5,6\r\n\x1A"));
    // -2.5 reads as -1.5.
    EXPECT_THAT(Rectangle(store.Block(0).dats[0]), ElementsAre(-1, 5, 30, 20));
}

// --- Lines --------------------------------------------------------------------------------------------------------------

TEST_F(LegacyFileTest, LineFileHasAHeadLineAndPointLinesForEachItem) {
    ASSERT_TRUE(Read("a.arc", Header(8, 2) + "L,5,11,3\r\n1,2\r\n3,4,9\r\n5,6\r\nL,-1,12,2,rest,x\r\n7,8\r\n9,10\r\n\x1A"));
    EXPECT_EQ(store.Block(0).recCnt, 5);
    EXPECT_EQ(store.Block(0).dats[0].lineTag, 5);
    EXPECT_EQ(store.Block(0).dats[0].datID, 11);
    EXPECT_EQ(Points(0), "1 2 0;3 4 9;5 6 0;");
    EXPECT_EQ(store.Block(0).dats[1].lineTag, -1);
    EXPECT_EQ(store.Block(0).dats[1].datID, 12);
    EXPECT_EQ(Points(1), "7 8 0;9 10 0;");
}

TEST_F(LegacyFileTest, LineWithoutPointsKeepsTheStartingRectangle) {
    ASSERT_TRUE(Read("a.arc", Header(2, 1) + "L,0,1,0\r\n\x1A"));
    EXPECT_EQ(store.Block(0).dats[0].pntCnt, 0);
    EXPECT_THAT(Rectangle(store.Block(0).dats[0]), ElementsAre(99999999, 99999999, -99999999, -99999999));
}

TEST_F(LegacyFileTest, NegativeCountOfPointsFails) {
    EXPECT_FALSE(Read("a.arc", Header(4, 1) + "L,0,1,-1\r\n1,2\r\n\x1A"));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, CountsThatTheFileCannotHoldAskForNoMemory) {
    ArrayFaults::FailOver(1 << 20);
    EXPECT_FALSE(Read("a.pnt", Header(2147483647, 2147483647) + "P,7,1,2\r\n\x1A"));
    EXPECT_FALSE(Read("a.arc", Header(2147483647, 1) + "L,0,1,2147483647\r\n1,2\r\n3,4\r\n\x1A"));
    EXPECT_FALSE(Read("a.pgn", Header(2147483647, 1) + "A,1,2147483647,\r\n1\r\n\x1A"));
    EXPECT_THAT(messages, ElementsAre(Contradiction("a.pnt"))) << "its recCnt is negative, and nothing else is told";
    EXPECT_EQ(store.BlockCnt(), 0);
}

// --- The end of the data ------------------------------------------------------------------------------------------------

TEST_F(LegacyFileTest, HeaderThatClaimsMoreItemsThanThereAreFailsAtTheEndMark) {
    EXPECT_FALSE(Read("a.pnt", Header(4, 3) + "P,7,1,2\r\nP,8,1,2\r\n\x1A"));
    EXPECT_FALSE(Read("a.arc", Header(4, 2) + "L,0,1,1\r\n1,2\r\n\x1A"));
    EXPECT_FALSE(Read("a.pgn", Header(4, 2) + "A,1,1,\r\n1\r\n\x1A"));
    EXPECT_THAT(messages, IsEmpty());
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(LegacyFileTest, DataBehindTheLastItemIsNotLookedAt) {
    EXPECT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\nrubbish"));
    EXPECT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n")) << "no end mark is asked for";
}

TEST_F(LegacyFileTest, EndMarksEndTheDataWhereverTheyStand) {
    const std::string file = Header(4, 1) + "L,0,1,2\r\n1,2\r\n3,4\r\n";
    ASSERT_TRUE(Read("a.arc", file));
    for (std::size_t at = 0; at < file.size(); ++at) {
        for (const char mark : {'\x1A', '\0'}) {
            std::string marked = file;
            marked.insert(at, 1, mark);
            EXPECT_FALSE(Read("a.arc", marked)) << at;
        }
    }
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, FileCutOffAtAnyByteFailsAndLeavesTheStore) {
    ASSERT_TRUE(Read("l.arc", Header(6, 2) + "L,0,1,2\r\n0,0\r\n5,0\r\nL,0,2,1\r\n5,5\r\n\x1A"));
    const std::string before = DumpStore(store);
    const std::pair<const char*, std::string> cases[] = {
        {"a.pnt", Header(3, 2) + "P,7,1,2\r\nP,8,3.5,4,5\r\n"},
        {"a.arc", Header(6, 2) + "M,0,1,2\r\n0,0\r\n5,0\r\nM,0,2,1\r\n5,5\r\n"},
        {"a.pgn", Header(4, 2) + "A,1,2,\r\n1\r\n-2\r\nA,2,1,\r\n1\r\n"},
    };
    for (const auto& [name, file] : cases) {
        for (std::size_t size = 0; size < file.size(); ++size) {
            EXPECT_FALSE(Read(name, file.substr(0, size))) << name << ' ' << size;
            EXPECT_EQ(DumpStore(store), before);
        }
        EXPECT_THAT(messages, IsEmpty());
    }
    for (const auto& [name, file] : cases) EXPECT_TRUE(Read(name, file)) << name;
}

TEST_F(LegacyFileTest, LastLineWithoutCrLfIsNotThere) {
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7,1,2"));
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7,1,2\n"));
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r"));
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7,1,2\x1A\r\n"));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, LoneCrAndLoneLfBelongToTheirField) {
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P\r,7,1\n,2\r\r\n\x1A"));
    EXPECT_EQ(store.Block(0).code, "P\r");
    EXPECT_EQ(Points(0), "1 2 0;");
}

TEST_F(LegacyFileTest, HeadThatEndsBeforeItsLastFieldFails) {
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7\r\n1,2\r\n\x1A"));
    EXPECT_FALSE(Read("a.arc", Header(3, 1) + "L,0,7\r\n1,2\r\n\x1A"));
    EXPECT_FALSE(Read("a.arc", Header(3, 1) + "\r\nL,0,7,1\r\n1,2\r\n\x1A"));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, LinesMayBeLongerThanAnyBuffer) {
    const std::string blanks(200000, ' ');
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7," + blanks + "1.5," + blanks + "2\r\n\x1A"));
    EXPECT_EQ(Points(0), "1.5 2 0;");
    ASSERT_TRUE(Read("b.pnt", "FH" + std::string(200000, 'x') + ",533945,n,2,1,1,1,0,0,9,9," + std::string(200000, ',') +
                                  "\r\nP,7,1,2\r\n\x1A"));
    EXPECT_EQ(Points(0), "1 2 0;");
}

TEST_F(LegacyFileTest, FileOfManyPiecesIsReadWhole) {
    const std::int32_t itemCnt = 40000;
    std::string lines;
    for (std::int32_t i = 0; i < itemCnt; ++i) lines += "P," + std::to_string(i) + "," + std::to_string(i) + ".5,1\r\n";
    ASSERT_TRUE(Read("a.pnt", Header(itemCnt + 1, itemCnt) + lines + "\x1A"));
    ASSERT_EQ(store.GetLayDatCnt("P", kSheet), itemCnt);
    for (std::int32_t i = 0; i < itemCnt; ++i) {
        ASSERT_EQ(store.Block(0).dats[static_cast<std::size_t>(i)].pnts[0].x, i + 0.5);
    }
    EXPECT_EQ(store.Block(0).datMax, itemCnt);
}

TEST_F(LegacyFileTest, FileThatIsShorterThanTheSystemSaysEndsWhereItEnds) {
    class Shrinking : public MemoryFiles {
    public:
        std::unique_ptr<InputFile> OpenRead(std::string_view, OpenError*) override {
            return std::make_unique<MemoryInputFile>("FH,1,n,2,1,1,1,0,0,9,9\r\nP,7,1,2\r\n", std::uint64_t{1} << 60);
        }
    } shrinking;
    ArrayFaults::FailOver(1 << 20);
    EXPECT_TRUE(LegacyFileRead(store, shrinking, "a.pnt", {}, Message()));
}

// --- What a failure leaves ----------------------------------------------------------------------------------------------

TEST_F(LegacyFileTest, FileThatDoesNotOpenFails) {
    EXPECT_FALSE(LegacyFileRead(store, files, "none.pnt", {}, Message()));
    files.files["folder.pnt"].directory = true;
    EXPECT_FALSE(LegacyFileRead(store, files, "folder.pnt", {}, Message()));
    files.files["locked.pnt"].locked = true;
    EXPECT_FALSE(LegacyFileRead(store, files, "locked.pnt", {}, Message()));
    EXPECT_FALSE(LegacyFileRead(store, files, "", {}, Message()));
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyFileTest, BeforeInitNothingIsRead) {
    store.FreeAll();
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_FALSE(ReadFolder("d"));
    EXPECT_THAT(files.opened, IsEmpty());
}

TEST_F(LegacyFileTest, FullIndexTakesNoBlockAndNoLayer) {
    ASSERT_TRUE(store.MakeLayer("L", kLayLine));
    for (std::int32_t i = 0; i < kMaxDigIndex; ++i) {
        const std::int32_t pos = store.MakeBareBlock(CDigMem::BlockPlace::End);
        store.MutableBlock(pos).code.Set("L");
        store.MutableBlock(pos).meshNo = i;
        ASSERT_TRUE(store.IndexBareBlock(pos));
    }
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), kMaxDigIndex);
    EXPECT_EQ(store.LayerCnt(), 1);
}

TEST_F(LegacyFileTest, FullLayerTableTakesNoNewCode) {
    for (std::int32_t i = 0; i < kMaxLayers; ++i) ASSERT_TRUE(store.MakeLayer("L" + std::to_string(i), kLayPoint));
    EXPECT_FALSE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), 0);
    EXPECT_TRUE(Read("a.pnt", Header(2, 1) + "L77,7,1,2\r\n\x1A"));
}

TEST_F(LegacyFileTest, EveryGrowthThatFailsEndsTheReadWithNoBlockMore) {
    ASSERT_TRUE(Read("l.arc", Header(4, 1) + "L,0,1,2\r\n0,0\r\n5,0\r\n\x1A"));
    const std::pair<const char*, std::string> cases[] = {
        {"a.pnt", Header(2, 1) + "P,7,1,2\r\n"},
        {"a.arc", Header(4, 1) + "M,0,1,2\r\n0,0\r\n5,0\r\n"},
        {"a.pgn", Header(3, 1) + "A,1,1,\r\n1\r\n"},
    };
    for (const auto& [name, file] : cases) {
        files.Put(name, file);
        const std::int32_t before = store.BlockCnt();
        std::size_t told = 0;
        for (std::int64_t n = 1;; ++n) {
            ASSERT_LT(n, 100);
            messages.clear();
            ArrayFaults::FailNth(n);
            const bool read = LegacyFileRead(store, files, name, {}, Message());
            ArrayFaults::Clear();
            if (read) break;
            EXPECT_EQ(store.BlockCnt(), before);
            EXPECT_EQ(store.GetDigIndexCnt(), before);
            for (const std::string& message : messages) EXPECT_EQ(message, OutOfMemory());
            told += messages.size();
        }
        EXPECT_GE(told, 1u) << "no memory for points is told";
        EXPECT_EQ(store.BlockCnt(), before + 1);
    }
}

TEST_F(LegacyFileTest, HostMayEmptyTheStoreWhileTheMessageStands) {
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    onMessage = [this] { store.Init(); };
    EXPECT_FALSE(Read("b.pnt", Header(2, 1) + "P,7,1\r\n\x1A")) << "x and no y";
    EXPECT_FALSE(Read("b.pnt", Header(2, 1) + "P,7,1,2,3,4\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), 0);
    onMessage = [this] { store.FreeAll(); };
    EXPECT_FALSE(Read("b.pnt", Header(2, 1) + "P,7,1,2,3,4\r\n\x1A"));
    EXPECT_FALSE(store.InitDone());
}

TEST_F(LegacyFileTest, HostMayDeleteAndMakeBlocksWhileTheMessageStands) {
    ASSERT_TRUE(Read("a.pnt", Header(2, 1) + "P,7,1,2\r\n\x1A"));
    onMessage = [this] {
        EXPECT_EQ(store.DigMemDeleteMeshNo(kSheet), 1) << "the block that fails is not among them";
        ASSERT_TRUE(store.DigMemAlloc("N", 1, kLayLine, "", 0));
        ASSERT_TRUE(store.DigMemAlloc("N", 2, kLayLine, "", 0));
    };
    EXPECT_FALSE(Read("b.pnt", Header(2, 1) + "P,7,1,2,3,4\r\n\x1A"));
    EXPECT_EQ(store.BlockCnt(), 2);
    EXPECT_EQ(store.GetDigIndexCnt(), 2);
}

TEST_F(LegacyFileTest, WithoutAMessageBoxTheReadFailsAllTheSame) {
    files.Put("b.pnt", Header(2, 1) + "P,7,1,2,3,4\r\n\x1A");
    EXPECT_FALSE(LegacyFileRead(store, files, "b.pnt", {}, {}));
}

}  // namespace
}  // namespace orvane
