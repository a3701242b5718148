// An archive of which only a part could be read is not saved over by habit.
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class PartSave : public Walk {
protected:
    PartSave() {
        MakeLayer("AREA", kLayPolygon);
        for (int i = 1; i < 200; ++i) AddSquare("AREA", i, i * 10, 0, 100);
        Fit();
        EXPECT_TRUE(window->Files().Save(File("d.Ovb"), "").saved);
        QFile file(File("d.Ovb"));
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        EXPECT_TRUE(file.resize(file.size() / 2));
        half = file.size();
        file.close();
        WhenTold(QMessageBox::Ok);
        window->Open({File("d.Ovb")}, {});
        EXPECT_LT(BlockOf("AREA").datCnt, 199);
        EXPECT_GT(BlockOf("AREA").datCnt, 0);
    }
    qint64 SizeOf(const char* name) const { return QFileInfo(File(name)).size(); }

    qint64 half = 0;
};

TEST_F(PartSave, CancelLeavesTheDamagedOriginal) {
    WhenTold(QMessageBox::Cancel);
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_TRUE(said.contains("d.Ovb could be read in part only")) << said.toStdString();
    EXPECT_EQ(SizeOf("d.Ovb"), half);
    // It is asked until there is an answer.
    WhenTold(QMessageBox::Cancel);
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_EQ(SizeOf("d.Ovb"), half);
}

TEST_F(PartSave, ThePartGoesIntoAnotherArchiveThatIsTheMapsFromThenOn) {
    WhenTold(QMessageBox::SaveAll);
    WhenAskedForFile(File("part.Ovb"));
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_EQ(SizeOf("d.Ovb"), half);
    EXPECT_EQ(window->Files().Path(), File("part.Ovb"));
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_TRUE(QFileInfo::exists(File("part.Ovb")));
}

TEST_F(PartSave, ThePartStillAsksOverTheOriginalOnceTheMapIsAnotherArchives) {
    ASSERT_TRUE(window->Files().Save(File("e.Ovb"), "").saved);
    ASSERT_EQ(window->Files().Path(), File("e.Ovb"));
    WhenAskedForFile(File("d.Ovt"), "Archive as text (*.Ovt)");
    WhenTold(QMessageBox::Yes);  // d.* stands there
    WhenTold(QMessageBox::Cancel);
    Choose("Save as");
    EXPECT_TRUE(said.contains("d.Ovt could be read in part only")) << said.toStdString();
    EXPECT_EQ(SizeOf("d.Ovb"), half);
    EXPECT_FALSE(QFileInfo::exists(File("d.Ovt")));
}

TEST_F(PartSave, WhoSavesOverItIsAskedOnce) {
    WhenTold(QMessageBox::Save);
    Press(Qt::CTRL | Qt::Key_S);
    const qint64 saved = SizeOf("d.Ovb");
    EXPECT_NE(saved, half);
    Press(Qt::CTRL | Qt::Key_S);
    ASSERT_TRUE(window->Load({File("d.Ovb")}, {}).Ok());
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_EQ(SizeOf("d.Ovb"), saved);
}

TEST_F(PartSave, AnotherMapIsNotTheOneThatWasReadInPart) {
    window->Files().New();
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 100);
    ASSERT_TRUE(window->Files().Save(File("new.Ovb"), "").saved);
    Press(Qt::CTRL | Qt::Key_S);
    EXPECT_GT(SizeOf("new.Ovb"), 0);
}

TEST_F(PartSave, AnIndexThatIsWrongLosesNothingAndAsksNothing) {
    ASSERT_TRUE(window->Files().Save(File("whole.Ovb"), "").saved);
    QFile index(File("whole.Ovi"));
    ASSERT_TRUE(index.open(QIODevice::ReadWrite));
    const QByteArray bytes = index.readAll();
    ASSERT_GT(bytes.size(), 4);
    ASSERT_TRUE(index.seek(bytes.size() - 4));  // where an item stands
    index.write(QByteArray::fromHex("01020304"));
    index.close();
    const auto features = BlockOf("AREA").datCnt;
    WhenTold(QMessageBox::Ok);
    window->Open({File("whole.Ovb")}, {});
    EXPECT_TRUE(said.contains("the index has item")) << said.toStdString();
    EXPECT_EQ(BlockOf("AREA").datCnt, features);
    Press(Qt::CTRL | Qt::Key_S);
    ASSERT_TRUE(index.open(QIODevice::ReadOnly));
    EXPECT_EQ(index.readAll(), bytes) << "and the index is mended";
}

}  // namespace
}  // namespace orvane
