#include "geo/fast_plane.h"

#include <array>
#include <cmath>

#include "geo/ellipsoid.h"
#include "geo/zone_facts.h"

namespace orvane {
namespace {

// Within these the terms beyond the last one summed, and so their roundings, stay small.
constexpr double kMostLatitude = 1.19;   // radians
constexpr double kMostLongitude = 0.09;  // radians from the meridian
constexpr double kMostNorth_m = 1.5e6;
constexpr double kMostEast_m = 4e5;

struct SinCos {
    double s = 0;
    double c = 0;
};

SinCos Of(double angle) { return {std::sin(angle), std::cos(angle)}; }

/// The sine and cosine of an angle a little further on: of 3e-5 radians at most, whose fourth power is below all digits.
SinCos Turned(const SinCos& from, double by) {
    const double s = by - by * by * by * (1.0 / 6);
    const double c = 1 - by * by / 2;
    return {from.s * c + from.c * s, from.c * c - from.s * s};
}

/// The meridian's arc, the sines of the even multiples summed from the last by the recurrence of Clenshaw.
double Arc(double latitude, const SinCos& at) {
    const double twice = 2 * (at.c * at.c - at.s * at.s);
    double next = 0;
    double sum = kMeridian[7];
    for (int k = 6; k >= 1; --k) {
        const double here = kMeridian[k] + twice * sum - next;
        next = sum;
        sum = here;
    }
    return kMeridian[0] * latitude + sum * 2 * at.s * at.c;
}

/// Radians of latitude to a metre of meridian.
double LatitudeRate(const SinCos& at) {
    const double w2 = 1 - kEccentricity2 * at.s * at.s;
    return w2 * std::sqrt(w2) * (1 / ((1 - kEccentricity2) * kSemiMajorAxis));
}

/// Where the search for the foot begins: a zone's origin.
struct Start {
    SinCos at;
    double rate = 0;
};

const Start& StartOf(std::int32_t zone) {
    static const auto all = [] {
        std::array<Start, kLastZone - kFirstZone + 1> made;
        for (std::int32_t each = kFirstZone; each <= kLastZone; ++each) {
            const SinCos at = Of(FactsOf(each)->latitude);
            made[static_cast<std::size_t>(each - kFirstZone)] = {at, LatitudeRate(at)};
        }
        return made;
    }();
    return all[static_cast<std::size_t>(zone - kFirstZone)];
}

struct Foot {
    double latitude = 0;
    SinCos at;
};

/// The steps of GeoConv::FootLatitude one by one, because where they end is part of the result.
std::optional<Foot> FootOf(const ZoneFacts& origin, const Start& start, double planeX) {
    constexpr double kCloseEnough = 2e-5;  // radians
    constexpr double kDoubt = 1e-12;
    constexpr int kSteps = 4;
    const double arc = planeX * (1 / kPlaneScale) + origin.arc;
    Foot foot{origin.latitude, start.at};
    double rate = start.rate;
    double d = origin.arc - arc;
    for (int k = 0; k < kSteps; ++k) {
        const double by = -d * rate;
        const double moved = std::fabs(by);
        if (std::fabs(moved - kCloseEnough) < kDoubt) return std::nullopt;
        foot.latitude += by;
        if (moved < kCloseEnough) {
            foot.at = Turned(foot.at, by);
            return foot;
        }
        foot.at = Of(foot.latitude);
        if (k + 1 == kSteps) break;
        rate = LatitudeRate(foot.at);
        d = Arc(foot.latitude, foot.at) - arc;
    }
    return foot;
}

}  // namespace

std::optional<PlaneXY> FastGeoToPlane(const GeoRad& geo, std::int32_t zone) {
    const ZoneFacts* const origin = FactsOf(zone);
    if (origin == nullptr) return std::nullopt;
    const double dl = geo.longitude - origin->longitude;
    // Written so that what is not a number fails as well.
    if (!(std::fabs(geo.latitude) <= kMostLatitude && std::fabs(dl) <= kMostLongitude)) return std::nullopt;
    const SinCos at = Of(geo.latitude);
    const double c2 = at.c * at.c;
    const double t = at.s / at.c;
    const double t2 = t * t;
    const double eta2 = kSecondEccentricity2 * c2;
    const double N = kPolarRadius / std::sqrt(1 + eta2);
    const double l2 = c2 * dl * dl;
    const double x8 = 1385 + t2 * (-3111 + t2 * (543 - t2));
    const double x6 = 61 + t2 * (-58 + t2) + eta2 * (270 - 330 * t2);
    const double x4 = 5 - t2 + eta2 * (9 + 4 * eta2);
    const double y7 = 61 + t2 * (-479 + t2 * (179 - t2));
    const double y5 = 5 + t2 * (-18 + t2) + eta2 * (14 - 58 * t2);
    const double y3 = 1 - t2 + eta2;
    const double north = N * t * l2 * 0.5 * (1 + l2 * (1.0 / 12) * (x4 + l2 * (1.0 / 30) * (x6 + l2 * (1.0 / 56) * x8)));
    const double east = N * at.c * dl * (1 + l2 * (1.0 / 6) * (y3 + l2 * (1.0 / 20) * (y5 + l2 * (1.0 / 42) * y7)));
    return PlaneXY{kPlaneScale * (Arc(geo.latitude, at) - origin->arc + north), kPlaneScale * east};
}

std::optional<GeoRad> FastPlaneToGeo(const PlaneXY& plane, std::int32_t zone) {
    const ZoneFacts* const origin = FactsOf(zone);
    if (origin == nullptr || !(std::fabs(plane.x) <= kMostNorth_m && std::fabs(plane.y) <= kMostEast_m)) return std::nullopt;
    const std::optional<Foot> foot = FootOf(*origin, StartOf(zone), plane.x);
    if (!foot) return std::nullopt;
    const double c = foot->at.c;
    const double eta2 = kSecondEccentricity2 * c * c;
    const double root = std::sqrt(1 + eta2);
    const double perC = 1 / c;
    const double t = foot->at.s * perC;
    const double t2 = t * t;
    const double q = plane.y * root * (1 / (kPlaneScale * kPolarRadius));  // east by the radius N
    const double q2 = q * q;
    const double lat8 = 1385 + t2 * (3633 + t2 * (4095 + 1575 * t2));
    const double lat6 = 61 + t2 * (90 + 45 * t2) + eta2 * (107 - t2 * (162 + 45 * t2));
    const double lat4 = 5 + 3 * t2 + eta2 * (6 - 6 * t2 - eta2 * (3 + 9 * t2));
    const double lon7 = 61 + t2 * (662 + t2 * (1320 + 720 * t2));
    const double lon5 = 5 + t2 * (28 + 24 * t2) + eta2 * (6 + 8 * t2);
    const double lon3 = 1 + 2 * t2 + eta2;
    const double latitude =
        t * q2 * 0.5 * (-(1 + eta2) + q2 * (1.0 / 12) * (lat4 - q2 * (1.0 / 30) * (lat6 - q2 * (1.0 / 56) * lat8)));
    const double dl = q * perC * (1 - q2 * (1.0 / 6) * (lon3 - q2 * (1.0 / 20) * (lon5 - q2 * (1.0 / 42) * lon7)));
    return GeoRad{foot->latitude + latitude, origin->longitude + dl};
}

}  // namespace orvane
