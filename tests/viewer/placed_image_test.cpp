// Images lie where they were placed, and those that are not seen are said to be.
#include <QLabel>
#include <QStatusBar>

#include "hosts/viewer/image_panel.h"
#include "hosts/viewer/print_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class PlacedImage : public Walk {
protected:
    PlacedImage() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 1000);
        Fit();
    }
    ImagePanel& Images() { return window->Images(); }
    QString Row(int row) { return Images().List().item(row)->text(); }
    QString Status() { return window->statusBar()->currentMessage(); }
    void SaveScan(const char* name) {
        QImage scan(10, 10, QImage::Format_RGB32);
        for (int y = 0; y < 10; ++y) {
            for (int x = 0; x < 10; ++x) scan.setPixel(x, y, qRgb(20 * x, 20 * y, 100));
        }
        ASSERT_TRUE(scan.save(File(name)));
    }
    QRgb ColorAt(double x, double y) {
        const QPointF at = QPointF(PointOf(x, y)) * Map().devicePixelRatioF();
        return Map().Picture().pixel(at.toPoint()) & 0xFFFFFF;
    }
};

TEST_F(PlacedImage, TheMiddlesOfThePickedPixelsLieOnThePlaces) {
    SaveScan("scan.png");
    ASSERT_EQ(Images().Add(File("scan.png")), "") << "the library that reads images is part of this build";
    // 100 units a pixel, so that the image reaches from 0 to 1000.
    ASSERT_TRUE(Images().Place(0, {ImagePoint{{0, 0}, {50, 950}}, ImagePoint{{9, 9}, {950, 50}}}));
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 10; ++x) {
            const QRgb color = qRgb(20 * x, 20 * y, 100) & 0xFFFFFF;
            const double left = 100 * x;
            const double top = 1000 - 100 * y;
            for (const QPointF& at : {QPointF(50, 50), QPointF(10, 10), QPointF(90, 10), QPointF(10, 90), QPointF(90, 90)})
                EXPECT_EQ(ColorAt(left + at.x(), top - at.y()), color) << x << ' ' << y << " at " << at.x() << ' ' << at.y();
        }
    }
}

TEST_F(PlacedImage, AnImageThatIsTurnedLiesBySameMiddles) {
    SaveScan("scan.png");
    ASSERT_EQ(Images().Add(File("scan.png")), "");
    // A quarter to the left: the image's right is north, its bottom is east.
    ASSERT_TRUE(Images().Place(0, {ImagePoint{{0, 0}, {50, 50}}, ImagePoint{{9, 0}, {50, 950}}}));
    for (const QPoint pixel : {QPoint(0, 0), QPoint(9, 0), QPoint(0, 9), QPoint(9, 9), QPoint(4, 7)}) {
        const QRgb color = qRgb(20 * pixel.x(), 20 * pixel.y(), 100) & 0xFFFFFF;
        for (const double dx : {-40.0, 0.0, 40.0}) {
            EXPECT_EQ(ColorAt(50 + 100 * pixel.y() + dx, 50 + 100 * pixel.x() - dx), color) << pixel.x() << ' ' << pixel.y();
        }
    }
}

TEST_F(PlacedImage, AnImageWithoutAPlaceIsSaidToBeUntilItHasOne) {
    SaveScan("scan.png");
    ASSERT_EQ(Images().Add(File("scan.png")), "");
    EXPECT_EQ(Row(0), "scan.png (has no place yet)");
    EXPECT_TRUE(Status().contains("scan.png")) << Status().toStdString();
    EXPECT_TRUE(Status().contains("Place")) << Status().toStdString();
    EXPECT_EQ(Images().LeftOut(), QStringList{"scan.png: it has no place yet"});
    ASSERT_TRUE(Images().Place(0, {ImagePoint{{0, 0}, {50, 950}}, ImagePoint{{9, 9}, {950, 50}}}));
    Settle();
    EXPECT_EQ(Row(0), "scan.png");
    EXPECT_TRUE(Images().LeftOut().isEmpty());
    window->History().Undo();
    EXPECT_EQ(Row(0), "scan.png (has no place yet)");
    Images().SetShown(0, false);
    EXPECT_EQ(Row(0), "scan.png") << "it is not to be seen";
    // An image that says itself where it lies.
    QFile world(File("scan.pgw"));
    ASSERT_TRUE(world.open(QIODevice::WriteOnly));
    world.write("100\n0\n0\n-100\n50\n950\n");
    world.close();
    ASSERT_EQ(Images().Add(File("scan.png")), "");
    Settle();
    EXPECT_EQ(Row(0), "scan.png");
}

/// Draws parts of the map of no more than 500 units.
struct NearServer : RasterServer {
    bool SrvIsReady() override { return true; }
    bool SrvInit() override { return true; }
    bool SrvLoad(std::string_view) override { return true; }
    bool SrvClose() override { return true; }
    bool SrvDraw(DeviceContext&, const RasterPart& part, std::int16_t) override { return part.X2 - part.X1 <= 500; }
    bool SrvRotate(double) override { return true; }
    bool SrvSetCP1(std::int32_t, std::int32_t, double, double) override { return true; }
    bool SrvSetCP2(std::int32_t, std::int32_t, double, double) override { return true; }
    bool SrvCalcCorrect2() override { return true; }
    std::int32_t SrvImgWidth() override { return 10; }
    std::int32_t SrvImgHeight() override { return 10; }
};

TEST_F(PlacedImage, AnImageThatIsNotDrawnIsSaidOnceAndOnThePageBeforeItIsPrinted) {
    Images().ReadWith([] { return std::make_unique<NearServer>(); });
    ASSERT_EQ(Images().Add(File("scan.tif")), "");
    Settle();
    EXPECT_EQ(Row(0), "scan.tif (not drawn)");
    EXPECT_TRUE(Status().startsWith("scan.tif is not drawn")) << Status().toStdString();
    window->statusBar()->clearMessage();
    Map().Call("OrvReDraw");
    Settle();
    EXPECT_EQ(Status(), "") << "once";
    const int far = Map().Zoom();
    Map().SetZoom(far / 10);
    Map().Call("OrvReDraw");
    Settle();
    EXPECT_EQ(Row(0), "scan.tif");
    EXPECT_TRUE(Images().LeftOut().isEmpty());
    // The page is drawn at a scale of its own.
    WhenAsked([&](QDialog& dialog) {
        auto& print = static_cast<PrintDialog&>(dialog);
        print.ScaleField().setValue(100000);
        print.ShowPreview();
        EXPECT_TRUE(print.Words().text().contains("scan.tif")) << print.Words().text().toStdString();
        print.ScaleField().setValue(1000);
        print.ShowPreview();
        EXPECT_FALSE(print.Words().text().contains("scan.tif")) << print.Words().text().toStdString();
        print.reject();
    });
    Press(Qt::CTRL | Qt::Key_P);
    Images().ReadWith({[] { return std::unique_ptr<RasterServer>(); }});
    window->Files().New();
}

TEST_F(PlacedImage, WhyAnImageDoesNotComeIsSaidWithWhatToDo) {
    const QString missing = Images().Add(File("none.png"));
    EXPECT_TRUE(missing.contains("there is no such file or folder")) << missing.toStdString();
    EXPECT_TRUE(missing.contains("Look whether")) << missing.toStdString();
    QFile text(File("words.png"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no image");
    text.close();
    const QString unreadable = Images().Add(text.fileName());
    EXPECT_TRUE(unreadable.contains("it cannot be read") || unreadable.contains("it is no")) << unreadable.toStdString();
}

TEST_F(PlacedImage, WhatWasSaidOfAnImageIsNotSaidAgainWhenTheListIsLoadedAnew) {
    Images().ReadWith([] { return std::make_unique<NearServer>(); });
    ASSERT_EQ(Images().Add(File("scan.tif")), "");
    Settle();
    ASSERT_TRUE(Status().startsWith("scan.tif is not drawn")) << Status().toStdString();
    window->statusBar()->clearMessage();
    ASSERT_TRUE(Images().Place(0, {ImagePoint{{0, 0}, {50, 950}}, ImagePoint{{9, 9}, {950, 50}}}));
    Settle();
    EXPECT_EQ(Row(0), "scan.tif (not drawn)");
    Images().Remove(0);
    window->History().Undo();
    window->History().Undo();
    Settle();
    EXPECT_EQ(Row(0), "scan.tif (not drawn)");
    EXPECT_EQ(Status(), "");
    ASSERT_EQ(Images().Add(File("other.tif")), "");
    Settle();
    EXPECT_TRUE(Status().startsWith("other.tif is not drawn")) << "each image has its own word";
    Images().ReadWith({[] { return std::unique_ptr<RasterServer>(); }});
    window->Files().New();
}

}  // namespace
}  // namespace orvane
