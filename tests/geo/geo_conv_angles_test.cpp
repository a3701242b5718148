#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geo/geo_conv.h"

namespace orvane {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kSecond = 3.14159265358979 / 180 / 3600;  // in radians

const GeoConv conv;

TEST(GeoAngles, AnAngleAddsItsFourNumbers) {
    EXPECT_DOUBLE_EQ(conv.DmsToRad({180, 0, 0, 0}), 3.14159265358979);
    EXPECT_DOUBLE_EQ(conv.DmsToRad({0, 1, 0, 0}), 60 * kSecond);
    EXPECT_DOUBLE_EQ(conv.DmsToRad({0, 0, 1, 0}), kSecond);
    EXPECT_DOUBLE_EQ(conv.DmsToRad({0, 0, 0, 10000}), kSecond);
    EXPECT_DOUBLE_EQ(conv.DmsToRad({36, 5, 6, 7890}), (36 * 3600 + 5 * 60 + 6.789) * kSecond);
}

TEST(GeoAngles, PiIsTheShortenedOne) {
    EXPECT_EQ(conv.DmsToRad({180, 0, 0, 0}), 3.14159265358979);
    EXPECT_NE(conv.DmsToRad({180, 0, 0, 0}), std::acos(-1.0));
}

TEST(GeoAngles, SixtyFiveMinutesAreTakenAsTheyStand) {
    EXPECT_DOUBLE_EQ(conv.DmsToRad({35, 65, 0, 0}), conv.DmsToRad({36, 5, 0, 0}));
    EXPECT_DOUBLE_EQ(conv.DmsToRad({139, 59, 67, 0}), conv.DmsToRad({140, 0, 7, 0}));
    EXPECT_DOUBLE_EQ(conv.DmsToRad({1, -1, 0, 0}), conv.DmsToRad({0, 59, 0, 0}));
}

TEST(GeoAngles, RadiansComeBackAsTheNearestTenThousandth) {
    EXPECT_EQ(conv.RadToDms(0), (Dms{0, 0, 0, 0}));
    EXPECT_EQ(conv.RadToDms(1.23454 * kSecond), (Dms{0, 0, 1, 2345}));
    EXPECT_EQ(conv.RadToDms(1.23456 * kSecond), (Dms{0, 0, 1, 2346}));
    EXPECT_EQ(conv.RadToDms((139 * 3600 + 50 * 60 + 7.0001) * kSecond), (Dms{139, 50, 7, 1}));
}

TEST(GeoAngles, AFractionThatRoundsToTenThousandCarriesIntoTheSeconds) {
    EXPECT_EQ(conv.RadToDms(1.99999 * kSecond), (Dms{0, 0, 2, 0}));
}

TEST(GeoAngles, TheCarryGoesOnIntoMinutesAndDegrees) {
    EXPECT_EQ(conv.RadToDms(59.99999 * kSecond), (Dms{0, 1, 0, 0}));
    EXPECT_EQ(conv.RadToDms((35 * 3600 + 59 * 60 + 59.99999) * kSecond), (Dms{36, 0, 0, 0}));
}

TEST(GeoAngles, BelowZeroEachNumberHasTheSignOfTheRemainder) {
    // -1 degree 2 minutes 3.5 seconds: 5000.5 ten-thousandths become 4999 by adding a half and cutting, and the whole seconds
    // gain as much.
    const Dms angle = conv.RadToDms(-(3600 + 120 + 3.5) * kSecond);
    EXPECT_EQ(angle.degrees, -1);
    EXPECT_EQ(angle.minutes, -2);
    EXPECT_EQ(angle.seconds, -2) << "-3723 seconds and a half, cut toward 0, are -3722";
    EXPECT_NEAR(angle.tenThousandths, -4999, 1);
}

TEST(GeoAngles, NumbersThatNoAngleHasAreHeld) {
    EXPECT_EQ(conv.RadToDms(kNoNumber), (Dms{0, 0, 0, 0}));
    constexpr std::int32_t most = (std::numeric_limits<std::int32_t>::max)();
    EXPECT_EQ(conv.RadToDms(kInf), (Dms{most / 3600, most / 60 % 60, most % 60, 0}));
    EXPECT_EQ(conv.RadToDms(1e300), conv.RadToDms(kInf));
    EXPECT_LT(conv.RadToDms(-kInf).degrees, -500000);
}

TEST(GeoAngles, DecimalDegreesAddTheFourNumbers) {
    EXPECT_DOUBLE_EQ(conv.DmsToDeg({139, 30, 36, 0}), 139.51);
    EXPECT_DOUBLE_EQ(conv.DmsToDeg({0, 0, 0, 36}), 36e-4 / 3600);
}

TEST(GeoAngles, DecimalDegreesAreTruncatedAtEachStepButTheLast) {
    EXPECT_EQ(conv.DegToDms(35.5), (Dms{35, 30, 0, 0}));
    EXPECT_EQ(conv.DegToDms(0.50025), (Dms{0, 30, 0, 9000}));
    const Dms angle = conv.DegToDms((2 * 3600 + 3 * 60 + 4.56786) / 3600);
    EXPECT_EQ(angle, (Dms{2, 3, 4, 5679}));
}

TEST(GeoAngles, DecimalDegreesDoNotCarryTheTenThousandths) { EXPECT_EQ(conv.DegToDms(1.99999 / 3600), (Dms{0, 0, 1, 10000})); }

TEST(GeoAngles, DecimalDegreesHoldNumbersThatNoAngleHas) {
    EXPECT_EQ(conv.DegToDms(kNoNumber), (Dms{0, 0, 0, 0}));
    EXPECT_EQ(conv.DegToDms(kInf), (Dms{0, 0, 0, 0}));
    EXPECT_EQ(conv.DegToDms(1e300).degrees, (std::numeric_limits<std::int32_t>::max)());
}

}  // namespace
}  // namespace orvane
