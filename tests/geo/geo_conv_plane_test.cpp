// The zones and their series, against the definitions that the series approximate.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geo/geo_conv.h"

namespace orvane {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kA = 6377397.155;
constexpr double kE2 = 0.00667437222734743;

const GeoConv conv;

double Degrees(double degrees) { return degrees / 180 * 3.14159265358979; }

/// Metres of meridian to a radian of latitude.
double ArcRate(double latitude) { return kA * (1 - kE2) / std::pow(1 - kE2 * std::sin(latitude) * std::sin(latitude), 1.5); }

/// The arc from the equator by Simpson's rule.
double IntegratedArc(double latitude) {
    constexpr int kParts = 2000;
    const double h = latitude / kParts;
    double sum = ArcRate(0) + ArcRate(latitude);
    for (int i = 1; i < kParts; ++i) sum += ArcRate(i * h) * (i % 2 == 1 ? 4 : 2);
    return sum * h / 3;
}

TEST(GeoZones, TheNineteenOriginsAreThoseOfTheTable) {
    const int rows[19][3] = {{33, 129, 30}, {33, 131, 0},  {36, 132, 10}, {33, 133, 30}, {36, 134, 20},
                             {36, 136, 0},  {36, 137, 10}, {36, 138, 30}, {36, 139, 50}, {40, 140, 50},
                             {44, 140, 15}, {44, 142, 15}, {44, 144, 15}, {26, 142, 0},  {26, 127, 30},
                             {26, 124, 0},  {26, 131, 0},  {20, 136, 0},  {28, 154, 0}};
    for (int zone = 1; zone <= 19; ++zone) {
        const auto& row = rows[zone - 1];
        EXPECT_EQ(conv.ZoneOrigin(zone), (GeoDms{{row[0], 0, 0, 0}, {row[1], row[2], 0, 0}})) << zone;
    }
}

TEST(GeoZones, AZoneOutsideOneToNineteenConvertsNothing) {
    constexpr auto least = (std::numeric_limits<std::int32_t>::min)();
    constexpr auto most = (std::numeric_limits<std::int32_t>::max)();
    for (const std::int32_t zone : {least, -1, 0, 20, 65545, most}) {
        EXPECT_FALSE(conv.ZoneOrigin(zone)) << zone;
        EXPECT_FALSE(conv.GeoToPlane({0.6, 2.4}, zone)) << zone;
        EXPECT_FALSE(conv.PlaneToGeo({100, 100}, zone)) << zone;
        EXPECT_FALSE(conv.PlaneToGeoRad({100, 100}, zone)) << zone;
    }
}

TEST(GeoZones, NumbersThatAreNotFiniteConvertToNothing) {
    for (const double bad : {kNoNumber, kInf, -kInf}) {
        EXPECT_FALSE(conv.GeoToPlane({bad, 2.4}, 9));
        EXPECT_FALSE(conv.GeoToPlane({0.6, bad}, 9));
        EXPECT_FALSE(conv.PlaneToGeo({bad, 0}, 9));
        EXPECT_FALSE(conv.PlaneToGeo({0, bad}, 9));
    }
}

TEST(GeoZones, FiniteNumbersFarOutsideTheEarthAreHarmless) {
    for (const double wild : {1e30, -1e30, 1e300, -1e300}) {
        EXPECT_TRUE(conv.GeoToPlane({wild, wild}, 9));
        EXPECT_TRUE(conv.PlaneToGeo({wild, wild}, 9));
        EXPECT_TRUE(conv.PlaneToGeo({0, wild}, 9));
    }
}

TEST(GeoSeries, TheMeridianArcIsTheIntegralOfItsRadius) {
    EXPECT_EQ(conv.MeridianArc(0), 0);
    for (const double degrees : {1.0, 20.0, 26.0, 36.0, 44.0, 60.0, 90.0}) {
        EXPECT_NEAR(conv.MeridianArc(Degrees(degrees)), IntegratedArc(Degrees(degrees)), 1e-5) << degrees;
    }
}

TEST(GeoSeries, ThePrimeRadiusIsThatOfTheEllipsoid) {
    for (const double degrees : {0.0, 20.0, 36.0, 45.0, 89.0}) {
        const double s = std::sin(Degrees(degrees));
        const Curvature curvature = conv.PrimeRadius(Degrees(degrees));
        EXPECT_NEAR(curvature.N, kA / std::sqrt(1 - kE2 * s * s), 1e-5) << degrees;
        EXPECT_NEAR(curvature.eta2, kE2 / (1 - kE2) * (1 - s * s), 1e-13) << degrees;
    }
}

TEST(GeoSeries, TheFootLatitudeHasTheArcThatWasAskedFor) {
    for (const double north : {-700000.0, -1.0, 0.0, 5.0, 12345.678, 700000.0}) {
        const double origin = Degrees(36);
        const double foot = conv.FootLatitude(origin, origin, north, 0.9999);
        EXPECT_NEAR(conv.MeridianArc(foot), conv.MeridianArc(origin) + north / 0.9999, 1e-4) << north;
    }
}

TEST(GeoSeries, TheLastNewtonStepMakesUpForTheCoarseLimit) {
    // A first step of 1.6e-5 radians, about 100 metres, ends the search, and the place is right all the same.
    const double origin = Degrees(36);
    EXPECT_NEAR(IntegratedArc(conv.FootLatitude(origin, origin, 100, 1)), IntegratedArc(origin) + 100, 1e-5);
}

TEST(GeoSeries, TheSearchForTheFootStopsAfterFourSteps) {
    // So far away that each step leaves a share of the distance: four steps in plain words end where the search ends.
    constexpr double kArc = 6.4e15;
    double latitude = 0;
    double fifth = 0;
    for (int step = 0; step < 5; ++step) {
        const double next = latitude - (conv.MeridianArc(latitude) - kArc) / ArcRate(latitude);
        if (step == 4) {
            fifth = next;
        } else {
            latitude = next;
        }
    }
    const double found = conv.FootLatitude(0, 0, kArc, 1);
    EXPECT_NEAR(found, latitude, 1e-3);
    EXPECT_GT(std::fabs(found - fifth), 0.01);
}

TEST(GeoSeries, NotANumberEndsTheSearchToo) { EXPECT_TRUE(std::isnan(conv.FootLatitude(0.6, 0.6, kNoNumber, 1))); }

TEST(GeoToPlane, TheOriginOfZoneNineIsExactlyZero) {
    EXPECT_EQ(conv.GeoToPlane({conv.DmsToRad({36, 0, 0, 0}), conv.DmsToRad({139, 50, 0, 0})}, 9), (PlaneXY{0, 0}));
}

TEST(GeoToPlane, XIsTheNorthingAndYTheEasting) {
    const double lat = conv.DmsToRad({36, 1, 0, 0});
    const double lon = conv.DmsToRad({139, 51, 0, 0});
    const PlaneXY north = *conv.GeoToPlane({lat, conv.DmsToRad({139, 50, 0, 0})}, 9);
    EXPECT_NEAR(north.x, 0.9999 * (IntegratedArc(lat) - IntegratedArc(Degrees(36))), 1e-4);
    EXPECT_EQ(north.y, 0);
    const PlaneXY east = *conv.GeoToPlane({conv.DmsToRad({36, 0, 0, 0}), lon}, 9);
    EXPECT_NEAR(east.y, 1501, 2) << "a minute of longitude at latitude 36";
    EXPECT_NEAR(east.x, 0.13, 0.01);
}

TEST(GeoToPlane, AndBackAgreesToTheTenThousandthNearTheCentralMeridian) {
    for (int zone = 1; zone <= 19; ++zone) {
        const GeoDms origin = *conv.ZoneOrigin(zone);
        for (int lat = -90; lat <= 90; lat += 7) {
            for (int lon = -20; lon <= 20; lon += 3) {
                const GeoRad geo{conv.DmsToRad({origin.latitude.degrees, lat, 11, 2345}),
                                 conv.DmsToRad({origin.longitude.degrees, origin.longitude.minutes + lon, 22, 6789})};
                const GeoDms back = *conv.PlaneToGeo(*conv.GeoToPlane(geo, zone), zone);
                EXPECT_EQ(back.latitude, conv.RadToDms(geo.latitude)) << zone << ' ' << lat << ' ' << lon;
                EXPECT_EQ(back.longitude, conv.RadToDms(geo.longitude)) << zone << ' ' << lat << ' ' << lon;
            }
        }
    }
}

TEST(GeoToPlane, ZoneNineteenLiesTwoDegreesFurtherNorthThanElsewhere) {
    const double lat = conv.DmsToRad({27, 0, 0, 0});
    const PlaneXY here = *conv.GeoToPlane({lat, conv.DmsToRad({154, 0, 0, 0})}, 19);
    const double fromTwentySix = 0.9999 * (IntegratedArc(lat) - IntegratedArc(Degrees(26)));
    EXPECT_NEAR(fromTwentySix - here.x, 222e3, 1e3);
    EXPECT_NEAR(fromTwentySix - here.x, 0.9999 * (IntegratedArc(Degrees(28)) - IntegratedArc(Degrees(26))), 1e-4);
}

}  // namespace
}  // namespace orvane
