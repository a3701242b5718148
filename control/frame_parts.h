// Places in a frame for content that is not there yet: nothing can be loaded into a raster slot, no overlay figure can be made
// and the scale bar modes draw nothing, so each of these has nothing to show.
#pragma once

#include <cstdint>

#include "store/frame_target.h"

namespace orvane {

class CDigMem;

/// Draws the raster images.
inline void RastDraw(const CDigMem&, const FrameTarget&) {}

/// Draws the overlay figures.
inline void DrawOrgDats(CDigMem&, const FrameTarget&) {}

/// Draws the scale bar onto the screen.
inline void DrawScaleBar(const CDigMem&, const FrameTarget&, std::int16_t) {}

}  // namespace orvane
