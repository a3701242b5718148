// Images that are too large to show whole, or of forms that only the map's reader knows, are placed like any other.
#include "hosts/viewer/image_preview.h"

#include <algorithm>

#include "hosts/viewer/image_placing.h"
#include "hosts/viewer/work_progress.h"
#include "raster/raster_server.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

/// Notes the pixels of the first control point that it is given.
struct NotingServer : RasterServer {
    explicit NotingServer(QPoint& pixel) : first(pixel) {}
    bool SrvIsReady() override { return true; }
    bool SrvInit() override { return true; }
    bool SrvLoad(std::string_view filename) override {
        return QFileInfo::exists(QString::fromLatin1(filename.data(), static_cast<qsizetype>(filename.size())));
    }
    bool SrvClose() override { return true; }
    bool SrvDraw(DeviceContext&, const RasterPart&, std::int16_t) override { return true; }
    bool SrvRotate(double) override { return true; }
    bool SrvSetCP1(std::int32_t bmpX, std::int32_t bmpY, double, double) override {
        first = {bmpX, bmpY};
        return true;
    }
    bool SrvSetCP2(std::int32_t, std::int32_t, double, double) override { return true; }
    bool SrvCalcCorrect2() override { return true; }
    std::int32_t SrvImgWidth() override { return 6000; }
    std::int32_t SrvImgHeight() override { return 3000; }

    QPoint& first;
};

class ImagePreviewWalk : public Walk {
protected:
    ImagePreviewWalk() {
        Map().Control().rasters.SetMaker([this] { return std::make_unique<NotingServer>(first); });
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 900);
        Fit();
    }
    ~ImagePreviewWalk() override {
        Map().Control().rasters.SetMaker({});
        window->Files().New();
    }
    /// The left half red, the right half blue.
    void SaveHalves(const char* name, QSize size) {
        QImage scan(size, QImage::Format_RGB888);
        scan.fill(Qt::red);
        for (int y = 0; y < scan.height(); ++y) {
            uchar* line = scan.scanLine(y);
            for (int x = scan.width() / 2; x < scan.width(); ++x) {
                line[3 * x] = 0;
                line[3 * x + 2] = 255;
            }
        }
        ASSERT_TRUE(scan.save(File(name)));
    }
    static void ExpectHalves(const QImage& picture) {
        ASSERT_FALSE(picture.isNull());
        const QColor left = picture.pixelColor(picture.width() / 4, picture.height() / 2);
        const QColor right = picture.pixelColor(picture.width() * 3 / 4, picture.height() / 2);
        EXPECT_GT(left.red(), 200) << left.name().toStdString();
        EXPECT_LT(left.blue(), 50) << left.name().toStdString();
        EXPECT_GT(right.blue(), 200) << right.name().toStdString();
        EXPECT_LT(right.red(), 50) << right.name().toStdString();
    }
    ImagePlacing* Placing() {
        for (ImagePlacing* dialog : window->findChildren<ImagePlacing*>()) {
            if (dialog->isVisible()) return dialog;
        }
        return nullptr;
    }

    QPoint first;
};

TEST_F(ImagePreviewWalk, ALargeImageIsShownSmallerAndKeepsItsTrueSize) {
    SaveHalves("large.jpg", {6000, 3000});
    const ImagePreview preview = PreviewOf(File("large.jpg"));
    EXPECT_EQ(preview.why, "");
    EXPECT_EQ(preview.size, QSize(6000, 3000));
    EXPECT_EQ(preview.picture.size(), QSize(2000, 1000));
    ExpectHalves(preview.picture);
    EXPECT_EQ(preview.PixelOf({0, 0}), QPoint(1, 1)) << "the middle of the three that stand for it";
    EXPECT_EQ(preview.PixelOf({1999, 999}), QPoint(5998, 2998));
}

TEST_F(ImagePreviewWalk, ASmallImageKeepsItsPixels) {
    QImage scan(7, 5, QImage::Format_RGB32);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) scan.setPixelColor(x, y, QColor(30 * x, 40 * y, 10));
    }
    ASSERT_TRUE(scan.save(File("small.png")));
    const ImagePreview preview = PreviewOf(File("small.png"));
    ASSERT_EQ(preview.picture.size(), scan.size());
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            EXPECT_EQ(preview.picture.pixelColor(x, y), scan.pixelColor(x, y)) << x << ' ' << y;
            EXPECT_EQ(preview.PixelOf({x, y}), QPoint(x, y));
        }
    }
}

TEST_F(ImagePreviewWalk, AnImageWiderThanAnyPictureIsShown) {
    SaveHalves("strip.png", {40000, 20});
    const ImagePreview preview = PreviewOf(File("strip.png"));
    EXPECT_EQ(preview.size, QSize(40000, 20));
    EXPECT_EQ(preview.picture.size(), QSize(2000, 1));
    ExpectHalves(preview.picture);
}

TEST_F(ImagePreviewWalk, AFormThatOnlyTheReaderOfTheMapKnowsIsShownAndNotAnEmptyField) {
    SaveHalves("scan.png", {60, 30});
    QFile virtualImage(File("scan.vrt"));
    ASSERT_TRUE(virtualImage.open(QIODevice::WriteOnly));
    virtualImage.write("<VRTDataset rasterXSize=\"60\" rasterYSize=\"30\">");
    for (const char* band : {"1", "2", "3"}) {
        virtualImage.write(QByteArray("<VRTRasterBand dataType=\"Byte\" band=\"") + band +
                           "\"><SimpleSource><SourceFilename relativeToVRT=\"1\">scan.png</SourceFilename><SourceBand>" + band +
                           "</SourceBand></SimpleSource></VRTRasterBand>");
    }
    virtualImage.write("</VRTDataset>");
    virtualImage.close();
    const ImagePreview preview = PreviewOf(File("scan.vrt"));
    EXPECT_EQ(preview.size, QSize(60, 30)) << preview.why.toStdString();
    ExpectHalves(preview.picture);
}

TEST_F(ImagePreviewWalk, APlaceThatIsPickedInThePictureIsOneOfTheImage) {
    SaveHalves("large.png", {6000, 3000});
    ASSERT_EQ(window->Images().Add(File("large.png")), "");
    window->Images().List().setCurrentRow(0);
    Choose("Place the image");
    ASSERT_NE(Placing(), nullptr);
    const double unit = 6000.0 / Placing()->View().width() + 3;  // a pixel of the window, and one of the picture
    QTest::mouseClick(&Placing()->View(), Qt::LeftButton, {}, Placing()->View().rect().center());
    Settle();
    Click(PointOf(100, 100));
    ASSERT_NE(Placing(), nullptr);
    QTest::mouseClick(&Placing()->View(), Qt::LeftButton, {}, Placing()->View().rect().center() + QPoint(100, 0));
    Settle();
    Click(PointOf(500, 100));
    EXPECT_EQ(Placing(), nullptr);
    EXPECT_NEAR(first.x(), 3000, unit);
    EXPECT_NEAR(first.y(), 1500, unit);
}

TEST_F(ImagePreviewWalk, AnImageThatIsGoneIsSaidAndOpensNoWindow) {
    SaveHalves("gone.png", {60, 30});
    ASSERT_EQ(window->Images().Add(File("gone.png")), "");
    window->Images().List().setCurrentRow(0);
    ASSERT_TRUE(QFile::remove(File("gone.png")));
    WhenTold(QMessageBox::Ok);
    Choose("Place the image");
    EXPECT_EQ(Placing(), nullptr);
    EXPECT_TRUE(said.contains("gone.png cannot be shown to pick places in")) << said.toStdString();
    EXPECT_TRUE(said.contains("Look whether the file is there")) << said.toStdString();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(ImagePreviewWalk, ReadingTellsHowFarItIsAndStopsWhenItIsTold) {
    SaveHalves("large.png", {4000, 3000});
    std::vector<double> told;
    const ImagePreview whole = PreviewOf(File("large.png"), [&](double done) {
        told.push_back(done);
        return true;
    });
    ExpectHalves(whole.picture);
    EXPECT_GE(told.size(), 20u);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GT(told.back(), 0.9);
    EXPECT_LT(told.back(), 1.0);
    const ImagePreview stopped = PreviewOf(File("large.png"), [](double done) { return done < 0.5; });
    EXPECT_TRUE(stopped.picture.isNull());
    EXPECT_EQ(stopped.why, "");
}

TEST_F(ImagePreviewWalk, WhoCancelsTheReadingIsToldNothingAndPlacesNothing) {
    SaveHalves("large.png", {4000, 3000});
    ASSERT_EQ(window->Images().Add(File("large.png")), "");
    WorkProgress::SetPatience(0);
    QTimer cancel;
    QObject::connect(&cancel, &QTimer::timeout, [] {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<QProgressDialog*>(top);
            if (dialog != nullptr && dialog->isVisible()) dialog->cancel();
        }
    });
    cancel.start(0);
    window->Images().AskPlace();
    cancel.stop();
    WorkProgress::SetPatience(700);
    EXPECT_EQ(Placing(), nullptr);
    window->Images().AskPlace();
    EXPECT_NE(Placing(), nullptr) << "nobody cancels";
}

}  // namespace
}  // namespace orvane
