// Single segments: distance, crossing, touching. Every sum is written in one fixed order, because callers compare the results
// exactly with each other.
#include <algorithm>
#include <cmath>

#include "analysis/geometry/plane.h"

namespace orvane {

namespace {

bool WithinClosed(double v, double end1, double end2) { return v >= (std::min)(end1, end2) && v <= (std::max)(end1, end2); }

bool WithinOpen(double v, double end1, double end2) { return v > (std::min)(end1, end2) && v < (std::max)(end1, end2); }

}  // namespace

SegDirection DirectionOf(const DigPnt& a, const DigPnt& b) {
    if (a.x == b.x) return SegDirection::Vertical;
    return a.y == b.y ? SegDirection::Horizontal : SegDirection::Sloped;
}

double SlopeOf(const DigPnt& a, const DigPnt& b) { return (b.y - a.y) / (b.x - a.x); }

double Pythag(double a, double b) {
    double p = std::fabs(a);
    double q = std::fabs(b);
    if (q == 0) return p;
    if (p == 0) return q;
    if (p < q) std::swap(p, q);
    for (int round = 0; round < 3; ++round) {
        double r = (q / p) * (q / p);
        r = r / (4 + r);
        p = p + 2 * r * p;
        q = q * r;
    }
    return p;
}

double SegDist(const DigPnt& p, const DigPnt& a, const DigPnt& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    if (dx * (a.x - p.x) + dy * (a.y - p.y) >= 0) return Pythag(p.x - a.x, p.y - a.y);
    if (dx * (b.x - p.x) + dy * (b.y - p.y) <= 0) return Pythag(p.x - b.x, p.y - b.y);
    const double length = Pythag(dx, dy);
    return length == 0 ? 0 : std::fabs(dy * (p.x - a.x) - dx * (p.y - a.y)) / length;
}

std::int32_t SegParallel(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2) {
    const SegDirection a = DirectionOf(a1, a2);
    if (a != DirectionOf(b1, b2)) return 0;
    return a != SegDirection::Sloped || SlopeOf(a1, a2) == SlopeOf(b1, b2) ? 1 : 0;
}

std::int32_t SegCross(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2, DigPnt& out) {
    const SegDirection a = DirectionOf(a1, a2);
    const SegDirection b = DirectionOf(b1, b2);
    if (a == b && a != SegDirection::Sloped) return 0;

    double x = 0;
    double y = 0;
    if (a == SegDirection::Sloped && b == SegDirection::Sloped) {
        const double m1 = SlopeOf(a1, a2);
        const double m2 = SlopeOf(b1, b2);
        if (m1 - m2 == 0) return 0;
        x = (m1 * a1.x - m2 * b1.x + b1.y - a1.y) / (m1 - m2);
        y = (m1 * m2 * (a1.x - b1.x) + m1 * b1.y - m2 * a1.y) / (m1 - m2);
    } else if (a == SegDirection::Sloped) {
        const double m1 = SlopeOf(a1, a2);
        x = b == SegDirection::Vertical ? b1.x : (b1.y - a1.y) / m1 + a1.x;
        y = b == SegDirection::Vertical ? (b1.x - a1.x) * m1 + a1.y : b1.y;
    } else if (b == SegDirection::Sloped) {
        const double m2 = SlopeOf(b1, b2);
        x = a == SegDirection::Vertical ? a1.x : (a1.y - b1.y) / m2 + b1.x;
        y = a == SegDirection::Vertical ? (a1.x - b1.x) * m2 + b1.y : a1.y;
    } else {
        x = a == SegDirection::Vertical ? a1.x : b1.x;
        y = a == SegDirection::Vertical ? b1.y : a1.y;
    }
    out.x = x;
    out.y = y;
    const bool within =
        WithinClosed(x, a1.x, a2.x) && WithinClosed(y, a1.y, a2.y) && WithinClosed(x, b1.x, b2.x) && WithinClosed(y, b1.y, b2.y);
    return within ? 1 : -1;
}

std::int32_t SegTouch(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2) {
    const bool endOfB = SegDist(b1, a1, a2) == 0 || SegDist(b2, a1, a2) == 0;
    if (SegParallel(a1, a2, b1, b2) != 0) return endOfB ? 2 : 0;
    return endOfB || SegDist(a1, b1, b2) == 0 || SegDist(a2, b1, b2) == 0 ? 1 : 0;
}

std::int32_t SegInside(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2) {
    if (SegParallel(a1, a2, b1, b2) == 0) return 0;
    const bool inX = WithinOpen(a1.x, b1.x, b2.x) || WithinOpen(a2.x, b1.x, b2.x);
    const bool inY = WithinOpen(a1.y, b1.y, b2.y) || WithinOpen(a2.y, b1.y, b2.y);
    return inX || inY ? 1 : 0;
}

std::int32_t PntOnLine(const DigPnt& p, std::span<const DigPnt> pts) {
    for (std::size_t i = 1; i < pts.size(); ++i) {
        if (SegDist(p, pts[i - 1], pts[i]) == 0) return 1;
    }
    return 0;
}

}  // namespace orvane
