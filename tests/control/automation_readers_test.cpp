// The members that read the symbol file and the line type file, as a late-bound host calls them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "render/line_polygon.h"
#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

class ReaderMembersTest : public ::testing::Test {
protected:
    void SetUp() override {
        rig.Start();
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::path(testing::TempDir()) / (std::string("orvane_readers_") + test->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string Make(const std::string& name, const std::string& content) const {
        std::ofstream(folder / name, std::ios::binary) << content;
        return (folder / name).string();
    }
    const CDigMem& Store() const { return rig.ctrl->store; }
    static const std::vector<std::int32_t>& Longs(const Ran& ran) {
        return std::get<std::vector<std::int32_t>>(ran.args[0].buffer);
    }

    AutomationRig rig;
    fs::path folder;
};

constexpr const char* kTwoSymbols = "1,0,1,2,3\r\n1,4,5,6,7\r\n2,8,9,10,11\r\n9,0,0,0,0\r\n\x1A";
constexpr const char* kThreeLineTypes = "SYS,30,solid\r\nUSERA,10,dash,2,6,2\r\nUSERG,20,wave,7,12,3\r\n";

TEST_F(ReaderMembersTest, SymbolsAreReadUnderBothNames) {
    const std::string file = Make("symbols.txt", kTwoSymbols);
    const std::string other = Make("other.txt", "5,0,0,1,1\r\n9,0,0,0,0\r\n");
    for (const char* name : {"ReadSymbolData", "OrvGetSymbolData"}) {
        EXPECT_TRUE(rig.Run(name, other).True());
        ASSERT_EQ(Store().symbols.size(), 1u);
        EXPECT_TRUE(rig.Run(name, file).True());
        ASSERT_EQ(Store().symbols.size(), 2u);
        EXPECT_EQ(Store().symbols[0].symNo, 1);
        EXPECT_EQ(Store().symbols[0].strokeCnt, 2);
        EXPECT_EQ(Store().symbols[0].strokeTo[1], (Point{6, 7}));
        EXPECT_EQ(Store().symbols[1].symNo, 2);
    }
}

TEST_F(ReaderMembersTest, AMissingOrEmptySymbolFileClearsTheTableAndTheAnswerIsTrue) {
    const std::string file = Make("symbols.txt", kTwoSymbols);
    for (const std::string& name : {(folder / "missing.txt").string(), Make("empty.txt", ""), folder.string(), std::string()}) {
        ASSERT_TRUE(rig.Run("ReadSymbolData", file).True());
        ASSERT_EQ(Store().symbols.size(), 2u);
        EXPECT_TRUE(rig.Run("ReadSymbolData", name).True()) << name;
        EXPECT_TRUE(Store().symbols.empty()) << name;
    }
}

TEST_F(ReaderMembersTest, LineTypesAreCountedAndTheirNumbersTold) {
    EXPECT_EQ(rig.Run("OrvReadLineTypeData", Make("lines.txt", kThreeLineTypes)).Long(), 3);
    const Ran told = rig.Run("OrvGetLineType");
    ASSERT_TRUE(told.Ok());
    EXPECT_EQ(Longs(told), (std::vector<std::int32_t>{30, 10, 20}));
    EXPECT_TRUE(told.args[0].written);
    EXPECT_EQ(told.args[0].count, 3u);
}

TEST_F(ReaderMembersTest, ABufferForFewerNumbersIsRefusedAndOfALongerOneTheRestStays) {
    ASSERT_EQ(rig.Run("OrvReadLineTypeData", Make("lines.txt", kThreeLineTypes)).Long(), 3);
    std::vector<Argument> args(1);
    args[0].buffer = std::vector<std::int32_t>{7, 7};
    EXPECT_EQ(Invoke(*rig.ctrl, "OrvGetLineType", InvokeKind::Method, args).status, InvokeStatus::BufferTooShort);
    EXPECT_EQ(std::get<std::vector<std::int32_t>>(args[0].buffer), (std::vector<std::int32_t>{7, 7}));
    args[0].buffer = std::vector<std::int32_t>{7, 7, 7, 7};
    EXPECT_EQ(Invoke(*rig.ctrl, "OrvGetLineType", InvokeKind::Method, args).status, InvokeStatus::Ok);
    EXPECT_EQ(std::get<std::vector<std::int32_t>>(args[0].buffer), (std::vector<std::int32_t>{30, 10, 20, 7}));
}

TEST_F(ReaderMembersTest, AMissingLineTypeFileGivesZeroAndClearsTheTable) {
    ASSERT_EQ(rig.Run("OrvReadLineTypeData", Make("lines.txt", kThreeLineTypes)).Long(), 3);
    EXPECT_EQ(rig.Run("OrvReadLineTypeData", (folder / "missing.txt").string()).Long(), 0);
    EXPECT_TRUE(Store().lineTypes.empty());
    EXPECT_TRUE(Longs(rig.Run("OrvGetLineType")).empty());
    EXPECT_TRUE(rig.window.messages.empty());
}

TEST_F(ReaderMembersTest, OnceAFileIsLoadedLineTypeThreeIsSolidUnlessTheFileHasIt) {
    const auto pen = [this](std::int32_t lineType) {
        std::int32_t kind = -1;
        std::int32_t index = -1;
        return MakeLinePen(Store(), lineType, 1, 0, kind, index);
    };
    EXPECT_EQ(pen(3), CreatePen(PenStyle::DashDot, 1, 0));
    rig.Run("OrvReadLineTypeData", Make("lines.txt", kThreeLineTypes));
    EXPECT_EQ(pen(3), CreatePen(PenStyle::Solid, 1, 0));
    rig.Run("OrvReadLineTypeData", Make("lines.txt", "SYS,3,dash-dot\n"));
    EXPECT_EQ(pen(3), CreatePen(PenStyle::DashDot, 1, 0));
    // A file that is not there leaves an empty table, and that stands for the standard styles again.
    rig.Run("OrvReadLineTypeData", "");
    EXPECT_EQ(pen(3), CreatePen(PenStyle::DashDot, 1, 0));
}

TEST_F(ReaderMembersTest, ASecondInitDiscardsSymbolsAndLineTypes) {
    rig.Run("ReadSymbolData", Make("symbols.txt", kTwoSymbols));
    rig.Run("OrvReadLineTypeData", Make("lines.txt", kThreeLineTypes));
    ASSERT_EQ(Store().symbols.size(), 2u);
    ASSERT_EQ(Store().lineTypes.size(), 3u);
    rig.Run("OrvInit");
    EXPECT_TRUE(Store().symbols.empty());
    EXPECT_TRUE(Store().lineTypes.empty());
}

TEST_F(ReaderMembersTest, BeforeTheFirstInitNothingIsRead) {
    AutomationRig fresh;
    EXPECT_TRUE(fresh.Run("ReadSymbolData", Make("symbols.txt", kTwoSymbols)).True());
    EXPECT_EQ(fresh.Run("OrvReadLineTypeData", Make("lines.txt", kThreeLineTypes)).Long(), 0);
    EXPECT_TRUE(fresh.ctrl->store.symbols.empty());
    EXPECT_TRUE(fresh.ctrl->store.lineTypes.empty());
}

}  // namespace
}  // namespace orvane
