// The three members that save and read archives, on files of the system.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

class AutomationArchiveTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::path(testing::TempDir()) / (std::string("orvane_archive_") + test->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
        rig.Start();
        for (const char* code : {"A", "B"}) {
            ASSERT_TRUE(rig.Run("OrvAddLayer", code, 1, 2, 1).Ok());
            const Variant at = MakeArray(std::vector<double>{1, 2});
            ASSERT_TRUE(rig.Run("OrvAddDatEx", code, 1, 7, 3, at, at, at).True());
        }
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string Path(const std::string& name) const { return (folder / name).string(); }
    /// Saves, and starts with an empty map. Blocks made by members have no path, so the answer of a whole save is false.
    void SaveAndInit() {
        EXPECT_TRUE(rig.Run("OrvPutOFileB", Path("m.OVB"), "").False());
        ASSERT_TRUE(rig.Run("OrvInit").Ok());
        ASSERT_EQ(rig.ctrl->store.LayerCnt(), 0);
    }
    Ran ReadPart(const Variant& codes, double X2 = 0) {
        return rig.Run("OrvGetOFileBEx", Path("m.Ovb"), 0.0, 0.0, X2, 0.0, codes);
    }
    std::int32_t Blocks() { return rig.ctrl->store.BlockCnt(); }

    fs::path folder;
    AutomationRig rig;
};

TEST_F(AutomationArchiveTest, SaveAndReadThroughTheMembers) {
    SaveAndInit();
    for (const char* sibling : {"m.Ovl", "m.Ovb", "m.Ovi"}) EXPECT_TRUE(fs::exists(folder / sibling)) << sibling;
    EXPECT_FALSE(fs::exists(folder / "m.Ovm"));
    EXPECT_TRUE(rig.Run("OrvGetOFileB", Path("m.Ovb")).True());
    EXPECT_EQ(Blocks(), 2);
    EXPECT_EQ(rig.ctrl->store.FindDat("B", 1, 7)->pnts[1].x, 2);
}

TEST_F(AutomationArchiveTest, UnknownVersionAndBareNameAnswerFalse) {
    EXPECT_TRUE(rig.Run("OrvPutOFileB", Path("m.Ovb"), "1.2").False());
    EXPECT_TRUE(fs::is_empty(folder));
    SaveAndInit();
    EXPECT_TRUE(rig.Run("OrvGetOFileB", Path("m")).False());
    EXPECT_TRUE(rig.Run("OrvGetOFileB", "").False());
}

TEST_F(AutomationArchiveTest, CodesComeInAnArrayOfAnyLowerBound) {
    SaveAndInit();
    for (const std::int32_t lower : {0, 1, -3, 2147483646}) {
        ASSERT_TRUE(rig.Run("OrvInit").Ok());
        EXPECT_TRUE(ReadPart(MakeArray(std::vector<std::string>{"B"}, lower)).True()) << lower;
        EXPECT_EQ(Blocks(), 1);
        EXPECT_EQ(rig.ctrl->store.Block(0).code.View(), "B");
    }
    ASSERT_TRUE(rig.Run("OrvInit").Ok());
    EXPECT_TRUE(ReadPart(MakeArray(std::vector<Variant>{Variant("A"), Variant("B")}, 5)).True());
    EXPECT_EQ(Blocks(), 2);
}

TEST_F(AutomationArchiveTest, EmptyArrayWithoutAnAreaReadsAllAndWithOneNothing) {
    SaveAndInit();
    const Variant none = MakeArray(std::vector<std::string>{});
    EXPECT_TRUE(ReadPart(none, 5).False());
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 2);
    EXPECT_EQ(Blocks(), 0);
    EXPECT_TRUE(ReadPart(none).True());
    EXPECT_EQ(Blocks(), 2);
}

TEST_F(AutomationArchiveTest, WhatIsNoArrayOfTextsIsRefusedBeforeAnythingIsRead) {
    SaveAndInit();
    EXPECT_FALSE(ReadPart(MakeArray(std::vector<double>{1})).True());
    EXPECT_FALSE(ReadPart(Variant("A")).True());
    EXPECT_FALSE(ReadPart(Variant()).True());
    EXPECT_FALSE(ReadPart(MakeArray(std::vector<std::string>{"A", "B"}, std::vector<ArrayBound>{{0, 1}, {0, 2}})).True());
    EXPECT_FALSE(ReadPart(MakeArray(std::vector<Variant>{MakeArray(std::vector<double>{1})})).True())
        << "an element that does not convert";
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0);
}

TEST_F(AutomationArchiveTest, NameIsCutTo2047BytesOnBothReads) {
    SaveAndInit();
    const std::string dots(2047 - Path("m.Ovb").size(), '/');
    const std::string name = folder.string() + dots + "/m.Ovb";
    EXPECT_TRUE(rig.Run("OrvGetOFileB", name + "xyz").True()) << "what is behind 2047 bytes is not seen";
    EXPECT_FALSE(rig.Run("OrvGetOFileB", name.substr(0, 2046)).True());
}

TEST_F(AutomationArchiveTest, FoldersInPlaceOfFilesAnswerFalse) {
    SaveAndInit();
    fs::create_directory(folder / "m.Ovm");
    EXPECT_TRUE(rig.Run("OrvGetOFileB", Path("m.Ovb")).False()) << "there, and cannot be opened";
    fs::remove(folder / "m.Ovm");
    fs::remove(folder / "m.Ovi");
    fs::create_directory(folder / "m.Ovi");
    EXPECT_TRUE(rig.Run("OrvGetOFileB", Path("m.Ovb")).False());
    EXPECT_EQ(rig.ctrl->store.LayerCnt(), 0);
}

}  // namespace
}  // namespace orvane
