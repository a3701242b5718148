// Areas of overlays of simple polygons in general position, beside an independent library.
#include <geos_c.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "analysis/overlay.h"

namespace orvane {
namespace {

using Points = std::vector<DigPnt>;

/// Corners at ascending angles about a centre, each at a distance of its own: never crosses itself.
Points StarShaped(std::mt19937_64& random, int corners) {
    const auto unit = [&] { return static_cast<double>(random() >> 11) * 0x1p-53; };
    const double x = unit() * 60 - 30;
    const double y = unit() * 60 - 30;
    Points pts;
    for (int i = 0; i < corners; ++i) {
        const double angle = 6.283185307179586 * (i + 0.8 * unit()) / corners;
        const double reach = 40 + 40 * unit();
        pts.push_back({x + reach * std::cos(angle), y + reach * std::sin(angle), 0});
    }
    pts.push_back(pts.front());
    return pts;
}

class Peer {
public:
    Peer() : handle_(GEOS_init_r()) {}
    ~Peer() { GEOS_finish_r(handle_); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    double Area(const Points& a, const Points& b, bool isUnion) {
        GEOSGeometry* const ga = Polygon(a);
        GEOSGeometry* const gb = Polygon(b);
        GEOSGeometry* const result = isUnion ? GEOSUnion_r(handle_, ga, gb) : GEOSIntersection_r(handle_, ga, gb);
        double area = -1;
        EXPECT_EQ(GEOSArea_r(handle_, result, &area), 1);
        for (GEOSGeometry* g : {ga, gb, result}) GEOSGeom_destroy_r(handle_, g);
        return area;
    }

    /// The even-odd area of closed rings, whichever way they run.
    double EvenOddArea(const Points& pts) {
        GEOSGeometry* whole = GEOSGeom_createEmptyPolygon_r(handle_);
        std::size_t opener = 0;
        for (std::size_t i = 1; i < pts.size(); ++i) {
            if (i - opener < 2 || pts[i].x != pts[opener].x || pts[i].y != pts[opener].y) continue;
            GEOSGeometry* const ring = Polygon(Points(pts.data() + opener, pts.data() + i + 1));
            GEOSGeometry* const next = GEOSSymDifference_r(handle_, whole, ring);
            GEOSGeom_destroy_r(handle_, ring);
            GEOSGeom_destroy_r(handle_, whole);
            whole = next;
            opener = ++i;
        }
        double area = -1;
        EXPECT_EQ(GEOSArea_r(handle_, whole, &area), 1);
        GEOSGeom_destroy_r(handle_, whole);
        return area;
    }

private:
    GEOSGeometry* Polygon(const Points& pts) {
        GEOSCoordSequence* const places = GEOSCoordSeq_create_r(handle_, static_cast<unsigned>(pts.size()), 2);
        for (unsigned i = 0; i < pts.size(); ++i) GEOSCoordSeq_setXY_r(handle_, places, i, pts[i].x, pts[i].y);
        return GEOSGeom_createPolygon_r(handle_, GEOSGeom_createLinearRing_r(handle_, places), nullptr, 0);
    }
    GEOSContextHandle_t handle_;
};

TEST(OverlayAreaTest, SimplePolygonsInGeneralPositionHaveTheAreasOfAnotherLibrary) {
    Peer peer;
    std::mt19937_64 random(6);
    constexpr int kPairs = 1000;
    for (int n = 0; n < kPairs; ++n) {
        const Points a = StarShaped(random, 5 + static_cast<int>(random() % 60));
        const Points b = StarShaped(random, 5 + static_cast<int>(random() % 60));
        for (const bool isUnion : {false, true}) {
            Points result;
            ASSERT_TRUE(OverlayPolygons(a, b, isUnion ? OverlayMode::Union : OverlayMode::Intersection, result)) << n;
            const double expected = peer.Area(a, b, isUnion);
            EXPECT_NEAR(peer.EvenOddArea(result), expected, 1e-6 * expected) << n << (isUnion ? " union" : " intersection");
        }
    }
}

}  // namespace
}  // namespace orvane
