// Where an image lies by its control points, and which of its pixels a device pixel shows.
#include "foreign/raster/placement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "store/view_params.h"

namespace orvane {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

void ExpectAt(const Affine& a, double x, double y, double toX, double toY) {
    a.Apply(x, y);
    EXPECT_NEAR(x, toX, 1e-6 * (1 + std::abs(toX)));
    EXPECT_NEAR(y, toY, 1e-6 * (1 + std::abs(toY)));
}

TEST(RasterPlacement, AnImageThatLiesStraightGrowsToTheEastAndDownToTheSouth) {
    const auto placement = SimilarityOf({0, 0, 1000, 2000}, {100, 50, 1200, 1900});
    ASSERT_TRUE(placement);
    ExpectAt(*placement, 0, 0, 1000, 2000);
    ExpectAt(*placement, 100, 50, 1200, 1900);
    ExpectAt(*placement, 100, 0, 1200, 2000);
    ExpectAt(*placement, 10, 20, 1020, 1960);
}

TEST(RasterPlacement, AQuarterTurnIsTakenFromThePoints) {
    // The image's right is the map's north: its down is the map's east.
    const auto placement = SimilarityOf({0, 0, 5, 5}, {10, 0, 5, 35});
    ASSERT_TRUE(placement);
    ExpectAt(*placement, 10, 0, 5, 35);
    ExpectAt(*placement, 0, 10, 35, 5);
}

TEST(RasterPlacement, AnglesAndLengthsOfAnyTwoPointsAreKeptInProportion) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(-50000, 50000);
    for (int i = 0; i < 200; ++i) {
        const ControlPoint a{std::round(anywhere(random)), std::round(anywhere(random)), anywhere(random), anywhere(random)};
        const ControlPoint b{std::round(anywhere(random)), std::round(anywhere(random)), anywhere(random), anywhere(random)};
        const auto placement = SimilarityOf(a, b);
        ASSERT_TRUE(placement);
        ExpectAt(*placement, a.bmpX, a.bmpY, a.GeoX, a.GeoY);
        ExpectAt(*placement, b.bmpX, b.bmpY, b.GeoX, b.GeoY);
        // Uniform and without a mirror but the one of y: rows and columns stay square, of one length, south being right of east.
        const Affine& p = *placement;
        const double scale2 = p.xx * p.xx + p.yx * p.yx;
        EXPECT_NEAR(p.xx * p.xy + p.yx * p.yy, 0, 1e-9 * scale2);
        EXPECT_NEAR(p.xy * p.xy + p.yy * p.yy, scale2, 1e-9 * scale2);
        EXPECT_LT(p.xx * p.yy - p.xy * p.yx, 0);
    }
}

TEST(RasterPlacement, EqualPointsPlaceNothing) {
    EXPECT_FALSE(SimilarityOf({3, 4, 10, 20}, {3, 4, 30, 40})) << "one pixel";
    EXPECT_FALSE(SimilarityOf({3, 4, 10, 20}, {5, 6, 10, 20})) << "one map position";
    EXPECT_FALSE(SimilarityOf({3, 4, 10, 20}, {3, 4, 10, 20}));
}

TEST(RasterPlacement, WhatIsNoFiniteNumberPlacesNothing) {
    for (const double bad : {kNaN, kInf, -kInf}) {
        EXPECT_FALSE(SimilarityOf({0, 0, bad, 0}, {10, 10, 0, 0}));
        EXPECT_FALSE(SimilarityOf({0, 0, 0, 0}, {10, 10, 0, bad}));
    }
    EXPECT_FALSE(SimilarityOf({0, 0, 1e300, 0}, {10, 10, 0, -1e300})) << "its area has no number";
}

TEST(RasterPlacement, TheInverseTakesBack) {
    const Affine a{5, 2, 1, -7, 0.5, -3};
    const auto back = Inverse(a);
    ASSERT_TRUE(back);
    double x = 11;
    double y = 13;
    a.Apply(x, y);
    ExpectAt(*back, x, y, 11, 13);
    EXPECT_FALSE(Inverse({0, 1, 2, 0, 2, 4})) << "a line";
    EXPECT_FALSE(Inverse({0, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(Inverse({kNaN, 1, 0, 0, 0, 1}));
}

TEST(RasterPlacement, APixelOfThePartShowsTheImagePixelUnderIt) {
    // A pixel of the image is two map units wide, and so is one of the device, with the image's corner at pixel (3, 2).
    RasterPart part{994, 2004, 1014, 1984, {0, 0, 10, 10}, 0, 0};
    const auto image = ImageOfPixels({1000, 2, 0, 2000, 0, -2}, 0, part);
    ASSERT_TRUE(image);
    ExpectAt(*image, 3, 2, 0, 0);
    ExpectAt(*image, 10, 10, 7, 8);
}

TEST(RasterPlacement, ThePendingOffsetMovesTheImageOnTheDevice) {
    RasterPart part{0, 0, 10, -10, {0, 0, 10, 10}, 0.25, -0.5};
    const auto image = ImageOfPixels({0, 1, 0, 0, 0, -1}, 0, part);
    ASSERT_TRUE(image);
    ExpectAt(*image, 0.25, -0.5, 0, 0);
}

TEST(RasterPlacement, APartWithoutWidthOrHeightShowsNothing) {
    EXPECT_FALSE(ImageOfPixels({0, 1, 0, 0, 0, -1}, 0, {0, 0, 0, -10, {0, 0, 10, 10}, 0, 0}));
    EXPECT_FALSE(ImageOfPixels({0, 1, 0, 0, 0, -1}, 0, {0, 0, 10, 0, {0, 0, 10, 10}, 0, 0}));
    EXPECT_FALSE(ImageOfPixels({0, 1, 0, 0, 0, -1}, 0, {0, 0, 10, -10, {5, 0, 5, 10}, 0, 0}));
}

// The drawing of vector data tells where a map position is on the device; the image must meet it at every angle.
TEST(RasterPlacement, ImageAndVectorDataMeetAtEveryRotation) {
    ViewParams view;
    view.Zoom = 2500;
    view.DotPerM = 3779;
    view.ScaleX = view.ScaleY = 1;
    const double originX = -830.5;
    const double originY = 417.25;
    const Rect strip{37, 11, 637, 491};
    RasterPart part{view.PixToWorldF(strip.left) + originX,
                    -(view.PixToWorldF(strip.top) + originY),
                    view.PixToWorldF(strip.right) + originX,
                    -(view.PixToWorldF(strip.bottom) + originY),
                    strip,
                    0.3,
                    -0.4};
    const auto placement = SimilarityOf({10, 20, -700, 300}, {900, 450, 120, -260});
    ASSERT_TRUE(placement);
    for (const double angle : {0.0, 1.0, 30.0, 90.0, 135.0, 180.0, 271.5, -45.0, 720.0}) {
        view.Rotate = angle;
        const DeviceTransform transform(view, originX, originY, part.PendX, part.PendY, 0, 0);
        const auto image = ImageOfPixels(*placement, angle, part);
        ASSERT_TRUE(image) << angle;
        for (const auto& [u, v] : {std::pair{0.0, 0.0}, {10.0, 20.0}, {900.0, 450.0}, {333.0, 77.0}, {-50.0, 1000.0}}) {
            double mapX = u;
            double mapY = v;
            placement->Apply(mapX, mapY);
            const DigPnt at = transform.ToDeviceF(mapX, mapY);
            ExpectAt(*image, at.x, at.y, u, v);
        }
    }
}

}  // namespace
}  // namespace orvane
