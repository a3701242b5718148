// The circles at the vertices of a figure that is being edited.
#pragma once

#include <cstdint>
#include <span>

#include "platform/device_context.h"

namespace orvane {

/// A large circle at both ends, a small one at every vertex but the last, and two more around the second vertex, which tell the
/// direction of digitising. `rings` holds the lengths of the figure's rings, each marked as a figure of its own; without any, all
/// points are one. REQUIRES: at least one point, no ring without points, and no more points in the rings than in `pts`.
void DrawVertexMarks(DeviceContext& dc, std::span<const Point> pts, std::span<const std::int32_t> rings);

}  // namespace orvane
