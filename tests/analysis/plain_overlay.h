// The overlay of two polygons written down step by step with plain loops over plain lists, whatever they cost. What the product
// computes by indexes has to come out of this, point for point.
#pragma once

#include <cstdint>
#include <vector>

#include "analysis/geometry/plane.h"

namespace orvane::plain {

struct PolyEdge {
    double x1 = 0, y1 = 0;
    double x2 = 0, y2 = 0;
    double midX = 0, midY = 0;
    bool used = false;
};
using EdgeList = std::vector<PolyEdge>;
using Points = std::vector<DigPnt>;

/// False when the lists grow without an end.
bool CutAll(EdgeList& a, EdgeList& b);
void Cut(EdgeList& list, std::size_t i, const DigPnt& at);
/// The midpoint test: the crossing count over the edges as they stand.
bool Inside(double x, double y, const EdgeList& edges);
/// Rounds to the six decimals that printing gives, and drops repeats within a ring.
Points Clean(const Points& pts);
/// The crossing count over the rings of a polygon's array.
bool InPolygon(const DigPnt& p, const Points& pts);
void Prune(EdgeList& edges);
void Share(EdgeList& edges);
Points Link(EdgeList edges, bool isUnion);
void Normal(Points& pts);
void Twins(Points& pts);
void Orient(Points& pts);
/// Both arrays as they come; they are cleaned here.
Points Overlay(const Points& a, const Points& b, bool isUnion);
/// Gives the points of `right` that lie near one of `left` its place.
Points Snap(const Points& left, Points right);
/// Whether the even-odd areas of the rings, at whole coordinates, are the same and not empty: by bands between all heights where
/// an edge ends or two of them cross, on a line through the middle of each band.
bool SameArea(const Points& a, const Points& b);

EdgeList ListOf(const Points& pts);

}  // namespace orvane::plain
