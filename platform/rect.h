// Rectangle rules of the platform, in plain code so that every system answers alike.
#pragma once

#include "platform/values.h"

namespace orvane {

Rect NormalizeRect(const Rect& r);
Box NormalizeBox(const Box& b);
Box InflateBox(const Box& b, std::int64_t by);
/// The common part; false, with `out` set to all zeros, when there is none. An empty rectangle meets nothing.
bool IntersectRect(const Rect& a, const Rect& b, Rect& out);
bool IntersectBox(const Box& a, const Box& b, Box& out);
/// What IntersectRect answers, for loops that only ask whether.
inline bool RectsMeet(const Rect& a, const Rect& b) {
    return a.left < a.right && a.top < a.bottom && b.left < b.right && b.top < b.bottom && a.left < b.right && b.left < a.right &&
           a.top < b.bottom && b.top < a.bottom;
}
/// Right and bottom edges lie outside.
bool PtInRect(const Rect& r, Point p);
inline Box ToBox(const Rect& r) { return {r.left, r.top, r.right, r.bottom}; }

}  // namespace orvane
