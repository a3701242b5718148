// Frames, modes, steps and pages where one could spoil the other.
#include <QListWidget>
#include <QPrinter>
#include <QRegularExpression>
#include <QTreeWidget>

#include "hosts/viewer/print_dialog.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class CarefulWork : public Walk {
protected:
    std::vector<ItemCopy> Features() {
        std::vector<ItemCopy> all;
        for (const DigIndex& entry : Store().Index()) {
            for (const DigDat& dat : Store().Block(entry.block).dats) all.push_back(CopyOf(dat));
        }
        return all;
    }
    ItemKey FirstKey() {
        // Of the fullest block, as some walks delete one or two.
        std::int32_t fullest = Store().Index()[0].block;
        for (const DigIndex& entry : Store().Index()) {
            if (Store().Block(entry.block).datCnt > Store().Block(fullest).datCnt) fullest = entry.block;
        }
        const DigBlock& block = Store().Block(fullest);
        return {std::string(block.code.View()), block.meshNo, block.dats[0].datID};
    }
    QAction* Mode(int runMode) {
        for (QAction* action : window->findChild<ModeBar*>()->actions()) {
            if (action->isCheckable() && action->data().toInt() == runMode) return action;
        }
        return nullptr;
    }
    QStringList ListedLayers() {
        QStringList names;
        QTreeWidget& list = window->Layers().List();
        for (int i = 0; i < list.topLevelItemCount(); ++i) names << list.topLevelItem(i)->text(0).section(' ', 0, 0);
        return names;
    }
    void MakeSquares() {
        MakeLayer("AREA", kLayPolygon);
        AddSquare("AREA", 1, 0, 0, 300);
        AddSquare("AREA", 2, 400, 0, 300);
        Fit();
    }
};

TEST_F(CarefulWork, AToolDoesNotGoIntoAnotherFrameAndNothingIsEditedThere) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    const auto before = Features();
    window->History().Change("deleting", Deletion(Store(), FirstKey()));
    const auto edited = Features();
    ASSERT_TRUE(window->History().StartTool(kRunMoveDat, FirstKey()));
    window->Relations().StartAction().trigger();  // a shape takes the mouse from the tool
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    Press(Qt::Key_K);
    ASSERT_EQ(Map().RunMode(), kRunDeleteDat);
    EXPECT_FALSE(window->Relations().StartAction().isChecked()) << "and the tool from the shape";
    window->Place().ChangeFrame(9);
    EXPECT_EQ(Map().RunMode(), kRunNormal);
    EXPECT_FALSE(window->History().StartTool(kRunDeleteDat));
    EXPECT_FALSE(window->History().StartTool(kRunDeleteDat, FirstKey()));
    window->History().Change("deleting", Deletion(Store(), FirstKey()));
    window->History().Undo();
    EXPECT_EQ(window->History().Stack().index(), 1) << "steps wait for the map's own frame";
    window->Place().ChangeFrame(0);
    EXPECT_TRUE(Features() == edited);
    window->History().Undo();
    EXPECT_TRUE(Features() == before);
}

TEST_F(CarefulWork, AShapeIsGivenUpWithTheFrameThatItWasBegunIn) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    Press(Qt::Key_B);
    Click({200, 200});
    Click({300, 200});
    EXPECT_GT(Store().OrgDatCnt(), 0);
    window->Place().ChangeFrame(9);
    EXPECT_FALSE(window->Relations().StartAction().isChecked());
    EXPECT_EQ(Store().OrgDatCnt(), 0);
}

TEST_F(CarefulWork, AnotherMapBeginsInTheModeThatTheBarShows) {
    Press(Qt::Key_P);
    ASSERT_TRUE(Mode(kRunPan)->isChecked());
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    EXPECT_FALSE(Mode(kRunPan)->isChecked());
    EXPECT_TRUE(Mode(kRunNormal)->isChecked());
}

TEST_F(CarefulWork, TheZoomRectangleIsGivenUpByEscapeByItsKeyAndByATool) {
    MakeSquares();
    QAction* action = window->FindAction("Zoom to rectangle");
    const auto mode = [this] { return Map().Control().rectZoomMode; };
    Press(Qt::Key_P);
    Press(Qt::Key_R);
    EXPECT_EQ(mode(), 10);
    EXPECT_EQ(Map().RunMode(), kRunNormal) << "panning would take the drag";
    EXPECT_TRUE(action->isChecked());
    Press(Qt::Key_Escape);
    EXPECT_EQ(mode(), 0);
    EXPECT_FALSE(action->isChecked());
    Press(Qt::Key_R);
    Press(Qt::Key_R);
    EXPECT_EQ(mode(), 0);
    Press(Qt::Key_R);
    Press(Qt::Key_K);
    EXPECT_EQ(mode(), 0);
    Press(Qt::Key_Escape);
    Press(Qt::Key_R);
    const int before = Map().Zoom();
    QTest::mousePress(&Map(), Qt::LeftButton, {}, {200, 200});
    QTest::mouseMove(&Map(), {260, 240});
    QTest::mouseRelease(&Map(), Qt::LeftButton, {}, {300, 260});
    EXPECT_LT(Map().Zoom(), before) << "and it still zooms";
}

TEST_F(CarefulWork, ASaveInTheMiddleOfAShapeWarnsOfNothing) {
    MakeSquares();
    ASSERT_TRUE(window->Files().Save(File("map.Ovb"), "").saved);
    Press(Qt::Key_B);
    Click({200, 200});
    Click({300, 200});
    ASSERT_GT(Store().OrgDatCnt(), 0);
    Press(Qt::CTRL | Qt::Key_S);  // a question would fail the walk
    EXPECT_EQ(Store().OrgDatCnt(), 0);
}

TEST_F(CarefulWork, TwoFeaturesOfOneNumberGoAndComeEachAsItself) {
    MakeLayer("TREE", kLayPoint);
    AddFeature("TREE", 5, {100.0}, {100.0});
    AddFeature("TREE", 6, {200.0}, {100.0});
    AddFeature("TREE", 5, {300.0}, {100.0});
    Fit();
    const auto before = Features();
    // The second alone.
    Store().MutableBlock(Store().FindBlock("TREE", 1).block).dats[2].active = 1;
    window->DeleteSelection();
    ASSERT_EQ(Features().size(), 2u);
    EXPECT_EQ(Features()[0].pnts[0].x, 100.0);
    EXPECT_EQ(Features()[1].datID, 6);
    window->History().Undo();
    EXPECT_TRUE(Features() == before);
    // Both.
    for (const std::size_t i : {std::size_t{0}, std::size_t{2}})
        Store().MutableBlock(Store().FindBlock("TREE", 1).block).dats[i].active = 1;
    Store().MutableBlock(Store().FindBlock("TREE", 1).block).dats[1].active = 0;
    window->DeleteSelection();
    ASSERT_EQ(Features().size(), 1u);
    EXPECT_EQ(Features()[0].datID, 6);
    window->History().Undo();
    EXPECT_TRUE(Features() == before);
}

TEST_F(CarefulWork, ATextComesBackWithItsHeight) {
    MakeLayer("NAME", kLayText);
    AddFeature("NAME", 1, {100.0}, {100.0});
    Map().Call("OrvSetDatString", {"NAME", 1, 1, 100.0, 100.0, QString("a")});
    AddFeature("NAME", 2, {200.0}, {100.0});
    Store().MutableBlock(Store().FindBlock("NAME", 1).block).dats[0].str->z = 12.5;  // as an archive gives it
    window->History().Change("deleting", Deletion(Store(), {"NAME", 1, 1}));
    window->History().Undo();
    ASSERT_EQ(Features().size(), 2u);
    ASSERT_NE(BlockOf("NAME").dats[0].str, nullptr);
    EXPECT_EQ(BlockOf("NAME").dats[0].str->z, 12.5);
}

TEST_F(CarefulWork, AnImportGoesAndComes) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    const auto before = Features();
    const QStringList layers = ListedLayers();
    ASSERT_TRUE(window->Files().Import({Sample("tokyo.geojson")}, {}).Ok());
    const auto after = Features();
    ASSERT_GT(after.size(), before.size());
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_TRUE(Features() == before);
    EXPECT_EQ(ListedLayers(), layers);
    EXPECT_FALSE(window->isWindowModified());
    Press(Qt::CTRL | Qt::Key_Y);
    EXPECT_TRUE(Features() == after);
}

TEST_F(CarefulWork, AnImportIntoAMapThatWasEmptiedIsAStepOfThatMap) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    const auto before = Features();
    const QString path = window->Files().Path();
    window->Layers().Choose(std::string(Store().Layer(0).code.View()));
    Choose("Remove the layer");
    ASSERT_TRUE(Features().empty());
    ASSERT_TRUE(window->Files().Import({Sample("tokyo.geojson")}, {}).Ok());
    EXPECT_FALSE(Features().empty());
    EXPECT_EQ(window->Files().Path(), path);
    EXPECT_TRUE(window->isWindowModified());
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_TRUE(Features().empty());
    Press(Qt::CTRL | Qt::Key_Z);
    EXPECT_TRUE(Features() == before);
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(CarefulWork, ANewLayerGoesAndComesAndItsCodeIsFreeAgain) {
    MakeSquares();
    window->Layers().MakeLayer("PIPE", kLayLine, 1);
    EXPECT_TRUE(ListedLayers().contains("PIPE"));
    window->History().Undo();
    Settle();
    EXPECT_LT(Store().FindBlock("PIPE", 1).block, 0);
    EXPECT_FALSE(ListedLayers().contains("PIPE"));
    window->History().Redo();
    Settle();
    EXPECT_GE(Store().FindBlock("PIPE", 1).block, 0);
    EXPECT_TRUE(ListedLayers().contains("PIPE"));
    AddFeature("PIPE", 1, {0.0, 10.0}, {0.0, 10.0});
    EXPECT_EQ(BlockOf("PIPE").datCnt, 1);
}

TEST_F(CarefulWork, WhatIsDoneToImagesGoesAndComes) {
    MakeSquares();
    QImage scan(60, 60, QImage::Format_RGB32);
    scan.fill(Qt::red);
    ASSERT_TRUE(scan.save(File("a.png")) && scan.save(File("b.png")));
    ASSERT_EQ(window->Images().Add(File("a.png")), "");
    ASSERT_EQ(window->Images().Add(File("b.png")), "");
    window->Images().Move(0, false);
    const auto names = [this] {
        QStringList list;
        for (int i = 0; i < window->Images().List().count(); ++i) {
            list << window->Images().List().item(i)->text().section(' ', 0, 0);  // without what else it says
        }
        return list;
    };
    EXPECT_EQ(names(), (QStringList{"a.png", "b.png"}));
    window->History().Undo();
    EXPECT_EQ(names(), (QStringList{"b.png", "a.png"}));
    window->History().Undo();
    EXPECT_EQ(names(), QStringList{"a.png"});
    EXPECT_EQ(Map().Control().rasters.Count(), 1);
    window->History().Redo();
    EXPECT_EQ(names(), (QStringList{"b.png", "a.png"}));
}

TEST_F(CarefulWork, NothingIsPaintedBesideTheMapsFrameOnPaper) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 1, -5000, -5000, 10000);
    Map().Call("OrvSetLayColor", {"AREA", 0x80C0A0});
    Map().SetZoom(5000);
    Map().Call("OrvMapJumpToXY", {0.0, 0.0});
    PrintDialog print(Map(), "Map", "", window.get());
    print.PaperField().setCurrentIndex(0);
    print.TurnField().setCurrentIndex(1);
    print.ScaleField().setValue(5000);
    print.ShowPreview();
    const QImage sheet = print.Preview().pixmap(Qt::ReturnByValue).toImage();
    EXPECT_EQ(sheet.pixel(sheet.width() / 2, sheet.height() / 2) & 0xFFFFFF, 0xA0C080u);
    // Half of the margin of 10 mm on a sheet of 297 by 210.
    const int x = sheet.width() * 5 / 297;
    const int y = sheet.height() * 5 / 210;
    for (const QPoint at :
         {QPoint(x, sheet.height() / 2), QPoint(sheet.width() / 2, y), QPoint(sheet.width() - 1 - x, sheet.height() / 2),
          QPoint(sheet.width() / 2, sheet.height() - 1 - y)}) {
        EXPECT_EQ(sheet.pixel(at) & 0xFFFFFF, 0xFFFFFFu) << at.x() << ' ' << at.y();
    }
}

TEST_F(CarefulWork, TheFirstPreviewFitsItsPlace) {
    MakeSquares();
    WhenAsked([](QDialog& dialog) {
        auto& print = static_cast<PrintDialog&>(dialog);
        QTest::qWait(300);
        const QSizeF shown = print.Preview().pixmap(Qt::ReturnByValue).deviceIndependentSize();
        const QSizeF place = print.Preview().size();
        EXPECT_LE(shown.width(), place.width() + 1);
        EXPECT_LE(shown.height(), place.height() + 1);
        EXPECT_TRUE(shown.width() > place.width() - 2 || shown.height() > place.height() - 2);
        print.reject();
    });
    Press(Qt::CTRL | Qt::Key_P);
}

TEST_F(CarefulWork, ThePrintersOwnPaperIsPrintedOn) {
    MakeSquares();
    PrintDialog print(Map(), "Map", "", window.get());
    print.PaperField().setCurrentIndex(0);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(File("printed.pdf"));
    printer.setPageSize(QPageSize(QPageSize::A3));
    printer.setPageOrientation(QPageLayout::Landscape);
    ASSERT_EQ(print.PrintTo(printer), "");
    EXPECT_EQ(print.PaperField().currentData().toInt(), static_cast<int>(QPageSize::A3));
    EXPECT_EQ(print.Setup(1).map_mm.width(), 400);
    QFile file(File("printed.pdf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto match = QRegularExpression("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]").match(QString::fromLatin1(file.readAll()));
    ASSERT_TRUE(match.hasMatch());
    EXPECT_NEAR(match.captured(1).toDouble(), 420 / 25.4 * 72, 1.5);
    EXPECT_NEAR(match.captured(2).toDouble(), 297 / 25.4 * 72, 1.5);
}

TEST_F(CarefulWork, AMapOfSheetsClaimsNoScaleOnPaper) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    for (const int zone : {0, 9}) {
        window->Place().ChangeFrame(zone);
        WhenAsked([zone](QDialog& dialog) {
            auto& print = static_cast<PrintDialog&>(dialog);
            print.ShowPreview();
            EXPECT_EQ(print.Words().text().contains("not to scale"), zone == 0);
            print.reject();
        });
        Press(Qt::CTRL | Qt::Key_P);
    }
}

}  // namespace
}  // namespace orvane
