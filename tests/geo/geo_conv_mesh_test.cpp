// Sheets and the mesh frame. Corners come from the sheet lines of published maps.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "geo/geo_conv.h"

namespace orvane {
namespace {

constexpr auto kLeast = (std::numeric_limits<std::int32_t>::min)();
constexpr auto kMost = (std::numeric_limits<std::int32_t>::max)();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

const GeoConv conv;

struct Sheet {
    std::int32_t mesh;
    Dms latitude;
    Dms longitude;
};

// South-west corners of sheets of the map 1 to 25000.
const Sheet kSheets[] = {
    {533945, {35, 40, 0, 0}, {139, 37, 30, 0}},  // Tokyo, western part
    {533946, {35, 40, 0, 0}, {139, 45, 0, 0}},   // Tokyo, centre
    {644142, {43, 0, 0, 0}, {141, 15, 0, 0}},    // Sapporo
    {392725, {26, 10, 0, 0}, {127, 37, 30, 0}},  // Naha
    {503033, {33, 35, 0, 0}, {130, 22, 30, 0}},  // Fukuoka
    {523503, {34, 40, 0, 0}, {135, 22, 30, 0}},  // Osaka, north-west
};

/// The sheet's middle, well away from every edge.
GeoDms MiddleOf(const Sheet& sheet) {
    GeoDms geo{sheet.latitude, sheet.longitude};
    geo.latitude.minutes += 2;
    geo.latitude.seconds += 30;
    geo.longitude.minutes += 3;
    geo.longitude.seconds += 45;
    return geo;
}

// --- Numbers ---------------------------------------------------------------------------------------------------------------

TEST(MeshToDms, PublishedSheetsHaveTheirCorners) {
    for (const Sheet& sheet : kSheets) {
        EXPECT_EQ(conv.MeshToDms(sheet.mesh), (GeoDms{sheet.latitude, sheet.longitude})) << sheet.mesh;
    }
}

TEST(MeshToDms, MinutesAboveFiftyNineCarryIntoTheDegrees) {
    // Row 53 begins at 35 20', its last sheet 35 minutes further.
    EXPECT_EQ(conv.MeshToDms(533970).latitude, (Dms{35, 55, 0, 0}));
    EXPECT_EQ(conv.MeshToDms(543940).latitude, (Dms{36, 20, 0, 0}));
    EXPECT_EQ(conv.MeshToDms(553970).latitude, (Dms{37, 15, 0, 0}));
}

TEST(MeshToDms, DigitsThatNoSheetHasAreTakenAsTheyStand) {
    EXPECT_EQ(conv.MeshToDms(0), (GeoDms{{0, 0, 0, 0}, {100, 0, 0, 0}}));
    EXPECT_EQ(conv.MeshToDms(9), (GeoDms{{0, 0, 0, 0}, {100, 67, 30, 0}})) << "longitude does not carry";
    EXPECT_EQ(conv.MeshToDms(99), (GeoDms{{0, 45, 0, 0}, {100, 67, 30, 0}}));
    EXPECT_EQ(conv.MeshToDms(5339457), conv.MeshToDms(533945)) << "the number is cut by position";
    EXPECT_EQ(conv.MeshToDms(-533945).latitude, (Dms{-3, 26, 0, 0})) << "-5 33 9 4: -199 minutes and 45";
    for (const std::int32_t mesh : {kLeast, -1, kMost}) conv.MeshToDms(mesh);
}

TEST(DmsToMesh, PlacesInsidePublishedSheetsGetTheirNumbers) {
    for (const Sheet& sheet : kSheets) {
        EXPECT_EQ(conv.DmsToMesh({sheet.latitude, sheet.longitude}), sheet.mesh);
        EXPECT_EQ(conv.DmsToMesh(MiddleOf(sheet)), sheet.mesh);
    }
}

TEST(DmsToMesh, TheSheetEndsJustBeforeItsNorthEastCorner) {
    EXPECT_EQ(conv.DmsToMesh({{35, 44, 59, 9999}, {139, 44, 59, 9999}}), 533945);
    EXPECT_EQ(conv.DmsToMesh({{35, 45, 0, 0}, {139, 44, 59, 9999}}), 533955);
    EXPECT_EQ(conv.DmsToMesh({{35, 44, 59, 9999}, {139, 45, 0, 0}}), 533946);
}

TEST(DmsToMesh, TenThousandthsCountWholeSecondsOnly) {
    EXPECT_EQ(conv.DmsToMesh({{35, 44, 59, 10000}, {139, 40, 0, 0}}), 533955);
}

TEST(DmsToMesh, AColumnBelowTenHasNoLeadingZeroAndDoesNotParseBack) {
    const GeoDms geo{{35, 40, 0, 0}, {109, 37, 30, 0}};
    EXPECT_EQ(conv.DmsToMesh(geo), 53945) << "not 530945";
    EXPECT_NE(conv.MeshToDms(conv.DmsToMesh(geo)), geo);
}

TEST(DmsToMesh, WestOfOneHundredDegreesTheTextEndsAtItsMinus) {
    EXPECT_EQ(conv.DmsToMesh({{35, 40, 0, 0}, {98, 0, 0, 0}}), 53) << "53 -2 4 0";
}

TEST(DmsToMesh, AnglesWithoutBoundsAreHeld) {
    const Dms most{kMost, kMost, kMost, kMost};
    const Dms least{kLeast, kLeast, kLeast, kLeast};
    EXPECT_EQ(conv.DmsToMesh({most, most}), kMost);
    EXPECT_LT(conv.DmsToMesh({least, least}), 0);
}

TEST(MeshStep, CarriesInBaseEight) {
    EXPECT_EQ(conv.MeshStep(533945, 1, 0), 533946);
    EXPECT_EQ(conv.MeshStep(533945, 3, 0), 534040);
    EXPECT_EQ(conv.MeshStep(533945, 0, 4), 543905);
    EXPECT_EQ(conv.MeshStep(533945, 8, 16), 554045);
    EXPECT_EQ(conv.MeshStep(0, 39 * 8 + 5, 53 * 8 + 4), 533945);
}

TEST(MeshStep, GoesDownByTheDivisorNineWhichIsRightAsFarAsSixteenBelow) {
    // From row and column 0 of a primary mesh n steps down: so many primaries and the rest from the next one up.
    for (int n = 1; n <= 16; ++n) {
        const int primaries = (n + 7) / 8;
        const int rest = primaries * 8 - n;
        EXPECT_EQ(conv.MeshStep(533900, -n, 0), (53 * 100 + 39 - primaries) * 100 + rest) << n;
        EXPECT_EQ(conv.MeshStep(533900, 0, -n), ((53 - primaries) * 100 + 39) * 100 + rest * 10) << n;
    }
}

TEST(MeshStep, SeventeenBelowGoesWrongAsItAlwaysHas) {
    // k = 17 / 9 = 1, so the digit is 8 + 8 - 17 = -1 and the primary two further down.
    EXPECT_EQ(conv.MeshStep(533900, -17, 0), 53370) << "53 37 0 -1";
    EXPECT_EQ(conv.MeshStep(533900, 0, -17), 5139) << "51 39 -1 0";
}

TEST(MeshStep, ShortColumnsMakeShortNumbers) {
    EXPECT_EQ(conv.MeshStep(0, 0, 0), 0);
    EXPECT_EQ(conv.MeshStep(0, 5, 53 * 8 + 4), 53045) << "53 0 4 5";
}

TEST(MeshStep, AnyNumbersGiveANumber) {
    EXPECT_EQ(conv.MeshStep(533945, kMost, kMost), kMost);
    EXPECT_EQ(conv.MeshStep(533945, kLeast, kLeast), -238609241) << "the row's minus, then its digits up to the column's minus";
    for (const std::int32_t base : {kLeast, kMost}) conv.MeshStep(base, kMost, kLeast);
}

// --- Frame -----------------------------------------------------------------------------------------------------------------

void ExpectSplit(MeshPoint point, std::int32_t mesh, double localX, double localY) {
    const MeshPlace place = conv.MeshSplit(point);
    EXPECT_EQ(place.mesh, mesh);
    EXPECT_EQ(place.localX, localX);
    EXPECT_EQ(place.localY, localY);
}

TEST(MeshSplit, APlaceBelongsToTheSheetThatItsUnitsName) {
    ExpectSplit({3170000, 4280000}, 533945, 0, 0);
    ExpectSplit({3179999.5, 4281234.25}, 533945, 9999.5, 1234.25);
    ExpectSplit({3180000, 4280000}, 533946, 0, 0);
}

TEST(MeshSplit, ANegativeXHasANegativeLocalXAndTheCarryDecidesTheSheet) {
    ExpectSplit({-5000, 4280000}, 53040, -5000, 0);    // truncated to 0 sheets: 53 0 4 0
    ExpectSplit({-15000, 4280000}, 53, -5000, 0);      // one sheet west: 53 -1 4 7
    ExpectSplit({3170000, -15000}, -13975, 0, -5000);  // one sheet south: -1 39 7 5
}

TEST(SheetCornersOf, AreTheFourCornersOfTheSheetOnTheGlobe) {
    const double lat0 = conv.DmsToRad({35, 40, 0, 0});
    const double lat1 = conv.DmsToRad({35, 45, 0, 0});
    const double lon0 = conv.DmsToRad({139, 37, 30, 0});
    const double lon1 = conv.DmsToRad({139, 45, 0, 0});
    const auto at = [](double lat, double lon) { return *conv.GeoToPlane({lat, lon}, 9); };
    const auto expectNear = [](const PlaneXY& a, const PlaneXY& b) {
        EXPECT_NEAR(a.x, b.x, 1e-6);
        EXPECT_NEAR(a.y, b.y, 1e-6);
    };
    const SheetCorners corners = *conv.CornersOf(533945, 9);
    expectNear(corners.p1, at(lat0, lon0));
    expectNear(corners.p2, at(lat1, lon0));
    expectNear(corners.p3, at(lat1, lon1));
    expectNear(corners.p4, at(lat0, lon1));
}

TEST(SheetCornersOf, AnotherZoneOrSheetIsNotTakenFromTheOneRemembered) {
    const SheetCorners nine = *conv.CornersOf(533945, 9);
    const SheetCorners eight = *conv.CornersOf(533945, 8);
    const SheetCorners next = *conv.CornersOf(533946, 8);
    EXPECT_FALSE(nine == eight);
    EXPECT_FALSE(next == eight);
    EXPECT_EQ(conv.CornersOf(533945, 9), nine);
}

TEST(SheetCornersOf, ABadZoneHasNoneEvenWhenItIsWhatTheMemoryBeganWith) {
    EXPECT_FALSE(conv.CornersOf(-1, -1));
    EXPECT_FALSE(conv.CornersOf(533945, 0));
    EXPECT_FALSE(conv.CornersOf(533945, 20));
}

TEST(MeshToPlane, APointInASheetsCornerIsExactlyTheCorner) {
    const SheetCorners corners = *conv.CornersOf(533945, 9);
    EXPECT_EQ(conv.MeshToPlane({3170000, 4280000}, 9), corners.p1);
    EXPECT_EQ(GeoConv::PlaneInSheet(corners, 0, 0), corners.p1);
    EXPECT_EQ(GeoConv::PlaneInSheet(corners, 0, 10000), corners.p2);
    EXPECT_EQ(GeoConv::PlaneInSheet(corners, 10000, 10000), corners.p3);
    EXPECT_EQ(GeoConv::PlaneInSheet(corners, 10000, 0), corners.p4);
}

TEST(MeshToPlane, APointInsideDividesOppositeSidesAlike) {
    // Where the line between the points at 0.3 of the south and north side crosses the one between those at 0.8 of the others.
    const SheetCorners c = *conv.CornersOf(533945, 9);
    const auto between = [](const PlaneXY& p, const PlaneXY& q, double t) {
        return PlaneXY{p.x + t * (q.x - p.x), p.y + t * (q.y - p.y)};
    };
    const PlaneXY s = between(c.p1, c.p4, 0.3), n = between(c.p2, c.p3, 0.3);
    const PlaneXY w = between(c.p1, c.p2, 0.8), e = between(c.p4, c.p3, 0.8);
    const double det = (n.x - s.x) * (e.y - w.y) - (n.y - s.y) * (e.x - w.x);
    const double along = ((w.x - s.x) * (e.y - w.y) - (w.y - s.y) * (e.x - w.x)) / det;
    const PlaneXY cross = between(s, n, along);
    const PlaneXY found = *conv.MeshToPlane({3173000, 4288000}, 9);
    EXPECT_NEAR(found.x, cross.x, 1e-6);
    EXPECT_NEAR(found.y, cross.y, 1e-6);
}

TEST(MeshToPlane, XIsNorthAndGrowsWithMeshY) {
    const PlaneXY low = *conv.MeshToPlane({3175000, 4281000}, 9);
    const PlaneXY high = *conv.MeshToPlane({3175000, 4282000}, 9);
    EXPECT_NEAR(high.x - low.x, 30 * 30.8, 2) << "a tenth of five minutes";
    EXPECT_NEAR(high.y - low.y, 0, 3);
}

TEST(MeshToPlane, BadZonesAndNumbersThatAreNotFiniteGiveNothing) {
    conv.MeshToPlane({3175000, 4281000}, 9);
    for (const std::int32_t zone : {kLeast, -1, 0, 20, kMost}) EXPECT_FALSE(conv.MeshToPlane({3175000, 4281000}, zone)) << zone;
    for (const double bad : {kNoNumber, kInf, -kInf}) {
        EXPECT_FALSE(conv.MeshToPlane({bad, 4281000}, 9));
        EXPECT_FALSE(conv.MeshToPlane({3175000, bad}, 9));
    }
    for (const double wild : {1e18, -1e18}) EXPECT_TRUE(conv.MeshToPlane({wild, wild}, 9)) << wild;
}

TEST(MeshToPlane, WhatCannotBeInterpolatedGivesNothing) {
    for (const double wild : {1e155, 1e200, -1e200, 1e308, -1e308}) {
        EXPECT_FALSE(conv.MeshToPlane({wild, wild}, 9)) << wild;
    }
}

TEST(MeshToPlane, TheRememberedSheetGivesTheSameBitsAsAFreshOne) {
    const MeshPoint points[] = {
        {3175000, 4281000}, {3175001, 4281000}, {-15000, 4281000}, {3185000, 4281000}, {3175000, 4281000}};
    for (const MeshPoint& point : points) {
        const MeshPlace place = conv.MeshSplit(point);
        const SheetCorners corners = *conv.CornersOf(place.mesh, 9);
        conv.CornersOf(644142, 12);  // whatever was remembered is gone
        EXPECT_EQ(conv.MeshToPlane(point, 9), GeoConv::PlaneInSheet(corners, place.localX, place.localY));
        EXPECT_EQ(conv.MeshToPlane(point, 9), GeoConv::PlaneInSheet(corners, place.localX, place.localY));
    }
}

TEST(PlaneToMesh, CornersComeBackToTheTenThousandthOfASecond) {
    for (const Sheet& sheet : kSheets) {
        const MeshPoint middle = conv.DmsToMeshPoint(MiddleOf(sheet));
        EXPECT_EQ(std::fmod(middle.x, 10000), 5000) << sheet.mesh;
        EXPECT_EQ(std::fmod(middle.y, 10000), 5000) << sheet.mesh;
        const GeoDms geo = MiddleOf(sheet);
        const PlaneXY plane = *conv.GeoToPlane({conv.DmsToRad(geo.latitude), conv.DmsToRad(geo.longitude)}, 9);
        const MeshPoint back = *conv.PlaneToMesh(plane, 9);
        // Sheets far from the zone's meridian are out of the series' reach; those of zone 9 come back to a rounding.
        if (sheet.mesh / 100 == 5339) {
            EXPECT_NEAR(back.x, middle.x, 1e-4 * 10000 / 450);
            EXPECT_NEAR(back.y, middle.y, 1e-4 * 10000 / 300);
        }
    }
}

TEST(PlaneToMesh, IsNotTheExactInverseOfTheWayThroughTheCorners) {
    const MeshPoint point{3175000, 4285000};
    const MeshPoint back = *conv.PlaneToMesh(*conv.MeshToPlane(point, 9), 9);
    EXPECT_NEAR(back.x, point.x, 1);
    EXPECT_NEAR(back.y, point.y, 3);
    EXPECT_GT(std::fabs(back.y - point.y), 1) << "a parallel bends by 1.8 metres between two corners";
}

TEST(PlaneToMesh, BadZonesAndNumbersThatAreNotFiniteGiveNothing) {
    for (const std::int32_t zone : {kLeast, 0, 20, kMost}) EXPECT_FALSE(conv.PlaneToMesh({0, 0}, zone)) << zone;
    for (const double bad : {kNoNumber, kInf, -kInf}) {
        EXPECT_FALSE(conv.PlaneToMesh({bad, 0}, 9));
        EXPECT_FALSE(conv.PlaneToMesh({0, bad}, 9));
    }
}

TEST(PlaneToMesh, WildPlacesGetNumbersThatAreFinite) {
    for (const double wild : {1e7, 1e9, 1e18, 1e155, 1e300, 1e308}) {
        for (const PlaneXY& plane : {PlaneXY{wild, 0}, {0, wild}, {wild, wild}, {-wild, -wild}, {-wild, wild}, {wild, -wild}}) {
            for (const std::int32_t zone : {1, 9, 19}) {
                const std::optional<MeshPoint> point = conv.PlaneToMesh(plane, zone);
                ASSERT_TRUE(point) << plane.x << ' ' << plane.y;
                EXPECT_TRUE(std::isfinite(point->x) && std::isfinite(point->y)) << plane.x << ' ' << plane.y;
            }
        }
    }
}

TEST(PlaneToMesh, AnglesThatAreNoNumbersCountAsZeroWhichIsSheetZeroWithAColumnShort) {
    // So far out that the series' terms cancel to no number: both angles are 0, 100 degrees west of the frame's edge. The column
    // -100 ends the number behind its row, so the sheet is 0.
    const std::optional<GeoRad> geo = conv.PlaneToGeoRad({0, 1e308}, 9);
    ASSERT_TRUE(geo);
    ASSERT_TRUE(std::isnan(geo->latitude) && std::isnan(geo->longitude));
    EXPECT_EQ(conv.PlaneToGeo({0, 1e308}, 9), (GeoDms{}));
    EXPECT_EQ(conv.PlaneToMesh({0, 1e308}, 9), (MeshPoint{-100.0 * 80000, 0}));
}

}  // namespace
}  // namespace orvane
