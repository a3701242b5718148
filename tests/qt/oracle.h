// Which pixels a line or an area has, worked out pixel by pixel from the rule alone.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "platform/values.h"

namespace orvane::oracle {

__extension__ using Wide = __int128;

/// Whether a one-pixel line from `a` to `b`, without `b`, has the pixel `p`: the nearest of its column (of its row when steep);
/// of two equally near ones the upper (left) one.
inline bool IsOnLine(Point a, Point b, Point p) {
    const Wide dx = Wide{b.x} - a.x;
    const Wide dy = Wide{b.y} - a.y;
    const bool flat = (dx < 0 ? -dx : dx) >= (dy < 0 ? -dy : dy);
    const Wide major = flat ? dx : dy;
    const Wide minor = flat ? dy : dx;
    if (major == 0) return false;
    const Wide k = flat ? Wide{p.x} - a.x : Wide{p.y} - a.y;  // signed steps along the major axis
    const bool inRange = major > 0 ? k >= 0 && k < major : k <= 0 && k > major;
    if (!inRange) return false;
    // The line stands minor * k / major beside its first point. Twice its distance above the pixel's centre, times |major|:
    const Wide beside = flat ? Wide{p.y} - a.y : Wide{p.x} - a.x;
    const Wide scale = major < 0 ? -major : major;
    const Wide twice = 2 * (minor * k * (major < 0 ? -1 : 1) - beside * scale);
    return twice > -scale && twice <= scale;
}

inline bool IsOnFigure(const std::vector<Point>& pts, bool closed, Point p) {
    for (std::size_t i = 1; i < pts.size(); ++i) {
        if (IsOnLine(pts[i - 1], pts[i], p)) return true;
    }
    return closed && IsOnLine(pts.back(), pts.front(), p);
}

/// Whether `p` is inside by the alternate rule; on an edge, the side right of it (below it, where it lies flat) is in.
inline bool IsInside(const std::vector<std::vector<Point>>& rings, Point p) {
    bool inside = false;
    for (const auto& ring : rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            Point a = ring[i];
            Point b = ring[(i + 1) % ring.size()];
            if (a.y > b.y) std::swap(a, b);
            if (p.y < a.y || p.y >= b.y) continue;
            const Wide crossing = (Wide{b.x} - a.x) * (Wide{p.y} - a.y);
            const Wide pixel = (Wide{p.x} - a.x) * (Wide{b.y} - a.y);
            if (crossing <= pixel) inside = !inside;
        }
    }
    return inside;
}

/// The distance of `p` from the segment.
inline double Distance(Point a, Point b, Point p) {
    const double dx = double(b.x) - a.x;
    const double dy = double(b.y) - a.y;
    const double px = double(p.x) - a.x;
    const double py = double(p.y) - a.y;
    const double square = dx * dx + dy * dy;
    const double t = square > 0 ? std::fmin(1, std::fmax(0, (px * dx + py * dy) / square)) : 0;
    return std::hypot(px - t * dx, py - t * dy);
}

}  // namespace orvane::oracle
