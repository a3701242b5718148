// The forms that hosts print: what they say of a place, and where they say nothing.
#include "hosts/common/coordinate_forms.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace orvane {
namespace {

constexpr double kPi = 3.14159265358979;
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

const GeoConv conv;

std::string Text(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

TEST(CoordinateForms, WhatIsPrintedIsThatOfTheSeriesAsTheyStand) {
    std::mt19937_64 random(6);
    std::uniform_real_distribution<double> north(-700000, 700000), east(-160000, 160000);
    for (int i = 0; i < 100000; ++i) {
        const int zone = 1 + i % 19;
        const PlaneXY place{north(random), east(random)};
        const GeoRad rad = *conv.PlaneToGeoRad(place, zone);
        const GeoDeg geo = *PlaneToDeg(place, zone);
        const PlaneXY exact = *conv.GeoToPlane({geo.latitude / 180.0 * kPi, geo.longitude / 180.0 * kPi}, zone);
        const PlaneXY plane = *DegToPlane(geo, zone);
        ASSERT_EQ(Text(geo.latitude, 10), Text(rad.latitude / kPi * 180.0, 10)) << zone << ' ' << place.x << ' ' << place.y;
        ASSERT_EQ(Text(geo.longitude, 10), Text(rad.longitude / kPi * 180.0, 10)) << zone << ' ' << place.x << ' ' << place.y;
        ASSERT_EQ(Text(plane.x, 4), Text(exact.x, 4)) << zone << ' ' << geo.latitude << ' ' << geo.longitude;
        ASSERT_EQ(Text(plane.y, 4), Text(exact.y, 4)) << zone << ' ' << geo.latitude << ' ' << geo.longitude;
        ASSERT_EQ(conv.RadToDms(geo.latitude / 180.0 * kPi), conv.RadToDms(rad.latitude / kPi * 180.0 / 180.0 * kPi));
        ASSERT_EQ(conv.RadToDms(geo.longitude / 180.0 * kPi), conv.RadToDms(rad.longitude / kPi * 180.0 / 180.0 * kPi));
    }
}

TEST(CoordinateForms, AResultAtTheEdgeOfTwoPrintedOnesIsThatOfTheSeriesToTheBit) {
    // On the meridian of zone 9, searched by halves: latitudes whose x lies at half of a ten-thousandth of a metre.
    for (int n = 0; n < 200; ++n) {
        const double sought = 1000 * n + 0.00005;
        double low = 35.9;
        double high = 40;
        for (int i = 0; i < 100; ++i) {
            const double middle = (low + high) / 2;
            (conv.GeoToPlane({middle / 180.0 * kPi, 140 / 180.0 * kPi}, 9)->x < sought ? low : high) = middle;
        }
        const PlaneXY exact = *conv.GeoToPlane({low / 180.0 * kPi, 140 / 180.0 * kPi}, 9);
        EXPECT_EQ(*DegToPlane({low, 140}, 9), exact) << n;
    }
}

TEST(CoordinateForms, BeyondTheFasterFormsReachTheSeriesAnswer) {
    const GeoRad far = *conv.PlaneToGeoRad({-2e6, 5e5}, 9);
    const GeoDeg geo = *PlaneToDeg({-2e6, 5e5}, 9);
    EXPECT_EQ(geo.latitude, far.latitude / kPi * 180.0);
    EXPECT_EQ(geo.longitude, far.longitude / kPi * 180.0);
    EXPECT_EQ(*DegToPlane({36, 150}, 9), *conv.GeoToPlane({36 / 180.0 * kPi, 150 / 180.0 * kPi}, 9));
}

TEST(CoordinateForms, ASheetLiesBetweenTheEquatorAndItsLastRowAndBetween110And180East) {
    EXPECT_TRUE(SheetAt({800000, 0}));
    EXPECT_TRUE(SheetAt({6399999, 7999999}));
    for (const MeshPoint& point : {MeshPoint{799999.9, 0},
                                   {800000, -0.1},
                                   {6400000, 0},
                                   {800000, 8000000},
                                   {kNoNumber, 0},
                                   {800000, kNoNumber},
                                   {kInf, 0},
                                   {800000, -kInf},
                                   {-15000, 4280000}}) {
        EXPECT_FALSE(SheetAt(point)) << point.x << ' ' << point.y;
        EXPECT_FALSE(MeshPointToPlane(point, 9)) << point.x << ' ' << point.y;
    }
}

TEST(CoordinateForms, APlaceInASheetGoesToThePlaneAndBackAsTheFrameDoes) {
    const MeshPoint point{3175000, 4285000};
    const PlaneXY plane = *MeshPointToPlane(point, 9);
    EXPECT_EQ(plane, *conv.MeshToPlane(point, 9));
    EXPECT_EQ(*PlaneToMeshPoint(plane, 9), *conv.PlaneToMesh(plane, 9));
}

TEST(CoordinateForms, APlanePlaceSouthOrWestOfAllSheetsOrOffTheGlobeIsInNone) {
    // The last is off the globe by its series, which is of no use there.
    for (const PlaneXY& plane : {PlaneXY{-4e6, 0},
                                 {0, -3e6},
                                 {4e6, 0},
                                 {1e7, 1e7},
                                 {1e18, 0},
                                 {0, 1e300},
                                 {-1e300, -1e300},
                                 {kNoNumber, 0},
                                 {0, kInf}}) {
        EXPECT_FALSE(PlaneToMeshPoint(plane, 9)) << plane.x << ' ' << plane.y;
    }
    EXPECT_TRUE(PlaneToMeshPoint({-3.9e6, 0}, 9)) << "still north of the equator";
}

TEST(CoordinateForms, ABadZoneHasNoPlane) {
    for (const std::int32_t zone : {-1, 0, 20}) {
        EXPECT_FALSE(DegToPlane({36, 140}, zone));
        EXPECT_FALSE(PlaneToDeg({0, 0}, zone));
        EXPECT_FALSE(MeshPointToPlane({3175000, 4285000}, zone));
        EXPECT_FALSE(PlaneToMeshPoint({0, 0}, zone));
    }
}

}  // namespace
}  // namespace orvane
