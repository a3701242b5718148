// Which ring of a polygon lies in which.
//
// An item's rings say nothing of their roles: the map fills what an odd number of rings surrounds, whichever way they turn.
// Formats want outer rings, each with its holes, so the roles are worked out from how the rings lie.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/geometry/dig_pnt.h"

namespace orvane {

/// For each ring the position of the one directly around it, or -1. Rings are closed by their first point and may touch in
/// points; where rings cross each other the answer is one of several, for no set of holes fills the same area.
///
/// Time grows as n log n with the number of all points, however deep or wide the nesting is. REQUIRES: coordinates within
/// kFarthestCoordinate.
std::vector<std::int32_t> RingParents(std::span<const std::span<const DigPnt>> rings);

/// Twice the area of a closed ring in square map units, above 0 where it runs against the clock as seen with y up.
double DoubleArea(std::span<const DigPnt> ring);

/// Beyond it the area of a ring could not be told.
inline constexpr double kFarthestCoordinate = 1e100;

}  // namespace orvane
