// What an edit tool works on between its start and its commit: a copy of one item's points, shown as an overlay figure, the
// rubber figure, while the item itself is hidden.
#pragma once

#include <cstdint>

#include "analysis/geometry/dig_pnt.h"
#include "platform/grow_array.h"
#include "store/records.h"

namespace orvane {

/// Points that an edit tool can hold; an item of more is refused, and a point beyond it is not taken.
inline constexpr std::int32_t kMaxEditPnt = 5000;

struct EditRecord {
    std::uint8_t EditBusy = 0;
    std::int32_t EditPhase = 0;   ///< 0 waits for a pick, 1 a figure is loaded, 2 the cursor holds a point
    std::int32_t EditType = 0;    ///< layer type of the item
    std::int32_t EditPntIdx = 0;  ///< the held point, -1 none
    std::int32_t EditOrgId = 0;   ///< figure number of the rubber figure, -1 none
    FixedText<kMaxCode> EditCode;
    std::int32_t EditMesh = 0;
    std::int32_t EditDatId = 0;     ///< in the add tool the number asked for; below 1 a free one is taken
    std::int32_t EditTag = 0;       ///< the item's lineTag before it was hidden
    std::int32_t EditCnt = 0;       ///< points in EditPnt that count
    std::int32_t EditSavedCnt = 0;  ///< points of the item when it was loaded
    double EditAnchorX = 0;         ///< map units: the click that began a move or a copy
    double EditAnchorY = 0;
    double EditLastX = 0;  ///< map units: the last place of a move or a copy
    double EditLastY = 0;
    /// Map units, z unused; at most kMaxEditPnt. What stands behind EditCnt stays from before; behind the end it reads as (0, 0).
    GrowArray<DigPnt> EditPnt;
    /// The store's count of resets when the rubber figure was made: after another one the number is some other figure's.
    std::uint32_t EditOrgResets = 0;
};

}  // namespace orvane
