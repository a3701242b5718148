// Rules that decide whether something shows in the strips of a frame. Drawing and picking share them.
#pragma once

#include <cstdint>

#include "platform/values.h"

namespace orvane {

/// True when each side of `a` matches that of `b`: the smaller value divided by the greater, plus 0.01, cuts to 1. So sides above
/// 0 match within 1 percent. A quotient by 0 is not taken, and its side matches; negative sides match up to nearly twice the
/// value.
bool RectNearEqual(const Box& a, const Box& b);

/// True when `box` meets either strip or nearly equals one. The strips are normalised first.
bool RectInStrips(const Rect& box, const Rect& stripA, const Rect& stripB);

/// True when the polyline of `count` device points shows in either strip: a segment in a strip, or a figure around it.
/// A single point counts by `stripA` alone, right and bottom edges outside. `stripA` and `stripB` as given, not normalised.
bool PntsInStrips(const Point* pts, std::int32_t count, const Rect& stripA, const Rect& stripB);

}  // namespace orvane
