// Random small cases of the overlay against the plain loops, point for point. ORVANE_OVERLAY_CASES sets how many.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "analysis/overlay.h"
#include "tests/analysis/plain_overlay.h"

namespace orvane {
namespace {

using plain::Points;

int CaseCnt() {
    const char* told = std::getenv("ORVANE_OVERLAY_CASES");
    return told == nullptr ? 3000 : std::atoi(told);
}

/// Makes polygons that touch, share edges and vertices, cross themselves, stand in each other, or are no polygons at all.
class Maker {
public:
    explicit Maker(std::uint64_t seed) : random_(seed) {}

    int Below(int n) { return static_cast<int>(random_() % static_cast<std::uint64_t>(n)); }

    /// `kind` 0 a coarse grid, 1 a finer one, 2 a grid with sixths, 3 anywhere, 4 as 0 but huge, 5 near-coincident places.
    double Coordinate(int kind) {
        switch (kind) {
            case 0:
                return Below(6);
            case 1:
                return Below(40) - 20;
            case 2:
                return Below(24) / 6.0;
            case 3:
                return static_cast<double>(random_() >> 11) * 0x1p-53 * 10 - 5;
            case 4:
                return Below(6) * 1e9 - 3e9;
            default:
                return Below(4) + (Below(3) - 1) * 1e-6;
        }
    }
    void AddRing(int kind, Points& pts) {
        const std::size_t first = pts.size();
        if (Below(3) == 0) {
            const double x = Coordinate(kind), y = Coordinate(kind);
            const double w = Coordinate(kind) - x, h = Coordinate(kind) - y;
            for (const auto& [dx, dy] : {std::pair{0.0, 0.0}, {w, 0.0}, {w, h}, {0.0, h}}) pts.push_back({x + dx, y + dy, 7});
        } else {
            const int n = 3 + Below(6);
            for (int i = 0; i < n; ++i) pts.push_back({Coordinate(kind), Coordinate(kind), 7});
        }
        if (Below(20) != 0) pts.push_back(pts[first]);
    }
    Points Polygon(int kind) {
        Points pts;
        const int rings = 1 + (Below(2) == 0 ? Below(3) : 0);
        for (int i = 0; i < rings; ++i) AddRing(kind, pts);
        if (Below(60) == 0) pts[static_cast<std::size_t>(Below(static_cast<int>(pts.size())))].x = std::nan("");
        if (Below(60) == 0) pts[static_cast<std::size_t>(Below(static_cast<int>(pts.size())))].y = INFINITY;
        return pts;
    }
    /// Another polygon with rings, vertices or a shift of this one.
    Points Relative(const Points& of, int kind) {
        Points pts = Polygon(kind);
        switch (Below(6)) {
            case 0:
                return of;
            case 1:
                pts.insert(pts.begin(), of.begin(), of.end());
                break;
            case 2:
                pts.insert(pts.end(), of.rbegin(), of.rend());
                break;
            case 3:
                for (DigPnt& p : pts) {
                    if (Below(2) == 0) p = of[static_cast<std::size_t>(Below(static_cast<int>(of.size())))];
                }
                break;
            default:
                break;
        }
        return pts;
    }

private:
    std::mt19937_64 random_;
};

std::string Text(const Points& pts) {
    std::string text;
    char place[80];
    for (const DigPnt& p : pts) {
        std::snprintf(place, sizeof place, "{%.17g, %.17g}, ", p.x, p.y);
        text += place;
    }
    return text;
}

bool SameBits(const Points& a, const Points& b) {
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(DigPnt)) == 0);
}

TEST(OverlayPropertyTest, RandomPolygonsGiveWhatThePlainLoopsGivePointForPoint) {
    const int cases = CaseCnt();
    int results = 0;
    int several = 0;
    for (int n = 0; n < cases; ++n) {
        Maker maker(static_cast<std::uint64_t>(n) * 2654435761u + 17);
        const int kind = maker.Below(6);
        const Points a = maker.Polygon(kind);
        const Points b = maker.Relative(a, kind);
        for (const OverlayMode mode : {OverlayMode::Intersection, OverlayMode::Union}) {
            const Points expected = plain::Overlay(a, b, mode == OverlayMode::Union);
            Points got;
            const bool any = OverlayPolygons(a, b, mode, got);
            EXPECT_EQ(any, !got.empty());
            ASSERT_TRUE(SameBits(got, expected))
                << "case " << n << " mode " << static_cast<int>(mode) << "\nA " << Text(a) << "\nB " << Text(b) << "\ngot      "
                << Text(got) << "\nexpected " << Text(expected);
            if (!got.empty()) ++results;
            if (got.size() > 8) ++several;
        }
    }
    EXPECT_GT(results, cases / 2);
    EXPECT_GT(several, cases / 10);
}

}  // namespace
}  // namespace orvane
