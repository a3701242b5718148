#include "platform/point_in_region.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace orvane {
namespace {

constexpr std::int32_t kSide = 24;
constexpr std::int32_t kLow = (std::numeric_limits<std::int32_t>::min)();
constexpr std::int32_t kHigh = (std::numeric_limits<std::int32_t>::max)();
using Raster = std::vector<bool>;  // kSide rows of kSide pixels

/// Fills by spans: each row collects where sides cross it, sorts the places and fills between the odd and the even ones.
Raster ScanFilled(const std::vector<std::vector<Point>>& rings) {
    Raster raster(kSide * kSide);
    for (std::int32_t row = 0; row < kSide; ++row) {
        std::vector<double> crossings;
        for (const auto& ring : rings) {
            for (std::size_t i = 0; i < ring.size(); ++i) {
                const Point a = ring[i];
                const Point b = ring[(i + 1) % ring.size()];
                if ((a.y <= row) == (b.y <= row)) continue;
                crossings.push_back(a.x + static_cast<double>(row - a.y) * (b.x - a.x) / (b.y - a.y));
            }
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            for (std::int32_t x = 0; x < kSide; ++x) {
                if (x >= crossings[i] - 1e-9 && x < crossings[i + 1] - 1e-9)
                    raster[static_cast<std::size_t>(row * kSide + x)] = true;
            }
        }
    }
    return raster;
}

/// How far a pixel is from the nearest side, so that pixels on the edge can be told apart.
double EdgeDistance(const std::vector<std::vector<Point>>& rings, double x, double y) {
    double least = 1e9;
    for (const auto& ring : rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const Point a = ring[i];
            const Point b = ring[(i + 1) % ring.size()];
            const double dx = b.x - a.x;
            const double dy = b.y - a.y;
            const double square = dx * dx + dy * dy;
            const double t = square == 0 ? 0 : std::clamp(((x - a.x) * dx + (y - a.y) * dy) / square, 0.0, 1.0);
            least = (std::min)(least, std::hypot(a.x + t * dx - x, a.y + t * dy - y));
        }
    }
    return least;
}

void ExpectSameAsScan(const std::vector<std::vector<Point>>& rings, int shape) {
    std::vector<Point> pts;
    std::vector<std::int32_t> counts;
    for (const auto& ring : rings) {
        pts.insert(pts.end(), ring.begin(), ring.end());
        counts.push_back(static_cast<std::int32_t>(ring.size()));
    }
    const Raster scan = ScanFilled(rings);
    for (std::int32_t y = 0; y < kSide; ++y) {
        for (std::int32_t x = 0; x < kSide; ++x) {
            if (EdgeDistance(rings, x, y) < 1e-9) continue;
            const bool inside = PtInPolyPolygon(pts.data(), counts.data(), static_cast<std::int32_t>(counts.size()), {x, y});
            ASSERT_EQ(inside, scan[static_cast<std::size_t>(y * kSide + x)]) << "shape " << shape << " at " << x << ", " << y;
            if (rings.size() == 1) {
                ASSERT_EQ(PtInPolygon(pts.data(), counts[0], {x, y}), inside);
            }
        }
    }
}

TEST(PointInRegion, PolygonsThatMayCrossThemselvesHoldThePixelsOfAScanConversion) {
    std::mt19937 random(5);
    std::uniform_int_distribution<std::int32_t> place(-3, kSide + 3), corners(1, 9), few(0, 3);
    for (int shape = 0; shape < 3000; ++shape) {
        std::vector<Point> ring;
        for (std::int32_t n = corners(random); n-- > 0;) {
            // Now and then a corner in line with the one before, or on it.
            Point p{place(random), place(random)};
            if (!ring.empty() && few(random) == 0) p.y = ring.back().y;
            if (!ring.empty() && few(random) == 0) p.x = ring.back().x;
            ring.push_back(p);
        }
        ExpectSameAsScan({ring}, shape);
    }
}

TEST(PointInRegion, WhatLiesInTwoRingsIsAHole) {
    std::mt19937 random(6);
    std::uniform_int_distribution<std::int32_t> place(0, kSide), corners(3, 6), rings(2, 4);
    for (int shape = 0; shape < 1000; ++shape) {
        std::vector<std::vector<Point>> made(static_cast<std::size_t>(rings(random)));
        for (auto& ring : made) {
            for (std::int32_t n = corners(random); n-- > 0;) ring.push_back({place(random), place(random)});
        }
        ExpectSameAsScan(made, shape);
    }
}

TEST(PointInRegion, LeftAndTopEdgesLieInsideRightAndBottomOutside) {
    const Point box[] = {{2, 3}, {6, 3}, {6, 8}, {2, 8}};
    for (std::int32_t y = 0; y < 12; ++y) {
        for (std::int32_t x = 0; x < 12; ++x) {
            EXPECT_EQ(PtInPolygon(box, 4, {x, y}), x >= 2 && x < 6 && y >= 3 && y < 8) << x << ", " << y;
        }
    }
}

TEST(PointInRegion, PolygonsWithoutAreaHoldNothing) {
    const Point line[] = {{0, 0}, {10, 10}};
    const Point spot[] = {{4, 4}, {4, 4}, {4, 4}};
    for (std::int32_t i = 0; i < 11; ++i) {
        EXPECT_FALSE(PtInPolygon(line, 2, {i, i}));
        EXPECT_FALSE(PtInPolygon(spot, 3, {i, i}));
    }
    EXPECT_FALSE(PtInPolygon(nullptr, 0, {0, 0}));
    EXPECT_FALSE(PtInPolyPolygon(nullptr, nullptr, 0, {0, 0}));
}

TEST(PointInRegion, TheGreatestCoordinatesStayExact) {
    const Point half[] = {{kLow, kLow}, {kHigh, kHigh}, {kLow, kHigh}};  // left of and below the main diagonal
    for (const std::int32_t v : {kLow, -5, 0, 7, kHigh - 1}) {
        EXPECT_EQ(PtInPolygon(half, 3, {v, v}), false) << "the right edge is outside";
        EXPECT_TRUE(v == kLow || PtInPolygon(half, 3, {v - 1, v}));
        EXPECT_FALSE(PtInPolygon(half, 3, {v + 1, v}));
    }
    const Point mirrored[] = {{kHigh, kLow}, {kLow, kHigh}, {kHigh, kHigh}};  // right of and below the other diagonal
    EXPECT_TRUE(PtInPolygon(mirrored, 3, {-1, 0}));
    EXPECT_FALSE(PtInPolygon(mirrored, 3, {-2, 0}));
    EXPECT_TRUE(PtInPolygon(mirrored, 3, {kHigh - 1, 10}));
}

TEST(PointInRegion, AnEllipseHoldsThePixelsWhoseCentresItHolds) {
    for (std::int32_t width = 0; width < 12; ++width) {
        for (std::int32_t height = 0; height < 12; ++height) {
            const Rect box{5, 6, 5 + width, 6 + height};
            const Rect turned{box.right, box.bottom, box.left, box.top};
            for (std::int32_t y = 0; y < kSide; ++y) {
                for (std::int32_t x = 0; x < kSide; ++x) {
                    const double u = (x + 0.5 - (5 + width / 2.0)) / (width / 2.0);
                    const double v = (y + 0.5 - (6 + height / 2.0)) / (height / 2.0);
                    if (std::fabs(u * u + v * v - 1) < 1e-9) continue;
                    const bool inside = width > 0 && height > 0 && u * u + v * v < 1;
                    ASSERT_EQ(PtInEllipse(box, {x, y}), inside) << width << " x " << height << " at " << x << ", " << y;
                    ASSERT_EQ(PtInEllipse(turned, {x, y}), inside) << "corners in the other order";
                }
            }
        }
    }
}

TEST(PointInRegion, AnEllipseOfAnySizeIsAnswered) {
    EXPECT_TRUE(PtInEllipse({kLow, kLow, kHigh, kHigh}, {0, 0}));
    EXPECT_FALSE(PtInEllipse({kLow, kLow, kHigh, kHigh}, {kLow, kLow}));
    EXPECT_TRUE(PtInEllipse({kLow, 0, kHigh, 2}, {1000, 1}));
    const Rect wide{-40000, -40000, 40000, 40000};
    EXPECT_TRUE(PtInEllipse(wide, {28284, 28283})) << "just inside at 45 degrees";
    EXPECT_FALSE(PtInEllipse(wide, {28286, 28286}));
}

}  // namespace
}  // namespace orvane
