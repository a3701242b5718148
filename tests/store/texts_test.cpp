// Texts of items: what setting one makes of the look, and the changes to a whole block.
#include "tests/store/store_fixture.h"
#include "tests/support/store_dump.h"

namespace orvane {
namespace {

TextLook SomeLook() {
    TextLook look;
    look.fntname = "Gothic";
    look.size = 24;
    look.style = 5;
    look.pos = 8;
    look.angle = -30.5;
    look.fill = look.uline = look.strike = true;
    look.fcolor = 0x112233;
    look.bcolor = 0x445566;
    return look;
}

void ExpectDefaultLook(const DigStr& str) {
    EXPECT_EQ(str.z, 0);
    EXPECT_EQ(str.fntname, "");
    EXPECT_EQ(str.size, 10);
    EXPECT_EQ(str.style, 0);
    EXPECT_EQ(str.fill, 0);
    EXPECT_EQ(str.pos, 0);
    EXPECT_EQ(str.angle, 0);
    EXPECT_EQ(str.uline, 0);
    EXPECT_EQ(str.strike, 0);
    EXPECT_EQ(str.fcolor, 0U);
    EXPECT_EQ(str.bcolor, 0xFFFFFFU);
}

void ExpectSomeLook(const DigStr& str) {
    EXPECT_EQ(str.fntname, "Gothic");
    EXPECT_EQ(str.size, 24);
    EXPECT_EQ(str.style, 5);
    EXPECT_EQ(str.fill, 1);
    EXPECT_EQ(str.pos, 8);
    EXPECT_EQ(str.angle, -30.5);
    EXPECT_EQ(str.uline, 1);
    EXPECT_EQ(str.strike, 1);
    EXPECT_EQ(str.fcolor, 0x112233U);
    EXPECT_EQ(str.bcolor, 0x445566U);
}

class TextsTest : public StoreTest {
protected:
    TextsTest() {
        EXPECT_TRUE(store.DigMemAlloc2("A", 1, kLayText, "", 0, 1000, 2000));
        AddItem("A", 1, 7, {{1, 2, 3}});
    }
    /// Ten items with IDs 10 to 19 in block "T"; those with 12, 15 and 19 have texts.
    void MakeTenItems() {
        MakeBlock("T", 1, kLayText);
        for (std::int32_t id = 10; id < 20; ++id) AddItem("T", 1, id);
        for (const std::int32_t id : {12, 15, 19}) ASSERT_TRUE(store.SetDigDatString("T", 1, id, id, 0, "label"));
    }
    /// IDs of the items of that block whose text fulfils the condition.
    template <class Condition>
    std::vector<std::int32_t> IDsWhere(Condition condition) {
        std::vector<std::int32_t> ids;
        for (const DigDat& dat : BlockOf("T", 1).dats) {
            if (dat.str != nullptr && condition(*dat.str)) ids.push_back(dat.datID);
        }
        return ids;
    }
    std::vector<std::int32_t> IDsWithText() {
        return IDsWhere([](const DigStr&) { return true; });
    }
    const DigStr& Str(std::int32_t datID) { return *Item("A", 1, datID).str; }
    const std::vector<std::int32_t> kWithText{12, 15, 19};
};

// --- One text ---------------------------------------------------------------------------------------------------------------

TEST_F(TextsTest, AnItemHasNoTextUntilOneIsSet) {
    EXPECT_EQ(Item("A", 1, 7).str, nullptr);
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 1, 2, "town"));
    EXPECT_EQ(Str(7).text, "town");
}

TEST_F(TextsTest, ANewTextHasItsAnchorAsGivenAndTheDefaultLook) {
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 12.5, -3.25, "town"));
    EXPECT_EQ(Str(7).x, 12.5) << "local to the block, whatever its origin";
    EXPECT_EQ(Str(7).y, -3.25);
    ExpectDefaultLook(Str(7));
}

TEST_F(TextsTest, SettingATextLeavesPointsAndBoundsAlone) {
    const DigBlock& block = BlockOf("A", 1);
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 5000, 5000, "town"));
    EXPECT_EQ(block.maxX, 1);
    EXPECT_EQ(block.maxY, 2);
    EXPECT_EQ(Item("A", 1, 7).pntCnt, 1);
}

TEST_F(TextsTest, AStyleBeforeATextIsRefused) {
    EXPECT_FALSE(store.SetDigDatStrStyle("A", 1, 7, SomeLook()));
    EXPECT_EQ(Item("A", 1, 7).str, nullptr);
}

TEST_F(TextsTest, AStyleSetsEveryFieldAndLeavesTextAndAnchor) {
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 12.5, -3.25, "town"));
    ASSERT_TRUE(store.SetDigDatStrStyle("A", 1, 7, SomeLook()));
    ExpectSomeLook(Str(7));
    EXPECT_EQ(Str(7).text, "town");
    EXPECT_EQ(Str(7).x, 12.5);
    EXPECT_EQ(Str(7).y, -3.25);
}

TEST_F(TextsTest, AStyleTakesAnyNumberAsItComes) {
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 0, 0, "town"));
    TextLook look;
    look.size = -5;
    look.style = 1 << 30;
    look.pos = 77;
    ASSERT_TRUE(store.SetDigDatStrStyle("A", 1, 7, look));
    EXPECT_EQ(Str(7).size, -5);
    EXPECT_EQ(Str(7).style, 1 << 30);
    EXPECT_EQ(Str(7).pos, 77);
}

TEST_F(TextsTest, SettingATextAgainLosesTheStyleInBetween) {
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 1, 2, "town"));
    ASSERT_TRUE(store.SetDigDatStrStyle("A", 1, 7, SomeLook()));
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 3, 4, "village"));
    EXPECT_EQ(Str(7).text, "village");
    EXPECT_EQ(Str(7).x, 3);
    EXPECT_EQ(Str(7).y, 4);
    ExpectDefaultLook(Str(7));
}

TEST_F(TextsTest, AnEmptyTextIsAText) {
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 1, 2, ""));
    ASSERT_NE(Item("A", 1, 7).str, nullptr);
    EXPECT_EQ(Str(7).text, "");
    EXPECT_TRUE(store.SetDigDatStrStyle("A", 1, 7, SomeLook()));
}

TEST_F(TextsTest, BytesOfATextAreKeptAsTheyComeHalfCharactersIncluded) {
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 1, 2, "\x93\x8C\x8B"));
    EXPECT_EQ(Str(7).text, "\x93\x8C\x8B");
}

TEST_F(TextsTest, WhatIsMissingAnswersFalseAndChangesNothing) {
    ASSERT_TRUE(store.MakeLayer("no block", kLayText));
    MakeBlock("empty", 1, kLayText);
    const std::string before = DumpStore(store);
    const struct {
        const char* code;
        std::int32_t meshNo, datID;
    } kMissing[] = {{"B", 1, 7}, {"a", 1, 7}, {"A", 2, 7}, {"A", 1, 8}, {"no block", 1, 7}, {"empty", 1, 7}, {"", 1, 7}};
    for (const auto& m : kMissing) {
        EXPECT_FALSE(store.SetDigDatString(m.code, m.meshNo, m.datID, 1, 2, "town")) << m.code;
        EXPECT_FALSE(store.SetDigDatStrStyle(m.code, m.meshNo, m.datID, SomeLook())) << m.code;
    }
    EXPECT_EQ(DumpStore(store), before);
}

TEST_F(TextsTest, OfItemsWithTheSameIdTheLastGetsTextAndStyle) {
    AddItem("A", 1, 7);
    AddItem("A", 1, 8);
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 1, 2, "town"));
    ASSERT_TRUE(store.SetDigDatStrStyle("A", 1, 7, SomeLook()));
    EXPECT_EQ(ItemAt("A", 1, 0).str, nullptr);
    ASSERT_NE(ItemAt("A", 1, 1).str, nullptr);
    ExpectSomeLook(*ItemAt("A", 1, 1).str);
}

TEST_F(TextsTest, AStyleMeetsTheLastItemOnlyEvenWhenTheFirstAloneHasAText) {
    ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 1, 2, "town"));
    AddItem("A", 1, 7);
    EXPECT_FALSE(store.SetDigDatStrStyle("A", 1, 7, SomeLook()));
    ExpectDefaultLook(*ItemAt("A", 1, 0).str);
}

// --- All texts of a block ---------------------------------------------------------------------------------------------------

TEST_F(TextsTest, AFontSizeReachesTheThreeTextsOfTenItems) {
    MakeTenItems();
    EXPECT_TRUE(store.SetFontSize("T", 1, 33));
    EXPECT_EQ(IDsWhere([](const DigStr& str) { return str.size == 33; }), kWithText);
    EXPECT_EQ(IDsWithText(), kWithText) << "the other items still have none";
    EXPECT_EQ(Item("T", 1, 15).str->text, "label");
    EXPECT_EQ(Item("T", 1, 15).str->style, 0);
}

TEST_F(TextsTest, AWholeLookReachesEveryText) {
    MakeTenItems();
    EXPECT_TRUE(store.SetFontStyleAll("T", 1, SomeLook()));
    EXPECT_EQ(IDsWithText(), kWithText);
    for (const std::int32_t id : kWithText) {
        ExpectSomeLook(*Item("T", 1, id).str);
        EXPECT_EQ(Item("T", 1, id).str->text, "label");
        EXPECT_EQ(Item("T", 1, id).str->x, id);
    }
}

TEST_F(TextsTest, EachPartOfTheLookIsSetAloneAndLeavesTheOthers) {
    MakeTenItems();
    EXPECT_TRUE(store.SetFontName("T", 1, "Gothic"));
    const DigStr& str = *Item("T", 1, 19).str;
    EXPECT_EQ(str.fntname, "Gothic");
    EXPECT_EQ(str.size, 10);
    EXPECT_EQ(str.bcolor, 0xFFFFFFU);

    EXPECT_TRUE(store.SetFontColor("T", 1, 0x112233, 0x445566));
    EXPECT_EQ(str.fcolor, 0x112233U);
    EXPECT_EQ(str.bcolor, 0x445566U);
    EXPECT_EQ(str.style, 0);

    TextLook style = SomeLook();
    style.fntname = "not read";
    style.size = 99;
    style.fcolor = style.bcolor = 9;
    EXPECT_TRUE(store.SetFontStyle("T", 1, style));
    EXPECT_EQ(str.size, 10);
    EXPECT_TRUE(store.SetFontSize("T", 1, 24));
    ExpectSomeLook(str);
}

TEST_F(TextsTest, AnEmptyBlockAnswersTrueAndAMissingOneFalse) {
    MakeBlock("empty", 1, kLayText);
    ASSERT_TRUE(store.MakeLayer("no block", kLayText));
    const struct {
        const char* code;
        bool answer;
    } kBlocks[] = {{"empty", true}, {"no block", false}, {"none", false}};
    for (const auto& b : kBlocks) {
        EXPECT_EQ(store.SetFontStyleAll(b.code, 1, SomeLook()), b.answer) << b.code;
        EXPECT_EQ(store.SetFontName(b.code, 1, "Gothic"), b.answer) << b.code;
        EXPECT_EQ(store.SetFontSize(b.code, 1, 5), b.answer) << b.code;
        EXPECT_EQ(store.SetFontStyle(b.code, 1, SomeLook()), b.answer) << b.code;
        EXPECT_EQ(store.SetFontColor(b.code, 1, 1, 2), b.answer) << b.code;
    }
}

TEST_F(TextsTest, OtherBlocksOfTheLayerAreLeftAlone) {
    MakeTenItems();
    MakeBlock("T", 2, kLayText);
    AddItem("T", 2, 12);
    ASSERT_TRUE(store.SetDigDatString("T", 2, 12, 0, 0, "label"));
    EXPECT_TRUE(store.SetFontStyleAll("T", 1, SomeLook()));
    ExpectDefaultLook(*Item("T", 2, 12).str);
}

// --- Life of a text ---------------------------------------------------------------------------------------------------------

TEST_F(TextsTest, ATextGoesWithItsItemAndTheOthersKeepTheirs) {
    MakeTenItems();
    ASSERT_TRUE(store.DelDigDat("T", 1, 12));
    EXPECT_EQ(IDsWithText(), (std::vector<std::int32_t>{15, 19}));
    ASSERT_TRUE(store.DigMemDelete("T", 1));
    MakeBlock("T", 1, kLayText);
    AddItem("T", 1, 15);
    EXPECT_EQ(Item("T", 1, 15).str, nullptr);
}

TEST_F(TextsTest, TextsOfAFullStoreGoWithInit) {
    MakeTenItems();
    store.Init();
    EXPECT_FALSE(store.SetFontSize("T", 1, 5));
    MakeBlock("T", 1, kLayText);
    AddItem("T", 1, 12);
    EXPECT_EQ(Item("T", 1, 12).str, nullptr);
}

// --- No memory --------------------------------------------------------------------------------------------------------------

TEST_F(TextsTest, WithoutMemoryForATextTheItemHasNone) {
    for (const char* former : {"", "town"}) {
        for (std::int64_t n = 1; n <= 2; ++n) {
            ASSERT_TRUE(store.SetDigDatString("A", 1, 7, 1, 2, former));
            ArrayFaults::FailNth(n);
            EXPECT_FALSE(store.SetDigDatString("A", 1, 7, 1, 2, "village"));
            EXPECT_EQ(ArrayFaults::Count(), n);
            ArrayFaults::Clear();
            EXPECT_EQ(Item("A", 1, 7).str, nullptr);
        }
    }
}

TEST_F(TextsTest, WithoutMemoryForTheFaceNoTextChanges) {
    MakeTenItems();
    const std::string before = DumpStore(store);
    const TextLook look = SomeLook();
    for (std::int64_t n = 1; n <= 3; ++n) {
        ArrayFaults::FailNth(n);
        EXPECT_FALSE(store.SetFontName("T", 1, look.fntname));
        ArrayFaults::FailNth(n);
        EXPECT_FALSE(store.SetFontStyleAll("T", 1, look));
        ArrayFaults::Clear();
        EXPECT_EQ(DumpStore(store), before) << n;
    }
    ArrayFaults::FailNth(1);
    EXPECT_FALSE(store.SetDigDatStrStyle("T", 1, 12, look));
    ArrayFaults::Clear();
    EXPECT_EQ(DumpStore(store), before);
}

TEST_F(TextsTest, TheLookWithoutAFaceNeedsNoMemory) {
    MakeTenItems();
    ArrayFaults::FailFrom(1);
    EXPECT_TRUE(store.SetFontSize("T", 1, 5));
    EXPECT_TRUE(store.SetFontColor("T", 1, 5, 6));
    EXPECT_TRUE(store.SetFontStyle("T", 1, SomeLook()));
    EXPECT_TRUE(store.SetFontName("T", 1, ""));
    EXPECT_EQ(ArrayFaults::Count(), 0);
}

}  // namespace
}  // namespace orvane
