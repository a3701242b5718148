// Pages: what is recorded is what was drawn, paper shows what the picture shows, and files come out whole.
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <cmath>

#include "hosts/viewer/map_page.h"
#include "hosts/viewer/print_dialog.h"
#include "platform/qt/page_context.h"
#include "platform/record/replay.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

/// The part of pixels that differ clearly where no neighbour explains it: edges that stand half a pixel aside do not count.
double DifferentPart(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) return 1;
    const auto near = [](QRgb p, QRgb q) {
        return std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q)) < 150;
    };
    const auto isFound = [&](const QImage& in, int x, int y, QRgb wanted) {
        for (int dy = -2; dy <= 2; ++dy) {
            for (int dx = -2; dx <= 2; ++dx) {
                if (in.rect().contains(x + dx, y + dy) && near(in.pixel(x + dx, y + dy), wanted)) return true;
            }
        }
        return false;
    };
    std::int64_t different = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            different += !isFound(b, x, y, a.pixel(x, y)) || !isFound(a, x, y, b.pixel(x, y));
        }
    }
    return static_cast<double>(different) / (static_cast<double>(a.width()) * a.height());
}

class OutputWalk : public Walk {
protected:
    OutputWalk() {
        MakeLayer("AREA", kLayPolygon);
        MakeLayer("ROAD", kLayLine);
        MakeLayer("TREE", kLayPoint);
        MakeLayer("DISC", kLayCircle);
        MakeLayer("NAME", kLayText);
        AddSquare("AREA", 1, 0, 0, 300);
        AddSquare("AREA", 2, 400, 0, 300);
        AddFeature("ROAD", 1, {0.0, 300.0, 600.0}, {500.0, 520.0, 450.0});
        AddFeature("TREE", 1, {100.0}, {700.0});
        AddFeature("DISC", 1, {500.0}, {700.0}, {80.0});
        AddFeature("NAME", 1, {100.0}, {400.0});
        Map().Call("OrvSetDatString", {"NAME", 1, 1, 100.0, 400.0, QString::fromUtf8("東京 Town")});
        Map().Call("OrvSetFontSize", {"NAME", 1, 18});
        Map().Call("OrvSetLayColor", {"AREA", 0x80C0A0});
        Map().Call("OrvSetLayLineSize", {"ROAD", 3});
        Fit();
    }
    PageSetup SmallPage() const {
        PageSetup setup;
        setup.map_mm = {120, 120};
        setup.dpi = 150;
        setup.zoom = 8000;
        setup.centre = {350, 400};
        return setup;
    }
    /// The page performed on a picture.
    QImage Performed(const MapPage& page, int& images) {
        QImage paper(page.picture.size(), QImage::Format_RGB32);
        paper.fill(Qt::white);
        QPainter painter(&paper);
        painter.setRenderHint(QPainter::Antialiasing);
        images = PaintPage(Map(), page, painter);
        return paper;
    }
};

TEST_F(OutputWalk, ARecordedPagePerformedAgainIsThePictureToThePixel) {
    const MapPage page = RecordPage(Map(), SmallPage());
    ASSERT_FALSE(page.IsEmpty());
    QImage again(page.picture.size(), QImage::Format_RGB32);
    again.fill(Qt::red);
    QtContext context(again, page.numbers);
    ReplayTargets targets;
    targets.SetContext(page.context, context);
    Replay(*page.verbs, targets);
    EXPECT_EQ(again, page.picture);
}

TEST_F(OutputWalk, ThePageShowsWhatThePictureShowsWithShapesAlone) {
    const MapPage page = RecordPage(Map(), SmallPage());
    int images = -1;
    const QImage paper = Performed(page, images);
    EXPECT_EQ(images, 0) << "everything here is a shape";
    EXPECT_LT(DifferentPart(page.picture, paper), 0.0005);
    QImage blank(page.picture.size(), QImage::Format_RGB32);
    blank.fill(Qt::white);
    EXPECT_GT(DifferentPart(page.picture, blank), 0.01) << "the comparison can fail";
}

TEST_F(OutputWalk, HatchesAndDashesAreShapesToo) {
    Map().Call("OrvSetLayLineSize", {"ROAD", 1});
    for (int hatch = 1; hatch <= 7; ++hatch) {
        Map().Call("OrvSetLayLineType", {"AREA", hatch});
        Map().Call("OrvSetLayPgnLine", {"AREA", 0, hatch % 5});
        Map().Call("OrvSetLayLineType", {"ROAD", hatch % 5});
        const MapPage page = RecordPage(Map(), SmallPage());
        int images = -1;
        const QImage paper = Performed(page, images);
        EXPECT_EQ(images, 0);
        EXPECT_LT(DifferentPart(page.picture, paper), 0.003) << "hatch " << hatch;
    }
}

TEST_F(OutputWalk, WhatAPageCannotTakeIsPlacedAsPixelsAndTheRestStaysShapes) {
    // Areas that let through what lies beneath combine with it.
    Map().Call("OrvSetLayPgnMode", {"AREA", 0});
    AddSquare("AREA", 3, 150, 150, 300);
    const MapPage page = RecordPage(Map(), SmallPage());
    int images = 0;
    const QImage paper = Performed(page, images);
    EXPECT_GT(images, 0);
    EXPECT_LT(DifferentPart(page.picture, paper), 0.0005);
}

TEST_F(OutputWalk, AnImageUnderTheMapIsOnThePageToo) {
    QImage scan(60, 60, QImage::Format_RGB32);
    scan.fill(QColor(200, 30, 90));
    ASSERT_TRUE(scan.save(File("scan.png")));
    ASSERT_EQ(window->Images().Add(File("scan.png")), "") << "the library that reads images is part of this build";
    window->Images().SetOnTop(false);
    ASSERT_TRUE(window->Images().Place(0, {ImagePoint{{0, 0}, {-100, 900}}, ImagePoint{{60, 60}, {800, 0}}}));
    const MapPage page = RecordPage(Map(), SmallPage());
    int images = 0;
    const QImage paper = Performed(page, images);
    EXPECT_GT(images, 0);
    EXPECT_LT(DifferentPart(page.picture, paper), 0.001);
    // Between the areas, where nothing lies over the image.
    const auto at = [&](double x, double y) {
        const double unit = 8000 / 1000.0 / 150 * 25.4;
        return QPoint(static_cast<int>(page.picture.width() / 2 + (x - 350) / unit),
                      static_cast<int>(page.picture.height() / 2 - (y - 400) / unit));
    };
    EXPECT_EQ(paper.pixel(at(350, 200)) & 0xFFFFFF, 0xC81E5Au);
    EXPECT_EQ(Map().Picture().pixel((QPointF(PointOf(350, 200)) * Map().devicePixelRatioF()).toPoint()) & 0xFFFFFF, 0xC81E5Au);
}

TEST_F(OutputWalk, ThePageIsTrueToItsScale) {
    PageSetup setup = SmallPage();
    setup.zoom = 5000;
    setup.centre = {150, 150};
    const MapPage page = RecordPage(Map(), setup);
    // Feature 1 is 300 m wide: 60 mm on a page at 1:5000.
    const int y = page.picture.height() / 2;
    int first = -1;
    int last = -1;
    for (int x = 0; x < page.picture.width(); ++x) {
        if ((page.picture.pixel(x, y) & 0xFFFFFF) != 0xA0C080) {
            if (first >= 0) break;
            continue;
        }
        if (first < 0) first = x;
        last = x;
    }
    EXPECT_NEAR((last - first) / 150.0 * 25.4, 60, 0.5);
}

TEST_F(OutputWalk, AfterAPageTheScreenIsPickedAsBefore) {
    RecordPage(Map(), SmallPage());
    Click(PointOf(150, 150));
    EXPECT_EQ(SelectedItems(Store(), 9).size(), 1u);
}

TEST_F(OutputWalk, TheDialogShowsAPreviewAtTheScaleAndWritesPdfAndPng) {
    WhenAsked([&](QDialog& dialog) {
        auto& print = static_cast<PrintDialog&>(dialog);
        print.ScaleField().setValue(8000);
        print.ShowPreview();
        const QPixmap whole = print.Preview().pixmap(Qt::ReturnByValue);
        print.ScaleField().setValue(2000);
        print.ShowPreview();
        EXPECT_NE(whole.toImage(), print.Preview().pixmap(Qt::ReturnByValue).toImage());
        print.ScaleField().setValue(8000);
        EXPECT_EQ(print.WritePdf(File("map.pdf")), "");
        EXPECT_EQ(print.WritePng(File("map.png")), "");
        EXPECT_FALSE(print.WritePdf(File("none/map.pdf")).isEmpty());
        EXPECT_EQ(print.Setup(300).zoom, 8000);
        print.reject();
    });
    Press(Qt::CTRL | Qt::Key_P);
    const QImage png(File("map.png"));
    EXPECT_GT(png.width(), 1000);
    EXPECT_NEAR(png.dotsPerMeterX(), 300 / 0.0254, 1);
    QFile pdf(File("map.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const QByteArray bytes = pdf.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_FALSE(bytes.contains("/Subtype /Image")) << "all of it is shapes";
}

TEST_F(OutputWalk, ThePdfShowsWhatThePictureShows) {
    const QString ghostscript = QStandardPaths::findExecutable("gs");
    if (ghostscript.isEmpty()) GTEST_SKIP() << "nothing here draws a PDF";
    PrintDialog print(Map(), "Map", "", window.get());
    print.PaperField().setCurrentIndex(0);
    print.TurnField().setCurrentIndex(0);
    print.ScaleField().setValue(6000);
    ASSERT_EQ(print.WritePdf(File("map.pdf")), "");
    ASSERT_EQ(print.WritePng(File("map.png")), "");
    QProcess gs;
    gs.start(ghostscript, {"-q", "-dBATCH", "-dNOPAUSE", "-dSAFER", "-sDEVICE=png16m", "-dTextAlphaBits=4",
                           "-dGraphicsAlphaBits=4", "-r300", "-sOutputFile=" + File("page.png"), File("map.pdf")});
    ASSERT_TRUE(gs.waitForFinished(60000));
    const QImage paper(File("page.png"));
    const QImage map(File("map.png"));
    const int margin = qRound(10 / 25.4 * 300);
    // The frame is drawn on the map's edge.
    const QRect inside = QRect(QPoint(margin, margin), RecordPage(Map(), print.Setup(300)).picture.size()).adjusted(8, 8, -8, -8);
    EXPECT_LT(DifferentPart(map.copy(inside).convertToFormat(QImage::Format_RGB32),
                            paper.copy(inside).convertToFormat(QImage::Format_RGB32)),
              0.001);
}

TEST_F(OutputWalk, TheViewIsSavedAsAPicture) {
    WhenAskedForFile(File("view.png"));
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    EXPECT_EQ(QImage(File("view.png")).convertToFormat(QImage::Format_RGB32), Map().Picture());
}

TEST_F(OutputWalk, TheScaleBarHasItsModesAndIsKept) {
    const QImage none = Map().Picture().copy();
    Choose("Metres");
    const QImage metres = Map().Picture().copy();
    EXPECT_NE(metres, none);
    Choose("Degrees");
    EXPECT_NE(Map().Picture(), metres);
    EXPECT_EQ(Map().ScaleBarMode(), 2);
    window->Files().New();
    EXPECT_EQ(Map().ScaleBarMode(), 2) << "another map keeps it";
    const MainWindow next;
    EXPECT_EQ(const_cast<MainWindow&>(next).Map().ScaleBarMode(), 2);
}

}  // namespace
}  // namespace orvane
