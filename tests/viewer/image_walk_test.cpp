// Images: what the panel says of them is so, and placing one ends as the operator ends it.
#include <QLabel>
#include <complex>

#include "hosts/viewer/image_placing.h"
#include "raster/raster_server.h"
#include "tests/viewer/key_rig.h"

namespace orvane {
namespace {

/// Loads the files that are there and notes which image was given points.
struct FileServer : RasterServer {
    FileServer(QStringList& notes, QList<QRectF>& pairs) : placed(notes), points(pairs) {}
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
    bool SrvSetCP1(std::int32_t x_px, std::int32_t y_px, double x, double y) override { return Point(x_px, y_px, x, y); }
    bool SrvSetCP2(std::int32_t x_px, std::int32_t y_px, double x, double y) override { return Point(x_px, y_px, x, y); }
    bool Point(int x_px, int y_px, double x, double y) {
        points << QRectF(x_px, y_px, x, y);
        return true;
    }
    bool SrvCalcCorrect2() override {
        placed << "place " + name;
        return true;
    }
    std::int32_t SrvImgWidth() override { return 200; }
    std::int32_t SrvImgHeight() override { return 100; }

    QStringList& placed;
    QList<QRectF>& points;  ///< a pixel, and its place in the room of width and height
    QString name;
    bool ready = false;
};

class ImageWalk : public KeyRig {
protected:
    ImageWalk() {
        Map().Control().rasters.SetMaker([this] { return std::make_unique<FileServer>(log, points); });
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
    QList<QRectF> points;
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

TEST_F(ImageWalk, AnImageIsPlacedWithoutAMouse) {
    AddScan("a.png");
    Press(Qt::Key_F6);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_M);
    ASSERT_NE(Placing(), nullptr);
    const auto onImage = [&](Qt::Key key, int times = 1, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_NE(Placing(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(Placing(), 30000));
        // A window is active before its field has the keyboard where an X server is busy.
        const auto hasKeys = [&] { return QApplication::focusWidget() == &Placing()->View(); };
        ASSERT_TRUE(QTest::qWaitFor(hasKeys, 30000)) << "the keys are the image's";
        for (int i = 0; i < times; ++i) QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        Settle();
    };
    const auto onMap = [&](double x, double y) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
        ASSERT_EQ(QApplication::focusWidget(), &Map()) << "the keys are the map's";
        ClickAt(x, y);
    };
    // The cross begins in the middle of 200 x 100 pixels; a twentieth of the width is 10.
    onImage(Qt::Key_Left, 9, Qt::ShiftModifier);
    onImage(Qt::Key_Up, 3);
    onImage(Qt::Key_Space);
    onMap(100, 200);
    onImage(Qt::Key_Right, 17, Qt::ShiftModifier);
    onImage(Qt::Key_Down, 200);
    onImage(Qt::Key_Return);
    points.clear();
    onMap(800, 700);
    EXPECT_EQ(Placing(), nullptr);
    const double unit = Unit();
    ASSERT_EQ(points.size(), 2);
    EXPECT_EQ(points[0].topLeft(), QPointF(9, 46)) << "rect().center() of an even number is the pixel before the middle";
    EXPECT_EQ(points[1].topLeft(), QPointF(179, 99)) << "no further than the image";
    // The places are those of the left top corners, and the picked ones those of the middles: half a pixel, scaled and turned.
    const std::complex<double> first(points[0].width(), points[0].height());
    const std::complex<double> second(points[1].width(), points[1].height());
    const std::complex<double> half = (second - first) / std::complex(179.0 - 9.0, 46.0 - 99.0) * std::complex(0.5, -0.5);
    EXPECT_NEAR((first + half).real(), 100, 4 * unit);
    EXPECT_NEAR((first + half).imag(), 200, 4 * unit);
    EXPECT_NEAR((second + half).real(), 800, 4 * unit);
    EXPECT_NEAR((second + half).imag(), 700, 4 * unit);
    EXPECT_TRUE(log.contains("place a.png"));
}

TEST_F(ImageWalk, APlaceThatIsGivenUpByKeyGivesTheImageTheKeyboard) {
    AddScan("a.png");
    window->Images().List().setCurrentRow(0);
    Choose("Place the image");
    ASSERT_TRUE(QTest::qWaitForWindowActive(Placing(), 30000));
    QTest::keyClick(&Placing()->View(), Qt::Key_Space);
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000));
    QTest::keyClick(&Map(), Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Placing(), 30000));
    EXPECT_EQ(QApplication::focusWidget(), &Placing()->View());
    QTest::keyClick(&Placing()->View(), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(Placing(), nullptr);
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
