// Names of files and maps as dialogs, titles and menus show them, and what is said when the writing of one is cancelled.
#include <QMenu>

#include "hosts/viewer/work_progress.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class FileNames : public Walk {
protected:
    ~FileNames() override { WorkProgress::SetPatience(700); }
    void MakeMap() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 100);
        Fit();
    }
    /// The name that the dialog for a file begins with; the dialog is given up.
    void WhenAskedNoteName(QString& name) {
        WhenAsked([&name](QDialog& dialog) {
            auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(edit, nullptr);
            name = edit->text();
            dialog.reject();
        });
    }
    void WriteOlderFolder(const char* name) {
        ASSERT_TRUE(QDir(folder.path()).mkpath(name));
        QFile points(folder.filePath(QString(name) + "/trees.pnt"));
        ASSERT_TRUE(points.open(QIODevice::WriteOnly));
        points.write("FH,533945,x,2,1,y,y,0,0,10000,10000,z\r\nPNT,1,100,200\r\n\x1A");
    }
};

TEST_F(FileNames, ANewMapIsOfferedAWholeName) {
    MakeMap();
    QString offered;
    WhenAskedNoteName(offered);
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_EQ(offered, "map.Ovb");
    WhenAsked([](QDialog& dialog) { QTest::keyClick(dialog.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return); });
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_TRUE(QFileInfo::exists(File("map.Ovb")));
    EXPECT_FALSE(QFileInfo::exists(File(".Ovb")));
}

TEST_F(FileNames, AnExchangeTextThatIsCancelledIsNoError) {
    // It tells how far it is between two blocks.
    for (int layer = 0; layer < 40; ++layer) {
        const QByteArray code = "TREE" + QByteArray::number(layer);
        MakeLayer(code.constData(), kLayPoint);
        for (int i = 1; i <= 200; ++i) AddFeature(code.constData(), i, {i * 1.0}, {i * 1.0});
    }
    WorkProgress::SetPatience(0);
    int cancelled = 0;
    QTimer cancel;
    QObject::connect(&cancel, &QTimer::timeout, [&] {
        for (QProgressDialog* dialog : window->findChildren<QProgressDialog*>()) {
            dialog->cancel();
            ++cancelled;
        }
    });
    cancel.start(0);
    WhenAskedForFile(File("map.txt"));
    Choose("Write exchange text");  // a message would fail the walk
    EXPECT_GT(cancelled, 0);
    EXPECT_FALSE(QFileInfo::exists(File("map.txt")));
    EXPECT_TRUE(QDir(folder.path()).entryList({"map.txt*"}, QDir::Files).isEmpty());
}

TEST_F(FileNames, AnAmpersandStandsInTheListOfRecentFiles) {
    MakeMap();
    ASSERT_TRUE(window->Files().Save(File("R&D.Ovb"), "").saved);
    auto* recent = window->findChild<QMenu*>("recent files");
    emit recent->aboutToShow();
    ASSERT_FALSE(recent->actions().isEmpty());
    EXPECT_TRUE(recent->actions().front()->text().endsWith("R&&D.Ovb")) << recent->actions().front()->text().toStdString();
    window->Files().New();
    recent->actions().front()->trigger();
    EXPECT_EQ(window->Files().Name(), "R&D.Ovb");
}

TEST_F(FileNames, AFolderThatWasNamedWithASlashHasItsName) {
    WriteOlderFolder("maps");
    ASSERT_TRUE(window->Load({File("maps/")}, {}).Ok());
    EXPECT_EQ(window->Files().Name(), "maps");
    EXPECT_TRUE(window->windowTitle().contains("maps")) << window->windowTitle().toStdString();
}

TEST_F(FileNames, OneOfSeveralFoldersIsNotReadForAll) {
    WriteOlderFolder("west");
    WriteOlderFolder("east");
    MakeMap();
    const ImportResult both = window->Load({File("west"), File("east")}, {});
    EXPECT_EQ(both.fault, ImportFault::BadOption);
    EXPECT_EQ(both.error, "a folder of older map files is read alone");
    EXPECT_EQ(window->Load({File("west/trees.pnt"), File("east")}, {}).fault, ImportFault::BadOption);
    EXPECT_EQ(BlockOf("AREA").datCnt, 1) << "the map stays";
    ASSERT_TRUE(window->Load({File("west")}, {}).Ok());
}

}  // namespace
}  // namespace orvane
