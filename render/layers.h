// The area search that marks what is worth drawing, and the loop that draws it.
#pragma once

#include "platform/values.h"
#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

/// Marks blocks and items that meet `area` (map units, y downward, as the view keeps it). False before the first init, or when an
/// index slot is broken; what was marked until then stays.
bool SetDrawArea(CDigMem& store, const Rect& area);

/// Draws all marked blocks in index order. False before the first init or at a broken index slot, with the rest undrawn.
bool DrawLayers(CDigMem& store, const FrameTarget& frame);

}  // namespace orvane
