// The relation tests as plain double walks over all segments: what the quick ones have to answer.
#pragma once

#include <vector>

#include "analysis/geometry/plane.h"
#include "analysis/relation.h"

namespace orvane::literal {

/// A shape in device pixels; at least one point.
struct Shape {
    ShapeType type = ShapeType::Point;
    std::vector<DigPnt> pts;
};

bool Equals(const Shape& a, const Shape& b);
bool Disjoint(const Shape& a, const Shape& b);
bool Touches(const Shape& a, const Shape& b);
bool Crosses(const Shape& a, const Shape& b);
bool Contains(const Shape& a, const Shape& b);
bool Overlaps(const Shape& a, const Shape& b);

/// The test of the operator with that number, the query first; false for a number that no operator has.
bool Relates(std::int32_t op, const Shape& query, const Shape& item);

}  // namespace orvane::literal
