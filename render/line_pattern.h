// Figures along a line that a pen cannot draw: ticks, waves, shapes, marks at the ends.
//
// They belong to the line types that a line type file defines. No member reads such a file yet, so no host can give a line a kind
// that leads here, and the bodies draw nothing.
#pragma once

#include <cstdint>

#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

/// Draws a line of a pattern kind through `count` device points; `index` is its record in the line type table.
void DrawLinePattern(const CDigMem& store, const FrameTarget& frame, const Point* pts, std::int32_t count, std::int32_t index);

/// Adds the end marks of a line that was drawn already.
void DrawLineEndMarks(const CDigMem& store, const FrameTarget& frame, const Point* pts, std::int32_t count, std::int32_t index);

}  // namespace orvane
