// Files from menu and key to the disk and back.
#include <QFile>
#include <QFileInfo>
#include <QMenu>

#include "hosts/common/archive_swap.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class FileWalk : public Walk {
protected:
    void OpenSample() {
        ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
        Settle();
    }
    /// Points of all features, in the order of the blocks.
    std::vector<ItemCopy> Features() {
        std::vector<ItemCopy> all;
        for (std::int32_t i = 0; i < Store().BlockCnt(); ++i) {
            for (const DigDat& dat : Store().Block(i).dats) all.push_back(CopyOf(dat));
        }
        return all;
    }
    void DeleteOne() {
        window->History().Change("deleting", Deletion(Store(), FirstKey()));
        Settle();
    }
    ItemKey FirstKey() {
        // Of the fullest block: one that a deletion empties is not kept by an archive.
        std::int32_t fullest = 0;
        for (std::int32_t i = 1; i < Store().BlockCnt(); ++i) {
            if (Store().Block(i).datCnt > Store().Block(fullest).datCnt) fullest = i;
        }
        const DigBlock& block = Store().Block(fullest);
        return {std::string(block.code.View()), block.meshNo, block.dats[0].datID};
    }
    void WriteBytes(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
};

TEST_F(FileWalk, OpeningWithTheKeySwitchesLayersToActiveAndIsRemembered) {
    WhenAskedForFile(Sample("tokyo_mesh.Ovb"));
    Press(Qt::CTRL | Qt::Key_O);
    ASSERT_GT(Store().LayerCnt(), 0);
    for (std::int32_t i = 0; i < Store().LayerCnt(); ++i) EXPECT_EQ(Store().Layer(i).actFlg, 1);
    EXPECT_EQ(RecentFiles().value(0), QFileInfo(Sample("tokyo_mesh.Ovb")).absoluteFilePath());
    // And from the list of recent files, once the map is gone.
    Choose("New");
    EXPECT_EQ(Store().LayerCnt(), 0);
    auto* recent = window->findChild<QMenu*>("recent files");
    ASSERT_NE(recent, nullptr);
    emit recent->aboutToShow();
    ASSERT_FALSE(recent->actions().isEmpty());
    recent->actions().front()->trigger();
    Settle();
    EXPECT_GT(Store().LayerCnt(), 0);
}

TEST_F(FileWalk, SaveAsWritesAnArchiveThatHoldsTheSameAndSaveGoesThereAgain) {
    OpenSample();
    DeleteOne();
    EXPECT_TRUE(window->isWindowModified());
    WhenAskedForFile(File("kept.Ovb"));
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    EXPECT_TRUE(QFileInfo::exists(File("kept.Ovb")));
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(window->windowTitle().startsWith("kept.Ovb"));
    const auto saved = Features();
    DeleteOne();
    Press(Qt::CTRL | Qt::Key_S);
    const auto again = Features();
    EXPECT_NE(saved.size(), again.size());
    ASSERT_TRUE(window->Load({File("kept.Ovb")}, {}).Ok());
    EXPECT_TRUE(Features() == again);
}

TEST_F(FileWalk, WhatAnArchiveDoesNotKeepIsSaidBeforeItIsLostAndOnlyOnce) {
    OpenSample();
    const QByteArray code(Store().Layer(0).code.CStr());
    window->Layers().Choose(code.toStdString());
    window->Layers().MakeSubLayer(3, "wards");
    WhenAskedForFile(File("kept.Ovb"));
    WhenTold(QMessageBox::Cancel);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    EXPECT_TRUE(said.contains("1 sub layers")) << said.toStdString();
    EXPECT_FALSE(QFileInfo::exists(File("kept.Ovb"))) << "the operator went back";
    EXPECT_TRUE(window->isWindowModified());
    WhenAskedForFile(File("kept.Ovb"));
    WhenTold(QMessageBox::Save);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    EXPECT_TRUE(QFileInfo::exists(File("kept.Ovb")));
    DeleteOne();
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_FALSE(window->isWindowModified()) << "the same is not said twice";
}

TEST_F(FileWalk, ASaveThatFailsKeepsTheArchiveThatIsThereAndSaysWhatToDo) {
    OpenSample();
    ASSERT_TRUE(window->Files().Save(File("kept.Ovb"), "").saved);
    const qint64 size = QFileInfo(File("kept.Ovb")).size();
    QFile before(File("kept.Ovb"));
    ASSERT_TRUE(before.open(QIODevice::ReadOnly));
    const QByteArray bytes = before.readAll();
    DeleteOne();
    FolderMoves moves;
    ArchivePlace other(moves, File("kept").toStdString());  // another program
    ASSERT_EQ(other.Claim(), FileLock::Outcome::Taken);
    WhenTold(QMessageBox::Ok);
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_TRUE(said.contains("stands there still")) << said.toStdString();
    EXPECT_TRUE(said.contains("another program is saving it"));
    EXPECT_TRUE(said.contains("under another name"));
    EXPECT_TRUE(window->isWindowModified());
    QFile after(File("kept.Ovb"));
    ASSERT_TRUE(after.open(QIODevice::ReadOnly));
    EXPECT_EQ(after.readAll(), bytes);
    EXPECT_EQ(after.size(), size);
}

TEST_F(FileWalk, UnsavedChangesAreAskedForBeforeAnotherMapAndBeforeTheEnd) {
    OpenSample();
    DeleteOne();
    const auto edited = Features();
    WhenAskedForFile(Sample("tokyo_mesh.Ovb"));
    WhenTold(QMessageBox::Cancel);
    Press(Qt::CTRL | Qt::Key_O);
    EXPECT_TRUE(Features() == edited);
    WhenTold(QMessageBox::Cancel);
    window->close();
    EXPECT_TRUE(window->isVisible());
    // Saving on the way asks for a place, as the map came from one that the test may not write to.
    ASSERT_TRUE(window->Files().Save(File("kept.Ovb"), "").saved);
    DeleteOne();
    WhenTold(QMessageBox::Save);
    window->close();
    EXPECT_FALSE(window->isVisible());
    ASSERT_TRUE(window->Load({File("kept.Ovb")}, {}).Ok());
    EXPECT_EQ(Features().size(), edited.size() - 1);
    DeleteOne();
    window->show();
    WhenTold(QMessageBox::Discard);
    window->close();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FileWalk, TextArchivesAndTheOldVersionAreChosenByTheFilter) {
    OpenSample();
    WhenAskedForFile(File("kept.Ovt"), "Archive as text (*.Ovt)");
    WhenTold(QMessageBox::Save);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    EXPECT_TRUE(QFileInfo::exists(File("kept.Ovt")));
    EXPECT_TRUE(said.contains("six decimals"));
    ASSERT_TRUE(window->Load({File("kept.Ovt")}, {}).Ok());
    OpenSample();
    WhenAskedForFile(File("old.Ovb"), "Archive, version 1.00 (*.Ovb)");
    WhenTold(QMessageBox::Save);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    const OpenedArchive old = OpenArchive(Store(), File("old.Ovb").toStdString());
    EXPECT_EQ(old.report.version, "1.00");
}

TEST_F(FileWalk, TheExchangeTextIsWrittenAndReadBack) {
    OpenSample();
    const auto before = Features();
    WhenAskedForFile(File("map.txt"));
    WhenTold(QMessageBox::Save);  // the sample has second colours
    Press(Qt::CTRL | Qt::Key_T);
    ASSERT_TRUE(QFileInfo::exists(File("map.txt")));
    EXPECT_FALSE(QFileInfo::exists(File("map.txt.part")));
    EXPECT_EQ(KindOfSource(File("map.txt")), SourceKind::Exchange);
    WhenAskedForFile(File("map.txt"));
    Press(Qt::CTRL | Qt::Key_O);
    ASSERT_EQ(Features().size(), before.size());
    EXPECT_NEAR(Features()[0].pnts[0].x, before[0].pnts[0].x, 1e-6);
}

TEST_F(FileWalk, AnExchangeTextThatCannotBeWrittenLeavesTheOneThatIsThere) {
    OpenSample();
    WriteBytes(File("map.txt"), "what was there");
    window->Files().New();  // nothing to write
    EXPECT_FALSE(window->Files().WriteExchange(File("map.txt"), "1.01").isEmpty());
    QFile file(File("map.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "what was there");
    EXPECT_EQ(QDir(folder.path()).entryList({"map*"}), QStringList{"map.txt"}) << "nothing is left behind";
}

TEST_F(FileWalk, OlderMapFilesOpenByThemselvesAndAsAFolder) {
    WriteBytes(File("roads.arc"), "FH,533945,x,4,1,y,y,0,0,10000,10000,z\r\nROAD,0,1,2\r\n100,200\r\n300.5,400\r\n\x1A");
    WriteBytes(File("trees.pnt"), "FH,533945,x,2,1,y,y,0,0,10000,10000,z\r\nTREE,1,100,200\r\n\x1A");
    EXPECT_EQ(KindOfSource(File("trees.pnt")), SourceKind::Legacy);
    EXPECT_EQ(KindOfSource(folder.path()), SourceKind::Legacy);
    WhenAskedForFile(File("trees.pnt"));
    Press(Qt::CTRL | Qt::Key_O);
    EXPECT_EQ(Store().LayerCnt(), 1);
    WhenAsked([this](QDialog& dialog) {
        static_cast<QFileDialog&>(dialog).setDirectory(folder.path());
        static_cast<QFileDialog&>(dialog).selectFile(folder.path());
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    ASSERT_EQ(Store().LayerCnt(), 2);
    EXPECT_EQ(Store().Layer(0).editFlg, 1);
    EXPECT_EQ(Features().size(), 2u);
    // A file that is none of theirs is told with what to do.
    WriteBytes(File("bad.arc"), "no line");
    WhenTold(QMessageBox::Ok);
    window->Open({File("bad.arc")}, {});
    EXPECT_FALSE(said.isEmpty());
}

TEST_F(FileWalk, ForeignDataIsImportedBesideTheMapAndExported) {
    OpenSample();
    const auto before = Features().size();
    WhenAskedForFile(Sample("tokyo.geojson"));
    Press(Qt::CTRL | Qt::Key_I);
    EXPECT_GT(Features().size(), before) << said.toStdString();
    EXPECT_TRUE(window->isWindowModified());
    for (std::int32_t i = 0; i < Store().LayerCnt(); ++i) EXPECT_EQ(Store().Layer(i).editFlg, 1);
    WhenAskedForFile(File("out.gpkg"));
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_TRUE(QFileInfo::exists(File("out.gpkg")));
}

TEST_F(FileWalk, AMissingFileIsToldWithWhatToDo) {
    WhenTold(QMessageBox::Ok);
    window->Open({File("none.geojson")}, {});
    EXPECT_TRUE(said.contains("moved or renamed")) << said.toStdString();
}

TEST_F(FileWalk, AToolThatRunsAndAPlaneFrameDoNotGetIntoTheFile) {
    OpenSample();
    const auto before = Features();
    window->History().StartTool(kRunMoveDat, FirstKey());
    ASSERT_EQ(Map().RunMode(), kRunMoveDat);
    window->Place().ChangeFrame(9);
    ASSERT_TRUE(window->Files().Save(File("kept.Ovb"), "").saved);
    EXPECT_EQ(window->Place().ZoneNow(), 9) << "the operator's frame comes back";
    ASSERT_TRUE(window->Load({File("kept.Ovb")}, {}).Ok());
    EXPECT_TRUE(Features() == before);
}

}  // namespace
}  // namespace orvane
