// Figures along a line that a pen cannot draw: ticks, dashes with ticks, waves, shapes, marks at the ends.
//
// They belong to the line types that a line type file defines. All positions are device pixels, y downward; lengths of the record
// grow with the whole part of the device's DpiRatio. Neither routine selects anything: pen and brush are the caller's.
#pragma once

#include <cstdint>

#include "platform/device_context.h"
#include "store/cdigmem.h"

namespace orvane {

/// Draws a line of a pattern kind through `count` points; `index` is its record in the line type table, and nothing is drawn
/// without one. Figures whose pitch does not meet `clip` are left out, and cost nothing however many they are. The pattern starts
/// anew at each point, so a segment shorter than a pitch has no figure.
void DrawLinePattern(const CDigMem& store, DeviceContext& dc, const Rect& clip, const Point* pts, std::int32_t count,
                     std::int32_t index);

/// Adds the end marks of a line that was drawn already. A line of fewer than 2 points has none.
void DrawLineEndMarks(const CDigMem& store, DeviceContext& dc, const Point* pts, std::int32_t count, std::int32_t index);

}  // namespace orvane
