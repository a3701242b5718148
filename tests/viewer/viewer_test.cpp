#include <cpl_vsi.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cmath>

#include "hosts/common/archive_save.h"
#include "hosts/common/automation.h"
#include "hosts/viewer/main_window.h"

namespace orvane {
namespace {

class ViewerTest : public ::testing::Test {
protected:
    ViewerTest() {
        window.resize(700, 560);
        window.show();
        QApplication::processEvents();
    }
    ~ViewerTest() override { VSIUnlink(kFile); }

    // A square of half a degree about a place in zone 9, with a hole.
    static QStringList Square() {
        static std::string text =
            R"({"type":"FeatureCollection","name":"square","description":"Credit to whom it is due","features":[
            {"type":"Feature","properties":{},"geometry":{"type":"Polygon","coordinates":[
            [[139.0,35.5],[139.5,35.5],[139.5,36.0],[139.0,36.0],[139.0,35.5]],
            [[139.2,35.7],[139.3,35.7],[139.3,35.8],[139.2,35.8],[139.2,35.7]]]}}]})";
        VSIFCloseL(VSIFileFromMemBuffer(kFile, reinterpret_cast<GByte*>(text.data()), text.size(), FALSE));
        return {kFile};
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&window.Map(), key, modifiers);
        QApplication::processEvents();
    }
    OrvaneWidget& Map() { return window.Map(); }
    Automation Calls() { return Automation(Map().Control()); }
    std::int32_t Zoom() { return Calls().GetI4("Zoom"); }
    double Left() {
        double x = 0;
        Calls().Call("OrvGetScreenPosX", {Variant(std::int32_t{0})}).ToR8(x);
        return x;
    }
    double Top() {
        double y = 0;
        Calls().Call("OrvGetScreenPosY", {Variant(std::int32_t{0})}).ToR8(y);
        return y;
    }
    // Inside of the black rim at the left and top.
    std::size_t InkedPixels() {
        std::size_t count = 0;
        const QImage& picture = Map().Picture();
        for (int y = 1; y < picture.height(); ++y) {
            for (int x = 1; x < picture.width(); ++x) count += picture.pixel(x, y) != 0xFFFFFFFF;
        }
        return count;
    }
    // What stands on the screen where the map is.
    QImage Shown() { return Map().grab().toImage().convertToFormat(Map().Picture().format()); }
    bool StatusBarShows(const QString& text) {
        for (const QLabel* label : window.statusBar()->findChildren<QLabel*>()) {
            if (label->text() == text) return true;
        }
        return false;
    }

    static constexpr const char* kFile = "/vsimem/square.geojson";
    MainWindow window;
};

TEST_F(ViewerTest, AnEmptyMapIsWhiteWithABlackRimAtTheLeftAndTop) {
    EXPECT_EQ(InkedPixels(), 0u);
    EXPECT_EQ(Map().Picture().pixel(0, 5), 0xFF000000);
    EXPECT_EQ(Map().Picture().pixel(5, 0), 0xFF000000);
    EXPECT_EQ(Map().Control().CurrentDrawState(), 2);
}

TEST_F(ViewerTest, LoadingShowsAllDataItsScaleItsNameAndItsCredit) {
    const ImportResult result = window.Load(Square(), {});
    ASSERT_TRUE(result.Ok()) << result.error;
    QApplication::processEvents();
    EXPECT_GT(InkedPixels(), 50000u);
    EXPECT_EQ(Shown(), Map().Picture());
    EXPECT_TRUE(window.windowTitle().startsWith("square.geojson"));
    EXPECT_TRUE(StatusBarShows("Credit to whom it is due"));
    EXPECT_TRUE(StatusBarShows("1:" + QLocale(QLocale::English).toString(Zoom())));
    // The hole lies in the middle of the data and so of the window.
    const QImage& picture = Map().Picture();
    EXPECT_EQ(picture.pixel(picture.width() / 2, picture.height() / 2), 0xFFFFFFFF);
}

TEST_F(ViewerTest, AnArchiveOpensInPlaceOfTheMapThatIsThere) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    const QTemporaryDir folder;
    const std::string path = folder.filePath("square.Ovb").toStdString();
    ASSERT_TRUE(SaveArchive(Map().Control().store, path, "").saved);
    const ImportResult result = window.Load({QString::fromStdString(path)}, {});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(Map().Control().store.BlockCnt(), 1);
    EXPECT_EQ(Map().Control().store.Block(0).datCnt, 1) << "the map from before is gone";
    EXPECT_TRUE(window.windowTitle().startsWith("square.Ovb"));
    EXPECT_TRUE(StatusBarShows(""));
    window.SetCredit("Whose it is");
    EXPECT_TRUE(StatusBarShows("Whose it is"));
    QApplication::processEvents();
    EXPECT_GT(InkedPixels(), 50000u);
}

TEST_F(ViewerTest, AnArchiveThatCannotBeReadLeavesTheMapThatIsThere) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    const QTemporaryDir folder;
    const ImportResult result = window.Load({folder.filePath("none.Ovb")}, {});
    EXPECT_EQ(result.fault, ImportFault::Unreadable);
    EXPECT_NE(result.error.find("none.Ovb is missing"), std::string::npos);
    EXPECT_EQ(window.Load({folder.filePath("a.Ovb"), kFile}, {}).fault, ImportFault::BadOption);
    EXPECT_EQ(Map().Control().store.Block(0).datCnt, 1);
}

TEST_F(ViewerTest, PlusAndMinusZoomAboutTheCentre) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    const std::int32_t fitted = Zoom();
    Press(Qt::Key_Plus);
    EXPECT_NEAR(Zoom(), fitted / 1.5, 1);
    EXPECT_TRUE(StatusBarShows("1:" + QLocale(QLocale::English).toString(Zoom())));
    EXPECT_EQ(Shown(), Map().Picture());
    Press(Qt::Key_Minus);
    Press(Qt::Key_Minus);
    EXPECT_NEAR(Zoom(), fitted * 1.5, 3);
    Press(Qt::Key_Home);
    EXPECT_EQ(Zoom(), fitted);
}

TEST_F(ViewerTest, TheArrowsScrollByATenthOfTheWindowAndWithShiftByNearlyAll) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    const double width = Map().Picture().width() * (Zoom() / static_cast<double>(Map().Control().dotPerM));
    const double height = Map().Picture().height() * (Zoom() / static_cast<double>(Map().Control().dotPerM));
    const double pixel = width / Map().Picture().width();
    const double left = Left();
    const double top = Top();
    Press(Qt::Key_Right);
    EXPECT_NEAR(Left(), left + width / 10, 2 * pixel);
    Press(Qt::Key_Left);
    EXPECT_NEAR(Left(), left, 2 * pixel);
    Press(Qt::Key_Up);
    EXPECT_NEAR(Top(), top + height / 10, 2 * pixel) << "up shows what lies to the north";
    Press(Qt::Key_Down);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_NEAR(Top(), top - 0.9 * height, 3 * pixel);
}

TEST_F(ViewerTest, AfterAScrollTheScreenShowsTheNewPictureAlsoWhenItIsUncovered) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    Press(Qt::Key_Right);
    const QImage scrolled = Map().Picture().copy();
    Map().update();
    QApplication::processEvents();
    EXPECT_EQ(Map().Picture(), scrolled);
    EXPECT_EQ(Shown(), scrolled);
}

TEST_F(ViewerTest, AResizedWindowIsDrawnToItsNewEdges) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    for (int i = 0; i < 4; ++i) Press(Qt::Key_Plus);  // the square, but for its hole, fills the window
    window.resize(780, 600);
    QApplication::processEvents();
    const QImage& picture = Map().Picture();
    EXPECT_EQ(picture.size(), Map().size());
    const QRgb fill = picture.pixel(5, 5);
    EXPECT_NE(fill, 0xFFFFFFFF);
    EXPECT_EQ(picture.pixel(picture.width() - 5, picture.height() - 5), fill);
    EXPECT_EQ(Shown(), picture);
}

TEST_F(ViewerTest, AFileThatCannotBeReadLeavesTheMapThatIsThere) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    const QString title = window.windowTitle();
    const QImage before = Map().Picture().copy();
    const ImportResult result = window.Load({"no/such/file.shp"}, {});
    EXPECT_EQ(result.fault, ImportFault::Missing);
    QApplication::processEvents();
    EXPECT_EQ(window.windowTitle(), title);
    EXPECT_EQ(Map().Picture(), before);
}

TEST_F(ViewerTest, ASecondFileTakesThePlaceOfTheFirst) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    EXPECT_EQ(Map().Control().store.LayerCnt(), 1);
}

TEST_F(ViewerTest, ControlMessagesAreShownWithTheirTextAndTitle) {
    QString shown;
    QTimer::singleShot(0, [&shown] {
        if (auto* box = qobject_cast<QWidget*>(QApplication::activeModalWidget())) {
            for (const QLabel* label : box->findChildren<QLabel*>()) shown += label->text();
            shown += "|" + box->windowTitle();
            box->close();
        }
    });
    Map().Control().window().ShowMessage("\x93\x8C\x8B\x9E", "title", MessageIcon::Exclamation);
    EXPECT_TRUE(shown.contains("東京")) << shown.toStdString();
}

}  // namespace
}  // namespace orvane
