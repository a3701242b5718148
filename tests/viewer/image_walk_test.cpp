// Images: what the panel says of them is so, and placing one ends as the operator ends it.
#include <QLabel>

#include "hosts/viewer/image_placing.h"
#include "raster/raster_server.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

/// Loads the files that are there and notes which image was given points.
struct FileServer : RasterServer {
    explicit FileServer(QStringList& notes) : placed(notes) {}
    bool SrvIsReady() override { return ready; }
    bool SrvInit() override { return ready = true; }
    bool SrvLoad(std::string_view filename) override {
        name = QFileInfo(QString::fromLatin1(filename.data(), static_cast<qsizetype>(filename.size()))).fileName();
        return QFileInfo::exists(QString::fromLatin1(filename.data(), static_cast<qsizetype>(filename.size())));
    }
    bool SrvClose() override { return true; }
    bool SrvDraw(DeviceContext&, const RasterPart&, std::int16_t) override {
        placed << "draw " + name;
        return true;
    }
    bool SrvRotate(double) override { return true; }
    bool SrvSetCP1(std::int32_t, std::int32_t, double, double) override { return true; }
    bool SrvSetCP2(std::int32_t, std::int32_t, double, double) override { return true; }
    bool SrvCalcCorrect2() override {
        placed << "place " + name;
        return true;
    }
    std::int32_t SrvImgWidth() override { return 200; }
    std::int32_t SrvImgHeight() override { return 100; }

    QStringList& placed;
    QString name;
    bool ready = false;
};

class ImageWalk : public Walk {
protected:
    ImageWalk() {
        Map().Control().rasters.SetMaker([this] { return std::make_unique<FileServer>(log); });
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 900);
        Fit();
    }
    ~ImageWalk() override {
        Map().Control().rasters.SetMaker({});
        window->Files().New();
    }
    void AddScan(const char* name) {
        QImage scan(200, 100, QImage::Format_RGB32);
        scan.fill(Qt::gray);
        ASSERT_TRUE(scan.save(File(name)));
        ASSERT_EQ(window->Images().Add(File(name)), "");
    }
    ImagePlacing* Placing() {
        for (ImagePlacing* dialog : window->findChildren<ImagePlacing*>()) {
            if (dialog->isVisible()) return dialog;
        }
        return nullptr;
    }
    static QString WordsOf(const ImagePlacing& dialog) { return dialog.findChild<QLabel*>()->text(); }
    void Pick(QPoint at) {
        QTest::mouseClick(&Placing()->View(), Qt::LeftButton, {}, at);
        Settle();
    }
    QPoint MiddleOf() { return Placing()->View().rect().center(); }

    QStringList log;
};

TEST_F(ImageWalk, ThePanelSaysFromTheStartWhereImagesLie) {
    EXPECT_EQ(window->Images().Level().currentIndex(), Map().Control().rastOnTop == 1 ? 1 : 0);
    EXPECT_EQ(Map().Control().rastOnTop, 1) << "as an init leaves it";
    window->Images().SetOnTop(false);
    EXPECT_EQ(Map().Control().rastOnTop, 0);
    window->History().Stack().setClean();
    window->Files().New();
    EXPECT_EQ(window->Images().Level().currentIndex(), Map().Control().rastOnTop == 1 ? 1 : 0);
}

TEST_F(ImageWalk, AFileThatVanishedTakesNoOtherWithItAndComesBack) {
    AddScan("a.png");
    AddScan("b.png");
    AddScan("c.png");
    QFile::rename(File("b.png"), File("gone.png"));
    window->Images().Move(0, false);  // which loads all anew: c lies under b
    log.clear();
    Map().Call("OrvReDraw");
    EXPECT_EQ(log, (QStringList{"draw a.png", "draw c.png"}));
    QListWidget& list = window->Images().List();
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(0)->text(), "b.png (cannot be read)");
    QFile::rename(File("gone.png"), File("b.png"));
    window->Images().Move(0, false);
    log.clear();
    Map().Call("OrvReDraw");
    EXPECT_EQ(log, (QStringList{"draw a.png", "draw b.png", "draw c.png"}));
    EXPECT_EQ(list.item(1)->text(), "b.png");
}

TEST_F(ImageWalk, AClickOnTheMapThatIsGivenUpIsAskedForAnew) {
    AddScan("a.png");
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_B}) {
        window->Images().List().setCurrentRow(0);
        Choose("Place the image");
        ASSERT_NE(Placing(), nullptr);
        const QString first = WordsOf(*Placing());
        Pick(MiddleOf());
        EXPECT_NE(WordsOf(*Placing()), first) << "a place on the map is waited for";
        Press(key);
        ASSERT_NE(Placing(), nullptr);
        EXPECT_EQ(WordsOf(*Placing()), first);
        if (key == Qt::Key_B) Press(Qt::Key_Escape);
        Pick(MiddleOf());
        Click(PointOf(300, 300));
        EXPECT_NE(WordsOf(*Placing()), first) << "the second point";
        Placing()->close();
        Settle();
    }
}

TEST_F(ImageWalk, TheImageThatWasChosenIsPlacedWhateverItsRowIsThen) {
    AddScan("a.png");
    AddScan("b.png");
    window->Images().List().setCurrentRow(0);
    Choose("Place the image");
    Pick(MiddleOf());
    Click(PointOf(100, 100));
    window->Images().Move(0, false);
    Pick(MiddleOf() + QPoint(20, 10));
    log.clear();
    Click(PointOf(800, 100));
    EXPECT_TRUE(log.contains("place b.png")) << log.join('|').toStdString();
    EXPECT_FALSE(log.contains("place a.png"));
}

TEST_F(ImageWalk, PlacingEndsWithTheMapThatItWasFor) {
    AddScan("a.png");
    window->Images().List().setCurrentRow(0);
    Choose("Place the image");
    ASSERT_NE(Placing(), nullptr);
    window->History().Stack().setClean();
    window->Files().New();
    Settle();
    EXPECT_EQ(Placing(), nullptr);
}

TEST_F(ImageWalk, AnImageIsAddedInTheDialog) {
    QImage scan(20, 10, QImage::Format_RGB32);
    scan.fill(Qt::gray);
    ASSERT_TRUE(scan.save(File("scan.png")));
    WhenAskedForFile(File("scan.png"));
    Choose("Add an image");
    ASSERT_EQ(window->Images().List().count(), 1);
    QFile text(File("words.png"));
    text.open(QIODevice::WriteOnly);
    text.close();
    text.remove();
    EXPECT_FALSE(window->Images().Add(File("words.png")).isEmpty()) << "no such file";
    EXPECT_EQ(window->Images().List().count(), 1);
}

}  // namespace
}  // namespace orvane
