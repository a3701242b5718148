// The members for texts, called as a host calls them: each argument reaches its place, under both names.
#include <gtest/gtest.h>

#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

class TextMembersTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.Start();
        ASSERT_TRUE(rig.Run("OrvAddLayer", "T", 1, 5, 1).True());
        for (int id = 10; id < 20; ++id) ASSERT_TRUE(rig.Run("OrvAddDat", "T", 1, id, 0).True());
        rig.ctrl->SetModified(false);
        rig.verbs->Clear();
    }
    const DigStr* Str(std::int32_t id) {
        const DigDat* dat = rig.ctrl->store.FindDat("T", 1, id);
        return dat == nullptr ? nullptr : dat->str.get();
    }
    void SetThreeTexts() {
        for (const int id : {12, 15, 19}) ASSERT_TRUE(rig.Run("OrvSetDatString", "T", 1, id, 1.0, 2.0, "label").True());
    }
    void ExpectLook(const DigStr& str, const char* face) {
        EXPECT_EQ(str.fntname, face);
        EXPECT_EQ(str.size, 24);
        EXPECT_EQ(str.style, 5);
        EXPECT_EQ(str.pos, 7);
        EXPECT_EQ(str.angle, 30.5);
        EXPECT_EQ(str.fill, 1);
        EXPECT_EQ(str.uline, 0);
        EXPECT_EQ(str.strike, 1);
        EXPECT_EQ(str.fcolor, 0x112233U);
        EXPECT_EQ(str.bcolor, 0x445566U);
    }
    AutomationRig rig;
};

TEST_F(TextMembersTest, ATextIsSetUnderBothNames) {
    for (const char* name : {"SetDigDatString", "OrvSetDatString"}) {
        EXPECT_TRUE(rig.Run(name, "T", 1, 12, 1.5, -2.5, name).True());
        ASSERT_NE(Str(12), nullptr);
        EXPECT_EQ(Str(12)->text, name);
        EXPECT_EQ(Str(12)->x, 1.5);
        EXPECT_EQ(Str(12)->y, -2.5);
        EXPECT_TRUE(rig.Run(name, "T", 1, 99, 1.5, -2.5, "x").False());
        EXPECT_TRUE(rig.Run(name, "T", 2, 12, 1.5, -2.5, "x").False());
        EXPECT_TRUE(rig.Run(name, "none", 1, 12, 1.5, -2.5, "x").False());
    }
}

TEST_F(TextMembersTest, AStyleIsSetUnderBothNamesOnceThereIsAText) {
    for (const char* name : {"SetDigDatStrStyle", "OrvSetStrStyle"}) {
        const int id = name[0] == 'S' ? 12 : 13;
        const auto style = [&] { return rig.Run(name, "T", 1, id, name, 24, 5, 7, 30.5, true, false, -1, 0x112233, 0x445566); };
        EXPECT_TRUE(style().False());
        ASSERT_TRUE(rig.Run("OrvSetDatString", "T", 1, id, 1.0, 2.0, "label").True());
        EXPECT_TRUE(style().True());
        ExpectLook(*Str(id), name);
        EXPECT_EQ(Str(id)->text, "label");
        EXPECT_EQ(Str(id)->x, 1);
    }
}

TEST_F(TextMembersTest, SettingATextTwiceLosesTheStyleInBetween) {
    ASSERT_TRUE(rig.Run("SetDigDatString", "T", 1, 12, 1.0, 2.0, "label").True());
    ASSERT_TRUE(rig.Run("SetDigDatStrStyle", "T", 1, 12, "Gothic", 24, 5, 7, 30.5, 1, 1, 1, 1, 2).True());
    ASSERT_TRUE(rig.Run("SetDigDatString", "T", 1, 12, 1.0, 2.0, "label").True());
    EXPECT_EQ(Str(12)->size, 10);
    EXPECT_EQ(Str(12)->fntname, "");
}

TEST_F(TextMembersTest, AnEmptyTextIsStored) {
    EXPECT_TRUE(rig.Run("SetDigDatString", "T", 1, 12, 1.0, 2.0, "").True());
    ASSERT_NE(Str(12), nullptr);
    EXPECT_EQ(Str(12)->text, "");
}

TEST_F(TextMembersTest, AFontSizeChangesTheThreeTextsOfTenFeatures) {
    SetThreeTexts();
    EXPECT_TRUE(rig.Run("OrvSetFontSize", "T", 1, 33).True());
    for (int id = 10; id < 20; ++id) {
        if (id == 12 || id == 15 || id == 19) {
            ASSERT_NE(Str(id), nullptr);
            EXPECT_EQ(Str(id)->size, 33);
        } else {
            EXPECT_EQ(Str(id), nullptr);
        }
    }
}

TEST_F(TextMembersTest, TheWholeLookOfABlock) {
    SetThreeTexts();
    EXPECT_TRUE(rig.Run("OrvSetFontStyleAll", "T", 1, "Gothic", 24, 5, 7, 30.5, true, false, true, 0x112233, 0x445566).True());
    for (const int id : {12, 15, 19}) ExpectLook(*Str(id), "Gothic");
}

TEST_F(TextMembersTest, TheLookOfABlockPartByPart) {
    SetThreeTexts();
    EXPECT_TRUE(rig.Run("OrvSetFontName", "T", 1, "Mincho").True());
    EXPECT_TRUE(rig.Run("OrvSetFontSize", "T", 1, 24).True());
    EXPECT_EQ(Str(15)->style, 0);
    EXPECT_TRUE(rig.Run("OrvSetFontStyle", "T", 1, 5, 7, 30.5, true, false, true).True());
    EXPECT_EQ(Str(15)->fcolor, 0U);
    EXPECT_TRUE(rig.Run("OrvSetFontColor", "T", 1, 0x112233, 0x445566).True());
    for (const int id : {12, 15, 19}) ExpectLook(*Str(id), "Mincho");
}

TEST_F(TextMembersTest, AnEmptyBlockAnswersTrueAndAMissingOneFalse) {
    ASSERT_TRUE(rig.Run("OrvAddLayer", "E", 1, 5, 1).True());
    for (const bool exists : {true, false}) {
        const char* code = exists ? "E" : "none";
        for (const Ran& ran :
             {rig.Run("OrvSetFontStyleAll", code, 1, "f", 1, 0, 0, 0.0, 0, 0, 0, 0, 0), rig.Run("OrvSetFontName", code, 1, "f"),
              rig.Run("OrvSetFontSize", code, 1, 5), rig.Run("OrvSetFontStyle", code, 1, 0, 0, 0.0, 0, 0, 0),
              rig.Run("OrvSetFontColor", code, 1, 1, 2)}) {
            EXPECT_EQ(ran.True(), exists);
            EXPECT_EQ(ran.False(), !exists);
        }
    }
}

TEST_F(TextMembersTest, NoneOfThemRepaintsOrMarksTheControlAsModified) {
    SetThreeTexts();
    rig.Run("OrvSetStrStyle", "T", 1, 12, "f", 1, 0, 0, 0.0, 0, 0, 0, 0, 0);
    rig.Run("OrvSetFontSize", "T", 1, 5);
    EXPECT_TRUE(rig.verbs->Lines().empty());
    EXPECT_FALSE(rig.ctrl->Modified());
}

TEST_F(TextMembersTest, ATextOfACodeOf50CharactersCanBeSet) {
    const std::string code(50, 'k');
    ASSERT_TRUE(rig.Run("OrvAddLayer", code, 1, 5, 1).True());
    ASSERT_TRUE(rig.Run("OrvAddDat", code, 1, 1, 0).True());
    EXPECT_TRUE(rig.Run("OrvSetDatString", code, 1, 1, 0.0, 0.0, "label").True());
    EXPECT_TRUE(rig.Run("OrvSetStrStyle", code, 1, 1, "f", 1, 0, 0, 0.0, 0, 0, 0, 0, 0).True());
    EXPECT_TRUE(rig.Run("OrvSetFontName", code, 1, "g").True());
    EXPECT_TRUE(rig.Run("OrvSetFontName", code + "x", 1, "g").False());
}

}  // namespace
}  // namespace orvane
