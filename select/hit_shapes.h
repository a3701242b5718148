// Shapes around device points that a click may meet. Data items and overlay figures share them.
#pragma once

#include <cstdint>

#include "platform/values.h"

namespace orvane {

/// How far either side of a line's pixels a click still meets it. It grows with neither the scale nor the pen.
inline constexpr std::int32_t kBandHalf_px = 2;

/// Whether `at` lies in the box from `centre` to both sides, of half the given width and height; negative ones count as positive.
bool InBoxAround(Point centre, std::int32_t halfWidth_px, std::int32_t halfHeight_px, Point at);
/// Whether `at` lies in the band along the segment a-b. The band is sheared: its ends go along the axes, not across the segment.
/// A segment without length has none.
bool InBandAlong(Point a, Point b, Point at);

}  // namespace orvane
