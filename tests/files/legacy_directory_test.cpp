// A folder of legacy files read at once.
#include "tests/files/legacy_fixture.h"

namespace orvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A name in the folder "d".
std::string In(const std::string& name) { return std::string("d") + kPathSeparator + name; }

class LegacyFolderTest : public LegacyTest {
protected:
    void PutPoint(const std::string& name, const std::string& code) {
        files.Put(In(name), Header(2, 1) + code + ",1,5,5\r\n\x1A");
    }
    void PutLine(const std::string& name, const std::string& code) {
        files.Put(In(name), Header(4, 1) + code + ",0,1,2\r\n0,0\r\n9,9\r\n\x1A");
    }
    void PutPolygon(const std::string& name, const std::string& code) {
        files.Put(In(name), Header(3, 1) + code + ",1,1,\r\n1\r\n\x1A");
    }
    /// Codes of the index's layers, in order.
    std::vector<std::string> Drawn() {
        std::vector<std::string> codes;
        for (const DigIndex& entry : store.Index()) codes.emplace_back(store.Layer(entry.layer).code.View());
        return codes;
    }
};

TEST_F(LegacyFolderTest, LinesComeBeforePolygonsAndThesePointsByNameWithinAPattern) {
    PutPoint("b.pnt", "P2");
    PutPoint("a.PNT", "P1");
    PutPolygon("1.pgn", "A");
    PutLine("z.arc", "L2");
    PutLine("y.Arc", "L1");
    files.Put(In("readme.txt"), "FH");
    ASSERT_TRUE(ReadFolder("d"));
    EXPECT_THAT(files.opened, ElementsAre(In("y.Arc"), In("z.arc"), In("1.pgn"), In("a.PNT"), In("b.pnt")));
    EXPECT_EQ(store.Block(2).dats[0].pntCnt, 2) << "the lines were there";
    EXPECT_EQ(store.GetLayPath("A", kSheet), In("1.pgn"));
}

TEST_F(LegacyFolderTest, PolygonLayersGoToTheBottomAndTheIndexIsSorted) {
    PutLine("a.arc", "L");
    PutPolygon("a.pgn", "A");
    PutPoint("a.pnt", "P");
    ASSERT_TRUE(ReadFolder("d"));
    EXPECT_EQ(store.Layer(store.FindLayDef("A")).layIndex, 9999);
    EXPECT_EQ(store.Layer(store.FindLayDef("P")).layIndex, 3);
    EXPECT_THAT(Drawn(), ElementsAre("A", "P", "L"));
}

TEST_F(LegacyFolderTest, LayersOfPolygonFilesReadBeforeGoToTheBottomAsWell) {
    files.Put("old.PGN", Header(3, 1) + "OLD,1,1,\r\n1\r\n\x1A");
    ASSERT_TRUE(LegacyFileRead(store, files, "old.PGN", {}, Message()));
    EXPECT_EQ(store.Layer(0).layIndex, 1) << "a file alone sets no key";
    ASSERT_TRUE(store.DigMemAlloc("X", 1, kLayPolygon, "pgn", 5));
    ASSERT_TRUE(store.DigMemAlloc("Y", 1, kLayPoint, "a.pgn", 5));
    ASSERT_TRUE(store.DigMemAlloc("Z", 1, kLayPolygon, "b.pgn", 5));
    ASSERT_TRUE(store.DigMemDelete("Z", 1));
    PutPoint("a.pnt", "P");
    ASSERT_TRUE(ReadFolder("d"));
    EXPECT_EQ(store.Layer(store.FindLayDef("OLD")).layIndex, 9999);
    EXPECT_EQ(store.Layer(store.FindLayDef("X")).layIndex, 5) << "three letters are no name";
    EXPECT_EQ(store.Layer(store.FindLayDef("Y")).layIndex, 9999) << "the path decides, not the type";
    EXPECT_EQ(store.Layer(store.FindLayDef("Z")).layIndex, 5) << "the block is gone";
}

TEST_F(LegacyFolderTest, FolderWithPointsAloneIsRead) {
    PutPoint("a.pnt", "P");
    EXPECT_TRUE(ReadFolder("d"));
    EXPECT_EQ(store.BlockCnt(), 1);
}

TEST_F(LegacyFolderTest, FolderWithoutAMatchFailsAndSortsNothing) {
    ASSERT_TRUE(store.DigMemAlloc("A", 1, kLayPolygon, "a.pgn", 1));
    ASSERT_TRUE(store.DigMemAlloc("B", 1, kLayPoint, "", 2));
    ASSERT_EQ(store.SetLayIndex("A", 3), 1);
    files.Put(In("a.txt"), "FH");
    EXPECT_FALSE(ReadFolder("d"));
    EXPECT_FALSE(ReadFolder("e"));
    EXPECT_THAT(Drawn(), ElementsAre("B", "A"));
    EXPECT_EQ(store.Layer(store.FindLayDef("A")).layIndex, 3);
    store.SortDigIndex();
    EXPECT_THAT(Drawn(), ElementsAre("A", "B"));
}

TEST_F(LegacyFolderTest, FileThatFailsIsPassedOver) {
    files.Put(In("a.arc"), "no header\r\n");
    PutLine("b.arc", "L");
    files.Put(In("a.pnt"), Header(2, 1) + "P,7,1,2,3,4\r\n\x1A");
    PutPoint("b.pnt", "P");
    ASSERT_TRUE(ReadFolder("d"));
    EXPECT_EQ(store.BlockCnt(), 2);
    EXPECT_THAT(messages, ElementsAre(Contradiction(In("a.pnt"))));
}

TEST_F(LegacyFolderTest, FolderWhoseFilesAllFailIsReadNevertheless) {
    files.Put(In("a.arc"), "no header\r\n");
    EXPECT_TRUE(ReadFolder("d"));
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(LegacyFolderTest, TypeSelectsThePrefix) {
    PutPoint("a.pnt", "A");
    PutPoint("k-a.pnt", "K");
    PutPoint("R-a.pnt", "R");
    const std::pair<std::int32_t, std::vector<std::string>> cases[] = {
        {0, {In("R-a.pnt"), In("a.pnt"), In("k-a.pnt")}},
        {1, {In("k-a.pnt")}},
        {2, {In("R-a.pnt")}},
        {3, {In("R-a.pnt"), In("a.pnt"), In("k-a.pnt")}},
        {-1, {In("R-a.pnt"), In("a.pnt"), In("k-a.pnt")}},
        {32767, {In("R-a.pnt"), In("a.pnt"), In("k-a.pnt")}},
    };
    for (const auto& [type, names] : cases) {
        files.opened.clear();
        EXPECT_TRUE(ReadFolder("d", type));
        EXPECT_EQ(files.opened, names) << type;
    }
    EXPECT_THAT(files.listed[3], In("k-*.arc"));
}

TEST_F(LegacyFolderTest, SeparatorIsAddedUnlessThePathEndsInOne) {
    PutPoint("a.pnt", "P");
    EXPECT_TRUE(ReadFolder(In("")));
    EXPECT_TRUE(ReadFolder("d"));
    EXPECT_THAT(files.opened, ElementsAre(In("a.pnt"), In("a.pnt")));
    ReadFolder("");
    EXPECT_EQ(files.listed.back(), std::string(1, kPathSeparator) + "*.pnt");
}

TEST_F(LegacyFolderTest, SecondByteOfACharacterIsNoSeparator) {
    // The second byte of this character is that of a backslash.
    const std::string folder = "\x95\x5C";
    files.Put(folder + kPathSeparator + "a.pnt", Header(2, 1) + "P,1,5,5\r\n\x1A");
    EXPECT_TRUE(ReadFolder(folder));
    EXPECT_EQ(store.BlockCnt(), 1);
    EXPECT_FALSE(EndsInSeparator(folder));
    EXPECT_TRUE(EndsInSeparator(folder + kPathSeparator));
    EXPECT_FALSE(EndsInSeparator(""));
}

TEST_F(LegacyFolderTest, HostThatEmptiesTheStoreInsideAMessageEndsTheScan) {
    files.Put(In("a.arc"), Header(3, 1) + "L,0,1,1\r\n5\r\n\x1A");
    PutLine("b.arc", "L");
    PutPoint("a.pnt", "P");
    onMessage = [this] { store.Init(); };
    EXPECT_FALSE(ReadFolder("d"));
    EXPECT_THAT(files.opened, ElementsAre(In("a.arc")));
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(LegacyFolderTest, HostMayDeleteAndMakeBlocksInsideAMessage) {
    PutLine("a.arc", "L");
    files.Put(In("b.arc"), Header(3, 1) + "L,0,1,1\r\n5\r\n\x1A");
    PutPolygon("a.pgn", "A");
    onMessage = [this] {
        EXPECT_EQ(store.DigMemDeleteLay("L"), 1);
        ASSERT_TRUE(store.DigMemAlloc("N", 1, kLayLine, "", 0));
    };
    EXPECT_TRUE(ReadFolder("d"));
    EXPECT_EQ(store.GetLayDatCnt("A", kSheet), 1);
    EXPECT_THAT(Drawn(), ElementsAre("A", "N"));
}

TEST_F(LegacyFolderTest, ProgressIsToldAfterEachFile) {
    PutLine("a.arc", "L");
    PutPolygon("a.pgn", "A");
    PutPoint("a.pnt", "P");
    PutPoint("b.pnt", "Q");
    std::vector<double> told;
    EXPECT_TRUE(LegacyDirRead(store, files, "d", 0, Message(), [&](double done) {
        told.push_back(done);
        return true;
    }));
    EXPECT_THAT(told, ElementsAre(0.25, 0.5, 0.75, 1));
}

TEST_F(LegacyFolderTest, CancelledReadKeepsWhatItHasInItsPlace) {
    PutLine("a.arc", "L");
    PutPolygon("a.pgn", "A");
    PutPoint("a.pnt", "P");
    EXPECT_FALSE(LegacyDirRead(store, files, "d", 0, Message(), [](double done) { return done < 0.5; }));
    EXPECT_EQ(files.opened.size(), 2U);
    EXPECT_THAT(Drawn(), ElementsAre("A", "L"));
}

TEST_F(LegacyFolderTest, HostThatEmptiesTheStoreInsideTheProgressEndsTheScan) {
    PutLine("a.arc", "L");
    PutPoint("a.pnt", "P");
    EXPECT_FALSE(LegacyDirRead(store, files, "d", 0, Message(), [this](double) {
        store.Init();
        return true;
    }));
    EXPECT_EQ(files.opened.size(), 1U);
    EXPECT_EQ(store.BlockCnt(), 0);
}

}  // namespace
}  // namespace orvane
