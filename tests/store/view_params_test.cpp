#include "store/view_params.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace orvane {
namespace {

/// 100 pixels for a metre of map: 1:40 on a device of 4000 pixels a metre.
ViewParams PlainView() {
    ViewParams view;
    view.ScaleX = view.ScaleY = 1;
    view.Zoom = 40;
    view.DotPerM = 4000;
    return view;
}

std::uint64_t BitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

TEST(RotateViewTest, AngleZeroLeavesEveryBitAlone) {
    double x = -0.0, y = std::nan("7");
    const std::uint64_t xBits = BitsOf(x), yBits = BitsOf(y);
    RotateView(x, y, 0);
    EXPECT_EQ(BitsOf(x), xBits);
    EXPECT_EQ(BitsOf(y), yBits);
    RotateView(x, y, -0.0);
    EXPECT_EQ(BitsOf(x), xBits);
}

TEST(RotateViewTest, TurnsByTheNegatedAngle) {
    double x = 1000, y = 0;
    RotateView(x, y, 90);
    EXPECT_NEAR(x, 0, 0.01);
    EXPECT_NEAR(y, -1000, 1e-6);
}

TEST(RotateViewTest, UsesTheTruncatedFactorAndNotPi) {
    // Half a turn is 180 * 0.01745328 = 3.1415904, short of pi by 2.2535898e-6.
    double x = 1e9, y = 0;
    RotateView(x, y, 180);
    EXPECT_NEAR(y, -2253.5898, 0.0001);
    EXPECT_NEAR(x, -1e9, 0.01);
}

TEST(RotateViewTest, KeepsTheOrderOfTheSums) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> coordinate(-1e6, 1e6), angle(-400, 400);
    for (int i = 0; i < 1000; ++i) {
        const double x0 = coordinate(random), y0 = coordinate(random), degrees = angle(random);
        double x = x0, y = y0;
        RotateView(x, y, degrees);
        const double a = -degrees * 0.01745328;
        EXPECT_EQ(BitsOf(x), BitsOf(std::cos(a) * x0 - std::sin(a) * y0));
        EXPECT_EQ(BitsOf(y), BitsOf(std::sin(a) * x0 + std::cos(a) * y0));
    }
}

TEST(ViewParamsTest, LengthsGoBothWaysBetweenPixelsAndUnits) {
    ViewParams view = PlainView();
    EXPECT_EQ(view.PixToWorldF(250), 2.5);
    EXPECT_EQ(view.WorldToPixF(2.5), 250);
    view.Zoom = 3779;
    view.DotPerM = 3779;
    EXPECT_EQ(view.PixToWorld(-3), -2) << "adding the half before the cut moves negative values up";
    EXPECT_EQ(view.PixToWorld(3), 3);
}

TEST(ViewParamsTest, PenFactorIsTheWholePartOfTheRatio) {
    ViewParams view;
    view.DpiRatio = 600.0 / 96.0;
    EXPECT_EQ(view.PenFactor(), 6);
    view.DpiRatio = std::nan("");
    EXPECT_EQ(view.PenFactor(), 0);
}

TEST(DeviceTransformTest, AddsTheBlockOriginAndTurnsYDownward) {
    // World (12.25, -8.5), origin (10, -20): (2.25, 11.5) units, 100 pixels each.
    const DeviceTransform t(PlainView(), 10, -20, 0, 0, 12, 8);
    EXPECT_EQ(t.ToDevice(0.25, 0.5), (Point{225, 1150}));
}

TEST(DeviceTransformTest, AddsHalfAndCutsTowardZeroOnBothSidesOfTheEdge) {
    const DeviceTransform t(PlainView(), 0, 0, 0, 0, 0, 0);
    EXPECT_EQ(t.ToDevice(0.014, 0).x, 1) << "1.4 + 0.5 = 1.9";
    EXPECT_EQ(t.ToDevice(0.016, 0).x, 2) << "1.6 + 0.5 = 2.1";
    EXPECT_EQ(t.ToDevice(-0.014, 0).x, 0) << "-1.4 + 0.5 = -0.9";
    EXPECT_EQ(t.ToDevice(-0.016, 0).x, -1) << "-1.6 + 0.5 = -1.1";
    EXPECT_EQ(t.ToDevice(-0.004, 0).x, 0);
}

TEST(DeviceTransformTest, StretchComesBeforeTheOriginAndThePendingOffsetLast) {
    ViewParams view = PlainView();
    view.ScaleX = 2;
    view.ScaleY = 3;
    view.OffX = 1;
    view.OffY = -1;
    // x: (5 * 2 - 4 - 1) * 100 + 0.75 = 500.75; y: (-(-2) * 3 - 1 + 1) * 100 - 0.75 = 599.25.
    const DeviceTransform t(view, 4, 1, 0.75, -0.75, 0, 0);
    EXPECT_EQ(t.ToDevice(5, -2), (Point{501, 599}));
}

TEST(DeviceTransformTest, TurnsAboutTheWorldOriginBeforeTheStretch) {
    ViewParams view = PlainView();
    view.Rotate = 90;
    view.ScaleX = 10;
    // World (3, -2), a right angle by the negated sense of the flipped frame: (-2, -3), then x ten times.
    const DeviceTransform t(view, -100, -100, 0, 0, 0, 0);
    EXPECT_EQ(t.ToDevice(3, 2), (Point{8000, 9700}));
}

TEST(DeviceTransformTest, ValuesBeyondThirtyTwoBitsSaturateAndNotANumberIsZero) {
    const double inf = std::numeric_limits<double>::infinity();
    const DeviceTransform t(PlainView(), 0, 0, 0, 0, 0, 0);
    EXPECT_EQ(t.ToDevice(1e30, 1e30), (Point{2147483647, -2147483647 - 1}));
    EXPECT_EQ(t.ToDevice(-inf, -inf), (Point{-2147483647 - 1, 2147483647}));
    EXPECT_EQ(t.ToDevice(std::nan(""), 1), (Point{0, -99}));
}

TEST(DeviceTransformTest, ZoomOfZeroGivesSaturatedPixels) {
    ViewParams view = PlainView();
    view.Zoom = 0;
    const DeviceTransform t(view, 0, 0, 0, 0, 0, 0);
    EXPECT_EQ(t.ToDevice(5, 5), (Point{2147483647, -2147483647 - 1}));
    EXPECT_EQ(t.ToDevice(0, 5).x, 0) << "nothing times infinity is not a number";
}

TEST(DeviceTransformTest, ManyPointsComeOutAsSingleOnesDo) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> coordinate(-1e5, 1e5);
    for (double rotate : {0.0, 33.0}) {
        ViewParams view = PlainView();
        view.Rotate = rotate;
        view.Zoom = 2500;
        const DeviceTransform t(view, 123.456, -654.321, 0.4, -0.3, 1000, -2000);
        std::vector<DigPnt> pnts(1001);
        for (DigPnt& pnt : pnts) pnt = {coordinate(random), coordinate(random), 0};
        pnts[500] = {std::nan(""), 1e300, 0};
        pnts[1000] = {-std::numeric_limits<double>::infinity(), -1e300, 0};
        std::vector<Point> out(pnts.size());
        t.ToDevice(pnts.data(), static_cast<std::int32_t>(pnts.size()), out.data());
        for (std::size_t i = 0; i < pnts.size(); ++i) EXPECT_EQ(out[i], t.ToDevice(pnts[i].x, pnts[i].y)) << i;
    }
}

}  // namespace
}  // namespace orvane
