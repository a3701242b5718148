#include "foreign/plane_system.h"

#include <ogr_spatialref.h>

#include <cmath>

#include "tests/foreign/import_fixture.h"

namespace orvane {
namespace {

const char* const kGinza = R"({"type":"Point","coordinates":[139.765,35.671]})";

OGRSpatialReference FromText(const std::string& text) {
    OGRSpatialReference system;
    EXPECT_EQ(system.SetFromUserInput(text.c_str()), OGRERR_NONE);
    return system;
}

TEST(PlaneSystem, CodesOfTheThreeDatumsRunThroughTheZones) {
    EXPECT_EQ((PlaneSystem{Datum::Jgd2011, 1}.Epsg()), 6669);
    EXPECT_EQ((PlaneSystem{Datum::Jgd2011, 19}.Epsg()), 6687);
    EXPECT_EQ((PlaneSystem{Datum::Jgd2000, 1}.Epsg()), 2443);
    EXPECT_EQ((PlaneSystem{Datum::Jgd2000, 19}.Epsg()), 2461);
    EXPECT_EQ((PlaneSystem{Datum::Tokyo, 1}.Epsg()), 30161);
    EXPECT_EQ((PlaneSystem{Datum::Tokyo, 19}.Epsg()), 30179);
}

TEST(PlaneSystem, TheDatumIsKnownByCodeAndByEitherSpellingOfItsName) {
    for (const int epsg : {6668, 6677, 6697})
        EXPECT_EQ(DatumOf(FromText("EPSG:" + std::to_string(epsg))), Datum::Jgd2011) << epsg;
    for (const int epsg : {4612, 2451}) EXPECT_EQ(DatumOf(FromText("EPSG:" + std::to_string(epsg))), Datum::Jgd2000) << epsg;
    for (const int epsg : {4301, 30169}) EXPECT_EQ(DatumOf(FromText("EPSG:" + std::to_string(epsg))), Datum::Tokyo) << epsg;
    for (const int epsg : {4326, 3857, 5132, 4269})
        EXPECT_EQ(DatumOf(FromText("EPSG:" + std::to_string(epsg))), std::nullopt) << epsg;
    const std::string tail = R"(,PRIMEM["Greenwich",0.0],UNIT["Degree",0.0174532925199433]])";
    EXPECT_EQ(
        DatumOf(FromText(R"(GEOGCS["GCS_JGD_2000",DATUM["D_JGD_2000",SPHEROID["GRS_1980",6378137.0,298.257222101]])" + tail)),
        Datum::Jgd2000);
    EXPECT_EQ(
        DatumOf(FromText(R"(GEOGCS["GCS_JGD_2011",DATUM["D_JGD_2011",SPHEROID["GRS_1980",6378137.0,298.257222101]])" + tail)),
        Datum::Jgd2011);
    EXPECT_EQ(DatumOf(FromText(R"(GEOGCS["GCS_Tokyo",DATUM["D_Tokyo",SPHEROID["Bessel_1841",6377397.155,299.1528128]])" + tail)),
              Datum::Tokyo);
}

TEST(PlaneSystem, ASystemThatIsAZoneIsKnownAsSuch) {
    EXPECT_EQ(ZoneOf(FromText("EPSG:6677")), 9);
    EXPECT_EQ(ZoneOf(FromText("EPSG:2443")), 1);
    EXPECT_EQ(ZoneOf(FromText("EPSG:30179")), 19);
    EXPECT_EQ(ZoneOf(FromText("EPSG:6668")), 0);
    EXPECT_EQ(ZoneOf(FromText("EPSG:32654")), 0);
}

TEST(PlaneSystem, TheNearestZoneIsTheOneWhoseOriginIsNearest) {
    EXPECT_EQ(NearestZone(139.765, 35.671), 9);  // Tokyo
    EXPECT_EQ(NearestZone(141.35, 43.06), 12);   // Sapporo, between XI and XII
    EXPECT_EQ(NearestZone(127.68, 26.21), 15);   // Naha
    EXPECT_EQ(NearestZone(129.87, 32.75), 1);    // Nagasaki
    EXPECT_EQ(NearestZone(142.0, 26.0), 14);
    EXPECT_EQ(NearestZone(124.0, 26.0), 16);
    EXPECT_EQ(NearestZone(131.0, 26.0), 17);
    EXPECT_EQ(NearestZone(136.0, 20.4), 18);
    EXPECT_EQ(NearestZone(153.98, 24.29), 19);  // Minamitorishima
    EXPECT_EQ(NearestZone(144.25, 44.0), 13);
}

TEST(PlaneSystem, APlaceOutsideJapanHasNoZone) {
    for (const auto& [lon, lat] : {std::pair{-0.1, 51.5}, {139.0, -35.0}, {100.0, 36.0}, {170.0, 36.0}, {140.0, 60.0}}) {
        EXPECT_EQ(NearestZone(lon, lat), 0) << lon << ' ' << lat;
    }
    EXPECT_EQ(NearestZone(std::nan(""), 36), 0);
}

TEST_F(ImportTest, EachDatumGoesIntoItsOwnPlaneSystemWithoutAShift) {
    struct Case {
        int sourceEpsg;
        int planeEpsg;
        double a_m;
        double inverseFlattening;
    };
    for (const Case& c : {Case{6668, 6677, 6378137, 298.257222101}, Case{4612, 2451, 6378137, 298.257222101},
                          Case{4301, 30169, 6377397.155, 299.1528128}}) {
        store.Init();
        const ImportResult result = Run({GeoJson("spot", kGinza, c.sourceEpsg)});
        ASSERT_TRUE(result.Ok()) << result.error;
        EXPECT_EQ(result.summary.epsg, c.planeEpsg);
        EXPECT_EQ(result.summary.zone, 9);
        EXPECT_NE(result.summary.system.find("Japan Plane Rectangular CS IX"), std::string::npos) << result.summary.system;
        ExpectNear(Points("spot", 1).at(0), PlaneByKrueger(139.765, 35.671, 139 + 50.0 / 60, 36, c.a_m, c.inverseFlattening),
                   0.001);
    }
}

TEST_F(ImportTest, AnotherDatumGoesIntoJgd2011AndIsTold) {
    const ImportResult result = Run({GeoJson("spot", kGinza, 0)});  // without a word the format means WGS84
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.epsg, 6677);
    EXPECT_TRUE(HasNote(result, "is in WGS 84, which has no plane system of its own; it goes into that of JGD2011"));
    ExpectNear(Points("spot", 1).at(0), Zone9Jgd(139.765, 35.671), 0.001);
}

TEST_F(ImportTest, ASecondSourceOnAnotherDatumIsShiftedIntoTheSystemOfTheFirstAndTold) {
    const ImportResult result = Run({GeoJson("new", kGinza, 6668), GeoJson("old", kGinza, 4301)});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.epsg, 6677);
    EXPECT_TRUE(HasNote(result, "old is on the datum Tokyo"));
    // The customary linear formula from the old datum to the new one, good to some metres.
    const double lat = 35.671;
    const double lon = 139.765;
    const double newLat = lat - 0.00010695 * lat + 0.000017464 * lon + 0.0046017;
    const double newLon = lon - 0.000046038 * lat - 0.000083043 * lon + 0.010040;
    ExpectNear(Points("old", 1).at(0), Zone9Jgd(newLon, newLat), 15);
    EXPECT_GT(std::hypot(Points("old", 1)[0].x - Points("new", 1)[0].x, Points("old", 1)[0].y - Points("new", 1)[0].y), 400);
}

TEST_F(ImportTest, AGivenZoneIsTakenAndNothingIsSaidAboutAChoice) {
    options.zone = 8;
    const ImportResult result = Run({GeoJson("spot", kGinza)});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.epsg, 6676);
    EXPECT_FALSE(HasNote(result, "was taken"));
    ExpectNear(Points("spot", 1).at(0), PlaneByKrueger(139.765, 35.671, 138.5, 36, 6378137, 298.257222101), 0.001);
}

TEST_F(ImportTest, WithoutAZoneTheNearestOneIsTakenAndTold) {
    const ImportResult result = Run({GeoJson("spot", kGinza)});
    EXPECT_EQ(result.summary.zone, 9);
    EXPECT_TRUE(HasNote(result, "Zone 9 was taken: its origin is nearest"));
}

TEST_F(ImportTest, DataThatIsInAZoneStaysInIt) {
    const ImportResult result = Run({GeoJson("spot", R"({"type":"Point","coordinates":[-200000,-150000]})", 6675)});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.zone, 7);
    EXPECT_TRUE(HasNote(result, "Zone 7 was taken because spot is in it"));
    ExpectNear(Points("spot", 1).at(0), {-200000, -150000, 0}, 1e-9);
}

TEST_F(ImportTest, Zone19IsWarnedOf) {
    options.zone = 19;
    const ImportResult result = Run({GeoJson("isle", R"({"type":"Point","coordinates":[153.98,24.29]})")});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_TRUE(HasNote(result, "origin at latitude 28 in this system and at 26 in EPSG:6687"));
    ExpectNear(Points("isle", 1).at(0), PlaneByKrueger(153.98, 24.29, 154, 26, 6378137, 298.257222101), 0.001);
}

TEST_F(ImportTest, AZoneThatIsNoneIsRefused) {
    for (const int zone : {0, 20, -1}) {
        options.zone = zone;
        const ImportResult result = Run({GeoJson("spot", kGinza)});
        EXPECT_EQ(result.fault, ImportFault::BadOption);
        EXPECT_NE(result.error.find("no such zone: " + std::to_string(zone)), std::string::npos) << result.error;
    }
}

TEST_F(ImportTest, DataOutsideJapanNeedsAZone) {
    const std::string london = GeoJson("london", R"({"type":"Point","coordinates":[-0.1,51.5]})");
    EXPECT_EQ(Run({london}).fault, ImportFault::NoCoordinateSystem);
    EXPECT_EQ(store.LayerCnt(), 0);
}

TEST_F(ImportTest, ASourceWithoutACoordinateSystemNeedsOneToAssume) {
    const std::string source = Wkt("bare", {"POINT(139.765 35.671)"});
    const ImportResult refused = Run({source});
    EXPECT_EQ(refused.fault, ImportFault::NoCoordinateSystem);
    EXPECT_NE(refused.error.find("no coordinate system"), std::string::npos) << refused.error;
    options.assumeEpsg = 4301;
    const ImportResult result = Run({source});
    ASSERT_TRUE(result.Ok()) << result.error;
    EXPECT_EQ(result.summary.epsg, 30169);
}

TEST_F(ImportTest, AnAssumedSystemDoesNotOverrideANamedOne) {
    options.assumeEpsg = 4301;
    const ImportResult result = Run({GeoJson("spot", kGinza, 6668)});
    EXPECT_EQ(result.summary.epsg, 6677);
}

TEST_F(ImportTest, AnAssumedSystemThatIsNoneIsRefused) {
    options.assumeEpsg = 999999;
    EXPECT_EQ(Run({Wkt("bare", {"POINT(139.765 35.671)"})}).fault, ImportFault::BadOption);
}

TEST_F(ImportTest, AMapThatIsNotTiedToTheEarthCountsAsWithoutSystem) {
    const std::string source = File("site.geojson", R"({"type":"FeatureCollection","crs":{"type":"name","properties":{"name":
        "LOCAL_CS[\"site\",UNIT[\"metre\",1]]"}},"features":[]})");
    const std::string vrt =
        File("site.vrt", R"(<OGRVRTDataSource><OGRVRTLayer name="bare"><SrcDataSource>)" + Wkt("bare", {"POINT(1 2)"}) +
                             R"(</SrcDataSource><LayerSRS>LOCAL_CS["site",UNIT["metre",1]]</LayerSRS>
        </OGRVRTLayer></OGRVRTDataSource>)");
    EXPECT_EQ(Run({vrt}).fault, ImportFault::NoCoordinateSystem);
}

}  // namespace
}  // namespace orvane
