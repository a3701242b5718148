#include "platform/rect.h"

#include <algorithm>

namespace orvane {

Rect NormalizeRect(const Rect& r) {
    return {std::min(r.left, r.right), std::min(r.top, r.bottom), std::max(r.left, r.right), std::max(r.top, r.bottom)};
}

Box NormalizeBox(const Box& b) {
    return {std::min(b.left, b.right), std::min(b.top, b.bottom), std::max(b.left, b.right), std::max(b.top, b.bottom)};
}

Box InflateBox(const Box& b, std::int64_t by) { return {b.left - by, b.top - by, b.right + by, b.bottom + by}; }

bool IntersectBox(const Box& a, const Box& b, Box& out) {
    out = {};
    if (a.left >= a.right || a.top >= a.bottom || b.left >= b.right || b.top >= b.bottom) return false;
    const Box common{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
    if (common.left >= common.right || common.top >= common.bottom) return false;
    out = common;
    return true;
}

bool IntersectRect(const Rect& a, const Rect& b, Rect& out) {
    Box common;
    const bool hit = IntersectBox(ToBox(a), ToBox(b), common);
    out = {static_cast<std::int32_t>(common.left), static_cast<std::int32_t>(common.top), static_cast<std::int32_t>(common.right),
           static_cast<std::int32_t>(common.bottom)};
    return hit;
}

bool PtInRect(const Rect& r, Point p) { return p.x >= r.left && p.x < r.right && p.y >= r.top && p.y < r.bottom; }

}  // namespace orvane
