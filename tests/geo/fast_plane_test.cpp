// The form with fewer operations beside the one that stored coordinates are made by.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "geo/fast_plane.h"

namespace orvane {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int kPlaces = 20000;  // a zone

const GeoConv conv;

class FastPlaneTest : public testing::TestWithParam<int> {};

TEST_P(FastPlaneTest, LiesWithinItsPromiseOfTheExactFormAllOverItsReach) {
    std::mt19937_64 random(static_cast<unsigned>(GetParam()));
    std::uniform_real_distribution<double> north(-1.5e6, 1.5e6), east(-4e5, 4e5), latitude(-1.19, 1.19), aside(-0.09, 0.09);
    const double meridian = conv.DmsToRad(conv.ZoneOrigin(GetParam())->longitude);
    int none = 0;
    for (int i = 0; i < kPlaces; ++i) {
        const PlaneXY place{north(random), east(random)};
        const GeoRad exact = *conv.PlaneToGeoRad(place, GetParam());
        const std::optional<GeoRad> fast = FastPlaneToGeo(place, GetParam());
        none += !fast;
        ASSERT_LT(std::fabs(fast.value_or(exact).latitude - exact.latitude), kFastAngle_rad) << place.x << ' ' << place.y;
        ASSERT_LT(std::fabs(fast.value_or(exact).longitude - exact.longitude), kFastAngle_rad) << place.x << ' ' << place.y;
        const GeoRad geo{latitude(random), meridian + aside(random)};
        const PlaneXY there = *conv.GeoToPlane(geo, GetParam());
        const PlaneXY fastThere = *FastGeoToPlane(geo, GetParam());
        ASSERT_LT(std::fabs(fastThere.x - there.x), kFastPlane_m) << geo.latitude << ' ' << geo.longitude;
        ASSERT_LT(std::fabs(fastThere.y - there.y), kFastPlane_m) << geo.latitude << ' ' << geo.longitude;
    }
    EXPECT_LE(none, 1) << "only a search that may end a step earlier or later has no answer";
}

TEST_P(FastPlaneTest, TheOriginIsExactlyZeroAndBack) {
    const GeoDms origin = *conv.ZoneOrigin(GetParam());
    const GeoRad geo{conv.DmsToRad(origin.latitude), conv.DmsToRad(origin.longitude)};
    EXPECT_NEAR(FastGeoToPlane(geo, GetParam())->x, 0, kFastPlane_m);
    EXPECT_EQ(FastGeoToPlane(geo, GetParam())->y, 0);
    EXPECT_EQ(FastPlaneToGeo({0, 0}, GetParam())->latitude, geo.latitude);
    EXPECT_EQ(FastPlaneToGeo({0, 0}, GetParam())->longitude, geo.longitude);
}

INSTANTIATE_TEST_SUITE_P(Zones, FastPlaneTest, testing::Range(1, 20),
                         [](const auto& zone) { return "Zone" + std::to_string(zone.param); });

TEST(FastPlane, OutsideItsReachThereIsNothing) {
    for (const double bad : {kNoNumber, kInf, -kInf, 1e300, 1.6e6, -1.6e6}) EXPECT_FALSE(FastPlaneToGeo({bad, 0}, 9)) << bad;
    for (const double bad : {kNoNumber, kInf, -kInf, 1e300, 4.1e5, -4.1e5}) EXPECT_FALSE(FastPlaneToGeo({0, bad}, 9)) << bad;
    for (const double bad : {kNoNumber, kInf, -kInf, 1.2, -1.2}) EXPECT_FALSE(FastGeoToPlane({bad, 2.44}, 9)) << bad;
    for (const double bad : {kNoNumber, kInf, -kInf, 2.3, 2.6, 0.0}) EXPECT_FALSE(FastGeoToPlane({0.6, bad}, 9)) << bad;
}

TEST(FastPlane, ABadZoneGivesNothing) {
    for (const std::int32_t zone : {(std::numeric_limits<std::int32_t>::min)(), -1, 0, 20}) {
        EXPECT_FALSE(FastPlaneToGeo({0, 0}, zone));
        EXPECT_FALSE(FastGeoToPlane({0.6, 2.44}, zone));
    }
}

TEST(FastPlane, WhereTheSearchMayEndAStepEarlierThereIsNothing) {
    // The first step is as long as the latitude of the foot is far: sought is the place whose step is 2e-5 radians.
    const double origin = conv.DmsToRad(conv.ZoneOrigin(9)->latitude);
    double low = 0;
    double high = 1000;
    for (int i = 0; i < 100; ++i) {
        const double middle = (low + high) / 2;
        // One step alone: the search for a place this near ends with it, or with the second, which is far below all digits.
        const double step = conv.FootLatitude(origin, origin, middle, kPlaneScale) - origin;
        (step < 2e-5 ? low : high) = middle;
    }
    int none = 0;
    for (int i = -2000; i <= 2000; ++i) none += !FastPlaneToGeo({low + i * 1e-6, 0}, 9);
    EXPECT_GT(none, 0);
    EXPECT_TRUE(FastPlaneToGeo({low - 0.1, 0}, 9));
    EXPECT_TRUE(FastPlaneToGeo({low + 0.1, 0}, 9));
}

}  // namespace
}  // namespace orvane
