// Layers, selection, search, relations, overlay, frames and images, from key and click to store and screen.
#include <QLabel>
#include <QStatusBar>
#include <QTreeWidget>
#include <complex>

#include "hosts/viewer/layer_presets.h"
#include "raster/raster_server.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class WorkWalk : public Walk {
protected:
    void MakeSquares() {
        MakeLayer("AREA", kLayPolygon);
        MakeLayer("OUT", kLayPolygon);
        MakeLayer("TREE", kLayPoint);
        AddSquare("AREA", 1, 0, 0, 300);
        AddSquare("AREA", 2, 200, 200, 300);
        AddSquare("AREA", 3, 800, 0, 300);
        AddFeature("TREE", 1, {900.0}, {600.0});
        Fit();
    }
    QTreeWidgetItem* LayerRow(const QString& code) {
        QTreeWidget& list = window->Layers().List();
        for (int i = 0; i < list.topLevelItemCount(); ++i) {
            if (list.topLevelItem(i)->text(0).startsWith(code + ' ')) return list.topLevelItem(i);
        }
        return nullptr;
    }
    const LayerDef& LayerOf(const char* code) { return Store().Layer(Store().FindLayDef(code)); }
    QRgb PixelAt(double x, double y) {
        const double ratio = Map().devicePixelRatioF();
        return Map().Picture().pixel((QPointF(PointOf(x, y)) * ratio).toPoint());
    }
    QString StatusText() {
        QStringList all;
        for (const QLabel* label : window->statusBar()->findChildren<QLabel*>()) all << label->text();
        return all.join('|');
    }
    std::vector<ItemKey> Selected() { return SelectedItems(Store(), 100); }
};

TEST_F(WorkWalk, TheListHasTheTopmostLayerFirstAndHidesShowsAndSwitches) {
    MakeSquares();
    Map().Call("OrvSetLayColor", {"AREA", 0x112233});
    Map().Call("OrvReDraw");
    EXPECT_EQ(PixelAt(900, 100) & 0xFFFFFF, 0x332211u);
    ASSERT_NE(LayerRow("AREA"), nullptr);
    LayerRow("AREA")->setCheckState(0, Qt::Unchecked);
    Settle();
    EXPECT_EQ(LayerOf("AREA").dspFlg, 0);
    EXPECT_EQ(PixelAt(900, 100) & 0xFFFFFF, 0xFFFFFFu);
    LayerRow("AREA")->setCheckState(1, Qt::Unchecked);
    Settle();
    LayerRow("AREA")->setCheckState(2, Qt::Unchecked);
    Settle();
    EXPECT_EQ(LayerOf("AREA").actFlg, 0);
    EXPECT_EQ(LayerOf("AREA").editFlg, 0);
    for (int i = 0; i < 3; ++i) Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(LayerOf("AREA").dspFlg, 1);
    EXPECT_EQ(LayerOf("AREA").actFlg, 1);
    EXPECT_EQ(LayerOf("AREA").editFlg, 1);
    EXPECT_EQ(PixelAt(900, 100) & 0xFFFFFF, 0x332211u);
}

TEST_F(WorkWalk, TheOrderOfTheListIsTheOrderOnTheScreen) {
    MakeSquares();
    AddSquare("OUT", 1, 800, 0, 300);
    Map().Call("OrvSetLayColor", {"AREA", 0x0000FF});
    Map().Call("OrvSetLayColor", {"OUT", 0xFF0000});
    window->Layers().Choose("OUT");
    while (LayerRow("OUT") != window->Layers().List().topLevelItem(0)) Press(Qt::CTRL | Qt::Key_PageUp);
    EXPECT_EQ(PixelAt(900, 100) & 0xFFFFFF, 0x0000FFu);
    for (int i = 0; i < 3; ++i) Press(Qt::CTRL | Qt::Key_PageDown);
    EXPECT_EQ(PixelAt(900, 100) & 0xFFFFFF, 0xFF0000u);
    Press(Qt::CTRL | Qt::Key_Z);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(PixelAt(900, 100) & 0xFFFFFF, 0x0000FFu);
}

TEST_F(WorkWalk, TheLookOfALayerIsEditedAndTakenBack) {
    MakeSquares();
    window->Layers().Choose("AREA");
    const LayerState before = StateOf(LayerOf("AREA"));
    LayerState look = before;
    look.color = 0x445566;
    look.color2 = 0x010203;
    look.lineType = 2;
    look.lineSize = 3;
    look.pgnType = 4;
    look.noOutline = false;
    look.covers = false;
    emit window->Layers().Looks().Edited(look);
    Settle();
    EXPECT_EQ(StateOf(LayerOf("AREA")), look);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(StateOf(LayerOf("AREA")), before);
    window->Layers().Choose("TREE");
    look = StateOf(LayerOf("TREE"));
    look.pntType = 4;
    look.lineSize = 9999;
    emit window->Layers().Looks().Edited(look);
    Settle();
    EXPECT_EQ(LayerOf("TREE").pntType, 4);
    EXPECT_EQ(LayerOf("TREE").lineSize, 9999);
}

TEST_F(WorkWalk, TheFormOfALookWritesWhatItsFieldsSay) {
    MakeSquares();
    window->Layers().Choose("AREA");
    auto* width = window->Layers().Looks().findChild<QSpinBox*>();
    width->setValue(5);
    Settle();
    EXPECT_EQ(LayerOf("AREA").lineSize, 5);
    EXPECT_EQ(LayerOf("AREA").color, 0xDCDCDCu) << "the other fields stay";
}

TEST_F(WorkWalk, ASubLayerIsMadeAndGivenToAFeature) {
    MakeSquares();
    window->Layers().Choose("AREA");
    WhenAsked([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("name")->setText("Wards");
        dialog.accept();
    });
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_L);
    ASSERT_EQ(LayerOf("AREA").subLayCnt, 1);
    LayerChange change{"AREA", 1, StateOf(LayerOf("AREA").subLays[0]), {}};
    change.after = change.before;
    change.after.color = 0x00FF00;
    window->History().ChangeLayers("look", {change});
    Click(PointOf(900, 100));
    window->Feature().SubLayerField().setCurrentIndex(1);
    window->Feature().Apply();
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_A);
    EXPECT_EQ(PixelAt(900, 150) & 0xFFFFFF, 0x00FF00u);
}

TEST_F(WorkWalk, ANewLayerIsMadeAndDrawnIn) {
    WhenAsked([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("code")->setText("NEW");
        dialog.accept();
    });
    Press(Qt::CTRL | Qt::Key_L);
    ASSERT_GE(Store().FindLayDef("NEW"), 0);
    EXPECT_EQ(LayerOf("NEW").editFlg, 1);
    Press(Qt::Key_D);
    Click({300, 300});
    EXPECT_EQ(BlockOf("NEW").datCnt, 1);
}

TEST_F(WorkWalk, APresetGivesAllLayersALookAndIsOneStep) {
    MakeSquares();
    const LayerState before = StateOf(LayerOf("AREA"));
    for (const LayerPreset& preset : LayerPresets()) {
        window->History().ChangeLayers(preset.name, preset.make(Store()));
        EXPECT_NE(StateOf(LayerOf("AREA")), before) << preset.name.toStdString();
        Press(Qt::CTRL | Qt::Key_Z);
        EXPECT_EQ(StateOf(LayerOf("AREA")), before);
    }
}

TEST_F(WorkWalk, TheSelectionIsListedCountedAndGoneTo) {
    MakeSquares();
    Click(PointOf(100, 100));
    Click(PointOf(900, 100), Qt::ControlModifier);
    EXPECT_EQ(window->Selection().List().topLevelItemCount(), 2);
    EXPECT_TRUE(StatusText().contains("2 selected")) << StatusText().toStdString();
    window->Selection().List().clearSelection();
    window->Selection().List().setCurrentItem(window->Selection().List().topLevelItem(1));
    const QPoint before = PointOf(950, 150);
    Press(Qt::Key_G);
    EXPECT_NE(PointOf(950, 150), before);
    EXPECT_NEAR(PointOf(920, 120).x(), Map().width() / 2, 40) << "the mean of its points, the closing one counted";
    EXPECT_EQ(Selected().size(), 2u) << "the others stay selected";
    window->Selection().KeepMarked();
    Settle();
    ASSERT_EQ(Selected().size(), 1u);
    EXPECT_EQ(Selected()[0].datID, 3);
    Press(Qt::CTRL | Qt::SHIFT | Qt::Key_A);
    EXPECT_TRUE(StatusText().contains("0 selected"));
}

TEST_F(WorkWalk, FeaturesAreFoundByCodeAndNumber) {
    MakeSquares();
    Press(Qt::CTRL | Qt::Key_F);
    ASSERT_TRUE(window->Finder().isVisible());
    window->Finder().CodeField().setCurrentText("AREA");
    window->Finder().NumberField().setText("3");
    window->Finder().Find();
    ASSERT_EQ(window->Finder().List().topLevelItemCount(), 1);
    window->Finder().Go();
    Settle();
    ASSERT_EQ(Selected().size(), 1u);
    EXPECT_EQ(Selected()[0], (ItemKey{"AREA", 1, 3}));
    window->Finder().NumberField().clear();
    window->Finder().Find();
    EXPECT_EQ(window->Finder().List().topLevelItemCount(), 3);
    window->Finder().SelectAll();
    Settle();
    EXPECT_EQ(Selected().size(), 3u);
    window->Finder().NumberField().setText("three");
    window->Finder().Find();
    EXPECT_EQ(window->Finder().List().topLevelItemCount(), 0);
}

TEST_F(WorkWalk, ADrawnAreaSelectsByEachRelation) {
    MakeSquares();
    struct Case {
        int relation;
        std::vector<int> ids;  // of AREA
    };
    // A drawn square round feature 3 alone, which no other one meets.
    const std::vector<Case> cases{{1, {1, 2}}, {2, {3}}, {6, {3}}};
    for (const Case& c : cases) {
        window->Relations().Shape().setCurrentIndex(2);
        window->Relations().Relation().setCurrentIndex(c.relation);
        Press(Qt::Key_B);
        EXPECT_TRUE(window->Relations().StartAction().isChecked());
        Click(PointOf(750, -40));
        Click(PointOf(1150, -40));
        Click(PointOf(1150, 340));
        DoubleClick(PointOf(750, 340));
        std::vector<int> ids;
        for (const ItemKey& key : Selected()) {
            if (key.code == "AREA") ids.push_back(key.datID);
        }
        EXPECT_EQ(ids, c.ids) << "relation " << c.relation;
        EXPECT_EQ(Store().OrgDatCnt(), 0) << "the drawn shape is gone";
        EXPECT_FALSE(window->Relations().StartAction().isChecked());
    }
}

TEST_F(WorkWalk, ADrawnPointAndLineSelect) {
    MakeSquares();
    window->Relations().Shape().setCurrentIndex(0);
    window->Relations().Relation().setCurrentIndex(5);
    Press(Qt::Key_B);
    Click(PointOf(900, 100));
    ASSERT_EQ(Selected().size(), 1u);
    EXPECT_EQ(Selected()[0].datID, 3);
    window->Relations().Shape().setCurrentIndex(1);
    window->Relations().Relation().setCurrentIndex(4);
    Press(Qt::Key_B);
    Click(PointOf(-50, 100));
    DoubleClick(PointOf(500, 100));
    ASSERT_EQ(Selected().size(), 1u);
    EXPECT_EQ(Selected()[0].datID, 1);
    Press(Qt::Key_B);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(window->Relations().StartAction().isChecked());
}

TEST_F(WorkWalk, TheReleaseThatFollowsTheLastPressOfAShapeSelectsNothingByItself) {
    MakeSquares();
    window->Relations().Shape().setCurrentIndex(0);
    window->Relations().Relation().setCurrentIndex(1);  // apart from the point: all but the one under it
    Press(Qt::Key_B);
    Click(PointOf(900, 100));
    std::vector<int> ids;
    for (const ItemKey& key : Selected()) {
        if (key.code == "AREA") ids.push_back(key.datID);
    }
    EXPECT_EQ(ids, (std::vector<int>{1, 2}));
    EXPECT_EQ(window->Events().count("MouseUp"), 0);
}

TEST_F(WorkWalk, SelectedAreasAreIntersectedAndMergedIntoALayer) {
    MakeSquares();
    for (const int key : {Qt::Key_1, Qt::Key_2}) {
        Click(PointOf(100, 100));
        Click(PointOf(400, 400), Qt::ControlModifier);
        WhenAsked([](QDialog& dialog) {
            auto* target = dialog.findChild<QComboBox*>();
            target->setCurrentText("OUT / 1");
            dialog.accept();
        });
        Press(QKeyCombination(Qt::CTRL, static_cast<Qt::Key>(key)));
    }
    ASSERT_EQ(BlockOf("OUT").datCnt, 2);
    const auto areaOf = [&](const DigDat& dat) {
        double twice = 0;
        for (std::int32_t i = 0; i + 1 < dat.pntCnt; ++i) {
            const auto n = static_cast<std::size_t>(i);
            twice += dat.pnts[n].x * dat.pnts[n + 1].y - dat.pnts[n + 1].x * dat.pnts[n].y;
        }
        return std::abs(twice) / 2;
    };
    EXPECT_NEAR(areaOf(BlockOf("OUT").dats[0]), 100.0 * 100, 1e-3);
    EXPECT_NEAR(areaOf(BlockOf("OUT").dats[1]), 2 * 300.0 * 300 - 100.0 * 100, 1e-3);
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(BlockOf("OUT").datCnt, 1);
    Press(Qt::CTRL | Qt::Key_Y);
    EXPECT_EQ(BlockOf("OUT").datCnt, 2);
}

TEST_F(WorkWalk, AnOverlayWithoutTwoAreasSaysWhatToDo) {
    MakeSquares();
    Click(PointOf(100, 100));
    EXPECT_TRUE(RunOverlay(Map(), window->History(), Overlay::Merge, "OUT", 1).contains("two areas"));
    EXPECT_EQ(BlockOf("OUT").datCnt, 0);
}

TEST_F(WorkWalk, TheStatusBarShowsThePlaceInTheFrameAtHand) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    QTest::mouseMove(&Map(), {300, 300});
    Settle();
    EXPECT_TRUE(StatusText().contains("mesh ")) << StatusText().toStdString();
    window->Place().ChangeFrame(9);
    Settle();
    EXPECT_TRUE(StatusText().contains("zone 9")) << StatusText().toStdString();
    QTest::mouseMove(&Map(), {320, 300});
    Settle();
    EXPECT_TRUE(QTest::qWaitFor([&] { return StatusText().contains("zone 9"); })) << StatusText().toStdString();
    EXPECT_FALSE(window->FindAction("Delete the selection")->isEnabled()) << "what is edited there would not come back";
    window->Place().ChangeFrame(0);
    Settle();
    EXPECT_TRUE(window->FindAction("Delete the selection")->isEnabled());
}

/// Notes what it is asked, in the order of all images.
struct NotingServer : RasterServer {
    explicit NotingServer(QStringList& notes) : log(notes) {}
    bool SrvIsReady() override { return ready; }
    bool SrvInit() override { return ready = true; }
    bool SrvLoad(std::string_view filename) override {
        name = QFileInfo(QString::fromLatin1(filename.data(), static_cast<qsizetype>(filename.size()))).fileName();
        return name != "bad.tif";
    }
    bool SrvClose() override { return true; }
    bool SrvDraw(DeviceContext&, const RasterPart&, std::int16_t) override {
        log << name;
        return true;
    }
    bool SrvRotate(double) override { return true; }
    bool SrvSetCP1(std::int32_t x, std::int32_t y, double mapX, double mapY) override {
        log << QString("1: %1 %2 %3 %4").arg(x).arg(y).arg(qRound(mapX)).arg(qRound(mapY));
        return true;
    }
    bool SrvSetCP2(std::int32_t x, std::int32_t y, double mapX, double mapY) override {
        log << QString("2: %1 %2 %3 %4").arg(x).arg(y).arg(qRound(mapX)).arg(qRound(mapY));
        return true;
    }
    bool SrvCalcCorrect2() override {
        log << "placed";
        return true;
    }
    std::int32_t SrvImgWidth() override { return 200; }
    std::int32_t SrvImgHeight() override { return 100; }

    QStringList& log;
    QString name;
    bool ready = false;
};

TEST_F(WorkWalk, ImagesAreAddedOrderedHiddenAndTakenAway) {
    QStringList log;
    Map().Control().rasters.SetMaker([&log] { return std::make_unique<NotingServer>(log); });
    MakeSquares();
    ImagePanel& images = window->Images();
    EXPECT_EQ(images.Add(File("a.tif")), "");
    EXPECT_EQ(images.Add(File("b.tif")), "");
    EXPECT_FALSE(images.Add(File("bad.tif")).isEmpty());
    log.clear();
    Map().Call("OrvReDraw");
    EXPECT_EQ(log, (QStringList{"a.tif", "b.tif"})) << "the one added last lies on top";
    images.Move(0, false);
    log.clear();
    Map().Call("OrvReDraw");
    EXPECT_EQ(log, (QStringList{"b.tif", "a.tif"}));
    images.List().item(0)->setCheckState(Qt::Unchecked);
    log.clear();
    Map().Call("OrvReDraw");
    EXPECT_EQ(log, (QStringList{"b.tif"}));
    images.Remove(1);
    EXPECT_EQ(images.List().count(), 1);
    EXPECT_EQ(Map().Control().rasters.Count(), 1);
    Map().Control().rasters.SetMaker({});
    window->Files().New();
    EXPECT_EQ(images.List().count(), 0);
}

TEST_F(WorkWalk, AnImageIsPlacedByTwoPointsPickedOnItAndOnTheMap) {
    QStringList log;
    Map().Control().rasters.SetMaker([&log] { return std::make_unique<NotingServer>(log); });
    MakeSquares();
    QImage scan(200, 100, QImage::Format_RGB32);
    scan.fill(Qt::gray);
    ASSERT_TRUE(scan.save(File("scan.png")));
    ASSERT_EQ(window->Images().Add(File("scan.png")), "");
    window->Images().List().setCurrentRow(0);
    Choose("Place the image");
    auto* placing = window->findChild<QDialog*>("placing");
    ASSERT_NE(placing, nullptr);
    auto* view = placing->findChild<QWidget*>("image");
    view->resize(400, 200);
    Settle();
    const double unit = Unit();
    QTest::mouseClick(view, Qt::LeftButton, {}, view->rect().topLeft() + QPoint(view->width() / 2, view->height() / 2));
    log.clear();
    Click(PointOf(300, 300));
    QTest::mouseClick(view, Qt::LeftButton, {}, view->rect().topLeft() + QPoint(view->width() / 2 + 20, view->height() / 2 + 20));
    Click(PointOf(800, 0));
    ASSERT_EQ(log.count("placed"), 1) << log.join('\n').toStdString();
    // A pixel and the place of its left top corner each, from which one factor of scale and turn leads to the middle of the
    // first.
    const QStringList points = log.filter("1: ") + log.filter("2: ");
    ASSERT_EQ(points.size(), 2);
    const QStringList first = points[0].split(' ');
    const QStringList second = points[1].split(' ');
    const std::complex<double> corner(first[3].toDouble(), first[4].toDouble());
    const std::complex<double> factor =
        (std::complex(second[3].toDouble(), second[4].toDouble()) - corner) /
        std::complex(second[1].toDouble() - first[1].toDouble(), first[2].toDouble() - second[2].toDouble());
    const std::complex<double> middle = corner + factor * std::complex(0.5, -0.5);
    EXPECT_NEAR(middle.real(), 300, 2 * unit);
    EXPECT_NEAR(middle.imag(), 300, 2 * unit);
    EXPECT_EQ(Selected().size(), 0u) << "the clicks were not the map's";
    Map().Control().rasters.SetMaker({});
    window->Files().New();
}

}  // namespace
}  // namespace orvane
