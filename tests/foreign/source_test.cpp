#include "foreign/source.h"

#include <random>

#include "tests/foreign/import_fixture.h"

namespace orvane {
namespace {

TEST_F(ImportTest, AMissingFileIsToldByName) {
    const ImportResult result = Run({"no/such/file.shp"});
    EXPECT_EQ(result.fault, ImportFault::Missing);
    EXPECT_EQ(result.error, "no such file: no/such/file.shp");
}

TEST_F(ImportTest, AFileOfNoKnownFormatIsToldWithGdalsReason) {
    const ImportResult result = Run({File("notes.txt", "nothing that is a map\n")});
    EXPECT_EQ(result.fault, ImportFault::Unreadable);
    EXPECT_NE(result.error.find("cannot read /vsimem/notes.txt: "), std::string::npos) << result.error;
    EXPECT_EQ(result.error.find('\n'), std::string::npos) << "one line";
}

TEST_F(ImportTest, OneBadSourceAmongSeveralStoresNothing) {
    const std::string good = GeoJson("good", R"({"type":"Point","coordinates":[139.7,35.6]})");
    EXPECT_EQ(Run({good, "missing.gpkg"}).fault, ImportFault::Missing);
    EXPECT_EQ(store.LayerCnt(), 0);
}

TEST_F(ImportTest, NoSourceAtAllIsAFault) { EXPECT_EQ(Run({}).fault, ImportFault::Nothing); }

TEST_F(ImportTest, ATableWithoutGeometryHasNothingToStore) {
    const ImportResult result = Run({File("table.csv", "A,B\n1,2\n")});
    EXPECT_EQ(result.fault, ImportFault::Nothing);
    EXPECT_TRUE(HasNote(result, "layer table of /vsimem/table.csv has no geometry"));
}

TEST_F(ImportTest, ASourceWithoutFeaturesHasNothingToStore) {
    options.zone = 9;
    EXPECT_EQ(Run({GeoJson("empty", std::vector<std::array<std::string, 2>>{})}).fault, ImportFault::Nothing);
}

TEST_F(ImportTest, AFileThatEndsInTheMiddleIsAFaultAndNotHalfAMap) {
    const std::string whole = R"({"type":"FeatureCollection","features":[
        {"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[139.7,35.6]}},
        {"type":"Feature","properties":{},"geometry":{"type":"Point","coordinates":[139.8,35.7]}}]})";
    EXPECT_TRUE(Run({File("whole.geojson", whole)}).Ok());
    store.Init();
    const ImportResult result = Run({File("half.geojson", whole.substr(0, whole.size() - 40))});
    EXPECT_EQ(result.fault, ImportFault::Unreadable) << result.error;
    EXPECT_EQ(store.LayerCnt(), 0);
}

TEST_F(ImportTest, GeometryThatGdalCannotMakeOutIsCounted) {
    options.assumeEpsg = 6677;
    const ImportResult result = Run({Wkt("odd", {"POINT(1 2)", "LINESTRING(0 0,1"})});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.leftOut.LostShapes() + result.summary.leftOut.noGeometry, 1);
}

// Bytes changed, cut out and doubled at random: whatever GDAL makes of them, the answer is a fault or a sound store.
TEST_F(ImportTest, DamagedFilesGiveAFaultOrASoundStore) {
    const std::string json = R"({"type":"FeatureCollection","features":[{"type":"Feature","properties":{"A":"x"},"geometry":
        {"type":"MultiPolygon","coordinates":[[[[139.7,35.6],[139.8,35.6],[139.8,35.7],[139.7,35.6]],[[139.75,35.62],[139.76,35.62],
        [139.76,35.63],[139.75,35.62]]]]}},{"type":"Feature","properties":{"A":"y"},"geometry":{"type":"GeometryCollection",
        "geometries":[{"type":"Point","coordinates":[139.7,35.6]},{"type":"LineString","coordinates":[[139.7,35.6],[139.8,35.7]]}]}}]})";
    const std::string csv =
        "WKT,A\n\"POLYGON((0 0,9 0,9 9,0 0),(1 1,2 1,2 2,1 1))\",a\n\"CURVEPOLYGON(CIRCULARSTRING(0 0,4 0,0 0))\",b\n"
        "\"GEOMETRYCOLLECTION(POINT Z(1 2 3),MULTIPOINT(1 1,2 2),TIN(((0 0,1 0,0 1,0 0))))\",c\n";
    std::mt19937 random(11);
    options.assumeEpsg = 6677;
    options.zone = 9;
    int stored = 0;
    for (int round = 0; round < 400; ++round) {
        const bool isJson = round % 2 == 0;
        std::string text = isJson ? json : csv;
        for (int change = 0; change <= round % 5; ++change) {
            const std::size_t at = random() % text.size();
            const std::size_t length = (std::min)(text.size() - at, std::size_t{1 + random() % 12});
            if (random() % 3 == 0) {
                text.erase(at, length);
            } else if (random() % 2 == 0) {
                text.insert(at, text.substr(at, length));
            } else {
                text[at] = static_cast<char>(random() % 2 == 0 ? "0123456789-.,()[]{}e\""[random() % 21] : char(random() % 256));
            }
        }
        store.Init();
        const ImportResult result = Run({File(isJson ? "damaged.geojson" : "damaged.csv", text)});
        EXPECT_EQ(result.Ok(), result.error.empty());
        if (!result.Ok()) {
            EXPECT_EQ(store.GetDigIndexCnt(), 0);
            continue;
        }
        ++stored;
        for (const DigIndex& slot : store.Index()) {
            const DigBlock& block = store.Block(slot.block);
            EXPECT_GT(block.datCnt, 0);
            for (std::int32_t i = 0; i < block.datCnt; ++i) {
                const DigDat& dat = block.dats[static_cast<std::size_t>(i)];
                EXPECT_GT(dat.pntCnt, 0);
                for (std::int32_t k = 0; k < dat.pntCnt; ++k) {
                    const DigPnt& p = dat.pnts[static_cast<std::size_t>(k)];
                    ASSERT_TRUE(std::fabs(p.x) <= 99999999 && std::fabs(p.y) <= 99999999 && std::isfinite(p.z));
                }
            }
        }
    }
    EXPECT_GT(stored, 20);
}

}  // namespace
}  // namespace orvane
