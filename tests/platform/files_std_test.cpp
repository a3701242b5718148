#include "platform/files_std.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>

namespace orvane {
namespace {

namespace fs = std::filesystem;

class FilesStdTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        root_ = fs::path(testing::TempDir()) / ("orvane_files_" + std::to_string(std::random_device{}()) + test->name());
        fs::remove_all(root_);
        fs::create_directories(root_);
    }
    void TearDown() override { fs::remove_all(root_); }

    std::string Path(const std::string& name) const { return (root_ / name).string(); }
    void Make(const std::string& name, const std::string& content) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name, std::ios::binary) << content;
    }
    std::string Content(const std::string& name) {
        auto file = files_.OpenRead(Path(name));
        if (file == nullptr) return "(none)";
        std::string content(static_cast<std::size_t>(file->Size_bytes()), '?');
        content.resize(file->ReadAt(0, content.data(), content.size()));
        return content;
    }
    OpenError CauseOf(const std::string& path) {
        OpenError cause = OpenError::None;
        EXPECT_EQ(files_.OpenRead(path, &cause), nullptr);
        return cause;
    }
    // Names that differ in case only need a file system that keeps them apart.
    bool CaseMatters() const {
        Make("case_probe", "");
        return !fs::exists(root_ / "CASE_PROBE");
    }

    fs::path root_;
    StdFiles files_;
};

TEST_F(FilesStdTest, WhatIsWrittenIsReadBack) {
    auto out = files_.Create(Path("a.bin"));
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(out->Write("abc", 3));
    EXPECT_TRUE(out->Write("\0\r\n", 3));
    EXPECT_TRUE(out->Close());
    EXPECT_EQ(Content("a.bin"), std::string("abc\0\r\n", 6));
}

TEST_F(FilesStdTest, CreateTruncatesWhatWasThere) {
    Make("a.bin", "long content");
    auto out = files_.Create(Path("a.bin"));
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(out->Close());
    EXPECT_EQ(Content("a.bin"), "");
}

TEST_F(FilesStdTest, AClosedFileTakesNoMore) {
    auto out = files_.Create(Path("a.bin"));
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(out->Close());
    EXPECT_FALSE(out->Write("x", 1));
    EXPECT_FALSE(out->Close());
}

TEST_F(FilesStdTest, ReadsStandOnTheirOwnAndStopAtTheEnd) {
    Make("a.bin", "0123456789");
    auto file = files_.OpenRead(Path("a.bin"));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->Size_bytes(), 10u);
    std::array<char, 8> buffer{};
    EXPECT_EQ(file->ReadAt(6, buffer.data(), 8), 4u);
    EXPECT_EQ(std::string(buffer.data(), 4), "6789");
    EXPECT_EQ(file->ReadAt(10, buffer.data(), 1), 0u);
    EXPECT_EQ(file->ReadAt(UINT64_MAX, buffer.data(), 1), 0u);
    EXPECT_EQ(file->ReadAt(1, buffer.data(), 2), 2u);
    EXPECT_EQ(std::string(buffer.data(), 2), "12");
}

TEST_F(FilesStdTest, AFileCutShortWhileOpenGivesFewerBytes) {
    Make("a.bin", "0123456789");
    auto file = files_.OpenRead(Path("a.bin"));
    ASSERT_NE(file, nullptr);
    fs::resize_file(root_ / "a.bin", 3);
    std::array<char, 10> buffer{};
    EXPECT_EQ(file->ReadAt(0, buffer.data(), 10), 3u);
}

TEST_F(FilesStdTest, AMissingFileIsToldApartFromOtherCauses) {
    EXPECT_EQ(CauseOf(Path("none.bin")), OpenError::Missing);
    EXPECT_EQ(CauseOf(Path("no/such/folder/none.bin")), OpenError::Missing);
    EXPECT_EQ(CauseOf(""), OpenError::Missing);
    EXPECT_EQ(CauseOf(root_.string()), OpenError::Other);
    Make("a.bin", "x");
    OpenError cause = OpenError::Other;
    EXPECT_NE(files_.OpenRead(Path("a.bin"), &cause), nullptr);
    EXPECT_EQ(cause, OpenError::None);
}

TEST_F(FilesStdTest, AFileInPlaceOfAFolderIsAMissingPath) {
    Make("a.bin", "x");
    EXPECT_EQ(CauseOf(Path("a.bin") + "/b.bin"), OpenError::Missing);
}

TEST_F(FilesStdTest, APathThatTheSystemRefusesIsNotMissing) {
    std::error_code error;
    fs::create_symlink("loop", root_ / "loop", error);
    if (error) GTEST_SKIP() << "no symbolic links here";
    EXPECT_EQ(CauseOf(Path("loop")), OpenError::Other);
}

TEST_F(FilesStdTest, BadNamesAnswerWithoutThrowing) {
    const std::string zero("a\0b", 3);
    const std::string endless(100000, 'x');
    for (const std::string& name : {std::string(), zero, endless, Path("") + std::string("\xFF\xFE/\x80")}) {
        FileFacts facts;
        EXPECT_EQ(files_.OpenRead(name), nullptr);
        EXPECT_EQ(files_.Create(name), nullptr);
        EXPECT_FALSE(files_.Facts(name, facts));
        EXPECT_TRUE(files_.List(name, "*").empty());
    }
}

TEST_F(FilesStdTest, AFolderCannotBeCreatedAsAFile) {
    fs::create_directory(root_ / "folder");
    EXPECT_EQ(files_.Create(Path("folder")), nullptr);
    EXPECT_EQ(files_.Create(Path("folder/")), nullptr);
    EXPECT_EQ(files_.Create(Path("none/a.bin")), nullptr);
    EXPECT_TRUE(fs::is_directory(root_ / "folder"));
}

TEST_F(FilesStdTest, AFullDeviceIsToldAtTheLatestByClose) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no such device here";
    auto out = files_.Create("/dev/full");
    ASSERT_NE(out, nullptr);
    const bool written = out->Write("abc", 3);
    EXPECT_FALSE(written && out->Close());
}

TEST_F(FilesStdTest, FactsTellSizeTimeAndFolder) {
    Make("a.bin", "12345");
    FileFacts facts;
    ASSERT_TRUE(files_.Facts(Path("a.bin"), facts));
    EXPECT_EQ(facts.size_bytes, 5u);
    EXPECT_FALSE(facts.directory);
    // 2001-09-09 01:46:40 UTC is one billion seconds after 1970.
    const std::chrono::sys_seconds billion{std::chrono::seconds(1000000000)};
    fs::last_write_time(root_ / "a.bin", std::chrono::file_clock::from_sys(billion));
    ASSERT_TRUE(files_.Facts(Path("a.bin"), facts));
    EXPECT_EQ(facts.changeTime_ns, 1000000000LL * 1000000000LL);
    ASSERT_TRUE(files_.Facts(root_.string(), facts));
    EXPECT_TRUE(facts.directory);
    facts.size_bytes = 99;
    EXPECT_FALSE(files_.Facts(Path("none"), facts));
    EXPECT_EQ(facts.size_bytes, 99u);
}

TEST_F(FilesStdTest, APathIsFoundInAnyCaseComponentByComponent) {
    Make("Maps/Tokyo/Sheet.OVM", "found");
    EXPECT_EQ(Content("maps/TOKYO/sheet.ovm"), "found");
    FileFacts facts;
    EXPECT_TRUE(files_.Facts(Path("MAPS/tokyo"), facts));
    EXPECT_EQ(files_.List(Path("mAPS/tOKYO"), "*.ovm"), std::vector<std::string>{"Sheet.OVM"});
}

TEST_F(FilesStdTest, TheSystemsNameIsOfWhatIsThereInAnyCase) {
    Make("Maps/Sheet.tif", "found");
    files_.toSystem = [](std::string_view name) { return std::string(name) + ".tif"; };
    EXPECT_EQ(files_.SystemPath(Path("Maps/SHEET")), Path("Maps/Sheet.tif"));
    EXPECT_EQ(files_.SystemPath(Path("Maps/Sheet.tif")), Path("Maps/Sheet.tif")) << "as its bytes stand";
    EXPECT_EQ(files_.SystemPath(Path("Maps/none")), "");
    EXPECT_EQ(files_.SystemPath(""), "");
    EXPECT_EQ(files_.SystemPath(std::string(Path("Maps") + '\0' + "x")), "");
}

TEST_F(FilesStdTest, TheExactNameGoesBeforeOneInAnotherCase) {
    if (!CaseMatters()) GTEST_SKIP() << "names do not differ by case here";
    Make("A.bin", "upper");
    Make("a.bin", "lower");
    EXPECT_EQ(Content("A.bin"), "upper");
    EXPECT_EQ(Content("a.bin"), "lower");
}

TEST_F(FilesStdTest, AmongSeveralInAnotherCaseTheFirstByNameIsTaken) {
    if (!CaseMatters()) GTEST_SKIP() << "names do not differ by case here";
    Make("aB.bin", "second");
    Make("AB.bin", "first");
    EXPECT_EQ(Content("ab.bin"), "first");
}

TEST_F(FilesStdTest, ASiblingIsThatOfTheFileThatIsThereAndNoOthersInAnotherCase) {
    if (!CaseMatters()) GTEST_SKIP() << "the file system keeps no case";
    const auto sibling = [this](const std::string& base, OpenError* cause) {
        const auto file = files_.OpenSibling(Path(base), ".Ovb", ".Ovm", cause);
        return file == nullptr ? std::uint64_t{0} : file->Size_bytes();
    };
    OpenError cause = OpenError::None;
    Make("m.Ovb", "data");
    Make("M.Ovb", "data");
    Make("M.Ovm", "12");
    EXPECT_EQ(sibling("m", &cause), 0u);
    EXPECT_EQ(cause, OpenError::Missing);
    EXPECT_EQ(sibling("M", &cause), 2u);
    Make("m.OVM", "123");
    EXPECT_EQ(sibling("m", &cause), 3u) << "the extension may be written in any case";
    fs::remove(Path("m.Ovb"));
    EXPECT_EQ(sibling("m", &cause), 2u) << "the data file is found in another case, and its own sibling with it";
}

TEST_F(FilesStdTest, CreateWritesIntoTheFileThatIsThereInAnotherCase) {
    Make("Data/Sheet.ovm", "old");
    auto out = files_.Create(Path("data/SHEET.OVM"));
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(out->Write("new", 3));
    EXPECT_TRUE(out->Close());
    EXPECT_EQ(Content("Data/Sheet.ovm"), "new");
    auto other = files_.Create(Path("DATA/fresh.ovm"));
    ASSERT_NE(other, nullptr);
    EXPECT_TRUE(other->Close());
    EXPECT_EQ(files_.List(Path("Data"), "*"), (std::vector<std::string>{"Sheet.ovm", "fresh.ovm"}));
}

TEST_F(FilesStdTest, ListIsSortedAndHoldsNoFolders) {
    for (const char* name : {"c.arc", "a.ARC", "b.pgn", "B.arc"}) Make(name, "");
    fs::create_directory(root_ / "folder.arc");
    EXPECT_EQ(files_.List(root_.string(), "*.arc"), (std::vector<std::string>{"B.arc", "a.ARC", "c.arc"}));
    EXPECT_EQ(files_.List(root_.string(), "?.PGN"), std::vector<std::string>{"b.pgn"});
    EXPECT_TRUE(files_.List(root_.string(), "*.pnt").empty());
    EXPECT_TRUE(files_.List(Path("none"), "*").empty());
    EXPECT_TRUE(files_.List(Path("b.pgn"), "*").empty());
}

// Stands for the code page: the byte B1 is the host's form of the system's "katakana".
class FilesStdNamesTest : public FilesStdTest {
protected:
    FilesStdNamesTest() {
        files_.toSystem = [](std::string_view name) { return Replaced(name, "\xB1", "katakana"); };
        files_.toHost = [](std::string_view name) { return Replaced(name, "katakana", "\xB1"); };
    }
    static std::optional<std::string> Replaced(std::string_view name, std::string_view from, std::string_view to) {
        if (name.find("bad") != std::string_view::npos) return std::nullopt;
        std::string text(name);
        for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
        return text;
    }
};

TEST_F(FilesStdNamesTest, ANameIsTriedConvertedFirst) {
    Make("katakana.bin", "converted");
    EXPECT_EQ(Content("\xB1.bin"), "converted");
    EXPECT_EQ(Content("\xB1.BIN"), "converted");
}

TEST_F(FilesStdNamesTest, ANameThatConvertsToNothingThereIsTriedAsItsBytesStand) {
    std::error_code error;
    fs::create_directory(root_ / "\xB1", error);
    if (error) GTEST_SKIP() << "such bytes are no name here";
    Make("\xB1/a.bin", "raw");
    EXPECT_EQ(Content("\xB1/a.bin"), "raw");
}

TEST_F(FilesStdNamesTest, ANameThatDoesNotConvertIsTriedAsItsBytesStand) {
    Make("bad.bin", "raw");
    EXPECT_EQ(Content("bad.bin"), "raw");
}

// Code page 932 has one wave dash, and systems have two.
TEST_F(FilesStdNamesTest, ANameThatIsTheSameToTheHostIsTheOneThatIsMeantWhereNoOtherIs) {
    files_.toHost = [](std::string_view name) {
        const auto wave = Replaced(name, "wave", "\xB1");
        return wave ? Replaced(*wave, "katakana", "\xB1") : wave;
    };
    Make("wave folder/wave.bin", "found");
    EXPECT_EQ(Content("\xB1 folder/\xB1.bin"), "found");
    Make("wave folder/bad wave.bin", "does not convert");
    EXPECT_EQ(Content("\xB1 folder/bad \xB1.bin"), "(none)");
    Make("wave folder/Katakana.bin", "another case");
    EXPECT_EQ(Content("wave folder/\xB1.bin"), "another case");
    Make("wave folder/katakana.bin", "exact");
    EXPECT_EQ(Content("wave folder/\xB1.bin"), "exact");
}

TEST_F(FilesStdNamesTest, ANewFileGetsTheConvertedName) {
    auto out = files_.Create(Path("\xB1.bin"));
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(out->Close());
    EXPECT_TRUE(fs::exists(root_ / "katakana.bin"));
}

TEST_F(FilesStdNamesTest, ListTakesAndGivesTheHostsForm) {
    Make("katakana1.bin", "");
    Make("bad katakana.bin", "");
    EXPECT_EQ(files_.List(root_.string(), "\xB1*"), std::vector<std::string>{"\xB1"
                                                                             "1.bin"});
    // What does not convert back is given as the system has it.
    EXPECT_EQ(files_.List(root_.string(), "b*"), std::vector<std::string>{"bad katakana.bin"});
}

}  // namespace
}  // namespace orvane
