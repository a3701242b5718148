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

/// A back with teeth that point upward; `slant` to the right for each unit up.
Points Comb(Maker& maker, double x, double y, int teeth, double slant, bool ragged, bool pointed) {
    Points pts{{x, y, 0}, {x + 4 * teeth, y, 0}};
    for (int i = teeth; i-- > 0;) {
        const double left = x + 4 * i;
        const double up = 40 + (ragged ? maker.Below(1000000) * 1e-5 : 0);
        if (!pointed) pts.push_back({left + 2 + slant * up, y + up, 0});
        pts.push_back({left + slant * up, y + up, 0});
        pts.push_back({left, y + 3, 0});
        if (i > 0 && !pointed) pts.push_back({left - 2, y + 3, 0});
    }
    pts.push_back(pts.front());
    return pts;
}

/// Squares side by side, each a ring of its own; every other one runs the other way round.
Points Row(double x, double y, int count) {
    Points pts;
    for (int i = 0; i < count; ++i) {
        const double left = x + 10 * i;
        Points square{{left, y, 0}, {left + 8, y, 0}, {left + 8, y + 8, 0}, {left, y + 8, 0}, {left, y, 0}};
        if (i % 2 == 1) square = {square.rbegin(), square.rend()};
        pts.insert(pts.end(), square.begin(), square.end());
    }
    return pts;
}

void ExpectAsPlain(const Points& a, const Points& b, std::size_t leastPoints) {
    for (const OverlayMode mode : {OverlayMode::Intersection, OverlayMode::Union}) {
        Points got;
        OverlayPolygons(a, b, mode, got);
        EXPECT_TRUE(SameBits(got, plain::Overlay(a, b, mode == OverlayMode::Union))) << "mode " << static_cast<int>(mode);
        EXPECT_GT(got.size(), leastPoints);
    }
}

TEST(OverlayPropertyTest, CombsWhoseRaysMeetManyTeethGiveWhatThePlainLoopsGive) {
    Maker maker(91);
    for (const bool pointed : {false, true}) {
        for (const bool ragged : {false, true}) {
            for (const double slant : {0.0, 0.37}) {
                SCOPED_TRACE(testing::Message() << "pointed " << pointed << " ragged " << ragged << " slant " << slant);
                constexpr int kTeeth = 110;  // so many that the rays' walks are given up for the index
                const Points a = Comb(maker, 0, 0, kTeeth, slant, ragged, pointed);
                const Points b = Comb(maker, 1.5, 4, kTeeth, slant, ragged, pointed);
                ExpectAsPlain(a, b, 4 * kTeeth);
            }
        }
    }
}

TEST(OverlayPropertyTest, CombsAtTheSameHeightsGiveWhatThePlainLoopsGive) {
    Maker maker(92);
    constexpr int kTeeth = 110;
    ExpectAsPlain(Comb(maker, 0, 0, kTeeth, 0, false, false), Comb(maker, 1, 0, kTeeth, 0, false, false), 4 * kTeeth);
}

TEST(OverlayPropertyTest, ManyPartsInARowGiveWhatThePlainLoopsGiveTurnedOneByOne) {
    constexpr int kParts = 150;
    const Points row = Row(0, 0, kParts);
    ExpectAsPlain(row, Row(5, 4, kParts), 5 * kParts);
    ExpectAsPlain(row, Row(5, 0, kParts), 5 * kParts);
    ExpectAsPlain(row, {{-5, -5, 0}, {4e3, -5, 0}, {4e3, 6, 0}, {-5, 6, 0}, {-5, -5, 0}}, 4 * kParts);
}

}  // namespace
}  // namespace orvane
