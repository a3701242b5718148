// The members that read legacy files, as a host calls them, on real files.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "platform/file_names.h"
#include "tests/control/automation_rig.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLine = "FH,533945,n,4,1,1,1,0,0,9,9\r\nL,0,1,2\r\n0,0\r\n9,9\r\n\x1A";
constexpr const char* kPolygon = "FH,533945,n,3,1,1,1,0,0,9,9\r\nA,1,1,\r\n1\r\n\x1A";
constexpr const char* kPoint = "FH,533945,n,2,1,1,1,0,0,9,9\r\nP,1,5,5\r\n\x1A";
constexpr const char* kFaulty = "FH,533945,n,2,1,1,1,0,0,9,9\r\nP,1,5,5,6,7\r\n\x1A";

class AutomationLegacyFilesTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        root_ = fs::path(testing::TempDir()) / ("orvane_legacy_" + std::to_string(std::random_device{}()) + test->name());
        fs::remove_all(root_);
        fs::create_directories(root_);
        rig.Start();
    }
    void TearDown() override { fs::remove_all(root_); }

    std::string Make(const std::string& name, const std::string& content) const {
        std::ofstream(root_ / name, std::ios::binary) << content;
        return (root_ / name).string();
    }

    fs::path root_;
    AutomationRig rig;
};

TEST_F(AutomationLegacyFilesTest, FolderIsReadInOrderWhateverTheOrderOfTheFileSystem) {
    Make("2.pnt", kPoint);
    Make("a.pgn", kPolygon);
    Make("1.PNT", kPoint);
    Make("k-b.arc", kLine);
    Make("a.arc", "no header");
    ASSERT_TRUE(rig.Run("RDMDatDirRead", root_.string(), 0).True());
    std::vector<std::string> paths;
    const CDigMem& store = rig.ctrl->store;
    for (std::int32_t pos = 0; pos < store.BlockCnt(); ++pos)
        paths.push_back(fs::path(store.Block(pos).path).filename().string());
    EXPECT_THAT(paths, testing::ElementsAre("k-b.arc", "a.pgn", "1.PNT", "2.pnt"));
    EXPECT_EQ(store.Block(1).dats[0].pntCnt, 2);
    EXPECT_EQ(rig.Run("GetLayPath", "L", 533945).Text(), root_.string() + kPathSeparator + "k-b.arc");
    EXPECT_EQ(rig.Layer("A").layIndex, 9999);
    EXPECT_TRUE(rig.window.messages.empty());
    EXPECT_TRUE(rig.Run("RDMDatDirRead", root_.string() + kPathSeparator, 1).True());
    EXPECT_EQ(store.BlockCnt(), 5) << "of type 1 there is one";
    EXPECT_TRUE(rig.Run("RDMDatDirRead", root_.string(), 2).False());
}

TEST_F(AutomationLegacyFilesTest, OneFileIsReadAndNamedLayersAreAsked) {
    EXPECT_TRUE(rig.Run("RDMDatFileRead", Make("a.arc", kLine)).True());
    EXPECT_TRUE(rig.Run("RDMDatFileReadEx", Make("a.pgn", kPolygon), "L").True());
    EXPECT_EQ(rig.ctrl->store.Block(1).dats[0].pntCnt, 2);
    EXPECT_TRUE(rig.Run("RDMDatFileReadEx", Make("b.pgn", kPolygon), "M").False());
    EXPECT_TRUE(rig.Run("RDMDatFileRead", Make("c.pgn", kPolygon)).True());
    EXPECT_EQ(rig.ctrl->store.BlockCnt(), 3);
    EXPECT_EQ(rig.Layer("A").layIndex, 2) << "one file alone sets no key";
    EXPECT_TRUE(rig.Run("RDMDatFileRead", root_.string()).False());
}

TEST_F(AutomationLegacyFilesTest, FaultIsToldInAMessageBox) {
    const std::string name = Make("a.pnt", kFaulty);
    EXPECT_TRUE(rig.Run("RDMDatFileRead", name).False());
    ASSERT_EQ(rig.window.messages.size(), 1u);
    EXPECT_TRUE(rig.window.messages[0].text.starts_with(name + "\x82\xCC"));
    EXPECT_EQ(rig.window.messages[0].title, "DATA FORMAT ERROR");
    EXPECT_EQ(rig.window.messages[0].icon, MessageIcon::Exclamation);
}

TEST_F(AutomationLegacyFilesTest, HostMayLetTheControlGoWhileTheMessageStands) {
    Make("a.arc", "FH,533945,n,3,1,1,1,0,0,9,9\r\nL,0,1,1\r\n5\r\n\x1A");
    Make("b.arc", kLine);
    COrvane4Ctrl* ctrl = rig.ctrl.get();
    rig.window.onMessage = [&](const auto&) {
        rig.ctrl.reset();
        ctrl->RDMInit();
    };
    Argument path;
    path.value = Variant(root_.string());
    Argument type;
    type.value = Variant(std::int32_t{0});
    std::vector<Argument> args;
    args.push_back(path);
    args.push_back(type);
    const InvokeResult result = Invoke(*ctrl, "RDMDatDirRead", InvokeKind::Method, args);
    bool answer = true;
    EXPECT_TRUE(result.value.ToBool(answer));
    EXPECT_FALSE(answer) << "the store was started over";
    EXPECT_EQ(rig.window.messages.size(), 1u);
}

}  // namespace
}  // namespace orvane
