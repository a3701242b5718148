// The relations themselves, each by the types of the two shapes.
#pragma once

#include <cstdint>

#include "analysis/relation_shape.h"

namespace orvane {

// One of the shapes of every call is the query and the other an item; they may stand on either side, and several rows differ by
// which type stands first. May throw std::bad_alloc; the answer means nothing once the query's watch has stopped the work.

/// Points alike; lines with the same two ends (in either order, or of a closed first line any) or polygons, each with all its
/// points on the other.
bool Equals(RelationShape& a, RelationShape& b);
/// No common point, as far as the row looks: a polygon around a line is disjoint from it, a line within a polygon is not.
bool Disjoint(RelationShape& a, RelationShape& b);
/// Common points on the boundary only; of lines, at an end.
bool Touches(RelationShape& a, RelationShape& b);
/// One passes through the other.
bool Crosses(RelationShape& a, RelationShape& b);
/// All of `b` lies in `a`.
bool Contains(RelationShape& a, RelationShape& b);
/// Lines that run along each other, or where a polygon is one of the two, a boundary that passes through the other.
bool Overlaps(RelationShape& a, RelationShape& b);

/// The relation of that number, the query on the left; false for a number that has none.
bool Relates(std::int32_t op, RelationShape& query, RelationShape& item);

}  // namespace orvane
