// What menus and buttons do where other walks call the work itself: frames, colours, the printer, a folder of files.
#include <QColorDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>
#include <cmath>

#include "hosts/viewer/color_button.h"
#include "hosts/viewer/print_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class MenuWalk : public Walk {
protected:
    /// The action of an open menu whose name ends so, without the marks of letters.
    QAction* ActionIn(QMenu& menu, const QString& ending) {
        emit menu.aboutToShow();
        for (QAction* action : menu.actions()) {
            if (action->text().remove('&').endsWith(ending)) return action;
        }
        return nullptr;
    }
    QMenu* MenuNamed(const QString& name) {
        for (QMenu* menu : window->findChildren<QMenu*>()) {
            if (menu->title().remove('&') == name) return menu;
        }
        return nullptr;
    }
    /// All points of the map in the order of drawing.
    std::vector<QPointF> Points() {
        std::vector<QPointF> points;
        for (const DigIndex& entry : Store().Index()) {
            const DigBlock& block = Store().Block(entry.block);
            for (const DigDat& dat : block.dats) {
                for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
                    const DigPnt& p = dat.pnts[static_cast<std::size_t>(i)];
                    points.emplace_back(block.GX + p.x, block.GY + p.y);
                }
            }
        }
        return points;
    }
    static double Farthest(const std::vector<QPointF>& a, const std::vector<QPointF>& b) {
        if (a.size() != b.size()) return HUGE_VAL;
        double most = 0;
        for (std::size_t i = 0; i < a.size(); ++i) most = (std::max)(most, std::hypot(a[i].x() - b[i].x(), a[i].y() - b[i].y()));
        return most;
    }
    void PressButton(QWidget& in, const QString& text) {
        for (QPushButton* button : in.findChildren<QPushButton*>()) {
            if (button->text().remove('&').startsWith(text)) return QTest::mouseClick(button, Qt::LeftButton);
        }
        ADD_FAILURE() << "no button " << text.toStdString();
    }
};

TEST_F(MenuWalk, TheFrameMenuPutsAMapOfSheetsIntoAZoneAndBack) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    QMenu* frames = MenuNamed("Frame");
    ASSERT_NE(frames, nullptr);
    ASSERT_EQ(frames->actions().size(), 20) << "the mesh frame and nineteen zones";
    const std::vector<QPointF> before = Points();
    ASSERT_NE(ActionIn(*frames, "Mesh frame"), nullptr);
    EXPECT_TRUE(ActionIn(*frames, "Mesh frame")->isChecked());
    EXPECT_TRUE(ActionIn(*frames, "zone 9")->isEnabled());
    ActionIn(*frames, "zone 9")->trigger();
    Settle();
    EXPECT_EQ(window->Place().ZoneNow(), 9);
    EXPECT_TRUE(ActionIn(*frames, "zone 9")->isChecked());
    EXPECT_FALSE(ActionIn(*frames, "Mesh frame")->isChecked());
    // Tokyo lies within 100 km of the origin of its zone, at 36 degrees north, 139 degrees 50 minutes east.
    for (const QPointF& p : Points()) {
        EXPECT_LT(std::abs(p.x()), 100e3);
        EXPECT_LT(p.y(), 0) << "south of the origin";
        EXPECT_GT(p.y(), -100e3);
    }
    ActionIn(*frames, "zone 8")->trigger();
    Settle();
    EXPECT_EQ(window->Place().ZoneNow(), 8);
    ActionIn(*frames, "Mesh frame")->trigger();
    Settle();
    EXPECT_EQ(window->Place().ZoneNow(), 0);
    EXPECT_LT(Farthest(Points(), before), 1e-6);
}

TEST_F(MenuWalk, TheFrameMenuIsGreyForAMapThatIsInNoMeshFrame) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 300);
    QMenu* frames = MenuNamed("Frame");
    ASSERT_NE(frames, nullptr);
    emit frames->aboutToShow();
    for (const QAction* action : frames->actions()) EXPECT_FALSE(action->isEnabled()) << action->text().toStdString();
}

TEST_F(MenuWalk, ColoursAreChosenInTheirDialogAndTakenBack) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 300);
    Fit();
    window->Layers().Choose("AREA");
    const LayerState before = StateOf(Store().Layer(0));
    const QList<ColorButton*> buttons = window->Layers().Looks().findChildren<ColorButton*>();
    ASSERT_EQ(buttons.size(), 2);
    const auto choose = [&](ColorButton* button, const QColor& color, bool accept) {
        WhenAsked([color, accept](QDialog& dialog) {
            auto* colors = qobject_cast<QColorDialog*>(&dialog);
            ASSERT_NE(colors, nullptr);
            colors->setCurrentColor(color);
            accept ? colors->accept() : colors->reject();
        });
        QTest::mouseClick(button, Qt::LeftButton);
        Settle();
    };
    choose(buttons[0], QColor(0x12, 0x34, 0x56), true);
    EXPECT_EQ(Store().Layer(0).color, 0x563412u) << "red is the lowest byte";
    choose(buttons[1], QColor(0xAB, 0xCD, 0xEF), true);
    EXPECT_EQ(Store().Layer(0).color2, 0xEFCDABu);
    choose(buttons[0], Qt::white, false);
    EXPECT_EQ(Store().Layer(0).color, 0x563412u) << "the dialog was given up";
    const QPoint inside = PointOf(150, 150) * Map().devicePixelRatioF();
    EXPECT_EQ(Map().Picture().pixel(inside) & 0xFFFFFF, 0x123456u) << "the map shows it at once";
    EXPECT_EQ(window->History().Stack().count(), 2);
    Press(Qt::CTRL | Qt::Key_Z);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(StateOf(Store().Layer(0)), before);
}

TEST_F(MenuWalk, ThePrintButtonPrintsOnePageWhereTheDialogSays) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, 0, 0, 300);
    Fit();
    const QString file = File("printed.pdf");
    WhenAsked([this](QDialog& dialog) {
        // After this answer, so that the next dialog can be answered while this one is open.
        QTimer::singleShot(0, &dialog, [this, &dialog] {
            PressButton(dialog, "Print");
            dialog.reject();
        });
    });
    WhenAsked([&](QDialog& dialog) {
        auto* print = qobject_cast<QPrintDialog*>(&dialog);
        ASSERT_NE(print, nullptr);
        print->printer()->setOutputFormat(QPrinter::PdfFormat);
        auto* name = print->findChild<QLineEdit*>("filename");
        ASSERT_NE(name, nullptr) << "a system without a printer prints to files";
        name->setText(file);
        print->accept();
    });
    Press(Qt::CTRL | Qt::Key_P);
    QFile pdf(file);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const QByteArray bytes = pdf.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_TRUE(bytes.contains("/Count 1")) << "one page";
    EXPECT_FALSE(bytes.contains("/Subtype /Image")) << "all of it is shapes";
}

TEST_F(MenuWalk, SeveralLayersGoIntoAFolderOfFilesAndComeBackAsTheyWere) {
    ASSERT_TRUE(window->Load({Sample("tokyo.geojson")}, {}).Ok());
    const std::vector<QPointF> town = Points();
    ASSERT_FALSE(town.empty());
    const double x = town[0].x();
    const double y = town[0].y();
    MakeLayer("ROAD", kLayLine);
    MakeLayer("TREE", kLayPoint);
    AddFeature("ROAD", 1, {x, x + 250.125, x + 300}, {y, y + 100, y - 80.5});
    AddFeature("ROAD", 2, {x, x - 10}, {y + 7, y});
    AddFeature("TREE", 1, {x + 33.25}, {y + 44.75});
    const auto sorted = [](std::vector<QPointF> points) {
        std::sort(points.begin(), points.end(),
                  [](const QPointF& a, const QPointF& b) { return a.x() != b.x() ? a.x() < b.x() : a.y() < b.y(); });
        return points;
    };
    const std::vector<QPointF> before = sorted(Points());
    const std::int32_t layers = Store().LayerCnt();
    WhenAskedForFile(File("out.shp"));
    Press(Qt::CTRL | Qt::Key_E);
    const QStringList files = QDir(File("out")).entryList({"*.shp"});
    ASSERT_EQ(files.size(), layers) << files.join(' ').toStdString();
    QStringList paths;
    for (const QString& file : files) paths << File("out") + '/' + file;
    window->Files().New();
    ASSERT_TRUE(window->Load(paths, {}).Ok());
    ASSERT_EQ(Store().LayerCnt(), layers);
    EXPECT_EQ(BlockOf("ROAD").datCnt, 2);
    EXPECT_EQ(BlockOf("TREE").datCnt, 1);
    EXPECT_LT(Farthest(sorted(Points()), before), 1e-3);
}

}  // namespace
}  // namespace orvane
