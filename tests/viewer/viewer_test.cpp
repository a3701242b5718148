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
#include "hosts/viewer/settings.h"

namespace orvane {
namespace {

class ViewerTest : public ::testing::Test {
protected:
    ViewerTest() {
        Settings().clear();
        window.Map().SetScaleBarMode(0);
        window.resize(1200, 720);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window, 30000));
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
        window.activateWindow();
        QApplication::processEvents();
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
    EXPECT_EQ(result.fault, ImportFault::Missing);
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
    for (int i = 0; i < 2; ++i) Press(Qt::Key_Plus);
    window.resize(1230, 760);  // the map stays within the screen of 800 pixels that the platform without a display has
    QTest::qWait(50);
    const QImage picture = Map().Picture().copy();
    EXPECT_EQ(picture.size(), Map().size() * Map().devicePixelRatioF());
    EXPECT_EQ(Shown(), picture);
    const std::size_t inked = InkedPixels();
    Map().Call("OrvReDraw");
    EXPECT_EQ(Map().Picture(), picture) << "nothing of the new part was left out";
    window.resize(900, 760);
    QTest::qWait(50);
    EXPECT_GT(inked, InkedPixels()) << "the square reaches into the new part";
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

TEST_F(ViewerTest, AModeOfTheBarStartsItsToolAndComesBackWhenTheToolEnds) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    const auto action = [this](const QString& text) -> QAction* {
        for (QAction* a : window.findChild<ModeBar*>()->actions()) {
            if (a->text() == text) return a;
        }
        return nullptr;
    };
    ASSERT_NE(action("Delete"), nullptr);
    action("Delete")->trigger();
    EXPECT_EQ(Map().RunMode(), 300);
    EXPECT_TRUE(action("Delete")->isChecked());
    // Beside the hole, which lies in the middle.
    QTest::mouseClick(&Map(), Qt::LeftButton, {}, {Map().width() / 2 + Map().width() / 6, Map().height() / 2});
    QApplication::processEvents();
    EXPECT_EQ(Map().Control().store.Block(0).datCnt, 0);
    EXPECT_TRUE(action("Select")->isChecked());
    EXPECT_EQ(window.Events().count("OnEditorStart"), 1);
    EXPECT_EQ(window.Events().count("OnEditorEnd"), 1);
}

TEST_F(ViewerTest, WhatCameFromAnArchiveCanBePickedAndEdited) {
    ASSERT_TRUE(window.Load({QString(ORVANE_SAMPLES) + "/tokyo_mesh.Ovb"}, {}).Ok());
    for (std::int32_t i = 0; i < Map().Control().store.LayerCnt(); ++i) {
        EXPECT_EQ(Map().Control().store.Layer(i).actFlg, 1);
        EXPECT_EQ(Map().Control().store.Layer(i).editFlg, 1);
    }
}

TEST_F(ViewerTest, DrawingPutsANewFeatureIntoTheChosenLayer) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    for (QAction* a : window.findChild<ModeBar*>()->actions()) {
        if (a->text() == "Draw") a->trigger();
    }
    ASSERT_EQ(Map().RunMode(), 101);
    for (const QPoint& at : {QPoint(100, 100), QPoint(160, 100), QPoint(160, 160)})
        QTest::mouseClick(&Map(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(&Map(), Qt::LeftButton, {}, {160, 160});
    EXPECT_EQ(Map().RunMode(), 0);
    const DigBlock& block = Map().Control().store.Block(0);
    ASSERT_EQ(block.datCnt, 2);
    EXPECT_EQ(block.dats[1].pntCnt, 4) << "three clicks, and the ring is closed";
}

TEST_F(ViewerTest, AnotherMapEndsTheToolOfTheOneBefore) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    Map().Call("OrvDatEditor", {"", 0, 0, 200});
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    EXPECT_EQ(Map().RunMode(), 0);
}

TEST_F(ViewerTest, TheCursorShowsThePlaceInThePlaneZone) {
    ASSERT_TRUE(window.Load(Square(), {}).Ok());
    EXPECT_EQ(window.Place().PlaceText(1234.56, -20), "zone 9: X (north) -20.0 Y (east) 1234.6");
    EXPECT_FALSE(window.Place().IsMeshMap());
}

TEST_F(ViewerTest, AMapInTheMeshFrameGoesIntoAPlaneZoneAndBack) {
    ASSERT_TRUE(window.Load({QString(ORVANE_SAMPLES) + "/tokyo_mesh.Ovb"}, {}).Ok());
    ASSERT_TRUE(window.Place().IsMeshMap());
    // The south-west corner of sheet 533945: 35 degrees 40 minutes north, 139 degrees 37 minutes 30 seconds east, in the frame
    // of sheets of 5 minutes by 7 minutes and a half, counted from the equator and from 100 degrees.
    const double x = (139.625 - 100) / 0.125 * 10000;
    const double y = (35 + 40.0 / 60) * 12 * 10000;
    EXPECT_EQ(window.Place().PlaceText(x + 5, y + 5), QString::fromUtf8("mesh 533945 (5.0, 5.0)   N 35°40′00.2″ E 139°37′30.2″"));
    const CDigMem& store = Map().Control().store;
    const DigPnt before = store.Block(0).dats[0].pnts[0];
    window.Place().ChangeFrame(9);
    EXPECT_EQ(Map().Control().frameZone, 9);
    EXPECT_NE(store.Block(0).dats[0].pnts[0].x, before.x);
    EXPECT_TRUE(window.Place().PlaceText(-20000, -36000).startsWith("zone 9: X (north) -36000.0 Y (east) -20000.0   N 35"));
    EXPECT_GT(InkedPixels(), 1000u) << "the map stays in view";
    window.Place().ChangeFrame(0);
    EXPECT_EQ(store.Block(0).dats[0].pnts[0].x, before.x);
    EXPECT_EQ(store.Block(0).dats[0].pnts[0].y, before.y);
    // A map opened while the plane frame stands begins in its own.
    window.Place().ChangeFrame(9);
    ASSERT_TRUE(window.Load({QString(ORVANE_SAMPLES) + "/tokyo_mesh.Ovb"}, {}).Ok());
    EXPECT_EQ(Map().Control().frameMode, 0);
    EXPECT_TRUE(window.Place().IsMeshMap());
}

}  // namespace
}  // namespace orvane
