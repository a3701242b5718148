// What lies under the cursor: picks of data items in device pixels, against the points that the last frame drew.
//
// Only items that the last frame drew and kept are met. A search on a store before its first init finds nothing. None of them
// runs host code.
#pragma once

#include <cstdint>

#include "select/found_item.h"
#include "store/cdigmem.h"

namespace orvane {

/// Where the pixels of a pick lie; it always travels together.
struct PickPlace {
    Rect client;       ///< pixels
    double viewX = 0;  ///< world position of the left top pixel, y downward
    double viewY = 0;
    double devOffX = 0;  ///< pixel origin
    double devOffY = 0;
};

/// Picks at a client pixel among what is shown, active and in view. With `toggle` everything there changes sides; else `cycle` 0
/// leaves the topmost item alone in the active set, and a `cycle` above counts down the stack there. The number of items met, at
/// most 199.
std::int32_t SelectAtPoint(CDigMem& store, Point at, const PickPlace& place, std::int32_t cycle, bool toggle);
/// The same among the layers that may be edited, over all of them; `cycle` 0 empties the active set first.
std::int32_t SelectForEdit(CDigMem& store, Point at, const PickPlace& place, std::int32_t cycle);
/// Makes active what lies whole within a rectangle of client pixels, whose corners may stand in any order; without `add` the
/// active set is emptied first. Always 0.
std::int32_t SelectInRect(CDigMem& store, const Rect& selRect, const PickPlace& place, bool add);
/// The first item at a client pixel by the rule of the hint; the active set stays.
FoundItem PickForHint(CDigMem& store, Point at, const PickPlace& place);

}  // namespace orvane
