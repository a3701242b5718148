// Saves and looks where something else stands in the place, or changes it meanwhile.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <system_error>

#include "tests/common/archive_save_fixture.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

using ::testing::HasSubstr;

class ArchivePlaceTest : public ArchiveSaveTest {};

TEST_F(ArchivePlaceTest, ACheckLooksAgainWhenTheArchiveWasSavedMeanwhile) {
    AddItems(store, 3, "");
    ASSERT_TRUE(Save().saved);
    // The files are listed before a look and after it.
    class SavesOnce : public FolderMoves {
    public:
        std::vector<std::string> Names(const std::string& folder) override {
            if (++lists == 2) save();
            return FolderMoves::Names(folder);
        }
        std::function<void()> save;
        int lists = 0;
    };
    SavesOnce moves;
    moves.save = [this] {
        AddItems(store, 5, "");
        EXPECT_TRUE(Save().saved);
    };
    const CheckedArchive checked = CheckArchive(Path("m.Ovb"), {}, moves);
    EXPECT_FALSE(checked.moving);
    EXPECT_EQ(checked.report.counts.items, 3 + 5);
    EXPECT_EQ(moves.lists, 4);
}

TEST_F(ArchivePlaceTest, ACheckThatNeverSeesOneSetAloneTellsNothing) {
    AddItems(store, 1, "");
    ASSERT_TRUE(Save().saved);
    class SavesAlways : public FolderMoves {
    public:
        std::vector<std::string> Names(const std::string& folder) override {
            save();
            return FolderMoves::Names(folder);
        }
        std::function<void()> save;
    };
    SavesAlways moves;
    int items = 1;
    moves.save = [&] {
        AddItems(store, ++items, "");
        EXPECT_TRUE(Save().saved);
    };
    const CheckedArchive checked = CheckArchive(Path("m.Ovb"), {}, moves);
    EXPECT_TRUE(checked.moving);
    EXPECT_THAT(checked.words, HasSubstr("again and again"));
}

TEST_F(ArchivePlaceTest, AnArchiveThatIsSavedAnewWhileItIsReadIsNotOpened) {
    AddItems(store, 1, "");
    ASSERT_TRUE(Save().saved);
    CDigMem other;
    other.Init();
    const OpenedArchive opened = OpenArchive(other, Path("m.Ovb"), {}, [this] {
        AddItems(store, 2, "");
        ASSERT_TRUE(Save().saved);
    });
    EXPECT_FALSE(opened.opened);
    EXPECT_TRUE(opened.begun);
    EXPECT_THAT(opened.error, HasSubstr("open it again"));
    other.Init();
    EXPECT_TRUE(OpenArchive(other, Path("m.Ovb")).opened);
}

TEST_F(ArchivePlaceTest, TheNewFilesHaveTheRightsOfTheOld) {
    AddItems(store, 1, "path");
    ASSERT_TRUE(Save().saved);
    for (const char* name : {"m.Ovb", "m.Ovi", "m.Ovl"}) fs::permissions(Path(name), fs::perms(0600));
    fs::permissions(Path("m.Ovm"), fs::perms(0640));
    ASSERT_TRUE(Save().saved);
    EXPECT_EQ(fs::status(Path("m.Ovb")).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(Path("m.Ovm")).permissions(), fs::perms(0640));
    ASSERT_TRUE(Save("m.Ovt").saved);
    EXPECT_EQ(fs::status(Path("m.Ovt")).permissions(), fs::perms(0600)) << "as the files that stood there";
}

TEST_F(ArchivePlaceTest, AFolderWithTheNameOfAFileOfTheSetEndsTheSaveBeforeItBegins) {
    AddItems(store, 1, "");
    fs::create_directory(Path("m.oVM"));
    const SavedArchive saved = Save();
    EXPECT_FALSE(saved.saved);
    EXPECT_THAT(saved.error, HasSubstr(Path("m.oVM") + " is a folder"));
    EXPECT_EQ(std::distance(fs::directory_iterator(Path("")), fs::directory_iterator()), 1);
}

TEST_F(ArchivePlaceTest, APipeWithTheNameOfAFileOfTheSetStaysAndEndsTheSaveBeforeItBegins) {
    AddItems(store, 1, "");
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    for (const bool isLink : {false, true}) {
        if (isLink) fs::create_symlink("pipe", Path("m.Ovi"));
        if (!isLink) fs::rename(Path("pipe"), Path("m.Ovi"));
        const SavedArchive saved = Save();
        EXPECT_FALSE(saved.saved);
        EXPECT_THAT(saved.error, HasSubstr(Path("m.Ovi") + " is a device or a pipe"));
        EXPECT_TRUE(fs::is_fifo(Path("m.Ovi")));
        EXPECT_EQ(fs::is_symlink(Path("m.Ovi")), isLink);
        EXPECT_FALSE(fs::exists(Path("m.Ovb")));
        if (!isLink) fs::rename(Path("m.Ovi"), Path("pipe"));
    }
}

TEST_F(ArchivePlaceTest, ALinkToNothingIsNoManageFile) {
    AddItems(store, 1, "");
    ASSERT_TRUE(Save().saved);
    fs::remove(Path("m.Ovm"));
    fs::create_symlink(Path("nowhere"), Path("m.Ovm"));
    CDigMem other;
    other.Init();
    EXPECT_TRUE(OpenArchive(other, Path("m.Ovb")).opened);
}

TEST_F(ArchivePlaceTest, ANameTooLongForTheFilesOfASaveIsRefusedAtItsBeginning) {
    AddItems(store, 1, "");
    const std::string stem(247, 'n');
    const SavedArchive saved = Save(stem + ".Ovb");
    EXPECT_THAT(saved.error, HasSubstr(std::generic_category().message(ENAMETOOLONG)));
    EXPECT_TRUE(fs::is_empty(Path("")));
}

}  // namespace
}  // namespace orvane
