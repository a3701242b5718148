// Saves and reads of one archive by several programs.
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

#include "hosts/common/archive_save.h"
#include "hosts/common/archive_swap.h"
#include "platform/files_std.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Counts the moments that it was to let pass, and does something in each.
class CountedPauses : public FolderMoves {
public:
    void Pause() override {
        ++pauses;
        if (onPause) onPause();
    }
    bool Sync(const std::string&) override { return true; }

    int pauses = 0;
    std::function<void()> onPause;
};

/// Ends the program, as the system would, at the n-th step.
class DeadlyMoves : public FolderMoves {
public:
    explicit DeadlyMoves(int at) : left_(at) {}
    bool MakeFolder(const std::string& folder) override { return Count() && FolderMoves::MakeFolder(folder); }
    bool RemoveFolder(const std::string& folder) override { return Count() && FolderMoves::RemoveFolder(folder); }
    bool RemoveFile(const std::string& file) override { return Count() && FolderMoves::RemoveFile(file); }
    bool Rename(const std::string& from, const std::string& to) override { return Count() && FolderMoves::Rename(from, to); }
    bool Sync(const std::string&) override { return true; }

private:
    bool Count() {
        if (--left_ == 0) ::kill(::getpid(), SIGKILL);
        return true;
    }
    int left_;
};

class ArchiveLockTest : public ::testing::Test {
protected:
    ArchiveLockTest() : folder_(fs::temp_directory_path() / ("orvane_locks_" + std::to_string(::getpid()))) {
        fs::remove_all(folder_);
        fs::create_directory(folder_);
    }
    ~ArchiveLockTest() override { fs::remove_all(folder_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder_)) names.insert(entry.path().filename().string());
        return names;
    }
    /// Saves a map of so many items.
    SavedArchive Save(int items, FolderMoves& moves) const {
        CDigMem store;
        store.Init();
        store.DigMemAlloc2("A", 1, kLayLine, "p", 0, 0, 0);
        for (int i = 1; i <= items; ++i) {
            store.AddDigDat("A", 1, i, 0);
            const DigPnt pnts[] = {{0.5 * i, 1, 0}, {10, 2, 0}};
            store.SetDigDatPnts("A", 1, i, pnts);
        }
        StdFiles files;
        return SaveArchive(store, Path("m.Ovb"), "", {}, files, moves);
    }
    OpenedArchive Open(FolderMoves& moves, std::int32_t* items = nullptr) const {
        CDigMem store;
        store.Init();
        OpenedArchive opened = OpenArchive(store, Path("m.Ovb"), {}, {}, moves);
        if (items != nullptr) *items = store.GetLayDatCnt("A", 1);
        return opened;
    }
    /// Runs in a process of its own; its answer is what `work` answers.
    static pid_t Start(const std::function<bool()>& work) {
        const pid_t child = ::fork();
        if (child == 0) ::_exit(work() ? 0 : 1);
        return child;
    }
    static int End(pid_t child) {
        int status = 0;
        ::waitpid(child, &status, 0);
        return status;
    }

    const std::set<std::string> whole_ = {"m.Ovb", "m.Ovi", "m.Ovl", "m.Ovm"};
    CountedPauses moves_;

private:
    fs::path folder_;
};

TEST_F(ArchiveLockTest, AReaderLeavesASaveThatIsAtWorkAloneAndReadsWhatStands) {
    ASSERT_TRUE(Save(3, moves_).saved);
    ArchivePlace other(moves_, Path("m"));
    ASSERT_EQ(other.Claim(), FileLock::Outcome::Taken);
    ASSERT_TRUE(other.MakeWaiting());
    std::ofstream(other.WaitingBase() + ".Ovb") << "half of it";
    std::int32_t items = 0;
    const OpenedArchive opened = Open(moves_, &items);
    EXPECT_TRUE(opened.opened) << opened.error;
    EXPECT_THAT(opened.warnings, IsEmpty());
    EXPECT_EQ(items, 3);
    EXPECT_EQ(moves_.pauses, 0);
    EXPECT_TRUE(fs::exists(other.WaitingBase() + ".Ovb"));
}

TEST_F(ArchiveLockTest, WhileTheFilesAreMovedAReaderWaitsAndThenSaysWhy) {
    ASSERT_TRUE(Save(3, moves_).saved);
    ArchivePlace other(moves_, Path("m"));
    ASSERT_EQ(other.Claim(), FileLock::Outcome::Taken);
    fs::create_directory(Path(".m.ov-away"));
    fs::rename(Path("m.Ovb"), Path(".m.ov-away/m.Ovb"));
    const OpenedArchive opened = Open(moves_);
    EXPECT_FALSE(opened.opened);
    EXPECT_FALSE(opened.begun);
    EXPECT_THAT(opened.error, HasSubstr("is just saving"));
    EXPECT_GT(moves_.pauses, 0);
    EXPECT_TRUE(fs::exists(Path(".m.ov-away/m.Ovb")));
}

TEST_F(ArchiveLockTest, AReaderThatWaitsGoesOnWhenTheOtherIsDone) {
    ASSERT_TRUE(Save(3, moves_).saved);
    auto other = std::make_unique<ArchivePlace>(moves_, Path("m"));
    ASSERT_EQ(other->Claim(), FileLock::Outcome::Taken);
    fs::create_directory(Path(".m.ov-away"));
    fs::rename(Path("m.Ovb"), Path(".m.ov-away/m.Ovb"));
    // It dies there: its lock is free then.
    moves_.onPause = [&] { other.reset(); };
    std::int32_t items = 0;
    EXPECT_TRUE(Open(moves_, &items).opened);
    EXPECT_EQ(items, 3);
    EXPECT_EQ(moves_.pauses, 1);
    EXPECT_EQ(Names(), whole_);
}

TEST_F(ArchiveLockTest, TheSecondOfTwoSavesIsRefusedWithNothingTouched) {
    ASSERT_TRUE(Save(3, moves_).saved);
    ArchivePlace other(moves_, Path("m"));
    ASSERT_EQ(other.Claim(), FileLock::Outcome::Taken);
    ASSERT_TRUE(other.MakeWaiting());
    const SavedArchive saved = Save(5, moves_);
    EXPECT_FALSE(saved.saved);
    EXPECT_THAT(saved.error, HasSubstr("another program is saving it"));
    EXPECT_TRUE(fs::exists(Path(".m.ov-new")));
    std::int32_t items = 0;
    EXPECT_TRUE(Open(moves_, &items).opened);
    EXPECT_EQ(items, 3);
}

TEST_F(ArchiveLockTest, ProgramsThatSaveAndReadAtOnceNeverLoseTheArchive) {
    ASSERT_TRUE(Save(3, moves_).saved);
    FolderMoves patient;
    const auto saveOften = [&](int items) {
        CountedPauses moves;
        moves.onPause = [&] { patient.Pause(); };
        bool allRight = true;
        for (int i = 0; i < 15; ++i) {
            const SavedArchive saved = Save(items, moves);
            allRight = allRight && (saved.saved || saved.error.find("another program") != std::string::npos);
        }
        return allRight;
    };
    const auto readOften = [&] {
        for (int i = 0; i < 30; ++i) ReadyToRead(Path("m.Ovb"), patient);
        return true;
    };
    const pid_t first = Start([&] { return saveOften(200); });
    const pid_t second = Start([&] { return saveOften(300); });
    const pid_t reader = Start(readOften);
    EXPECT_EQ(End(first), 0);
    EXPECT_EQ(End(second), 0);
    EXPECT_EQ(End(reader), 0);
    EXPECT_EQ(Names(), whole_);
    std::int32_t items = 0;
    const OpenedArchive opened = Open(moves_, &items);
    EXPECT_TRUE(opened.opened);
    EXPECT_THAT(opened.warnings, IsEmpty());
    EXPECT_TRUE(items == 200 || items == 300) << items;
}

TEST_F(ArchiveLockTest, AProgramKilledAtAnyStepOfASaveLeavesOneOfBothSets) {
    int killed = 0;
    for (int at = 1;; ++at) {
        ASSERT_TRUE(Save(3, moves_).saved);
        const int status = End(Start([&] {
            DeadlyMoves deadly(at);
            return Save(5, deadly).saved;
        }));
        std::int32_t items = 0;
        const OpenedArchive opened = Open(moves_, &items);
        ASSERT_TRUE(opened.opened) << at << opened.error;
        EXPECT_THAT(opened.warnings, IsEmpty()) << at;
        EXPECT_TRUE(items == 3 || items == 5) << at;
        EXPECT_EQ(Names(), whole_) << at;
        if (!WIFSIGNALED(status)) break;
        ++killed;
    }
    EXPECT_GT(killed, 10);
}

TEST_F(ArchiveLockTest, ARestoreDeletesNothingBeforeTheFormerSetIsBack) {
    ASSERT_TRUE(Save(3, moves_).saved);
    fs::create_directory(Path(".m.ov-old"));
    for (const std::string& name : whole_) fs::rename(Path(name), Path(".m.ov-old/" + name));
    std::ofstream(Path("m.Ovb")) << "new";
    // The folder of the former set cannot be renamed, because something stands where it is to go.
    fs::create_directories(Path(".m.ov-away/x"));
    EXPECT_EQ(ReadyToRead(Path("m.Ovb"), moves_).state, PlaceState::Broken);
    EXPECT_TRUE(fs::exists(Path("m.Ovb")) || fs::exists(Path(".m.ov-new/m.Ovb")));
    fs::remove(Path(".m.ov-away/x"));
    EXPECT_EQ(ReadyToRead(Path("m.Ovb"), moves_).state, PlaceState::Whole);
    EXPECT_EQ(Names(), whole_);
}

}  // namespace
}  // namespace orvane
