// Items and places that are hardly any, and names that are somebody else's.
#include <cmath>
#include <fstream>
#include <limits>

#include "foreign/file_lock.h"
#include "tests/foreign/export_fixture.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

class ExportOdd : public ExportTest {
protected:
    void Put(const std::string& name, const std::string& text) const {
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name) << text;
    }
    /// One item of each shape in a block with that origin.
    void AllShapesAt(double GX, double GY) {
        Layer("P", kLayPoint);
        Item("P", 1, {{1, 2, 0}});
        Layer("L", kLayLine);
        Item("L", 1, {{0, 0, 0}, {10, 10, 0}});
        Layer("G", kLayPolygon);
        Item("G", 1, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 0, 0}});
        Layer("C", kLayCircle);
        Item("C", 1, {{5, 5, 3}});
        Layer("E", kLayEllipse);
        Item("E", 1, {{0, 0, 0}, {10, 20, 0}});
        Layer("T", kLayText);
        Item("T", 1, {});
        store.SetDigDatString("T", 1, 1, 3, 4, "here");
        for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
            store.MutableBlock(i).GX = GX;
            store.MutableBlock(i).GY = GY;
        }
    }
};

TEST_F(ExportOdd, ItemsOfABlockWhoseOriginIsNoPlaceAreLeftOutAndCounted) {
    for (const auto& [GX, GY] : {std::pair{kNaN, 0.0}, {0.0, kNaN}, {kInf, 0.0}, {0.0, -kInf}, {1e300, 0.0}}) {
        store.Init();
        AllShapesAt(GX, GY);
        options.overwrite = true;
        const ExportResult result = Run("out.gpkg");
        ASSERT_TRUE(result.Ok()) << result.error;
        EXPECT_EQ(result.summary.leftOut.notFinite, 6) << GX << ' ' << GY;
        EXPECT_EQ(result.summary.leftOut.LostItems(), 6);
    }
}

TEST_F(ExportOdd, AnOriginSoFarOutThatPointsFallTogetherLeavesShapesOut) {
    AllShapesAt(1e30, 1e30);
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    // A point and a text still have one place.
    EXPECT_EQ(result.summary.leftOut.notFinite, 4);
    EXPECT_EQ(Read(options.path, "P").size(), 1u);
    EXPECT_EQ(Read(options.path, "T").size(), 1u);
    EXPECT_EQ(Read(options.path, "G").size(), 0u);
}

TEST_F(ExportOdd, MeshCellsOfABlockWhoseOriginIsNoPlaceAreLostCells) {
    Layer("M", kLayMesh);
    Item("M", 1, {});
    ASSERT_TRUE(store.SetMeshDat("M", 1, 1, 2, 2, std::vector<DigPnt>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}));
    store.MutableBlock(0).GX = kNaN;
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.cells, 4);
    EXPECT_EQ(result.summary.leftOut.LostItems(), 4);
}

TEST_F(ExportOdd, APolygonThatCrossesItselfIsWrittenThoughItsNetAreaIsZero) {
    Layer("G", kLayPolygon);
    Item("G", 1, {{0, 0, 0}, {20, 20, 0}, {20, 0, 0}, {0, 20, 0}, {0, 0, 0}});
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.LostItems(), 0);
    const auto features = Read(options.path);
    ASSERT_EQ(features.size(), 1u);
    ASSERT_EQ(features[0].Parts().size(), 1u);
    EXPECT_EQ(features[0].Parts()[0]->getExteriorRing()->getNumPoints(), 5);
}

TEST_F(ExportOdd, AMeshCellWhoseHeightIsNoNumberIsWrittenFlatWithoutOne) {
    Layer("M", kLayMesh);
    Item("M", 1, {});
    ASSERT_TRUE(store.SetMeshDat(
        "M", 1, 1, 3, 2, std::vector<DigPnt>{{0, 0, 1}, {10, 0, 1}, {20, 0, 1}, {0, 10, 1}, {10, 10, kNaN}, {20, 10, 1}}));
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.LostItems(), 0);
    const auto features = Read(options.path);
    ASSERT_EQ(features.size(), 6u);
    for (const ReadFeature& feature : features) {
        const bool isOdd = feature.Number("row") == 1 && feature.Number("column") == 1;
        EXPECT_EQ(feature.Text("height") == "(null)", isOdd);
        EXPECT_FALSE(feature.Geometry()->Is3D());
    }
}

TEST_F(ExportOdd, TheNameOfAnArchivesFileIsRefusedWhateverItsCase) {
    Layer("A", kLayPoint);
    Item("A", 1, {{1, 2, 0}});
    options.overwrite = true;
    options.format = ExportFormat::GeoPackage;
    for (const char* name : {"m.Ovb", "m.OVT", "m.ovl", "m.Ovi", "m.oVm"}) {
        Put(name, "archive");
        const ExportResult result = Run(name);
        EXPECT_EQ(result.fault, ExportFault::BadOption);
        EXPECT_NE(result.error.find("archive's file"), std::string::npos) << result.error;
        EXPECT_EQ(fs::file_size(Path(name)), 7u);
    }
    options.format = ExportFormat::GeoJson;
    EXPECT_EQ(Run("folder.Ovb").fault, ExportFault::BadOption);
}

TEST_F(ExportOdd, AFileThatTheMapWasReadFromIsRefusedByWhateverNameItGoes) {
    Layer("A", kLayPoint);
    Item("A", 1, {{1, 2, 0}});
    Put("m.Ovb", "archive");
    fs::create_symlink("m.Ovb", folder / "out.gpkg");
    options.overwrite = true;
    options.inputs = {Path("m.Ovb")};
    const ExportResult result = Run("out.gpkg");
    EXPECT_EQ(result.fault, ExportFault::BadOption);
    EXPECT_NE(result.error.find("was read from"), std::string::npos) << result.error;
    EXPECT_EQ(fs::file_size(Path("m.Ovb")), 7u);
}

TEST_F(ExportOdd, AFolderThatHoldsAFileThatTheMapWasReadFromIsRefusedByWhateverNameItGoes) {
    Layer("A", kLayPoint);
    Item("A", 1, {{1, 2, 0}});
    fs::create_directory(folder / "roads");
    Put("roads/source.shp", "source");
    fs::create_symlink("roads", folder / "other");
    options.overwrite = true;
    options.format = ExportFormat::Shapefile;
    options.inputs = {Path("roads/source.shp")};
    for (const char* name : {"roads", "other"}) {
        const ExportResult result = Run(name);
        EXPECT_EQ(result.fault, ExportFault::BadOption) << name;
        EXPECT_NE(result.error.find("was read from"), std::string::npos) << result.error;
        EXPECT_EQ(fs::file_size(Path("roads/source.shp")), 6u);
    }
    options.inputs = {Path("roads-of-another/source.shp")};
    EXPECT_EQ(Run("roads").fault, ExportFault::None);
}

TEST_F(ExportOdd, WhatAKilledExportLeftIsClearedAwayButNotAnotherExportsWorkNorTheFormerOutput) {
    Layer("A", kLayPoint);
    Item("A", 1, {{1, 2, 0}});
    Put(".orvane-export-1/new/out.gpkg", "half");
    fs::create_directory(folder / ".orvane-export-1/old");
    Put(".orvane-export-2/old/out.shp", "former");
    Put(".orvane-export-3/new/other.gpkg", "at work");
    FileLock other;
    ASSERT_EQ(other.TakeFolder(Path(".orvane-export-3")), FileLock::Outcome::Taken);
    ASSERT_TRUE(Run("out.gpkg").Ok());
    EXPECT_EQ(Names(), (std::set<std::string>{".orvane-export-2", ".orvane-export-3", "out.gpkg"}));
    EXPECT_TRUE(fs::exists(folder / ".orvane-export-2/old/out.shp"));
    EXPECT_TRUE(fs::exists(folder / ".orvane-export-3/new/other.gpkg"));
}

}  // namespace
}  // namespace orvane
