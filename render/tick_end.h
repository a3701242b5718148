// Where a tick on a line ends.
#pragma once

#include <cstdint>

#include "platform/values.h"

namespace orvane {

/// Degrees to radians, as all figures along lines take them. Truncated on purpose: pictures are compared to the pixel.
inline constexpr double kTickDegree_rad = 0.017453292;

/// The end of a tick of `length_px` that starts at `b`, turned by `angle_deg` (counter-clockwise on the screen) from the
/// direction in which the line from `a` to `b` arrives. Rounded half away from zero; a tick without length ends where it starts.
/// Ends beyond 32 bits saturate.
Point TickEnd(std::int32_t length_px, double angle_deg, Point a, Point b);

}  // namespace orvane
