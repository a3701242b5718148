// How points widen the bounds of their item and block. Nothing here narrows them but the recount.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace orvane {

/// A point was added to the item at `datPos`. The first point of an item sets its rectangle, with the radius in a circle layer;
/// the first point of the item at position 0 also sets the block's bounds anew, whatever other items there are.
void GrowByAddedPoint(DigBlock& block, std::int32_t datPos, const DigPnt& pnt, bool isFirst, bool isCircle);
/// A point of an item was overwritten.
void GrowByMovedPoint(DigBlock& block, DigDat& dat, const DigPnt& pnt);
/// Sets the block's bounds from all points of all items. Without any point they stay.
void RecountBounds(DigBlock& block, bool isCircle);

}  // namespace orvane
