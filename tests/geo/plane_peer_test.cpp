// The plane zones beside an independent transverse Mercator: the library PROJ, on the same ellipsoid with the same origins and
// scale, without a shift of datum. The limits are those within which the zones are used.
#include <gtest/gtest.h>
#include <proj.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include "geo/geo_conv.h"

namespace orvane {
namespace {

constexpr double kNorth_m = 700000;
constexpr double kEast_m = 160000;
constexpr double kLimit_m = 0.0002;
constexpr double kRadius_m = 6378000;  // turns small angles into metres, on the safe side
constexpr double kSecond = 3.14159265358979323846 / 180 / 3600;

const GeoConv conv;

class Peer {
public:
    explicit Peer(int zone) {
        const GeoDms origin = *conv.ZoneOrigin(zone);
        const std::string text = "+proj=tmerc +k=0.9999 +ellps=bessel +lat_0=" + std::to_string(origin.latitude.degrees) +
                                 " +lon_0=" + std::to_string(origin.longitude.degrees) + "d" +
                                 std::to_string(origin.longitude.minutes) + "m";
        way_.reset(proj_create(nullptr, text.c_str()));
    }
    bool Ok() const { return way_ != nullptr; }
    PlaneXY Forward(const GeoRad& geo) const {
        const PJ_COORD out = proj_trans(way_.get(), PJ_FWD, proj_coord(geo.longitude, geo.latitude, 0, 0));
        return {out.xy.y, out.xy.x};
    }
    GeoRad Inverse(const PlaneXY& plane) const {
        const PJ_COORD out = proj_trans(way_.get(), PJ_INV, proj_coord(plane.y, plane.x, 0, 0));
        return {out.lp.phi, out.lp.lam};
    }

private:
    struct Destroy {
        void operator()(PJ* way) const { proj_destroy(way); }
    };
    std::unique_ptr<PJ, Destroy> way_;
};

/// Calls `visit` with a grid of places over the zone, the rim and the axes included.
template <class Visit>
void ForEachPlace(Visit visit) {
    constexpr int kSteps = 20;
    for (int i = -kSteps; i <= kSteps; ++i) {
        for (int j = -kSteps; j <= kSteps; ++j) visit(PlaneXY{kNorth_m * i / kSteps, kEast_m * j / kSteps});
    }
}

/// Whether the four numbers are those of the peer's angle, or its angle lies within the limit of an edge between two of them.
bool SameNumbers(const Dms& own, double peer) {
    const double units = peer / kSecond * 10000;
    const double edge = std::fabs(units - std::floor(units) - 0.5);
    const auto rounded = static_cast<long long>(std::floor(units + 0.5));
    const long long told = ((own.degrees * 60LL + own.minutes) * 60 + own.seconds) * 10000 + own.tenThousandths;
    const double limit = kLimit_m / kRadius_m / kSecond * 10000;
    return told == rounded || (edge <= limit && std::llabs(told - rounded) <= 1);
}

class PlanePeerTest : public testing::TestWithParam<int> {};

TEST_P(PlanePeerTest, ForwardAgreesToAFifthOfAMillimetre) {
    const Peer peer(GetParam());
    ASSERT_TRUE(peer.Ok());
    double north = 0;
    double east = 0;
    ForEachPlace([&](const PlaneXY& place) {
        const GeoRad geo = peer.Inverse(place);
        const PlaneXY theirs = peer.Forward(geo);
        const PlaneXY own = *conv.GeoToPlane(geo, GetParam());
        north = (std::max)(north, std::fabs(own.x - theirs.x));
        east = (std::max)(east, std::fabs(own.y - theirs.y));
    });
    EXPECT_LE(north, kLimit_m);
    EXPECT_LE(east, kLimit_m);
    RecordProperty("north_mm", std::to_string(north * 1000));
    RecordProperty("east_mm", std::to_string(east * 1000));
}

TEST_P(PlanePeerTest, InverseAgreesToAFifthOfAMillimetreBeforeItIsRounded) {
    const Peer peer(GetParam());
    double north = 0;
    double east = 0;
    ForEachPlace([&](const PlaneXY& place) {
        const GeoRad theirs = peer.Inverse(place);
        const GeoRad own = *conv.PlaneToGeoRad(place, GetParam());
        north = (std::max)(north, std::fabs(own.latitude - theirs.latitude) * kRadius_m);
        east = (std::max)(east, std::fabs(own.longitude - theirs.longitude) * kRadius_m);
    });
    EXPECT_LE(north, kLimit_m);
    EXPECT_LE(east, kLimit_m);
    RecordProperty("north_mm", std::to_string(north * 1000));
    RecordProperty("east_mm", std::to_string(east * 1000));
}

TEST_P(PlanePeerTest, InverseRoundsToTheSameTenThousandthsSaveAtAnEdge) {
    const Peer peer(GetParam());
    int others = 0;
    ForEachPlace([&](const PlaneXY& place) {
        const GeoRad theirs = peer.Inverse(place);
        const GeoDms own = *conv.PlaneToGeo(place, GetParam());
        others += !SameNumbers(own.latitude, theirs.latitude) || !SameNumbers(own.longitude, theirs.longitude);
    });
    EXPECT_EQ(others, 0);
}

INSTANTIATE_TEST_SUITE_P(Zones, PlanePeerTest, testing::Range(1, 20),
                         [](const auto& zone) { return "Zone" + std::to_string(zone.param); });

}  // namespace
}  // namespace orvane
