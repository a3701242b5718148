#include "files/archive_check.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tests/files/archive_rig.h"

namespace orvane {
namespace {

using ::testing::HasSubstr;

// Offsets in the index of one block: the counts, the block's record and its items.
constexpr std::size_t kNItemsAt = 44;
constexpr std::size_t kBlockAt = 48;
constexpr std::size_t kItemsAt = 48 + 91;

class ArchiveCheckTest : public ArchiveTest {
protected:
    static ItemFields Item(int datID, const std::string& code = "A", int meshNo = 0) {
        ItemFields item;
        item.code = code;
        item.meshNo = meshNo;
        item.datID = datID;
        item.rect = {datID, 2, datID + 10, 4};
        item.pnts = {{1.0 * datID, 2, 0}, {datID + 10.0, 4, 0}};
        return item;
    }
    void PutThree(const std::string& version = "1.10") { PutSet(version, {Item(1), Item(2), Item(3)}); }
    ArcReport Check(const std::string& name = "m.Ovb") { return ArcCheck(files, name); }
    std::string& Content(const std::string& name) { return files.files[name].content; }
    /// Writes a 32-bit number into a file.
    void Poke(const std::string& name, std::size_t at, std::int64_t value) {
        Content(name).replace(at, 4, Packed().I4(value).bytes);
    }
    /// What is found is this one kind alone; its first words.
    static std::string Only(const ArcReport& report, ArcFault fault, ArcSeverity severity = ArcSeverity::Error) {
        if (report.findings.empty()) return "nothing found";
        for (const ArcFinding& finding : report.findings) {
            if (finding.fault != fault || finding.severity != severity) return "also found: " + finding.words;
        }
        return report.findings.front().words;
    }
};

TEST_F(ArchiveCheckTest, NothingIsWrongWithAWholeArchiveOfEitherVersion) {
    for (const char* version : {"1.00", "1.10"}) {
        PutThree(version);
        const ArcReport report = Check();
        EXPECT_TRUE(report.findings.empty()) << report.findings.front().words;
        EXPECT_TRUE(report.finished);
        EXPECT_EQ(report.version, version);
        EXPECT_EQ(report.counts.layers, 1);
        EXPECT_EQ(report.counts.blocks, 1);
        EXPECT_EQ(report.counts.items, 3);
        EXPECT_EQ(report.counts.points, 6);
    }
}

TEST_F(ArchiveCheckTest, TextsGridsAndPathsAreCounted) {
    ItemFields item = Item(1);
    item.mesh = Packed().I4(2).I4(1).U1(0).U1(1).U1(1).I4(5).I4(6).bytes;
    item.str = StrRec({});
    PutSet("1.10", {item});
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("A", 0, "p", 1, 2));
    const ArcReport report = Check();
    EXPECT_TRUE(report.findings.empty()) << report.findings.front().words;
    EXPECT_EQ(report.counts.texts, 1);
    EXPECT_EQ(report.counts.meshes, 1);
    EXPECT_EQ(report.counts.paths, 1);
}

TEST_F(ArchiveCheckTest, ANameThatIsNoArchivesIsToldAndNoFileTouched) {
    EXPECT_THAT(Only(Check("m"), ArcFault::Name), HasSubstr(".Ovb"));
    EXPECT_EQ(files.openCnt, 0);
}

TEST_F(ArchiveCheckTest, AMissingSiblingIsToldButForTheManageFile) {
    for (const std::string sibling : {"m.Ovb", "m.Ovl", "m.Ovi"}) {
        PutThree();
        files.files.erase(sibling);
        const ArcReport report = Check();
        EXPECT_TRUE(report.Has(ArcFault::Missing)) << sibling;
        EXPECT_EQ(report.findings.front().words, sibling + " is missing");
    }
}

TEST_F(ArchiveCheckTest, ASiblingThatIsThereButDoesNotOpenIsToldAsThat) {
    for (const std::string sibling : {"m.Ovb", "m.Ovl", "m.Ovi", "m.Ovm"}) {
        PutThree();
        files.Put("m.Ovm", ManageHeader("1.10"));
        files.files[sibling].locked = true;
        EXPECT_TRUE(Check().Has(ArcFault::NotOpened)) << sibling;
    }
}

TEST_F(ArchiveCheckTest, ASiblingOfTheOtherVersionIsTold) {
    PutThree();
    files.Put("m.Ovm", ManageHeader("1.00"));
    EXPECT_EQ(Only(Check(), ArcFault::Version), "m.Ovm is not of version 1.10, as the data file is");
    files.files.erase("m.Ovm");
    Content("m.Ovi").replace(0, 40, IndexHeader("1.00"));
    EXPECT_EQ(Only(Check(), ArcFault::Version), "m.Ovi is not of version 1.10, as the data file is");
}

TEST_F(ArchiveCheckTest, ADataFileOfNoKnownVersionIsTold) {
    PutThree();
    Content("m.Ovb").replace(0, 40, BinHeader("1.20"));
    const ArcReport report = Check();
    EXPECT_TRUE(report.Has(ArcFault::Version));
    EXPECT_EQ(report.version, "");
    EXPECT_EQ(report.counts.items, 0);
}

TEST_F(ArchiveCheckTest, AWrongTitleAndAFileShorterThanItsHeaderAreTold) {
    for (const std::string sibling : {"m.Ovb", "m.Ovl", "m.Ovi"}) {
        PutThree();
        Content(sibling)[0] = 'X';
        EXPECT_TRUE(Check().Has(ArcFault::Title)) << sibling;
        PutThree();
        Content(sibling).resize(39);
        EXPECT_TRUE(Check().Has(ArcFault::Title)) << sibling;
    }
}

TEST_F(ArchiveCheckTest, BytesBehindTheLastRecordAreTold) {
    PutThree();
    Content("m.Ovl") += "12345";
    EXPECT_EQ(Only(Check(), ArcFault::LeftOver), "m.Ovl has 5 bytes behind its last whole record");
    PutThree();
    Content("m.Ovi") += "123";
    EXPECT_EQ(Only(Check(), ArcFault::LeftOver), "m.Ovi has 3 bytes behind its last whole record");
    PutThree();
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("A", 0, "p", 0, 0) + "1");
    EXPECT_EQ(Only(Check(), ArcFault::LeftOver), "m.Ovm has 1 bytes behind its last whole record");
}

TEST_F(ArchiveCheckTest, AnIndexOffsetThatPointsAtNoRecordHeadIsTold) {
    PutThree();
    Poke("m.Ovi", kItemsAt + 20 + 16, 41);
    EXPECT_EQ(Only(Check(), ArcFault::ItemOffset),
              "the index has item 1 at offset 41, but it stands at 174");  // 40 + 86 + 2 x 24
    Poke("m.Ovi", kItemsAt + 20 + 16, -1);
    EXPECT_TRUE(Check().Has(ArcFault::ItemOffset));
}

TEST_F(ArchiveCheckTest, ARectangleThatDiffersFromTheItemsIsTold) {
    PutThree();
    Poke("m.Ovi", kItemsAt + 8, 12);
    EXPECT_EQ(Only(Check(), ArcFault::ItemRect), "the index gives item 0 the rectangle (1 2 12 4), but it has (1 2 11 4)");
}

TEST_F(ArchiveCheckTest, WhatIsWrongWithPlacesInTheIndexAloneLosesNoData) {
    PutThree();
    EXPECT_FALSE(Check().LosesData());
    Poke("m.Ovi", kItemsAt + 8, 12);
    Poke("m.Ovi", kItemsAt + 20 + 16, 41);
    const ArcReport report = Check();
    EXPECT_TRUE(report.HasErrors());
    EXPECT_TRUE(report.Has(ArcFault::ItemRect));
    EXPECT_TRUE(report.Has(ArcFault::ItemOffset));
    EXPECT_FALSE(report.LosesData());
    ASSERT_TRUE(store.Init());
    EXPECT_TRUE(ArcRead(store, files, "m.Ovb"));
    EXPECT_EQ(store.Block(0).datCnt, 3);
    Content("m.Ovb").resize(Content("m.Ovb").size() - 1);
    EXPECT_TRUE(Check().LosesData());
    PutThree();
    files.files.erase("m.Ovl");
    EXPECT_TRUE(Check().LosesData());
}

TEST_F(ArchiveCheckTest, CountsThatTheIndexCannotHoldAreTold) {
    for (const std::int64_t count : {4, 0x7FFFFFFF, -1}) {
        PutThree();
        Poke("m.Ovi", kNItemsAt, count);
        EXPECT_TRUE(Check().Has(ArcFault::Counts)) << count;
        EXPECT_EQ(Check().counts.items, 3) << "the data is looked through all the same";
    }
}

TEST_F(ArchiveCheckTest, AnIndexThatListsFewerItemsThanTheDataHasIsTold) {
    PutThree();
    Content("m.Ovb") += ItemRec("1.10", Item(4));
    EXPECT_EQ(Only(Check(), ArcFault::Counts), "the index lists 3 items, but the data file has 4");
}

TEST_F(ArchiveCheckTest, ABlockWhoseItemsAreNotThoseOfTheTableIsTold) {
    struct Case {
        std::int64_t count, first;
    };
    for (const Case& c : {Case{4, 0}, Case{3, 1}, Case{-1, 0}, Case{2, 0}, Case{3, -1}, Case{0x7FFFFFFF, 0x7FFFFFFF}}) {
        PutThree();
        Poke("m.Ovi", kBlockAt + 83, c.count);
        Poke("m.Ovi", kBlockAt + 87, c.first);
        EXPECT_TRUE(Check().Has(ArcFault::BlockRange)) << c.count << ' ' << c.first;
    }
}

TEST_F(ArchiveCheckTest, AnItemUnderAnotherCodeOrMeshNumberThanItsBlockIsTold) {
    PutSet("1.10", {Item(1), Item(2, "B")});
    EXPECT_TRUE(Check().Has(ArcFault::BlockItems));
    PutSet("1.10", {Item(1), Item(2, "A", 7)});
    EXPECT_THAT(Only(Check(), ArcFault::BlockItems), HasSubstr("mesh number 7"));
}

TEST_F(ArchiveCheckTest, ABlockOfNoItemsWithoutACodeIsNoFault) {
    PutThree();
    std::string& index = Content("m.Ovi");
    index = IndexHeader("1.10") + Packed().I4(2).I4(3).bytes + IdxBlock({"", 0, 0, 0, 0, 0, 0}) + index.substr(kBlockAt);
    const ArcReport report = Check();
    EXPECT_TRUE(report.findings.empty()) << report.findings.front().words;
    EXPECT_EQ(report.counts.blocks, 2);
}

TEST_F(ArchiveCheckTest, AnItemCutOffIsToldAtEveryLength) {
    PutThree();
    const std::string whole = Content("m.Ovb");
    const std::size_t record = 86 + 2 * 24;
    for (std::size_t size = 40; size < whole.size(); ++size) {
        Content("m.Ovb") = whole.substr(0, size);
        const ArcReport report = Check();
        EXPECT_EQ(report.Has(ArcFault::CutOff), (size - 40) % record != 0) << size;
        EXPECT_TRUE(report.Has(ArcFault::Counts)) << size;
        EXPECT_EQ(report.counts.items, static_cast<std::int64_t>((size - 40) / record)) << size;
    }
}

TEST_F(ArchiveCheckTest, ACountOfPointsThatTheFileCannotHoldTakesNoMemory) {
    PutThree();
    Poke("m.Ovb", 40 + 75, 0x7FFFFFFF);
    ArrayFaults::FailOver(1024 * 1024);
    const ArcReport report = Check();
    ArrayFaults::Clear();
    EXPECT_TRUE(report.finished);
    EXPECT_TRUE(report.Has(ArcFault::CutOff));
}

TEST_F(ArchiveCheckTest, ACodeWithoutALayerIsAWarningForEachCode) {
    PutSet("1.10", {Item(1, "B"), Item(2, "B")});
    EXPECT_THAT(Only(Check(), ArcFault::NoLayer, ArcSeverity::Warning), HasSubstr("\"B\""));
    EXPECT_EQ(Check().findings.size(), 1u);
    EXPECT_FALSE(Check().HasErrors());
}

TEST_F(ArchiveCheckTest, APathOfABlockWithoutItemsIsAWarning) {
    PutThree();
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("A", 0, "p", 0, 0) + ManageRec("A", 1, "q", 0, 0));
    EXPECT_THAT(Only(Check(), ArcFault::NoBlock, ArcSeverity::Warning), HasSubstr("mesh number 1"));
}

TEST_F(ArchiveCheckTest, APathOfACodeWithoutALayerIsAWarning) {
    PutSet("1.10", {Item(1), Item(2, "U", 3)});
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("U", 3, "p", 1, 2));
    EXPECT_TRUE(Check().Has(ArcFault::NoBlock));
}

TEST_F(ArchiveCheckTest, TwoPathsOfOneBlockAreAWarning) {
    PutThree();
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("A", 0, "p", 1, 2) + ManageRec("A", 0, "q", 1, 2));
    EXPECT_THAT(Only(Check(), ArcFault::PathTwice, ArcSeverity::Warning), HasSubstr("takes the last"));
}

TEST_F(ArchiveCheckTest, AnOriginThatIsNoNumberIsAWarning) {
    for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        PutThree();
        files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("A", 0, "p", 1, odd));
        EXPECT_THAT(Only(Check(), ArcFault::Origin, ArcSeverity::Warning), HasSubstr("\"A\""));
    }
}

TEST_F(ArchiveCheckTest, BoundsOfABlockThatDoNotHoldItsItemsAreAWarning) {
    constexpr std::size_t kBoundsAt = kBlockAt + 51;
    struct Case {
        std::size_t at;
        double value;
        bool told;
    };
    // The points reach from 1 to 13 and from 2 to 4; what a map has that was read lies within one whole number.
    for (const Case& one : {Case{0, 2.5, true}, Case{0, 1.9, false}, Case{0, -50, false}, Case{8, 3.5, true},
                            Case{16, 11.5, true}, Case{16, 12.5, false}, Case{16, 99, false}, Case{24, 2.5, true}}) {
        PutThree();
        Content("m.Ovi").replace(kBoundsAt + one.at, 8, Packed().R8(one.value).bytes);
        const ArcReport report = Check();
        EXPECT_EQ(report.Has(ArcFault::BlockBounds), one.told) << one.at << ' ' << one.value;
        EXPECT_FALSE(report.HasErrors());
    }
    PutThree();
    Content("m.Ovi").replace(kBoundsAt + 8, 8, Packed().R8(std::nan("")).bytes);
    EXPECT_THAT(Only(Check(), ArcFault::BlockBounds, ArcSeverity::Warning), HasSubstr("no numbers"));
}

TEST_F(ArchiveCheckTest, BoundsAsASaveWritesThemAreNoFault) {
    MakeBlock("A", 1);
    AddItem("A", 1, 1, {{-0.75, -5.5, 0}, {7.25, 3.125, 0}});
    AddItem("A", 1, 2, {{1e12, -1e12, 0}});
    MakeBlock("C", 1, kLayCircle);
    AddItem("C", 1, 1, {{5, 5, 2}});
    AddItem("C", 1, 2, {{50, 50, 20}});
    MakeBlock("E", 1, kLayLine, "");
    ASSERT_TRUE(Write());
    EXPECT_TRUE(Check().findings.empty()) << Check().findings.front().words;
    store.Init();
    ASSERT_TRUE(Read());
    // Bounds come out of the rectangles now, whose sides are whole.
    ASSERT_TRUE(Write("n.Ovb"));
    EXPECT_TRUE(Check("n.Ovb").findings.empty()) << Check("n.Ovb").findings.front().words;
}

TEST_F(ArchiveCheckTest, MoreBlocksThanAReadHasRoomForAreAFaultInBothForms) {
    // Every item of a code without a layer makes a block; a block of each key with one.
    const auto put = [this](int strays) {
        std::string data = BinHeader("1.10");
        std::string text = "Orva Data Text Version 1.10\r\n";
        std::string records;
        for (int i = 0; i < strays; ++i) {
            records += IdxItem({}, static_cast<std::int64_t>(data.size()));
            ItemFields item;
            item.code = "U";
            data += ItemRec("1.10", item);
            text += "DH,U,0,1,0,0,0,0,0,0,0,0,0\r\n";
        }
        IdxBlockFields block;
        block.code = "U";
        block.count = strays;
        files.Put("m.Ovb", data);
        files.Put("m.Ovt", text);
        files.Put("m.Ovl", LayerHeader("1.10") + LayerRec("1.10", {}));
        files.Put("m.Ovi", IndexHeader("1.10") + Packed().I4(1).I4(strays).bytes + IdxBlock(block) + records);
    };
    put(kMaxDigIndex + 1);
    for (const char* name : {"m.Ovb", "m.Ovt"}) {
        EXPECT_TRUE(Check(name).Has(ArcFault::Counts)) << name;
        EXPECT_TRUE(Check(name).HasErrors()) << name;
        store.Init();
        EXPECT_FALSE(Read({}, name));
    }
    put(kMaxDigIndex);
    for (const char* name : {"m.Ovb", "m.Ovt"}) {
        EXPECT_FALSE(Check(name).HasErrors()) << name;
        store.Init();
        EXPECT_TRUE(Read({}, name));
    }
}

TEST_F(ArchiveCheckTest, LayersThatAReadDropsAreWarnings) {
    PutThree();
    LayerFields none;
    none.code.clear();
    Content("m.Ovl") += LayerRec("1.10", {}) + LayerRec("1.10", none);
    const ArcReport report = Check();
    EXPECT_EQ(report.findings.size(), 2u);
    EXPECT_THAT(Only(report, ArcFault::Layer, ArcSeverity::Warning), HasSubstr("no code"));
}

TEST_F(ArchiveCheckTest, ADataFileOfTheHeaderAloneIsAWarningBecauseAReadOfItAnswersFalse) {
    PutSet("1.10", {});
    EXPECT_FALSE(Read());
    EXPECT_THAT(Only(Check(), ArcFault::NoItems, ArcSeverity::Warning), HasSubstr("no items"));
}

TEST_F(ArchiveCheckTest, OfManyFaultsOfAKindAFewAreToldAndTheRestCounted) {
    std::vector<ItemFields> items;
    for (int i = 1; i <= 20; ++i) items.push_back(Item(i));
    PutSet("1.10", items);
    for (std::size_t i = 0; i < 20; ++i) Poke("m.Ovi", kItemsAt + 20 * i + 16, 7);
    const ArcReport report = Check();
    ASSERT_EQ(report.findings.size(), 5u);
    EXPECT_EQ(report.findings.back().more, 15);
}

TEST_F(ArchiveCheckTest, ATextArchiveIsWholeWithAnIndexOfItsVersionBesideIt) {
    PutThree();
    files.Put("m.Ovt", "Orva Data Text Version 1.10\r\nDH,A,0,1,2,1,4,11,1,0,0,0,0\r\nP,1.000000,2.000000,0.0\r\n");
    const ArcReport report = Check("m.Ovt");
    EXPECT_TRUE(report.findings.empty()) << report.findings.front().words;
    EXPECT_TRUE(report.text);
    EXPECT_EQ(report.counts.items, 1);
    files.files.erase("m.Ovi");
    EXPECT_EQ(Only(Check("m.Ovt"), ArcFault::Missing), "m.Ovi is missing");
}

TEST_F(ArchiveCheckTest, TheLineOfATextThatDoesNotParseIsTold) {
    PutThree();
    files.Put("m.Ovt", "Orva Data Text Version 1.10\r\nDH,A,0,1,2,1,4,11,1,0,0,0,0\r\nP,1.000000,2.000000\r\n");
    EXPECT_THAT(Only(Check("m.Ovt"), ArcFault::CutOff), HasSubstr("line 3"));
    files.Put("m.Ovt", "Orva Data Text Version 1.10\r\nDH,A,0,1,2,1,4,11,0,0,0,0,0\r\ndh,A,0,1,2,1,4,11,0,0,0,0,0\r\n");
    const ArcReport report = Check("m.Ovt");
    EXPECT_THAT(Only(report, ArcFault::CutOff), HasSubstr("line 3"));
    EXPECT_EQ(report.counts.items, 1);
}

TEST_F(ArchiveCheckTest, TextOfVersion100IsNeverReadBack) {
    PutThree("1.00");
    files.Put("m.Ovt", "Orva Data Text Version 1.00\r\nDH,A,0,1,2,1,4,11,0,0,0\r\n");
    EXPECT_THAT(Only(Check("m.Ovt"), ArcFault::NeverRead), HasSubstr("1.00"));
    EXPECT_EQ(Check("m.Ovt").counts.items, 1);
}

TEST_F(ArchiveCheckTest, AHostCanCancelIt) {
    std::vector<ItemFields> items;
    for (int i = 1; i <= 1500; ++i) items.push_back(Item(i));
    PutSet("1.10", items);
    int asked = 0;
    const ArcReport report = ArcCheck(files, "m.Ovb", [&](double done) {
        EXPECT_NEAR(done, 1000.0 / 1500, 0.01);
        ++asked;
        return false;
    });
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(report.finished);
}

TEST_F(ArchiveCheckTest, EveryByteOfASmallArchiveMayBeWrong) {
    PutThree();
    files.Put("m.Ovm", ManageHeader("1.10") + ManageRec("A", 0, "p", 0, 0));
    for (const std::string sibling : {"m.Ovb", "m.Ovi", "m.Ovm"}) {
        for (std::size_t i = 0; i < Content(sibling).size(); ++i) {
            const char was = std::exchange(Content(sibling)[i], '\xFF');
            EXPECT_TRUE(Check().finished) << sibling << ' ' << i;
            Content(sibling)[i] = was;
        }
    }
    EXPECT_TRUE(Check().findings.empty());
}

}  // namespace
}  // namespace orvane
