// Polygons, whose rings are made of lines that are in the store already.
#include "tests/files/legacy_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LegacyPolygonTest : public LegacyTest {
protected:
    /// A line layer's block in the sheet, each line given as "x,y x,y ...", numbered from `firstID`.
    void AddLines(const std::string& code, const std::vector<std::string>& lines, std::int32_t firstID = 1,
                  std::int32_t meshNo = kSheet) {
        std::string items;
        std::int32_t pntCnt = 0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            std::istringstream in(lines[i]);
            std::string pnts;
            std::int32_t n = 0;
            for (std::string pnt; in >> pnt; ++n) pnts += pnt + "\r\n";
            items +=
                code + ",0," + std::to_string(firstID + static_cast<std::int32_t>(i)) + "," + std::to_string(n) + "\r\n" + pnts;
            pntCnt += n;
        }
        const auto itemCnt = static_cast<std::int32_t>(lines.size());
        ASSERT_TRUE(Read(code + std::to_string(meshNo) + ".arc", Header(1 + itemCnt + pntCnt, itemCnt, meshNo) + items + "\x1A"));
    }
    /// Reads one polygon made of these references and gives its points; "no" when the read failed.
    std::string Ring(const std::vector<std::int32_t>& ids, std::string_view arcCode = {}) {
        std::string lines = "A,1," + std::to_string(ids.size()) + ",\r\n";
        for (const std::int32_t id : ids) lines += std::to_string(id) + "\r\n";
        return Read("a.pgn", Header(2 + static_cast<std::int32_t>(ids.size()), 1) + lines + "\x1A", arcCode) ? Points(0) : "no";
    }
};

TEST_F(LegacyPolygonTest, EachLineGivesUpItsLastPointAndTheEndOfTheLastClosesTheRing) {
    AddLines("L", {"0,0 10,0 10,10", "10,10 0,10,3 0,0"});
    EXPECT_EQ(Ring({1, 2}), "0 0 0;10 0 0;10 10 0;0 10 3;0 0 0;");
    EXPECT_THAT(Rectangle(LastBlock().dats[0]), ElementsAre(0, 0, 10, 10));
    EXPECT_EQ(LastBlock().dats[0].datID, 1);
    EXPECT_EQ(LastBlock().code, "A");
    EXPECT_EQ(LastBlock().minX, 10) << "the block's bounds are the header's";
}

TEST_F(LegacyPolygonTest, NegativeReferencesWalkBackward) {
    AddLines("L", {"0,0 10,0 10,10", "0,0 0,10 10,10"});
    EXPECT_EQ(Ring({1, -2}), "0 0 0;10 0 0;10 10 0;0 10 0;0 0 0;");
    EXPECT_EQ(Ring({-1, 2}), "10 10 0;10 0 0;0 0 0;0 10 0;10 10 0;");
    EXPECT_EQ(Ring({-2, -1}), "10 10 0;0 10 0;10 10 0;10 0 0;0 0 0;") << "whether they meet is not asked";
}

TEST_F(LegacyPolygonTest, ReferenceOfZeroCountsAsBackward) {
    AddLines("L", {"0,0 1,0 2,5"}, 0);
    EXPECT_EQ(Ring({0}), "2 5 0;1 0 0;0 0 0;");
}

TEST_F(LegacyPolygonTest, ReadBeforeAnyLinesGivesItemsWithoutPoints) {
    ASSERT_TRUE(Read("a.pgn", Header(6, 2) + "A,5,2,\r\n1\r\n-2\r\nA,6,1,\r\n3\r\n\x1A"));
    ASSERT_EQ(LastBlock().datCnt, 2);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(LastBlock().dats[i].pntCnt, 0);
        EXPECT_EQ(LastBlock().dats[i].pnts.Get(), nullptr);
        EXPECT_THAT(Rectangle(LastBlock().dats[i]), ElementsAre(99999999, 99999999, -99999999, -99999999));
    }
    EXPECT_EQ(LastBlock().dats[1].datID, 6);
    EXPECT_EQ(LastBlock().blkState, 1);
    EXPECT_EQ(store.GetLayDatCnt("A", kSheet), 2);
}

TEST_F(LegacyPolygonTest, LineThatIsNotThereAddsNothingAndTheEndIsThatOfTheLastFound) {
    AddLines("L", {"0,0 10,0", "10,0 10,10"});
    EXPECT_EQ(Ring({1, 7, 2, -8, 2147483647}), "0 0 0;10 0 0;10 10 0;");
    EXPECT_EQ(Ring({-2147483647 - 1, 1}), "0 0 0;10 0 0;");
}

TEST_F(LegacyPolygonTest, LinesOfOnePointAndOfNoneAddNothing) {
    AddLines("L", {"0,0 10,0", "5,5", ""});
    EXPECT_EQ(Ring({2}), "");
    EXPECT_EQ(Ring({3}), "");
    EXPECT_EQ(Ring({1, 2}), "0 0 0;5 5 0;") << "the point is the end of the last line found";
    EXPECT_EQ(Ring({1, 3}), "0 0 0;10 0 0;") << "without points there is no end";
}

TEST_F(LegacyPolygonTest, CountThatEndsItsLineIsNotTakenAndTheOneBeforeStands) {
    AddLines("L", {"0,0 10,0", "10,0 10,10"});
    ASSERT_TRUE(Read("a.pgn", Header(7, 2) + "A,1,2,x\r\n1\r\n2\r\nA,2,1\r\n1\r\n2\r\n\x1A"));
    EXPECT_EQ(Points(0), "0 0 0;10 0 0;10 10 0;");
    EXPECT_EQ(Points(1), "0 0 0;10 0 0;10 10 0;");
    EXPECT_EQ(LastBlock().dats[1].datID, 2);
    ASSERT_TRUE(Read("a.pgn", Header(2, 1) + "A,1,2\r\n1\r\n2\r\n\x1A"));
    EXPECT_EQ(LastBlock().dats[0].pntCnt, 0) << "before the first item it is 0";
}

TEST_F(LegacyPolygonTest, NegativeCountOfLinesFails) {
    EXPECT_EQ(Read("a.pgn", Header(2, 1) + "A,1,-1,\r\n1\r\n\x1A"), false);
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyPolygonTest, WithoutACodeAllLineLayersOfTheSheetAreSearchedOldestBlockFirst) {
    AddLines("L", {"0,0 1,0", "2,0 3,0"}, 1);
    AddLines("M", {"5,5 6,6", "7,7 8,8"}, 2);
    AddLines("N", {"9,9 9,8"}, 9, 533946);
    EXPECT_EQ(Ring({2}), "2 0 0;3 0 0;") << "both have it";
    EXPECT_EQ(Ring({3}), "7 7 0;8 8 0;");
    EXPECT_EQ(Ring({9}), "") << "another sheet";
}

TEST_F(LegacyPolygonTest, FirstOfLinesWithTheSameIDCounts) {
    ASSERT_TRUE(Read("l.arc", Header(7, 2) + "L,0,4,2\r\n0,0\r\n1,1\r\nL,0,4,2\r\n2,2\r\n3,3\r\n\x1A"));
    EXPECT_EQ(Ring({4}), "0 0 0;1 1 0;");
}

TEST_F(LegacyPolygonTest, LayersOfOtherTypesAreNotSearched) {
    ASSERT_TRUE(store.DigMemAlloc("C", kSheet, kLayPolygon, "", 0));
    ASSERT_TRUE(store.AddDigDat("C", kSheet, 1, 0));
    ASSERT_TRUE(store.AddDigDatPnt("C", kSheet, 1, {1, 1, 0}));
    ASSERT_TRUE(store.AddDigDatPnt("C", kSheet, 1, {2, 2, 0}));
    EXPECT_EQ(Ring({1}), "");
    EXPECT_EQ(Ring({1}, "C"), "1 1 0;2 2 0;") << "but a layer that is named may be of any type";
}

TEST_F(LegacyPolygonTest, BlockWithoutAnIndexEntryIsNotSearched) {
    AddLines("L", {"0,0 1,0"});
    store.DelDigIndex(store.FindDigIndex("L", kSheet));
    EXPECT_EQ(Ring({1}), "");
}

TEST_F(LegacyPolygonTest, SecondBlockWithTheSameKeyIsSearchedAsWell) {
    AddLines("L", {"0,0 1,0"}, 1);
    AddLines("L", {"2,0 3,0"}, 2);
    EXPECT_EQ(Ring({1, 2}), "0 0 0;2 0 0;3 0 0;");
    EXPECT_EQ(Ring({1, 2}, "L"), "0 0 0;1 0 0;") << "by its code the first alone is found";
}

TEST_F(LegacyPolygonTest, NamedLayerAloneIsSearched) {
    AddLines("L", {"0,0 1,0", "2,0 3,0"}, 1);
    AddLines("M", {"5,5 6,6"}, 2);
    EXPECT_EQ(Ring({2}, "M"), "5 5 0;6 6 0;");
    EXPECT_EQ(Ring({1}, "M"), "");
}

TEST_F(LegacyPolygonTest, NamedLayerThatHasNoBlockForTheSheetFailsAndLeavesTheStore) {
    AddLines("L", {"0,0 1,0"}, 1, 533946);
    const std::string before = DumpStore(store);
    EXPECT_EQ(Ring({1}, "L"), "no");
    EXPECT_EQ(Ring({1}, "unknown"), "no");
    EXPECT_EQ(Ring({1}, std::string(60, 'c')), "no");
    EXPECT_EQ(DumpStore(store), before);
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyPolygonTest, HeaderCountsOfPointsAreNotAsked) {
    AddLines("L", {"0,0 1,0 2,0 3,0"});
    ASSERT_TRUE(Read("a.pgn", Header(-5, 1) + "A,1,1,\r\n1\r\n\x1A"));
    EXPECT_EQ(LastBlock().dats[0].pntCnt, 4);
}

TEST_F(LegacyPolygonTest, RectangleTruncatesOnBothSides) {
    AddLines("L", {"10.9,20.9 30.9,5.7 1,6"});
    ASSERT_NE(Ring({1}), "no");
    EXPECT_THAT(Rectangle(LastBlock().dats[0]), ElementsAre(1, 5, 30, 20));
}

TEST_F(LegacyPolygonTest, RingsMayHoldMoreThan30000Points) {
    std::string line;
    for (std::int32_t i = 0; i < 25000; ++i) line += std::to_string(i) + "," + std::to_string(i % 7) + " ";
    AddLines("L", {line, line});
    ASSERT_NE(Ring({1, -2}), "no");
    EXPECT_EQ(LastBlock().dats[0].pntCnt, 2 * 24999 + 1);
    EXPECT_EQ(LastBlock().dats[0].pnts[49998].x, 0);
    EXPECT_EQ(LastBlock().dats[0].pnts[24999].x, 24999);
}

TEST_F(LegacyPolygonTest, LineThatIsNamedAgainAndAgainEndsTheReadAtAMillionPoints) {
    std::string line;
    for (std::int32_t i = 0; i < 1000; ++i) line += "1,1 ";
    AddLines("L", {line});
    EXPECT_NE(Ring(std::vector<std::int32_t>(1000, 1)), "no");
    EXPECT_EQ(LastBlock().dats[0].pntCnt, 1000 * 999 + 1);
    const std::int32_t blockCnt = store.BlockCnt();
    ArrayFaults::FailOver(std::size_t{64} << 20);
    EXPECT_EQ(Ring(std::vector<std::int32_t>(1001, 1)), "no");
    EXPECT_EQ(Ring(std::vector<std::int32_t>(200000, -1)), "no");
    // Many polygons are no way around it.
    std::string items;
    for (std::int32_t i = 0; i < 1001; ++i) items += "A,1,1,\r\n1\r\n";
    EXPECT_FALSE(Read("a.pgn", Header(2003, 1001) + items + "\x1A"));
    EXPECT_EQ(store.BlockCnt(), blockCnt);
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LegacyPolygonTest, LimitGrowsWithTheLines) {
    std::vector<std::string> lines(80);
    for (std::string& line : lines) {
        for (std::int32_t i = 0; i < 1000; ++i) line += "1,1 ";
    }
    AddLines("L", lines);
    EXPECT_NE(Ring(std::vector<std::int32_t>(16 * 80, 1)), "no");
    EXPECT_EQ(Ring(std::vector<std::int32_t>(16 * 80 + 1, 1)), "no");
}

TEST_F(LegacyPolygonTest, ManyReferencesIntoManyLinesAreFoundOneByOne) {
    std::vector<std::string> lines;
    std::vector<std::int32_t> ids;
    for (std::int32_t i = 0; i < 50000; ++i) {
        lines.push_back(std::to_string(i) + ",0 " + std::to_string(i + 1) + ",0");
        ids.push_back(i + 1);
    }
    AddLines("L", lines);
    ASSERT_NE(Ring(ids), "no");
    ASSERT_EQ(LastBlock().dats[0].pntCnt, 50001);
    for (std::size_t i = 0; i <= 50000; ++i) ASSERT_EQ(LastBlock().dats[0].pnts[i].x, static_cast<double>(i));
}

}  // namespace
}  // namespace orvane
