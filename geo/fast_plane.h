// The plane zones with fewer operations than GeoConv takes, for hosts that print or plot what comes out.
//
// GeoConv keeps to one order of operations because its last bits go into stored coordinates. Here the same terms are summed by
// multiplications, with one sine and cosine for all multiples of an angle. The results differ in their last bits only.
#pragma once

#include "geo/geo_conv.h"

namespace orvane {

/// How far the results may lie from GeoConv's: some roundings of the meridian's arc, on the safe side.
inline constexpr double kFastPlane_m = 1e-8;
inline constexpr double kFastAngle_rad = 2e-15;

/// As GeoConv::GeoToPlane, within kFastPlane_m. Nothing where that is not promised: beyond latitude 68 and 5 degrees of longitude
/// from the zone's meridian, and for a zone outside 1 to 19.
std::optional<PlaneXY> FastGeoToPlane(const GeoRad& geo, std::int32_t zone);

/// As GeoConv::PlaneToGeoRad, within kFastAngle_rad. Nothing where that is not promised: beyond 1500 kilometres north or south
/// and 400 east or west of the origin, for a zone outside 1 to 19, and where another rounding could make the search for the foot
/// end a step earlier or later.
std::optional<GeoRad> FastPlaneToGeo(const PlaneXY& plane, std::int32_t zone);

}  // namespace orvane
