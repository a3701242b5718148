// Whether a pixel lies in a filled shape: the fill rule of the platform's regions in plain code, so that every system answers
// alike and no region is built for a question.
//
// Fills are alternate. As in rectangles the left and top edges lie inside and the right and bottom edges outside. Coordinates may
// be any 32-bit numbers.
#pragma once

#include <cstdint>

#include "platform/values.h"

namespace orvane {

/// The polygon of `count` points; it is closed by itself. Fewer than 3 points hold nothing.
bool PtInPolygon(const Point* pts, std::int32_t count, Point at);
/// Polygons one behind the other, `counts[i]` points in the i-th: what lies in an even number of them is outside.
bool PtInPolyPolygon(const Point* pts, const std::int32_t* counts, std::int32_t polygonCnt, Point at);
/// The ellipse in a box, whose corners may stand in any order. It holds the pixels whose centres it holds, so a box one pixel
/// wide or high is full and one without a pixel is empty. In boxes wider or higher than 30000 a pixel on the edge may be off.
bool PtInEllipse(const Rect& box, Point at);

}  // namespace orvane
