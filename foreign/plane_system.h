// The plane rectangular systems of Japan as the registry of coordinate systems knows them: 19 zones on each of three datums.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "analysis/geometry/dig_pnt.h"

class OGRCoordinateTransformation;
class OGRSpatialReference;

namespace orvane {

inline constexpr int kZoneCnt = 19;
/// Its origin lies at latitude 28 in this system's own table, and at 26 in the registry.
inline constexpr int kOddZone = 19;

enum class Datum { Jgd2011, Jgd2000, Tokyo };

struct PlaneSystem {
    Datum datum = Datum::Jgd2011;
    int zone = 0;  ///< 1 to 19
    int Epsg() const;
};

/// The plane system with that EPSG code; nothing for another code.
std::optional<PlaneSystem> PlaneSystemOf(int epsg);

const char* DatumName(Datum datum);
/// The datum of that name, in any case of its letters.
std::optional<Datum> DatumByName(std::string_view name);
/// The datum of a coordinate system; nothing for another one.
std::optional<Datum> DatumOf(const OGRSpatialReference& source);
/// The zone of a coordinate system that is one of the plane systems; 0 for others.
int ZoneOf(const OGRSpatialReference& source);
/// The zone whose origin is nearest on the globe; 0 for a place outside Japan.
int NearestZone(double lon_deg, double lat_deg);

/// Carries points from a source's system into another one. Coordinates are in map sense: x to the east, y to the north.
class Projector {
public:
    Projector();
    ~Projector();
    Projector(Projector&&) noexcept;
    Projector& operator=(Projector&&) noexcept;

    /// False, with GDAL's reason in the current GdalErrors, when there is no way between the two.
    bool ToPlane(const OGRSpatialReference& source, const PlaneSystem& target);
    /// Into the mesh frame, by longitude and latitude on the datum Tokyo, or on the source's own without the shift.
    bool ToMeshFrame(const OGRSpatialReference& source, bool shiftToTokyo);
    /// Into the source's own longitude and latitude, degrees.
    bool ToGeographic(const OGRSpatialReference& source);

    /// Carries all points, leaving z alone. False when one of them came or went to a place that is not finite, or that lies
    /// beyond what bounds of items hold (99,999,999 either way), or in the mesh frame where sheets have no number; the points are
    /// of no use then.
    bool Carry(std::span<DigPnt> points) const;

private:
    bool Make(const OGRSpatialReference& source, const OGRSpatialReference& target);

    std::unique_ptr<OGRCoordinateTransformation> way_;
    bool toMesh_ = false;
};

}  // namespace orvane
