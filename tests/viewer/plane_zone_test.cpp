// The plane system of a map that an archive does not say: told at the start, asked for, or taken from the first import.
#include <QComboBox>
#include <QSpinBox>
#include <cmath>

#include "control/ctrl.h"
#include "store/dat_lookup.h"
#include "tests/viewer/walk_rig.h"

namespace orvane {
namespace {

class PlaneZone : public Walk {
protected:
    void Write(const char* name, const QByteArray& text) {
        QFile file(File(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    void WriteLine(const char* name, const QByteArray& from, const QByteArray& to, const QByteArray& members = {}) {
        Write(name, R"({"type":"FeatureCollection",)" + members +
                        R"("features":[{"type":"Feature","properties":{},"geometry":{"type":"LineString","coordinates":[[)" +
                        from + "],[" + to + "]]}}]}");
    }
    /// A plane map of zone 9 that was saved and opened again: its archive does not say the zone.
    void OpenPlaneArchive(const ImportOptions& options = {}) {
        ASSERT_TRUE(window->Load({Sample("tokyo.geojson")}, {}).Ok());
        ASSERT_TRUE(window->Files().Save(File("plane.Ovb"), "").saved);
        ASSERT_TRUE(window->Load({File("plane.Ovb")}, options).Ok());
    }
    /// Answers the question for zone and datum; 0 for not knowing.
    void WhenAskedForSystem(int zone, Datum datum = Datum::Jgd2011) {
        WhenAsked([zone, datum](QDialog& dialog) {
            ASSERT_EQ(dialog.objectName(), "plane question");
            dialog.findChild<QComboBox*>("zone")->setCurrentIndex(zone);
            auto* datums = dialog.findChild<QComboBox*>("datum");
            EXPECT_EQ(datums->isEnabled(), zone != 0);
            datums->setCurrentText(DatumName(datum));
            dialog.accept();
        });
    }
    void WhenAskedForSource(int epsg, int zone) {
        WhenAsked([epsg, zone](QDialog& dialog) {
            ASSERT_EQ(dialog.objectName(), "plane question");
            if (epsg != 0) QTest::keyClicks(dialog.findChild<QSpinBox*>("code"), QString::number(epsg));
            if (zone != 0) dialog.findChild<QComboBox*>("zone")->setCurrentIndex(zone);
            dialog.accept();
        });
    }
    void WhenAskedGoBack() {
        WhenAsked([](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), "plane question");
            dialog.reject();
        });
    }
    int Home() { return window->Place().HomeZone(); }
    /// The easting of the first point of the block that came last.
    DigPnt FirstOfLast() {
        const DigBlock& block = Store().Block(Store().BlockCnt() - 1);
        return {block.GX + block.dats[0].pnts[0].x, block.GY + block.dats[0].pnts[0].y, 0};
    }
    void ExportTo(const char* name) {
        WhenAskedForFile(File(name));
        Press(Qt::CTRL | Qt::Key_E);
    }
};

// Osaka lies 4.3 degrees west of the meridian of zone 9 and half a degree west of that of zone 6: 395 and 46 km.
constexpr double kOsakaInZone9 = -397000;
constexpr double kOsakaInZone6 = -46000;

TEST_F(PlaneZone, AnImportIntoAMapOfUnknownZoneGoesIntoTheOneThatIsAnswered) {
    OpenPlaneArchive();
    ASSERT_EQ(Home(), 0);
    WriteLine("osaka.geojson", "135.5,34.7", "135.6,34.8");
    WhenAskedForFile(File("osaka.geojson"));
    WhenAskedForSystem(9);
    WhenTold(QMessageBox::Ok);
    Press(Qt::CTRL | Qt::Key_I);
    EXPECT_EQ(Home(), 9);
    EXPECT_NEAR(FirstOfLast().x, kOsakaInZone9, 3000);
    // It is known from now on, and nobody is asked again.
    ExportTo("known.gpkg");
    ASSERT_TRUE(window->Load({File("known.gpkg")}, {}).Ok());
    EXPECT_EQ(window->Files().System().value().Epsg(), 6677);
}

TEST_F(PlaneZone, AnImportIntoAMapWhoseZoneNobodyKnowsSaysIt) {
    OpenPlaneArchive();
    WriteLine("osaka.geojson", "135.5,34.7", "135.6,34.8");
    WhenAskedForFile(File("osaka.geojson"));
    WhenAskedForSystem(0);
    WhenTold(QMessageBox::Ok);
    Press(Qt::CTRL | Qt::Key_I);
    EXPECT_EQ(Home(), 6);
    EXPECT_NEAR(FirstOfLast().x, kOsakaInZone6, 3000);
}

TEST_F(PlaneZone, GoingBackFromTheQuestionImportsNothingAndExportsNothing) {
    OpenPlaneArchive();
    const std::int32_t blocks = Store().BlockCnt();
    WriteLine("osaka.geojson", "135.5,34.7", "135.6,34.8");
    WhenAskedForFile(File("osaka.geojson"));
    WhenAskedGoBack();
    Press(Qt::CTRL | Qt::Key_I);
    EXPECT_EQ(Store().BlockCnt(), blocks);
    EXPECT_FALSE(window->History().IsModified());
    WhenAskedForFile(File("none.gpkg"));
    WhenAskedGoBack();
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_FALSE(QFileInfo::exists(File("none.gpkg")));
    EXPECT_EQ(Home(), 0);
}

TEST_F(PlaneZone, AnExportNamesTheSystemThatIsAnswered) {
    OpenPlaneArchive();
    WhenAskedForFile(File("tokyo.gpkg"));
    WhenAskedForSystem(9, Datum::Tokyo);
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_EQ(Home(), 9);
    const ImportResult read = window->Load({File("tokyo.gpkg")}, {});
    ASSERT_TRUE(read.Ok()) << read.error;
    EXPECT_EQ(read.summary.epsg, 30169);
}

TEST_F(PlaneZone, AnExportWithoutASystemIsAskedAboutWhenItIsOpened) {
    OpenPlaneArchive();
    WhenAskedForFile(File("bare.gpkg"));
    WhenAskedForSystem(0);
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_EQ(Home(), 0);
    ExportTo("bare2.gpkg");  // who does not know is not asked time and again
    EXPECT_TRUE(QFileInfo::exists(File("bare2.gpkg")));
    ASSERT_EQ(window->Load({File("bare.gpkg")}, {}).fault, ImportFault::NoCoordinateSystem);
    // Going back tells what is wrong, and the map stays.
    WhenAskedGoBack();
    WhenTold(QMessageBox::Ok);
    window->Open({File("bare.gpkg")}, {});
    EXPECT_TRUE(said.contains("coordinate system")) << said.toStdString();
    EXPECT_FALSE(said.contains("--assume CODE")) << said.toStdString();
    EXPECT_EQ(window->Files().Name(), "plane.Ovb");
    WhenAskedForSource(6677, 0);
    window->Open({File("bare.gpkg")}, {});
    EXPECT_EQ(window->Files().Name(), "bare.gpkg");
    EXPECT_EQ(Home(), 9);
    EXPECT_EQ(window->Files().HowToReopen().assumeEpsg, 6677) << "a change of language reads the file again";
}

TEST_F(PlaneZone, AFileWithoutASystemCanBeImportedWithOneThatIsEntered) {
    OpenPlaneArchive();
    WhenAskedForFile(File("bare.gpkg"));
    WhenAskedForSystem(0);
    Press(Qt::CTRL | Qt::Key_E);
    WhenAskedForFile(File("bare.gpkg"));
    WhenAskedForSystem(9);
    WhenAsked([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QComboBox*>("zone"), nullptr) << "the zone is the map's";
        dialog.findChild<QSpinBox*>("code")->setValue(6677);
        dialog.accept();
    });
    const std::int32_t blocks = Store().BlockCnt();
    Press(Qt::CTRL | Qt::Key_I);
    EXPECT_GT(Store().BlockCnt(), blocks);
}

TEST_F(PlaneZone, DataOutsideJapanAsksForItsZone) {
    WriteLine("far.geojson", "120.0,50.0", "120.1,50.1");
    ASSERT_EQ(window->Load({File("far.geojson")}, {}).fault, ImportFault::NoCoordinateSystem);
    WhenAskedForSource(0, 1);
    window->Open({File("far.geojson")}, {});
    EXPECT_EQ(Home(), 1);
}

TEST_F(PlaneZone, WhatTheFirstImportTookHoldsForTheNext) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 5, 0, 0, 1000);
    Fit();
    ASSERT_EQ(window->Files().Import({Sample("tokyo.geojson")}, {}).summary.zone, 9);
    EXPECT_EQ(Home(), 9);
    WriteLine("west.geojson", "138.5,35.6", "138.6,35.7");  // nearest to zone 8
    EXPECT_EQ(window->Files().Import({File("west.geojson")}, {}).summary.zone, 9);
}

TEST_F(PlaneZone, AnImportThatIsTakenBackTakesItsZoneWithIt) {
    MakeLayer("AREA", kLayPolygon);
    AddSquare("AREA", 5, 0, 0, 1000);
    Fit();
    ASSERT_EQ(window->Files().Import({Sample("tokyo.geojson")}, {}).summary.zone, 9);
    window->History().Undo();
    EXPECT_EQ(Home(), 0);
    EXPECT_FALSE(window->Files().System().has_value());
    WriteLine("osaka.geojson", "135.5,34.7", "135.6,34.8");
    EXPECT_EQ(window->Files().Import({File("osaka.geojson")}, {}).summary.zone, 6);
    // Steps behind the import do not touch it.
    window->History().Change("deleting", Deletion(Store(), {"AREA", 1, 5}));
    window->History().Undo();
    EXPECT_EQ(Home(), 6);
}

TEST_F(PlaneZone, AZoneThatWasAnsweredOutlastsTheImportThatAskedForIt) {
    OpenPlaneArchive();
    WriteLine("osaka.geojson", "135.5,34.7", "135.6,34.8");
    WhenAskedForFile(File("osaka.geojson"));
    WhenAskedForSystem(9);
    WhenTold(QMessageBox::Ok);
    Press(Qt::CTRL | Qt::Key_I);
    window->History().Undo();
    EXPECT_EQ(Home(), 9);
    EXPECT_TRUE(window->Files().System().has_value());
}

TEST_F(PlaneZone, AMapOfSheetsThatComesIntoEmptyLayersIsOne) {
    MakeLayer("AREA", kLayPolygon);
    ASSERT_TRUE(window->Files().Import({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    EXPECT_TRUE(window->Place().IsMeshMap());
}

TEST_F(PlaneZone, TheStartTellsAnArchiveItsSystem) {
    ImportOptions options;
    options.zone = 9;
    OpenPlaneArchive(options);
    EXPECT_EQ(Home(), 9);
    EXPECT_FALSE(window->Files().System().has_value()) << "of a zone alone the datum is not known";
    EXPECT_EQ(window->Files().HowToReopen().zone, 9);
    options.assumeEpsg = 2451;
    ASSERT_TRUE(window->Load({File("plane.Ovb")}, options).Ok());
    ASSERT_TRUE(window->Files().System().has_value());
    EXPECT_EQ(window->Files().System()->datum, Datum::Jgd2000);
    EXPECT_EQ(window->Files().System()->zone, 9);
    EXPECT_EQ(window->Files().HowToReopen().assumeEpsg, 2451);
    // What the archive tells of sheets counts more.
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, options).Ok());
    EXPECT_TRUE(window->Place().IsMeshMap());
    EXPECT_EQ(Home(), 0);
}

TEST_F(PlaneZone, ASystemThatAnArchiveCannotBeInIsRefusedAndTheMapStays) {
    OpenPlaneArchive();
    const auto refused = [&](std::optional<int> zone, std::optional<int> epsg) {
        ImportOptions options;
        options.zone = zone;
        options.assumeEpsg = epsg;
        return window->Load({Sample("tokyo_mesh.Ovb")}, options).fault == ImportFault::BadOption;
    };
    EXPECT_TRUE(refused(0, {}));
    EXPECT_TRUE(refused(20, {}));
    EXPECT_TRUE(refused({}, 4326));
    EXPECT_TRUE(refused({}, 6668));
    EXPECT_TRUE(refused({}, 6688));
    EXPECT_TRUE(refused(8, 6677));
    EXPECT_EQ(window->Files().Name(), "plane.Ovb");
    EXPECT_FALSE(refused(9, 6677));
}

TEST_F(PlaneZone, AnImportOnAnotherDatumIsCarriedOntoThatOfTheMap) {
    ASSERT_TRUE(window->Load({Sample("tokyo.geojson")}, {}).Ok());
    ASSERT_EQ(window->Files().System().value().Epsg(), 6677);
    WriteLine("old.geojson", "0,0", "100,100", R"("crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::30169"}},)");
    ASSERT_TRUE(window->Files().Import({File("old.geojson")}, {}).Ok());
    // The two datums lie about 12 seconds apart here, to the north and to the west.
    EXPECT_NEAR(FirstOfLast().x, -290, 30);
    EXPECT_NEAR(FirstOfLast().y, 355, 30);
}

TEST_F(PlaneZone, TheOperatorSaysThePlaneSystemOfTheMapAtAnyTimeAndCorrectsIt) {
    OpenPlaneArchive();
    const std::int32_t blocks = Store().BlockCnt();
    WhenAskedForSystem(8, Datum::Jgd2000);
    Choose("Plane system of the map");
    EXPECT_EQ(window->Files().System().value().Epsg(), 2450);
    WhenAskedForSystem(9, Datum::Jgd2011);
    Choose("Plane system of the map");
    EXPECT_EQ(window->Files().System().value().Epsg(), 6677);
    WhenAskedGoBack();
    Choose("Plane system of the map");
    EXPECT_EQ(Home(), 9);
    WhenAskedForSystem(0);
    Choose("Plane system of the map");
    EXPECT_EQ(Home(), 0);
    EXPECT_FALSE(window->Files().System().has_value());
    EXPECT_EQ(Store().BlockCnt(), blocks);
    EXPECT_FALSE(window->History().IsModified()) << "no coordinate has changed";
    ExportTo("unknown.gpkg");  // nobody is asked
    EXPECT_TRUE(QFileInfo::exists(File("unknown.gpkg")));
    ASSERT_TRUE(window->Load({File("plane.Ovb")}, {}).Ok());
    WhenAskedForFile(File("known.gpkg"));
    WhenAskedForSystem(9);  // of another map it is not said yet
    Press(Qt::CTRL | Qt::Key_E);
    EXPECT_EQ(Home(), 9);
}

TEST_F(PlaneZone, AMapOfSheetsHasNoPlaneSystemToTell) {
    ASSERT_TRUE(window->Load({Sample("tokyo_mesh.Ovb")}, {}).Ok());
    WhenTold(QMessageBox::Ok);
    Choose("Plane system of the map");
    EXPECT_TRUE(said.contains("map sheets")) << said.toStdString();
    EXPECT_EQ(Home(), 0);
}

}  // namespace
}  // namespace orvane
