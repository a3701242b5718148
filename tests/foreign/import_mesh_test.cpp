// The import into the mesh frame.
#include <gtest/gtest.h>

#include "store/dat_lookup.h"
#include "tests/foreign/import_fixture.h"

namespace orvane {
namespace {

constexpr std::int32_t kWest = 533945;  // the sheet from 35 40' and 139 37' 30"

class ImportMeshTest : public ImportTest {
protected:
    ImportMeshTest() { options.frame = ImportFrame::Mesh; }
    DigPnt First(std::string_view code, std::int32_t sheet, std::int32_t datID) {
        const DigDat* dat = store.FindDat(code, sheet, datID);
        return dat == nullptr || dat->pntCnt < 1 ? DigPnt{-1, -1, -1} : dat->pnts[0];
    }
};

TEST_F(ImportMeshTest, APlaceOnTheDatumTokyoStandsInFullMeshCoordinates) {
    // A quarter of a sheet east and half a sheet north of the corner, 30 metres high.
    const std::string source = GeoJson("A", R"({"type":"Point","coordinates":[139.65625,35.7083333333333333,30]})", 4301);
    const ImportResult result = Run({source});
    ASSERT_TRUE(result.Ok()) << result.error;
    ExpectNear(First("A", kWest, 1), {3172500, 4285000, 0}, 1e-5);
    EXPECT_EQ(First("A", kWest, 1).z, 30);
    EXPECT_EQ(result.summary.sheetCnt, 1);
    EXPECT_EQ(result.summary.zone, 0);
}

TEST_F(ImportMeshTest, AnotherDatumIsShiftedOntoTokyo) {
    // The survey's origin in Tokyo, by its published position on JGD2000 and on the datum that bears its name.
    const double lon = 139 + 44 / 60.0 + 28.8759 / 3600, lat = 35 + 39 / 60.0 + 29.1572 / 3600;
    const double tokyoLon = 139 + 44 / 60.0 + 40.5020 / 3600, tokyoLat = 35 + 39 / 60.0 + 17.5148 / 3600;
    const std::string source =
        GeoJson("A", "{\"type\":\"Point\",\"coordinates\":[" + std::to_string(lon) + "," + std::to_string(lat) + "]}", 4612);
    ASSERT_TRUE(Run({source}).Ok());
    ExpectNear(First("A", 533935, 1), {(tokyoLon - 100) * 80000, tokyoLat * 120000, 0}, 1.0);
}

TEST_F(ImportMeshTest, WithoutTheShiftLatitudeAndLongitudeAreTakenAsTheyAre) {
    options.shiftToTokyo = false;
    for (const int epsg : {4612, 6668, 4301}) {
        const std::string name = "L" + std::to_string(epsg);
        ASSERT_TRUE(Run({GeoJson(name, R"({"type":"Point","coordinates":[139.65625,35.7083333333333333]})", epsg)}).Ok());
        ExpectNear(First(name, kWest, 1), {3172500, 4285000, 0}, 1e-5);
    }
}

TEST_F(ImportMeshTest, PlaneSourcesComeByWayOfTheirLatitudeAndLongitude) {
    // The origin of zone 9 on the datum Tokyo: 36 N, 139 50' E.
    ASSERT_TRUE(Run({GeoJson("A", R"({"type":"Point","coordinates":[0.001,0.001]})", 30169)}).Ok());
    ExpectNear(First("A", 543906, 1), {(139 + 50 / 60.0 - 100) * 80000, 36.0 * 120000, 0}, 0.01);
}

TEST_F(ImportMeshTest, EachSheetHasABlockOfItsOwnWithOriginZeroAndIdsFromOne) {
    options.shiftToTokyo = false;
    const std::string source = GeoJson("A", {{R"({"type":"Point","coordinates":[139.63,35.70]})", "{}"},
                                             {R"({"type":"Point","coordinates":[139.76,35.70]})", "{}"},
                                             {R"({"type":"Point","coordinates":[139.64,35.70]})", "{}"}});
    const ImportResult result = Run({source});
    ASSERT_TRUE(result.Ok());
    EXPECT_EQ(result.summary.sheetCnt, 2);
    ASSERT_EQ(result.summary.layers.size(), 1u);
    EXPECT_EQ(result.summary.layers[0].itemCnt, 3);
    EXPECT_EQ(store.GetLayDatCnt("A", kWest), 2);
    EXPECT_EQ(store.GetLayDatCnt("A", kWest + 1), 1);
    for (const std::int32_t sheet : {kWest, kWest + 1}) {
        const DigBlock& block = store.Block(store.FindBlock("A", sheet).block);
        EXPECT_EQ(block.GX, 0);
        EXPECT_EQ(block.GY, 0);
        EXPECT_EQ(block.dats[0].datID, 1);
    }
    EXPECT_NEAR(First("A", kWest, 2).x, 39.64 * 80000, 1e-5);
    EXPECT_NEAR(First("A", kWest + 1, 1).x, 39.76 * 80000, 1e-5);
}

TEST_F(ImportMeshTest, AnItemOverSeveralSheetsStandsWholeWhereTheMiddleOfItsBoundsLies) {
    options.shiftToTokyo = false;
    const std::string source =
        GeoJson("A", R"({"type":"LineString","coordinates":[[139.70,35.70],[139.74,35.72],[139.95,35.68]]})");
    ASSERT_TRUE(Run({source}).Ok());
    const DigDat* dat = store.FindDat("A", kWest + 1, 1);
    ASSERT_NE(dat, nullptr);
    EXPECT_EQ(dat->pntCnt, 3);
}

TEST_F(ImportMeshTest, PlacesWithoutASheetNumberAreLeftOut) {
    options.shiftToTokyo = false;
    const std::string source = GeoJson("A", {{R"({"type":"Point","coordinates":[139.63,35.70]})", "{}"},
                                             {R"({"type":"Point","coordinates":[109.9,35.70]})", "{}"},
                                             {R"({"type":"Point","coordinates":[139.63,-0.1]})", "{}"},
                                             {R"({"type":"Point","coordinates":[139.63,66.7]})", "{}"}});
    const ImportResult result = Run({source});
    ASSERT_TRUE(result.Ok());
    EXPECT_EQ(result.summary.leftOut.notFinite, 3);
    EXPECT_EQ(result.summary.layers[0].itemCnt, 1);
}

TEST_F(ImportMeshTest, AZoneIsRefusedBecauseTheMeshFrameBelongsToNone) {
    options.zone = 9;
    EXPECT_EQ(Run({GeoJson("A", R"({"type":"Point","coordinates":[139.63,35.70]})")}).fault, ImportFault::BadOption);
}

TEST_F(ImportMeshTest, MoreSheetsThanTheIndexHoldsAreRefusedByTheirNumberBeforeAnythingIsStored) {
    options.shiftToTokyo = false;
    for (std::int32_t i = 0; i < kMaxDigIndex - 1; ++i) ASSERT_TRUE(store.DigMemAlloc2("FULL", i, kLayPoint, "", 1, 0, 0));
    const std::string two = GeoJson("A", {{R"({"type":"Point","coordinates":[139.63,35.70]})", "{}"},
                                          {R"({"type":"Point","coordinates":[139.76,35.70]})", "{}"}});
    const ImportResult result = Run({two});
    EXPECT_EQ(result.fault, ImportFault::NoRoom);
    EXPECT_EQ(result.error, "2 blocks are more than the map has room for: 1 of 100000 are free");
    EXPECT_EQ(store.GetDigIndexCnt(), kMaxDigIndex - 1);
    EXPECT_TRUE(Run({GeoJson("B", R"({"type":"Point","coordinates":[139.63,35.70]})")}).Ok()) << "one still fits";
}

TEST_F(ImportMeshTest, ACancelledImportTakesAllSheetsAway) {
    options.shiftToTokyo = false;
    int calls = 0;
    options.progress = [&](double) { return ++calls < 5; };
    const std::string source = GeoJson("A", {{R"({"type":"Point","coordinates":[139.63,35.70]})", "{}"},
                                             {R"({"type":"Point","coordinates":[139.76,35.70]})", "{}"},
                                             {R"({"type":"Point","coordinates":[139.88,35.70]})", "{}"}});
    EXPECT_EQ(Run({source}).fault, ImportFault::Cancelled);
    EXPECT_EQ(store.GetDigIndexCnt(), 0);
}

}  // namespace
}  // namespace orvane
