#include "store/strips.h"

#include <algorithm>
#include <cstdlib>

#include "platform/rect.h"
#include "platform/to_int.h"

namespace orvane {

namespace {

bool SideNearEqual(std::int64_t a, std::int64_t b) {
    const double da = static_cast<double>(a);
    const double db = static_cast<double>(b);
    if (a >= b && a != 0) return TruncToInt32(db / da + 0.01) == 1;
    if (a < b && b != 0) return TruncToInt32(da / db + 0.01) == 1;
    return true;
}

enum Outcode : unsigned { kLeft = 1, kRight = 2, kAbove = 4, kBelow = 8, kAllAround = 15 };

/// A point on an edge of the strip is beyond no side, on the right and bottom edges neither.
unsigned OutcodeOf(Point p, const Rect& strip) {
    unsigned code = 0;
    if (p.x < strip.left) code |= kLeft;
    if (p.x > strip.right) code |= kRight;
    if (p.y < strip.top) code |= kAbove;
    if (p.y > strip.bottom) code |= kBelow;
    return code;
}

/// True when the line through (u1, v1) and (u2, v2) has, at `u`, a v from `low` to `high`, both included; it is computed in whole
/// numbers, truncated toward zero. The product of two 32-bit differences fills 64 bits without sign, so the sign goes apart.
bool CrossesSpan(std::int64_t u1, std::int64_t v1, std::int64_t u2, std::int64_t v2, std::int64_t u, std::int64_t low,
                 std::int64_t high) {
    const std::int64_t dv = v2 - v1;
    const std::int64_t du = u2 - u1;
    const std::int64_t step = u - u1;
    const bool negative = ((dv < 0) != (step < 0)) != (du < 0);
    const std::uint64_t product = static_cast<std::uint64_t>(std::abs(dv)) * static_cast<std::uint64_t>(std::abs(step));
    constexpr std::uint64_t kBeyondAnySpan = std::uint64_t{1} << 40;
    const std::uint64_t quotient = (std::min)(product / static_cast<std::uint64_t>(std::abs(du)), kBeyondAnySpan);
    const std::int64_t way = static_cast<std::int64_t>(quotient);
    const std::int64_t v = v1 + (negative ? -way : way);
    return v >= low && v <= high;
}

bool SegmentInStrip(Point a, Point b, const Rect& strip) {
    if (PtInRect(strip, a) || PtInRect(strip, b)) return true;
    if ((OutcodeOf(a, strip) & OutcodeOf(b, strip)) != 0) return false;
    if (a.x == b.x || a.y == b.y) return true;
    return CrossesSpan(a.y, a.x, b.y, b.x, strip.top, strip.left, strip.right) ||
           CrossesSpan(a.y, a.x, b.y, b.x, strip.bottom, strip.left, strip.right) ||
           CrossesSpan(a.x, a.y, b.x, b.y, strip.left, strip.top, strip.bottom) ||
           CrossesSpan(a.x, a.y, b.x, b.y, strip.right, strip.top, strip.bottom);
}

}  // namespace

bool RectNearEqual(const Box& a, const Box& b) {
    return SideNearEqual(a.left, b.left) && SideNearEqual(a.top, b.top) && SideNearEqual(a.right, b.right) &&
           SideNearEqual(a.bottom, b.bottom);
}

bool RectInStrips(const Rect& box, const Rect& stripA, const Rect& stripB) {
    const Rect a = NormalizeRect(stripA);
    const Rect b = NormalizeRect(stripB);
    return RectsMeet(box, a) || RectsMeet(box, b) || RectNearEqual(ToBox(box), ToBox(a)) || RectNearEqual(ToBox(box), ToBox(b));
}

bool PntsInStrips(const Point* pts, std::int32_t count, const Rect& stripA, const Rect& stripB) {
    if (count < 1) return false;
    if (count == 1) return PtInRect(stripA, pts[0]);
    unsigned seenA = 0;
    unsigned seenB = 0;
    for (std::int32_t i = 1; i < count; ++i) {
        if (SegmentInStrip(pts[i - 1], pts[i], stripA) || SegmentInStrip(pts[i - 1], pts[i], stripB)) return true;
        seenA |= OutcodeOf(pts[i - 1], stripA);
        seenB |= OutcodeOf(pts[i - 1], stripB);
    }
    return seenA == kAllAround || seenB == kAllAround;
}

}  // namespace orvane
