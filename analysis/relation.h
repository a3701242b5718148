// Relation tests: which displayed points, lines and polygons stand in a given relation to a point, a line or an area of the
// host's. The answer is the active set.
//
// The tests run in device pixels with their fractions, so the view decides with what accuracy, and all comparisons are exact.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "store/cdigmem.h"

namespace orvane {

/// What a shape is taken for. The values are those of the layer types.
enum class ShapeType : std::int32_t { Point = kLayPoint, Line = kLayLine, Polygon = kLayPolygon };

enum class RelationOp : std::int32_t { Equals, Disjoint, Intersects, Touches, Crosses, Within, Contains, Overlaps };

/// The shape of the host's: map coordinates, y to the north, as many of x as of y. A polygon may hold several rings one behind
/// the other, each closed by its opening point; one that is not closed has a boundary but no inside.
struct RelationQuery {
    ShapeType type = ShapeType::Point;
    std::span<const double> x;
    std::span<const double> y;
};

/// Where the view stands: the world position of its left top pixel, y downward, and the pixel offset of a pending scroll.
struct RelationView {
    double viewX = 0;
    double viewY = 0;
    double pendX = 0;
    double pendY = 0;
};

/// Told from time to time how much of the work is done, from 0 to 1; false cancels. It may call anything.
using RelationProgress = std::function<bool(double done)>;

/// Takes every item of the active layers out of the active set, then puts in those that the query is related to, the query on the
/// left side of the operator. Only items that are drawn in view, of point, line and polygon layers that are shown and active,
/// take part. An `op` that is none of RelationOp matches nothing. False before Init, for a query without points (the active set
/// stays as it was in both cases), or when `progress` cancels (no item of the active layers is in it then) or the store is
/// emptied meanwhile. Items for which there is no memory are passed over.
bool TestRelation(CDigMem& store, const RelationView& view, const RelationQuery& query, std::int32_t op,
                  const RelationProgress& progress = {});

}  // namespace orvane
