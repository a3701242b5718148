#include "hosts/common/archive_save.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <system_error>

#include "hosts/common/archive_swap.h"
#include "platform/files_std.h"
#include "tests/common/archive_save_fixture.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Without the waits for the disk, which no test can tell from their absence.
class QuickMoves : public FolderMoves {
public:
    bool Sync(const std::string&) override { return true; }
};

/// Steps on the real folder of which some fail: the n-th alone, as when a system refuses it, or it and all behind it, as when
/// the program ends there.
class FailingMoves : public FolderMoves {
public:
    bool MakeFolder(const std::string& folder) override { return Works() && FolderMoves::MakeFolder(folder); }
    bool RemoveFolder(const std::string& folder) override { return Works() && FolderMoves::RemoveFolder(folder); }
    bool RemoveFile(const std::string& file) override { return Works() && FolderMoves::RemoveFile(file); }
    bool Rename(const std::string& from, const std::string& to) override { return Works() && FolderMoves::Rename(from, to); }
    bool Sync(const std::string&) override { return Works(); }

    int failAt = 0;  ///< counted from 1; 0: none
    bool endsThere = false;
    int steps = 0;

private:
    bool Works() {
        ++steps;
        return failAt == 0 || (endsThere ? steps < failAt : steps != failAt);
    }
};

/// A disk that takes so many bytes and no more.
class FullDisk : public StdFiles {
public:
    std::unique_ptr<OutputFile> Create(std::string_view name) override {
        return std::make_unique<Output>(*this, StdFiles::Create(name));
    }
    std::size_t room_bytes = 0;

private:
    class Output : public OutputFile {
    public:
        Output(FullDisk& disk, std::unique_ptr<OutputFile> file) : disk_(disk), file_(std::move(file)) {}
        bool Write(const void* data, std::size_t size) override {
            const std::size_t taken = std::min(size, disk_.room_bytes);
            disk_.room_bytes -= taken;
            return file_->Write(data, taken) && taken == size;
        }
        bool Close() override { return file_->Close(); }

    private:
        FullDisk& disk_;
        std::unique_ptr<OutputFile> file_;
    };
};

TEST_F(ArchiveSaveTest, AMapWithoutPathsIsSavedThoughTheWriterAnswersFalse) {
    AddItems(store, 3, "");
    StdFiles files;
    EXPECT_FALSE(ArcWrite(store, files, Path("raw.Ovb"), ""));
    Clear();
    const SavedArchive saved = Save();
    EXPECT_TRUE(saved.saved) << saved.error;
    EXPECT_EQ(saved.counts.items, 3);
    EXPECT_THAT(Names(), ElementsAre("m.Ovb", "m.Ovi", "m.Ovl"));
}

TEST_F(ArchiveSaveTest, WhatIsSavedOpensAgain) {
    AddItems(store, 3, "somewhere");
    ASSERT_TRUE(Save("m.ovb").saved);
    EXPECT_THAT(Names(), ElementsAre("m.Ovb", "m.Ovi", "m.Ovl", "m.Ovm"));
    CDigMem other;
    other.Init();
    const OpenedArchive opened = OpenArchive(other, Path("m.Ovb"));
    EXPECT_TRUE(opened.opened) << opened.error;
    EXPECT_THAT(opened.warnings, IsEmpty());
    EXPECT_EQ(other.GetLayDatCnt("A", 1), 3);
    EXPECT_EQ(other.GetLayPath("A", 1), "somewhere");
}

TEST_F(ArchiveSaveTest, SiblingsThatTheNewSetLacksAreTakenAway) {
    AddItems(store, 3, "somewhere");
    ASSERT_TRUE(Save().saved);
    CDigMem plain;
    plain.Init();
    AddItems(plain, 1, "");
    const SavedArchive saved = SaveArchive(plain, Path("m.Ovb"), "");
    EXPECT_TRUE(saved.saved) << saved.error;
    EXPECT_THAT(saved.notes, Contains(HasSubstr("m.Ovm was of the former set")));
    EXPECT_THAT(Names(), ElementsAre("m.Ovb", "m.Ovi", "m.Ovl"));
}

TEST_F(ArchiveSaveTest, FilesOfOtherArchivesAndOtherKindsStay) {
    Put({{"mm.Ovb", "1"}, {"m.txt", "2"}, {"M.Ovb", "3"}, {"m.Ovb.bak", "4"}});
    AddItems(store, 1, "");
    ASSERT_TRUE(Save().saved);
    Folder all = All();
    EXPECT_EQ(all["mm.Ovb"] + all["m.txt"] + all["M.Ovb"] + all["m.Ovb.bak"], "1234");
}

TEST_F(ArchiveSaveTest, ATextArchiveGetsTheIndexThatItIsReadBy) {
    AddItems(store, 2, "");
    const SavedArchive saved = Save("m.Ovt");
    EXPECT_TRUE(saved.saved) << saved.error;
    EXPECT_THAT(Names(), ElementsAre("m.Ovi", "m.Ovl", "m.Ovt"));
    EXPECT_THAT(saved.notes, Contains(HasSubstr(".Ovi file of its version beside it")));
    CDigMem other;
    other.Init();
    EXPECT_TRUE(OpenArchive(other, Path("m.Ovt")).opened);
    EXPECT_EQ(other.GetLayDatCnt("A", 1), 2);
}

TEST_F(ArchiveSaveTest, TextBesideBinaryDataWritesThatAnewToo) {
    AddItems(store, 2, "");
    ASSERT_TRUE(Save("m.Ovb").saved);
    store.AddDigDat("A", 1, 9, 0);
    ASSERT_TRUE(Save("m.Ovt").saved);
    EXPECT_THAT(Names(), ElementsAre("m.Ovb", "m.Ovi", "m.Ovl", "m.Ovt"));
    CDigMem other;
    other.Init();
    EXPECT_TRUE(OpenArchive(other, Path("m.Ovb")).opened);
    EXPECT_EQ(other.GetLayDatCnt("A", 1), 3);
}

TEST_F(ArchiveSaveTest, TextOfVersion100IsWrittenAndSaidNeverToBeReadBack) {
    AddItems(store, 2, "");
    const SavedArchive saved = Save("m.Ovt", "1.00");
    EXPECT_TRUE(saved.saved) << saved.error;
    EXPECT_THAT(saved.notes, Contains(HasSubstr("never read back")));
    EXPECT_FALSE(OpenArchive(store, Path("m.Ovt")).begun);
}

TEST_F(ArchiveSaveTest, ATextThatWouldNotComeBackIsNotSaved) {
    AddItems(store, 1, "");
    ASSERT_TRUE(Save("m.Ovt").saved);
    const Folder before = All();
    store.SetDigDatString("A", 1, 1, 0, 0, "two\nlines");
    const SavedArchive saved = Save("m.Ovt");
    EXPECT_FALSE(saved.saved);
    EXPECT_EQ(saved.error,
              "item 1 of code \"A\", mesh number 1, has a line break in its text, which text data cannot hold; save it as .Ovb");
    EXPECT_EQ(All(), before);
    store.SetDigDatString("A", 1, 1, 0, 0, "one line");
    EXPECT_TRUE(Save("m.Ovt").saved);
}

TEST_F(ArchiveSaveTest, ACodeThatWouldShiftTheFieldsOfTextIsNotSavedAsSuch) {
    store.DigMemAlloc2("a,b", 1, kLayLine, "", 0, 0, 0);
    store.AddDigDat("a,b", 1, 1, 0);
    const SavedArchive saved = Save("m.Ovt");
    EXPECT_FALSE(saved.saved);
    EXPECT_THAT(saved.error, HasSubstr("\"a,b\" holds a comma"));
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_TRUE(Save("m.Ovb").saved);
}

TEST_F(ArchiveSaveTest, AWrittenSetWhoseKeysAreOthersThanTheMapsIsNotTaken) {
    // As many layers, blocks, items and points, but one code is another.
    class Swapping : public StdFiles {
    public:
        std::unique_ptr<OutputFile> Create(std::string_view name) override {
            auto file = StdFiles::Create(name);
            return file == nullptr ? nullptr : std::make_unique<Output>(std::move(file));
        }

    private:
        class Output : public OutputFile {
        public:
            explicit Output(std::unique_ptr<OutputFile> file) : file_(std::move(file)) {}
            bool Write(const void* data, std::size_t size) override {
                std::string bytes(static_cast<const char*>(data), size);
                for (std::size_t at = bytes.find("QQ"); at != std::string::npos; at = bytes.find("QQ"))
                    bytes.replace(at, 2, "RR");
                return file_->Write(bytes.data(), bytes.size());
            }
            bool Close() override { return file_->Close(); }

        private:
            std::unique_ptr<OutputFile> file_;
        };
    };
    store.DigMemAlloc2("QQ", 1, kLayLine, "", 0, 0, 0);
    store.AddDigDat("QQ", 1, 1, 0);
    Swapping files;
    QuickMoves moves;
    const SavedArchive saved = SaveArchive(store, Path("m.Ovb"), "", {}, files, moves);
    EXPECT_FALSE(saved.saved);
    EXPECT_THAT(saved.error, HasSubstr("other codes"));
}

TEST_F(ArchiveSaveTest, AWriteThatFailsIsToldWithTheSystemsReasonAndTheNameThatWasGiven) {
    /// Every write is refused as by a full disk.
    class Refusing : public StdFiles {
    public:
        std::unique_ptr<OutputFile> Create(std::string_view) override { return std::make_unique<Output>(); }

    private:
        class Output : public OutputFile {
        public:
            bool Write(const void*, std::size_t) override {
                errno = ENOSPC;
                return false;
            }
            bool Close() override { return true; }
        };
    };
    AddItems(store, 3, "p");
    Refusing files;
    QuickMoves moves;
    const SavedArchive saved = SaveArchive(store, Path("m.Ovb"), "", {}, files, moves);
    EXPECT_FALSE(saved.saved);
    EXPECT_EQ(saved.error, "cannot write " + Path("m.Ovl") + ": " + std::generic_category().message(ENOSPC));
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(ArchiveSaveTest, AFolderThatIsNotThereIsToldAsTheReason) {
    AddItems(store, 1, "");
    const SavedArchive saved = Save("no/such/folder/m.Ovb");
    EXPECT_THAT(saved.error, HasSubstr(std::generic_category().message(ENOENT)));
    EXPECT_THAT(saved.error, ::testing::Not(HasSubstr(".ov-")));
}

TEST_F(ArchiveSaveTest, WhatASaveLeftBehindAndCannotBeClearedAwayIsNamed) {
    AddItems(store, 1, "");
    ASSERT_TRUE(Save().saved);
    fs::create_directories(Path(".m.ov-new/somebody's"));
    const SavedArchive saved = Save();
    EXPECT_FALSE(saved.saved);
    EXPECT_THAT(saved.error, HasSubstr(Path(".m.ov-new")));
    CDigMem other;
    other.Init();
    const OpenedArchive opened = OpenArchive(other, Path("m.Ovb"));
    EXPECT_TRUE(opened.opened);
    EXPECT_THAT(opened.warnings,
                Contains(::testing::AllOf(::testing::StartsWith("warning: what "), HasSubstr(Path(".m.ov-new")))));
}

TEST_F(ArchiveSaveTest, OfAnArchiveWithATailOfZerosTheItemsBeforeItAreOpened) {
    AddItems(store, 3, "");
    ASSERT_TRUE(Save().saved);
    // Each run of zeros reads as an item without a code, more of them than an index holds.
    fs::resize_file(Path("m.Ovb"), fs::file_size(Path("m.Ovb")) + 9000000);
    CDigMem other;
    other.Init();
    const OpenedArchive opened = OpenArchive(other, Path("m.Ovb"));
    EXPECT_TRUE(opened.opened) << opened.error;
    EXPECT_TRUE(opened.report.HasErrors());
    EXPECT_THAT(opened.warnings, ::testing::Not(IsEmpty()));
    const DigIndex at = other.FindBlock("A", 1);
    ASSERT_GE(at.block, 0);
    EXPECT_EQ(other.Block(at.block).datCnt, 3);
}

TEST_F(ArchiveSaveTest, NumbersThatAreNoneAreNotSavedAsText) {
    AddItems(store, 1, "");
    const double none = std::numeric_limits<double>::quiet_NaN();
    const std::vector<DigPnt> pnts = {{1, 2, 0}, {3, -std::numeric_limits<double>::infinity(), 0}};
    ASSERT_TRUE(store.SetDigDatPnts("A", 1, 1, pnts));
    EXPECT_THAT(Save("m.Ovt").error, HasSubstr("has a coordinate that is no number"));
    ASSERT_TRUE(store.SetDigDatPnts("A", 1, 1, std::vector<DigPnt>{{1, 2, 0}, {3, 4, none}}));
    EXPECT_THAT(Save("m.Ovt").error, HasSubstr("; save it as .Ovb"));
    EXPECT_TRUE(Save("m.Ovb").saved) << "bytes hold any number";
}

TEST_F(ArchiveSaveTest, TheErrorOfAnOpenThatFailsIsTheFaultAndNoWarningBeforeIt) {
    AddItems(store, 3, "");
    ASSERT_TRUE(Save().saved);
    // Two layer records of one code are a warning; a data file of nothing whole is why it cannot be read.
    const std::string layers = All()["m.Ovl"];
    std::ofstream(Path("m.Ovl"), std::ios::binary | std::ios::app) << layers.substr(40);
    fs::resize_file(Path("m.Ovb"), 41);
    CDigMem other;
    other.Init();
    const OpenedArchive opened = OpenArchive(other, Path("m.Ovb"));
    EXPECT_FALSE(opened.opened);
    EXPECT_THAT(opened.error, HasSubstr("no whole item"));
}

TEST_F(ArchiveSaveTest, WhatCannotBeAnArchiveIsRefusedWithNothingTouched) {
    Put({{"m.Ovb", "old"}});
    const Folder before = All();
    EXPECT_FALSE(Save().saved) << "an empty store";
    AddItems(store, 1, "");
    EXPECT_FALSE(Save("m.Ovb", "1.20").saved);
    EXPECT_FALSE(Save("m").saved);
    EXPECT_FALSE(Save("no/such/folder/m.Ovb").saved);
    EXPECT_EQ(All(), before);
}

TEST_F(ArchiveSaveTest, ACancelledSaveLeavesTheFormerSet) {
    AddItems(store, 3000, "p");
    ASSERT_TRUE(Save().saved);
    const Folder before = All();
    store.AddDigDat("A", 1, 4000, 0);
    for (int after = 1; after <= 6; ++after) {
        int asked = 0;
        const SavedArchive saved = SaveArchive(store, Path("m.Ovb"), "", [&](double) { return ++asked < after; });
        EXPECT_FALSE(saved.saved);
        EXPECT_EQ(saved.error, "cancelled");
        EXPECT_EQ(All(), before);
    }
}

TEST_F(ArchiveSaveTest, ADiskThatIsFullAfterAnyNumberOfBytesLeavesTheFormerSet) {
    AddItems(store, 2, "p");
    ASSERT_TRUE(Save().saved);
    const Folder before = All();
    std::size_t whole = 0;
    for (const auto& [name, content] : before) whole += content.size();
    FullDisk disk;
    QuickMoves moves;
    for (std::size_t room = 0; room < whole; room += 37) {
        disk.room_bytes = room;
        const SavedArchive saved = SaveArchive(store, Path("m.Ovb"), "", {}, disk, moves);
        ASSERT_FALSE(saved.saved) << room;
        ASSERT_NE(saved.error, "") << room;
        ASSERT_EQ(All(), before) << room;
    }
    disk.room_bytes = whole;
    EXPECT_TRUE(SaveArchive(store, Path("m.Ovb"), "", {}, disk, moves).saved);
}

// The former set has a manage file and the new one has none, or the other way round, or there was none at all: in every state
// in between either all of one or all of the other is there, or comes back at the next start.
class BrokenOffSaveTest : public ArchiveSaveTest,
                          public ::testing::WithParamInterface<std::tuple<const char*, const char*, bool>> {
protected:
    BrokenOffSaveTest() {
        next_.Init();
        AddItems(next_, 2, std::get<1>(GetParam()));
        EXPECT_TRUE(SaveArchive(next_, Path("m.Ovb"), "", {}, files_, moves_).saved);
        after_ = All();
        Clear();
        const char* path = std::get<0>(GetParam());
        if (path != nullptr) {
            AddItems(store, 5, path);
            EXPECT_TRUE(Save().saved);
        }
        before_ = All();
    }

    StdFiles files_;
    QuickMoves moves_;
    CDigMem next_;
    Folder before_;
    Folder after_;
};

TEST_P(BrokenOffSaveTest, OneOfBothSetsIsWholeAfterTheNextStart) {
    StdFiles files;
    FailingMoves moves;
    moves.endsThere = std::get<2>(GetParam());
    int failures = 0;
    for (moves.failAt = 1;; ++moves.failAt) {
        Put(before_);
        moves.steps = 0;
        const SavedArchive saved = SaveArchive(next_, Path("m.Ovb"), "", {}, files, moves);
        const bool reached = moves.steps >= moves.failAt;
        if (!saved.saved && !moves.endsThere) {
            EXPECT_EQ(All(), before_) << "a single refused step, " << moves.failAt;
        }
        QuickMoves healthy;
        EXPECT_EQ(ReadyToRead(Path("m.Ovb"), healthy).state, PlaceState::Whole) << moves.failAt;
        EXPECT_EQ(All(), saved.saved ? after_ : before_) << "step " << moves.failAt;
        if (!saved.saved) ++failures;
        if (!reached) break;
    }
    EXPECT_GT(failures, 10);
}

TEST_P(BrokenOffSaveTest, ARestoreThatIsBrokenOffItselfIsMadeGoodByTheNext) {
    StdFiles files;
    for (int saveEnds = 1; saveEnds < 40; ++saveEnds) {
        for (int restoreEnds = 1; restoreEnds < 25; ++restoreEnds) {
            Put(before_);
            FailingMoves moves;
            moves.endsThere = true;
            moves.failAt = saveEnds;
            const bool saved = SaveArchive(next_, Path("m.Ovb"), "", {}, files, moves).saved;
            moves.steps = 0;
            moves.failAt = restoreEnds;
            ReadyToRead(Path("m.Ovb"), moves);
            QuickMoves healthy;
            ASSERT_EQ(ReadyToRead(Path("m.Ovb"), healthy).state, PlaceState::Whole);
            ASSERT_EQ(All(), saved ? after_ : before_) << saveEnds << ' ' << restoreEnds;
            if (moves.steps < restoreEnds) break;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sets, BrokenOffSaveTest,
                         ::testing::Combine(::testing::Values(static_cast<const char*>(nullptr), "", "p"),
                                            ::testing::Values("", "q"), ::testing::Bool()));

TEST_F(ArchiveSaveTest, OpeningBringsBackASetThatWasMovedAside) {
    AddItems(store, 3, "p");
    ASSERT_TRUE(Save().saved);
    const Folder before = All();
    fs::create_directory(Path(".m.ov-old"));
    for (const auto& [name, content] : before) fs::rename(Path(name), Path(".m.ov-old/" + name));
    std::ofstream(Path("m.Ovb")) << "part of a new set";
    CDigMem other;
    other.Init();
    EXPECT_TRUE(OpenArchive(other, Path("m.Ovb")).opened);
    EXPECT_EQ(All(), before);
    EXPECT_EQ(other.GetLayDatCnt("A", 1), 3);
}

TEST_F(ArchiveSaveTest, ADamagedArchiveOpensAsFarAsItGoesAndSaysSo) {
    AddItems(store, 3, "");
    ASSERT_TRUE(Save().saved);
    fs::resize_file(Path("m.Ovb"), fs::file_size(Path("m.Ovb")) - 1);
    CDigMem other;
    other.Init();
    const OpenedArchive opened = OpenArchive(other, Path("m.Ovb"));
    EXPECT_TRUE(opened.opened);
    EXPECT_TRUE(opened.report.HasErrors());
    EXPECT_THAT(opened.warnings, Contains(HasSubstr("no whole item")));
    EXPECT_EQ(other.GetLayDatCnt("A", 1), 2);
}

TEST_F(ArchiveSaveTest, WhatIsNoArchiveIsNotBegun) {
    bool emptied = false;
    const OpenedArchive opened = OpenArchive(store, Path("none.Ovb"), {}, [&] { emptied = true; });
    EXPECT_FALSE(opened.opened);
    EXPECT_FALSE(emptied);
    EXPECT_THAT(opened.error, HasSubstr("none.Ovb is missing"));
}

}  // namespace
}  // namespace orvane
