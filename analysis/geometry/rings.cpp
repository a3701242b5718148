// Polygons as point arrays: how an array falls into rings, and what lies inside of them.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

#include "analysis/geometry/plane.h"
#include "analysis/geometry/ray_count.h"

namespace orvane {

namespace {

bool SamePlace(const DigPnt& a, const DigPnt& b) { return a.x == b.x && a.y == b.y; }

/// The value that six printed decimals of `value` read back as, by printing and reading it.
double SixDecimalsByText(double value) {
    char text[400];  // the greatest double has 309 digits before the point
    const std::to_chars_result end = std::to_chars(std::begin(text), std::end(text), value, std::chars_format::fixed, 6);
    double read = value;
    std::from_chars(std::begin(text), end.ptr, read);
    return read;
}

/// Position of the edge that closes the ring begun by edge `first`, or edges.size().
std::size_t RingEnd(std::span<const Edge> edges, std::size_t first) {
    for (std::size_t i = first + 1; i < edges.size(); ++i) {
        if (edges[i].x2 == edges[first].x1 && edges[i].y2 == edges[first].y1) return i;
    }
    return edges.size();
}

}  // namespace

// Without text wherever that is certain. Millions of points pass here in relation tests, and printing is some
// fifty times dearer. A count of millionths below 2^51 is exact, and so its quotient by 10^6 is what reading the decimals gives;
// only a value so close to the middle of two counts that the product's own rounding might decide takes the long way.
double SixDecimals(double value) {
    const double millionths = value * 1e6;
    if (!(std::fabs(millionths) < 0x1p51)) return SixDecimalsByText(value);
    const double whole = std::floor(millionths + 0.5);
    if (std::fabs(millionths - whole) >= 0.5 - std::fabs(millionths) * 0x1p-51) return SixDecimalsByText(value);
    return std::copysign(whole / 1e6, value);
}

std::int32_t SplitRings(std::span<const DigPnt> pts, std::int32_t* ringCounts, bool forceWalk) {
    if (pts.empty()) return 0;
    if (!forceWalk && SamePlace(pts.front(), pts.back())) {
        ringCounts[0] = static_cast<std::int32_t>(pts.size());
        return 1;
    }
    std::int32_t rings = 0;
    std::size_t opener = 0;
    for (std::size_t i = 0; i < pts.size(); ++i) {
        const std::size_t length = i - opener + 1;
        if (length < 3 || !SamePlace(pts[i], pts[opener])) continue;
        ringCounts[rings++] = static_cast<std::int32_t>(length);
        opener = i + 1;
    }
    return rings;
}

std::vector<DigPnt> Clean(std::span<const DigPnt> pts) {
    std::vector<DigPnt> kept;
    kept.reserve(pts.size());
    bool opens = true;
    DigPnt opener;
    for (const DigPnt& pt : pts) {
        const DigPnt rounded{SixDecimals(pt.x), SixDecimals(pt.y), pt.z};
        if (opens) {
            opener = rounded;
            opens = false;
        } else {
            if (SamePlace(rounded, kept.back())) continue;
            opens = SamePlace(rounded, opener);
        }
        kept.push_back(rounded);
    }
    return kept;
}

std::vector<Edge> Edges(std::span<const DigPnt> pts) {
    std::vector<std::int32_t> ringCounts(pts.size());
    const std::int32_t rings = SplitRings(pts, ringCounts.data(), true);
    std::vector<Edge> edges;
    edges.reserve(pts.size());
    std::size_t first = 0;
    for (std::int32_t ring = 0; ring < rings; ++ring) {
        const std::size_t end = first + static_cast<std::size_t>(ringCounts[static_cast<std::size_t>(ring)]);
        for (std::size_t i = first + 1; i < end; ++i) {
            Edge edge;
            edge.x1 = pts[i - 1].x;
            edge.y1 = pts[i - 1].y;
            edge.x2 = pts[i].x;
            edge.y2 = pts[i].y;
            edges.push_back(edge);
        }
        first = end;
    }
    return edges;
}

std::int32_t PntInPgn(const DigPnt& p, std::span<const DigPnt> pts) {
    const std::vector<Edge> edges = Edges(Clean(pts));
    if (edges.empty()) return 0;
    double rayEnd = edges.front().x1 + 1.0;
    for (const Edge& edge : edges) {
        if (edge.x1 > rayEnd) rayEnd = edge.x1 + 1.0;
        if (edge.x2 > rayEnd) rayEnd = edge.x2 + 1.0;
    }
    std::size_t count = 0;
    for (std::size_t first = 0; first < edges.size();) {
        const std::size_t last = RingEnd(edges, first);
        if (last == edges.size()) break;
        count += RayCrossings(edges, first, last, first, p, {rayEnd, p.y, 0}, [](std::size_t k) { return k; });
        first = last + 1;
    }
    return count % 2 == 1 ? 1 : 0;
}

}  // namespace orvane
