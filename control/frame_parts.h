// The place in a frame for content that is not there yet: nothing can be loaded into a raster slot, so there is nothing to show.
#pragma once

#include "store/frame_target.h"

namespace orvane {

class CDigMem;

/// Draws the raster images.
inline void RastDraw(const CDigMem&, const FrameTarget&) {}

}  // namespace orvane
