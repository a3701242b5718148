// Where an export goes, in which coordinate system, and what is left when it fails.
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>

#include "foreign/gdal_errors.h"
#include "foreign/json_check.h"
#include "tests/foreign/export_fixture.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using NameSet = std::set<std::string>;

class ExportOutput : public ExportTest {
protected:
    ExportOutput() {
        for (const char* code : {"A", "B"}) {
            Layer(code, kLayPoint);
            Item(code, 1, {{1, 2, 0}});
        }
    }
    void Choose(const std::string& code) { options.layers = {code}; }
    void Put(const std::string& name, const std::string& text) const {
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name) << text;
    }
    std::string Content(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void ExpectFault(const std::string& name, ExportFault fault, const std::string& words) {
        const NameSet before = Names();
        const ExportResult result = Run(name);
        EXPECT_EQ(result.fault, fault) << result.error;
        EXPECT_NE(result.error.find(words), std::string::npos) << result.error;
        EXPECT_TRUE(result.summary.layers.empty());
        EXPECT_EQ(Names(), before) << "nothing comes and nothing goes";
    }
};

TEST_F(ExportOutput, AGeoPackageHoldsAllLayers) {
    ASSERT_TRUE(Run("out.gpkg").Ok());
    EXPECT_EQ(Names(), (NameSet{"out.gpkg"}));
    EXPECT_EQ(Open(options.path)->GetLayerCount(), 2);
}

TEST_F(ExportOutput, AGeoPackageTakesAnyNameWhenTheFormatIsTold) {
    options.format = ExportFormat::GeoPackage;
    ASSERT_TRUE(Run("out.map").Ok());
    EXPECT_EQ(Names(), (NameSet{"out.map"}));
    const GdalErrors quiet;
    EXPECT_EQ(Read(options.path, "B").size(), 1u);
}

TEST_F(ExportOutput, FormatsOfOneLayerAFileFillAFolder) {
    for (const auto& [format, extension] : {std::pair{ExportFormat::GeoJson, ".geojson"}, {ExportFormat::FlatGeobuf, ".fgb"}}) {
        options.format = format;
        const std::string name = std::string("folder") + (extension + 1);
        const ExportResult result = Run(name);
        ASSERT_TRUE(result.Ok()) << result.error;
        EXPECT_EQ(Names(folder / name), (NameSet{std::string("A") + extension, std::string("B") + extension}));
        EXPECT_EQ(result.summary.layers[1].file, Path(name + "/B" + extension));
        EXPECT_EQ(Read(result.summary.layers[1].file)[0].Text("code"), "B");
    }
    options.format = ExportFormat::Shapefile;
    ASSERT_TRUE(Run("shapes/").Ok()) << "a separator at the end means the same";
    EXPECT_EQ(Names(folder / "shapes"), (NameSet{"A.cpg", "A.dbf", "A.shp", "A.shx", "B.cpg", "B.dbf", "B.shp", "B.shx"}));
    EXPECT_EQ(Names(), (NameSet{"foldergeojson", "folderfgb", "shapes"}));
}

TEST_F(ExportOutput, AFileOfOneLayerRefusesSeveral) {
    for (const char* name : {"out.geojson", "out.json", "out.shp", "out.FGB"}) {
        ExpectFault(name, ExportFault::BadOption, "holds one layer, and there are 2");
    }
    Choose("B");
    const ExportResult result = Run("out.geojson");
    ASSERT_TRUE(result.Ok()) << result.error;
    ASSERT_EQ(result.summary.layers.size(), 1u);
    EXPECT_EQ(Read(options.path)[0].Text("code"), "B");
}

TEST_F(ExportOutput, AFormatThatNothingTellsIsRefused) {
    ExpectFault("out", ExportFault::BadOption, "GeoPackage (.gpkg), GeoJSON (.geojson), Shapefile (.shp), FlatGeobuf (.fgb)");
    ExpectFault("out.xyz", ExportFault::BadOption, "cannot tell a format");
}

TEST_F(ExportOutput, AFormatIsKnownByItsNameAndItsDriversInAnyCase) {
    EXPECT_EQ(ExportFormatByName("gpkg"), ExportFormat::GeoPackage);
    EXPECT_EQ(ExportFormatByName("geojson"), ExportFormat::GeoJson);
    EXPECT_EQ(ExportFormatByName("esri shapefile"), ExportFormat::Shapefile);
    EXPECT_EQ(ExportFormatByName("FLATGEOBUF"), ExportFormat::FlatGeobuf);
    EXPECT_EQ(ExportFormatByName("CSV"), std::nullopt);
}

TEST_F(ExportOutput, ALayerThatIsNotThereIsRefused) {
    Choose("C");
    ExpectFault("out.gpkg", ExportFault::BadOption, "no such layer: C");
    Choose("a");
    ExpectFault("out.gpkg", ExportFault::BadOption, "no such layer: a");
}

TEST_F(ExportOutput, ALayerThatIsNamedTwiceIsWrittenOnce) {
    options.layers = {"B", "B"};
    const ExportResult result = Run("out.gpkg");
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.layers.size(), 1u);
}

TEST_F(ExportOutput, AnEmptyMapIsRefused) {
    store.Init();
    ExpectFault("out.gpkg", ExportFault::Nothing, "no layer with items");
    store.FreeAll();
    ExpectFault("out.gpkg", ExportFault::Nothing, "not initialised");
}

// ---- Coordinate systems

TEST_F(ExportOutput, TheRegistryHasThePlaneSystemsUnderTheseNumbers) {
    const struct {
        Datum datum;
        int first;
        const char* name;
    } rows[] = {{Datum::Jgd2011, 6669, "JGD2011 / Japan Plane Rectangular CS "},
                {Datum::Jgd2000, 2443, "JGD2000 / Japan Plane Rectangular CS "},
                {Datum::Tokyo, 30161, "Tokyo / Japan Plane Rectangular CS "}};
    const char* const roman[] = {"I",  "II",  "III",  "IV",  "V",  "VI",  "VII",  "VIII",  "IX", "X",
                                 "XI", "XII", "XIII", "XIV", "XV", "XVI", "XVII", "XVIII", "XIX"};
    for (const auto& row : rows) {
        for (int zone = 1; zone <= 19; ++zone) {
            const int epsg = PlaneSystem{row.datum, zone}.Epsg();
            EXPECT_EQ(epsg, row.first + zone - 1);
            OGRSpatialReference system;
            ASSERT_EQ(system.importFromEPSG(epsg), OGRERR_NONE);
            EXPECT_EQ(std::string(system.GetName()), row.name + std::string(roman[zone - 1]));
        }
    }
}

TEST_F(ExportOutput, ADatumAndAZoneNameTheSystemInEveryFormat) {
    Choose("A");
    options.datum = Datum::Tokyo;
    options.zone = 9;
    for (const char* name : {"out.gpkg", "out.geojson", "out.shp", "out.fgb"}) {
        const ExportResult result = Run(name);
        ASSERT_TRUE(result.Ok()) << result.error;
        EXPECT_EQ(result.summary.epsg, 30169);
        const auto dataset = Open(options.path);
        const OGRSpatialReference* system = dataset->GetLayer(0)->GetSpatialRef();
        ASSERT_NE(system, nullptr) << name;
        OGRSpatialReference expected;
        expected.importFromEPSG(30169);
        const char* const loose[] = {"IGNORE_DATA_AXIS_TO_SRS_AXIS_MAPPING=YES", "CRITERION=EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS",
                                     nullptr};
        EXPECT_TRUE(system->IsSame(&expected, loose) || system->FindBestMatch(70) != nullptr) << name;
        const OGRFeatureUniquePtr feature(dataset->GetLayer(0)->GetNextFeature());
        EXPECT_EQ(feature->GetGeometryRef()->exportToWkt(), "POINT (1 2)") << name << ": x stays the easting";
    }
}

TEST_F(ExportOutput, WithoutADatumAndAZoneNoSystemOnTheEarthIsNamed) {
    Choose("A");
    for (const char* name : {"out.gpkg", "out.shp", "out.fgb"}) {
        const ExportResult result = Run(name);
        ASSERT_TRUE(result.Ok()) << result.error;
        EXPECT_EQ(result.summary.epsg, 0);
        const auto dataset = Open(options.path);
        const OGRSpatialReference* system = dataset->GetLayer(0)->GetSpatialRef();
        EXPECT_TRUE(system == nullptr || (!system->IsGeographic() && !system->IsProjected())) << name;
    }
    const ExportResult result = Run("out.geojson");
    EXPECT_EQ(Content("out.geojson").find("crs"), std::string::npos);
    EXPECT_TRUE(HasNote(result, "readers of GeoJSON"));
}

TEST_F(ExportOutput, HalfACoordinateSystemIsRefused) {
    options.zone = 9;
    ExpectFault("out.gpkg", ExportFault::BadOption, "both, a datum and a zone");
    options.zone.reset();
    options.datum = Datum::Jgd2000;
    ExpectFault("out.gpkg", ExportFault::BadOption, "both, a datum and a zone");
    for (const int zone : {0, 20, -1}) {
        options.zone = zone;
        ExpectFault("out.gpkg", ExportFault::BadOption, "no such zone: " + std::to_string(zone));
    }
}

TEST_F(ExportOutput, TheOddZoneIsWarnedOf) {
    options.datum = Datum::Jgd2011;
    options.zone = 19;
    EXPECT_TRUE(HasNote(Run("out.gpkg"), "latitude 28"));
}

TEST_F(ExportOutput, DatumsAreKnownByNameInAnyCase) {
    EXPECT_EQ(DatumByName("jgd2011"), Datum::Jgd2011);
    EXPECT_EQ(DatumByName("JGD2000"), Datum::Jgd2000);
    EXPECT_EQ(DatumByName("TOKYO"), Datum::Tokyo);
    EXPECT_EQ(DatumByName("WGS84"), std::nullopt);
}

// ---- What stands there already

TEST_F(ExportOutput, AFileThatExistsIsRefusedAndStays) {
    Choose("A");
    for (const char* name : {"out.gpkg", "out.geojson", "out.shp", "out.fgb"}) {
        Put(name, "mine");
        ExpectFault(name, ExportFault::Exists, "exists; --overwrite");
        EXPECT_EQ(Content(name), "mine");
    }
}

TEST_F(ExportOutput, ALoneSiblingOfAShapefileCountsAsOne) {
    Choose("A");
    Put("out.dbf", "mine");
    ExpectFault("out.shp", ExportFault::Exists, "out.dbf exists");
    EXPECT_EQ(Content("out.dbf"), "mine");
}

TEST_F(ExportOutput, OverwritingReplacesTheWholeSetOfAShapefile) {
    Choose("A");
    for (const char* name : {"out.shp", "out.shx", "out.dbf", "out.prj", "out.sbn", "out.qix"}) Put(name, "old");
    Put("out.txt", "mine");
    Put("other.prj", "mine");
    options.overwrite = true;
    ASSERT_TRUE(Run("out.shp").Ok());
    EXPECT_EQ(Names(), (NameSet{"out.shp", "out.shx", "out.dbf", "out.cpg", "out.txt", "other.prj"}))
        << "an old .prj would name a system that the new data is not in";
    EXPECT_EQ(Read(options.path).size(), 1u);
}

TEST_F(ExportOutput, OverwritingReplacesAFile) {
    Choose("A");
    options.overwrite = true;
    for (const char* name : {"out.gpkg", "out.geojson", "out.fgb"}) {
        Put(name, "old");
        ASSERT_TRUE(Run(name).Ok());
        EXPECT_EQ(Read(options.path).size(), 1u);
    }
}

TEST_F(ExportOutput, AGeoPackageWithAJournalBesideItIsNotReplaced) {
    options.overwrite = true;
    Put("out.gpkg", "old");
    Put("out.gpkg-wal", "pages");
    ExpectFault("out.gpkg", ExportFault::Exists, "another program");
}

TEST_F(ExportOutput, AFolderIsReplacedOnlyWhenNothingElseIsInIt) {
    options.format = ExportFormat::FlatGeobuf;
    Put("out/C.fgb", "old");
    ExpectFault("out", ExportFault::Exists, "not empty");
    options.overwrite = true;
    Put("out/notes.txt", "mine");
    ExpectFault("out", ExportFault::Exists, "more than FlatGeobuf files: notes.txt");
    EXPECT_EQ(Content("out/C.fgb"), "old");
    fs::remove(folder / "out/notes.txt");
    fs::create_directory(folder / "out/deep.fgb");
    ExpectFault("out", ExportFault::Exists, "more than FlatGeobuf files: deep.fgb");
    fs::remove(folder / "out/deep.fgb");
    ASSERT_TRUE(Run("out").Ok());
    EXPECT_EQ(Names(folder / "out"), (NameSet{"A.fgb", "B.fgb"})) << "a layer that is gone from the map is gone";
    EXPECT_EQ(Names(), (NameSet{"out"}));
}

TEST_F(ExportOutput, AnEmptyFolderIsFilled) {
    options.format = ExportFormat::GeoJson;
    fs::create_directory(folder / "out");
    ASSERT_TRUE(Run("out").Ok());
    EXPECT_EQ(Names(folder / "out"), (NameSet{"A.geojson", "B.geojson"}));
}

TEST_F(ExportOutput, AFileAndAFolderAreNeverTakenForEachOther) {
    options.overwrite = true;
    fs::create_directory(folder / "out.gpkg");
    ExpectFault("out.gpkg", ExportFault::Exists, "is a folder");
    options.format = ExportFormat::Shapefile;
    Put("plain", "mine");
    ExpectFault("plain", ExportFault::Exists, "is no folder");
}

TEST_F(ExportOutput, NoPipeAndNothingButFilesBesideItGiveWay) {
    options.overwrite = true;
    ASSERT_EQ(::mkfifo((folder / "out.gpkg").c_str(), 0600), 0);
    ExpectFault("out.gpkg", ExportFault::Exists, "out.gpkg is a device or a pipe");
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "out.gpkg"));
    options.format = ExportFormat::Shapefile;
    Choose("A");
    ASSERT_EQ(::mkfifo((folder / "out.dbf").c_str(), 0600), 0);
    ExpectFault("out.shp", ExportFault::Exists, "out.dbf is a device or a pipe");
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "out.dbf"));
    fs::create_directories(folder / "in.dbf" / "kept");
    ExpectFault("in.shp", ExportFault::Exists, "in.dbf is a folder");
    EXPECT_TRUE(fs::exists(folder / "in.dbf" / "kept"));
}

TEST_F(ExportOutput, ANameThatIsNoneIsRefused) {
    options.format = ExportFormat::GeoJson;
    options.overwrite = true;
    for (const char* name : {"", ".", "..", "/"}) {
        options.path = name;
        const ExportResult result = ExportVector(store, options);
        EXPECT_EQ(result.fault, ExportFault::BadOption) << name << result.error;
    }
}

TEST_F(ExportOutput, AFolderThatIsNotThereIsTold) { ExpectFault("no/out.gpkg", ExportFault::NotWritten, "there is no folder"); }

// ---- Failures

TEST_F(ExportOutput, ACancelledExportLeavesWhatWasThere) {
    for (int i = 2; i < 3000; ++i) Item("A", i, {{1, 2, 0}});
    options.overwrite = true;
    Put("out.gpkg", "old");
    int calls = 0;
    double last = 0;
    options.progress = [&](double fraction) {
        EXPECT_GE(fraction, last);
        EXPECT_LE(fraction, 1);
        last = fraction;
        return ++calls < 2;
    };
    ExpectFault("out.gpkg", ExportFault::Cancelled, "cancelled");
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(Content("out.gpkg"), "old");
    options.progress = [&](double fraction) { return last = fraction, true; };
    ASSERT_TRUE(Run("out.gpkg").Ok());
    EXPECT_EQ(last, 1);
}

TEST_F(ExportOutput, AMapThatTheProgressChangesEndsTheExport) {
    for (int i = 2; i < 3000; ++i) Item("A", i, {{1, 2, 0}});
    Layer("M", kLayMesh);
    Item("M", 1, {});
    const std::vector<DigPnt> grid(2500);
    ASSERT_TRUE(store.SetMeshDat("M", 1, 1, 50, 50, grid));
    options.progress = [&](double) { return store.DigMemDelete("A", 1), true; };
    ExpectFault("out.gpkg", ExportFault::Changed, "changed");
    Choose("M");
    options.progress = [&](double) { return store.SetMeshDat("M", 1, 1, 2, 2, grid); };
    ExpectFault("out.gpkg", ExportFault::Changed, "changed");
    options.progress = [&](double) { return store.Init() == 1; };
    ASSERT_TRUE(store.SetMeshDat("M", 1, 1, 50, 50, grid));
    ExpectFault("out.gpkg", ExportFault::Changed, "changed");
}

// While it lives no file of this process grows beyond the limit, as if the disk were full.
class FullDisk {
public:
    explicit FullDisk(rlim_t limit_bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit tight{limit_bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit old_{};
    void (*handler_)(int);
};

TEST_F(ExportOutput, AFullDiskEndsTheExportInEveryFormatAndLeavesWhatWasThere) {
    Choose("A");
    options.overwrite = true;
    for (int i = 2; i < 20000; ++i) Item("A", i, {{1.0 * i, 2, 0}});
    for (const char* name : {"out.gpkg", "out.geojson", "out.shp", "out.fgb"}) {
        Put(name, "old");
        for (const rlim_t limit : {0U, 200U, 50000U, 400000U}) {
            const FullDisk full(limit);
            SCOPED_TRACE(name + std::string(" ") + std::to_string(limit));
            ExpectFault(name, ExportFault::NotWritten, "cannot write");
        }
        EXPECT_TRUE(Content(name) == "old") << name;
    }
}

TEST_F(ExportOutput, AGeoJsonFileIsWholeOnlyWhenItEndsWithItsObject) {
    const auto count = [this](const std::string& text) {
        Put("x.json", text);
        return CountListedObjects(folder / "x.json");
    };
    const std::string whole = R"({"a":{"b":[{}]},"features":[{"p":{"t":"}]\\\""}},{"c":[{},[1]]}]})";
    EXPECT_EQ(count(whole + "\n"), 2);
    for (std::size_t size = 0; size < whole.size(); ++size) EXPECT_EQ(count(whole.substr(0, size)), -1) << size;
    EXPECT_EQ(count(whole + "{}"), -1);
    EXPECT_EQ(count("]"), -1);
    EXPECT_EQ(count("{]}"), -1);
    EXPECT_EQ(CountListedObjects(folder / "none.json"), -1);
}

}  // namespace
}  // namespace orvane
