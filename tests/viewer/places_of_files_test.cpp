// Where files are: under other names, no files at all, or gone.
#include <sys/stat.h>

#include <QMenu>
#include <filesystem>

#include "hosts/viewer/host_words.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

class PlacesOfFiles : public Walk {
protected:
    void MakeMap() {
        MakeLayer("ROAD", kLayLine);
        AddFeature("ROAD", 1, {10.0, 20.0}, {30.0, 40.0});
    }
    void RemoveSet(const char* base) {
        for (const QString& name : QDir(folder.path()).entryList({QString(base) + ".Ov*"})) QFile::remove(folder.filePath(name));
    }
    /// As another program would save it.
    void ChangeSet(const char* base) {
        QFile file(folder.filePath(QString(base) + ".Ovb"));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.resize(file.size() - 1));
    }
};

TEST_F(PlacesOfFiles, TheTextOfASetIsTheSameSetThatAnotherProgramSaved) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    ChangeSet("a");
    const SavedArchive saved = window->Files().Save(File("a.Ovt"), "", MapFiles::Over::Own);
    EXPECT_FALSE(saved.saved);
    EXPECT_TRUE(saved.others);
    EXPECT_FALSE(QFileInfo::exists(File("a.Ovt")));
}

TEST_F(PlacesOfFiles, ALinkOrAFolderThatIsOneLeadsToTheSameSet) {
    MakeMap();
    QDir(folder.path()).mkdir("real");
    ASSERT_TRUE(window->Files().Save(File("real/a.Ovb"), "").saved);
    fs::create_directory_symlink("real", File("folder").toStdString());
    fs::create_symlink("real/a.Ovb", File("link.Ovb").toStdString());
    ASSERT_TRUE(window->Files().Save(File("folder/a.Ovb"), "", MapFiles::Over::Own).saved) << "nobody else has saved it";
    ASSERT_TRUE(window->Files().Save(File("link.Ovb"), "", MapFiles::Over::Own).saved);
    ASSERT_TRUE(window->Files().Save(File("real/a.Ovb"), "", MapFiles::Over::Own).saved);
    for (const char* name : {"folder/a.Ovb", "folder/a.Ovt", "link.Ovb", "link.Ovt"}) {
        ASSERT_TRUE(window->Files().Save(File("real/a.Ovb"), "").saved);
        ChangeSet("real/a");
        const SavedArchive saved = window->Files().Save(File(name), "", MapFiles::Over::Own);
        EXPECT_TRUE(saved.others) << name;
    }
}

TEST_F(PlacesOfFiles, ASetReadInPartIsAskedForWhenItsTextIsSaved) {
    MakeLayer("AREA", kLayPolygon);
    for (int i = 1; i < 200; ++i) AddSquare("AREA", i, i * 10, 0, 100);
    ASSERT_TRUE(window->Files().Save(File("d.Ovb"), "").saved);
    QFile file(File("d.Ovb"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(file.size() / 2));
    const qint64 half = file.size();
    file.close();
    WhenTold(QMessageBox::Ok);
    window->Open({File("d.Ovb")}, {});
    WhenAskedForFile(File("d.Ovt"), "Archive as text (*.Ovt)");
    WhenTold(QMessageBox::Yes);  // d.* stands there
    WhenTold(QMessageBox::Cancel);
    Choose("Save as");
    EXPECT_TRUE(said.contains("d.Ovb could be read in part only")) << said.toStdString();
    EXPECT_EQ(QFileInfo(File("d.Ovb")).size(), half);
    EXPECT_FALSE(QFileInfo::exists(File("d.Ovt")));
}

TEST_F(PlacesOfFiles, AnExchangeTextTakesThePlaceOfNoPipeAndNoFolder) {
    MakeMap();
    const std::string pipe = File("pipe.txt").toStdString();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    fs::create_symlink("pipe.txt", File("link.txt").toStdString());
    QDir(folder.path()).mkdir("folder.txt");
    for (const char* name : {"pipe.txt", "link.txt", "folder.txt"}) {
        const QString why = window->Files().WriteExchange(File(name), "1.01");
        EXPECT_TRUE(why.contains("a folder, a device or a pipe")) << why.toStdString();
    }
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_TRUE(fs::is_symlink(File("link.txt").toStdString()));
    EXPECT_TRUE(QFileInfo(File("folder.txt")).isDir());
}

TEST_F(PlacesOfFiles, APipeIsNeitherOpenedNorImportedNorSavedOver) {
    for (const char* name : {"pipe", "pipe.gpkg", "pipe.Ovb", "pipe.pnt"})
        ASSERT_EQ(::mkfifo(File(name).toStdString().c_str(), 0600), 0);
    for (const char* name : {"pipe", "pipe.gpkg", "pipe.Ovb", "pipe.pnt"}) {
        const ImportResult result = window->Load({File(name)}, {});
        EXPECT_EQ(result.fault, ImportFault::Unreadable) << name;
        EXPECT_NE(result.error.find("is a device or a pipe"), std::string::npos) << result.error;
    }
    MakeMap();
    EXPECT_EQ(window->Files().Import({File("pipe")}, {}).fault, ImportFault::Unreadable);
    const SavedArchive saved = window->Files().Save(File("pipe.Ovb"), "");
    EXPECT_FALSE(saved.saved);
    EXPECT_EQ(Words(saved.error), File("pipe.Ovb") + " is a device or a pipe");
    EXPECT_TRUE(fs::is_fifo(File("pipe.Ovb").toStdString()));
}

TEST_F(PlacesOfFiles, AnArchiveThatAnotherProgramIsJustMovingStaysInTheListOfRecentFiles) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    window->Files().New();
    FolderMoves moves;
    ArchivePlace other(moves, File("a").toStdString());
    ASSERT_EQ(other.Claim(), FileLock::Outcome::Taken);
    QDir(folder.path()).mkdir(".a.ov-away");
    ASSERT_TRUE(QFile::rename(File("a.Ovb"), File(".a.ov-away/a.Ovb")));
    const ImportResult result = window->Load({File("a.Ovb")}, {});
    EXPECT_EQ(result.fault, ImportFault::Unreadable);
    EXPECT_NE(result.error.find("is just saving"), std::string::npos) << result.error;
    EXPECT_EQ(RecentFiles(), QStringList{File("a.Ovb")});
}

TEST_F(PlacesOfFiles, ARecentFileThatIsGoneIsSaidToBeMovedAndLeavesTheList) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("kept.Ovb"), "").saved);
    ASSERT_TRUE(window->Files().Save(File("gone.Ovb"), "").saved);
    window->Files().New();
    RemoveSet("gone");
    auto* recent = window->findChild<QMenu*>("recent files");
    emit recent->aboutToShow();
    ASSERT_TRUE(recent->actions().front()->text().endsWith("gone.Ovb"));
    WhenTold(QMessageBox::Ok);
    recent->actions().front()->trigger();
    EXPECT_TRUE(said.contains("moved or renamed")) << said.toStdString();
    EXPECT_FALSE(said.contains("backup")) << said.toStdString();
    EXPECT_EQ(RecentFiles(), QStringList{File("kept.Ovb")});
}

TEST_F(PlacesOfFiles, ADamagedFileStaysInTheListOfRecentFiles) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    window->Files().New();
    QFile file(File("a.Ovb"));
    ASSERT_TRUE(file.resize(0));
    WhenTold(QMessageBox::Ok);
    window->Files().Open({File("a.Ovb")}, {});
    EXPECT_TRUE(said.contains("backup")) << said.toStdString();
    EXPECT_EQ(RecentFiles(), QStringList{File("a.Ovb")});
}

TEST_F(PlacesOfFiles, APartOfAnArchiveSaysWhichFileToOpen) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("a.Ovb"), "").saved);
    for (const char* name : {"a.Ovl", "a.Ovi"}) {
        WhenTold(QMessageBox::Ok);
        window->Files().Open({File(name)}, {});
        EXPECT_TRUE(said.contains("part of an archive. Open the file of its name that ends in .Ovb")) << said.toStdString();
        EXPECT_FALSE(said.contains("backup")) << said.toStdString();
    }
    WhenTold(QMessageBox::Ok);
    window->Files().Open({File("b.Ovl")}, {});
    EXPECT_TRUE(said.contains("moved or renamed")) << said.toStdString();
}

TEST_F(PlacesOfFiles, AnEmptyFolderSaysWhatItLacks) {
    QDir(folder.path()).mkdir("empty");
    WhenTold(QMessageBox::Ok);
    window->Files().Open({File("empty")}, {});
    EXPECT_TRUE(said.contains("a folder without older map files")) << said.toStdString();
    EXPECT_TRUE(said.contains("Look for another one")) << said.toStdString();
    EXPECT_FALSE(said.contains("backup")) << said.toStdString();
    EXPECT_FALSE(said.contains("cannot read")) << said.toStdString();
}

}  // namespace
}  // namespace orvane
