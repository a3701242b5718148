#include "foreign/plane_system.h"

#include <ogr_spatialref.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "foreign/gdal_errors.h"
#include "geo/geo_conv.h"
#include "platform/file_names.h"

namespace orvane {

namespace {

struct DatumFacts {
    Datum datum;
    const char* name;
    int firstEpsg;  // of zone 1; the others follow
    int geographicEpsg;
    std::string_view names[2];  // as well-known text calls it, and an older spelling
};

constexpr std::array<DatumFacts, 3> kDatums = {{
    {Datum::Jgd2011, "JGD2011", 6669, 6668, {"Japanese_Geodetic_Datum_2011", "D_JGD_2011"}},
    {Datum::Jgd2000, "JGD2000", 2443, 4612, {"Japanese_Geodetic_Datum_2000", "D_JGD_2000"}},
    {Datum::Tokyo, "Tokyo", 30161, 4301, {"Tokyo", "D_Tokyo"}},
}};

const DatumFacts& Facts(Datum datum) {
    return *std::find_if(kDatums.begin(), kDatums.end(), [datum](const DatumFacts& facts) { return facts.datum == datum; });
}

// Everything is asked for in the order east, north, whatever the registry says of its axes.
bool FromEpsg(OGRSpatialReference& system, int epsg) {
    if (system.importFromEPSG(epsg) != OGRERR_NONE) return false;
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return true;
}

int CodeOf(const OGRSpatialReference& system, const char* node) {
    const char* authority = system.GetAuthorityName(node);
    const char* code = system.GetAuthorityCode(node);
    return authority != nullptr && code != nullptr && std::string_view(authority) == "EPSG" ? std::atoi(code) : 0;
}

struct LonLat {
    double lon_deg;
    double lat_deg;
};

// The haversine of the angle between two places, which grows with their distance.
double Haversine(LonLat a, LonLat b) {
    constexpr double kRad = 0.017453292519943295;
    const double sinLat = std::sin((b.lat_deg - a.lat_deg) * kRad / 2);
    const double sinLon = std::sin((b.lon_deg - a.lon_deg) * kRad / 2);
    return sinLat * sinLat + std::cos(a.lat_deg * kRad) * std::cos(b.lat_deg * kRad) * sinLon * sinLon;
}

constexpr double kPlaneLimit = 99999999.0;  // an item's bounds start from this, turned inside out

bool Holds(const DigPnt& p) { return std::fabs(p.x) <= kPlaneLimit && std::fabs(p.y) <= kPlaneLimit && std::isfinite(p.z); }

/// Longitude and latitude in degrees to mesh units; false where sheets have no number of six digits.
bool DegreesToMesh(DigPnt& p) {
    if (!(p.x >= 110 && p.x < 200 && p.y >= 0 && p.y < 200 / 3.0)) return false;
    p.x = (p.x - 100) * 8 * kMeshSheet;
    p.y = p.y * 12 * kMeshSheet;
    return true;
}

}  // namespace

int PlaneSystem::Epsg() const { return Facts(datum).firstEpsg + zone - 1; }

std::optional<PlaneSystem> PlaneSystemOf(int epsg) {
    for (const DatumFacts& facts : kDatums) {
        if (epsg >= facts.firstEpsg && epsg < facts.firstEpsg + kZoneCnt)
            return PlaneSystem{facts.datum, epsg - facts.firstEpsg + 1};
    }
    return std::nullopt;
}

const char* DatumName(Datum datum) { return Facts(datum).name; }

std::optional<Datum> DatumByName(std::string_view name) {
    for (const DatumFacts& facts : kDatums) {
        if (EqualAnyCase(name, facts.name)) return facts.datum;
    }
    return std::nullopt;
}

std::optional<Datum> DatumOf(const OGRSpatialReference& source) {
    const int geographic = CodeOf(source, "GEOGCS");
    const char* name = source.GetAttrValue("DATUM");
    for (const DatumFacts& facts : kDatums) {
        if (geographic == facts.geographicEpsg) return facts.datum;
        if (name != nullptr && (name == facts.names[0] || name == facts.names[1])) return facts.datum;
    }
    return std::nullopt;
}

int ZoneOf(const OGRSpatialReference& source) {
    const std::optional<PlaneSystem> system = PlaneSystemOf(CodeOf(source, source.IsCompound() ? "PROJCS" : nullptr));
    return system ? system->zone : 0;
}

int NearestZone(double lon_deg, double lat_deg) {
    // The four ends of the country, with some sea around them.
    const bool inJapan = lon_deg > 121 && lon_deg < 156 && lat_deg > 18 && lat_deg < 47;
    if (!inJapan) return 0;
    int nearest = 0;
    double best = 0;
    for (int zone = 1; zone <= kZoneCnt; ++zone) {
        OGRSpatialReference system;
        if (!FromEpsg(system, PlaneSystem{Datum::Jgd2011, zone}.Epsg())) continue;
        const LonLat origin{system.GetNormProjParm(SRS_PP_CENTRAL_MERIDIAN), system.GetNormProjParm(SRS_PP_LATITUDE_OF_ORIGIN)};
        const double distance = Haversine({lon_deg, lat_deg}, origin);
        if (nearest == 0 || distance < best) {
            nearest = zone;
            best = distance;
        }
    }
    return nearest;
}

Projector::Projector() = default;
Projector::~Projector() = default;
Projector::Projector(Projector&&) noexcept = default;
Projector& Projector::operator=(Projector&&) noexcept = default;

bool Projector::ToPlane(const OGRSpatialReference& source, const PlaneSystem& target) {
    OGRSpatialReference plane;
    return FromEpsg(plane, target.Epsg()) && Make(source, plane);
}

bool Projector::ToMeshFrame(const OGRSpatialReference& source, bool shiftToTokyo) {
    toMesh_ = true;
    if (!shiftToTokyo) {
        const std::unique_ptr<OGRSpatialReference> geographic(source.CloneGeogCS());
        return geographic != nullptr && Make(source, *geographic);
    }
    OGRSpatialReference tokyo;
    return FromEpsg(tokyo, Facts(Datum::Tokyo).geographicEpsg) && Make(source, tokyo);
}

bool Projector::ToGeographic(const OGRSpatialReference& source) {
    const std::unique_ptr<OGRSpatialReference> geographic(source.CloneGeogCS());
    return geographic != nullptr && Make(source, *geographic);
}

bool Projector::Make(const OGRSpatialReference& source, const OGRSpatialReference& target) {
    OGRSpatialReference from(source);
    OGRSpatialReference to(target);
    from.StripVertical();  // heights are taken over as they stand
    from.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    to.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    way_.reset(OGRCreateCoordinateTransformation(&from, &to));
    return way_ != nullptr;
}

bool Projector::Carry(std::span<DigPnt> points) const {
    constexpr std::size_t kChunk = 4096;
    const GdalErrors quiet;  // places out of reach are counted by the caller and told once
    std::vector<double> x(kChunk), y(kChunk);
    std::vector<int> success(kChunk);
    for (std::size_t start = 0; start < points.size(); start += kChunk) {
        const std::span<DigPnt> chunk = points.subspan(start, (std::min)(kChunk, points.size() - start));
        for (std::size_t i = 0; i < chunk.size(); ++i) {
            if (!std::isfinite(chunk[i].x) || !std::isfinite(chunk[i].y)) return false;
            x[i] = chunk[i].x;
            y[i] = chunk[i].y;
        }
        way_->Transform(static_cast<int>(chunk.size()), x.data(), y.data(), nullptr, success.data());
        for (std::size_t i = 0; i < chunk.size(); ++i) {
            chunk[i].x = x[i];
            chunk[i].y = y[i];
            if (!success[i] || (toMesh_ && !DegreesToMesh(chunk[i])) || !Holds(chunk[i])) return false;
        }
    }
    return true;
}

}  // namespace orvane
