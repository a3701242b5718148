// Plane geometry that drawing, picking, relation tests and overlay share. Comparisons are exact on doubles.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "analysis/geometry/dig_pnt.h"

namespace orvane {

/// One side of a ring, with the working marks of the polygon overlay.
struct Edge {
    double x1 = 0, y1 = 0, z1 = 0;
    double x2 = 0, y2 = 0, z2 = 0;
    std::int32_t used = 0, split = 0, shared = 0;
};

/// How a segment lies, told by its coordinates' exact equality; one without length counts as vertical.
enum class SegDirection { Sloped, Vertical, Horizontal };
SegDirection DirectionOf(const DigPnt& a, const DigPnt& b);
/// dy / dx of the segment a-b.
double SlopeOf(const DigPnt& a, const DigPnt& b);

/// Distance of `p` from the segment a-b; of a segment without length, from its end.
double SegDist(const DigPnt& p, const DigPnt& a, const DigPnt& b);
/// 1 when both segments are vertical, both horizontal, or of exactly equal slope; else 0.
std::int32_t SegParallel(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2);
/// Crossing of the carrier lines: 1 within both segments, -1 outside one of them, 0 parallel with `out` left alone.
std::int32_t SegCross(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2, DigPnt& out);
/// 2 when parallel and touching, 1 when an end lies on the other segment, 0 otherwise.
std::int32_t SegTouch(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2);
/// 1 when parallel and an end of a lies strictly within the span of b in x or in y.
std::int32_t SegInside(const DigPnt& a1, const DigPnt& a2, const DigPnt& b1, const DigPnt& b2);
/// 1 when `p` is at distance 0 from a segment of the polyline.
std::int32_t PntOnLine(const DigPnt& p, std::span<const DigPnt> pts);
/// 1 when `p` is inside the rings by the crossing count; the boundary is not told apart.
std::int32_t PntInPgn(const DigPnt& p, std::span<const DigPnt> pts);

/// Cuts a polygon's point array into rings. `ringCounts` has room for as many numbers as there are points; returns how many were
/// written. Unless `forceWalk`, an array whose first and last points coincide is one ring. Points behind the last ring belong to
/// none.
std::int32_t SplitRings(std::span<const DigPnt> pts, std::int32_t* ringCounts, bool forceWalk);

/// Length of the vector (a, b) without overflow.
double Pythag(double a, double b);

/// What six printed decimals of `value` read back as; what is not finite stays.
double SixDecimals(double value);
/// Rounds x and y to six decimals and drops repeats within a ring.
std::vector<DigPnt> Clean(std::span<const DigPnt> pts);
/// The sides of the rings, in order; points that belong to no ring give none.
std::vector<Edge> Edges(std::span<const DigPnt> pts);

}  // namespace orvane
