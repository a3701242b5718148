#include "tests/files/archive_rig.h"

namespace orvane {
namespace {

class ArchiveSetTest : public ArchiveTest {
protected:
    void MakeMap() {
        MakeBlock("A", 1, kLayLine, "dir\\one.arc");
        store.MutableBlock(0).GX = 1000;
        store.MutableBlock(0).GY = -2000;
        AddItem("A", 1, 11, {{1, 2, 0}, {3, 4, 0}});
        MakeBlock("A", 2, kLayLine, "");
        store.MutableBlock(1).GX = 77;
        AddItem("A", 2, 12, {{5, 5, 0}});
    }
    /// The other items of the set that MakeMap saves, in 1.10.
    static std::vector<ItemFields> MapItems() {
        ItemFields one, two;
        one.meshNo = 1;
        one.datID = 11;
        one.rect = {1, 2, 3, 4};
        one.pnts = {{1, 2, 0}, {3, 4, 0}};
        two.meshNo = 2;
        two.datID = 12;
        two.rect = {5, 5, 5, 5};
        two.pnts = {{5, 5, 0}};
        return {one, two};
    }
};

TEST_F(ArchiveSetTest, SaveMakesEveryByteOfTheSet) {
    MakeMap();
    ASSERT_TRUE(Write("x.OVB", ""));
    EXPECT_EQ(files.files.size(), 4u);
    const std::vector<ItemFields> items = MapItems();
    LayerFields layer;
    layer.layIndex = 0;
    EXPECT_EQ(files.Content("x.Ovl"), LayerHeader("1.10") + LayerRec("1.10", layer));
    EXPECT_EQ(files.Content("x.Ovb"), BinHeader("1.10") + ItemRec("1.10", items[0]) + ItemRec("1.10", items[1]));
    // A new item's rectangle is grown by truncating and by rounding half up: whole coordinates give themselves.
    EXPECT_EQ(files.Content("x.Ovi"), IndexHeader("1.10") + Packed().I4(2).I4(2).bytes + IdxBlock({"A", 1, 2, 3, 4, 1, 0}) +
                                          IdxBlock({"A", 5, 5, 5, 5, 1, 1}) + IdxItem({1, 2, 3, 4}, 40) +
                                          IdxItem({5, 5, 5, 5}, 40 + 86 + 48));
    EXPECT_EQ(files.Content("x.Ovm"), ManageHeader("1.10") + ManageRec("A", 1, "dir\\one.arc", 1000, -2000));
}

TEST_F(ArchiveSetTest, ReadOfAWholeSetGivesTheMapButForTheOriginOfABlockWithoutAPath) {
    MakeMap();
    ASSERT_TRUE(Write());
    store.Init();
    ASSERT_TRUE(Read());
    EXPECT_EQ(AllIDs(), (IDs{11, 12}));
    EXPECT_EQ(BlockOf("A", 1).path, "dir\\one.arc");
    EXPECT_EQ(BlockOf("A", 1).GX, 1000);
    EXPECT_EQ(BlockOf("A", 1).GY, -2000);
    EXPECT_EQ(BlockOf("A", 2).GX, 0) << "lost with the path that it does not have";
}

TEST_F(ArchiveSetTest, NameMayEndInAnyCaseAndTheSiblingsDoNotFollowIt) {
    MakeMap();
    for (const char* name : {"x.ovb", "x.OVB", "x.Ovb", "x.oVb"}) {
        files.files.clear();
        ASSERT_TRUE(Write(name)) << name;
        for (const char* sibling : {"x.Ovl", "x.Ovi", "x.Ovm", "x.Ovb"})
            EXPECT_TRUE(files.Has(sibling)) << name << ' ' << sibling;
        EXPECT_EQ(files.files.size(), 4u) << name;
        EXPECT_TRUE(Read({}, name)) << name;
    }
}

TEST_F(ArchiveSetTest, BareNameIsABaseToTheSaveAndRefusedByTheRead) {
    MakeMap();
    ASSERT_TRUE(Write("bare"));
    EXPECT_TRUE(files.Has("bare.Ovb"));
    files.openCnt = 0;
    EXPECT_FALSE(Read({}, "bare"));
    EXPECT_EQ(files.openCnt, 0);
    EXPECT_FALSE(Read({}, ""));
    EXPECT_FALSE(Read({}, "ovb"));
    ASSERT_TRUE(Write("x.Ovb.bak"));
    EXPECT_TRUE(files.Has("x.Ovb.bak.Ovl"));
    ASSERT_TRUE(Write(".Ovb"));
    EXPECT_TRUE(files.Has(".Ovl"));
}

TEST_F(ArchiveSetTest, NameWhoseLastCharactersHaveBytesLikeLettersIsTakenAsItStands) {
    MakeMap();
    const std::string base = "\x83\x5C\x95\x5C";
    ASSERT_TRUE(Write(base + ".Ovb"));
    EXPECT_TRUE(files.Has(base + ".Ovl"));
    EXPECT_TRUE(Read({}, base + ".Ovb"));
}

TEST_F(ArchiveSetTest, OtherVersionThanTheTwoWritesNothing) {
    MakeMap();
    for (const char* version : {"1.0", "1.20", " 1.10", "1.100", "2"}) EXPECT_FALSE(Write("m.Ovb", version)) << version;
    EXPECT_EQ(files.createCnt, 0);
    EXPECT_TRUE(Write("m.Ovb", "1.00"));
    EXPECT_EQ(ArcGetVersion(files, "m", false), "1.00");
}

TEST_F(ArchiveSetTest, StoreWithoutPathsSavesEverythingAndAnswersFalse) {
    MakeBlock("A", 1, kLayLine, "");
    AddItem("A", 1, 5);
    EXPECT_FALSE(Write());
    EXPECT_EQ(files.files.size(), 3u);
    EXPECT_FALSE(files.Has("m.Ovm"));
    store.Init();
    EXPECT_TRUE(Read()) << "what it left is whole";
    EXPECT_EQ(AllIDs(), (IDs{5}));
}

TEST_F(ArchiveSetTest, LayersWithoutABlockSaveTheLayersAlone) {
    ASSERT_TRUE(store.MakeLayer("A", kLayLine));
    EXPECT_FALSE(Write());
    EXPECT_EQ(files.files.size(), 1u);
    EXPECT_TRUE(files.Has("m.Ovl"));
}

TEST_F(ArchiveSetTest, EmptyStoreAndStoreBeforeInitSaveNothing) {
    EXPECT_FALSE(Write());
    MakeMap();
    store.FreeAll();
    EXPECT_FALSE(Write());
    EXPECT_EQ(files.createCnt, 0);
    CDigMem fresh;
    PutSet("1.10", {ItemFields{}});
    EXPECT_FALSE(ArcRead(fresh, files, "m.Ovb"));
}

TEST_F(ArchiveSetTest, TextSaveWritesNoIndexAndCannotBeReadWithoutOneOfItsVersion) {
    MakeMap();
    ASSERT_TRUE(Write("m.Ovt"));
    EXPECT_EQ(files.files.size(), 3u);
    EXPECT_FALSE(files.Has("m.Ovi"));
    store.Init();
    EXPECT_FALSE(Read({}, "m.Ovt"));
    EXPECT_EQ(store.LayerCnt(), 0);
    files.Put("m.Ovi", IndexHeader("1.00"));
    EXPECT_FALSE(Read({}, "m.Ovt"));
    files.Put("m.Ovi", IndexHeader("1.10"));
    EXPECT_TRUE(Read({}, "m.Ovt"));
    EXPECT_EQ(AllIDs(), (IDs{11, 12}));
    EXPECT_EQ(BlockOf("A", 1).GX, 1000);
}

TEST_F(ArchiveSetTest, TextOfVersion100IsWrittenAndNeverRead) {
    MakeMap();
    ASSERT_TRUE(Write("m.Ovb", "1.00"));
    ASSERT_TRUE(Write("m.Ovt", "1.00"));
    store.Init();
    EXPECT_EQ(ArcGetVersion(files, "m", true), "1.00");
    EXPECT_FALSE(Read({}, "m.Ovt"));
    EXPECT_EQ(store.LayerCnt(), 1) << "its layers are read nevertheless";
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(ArchiveSetTest, SaveInOneVersionLeavesTheSiblingsThatItDoesNotWrite) {
    MakeMap();
    ASSERT_TRUE(Write("m.Ovb", "1.00"));
    ASSERT_TRUE(Write("m.Ovt", "1.10"));
    EXPECT_EQ(files.Content("m.Ovi").substr(24, 4), "1.00");
    EXPECT_FALSE(Read({}, "m.Ovt"));
    EXPECT_FALSE(Read({}, "m.Ovb"));
}

TEST_F(ArchiveSetTest, VersionsMustAgreeOverAllSiblings) {
    const auto put = [this] {
        files.files.clear();
        PutSet("1.10", {ItemFields{}});
        files.Put("m.Ovm", ManageHeader("1.10"));
    };
    put();
    EXPECT_EQ(ArcGetVersion(files, "m", false), "1.10");
    for (const char* sibling : {"m.Ovb", "m.Ovl", "m.Ovi", "m.Ovm"}) {
        put();
        std::string& content = files.files[sibling].content;
        content.replace(content.find("1.10"), 4, "1.00");
        EXPECT_EQ(ArcGetVersion(files, "m", false), "") << sibling;
        EXPECT_FALSE(Read()) << sibling;
        put();
        files.files[sibling].locked = true;
        EXPECT_EQ(ArcGetVersion(files, "m", false), "") << sibling << " cannot be opened";
        put();
        files.files[sibling].directory = true;
        EXPECT_EQ(ArcGetVersion(files, "m", false), "") << sibling << " is a folder";
        put();
        files.files[sibling].content.clear();
        EXPECT_EQ(ArcGetVersion(files, "m", false), "") << sibling << " is empty";
        put();
        files.files.erase(sibling);
        EXPECT_EQ(ArcGetVersion(files, "m", false), std::string_view(sibling) == "m.Ovm" ? "1.10" : "") << sibling;
    }
    EXPECT_EQ(store.LayerCnt(), 0) << "nothing was merged";
}

TEST_F(ArchiveSetTest, DetectionLooksAtVersionsAndNotAtTitles) {
    PutSet("1.10", {ItemFields{}});
    std::string& data = files.files["m.Ovb"].content;
    data.replace(0, 4, "XXXX");
    EXPECT_EQ(ArcGetVersion(files, "m", false), "1.10");
    EXPECT_FALSE(Read()) << "the reader does";
    EXPECT_EQ(store.LayerCnt(), 1);
    files.Put("m.Ovt", "any title of this lengt1.10");
    EXPECT_EQ(ArcGetDataVersion(files, "m", true), "1.10");
    files.Put("m.Ovt", "Orva Data Text Version\n1.10");
    EXPECT_EQ(ArcGetDataVersion(files, "m", true), "");
    EXPECT_EQ(ArcGetDataVersion(files, "none", true), "");
}

TEST_F(ArchiveSetTest, UnknownVersionsAreNoVersion) {
    PutSet("1.20", {ItemFields{}});
    EXPECT_EQ(ArcGetDataVersion(files, "m", false), "");
    EXPECT_FALSE(Read());
}

TEST_F(ArchiveSetTest, ReadMergesIntoTheStoreAsItStands) {
    MakeMap();
    ASSERT_TRUE(Write());
    ASSERT_TRUE(store.SetLayColor("A", 5));
    ASSERT_TRUE(Read());
    EXPECT_EQ(store.LayerCnt(), 1);
    EXPECT_EQ(store.Layer(0).color, 5u);
    EXPECT_EQ(store.Layer(0).actFlg, 1) << "the store's layer, not the file's";
    EXPECT_EQ(AllIDs(), (IDs{11, 11, 12, 12}));
}

TEST_F(ArchiveSetTest, ManageRecordsFindTheirBlocksOrAreDropped) {
    PutSet("1.10", {ItemFields{}});
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("X", 0, "no", 1, 1) + ManageRec("A", 9, "no", 1, 1) +
                           ManageRec("A", 0, std::string(512, 'p'), 1.5, -1e300) + std::string(582, 'x'));
    ASSERT_TRUE(Read());
    EXPECT_EQ(BlockOf("A", 0).path, std::string(511, 'p'));
    EXPECT_EQ(BlockOf("A", 0).GX, 1.5);
    EXPECT_EQ(BlockOf("A", 0).GY, -1e300);
}

TEST_F(ArchiveSetTest, ManageFileThatIsNoneMakesTheReadFailWithEverythingRead) {
    PutSet("1.10", {ItemFields{}});
    files.Put("m.Ovm", ManageHeader("1.10").replace(0, 4, "XXXX"));
    EXPECT_FALSE(Read());
    EXPECT_EQ(AllIDs(), (IDs{1}));
    files.Put("m.Ovm", ManageHeader("1.10").substr(0, 39));
    EXPECT_FALSE(Read());
}

TEST_F(ArchiveSetTest, BlockOfAnotherStateHasNoManageRecord) {
    MakeMap();
    store.MutableBlock(0).blkState = 2;
    EXPECT_FALSE(Write()) << "the only path belongs to it";
    EXPECT_FALSE(files.Has("m.Ovm"));
}

TEST_F(ArchiveSetTest, WholeReadStopsWhenTheLayerTableIsFull) {
    PutSet("1.10", {ItemFields{}});
    for (int i = 0; i < kMaxLayers; ++i) ASSERT_TRUE(store.MakeLayer("L" + std::to_string(i), kLayLine));
    EXPECT_FALSE(Read());
    EXPECT_EQ(store.LayerCnt(), kMaxLayers);
    EXPECT_EQ(store.BlockCnt(), 0);
}

TEST_F(ArchiveSetTest, FilteredReadTakesAllDataWhenTheLayerTableIsFull) {
    ItemFields other;
    other.code = "L7";
    other.datID = 2;
    PutSet("1.10", {ItemFields{}, other});
    for (int i = 0; i < kMaxLayers; ++i) ASSERT_TRUE(store.MakeLayer("L" + std::to_string(i), kLayLine));
    const std::string codes[] = {"L7"};
    EXPECT_TRUE(Read({0, 0, 0, 0, codes}));
    EXPECT_EQ(AllIDs(), (IDs{1, 2}));
}

TEST_F(ArchiveSetTest, ProgressIsToldOnceInAThousandRecordsAndRisesToOne) {
    MakeBlock("A", 1);
    for (std::int32_t i = 0; i < 5000; ++i) AddItem("A", 1, i);
    for (const char* name : {"m.Ovb", "m.Ovt"}) {
        std::vector<double> told;
        const ArcProgress progress = [&](double done) {
            told.push_back(done);
            return true;
        };
        ASSERT_TRUE(ArcWrite(store, files, name, "", progress));
        EXPECT_EQ(told, (std::vector<double>{0.2, 0.4, 0.6, 0.8, 1.0})) << name;
        told.clear();
        CDigMem other;
        other.Init();
        ASSERT_TRUE(ArcRead(other, files, name, {}, progress)) << name;
        ASSERT_EQ(told.size(), 5u);
        EXPECT_NEAR(told[1], 0.4, 0.01);
        EXPECT_EQ(told[4], 1);
    }
}

TEST_F(ArchiveSetTest, CancelledReadAndSaveEndWithFalse) {
    MakeBlock("A", 1);
    for (std::int32_t i = 0; i < 3000; ++i) AddItem("A", 1, i);
    ASSERT_TRUE(Write());
    ASSERT_TRUE(Write("m.Ovt"));
    for (const char* name : {"m.Ovb", "m.Ovt"}) {
        const ArcProgress cancel = [](double done) { return done < 0.5; };
        store.Init();
        EXPECT_FALSE(ArcRead(store, files, name, {}, cancel));
        EXPECT_EQ(AllIDs().size(), 2000u) << "what was read until then stays";
        EXPECT_FALSE(ArcWrite(store, files, name, "", [](double) { return false; }));
        ASSERT_TRUE(store.DigMemDelete("A", 1));
        MakeBlock("A", 1);
        for (std::int32_t i = 0; i < 3000; ++i) AddItem("A", 1, i);
        ASSERT_TRUE(Write(name));
    }
}

TEST_F(ArchiveSetTest, HostThatEmptiesTheStoreOrDeletesBlocksMeanwhileEndsTheWork) {
    MakeBlock("A", 1);
    for (std::int32_t i = 0; i < 3000; ++i) AddItem("A", 1, i);
    ASSERT_TRUE(Write());
    const auto deletes = [this](double) {
        store.DigMemDelete("A", 1);
        return true;
    };
    EXPECT_FALSE(ArcWrite(store, files, "n.Ovb", "", deletes));
    store.Init();
    EXPECT_TRUE(ArcRead(store, files, "m.Ovb", {}, deletes)) << "a read goes on in a new block";
    store.Init();
    const auto empties = [this](double) {
        store.Init();
        return true;
    };
    EXPECT_FALSE(ArcRead(store, files, "m.Ovb", {}, empties));
    EXPECT_EQ(store.BlockCnt(), 0);
    MakeBlock("A", 1);
    for (std::int32_t i = 0; i < 3000; ++i) AddItem("A", 1, i);
    EXPECT_FALSE(ArcWrite(store, files, "n.Ovb", "", empties));
    const auto throws = [](double) -> bool { throw 1; };
    store.Init();
    EXPECT_FALSE(ArcRead(store, files, "m.Ovb", {}, throws)) << "nothing a host throws gets through";
}

}  // namespace
}  // namespace orvane
