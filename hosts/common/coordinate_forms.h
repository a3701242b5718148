// The forms in which hosts take and give coordinates, and the ways between them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "geo/geo_conv.h"

namespace orvane {

/// Latitude and longitude on the Bessel ellipsoid, in decimal degrees.
struct GeoDeg {
    double latitude = 0;
    double longitude = 0;
};

/// Degrees to plane and back, not rounded to an angle's four numbers. Nothing for a zone outside 1 to 19, for latitudes and
/// longitudes beyond 90 and 180 degrees, and for what is not finite. Both are good to 0.2 millimetres as far as 700 kilometres
/// north and south and 160 kilometres east and west of the zone's origin, and grow worse without bound beyond.
std::optional<PlaneXY> DegToPlane(const GeoDeg& geo, std::int32_t zone);
std::optional<GeoDeg> PlaneToDeg(const PlaneXY& plane, std::int32_t zone);
/// Degrees of a mesh-frame place, and its place with the angles rounded to the ten-thousandth of a second.
std::optional<GeoDeg> MeshToDeg(const MeshPoint& point);
std::optional<MeshPoint> DegToMesh(const GeoDeg& geo);
/// Between the mesh frame and a plane zone as the frame change goes: there between the sheet's corners, back through the exact
/// projection, its angles rounded. Nothing for a zone outside 1 to 19 and for places without a sheet.
std::optional<PlaneXY> MeshPointToPlane(const MeshPoint& point, std::int32_t zone);
std::optional<MeshPoint> PlaneToMeshPoint(const PlaneXY& plane, std::int32_t zone);
/// Number of the sheet of a mesh-frame place, and the place inside. Nothing where the numbering does not reach: outside latitudes
/// 0 to 66 40' and longitudes 110 to 180, the upper ends excluded.
std::optional<MeshPlace> SheetAt(const MeshPoint& point);

enum class CoordinateForm {
    Deg,    ///< latitude and longitude in decimal degrees
    Dms,    ///< the same as degrees, minutes and seconds each, seconds with a fraction
    Plane,  ///< x north and y east in metres of a zone
    Mesh,   ///< sheet number of six digits and the place inside it; the number alone is its south-west corner
    Frame,  ///< mesh-frame x east and y north
};

/// Converts text lines of coordinates, one place a line, numbers parted by blanks, tabs or commas.
class LineConverter {
public:
    /// `zone` counts where one of the forms is Plane. REQUIRES: 1 to 19 then.
    LineConverter(CoordinateForm from, CoordinateForm to, std::int32_t zone) : from_(from), to_(to), zone_(zone) {}

    /// Appends the converted line, without its end, to `out`. False, with `out` as it was and the reason in `why`, when the line
    /// is not of the form or its place has none in the other form. The way between the mesh frame and a plane zone is that of
    /// the frame change: there between the sheet's corners, back through the exact projection.
    bool Convert(std::string_view line, std::string& out, std::string& why) const;

private:
    CoordinateForm from_;
    CoordinateForm to_;
    std::int32_t zone_;
};

}  // namespace orvane
