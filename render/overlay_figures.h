// Drawing of the overlay figures: the host's own shapes above the map, and their strings.
#pragma once

#include <cstdint>

#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

/// Draws the figures in their order, up to the first that has no points, then the strings of all when `orgStrVisible`. The figure
/// with the ID `orgTopDrawID`, if above 0, is drawn once more at the end, mirrored about the x axis of the map: for that a figure
/// is added to the store, so positions hold across this call and references do not.
void DrawOrgDats(CDigMem& store, const FrameTarget& frame, bool orgStrVisible, std::int32_t orgTopDrawID);

/// Half the side of the square of a point figure, in pixels, for a scale denominator.
std::int32_t OrgPointHalfSide(std::int32_t zoom, std::int32_t penFactor);

}  // namespace orvane
