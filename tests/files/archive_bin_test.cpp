#include "tests/files/archive_rig.h"

namespace orvane {
namespace {

class ArchiveBinTest : public ArchiveTest {
protected:
    bool ReadBin(std::string_view version, const std::string& content) {
        files.Put("m.Ovb", content);
        ArcWatch watch(store, none_);
        return version == "1.00" ? ArcReadBin100(store, files, "m.Ovb", watch) : ArcReadBin110(store, files, "m.Ovb", watch);
    }
    bool ReadItem(std::string_view version, const ItemFields& item) {
        return ReadBin(version, BinHeader(version) + ItemRec(version, item));
    }
    bool WriteBin(std::string_view version, IdxTables& tables) {
        ArcWatch watch(store, none_);
        return version == "1.00" ? ArcWriteBin100(store, files, "m.Ovb", tables, watch)
                                 : ArcWriteBin110(store, files, "m.Ovb", tables, watch);
    }
    bool WriteBin(std::string_view version) {
        IdxTables tables;
        return WriteBin(version, tables);
    }
    static std::string Grid() {
        return Packed().I4(2).I4(2).U1(0).U1(255).U1(0).U1(1).U1(7).I4(0x010203).I4(0xFF00FF00).I4(0).I4(-1).bytes;
    }
    static std::vector<DigPnt> GridPnts() { return {{0, 0, 0}, {10, 0, 1}, {0, 10, 2}, {10, 10, 3}}; }
    static StrFields FullStr() {
        StrFields f;
        f.x = 1.5;
        f.y = -2.25;
        f.z = 3;
        f.fntname = "\x82l\x82r \x96\xBE\x92\xA9";
        f.size = 12;
        f.style = 5;
        f.fill = 1;
        f.pos = 4;
        f.uline = 1;
        f.strike = 1;
        f.angle = 45.5;
        f.fcolor = 0x0000FF;
        f.bcolor = 0x00FF00;
        f.text = "A\x83\\B,c";
        return f;
    }
    void SetFullStr(std::string_view code, std::int32_t meshNo, std::int32_t datID) {
        const StrFields f = FullStr();
        ASSERT_TRUE(store.SetDigDatString(code, meshNo, datID, f.x, f.y, f.text));
        TextLook look;
        look.fntname = f.fntname;
        look.size = 12;
        look.style = 5;
        look.pos = 4;
        look.angle = 45.5;
        look.fill = look.uline = look.strike = true;
        look.fcolor = 0x0000FF;
        look.bcolor = 0x00FF00;
        ASSERT_TRUE(store.SetDigDatStrStyle(code, meshNo, datID, look));
        const_cast<DigStr&>(*Item(code, meshNo, datID).str).z = f.z;
    }
    void ExpectFullStr(const DigStr& str) {
        const StrFields f = FullStr();
        EXPECT_EQ(str.x, f.x);
        EXPECT_EQ(str.y, f.y);
        EXPECT_EQ(str.z, f.z);
        EXPECT_EQ(str.fntname, f.fntname);
        EXPECT_EQ(str.size, 12);
        EXPECT_EQ(str.style, 5);
        EXPECT_EQ(str.fill, 1);
        EXPECT_EQ(str.pos, 4);
        EXPECT_EQ(str.uline, 1);
        EXPECT_EQ(str.strike, 1);
        EXPECT_EQ(str.angle, 45.5);
        EXPECT_EQ(str.fcolor, 0x0000FFu);
        EXPECT_EQ(str.bcolor, 0x00FF00u);
        EXPECT_EQ(str.text, f.text);
    }
    /// The same map as items and as a store: a line, a point without points, a grid and a text, in three blocks.
    std::vector<ItemFields> SampleItems(bool withMesh) {
        ItemFields line, bare, grid, text;
        line.meshNo = -5;
        line.datID = 77;
        line.lineTag = -1;
        line.rect = {-1, 2, 4, 6};
        line.pnts = {{-1.5, 2.75, 0.1}, {3.5, 5.5, 1e300}};
        bare.meshNo = -5;
        bare.datID = 78;
        bare.rect = {99999999, 99999999, -99999999, -99999999};
        grid.code = "M";
        grid.rect = {0, 0, 10, 10};
        grid.pnts = GridPnts();
        if (withMesh) grid.mesh = Grid();
        text.code = "T";
        text.rect = {1, 1, 1, 1};
        text.pnts = {{1, 1, 0}};
        text.str = StrRec(FullStr());
        return {line, bare, grid, text};
    }
    void MakeSample() {
        ASSERT_TRUE(store.MakeLayer("A", kLayLine));
        MakeBlock("A", -5);
        AddItem("A", -5, 77, {{-1.5, 2.75, 0.1}, {3.5, 5.5, 1e300}}, -1);
        const_cast<DigDat&>(Item("A", -5, 77)).rect = {-1, 2, 4, 6};
        AddItem("A", -5, 78);
        MakeBlock("M", 0, kLayMesh);
        AddItem("M", 0, 1);
        ASSERT_TRUE(store.SetMeshDat("M", 0, 1, 2, 2, GridPnts()));
        DigDat& grid = const_cast<DigDat&>(Item("M", 0, 1));
        grid.rect = {0, 0, 10, 10};
        const std::uint8_t flags[] = {255, 0, 1, 7};
        const std::uint32_t colors[] = {0x010203, 0xFF00FF00, 0, 0xFFFFFFFF};
        for (std::size_t i = 0; i < 4; ++i) {
            grid.meshAttr->useFlag[i] = flags[i];
            grid.meshAttr->meshColor[i] = colors[i];
        }
        MakeBlock("T", 0, kLayText);
        AddItem("T", 0, 1, {{1, 1, 0}});
        const_cast<DigDat&>(Item("T", 0, 1)).rect = {1, 1, 1, 1};
        SetFullStr("T", 0, 1);
    }
    std::string Bytes(std::string_view version, const std::vector<ItemFields>& items) {
        std::string bytes = BinHeader(version);
        for (const ItemFields& item : items) bytes += ItemRec(version, item);
        return bytes;
    }

private:
    ArcProgress none_;
};

TEST_F(ArchiveBinTest, RecordsAreAsLongAsTold) {
    EXPECT_EQ(ItemRec("1.00", {}).size(), 81u);
    EXPECT_EQ(ItemRec("1.10", {}).size(), 86u);
    EXPECT_EQ(StrRec({}).size(), 115u);
    EXPECT_EQ(IdxBlock({}).size(), 91u);
    EXPECT_EQ(IdxItem({}, 0).size(), 20u);
    EXPECT_EQ(ManageRec("", 0, "", 0, 0).size(), 583u);
}

TEST_F(ArchiveBinTest, WriterMakesTheBytesOfBothVersions) {
    MakeSample();
    ASSERT_TRUE(WriteBin("1.10"));
    EXPECT_EQ(files.Content("m.Ovb"), Bytes("1.10", SampleItems(true)));
    ASSERT_TRUE(WriteBin("1.00"));
    EXPECT_EQ(files.Content("m.Ovb"), Bytes("1.00", SampleItems(false)));
}

TEST_F(ArchiveBinTest, ReaderTakesTheBytesOfBothVersions) {
    for (const std::string_view version : {"1.00", "1.10"}) {
        const bool is110 = version == "1.10";
        store.Init();
        for (const char* code : {"A", "M", "T"}) ASSERT_TRUE(store.MakeLayer(code, kLayLine));
        ASSERT_TRUE(ReadBin(version, Bytes(version, SampleItems(is110))));
        EXPECT_EQ(store.BlockCnt(), 3);
        EXPECT_EQ(BlockOf("A", -5).datCnt, 2);
        const DigDat& line = Item("A", -5, 77);
        EXPECT_EQ(line.lineTag, -1) << "the sign comes back";
        EXPECT_EQ(line.rect, (Rect{-1, 2, 4, 6}));
        EXPECT_EQ(line.orgRect, line.rect);
        EXPECT_EQ(line.subLayNo, 0);
        EXPECT_EQ(line.clipFlg, 1);
        EXPECT_EQ(line.drawnFlg, 0);
        EXPECT_EQ(line.active, 0);
        ASSERT_EQ(line.pntCnt, 2);
        EXPECT_EQ(line.pnts[0].x, -1.5);
        EXPECT_EQ(line.pnts[0].y, 2.75);
        EXPECT_EQ(line.pnts[0].z, 0.1);
        EXPECT_EQ(line.pnts[1].z, 1e300);
        EXPECT_FALSE(line.orgPnts);
        EXPECT_EQ(line.meshAttr, nullptr);
        EXPECT_EQ(line.str, nullptr);
        const DigDat& grid = Item("M", 0, 1);
        ASSERT_EQ(grid.pntCnt, 4);
        EXPECT_EQ(grid.pnts[3].y, 10);
        ASSERT_EQ(grid.meshAttr != nullptr, is110);
        if (is110) {
            EXPECT_EQ(grid.meshAttr->hcnt, 2);
            EXPECT_EQ(grid.meshAttr->vcnt, 2);
            EXPECT_EQ(grid.meshAttr->useFlag[0], 255) << "the byte is kept";
            EXPECT_EQ(grid.meshAttr->useFlag[3], 7);
            EXPECT_EQ(grid.meshAttr->meshColor[1], 0xFF00FF00u);
            EXPECT_EQ(grid.meshAttr->meshColor[3], 0xFFFFFFFFu);
        }
        ASSERT_NE(Item("T", 0, 1).str, nullptr);
        ExpectFullStr(*Item("T", 0, 1).str);
    }
}

TEST_F(ArchiveBinTest, HeaderAloneHasNothingToReadSoTheAnswerIsFalse) {
    EXPECT_FALSE(ReadBin("1.10", BinHeader("1.10")));
    PutSet("1.10", {});
    EXPECT_FALSE(Read());
    EXPECT_EQ(store.LayerCnt(), 1) << "the layers are there nevertheless";
}

TEST_F(ArchiveBinTest, MeshItemSavedIn100ComesBackWithItsPointsAndNoGrid) {
    MakeBlock("M", 1, kLayMesh);
    AddItem("M", 1, 1);
    ASSERT_TRUE(store.SetMeshDat("M", 1, 1, 2, 2, GridPnts()));
    ASSERT_TRUE(Write("m.Ovb", "1.00"));
    store.Init();
    ASSERT_TRUE(Read());
    EXPECT_EQ(Item("M", 1, 1).pntCnt, 4);
    EXPECT_EQ(Item("M", 1, 1).meshAttr, nullptr);
}

TEST_F(ArchiveBinTest, LineTag200ComesBackAsMinus56) {
    MakeBlock("A", 1);
    AddItem("A", 1, 1, {{0, 0, 0}}, 200);
    AddItem("A", 1, 2, {{0, 0, 0}}, 127);
    AddItem("A", 1, 3, {{0, 0, 0}}, -1);
    ASSERT_TRUE(Write());
    store.Init();
    ASSERT_TRUE(Read());
    EXPECT_EQ(Item("A", 1, 1).lineTag, -56);
    EXPECT_EQ(Item("A", 1, 2).lineTag, 127);
    EXPECT_EQ(Item("A", 1, 3).lineTag, -1);
}

TEST_F(ArchiveBinTest, ItemWithoutPointsWritesNoneAndComesBackWithNull) {
    MakeBlock("A", 1);
    AddItem("A", 1, 1);
    ASSERT_TRUE(Write());
    EXPECT_EQ(files.Content("m.Ovb").size(), 40u + 86u);
    store.Init();
    ASSERT_TRUE(Read());
    EXPECT_EQ(Item("A", 1, 1).pntCnt, 0);
    EXPECT_FALSE(Item("A", 1, 1).pnts);
}

TEST_F(ArchiveBinTest, EmptyTextIsAText) {
    MakeBlock("A", 1, kLayText);
    AddItem("A", 1, 1, {{0, 0, 0}});
    ASSERT_TRUE(store.SetDigDatString("A", 1, 1, 1, 2, ""));
    ASSERT_TRUE(Write());
    store.Init();
    ASSERT_TRUE(Read());
    ASSERT_NE(Item("A", 1, 1).str, nullptr);
    EXPECT_EQ(Item("A", 1, 1).str->text, "");
}

TEST_F(ArchiveBinTest, SizeStyleAndPositionAreNarrowedToASignedByte) {
    MakeBlock("A", 1, kLayText);
    AddItem("A", 1, 1, {{0, 0, 0}});
    ASSERT_TRUE(store.SetDigDatString("A", 1, 1, 0, 0, "t"));
    TextLook look;
    look.size = 128;
    look.style = 256 + 7;
    look.pos = -1;
    ASSERT_TRUE(store.SetDigDatStrStyle("A", 1, 1, look));
    ASSERT_TRUE(Write());
    store.Init();
    ASSERT_TRUE(Read());
    EXPECT_EQ(Item("A", 1, 1).str->size, -128);
    EXPECT_EQ(Item("A", 1, 1).str->style, 7);
    EXPECT_EQ(Item("A", 1, 1).str->pos, -1);
}

TEST_F(ArchiveBinTest, NewBlockTakesTheRectangleOfItsFirstItemAndWidensByTheOthers) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ItemFields a, b;
    a.rect = {10, 20, 30, 40};
    b.rect = {5, 25, 50, 35};
    b.datID = 2;
    ASSERT_TRUE(ReadBin("1.10", Bytes("1.10", {a, b})));
    const DigBlock& block = BlockOf("A", 0);
    EXPECT_EQ(block.minX, 5);
    EXPECT_EQ(block.minY, 20);
    EXPECT_EQ(block.maxX, 50);
    EXPECT_EQ(block.maxY, 40);
    EXPECT_EQ(block.orgMinX, 10) << "not widened";
    EXPECT_EQ(block.orgMinY, 20);
    EXPECT_EQ(block.orgMaxX, 30);
    EXPECT_EQ(block.orgMaxY, 40);
    EXPECT_EQ(block.blkState, 1);
    EXPECT_EQ(block.path, "");
    EXPECT_EQ(block.GX, 0);
    EXPECT_EQ(block.recCnt, 0);
    EXPECT_EQ(block.datMax, 1000);
}

TEST_F(ArchiveBinTest, BlockThatExistsGetsTheItemsWithNoTestForEqualIDs) {
    MakeBlock("A", 0);
    AddItem("A", 0, 1, {{100, 100, 0}});
    ItemFields item;
    item.rect = {-7, -8, 9, 10};
    ASSERT_TRUE(ReadItem("1.10", item));
    EXPECT_EQ(AllIDs(), (IDs{1, 1}));
    EXPECT_EQ(BlockOf("A", 0).minX, -7);
    EXPECT_EQ(BlockOf("A", 0).maxY, 100);
    EXPECT_EQ(BlockOf("A", 0).path, "p");
}

TEST_F(ArchiveBinTest, CapacityIsToldInStepsOfAThousand) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ASSERT_TRUE(ReadBin("1.10", Bytes("1.10", std::vector<ItemFields>(1001))));
    EXPECT_EQ(BlockOf("A", 0).datCnt, 1001);
    EXPECT_EQ(BlockOf("A", 0).datMax, 2000);
}

TEST_F(ArchiveBinTest, ReaderReusesTheLowestFreeSlotAndDoesNotSort) {
    MakeBlock("A", 1);
    MakeBlock("B", 1);
    ASSERT_EQ(store.SetLayIndex("A", 9), 1);
    ASSERT_EQ(store.SetLayIndex("B", 1), 1);
    store.SortDigIndex();
    MakeBlock("C", 1);
    ASSERT_TRUE(store.DigMemDelete("C", 1));
    ItemFields item;
    item.meshNo = 2;
    ASSERT_TRUE(ReadItem("1.10", item));
    EXPECT_EQ(store.FindBlock("A", 2).block, 2);
    EXPECT_EQ(store.BlockCnt(), 3);
    EXPECT_EQ(store.FindDigIndex("A", 2), 2) << "behind B, although A's blocks are drawn first";
}

TEST_F(ArchiveBinTest, ItemsOfAnUnknownCodeGetABlockEach) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ItemFields item;
    item.code = "X";
    ASSERT_TRUE(ReadBin("1.10", Bytes("1.10", {item, item, item})));
    EXPECT_EQ(store.BlockCnt(), 3);
    EXPECT_EQ(store.GetDigIndexCnt(), 3);
    EXPECT_EQ(store.FindDigIndex("X", 0), -1);
    for (std::int32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(store.Block(i).code.View(), "X");
        EXPECT_EQ(store.Block(i).datCnt, 1);
        EXPECT_EQ(store.Index()[static_cast<std::size_t>(i)], (DigIndex{i, 1})) << "the first unused layer record";
    }
}

TEST_F(ArchiveBinTest, IndexFilledUpEndsTheReadWithFalseAndKeepsWhatCameBefore) {
    ItemFields item;
    item.code = "X";
    const std::string record = ItemRec("1.00", item);
    std::string content = BinHeader("1.00");
    for (int i = 0; i < kMaxDigIndex + 5; ++i) content += record;
    EXPECT_FALSE(ReadBin("1.00", content));
    EXPECT_EQ(store.GetDigIndexCnt(), kMaxDigIndex);
    EXPECT_EQ(store.BlockCnt(), kMaxDigIndex);
}

TEST_F(ArchiveBinTest, NegativeCountsEndTheReading) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ItemFields good, bad;
    std::string negative = ItemRec("1.10", bad);
    negative.replace(75, 4, Packed().I4(-1).bytes);
    EXPECT_TRUE(ReadBin("1.10", BinHeader("1.10") + ItemRec("1.10", good) + negative + ItemRec("1.10", good)));
    EXPECT_EQ(AllIDs(), (IDs{1}));
    bad.str = StrRec({});
    negative = ItemRec("1.10", bad);
    negative.replace(negative.size() - 4, 4, Packed().I4(-1).bytes);
    EXPECT_FALSE(ReadBin("1.10", BinHeader("1.10") + negative));
}

TEST_F(ArchiveBinTest, CountsBeyondTheFileAreRefusedBeforeAnythingIsAllocated) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    ItemFields item;
    item.pntCnt = 2147483647;
    ArrayFaults::Clear();
    EXPECT_FALSE(ReadItem("1.10", item));
    item.pntCnt = 0;
    item.str = StrRec({});
    item.str.replace(111, 4, Packed().I4(2147483647).bytes);
    EXPECT_FALSE(ReadItem("1.10", item));
    EXPECT_LT(ArrayFaults::Largest_bytes(), 10000u);
}

TEST_F(ArchiveBinTest, GridCountsThatDoNotFitThePointsAreKeptAndHarmless) {
    ASSERT_TRUE(store.MakeLayer("M", kLayMesh));
    ItemFields item;
    item.code = "M";
    item.pnts = {{0, 0, 0}};
    item.mesh = Packed().I4(2147483647).I4(2147483647).U1(0).U1(5).I4(6).bytes;
    ASSERT_TRUE(ReadItem("1.10", item));
    const DigMeshAttr& mesh = *Item("M", 0, 1).meshAttr;
    EXPECT_EQ(mesh.hcnt, 2147483647);
    EXPECT_EQ(MeshSize(mesh), 1u);
    EXPECT_EQ(mesh.useFlag[0], 5);
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_TRUE(WriteBin("1.10"));
    EXPECT_EQ(files.Content("m.Ovb"), BinHeader("1.10") + ItemRec("1.10", item)) << "and goes back as it came";
}

TEST_F(ArchiveBinTest, GridWithFewerEntriesThanPointsIsWrittenWithZeros) {
    MakeBlock("M", 0, kLayMesh);
    AddItem("M", 0, 1);
    ASSERT_TRUE(store.SetMeshDat("M", 0, 1, 1, 1, std::vector<DigPnt>{{1, 1, 0}}));
    ASSERT_TRUE(store.AddDigDatPnt("M", 0, 1, {2, 2, 0}));
    ASSERT_TRUE(WriteBin("1.10"));
    const std::string grid = files.Content("m.Ovb").substr(40 + 86 + 48);
    EXPECT_EQ(grid, Packed().I4(1).I4(1).U1(0).U1(255).U1(0).I4(0).I4(0).bytes);
}

TEST_F(ArchiveBinTest, TextEndsAtAZeroByteAndAFontFieldWithoutOneWithTheField) {
    ASSERT_TRUE(store.MakeLayer("A", kLayText));
    StrFields str;
    str.fntname = std::string(65, 'f');
    str.text = std::string("ab\0cd", 5);
    ItemFields item;
    item.str = StrRec(str);
    ASSERT_TRUE(ReadItem("1.10", item));
    EXPECT_EQ(Item("A", 0, 1).str->text, "ab");
    EXPECT_EQ(Item("A", 0, 1).str->fntname, std::string(64, 'f'));
}

TEST_F(ArchiveBinTest, WordsThatNobodyReadsMayHoldAnything) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    std::string record = ItemRec("1.10", {});
    record.replace(82, 4, "\x7F\x7F\x7F\x7F");
    ASSERT_TRUE(ReadBin("1.10", BinHeader("1.10") + record + record));
    EXPECT_EQ(AllIDs(), (IDs{1, 1}));
}

TEST_F(ArchiveBinTest, ManyPointsPassThroughTheBufferUnchanged) {
    MakeBlock("A", 0);
    std::vector<DigPnt> pnts;
    for (int i = 0; i < 30000; ++i) pnts.push_back({i * 0.5, -i * 0.25, i / 3.0});
    AddItem("A", 0, 1, pnts);
    AddItem("A", 0, 2, {{1, 2, 3}});
    AddItem("A", 0, 3, pnts);
    ASSERT_TRUE(Write());
    store.Init();
    ASSERT_TRUE(Read());
    for (const std::int32_t datID : {1, 3}) {
        const DigDat& dat = Item("A", 0, datID);
        ASSERT_EQ(dat.pntCnt, 30000);
        for (std::size_t i = 0; i < pnts.size(); ++i) {
            ASSERT_EQ(dat.pnts[i].x, pnts[i].x) << i;
            ASSERT_EQ(dat.pnts[i].y, pnts[i].y) << i;
            ASSERT_EQ(dat.pnts[i].z, pnts[i].z) << i;
        }
    }
    EXPECT_EQ(Item("A", 0, 2).pnts[0].y, 2);
}

TEST_F(ArchiveBinTest, FreeSlotsAndOtherStatesAreNotWrittenAndEmptyBlocksAreCounted) {
    MakeBlock("A", 1);
    MakeBlock("B", 1);
    MakeBlock("C", 1);
    AddItem("C", 1, 9);
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    IdxTables tables;
    ASSERT_TRUE(WriteBin("1.10", tables));
    ASSERT_EQ(tables.nBlocks, 2);
    EXPECT_EQ(tables.nItems, 1);
    EXPECT_EQ(tables.blocks[0].count, 0);
    EXPECT_EQ(tables.blocks[1].code.View(), "C");
    EXPECT_EQ(tables.blocks[1].first, 0);
    store.MutableBlock(2).blkState = 3;
    IdxTables others;
    ASSERT_TRUE(WriteBin("1.10", others));
    EXPECT_EQ(others.nBlocks, 1);
}

TEST_F(ArchiveBinTest, NoBlockRecordMakesNoFileAndFreeSlotsAloneAnswerFalse) {
    EXPECT_FALSE(WriteBin("1.10"));
    EXPECT_EQ(files.createCnt, 0);
    MakeBlock("A", 1);
    ASSERT_TRUE(store.DigMemDelete("A", 1));
    EXPECT_FALSE(WriteBin("1.10"));
    EXPECT_EQ(files.Content("m.Ovb"), BinHeader("1.10"));
}

TEST_F(ArchiveBinTest, SizeIsKnownBeforehandAndBeyondItsLimitNothingIsWritten) {
    MakeSample();
    for (const ArcVersion version : {ArcVersion::V100, ArcVersion::V110}) {
        ASSERT_TRUE(WriteBin(VersionText(version)));
        EXPECT_EQ(BinDataSize_bytes(store, version), files.Content("m.Ovb").size());
    }
    files.files.clear();
    files.createCnt = 0;
    // A count that no test could fill: 90 million points take more than 2^31 bytes. Nobody may look at the points themselves.
    DigDat& dat = const_cast<DigDat&>(Item("A", -5, 78));
    dat.pntCnt = 90000000;
    EXPECT_FALSE(Write());
    EXPECT_EQ(files.createCnt, 0);
    dat.pntCnt = 0;
    EXPECT_TRUE(Write());
}

TEST_F(ArchiveBinTest, OffsetsOfTheIndexAreThoseOfTheRecords) {
    MakeSample();
    IdxTables tables;
    ASSERT_TRUE(WriteBin("1.10", tables));
    const std::vector<ItemFields> items = SampleItems(true);
    ASSERT_EQ(tables.items.size(), 4u);
    std::int32_t offset = 40;
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(tables.items[i].offset, offset);
        EXPECT_EQ(tables.items[i].rect, items[i].rect);
        offset += static_cast<std::int32_t>(ItemRec("1.10", items[i]).size());
    }
}

}  // namespace
}  // namespace orvane
