// The plane rectangular zones: transverse Mercator by the series of Gauss and Krueger, ellipsoid to plane and back.
//
// Terms are summed in one fixed order, because their last bits go into stored coordinates. What depends on the zone alone is
// worked out once.
#include <array>
#include <cmath>

#include "geo/ellipsoid.h"
#include "geo/geo_conv.h"
#include "geo/zone_facts.h"

namespace orvane {
namespace {

/// Degrees of latitude, and degrees and minutes of longitude.
struct ZoneRow {
    std::int32_t latitude;
    std::int32_t longitude;
    std::int32_t minutes;
};

constexpr std::array<ZoneRow, 19> kZones = {{
    {33, 129, 30}, {33, 131, 0},  {36, 132, 10}, {33, 133, 30}, {36, 134, 20}, {36, 136, 0},  {36, 137, 10},
    {36, 138, 30}, {36, 139, 50}, {40, 140, 50}, {44, 140, 15}, {44, 142, 15}, {44, 144, 15}, {26, 142, 0},
    {26, 127, 30}, {26, 124, 0},  {26, 131, 0},  {20, 136, 0},  {28, 154, 0},
}};

/// Powers of the scale on the central meridian.
struct ScalePowers {
    double m2 = std::pow(kPlaneScale, 2), m3 = std::pow(kPlaneScale, 3), m4 = std::pow(kPlaneScale, 4),
           m5 = std::pow(kPlaneScale, 5), m6 = std::pow(kPlaneScale, 6), m7 = std::pow(kPlaneScale, 7),
           m8 = std::pow(kPlaneScale, 8);
};

const ScalePowers& Scale() {
    static const ScalePowers powers;
    return powers;
}

double FootFrom(const GeoConv& conv, double start, double originArc, double planeX, double scale) {
    constexpr double kCloseEnough = 2e-5;  // radians; the step that is this short has made up for the rest
    constexpr int kSteps = 4;
    const double arc = planeX / scale + originArc;
    double latitude = start;
    for (int k = 0; k < kSteps; ++k) {
        const double d = conv.MeridianArc(latitude) - arc;
        const double curve = std::pow(1.0 - kEccentricity2 * std::pow(std::sin(latitude), 2), 1.5);
        const double next = latitude - d * curve / ((1.0 - kEccentricity2) * kSemiMajorAxis);
        const double moved = std::fabs(next - latitude);
        latitude = next;
        if (moved < kCloseEnough) break;
    }
    return latitude;
}

}  // namespace

const ZoneFacts* FactsOf(std::int32_t zone) {
    static const auto facts = [] {
        const GeoConv conv;
        std::array<ZoneFacts, kZones.size()> made;
        for (std::size_t i = 0; i < made.size(); ++i) {
            const GeoDms origin = *conv.ZoneOrigin(static_cast<std::int32_t>(i) + kFirstZone);
            made[i].latitude = conv.DmsToRad(origin.latitude);
            made[i].longitude = conv.DmsToRad(origin.longitude);
            made[i].arc = conv.MeridianArc(made[i].latitude);
        }
        return made;
    }();
    if (zone < kFirstZone || zone > kLastZone) return nullptr;
    return &facts[static_cast<std::size_t>(zone - kFirstZone)];
}

std::optional<GeoDms> GeoConv::ZoneOrigin(std::int32_t zone) const {
    if (zone < kFirstZone || zone > kLastZone) return std::nullopt;
    const ZoneRow& row = kZones[static_cast<std::size_t>(zone - kFirstZone)];
    return GeoDms{{row.latitude, 0, 0, 0}, {row.longitude, row.minutes, 0, 0}};
}

double GeoConv::MeridianArc(double latitude) const {
    return kMeridian[0] * latitude + kMeridian[1] * std::sin(2 * latitude) + kMeridian[2] * std::sin(4 * latitude) +
           kMeridian[3] * std::sin(6 * latitude) + kMeridian[4] * std::sin(8 * latitude) +
           kMeridian[5] * std::sin(10 * latitude) + kMeridian[6] * std::sin(12 * latitude) +
           kMeridian[7] * std::sin(14 * latitude);
}

Curvature GeoConv::PrimeRadius(double latitude) const {
    const double eta2 = kSecondEccentricity2 * std::pow(std::cos(latitude), 2);
    return {kPolarRadius / std::sqrt(1.0 + eta2), eta2};
}

double GeoConv::FootLatitude(double start, double originLatitude, double planeX, double scale) const {
    return FootFrom(*this, start, MeridianArc(originLatitude), planeX, scale);
}

std::optional<PlaneXY> GeoConv::GeoToPlane(const GeoRad& geo, std::int32_t zone) const {
    const ZoneFacts* const origin = FactsOf(zone);
    if (origin == nullptr || !std::isfinite(geo.latitude) || !std::isfinite(geo.longitude)) return std::nullopt;
    const double S0 = origin->arc;
    const double S = MeridianArc(geo.latitude);
    const auto [N, eta2] = PrimeRadius(geo.latitude);
    const double t = std::tan(geo.latitude);
    const double co = std::cos(geo.latitude);
    const double dl = geo.longitude - origin->longitude;
    const double t2 = std::pow(t, 2);
    const double t4 = std::pow(t, 4);
    const double t6 = std::pow(t, 6);
    const double X =
        kPlaneScale * ((S - S0) + N * std::pow(co, 2) / 2 * t * std::pow(dl, 2) +
                       N * std::pow(co, 4) / 24 * t * (5 - t2 + 9 * eta2 + 4 * std::pow(eta2, 2)) * std::pow(dl, 4) -
                       N * std::pow(co, 6) / 720 * t * (-61 + 58 * t2 - t4 - 270 * eta2 + 330 * t2 * eta2) * std::pow(dl, 6) -
                       N * std::pow(co, 8) / 40320 * t * (-1385 + 3111 * t2 - 543 * t4 + t6) * std::pow(dl, 8));
    const double Y =
        kPlaneScale * (N * co * dl - N * std::pow(co, 3) * (-1 + t2 - eta2) * std::pow(dl, 3) / 6 -
                       N * std::pow(co, 5) * (-5 + 18 * t2 - t4 - 14 * eta2 + 58 * t2 * eta2) * std::pow(dl, 5) / 120 -
                       N * std::pow(co, 7) * (-61 + 479 * t2 - 179 * t4 + t6) * std::pow(dl, 7) / 5040);
    return PlaneXY{X, Y};
}

std::optional<GeoRad> GeoConv::PlaneToGeoRad(const PlaneXY& plane, std::int32_t zone) const {
    const ZoneFacts* const origin = FactsOf(zone);
    if (origin == nullptr || !std::isfinite(plane.x) || !std::isfinite(plane.y)) return std::nullopt;
    const double Y = plane.y;
    const double phi1 = FootFrom(*this, origin->latitude, origin->arc, plane.x, kPlaneScale);
    const auto [N, eta2] = PrimeRadius(phi1);
    const double t = std::tan(phi1);
    const double co = std::cos(phi1);
    const double t2 = std::pow(t, 2);
    const double t4 = std::pow(t, 4);
    const double t6 = std::pow(t, 6);
    const double eta4 = std::pow(eta2, 2);
    const ScalePowers& m = Scale();
    const double latitude =
        phi1 - (1 + eta2) * t * (std::pow(Y, 2) / m.m2) / (2 * std::pow(N, 2)) +
        (5 + 3 * t2 + 6 * eta2 - 6 * t2 * eta2 - 3 * eta4 - 9 * t2 * eta4) * t * (std::pow(Y, 4) / m.m4) / (24 * std::pow(N, 4)) -
        (61 + 90 * t2 + 45 * t4 + 107 * eta2 - 162 * t2 * eta2 - 45 * t4 * eta2) * t * (std::pow(Y, 6) / m.m6) /
            (720 * std::pow(N, 6)) +
        (1385 + 3633 * t2 + 4095 * t4 + 1575 * t6) * t * (std::pow(Y, 8) / m.m8) / (40320 * std::pow(N, 8));
    const double dl = (Y / kPlaneScale) / (co * N) - (1 + 2 * t2 + eta2) * (std::pow(Y, 3) / m.m3) / (co * 6 * std::pow(N, 3)) +
                      (5 + 28 * t2 + 24 * t4 + 6 * eta2 + 8 * t2 * eta2) * (std::pow(Y, 5) / m.m5) / (co * 120 * std::pow(N, 5)) -
                      (61 + 662 * t2 + 1320 * t4 + 720 * t6) * (std::pow(Y, 7) / m.m7) / (co * 5040 * std::pow(N, 7));
    return GeoRad{latitude, origin->longitude + dl};
}

std::optional<GeoDms> GeoConv::PlaneToGeo(const PlaneXY& plane, std::int32_t zone) const {
    const std::optional<GeoRad> geo = PlaneToGeoRad(plane, zone);
    if (!geo) return std::nullopt;
    return GeoDms{RadToDms(geo->latitude), RadToDms(geo->longitude)};
}

}  // namespace orvane
