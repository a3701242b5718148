// How points widen the bounds of their item and block. Nothing here narrows them but the recount.
#pragma once

#include <cstdint>
#include <span>

#include "store/records.h"

namespace orvane {

/// A point was added to the item at `datPos`. The first point of an item sets its rectangle, with the radius in a circle layer;
/// the first point of the item at position 0 also sets the block's bounds anew, whatever other items there are.
void GrowByAddedPoint(DigBlock& block, std::int32_t datPos, const DigPnt& pnt, bool isFirst, bool isCircle);
/// A point of an item was overwritten.
void GrowByMovedPoint(DigBlock& block, DigDat& dat, const DigPnt& pnt);
/// Whether no point lies further than one unit outside of the rectangle. Bounds are truncated, so a true one may be off by less.
bool RectHolds(const Rect& rect, std::span<const DigPnt> pnts);
/// Looks whether the item's `rect` holds all its points, and marks them.
void CheckItemRect(DigDat& dat);
/// Sets the block's bounds from all points of all items. Without any point they stay.
void RecountBounds(DigBlock& block, bool isCircle);

}  // namespace orvane
