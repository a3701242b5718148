#include "platform/win32/reach.h"
// reach.h brings the system headers, which come first
#include <gtest/gtest.h>

#include <algorithm>

namespace orvane {
namespace {

constexpr std::int32_t kFar = 2000000000;

bool AllInReach(const std::vector<POINT>& pts) {
    return std::all_of(pts.begin(), pts.end(),
                       [](POINT p) { return p.x >= -kReach_px && p.x <= kReach_px && p.y >= -kReach_px && p.y <= kReach_px; });
}

/// The area of a ring by the trapezia under its sides.
double AreaOf(const std::vector<POINT>& ring) {
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const POINT a = ring[i];
        const POINT b = ring[(i + 1) % ring.size()];
        twice += static_cast<double>(a.x) * b.y - static_cast<double>(b.x) * a.y;
    }
    return twice < 0 ? -twice / 2 : twice / 2;
}

TEST(ReachTest, WhatIsInReachIsLeftAlone) {
    const Point pts[] = {{0, 0}, {kReach_px, -kReach_px}, {5, 5}};
    EXPECT_TRUE(IsInReach(pts, 3));
    std::vector<POINT> out;
    std::vector<DWORD> counts;
    CutLine(pts, 3, out, counts);
    ASSERT_EQ(counts, std::vector<DWORD>{3});
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(out[i].x, pts[i].x);
        EXPECT_EQ(out[i].y, pts[i].y);
    }
    out.clear();
    EXPECT_EQ(CutRing(pts, 3, out), 3);
}

TEST(ReachTest, ALineThatLeavesAndComesBackIsTwo) {
    const Point pts[] = {{0, 0}, {kFar, 0}, {kFar, 100}, {0, 100}};
    EXPECT_FALSE(IsInReach(pts, 4));
    std::vector<POINT> out;
    std::vector<DWORD> counts;
    CutLine(pts, 4, out, counts);
    EXPECT_EQ(counts, (std::vector<DWORD>{2, 2}));
    ASSERT_EQ(out.size(), 4u);
    EXPECT_EQ(out[1].x, kReach_px);
    EXPECT_EQ(out[1].y, 0);
    EXPECT_EQ(out[2].x, kReach_px);
    EXPECT_EQ(out[2].y, 100);
}

TEST(ReachTest, ALineThatPassesByLeavesNothing) {
    const Point pts[] = {{-kFar, kFar}, {kFar, kFar}, {kFar, INT32_MIN}, {INT32_MAX, INT32_MIN}};
    std::vector<POINT> out;
    std::vector<DWORD> counts;
    CutLine(pts, 4, out, counts);
    EXPECT_TRUE(out.empty());
    EXPECT_TRUE(counts.empty());
}

TEST(ReachTest, TheEndsOfACutLineLieOnIt) {
    const Point pts[] = {{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}};
    std::vector<POINT> out;
    std::vector<DWORD> counts;
    CutLine(pts, 2, out, counts);
    ASSERT_EQ(out.size(), 2u);
    for (const POINT p : out) EXPECT_EQ(p.x, p.y);
    EXPECT_EQ(out[0].x, -kReach_px);
    EXPECT_EQ(out[1].x, kReach_px);
}

TEST(ReachTest, ARingRoundEverythingBecomesTheWholeSquare) {
    const Point ring[] = {{-kFar, -kFar}, {kFar, -kFar}, {kFar, kFar}, {-kFar, kFar}};
    std::vector<POINT> out;
    EXPECT_GE(CutRing(ring, 4, out), 4);
    EXPECT_TRUE(AllInReach(out));
    EXPECT_EQ(AreaOf(out), 4.0 * kReach_px * kReach_px);
}

TEST(ReachTest, ARingFarAwayIsNone) {
    const Point ring[] = {{kFar, 0}, {kFar + 10, 0}, {kFar, 10}};
    std::vector<POINT> out;
    EXPECT_EQ(CutRing(ring, 3, out), 0);
    EXPECT_TRUE(out.empty());
}

TEST(ReachTest, ACutTriangleKeepsTheAreaThatIsInReach) {
    // The half plane right of x = y, cut from a triangle whose corners are all far outside.
    const Point ring[] = {{-kFar, -kFar}, {kFar, -kFar}, {kFar, kFar}};
    std::vector<POINT> out;
    CutRing(ring, 3, out);
    EXPECT_TRUE(AllInReach(out));
    EXPECT_NEAR(AreaOf(out), 2.0 * kReach_px * kReach_px, 1.0 * kReach_px);
}

}  // namespace
}  // namespace orvane
